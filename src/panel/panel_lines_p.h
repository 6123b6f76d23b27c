#pragma once

#include <vector>

#include "panel/panel_appearance.h"

namespace ts4 {
class TFilterBracket;
class TFilterRow;
}  // namespace ts4

namespace ts4::detail {

/// The lines of a query panel, top to bottom: which row stands on each.
/// Numbering walks the tree depth first (a bracket before its rows); the
/// root is always line 0, and in psAndOr nested brackets take no line.
class TPanelLines {
 public:
  /// Numbers every row of the tree again (their RowNum; -1 for a bracket
  /// without a line) and lists them by line.
  void Rebuild(TFilterBracket& root, TQPStyle style);
  void Clear() { lines_.clear(); }

  [[nodiscard]] int Count() const { return static_cast<int>(lines_.size()); }
  /// The row on the line, or null outside the lines.
  [[nodiscard]] TFilterRow* RowAt(int line) const;
  /// The line the add-row line goes under: the last row found by going
  /// into the last row of each bracket, or the last line when that row has
  /// none (an empty bracket in psAndOr).
  [[nodiscard]] TFilterRow* LastRow(const TFilterBracket& root) const;

 private:
  std::vector<TFilterRow*> lines_;
};

}  // namespace ts4::detail

namespace ts4 {
/// The bracket whose link joins the row to the line after it: its own when
/// a row of it follows, else the nearest enclosing one with a row after;
/// null for the last row.
[[nodiscard]] const TFilterBracket* JoiningBracket(const TFilterRow& row);
}  // namespace ts4
