#include "qtsql/sql_type_mapping.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "foundation/string_utils.h"

namespace ts4 {
namespace {

// Whether the size of a column of that type is its first argument.
enum class TSizeFrom : std::uint8_t { sfNone, sfFirst };

struct TTypeRule {
  std::string_view Name;  // lower case, words separated by one blank
  TFieldType Type;
  TSizeFrom Size = TSizeFrom::sfNone;
};

constexpr std::array<TTypeRule, 66> Rules = {{
    {"date", ftDate},
    {"time", ftTime},
    {"time without time zone", ftTime},
    {"time with time zone", ftTime},
    {"timetz", ftTime},
    {"datetime", ftDateTime},
    {"datetime2", ftDateTime},
    {"smalldatetime", ftDateTime},
    {"timestamp", ftDateTime},
    {"timestamp without time zone", ftDateTime},
    {"timestamp with time zone", ftDateTime},
    {"timestamptz", ftDateTime},
    {"boolean", ftBoolean},
    {"bool", ftBoolean},
    {"bit", ftBoolean},
    {"smallint", ftSmallint},
    {"int2", ftSmallint},
    {"tinyint", ftSmallint},
    {"smallserial", ftSmallint},
    {"bigint", ftLargeint},
    {"int8", ftLargeint},
    {"bigserial", ftLargeint},
    {"integer", ftInteger},
    {"int", ftInteger},
    {"int4", ftInteger},
    {"serial", ftInteger},
    {"mediumint", ftInteger},
    {"money", ftCurrency},
    {"currency", ftCurrency},
    {"smallmoney", ftCurrency},
    {"real", ftFloat},
    {"float", ftFloat},
    {"float4", ftFloat},
    {"float8", ftFloat},
    {"double", ftFloat},
    {"double precision", ftFloat},
    {"char", ftFixedChar, TSizeFrom::sfFirst},
    {"character", ftFixedChar, TSizeFrom::sfFirst},
    {"nchar", ftFixedChar, TSizeFrom::sfFirst},
    {"bpchar", ftFixedChar, TSizeFrom::sfFirst},
    {"varchar", ftString, TSizeFrom::sfFirst},
    {"character varying", ftString, TSizeFrom::sfFirst},
    {"nvarchar", ftString, TSizeFrom::sfFirst},
    {"varchar2", ftString, TSizeFrom::sfFirst},
    {"nvarchar2", ftString, TSizeFrom::sfFirst},
    {"text", ftString},
    {"string", ftString},
    {"uuid", ftString},
    {"citext", ftString},
    {"name", ftString},
    {"interval", ftString},
    {"", ftString},
    {"clob", ftMemo},
    {"memo", ftMemo},
    {"longtext", ftMemo},
    {"mediumtext", ftMemo},
    {"json", ftMemo},
    {"jsonb", ftMemo},
    {"xml", ftMemo},
    {"blob", ftBlob},
    {"bytea", ftBlob},
    {"binary", ftBlob},
    {"varbinary", ftBlob},
    {"image", ftBlob},
    {"longblob", ftBlob},
    {"mediumblob", ftBlob},
}};

constexpr std::array<std::string_view, 3> DecimalNames = {"numeric", "decimal", "number"};

/// The declared type split into its name (lower case, one blank between
/// words, the bracketed arguments left out) and its numeric arguments.
struct TDeclaredType {
  std::string Name;
  std::vector<int> Arguments;
  bool HasArguments = false;
};

TDeclaredType Split(std::string_view declared) {
  TDeclaredType result;
  std::string arguments;
  int depth = 0;
  for (char c : declared) {
    if (c == '(') {
      ++depth;
      result.HasArguments = true;
      continue;
    }
    if (c == ')') {
      depth = std::max(depth - 1, 0);
      continue;
    }
    if (depth > 0) {
      arguments += c;
    } else if (IsBlank(c)) {
      if (!result.Name.empty() && result.Name.back() != ' ') result.Name += ' ';
    } else {
      result.Name += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
  }
  if (!result.Name.empty() && result.Name.back() == ' ') result.Name.pop_back();
  for (std::string_view rest = arguments; !rest.empty();) {
    const std::size_t comma = rest.find(',');
    const std::string_view item = Trim(rest.substr(0, comma));
    int value = 0;
    if (std::from_chars(item.data(), item.data() + item.size(), value).ec != std::errc()) value = 0;
    result.Arguments.push_back(value);
    if (comma == std::string_view::npos) break;
    rest.remove_prefix(comma + 1);
  }
  return result;
}

int Capped(int size) {
  return std::clamp(size, 0, 65535);
}

bool Holds(std::string_view name, std::initializer_list<std::string_view> parts) {
  return std::any_of(parts.begin(), parts.end(),
                     [name](std::string_view part) { return name.find(part) != std::string_view::npos; });
}

}  // namespace

TSQLColumnType FieldTypeOfSQLType(std::string_view declared) {
  const TDeclaredType type = Split(declared);
  const std::string_view name = type.Name;
  const auto argument = [&](std::size_t index) {
    return index < type.Arguments.size() ? Capped(type.Arguments[index]) : 0;
  };
  if (name.ends_with("[]")) return {ftString, 0};
  if (std::find(DecimalNames.begin(), DecimalNames.end(), name) != DecimalNames.end())
    return type.HasArguments ? TSQLColumnType{ftBCD, argument(1)} : TSQLColumnType{ftFloat, 0};
  for (const TTypeRule& rule : Rules) {
    if (rule.Name != name) continue;
    return {rule.Type, rule.Size == TSizeFrom::sfFirst ? argument(0) : 0};
  }
  // Names no rule knows, as SQLite reads them.
  if (Holds(name, {"int"})) return {ftInteger, 0};
  if (Holds(name, {"char", "clob", "text"})) return {ftString, 0};
  if (Holds(name, {"blob"})) return {ftBlob, 0};
  if (Holds(name, {"real", "floa", "doub"})) return {ftFloat, 0};
  return {ftString, 0};
}

}  // namespace ts4
