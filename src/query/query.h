#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/component.h"
#include "foundation/strings.h"
#include "query/filter_row.h"
#include "query/query_observer.h"
#include "query/query_result.h"
#include "query/query_types.h"
#include "structure/structure.h"

namespace ts4 {

class TDSTable;
class TSectionIndex;
class TSQLBracket;
class TSQLCondition;
namespace detail {
class TQueryNotifier;
}

/// Called with every condition's finished SQL, which the handler may change.
using TBuildSQLEvent = std::function<void(TFilterCond& condition, std::string& sqlExpr)>;

/// A query over a database structure, without any window: the condition
/// tree (the root bracket and every row below it), the result description
/// with its parameters, the captions, and the settings SQL is written with.
/// A query panel shows one and observes it through TQueryObserver: every
/// change goes through the members of the query and its rows, result
/// fields and parameters, and each is told (query_observer.h).
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
  /// parent and `number`) and every row below it their IDs, and tells so.
  /// Rows are numbered as they change, so this is only needed after
  /// giving a bracket a number other than its place.
  void EnumerateRows(TFilterBracket& bracket, int number);
  /// Renumbers the whole tree.
  void EnumerateRows() { EnumerateRows(*root_, 0); }
  [[nodiscard]] TFilterRow* RowByID(std::string_view id) const;
  /// Deletes every row and result field and every parameter.
  void ClearQuery();
  /// With this on, deleting the last row of a nested bracket deletes the bracket.
  [[nodiscard]] bool NonEmptyBrackets() const { return nonEmptyBrackets_; }
  void SetNonEmptyBrackets(bool on);

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
  /// What the query is busy with; not a change of the query.
  [[nodiscard]] TWBuilderState State() const { return state_; }
  void SetState(TWBuilderState state) { state_ = state; }
  [[nodiscard]] const std::string& QueryName() const { return queryName_; }
  void SetQueryName(std::string name);
  [[nodiscard]] const TStrings& Description() const { return description_; }
  void SetDescription(const TStrings& lines);
  [[nodiscard]] const TStrings& UserData() const { return userData_; }
  void SetUserData(const TStrings& lines);
  /// Values of "Equal" parameters by their field's column, for SQL list
  /// editors; kept by the conditions (TFilterCond::UpdateSQLParams).
  [[nodiscard]] const TStrings& ParamValues() const { return paramValues_; }

  // ---- Captions -------------------------------------------------------------
  [[nodiscard]] const TStrings& Titles() const { return titles_; }
  /// Lays the lines over the built-in table (LoadTitlesFromStrings): the
  /// result always has every default name. Old section names are renamed in
  /// `value` itself.
  void SetTitles(TStrings& value);
  /// The built-in captions table.
  [[nodiscard]] const TStrings& DefTitles() const { return defTitles_; }
  void LoadDefTitles();
  /// The captions as they stood when the form was loaded: the base that
  /// captions stored with a query are laid over.
  [[nodiscard]] const TStrings& DesignTitles() const { return designTitles_; }
  /// The caption of that name, empty when the table lacks it.
  [[nodiscard]] std::string GetTitle(std::string_view name) const;
  /// Sets a caption the table already has; an unknown name is ignored.
  void SetTitle(std::string_view name, std::string_view value);
  /// Captions stored by old forms: line i is the caption with old number i.
  void MergeDFMTitles(const TStrings& source);
  /// Captions stored by old query files: "Title<i>=" gives the caption with
  /// old number i.
  void LoadOldTitlesFromStrings(const TStrings& source);
  /// The form-loading step: takes the captions a form stored, in the
  /// sectioned or in the old unnamed format, and keeps the result as the
  /// design-time captions.
  void LoadStoredTitles(const TStrings& stored);
  /// Whether captions travel with the query text.
  [[nodiscard]] bool SaveTitles() const { return saveTitles_; }
  void SetSaveTitles(bool on);

  // ---- Query text -------------------------------------------------------------
  /// Writes the query as sectioned text (the format is described in
  /// query_file.cpp); the list is replaced only when the whole text is
  /// written. A value of a date condition that is not a date raises
  /// EWQueryPanelError code 12.
  void SaveToStrings(TStrings& list);
  /// Reads a query text written by SaveToStrings (or an older version). All
  /// or nothing: on any error the query is left exactly as it was. Raises
  /// EWQueryPanelError code 3 without a structure, code 9 for a row section
  /// that the text lacks and code 10 for brackets nested too deep.
  void LoadFromStrings(const TStrings& list);
  /// SaveToStrings into a text file (CR LF line ends).
  void SaveToFile(const std::string& fileName);
  /// LoadFromStrings from a text file (LF or CR LF line ends).
  void LoadFromFile(const std::string& fileName);
  /// Whether the SQL options are written with the query text.
  [[nodiscard]] bool SaveSQLOptions() const { return saveSQLOptions_; }
  void SetSaveSQLOptions(bool on);
  /// The format version of the text loaded last (0 before any).
  [[nodiscard]] double LoadedVersion() const { return loadedVersion_; }

