#include "panel/panel_lines_p.h"

#include "query/filter_row.h"

namespace ts4::detail {

void TPanelLines::Rebuild(TFilterBracket& root, TQPStyle style) {
  lines_.clear();
  root.SetRowNum(0);
  lines_.push_back(&root);
  // An explicit stack: brackets may nest a thousand levels deep.
  struct TFrame {
    TFilterBracket* Bracket;
    int Next;
  };
  std::vector<TFrame> stack{{&root, 0}};
  while (!stack.empty()) {
    TFrame& top = stack.back();
    if (top.Next >= top.Bracket->GetRowCount()) {
      stack.pop_back();
      continue;
    }
    TFilterRow* row = top.Bracket->GetRow(top.Next++);
    if (row->IsBracket() && style == psAndOr) {
      row->SetRowNum(-1);
    } else {
      row->SetRowNum(Count());
      lines_.push_back(row);
    }
    if (row->IsBracket()) stack.push_back({static_cast<TFilterBracket*>(row), 0});
  }
}

TFilterRow* TPanelLines::RowAt(int line) const {
  return line >= 0 && line < Count() ? lines_[static_cast<std::size_t>(line)] : nullptr;
}

TFilterRow* TPanelLines::LastRow(const TFilterBracket& root) const {
  const TFilterRow* last = &root;
  while (last->IsBracket()) {
    const TFilterRow* inner = static_cast<const TFilterBracket*>(last)->GetLastRow();
    if (inner == nullptr) break;
    last = inner;
  }
  return last->RowNum() >= 0 ? RowAt(last->RowNum()) : lines_.back();
}

}  // namespace ts4::detail

namespace ts4 {

const TFilterBracket* JoiningBracket(const TFilterRow& row) {
  for (const TFilterRow* inner = &row; inner->Parent() != nullptr; inner = inner->Parent())
    if (inner->Index() + 1 < inner->Parent()->GetRowCount()) return inner->Parent();
  return nullptr;
}

}  // namespace ts4
