#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/component.h"
#include "foundation/strings.h"
#include "foundation/update_counter.h"
#include "query/filter_row.h"
#include "query/query_observer.h"
#include "query/query_result.h"
#include "query/query_types.h"
#include "structure/structure.h"

namespace ts4 {

class TDSTable;

/// Called with every condition's finished SQL, which the handler may change.
using TBuildSQLEvent = std::function<void(TFilterCond& condition, std::string& sqlExpr)>;

/// A query over a database structure, without any window: the condition
/// tree (the root bracket and every row below it), the result description
/// with its parameters, the captions, and the settings SQL is written with.
/// A query panel shows one and observes it through TQueryObserver.
class TWQuery : public TWComponent, private TDBStructureObserver {
 public:
  explicit TWQuery(TWCustomDBStructure* structure = nullptr);
  ~TWQuery() override;

  // ---- Structure ------------------------------------------------------------
  [[nodiscard]] TWCustomDBStructure* DbStruct() const { return structure_; }
  /// Uses another structure; rows and result fields that refer to the old
  /// one lose their fields and operators.
  void SetDbStruct(TWCustomDBStructure* structure);

  // ---- Condition tree -------------------------------------------------------
  /// The root bracket: never shown as a row, never deleted.
  [[nodiscard]] TFilterBracket& Root() { return *root_; }
  [[nodiscard]] const TFilterBracket& Root() const { return *root_; }
  /// Gives the bracket (other than the root: first its own ID from its
  /// parent and `number`) and every row below it their IDs.
  void EnumerateRows(TFilterBracket& bracket, int number);
  /// Renumbers the whole tree.
  void EnumerateRows() { EnumerateRows(*root_, 0); }
  [[nodiscard]] TFilterRow* RowByID(std::string_view id) const;
  /// Deletes every row and result field and every parameter.
  void ClearQuery();
  /// With this on, deleting the last row of a nested bracket deletes the bracket.
  [[nodiscard]] bool NonEmptyBrackets() const { return nonEmptyBrackets_; }
  void SetNonEmptyBrackets(bool on) { nonEmptyBrackets_ = on; }

  // ---- Result and settings --------------------------------------------------
  [[nodiscard]] TQueryResult& QResult() { return *result_; }
  [[nodiscard]] const TQueryResult& QResult() const { return *result_; }
  [[nodiscard]] TSQLOptions SQLOptions() const { return result_->SQLOptions(); }
  void SetSQLOptions(TSQLOptions options);
  [[nodiscard]] TSQLSyntax SQLSyntax() const { return result_->SQLSyntax(); }
  void SetSQLSyntax(TSQLSyntax syntax);
  /// The main table by name, else by alias (case ignored); empty for the
  /// structure's default main table.
  [[nodiscard]] const std::string& MainTableName() const { return mainTableName_; }
  void SetMainTableName(std::string name);
  /// The table a build starts from: MainTableName, else the structure's
  /// DefaultMainTable, else null.
  [[nodiscard]] TDSTable* MainTable() const;
  /// Only an active query writes its conditions.
  [[nodiscard]] bool Active() const { return active_; }
  void SetActive(bool active);
  void Activate() { SetActive(true); }
  void Deactivate() { SetActive(false); }
  [[nodiscard]] TWBuilderState State() const { return state_; }
  void SetState(TWBuilderState state) { state_ = state; }
  [[nodiscard]] const std::string& QueryName() const { return queryName_; }
  void SetQueryName(std::string name);
  [[nodiscard]] TStrings& Description() { return description_; }
  [[nodiscard]] const TStrings& Description() const { return description_; }
  [[nodiscard]] TStrings& UserData() { return userData_; }
  [[nodiscard]] const TStrings& UserData() const { return userData_; }
  /// Values of "Equal" parameters by their field's column, for SQL list editors.
  [[nodiscard]] TStrings& ParamValues() { return paramValues_; }

  // ---- Captions -------------------------------------------------------------
  [[nodiscard]] const TStrings& Titles() const { return titles_; }
  /// The built-in captions table.
  [[nodiscard]] const TStrings& DefTitles() const { return defTitles_; }
  void LoadDefTitles();
  /// The caption of that name, empty when the table lacks it.
  [[nodiscard]] std::string GetTitle(std::string_view name) const;
  /// Sets a caption the table already has; an unknown name is ignored.
  void SetTitle(std::string_view name, std::string_view value);

  // ---- Events and observers -------------------------------------------------
  std::function<void(TWQuery&)> OnChange;
  std::function<void(TWQuery&)> OnParamListChange;
  std::function<void(TWQuery&)> OnActive;
  TBuildSQLEvent OnBuildSQL;
  void AddObserver(TQueryObserver* observer);
  void RemoveObserver(TQueryObserver* observer);
  /// Fires OnChange, or once at the outermost EndUpdate.
  void Changed();
  void BeginUpdate() { updates_.Begin(); }
  void EndUpdate();
  /// The one announcement that parameters were added, deleted or cleared.
  void ParametersListChanged();

  // ---- SQL --------------------------------------------------------------------
  /// Fills the result from the result fields and (when active) the
  /// conditions: tables along link paths, WHERE lines, GROUP BY, ORDER BY.
  /// Raises EWTessalyError code 1 when an active build finds no table, code
  /// 2 for a table whose link partner is missing, and the structure's path
  /// errors. The state is idle again afterwards, also on failure.
  void BuildQuery();
  /// Builds and returns the statement, lines joined by CR LF.
  [[nodiscard]] std::string GetQueryText();
  /// The SQL text of value 1 or 2 of the condition: the parameter marker,
  /// or the value with dates in the structure's SQL form, quotes doubled
  /// and list items quoted for quoted types.
  [[nodiscard]] std::string ExtractValue(const TFilterCond& condition, int index) const;
  /// A date, time or date-time value between its ISO form (kept in
  /// conditions) and the structure's SQL form: to SQL when `toSQL`.
  /// Text that is not such a value is returned as it is.
  [[nodiscard]] std::string ProcessDateValue(TFieldType type, std::string_view value, bool toSQL) const;

 protected:
  void Notification(TWComponent& component) override;

 private:
  friend class TFilterRow;
  friend class TFilterBracket;
  friend class TFilterCond;
  class TConditionWriter;

  void StructureItemsRemoving(const TStructureRemoval& removal) override;
  /// Lets go of every field, operator and table reference.
  void ForgetStructureItems(const TStructureRemoval* removal);
  void AddResultTable(TDSTable& table);
  void BuildResultFields();
  template <typename Call>
  void Notify(Call&& call) {
    if (observers_.empty()) return;
    const std::vector<TQueryObserver*> observers = observers_;  // one may unregister while told
    for (TQueryObserver* observer : observers) call(*observer);
  }
  void RowInserted(TFilterRow& row);
  /// Tells observers, then drops the parameters of every condition below;
  /// returns how many parameters went.
  int RowsRemoving(TFilterRow& row);
  void RowsRemoved(int droppedParams);
  void RowChanged(TFilterRow& row);

  TWCustomDBStructure* structure_ = nullptr;
  std::unique_ptr<TQueryResult> result_;
  std::unique_ptr<TFilterBracket> root_;
  std::vector<TQueryObserver*> observers_;
  std::string mainTableName_;
  std::string queryName_;
  TStrings description_;
  TStrings userData_;
  TStrings paramValues_;
  TStrings titles_;
  TStrings defTitles_;
  TWBuilderState state_ = stIdle;
  bool active_ = true;
  bool nonEmptyBrackets_ = true;
  TUpdateCounter updates_;
};

}  // namespace ts4
