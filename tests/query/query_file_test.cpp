// The query text: exact layout, reading back, old texts, errors that leave the query as it was.
#include <gtest/gtest.h>

#include "query/old_options.h"
#include "sample_structure.h"
#include "test_support.h"

namespace {

using Lines = std::vector<std::string>;
using ts4test::StringsOf;
using ts4test::TSampleStructure;

Lines Saved(ts4::TWQuery& query) {
  ts4::TStrings lines;
  query.SaveToStrings(lines);
  return lines.Lines();
}

ts4::TFilterCond& Cond(const ts4::TWQuery& query, const char* id) {
  return static_cast<ts4::TFilterCond&>(*query.RowByID(id));
}

/// The query that tests/data/small_query.qry holds: one of each kind of row and value.
struct SmallQuery {
  SmallQuery() {
    s.db.AddOperator("InSub", "is in", "@f in (@1)", "", {ts4::ftInteger});
    s.db.OperatorByName("InSub")->SetValueType(ts4::vtSubQuery);
    query.SetSaveTitles(false);
    query.SetQueryName("Big orders");
    query.SetDescription(ts4::TStrings{"Orders above 100"});
    query.SetUserData(ts4::TStrings{"owner=sales"});
    ts4::TRFieldList& fields = query.QResult().ResultFields();
    fields.Add(s.Field("NAME"), ts4::stAscending)->SetSortOrder(1);
    ts4::TResultField* total = fields.Add(s.Field("TOTAL"), ts4::stDescending);
    total->SetFormula("SUM(@1)");
    total->SetAlias("Total");
    s.Cond(query.Root(), "CITY", "Equal", "Riga").SetCaption(1, "Riga");
    ts4::TFilterBracket& any = *query.Root().AddBracket();
    any.SetLinkType(ts4::fltAny);
    ts4::TFilterCond& name = s.Cond(any, "NAME", "Contains");
    name.SetValue1IsParam(true);
    name.Param1()->SetValue("mit");
    name.Param1()->SetVFormat("%@v%");
    s.Cond(any, "SINCE", "Equal", "2000-01-01").SetEnabled(false);
    ts4::TFilterCond& sub = s.Cond(any, "CUST_NO", "InSub", "select CUST_NO from ORDERS");
    sub.SetSubQuery(ts4::TStrings{"select CUST_NO", "from ORDERS"});
    sub.SetSubQueryOptions({ts4::soSelectDistinct});
  }
  TSampleStructure s;
  ts4::TWQuery query{&s.db};
};

const std::string SmallQueryFile = std::string(TS4_TEST_DATA) + "/small_query.qry";

TEST(QueryFile, SmallQueryWritesAndReadsBack) {
  SmallQuery q;
  ts4::TStrings expected;
  expected.LoadFromFile(SmallQueryFile);
  EXPECT_EQ(Saved(q.query), expected.Lines());

  ts4::TWQuery loaded(&q.s.db);
  loaded.SetSaveTitles(false);
  loaded.LoadFromFile(SmallQueryFile);
  EXPECT_EQ(Saved(loaded), expected.Lines());
  EXPECT_EQ(loaded.GetQueryText(), q.query.GetQueryText());
  EXPECT_EQ(Cond(loaded, "2.1.").Param1()->GetFullValue(), "%mit%");
  EXPECT_EQ(Cond(loaded, "2.1.").GetCaption(1), ":Parameter");
  EXPECT_EQ(Cond(loaded, "2.2.").Value1(), "2000-01-01");
  EXPECT_EQ(loaded.LoadedVersion(), 3.3);

  // Files are written with CR LF; captions, when kept, come first.
  const ts4test::TTempFile file("small.qry");
  q.query.SetSaveTitles(true);
  q.query.SaveToFile(file.Name());
  ts4::TStrings whole = q.query.Titles();  // the built-in table, each section ended by an empty line
  whole.Insert(19, "");
  whole.Add("");
  whole.Add("");
  whole.AddStrings(expected);
  EXPECT_EQ(file.Read(), whole.Text() + "\r\n");
}

// A new query ends with its root row. Found by fuzzing: the built-in captions
// came back with the empty lines that loading puts after each section, so the
// second save differed.
TEST(QueryFile, NewQueryWithCaptionsReadsBackToTheSameText) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  const Lines first = Saved(query);
  EXPECT_EQ(Lines(first.end() - 6, first.end()),
            (Lines{"[Row]", "Enabled=1", "RowType=1", "LinkType=0", "RowCount=0", ""}));
  ts4::TWQuery again(&s.db);
  again.LoadFromStrings(StringsOf(first));
  EXPECT_EQ(Saved(again), first);
}

