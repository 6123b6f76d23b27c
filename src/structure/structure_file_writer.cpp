// Writes the structure text; the format is stated at the top of
// structure_file_reader.cpp. Numbers are written with std::to_string and the
// version as a fixed text, so nothing depends on the process locale. Text
// that a line cannot hold is escaped (foundation/sections.h); the two places
// with no room for an escape (a link's header, a field's list of operator
// names) refuse the save instead.
#include <cstdint>
#include <string>
#include <utility>

#include "foundation/enum_names.h"
#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/sections.h"
#include "foundation/string_utils.h"
#include "structure/db_info.h"
#include "structure/structure.h"
#include "structure/structure_file_p.h"

namespace ts4 {
namespace {

// Appends sections and key=value lines to a list. Each value kind has its
// own name, so that a string literal never picks the boolean overload.
class TSectionWriter {
 public:
  explicit TSectionWriter(TStrings& list) : list_(list) {}
  void Section(std::string_view name) { list_.Add("[" + std::string(name) + "]"); }
  void Text(std::string_view key, std::string_view value) {
    list_.Add(EscapeSectionLine(std::string(key) + "=" + std::string(value)));
  }
  void Int(std::string_view key, long long value) { Text(key, std::to_string(value)); }
  void Bool(std::string_view key, bool value) { Text(key, XBoolToStr(value)); }
  void Lines(const TStrings& lines) {
    for (const std::string& line : lines) list_.Add(EscapeSectionLine(line));
  }

