#include "foundation/field_types.h"

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"

namespace ts4 {
namespace {

constexpr std::array<std::string_view, 2> FieldKindNames = {"wfkData", "wfkVirtual"};

}  // namespace

std::string FldTypeToStr(TFieldType type) {
  auto ordinal = static_cast<std::size_t>(type);
  return ordinal < FieldTypeNames.size() ? std::string(FieldTypeNames[ordinal]) : std::string();
}

std::optional<TFieldType> TryStrToFldType(std::string_view name) {
  for (std::size_t i = 0; i < FieldTypeNames.size(); ++i)
    if (SameText(FieldTypeNames[i], name)) return static_cast<TFieldType>(i);
  return std::nullopt;
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
  return std::string(FieldKindNames[kind == wfkVirtual ? 1 : 0]);
}

std::optional<TWFieldKind> TryStrToFldKind(std::string_view name) {
  for (std::size_t i = 0; i < FieldKindNames.size(); ++i)
    if (SameText(FieldKindNames[i], name)) return static_cast<TWFieldKind>(i);
  return std::nullopt;
}

TWFieldKind StrToFldKind(std::string_view name) {
  if (auto kind = TryStrToFldKind(name)) return *kind;
  throw EWTessalyError(gecGeneral, msg::UnknownFieldKind, name);
}

}  // namespace ts4
