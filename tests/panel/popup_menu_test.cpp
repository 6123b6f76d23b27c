#include "panel/popup_menu.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFrame>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <string_view>

#include "panel/system_metrics.h"

namespace {

using ts4::TWPopupMenu;
using Breaks = std::vector<int>;

QRect ScreenArea() {
  return QGuiApplication::primaryScreen()->availableGeometry();
}

// A menu of the given number of items "Item 0", "Item 1" ...
void AddItems(QMenu& menu, int count) {
  for (int i = 0; i < count; ++i) menu.addAction(QStringLiteral("Item %1").arg(i))->setData(i);
}

QAction* ItemAt(const QMenu& menu, int index) {
  return menu.actions().at(index);
}

// The window of a level opened in columns must go away once it is closed.
void ExpectClosed(const TWPopupMenu& menu) {
  EXPECT_EQ(menu.PopupWidget(), nullptr);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

// Qt drops a move to where the mouse already is (a test before may have left
// it there): come from one pixel away.
void Hover(QWidget* window, QPoint pos) {
  QTest::mouseMove(window, pos - QPoint(0, 1));
  QTest::mouseMove(window, pos);
}

class PopupMenuTest : public testing::Test {
 protected:
  void TearDown() override {
    // Windows close by deleteLater; none may outlive a test.
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
};

TEST_F(PopupMenuTest, ColumnsRunInTheLayoutDirection) {
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    SCOPED_TRACE(direction == Qt::LeftToRight ? "left to right" : "right to left");
    TWPopupMenu menu;
    menu.setLayoutDirection(direction);
    menu.SetItemsPerColumn(25);
    AddItems(menu, 60);
    menu.Popup({20, 20});

    ASSERT_NE(menu.PopupWidget(), nullptr);
    EXPECT_EQ(menu.ColumnBreaks(), (Breaks{20, 40}));
    const QRect first = menu.ItemGeometry(ItemAt(menu, 0));
    const QRect below = menu.ItemGeometry(ItemAt(menu, 19));
    const QRect second = menu.ItemGeometry(ItemAt(menu, 20));
    const QRect third = menu.ItemGeometry(ItemAt(menu, 40));
    EXPECT_EQ(below.left(), first.left());
    EXPECT_GT(below.top(), first.top());
    EXPECT_EQ(second.top(), first.top());
    EXPECT_EQ(third.top(), first.top());
    if (direction == Qt::LeftToRight) {
      EXPECT_GT(second.left(), first.right());
      EXPECT_GT(third.left(), second.right());
    } else {
      EXPECT_LT(second.right(), first.left());
      EXPECT_LT(third.right(), second.left());
    }
    // A bar between each two columns.
    EXPECT_EQ(menu.PopupWidget()->findChildren<QFrame*>().size(), 2);

    // Down takes the first item; the key towards the next column keeps the row.
    const Qt::Key next = direction == Qt::LeftToRight ? Qt::Key_Right : Qt::Key_Left;
    QSignalSpy triggered(&menu, &QMenu::triggered);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, next, next, next, Qt::Key_Up, Qt::Key_Return})
      QTest::keyClick(QApplication::activePopupWidget(), key);
    ASSERT_EQ(triggered.size(), 1);
    EXPECT_EQ(triggered[0][0].value<QAction*>(), ItemAt(menu, 40));  // row 1 of column 3, up to row 0
    ExpectClosed(menu);
  }
}

TEST_F(PopupMenuTest, AClickTriggersTheItemAndClosesTheMenu) {
  TWPopupMenu menu;
  menu.SetItemsPerColumn(10);
  AddItems(menu, 30);
  QAction* chosen = ItemAt(menu, 17);
  QSignalSpy actionTriggered(chosen, &QAction::triggered);
  QSignalSpy menuTriggered(&menu, &QMenu::triggered);
  QSignalSpy hidden(&menu, &QMenu::aboutToHide);
  QSignalSpy shown(&menu, &QMenu::aboutToShow);
  menu.Popup({100, 100});
  EXPECT_EQ(shown.size(), 1);

  QTest::mouseClick(menu.PopupWidget(), Qt::LeftButton, {}, menu.ItemGeometry(chosen).center());
  EXPECT_EQ(actionTriggered.size(), 1);
  ASSERT_EQ(menuTriggered.size(), 1);
  EXPECT_EQ(menuTriggered[0][0].value<QAction*>(), chosen);
  EXPECT_EQ(hidden.size(), 1);
  ExpectClosed(menu);
}

