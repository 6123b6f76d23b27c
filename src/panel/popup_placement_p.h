#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace ts4::detail {

/// The top-left corner for a menu of the given size opened at pos: its
/// leading corner (top-left, top-right in a right-to-left layout) at pos,
/// turned to the other side of pos where it would leave the screen, and
/// kept inside the screen's rectangle.
[[nodiscard]] QPoint PlaceMenu(QPoint pos, QSize size, const QRect& screen, bool rightToLeft);

/// The top-left corner for a sub-menu of the given size opened beside the
/// item rectangle: after it (on the left in a right-to-left layout), or
/// before it where that side has no room, top aligned with the item and kept
/// inside the screen's rectangle.
[[nodiscard]] QPoint PlaceSubMenu(const QRect& item, QSize size, const QRect& screen, bool rightToLeft);

}  // namespace ts4::detail
