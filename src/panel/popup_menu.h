#pragma once

#include <memory>
#include <vector>

#include <QMenu>

#include "panel/popup_split.h"

namespace ts4 {

namespace detail {
class TPopupWindow;
}

/// A pop-up menu whose long levels are spread over columns that fit the
/// screen. It is built like any QMenu (addAction, addSeparator, addMenu,
/// icons, the triggered and aboutToHide signals); Popup and Exec open it
/// split into columns, on every level of sub-menus alike.
///
/// Split levels are shown in pop-up windows of this library rather than by
/// QMenu, which cannot start a column at a chosen item. QMenu's own popup and
/// exec still show the menu unsplit.
class TWPopupMenu : public QMenu {
  Q_OBJECT
  Q_PROPERTY(TMenuBreak BreakType READ BreakType WRITE SetBreakType)
  Q_PROPERTY(ts4::TWPopupSplitType PopupSplitType READ PopupSplitType WRITE SetPopupSplitType)
  Q_PROPERTY(bool FitToScreen READ FitToScreen WRITE SetFitToScreen)

 public:
  /// How an item that starts a column is set off; the values are the ones
  /// saved settings hold.
  enum class TMenuBreak {
    mbNone = 0,      // no columns: the menu opens as a plain QMenu
    mbBreak = 1,     // columns side by side
    mbBarBreak = 2,  // columns with a line between them
  };
  Q_ENUM(TMenuBreak)

  explicit TWPopupMenu(QWidget* parent = nullptr);
  explicit TWPopupMenu(const QString& title, QWidget* parent = nullptr);
  ~TWPopupMenu() override;

  [[nodiscard]] TMenuBreak BreakType() const;
  void SetBreakType(TMenuBreak breakType);
  [[nodiscard]] TWPopupSplitType PopupSplitType() const;
  void SetPopupSplitType(TWPopupSplitType splitType);
  [[nodiscard]] bool FitToScreen() const;
  void SetFitToScreen(bool fitToScreen);

  /// The most items a column holds; 0 (the default) takes as many as fit
  /// the screen the menu opens on (TWSystemMetrics::ItemsPerColumn).
  [[nodiscard]] int ItemsPerColumn() const;
  void SetItemsPerColumn(int itemsPerColumn);

  /// Adds a sub-menu that is itself a TWPopupMenu, owned by this menu.
  TWPopupMenu* AddSubMenu(const QIcon& icon, const QString& title);
  TWPopupMenu* AddSubMenu(const QString& title);

  /// Opens the menu at the screen position pos and returns at once. With
  /// FitToScreen (and a break type other than mbNone) every level, sub-menus
  /// included, is split into columns of the same length and the menu is kept
  /// on the screen; otherwise it opens as QMenu::popup opens it.
  void Popup(QPoint globalPos);
  /// Opens the menu as Popup does and waits until it closes; returns the
  /// chosen action, null when the menu was cancelled.
  QAction* Exec(QPoint globalPos);

  /// The indexes of the visible actions of this level that started a column
  /// when the menu was last split (empty when it was not).
  [[nodiscard]] const std::vector<int>& ColumnBreaks() const;
  /// The window showing this level while it is open in columns, else null.
  [[nodiscard]] QWidget* PopupWidget() const;
  /// The action's rectangle in PopupWidget() coordinates (null when not shown).
  [[nodiscard]] QRect ItemGeometry(const QAction* action) const;

 private:
  friend class detail::TPopupWindow;
  void LaidOut(detail::TPopupWindow* window, const std::vector<int>& breaks);
  static void SplitLevels(QMenu& menu, int itemsPerColumn, TWPopupSplitType splitType,
                          QList<const QMenu*>& done);

  std::unique_ptr<struct TWPopupMenuPrivate> const d;
};

}  // namespace ts4