// Texts a line cannot hold are written escaped, each on one line, and read
// back from the file exactly as they were.
TEST(QueryFile, LineBreaksAndHeaderLinesReadBackAsSaved) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  query.SetDescription(ts4::TStrings{"[Row]", "RowCount=5", " [Main] "});
  query.SetUserData(ts4::TStrings{"[\\x]", "a\rb"});
  query.SetTitle("ttlAll", "every\none");
  ts4::TFilterCond& cond = s.Cond(query.Root(), "CITY", "Equal", "line one\n[Row]\nRowCount=5");
  cond.SetCaption(1, "two\r\nlines");
  query.QResult().ResultFields().Add(s.Field("NAME"), ts4::stNoSort)->SetCaption("Name\n");
  const ts4test::TTempFile file("escaped.qry");
  query.SaveToFile(file.Name());
  const std::string text = file.Read();
  for (const char* line :
       {"[\\[Row]]", "RowCount=5", "[\\ [Main] ]", "[\\[\\\\x]]", "[\\a\\rb]", "[\\ttlAll=every\\none]",
        "[\\Value1=line one\\n[Row]\\nRowCount=5]", "[\\Caption1=two\\r\\nlines]", "[\\Caption=Name\\n]"})
    EXPECT_NE(text.find(std::string("\r\n") + line + "\r\n"), std::string::npos) << line;

  ts4::TWQuery loaded(&s.db);
  loaded.LoadFromFile(file.Name());
  EXPECT_EQ(Saved(loaded), Saved(query));
  EXPECT_EQ(loaded.Description(), query.Description());
  EXPECT_EQ(loaded.UserData(), query.UserData());
  EXPECT_EQ(loaded.GetTitle("ttlAll"), "every\none");
  EXPECT_EQ(Cond(loaded, "1.").Value1(), cond.Value1());
  EXPECT_EQ(Cond(loaded, "1.").GetCaption(1), "two\r\nlines");
}

TEST(QueryFile, StoredSQLOptions) {
  using ts4::TSQLOptions;
  const TSQLOptions unstored = {ts4::soASCIIRFields, ts4::soSortByNames};
  const std::pair<TSQLOptions, int> cases[] = {
      {{}, 0},
      {{ts4::soSelectDistinct, ts4::soBracketJoins}, 18},
      {unstored, 0},
      {{ts4::soSelectDistinct, ts4::soQuoteAliases, ts4::soBracketJoins, ts4::soBracketConditions}, 58},
  };
  for (auto [options, number] : cases) {
    EXPECT_EQ(ts4::SQLOptionsToInt(options), number);
    EXPECT_EQ(ts4::IntToSQLOptions(number), options - unstored);
  }
  EXPECT_EQ(ts4::IntToSQLOptions(1 | 4 | 64), TSQLOptions{});

  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  query.SetSQLOptions({ts4::soSelectDistinct, ts4::soBracketJoins, ts4::soSortByNames});
  query.SetSaveSQLOptions(true);
  query.SetSaveTitles(false);
  ts4::TStrings text;
  query.SaveToStrings(text);
  EXPECT_EQ(text[3], "Options=18");
  ts4::TWQuery loaded(&s.db);
  loaded.LoadFromStrings(text);
  EXPECT_EQ(loaded.SQLOptions(), (TSQLOptions{ts4::soSelectDistinct, ts4::soBracketJoins}));
  text.SetStrings(3, "Options=");  // not stored: the query keeps its own
  loaded.SetSQLOptions({ts4::soQuoteAliases});
  loaded.LoadFromStrings(text);
  EXPECT_EQ(loaded.SQLOptions(), TSQLOptions{ts4::soQuoteAliases});
}

