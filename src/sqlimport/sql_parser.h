#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "foundation/scanner.h"
#include "foundation/strings.h"
#include "sqlimport/sql_parse_tree.h"

namespace ts4 {

/// How deep brackets and NOTs may nest in a statement.
inline constexpr int MaxSQLNesting = 1000;

/// Reads one SELECT statement into a TWParserResult: the select list with
/// sorting, the tables, and the WHERE clause as a tree of brackets. Join
/// conditions are read and dropped; GROUP BY is checked and dropped.
class TWSQLParser {
 public:
  TWSQLParser();
  virtual ~TWSQLParser() = default;
  TWSQLParser(const TWSQLParser&) = delete;
  TWSQLParser& operator=(const TWSQLParser&) = delete;

  void SetSQL(const TStrings& lines) { sql_ = lines; }
  [[nodiscard]] const TStrings& SQL() const { return sql_; }
  /// Reads SQL into Result. Raises ESQLParserError for text it cannot read;
  /// the result is then incomplete and the parser is thrown away.
  void Parse();
  [[nodiscard]] TWParserResult& Result() { return *result_; }
  [[nodiscard]] TWScanner& Scanner() { return scanner_; }

 protected:
  virtual void ProcessSelect();
  virtual void ProcessFrom();
  virtual void ProcessWhere();
  virtual void ProcessOrderBy();
  virtual void ProcessGroupBy();

  std::string ProcessIdentifier();
  void AddResultField(std::string expr, std::string alias);
  void ProcessResultField();
  std::string ProcessSQLExpr();
  std::string ProcessAlias() { return ProcessIdentifier(); }
  void SkipTokens(std::string_view token);
  void ProcessTable();
  void ProcessTableJoins();
  void ProcessBoolExpr(TSQLBracket& parent);
  void ProcessBoolTerm(TSQLBracket& parent);
  void ProcessBoolFactor(TSQLBracket& bracket);
  void ProcessCondition(TSQLBracket& bracket, bool negate);
  std::string ProcessConditionValue(bool& isSubQuery);
  /// Raises ESQLParserError: the message, CR LF, "Line:" and the current line.
  [[noreturn]] void Error(std::string_view message) const;

 private:
  TStrings sql_;
  TWScanner scanner_;
  std::unique_ptr<TWParserResult> result_;
  int depth_ = 0;  // brackets and NOTs being read
};

}  // namespace ts4
