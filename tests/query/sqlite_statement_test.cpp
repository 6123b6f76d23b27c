// Statements written by TWQuery, run on an in-memory SQLite database: each
// must be accepted and return exactly the rows its conditions stand for.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "query/sample_structure.h"
#include "query/sqlite_db.h"

namespace {

using ts4test::TSQLiteDB;

// Customers 3, 6, 8-12 have no orders; order 108 has no customer.
// CITY is NULL for 9, SINCE for 12, STATUS for orders 102 and 105.
constexpr const char* Data = R"sql(
CREATE TABLE CUSTOMER (CUST_NO INTEGER PRIMARY KEY, NAME TEXT, CITY TEXT, SINCE TEXT);
CREATE TABLE ORDERS (ORDER_NO INTEGER PRIMARY KEY, CUST_NO INTEGER, TOTAL REAL, PLACED TEXT, STATUS TEXT);
CREATE TABLE ITEMS (ORDER_NO INTEGER, PRODUCT TEXT, QTY INTEGER);
INSERT INTO CUSTOMER VALUES
  (1, 'Adams', 'Oslo', '2019-03-10'), (2, 'Baker', 'Lima', '2020-01-15'),
  (3, 'Carter', 'New York', '2020-01-15'), (4, 'O''Hara', 'Dublin', '2021-06-30'),
  (5, 'Martin', 'Lima', '2018-11-02'), (6, 'Marsh', 'Oslo', '2022-02-28'),
  (7, 'Nolan', 'Paris', '2020-12-31'), (8, 'Mayer', 'Berlin', '2021-01-01'),
  (9, 'Porter', NULL, '2023-05-05'), (10, 'Quinn', 'Rome', '2019-07-07'),
  (11, 'Hartman', 'Oslo', '2022-09-09'), (12, 'Stark', 'Madrid', NULL);
INSERT INTO ORDERS VALUES
  (101, 1, 250.0, '2023-01-05 09:30:00', 'shipped'), (102, 1, 80.5, '2023-01-05 14:00:00', NULL),
  (103, 2, 120.25, '2023-02-10 11:15:00', 'open'), (104, 4, 99.5, '2023-03-01 00:00:00', 'shipped'),
  (105, 4, 300.0, '2023-03-15 16:45:00', NULL), (106, 5, 45.0, '2023-04-01 08:00:00', 'cancelled'),
  (107, 7, 120.25, '2023-04-20 12:00:00', 'open'), (108, 99, 60.0, '2023-05-01 10:00:00', 'open');
INSERT INTO ITEMS VALUES
  (101, 'Lamp', 2), (101, 'Desk', 1), (103, 'Chair', 4), (104, 'Lamp', 1), (107, 'Shelf', 3);
)sql";

/// Rows on one line: rows separated by blanks, columns by "/".
std::string Render(const std::vector<TSQLiteDB::TRow>& rows) {
  std::string out;
  for (const TSQLiteDB::TRow& row : rows) {
    if (!out.empty()) out += ' ';
    for (std::size_t i = 0; i < row.size(); ++i) out += (i > 0 ? "/" : "") + row[i];
  }
  return out;
}

// The data in a fresh database, and a query over the sample structure.
struct TSample {
  TSample() {
    db.Exec(Data);
    query.SetSQLSyntax(ts4::ssSQL2);
  }

  /// Adds the result field with that caption.
  void Select(std::string_view caption, ts4::TSortingType sorting = ts4::stAscending) {
    query.QResult().ResultFields().Add(s.Field(caption), sorting);
  }

  /// Runs the query's statement with every parameter bound to its full value.
  std::string Rows() {
    sql = query.GetQueryText();
    TSQLiteDB::TParams params;
    for (const ts4::TSQLParam* p : query.QResult().Params())
      params.emplace_back(p->Name(), p->GetFullValue());
    return Render(db.Query(sql, params));
  }

  ts4test::TSampleStructure s;
  ts4::TWQuery query{&s.db};
  TSQLiteDB db;
  std::string sql;  // the statement Rows ran last, for failure messages
};

