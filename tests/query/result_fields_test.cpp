// Result fields: formulas, expressions both ways, aliases and captions.
#include <gtest/gtest.h>

#include "foundation/string_utils.h"
#include "sample_structure.h"
#include "test_support.h"

namespace {

using ts4test::TSampleStructure;

struct FormulaCase {
  const char* formula;
  std::vector<const char*> fields;
  const char* sql;
  bool aggregate;
};

TEST(ResultField, SQLOfFormulas) {
  TSampleStructure s;
  const FormulaCase cases[] = {
      {"@1", {"NAME"}, "C.NAME", false},
      {"SUM(@1)", {"TOTAL"}, "SUM(O.TOTAL)", true},
      {"@1 || ', ' || @2", {"NAME", "CITY"}, "C.NAME || ', ' || C.CITY", false},
      {"@1 + max(@1)", {"QTY"}, "I.QTY + max(I.QTY)", true},  // "@" counted twice, one field: fine
      {"@12 - @3", {"QTY", "TOTAL"}, "I.QTY2 - @3", false},   // no twelfth or third field
      {"MAXIMUM(@1)", {"QTY"}, "MAXIMUM(I.QTY)", false},
      {"x + Count(*)", {}, "x + Count(*)", true},
      {"AVG (@1)", {"QTY"}, "AVG (I.QTY)", true},
      {"@1 - minimum", {"QTY"}, "I.QTY - minimum", false},
  };
  ts4::TRFieldList list(&s.db);
  for (const FormulaCase& c : cases) {
    ts4::TResultField* field = list.New();
    field->SetFormula(c.formula);
    for (const char* name : c.fields) field->AddDSField(&s.Field(name));
    EXPECT_EQ(field->GetSQLExpr(), c.sql) << c.formula;
    EXPECT_EQ(field->GetAgregate(), c.aggregate) << c.formula;
  }
}

TEST(ResultField, ExpressionsWithCaptions) {
  TSampleStructure s;
  s.db.AddField(ts4::wfkData, "NAME", "NAME", &s.Table("I"));  // a second field captioned NAME
  ts4::TRFieldList list(&s.db);
  ts4::TResultField* field = list.AddByExpression("{name} || ' of ' || {CITY} || {Name}", ts4::stNoSort);
  EXPECT_EQ(field->Formula(), "@1 || ' of ' || @2 || @1");
  EXPECT_EQ(field->GetSQLExpr(), "C.NAME || ' of ' || C.CITY || C.NAME");
  EXPECT_EQ(field->Caption(), "NAME || ' of ' || CITY || NAME");
  field->SetDSFields({&s.Field("CITY"), s.db.Fields(s.db.FieldCount() - 1)});
  EXPECT_EQ(field->GetExpression(),
            "{CITY} || ' of ' || {ITEMS.NAME} || {CITY}");  // shared captions get the table
  ts4::TResultField copy;
  copy.ProcessSQLExpr("x");
  list.New()->ProcessExpression(field->GetExpression());
  EXPECT_EQ(list[1]->GetSQLExpr(), "C.CITY || ' of ' || I.NAME || C.CITY");

  for (const char* bad : {"{Nobody}", "{NAME} + {CITY"}) {
    EXPECT_THROW(field->ProcessExpression(bad), ts4::EWQueryPanelError) << bad;
    EXPECT_EQ(field->Formula(), "@1 || ' of ' || @2 || @1");
  }
  ts4test::ExpectError<ts4::EWQueryPanelError>([&] { list.AddByExpression("{Nobody}", ts4::stNoSort); }, 11,
                                               "Unknown field in expression: Nobody");
  EXPECT_EQ(list.Count(), 2);
}

TEST(ResultField, SQLExpressionsBackToFormulas) {
  TSampleStructure s;
  ts4::TDSField* amount = s.db.AddField(ts4::wfkVirtual, "O.TOTAL * I.QTY", "Amount", nullptr);
  const struct {
    const char* sql;
    const char* formula;
    std::vector<const ts4::TDSField*> fields;
  } cases[] = {
      {"SUM(O.TOTAL)", "SUM(@1)", {&s.Field("TOTAL")}},
      {"o.total + O.Total", "@1 + @1", {&s.Field("TOTAL")}},
      {"C.NAME || 'C.CITY' || C.CITY", "@1 || 'C.CITY' || @2", {&s.Field("NAME"), &s.Field("CITY")}},
      {"count(*)", "count(*)", {}},
      {"TOTAL / 2", "@1 / 2", {&s.Field("TOTAL")}},    // the one column of that name
      {"CUST_NO", "CUST_NO", {}},                      // two tables have it
      {"X.TOTAL + C.NAMES", "X.TOTAL + C.NAMES", {}},  // no such field
      {"max(O.TOTAL * I.QTY)", "max(@1)", {amount}},   // a virtual field's whole expression
      {"O.TOTAL * I.QTYX", "@1 * I.QTYX", {&s.Field("TOTAL")}},
  };
  for (const auto& c : cases) {
    ts4::TRFieldList list(&s.db);
    ts4::TResultField* field = list.AddBySQLExpr(c.sql, ts4::stAscending, "A");
    EXPECT_EQ(field->Formula(), c.formula) << c.sql;
    EXPECT_EQ(std::vector<const ts4::TDSField*>(field->Fields().begin(), field->Fields().end()), c.fields)
        << c.sql;
    const std::string bare = "TOTAL / 2";
    EXPECT_TRUE(ts4::SameText(field->GetSQLExpr(), c.sql == bare ? "O.TOTAL / 2" : c.sql)) << c.sql;
  }
}

TEST(ResultField, RemovingAStructureField) {
  TSampleStructure s;
  ts4::TRFieldList list(&s.db);
  ts4::TResultField* field = list.AddBySQLExpr("C.NAME || C.CITY || I.QTY", ts4::stNoSort);
  field->DelDSField(1);
  EXPECT_EQ(field->Formula(), "@1 ||  || @2");
  EXPECT_EQ(field->GetSQLExpr(), "C.NAME ||  || I.QTY");
  ts4test::ExpectIndexError([&] { field->DelDSField(2); }, 2);
}

TEST(ResultFieldList, UniqueAliasesAndCaptions) {
  TSampleStructure s;
  ts4::TRFieldList list(&s.db);
  list.Add(s.Field("TOTAL"))->SetAlias("Total");
  list.New()->SetAlias("total1");
  EXPECT_FALSE(list.CheckUniqAlias("TOTAL"));
  EXPECT_EQ(list.GetUniqAlias("Total"), "Total2");
  EXPECT_EQ(list.GetUniqAlias("Sum"), "Sum");
  EXPECT_EQ(list.GetUniqAlias("Total", list[0]), "Total");
  list.Add(s.Field("TOTAL"));
  EXPECT_EQ(list.GetCaption(2), "TOTAL1");
  EXPECT_EQ(list.GetCaption(1), "@1");  // no caption: the expression, marker left as it is
}

TEST(ResultFieldList, GeneratedAliases) {
  TSampleStructure s;
  ts4::TRFieldList list(&s.db);
  list.AddByExpression("{TOTAL}", ts4::stNoSort, "Total (€) net");
  EXPECT_EQ(list[0]->Alias(), "");  // only when the list generates aliases
  list.SetAutoAliases(true);
  const struct {
    const char* caption;
    bool ascii;
    const char* alias;
  } cases[] = {{"Total (€) net", true, "Total_net"},
               {"Total (€) net", false, "Total_€_net"},
               {"2nd", true, "F2nd"},
               {"€", true, "F"},
               {"Total (€) net", true, "Total_net"}};
  for (const auto& c : cases) {
    list.SetASCIIAliases(c.ascii);
    list.New()->SetCaption(c.caption);
    list[list.Count() - 1]->GenerateAlias();
    EXPECT_EQ(list[list.Count() - 1]->Alias(), std::string(c.alias) + (list.Count() == 6 ? "1" : ""));
  }
}

TEST(ResultFieldList, NumbersSortsAndCopies) {
  TSampleStructure s;
  ts4::TRFieldList list(&s.db);
  list.Add(s.Field("NAME"), ts4::stAscending);
  list.Add(s.Field("CITY"));
  list.Add(s.Field("QTY"), ts4::stDescending);
  list.GenerateNumbers();
  EXPECT_EQ(list[2]->Number(), 3);
  EXPECT_EQ(list.GetSortCount(), 2);
  EXPECT_EQ(list.IndexByExpr("c.city"), 1);
  ts4::TRFieldList copy;
  list.AssignTo(copy);
  EXPECT_EQ(copy.Count(), 3);
  EXPECT_EQ(copy[2]->GetSQLExpr(), "I.QTY");
  EXPECT_EQ(copy[2]->Owner(), &copy);
}

}  // namespace
