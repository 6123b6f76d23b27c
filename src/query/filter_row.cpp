#include "query/filter_row.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "query/query.h"
#include "query/sql_param.h"
#include "structure/field.h"
#include "structure/operator.h"

namespace ts4 {

// ---- TFilterRow ------------------------------------------------------------------

void TFilterRow::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  NotifyChanged();
}

void TFilterRow::NumberAs(const std::string& parentID, int number) {
  // Rows are numbered by the hundred thousand when a long query loads: no temporaries.
  std::array<char, 16> digits{};
  char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  rowID_.assign(parentID).append(digits.data(), end).push_back('.');
}

int TFilterRow::Index() const {
  return parent_ != nullptr ? parent_->GetRowIndex(this) : -1;
}

int TFilterRow::Level() const {
  int level = 0;
  for (const TFilterBracket* b = parent_; b != nullptr; b = b->Parent()) ++level;
  return level;
}

void TFilterRow::NotifyChanged() {
  query_->RowChanged(*this);
}

// ---- TFilterBracket --------------------------------------------------------------

void TFilterBracket::SetLinkType(TFilterLinkType type) {
  if (linkType_ == type) return;
  linkType_ = type;
  NotifyChanged();
}

TFilterRow* TFilterBracket::GetRow(int index) const {
  if (index < 0 || index >= GetRowCount()) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
  return rows_[static_cast<std::size_t>(index)].get();
}

int TFilterBracket::BracketHeight() const {
  // Depth-first with an explicit stack: a tree handed in may be deep.
  int height = 0;
  std::vector<std::pair<const TFilterBracket*, int>> pending = {{this, 0}};
  while (!pending.empty()) {
    auto [bracket, level] = pending.back();
    pending.pop_back();
    height = std::max(height, level);
    for (const auto& row : bracket->rows_) {
      if (row->IsBracket()) pending.emplace_back(static_cast<const TFilterBracket*>(row.get()), level + 1);
    }
  }
  return height;
}

TFilterRow* TFilterBracket::InsertRow(int index, std::unique_ptr<TFilterRow> row) {
  if (!row) return nullptr;
  if (index < 0 || index > GetRowCount()) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
  if (&row->Query() != &Query()) {
    throw EWQueryPanelError(gecGeneral, "A row can only be inserted into a bracket of its own query");
  }
  if (row->IsBracket()) {
    const int deepest = Level() + 1 + static_cast<const TFilterBracket&>(*row).BracketHeight();
    if (deepest > MaxBracketDepth)
      throw EWQueryPanelError(qecNestingTooDeep, msg::NestingTooDeep, MaxBracketDepth);
  }
  row->parent_ = this;
  TFilterRow* inserted = rows_.insert(rows_.begin() + index, std::move(row))->get();
  RenumberFrom(index);
  Query().RowInserted(*inserted);
  return inserted;
}

TFilterCond* TFilterBracket::InsertCond(int index) {
  return static_cast<TFilterCond*>(InsertRow(index, std::make_unique<TFilterCond>(Query())));
}

TFilterBracket* TFilterBracket::InsertBracket(int index) {
  return static_cast<TFilterBracket*>(InsertRow(index, std::make_unique<TFilterBracket>(Query())));
}

void TFilterBracket::RenumberFrom(int first) {
  for (int i = first; i < GetRowCount(); ++i) {
    TFilterRow& row = *rows_[static_cast<std::size_t>(i)];
    if (row.IsBracket()) {
      Query().EnumerateRows(static_cast<TFilterBracket&>(row), i + 1);
    } else {
      row.NumberAs(RowID(), i + 1);
    }
  }
}

int TFilterBracket::IndexForNewRow(int rowNum) const {
  if (rows_.empty() || rows_.front()->RowNum() > rowNum) return 0;
  if (rows_.back()->RowNum() >= rowNum) return IndexByRowNum(rowNum);
  return GetRowCount();
}

int TFilterBracket::IndexByRowNum(int rowNum) const {
  for (int i = 0; i < GetRowCount(); ++i) {
    if (rows_[static_cast<std::size_t>(i)]->RowNum() >= rowNum) return i;
  }
  return -1;
}

int TFilterBracket::GetRowIndex(const TFilterRow* row) const {
  for (int i = 0; i < GetRowCount(); ++i) {
    if (rows_[static_cast<std::size_t>(i)].get() == row) return i;
  }
  return -1;
}

