#include "panel/popup_window_p.h"

#include <algorithm>

#include <QAction>
#include <QBoxLayout>
#include <QFrame>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <QStyleOptionMenuItem>
#include <QStylePainter>

#include "panel/popup_item_p.h"
#include "panel/popup_menu.h"
#include "panel/popup_placement_p.h"

namespace ts4::detail {

QList<QAction*> VisibleActions(const QMenu& menu) {
  QList<QAction*> actions = menu.actions();
  actions.removeIf([](const QAction* action) { return !action->isVisible(); });
  return actions;
}

TPopupWindow::TPopupWindow(QMenu& menu, const TPopupSettings& settings, TPopupWindow* parentWindow)
    : QWidget(nullptr, Qt::Popup | Qt::FramelessWindowHint),
      menu_(&menu),
      settings_(settings),
      parent_(parentWindow) {
  // Not a child of the menu: a slot of the chosen action may delete the menu
  // while this window is still handling the click.
  setAttribute(Qt::WA_DeleteOnClose);
  setAttribute(Qt::WA_X11NetWmWindowTypePopupMenu);
  setMouseTracking(true);
  setFont(menu.font());
  setPalette(menu.palette());
  setLayoutDirection(menu.layoutDirection());
  connect(&menu, &QObject::destroyed, this, [this] {
    menu_ = nullptr;
    close();
  });
}

TPopupWindow::~TPopupWindow() = default;

void TPopupWindow::PopupAt(QPoint pos) {
  if (menu_) emit menu_->aboutToShow();
  Build();
  adjustSize();
  move(PlaceMenu(pos, size(), ScreenRect(pos), isRightToLeft()));
  show();
}

void TPopupWindow::PopupBeside(const QRect& item) {
  if (menu_) emit menu_->aboutToShow();
  Build();
  adjustSize();
  // The first item, not the frame, lines up with the item that opens us.
  const int frame = style()->pixelMetric(QStyle::PM_MenuVMargin, nullptr, this) +
                    style()->pixelMetric(QStyle::PM_MenuPanelWidth, nullptr, this);
  move(PlaceSubMenu(item.translated(0, -frame), size(), ScreenRect(item.center()), isRightToLeft()));
  show();
}

QRect TPopupWindow::ScreenRect(QPoint pos) const {
  const QScreen* screen = QGuiApplication::screenAt(pos);
  if (!screen) screen = QGuiApplication::primaryScreen();
  return screen ? screen->availableGeometry() : QRect(pos, size());
}

// The items in columns of a horizontal box, each column a vertical box; the
// box mirrors itself in a right-to-left layout, so the columns then run from
// the right.
void TPopupWindow::Build() {
  const QList<QAction*> actions = menu_ ? VisibleActions(*menu_) : QList<QAction*>();
  breaks_ =
      PopupColumnBreaks(static_cast<int>(actions.size()), settings_.itemsPerColumn, settings_.splitType);
  if (auto* popupMenu = qobject_cast<TWPopupMenu*>(menu_)) popupMenu->LaidOut(this, breaks_);

  const int frame = style()->pixelMetric(QStyle::PM_MenuPanelWidth, nullptr, this);
  const int hMargin = style()->pixelMetric(QStyle::PM_MenuHMargin, nullptr, this) + frame;
  const int vMargin = style()->pixelMetric(QStyle::PM_MenuVMargin, nullptr, this) + frame;
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(hMargin, vMargin, hMargin, vMargin);
  row->setSpacing(0);
  row->setSizeConstraint(QLayout::SetFixedSize);

  const TPopupItemMetrics metrics = MeasureItems(actions, *this);
  QVBoxLayout* column = nullptr;
  for (qsizetype i = 0; i < actions.size(); ++i) {
    const bool startsColumn =
        i == 0 || std::binary_search(breaks_.begin(), breaks_.end(), static_cast<int>(i));
    if (startsColumn) {
      if (column) {
        column->addStretch();
        AddColumnBreak(*row);
      }
      column = new QVBoxLayout;
      column->setSpacing(0);
      row->addLayout(column);
    }
    auto* item = new TPopupItem(*actions[i], metrics, this);
    column->addWidget(item);
    items_.push_back(item);
  }
  if (column) column->addStretch();
}

void TPopupWindow::AddColumnBreak(QBoxLayout& row) {
  const int gap = std::max(2, style()->pixelMetric(QStyle::PM_MenuHMargin, nullptr, this));
  row.addSpacing(gap);
  if (settings_.barBreak) {
    auto* bar = new QFrame(this);
    bar->setFrameShape(QFrame::VLine);
    bar->setFrameShadow(QFrame::Sunken);
    bar->setAttribute(Qt::WA_TransparentForMouseEvents);
    row.addWidget(bar);
    row.addSpacing(gap);
  }
}

QRect TPopupWindow::ItemGeometry(const QAction* action) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [action](const TPopupItem* item) { return item->Action() == action; });
  return found == items_.end() ? QRect() : (*found)->geometry();
}

