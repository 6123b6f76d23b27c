// The list labels: items, values and groups, the list box and the check
// list box, and where a list opens near the edges of the screen.
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "panel/dropdown_listbox.h"
#include "panel/dropdown_popup.h"
#include "panel/popup_menu.h"

using namespace Qt::StringLiterals;

namespace {

using ts4::TDropDownList;

template <typename Label>
void Fill(Label& label) {
  label.AddItem(u""_s, u"Lisbon"_s, u"LIS"_s);
  label.AddItem(u"Spain"_s, u"Madrid"_s, u"MAD"_s);
  label.AddItem(u"Spain"_s, u"Barcelona"_s, u"BCN"_s);
  label.AddItem(u""_s, u"Faro"_s);  // no value: stands for its text
}

TEST(DropDownList, ItemsValuesGroupsAndTheCaptionOfTheValue) {
  TDropDownList list;
  Fill(list);
  EXPECT_EQ(list.Values(), (QStringList{u"LIS"_s, u"MAD"_s, u"BCN"_s, u""_s}));
  ASSERT_NE(list.ItemGroups().FindByName(u"spain"_s), nullptr);
  EXPECT_EQ(list.ItemGroups().FindByName(u"Spain"_s)->Items, (std::vector<int>{1, 2}));
  EXPECT_EQ(list.ItemGroups().Count(), 1);

  list.SetValue(u"BCN"_s);
  EXPECT_EQ(list.GetCaption(), u"Barcelona"_s);
  EXPECT_EQ(list.ItemIndex(), 2);
  list.SetItemIndex(3);
  EXPECT_EQ(list.Value(), u"Faro"_s);
  list.SetValue(u"XYZ"_s);
  EXPECT_EQ(list.GetCaption(), u"XYZ"_s) << "a value no item has is shown as it is";
  EXPECT_THROW(list.SetItemIndex(4), ts4::EDDLabelError);

  EXPECT_EQ(list.ShownOrder(), (std::vector<int>{0, 1, 2, 3}));
  list.SetSortList(true);
  EXPECT_EQ(list.ShownOrder(), (std::vector<int>{2, 3, 0, 1}));
  list.ClearAll();
  EXPECT_TRUE(list.Items().isEmpty());
  EXPECT_EQ(list.ItemGroups().Count(), 0);
}

TEST(DropDownListBox, AClickOnAnItemChoosesItEscapeCancels) {
  QWidget window;
  auto* label = new ts4::TDropDownListBox(&window);
  Fill(*label);
  label->SetValue(u"LIS"_s);
  window.show();
  QSignalSpy afterUp(label, &ts4::TDropDownLabel::afterDropUp);

  QTest::mouseClick(label, Qt::LeftButton);
  QListWidget* list = label->ListBox();
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(list->isVisible());
  EXPECT_EQ(list->currentRow(), 0) << "the current value is selected";
  EXPECT_EQ(list->geometry().top(), label->mapToGlobal(QPoint(0, label->height())).y())
      << "right below the label";
  QTest::keyClick(list, Qt::Key_Escape);
  EXPECT_EQ(label->Value(), u"LIS"_s);
  EXPECT_FALSE(afterUp.at(0).at(0).toBool());

  label->DropDown();
  list = label->ListBox();
  QListWidgetItem* madrid = list->item(1);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(madrid).center());
  EXPECT_EQ(label->Value(), u"MAD"_s);
  EXPECT_EQ(label->GetCaption(), u"Madrid"_s);
  EXPECT_FALSE(label->Dropped());

  label->DropDown();
  list = label->ListBox();
  list->setCurrentRow(3);
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(label->Value(), u"Faro"_s);
}

TEST(DropDownCheckListBox, CheckedItemsMakeTheValue) {
  QWidget window;
  auto* label = new ts4::TDropDownCheckListBox(&window);
  Fill(*label);
  label->SetValue(u"MAD"_s);
  window.show();
  label->DropDown();
  auto* list = qobject_cast<ts4::TWCheckListBox*>(label->ListBox());
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->item(1)->checkState(), Qt::Checked);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
  list->setCurrentRow(3);
  QTest::keyClick(list, Qt::Key_Space);
  EXPECT_TRUE(label->Dropped()) << "checking does not close the list";
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(label->Value(), u"LIS,MAD,Faro"_s);
  EXPECT_EQ(label->GetCaption(), u"Lisbon, Madrid, Faro"_s);

  label->DropDown();
  list = qobject_cast<ts4::TWCheckListBox*>(label->ListBox());
  for (int row = 0; row < list->count(); ++row) list->item(row)->setCheckState(Qt::Unchecked);
  QTest::keyClick(list, Qt::Key_Escape);
  EXPECT_EQ(label->Value(), u"LIS,MAD,Faro"_s) << "Escape keeps the choice";
  label->DropDown();
  list = qobject_cast<ts4::TWCheckListBox*>(label->ListBox());
  for (int row = 0; row < list->count(); ++row) list->item(row)->setCheckState(Qt::Unchecked);
  list->hide();  // as a click elsewhere closes it
  EXPECT_FALSE(label->Dropped());
  EXPECT_EQ(label->Value(), u""_s) << "closing accepts, nothing checked included";
  EXPECT_EQ(label->GetCaption(), u"_____"_s);
}

