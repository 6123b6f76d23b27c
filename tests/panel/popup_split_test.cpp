#include "panel/popup_split.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using ts4::PopupColumnBreaks;
using ts4::TWPopupSplitType;
using Breaks = std::vector<int>;

// The lengths of the columns the breaks make of itemCount items.
std::vector<int> ColumnLengths(int itemCount, const Breaks& breaks) {
  std::vector<int> lengths;
  int start = 0;
  for (const int index : breaks) {
    lengths.push_back(index - start);
    start = index;
  }
  lengths.push_back(itemCount - start);
  return lengths;
}

TEST(PopupSplit, BreaksStartTheColumns) {
  const struct {
    int items, perColumn;
    TWPopupSplitType type;
    Breaks expected;
  } cases[] = {
      // Small menus such as these are checked in full by the next test.
      {25, 10, ts4::pstBalanced, {9, 18}},    // 9, 9, 7
      {25, 10, ts4::pstFillFirst, {10, 20}},  // 10, 10, 5
      {10, 10, ts4::pstBalanced, {5}},        // exactly one column's worth makes two
      {10, 10, ts4::pstFillFirst, {}},        // the break at 10 would start an empty column
      {4, 2, ts4::pstBalanced, {2}},          // P = 6, the break at 4 is past the last item
      {0, 10, ts4::pstBalanced, {}},
      {-5, 10, ts4::pstFillFirst, {}},
      {25, 0, ts4::pstBalanced, {}},
      {25, -3, ts4::pstFillFirst, {}},
      {INT_MAX, INT_MAX / 2, ts4::pstFillFirst, {INT_MAX / 2, INT_MAX - 1}},
      {INT_MAX, INT_MAX / 2, ts4::pstBalanced, {INT_MAX / 3 + 1, 2 * (INT_MAX / 3 + 1)}},
      {INT_MAX, INT_MAX, ts4::pstBalanced, {INT_MAX / 2 + 1}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(PopupColumnBreaks(c.items, c.perColumn, c.type), c.expected)
        << c.items << " items, " << c.perColumn << " per column, type " << static_cast<int>(c.type);
  }
}

// What the split is for, checked on every small menu: fill-first fills
// columns of N and leaves the rest to the last; balanced makes columns of
// L = ceil(M / (K + 1)) items and a last one of 1 to L, which is K + 1 columns
// except where L × K reaches M, and never more than N items in a column.
TEST(PopupSplit, ColumnsKeepTheirPromiseOnEverySmallMenu) {
  for (int perColumn = 1; perColumn <= 30; ++perColumn) {
    for (int items = 1; items <= 300; ++items) {
      SCOPED_TRACE(testing::Message() << items << " items, " << perColumn << " per column");
      const int extraColumns = items / perColumn;

      const std::vector<int> filled =
          ColumnLengths(items, PopupColumnBreaks(items, perColumn, ts4::pstFillFirst));
      for (std::size_t i = 0; i + 1 < filled.size(); ++i) ASSERT_EQ(filled[i], perColumn);
      ASSERT_GE(filled.back(), 1);
      ASSERT_LE(filled.back(), perColumn);

      const std::vector<int> balanced =
          ColumnLengths(items, PopupColumnBreaks(items, perColumn, ts4::pstBalanced));
      const int length = (items + extraColumns) / (extraColumns + 1);
      for (std::size_t i = 0; i + 1 < balanced.size(); ++i) ASSERT_EQ(balanced[i], length);
      ASSERT_GE(balanced.back(), 1);
      ASSERT_LE(balanced.back(), length);
      ASSERT_LE(length, perColumn);
      const bool lastBreakPastTheEnd = extraColumns > 0 && length * extraColumns >= items;
      ASSERT_EQ(balanced.size(), static_cast<std::size_t>(extraColumns + (lastBreakPastTheEnd ? 0 : 1)));
      if (items >= perColumn && items > 1) {
        ASSERT_GE(balanced.size(), 2u);
      }
    }
  }
}

}  // namespace
