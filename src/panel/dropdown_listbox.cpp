#include "panel/dropdown_listbox.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>
#include <algorithm>

namespace ts4 {
namespace {

// A list shows at most this many rows before it scrolls.
constexpr int MaxVisibleRows = 16;

QSize ListSize(const QListWidget& list) {
  const int rows = std::clamp(list.count(), 1, MaxVisibleRows);
  const int rowHeight = std::max(list.sizeHintForRow(0), list.fontMetrics().height());
  const int frame = 2 * list.frameWidth();
  return {list.sizeHintForColumn(0) + frame + list.verticalScrollBar()->sizeHint().width(),
          rows * rowHeight + frame};
}

}  // namespace

QRect PlaceListNearLabel(const QRect& label, QSize size, const QRect& screen, Qt::LayoutDirection direction) {
  size = size.boundedTo(screen.size());
  QRect place(QPoint(), size);
  if (direction == Qt::RightToLeft)
    place.moveRight(label.right());
  else
    place.moveLeft(label.left());
  const int below = screen.bottom() - label.bottom();
  const int above = label.top() - screen.top();
  if (below >= size.height() || below >= above)
    place.moveTop(label.bottom() + 1);
  else
    place.moveBottom(label.top() - 1);
  // Sideways and, when neither side had room enough, up or down onto the screen.
  place.moveLeft(std::clamp(place.left(), screen.left(), screen.right() - size.width() + 1));
  place.moveTop(std::clamp(place.top(), screen.top(), screen.bottom() - size.height() + 1));
  return place;
}

TDropDownCustomListBox::~TDropDownCustomListBox() {
  // The list is a window of its own: it goes with the label, unheard.
  if (list_ != nullptr) list_->removeEventFilter(this);
  delete list_.data();
}

void TDropDownCustomListBox::ShowControl() {
  QListWidget* list = CreateList();
  list_ = list;
  list->setWindowFlags(Qt::Popup);
  QFont plain = font();  // the label's font without its underline
  plain.setUnderline(false);
  list->setFont(plain);
  list->setLayoutDirection(layoutDirection());
  list->installEventFilter(this);
  const QRect label(mapToGlobal(QPoint(0, 0)), size());
  const QScreen* screen = this->screen() != nullptr ? this->screen() : QGuiApplication::primaryScreen();
  list->setGeometry(
      PlaceListNearLabel(label, ListSize(*list), screen->availableGeometry(), layoutDirection()));
  list->show();
  list->setFocus(Qt::PopupFocusReason);
}

void TDropDownCustomListBox::HideControl() {
  if (list_ == nullptr) return;
  QListWidget* list = list_;
  list_ = nullptr;
  list->removeEventFilter(this);
  list->hide();
  list->deleteLater();  // it may be inside one of its own events
}

void TDropDownCustomListBox::ReadInput() {
  PendingInput = ListInput();
}

bool TDropDownCustomListBox::eventFilter(QObject* watched, QEvent* event) {
  if (watched != list_ || list_ == nullptr) return TDropDownList::eventFilter(watched, event);
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
      DropUp(key != Qt::Key_Escape);
      return true;
    }
  } else if (event->type() == QEvent::Hide && Dropped()) {
    // Closed by a click elsewhere.
    DropUp(AcceptsOnClose());
  }
  return TDropDownList::eventFilter(watched, event);
}

QListWidget* TDropDownListBox::CreateList() {
  auto* list = new QListWidget;
  const int current = ItemIndex();
  for (int index : ShownOrder()) {
    auto* item = new QListWidgetItem(Items()[index], list);
    item->setData(Qt::UserRole, index);
    if (index == current) list->setCurrentItem(item);
  }
  connect(list, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
    ListBox()->setCurrentItem(item);
    DropUp(true);
  });
  return list;
}

QString TDropDownListBox::ListInput() const {
  const QListWidgetItem* item = ListBox() != nullptr ? ListBox()->currentItem() : nullptr;
  return item != nullptr ? ValueOf(item->data(Qt::UserRole).toInt()) : QString();
}

TWCheckListBox::TWCheckListBox(QWidget* parent) : QListWidget(parent) {
  // Items are toggled here, not by the view, so that a click on the text toggles as well.
  connect(this, &QListWidget::itemClicked, this, &TWCheckListBox::Toggle);
}

void TWCheckListBox::Toggle(QListWidgetItem* item) {
  if (item == nullptr) return;
  item->setCheckState(item->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}

void TWCheckListBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space) {
    Toggle(currentItem());
    event->accept();
    return;
  }
  QListWidget::keyPressEvent(event);
}

std::vector<int> TDropDownCheckListBox::CheckedItems() const {
  const QStringList chosen = Value().split(QLatin1Char(','), Qt::SkipEmptyParts);
  std::vector<int> checked;
  for (int i = 0; i < Items().size(); ++i)
    if (chosen.contains(ValueOf(i))) checked.push_back(i);
  return checked;
}

QListWidget* TDropDownCheckListBox::CreateList() {
  auto* list = new TWCheckListBox;
  const std::vector<int> checked = CheckedItems();
  for (int index : ShownOrder()) {
    auto* item = new QListWidgetItem(Items()[index], list);
    item->setData(Qt::UserRole, index);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    const bool on = std::find(checked.begin(), checked.end(), index) != checked.end();
    item->setCheckState(on ? Qt::Checked : Qt::Unchecked);
  }
  if (list->count() > 0) list->setCurrentRow(0);
  return list;
}

QString TDropDownCheckListBox::ListInput() const {
  if (ListBox() == nullptr) return {};
  // In the items' own order, whatever order the list shows them in.
  std::vector<int> checked;
  for (int row = 0; row < ListBox()->count(); ++row) {
    const QListWidgetItem* item = ListBox()->item(row);
    if (item->checkState() == Qt::Checked) checked.push_back(item->data(Qt::UserRole).toInt());
  }
  std::sort(checked.begin(), checked.end());
  QStringList values;
  for (int index : checked) values.append(ValueOf(index));
  return values.join(QLatin1Char(','));
}

void TDropDownCheckListBox::AcceptInput() {
  SetValue(PendingInput);
}

void TDropDownCheckListBox::ValueChanged() {
  QStringList texts;
  for (int index : CheckedItems()) texts.append(Items()[index]);
  SetCaption(texts.join(QStringLiteral(", ")));
}

}  // namespace ts4
