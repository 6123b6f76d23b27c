#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "foundation/field_types.h"
#include "foundation/strings.h"
#include "query/query_types.h"
#include "sqlimport/sql_parse_tree.h"
#include "sqlimport/sql_template.h"

namespace ts4 {

class TDSField;
class TDSLink;
class TDSOperator;
class TDSTable;
class TFilterBracket;
class TWCustomDBStructure;
class TWQuery;

namespace detail {

/// Turns what the SQL parser read into a query's result fields and rows,
/// against the query's structure. Everything it looks things up in (the
/// operators in the order they are tried, the fields by their SQL, the join
/// conditions of the links) is prepared once, so a statement of any length
/// is read in time proportional to it.
class TSQLQueryReader {
 public:
  /// `tables` are the statement's tables, for names qualified by their own
  /// aliases; may be null.
  TSQLQueryReader(TWQuery& query, const TSQLTableList* tables);

  /// The operator the condition stands for and its raw values (quotes
  /// still doubled), or null. A sub-query value is added to `subQueries`.
  TDSOperator* OperatorBySQLCond(const TSQLCondition& condition, std::string& value1, std::string& value2,
                                 TStrings* subQueries) const;
  /// Fills the bracket (link type and rows) from the parsed bracket.
  void ProcessSQLBracket(TFilterBracket& bracket, const TSQLBracket& parsed) const;

  /// The select list, with sorting, into the query's result fields.
  void ReadResultFields(const TWParserResult& parsed) const;
  /// The name to keep as the query's main table for the statement's first
  /// table: empty when it is the structure's default or unknown.
  [[nodiscard]] std::string MainTableName(const TWParserResult& parsed) const;
  /// The WHERE tree without the join conditions the old syntaxes write
  /// there (the query makes them again from the links).
  [[nodiscard]] const TSQLBracket& ConditionsOf(TWParserResult& parsed) const;

  /// The structure field a left-hand expression stands for, or null.
  [[nodiscard]] TDSField* FieldBySQL(std::string_view expr) const;

 private:
  struct TCandidate {
    TDSOperator* Operator;
    TSQLTemplate Template;
  };

  /// The operator whose template the condition (negated or not) matches.
  /// Values of a quoted type must be written in quotes.
  TDSOperator* Match(const TSQLCondition& condition, bool negated, const TDSField* field,
                     TSQLCaptures& captures) const;
  void AddCondition(TFilterBracket& bracket, const TSQLCondition& parsed) const;
  /// A value of the condition back as the user enters it.
  [[nodiscard]] std::string ValueFromSQL(TFieldType type, const TDSOperator& op, std::string_view raw,
                                         bool bare) const;
  /// A condition (or an AND of them) joining two of the statement's tables
  /// along a link, as the old syntaxes write it into WHERE.
  [[nodiscard]] bool IsJoinCondition(const TSQLConditionNode& node,
                                     const std::unordered_set<const TDSTable*>& tables) const;
  /// The structure table the statement names by that alias or name, or null.
  [[nodiscard]] TDSTable* TableOfQualifier(std::string_view qualifier) const;
  /// The expression with names qualified by the statement's own table
  /// aliases ("cu.CITY") qualified by the structure's instead ("C.CITY").
  [[nodiscard]] std::string InStructureAliases(std::string_view expr) const;

  // Working storage of Match, kept from condition to condition.
  struct TScratch {
    std::string Text;
    std::string Rewritten;
    TSQLMatchText Prepared;
  };

  TWQuery& query_;
  TWCustomDBStructure& structure_;
  const TSQLTableList* tables_;
  std::vector<TCandidate> candidates_;  // in the order they are tried
  std::vector<TSQLRewriteRule> rules_;
  std::unordered_map<std::string, TDSField*> fieldsBySQL_;     // blanks removed, lower case
  std::unordered_map<std::string, TDSField*> fieldsByColumn_;  // null when two tables have it
  // Each link's conditions, blanks and brackets removed, lower case.
  std::unordered_map<std::string, const TDSLink*> joinConditions_;
  mutable TScratch scratch_;
};

}  // namespace detail
}  // namespace ts4
