// The structure text, version 3.3, as the writer produces it and this reader
// reads it.
//
// Lines; a header "[Name]" starts a section whose body is every following
// line up to the next header. Body lines are key=value; keys are found
// ignoring case and a missing key reads as an empty value. Integers are
// decimal, booleans "0"/"1", lists comma text (an item with a blank, comma or
// double quote is quoted, inner quotes doubled). No empty lines are written.
// Sections in the order written:
//
//   [Main]          Version=3.3, OperatCount, TableCount, FieldCount,
//                   FieldGroups, DefaultMainTable, RootFieldsFirst
//   [Operator:n]    Name, DisplayName, SQLName, ValFormat,
//                   ExprType ("SameAsField" or a type name such as ftInteger),
//                   AppliedTypes (type names, each followed by a comma),
//                   ValueType (vtScalar, vtList, vtSubQuery)
//   [Table:n]       Name, DisplayName, Alias, Quoted, Hints,
//                   Links (comma text: aliases of the second tables of the
//                   table's own links, in link order), each link then in a
//                   section of its own (two links A-B, two sections)
//   [Link:A-B]      FldName1, FldName2, Operators (comma text),
//                   QuoteFields, LinkType (Inner, Left, Right, Full)
//   [Field:n]       ID, Kind (wfkData, wfkVirtual), FieldExpr, DisplayName,
//                   TableAlias (data fields only), EditType (0 auto, 1 edit,
//                   2 list, 3 custom, 4 SQL), FieldType (ordinal), FieldSize,
//                   Quoted, UIC, UIR, Operators (names joined by ","), then
//                   by edit type: DefValue, EditKind, EditMask and FmtVal (only
//                   for a mask that is not blank), Options (the option bits as
//                   a signed 32-bit number) | Items, Values | CustomData; an
//                   SQL field is followed by
//   [Field:n.SQL]   the lines of its SQL text, verbatim
//   [FieldGroupn]   GroupName, Fields (comma text of field IDs)
//   [RootGroup]     Fields (IDs of the fields in no group)
//   [DBSpecInfo]    the metadata provider's own lines, when it has any
//
// n counts from 1 in list order. Tables are named by alias everywhere; the
// sections of links, fields and groups refer to tables and fields only
// through aliases and IDs. A body line holding a line break, or one that
// would read as a header (an SQL line such as "[x]"), is stored escaped as
// "[\...]" (foundation/sections.h) and read back as it was; the section
// reader unescapes every body line. An alias of a linked table cannot hold a
// line break, nor a field's operator name a comma or blanks at either end.
//
// Older versions: without Version the text is 1.1. RootFieldsFirst counts
// from 2.62, TableCount from 1.4, FieldCount from 2.0, FieldGroups from 1.5,
// OperatCount above 2.0. Operators come from [Operator:n] from 2.01; between
// 1.2 and 2.01 from an [Operations] list of names, each with an
// [Operation:<name>] section (SQLName, ValFormat, AppliedTypes); before 1.2
// from [Operations] lines name=template,format. AppliedTypes are ordinals
// before 2.0, ValueType is the boolean ValueIsList before 2.9, Kind an
// ordinal before 3.0. Before 1.4 tables come from a [Tables] list of lines
// alias=name, each with a [Table:<alias>] section; before 2.0 fields come from
// a [Fields] list (see structure_file_legacy.cpp). The old field keys
// FieldName, Operats, DefaultValue and CondField stand for FieldExpr,
// Operators, DefValue and UIC. "EqualTo" is read as "Equal".
//
// The reader takes each section once, through an index built in one pass,
// and keeps alias, name, operator and ID look-ups in hash maps, so that
// loading is linear in the text whatever the text holds.
#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "foundation/enum_names.h"
#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/sections.h"
#include "foundation/string_utils.h"
#include "structure/structure.h"
#include "structure/structure_file_p.h"