TEST(QueryFile, DateValuesAsDayNumbers) {
  struct Case {
    const char *field, *op, *value1, *value2;
    const char *param1, *param2;  // values of parameters on value 1 and 2, or null
    const char *stored1, *stored2;
    const char* loaded1;  // value 1 read back
  };
  const Case cases[] = {
      {"SINCE", "Equal", "2000-01-01", "", nullptr, nullptr, "36526", "", "2000-01-01"},
      {"PLACED", "Equal", "2000-01-01 12:00", "", nullptr, nullptr, "36526.5", "", "2000-01-01 12:00:00"},
      {"PLACED", "Equal", "1899-12-29 06:00", "", nullptr, nullptr, "-1.25", "", "1899-12-29 06:00:00"},
      {"PLACED", "InList", "\"2000-01-01 12:00\",2000-01-02", "", nullptr, nullptr, "36526.5,36527", "",
       "\"2000-01-01 12:00:00\",2000-01-02"},
      {"SINCE", "Equal", "", "", "2000-01-02", nullptr, "36527", "", "2000-01-02"},
      // Value 2 is converted from the condition's own value, parameter or not.
      {"SINCE", "Between", "2000-01-01", "2000-01-03", nullptr, "2000-01-02", "36526", "36528", "2000-01-01"},
      {"SINCE", "Between", "2000-01-01", "", nullptr, "2000-01-02", "36526", "2000-01-02", "2000-01-01"},
  };
  for (const Case& c : cases) {
    TSampleStructure s;
    ts4::TWQuery query(&s.db);
    ts4::TFilterCond& cond = s.Cond(query.Root(), c.field, c.op, c.value1, c.value2);
    for (int k : {1, 2}) {
      if (const char* value = k == 1 ? c.param1 : c.param2) {
        cond.SetValueIsParam(k, true);
        cond.Param(k)->SetValue(value);
      }
    }
    ts4::TStrings text;
    query.SaveToStrings(text);
    const int at = text.Count() - 7;  // Value1 of the last row
    EXPECT_EQ(text[at], std::string("Value1=") + c.stored1) << c.value1;
    EXPECT_EQ(text[at + 1], std::string("Value2=") + c.stored2) << c.value1;
    ts4::TWQuery loaded(&s.db);
    loaded.LoadFromStrings(text);
    const ts4::TFilterCond& back = Cond(loaded, "1.");
    EXPECT_EQ(back.Param1() ? back.Param1()->Value() : back.Value1(), c.loaded1) << c.value1;
  }
}

TEST(QueryFile, AValueThatIsNoDateStopsTheSave) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  s.Cond(query.Root(), "SINCE", "Equal", "soon");
  ts4::TStrings list = {"kept"};
  ts4test::ExpectError<ts4::EWQueryPanelError>([&] { query.SaveToStrings(list); }, 12,
                                               "'soon' is not a valid date and time");
  EXPECT_EQ(list, ts4::TStrings{"kept"});
  EXPECT_EQ(query.State(), ts4::stIdle);
}

/// Rows nested `depth` brackets deep, the innermost holding nothing.
Lines NestedRows(int depth) {
  Lines lines = {"[Main]", "Version=3.3"};
  std::string id;
  for (int level = 0; level <= depth; ++level, id += "1.")
    lines.insert(lines.end(), {"[Row" + id + "]", "RowType=1", level < depth ? "RowCount=1" : "RowCount=0"});
  return lines;
}

TEST(QueryFile, BadTextsLeaveTheQueryAsItWas) {
  const std::tuple<Lines, int, std::string> cases[] = {
      {{"[Row]", "RowType=1", "RowCount=2", "[Row1.]", "RowType=1", "RowCount=2000000000", "[Row1.1.]"},
       9,
       "Can not find section Row1.2."},
      {{"[RFields]", "Count=2", "[RField1]", "Fields=1", "[Row]", "RowType=1"},
       9,
       "Can not find section RField2"},
      {NestedRows(ts4::MaxBracketDepth + 1), 10, "Brackets are nested more than 1000 levels deep"},
  };
  SmallQuery q;
  const Lines before = Saved(q.query);
  const ts4::TFilterRow* first = q.query.Root().GetRow(0);
  for (const auto& [lines, code, message] : cases) {
    const ts4::TStrings text = StringsOf(lines);
    ts4test::ExpectError<ts4::EWQueryPanelError>([&] { q.query.LoadFromStrings(text); }, code, message);
    EXPECT_EQ(Saved(q.query), before);
    EXPECT_EQ(q.query.Root().GetRow(0), first);
    EXPECT_TRUE(q.query.Active());
    EXPECT_EQ(q.query.State(), ts4::stIdle);
  }
  ts4::TWQuery alone;
  ts4test::ExpectError<ts4::EWQueryPanelError>([&] { alone.LoadFromStrings(StringsOf(before)); }, 3,
                                               "DbStruct is not specified");

  // The deepest nesting allowed reads, writes and reads again.
  q.query.LoadFromStrings(StringsOf(NestedRows(ts4::MaxBracketDepth)));
  q.query.LoadFromStrings(StringsOf(Saved(q.query)));
  EXPECT_EQ(q.query.Root().BracketHeight(), ts4::MaxBracketDepth);
}

