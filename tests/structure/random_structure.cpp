#include "random_structure.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <string_view>

#include "structure/structure.h"

namespace ts4test {
namespace {

// Pieces of free text: letters, digits and the characters the text format
// must take care of (blank, comma, double quote, "=", brackets, line breaks
// of every kind, the escape's "[\" and "\"), template markers and a
// two-byte UTF-8 letter. No "#".
constexpr std::array<std::string_view, 27> TextPieces = {
    "a", "B", "z", "Q", "0", "7", " ", " ",        ",",  "\"", "=",    "'",  "@f", "@1",
    "%", "(", ")", "[", "]", ".", "-", "\xC3\xA4", "\n", "\r", "\r\n", "\\", "[\\"};
// The same without line breaks, for aliases, which name link sections.
constexpr std::array<std::string_view, 23> AliasPieces = {"a",  "B", "z", "Q",  "0",        "7",  " ",  ",",
                                                          "\"", "=", "'", "@f", "@1",       "%",  "(",  ")",
                                                          "[",  "]", ".", "-",  "\xC3\xA4", "\\", "[\\"};
// Pieces of operator names, which fields list unquoted and separated by commas.
constexpr std::array<std::string_view, 10> NamePieces = {"a", "B", "x",  "Y", "1",
                                                         " ", "=", "\"", ".", "\r\n"};
constexpr std::array<std::string_view, 5> LinkSymbols = {"=", "<>", ">=", "<", "like"};

// std::mt19937 gives the same numbers everywhere; the distributions of the
// standard library do not, so ranges are taken by remainder.
class TRandom {
 public:
  explicit TRandom(std::uint32_t seed) : engine_(seed) {}
  std::uint32_t Bits() { return static_cast<std::uint32_t>(engine_()); }
  /// 0 .. n - 1.
  int Below(int n) { return n <= 1 ? 0 : static_cast<int>(Bits() % static_cast<std::uint32_t>(n)); }
  bool Chance(int percent) { return Below(100) < percent; }
  template <std::size_t N>
  std::string Text(const std::array<std::string_view, N>& pieces, int maxPieces) {
    std::string text;
    for (int i = Below(maxPieces + 1); i > 0; --i) text += pieces[static_cast<std::size_t>(Below(N))];
    return text;
  }
  std::string Text(int maxPieces) { return Text(TextPieces, maxPieces); }
  ts4::TStrings List(int maxItems) {
    ts4::TStrings list;
    for (int i = Below(maxItems + 1); i > 0; --i) list.Add(Text(4));
    return list;
  }

