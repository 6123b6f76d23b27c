// Layouts of structure texts older than today's numbered sections. Where
// those files put things is kept here, apart from the current reader:
//
//   before 1.2   [Operations]  lines name=template,format; the format is the
//                              text after the last comma (templates may hold
//                              commas, formats do not); applied types are the
//                              default set of a new operator
//   1.2 .. 2.01  [Operations]  one operator name per line (text after a "="
//                              is ignored), each with [Operation:<name>]
//                              holding SQLName, ValFormat, AppliedTypes
//   before 1.4   [Tables]      lines alias=name (a line without "=" is a
//                              table whose alias is its name), each with
//                              [Table:<alias>] holding the keys of [Table:n];
//                              a Name key there wins over the list's name
//   before 2.0   [Fields]      lines key=caption, each with [Field:<key>]
//                              (and [Field:<key>.SQL] for an SQL field)
//                              holding the keys of [Field:n] or their old
//                              names; a field without Kind is a data field,
//                              one without TableAlias may name its table by
//                              TableName
//
// A missing list section means none of its items; a listed item whose own
// section is missing raises code 9. Operators of these files have no
// caption: they take the structure's DefOperators caption for their name,
// else the name itself. In every list empty lines are skipped.
#include "foundation/string_utils.h"
#include "structure/structure.h"
#include "structure/structure_file_p.h"

namespace ts4::detail {

std::string TStructureReader::DefaultCaption(std::string_view name) const {
  std::string caption = target_.GetDefOperator(CurrentOperatorName(name));
  return caption.empty() ? std::string(name) : caption;
}

void TStructureReader::ReadOperationLines() {
  TStrings lines;
  sections_.Read("Operations", lines);
  for (const std::string& line : lines) {
    const std::string name(Trim(GetBeforeSep("=", line)));
    if (name.empty()) continue;
    const std::string value = GetAfterSep("=", line);
    const std::size_t comma = value.rfind(',');
    TDSOperator& op = AddOperator(name);
    op.SetDisplayName(DefaultCaption(name));
    op.SetSQLName(value.substr(0, comma));
    op.SetValFormat(comma == std::string::npos ? std::string() : value.substr(comma + 1));
  }
}

void TStructureReader::ReadOperationSections() {
  TStrings names;
  TStrings body;
  sections_.Read("Operations", names);
  for (const std::string& line : names) {
    const std::string name(Trim(GetBeforeSep("=", line)));
    if (name.empty()) continue;
    RequireSection(sections_, "Operation:" + name, body);
    TDSOperator& op = AddOperator(name);
    op.SetDisplayName(body.IndexOfName("DisplayName") >= 0 ? body.Values("DisplayName")
                                                           : DefaultCaption(name));
    ReadOperatorKeys(op, body);
  }
}

void TStructureReader::ReadTableList() {
  TStrings lines;
  TStrings body;
  sections_.Read("Tables", lines);
  for (const std::string& line : lines) {
    const std::string alias = GetBeforeSep("=", line);
    if (Trim(alias).empty()) continue;
    const std::string listed = line.find('=') == std::string::npos ? alias : GetAfterSep("=", line);
    RequireSection(sections_, "Table:" + alias, body);
    const std::string name = body.IndexOfName("Name") >= 0 ? body.Values("Name") : listed;
    AddTable(name, alias, body, name);
  }
}

void TStructureReader::ReadFieldList() {
  TStrings lines;
  TStrings body;
  sections_.Read("Fields", lines);
  for (const std::string& line : lines) {
    const std::string key = GetBeforeSep("=", line);
    if (Trim(key).empty()) continue;
    const std::string section = "Field:" + key;
    RequireSection(sections_, section, body);
    ReadField(body, section + ".SQL", GetAfterSep("=", line));
  }
}

}  // namespace ts4::detail
