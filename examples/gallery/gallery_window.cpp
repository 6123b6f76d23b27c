#include "gallery_window.h"

#include <QApplication>
#include <QEnterEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <array>
#include <initializer_list>

#include "panel/dropdown_datetime.h"
#include "panel/dropdown_edit.h"
#include "panel/dropdown_listbox.h"
#include "panel/dropdown_popup.h"
#include "panel/round_button.h"

namespace ts4gallery {
namespace {

using namespace ts4;

QGridLayout& AddSection(QVBoxLayout& column, const QString& title) {
  auto* box = new QGroupBox(title);
  auto* grid = new QGridLayout(box);
  grid->setColumnMinimumWidth(1, 140);  // room for the open editors
  grid->setColumnStretch(1, 1);
  column.addWidget(box);
  return *grid;
}

template <typename Label>
Label* NewLabel(const QString& value) {
  auto* label = new Label;
  label->SetValue(value);
  label->SetCaption(value);
  return label;
}

void Fill(TDropDownList& list) {
  list.AddItem({}, QStringLiteral("is equal to"), QStringLiteral("Equal"));
  list.AddItem({}, QStringLiteral("is not equal to"), QStringLiteral("NotEqual"));
  list.AddItem({}, QStringLiteral("is less than"), QStringLiteral("LessThan"));
  list.AddItem({}, QStringLiteral("contains"), QStringLiteral("Contains"));
  list.AddItem({}, QStringLiteral("is between"), QStringLiteral("Between"));
  list.AddItem({}, QStringLiteral("is null"), QStringLiteral("IsNull"));
}

// Sends the button what the mouse would: entering it, or pressing on it.
void Hover(QWidget& button) {
  const QPointF inside(button.width() / 2.0, button.height() / 2.0);
  QEnterEvent enter(inside, inside, button.mapToGlobal(inside));
  QApplication::sendEvent(&button, &enter);
}

void Press(QWidget& button) {
  const QPointF inside(button.width() / 2.0, button.height() / 2.0);
  QMouseEvent press(QEvent::MouseButtonPress, inside, button.mapToGlobal(inside), Qt::LeftButton,
                    Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&button, &press);
}

TWRndBtn* NewButton(const QString& caption) {
  auto* button = new TWRndBtn;
  button->SetCaption(caption);
  button->SetAutoSize(true);
  return button;
}

}  // namespace

TGalleryWindow::TGalleryWindow(QWidget* parent) : QWidget(parent) {
  // Three narrow columns, so that the window fits a small screen; what drops
  // down as a window of its own comes last in its column and opens over the
  // free space below.
  setWindowTitle(QStringLiteral("ts4 widget gallery"));
  auto* columns = new QHBoxLayout(this);
  std::array<QVBoxLayout*, 3> column{};
  for (QVBoxLayout*& layout : column) {
    layout = new QVBoxLayout;
    columns->addLayout(layout);
  }

  QGridLayout& labels = AddSection(*column[0], QStringLiteral("Drop-down labels"));
  AddRow(labels, QStringLiteral("a value"), NewLabel<TDropDownLabel>(QStringLiteral("Lisbon")));
  AddRow(labels, QStringLiteral("no value"), NewLabel<TDropDownLabel>(QString()));
  AddRow(labels, QStringLiteral("\"&\" as it is"), NewLabel<TDropDownLabel>(QStringLiteral("Smith & Sons")));
  auto* fixed = NewLabel<TDropDownLabel>(QStringLiteral("all"));
  fixed->SetFixed(true);
  AddRow(labels, QStringLiteral("fixed"), fixed);
  auto* disabled = NewLabel<TDropDownLabel>(QStringLiteral("Porto"));
  disabled->setEnabled(false);
  AddRow(labels, QStringLiteral("disabled"), disabled);

  QGridLayout& edits = AddSection(*column[0], QStringLiteral("In-place editors"));
  AddRow(edits, QStringLiteral("edit, closed"), NewLabel<TDropDownEdit>(QStringLiteral("Porto")));
  auto* upper = NewLabel<TDropDownEdit>(QStringLiteral("LISBON"));
  upper->SetAutoUpperCase(true);
  AddRow(edits, QStringLiteral("open, capitals"), upper);
  auto* number = NewLabel<TDropDownEdit>(QStringLiteral("1250.50"));
  number->SetValueType(TDropDownCustomEdit::vtFloat);
  AddRow(edits, QStringLiteral("open, a number"), number);
  auto* masked = NewLabel<TDropDownMaskEdit>(QStringLiteral("24122026"));
  masked->SetEditMask(QStringLiteral("!99/99/0000;1;_"));
  AddRow(edits, QStringLiteral("open, !99/99/0000"), masked);
  auto* date = NewLabel<TDropDownDateTimeEdit>(QStringLiteral("2026-11-22"));
  AddRow(edits, QStringLiteral("open, a date"), date);
  auto* time = NewLabel<TDropDownDateTimeEdit>(QStringLiteral("14:30:00"));
  time->SetKind(TDropDownDateTimeEdit::ekTime);
  AddRow(edits, QStringLiteral("a time, closed"), time);
  states_.push_back([upper, number, masked, date] {
    for (TDropDownCustomEdit* edit : std::initializer_list<TDropDownCustomEdit*>{upper, number, masked, date})
      edit->DropDown();
  });

  QGridLayout& checkLists = AddSection(*column[0], QStringLiteral("Check list box"));
  auto* checks = new TDropDownCheckListBox;
  Fill(*checks);
  checks->SetValue(QStringLiteral("Equal,Between"));
  AddRow(checkLists, QStringLiteral("open"), checks);
  states_.push_back([checks] { checks->DropDown(); });

  QGridLayout& buttons = AddSection(*column[1], QStringLiteral("Round buttons"));
  AddRow(buttons, QStringLiteral("flat, idle"), NewButton(QStringLiteral("+")));
  auto* hovered = NewButton(QStringLiteral("Add condition"));
  AddRow(buttons, QStringLiteral("flat, mouse over"), hovered);
  auto* pressed = NewButton(QStringLiteral("pressed"));
  pressed->SetAllowPress(true);
  AddRow(buttons, QStringLiteral("AllowPress, down"), pressed);
  auto* plainPress = NewButton(QStringLiteral("pressed"));
  AddRow(buttons, QStringLiteral("no AllowPress, down"), plainPress);
  auto* raised = NewButton(QStringLiteral("raised"));
  raised->SetFlat(false);
  raised->SetAllowPress(true);
  AddRow(buttons, QStringLiteral("not flat"), raised);
  auto* square = NewButton(QStringLiteral("square"));
  square->SetRounded(false);
  AddRow(buttons, QStringLiteral("square corners"), square);
  auto* off = NewButton(QStringLiteral("disabled"));
  off->setEnabled(false);
  AddRow(buttons, QStringLiteral("disabled"), off);
  states_.push_back([hovered, pressed, plainPress] {
    Hover(*hovered);
    Press(*pressed);
    Press(*plainPress);
  });

  QGridLayout& lists = AddSection(*column[1], QStringLiteral("List box"));
  auto* closedList = new TDropDownListBox;
  Fill(*closedList);
  closedList->SetValue(QStringLiteral("Contains"));
  AddRow(lists, QStringLiteral("closed"), closedList);
  auto* openList = new TDropDownListBox;
  Fill(*openList);
  openList->SetValue(QStringLiteral("LessThan"));
  AddRow(lists, QStringLiteral("open"), openList);
  states_.push_back([openList] { openList->DropDown(); });

  // Groups are sub-menus with images; a long menu splits into columns.
  QGridLayout& popups = AddSection(*column[2], QStringLiteral("Pop-up menus"));
  auto* grouped = new TDropDownPopup;
  grouped->SetImages({style()->standardIcon(QStyle::SP_DirIcon), style()->standardIcon(QStyle::SP_FileIcon)});
  grouped->OnGetGroupImageIndex = [](const QString&, int& index) { index = 0; };
  grouped->OnGetItemImageIndex = [](const QString&, const QString&, int& index) { index = 1; };
  for (const QString& field : {QStringLiteral("Company"), QStringLiteral("City"), QStringLiteral("Country")})
    grouped->AddItem(QStringLiteral("Customers"), field);
  for (const QString& field :
       {QStringLiteral("Order date"), QStringLiteral("Status"), QStringLiteral("Total")})
    grouped->AddItem(QStringLiteral("Orders"), field);
  grouped->AddItem({}, QStringLiteral("Line amount"));
  grouped->SetValue(QStringLiteral("City"));
  AddRow(popups, QStringLiteral("groups, closed"), grouped);
  auto* longMenu = new TDropDownPopup;
  for (int i = 1; i <= 17; ++i) longMenu->AddItem({}, QStringLiteral("Field %1").arg(i));
  longMenu->SetItemLimit(8);
  longMenu->SetValue(QStringLiteral("Field 5"));
  AddRow(popups, QStringLiteral("17 items, 8 a column"), longMenu);
  states_.push_back([longMenu] { longMenu->DropDown(); });

  for (QVBoxLayout* layout : column) layout->addStretch();
}

void TGalleryWindow::AddRow(QGridLayout& section, const QString& state, QWidget* control) {
  const int row = section.rowCount();
  section.addWidget(new QLabel(state), row, 0);
  section.addWidget(control, row, 1, Qt::AlignLeft | Qt::AlignVCenter);
}

void TGalleryWindow::ShowStates() {
  // The layout places the labels first; no events run before every state is
  // set, so the window is not active yet and the editors opened one after
  // the other take no focus from each other.
  layout()->activate();
  for (const auto& state : states_) state();
}

QImage TGalleryWindow::Render() {
  // The window and every pop-up it opened, in screen coordinates.
  const QRect window(mapToGlobal(QPoint(0, 0)), size());
  QRect canvas = window;
  std::vector<QWidget*> popups;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget != this && widget->isVisible() && widget->windowType() == Qt::Popup) {
      popups.push_back(widget);
      canvas |= widget->geometry();
    }
  }
  QImage image(canvas.size() * devicePixelRatio(), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(devicePixelRatio());
  image.fill(palette().color(QPalette::Dark));
  QPainter painter(&image);
  painter.drawPixmap(window.topLeft() - canvas.topLeft(), grab());
  for (QWidget* popup : popups)
    painter.drawPixmap(popup->geometry().topLeft() - canvas.topLeft(), popup->grab());
  return image;
}

}  // namespace ts4gallery