 private:
  std::mt19937 engine_;
};

void AddOperators(ts4::TWCustomDBStructure& s, TRandom& r, int scale) {
  s.ClearOperators();
  if (r.Chance(35)) s.AddDefOperators(false);
  for (int i = r.Below(std::min(scale, 8) + 2); i > 0; --i) {
    // "Op" first: names are trimmed when read, and never become "EqualTo".
    const std::string name = "Op" + r.Text(NamePieces, 3) + "#" + std::to_string(i);
    const auto types = ts4::TFieldTypes::FromBits(r.Bits() & ((1U << ts4::FieldTypeCount) - 1));
    ts4::TDSOperator* op = s.Operators(s.AddOperator(name, r.Text(6), r.Text(8), r.Text(3), types));
    op->SetExprType(static_cast<ts4::TFieldType>(r.Below(ts4::FieldTypeCount)));
    op->SetValueType(static_cast<ts4::TOpValueType>(r.Below(3)));
  }
}

void AddTablesAndLinks(ts4::TWCustomDBStructure& s, TRandom& r, int scale) {
  for (int i = 1 + r.Below(2 * scale); i > 0; --i) {
    // The number after "#" keeps aliases apart, also ignoring case.
    ts4::TDSTable* table = s.AddTable(r.Text(6), r.Text(AliasPieces, 3) + "#" + std::to_string(i));
    table->SetDisplayName(r.Text(8));
    if (r.Chance(30)) table->SetHints(r.Text(5));
    table->SetQuoted(r.Chance(50));
  }
  for (int i = r.Below(2 * scale + 1); i > 0; --i) {
    ts4::TDSTable* from = s.Tables(r.Below(s.TableCount()));
    ts4::TDSTable* to = r.Chance(15) ? from : s.Tables(r.Below(s.TableCount()));
    auto link = s.NewLink(*from, *to);
    ts4::TStrings fields1;
    ts4::TStrings fields2;
    ts4::TStrings symbols;
    for (int k = r.Below(3); k > 0; --k) {
      fields1.Add(r.Text(4));
      fields2.Add(r.Text(4));
      symbols.Add(std::string(LinkSymbols[static_cast<std::size_t>(r.Below(LinkSymbols.size()))]));
    }
    link->SetFields1(fields1);
    link->SetFields2(fields2);
    link->SetOperators(symbols);
    link->SetLinkType(static_cast<ts4::TDSLinkType>(r.Below(4)));
    link->SetQuoteFields(r.Chance(50));
    s.AddLinkByRef(std::move(link));
  }
  // Only a table without links has no section named by its alias.
  for (int i = 0; i < s.TableCount(); ++i) {
    ts4::TDSTable& table = *s.Tables(i);
    if (table.LinkCount() == 0 && r.Chance(30)) table.SetTableAlias(table.Alias() + "\r\n" + r.Text(2));
  }
}

void FillEditor(ts4::TDSField& field, TRandom& r) {
  switch (field.EditType()) {
    case ts4::etAuto: break;
    case ts4::etEdit: {
      ts4::TDSTextEditor& editor = *field.TextEditor();
      editor.SetDefValue(r.Text(5));
      editor.SetEditKind(static_cast<ts4::TTextEditKind>(r.Below(4)));
      editor.SetEditMask(r.Chance(30) ? std::string("  ") : r.Text(5));
      editor.SetFmtVal(static_cast<std::uint8_t>(r.Below(256)));
      editor.SetOptions(r.Bits());
      break;
    }
    case ts4::etList:
      field.ListEditor()->Items() = r.List(4);
      field.ListEditor()->Values() = r.List(4);
      break;
    case ts4::etCustom: field.CustomEditor()->CustomData() = r.List(4); break;
    case ts4::etSQL:
      // Lines that read as headers ("[x]", "[\x]") among them.
      for (int k = 1 + r.Below(3); k > 0; --k) {
        const int kind = r.Below(7);
        field.SQLEditor()->SQL().Add(kind == 0   ? std::string()
                                     : kind == 1 ? "[" + r.Text(3) + "]"
                                     : kind == 2 ? r.Text(6)
                                                 : "select " + r.Text(6));
      }
      break;
  }
}

void AddFields(ts4::TWCustomDBStructure& s, TRandom& r, int scale) {
  for (int i = r.Below(8 * scale + 1); i > 0; --i) {
    const ts4::TWFieldKind kind = r.Chance(70) ? ts4::wfkData : ts4::wfkVirtual;
    ts4::TDSTable* table = kind == ts4::wfkData && r.Chance(90) ? s.Tables(r.Below(s.TableCount())) : nullptr;
    ts4::TDSField* field = s.AddField(kind, r.Text(6), {}, table);
    field->SetDisplayName(r.Text(6));
    field->SetFieldType(static_cast<ts4::TFieldType>(r.Below(ts4::FieldTypeCount)));
    field->SetFieldSize(static_cast<int>(r.Bits()));
    field->SetQuoted(r.Chance(50));
    field->SetUseInConditions(r.Chance(80));
    field->SetUseInResult(r.Chance(80));
    if (r.Chance(50)) {
      field->AddAppliedOperators();
    } else {
      field->ClearOperators();
      for (int k = r.Below(4); k > 0 && s.OperatCount() > 0; --k)
        field->AddOperator(*s.Operators(r.Below(s.OperatCount())));
    }
    field->SetEditType(static_cast<ts4::TDSEditType>(r.Below(5)));
    FillEditor(*field, r);
  }
  if (r.Chance(30)) {  // IDs that are neither positions nor in order, still unique
    const int base = r.Below(1000) - 500;
    for (int i = 0; i < s.FieldCount(); ++i) s.Fields(i)->SetID(base + 3 * i + r.Below(3));
  }
}

void AddGroups(ts4::TWCustomDBStructure& s, TRandom& r) {
  for (int i = r.Below(4); i > 0; --i) s.AddFieldGroup(r.Text(5));
  for (int i = 0; i < s.FieldCount(); ++i) {
    ts4::TDSField& field = *s.Fields(i);
    if (s.FieldGroupCount() > 0 && r.Chance(40)) {
      ts4::TDSFieldGroup* group = s.FieldGroups(r.Below(s.FieldGroupCount()));
      s.SetFieldGroup(field, group, r.Below(group->FieldCount() + 1));
    } else if (r.Chance(20)) {
      s.SetFieldGroup(field, nullptr, r.Below(s.RootGroup().FieldCount()));
    }
  }
}

}  // namespace

void BuildRandomStructure(ts4::TWCustomDBStructure& structure, std::uint32_t seed, int scale) {
  TRandom r(seed);
  scale = std::max(scale, 1);
  structure.BeginUpdate();
  structure.ClearStructure();
  AddOperators(structure, r, scale);
  AddTablesAndLinks(structure, r, scale);
  AddFields(structure, r, scale);
  AddGroups(structure, r);
  structure.SetRootFieldsFirst(r.Chance(50));
  structure.SetDefaultMainTable(r.Chance(50) ? structure.Tables(r.Below(structure.TableCount()))->Name()
                                             : r.Text(4));
  structure.EndUpdate();
}

}  // namespace ts4test