 private:
  TStrings& list_;
};

template <typename E>
long long Ordinal(E value) {
  return static_cast<long long>(value);
}

std::string AppliedTypesText(TAppliedTypes types) {
  std::string text;
  for (int i = 0; i < FieldTypeCount; ++i) {
    const auto type = static_cast<TFieldType>(i);
    if (types.Contains(type)) text += FldTypeToStr(type) + ",";
  }
  return text;
}

std::string FieldIDsText(const TDSFieldGroup& group) {
  TStrings ids;
  for (int i = 0; i < group.FieldCount(); ++i) ids.Add(std::to_string(group.Fields(i)->ID()));
  return ids.CommaText();
}

void WriteOperator(TSectionWriter& out, const TDSOperator& op) {
  out.Text("Name", op.Name());
  out.Text("DisplayName", op.DisplayName());
  out.Text("SQLName", op.SQLName());
  out.Text("ValFormat", op.ValFormat());
  out.Text("ExprType", op.ExprType() == ftUnknown ? std::string("SameAsField") : FldTypeToStr(op.ExprType()));
  out.Text("AppliedTypes", AppliedTypesText(op.AppliedTypes()));
  out.Text("ValueType", OpValueTypeToStr(op.ValueType()));
}

// The aliases of a link name its section, and a header has no escaped form.
void CheckLinkAlias(const std::string& alias) {
  if (alias.find_first_of("\r\n") != std::string::npos)
    throw EWDBStructError(secLinkAliasWithLineBreak, msg::LinkAliasWithLineBreak, alias);
}

// A field lists its operators by name, joined by commas without quotes, and
// the reader trims each name and skips empty ones (so older texts with
// blanks after the commas still read).
void CheckListedOperatorName(const std::string& name) {
  if (name.empty() || name.find(',') != std::string::npos || Trim(name).size() != name.size())
    throw EWDBStructError(secUnlistableOperatorName, msg::UnlistableOperatorName, name);
}

void WriteLink(TSectionWriter& out, const TDSLink& link) {
  CheckLinkAlias(link.Table1()->Alias());
  CheckLinkAlias(link.Table2()->Alias());
  out.Section("Link:" + link.Table1()->Alias() + "-" + link.Table2()->Alias());
  out.Text("FldName1", link.FldName1().CommaText());
  out.Text("FldName2", link.FldName2().CommaText());
  out.Text("Operators", link.Operators().CommaText());
  out.Bool("QuoteFields", link.QuoteFields());
  out.Text("LinkType", EnumToName(detail::LinkTypeNames, link.LinkType()));
}

void WriteTable(TSectionWriter& out, int number, const TDSTable& table) {
  // Each link is stored once, with the table it starts from.
  std::vector<const TDSLink*> own;
  TStrings targets;
  for (int i = 0; i < table.LinkCount(); ++i) {
    const TDSLink* link = table.Links(i);
    if (link->Table1() != &table) continue;
    own.push_back(link);
    targets.Add(link->Table2()->Alias());
  }
  out.Section("Table:" + std::to_string(number));
  out.Text("Name", table.Name());
  out.Text("DisplayName", table.DisplayName());
  out.Text("Alias", table.Alias());
  out.Bool("Quoted", table.Quoted());
  out.Text("Hints", table.Hints());
  out.Text("Links", targets.CommaText());
  for (const TDSLink* link : own) WriteLink(out, *link);
}

void WriteEditorKeys(TSectionWriter& out, const TDSField& field) {
  if (const TDSTextEditor* editor = field.TextEditor()) {
    out.Text("DefValue", editor->DefValue());
    out.Int("EditKind", Ordinal(editor->EditKind()));
    if (!Trim(editor->EditMask()).empty()) {
      out.Text("EditMask", editor->EditMask());
      out.Int("FmtVal", editor->FmtVal());
    }
    out.Int("Options", static_cast<std::int32_t>(editor->Options()));
  } else if (field.EditType() == etList) {
    out.Text("Items", field.ListEditor()->Items().CommaText());
    out.Text("Values", field.ListEditor()->Values().CommaText());
  } else if (const TDSCustomEditor* editor = field.CustomEditor()) {
    out.Text("CustomData", editor->CustomData().CommaText());
  }
}

void WriteField(TSectionWriter& out, int number, const TDSField& field) {
  const std::string section = "Field:" + std::to_string(number);
  out.Section(section);
  out.Int("ID", field.ID());
  out.Text("Kind", FldKindToStr(field.Kind()));
  out.Text("FieldExpr", field.FieldExpr());
  out.Text("DisplayName", field.DisplayName());
  if (field.Kind() == wfkData) out.Text("TableAlias", field.Table() != nullptr ? field.Table()->Alias() : "");
  out.Int("EditType", Ordinal(field.EditType()));
  out.Int("FieldType", Ordinal(field.FieldType()));
  out.Int("FieldSize", field.FieldSize());
  out.Bool("Quoted", field.Quoted());
  out.Bool("UIC", field.UseInConditions());
  out.Bool("UIR", field.UseInResult());
  std::string names;
  for (int i = 0; i < field.OperatCount(); ++i) {
    const std::string& name = field.Operators(i)->Name();
    CheckListedOperatorName(name);
    names += (i > 0 ? "," : "") + name;
  }
  out.Text("Operators", names);
  WriteEditorKeys(out, field);
  if (const TDSSQLEditor* editor = field.SQLEditor()) {
    out.Section(section + ".SQL");
    out.Lines(editor->SQL());
  }
}

}  // namespace

void TWCustomDBStructure::SaveToStrings(TStrings& list) const {
  // Written apart: a structure the text cannot hold leaves the list as it was.
  TStrings text;
  TSectionWriter out(text);
  out.Section("Main");
  out.Text("Version", FileVersion);
  out.Int("OperatCount", OperatCount());
  out.Int("TableCount", TableCount());
  out.Int("FieldCount", FieldCount());
  out.Int("FieldGroups", FieldGroupCount());
  out.Text("DefaultMainTable", defaultMainTable_);
  out.Bool("RootFieldsFirst", rootFieldsFirst_);
  for (int i = 0; i < operators_.Count(); ++i) {
    out.Section("Operator:" + std::to_string(i + 1));
    WriteOperator(out, *operators_[i]);
  }
  for (int i = 0; i < tables_.Count(); ++i) WriteTable(out, i + 1, *tables_[i]);
  for (int i = 0; i < fields_.Count(); ++i) WriteField(out, i + 1, *fields_[i]);
  for (int i = 0; i < groups_.Count(); ++i) {
    out.Section("FieldGroup" + std::to_string(i + 1));
    out.Text("GroupName", groups_[i]->GroupName());
    out.Text("Fields", FieldIDsText(*groups_[i]));
  }
  out.Section("RootGroup");
  out.Text("Fields", FieldIDsText(*rootGroup_));
  if (databaseInfo_ != nullptr) {
    TStrings info;
    databaseInfo_->SaveInfo(info);
    if (!info.Empty()) {
      out.Section("DBSpecInfo");
      out.Lines(info);
    }
  }
  list = std::move(text);
}

}  // namespace ts4
