#include "query/query.h"

#include <algorithm>
#include <unordered_set>

#include "foundation/string_utils.h"
#include "structure/field.h"
#include "structure/table.h"

namespace ts4 {

TWQuery::TWQuery(TWCustomDBStructure* structure)
    : result_(std::make_unique<TQueryResult>(*this)), root_(std::make_unique<TFilterBracket>(*this)) {
  LoadDefTitles();
  titles_.Assign(defTitles_);
  designTitles_.Assign(defTitles_);
  SetDbStruct(structure);
}

TWQuery::~TWQuery() {
  observers_.clear();
  if (structure_ != nullptr) structure_->RemoveObserver(this);
  // Rows go before the result that holds their parameters.
  root_.reset();
}

// ---- Structure -----------------------------------------------------------------

void TWQuery::SetDbStruct(TWCustomDBStructure* structure) {
  if (structure_ == structure) return;
  if (structure_ != nullptr) {
    structure_->RemoveObserver(this);
    RemoveFreeNotification(*structure_);
    ForgetStructureItems(nullptr);
  }
  structure_ = structure;
  result_->ResultFields().SetStructure(structure);
  if (structure_ != nullptr) {
    FreeNotification(*structure_);
    structure_->AddObserver(this);
  }
  Changed();
}

void TWQuery::Notification(TWComponent& component) {
  if (structure_ == nullptr || static_cast<TWComponent*>(structure_) != &component) return;
  // The structure is being destroyed: its items must not be touched any more.
  structure_ = nullptr;
  result_->ResultFields().SetStructure(nullptr);
  ForgetStructureItems(nullptr);
}

void TWQuery::StructureItemsRemoving(const TStructureRemoval& removal) {
  ForgetStructureItems(&removal);
}

void TWQuery::ForgetStructureItems(const TStructureRemoval* removal) {
  // With no removal list everything goes; pointers are compared, never followed.
  const std::unordered_set<const TDSField*> fields =
      removal ? std::unordered_set<const TDSField*>(removal->Fields.begin(), removal->Fields.end())
              : std::unordered_set<const TDSField*>();
  const std::unordered_set<const TDSOperator*> operators =
      removal ? std::unordered_set<const TDSOperator*>(removal->Operators.begin(), removal->Operators.end())
              : std::unordered_set<const TDSOperator*>();
  if (removal == nullptr || removal->TablesOrLinks || !fields.empty()) result_->DbStructChanged();
  if (removal != nullptr && fields.empty() && operators.empty()) return;

  std::vector<TFilterBracket*> pending = {root_.get()};
  while (!pending.empty()) {
    TFilterBracket* bracket = pending.back();
    pending.pop_back();
    for (const auto& row : bracket->rows_) {
      if (row->IsBracket()) {
        pending.push_back(static_cast<TFilterBracket*>(row.get()));
        continue;
      }
      auto& cond = static_cast<TFilterCond&>(*row);
      if (cond.field_ != nullptr && (removal == nullptr || fields.contains(cond.field_))) {
        cond.field_ = nullptr;
        cond.operator_ = nullptr;
        RowChanged(cond);
      } else if (cond.operator_ != nullptr && (removal == nullptr || operators.contains(cond.operator_))) {
        cond.operator_ = nullptr;
        RowChanged(cond);
      }
    }
  }
  TRFieldList& list = result_->ResultFields();
  for (int i = list.Count() - 1; i >= 0; --i) {
    const auto& used = list[i]->Fields();
    const bool gone = removal == nullptr ? !used.empty()
                                         : std::any_of(used.begin(), used.end(),
                                                       [&](const TDSField* f) { return fields.contains(f); });
    if (gone) list.Delete(i);
  }
}

// ---- Condition tree ---------------------------------------------------------------

void TWQuery::EnumerateRows(TFilterBracket& bracket, int number) {
  if (bracket.Parent() != nullptr) bracket.NumberAs(bracket.Parent()->RowID(), number);
  for (int i = 0; i < bracket.GetRowCount(); ++i) {
    TFilterRow& row = *bracket.rows_[static_cast<std::size_t>(i)];
    if (row.IsBracket()) {
      EnumerateRows(static_cast<TFilterBracket&>(row), i + 1);  // depth is bounded by MaxBracketDepth
    } else {
      row.NumberAs(bracket.RowID(), i + 1);
    }
  }
  if (&bracket == root_.get()) Notify([](TQueryObserver& o) { o.RowsRenumbered(); });
}

TFilterRow* TWQuery::RowByID(std::string_view id) const {
  return root_->RowByID(id);
}

void TWQuery::ClearQuery() {
  BeginUpdate();
  root_->ClearRows();
  result_->ResultFields().Clear();
  if (result_->GetParamCount() > 0) result_->ClearParams();
  Changed();
  EndUpdate();
}

void TWQuery::RowInserted(TFilterRow& row) {
  Notify([&](TQueryObserver& o) { o.RowInserted(row); });
  Changed();
}

int TWQuery::RowsRemoving(const std::vector<TFilterRow*>& rows) {
  for (TFilterRow* row : rows) Notify([&](TQueryObserver& o) { o.RowAboutToBeDeleted(*row); });
  if (result_->GetParamCount() == 0) return 0;
  // Every condition counts, bound or not: no parameter may outlive its condition.
  std::unordered_set<const TFilterCond*> conditions;
  std::vector<TFilterRow*> pending = rows;
  while (!pending.empty()) {
    TFilterRow* current = pending.back();
    pending.pop_back();
    if (current->IsBracket()) {
      for (const auto& child : static_cast<TFilterBracket*>(current)->rows_) pending.push_back(child.get());
    } else {
      conditions.insert(static_cast<TFilterCond*>(current));
    }
  }
  return result_->ForgetParameters(conditions);
}

void TWQuery::RowsRemoved(int droppedParams) {
  if (droppedParams > 0) ParametersListChanged();
  Changed();
}

void TWQuery::RowChanged(TFilterRow& row) {
  Notify([&](TQueryObserver& o) { o.RowChanged(row); });
  Changed();
}

// ---- Settings -------------------------------------------------------------------------

void TWQuery::SetSQLOptions(TSQLOptions options) {
  if (options == result_->SQLOptions()) return;
  result_->SetSQLOptions(options);
  Changed();
}

void TWQuery::SetSQLSyntax(TSQLSyntax syntax) {
  if (syntax == result_->SQLSyntax()) return;
  result_->SetSQLSyntax(syntax);
  Changed();
}

void TWQuery::SetMainTableName(std::string name) {
  if (name == mainTableName_) return;
  mainTableName_ = std::move(name);
  Changed();
}

TDSTable* TWQuery::MainTable() const {
  if (structure_ == nullptr) return nullptr;
  const std::string& name = !mainTableName_.empty() ? mainTableName_ : structure_->DefaultMainTable();
  if (name.empty()) return nullptr;
  if (TDSTable* table = structure_->TableByName(tsName, name)) return table;
  return structure_->TableByName(tsAlias, name);
}

void TWQuery::SetActive(bool active) {
  if (active_ == active) return;
  active_ = active;
  if (OnActive) OnActive(*this);
}

void TWQuery::SetQueryName(std::string name) {
  if (name == queryName_) return;
  queryName_ = std::move(name);
  Changed();
}

// ---- Events and observers ---------------------------------------------------------------

void TWQuery::AddObserver(TQueryObserver* observer) {
  if (observer != nullptr && std::find(observers_.begin(), observers_.end(), observer) == observers_.end()) {
    observers_.push_back(observer);
  }
}

void TWQuery::RemoveObserver(TQueryObserver* observer) {
  std::erase(observers_, observer);
}

void TWQuery::Changed() {
  if (updates_.Change() && OnChange) OnChange(*this);
}

void TWQuery::EndUpdate() {
  if (updates_.End()) Changed();
}

void TWQuery::ParametersListChanged() {
  Notify([](TQueryObserver& o) { o.ParametersChanged(); });
  if (OnParamListChange) OnParamListChange(*this);
}

}  // namespace ts4
