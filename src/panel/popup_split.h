#pragma once

#include <vector>

namespace ts4 {

/// How a pop-up menu too long for the screen is spread over columns.
enum class TWPopupSplitType {
  pstBalanced,   // columns of equal length, the last one shorter
  pstFillFirst,  // full columns, the rest in the last one
};
using enum TWPopupSplitType;

/// The indexes of the items that start a new column when a menu level of
/// itemCount items is split with at most itemsPerColumn items per column
/// (ascending; empty when everything fits one column or a count is not
/// positive).
///
/// With K = itemCount div itemsPerColumn:
/// - pstFillFirst breaks at itemsPerColumn × j for j = 1..K;
/// - pstBalanced rounds itemCount up to a multiple P of K + 1 and breaks at
///   (P div (K + 1)) × j for j = 1..K, so exactly itemsPerColumn items
///   make two columns.
/// An index past the last item (itemCount a multiple of the column length)
/// starts no column and is left out.
[[nodiscard]] std::vector<int> PopupColumnBreaks(int itemCount, int itemsPerColumn, TWPopupSplitType type);

}  // namespace ts4
