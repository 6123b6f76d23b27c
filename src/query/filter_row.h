#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/field_types.h"
#include "foundation/strings.h"
#include "query/query_observer.h"
#include "query/query_types.h"

namespace ts4 {

class TDSField;
class TDSOperator;
class TFilterBracket;
class TSQLParam;
class TWQuery;

/// A row of a query's condition tree: a condition or a bracket of rows.
class TFilterRow {
 public:
  TFilterRow(const TFilterRow&) = delete;
  TFilterRow& operator=(const TFilterRow&) = delete;
  virtual ~TFilterRow() = default;

  [[nodiscard]] TFilterRowType RowType() const { return rowType_; }
  [[nodiscard]] bool IsBracket() const { return rowType_ == frtBracket; }
  /// Dotted path of the row in the tree: "" for the root, "1." for its
  /// first row, "1.3." for the third row inside that one.
  [[nodiscard]] const std::string& RowID() const { return rowID_; }
  /// The bracket that holds the row; null for the root.
  [[nodiscard]] TFilterBracket* Parent() const { return parent_; }
  /// Line of the row in the panel's top-to-bottom order: the panel's own
  /// layout, so setting it tells no one.
  [[nodiscard]] int RowNum() const { return rowNum_; }
  void SetRowNum(int number) { rowNum_ = number; }
  /// A disabled row keeps its place and data but adds nothing to the SQL.
  /// The brackets above follow (CheckIfAllDisabled).
  [[nodiscard]] bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  [[nodiscard]] bool Hidden() const { return hidden_; }
  void SetHidden(bool hidden);
  [[nodiscard]] TWQuery& Query() const { return *query_; }
  /// Position among the parent's rows, -1 for the root.
  [[nodiscard]] int Index() const;
  /// Nesting level: 0 for the root, 1 for the root's rows, and so on.
  [[nodiscard]] int Level() const;

 protected:
  TFilterRow(TWQuery& query, TFilterRowType type) : query_(&query), rowType_(type) {}
  /// Tells the query's observers what changed in this row; every aspect
  /// but the hints and the hidden state also marks the query changed.
  void NotifyChanged(TRowAspects aspects);

 private:
  friend class TFilterBracket;
  friend class TWQuery;
  /// Makes the row ID the parent's followed by the number and a point.
  void NumberAs(const std::string& parentID, int number);

  TWQuery* query_;
  TFilterBracket* parent_ = nullptr;
  std::string rowID_;
  int rowNum_ = 0;
  TFilterRowType rowType_;
  bool enabled_ = true;
  bool hidden_ = false;
};

class TFilterCond;

/// A group of rows joined by one link type. Owns its rows.
class TFilterBracket final : public TFilterRow {
 public:
  explicit TFilterBracket(TWQuery& query) : TFilterRow(query, frtBracket) {}

  [[nodiscard]] TFilterLinkType LinkType() const { return linkType_; }
  void SetLinkType(TFilterLinkType type);

  [[nodiscard]] int GetRowCount() const { return static_cast<int>(rows_.size()); }
  /// The child at the index; a bad index raises EWTessalyError.
  [[nodiscard]] TFilterRow* GetRow(int index) const;

