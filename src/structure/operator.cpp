#include "structure/operator.h"

#include "foundation/assign.h"
#include "foundation/enum_names.h"
#include "foundation/error.h"
#include "foundation/messages.h"
#include "structure/structure.h"

namespace ts4 {
namespace {

constexpr std::array<std::string_view, 3> ValueTypeNames = {"vtScalar", "vtList", "vtSubQuery"};

}  // namespace

void TDSOperator::Changed() const {
  if (owner_ != nullptr) owner_->Changed();
}

void TDSOperator::SetName(std::string name) {
  if (AssignIfChanged(name_, std::move(name))) Changed();
}

void TDSOperator::SetDisplayName(std::string caption) {
  if (AssignIfChanged(displayName_, std::move(caption))) Changed();
}

void TDSOperator::SetSQLName(std::string sqlTemplate) {
  if (!AssignIfChanged(sqlName_, std::move(sqlTemplate))) return;
  paramCount_ = 0;
  while (sqlName_.find("@" + std::to_string(paramCount_ + 1)) != std::string::npos) ++paramCount_;
  Changed();
}

void TDSOperator::SetValFormat(std::string format) {
  if (AssignIfChanged(valFormat_, std::move(format))) Changed();
}

void TDSOperator::SetExprType(TFieldType type) {
  if (AssignIfChanged(exprType_, type)) Changed();
}

void TDSOperator::SetValueType(TOpValueType type) {
  if (AssignIfChanged(valueType_, type)) Changed();
}

void TDSOperator::SetAppliedTypes(TAppliedTypes types) {
  if (AssignIfChanged(appliedTypes_, types)) Changed();
}

std::string OpValueTypeToStr(TOpValueType type) {
  return EnumToName(ValueTypeNames, type);
}

std::optional<TOpValueType> TryStrToOpValueType(std::string_view name) {
  return EnumFromName<TOpValueType>(ValueTypeNames, name);
}

TOpValueType StrToOpValueType(std::string_view name) {
  if (auto type = TryStrToOpValueType(name)) return *type;
  throw EWTessalyError(gecGeneral, msg::UnknownValueType, name);
}

std::string_view CurrentOperatorName(std::string_view name) {
  // Only the exact old spelling is mapped: "equalto" stays as it is.
  return name == "EqualTo" ? std::string_view("Equal") : name;
}

}  // namespace ts4