// The keys are CUST_NO or ORDER_NO, whichever table the field is in.
TEST(SQLiteStatements, EachOperatorReturnsTheMatchingKeys) {
  const struct {
    const char *field, *op, *value1, *value2, *keys;
  } cases[] = {
      {"NAME", "Equal", "Baker", "", "2"},
      {"NAME", "Equal", "O'Hara", "", "4"},
      {"CUST_NO", "Equal", "7", "", "7"},
      {"TOTAL", "Equal", "120.25", "", "103 107"},
      {"SINCE", "Equal", "2020-01-15", "", "2 3"},
      {"PLACED", "Equal", "2023-03-01", "", "104"},  // a day alone: the whole day
      {"CITY", "NotEqual", "Oslo", "", "2 3 4 5 7 8 10 12"},
      {"STATUS", "NotEqual", "open", "", "101 104 106"},  // NULL is neither
      {"TOTAL", "LessThan", "99.5", "", "102 106 108"},
      {"SINCE", "LessThan", "2020-01-01", "", "1 5 10"},
      {"PLACED", "LessOrEqual", "2023-01-05 14:00:00", "", "101 102"},
      {"TOTAL", "GreaterThan", "120.25", "", "101 105"},
      {"PLACED", "GreaterThan", "2023-04-01 08:00:00", "", "107 108"},
      {"SINCE", "GreaterOrEqual", "2021-06-30", "", "4 6 9 11"},
      {"STATUS", "IsNull", "", "", "102 105"},
      {"SINCE", "IsNull", "", "", "12"},
      {"CUST_NO", "InList", "2,4,6", "", "2 4 6"},
      {"CITY", "InList", "Lima,\"New York\",Rome", "", "2 3 5 10"},
      {"NAME", "InList", "O'Hara,Stark", "", "4 12"},
      {"SINCE", "InList", "2020-01-15,2019-07-07", "", "2 3 10"},
      {"NAME", "StartsWith", "Ma", "", "5 6 8"},
      {"NAME", "StartsWith", "O'H", "", "4"},
      {"NAME", "NotStartsWith", "Ma", "", "1 2 3 4 7 9 10 11 12"},
      {"NAME", "Contains", "art", "", "3 5 11"},
      {"STATUS", "NotContains", "o", "", "101 104 106"},  // NULL is neither
      {"CUST_NO", "Between", "4", "6", "4 5 6"},
      {"TOTAL", "Between", "80.5", "120.25", "102 103 104 107"},
      {"SINCE", "Between", "2020-01-01", "2020-12-31", "2 3 7"},
      // Days alone are midnights: 106, placed at 08:00 on the last day, is outside.
      {"PLACED", "Between", "2023-03-01", "2023-04-01", "104 105"},
  };
  for (const auto& c : cases) {
    TSample t;
    t.Select(t.s.Field(c.field).Table()->Alias() == "C" ? "CUST_NO" : "ORDER_NO");
    t.s.Cond(t.query.Root(), c.field, c.op, c.value1, c.value2);
    EXPECT_EQ(t.Rows(), c.keys) << t.sql;
  }
}

// The link type names the side kept whole (CUSTOMER is the link's first
// table), whichever table the statement starts from. Rows are CUST_NO/ORDER_NO.
TEST(SQLiteStatements, LinksKeepTheRowsOfTheOuterSide) {
  const struct {
    ts4::TDSLinkType type;
    const char* rows;
  } cases[] = {
      {ts4::ltInner, "1/101 1/102 2/103 4/104 4/105 5/106 7/107"},
      {ts4::ltOuterLeft,
       "1/101 1/102 2/103 3/NULL 4/104 4/105 5/106 6/NULL 7/107 8/NULL 9/NULL 10/NULL 11/NULL 12/NULL"},
      {ts4::ltOuterRight, "NULL/108 1/101 1/102 2/103 4/104 4/105 5/106 7/107"},
      {ts4::ltOuterFull,
       "NULL/108 1/101 1/102 2/103 3/NULL 4/104 4/105 5/106 6/NULL 7/107 8/NULL 9/NULL "
       "10/NULL 11/NULL 12/NULL"},
  };
  for (const auto& c : cases) {
    for (const char* mainTable : {"CUSTOMER", "ORDERS"}) {
      TSample t;
      t.s.customerOrders->SetLinkType(c.type);
      t.query.SetMainTableName(mainTable);
      t.Select("CUST_NO");
      t.Select("ORDER_NO");
      EXPECT_EQ(t.Rows(), c.rows) << t.sql;
    }
  }
}

