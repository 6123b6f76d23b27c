#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "locale_support.h"
#include "random_structure.h"
#include "structure/db_info.h"
#include "structure/structure.h"
#include "test_support.h"

namespace {

using Lines = std::vector<std::string>;
using ts4test::ExpectError;
using ts4test::StringsOf;

const std::string Unlistable = "it is empty, holds a comma or starts or ends with a blank";

// A provider with one setting that counts refreshes and records queries.
class ShopInfo : public ts4::TWDBInfo {
 public:
  std::string database = "shop";
  int updates = 0;
  std::vector<std::string> queries;
  void SaveInfo(ts4::TStrings& lines) override { lines.Add("DatabaseName=" + database); }
  void LoadInfo(const ts4::TStrings& lines) override { database = lines.Values("DatabaseName"); }
  void Update() override { ++updates; }
  void GetSQLValues(std::string_view sql, ts4::TStrings& /*values*/, ts4::TStrings& /*items*/) override {
    queries.emplace_back(sql);
  }
};

// Customers and their orders (a left link), employees and their bosses (a
// self-link), a field of every edit type and a field group.
struct Shop {
  ShopInfo info;
  ts4::TWDBStructure db;

  Shop() {
    db.SetDatabaseInfo(&info);
    db.ClearOperators();
    db.AddOperator("Equal", "is equal to", "@f = '@1'", "", {ts4::ftString, ts4::ftInteger});
    ts4::TDSOperator* inList = db.Operators(db.AddOperator("InList", "is in list", "@f in (@1)", "", {}));
    inList->SetExprType(ts4::ftInteger);
    inList->SetValueType(ts4::vtList);
    ts4::TDSTable* customers = db.AddTable("customer", "C");
    customers->SetDisplayName("Customers");
    ts4::TDSTable* orders = db.AddTable("orders", "O");
    orders->SetQuoted(true);
    orders->SetHints("NOLOCK");
    ts4::TDSTable* employees = db.AddTable("employee", "E");
    db.AddLink(*customers, *orders, "CustNo", "CustNo", ts4::ltOuterLeft);
    db.AddLink(*employees, *employees, "Boss", "EmpNo");

    ts4::TDSField* company = Add(ts4::wfkData, "Company", "Company, Inc.", customers, ts4::ftString);
    company->SetFieldSize(30);
    company->SetEditType(ts4::etEdit);
    ts4::TDSTextEditor& text = *company->TextEditor();
    text.SetDefValue("ACME");
    text.SetEditKind(ts4::tekMask);
    text.SetEditMask(">LL");
    text.SetFmtVal(1);
    text.SetOption(ts4::teoUpperCase, true);
    ts4::TDSField* city = Add(ts4::wfkData, "City", "City", customers, ts4::ftString);
    city->SetEditType(ts4::etList);
    city->ListEditor()->Items() = {"Berlin", "New York"};
    city->ListEditor()->Values() = {"B", "NY"};
    ts4::TDSField* total = Add(ts4::wfkVirtual, "O.Qty * O.Price", "Total", nullptr, ts4::ftFloat);
    total->SetUseInResult(false);
    total->SetEditType(ts4::etCustom);
    total->CustomEditor()->CustomData() = {"x=1"};
    ts4::TDSField* rep = Add(ts4::wfkData, "SalesRep", "Sales rep", orders, ts4::ftInteger);
    rep->SetQuoted(true);
    rep->AddOperator(*inList);
    rep->SetEditType(ts4::etSQL);
    rep->SQLEditor()->SQL() = {"select EmpNo, Name", "from employee"};
    Add(ts4::wfkData, "Since", "Since", customers, ts4::ftDate)->SetUseInConditions(false);

    ts4::TDSFieldGroup* group = db.AddFieldGroup("Orders");
    db.SetFieldGroup(*total, group);
    db.SetFieldGroup(*rep, group);
    db.SetRootFieldsFirst(true);
    db.SetDefaultMainTable("customer");
  }

  ts4::TDSField* Add(ts4::TWFieldKind kind, const char* expr, const char* caption, ts4::TDSTable* table,
                     ts4::TFieldType type) {
    ts4::TDSField* field = db.AddField(kind, expr, caption, table);
    field->SetFieldType(type);
    field->AddAppliedOperators();
    return field;
  }

