#include "panel/popup_split.h"

#include <cstdint>

namespace ts4 {

std::vector<int> PopupColumnBreaks(int itemCount, int itemsPerColumn, TWPopupSplitType type) {
  std::vector<int> breaks;
  if (itemCount <= 0 || itemsPerColumn <= 0) return breaks;
  // 64-bit arithmetic: rounding up and the last multiples may pass INT_MAX.
  const std::int64_t count = itemCount;
  const std::int64_t extraColumns = count / itemsPerColumn;
  std::int64_t columnLength = itemsPerColumn;
  if (type == pstBalanced) {
    const std::int64_t columns = extraColumns + 1;
    const std::int64_t rest = count % columns;
    const std::int64_t padded = rest == 0 ? count : count + columns - rest;
    columnLength = padded / columns;
  }
  breaks.reserve(static_cast<std::size_t>(extraColumns));
  for (std::int64_t j = 1; j <= extraColumns; ++j) {
    const std::int64_t index = columnLength * j;
    if (index >= count) break;
    breaks.push_back(static_cast<int>(index));
  }
  return breaks;
}

}  // namespace ts4