// CITY = 'Oslo' holds for 1 6 11, SINCE >= 2021-01-01 for 4 6 8 9 11; a
// negated bracket drops the rows where its inner condition is unknown. The
// brackets' own texts are only checked here, by what they return.
TEST(SQLiteStatements, BracketsJoinTheirRowsByTheLinkType) {
  const std::pair<ts4::TFilterLinkType, const char*> cases[] = {
      {ts4::fltAll, "6 11"},
      {ts4::fltAny, "1 4 6 8 9 11"},
      {ts4::fltNone, "2 3 5 7 10"},
      {ts4::fltNotAll, "1 2 3 4 5 7 8 10 12"},
  };
  for (const auto& [type, keys] : cases) {
    TSample t;
    t.Select("CUST_NO");
    ts4::TFilterBracket& bracket = *t.query.Root().AddBracket();
    bracket.SetLinkType(type);
    t.s.Cond(bracket, "CITY", "Equal", "Oslo");
    t.s.Cond(bracket, "SINCE", "GreaterOrEqual", "2021-01-01");
    t.s.Cond(bracket, "CITY", "Equal", "Lima").SetEnabled(false);  // a row switched off joins nothing
    EXPECT_EQ(t.Rows(), keys) << t.sql;
  }
}

TEST(SQLiteStatements, ParametersBindTheirFullValue) {
  const struct {
    const char *field, *op, *value1, *value2;
    bool param2;  // value 1 is always a parameter
    const char* keys;
  } cases[] = {
      {"CUST_NO", "Equal", "4", "", false, "4"},
      {"NAME", "Equal", "O'Hara", "", false, "4"},
      {"NAME", "Contains", "art", "", false, "3 5 11"},
      {"NAME", "StartsWith", "Ma", "", false, "5 6 8"},
      {"NAME", "NotContains", "art", "", false, "1 2 4 6 7 8 9 10 12"},
      {"SINCE", "Between", "2020-01-01", "2020-12-31", false, "2 3 7"},
      {"SINCE", "Between", "2020-01-01", "2020-12-31", true, "2 3 7"},
  };
  for (const auto& c : cases) {
    TSample t;
    t.Select("CUST_NO");
    ts4::TFilterCond& cond = t.s.Cond(t.query.Root(), c.field, c.op, "", c.param2 ? "" : c.value2);
    cond.SetValue1IsParam(true);
    cond.Param1()->SetValue(c.value1);
    if (c.param2) {
      cond.SetValue2IsParam(true);
      cond.Param2()->SetValue(c.value2);
    }
    EXPECT_EQ(t.Rows(), c.keys) << t.sql;
  }
}

// ---- Whole statements in each style -------------------------------------------------------

struct StyleCase {
  const char* label;
  ts4::TSQLSyntax syntax;
  ts4::TSQLOptions options;
};

// Joins in WHERE, JOIN clauses, and JOIN clauses nested in parentheses; the
// links are inner, so every style means the same rows.
class StyleStatement : public testing::TestWithParam<StyleCase>, protected TSample {
 protected:
  StyleStatement() {
    query.SetSQLSyntax(GetParam().syntax);
    query.SetSQLOptions(GetParam().options);
  }
};

