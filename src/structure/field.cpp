#include "structure/field.h"

#include <algorithm>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "structure/field_group.h"
#include "structure/operator.h"
#include "structure/structure.h"
#include "structure/table.h"

namespace ts4 {

TDSField::TDSField(TWCustomDBStructure& owner, TWFieldKind kind, int id)
    : owner_(&owner), id_(id), kind_(kind) {}

void TDSField::Changed() const {
  owner_->Changed();
}

void TDSField::SetID(int id) {
  id_ = id;
  owner_->NoteFieldID(id);
  Changed();
}

void TDSField::SetFieldName(std::string name) {
  if (kind_ == wfkVirtual) throw EWDBStructError(secFieldNameOnVirtual, std::string(msg::FieldNameOnVirtual));
  fieldExpr_ = std::move(name);
  Changed();
}

void TDSField::SetSQLExpr(std::string expr) {
  if (kind_ == wfkData) throw EWDBStructError(secExprOnDataField, std::string(msg::ExprOnDataField));
  fieldExpr_ = std::move(expr);
  Changed();
}

void TDSField::SetDisplayName(std::string caption) {
  displayName_ = std::move(caption);
  Changed();
}

TDSTable* TDSField::Tables(int index) const {
  if (index < 0 || index >= TableCount())
    throw EWDBStructError(secInvalidTableIndex, msg::InvalidTableIndex, index);
  return tables_[static_cast<std::size_t>(index)];
}

void TDSField::AddTable(TDSTable& table) {
  if (std::find(tables_.begin(), tables_.end(), &table) != tables_.end()) return;
  tables_.push_back(&table);
  Changed();
}

void TDSField::ExcludeTables(const std::vector<TDSTable*>& tables) {
  std::erase_if(tables_,
                [&](TDSTable* t) { return std::find(tables.begin(), tables.end(), t) != tables.end(); });
  Changed();
}

void TDSField::SetQuoted(bool quoted) {
  quoted_ = quoted;
  Changed();
}

void TDSField::SetFieldType(TFieldType type) {
  fieldType_ = type;
  Changed();
}

void TDSField::SetFieldSize(int size) {
  fieldSize_ = size;
  Changed();
}

void TDSField::SetEditType(TDSEditType type) {
  if (type == editType_) return;
  std::unique_ptr<TDSValueEditor> editor;
  switch (type) {
    case etAuto: break;
    case etEdit: editor = std::make_unique<TDSTextEditor>(); break;
    case etList: editor = std::make_unique<TDSListEditor>(); break;
    case etCustom: editor = std::make_unique<TDSCustomEditor>(); break;
    case etSQL: editor = std::make_unique<TDSSQLEditor>(*owner_); break;
  }
  editor_ = std::move(editor);
  editType_ = type;
  Changed();
}

void TDSField::SetUseInConditions(bool use) {
  useInConditions_ = use;
  Changed();
}

void TDSField::SetUseInResult(bool use) {
  useInResult_ = use;
  Changed();
}

TDSOperator* TDSField::Operators(int index) const {
  if (index < 0 || index >= OperatCount())
    throw EWDBStructError(secInvalidOperatorIndex, msg::InvalidOperatorIndex, index);
  return operators_[static_cast<std::size_t>(index)];
}

int TDSField::IndexOfOperator(const TDSOperator* op) const {
  auto it = std::find(operators_.begin(), operators_.end(), op);
  return it == operators_.end() ? -1 : static_cast<int>(it - operators_.begin());
}

int TDSField::AddOperator(TDSOperator& op) {
  operators_.push_back(&op);
  Changed();
  return OperatCount() - 1;
}

int TDSField::AddOperatorByName(std::string_view name) {
  TDSOperator* op = owner_->OperatorByName(name);
  if (op == nullptr) throw EWDBStructError(secOperatorNotFound, msg::OperatorNotFound, name);
  return AddOperator(*op);
}

void TDSField::DelOperator(int index) {
  if (index < 0 || index >= OperatCount())
    throw EWDBStructError(secInvalidOperatorIndex, msg::InvalidOperatorIndex, index);
  operators_.erase(operators_.begin() + index);
  Changed();
}

void TDSField::RemoveOperator(const TDSOperator* op) {
  std::erase(operators_, op);
}

void TDSField::ClearOperators() {
  operators_.clear();
  Changed();
}

void TDSField::MoveOperat(int from, int to) {
  if (from < 0 || from >= OperatCount())
    throw EWDBStructError(secInvalidOperatorIndex, msg::InvalidOperatorIndex, from);
  if (to < 0 || to >= OperatCount())
    throw EWDBStructError(secInvalidOperatorIndex, msg::InvalidOperatorIndex, to);
  TDSOperator* op = operators_[static_cast<std::size_t>(from)];
  operators_.erase(operators_.begin() + from);
  operators_.insert(operators_.begin() + to, op);
  Changed();
}

void TDSField::AddAppliedOperators() {
  operators_.clear();
  for (int i = 0; i < owner_->OperatCount(); ++i) {
    TDSOperator* op = owner_->Operators(i);
    if (op->AppliedTypes().Contains(fieldType_)) operators_.push_back(op);
  }
  Changed();
}

std::string TDSField::GetSQLExpr() const {
  if (kind_ == wfkVirtual) return fieldExpr_;
  std::string column = owner_->SQLFormats().QuoteName(fieldExpr_, quoted_);
  const TDSTable* table = Table();
  if (table != nullptr && !table->Alias().empty()) return table->Alias() + "." + column;
  return column;
}

std::string TDSField::GetCompoundName() const {
  return group_ == nullptr ? displayName_ : group_->GroupName() + "." + displayName_;
}

std::string TDSField::GetFullName() const {
  const TDSTable* table = Table();
  return table == nullptr ? displayName_ : table->DisplayName() + "." + displayName_;
}

std::string TDSField::GetGroupName() const {
  return group_ == nullptr ? std::string() : group_->GroupName();
}

std::string TDSField::ValueAsString(std::string_view value) const {
  return std::string(value);
}

}  // namespace ts4