// As a menu paints its panel: background, empty area, frame.
void TPopupWindow::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionMenuItem panel;
  panel.initFrom(this);
  panel.state = QStyle::State_None;
  panel.checkType = QStyleOptionMenuItem::NotCheckable;
  panel.maxIconWidth = 0;
  panel.reservedShortcutWidth = 0;
  painter.drawPrimitive(QStyle::PE_PanelMenu, panel);
  panel.menuItemType = QStyleOptionMenuItem::EmptyArea;
  panel.rect = rect();
  painter.drawControl(QStyle::CE_MenuEmptyArea, panel);
  if (const int width = style()->pixelMetric(QStyle::PM_MenuPanelWidth, nullptr, this)) {
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.state = QStyle::State_None;
    frame.lineWidth = width;
    frame.midLineWidth = 0;
    painter.drawPrimitive(QStyle::PE_FrameMenu, frame);
  }
}

TPopupWindow* TPopupWindow::Root() {
  TPopupWindow* window = this;
  while (window->parent_) window = window->parent_;
  return window;
}

// The open pop-up gets every mouse event, also those over the windows it was
// opened from: the deepest window of the chain under the position answers.
TPopupWindow* TPopupWindow::WindowAt(QPoint globalPos) {
  for (TPopupWindow* window = this; window; window = window->parent_)
    if (window->isVisible() && window->geometry().contains(globalPos)) return window;
  return nullptr;
}

int TPopupWindow::IndexAt(QPoint globalPos) const {
  const QPoint pos = mapFromGlobal(globalPos);
  for (std::size_t i = 0; i < items_.size(); ++i)
    if (items_[i]->geometry().contains(pos)) return items_[i]->IsSelectable() ? static_cast<int>(i) : -1;
  return -1;
}

int TPopupWindow::ColumnOf(int index) const {
  return static_cast<int>(std::upper_bound(breaks_.begin(), breaks_.end(), index) - breaks_.begin());
}

int TPopupWindow::ColumnStart(int column) const {
  return column == 0 ? 0 : breaks_[column - 1];
}

int TPopupWindow::ColumnEnd(int column) const {
  return column < static_cast<int>(breaks_.size()) ? breaks_[column] : static_cast<int>(items_.size());
}

void TPopupWindow::mouseMoveEvent(QMouseEvent* event) {
  const QPoint globalPos = event->globalPosition().toPoint();
  if (TPopupWindow* window = WindowAt(globalPos)) window->HoverAt(globalPos);
}

void TPopupWindow::mousePressEvent(QMouseEvent* event) {
  const QPoint globalPos = event->globalPosition().toPoint();
  TPopupWindow* window = WindowAt(globalPos);
  if (!window) {
    Root()->close();  // a click outside every window cancels the menu
    return;
  }
  window->CloseSubMenu();  // closes this one too when the click is on a window it came from
  window->pressed_ = true;
  window->HoverAt(globalPos);
}

// An item is chosen on the release of a press that began in the menu, so the
// release of the click that opened the menu chooses nothing.
void TPopupWindow::mouseReleaseEvent(QMouseEvent* event) {
  const QPoint globalPos = event->globalPosition().toPoint();
  TPopupWindow* window = WindowAt(globalPos);
  if (!window || !window->pressed_) return;
  window->pressed_ = false;
  const int index = window->IndexAt(globalPos);
  if (index >= 0) window->Activate(index, false);
}

void TPopupWindow::HoverAt(QPoint globalPos) {
  const int index = IndexAt(globalPos);
  if (index < 0) {
    if (!child_) SetCurrent(-1);
    return;
  }
  if (index == current_) return;
  SetCurrent(index);
  if (items_[index]->Action()->menu())
    OpenSubMenu(index, false);
  else
    CloseSubMenu();
}

void TPopupWindow::SetCurrent(int index) {
  if (current_ >= 0) items_[current_]->SetHighlighted(false);
  current_ = index;
  if (current_ < 0) return;
  items_[current_]->SetHighlighted(true);
  if (QAction* action = items_[current_]->Action()) action->hover();
}

