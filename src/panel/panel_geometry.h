#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <array>

namespace ts4 {

/// Indexes of the controls of a row, as the current control is counted:
/// 1 field (a bracket's text before the link word), 2 operator (the link
/// word), 3 first value (the text after it), 4 text between the values,
/// 5 second value, 9 the and/or word. 0 and 6 to 8 hold nothing.
enum TRowControlIndex : int {
  rciNone = 0,
  rciFirst = 1,
  rciSecond = 2,
  rciValue1 = 3,
  rciBetween = 4,
  rciValue2 = 5,
  rciAndOr = 9,
};
inline constexpr int RowControlSlots = 10;

/// The spacing of a query panel's lines, in pixels.
struct TPanelSpacing {
  int RowSpace = 3;    // extra gap between lines
  int TabSpace = 20;   // indentation per level
  int ElemSpace = 5;   // gap between the controls of a line
  int HeaderLeft = 5;  // left margin of the header and of the check boxes
  int HeaderTop = 5;   // top margin of the header
};

/// Fixed sizes of the panel's own drawing.
struct TPanelMetrics {
  static constexpr int HeaderButtonSide = 14;  // the header's button is square and does not size itself
  static constexpr int LineGap = 3;            // added to a button's height (and RowSpace) per line
  static constexpr int RightToLeftMargin = 5;  // what mirrored lines keep from the right edge
  static constexpr int RowBandMargin = 2;      // the current row's band reaches this far above and below
  static constexpr int FrameMargin = 2;        // the current control's frame stands this far out
  static constexpr int AddRowGap = 2;          // extra gap above the add-row line
};

/// What placing one line needs: where it is, and the sizes of its controls
/// (an invalid size for a control the line does not have; an empty text
/// is 0 wide and still takes its gap).
struct TRowPlacementInput {
  int RowNum = 0;
  int Depth = 0;        // 0 for the header
  bool Header = false;  // the root's line: its button is square and at the margins
  QSize Button;
  QSize CheckBox;  // empty when the line shows none
  std::array<QSize, RowControlSlots> Controls{};
  QPoint Scroll;  // scroll bar positions
  int ClientWidth = 0;
  bool RightToLeft = false;
};

/// Where each control of a line stands, in the panel's viewport.
struct TRowPlacement {
  QRect Button;
  QRect CheckBox;
  std::array<QRect, RowControlSlots> Controls{};
};

/// Top of line `rowNum` when its button is `buttonHeight` high (before scrolling).
[[nodiscard]] int LineTop(int rowNum, int buttonHeight, const TPanelSpacing& spacing);

/// Places a line: its button at the indentation of its depth, then the
/// field (or sentence) and operator (or link word), then the first value,
/// the text between the values and the second value, each ElemSpace after
/// the last; the and/or word one gap further. The check box stands in one
/// column at the left margin. Right to left the line runs leftwards from
/// the mirrored start.
[[nodiscard]] TRowPlacement PlaceRowControls(const TRowPlacementInput& input, const TPanelSpacing& spacing);

/// The add-row line of `size` under the last line, whose button is at `lastButton`.
[[nodiscard]] QRect PlaceAddRowLine(const QRect& lastButton, QSize size, const TPanelSpacing& spacing,
                                    bool rightToLeft);

}  // namespace ts4
