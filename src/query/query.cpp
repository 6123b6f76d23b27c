#include "query/query.h"

#include <algorithm>
#include <unordered_set>

#include "foundation/assign.h"
#include "foundation/string_utils.h"
#include "query/query_notifier_p.h"
#include "structure/field.h"
#include "structure/table.h"

namespace ts4 {

TWQuery::TWQuery(TWCustomDBStructure* structure)
    : notifier_(std::make_unique<detail::TQueryNotifier>(*this)),
      result_(std::make_unique<TQueryResult>(*this)),
      root_(std::make_unique<TFilterBracket>(*this)) {
  LoadDefTitles();
  titles_.Assign(defTitles_);
  designTitles_.Assign(defTitles_);
  SetDbStruct(structure);
}

TWQuery::~TWQuery() {
  notifier_->ClearObservers();
  if (structure_ != nullptr) structure_->RemoveObserver(this);
  // Rows go before the result that holds their parameters.
  root_.reset();
}

// ---- Structure -----------------------------------------------------------------

void TWQuery::SetDbStruct(TWCustomDBStructure* structure) {
  if (structure_ == structure) return;
  const detail::TQueryOperation operation(*notifier_);
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
  notifier_->QueryChanged({qaStructure});
  Changed();
}

void TWQuery::Notification(TWComponent& component) {
  if (structure_ == nullptr || static_cast<TWComponent*>(structure_) != &component) return;
  // The structure is being destroyed: its items must not be touched any more.
  const detail::TQueryOperation operation(*notifier_);
  structure_ = nullptr;
  result_->ResultFields().SetStructure(nullptr);
  ForgetStructureItems(nullptr);
  notifier_->QueryChanged({qaStructure});
}

void TWQuery::StructureItemsRemoving(const TStructureRemoval& removal) {
  const detail::TQueryOperation operation(*notifier_);
  ForgetStructureItems(&removal);
}

void TWQuery::StructureChanged() {
  // Names, captions and operators of the structure show in the view, not in the query's data.
  notifier_->QueryChanged({qaStructure});
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

  // Top to bottom, as a view shows the rows.
  std::vector<TFilterRow*> pending(root_->rows_.size());
  std::transform(root_->rows_.rbegin(), root_->rows_.rend(), pending.begin(),
                 [](auto& r) { return r.get(); });
  while (!pending.empty()) {
    TFilterRow* row = pending.back();
    pending.pop_back();
    if (row->IsBracket()) {
      const auto& rows = static_cast<TFilterBracket*>(row)->rows_;
      for (auto it = rows.rbegin(); it != rows.rend(); ++it) pending.push_back(it->get());
      continue;
    }
    // Written past the setters: the values stay for a field that may come back.
    auto& cond = static_cast<TFilterCond&>(*row);
    TRowAspects lost;
    if (cond.field_ != nullptr && (removal == nullptr || fields.contains(cond.field_))) {
      cond.field_ = nullptr;
      lost.Include(raField);
    }
    if (cond.operator_ != nullptr &&
        (removal == nullptr || lost.Contains(raField) || operators.contains(cond.operator_))) {
      cond.operator_ = nullptr;
      lost.Include(raOperator);
    }
    cond.NotifyChanged(lost);
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
  TFilterBracket* parent = bracket.Parent();
  if (parent == nullptr) {
    bracket.RenumberAndTell(0);
    return;
  }
  bracket.NumberAs(parent->RowID(), number);
  bracket.RenumberFrom(0);
  notifier_->RowsRenumbered(*parent, bracket.Index());
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

int TWQuery::DropParameters(const std::vector<TFilterRow*>& rows) {
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

// ---- Settings -------------------------------------------------------------------------

void TWQuery::SettingsChanged() {
  notifier_->QueryChanged({qaSettings});
  Changed();
}

void TWQuery::SetNonEmptyBrackets(bool on) {
  if (AssignIfChanged(nonEmptyBrackets_, on)) SettingsChanged();
}

void TWQuery::SetSaveTitles(bool on) {
  if (AssignIfChanged(saveTitles_, on)) SettingsChanged();
}

void TWQuery::SetSaveSQLOptions(bool on) {
  if (AssignIfChanged(saveSQLOptions_, on)) SettingsChanged();
}

void TWQuery::SetSQLOptions(TSQLOptions options) {
  result_->SetSQLOptions(options);
}

void TWQuery::SetSQLSyntax(TSQLSyntax syntax) {
  result_->SetSQLSyntax(syntax);
}

void TWQuery::SetMainTableName(std::string name) {
  if (AssignIfChanged(mainTableName_, std::move(name))) SettingsChanged();
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
  notifier_->QueryChanged({qaActive});
  if (OnActive) OnActive(*this);
}

void TWQuery::SetQueryName(std::string name) {
  if (AssignIfChanged(queryName_, std::move(name))) SettingsChanged();
}

void TWQuery::SetDescription(const TStrings& lines) {
  if (AssignIfChanged(description_, lines)) SettingsChanged();
}

void TWQuery::SetUserData(const TStrings& lines) {
  if (AssignIfChanged(userData_, lines)) SettingsChanged();
}

void TWQuery::SetParamValue(const std::string& name, std::string value) {
  if (paramValues_.Values(name) == value) return;
  paramValues_.SetValue(name, value);
  notifier_->QueryChanged({qaParameters});
}

// ---- Events and observers ---------------------------------------------------------------

void TWQuery::AddObserver(TQueryObserver* observer) {
  notifier_->AddObserver(observer);
}

void TWQuery::RemoveObserver(TQueryObserver* observer) {
  notifier_->RemoveObserver(observer);
}

void TWQuery::Changed() {
  notifier_->DataChanged();
}

void TWQuery::BeginUpdate() {
  notifier_->BeginUpdate();
}

void TWQuery::EndUpdate() {
  notifier_->EndUpdate();
}

void TWQuery::ParametersListChanged() {
  notifier_->ParamListChanged();
}

}  // namespace ts4
