#include "structure/database_import.h"

#include <algorithm>
#include <array>
#include <vector>

#include "foundation/string_utils.h"
#include "structure/db_info.h"
#include "structure/structure.h"

namespace ts4 {
namespace {

bool IsLower(char c) {
  return c >= 'a' && c <= 'z';
}
bool IsUpper(char c) {
  return c >= 'A' && c <= 'Z';
}
char ToUpper(char c) {
  return IsLower(c) ? static_cast<char>(c - 'a' + 'A') : c;
}
char ToLower(char c) {
  return IsUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsWordBreak(char c) {
  return c == '_' || c == '-' || c == '.' || IsBlank(c);
}

/// The words of a name, as CaptionFromName splits it.
std::vector<std::string_view> NameWords(std::string_view name) {
  std::vector<std::string_view> words;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= name.size(); ++i) {
    const bool end = i == name.size() || IsWordBreak(name[i]);
    const bool camel = !end && i > start && IsLower(name[i - 1]) && IsUpper(name[i]);
    if (!end && !camel) continue;
    if (i > start) words.push_back(name.substr(start, i - start));
    start = end ? i + 1 : i;
  }
  return words;
}

// Words an alias must not be, since SQL would read them as its own.
constexpr std::array<std::string_view, 33> SQLWords = {
    "AS",  "AT",  "BY",  "DO",  "GO",  "IF",  "IN",  "IS",   "NO",   "OF",   "ON",
    "OR",  "TO",  "ADD", "ALL", "AND", "ANY", "ARE", "ASC",  "END",  "FOR",  "GET",
    "KEY", "NOT", "OUT", "ROW", "SET", "TOP", "USE", "DESC", "FROM", "JOIN", "WHERE"};

bool IsSQLWord(std::string_view word) {
  return std::find(SQLWords.begin(), SQLWords.end(), word) != SQLWords.end();
}

/// A name the SQL must quote: anything but letters, digits, "_", "$" and "#"
/// (and the points of an owner-qualified table name), or a leading digit.
bool NeedsQuotes(std::string_view name, bool dotted) {
  if (name.empty() || (name.front() >= '0' && name.front() <= '9')) return true;
  return std::any_of(name.begin(), name.end(),
                     [dotted](char c) { return !IsSQLNameChar(c) && !(dotted && c == '.'); });
}

/// What the provider says about one table, read before anything changes.
struct TTableInfo {
  std::string Name;
  std::vector<TDBFieldInfo> Columns;
};

}  // namespace

std::string CaptionFromName(std::string_view name) {
  std::string caption;
  for (std::string_view word : NameWords(name)) {
    if (!caption.empty()) caption += ' ';
    caption += ToUpper(word.front());
    for (char c : word.substr(1)) caption += ToLower(c);
  }
  return caption.empty() ? std::string(name) : caption;
}

std::string AliasFromName(std::string_view name, const std::unordered_set<std::string>& taken) {
  std::string initials;
  for (std::string_view word : NameWords(name)) {
    if (IsSQLNameChar(word.front())) initials += ToUpper(word.front());
  }
  if (initials.empty() || (initials.front() >= '0' && initials.front() <= '9')) initials.insert(0, "T");
  if (!taken.contains(initials) && !IsSQLWord(initials)) return initials;
  for (int number = 2;; ++number) {
    std::string alias = initials + std::to_string(number);
    if (!taken.contains(alias)) return alias;
  }
}

void AddDatabaseTables(TWCustomDBStructure& structure, TWDBInfo& info) {
  std::vector<TTableInfo> tables;
  for (const std::string& name : info.GetTableNames()) {
    TTableInfo& table = tables.emplace_back();
    table.Name = name;
    const TDBFieldList& columns = info.GetFieldList(name);
    for (int i = 0; i < columns.Count(); ++i) table.Columns.push_back(*columns.Items(i));
  }
  std::vector<TDBForeignKey> keys;
  info.ForeignKeysByDatabase(keys);

  structure.BeginUpdate();
  std::unordered_set<std::string> aliases;
  for (const TTableInfo& read : tables) {
    std::string alias = AliasFromName(read.Name, aliases);
    aliases.insert(alias);
    TDSTable* table = structure.AddTable(read.Name, alias);
    table->SetDisplayName(CaptionFromName(read.Name));
    table->SetQuoted(NeedsQuotes(read.Name, true));
    TDSFieldGroup* group = tables.size() > 1 ? structure.AddFieldGroup(table->DisplayName()) : nullptr;
    for (const TDBFieldInfo& column : read.Columns) {
      TDSField* field =
          structure.AddField(wfkData, column.FieldName, CaptionFromName(column.FieldName), table);
      field->SetFieldType(column.FieldType);
      field->SetFieldSize(column.FieldSize);
      field->SetQuoted(NeedsQuotes(column.FieldName, false));
      field->AddAppliedOperators();
      if (group != nullptr) structure.SetFieldGroup(*field, group);
    }
  }
  for (const TDBForeignKey& key : keys) {
    TDSTable* referring = structure.TableByName(tsName, key.Table);
    TDSTable* referred = structure.TableByName(tsName, key.RefTable);
    if (referring == nullptr || referred == nullptr || referring == referred) continue;
    if (key.Columns.empty() || key.Columns.size() != key.RefColumns.size()) continue;
    if (structure.FindLink(referred->Name(), referring->Name()) != nullptr) continue;
    TStrings columns;
    TStrings refColumns;
    for (const std::string& column : key.Columns) columns.Add(column);
    for (const std::string& column : key.RefColumns) refColumns.Add(column);
    structure.AddLink(*referred, *referring, refColumns.CommaText(), columns.CommaText());
  }
  structure.EndUpdate();
}

}  // namespace ts4
