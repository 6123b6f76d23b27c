#pragma once

#include <vector>

#include <QList>
#include <QPointer>
#include <QWidget>

#include "panel/popup_split.h"

class QAction;
class QBoxLayout;
class QMenu;

namespace ts4::detail {

class TPopupItem;

/// How the menu that opens a chain of windows splits every level.
struct TPopupSettings {
  int itemsPerColumn = 1;
  TWPopupSplitType splitType = pstBalanced;
  bool barBreak = true;  // a line between columns
};

/// The actions of a menu that a window shows: the visible ones, separators
/// included.
[[nodiscard]] QList<QAction*> VisibleActions(const QMenu& menu);

/// A pop-up window that shows one level of a menu with its actions laid out
/// in columns. Hovering an item with a sub-menu opens another window beside
/// it; the windows of one menu form a chain from the first one opened. The
/// window deletes itself when closed and closes when its menu goes away.
class TPopupWindow : public QWidget {
  Q_OBJECT

 public:
  TPopupWindow(QMenu& menu, const TPopupSettings& settings, TPopupWindow* parentWindow);
  ~TPopupWindow() override;

  /// Shows the window as the first of a chain, at the screen position pos.
  void PopupAt(QPoint pos);
  /// Shows the window as a sub-menu beside the item rectangle (screen
  /// coordinates) of its parent window.
  void PopupBeside(const QRect& item);

  /// The indexes of the visible actions that start a column.
  [[nodiscard]] const std::vector<int>& Breaks() const { return breaks_; }
  /// The item's rectangle in this window's coordinates (null when not shown).
  [[nodiscard]] QRect ItemGeometry(const QAction* action) const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Build();
  void AddColumnBreak(QBoxLayout& row);
  [[nodiscard]] QRect ScreenRect(QPoint pos) const;

  [[nodiscard]] TPopupWindow* Root();
  [[nodiscard]] TPopupWindow* WindowAt(QPoint globalPos);
  [[nodiscard]] int IndexAt(QPoint globalPos) const;
  [[nodiscard]] int ColumnOf(int index) const;
  [[nodiscard]] int ColumnStart(int column) const;
  [[nodiscard]] int ColumnEnd(int column) const;

  void HoverAt(QPoint globalPos);
  void SetCurrent(int index);
  void SelectFirst();
  void MoveInColumn(int step);
  bool MoveToColumn(int step);
  void Activate(int index, bool byKeyboard);
  void OpenSubMenu(int index, bool selectFirst);
  void CloseSubMenu();
  void Trigger(QAction& action);

  QPointer<QMenu> menu_;
  TPopupSettings settings_;
  QPointer<TPopupWindow> parent_;
  QPointer<TPopupWindow> child_;
  std::vector<TPopupItem*> items_;  // children of this window
  std::vector<int> breaks_;
  int current_ = -1;
  bool pressed_ = false;  // a mouse press began on this window
};

}  // namespace ts4::detail
