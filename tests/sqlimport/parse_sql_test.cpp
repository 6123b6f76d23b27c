#include <gtest/gtest.h>

#include <string>

#include "query/query.h"
#include "sales_structure.h"
#include "sqlimport/sql_parse_tree.h"
#include "test_support.h"

namespace ts4 {
namespace {

using ts4test::Describe;
using ts4test::SalesStructure;

/// The condition tree read from a statement whose WHERE clause is `where`.
std::string ConditionsOf(std::string_view where, std::string_view from = "CUSTOMERS C") {
  TWQuery query(&SalesStructure());
  query.ParseSQL("SELECT *\nFROM " + std::string(from) + "\nWHERE " + std::string(where));
  return Describe(query.Root());
}

TEST(ParseSQL, ReadsEachConditionAsTheOperatorThatWritesIt) {
  const struct {
    std::string_view Where;
    std::string_view Expected;
  } cases[] = {
      {"C.CITY = 'Riga'", "all[City Equal (Riga)]"},
      {"c.city='O''Brien'", "all[City Equal (O'Brien)]"},
      {"C.CUST_ID = 5", "all[Customer No Equal (5)]"},
      {"C.CITY != 'Riga'", "all[City NotEqual (Riga)]"},
      {"not(C.CITY = 'Riga')", "all[City NotEqual (Riga)]"},
      {"NOT (C.CUST_ID = -5)", "all[Customer No NotEqual (-5)]"},
      {"C.CREDIT_LIMIT >= 10.5", "all[Credit limit GreaterOrEqual (10.5)]"},
      {"C.CREDIT_LIMIT > 10.5", "all[Credit limit GreaterThan (10.5)]"},
      {"C.CREDIT_LIMIT <= 1", "all[Credit limit LessOrEqual (1)]"},
      {"C.CREDIT_LIMIT <> 1", "all[Credit limit NotEqual (1)]"},
      {"O.SHIP_DATE IS NULL", "all[Ship date IsNull]"},
      {"C.CITY like 'Ri%'", "all[City StartsWith (Ri)]"},
      {"C.CITY like '%iga%'", "all[City Contains (iga)]"},
      {"C.CITY like '%100%%'", "all[City Contains (100%)]"},
      {"not(C.CITY like 'Ri%')", "all[City NotStartsWith (Ri)]"},
      {"C.CITY not like '%iga%'", "all[City NotContains (iga)]"},
      {"C.CITY like 'R_ga'", "all[City Contains ('R_ga')]"},  // no template reads it: kept as written
      {"C.CITY in ('Riga','a,b', 'it''s')", "all[City InList (Riga,\"a,b\",it's)]"},
      {"C.CUST_ID in (1, 2,3)", "all[Customer No InList (1, 2,3)]"},
      {"C.CREDIT_LIMIT between 1 and 5", "all[Credit limit Between (1) (5)]"},
      {"C.CITY between 'a and b' and 'c'", "all[City Between (a and b) (c)]"},
      {"O.ORDER_DATE between '2024-01-01' and '2024-12-31'",
       "all[Order date Between (2024-01-01) (2024-12-31)]"},
      {"O.ORDER_DATE in ('2024-01-01','2024-02-01')", "all[Order date InList (2024-01-01,2024-02-01)]"},
      {"I.QUANTITY*I.UNIT_PRICE > 100", "all[Line amount GreaterThan (100)]"},
      {"CITY = 'Riga'", "all[City Equal (Riga)]"},            // a column only one table has
      {"CUSTOMERS.CITY = 'Riga'", "all[City Equal (Riga)]"},  // qualified by the table's name
      {"(C.CITY = 'Riga')", "all[City Equal (Riga)]"},
  };
  for (const auto& c : cases) EXPECT_EQ(ConditionsOf(c.Where), c.Expected) << c.Where;
}

TEST(ParseSQL, ReadsTheStatementsOwnTableAliases) {
  EXPECT_EQ(ConditionsOf("cu.CITY = 'Riga' and o.STATUS = 'O'",
                         "dbo.CUSTOMERS cu LEFT OUTER JOIN ORDERS o ON cu.CUST_ID = o.CUST_ID"),
            "all[City Equal (Riga), Status Equal (O)]");
}

TEST(ParseSQL, ReadsAStatementWrittenByHand) {
  TWQuery query(&SalesStructure());
  query.SetSQLOptions({});
  query.ParseSQL(std::string_view(ts4test::StringsOfFile(TS4_EXAMPLE_DATA "/hand-written.sql").Text()));
  EXPECT_EQ(Describe(query.Root()),
            "all[Country NotEqual (Germany), none[Status InList (C,X)], none[Ship date IsNull], "
            "any[Order date Between (2024-01-01) (2024-06-30), Order total GreaterOrEqual (1000)], "
            "Company Contains (Trading)]");
  // The result fields through the statement's aliases, sorted by their names.
  const std::string sql = query.GetQueryText();
  EXPECT_EQ(sql.substr(0, sql.find('\r')), "SELECT C.COMPANY, C.CITY, O.TOTAL");
  EXPECT_EQ(sql.substr(sql.rfind('\n') + 1), "ORDER BY 2 ASC, 3 DESC");
}

TEST(ParseSQL, NegatedGroupsAndConditionsBecomeNoneAndNotAllBrackets) {
  const struct {
    std::string_view Where;
    std::string_view Expected;
  } cases[] = {
      {"C.CITY = 'a' or C.CITY = 'b'", "any[City Equal (a), City Equal (b)]"},
      {"NOT (C.CITY = 'a' OR C.CITY = 'b')", "none[City Equal (a), City Equal (b)]"},
      {"NOT (C.CITY = 'a' AND C.CITY = 'b')", "not all[City Equal (a), City Equal (b)]"},
      {"C.CUST_ID = 1 AND NOT (C.CITY = 'a' OR NOT (C.CITY = 'b' AND C.CITY = 'c'))",
       "all[Customer No Equal (1), none[City Equal (a), not all[City Equal (b), City Equal (c)]]]"},
      {"not not (C.CITY = 'a' or C.CITY = 'b')", "any[City Equal (a), City Equal (b)]"},
      // No operator says these with a NOT of its own: a "none" bracket does.
      {"not (C.CITY < 'a')", "all[none[City LessThan (a)]]"},
      {"O.SHIP_DATE is not null", "all[none[Ship date IsNull]]"},
      {"C.CITY not in ('a','b')", "all[none[City InList (a,b)]]"},
      {"C.CITY not between 'a' and 'b'", "all[none[City Between (a) (b)]]"},
  };
  for (const auto& c : cases) EXPECT_EQ(ConditionsOf(c.Where), c.Expected) << c.Where;
}

TEST(ParseSQL, RowsReadIntoAQueryThatHadRowsCarryTheirPathsAsIDs) {
  TWQuery query(&SalesStructure());
  query.Root().AddBracket()->AddCond();
  query.ParseSQL(
      "SELECT * FROM CUSTOMERS C WHERE C.CITY = 'a' AND NOT (C.CITY = 'b' OR C.CITY = 'c') AND C.CITY < 'd'");
  std::vector<std::string> ids;
  std::vector<const TFilterRow*> pending = {&query.Root()};
  while (!pending.empty()) {
    const TFilterRow* row = pending.back();
    pending.pop_back();
    ids.push_back(row->RowID());
    EXPECT_EQ(&row->Query(), &query) << row->RowID();
    if (!row->IsBracket()) continue;
    const auto& bracket = static_cast<const TFilterBracket&>(*row);
    for (int i = bracket.GetRowCount() - 1; i >= 0; --i) pending.push_back(bracket.GetRow(i));
  }
  EXPECT_EQ(ids, (std::vector<std::string>{"", "1.", "2.", "2.1.", "2.2.", "3."}));
}

TEST(ParseSQL, ReadsResultFieldsWithTheirSortingButNotTheirAliases) {
  TWQuery query(&SalesStructure());
  query.SetSQLOptions({});
  query.ParseSQL(
      "SELECT DISTINCT P.CATEGORY, SUM(I.QUANTITY * I.UNIT_PRICE) as \"Sales\", C.CITY\r\n"
      "FROM CUSTOMERS C\r\n"
      "GROUP BY P.CATEGORY, C.CITY\r\n"
      "ORDER BY 2 DESC, 1 ASC\r\n");
  const TRFieldList& fields = query.QResult().ResultFields();
  ASSERT_EQ(fields.Count(), 3);
  EXPECT_EQ(fields[0]->GetSQLExpr(), "P.CATEGORY");
  EXPECT_EQ(fields[0]->Sorting(), stAscending);
  EXPECT_EQ(fields[0]->SortOrder(), 2);
  EXPECT_EQ(fields[1]->GetSQLExpr(), "SUM(I.QUANTITY * I.UNIT_PRICE)");
  EXPECT_EQ(fields[1]->FieldCount(), 1);
  EXPECT_EQ(fields[1]->Alias(), "");
  EXPECT_EQ(fields[1]->Sorting(), stDescending);
  EXPECT_EQ(fields[1]->SortOrder(), 1);
  EXPECT_EQ(fields[2]->Sorting(), stNoSort);
  EXPECT_FALSE(query.SQLOptions().Contains(soSelectDistinct));  // DISTINCT is not taken over...
  EXPECT_EQ(query.GetQueryText(),
            "SELECT P.CATEGORY, SUM(I.QUANTITY * I.UNIT_PRICE), C.CITY\r\n"
            "FROM CUSTOMERS C\r\n"
            "     LEFT OUTER JOIN ORDERS O ON (C.CUST_ID=O.CUST_ID)\r\n"
            "     INNER JOIN ORDER_ITEMS I ON (O.ORDER_ID=I.ORDER_ID)\r\n"
            "     INNER JOIN PRODUCTS P ON (I.PRODUCT_ID=P.PRODUCT_ID)\r\n"
            "GROUP BY P.CATEGORY, C.CITY\r\n"
            "ORDER BY 2 DESC, 1 ASC");
  query.SetSQLOptions({soSelectDistinct});
  query.ParseSQL("SELECT C.CITY FROM CUSTOMERS C");
  EXPECT_TRUE(query.SQLOptions().Contains(soSelectDistinct));  // ...nor is its absence
}

TEST(ParseSQL, SelectStarWithOrderByNamesOnlySorts) {
  TWQuery query(&SalesStructure());
  query.SetSQLOptions({});
  query.ParseSQL("select * from CUSTOMERS C order by C.CITY desc, C.COMPANY");
  const TRFieldList& fields = query.QResult().ResultFields();
  EXPECT_TRUE(fields.JustSorting());
  ASSERT_EQ(fields.Count(), 2);
  EXPECT_EQ(fields[0]->Sorting(), stDescending);
  EXPECT_EQ(fields[1]->Sorting(), stAscending);
  EXPECT_EQ(query.GetQueryText(), "SELECT *\r\nFROM CUSTOMERS C\r\nORDER BY C.CITY DESC, C.COMPANY ASC");
}

TEST(ParseSQL, TheFirstTableBecomesTheMainTableUnlessItIsTheDefault) {
  TWQuery query(&SalesStructure());
  query.SetSQLOptions({});
  query.ParseSQL("SELECT O.ORDER_ID FROM ORDERS O WHERE C.CITY = 'Riga'");
  EXPECT_EQ(query.MainTableName(), "ORDERS");
  EXPECT_EQ(
      query.GetQueryText(),
      "SELECT O.ORDER_ID\r\nFROM ORDERS O\r\n     RIGHT OUTER JOIN CUSTOMERS C ON (C.CUST_ID=O.CUST_ID)\r\n"
      "WHERE\r\n (\r\nC.CITY = 'Riga'\r\n)");
  query.ParseSQL("SELECT O.ORDER_ID FROM CUSTOMERS C, ORDERS O");
  EXPECT_EQ(query.MainTableName(), "");
}

TEST(ParseSQL, DropsTheJoinConditionsOldSyntaxesWriteIntoWhere) {
  TWQuery original(&SalesStructure());
  original.LoadFromFile(TS4_EXAMPLE_DATA "/orders-to-chase.qry");
  for (TSQLSyntax syntax : {ssSQL2, ssSQL1, ssOracle}) {
    original.SetSQLSyntax(syntax);
    const std::string sql = original.GetQueryText();
    TWQuery read(&SalesStructure());
    read.SetSQLSyntax(syntax);
    read.SetSQLOptions(original.SQLOptions());
    read.ParseSQL(sql);
    EXPECT_EQ(read.GetQueryText(), sql);
    EXPECT_EQ(Describe(read.Root()),
              "all[any[Status Equal (O), all[Status Equal (S), Ship date GreaterThan (2024-06-30)]], "
              "none[Last name InList (Fuller,Leverling)]]");
  }
}

TEST(ParseSQL, KeepsLinkConditionsWhereTheyCannotBeJoins) {
  // With JOIN clauses, or without both tables in FROM, such a condition is the user's.
  EXPECT_EQ(
      ConditionsOf("C.CUST_ID = O.CUST_ID (+)", "CUSTOMERS C LEFT JOIN ORDERS O ON C.CUST_ID = O.CUST_ID"),
      "all[Customer No Equal (O.CUST_ID (+))]");
  EXPECT_EQ(ConditionsOf("C.CUST_ID = O.CUST_ID"), "all[Customer No Equal (O.CUST_ID)]");
  EXPECT_EQ(ConditionsOf("C.CUST_ID = O.CUST_ID", "CUSTOMERS C, ORDERS O"), "all[]");
}

TEST(ParseSQL, BadStatementsLeaveTheQueryAsItWas) {
  TWQuery query(&SalesStructure());
  query.LoadFromFile(TS4_EXAMPLE_DATA "/customers-by-city.qry");
  TStrings before;
  query.SaveToStrings(before);
  int changes = 0;
  query.OnChange = [&](TWQuery&) { ++changes; };
  const struct {
    std::string_view SQL;
    int Code;
    std::string_view Message;
  } cases[] = {
      {"DELETE FROM CUSTOMERS", pecWrongSQL, "Wrong SQL statement\r\nLine:1"},
      {"SELECT C.CITY as \"City\nFROM CUSTOMERS C", pecWrongSQL,
       "Wrong SQL statement\r\nLine:1"},  // never closed
      {"SELECT C.CITY, \nFROM CUSTOMERS C", pecWrongSQL, "Wrong SQL statement\r\nLine:2"},
      {"SELECT *\nFROM CUSTOMERS C\nWHERE NOT (C.CITY = 'a' C.CITY = 'b')", pecLostBracket,
       "Lost bracket\r\nLine:3"},
      {"SELECT C.CITY FROM CUSTOMERS C\nORDER BY 1\nLIMIT 5", pecWrongSQL, "Wrong SQL statement\r\nLine:3"},
      {"SELECT * FROM CUSTOMERS C\nWHERE (C.CITY = 'a' AND C.CUST_ID = 2", pecLostBracket,
       "Lost bracket\r\nLine:2"},
      {"SELECT * FROM CUSTOMERS C WHERE X.NOPE = 1", qecUnknownExprField,
       "Unknown field in expression: X.NOPE"},
      {"SELECT * FROM CUSTOMERS C WHERE C.CITY = 'a' || 'b'", qecUnreadableCondition,
       "No operator of the structure reads the condition C.CITY = 'a' || 'b'"},
      {"SELECT * FROM CUSTOMERS C WHERE C.CITY = C.COMPANY", qecUnreadableCondition,
       "No operator of the structure reads the condition C.CITY = C.COMPANY"},
      {"SELECT * FROM CUSTOMERS C WHERE C.CITY = 'a' AND C.CUST_ID in (select CUST_ID from CUSTOMERS)",
       qecUnreadableCondition,
       "No operator of the structure reads the condition C.CUST_ID in (select CUST_ID from CUSTOMERS)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.SQL);
    try {
      query.ParseSQL(c.SQL);
      ADD_FAILURE() << "no error";
    } catch (const EWTessalyError& e) {
      EXPECT_EQ(e.ErrorCode(), c.Code);
      EXPECT_EQ(std::string(e.what()), c.Message);
    }
    TStrings after;
    query.SaveToStrings(after);
    EXPECT_EQ(after.Text(), before.Text());
    EXPECT_TRUE(query.Active());
    EXPECT_EQ(query.State(), stIdle);
  }
  EXPECT_EQ(changes, 0);

  TWQuery unattached;
  ts4test::ExpectError([&] { unattached.ParseSQL("SELECT * FROM T"); }, qecNoDbStruct,
                       "DbStruct is not specified");
}

TEST(ParseSQL, OperatorBySQLCondGivesTheValuesAsWritten) {
  TWQuery query(&SalesStructure());
  TSQLBracket root;
  TSQLCondition& cond = *TSQLCondition::Create(&root);
  cond.Expr = "C.CITY";
  cond.Operator = "between";
  cond.Value = "'O''Brien' and 'Z'";
  std::string value1;
  std::string value2;
  const TDSOperator* op = query.OperatorBySQLCond(cond, value1, value2);
  ASSERT_NE(op, nullptr);
  EXPECT_EQ(op->Name(), "Between");
  EXPECT_EQ(value1, "O''Brien");
  EXPECT_EQ(value2, "Z");
  cond.Operator = "<";
  cond.Negated = true;
  EXPECT_EQ(query.OperatorBySQLCond(cond, value1, value2), nullptr);
  EXPECT_EQ(value1, "");
}

}  // namespace
}  // namespace ts4