  /// Takes the row into this bracket at the index and gives it and every
  /// later sibling its row ID. Raises EWQueryPanelError code 15 for a row
  /// made for another query and code 10 when a bracket would nest deeper
  /// than MaxBracketDepth.
  TFilterRow* InsertRow(int index, std::unique_ptr<TFilterRow> row);
  TFilterCond* InsertCond(int index);
  TFilterBracket* InsertBracket(int index);
  TFilterCond* AddCond() { return InsertCond(GetRowCount()); }
  /// Makes room for that many rows, for a caller about to add them.
  void ReserveRows(int count) { rows_.reserve(static_cast<std::size_t>(std::max(count, 0))); }
  TFilterBracket* AddBracket() { return InsertBracket(GetRowCount()); }
  /// Inserts a copy of the row (a bracket with its whole subtree) at the
  /// index: the same fields, operators, values and settings, and a new
  /// parameter of this query for each parameter of the original, with its
  /// value, caption and value format. The original may belong to another
  /// query over the same structure, and may not be a root (else
  /// EWQueryPanelError code 15).
  TFilterRow* InsertClone(int index, const TFilterRow& source);
  /// Moves the row at `index`, with its subtree and its parameters, into
  /// the bracket `to` (this one or another of the query) so that it stands
  /// at `toIndex` there afterwards. Rows are renumbered, and a nested
  /// bracket left empty goes when the query keeps brackets non-empty.
  /// Raises the index error for a bad index, EWQueryPanelError code 16 when
  /// `to` is the row itself or lies inside it, code 15 for a bracket of
  /// another query and code 10 when brackets would nest too deep.
  void MoveRow(int index, TFilterBracket& to, int toIndex);

  /// Where a row with panel line `rowNum` belongs among the children.
  [[nodiscard]] int IndexForNewRow(int rowNum) const;
  /// The first child whose line is at least `rowNum`, or -1.
  [[nodiscard]] int IndexByRowNum(int rowNum) const;
  [[nodiscard]] int GetRowIndex(const TFilterRow* row) const;

  /// Frees the child at the index with its subtree and its parameters. When
  /// the query keeps brackets non-empty and this nested bracket holds just
  /// that child, the bracket removes itself from its parent instead (which
  /// may cascade upwards); `this` may then be gone on return. A bad index
  /// raises the index error and changes nothing.
  void DeleteRow(int index);
  /// Frees every child (and their parameters).
  void ClearRows();

  /// The row of this subtree with that ID, or null.
  [[nodiscard]] TFilterRow* RowByID(std::string_view id) const;
  /// The first direct child that is a condition, or null.
  [[nodiscard]] TFilterCond* GetFirstCondition() const;
  [[nodiscard]] TFilterRow* GetLastRow() const { return rows_.empty() ? nullptr : rows_.back().get(); }
  /// The last child's line, -1 when there is none.
  [[nodiscard]] int GetLastRowNum() const;

  /// Disables the bracket when no child is enabled, enables it when one is.
  /// The query runs it on a nested bracket whose child was enabled or
  /// disabled, removed, moved away, or that gets its first child.
  void CheckIfAllDisabled();

  /// Levels of brackets below this one: 0 when it holds none.
  [[nodiscard]] int BracketHeight() const;

 private:
  friend class TWQuery;
  friend class TFilterRow;
  /// Gives the children from `first` on their IDs, subtrees included.
  void RenumberFrom(int first);
  /// Renumbers from `first` and tells so when rows are there.
  void RenumberAndTell(int first);
  /// The model's rule for a nested bracket whose rows changed.
  void KeepEnabledInStep();
  /// Takes the row out of the list without telling anyone.
  std::unique_ptr<TFilterRow> Detach(int index);
  /// Appends a row a reader made, as it is: the reader's query is new and
  /// nobody observes it, and the text's enabled states are kept, not made
  /// to follow the rules. Raises code 10 for brackets nested too deep.
  TFilterRow* AppendRead(std::unique_ptr<TFilterRow> row);
  /// Checks that the row, a bracket with its subtree, may stand in this bracket.
  void CheckDepth(const TFilterRow& row) const;
  /// A detached copy of the row and its subtree for `query`, parameters left out.
  static std::unique_ptr<TFilterRow> CopyTree(TWQuery& query, const TFilterRow& source);

  TFilterLinkType linkType_ = fltAll;
  std::vector<std::unique_ptr<TFilterRow>> rows_;
};

/// A condition: a field, an operator and the values it is tested against.
/// Values are kept as the user typed or chose them; dates as ISO text.
class TFilterCond final : public TFilterRow {
 public:
  explicit TFilterCond(TWQuery& query) : TFilterRow(query, frtCriteria) {}

