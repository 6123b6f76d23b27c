#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "query/formula.h"
#include "query/formula_edit.h"
#include "query/query_types.h"

namespace ts4 {

class TDSField;
class TRFieldList;
class TWCustomDBStructure;

/// A column of the select list: a formula over structure fields, with an
/// alias, a caption and a sorting.
class TResultField {
 public:
  explicit TResultField(TRFieldList* owner = nullptr) : owner_(owner) {}

  [[nodiscard]] TRFieldList* Owner() const { return owner_; }
  /// The owner's structure, or null.
  [[nodiscard]] TWCustomDBStructure* Structure() const;

  /// The structure fields the formula refers to, in marker order.
  [[nodiscard]] const std::vector<TDSField*>& Fields() const { return formula_.Fields; }
  [[nodiscard]] int FieldCount() const { return static_cast<int>(formula_.Fields.size()); }
  [[nodiscard]] TDSField* Field(int index) const;
  void AddDSField(TDSField* field);
  void SetDSFields(std::vector<TDSField*> fields);
  /// Removes the field at the index: its markers leave the formula and later
  /// markers move down by one.
  void DelDSField(int index);

  [[nodiscard]] const std::string& Formula() const { return formula_.Formula; }
  void SetFormula(std::string formula);
  [[nodiscard]] const std::string& Alias() const { return alias_; }
  void SetAlias(std::string alias);
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  [[nodiscard]] TSortingType Sorting() const { return sorting_; }
  void SetSorting(TSortingType sorting);
  /// 1-based position in the list, set before each build (not a change).
  [[nodiscard]] int Number() const { return number_; }
  void SetNumber(int number) { number_ = number; }
  /// Rank among the sorted fields; smaller sorts first.
  [[nodiscard]] int SortOrder() const { return sortOrder_; }
  void SetSortOrder(int order);

  /// The formula with each marker replaced by its field's SQL expression.
  [[nodiscard]] std::string GetSQLExpr() const;
  /// GetSQLExpr, then " as " and the alias when there is one.
  [[nodiscard]] std::string GetSelectExpr() const { return GetSelectExpr(alias_); }
  /// The same with another alias in the field's own place.
  [[nodiscard]] std::string GetSelectExpr(std::string_view alias) const;
  /// The alias, quoted when the list quotes aliases.
  [[nodiscard]] std::string GetSQLAlias() const { return GetSQLAlias(alias_); }
  [[nodiscard]] std::string GetSQLAlias(std::string_view alias) const;
  /// What ORDER BY names the field by: its first structure field's SQL expression.
  [[nodiscard]] std::string GetOrderName() const;
  /// True when the SQL calls SUM, COUNT, MAX, MIN or AVG (a name followed by "(",
  /// blanks between them allowed).
  [[nodiscard]] bool GetAgregate() const;
  /// The formula as the user edits it, fields as captions in braces.
  [[nodiscard]] std::string GetExpression() const;
  /// The structure's opening (1) or closing (other) quote of names; '"' without a structure.
  [[nodiscard]] char GetQuoteSymbol(int index) const;

  /// Takes the user's expression (fields as captions in braces). On a bad
  /// name raises EWQueryPanelError code 11 and changes nothing.
  void ProcessExpression(std::string_view text);
  /// Takes an SQL expression such as "SUM(O.TOTAL)".
  void ProcessSQLExpr(std::string_view text);

  /// The aggregate the whole formula is a call of, afNone when it is none.
  [[nodiscard]] TAggregateFunction Aggregate() const { return OuterAggregate(formula_.Formula); }
  /// Wraps the formula in the function instead of the one it had; afNone unwraps it.
  void SetAggregate(TAggregateFunction function);
  /// Extends the formula by the operator and the structure field ("@1"
  /// becomes "@1 + @2", the field appended as the next marker's); a field
  /// without structure fields becomes the field as it stands ("@1").
  void Combine(TFormulaOperator op, TDSField& field);

  /// Alias from the caption: blanks and punctuation become "_", only ASCII
  /// when the list asks for it, unique in the list. Only when the list
  /// generates aliases.
  void GenerateAlias();
  /// Caption from the expression without braces, unique in the list.
  void GenerateCaption();
  /// True when the caption is empty or the one GenerateCaption gives, so
  /// that it may follow the formula.
  [[nodiscard]] bool CaptionGenerated() const;

  /// Copies everything but the owner and the number.
  void Assign(const TResultField& source);
  void AssignTo(TResultField& dest) const { dest.Assign(*this); }

 private:
  friend class TRFieldList;
  /// Tells the owning list.
  void Changed() const;
  /// The alias GenerateAlias gives, or nothing when the list makes none.
  [[nodiscard]] std::optional<std::string> GeneratedAlias() const;
  [[nodiscard]] std::string GeneratedCaption() const;
  /// Assign without telling.
  void CopyFrom(const TResultField& source);

  TRFieldList* owner_;
  TFormula formula_{"@1", {}};
  std::string alias_;
  std::string caption_;
  TSortingType sorting_ = stNoSort;
  int number_ = 0;
  int sortOrder_ = 0;
};

}  // namespace ts4
