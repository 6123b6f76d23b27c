#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/error.h"
#include "foundation/scanner.h"
#include "foundation/strings.h"
#include "sqlimport/sql_parse_tree.h"

namespace ts4 {

/// How many levels of brackets a condition may nest inside its outermost
/// bracket (the query builder's root bracket).
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
  /// Reads SQL into Result, the whole text or nothing: raises ESQLParserError
  /// for text it cannot read, text left over after the statement included;
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
  /// Raises ESQLParserError of the kind: its message, CR LF, "Line:" and the
  /// current token's line.
  [[noreturn]] void Error(TSQLParserErrorCode code) const;

 private:
  [[nodiscard]] bool Is(std::string_view word) const { return scanner_.GetTokStr() == word; }
  /// Moves on. A bracket without a partner is lost wherever the reading
  /// passes it; a string or quoted name that is never closed is bad SQL.
  void Next() {
    if (AtLostBracket()) Error(pecLostBracket);
    scanner_.NextToken();
    if (scanner_.GetTokType() == ttUnclosed) Error(pecWrongSQL);
  }
  /// Marks every bracket of the text that has no partner, then goes back to
  /// the first token.
  void FindLostBrackets();
  [[nodiscard]] bool AtLostBracket() const {
    TWScannerBookmark at;
    scanner_.GetBookmark(at);
    return at.Token < lost_.size() && lost_[at.Token];
  }
  /// What is left after the last clause: a ";" may end the statement, and
  /// anything else is an error.
  void ProcessEnd();
  [[nodiscard]] bool AtJoin() const;
  [[nodiscard]] bool AtClause() const;
  std::string ProcessTableName();
  std::string ReadExpression(std::initializer_list<std::string_view> stops);
  /// The source text from the bookmark up to the current token, as written.
  [[nodiscard]] std::string TextSince(const TWScannerBookmark& from) const;
  void ProcessComparison(TSQLBracket& bracket, bool negate);
  /// Items read by `readItem` and joined by `word`: a single item goes into
  /// the parent as it is, two or more into a bracket of that word.
  void ProcessJoined(TSQLBracket& parent, std::string_view word, void (TWSQLParser::*readItem)(TSQLBracket&));
  void CheckNesting() const;
  void ProcessOrderByNumbers();
  void ProcessOrderByNames();
  void ReadSortOrder(TSQLResultField& field, int index);
  [[noreturn]] void ErrorAtLine(TSQLParserErrorCode code, int line) const;

  TStrings sql_;
  TWScanner scanner_;
  std::unique_ptr<TWParserResult> result_;
  int depth_ = 0;           // brackets entered by the condition being read
  std::vector<bool> lost_;  // per token: a bracket without a partner
};

}  // namespace ts4