// Escape and a click outside cancel; a release without a press in the menu
// is the end of the click that opened it and leaves it open.
TEST_F(PopupMenuTest, EscapeAClickOutsideOrAReleaseAloneChooseNothing) {
  for (const char* gesture : {"Escape", "click outside", "release alone"}) {
    TWPopupMenu menu;
    AddItems(menu, 5);
    QSignalSpy triggered(&menu, &QMenu::triggered);
    QSignalSpy hidden(&menu, &QMenu::aboutToHide);
    menu.Popup({100, 100});
    QWidget* window = menu.PopupWidget();
    ASSERT_NE(window, nullptr);
    const bool release = gesture == std::string_view("release alone");
    if (gesture == std::string_view("Escape"))
      QTest::keyClick(window, Qt::Key_Escape);
    else if (release)
      QTest::mouseRelease(window, Qt::LeftButton, {}, menu.ItemGeometry(ItemAt(menu, 2)).center());
    else
      QTest::mouseClick(window, Qt::LeftButton, {}, window->rect().bottomRight() + QPoint(50, 50));
    EXPECT_EQ(triggered.size(), 0) << gesture;
    EXPECT_EQ(hidden.size(), release ? 0 : 1) << gesture;
    if (!release) ExpectClosed(menu);
  }
}

// Every level is split when the menu opens, before its sub-menus do; the
// open sub-menu gets the mouse, yet a click on the menu it came from still
// chooses there.
TEST_F(PopupMenuTest, SubMenusAreSplitWithTheSameColumnLength) {
  for (const bool inParent : {false, true}) {
    SCOPED_TRACE(inParent ? "chosen in the parent" : "chosen in the group");
    TWPopupMenu menu;
    menu.SetItemsPerColumn(10);
    AddItems(menu, 3);
    TWPopupMenu* group = menu.AddSubMenu(QIcon(), QStringLiteral("Group"));
    AddItems(*group, 30);
    TWPopupMenu* nested = group->AddSubMenu(QStringLiteral("Nested"));
    AddItems(*nested, 12);
    QSignalSpy menuTriggered(&menu, &QMenu::triggered);
    QSignalSpy groupTriggered(group, &QMenu::triggered);
    menu.Popup({10, 10});
    EXPECT_EQ(menu.ColumnBreaks(), Breaks{});
    EXPECT_EQ(group->ColumnBreaks(), (Breaks{8, 16, 24}));  // 31 items: 8, 8, 8, 7
    EXPECT_EQ(nested->ColumnBreaks(), (Breaks{6}));         // 12 items: 6, 6
    EXPECT_EQ(group->PopupWidget(), nullptr);

    // Hovering the group opens it beside its item, in columns.
    Hover(menu.PopupWidget(), menu.ItemGeometry(group->menuAction()).center());
    QWidget* groupWindow = group->PopupWidget();
    ASSERT_NE(groupWindow, nullptr);
    ASSERT_EQ(QApplication::activePopupWidget(), groupWindow);
    EXPECT_GE(groupWindow->x(), menu.PopupWidget()->geometry().right());
    EXPECT_GT(group->ItemGeometry(ItemAt(*group, 8)).left(), group->ItemGeometry(ItemAt(*group, 0)).right());

    TWPopupMenu& owner = inParent ? menu : *group;
    QAction* chosen = ItemAt(owner, inParent ? 1 : 20);
    QTest::mouseClick(owner.PopupWidget(), Qt::LeftButton, {}, owner.ItemGeometry(chosen).center());
    ASSERT_EQ(menuTriggered.size(), 1);
    EXPECT_EQ(menuTriggered[0][0].value<QAction*>(), chosen);
    EXPECT_EQ(groupTriggered.size(), inParent ? 0 : 1);
    ExpectClosed(menu);
    EXPECT_EQ(group->PopupWidget(), nullptr);
  }
}

