#include "panel/panel_geometry.h"

namespace ts4 {

int LineTop(int rowNum, int buttonHeight, const TPanelSpacing& spacing) {
  return (buttonHeight + TPanelMetrics::LineGap + spacing.RowSpace) * rowNum + spacing.HeaderTop;
}

TRowPlacement PlaceRowControls(const TRowPlacementInput& input, const TPanelSpacing& spacing) {
  TRowPlacement placed;
  int x = input.Header ? spacing.HeaderLeft : input.Depth * spacing.TabSpace + spacing.HeaderLeft;
  const int y = (input.Header ? spacing.HeaderTop : LineTop(input.RowNum, input.Button.height(), spacing)) -
                input.Scroll.y();
  x -= input.Scroll.x();
  if (input.RightToLeft) x = input.ClientWidth - x - TPanelMetrics::RightToLeftMargin;

  if (input.CheckBox.isValid()) {
    const int left = input.RightToLeft ? input.ClientWidth - spacing.HeaderLeft - input.CheckBox.width() -
                                             TPanelMetrics::RightToLeftMargin
                                       : spacing.HeaderLeft - input.Scroll.x();
    placed.CheckBox = QRect(QPoint(left, y), input.CheckBox);
  }
  // Each control at the running x, which then moves on by its width and a gap.
  const auto next = [&](QSize size) {
    if (!size.isValid()) return QRect();
    const int left = input.RightToLeft ? x - size.width() : x;
    x += input.RightToLeft ? -(size.width() + spacing.ElemSpace) : size.width() + spacing.ElemSpace;
    return QRect(QPoint(left, y), size);
  };
  placed.Button = next(input.Button);
  for (const int index : {rciFirst, rciSecond, rciValue1, rciBetween, rciValue2})
    placed.Controls[index] = next(input.Controls[index]);
  if (const QSize word = input.Controls[rciAndOr]; word.isValid()) {
    const int left = input.RightToLeft ? x - word.width() - spacing.ElemSpace : x + spacing.ElemSpace;
    placed.Controls[rciAndOr] = QRect(QPoint(left, y), word);
  }
  return placed;
}

QRect PlaceAddRowLine(const QRect& lastButton, QSize size, const TPanelSpacing& spacing, bool rightToLeft) {
  const int left = rightToLeft ? lastButton.left() + lastButton.width() - size.width() : lastButton.left();
  const int top = lastButton.top() + lastButton.height() + spacing.RowSpace + TPanelMetrics::AddRowGap;
  return QRect(QPoint(left, top), size);
}

}  // namespace ts4
