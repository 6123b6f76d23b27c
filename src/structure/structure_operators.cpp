// The structure's operator list: the standard set, the optional operators
// that ExOperators switches, and the captions kept in DefOperators.
#include <array>
#include <span>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "structure/structure.h"

namespace ts4 {
namespace {

constexpr std::array<TStdOp, 7> BasicOperators = {
    TStdOp::Equal,       TStdOp::NotEqual,       TStdOp::LessThan, TStdOp::LessOrEqual,
    TStdOp::GreaterThan, TStdOp::GreaterOrEqual, TStdOp::IsNull};

// The optional operators in the order they are added, with the option that
// switches them. Refreshing captions deletes the operators of an absent
// option, except for the StartsWith pair, which only UpdateExOperators
// removes: stored structures rely on that difference.
struct TOptionalOperators {
  TExOperator Option;
  std::array<TStdOp, 2> Ops;
  std::size_t Count;
  bool DeletedOnCaptionRefresh;
  [[nodiscard]] std::span<const TStdOp> Members() const { return {Ops.data(), Count}; }
};

constexpr std::array<TOptionalOperators, 4> OptionalOperators = {{
    {xoInList, {TStdOp::InList}, 1, true},
    {xoStartsWith, {TStdOp::StartsWith, TStdOp::NotStartsWith}, 2, false},
    {xoContains, {TStdOp::Contains, TStdOp::NotContains}, 2, true},
    {xoBetween, {TStdOp::Between}, 1, true},
}};

}  // namespace

int TWCustomDBStructure::AddOperator(std::string_view name, std::string_view displayName,
                                     std::string_view sqlName, std::string_view valFormat,
                                     TAppliedTypes appliedTypes) {
  auto op = std::make_unique<TDSOperator>();
  InitOperator(*op, name, displayName, sqlName, valFormat, appliedTypes);
  return AddOperatorByRef(std::move(op));
}

int TWCustomDBStructure::AddOperatorByRef(std::unique_ptr<TDSOperator> op) {
  op->owner_ = this;
  operators_.Add(std::move(op));
  Changed();
  return operators_.Count() - 1;
}

void TWCustomDBStructure::InitOperator(TDSOperator& op, std::string_view name, std::string_view displayName,
                                       std::string_view sqlName, std::string_view valFormat,
                                       TAppliedTypes appliedTypes) {
  op.SetName(std::string(name));
  op.SetDisplayName(std::string(displayName));
  op.SetSQLName(std::string(sqlName));
  op.SetValFormat(std::string(valFormat));
  op.SetAppliedTypes(appliedTypes);
}

int TWCustomDBStructure::AddUpdateOperator(bool update, std::string_view name, std::string_view displayName,
                                           std::string_view sqlName, std::string_view valFormat,
                                           TAppliedTypes appliedTypes) {
  if (update) {
    int index = OperatorIndexByName(name);
    if (index >= 0) {
      BeginUpdate();
      InitOperator(*operators_[index], name, displayName, sqlName, valFormat, appliedTypes);
      Changed();
      EndUpdate();
      return index;
    }
  }
  return AddOperator(name, displayName, sqlName, valFormat, appliedTypes);
}

void TWCustomDBStructure::DelOperator(int index) {
  TDSOperator* op = Operators(index);
  NotifyRemoving({{}, {op}, false});
  for (TDSField* field : fields_) field->RemoveOperator(op);
  operators_.Delete(index);
  Changed();
}

void TWCustomDBStructure::DeleteOperatorByName(std::string_view name) {
  int index = OperatorIndexByName(name);
  if (index >= 0) DelOperator(index);
}

void TWCustomDBStructure::ClearOperators() {
  TStructureRemoval removal;
  for (const TDSOperator* op : operators_) removal.Operators.push_back(op);
  NotifyRemoving(removal);
  for (TDSField* field : fields_) field->operators_.clear();
  operators_.Clear();
  Changed();
}

TDSOperator* TWCustomDBStructure::Operators(int index) const {
  if (!operators_.ValidIndex(index))
    throw EWDBStructError(secInvalidOperatorIndex, msg::InvalidOperatorIndex, index);
  return operators_[index];
}

int TWCustomDBStructure::OperatorIndexByName(std::string_view name) const {
  const std::string_view wanted = CurrentOperatorName(name);
  for (int i = 0; i < operators_.Count(); ++i)
    if (SameText(operators_[i]->Name(), wanted)) return i;
  return -1;
}

TDSOperator* TWCustomDBStructure::OperatorByName(std::string_view name) const {
  int index = OperatorIndexByName(name);
  return index < 0 ? nullptr : operators_[index];
}

TDSOperator* TWCustomDBStructure::OperatorByExpr(std::string_view text) const {
  for (TDSOperator* op : operators_)
    if (CXPos(text, op->SQLName(), 1, 1) > 0) return op;
  return nullptr;
}

void TWCustomDBStructure::GetOperatorNames(TStrings& list) const {
  list.Clear();
  for (TDSOperator* op : operators_) list.Add(op->Name());
}

// ---- Captions and the standard set ---------------------------------------------------

void TWCustomDBStructure::SetDefOperators(const TStrings& captions) {
  defOperators_ = captions;
  AddDefOperators(true);
}

std::string TWCustomDBStructure::GetDefOperator(std::string_view name) const {
  return defOperators_.Values(name);
}

void TWCustomDBStructure::LoadDefsOpertors() {
  defOperators_.Clear();
  for (const TStandardOperator& op : StandardOperators)
    defOperators_.Add(std::string(op.Name) + "=" + std::string(op.Caption));
}

void TWCustomDBStructure::MergeDefOperators() {
  // SetValue appends a missing line and also fills a line left with an empty caption.
  for (const TStandardOperator& op : StandardOperators)
    if (defOperators_.Values(op.Name).empty()) defOperators_.SetValue(op.Name, op.Caption);
}

void TWCustomDBStructure::AddStandardOperator(bool update, TStdOp which) {
  const TStandardOperator& op = StandardOperator(which);
  int index =
      AddUpdateOperator(update, op.Name, GetDefOperator(op.Name), op.SQLName, op.ValFormat, op.AppliedTypes);
  // Re-initialising keeps an operator's value type; only InList insists on its own.
  if (op.ValueType != vtScalar) operators_[index]->SetValueType(op.ValueType);
}

void TWCustomDBStructure::AddDefOperators(bool update) {
  BeginUpdate();
  for (TStdOp op : BasicOperators) AddStandardOperator(update, op);
  for (const TOptionalOperators& group : OptionalOperators)
    if (exOperators_.Contains(group.Option))
      for (TStdOp op : group.Members()) AddStandardOperator(update, op);
  EndUpdate();
}

void TWCustomDBStructure::AddInListOperator(bool update) {
  AddStandardOperator(update, TStdOp::InList);
}
void TWCustomDBStructure::AddStartsWithOperator(bool update) {
  AddStandardOperator(update, TStdOp::StartsWith);
}
void TWCustomDBStructure::AddNotStartsWithOperator(bool update) {
  AddStandardOperator(update, TStdOp::NotStartsWith);
}
void TWCustomDBStructure::AddContainsOperator(bool update) {
  AddStandardOperator(update, TStdOp::Contains);
}
void TWCustomDBStructure::AddNotContainsOperator(bool update) {
  AddStandardOperator(update, TStdOp::NotContains);
}
void TWCustomDBStructure::AddBetweenOperator(bool update) {
  AddStandardOperator(update, TStdOp::Between);
}

void TWCustomDBStructure::UpdateOperatorCaption(std::string_view name, std::string_view caption) {
  if (TDSOperator* op = OperatorByName(name)) {
    op->SetDisplayName(std::string(caption));
    Changed();
  }
}

void TWCustomDBStructure::DeleteStandardOperator(TStdOp op) {
  DeleteOperatorByName(StandardOperator(op).Name);
}

void TWCustomDBStructure::UpdateDefOperators() {
  auto refresh = [this](TStdOp op) {
    std::string_view name = StandardOperator(op).Name;
    UpdateOperatorCaption(name, GetDefOperator(name));
  };
  BeginUpdate();
  for (TStdOp op : BasicOperators) refresh(op);
  for (const TOptionalOperators& group : OptionalOperators) {
    if (exOperators_.Contains(group.Option)) {
      for (TStdOp op : group.Members()) refresh(op);
    } else if (group.DeletedOnCaptionRefresh) {
      for (TStdOp op : group.Members()) DeleteStandardOperator(op);
    }
  }
  EndUpdate();
}

void TWCustomDBStructure::UpdateExOperators() {
  BeginUpdate();
  for (const TOptionalOperators& group : OptionalOperators)
    for (TStdOp op : group.Members())
      if (exOperators_.Contains(group.Option))
        AddStandardOperator(true, op);
      else
        DeleteStandardOperator(op);
  EndUpdate();
}

void TWCustomDBStructure::SetExOperators(TExOperators operators) {
  if (operators == exOperators_) return;
  exOperators_ = operators;
  UpdateExOperators();
  UpdateDefOperators();
}

}  // namespace ts4
