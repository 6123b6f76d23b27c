#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/enum_set.h"

namespace ts4 {

/// Whether a structure field is a column of a table or an SQL expression.
enum class TWFieldKind : std::uint8_t { wfkData, wfkVirtual };

/// The data-access field types, in their stored ordinal order (0 to 29).
enum class TFieldType : std::uint8_t {
  ftUnknown,
  ftString,
  ftSmallint,
  ftInteger,
  ftWord,
  ftBoolean,
  ftFloat,
  ftCurrency,
  ftBCD,
  ftDate,
  ftTime,
  ftDateTime,
  ftBytes,
  ftVarBytes,
  ftAutoInc,
  ftBlob,
  ftMemo,
  ftGraphic,
  ftFmtMemo,
  ftParadoxOle,
  ftDBaseOle,
  ftTypedBinary,
  ftCursor,
  ftFixedChar,
  ftWideString,
  ftLargeint,
  ftADT,
  ftArray,
  ftReference,
  ftDataSet
};
using enum TFieldType;
using enum TWFieldKind;

inline constexpr int FieldTypeCount = 30;

/// A set of field types (operators' applied types, the structure's quoted types).
using TFieldTypes = TEnumSet<TFieldType>;

/// The name of every field type, indexed by ordinal.
inline constexpr std::array<std::string_view, FieldTypeCount> FieldTypeNames = {
    "ftUnknown",    "ftString",     "ftSmallint", "ftInteger",     "ftWord",      "ftBoolean",
    "ftFloat",      "ftCurrency",   "ftBCD",      "ftDate",        "ftTime",      "ftDateTime",
    "ftBytes",      "ftVarBytes",   "ftAutoInc",  "ftBlob",        "ftMemo",      "ftGraphic",
    "ftFmtMemo",    "ftParadoxOle", "ftDBaseOle", "ftTypedBinary", "ftCursor",    "ftFixedChar",
    "ftWideString", "ftLargeint",   "ftADT",      "ftArray",       "ftReference", "ftDataSet"};

/// "ftString" for ftString and so on.
[[nodiscard]] std::string FldTypeToStr(TFieldType type);
/// The type of that name (case ignored); raises EWTessalyError for an unknown name.
[[nodiscard]] TFieldType StrToFldType(std::string_view name);
/// The type of that name (case ignored), or nothing.
[[nodiscard]] std::optional<TFieldType> TryStrToFldType(std::string_view name);
/// The type of that ordinal, or nothing when it is out of range.
[[nodiscard]] std::optional<TFieldType> FldTypeFromOrdinal(long long ordinal);

/// "wfkData" or "wfkVirtual".
[[nodiscard]] std::string FldKindToStr(TWFieldKind kind);
/// The kind of that name (case ignored); raises EWTessalyError for an unknown name.
[[nodiscard]] TWFieldKind StrToFldKind(std::string_view name);
/// The kind of that name (case ignored), or nothing.
[[nodiscard]] std::optional<TWFieldKind> TryStrToFldKind(std::string_view name);

}  // namespace ts4