// The action of the open menu (or of its sub-menus) with that text.
QAction* ActionNamed(QMenu& menu, const QString& text) {
  for (QAction* action : menu.actions()) {
    if (action->text() == text) return action;
    if (action->menu() != nullptr)
      if (QAction* inner = ActionNamed(*action->menu(), text)) return inner;
  }
  return nullptr;
}

TEST(DropDownPopup, GroupsBecomeSubMenusWithTheirImagesAndAChoiceIsAccepted) {
  QWidget window;
  auto* label = new ts4::TDropDownPopup(&window);
  Fill(*label);
  QPixmap red(8, 8);
  red.fill(Qt::red);
  label->SetImages({QIcon(), QIcon(red)});
  label->OnGetGroupImageIndex = [](const QString& group, int& index) {
    index = group == u"Spain"_s ? 1 : -1;
  };
  label->OnGetItemImageIndex = [](const QString&, const QString& item, int& index) {
    index = item == u"Faro"_s ? 1 : -1;
  };
  label->SetValue(u"LIS"_s);
  window.show();
  QSignalSpy afterUp(label, &ts4::TDropDownLabel::afterDropUp);

  QTest::mouseClick(label, Qt::LeftButton);
  ts4::TWPopupMenu* menu = label->Menu();
  ASSERT_NE(menu, nullptr);
  QStringList top;
  for (QAction* action : menu->actions()) top.append(action->text());
  EXPECT_EQ(top, (QStringList{u"Lisbon"_s, u"Spain"_s, u"Faro"_s}))
      << "the group stands where its first item does";
  EXPECT_FALSE(menu->actions()[1]->icon().isNull()) << "the group's image";
  EXPECT_FALSE(menu->actions()[2]->icon().isNull()) << "an item's image";
  EXPECT_TRUE(menu->actions()[0]->isChecked()) << "the current value";
  EXPECT_FALSE(menu->actions()[1]->font().bold()) << "the current value is in no group";
  ASSERT_NE(menu->actions()[1]->menu(), nullptr);
  EXPECT_EQ(menu->actions()[1]->menu()->actions().size(), 2);

  ActionNamed(*menu, u"Barcelona"_s)->trigger();
  EXPECT_EQ(label->Value(), u"BCN"_s);
  EXPECT_EQ(label->GetCaption(), u"Barcelona"_s);
  EXPECT_FALSE(label->Dropped());

  label->DropDown();
  menu = label->Menu();
  EXPECT_TRUE(menu->actions()[1]->font().bold()) << "the group of the current value";
  ASSERT_NE(menu->PopupWidget(), nullptr);
  QTest::keyClick(menu->PopupWidget(), Qt::Key_Escape);
  QTest::qWait(20);  // the cancel is looked at once the menu has closed
  EXPECT_FALSE(label->Dropped());
  EXPECT_EQ(label->Value(), u"BCN"_s);
  ASSERT_EQ(afterUp.count(), 2);
  EXPECT_FALSE(afterUp.at(1).at(0).toBool());
}

TEST(DropDownListBox, ListsStayOnTheScreenNextToTheirLabel) {
  const QRect screen(0, 0, 1000, 800);
  const struct {
    const char* label;
    QRect labelRect;
    QSize size;
    Qt::LayoutDirection direction;
    QRect expected;
  } cases[] = {
      {"below, left edges", {100, 100, 50, 20}, {200, 300}, Qt::LeftToRight, {100, 120, 200, 300}},
      {"below, right edges", {300, 100, 50, 20}, {200, 300}, Qt::RightToLeft, {150, 120, 200, 300}},
      {"above near the bottom", {100, 700, 50, 20}, {200, 300}, Qt::LeftToRight, {100, 400, 200, 300}},
      {"moved in from the right", {900, 100, 50, 20}, {200, 300}, Qt::LeftToRight, {800, 120, 200, 300}},
      {"moved in from the left", {10, 100, 50, 20}, {200, 300}, Qt::RightToLeft, {0, 120, 200, 300}},
      {"taller than either side", {100, 390, 50, 20}, {200, 500}, Qt::LeftToRight, {100, 300, 200, 500}},
      {"larger than the screen", {100, 100, 50, 20}, {2000, 2000}, Qt::LeftToRight, {0, 0, 1000, 800}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ts4::PlaceListNearLabel(c.labelRect, c.size, screen, c.direction), c.expected) << c.label;
  }
}

}  // namespace