void TPopupWindow::SelectFirst() {
  const auto first =
      std::find_if(items_.begin(), items_.end(), [](const TPopupItem* i) { return i->IsSelectable(); });
  if (first != items_.end()) SetCurrent(static_cast<int>(first - items_.begin()));
}

// Up and down stay in the current column and wrap around in it.
void TPopupWindow::MoveInColumn(int step) {
  if (current_ < 0) {
    SelectFirst();
    return;
  }
  const int column = ColumnOf(current_);
  const int start = ColumnStart(column);
  const int length = ColumnEnd(column) - start;
  int index = current_;
  for (int tries = 0; tries < length; ++tries) {
    index = start + ((index - start + step) % length + length) % length;
    if (items_[index]->IsSelectable()) {
      SetCurrent(index);
      return;
    }
  }
}

// To the same row of the neighbouring column (its last row when shorter),
// or the nearest item there that can be chosen. False when there is no such
// column.
bool TPopupWindow::MoveToColumn(int step) {
  if (current_ < 0) {
    SelectFirst();
    return true;
  }
  const int column = ColumnOf(current_) + step;
  if (column < 0 || column > static_cast<int>(breaks_.size())) return false;
  const int start = ColumnStart(column);
  const int end = ColumnEnd(column);
  const int target = std::min(start + current_ - ColumnStart(column - step), end - 1);
  for (int distance = 0; distance < end - start; ++distance) {
    for (const int index : {target - distance, target + distance}) {
      if (index >= start && index < end && items_[index]->IsSelectable()) {
        CloseSubMenu();
        SetCurrent(index);
        return true;
      }
    }
  }
  return false;
}

void TPopupWindow::keyPressEvent(QKeyEvent* event) {
  const int forward = isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
  const int back = isRightToLeft() ? Qt::Key_Right : Qt::Key_Left;
  const int key = event->key();
  if (key == Qt::Key_Escape) {
    close();  // a sub-menu returns to its parent; the first window cancels
  } else if (key == Qt::Key_Up || key == Qt::Key_Down) {
    MoveInColumn(key == Qt::Key_Up ? -1 : 1);
  } else if (key == forward) {
    if (current_ >= 0 && items_[current_]->Action()->menu())
      OpenSubMenu(current_, true);
    else
      MoveToColumn(1);
  } else if (key == back) {
    if (!MoveToColumn(-1) && parent_) close();
  } else if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
    if (current_ >= 0) Activate(current_, true);
  } else {
    event->ignore();
  }
}

void TPopupWindow::Activate(int index, bool byKeyboard) {
  TPopupItem& item = *items_[index];
  if (!item.IsSelectable()) return;
  if (item.Action()->menu())
    OpenSubMenu(index, byKeyboard);
  else
    Trigger(*item.Action());
}

void TPopupWindow::OpenSubMenu(int index, bool selectFirst) {
  QMenu* subMenu = items_[index]->Action()->menu();
  if (!child_ || child_->menu_ != subMenu) {
    CloseSubMenu();
    if (!subMenu || VisibleActions(*subMenu).isEmpty()) return;
    child_ = new TPopupWindow(*subMenu, settings_, this);
    const TPopupItem& item = *items_[index];
    child_->PopupBeside(QRect(mapToGlobal(item.pos()), item.size()));
  }
  if (selectFirst && child_) child_->SelectFirst();
}

void TPopupWindow::CloseSubMenu() {
  if (TPopupWindow* child = child_) {
    child_ = nullptr;
    child->close();
  }
}

// Closes the chain, then triggers the action. Qt sends triggered from the
// action, from its menu and from the menus that menu is a child of; the
// other menus of the chain (a sub-menu made elsewhere and added) are told
// here, as a menu tells the menus it was opened from.
void TPopupWindow::Trigger(QAction& action) {
  QList<QPointer<QMenu>> chain;
  for (TPopupWindow* window = parent_; window; window = window->parent_) chain.append(window->menu_);
  QList<const QObject*> toldByQt;
  for (QObject* menu = menu_; qobject_cast<QMenu*>(menu); menu = menu->parent()) toldByQt.append(menu);
  QPointer<QAction> guard(&action);
  Root()->close();
  if (guard) guard->activate(QAction::Trigger);
  for (const QPointer<QMenu>& menu : chain)
    if (menu && guard && !toldByQt.contains(menu.data())) emit menu->triggered(guard);
}

void TPopupWindow::hideEvent(QHideEvent* event) {
  CloseSubMenu();
  if (parent_ && parent_->child_ == this) parent_->child_ = nullptr;
  if (menu_) emit menu_->aboutToHide();
  QWidget::hideEvent(event);
}

}  // namespace ts4::detail
