#include "structure/operator.h"

#include "foundation/enum_names.h"
#include "foundation/error.h"
#include "foundation/messages.h"

namespace ts4 {
namespace {

constexpr std::array<std::string_view, 3> ValueTypeNames = {"vtScalar", "vtList", "vtSubQuery"};

}  // namespace

int TDSOperator::GetParamCount() const {
  int count = 0;
  std::string marker;
  while (true) {
    marker.assign(1, '@');
    marker.append(std::to_string(count + 1));
    if (sqlName_.find(marker) == std::string::npos) return count;
    ++count;
  }
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
