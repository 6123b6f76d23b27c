#pragma once

#include <QFont>

class QScreen;
class QStyle;

namespace ts4 {

/// The menu font and metrics that decide how many items a pop-up menu
/// column holds on a screen.
class TWSystemMetrics {
 public:
  /// Metrics as drawn by the given style; null means the application's style.
  explicit TWSystemMetrics(const QStyle* style = nullptr);

  /// The font menus are drawn in.
  [[nodiscard]] static QFont MenuFont();
  /// The height of one text item of a menu (see the .cpp for the formula).
  [[nodiscard]] int MenuItemHeight() const;
  /// The height a menu adds above and below its items: frame and margin.
  [[nodiscard]] int MenuVerticalFrame() const;
  /// How many items one column holds on the screen's available height,
  /// at least 1 (the primary screen when null).
  [[nodiscard]] int ItemsPerColumn(const QScreen* screen) const;

 private:
  const QStyle* style_;
};

}  // namespace ts4
