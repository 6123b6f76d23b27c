#include "panel/popup_placement_p.h"

#include <algorithm>

namespace ts4::detail {
namespace {

// A position from low to high - length; a menu larger than the screen starts
// at low so that its start is visible.
int Clamp(int position, int length, int low, int high) {
  return std::max(low, std::min(position, high - length));
}

QPoint KeepInside(QPoint topLeft, QSize size, const QRect& screen) {
  return {Clamp(topLeft.x(), size.width(), screen.left(), screen.left() + screen.width()),
          Clamp(topLeft.y(), size.height(), screen.top(), screen.top() + screen.height())};
}

}  // namespace

QPoint PlaceMenu(QPoint pos, QSize size, const QRect& screen, bool rightToLeft) {
  const int screenRight = screen.left() + screen.width();
  const int screenBottom = screen.top() + screen.height();
  int x = rightToLeft ? pos.x() - size.width() : pos.x();
  if (!rightToLeft && x + size.width() > screenRight) x = pos.x() - size.width();
  if (rightToLeft && x < screen.left()) x = pos.x();
  int y = pos.y();
  if (y + size.height() > screenBottom) y = pos.y() - size.height();
  return KeepInside({x, y}, size, screen);
}

QPoint PlaceSubMenu(const QRect& item, QSize size, const QRect& screen, bool rightToLeft) {
  const int after = item.left() + item.width();
  const int before = item.left() - size.width();
  const bool roomAfter = after + size.width() <= screen.left() + screen.width();
  const bool roomBefore = before >= screen.left();
  int x = rightToLeft ? before : after;
  if (rightToLeft && !roomBefore && roomAfter) x = after;
  if (!rightToLeft && !roomAfter && roomBefore) x = before;
  return KeepInside({x, item.top()}, size, screen);
}

}  // namespace ts4::detail