// A root bracket of alternatives must not swallow the join conditions.
TEST_P(StyleStatement, JoinsHoldAcrossAnAnyBracket) {
  for (const char* caption : {"CUST_NO", "ORDER_NO", "PRODUCT"}) Select(caption);
  query.Root().SetLinkType(ts4::fltAny);
  s.Cond(query.Root(), "NAME", "Equal", "Adams");
  s.Cond(query.Root(), "STATUS", "Equal", "open");
  EXPECT_EQ(Rows(), "1/101/Desk 1/101/Lamp 2/103/Chair 7/107/Shelf") << sql;
  EXPECT_EQ(query.QResult().OldStyleJoins(), GetParam().syntax == ts4::ssSQL1);
}

// CUST_NO <= 11 AND NOT (SINCE >= 2020-01-01 AND NOT (CITY = 'Oslo' OR NAME
// starts with 'Ma')) holds for 1 5 6 8 10 11, of which 1 and 5 have orders.
// Brackets that write nothing (one empty, one with its only row disabled)
// must leave no trace.
TEST_P(StyleStatement, NestedNegatedBrackets) {
  Select("CUST_NO");
  Select("ORDER_NO");
  s.Cond(query.Root(), "CUST_NO", "LessOrEqual", "11");
  ts4::TFilterBracket& notAll = *query.Root().AddBracket();
  notAll.SetLinkType(ts4::fltNotAll);
  s.Cond(notAll, "SINCE", "GreaterOrEqual", "2020-01-01");
  ts4::TFilterBracket& none = *notAll.AddBracket();
  none.SetLinkType(ts4::fltNone);
  s.Cond(none, "CITY", "Equal", "Oslo");
  s.Cond(none, "NAME", "StartsWith", "Ma");
  notAll.AddBracket()->SetLinkType(ts4::fltNone);
  ts4::TFilterBracket& off = *query.Root().AddBracket();
  off.SetLinkType(ts4::fltNone);
  s.Cond(off, "CUST_NO", "Equal", "1").SetEnabled(false);
  EXPECT_EQ(Rows(), "1/101 1/102 5/106") << sql;
}

// Sums per customer, largest first, ties by number; the plain fields are the
// groups. SQLite accepts a blank between an aggregate's name and its
// parenthesis; taken for a plain field, it would be a group too.
TEST_P(StyleStatement, AggregatesGroupByThePlainFields) {
  ts4::TRFieldList& fields = query.QResult().ResultFields();
  fields.Add(s.Field("CUST_NO"), ts4::stAscending)->SetSortOrder(1);
  fields.Add(s.Field("NAME"));
  fields.AddBySQLExpr("SUM(O.TOTAL)", ts4::stDescending, "TOTAL_SUM");
  fields.AddBySQLExpr("COUNT (O.ORDER_NO)", ts4::stNoSort, "ORDER_COUNT");
  EXPECT_EQ(Rows(), "4/O'Hara/399.5/2 1/Adams/330.5/2 2/Baker/120.25/1 7/Nolan/120.25/1 5/Martin/45.0/1")
      << sql;
  EXPECT_EQ(query.QResult().GroupBy(), "C.CUST_NO, C.NAME");
}

// A condition on a table no result field comes from still joins it in,
// along with the table between.
TEST_P(StyleStatement, ConditionTableIsJoinedIn) {
  Select("NAME");
  Select("PRODUCT");
  s.Cond(query.Root(), "QTY", "GreaterOrEqual", "2");
  EXPECT_EQ(Rows(), "Adams/Lamp Baker/Chair Nolan/Shelf") << sql;
}

INSTANTIATE_TEST_SUITE_P(
    sqlite, StyleStatement,
    testing::Values(StyleCase{"JoinsInWhere", ts4::ssSQL1,
                              ts4::DefaultSQLOptions | ts4::TSQLOptions{ts4::soBracketConditions}},
                    StyleCase{"Joins", ts4::ssSQL2, ts4::DefaultSQLOptions},
                    StyleCase{"NestedJoins", ts4::ssSQL2,
                              ts4::DefaultSQLOptions | ts4::TSQLOptions{ts4::soBracketJoins}}),
    [](const testing::TestParamInfo<StyleCase>& info) { return std::string(info.param.label); });

}  // namespace
