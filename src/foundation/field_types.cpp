#include "foundation/field_types.h"

#include "foundation/enum_names.h"
#include "foundation/error.h"
#include "foundation/messages.h"

namespace ts4 {
namespace {

constexpr std::array<std::string_view, 2> FieldKindNames = {"wfkData", "wfkVirtual"};

}  // namespace

std::string FldTypeToStr(TFieldType type) {
  return EnumToName(FieldTypeNames, type);
}

std::optional<TFieldType> TryStrToFldType(std::string_view name) {
  return EnumFromName<TFieldType>(FieldTypeNames, name);
}

TFieldType StrToFldType(std::string_view name) {
  if (auto type = TryStrToFldType(name)) return *type;
  throw EWTessalyError(gecGeneral, msg::UnknownFieldType, name);
}

std::optional<TFieldType> FldTypeFromOrdinal(long long ordinal) {
  if (ordinal < 0 || ordinal >= FieldTypeCount) return std::nullopt;
  return static_cast<TFieldType>(ordinal);
}

std::string FldKindToStr(TWFieldKind kind) {
  return EnumToName(FieldKindNames, kind);
}

std::optional<TWFieldKind> TryStrToFldKind(std::string_view name) {
  return EnumFromName<TWFieldKind>(FieldKindNames, name);
}

TWFieldKind StrToFldKind(std::string_view name) {
  if (auto kind = TryStrToFldKind(name)) return *kind;
  throw EWTessalyError(gecGeneral, msg::UnknownFieldKind, name);
}

}  // namespace ts4