  [[nodiscard]] TDSField* Field() const { return field_; }
  /// Changes the field. An operator the new field does not offer goes, and
  /// so do the values (parameters unbound and deleted) whenever the operator
  /// goes, the type of the values changes, or either field takes its values
  /// from a list.
  void SetField(TDSField* field);
  [[nodiscard]] TDSOperator* Operator() const { return operator_; }
  void SetOperator(TDSOperator* op);

  [[nodiscard]] const std::string& Value1() const { return values_[0]; }
  [[nodiscard]] const std::string& Value2() const { return values_[1]; }
  /// Value 1 for index 1, value 2 for any other index.
  [[nodiscard]] const std::string& Value(int index) const { return values_[Slot(index)]; }
  /// Stores value 1 or 2, dropping the caption shown for the old value;
  /// another index raises EWTessalyError.
  void SetValue(int index, std::string value);
  /// The same, as the value label reports an edit.
  void DoValueChange(int index, std::string value) { SetValue(index, std::move(value)); }

  /// SQL text of a sub-query value.
  [[nodiscard]] const TStrings& SubQuery() const { return subQuery_; }
  void SetSubQuery(const TStrings& sql);
  [[nodiscard]] TSQLOptions SubQueryOptions() const { return subQueryOptions_; }
  void SetSubQueryOptions(TSQLOptions options);

  [[nodiscard]] TSQLParam* Param1() const { return params_[0]; }
  [[nodiscard]] TSQLParam* Param2() const { return params_[1]; }
  [[nodiscard]] TSQLParam* Param(int index) const { return params_[Slot(index)]; }
  [[nodiscard]] bool Value1IsParam() const { return params_[0] != nullptr; }
  [[nodiscard]] bool Value2IsParam() const { return params_[1] != nullptr; }
  /// Binds a parameter of the query to value 1 (its caption becomes
  /// ":Parameter"), or with null unbinds: the parameter is deleted and its
  /// last value becomes value 1, so nothing typed is lost; a parameter that
  /// never got a value gives back the value the condition had before.
  void SetParam1(TSQLParam* param) { SetParam(1, param); }
  void SetParam2(TSQLParam* param) { SetParam(2, param); }
  void SetParam(int index, TSQLParam* param);
  /// Makes value 1 a new parameter of the query, or a constant again.
  void SetValue1IsParam(bool on) { SetValueIsParam(1, on); }
  void SetValue2IsParam(bool on) { SetValueIsParam(2, on); }
  void SetValueIsParam(int index, bool on);

  /// The type the values have: the operator's expression type when set,
  /// else the field's type; ftUnknown without field or operator.
  [[nodiscard]] TFieldType GetExprType() const;
  /// The text shown for value 1 or 2.
  [[nodiscard]] const std::string& GetCaption(int index) const { return captions_[Slot(index)]; }
  void SetCaption(int index, std::string text);
  [[nodiscard]] const std::string& GetHint(int index) const { return hints_[Slot(index)]; }
  void SetHint(int index, std::string text);

  /// After a parameter's value changed: with the "Equal" operator the
  /// query's parameter values get the field's entry set to the value, with
  /// any other operator the entry is cleared.
  void UpdateSQLParams();

 private:
  friend class TWQuery;
  friend class TQueryResult;
  friend class TFilterBracket;
  static int Slot(int index) { return index == 1 ? 0 : 1; }
  static int CheckedSlot(int index);
  /// Drops the values, captions and parameters; the aspects that changed.
  TRowAspects ClearValues();
  /// Unbinds the parameter of the slot, keeping its value as the condition's own.
  void UnbindParam(std::size_t slot);

  TDSField* field_ = nullptr;
  TDSOperator* operator_ = nullptr;
  std::array<std::string, 2> values_;
  std::array<std::string, 2> captions_;
  std::array<std::string, 2> hints_;
  std::array<TSQLParam*, 2> params_ = {nullptr, nullptr};
  TStrings subQuery_;
  TSQLOptions subQueryOptions_;
};

}  // namespace ts4