void TFilterBracket::DeleteRow(int index) {
  if (Parent() != nullptr && Query().NonEmptyBrackets() && rows_.size() == 1) {
    Parent()->DeleteRow(Index());  // frees this bracket
    return;
  }
  TFilterRow* row = GetRow(index);
  TWQuery& query = Query();
  const int dropped = query.RowsRemoving({row});
  rows_.erase(rows_.begin() + index);
  RenumberFrom(index);
  query.RowsRemoved(dropped);
}

void TFilterBracket::ClearRows() {
  if (rows_.empty()) return;
  TWQuery& query = Query();
  std::vector<TFilterRow*> rows;
  rows.reserve(rows_.size());
  for (const auto& row : rows_) rows.push_back(row.get());
  const int dropped = query.RowsRemoving(rows);
  rows_.clear();
  query.RowsRemoved(dropped);
}

TFilterRow* TFilterBracket::RowByID(std::string_view id) const {
  if (RowID() == id) return const_cast<TFilterBracket*>(this);
  for (const auto& row : rows_) {
    if (row->RowID() == id) return row.get();
    // Only a bracket whose ID starts the wanted one can hold it.
    if (row->IsBracket() && id.starts_with(row->RowID())) {
      return static_cast<const TFilterBracket&>(*row).RowByID(id);
    }
  }
  return nullptr;
}

TFilterCond* TFilterBracket::GetFirstCondition() const {
  for (const auto& row : rows_) {
    if (!row->IsBracket()) return static_cast<TFilterCond*>(row.get());
  }
  return nullptr;
}

int TFilterBracket::GetLastRowNum() const {
  return rows_.empty() ? -1 : rows_.back()->RowNum();
}

void TFilterBracket::CheckIfAllDisabled() {
  const bool allOff =
      std::none_of(rows_.begin(), rows_.end(), [](const auto& row) { return row->Enabled(); });
  if (Enabled() == allOff) SetEnabled(!allOff);
}

// ---- TFilterCond -----------------------------------------------------------------

int TFilterCond::CheckedSlot(int index) {
  if (index != 1 && index != 2) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
  return index - 1;
}

void TFilterCond::SetField(TDSField* field) {
  if (field_ == field) return;
  field_ = field;
  NotifyChanged();
}

void TFilterCond::SetOperator(TDSOperator* op) {
  if (operator_ == op) return;
  operator_ = op;
  NotifyChanged();
}

void TFilterCond::SetValue(int index, std::string value) {
  std::string& slot = values_[static_cast<std::size_t>(CheckedSlot(index))];
  if (slot == value) return;
  slot = std::move(value);
  NotifyChanged();
}

void TFilterCond::SetSubQuery(const TStrings& sql) {
  subQuery_.Assign(sql);
  NotifyChanged();
}

void TFilterCond::SetCaption(int index, std::string text) {
  captions_[static_cast<std::size_t>(CheckedSlot(index))] = std::move(text);
  NotifyChanged();
}

void TFilterCond::SetHint(int index, std::string text) {
  hints_[static_cast<std::size_t>(CheckedSlot(index))] = std::move(text);
}

void TFilterCond::SetParam(int index, TSQLParam* param) {
  const auto slot = static_cast<std::size_t>(CheckedSlot(index));
  TSQLParam* current = params_[slot];
  if (current == param) return;
  TQueryResult& result = Query().QResult();
  if (param != nullptr) {
    // A parameter bound before is replaced, not left behind in the list.
    params_[slot] = param;
    if (current != nullptr) result.DeleteParameter(current);
    captions_[slot] = ":" + Query().GetTitle("ttlParameter");
    NotifyChanged();
    return;
  }
  std::string kept = current->Value();
  params_[slot] = nullptr;
  result.DeleteParameter(current);
  values_[slot] = std::move(kept);
  captions_[slot] = values_[slot];
  NotifyChanged();
}

void TFilterCond::SetValueIsParam(int index, bool on) {
  const auto slot = static_cast<std::size_t>(CheckedSlot(index));
  if ((params_[slot] != nullptr) == on) return;
  SetParam(index, on ? Query().QResult().AddParameter(*this) : nullptr);
}

TFieldType TFilterCond::GetExprType() const {
  if (field_ == nullptr || operator_ == nullptr) return ftUnknown;
  return operator_->ExprType() != ftUnknown ? operator_->ExprType() : field_->FieldType();
}

void TFilterCond::UpdateSQLParams() {
  if (field_ == nullptr) return;
  TStrings& values = Query().ParamValues();
  if (operator_ != nullptr && operator_->Name() == "Equal") {
    const std::string& value = params_[0] != nullptr ? params_[0]->Value() : values_[0];
    values.SetValue(field_->FieldExpr(), field_->ValueAsString(value));
  } else {
    values.SetValue(field_->FieldExpr(), "");
  }
}

}  // namespace ts4
