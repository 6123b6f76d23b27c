#pragma once

#include <string_view>

// The library's string table: every message and resource text in one place,
// verbatim, filled by Format where it has directives.
namespace ts4::msg {

// Structure model.
inline constexpr std::string_view InvalidTableIndex = "Invalid table index %d";
inline constexpr std::string_view InvalidLinkIndex = "Invalid link index %d";
inline constexpr std::string_view InvalidOperatorIndex = "Invalid operator index %d";
inline constexpr std::string_view NoSuchTable = "No such table %s";
inline constexpr std::string_view NoPath = "Can not find path between tables";
inline constexpr std::string_view OperatorNotFound = "Operator not found: %s";
inline constexpr std::string_view FieldNameOnVirtual = "Can not assign field name to virtual field";
inline constexpr std::string_view ExprOnDataField = "Can not assign expression to data field";
inline constexpr std::string_view SectionNotFound = "Can not find section %s";
inline constexpr std::string_view FieldNotInTable = "Can not find field \"%s\" in table \"%s\"";
inline constexpr std::string_view NoDatabaseInfo = "DatabaseInfo is not specified";
inline constexpr std::string_view LinkAliasWithLineBreak =
    "Can not save the links of table alias \"%s\": it holds a line break";
inline constexpr std::string_view UnlistableOperatorName =
    "Can not save operator name \"%s\" in a field's list: it is empty, holds a comma or starts or ends "
    "with a blank";

// Query and SQL generation.
inline constexpr std::string_view NotEnoughInfo = "No enough information for building query";
inline constexpr std::string_view WrongResultLink = "Can't add result table: wrong link";
inline constexpr std::string_view QueryNotBuilt = "Query was not built properly";
inline constexpr std::string_view InvalidFilterTitle = "Invalid filter title";
inline constexpr std::string_view InvalidStringFormat = "Invalid string format";
inline constexpr std::string_view NestingTooDeep = "Brackets are nested more than %d levels deep";
inline constexpr std::string_view UnknownExprField = "Unknown field in expression: %s";
inline constexpr std::string_view NoDbStruct = "DbStruct is not specified";
inline constexpr std::string_view InvalidDateTime = "'%s' is not a valid date and time";
inline constexpr std::string_view InvalidPropertyValue = "Invalid property value";
inline constexpr std::string_view UnreadableCondition = "No operator of the structure reads the condition %s";
inline constexpr std::string_view ForeignRow = "A row can only be placed in a bracket of its own query";
inline constexpr std::string_view ForeignClone =
    "A row can only be copied from a query over the same structure";
inline constexpr std::string_view MoveIntoItself = "A bracket can not be moved into itself";

// SQL parser.
inline constexpr std::string_view WrongSQL = "Wrong SQL statement";
inline constexpr std::string_view LostBracket = "Lost bracket";

// Metadata providers.
inline constexpr std::string_view FieldCountTooSmall = "Field count must be >= 2";
inline constexpr std::string_view UnknownConnection = "There is no database connection named \"%s\"";
inline constexpr std::string_view UnknownDatabaseUrl =
    "Unknown database \"%s\": use sqlite:PATH or postgresql://USER@HOST:PORT/DBNAME";

// Foundation.
inline constexpr std::string_view CannotOpenFile = "Cannot open file \"%s\"";
inline constexpr std::string_view CannotWriteFile = "Cannot write file \"%s\"";
inline constexpr std::string_view ListIndexOutOfBounds = "List index out of bounds (%d)";
inline constexpr std::string_view UnknownFieldType = "Unknown field type: %s";
inline constexpr std::string_view UnknownFieldKind = "Unknown field kind: %s";
inline constexpr std::string_view UnknownValueType = "Unknown value type: %s";
inline constexpr std::string_view UnknownEditType = "Unknown edit type: %s";
inline constexpr std::string_view UnknownEditKind = "Unknown edit kind: %s";

// Drop-down labels.
inline constexpr std::string_view UnknownEditOption = "Unknown edit option %d";

// Resource texts.
inline constexpr std::string_view And = "and";

}  // namespace ts4::msg
