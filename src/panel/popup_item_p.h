#pragma once

#include <QPointer>
#include <QWidget>

class QAction;
class QStyleOptionMenuItem;

namespace ts4::detail {

/// What every item of one menu window shares, so that the icons, texts and
/// shortcuts of all items line up.
struct TPopupItemMetrics {
  int maxIconWidth = 0;  // room for an icon, 0 when no item has one
  int tabWidth = 0;      // room for the widest shortcut text
  bool hasCheckableItems = false;
};

/// One row of a menu window: an action drawn by the style as a menu item.
/// The window handles the mouse and keys; the row only sizes and paints.
class TPopupItem : public QWidget {
  Q_OBJECT

 public:
  TPopupItem(QAction& action, const TPopupItemMetrics& metrics, QWidget* parent);

  /// The action shown (null once the action is gone).
  [[nodiscard]] QAction* Action() const { return action_; }
  /// Whether the row can be highlighted and chosen: an enabled action that
  /// is no separator.
  [[nodiscard]] bool IsSelectable() const;
  void SetHighlighted(bool highlighted);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void InitStyleOption(QStyleOptionMenuItem& option) const;

  QPointer<QAction> action_;
  TPopupItemMetrics metrics_;
  bool highlighted_ = false;
};

/// The metrics shared by the items of the given actions in a window drawn
/// with the given widget's style and font.
[[nodiscard]] TPopupItemMetrics MeasureItems(const QList<QAction*>& actions, const QWidget& window);

}  // namespace ts4::detail
