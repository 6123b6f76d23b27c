#include "query/filter_row.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "foundation/assign.h"
#include "foundation/error.h"
#include "foundation/messages.h"
#include "query/query.h"
#include "query/query_notifier_p.h"
#include "query/sql_param.h"
#include "structure/field.h"
#include "structure/operator.h"

namespace ts4 {

// ---- TFilterRow ------------------------------------------------------------------

void TFilterRow::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  const detail::TQueryOperation operation(query_->Notifier());
  enabled_ = enabled;
  NotifyChanged({raEnabled});
  if (parent_ != nullptr) parent_->KeepEnabledInStep();
}

void TFilterRow::SetHidden(bool hidden) {
  if (AssignIfChanged(hidden_, hidden)) NotifyChanged({raHidden});
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

void TFilterRow::NotifyChanged(TRowAspects aspects) {
  detail::TQueryNotifier& notifier = query_->Notifier();
  notifier.RowChanged(*this, aspects);
  // Hints and the hidden state are the view's; the query text holds neither.
  if (!(aspects - TRowAspects{raHints, raHidden}).Empty()) notifier.DataChanged();
}

// ---- TFilterBracket --------------------------------------------------------------

void TFilterBracket::SetLinkType(TFilterLinkType type) {
  if (AssignIfChanged(linkType_, type)) NotifyChanged({raLinkType});
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

void TFilterBracket::CheckDepth(const TFilterRow& row) const {
  if (!row.IsBracket()) return;
  const int deepest = Level() + 1 + static_cast<const TFilterBracket&>(row).BracketHeight();
  if (deepest > MaxBracketDepth)
    throw EWQueryPanelError(qecNestingTooDeep, msg::NestingTooDeep, MaxBracketDepth);
}

TFilterRow* TFilterBracket::InsertRow(int index, std::unique_ptr<TFilterRow> row) {
  if (!row) return nullptr;
  if (index < 0 || index > GetRowCount()) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
  if (&row->Query() != &Query()) throw EWQueryPanelError(qecForeignRow, std::string(msg::ForeignRow));
  CheckDepth(*row);
  detail::TQueryNotifier& notifier = Query().Notifier();
  const detail::TQueryOperation operation(notifier);
  const bool wasEmpty = rows_.empty();
  notifier.RowsAboutToBeInserted(*this, index, index);
  row->parent_ = this;
  TFilterRow* inserted = rows_.insert(rows_.begin() + index, std::move(row))->get();
  RenumberFrom(index);
  notifier.RowsInserted(*this, index, index);
  if (index + 1 < GetRowCount()) notifier.RowsRenumbered(*this, index + 1);
  notifier.DataChanged();
  if (wasEmpty) KeepEnabledInStep();
  return inserted;
}

TFilterRow* TFilterBracket::AppendRead(std::unique_ptr<TFilterRow> row) {
  CheckDepth(*row);
  row->parent_ = this;
  TFilterRow* added = rows_.emplace_back(std::move(row)).get();
  added->NumberAs(RowID(), GetRowCount());
  return added;
}

TFilterCond* TFilterBracket::InsertCond(int index) {
  return static_cast<TFilterCond*>(InsertRow(index, std::make_unique<TFilterCond>(Query())));
}

TFilterBracket* TFilterBracket::InsertBracket(int index) {
  return static_cast<TFilterBracket*>(InsertRow(index, std::make_unique<TFilterBracket>(Query())));
}

std::unique_ptr<TFilterRow> TFilterBracket::CopyTree(TWQuery& query, const TFilterRow& source) {
  std::unique_ptr<TFilterRow> copy;
  if (source.IsBracket()) {
    const auto& from = static_cast<const TFilterBracket&>(source);
    auto bracket = std::make_unique<TFilterBracket>(query);
    bracket->linkType_ = from.linkType_;
    bracket->rows_.reserve(from.rows_.size());
    for (const auto& child : from.rows_) {
      bracket->rows_.push_back(CopyTree(query, *child));  // depth is bounded by MaxBracketDepth
      bracket->rows_.back()->parent_ = bracket.get();
    }
    copy = std::move(bracket);
  } else {
    const auto& from = static_cast<const TFilterCond&>(source);
    auto cond = std::make_unique<TFilterCond>(query);
    cond->field_ = from.field_;
    cond->operator_ = from.operator_;
    cond->values_ = from.values_;
    cond->captions_ = from.captions_;
    cond->hints_ = from.hints_;
    cond->subQuery_ = from.subQuery_;
    cond->subQueryOptions_ = from.subQueryOptions_;
    copy = std::move(cond);
  }
  copy->enabled_ = source.enabled_;
  copy->hidden_ = source.hidden_;
  return copy;
}

TFilterRow* TFilterBracket::InsertClone(int index, const TFilterRow& source) {
  if (index < 0 || index > GetRowCount()) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
  if (source.Query().DbStruct() != Query().DbStruct() || source.Parent() == nullptr)
    throw EWQueryPanelError(qecForeignRow, std::string(msg::ForeignClone));
  std::unique_ptr<TFilterRow> copy = CopyTree(Query(), source);
  CheckDepth(*copy);
  const detail::TQueryOperation operation(Query().Notifier());
  // The copies get their parameters before anyone hears of them, so that a
  // view reading the new rows sees them bound. Nothing after this can fail.
  bool added = false;
  std::vector<std::pair<const TFilterRow*, TFilterRow*>> pending = {{&source, copy.get()}};
  while (!pending.empty()) {
    auto [from, to] = pending.back();
    pending.pop_back();
    if (from->IsBracket()) {
      const auto& fromRows = static_cast<const TFilterBracket*>(from)->rows_;
      const auto& toRows = static_cast<TFilterBracket*>(to)->rows_;
      for (std::size_t i = 0; i < fromRows.size(); ++i)
        pending.emplace_back(fromRows[i].get(), toRows[i].get());
      continue;
    }
    const auto& cond = static_cast<const TFilterCond&>(*from);
    for (int k = 1; k <= 2; ++k) {
      if (const TSQLParam* param = cond.Param(k)) {
        Query().QResult().BindCopyOfParameter(static_cast<TFilterCond&>(*to), k, *param);
        added = true;
      }
    }
  }
  if (added) Query().Notifier().ParamListChanged();
  return InsertRow(index, std::move(copy));
}

std::unique_ptr<TFilterRow> TFilterBracket::Detach(int index) {
  std::unique_ptr<TFilterRow> row = std::move(rows_[static_cast<std::size_t>(index)]);
  rows_.erase(rows_.begin() + index);
  row->parent_ = nullptr;
  return row;
}

void TFilterBracket::MoveRow(int index, TFilterBracket& to, int toIndex) {
  TFilterRow* row = GetRow(index);
  if (&to.Query() != &Query()) throw EWQueryPanelError(qecForeignRow, std::string(msg::ForeignRow));
  for (const TFilterBracket* b = &to; b != nullptr; b = b->Parent()) {
    if (b == row) throw EWQueryPanelError(qecMoveIntoItself, std::string(msg::MoveIntoItself));
  }
  const bool same = &to == this;
  const int last = same ? GetRowCount() - 1 : to.GetRowCount();
  if (toIndex < 0 || toIndex > last) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, toIndex);
  if (same && toIndex == index) return;
  if (!same) to.CheckDepth(*row);

  detail::TQueryNotifier& notifier = Query().Notifier();
  const detail::TQueryOperation operation(notifier);
  const bool toWasEmpty = to.rows_.empty();
  notifier.RowsAboutToBeMoved(*this, index, index, to, toIndex);
  std::unique_ptr<TFilterRow> moved = Detach(index);
  moved->parent_ = &to;
  to.rows_.insert(to.rows_.begin() + toIndex, std::move(moved));
  if (same) {
    RenumberFrom(std::min(index, toIndex));
  } else {
    RenumberFrom(index);
    to.RenumberFrom(toIndex);
  }
  notifier.RowsMoved(*this, index, index, to, toIndex);
  if (same) {
    notifier.RowsRenumbered(*this, std::min(index, toIndex));
  } else {
    if (index < GetRowCount()) notifier.RowsRenumbered(*this, index);
    notifier.RowsRenumbered(to, toIndex);
  }
  notifier.DataChanged();
  if (same) return;
  if (toWasEmpty) to.KeepEnabledInStep();
  if (rows_.empty() && Parent() != nullptr && Query().NonEmptyBrackets()) {
    Parent()->DeleteRow(Index());  // frees this bracket
    return;
  }
  KeepEnabledInStep();
}

void TFilterBracket::RenumberFrom(int first) {
  // Depth is bounded by MaxBracketDepth.
  for (int i = first; i < GetRowCount(); ++i) {
    TFilterRow& row = *rows_[static_cast<std::size_t>(i)];
    row.NumberAs(RowID(), i + 1);
    if (row.IsBracket()) static_cast<TFilterBracket&>(row).RenumberFrom(0);
  }
}

void TFilterBracket::RenumberAndTell(int first) {
  RenumberFrom(first);
  if (first < GetRowCount()) Query().Notifier().RowsRenumbered(*this, first);
}

void TFilterBracket::KeepEnabledInStep() {
  if (Parent() != nullptr) CheckIfAllDisabled();  // the root is never shown, so never switched
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
  (void)GetRow(index);  // a bad index raises before anything goes
  if (Parent() != nullptr && Query().NonEmptyBrackets() && rows_.size() == 1) {
    Parent()->DeleteRow(Index());  // frees this bracket
    return;
  }
  TWQuery& query = Query();
  detail::TQueryNotifier& notifier = query.Notifier();
  const detail::TQueryOperation operation(notifier);
  notifier.RowsAboutToBeRemoved(*this, index, index);
  const int dropped = query.DropParameters({rows_[static_cast<std::size_t>(index)].get()});
  Detach(index).reset();
  RenumberFrom(index);
  notifier.RowsRemoved(*this, index, index);
  if (index < GetRowCount()) notifier.RowsRenumbered(*this, index);
  if (dropped > 0) notifier.ParamListChanged();
  notifier.DataChanged();
  KeepEnabledInStep();
}

void TFilterBracket::ClearRows() {
  if (rows_.empty()) return;
  TWQuery& query = Query();
  detail::TQueryNotifier& notifier = query.Notifier();
  const detail::TQueryOperation operation(notifier);
  const int last = GetRowCount() - 1;
  notifier.RowsAboutToBeRemoved(*this, 0, last);
  std::vector<TFilterRow*> rows;
  rows.reserve(rows_.size());
  for (const auto& row : rows_) rows.push_back(row.get());
  const int dropped = query.DropParameters(rows);
  rows_.clear();
  notifier.RowsRemoved(*this, 0, last);
  if (dropped > 0) notifier.ParamListChanged();
  notifier.DataChanged();
  KeepEnabledInStep();
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
  const detail::TQueryOperation operation(Query().Notifier());
  const TDSField* before = field_;
  const TFieldType typeBefore = GetExprType();
  TRowAspects aspects{raField};
  field_ = field;
  if (operator_ != nullptr && (field == nullptr || field->IndexOfOperator(operator_) < 0)) {
    operator_ = nullptr;
    aspects.Include(raOperator);
  }
  // Values typed for another field are kept only while they still mean the
  // same kind of thing: the same type, and neither field's value a code
  // from its own list (a status code means nothing as a country).
  const auto listed = [](const TDSField* f) {
    return f != nullptr && (f->EditType() == etList || f->EditType() == etSQL);
  };
  const bool valuesFit =
      operator_ != nullptr &&
      (before == nullptr || (GetExprType() == typeBefore && !listed(before) && !listed(field)));
  if (!valuesFit) aspects = aspects | ClearValues();
  NotifyChanged(aspects);
}

void TFilterCond::SetOperator(TDSOperator* op) {
  if (AssignIfChanged(operator_, op)) NotifyChanged({raOperator});
}

void TFilterCond::SetValue(int index, std::string value) {
  const auto at = static_cast<std::size_t>(CheckedSlot(index));
  if (values_[at] == value) return;
  values_[at] = std::move(value);
  // A caption is the text shown for one value: it does not describe another.
  // (A parameter's caption stays: it describes the parameter, not the value.)
  TRowAspects aspects{raValues};
  if (!captions_[at].empty() && params_[at] == nullptr) {
    captions_[at].clear();
    aspects.Include(raCaptions);
  }
  NotifyChanged(aspects);
}

void TFilterCond::SetSubQuery(const TStrings& sql) {
  if (subQuery_ == sql) return;
  subQuery_.Assign(sql);
  NotifyChanged({raValues});
}

void TFilterCond::SetSubQueryOptions(TSQLOptions options) {
  if (AssignIfChanged(subQueryOptions_, options)) NotifyChanged({raValues});
}

void TFilterCond::SetCaption(int index, std::string text) {
  std::string& slot = captions_[static_cast<std::size_t>(CheckedSlot(index))];
  if (AssignIfChanged(slot, std::move(text))) NotifyChanged({raCaptions});
}

void TFilterCond::SetHint(int index, std::string text) {
  std::string& slot = hints_[static_cast<std::size_t>(CheckedSlot(index))];
  if (AssignIfChanged(slot, std::move(text))) NotifyChanged({raHints});
}

TRowAspects TFilterCond::ClearValues() {
  TRowAspects aspects;
  bool unbound = false;
  for (TSQLParam*& param : params_) {
    if (param == nullptr) continue;
    TSQLParam* gone = param;
    param = nullptr;
    Query().QResult().RemoveParameter(gone);
    unbound = true;
  }
  if (unbound) {
    aspects.Include(raParams);
    Query().Notifier().ParamListChanged();
  }
  if (!values_[0].empty() || !values_[1].empty() || !subQuery_.Empty()) {
    values_ = {};
    subQuery_.Clear();
    aspects.Include(raValues);
  }
  if (!captions_[0].empty() || !captions_[1].empty()) {
    captions_ = {};
    aspects.Include(raCaptions);
  }
  return aspects;
}

void TFilterCond::UnbindParam(std::size_t slot) {
  TSQLParam* current = params_[slot];
  if (current == nullptr) return;
  // The parameter's last value, when it got one; else the value the
  // condition had before it became a parameter comes back.
  std::string kept = current->Value().empty() ? values_[slot] : current->Value();
  params_[slot] = nullptr;
  Query().QResult().RemoveParameter(current);
  values_[slot] = kept;
  captions_[slot] = std::move(kept);
  Query().Notifier().ParamListChanged();
  NotifyChanged({raParams, raValues, raCaptions});
}

void TFilterCond::SetParam(int index, TSQLParam* param) {
  const auto slot = static_cast<std::size_t>(CheckedSlot(index));
  TSQLParam* current = params_[slot];
  if (current == param) return;
  const detail::TQueryOperation operation(Query().Notifier());
  if (param == nullptr) {
    UnbindParam(slot);
    return;
  }
  // A parameter bound before is replaced, not left behind in the list.
  params_[slot] = param;
  if (current != nullptr) {
    Query().QResult().RemoveParameter(current);
    Query().Notifier().ParamListChanged();
  }
  captions_[slot] = ":" + Query().GetTitle("ttlParameter");
  NotifyChanged({raParams, raCaptions});
}

void TFilterCond::SetValueIsParam(int index, bool on) {
  const auto slot = static_cast<std::size_t>(CheckedSlot(index));
  if ((params_[slot] != nullptr) == on) return;
  const detail::TQueryOperation operation(Query().Notifier());
  SetParam(index, on ? Query().QResult().AddParameter(*this) : nullptr);
}

TFieldType TFilterCond::GetExprType() const {
  if (field_ == nullptr || operator_ == nullptr) return ftUnknown;
  return operator_->ExprType() != ftUnknown ? operator_->ExprType() : field_->FieldType();
}

void TFilterCond::UpdateSQLParams() {
  if (field_ == nullptr) return;
  const std::string name = field_->FieldExpr();
  std::string value;
  if (operator_ != nullptr && operator_->Name() == "Equal")
    value = field_->ValueAsString(params_[0] != nullptr ? params_[0]->Value() : values_[0]);
  Query().SetParamValue(name, std::move(value));
}

}  // namespace ts4
