#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "foundation/strings.h"
#include "query/query_types.h"
#include "query/result_table.h"
#include "query/rfield_list.h"
#include "query/sql_param.h"
#include "structure/sql_formats.h"

namespace ts4 {

class TFilterCond;
class TWQuery;

/// The statement a query stands for, and its SQL writer: result fields,
/// FROM tables, the WHERE, GROUP BY and ORDER BY parts that TWQuery's
/// BuildQuery fills, and the query's parameters.
class TQueryResult {
 public:
  explicit TQueryResult(TWQuery& query);
  ~TQueryResult();
  TQueryResult(const TQueryResult&) = delete;
  TQueryResult& operator=(const TQueryResult&) = delete;

  [[nodiscard]] TWQuery& Query() const { return *query_; }
  [[nodiscard]] TRFieldList& ResultFields() { return resultFields_; }
  [[nodiscard]] const TRFieldList& ResultFields() const { return resultFields_; }
  /// Copies the fields and their settings from the list.
  void SetResultFields(const TRFieldList& fields);
  [[nodiscard]] TRTableList& ResultTables() { return resultTables_; }
  [[nodiscard]] const TRTableList& ResultTables() const { return resultTables_; }
  [[nodiscard]] const TStrings& FromLines() const { return fromLines_; }
  [[nodiscard]] TStrings& WhereLines() { return whereLines_; }
  [[nodiscard]] const TStrings& WhereLines() const { return whereLines_; }
  [[nodiscard]] const std::string& OrderBy() const { return orderBy_; }
  void SetOrderBy(std::string text) { orderBy_ = std::move(text); }
  [[nodiscard]] const std::string& GroupBy() const { return groupBy_; }
  void SetGroupBy(std::string text) { groupBy_ = std::move(text); }
  /// Set by GetFromClause when a table was listed with a comma.
  [[nodiscard]] bool OldStyleJoins() const { return oldStyleJoins_; }

  [[nodiscard]] TSQLOptions SQLOptions() const { return sqlOptions_; }
  /// Stores the options; the result fields follow soQuoteAliases and soASCIIRFields.
  void SetSQLOptions(TSQLOptions options);
  [[nodiscard]] TSQLSyntax SQLSyntax() const { return sqlSyntax_; }
  void SetSQLSyntax(TSQLSyntax syntax);
  /// The statement GetSQL returned last.
  [[nodiscard]] const TStrings& SQL() const { return sql_; }

  // ---- Writing ------------------------------------------------------------
  /// "SELECT [DISTINCT] " and the select list ("*" when there is none).
  [[nodiscard]] std::string GetSelectClause();
  /// Builds FromLines; raises EWTessalyError code 8 when there is no table.
  const TStrings& GetFromClause();
  /// The condition in parentheses under soBracketConditions.
  [[nodiscard]] std::string AdjustCondition(std::string text) const;
  /// Adds the condition as one line of WhereLines.
  void AddCondition(std::string text) { whereLines_.Add(AdjustCondition(std::move(text))); }
  /// Appends the join conditions that stand in WHERE (inner links, every
  /// link under ssOracle); true when it added one.
  bool AddOldStyleInnerJoins(TStrings& lines) const;
  /// The statement as lines; also kept as SQL().
  const TStrings& GetSQL();
  /// What AddOldStyleInnerJoins adds, lines joined by CR LF.
  [[nodiscard]] std::string GetJoinConditions() const;
  /// The captions of the result fields.
  void GetResFieldCaptions(TStrings& list) const;
  /// Forgets tables and links of the structure (it changed or went away).
  void DbStructChanged();

  // ---- Parameters -----------------------------------------------------------
  /// A new parameter for the condition, named Param<n> (the first free
  /// number from the count on) and captioned after the field; the
  /// condition binds it with SetParam1 or SetParam2.
  TSQLParam* AddParameter(TFilterCond& condition);
  /// Removes and frees the parameter; a condition it is bound to gets its
  /// last value back as its own, as when the value is made a constant.
  void DeleteParameter(TSQLParam* param);
  /// The same for every parameter of the condition.
  void DeleteParameters(const TFilterCond& condition);
  [[nodiscard]] TSQLParam* FindParameter(std::string_view name) const;
  [[nodiscard]] TSQLParam* FindParameterByCondition(const TFilterCond& condition) const;
  void ClearParams();
  [[nodiscard]] TSQLParam* GetParam(int index) const { return params_.GetItem(index); }
  [[nodiscard]] int GetParamCount() const { return params_.Count(); }
  [[nodiscard]] const TSQLParamList& Params() const { return params_; }
  /// Added to the running number of parameter names (0: Param1 first).
  [[nodiscard]] int ParamBase() const { return paramBase_; }
  void SetParamBase(int base);

 private:
  friend class TWQuery;
  friend class TFilterCond;
  friend class TFilterBracket;
  friend class TRFieldList;
  /// The result fields changed: tells the query's observers, and OnChange.
  void ResultFieldsChanged();
  [[nodiscard]] std::string FreeParameterName() const;
  /// Frees a parameter of the list, unbinding it from its condition first.
  void DeleteOwnParameter(TSQLParam* param);
  /// Takes the parameter out of the list and frees it, telling no one.
  void RemoveParameter(TSQLParam* param);
  /// Binds a new parameter like `source` (caption, type, value, value
  /// format) to value 1 or 2 of the condition, under a free name; nothing
  /// is announced.
  void BindCopyOfParameter(TFilterCond& condition, int index, const TSQLParam& source);
  /// Binds a new parameter to value 1 or 2 of a condition read from a query
  /// text, numbered after those read before it; nothing is announced.
  TSQLParam* AddLoadedParameter(TFilterCond& condition, int index);
  /// Removes the parameters of the conditions without announcing; how many.
  int ForgetParameters(const std::unordered_set<const TFilterCond*>& conditions) {
    return params_.DeleteIf([&](const TSQLParam* param) { return conditions.contains(param->Condition()); });
  }

  TWQuery* query_;
  TRFieldList resultFields_;
  TRTableList resultTables_;
  TStrings fromLines_;
  std::string orderBy_;
  TStrings whereLines_;
  std::string groupBy_;
  bool oldStyleJoins_ = false;
  TSQLOptions sqlOptions_;
  TSQLSyntax sqlSyntax_ = ssSQL2;
  TStrings sql_;
  TSQLParamList params_;
  int paramBase_ = 0;
};

}  // namespace ts4