TEST(QueryFile, OlderTexts) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  query.LoadFromStrings(StringsOf({
      "[Titles]",  "Title2= every ", "Title13=gone",     "[Main]",      "Version=2.1",                   //
      "[RFields]", "Count=2",        "[RField1]",        "Fields=99",   "[RField2]",   "Fields=2",       //
      "[Row]",     "RowType=1",      "LinkType=1",       "RowCount=3",                                   //
      "[Row1.]",   "FldName=CITY",   "Operator=EqualTo", "Value1=Riga",                                  //
      "[Row2.]",   "FieldID=99",     "Operator=Equal",   "[Row3.]",     "FieldID=3",   "Operator=Nope",  //
  }));
  EXPECT_EQ(query.LoadedVersion(), 2.1);
  EXPECT_EQ(query.GetTitle("ttlAll"), "every");
  EXPECT_EQ(query.Root().LinkType(), ts4::fltAny);
  // What the structure lacks is left out, the rest is kept.
  ASSERT_EQ(query.QResult().ResultFields().Count(), 1);
  EXPECT_EQ(query.QResult().ResultFields()[0]->Field(0), &s.Field("NAME"));
  const std::tuple<const char*, ts4::TDSField*, ts4::TDSOperator*> rows[] = {
      {"1.", &s.Field("CITY"), &s.Op("Equal")},
      {"2.", nullptr, &s.Op("Equal")},
      {"3.", &s.Field("CITY"), nullptr}};
  for (auto [id, field, op] : rows) {
    EXPECT_EQ(Cond(query, id).Field(), field) << id;
    EXPECT_EQ(Cond(query, id).Operator(), op) << id;
  }
  EXPECT_EQ(Cond(query, "1.").Value1(), "Riga");
}

TEST(QueryFile, CaptionsOfTheText) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  query.SetTitle("ttlAny", "some");
  query.LoadFromStrings(StringsOf({"[PanelTitles]", "ttlAll=every", "[Main]", "Version=3.3"}));
  EXPECT_EQ(query.GetTitle("ttlAll"), "every");
  EXPECT_EQ(query.GetTitle("ttlAny"), "any");  // laid over the design-time captions
  query.SetSaveTitles(false);
  query.LoadFromStrings(StringsOf({"[Query Panel]", "ttlAll=each", "[Main]", "Version=3.3"}));
  EXPECT_EQ(query.GetTitle("ttlAll"), "every");
}

TEST(QueryFile, OldFormOptions) {
  using ts4::TQPAppearanceOptions;
  using ts4::TSQLOptions;
  struct Case {
    const char* value;
    TQPAppearanceOptions added;
    ts4::TSQLSyntax syntax;
    TSQLOptions addedOptions;
  };
  const Case cases[] = {
      {"[poFlatButtons,poOracleJoins]", {ts4::aoFlatButtons}, ts4::ssOracle, {}},
      {"[poOracleJoins, poNewJoinsStyle]", {}, ts4::ssOracle, {}},
      {"[ poNewJoinsStyle , poAsciiRFields, poBracketConditions, poUnknown ]",
       {},
       ts4::ssSQL2,
       {ts4::soASCIIRFields, ts4::soBracketConditions}},
      {"[]", {}, ts4::ssSQL1, {}},
      {"[poNonEmptyBrackets,poShowCheckBoxes]",
       {ts4::aoNonEmptyBrackets, ts4::aoShowCheckBoxes},
       ts4::ssSQL1,
       {}},
  };
  for (const Case& c : cases) {
    ts4::TWQuery query;
    query.SetSQLOptions({ts4::soSortByNames});
    TQPAppearanceOptions appearance = {ts4::aoAllowParams};
    ts4::ReadOldOptions(c.value, appearance, query);
    EXPECT_EQ(appearance, c.added | TQPAppearanceOptions{ts4::aoAllowParams}) << c.value;
    EXPECT_EQ(query.SQLSyntax(), c.syntax) << c.value;
    EXPECT_EQ(query.SQLOptions(), c.addedOptions | TSQLOptions{ts4::soSortByNames}) << c.value;
  }
  for (const char* bad :
       {"poFlatButtons", "[poFlatButtons", "[poFlatButtons,,poRoundButtons]", "[po Flat]"}) {
    ts4::TWQuery query;
    TQPAppearanceOptions appearance;
    ts4test::ExpectError<ts4::EWQueryPanelError>([&] { ts4::ReadOldOptions(bad, appearance, query); }, 13,
                                                 "Invalid property value");
    EXPECT_EQ(query.SQLSyntax(), ts4::ssSQL2) << bad;
    EXPECT_TRUE(appearance.Empty()) << bad;
  }
}

}  // namespace