  [[nodiscard]] Lines Text() const {
    ts4::TStrings list;
    db.SaveToStrings(list);
    return list.Lines();
  }
};

// The shop as the writer must write it, line by line.
const Lines ShopText = [] {
  ts4::TStrings text;
  text.SetText(R"([Main]
Version=3.3
OperatCount=2
TableCount=3
FieldCount=5
FieldGroups=1
DefaultMainTable=customer
RootFieldsFirst=1
[Operator:1]
Name=Equal
DisplayName=is equal to
SQLName=@f = '@1'
ValFormat=
ExprType=SameAsField
AppliedTypes=ftString,ftInteger,
ValueType=vtScalar
[Operator:2]
Name=InList
DisplayName=is in list
SQLName=@f in (@1)
ValFormat=
ExprType=ftInteger
AppliedTypes=
ValueType=vtList
[Table:1]
Name=customer
DisplayName=Customers
Alias=C
Quoted=0
Hints=
Links=O
[Link:C-O]
FldName1=CustNo
FldName2=CustNo
Operators==
QuoteFields=0
LinkType=Left
[Table:2]
Name=orders
DisplayName=orders
Alias=O
Quoted=1
Hints=NOLOCK
Links=
[Table:3]
Name=employee
DisplayName=employee
Alias=E
Quoted=0
Hints=
Links=E
[Link:E-E]
FldName1=Boss
FldName2=EmpNo
Operators==
QuoteFields=0
LinkType=Inner
[Field:1]
ID=1
Kind=wfkData
FieldExpr=Company
DisplayName=Company, Inc.
TableAlias=C
EditType=1
FieldType=1
FieldSize=30
Quoted=0
UIC=1
UIR=1
Operators=Equal
DefValue=ACME
EditKind=1
EditMask=>LL
FmtVal=1
Options=2
[Field:2]
ID=2
Kind=wfkData
FieldExpr=City
DisplayName=City
TableAlias=C
EditType=2
FieldType=1
FieldSize=0
Quoted=0
UIC=1
UIR=1
Operators=Equal
Items=Berlin,"New York"
Values=B,NY
[Field:3]
ID=3
Kind=wfkVirtual
FieldExpr=O.Qty * O.Price
DisplayName=Total
EditType=3
FieldType=6
FieldSize=0
Quoted=0
UIC=1
UIR=0
Operators=
CustomData=x=1
[Field:4]
ID=4
Kind=wfkData
FieldExpr=SalesRep
DisplayName=Sales rep
TableAlias=O
EditType=4
FieldType=3
FieldSize=0
Quoted=1
UIC=1
UIR=1
Operators=Equal,InList
[Field:4.SQL]
select EmpNo, Name
from employee
[Field:5]
ID=5
Kind=wfkData
FieldExpr=Since
DisplayName=Since
TableAlias=C
EditType=0
FieldType=9
FieldSize=0
Quoted=0
UIC=0
UIR=1
Operators=
[FieldGroup1]
GroupName=Orders
Fields=3,4
[RootGroup]
Fields=1,2,5
[DBSpecInfo]
DatabaseName=shop)");
  return text.Lines();
}();

// The text with the first line equal to `from` replaced, or removed when `to` is empty.
Lines Edited(Lines lines, const std::string& from, const std::optional<std::string>& to) {
  auto it = std::find(lines.begin(), lines.end(), from);
  EXPECT_NE(it, lines.end()) << from;
  if (it == lines.end()) return lines;
  if (to)
    *it = *to;
  else
    lines.erase(it);
  return lines;
}

TEST(StructureFileWriter, WritesEverySectionInOrder) {
  Shop shop;
  EXPECT_EQ(shop.Text(), ShopText);
}

TEST(StructureFileReader, ReadsItsOwnTextIntoALiveStructure) {
  ShopInfo info;
  info.database = "other";
  ts4::TWDBStructure db;
  db.SetDatabaseInfo(&info);
  db.SetQuotedTypes({ts4::ftInteger});
  db.SetExOperators({ts4::xoBetween});
  db.SetAutoAddFields(true);
  int changes = 0;
  db.OnChange = [&](ts4::TWCustomDBStructure&) { ++changes; };

  db.LoadFromStrings(StringsOf(ShopText));
  EXPECT_EQ(changes, 1);
  ts4::TStrings again;
  db.SaveToStrings(again);
  EXPECT_EQ(again.Lines(), ShopText);
  EXPECT_EQ(info.database, "shop") << "[DBSpecInfo] goes to the provider";
  EXPECT_EQ(info.updates, 1);
  EXPECT_EQ(db.QuotedTypes(), ts4::TFieldTypes{ts4::ftInteger}) << "settings outside the text stay";
  EXPECT_EQ(db.ExOperators(), ts4::TExOperators{ts4::xoBetween});
  EXPECT_TRUE(db.AutoAddFields());

  // What the text written again cannot show: the links between the items.
  EXPECT_EQ(db.Fields(3)->Group(), db.FieldGroups(0));
  for (int i = 0; i < db.TableCount(); ++i) EXPECT_EQ(&db.Tables(i)->Structure(), &db);
  for (int i = 0; i < db.FieldCount(); ++i) EXPECT_EQ(&db.Fields(i)->Structure(), &db);
  // The loaded SQL editor runs its query through this structure's provider.
  db.Fields(3)->SQLEditor()->SetOpened(true);
  EXPECT_EQ(info.queries, Lines{"select EmpNo, Name\r\nfrom employee"});
  EXPECT_EQ(db.AddField(ts4::wfkVirtual, "1", "", nullptr)->ID(), 6) << "new IDs follow the loaded ones";
}

TEST(StructureFileReader, ObserversAreToldBeforeTheOldItemsGo) {
  struct Recorder : ts4::TDBStructureObserver {
    const ts4::TWCustomDBStructure* db = nullptr;
    int calls = 0;
    bool tablesOrLinks = false;
    bool oldContentInPlace = false;
    Lines fieldCaptions;
    Lines operatorNames;
    void StructureItemsRemoving(const ts4::TStructureRemoval& removal) override {
      ++calls;
      tablesOrLinks = removal.TablesOrLinks;
      // Reading through the pointers proves the items still live.
      for (const ts4::TDSField* field : removal.Fields) fieldCaptions.push_back(field->DisplayName());
      for (const ts4::TDSOperator* op : removal.Operators) operatorNames.push_back(op->Name());
      oldContentInPlace = db->FieldCount() == 5 && db->Fields(0) == removal.Fields.front();
    }
  };
  Shop shop;
  Recorder recorder;
  recorder.db = &shop.db;
  shop.db.AddObserver(&recorder);
  ts4::TWDBStructure other;
  ts4test::BuildRandomStructure(other, 7, 2);
  shop.db.SetStructString(other.GetStructString());
  EXPECT_EQ(recorder.calls, 1);
  EXPECT_TRUE(recorder.tablesOrLinks);
  EXPECT_TRUE(recorder.oldContentInPlace);
  EXPECT_EQ(recorder.fieldCaptions, (Lines{"Company, Inc.", "City", "Total", "Sales rep", "Since"}));
  EXPECT_EQ(recorder.operatorNames, (Lines{"Equal", "InList"}));
  shop.db.RemoveObserver(&recorder);
}

struct BadText {
  std::string line;
  std::optional<std::string> replacement;
  int code;
  std::string message;
};

TEST(StructureFileReader, ErrorsLeaveTheStructureAsItWas) {
  const BadText cases[] = {
      {"Links=O", "Links=X", 4, "No such table X"},
      {"TableAlias=O", "TableAlias=Q", 4, "No such table Q"},
      {"Operators=Equal,InList", "Operators=Equal,Nope", 6, "Operator not found: Nope"},
      {"[Link:C-O]", std::nullopt, 9, "Can not find section Link:C-O"},
      {"Links=E", "Links=E,E", 9, "Can not find section Link:E-E"},
      {"[Main]", std::nullopt, 9, "Can not find section Main"},
      {"OperatCount=2", "OperatCount=2000000000", 9, "Can not find section Operator:3"},
      {"FieldGroups=1", "FieldGroups=2", 9, "Can not find section FieldGroup2"},
      {"[Field:4.SQL]", std::nullopt, 9, "Can not find section Field:4.SQL"},
      {"Kind=wfkData", "Kind=wfkOther", 0, "Unknown field kind: wfkOther"},
      {"FieldType=1", "FieldType=30", 0, "Unknown field type: 30"},
      {"ExprType=ftInteger", "ExprType=ftNope", 0, "Unknown field type: ftNope"},
      {"AppliedTypes=ftString,ftInteger,", "AppliedTypes=ftString,7,", 0, "Unknown field type: 7"},
      {"ValueType=vtList", "ValueType=vtMany", 0, "Unknown value type: vtMany"},
      {"EditType=1", "EditType=x", 0, "Unknown edit type: x"},
      {"EditKind=1", "EditKind=4", 0, "Unknown edit kind: 4"},
  };
  for (const BadText& c : cases) {
    SCOPED_TRACE(c.message);
    Shop shop;
    const ts4::TDSField* field = shop.db.Fields(0);
    const ts4::TDSOperator* op = shop.db.Operators(1);
    const ts4::TDSTable* table = shop.db.Tables(2);
    auto load = [&] { shop.db.LoadFromStrings(StringsOf(Edited(ShopText, c.line, c.replacement))); };
    if (c.code > 0)
      ExpectError<ts4::EWDBStructError>(load, c.code, c.message);
    else
      ExpectError(load, c.code, c.message);
    EXPECT_EQ(shop.Text(), ShopText);
    EXPECT_EQ(shop.db.Fields(0), field);
    EXPECT_EQ(shop.db.Operators(1), op);
    EXPECT_EQ(shop.db.Tables(2), table);
    EXPECT_EQ(shop.info.database, "shop");
  }
}

TEST(StructureFileReader, OddCountsAndGroupListsStillGiveEveryFieldOneGroup) {
  struct Case {
    Lines edits;  // pairs: line, replacement
    Lines expected;
  };
  const Case cases[] = {
      {{"FieldGroups=1", "FieldGroups=-3"}, {"FieldGroups=0", "[RootGroup]", "Fields=1,2,5,3,4"}},
      // Unknown IDs are skipped; a field listed twice stays where it was listed first.
      {{"Fields=3,4", "Fields=3,3,99,1", "Fields=1,2,5", "Fields=5,x,1,2"},
       {"[FieldGroup1]", "Fields=3,1", "[RootGroup]", "Fields=5,2,4"}},
      // A second field with a taken ID gets a free one (found by fuzzing:
      // the written groups did not read back the same).
      {{"ID=2", "ID=1"}, {"ID=1", "ID=6", "[RootGroup]", "Fields=1,5,6"}},
  };
  for (const Case& c : cases) {
    Lines text = ShopText;
    for (std::size_t i = 0; i + 1 < c.edits.size(); i += 2) text = Edited(text, c.edits[i], c.edits[i + 1]);
    ts4::TWDBStructure db;
    db.LoadFromStrings(StringsOf(text));
    ts4::TStrings saved;
    db.SaveToStrings(saved);
    ts4test::ExpectLinesInOrder(saved, c.expected);
    ts4::TWDBStructure again;
    again.LoadFromStrings(saved);
    ts4::TStrings resaved;
    again.SaveToStrings(resaved);
    EXPECT_EQ(resaved, saved);
  }
}

TEST(StructureFileReader, VirtualFieldsGetTheTablesTheirExpressionQualifies) {
  ts4::TWDBStructure written;
  written.AddTable("CUSTOMERS", "C");
  written.AddTable("ORDERS", "O");
  written.AddTable("ITEMS", "I");
  written.AddField(ts4::wfkVirtual, "C.LIMIT - o.TOTAL + LEN('I.x') + C.LIMIT", "Headroom", nullptr);
  ts4::TStrings text;
  written.SaveToStrings(text);
  ts4::TWDBStructure db;
  db.LoadFromStrings(text);
  const ts4::TDSField& field = *db.Fields(0);
  ASSERT_EQ(field.TableCount(), 2);
  EXPECT_EQ(field.Tables(0)->Alias(), "C");
  EXPECT_EQ(field.Tables(1)->Alias(), "O");
}

// Single values the reader takes more loosely than the writer writes them.
TEST(StructureFileReader, LooseValuesAreWrittenBackInTheirOwnForm) {
  const struct {
    const char* line;
    std::string read;
    const char* written;
  } cases[] = {
      {"LinkType=Left", "LinkType=left", "LinkType=Left"},  // link type names ignore case
      {"LinkType=Left", "LinkType=RIGHT", "LinkType=Right"},
      {"LinkType=Left", "LinkType=outer", "LinkType=Inner"},
      {"LinkType=Left", "LinkType=", "LinkType=Inner"},
      // Found by fuzzing: a value the comma reader finds no item in (it stops
      // at a NUL character) was kept as an empty list and read back as "=".
      {"Operators==", "Operators= ", "Operators=="},
      {"Operators==", std::string("Operators=\x16\0,<", 14), "Operators=="},
      // Applied types are names, each ended by a comma.
      {"AppliedTypes=ftString,ftInteger,", "AppliedTypes=", "AppliedTypes="},
      {"AppliedTypes=ftString,ftInteger,", "AppliedTypes= ftMemo , ftstring",
       "AppliedTypes=ftString,ftMemo,"},
  };
  for (const auto& c : cases) {
    Shop shop;
    shop.db.LoadFromStrings(StringsOf(Edited(ShopText, c.line, c.read)));
    EXPECT_EQ(shop.Text(), Edited(ShopText, c.line, c.written)) << testing::PrintToString(c.read);
  }
}

// A link's section is named by its tables' aliases, and a field lists its
// operators' names joined by commas without quotes: neither has room for an
// escape, so such names stop the save before anything is written.
TEST(StructureFileWriter, NamesWithNoRoomForAnEscapeStopTheSave) {
  const auto alias = [](int table, const char* name) {
    return [=](Shop& shop) { shop.db.Tables(table)->SetTableAlias(name); };
  };
  const auto operatorName = [](const char* name) {
    return [=](Shop& shop) { shop.db.Operators(0)->SetName(name); };
  };
  const std::tuple<std::function<void(Shop&)>, int, std::string> cases[] = {
      {alias(0, "C\nX"), 12, "Can not save the links of table alias \"C\nX\": it holds a line break"},
      {alias(1, "O\r"), 12, "Can not save the links of table alias \"O\r\": it holds a line break"},
      {operatorName("Equal,"), 13, "Can not save operator name \"Equal,\" in a field's list: " + Unlistable},
      {operatorName(" Equal"), 13, "Can not save operator name \" Equal\" in a field's list: " + Unlistable},
      {operatorName(""), 13, "Can not save operator name \"\" in a field's list: " + Unlistable},
  };
  for (const auto& [change, code, message] : cases) {
    Shop shop;
    change(shop);
    ts4::TStrings list{"kept"};
    ExpectError<ts4::EWDBStructError>([&] { shop.db.SaveToStrings(list); }, code, message);
    EXPECT_EQ(list, ts4::TStrings{"kept"});
    const ts4test::TTempFile file("refused.str");
    ExpectError<ts4::EWDBStructError>([&] { shop.db.SaveToFile(file.Name()); }, code, message);
    EXPECT_FALSE(std::filesystem::exists(file.Name()));
  }
}

TEST(StructureFileLocale, VersionIsWrittenWithAPoint) {
  auto locale = ts4test::CommaDecimalLocale();
  if (!locale) GTEST_SKIP() << "no German locale installed";
  ASSERT_EQ(std::localeconv()->decimal_point, std::string(","));
  Shop shop;
  EXPECT_EQ(shop.Text(), ShopText);
  ts4::TWDBStructure db;
  db.LoadFromStrings(StringsOf(ShopText));
  EXPECT_TRUE(db.RootFieldsFirst()) << "3.3 is read as at least 2.62";
}

// The text goes through its joined form, as through a file, so that a line
// break the writer let through would split its line.
TEST(StructureFileRoundTrip, RandomStructuresReadBackToTheSameText) {
  for (std::uint32_t seed = 1; seed <= 1600; ++seed) {
    ts4::TWDBStructure original;
    ts4test::BuildRandomStructure(original, seed, seed % 100 == 0 ? 6 : 1 + static_cast<int>(seed % 2));
    const std::string first = original.GetStructString();
    std::string second;
    if (seed % 3 == 0) {  // loading over the structure's own content
      original.SetStructString(first);
      second = original.GetStructString();
    } else {
      ts4::TWDBStructure copy;
      copy.SetStructString(first);
      second = copy.GetStructString();
    }
    ASSERT_EQ(second, first) << "seed " << seed;
  }
}

}  // namespace
