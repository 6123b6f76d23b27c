// How conditions and brackets become WHERE lines.
#include <gtest/gtest.h>

#include "sample_structure.h"

namespace {

using ts4test::TSampleStructure;
using ts4test::WhereLines;
using Lines = std::vector<std::string>;

struct ConditionCase {
  const char* field;
  const char* op;
  const char* value1;
  const char* value2;
  const char* expected;
};

class ConditionText : public testing::TestWithParam<ConditionCase> {};

TEST_P(ConditionText, RendersOneLine) {
  const ConditionCase& c = GetParam();
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  s.Cond(query.Root(), c.field, c.op, c.value1, c.value2);
  EXPECT_EQ(WhereLines(query), (Lines{" (", c.expected, ")"}));
}

INSTANTIATE_TEST_SUITE_P(
    DefaultOperators, ConditionText,
    // The rest of each template's meaning is run on SQLite (SQLiteStatements); what
    // the engine would forgive is written here: quotes on numbers, text that is no date.
    testing::Values(ConditionCase{"CUST_NO", "Equal", "5", "", "C.CUST_NO = 5"},
                    ConditionCase{"TOTAL", "GreaterThan", "2.5", "", "O.TOTAL >2.5"},
                    ConditionCase{"CUST_NO", "InList", "1,2,3", "", "C.CUST_NO in (1,2,3)"},
                    ConditionCase{"NAME", "InList", "1,2,3", "", "C.NAME in ('1','2','3')"},
                    ConditionCase{"PLACED", "Between", "2000-01-02", "2000-01-03 12:30",
                                  "O.PLACED between '2000-01-02 00:00:00' and '2000-01-03 12:30:00'"},
                    ConditionCase{"SINCE", "Equal", "today's", "", "C.SINCE = 'today''s'"}));

TEST(ConditionText, DatesFollowTheStructuresFormats) {
  TSampleStructure s;
  ts4::TSQLFormats formats;
  formats.SetDateFormat("dd.mm.yyyy");
  formats.SetDateTimeFormat("mm/dd/yy hh:nn");
  s.db.SetSQLFormats(formats);
  ts4::TWQuery query(&s.db);
  s.Cond(query.Root(), "SINCE", "InList", "2000-01-02,2001-12-31");
  s.Cond(query.Root(), "PLACED", "LessThan", "2024-02-29 23:59:59");
  EXPECT_EQ(WhereLines(query),
            (Lines{" (", "C.SINCE in ('02.01.2000','31.12.2001') AND", "O.PLACED < '02/29/24 23:59'", ")"}));
}

TEST(ConditionText, TemplateMarkersForTablesAndMissingValues) {
  TSampleStructure s;
  s.db.AddOperator("InTable", "in table", "@f in (select @1 from @t where @m.X = @2) -- @9 @x", "",
                   {ts4::ftString});
  ts4::TWQuery query(&s.db);
  query.SetMainTableName("ORDERS");
  s.Cond(query.Root(), "NAME", "InTable", "N", "@1");
  // @t is the field's table, @m the main table (database names); values are
  // never read as markers again, and markers without a value stay.
  EXPECT_EQ(WhereLines(query),
            (Lines{" (", "C.NAME in (select N from CUSTOMER where ORDERS.X = @1) -- @9 @x", ")"}));
}

TEST(ConditionText, QuotesOfTheFieldsOwnSQLStay) {
  TSampleStructure s;
  ts4::TDSField* rome =
      s.db.AddField(ts4::wfkVirtual, "CASE WHEN C.CITY = 'Rome' THEN 1 END", "Rome", &s.Table("C"));
  rome->SetFieldType(ts4::ftInteger);
  s.db.AddOperator("Below", "below", "'@1' < @f", "", {ts4::ftInteger});
  ts4::TWQuery query(&s.db);
  s.Cond(query.Root(), "Rome", "Equal", "1");
  s.Cond(query.Root(), "Rome", "Below", "0").SetValue1IsParam(true);  // the parameter's span comes first
  EXPECT_EQ(WhereLines(query), (Lines{" (", "CASE WHEN C.CITY = 'Rome' THEN 1 END = 1 AND",
                                      ":Param1 < CASE WHEN C.CITY = 'Rome' THEN 1 END", ")"}));
}

TEST(ConditionText, SubQueryValuesAreInsertedAsSQL) {
  TSampleStructure s;
  s.db.AddOperator("InSub", "in", "@f in (@1)", "", {ts4::ftInteger});
  s.db.OperatorByName("InSub")->SetValueType(ts4::vtSubQuery);
  ts4::TWQuery query(&s.db);
  s.Cond(query.Root(), "CUST_NO", "InSub", "select CUST_NO from ORDERS where STATUS = 'open'");
  EXPECT_EQ(WhereLines(query),
            (Lines{" (", "C.CUST_NO in (select CUST_NO from ORDERS where STATUS = 'open')", ")"}));
}

TEST(ConditionText, HandlerAndBracketOption) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  query.SetSQLOptions(ts4::DefaultSQLOptions | ts4::TSQLOptions{ts4::soBracketConditions});
  s.Cond(query.Root(), "CITY", "Equal", "Riga");
  s.Cond(query.Root(), "QTY", "Equal", "2");
  int calls = 0;
  query.OnBuildSQL = [&](ts4::TFilterCond& cond, std::string& sql) {
    ++calls;
    if (cond.Field()->DisplayName() == "QTY") sql = "I.QTY = 3";
  };
  EXPECT_EQ(WhereLines(query), (Lines{" (", "(C.CITY = 'Riga') AND", "(I.QTY = 3)", ")"}));
  EXPECT_EQ(calls, 2);
}

TEST(BracketText, RowsThatWriteNothing) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  query.SetMainTableName("C");
  ts4::TFilterBracket& inner = *query.Root().AddBracket();
  s.Cond(inner, "CITY", "Equal", "b").SetEnabled(false);
  inner.AddCond();  // no field or operator chosen yet
  EXPECT_TRUE(WhereLines(query).empty());

  s.Cond(query.Root(), "CITY", "Equal", "a");
  query.Deactivate();  // an inactive query writes no conditions
  EXPECT_TRUE(WhereLines(query).empty());
}

TEST(ParameterText, MarkersTakeTheQuotedSpan) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  ts4::TFilterCond& contains = s.Cond(query.Root(), "NAME", "Contains", "mit");
  ts4::TFilterCond& between = s.Cond(query.Root(), "QTY", "Between", "1", "5");
  ts4::TFilterCond& list = s.Cond(query.Root(), "CUST_NO", "InList", "1,2");
  contains.SetValue1IsParam(true);
  between.SetValue1IsParam(true);
  between.SetValue2IsParam(true);
  list.SetValue1IsParam(true);
  EXPECT_EQ(WhereLines(query),
            (Lines{" (", "C.NAME like :Param1 AND", "I.QTY between :Param2 and :Param3 AND",
                   "C.CUST_NO in (:Param4)", ")"}));
  EXPECT_EQ(contains.Param1()->VFormat(), "%@v%");
  EXPECT_EQ(between.Param1()->VFormat(), "@v");
  EXPECT_EQ(between.Param2()->VFormat(), "@v");
  EXPECT_EQ(list.Param1()->VFormat(), "@v");
}

}  // namespace