namespace ts4::detail {
namespace {

// Versions at which the layout changed.
constexpr double DefaultVersion = 1.1;
constexpr double OperationSectionsVersion = 1.2;
constexpr double TableSectionsVersion = 1.4;
constexpr double FieldGroupsVersion = 1.5;
constexpr double FieldSectionsVersion = 2.0;  // also: AppliedTypes by name
constexpr double OperatorSectionsVersion = 2.01;
constexpr double GroupsByIDVersion = 2.61;
constexpr double RootFieldsFirstVersion = 2.62;
constexpr double ValueTypeByNameVersion = 2.9;
constexpr double KindByNameVersion = 3.0;

// Members of the enumerations stored as ordinals.
constexpr int FieldKindCount = static_cast<int>(wfkVirtual) + 1;
constexpr int EditTypeCount = static_cast<int>(etSQL) + 1;
constexpr int EditKindCount = static_cast<int>(tekTime) + 1;

bool Has(const TStrings& body, std::string_view key) {
  return body.IndexOfName(key) >= 0;
}

// The value of the key, or of the key older files used for it.
std::string Value(const TStrings& body, std::string_view key, std::string_view oldKey) {
  return Has(body, key) ? body.Values(key) : body.Values(oldKey);
}

// An enumeration stored as its ordinal: empty reads as the first member,
// anything else must be a number in range.
template <typename E>
E FromOrdinal(std::string_view text, int count, std::string_view message) {
  const std::string_view trimmed = Trim(text);
  const int ordinal = trimmed.empty() ? 0 : XStrToInt(trimmed, -1);
  if (ordinal < 0 || ordinal >= count) throw EWTessalyError(gecGeneral, message, text);
  return static_cast<E>(ordinal);
}

// The items of a list written without quoting ("a,b," or "a, b"), trimmed,
// empty ones skipped.
std::vector<std::string_view> PlainItems(std::string_view text) {
  std::vector<std::string_view> items;
  while (!text.empty()) {
    const std::size_t comma = std::min(text.find(','), text.size());
    const std::string_view item = Trim(text.substr(0, comma));
    if (!item.empty()) items.push_back(item);
    text.remove_prefix(std::min(comma + 1, text.size()));
  }
  return items;
}

TFieldTypes AppliedTypesFrom(std::string_view text, bool byName) {
  TFieldTypes types;
  for (std::string_view item : PlainItems(text))
    types.Include(byName ? StrToFldType(item)
                         : FromOrdinal<TFieldType>(item, FieldTypeCount, msg::UnknownFieldType));
  return types;
}

TFieldType ExprTypeFrom(std::string_view text) {
  text = Trim(text);
  return text.empty() || SameText(text, "SameAsField") ? ftUnknown : StrToFldType(text);
}

TStrings CommaList(std::string_view text) {
  TStrings list;
  list.SetCommaText(text);
  return list;
}

}  // namespace

// ---- Sections -----------------------------------------------------------------------

void RequireSection(TSectionIndex& sections, std::string_view name, TStrings& body) {
  if (!sections.Read(name, body)) throw EWDBStructError(secSectionNotFound, msg::SectionNotFound, name);
}

// ---- Reader -------------------------------------------------------------------------

TStructureReader::TStructureReader(const TStrings& list, TWCustomDBStructure& target)
    : sections_(list), target_(target) {}

void TStructureReader::Read() {
  ReadMain();
  ReadOperators();
  if (version_ >= TableSectionsVersion)
    ReadTables();
  else
    ReadTableList();
  ReadLinks();
  if (version_ >= FieldSectionsVersion)
    ReadFields();
  else
    ReadFieldList();
  NumberFieldsWithoutID();
  ReadGroups();
  HasDBSpecInfo = sections_.Read("DBSpecInfo", DBSpecInfo);
}

void TStructureReader::ReadMain() {
  TStrings main;
  RequireSection(sections_, "Main", main);
  const std::string version = main.Values("Version");
  version_ = Trim(version).empty() ? DefaultVersion : XStrToFloat(version, DefaultVersion);
  // A count is read only from the version that has it (OperatCount strictly
  // above 2.0, FieldCount from 2.0 on); a negative one is 0. Nothing is
  // reserved for a count: a huge one ends at its first missing section.
  auto count = [&](std::string_view key, bool present) {
    return present ? std::max(0, XStrToInt(main.Values(key))) : 0;
  };
  operatCount_ = count("OperatCount", version_ > FieldSectionsVersion);
  tableCount_ = count("TableCount", version_ >= TableSectionsVersion);
  fieldCount_ = count("FieldCount", version_ >= FieldSectionsVersion);
  groupCount_ = count("FieldGroups", version_ >= FieldGroupsVersion);
  target_.SetDefaultMainTable(main.Values("DefaultMainTable"));
  target_.SetRootFieldsFirst(version_ >= RootFieldsFirstVersion &&
                             XStrToBool(main.Values("RootFieldsFirst")));
}

// ---- Operators ----------------------------------------------------------------------

void TStructureReader::ReadOperators() {
  if (version_ < OperationSectionsVersion) return ReadOperationLines();
  if (version_ < OperatorSectionsVersion) return ReadOperationSections();
  TStrings body;
  for (int n = 1; n <= operatCount_; ++n) {
    RequireSection(sections_, "Operator:" + std::to_string(n), body);
    TDSOperator& op = AddOperator(body.Values("Name"));
    op.SetDisplayName(body.Values("DisplayName"));
    ReadOperatorKeys(op, body);
  }
}

TDSOperator& TStructureReader::AddOperator(std::string_view name) {
  auto op = std::make_unique<TDSOperator>();
  op->SetName(std::string(CurrentOperatorName(name)));
  TDSOperator& added = *op;
  target_.AddOperatorByRef(std::move(op));
  // The first operator of a name wins, as OperatorByName finds it.
  operatorsByName_.emplace(LowerCase(added.Name()), &added);
  return added;
}

void TStructureReader::ReadOperatorKeys(TDSOperator& op, const TStrings& body) const {
  op.SetSQLName(body.Values("SQLName"));
  op.SetValFormat(body.Values("ValFormat"));
  op.SetExprType(ExprTypeFrom(body.Values("ExprType")));
  op.SetAppliedTypes(AppliedTypesFrom(body.Values("AppliedTypes"), version_ >= FieldSectionsVersion));
  if (version_ >= ValueTypeByNameVersion) {
    const std::string type(Trim(body.Values("ValueType")));
    op.SetValueType(type.empty() ? vtScalar : StrToOpValueType(type));
  } else {
    op.SetValueType(XStrToBool(body.Values("ValueIsList")) ? vtList : vtScalar);
  }
}

TDSOperator& TStructureReader::OperatorNamed(std::string_view name) const {
  auto it = operatorsByName_.find(LowerCase(CurrentOperatorName(name)));
  if (it == operatorsByName_.end()) throw EWDBStructError(secOperatorNotFound, msg::OperatorNotFound, name);
  return *it->second;
}

// ---- Tables and links ---------------------------------------------------------------

void TStructureReader::ReadTables() {
  TStrings body;
  for (int n = 1; n <= tableCount_; ++n) {
    RequireSection(sections_, "Table:" + std::to_string(n), body);
    AddTable(body.Values("Name"), body.Values("Alias"), body, {});
  }
}

void TStructureReader::AddTable(const std::string& name, const std::string& alias, const TStrings& body,
                                std::string_view captionIfAbsent) {
  TDSTable* table = target_.AddTable(name, alias);
  table->SetTableAlias(alias);  // exactly as stored, even when empty
  table->SetDisplayName(Has(body, "DisplayName") ? body.Values("DisplayName") : std::string(captionIfAbsent));
  table->SetQuoted(XStrToBool(body.Values("Quoted")));
  table->SetHints(body.Values("Hints"));
  tablesByAlias_.emplace(LowerCase(alias), table);
  tablesByName_.emplace(LowerCase(name), table);
  pendingLinks_.push_back({table, alias, CommaList(body.Values("Links"))});
}

TDSTable* TStructureReader::TableByAlias(std::string_view alias) const {
  auto it = tablesByAlias_.find(LowerCase(alias));
  if (it == tablesByAlias_.end()) throw EWDBStructError(secNoSuchTable, msg::NoSuchTable, alias);
  return it->second;
}

void TStructureReader::ReadLinks() {
  // Links are read once every table exists: a link may lead to a later table.
  TStrings body;
  for (const TPendingLinks& from : pendingLinks_) {
    for (const std::string& alias : from.Targets) {
      TDSTable* other = TableByAlias(alias);
      RequireSection(sections_, "Link:" + from.Alias + "-" + alias, body);
      std::unique_ptr<TDSLink> link = target_.NewLink(*from.Table, *other);
      link->SetFields1(CommaList(body.Values("FldName1")));
      link->SetFields2(CommaList(body.Values("FldName2")));
      // A list without items (empty, blanks, or text the comma reader stops
      // short of) takes "=" for every pair, as a missing one does.
      const TStrings symbols = CommaList(body.Values("Operators"));
      if (symbols.Empty())
        link->ApplyDefOperator();
      else
        link->SetOperators(symbols);
      link->SetQuoteFields(XStrToBool(body.Values("QuoteFields")));
      // "left", "right" and "full" in any case; anything else is an inner join.
      link->SetLinkType(
          EnumFromName<TDSLinkType>(LinkTypeNames, Trim(body.Values("LinkType"))).value_or(ltInner));
      target_.AddLoadedLink(std::move(link));
    }
  }
}

// ---- Fields -------------------------------------------------------------------------

void TStructureReader::ReadFields() {
  TStrings body;
  for (int n = 1; n <= fieldCount_; ++n) {
    const std::string section = "Field:" + std::to_string(n);
    RequireSection(sections_, section, body);
    ReadField(body, section + ".SQL", {});
  }
}

void TStructureReader::ReadField(const TStrings& body, const std::string& sqlSection,
                                 std::string_view captionIfAbsent) {
  const std::string kindText(Trim(body.Values("Kind")));
  const TWFieldKind kind = version_ >= KindByNameVersion && !kindText.empty()
                               ? StrToFldKind(kindText)
                               : FromOrdinal<TWFieldKind>(kindText, FieldKindCount, msg::UnknownFieldKind);
  TDSTable* table = kind == wfkData ? FieldTable(body) : nullptr;

  TDSField* field = target_.AddLoadedField(kind, Value(body, "FieldExpr", "FieldName"), table);
  if (kind == wfkVirtual) AddQualifyingTables(*field);
  field->SetDisplayName(Has(body, "DisplayName") ? body.Values("DisplayName") : std::string(captionIfAbsent));
  if (Has(body, "ID")) {
    field->SetID(XStrToInt(body.Values("ID")));
    maxStoredID_ = std::max(maxStoredID_, field->ID());
  } else {
    fieldsWithoutID_.push_back(field);
  }
  field->SetEditType(FromOrdinal<TDSEditType>(body.Values("EditType"), EditTypeCount, msg::UnknownEditType));
  field->SetFieldType(
      FromOrdinal<TFieldType>(body.Values("FieldType"), FieldTypeCount, msg::UnknownFieldType));
  field->SetFieldSize(XStrToInt(body.Values("FieldSize")));
  field->SetQuoted(XStrToBool(body.Values("Quoted")));
  // Files older than these flags have neither key: their fields stay usable.
  if (Has(body, "UIC") || Has(body, "CondField"))
    field->SetUseInConditions(XStrToBool(Value(body, "UIC", "CondField")));
  if (Has(body, "UIR")) field->SetUseInResult(XStrToBool(body.Values("UIR")));
  const std::string operators = Value(body, "Operators", "Operats");
  for (std::string_view name : PlainItems(operators)) field->AddOperator(OperatorNamed(name));
  ReadEditor(*field, body, sqlSection);
}

void TStructureReader::AddQualifyingTables(TDSField& field) const {
  // The text keeps no tables for a virtual field: they are the tables whose
  // aliases qualify the names in its expression ("I.QUANTITY * I.UNIT_PRICE").
  const std::string_view expr = field.FieldExpr();
  for (const auto& [at, length] : SQLQualifiers(expr)) {
    auto it = tablesByAlias_.find(LowerCase(expr.substr(at, length)));
    if (it != tablesByAlias_.end()) field.AddTable(*it->second);  // each table once
  }
}

TDSTable* TStructureReader::FieldTable(const TStrings& body) const {
  if (Has(body, "TableAlias")) {
    const std::string alias = body.Values("TableAlias");
    return alias.empty() ? nullptr : TableByAlias(alias);
  }
  // Older sections may name the table instead.
  const std::string name = body.Values("TableName");
  if (name.empty()) return nullptr;
  auto it = tablesByName_.find(LowerCase(name));
  if (it == tablesByName_.end()) throw EWDBStructError(secNoSuchTable, msg::NoSuchTable, name);
  return it->second;
}

void TStructureReader::ReadEditor(TDSField& field, const TStrings& body, const std::string& sqlSection) {
  switch (field.EditType()) {
    case etAuto: break;
    case etEdit: {
      TDSTextEditor& editor = *field.TextEditor();
      editor.SetDefValue(Value(body, "DefValue", "DefaultValue"));
      editor.SetEditKind(
          FromOrdinal<TTextEditKind>(body.Values("EditKind"), EditKindCount, msg::UnknownEditKind));
      editor.SetEditMask(body.Values("EditMask"));
      editor.SetFmtVal(static_cast<std::uint8_t>(XStrToInt(body.Values("FmtVal"))));
      editor.SetOptions(static_cast<std::uint32_t>(XStrToInt(body.Values("Options"))));
      break;
    }
    case etList:
      field.ListEditor()->Items() = CommaList(body.Values("Items"));
      field.ListEditor()->Values() = CommaList(body.Values("Values"));
      break;
    case etCustom: field.CustomEditor()->CustomData() = CommaList(body.Values("CustomData")); break;
    case etSQL: RequireSection(sections_, sqlSection, field.SQLEditor()->SQL()); break;
  }
}

void TStructureReader::NumberFieldsWithoutID() {
  // Fields of old files carry no ID, and a damaged file may give two fields
  // one ID: such a field gets the next number after the stored IDs that no
  // field has, so that groups (which find fields by ID) and the written text
  // stay unambiguous. The first field with a stored ID keeps it.
  const std::unordered_set<const TDSField*> withoutID(fieldsWithoutID_.begin(), fieldsWithoutID_.end());
  std::unordered_set<int> used;
  std::vector<TDSField*> renumber;
  for (int i = 0; i < target_.FieldCount(); ++i) {
    TDSField* field = target_.Fields(i);
    if (withoutID.contains(field) || !used.insert(field->ID()).second) renumber.push_back(field);
  }
  long long next = static_cast<long long>(maxStoredID_) + 1;
  if (next > std::numeric_limits<int>::max()) next = 1;
  for (TDSField* field : renumber) {
    while (used.contains(static_cast<int>(next)))
      next = next < std::numeric_limits<int>::max() ? next + 1 : 1;
    field->SetID(static_cast<int>(next));
    used.insert(static_cast<int>(next));
  }
}

// ---- Field groups -------------------------------------------------------------------

void TStructureReader::ReadGroups() {
  // From 2.61 groups list field IDs. Older files, whose fields had no stable
  // IDs, list positions in the file's field order (1 = the first field).
  // Unknown items are skipped; which group wins for a field listed twice is
  // left to the structure (the first place).
  std::unordered_map<int, TDSField*> fields;
  for (int i = 0; i < target_.FieldCount(); ++i) {
    TDSField* field = target_.Fields(i);
    fields.emplace(version_ >= GroupsByIDVersion ? field->ID() : i + 1, field);
  }
  auto listed = [&](const TStrings& body) {
    std::vector<TDSField*> members;
    for (const std::string& item : CommaList(body.Values("Fields"))) {
      auto it = fields.find(XStrToInt(item));
      if (it != fields.end()) members.push_back(it->second);
    }
    return members;
  };
  TStrings body;
  for (int n = 1; n <= groupCount_; ++n) {
    RequireSection(sections_, "FieldGroup" + std::to_string(n), body);
    target_.AddFieldGroup(body.Values("GroupName"));
    GroupFields.push_back(listed(body));
  }
  if (sections_.Read("RootGroup", body)) RootFields = listed(body);
}

}  // namespace ts4::detail
