#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "foundation/object_list.h"

namespace ts4 {

/// One expression of a parsed select list.
class TSQLResultField {
 public:
  std::string Alias;      // text after "as", or empty
  std::string FieldName;  // derived from SQLExpr by SetSQLExpr
  std::string SQLExpr;    // the expression as written
  int SortOrder = 0;      // 0 not sorted, 1 ascending, 2 descending
  int SortIndex = 0;      // 1-based position in ORDER BY

  /// Stores the expression and derives FieldName: the whole text for a
  /// function call such as count(t.x) (a "(" before the first "."), else
  /// the text after the first ".".
  void SetSQLExpr(std::string value);
};

class TSQLResultFieldList : public TWObjectList<TSQLResultField> {
 public:
  bool AllFields = false;
  /// Index of the first field whose alias is the text (case ignored), or -1.
  [[nodiscard]] int IndexByAlias(std::string_view alias) const;
  /// Index of the first field whose expression is the text (case ignored), or -1.
  [[nodiscard]] int IndexByExpr(std::string_view expr) const;
};

/// A table of the FROM clause or of a join.
class TSQLTable {
 public:
  std::string Alias;
  std::string TableName;
  /// Stores the name; an empty alias becomes the name.
  void SetTableName(std::string value);
};

using TSQLTableList = TWObjectList<TSQLTable>;

class TSQLBracket;

/// A node of a parsed WHERE tree.
class TSQLConditionNode {
 public:
  TSQLConditionNode(const TSQLConditionNode&) = delete;
  TSQLConditionNode& operator=(const TSQLConditionNode&) = delete;
  virtual ~TSQLConditionNode() = default;
  [[nodiscard]] virtual bool IsBracket() const = 0;
  TSQLBracket* Parent = nullptr;
  bool Negated = false;  // a NOT in front of it (an odd number of them)

 protected:
  TSQLConditionNode() = default;
};

using TSQLConditionNodeList = TWObjectList<TSQLConditionNode>;

/// Conditions and brackets joined by one word.
class TSQLBracket final : public TSQLConditionNode {
 public:
  /// A new bracket appended to `parent` (owned by it), or for no parent a
  /// free one that the caller owns.
  static TSQLBracket* Create(TSQLBracket* parent);
  [[nodiscard]] bool IsBracket() const override { return true; }

  std::string LinkOperator;  // "or" or "and"
  TSQLConditionNodeList Items;

  /// Replaces every bracket holding a single item by that item, the whole
  /// tree through; a NOT on a replaced bracket moves to the item.
  void DeleteEmptyBrackets();
};

/// A comparison: left side, operator and right side as written.
class TSQLCondition final : public TSQLConditionNode {
 public:
  /// A new condition appended to `parent` (owned by it), or for no parent a
  /// free one that the caller owns.
  static TSQLCondition* Create(TSQLBracket* parent);
  [[nodiscard]] bool IsBracket() const override { return false; }

  std::string Expr;      // left side
  std::string Value;     // right side; for "between" both bounds joined by " and "
  std::string Operator;  // "=", "<>", "like", "in", "is", "between" ...
  bool IsSubQuery = false;

  /// Expr, operator and value, wrapped in "not(" ... ")" when negated.
  [[nodiscard]] std::string GetSQLExpr() const;
};

/// What the parser read from one SELECT statement.
class TWParserResult {
 public:
  TWParserResult();
  bool Distinct = false;
  bool AllFields = false;
  bool Joined = false;  // a JOIN clause named a table
  TSQLResultFieldList ResultFields;
  std::unique_ptr<TSQLBracket> Where;  // never null; empty without WHERE
  TSQLTableList Tables;
};

}  // namespace ts4