  // ---- Reading SQL back (sqlimport/query_parse_sql.cpp) ---------------------------
  /// Replaces the conditions, the result fields and the main table by those
  /// of the SELECT statement; name, description, captions and settings
  /// stay. All or nothing: on an error the query is left exactly as it was.
  /// Raises EWQueryPanelError code 3 without a structure, ESQLParserError
  /// for text the parser cannot read (whatever follows the statement but a
  /// final ";" included), EWQueryPanelError code 11 for a
  /// condition on an expression no field has, code 14 for a condition no
  /// operator reads, and code 10 for brackets nested too deep. DISTINCT and
  /// result-field aliases are not taken over.
  void ParseSQL(const TStrings& sql);
  /// The same for text whose lines end in LF or CR LF.
  void ParseSQL(std::string_view sql);
  /// The operator of the structure that the parsed condition stands for,
  /// with its values as written in the SQL; null when none reads it. A
  /// sub-query value is also put into `subQueries` when it is given.
  [[nodiscard]] TDSOperator* OperatorBySQLCond(const TSQLCondition& condition, std::string& value1,
                                               std::string& value2, TStrings* subQueries = nullptr);
  /// Fills the bracket (its link type and rows) from a parsed bracket.
  void ProcessSQLBracket(TFilterBracket& bracket, const TSQLBracket& parsed);

  // ---- Events and observers -------------------------------------------------
  /// Fired once per change of the query's data (not of the view's: hints,
  /// hidden rows, the active flag), and once for a whole update.
  std::function<void(TWQuery&)> OnChange;
  std::function<void(TWQuery&)> OnParamListChange;
  std::function<void(TWQuery&)> OnActive;
  TBuildSQLEvent OnBuildSQL;
  /// Registers a view (not owned; it must unregister before it goes).
  void AddObserver(TQueryObserver* observer);
  void RemoveObserver(TQueryObserver* observer);
  /// Fires OnChange, or once at the outermost EndUpdate.
  void Changed();
  /// Opens an update: observers hear of the rows as one reset, and of
  /// everything else once, at the outermost EndUpdate.
  void BeginUpdate();
  void EndUpdate();
  /// The one announcement that parameters were added, deleted or cleared:
  /// qaParameters, then OnParamListChange.
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

  friend class TQueryResult;
  friend class TRFieldList;
  friend class TSQLParam;
  friend class detail::TQueryNotifier;

  void StructureItemsRemoving(const TStructureRemoval& removal) override;
  void StructureChanged() override;
  [[nodiscard]] detail::TQueryNotifier& Notifier() { return *notifier_; }
  /// Tells observers about a change of the query's settings, and OnChange.
  void SettingsChanged();
  /// Sets (or, with an empty value, removes) an entry of ParamValues.
  void SetParamValue(const std::string& name, std::string value);
  /// Lets go of every field, operator and table reference.
  void ForgetStructureItems(const TStructureRemoval* removal);
  void AddResultTable(TDSTable& table);
  void BuildResultFields();
  /// Drops the parameters of every condition in the subtrees of the rows
  /// (one pass over the parameters) without telling; returns how many went.
  int DropParameters(const std::vector<TFilterRow*>& rows);
  /// Captions: tells observers when the table is not what it was.
  void CaptionsChanged(const TStrings& before);

  // Query text (query_file.cpp, query_file_rows.cpp).
  /// Reads the text into this query, which is new and empty.
  void ReadQueryText(const TStrings& list);
  /// The captions step of reading a query text of that version.
  void LoadTitlesFromQueryText(const TStrings& list, double version);
  /// Takes the content of a query that has just read a text, as one reset.
  void TakeOverLoaded(TWQuery& loaded);
  /// Takes the parameters, the rows and the result fields of the other
  /// query; inside an update, as part of its reset.
  void TakeOverConditions(TWQuery& other);
  /// A new query over the same structure with this one's settings, to read into.
  void PrepareForReading(TWQuery& fresh) const;
  void WriteRows(TStrings& list) const;
  void ReadRows(TSectionIndex& reader);

  std::unique_ptr<detail::TQueryNotifier> notifier_;  // first: the others tell it as they are made
  TWCustomDBStructure* structure_ = nullptr;
  std::unique_ptr<TQueryResult> result_;
  std::unique_ptr<TFilterBracket> root_;
  std::string mainTableName_;
  std::string queryName_;
  TStrings description_;
  TStrings userData_;
  TStrings paramValues_;
  TStrings titles_;
  TStrings defTitles_;
  TStrings designTitles_;
  double loadedVersion_ = 0;
  TWBuilderState state_ = stIdle;
  bool active_ = true;
  bool nonEmptyBrackets_ = true;
  bool saveTitles_ = true;
  bool saveSQLOptions_ = false;
};

/// SQL options as the query text stores them: soSelectDistinct 2,
/// soQuoteAliases 8, soBracketJoins 16, soBracketConditions 32; the other
/// options are not stored.
[[nodiscard]] int SQLOptionsToInt(TSQLOptions options);
/// The stored options of the number, starting from the empty set.
[[nodiscard]] TSQLOptions IntToSQLOptions(int value);

}  // namespace ts4
