#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/field_types.h"
#include "structure/value_editor.h"

namespace ts4 {

class TDSFieldGroup;
class TDSOperator;
class TDSTable;
class TWCustomDBStructure;

/// How the user enters a value for a field.
enum class TDSEditType : std::uint8_t { etAuto, etEdit, etList, etCustom, etSQL };
using enum TDSEditType;

/// A field the user can query: a column of a table (data field) or an SQL
/// expression (virtual field), with its caption, type and the operators
/// offered for it.
class TDSField {
 public:
  TDSField(TWCustomDBStructure& owner, TWFieldKind kind, int id);
  TDSField(const TDSField&) = delete;
  TDSField& operator=(const TDSField&) = delete;

  [[nodiscard]] TWCustomDBStructure& Structure() const { return *owner_; }
  /// Identifier, unique in the structure; files and groups refer to fields by it.
  [[nodiscard]] int ID() const { return id_; }
  void SetID(int id);
  [[nodiscard]] TWFieldKind Kind() const { return kind_; }
  /// The column name (data field) or the SQL expression (virtual field).
  [[nodiscard]] const std::string& FieldExpr() const { return fieldExpr_; }
  /// Sets the column name; on a virtual field raises EWDBStructError code 7.
  void SetFieldName(std::string name);
  /// Sets the expression; on a data field raises EWDBStructError code 8.
  void SetSQLExpr(std::string expr);
  [[nodiscard]] const std::string& DisplayName() const { return displayName_; }
  void SetDisplayName(std::string caption);

  /// The tables the field belongs to (a data field has one).
  [[nodiscard]] int TableCount() const { return static_cast<int>(tables_.size()); }
  [[nodiscard]] TDSTable* Tables(int index) const;
  /// The first table, or null.
  [[nodiscard]] TDSTable* Table() const { return tables_.empty() ? nullptr : tables_.front(); }
  /// Adds a table the field belongs to (once).
  void AddTable(TDSTable& table);
  /// Removes the given tables from the field's tables.
  void ExcludeTables(const std::vector<TDSTable*>& tables);

  [[nodiscard]] bool Quoted() const { return quoted_; }
  void SetQuoted(bool quoted);
  [[nodiscard]] TFieldType FieldType() const { return fieldType_; }
  void SetFieldType(TFieldType type);
  [[nodiscard]] int FieldSize() const { return fieldSize_; }
  void SetFieldSize(int size);
  [[nodiscard]] TDSEditType EditType() const { return editType_; }
  /// Changing the edit type replaces the value editor by a new one of the
  /// matching class (none for etAuto); the same type keeps the editor.
  void SetEditType(TDSEditType type);
  /// The field's value editor, null for etAuto.
  [[nodiscard]] TDSValueEditor* ValueEditor() const { return editor_.get(); }
  /// The editor as the class of the edit type, null for another type.
  [[nodiscard]] TDSTextEditor* TextEditor() const { return dynamic_cast<TDSTextEditor*>(editor_.get()); }
  /// The list editor of etList or etSQL.
  [[nodiscard]] TDSListEditor* ListEditor() const { return dynamic_cast<TDSListEditor*>(editor_.get()); }
  [[nodiscard]] TDSCustomEditor* CustomEditor() const {
    return dynamic_cast<TDSCustomEditor*>(editor_.get());
  }
  [[nodiscard]] TDSSQLEditor* SQLEditor() const { return dynamic_cast<TDSSQLEditor*>(editor_.get()); }
  [[nodiscard]] bool UseInConditions() const { return useInConditions_; }
  void SetUseInConditions(bool use);
  [[nodiscard]] bool UseInResult() const { return useInResult_; }
  void SetUseInResult(bool use);
  /// An object the application attaches; not stored.
  [[nodiscard]] const std::shared_ptr<void>& OleObject() const { return oleObject_; }
  void SetOleObject(std::shared_ptr<void> object) { oleObject_ = std::move(object); }
  /// The field's group, null for the root group.
  [[nodiscard]] TDSFieldGroup* Group() const { return group_; }

  // The operators offered for the field: references into the structure's list.
  [[nodiscard]] int OperatCount() const { return static_cast<int>(operators_.size()); }
  /// The operator at the index; a bad index raises EWDBStructError code 3.
  [[nodiscard]] TDSOperator* Operators(int index) const;
  [[nodiscard]] int IndexOfOperator(const TDSOperator* op) const;
  /// Appends a reference; returns its index.
  int AddOperator(TDSOperator& op);
  /// Appends the structure's operator of that name; raises code 6 when there is none.
  int AddOperatorByName(std::string_view name);
  /// Removes the reference at the index.
  void DelOperator(int index);
  /// Removes every reference to the operator.
  void RemoveOperator(const TDSOperator* op);
  void ClearOperators();
  void MoveOperat(int from, int to);
  /// Offers exactly the structure's operators whose applied types hold the field's type.
  void AddAppliedOperators();

  /// The text that replaces "@f": alias.column for a data field, the
  /// expression for a virtual one.
  [[nodiscard]] std::string GetSQLExpr() const;
  /// Group name + "." + caption, or the caption alone in the root group.
  [[nodiscard]] std::string GetCompoundName() const;
  /// Caption of the field's table + "." + caption, or the caption alone.
  [[nodiscard]] std::string GetFullName() const;
  /// The group's name, empty for the root group.
  [[nodiscard]] std::string GetGroupName() const;
  /// A value as the field shows it to the user.
  [[nodiscard]] std::string ValueAsString(std::string_view value) const;

 private:
  friend class TWCustomDBStructure;
  void Changed() const;
  TWCustomDBStructure* owner_;
  int id_;
  std::string fieldExpr_;
  std::string displayName_;
  std::vector<TDSTable*> tables_;
  TWFieldKind kind_;
  std::shared_ptr<void> oleObject_;
  std::vector<TDSOperator*> operators_;
  bool quoted_ = false;
  TFieldType fieldType_ = ftString;
  int fieldSize_ = 0;
  TDSEditType editType_ = etAuto;
  std::unique_ptr<TDSValueEditor> editor_;
  bool useInConditions_ = true;
  bool useInResult_ = true;
  TDSFieldGroup* group_ = nullptr;
};

}  // namespace ts4