// The way the drop-down labels build their menus: groups as plain sub-menus
// with icons, the item's data telling which value was chosen. A sub-menu
// made elsewhere and added tells the menu it was opened from as well.
TEST_F(PopupMenuTest, ExecReturnsTheItemChosenInAGroupOrNull) {
  for (const bool childMenu : {true, false}) {
    TWPopupMenu menu;
    menu.addAction(QStringLiteral("Ungrouped"))->setData(-1);
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    QMenu separate(QStringLiteral("Group"));
    QMenu* group = childMenu ? menu.addMenu(QIcon(pixmap), QStringLiteral("Group")) : &separate;
    if (!childMenu) menu.addMenu(group)->setIcon(QIcon(pixmap));
    AddItems(*group, 3);
    QSignalSpy menuTriggered(&menu, &QMenu::triggered);

    QTimer::singleShot(0, &menu, [] {
      for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Down, Qt::Key_Return})
        QTest::keyClick(QApplication::activePopupWidget(), key);
    });
    QAction* chosen = menu.Exec({50, 50});
    ASSERT_NE(chosen, nullptr) << childMenu;
    EXPECT_EQ(chosen->data().toInt(), 1) << childMenu;
    EXPECT_EQ(menuTriggered.size(), 1) << childMenu;
    ExpectClosed(menu);
  }
  TWPopupMenu menu;
  AddItems(menu, 3);
  QTimer::singleShot(0, &menu, [] { QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape); });
  EXPECT_EQ(menu.Exec({50, 50}), nullptr) << "cancelled";
}

TEST_F(PopupMenuTest, StaysOnTheScreenNearItsCorner) {
  const QRect screen = ScreenArea();
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    for (const QPoint corner :
         {screen.bottomRight(), screen.topLeft(), screen.bottomLeft(), screen.topRight()}) {
      TWPopupMenu menu;
      menu.setLayoutDirection(direction);
      menu.SetItemsPerColumn(25);
      AddItems(menu, 60);
      TWPopupMenu* group = menu.AddSubMenu(QStringLiteral("Group"));
      AddItems(*group, 40);
      menu.Popup(corner);
      ASSERT_NE(menu.PopupWidget(), nullptr);
      EXPECT_TRUE(screen.contains(menu.PopupWidget()->geometry())) << corner.x() << "," << corner.y();
      // The group is the last item of the last column: its sub-menu opens
      // beside it, on whichever side has room.
      const QRect groupItem = menu.ItemGeometry(group->menuAction());
      Hover(menu.PopupWidget(), groupItem.center());
      ASSERT_NE(group->PopupWidget(), nullptr);
      const QRect subMenu = group->PopupWidget()->geometry();
      EXPECT_TRUE(screen.contains(subMenu)) << corner.x() << "," << corner.y();
      EXPECT_FALSE(subMenu.intersects(groupItem.translated(menu.PopupWidget()->pos())))
          << corner.x() << "," << corner.y();
      menu.PopupWidget()->close();
    }
  }
}

// A column as long as the screen allows fits on it, one item more does not.
TEST_F(PopupMenuTest, TheColumnLengthFromTheScreenFits) {
  const int perColumn = ts4::TWSystemMetrics().ItemsPerColumn(QGuiApplication::primaryScreen());
  ASSERT_GT(perColumn, 5);
  for (const int items : {perColumn, perColumn + 1}) {
    TWPopupMenu menu;
    menu.SetPopupSplitType(ts4::pstFillFirst);
    AddItems(menu, items);
    menu.Popup({0, 0});
    ASSERT_NE(menu.PopupWidget(), nullptr);
    EXPECT_EQ(menu.ColumnBreaks(), items == perColumn ? Breaks{} : Breaks{perColumn});
    EXPECT_LE(menu.PopupWidget()->height(), ScreenArea().height());
    menu.PopupWidget()->close();
  }
}

// A slot of the chosen action may delete the menu.
TEST_F(PopupMenuTest, TheMenuMayGoAwayWhenAnItemIsChosen) {
  auto* menu = new TWPopupMenu;
  AddItems(*menu, 5);
  QObject::connect(ItemAt(*menu, 1), &QAction::triggered, menu, [menu] { delete menu; });
  menu->Popup({100, 100});
  QWidget* window = menu->PopupWidget();
  QTest::mouseClick(window, Qt::LeftButton, {}, menu->ItemGeometry(ItemAt(*menu, 1)).center());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

}  // namespace
