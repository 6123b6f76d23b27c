// Whole statements: select list, FROM in each syntax, WHERE, GROUP BY, ORDER BY.
#include <gtest/gtest.h>

#include "sample_structure.h"
#include "test_support.h"

namespace {

using ts4test::Statement;
using ts4test::TSampleStructure;
using Lines = std::vector<std::string>;

/// NAME (CUSTOMER) and TOTAL (ORDERS, sorted descending), one condition on CITY.
struct TwoTableQuery {
  TwoTableQuery() {
    query.QResult().ResultFields().Add(s.Field("NAME"));
    query.QResult().ResultFields().Add(s.Field("TOTAL"), ts4::stDescending);
    s.Cond(query.Root(), "CITY", "Equal", "Riga");
  }
  TSampleStructure s;
  ts4::TWQuery query{&s.db};
};

TEST(Statement, JoinSyntaxes) {
  const Lines select = {"SELECT DISTINCT C.NAME, O.TOTAL"};
  const Lines where = {" (", "C.CITY = 'Riga'", ")", "ORDER BY 2 DESC"};
  auto joined = [](Lines a, const Lines& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
  };
  TwoTableQuery q;
  EXPECT_EQ(Statement(q.query),
            joined(joined(select,
                          {"FROM CUSTOMER C", "     INNER JOIN ORDERS O ON (C.CUST_NO=O.CUST_NO)", "WHERE"}),
                   where));
  q.query.SetSQLSyntax(ts4::ssSQL1);
  EXPECT_EQ(
      Statement(q.query),
      joined(joined(select, {"FROM CUSTOMER C, ", "     ORDERS O", "WHERE", "   (C.CUST_NO=O.CUST_NO) AND"}),
             where));
  q.s.customerOrders->SetLinkType(ts4::ltOuterLeft);
  EXPECT_EQ(Statement(q.query),  // an outer link has no condition in this syntax
            joined(joined(select, {"FROM CUSTOMER C, ", "     ORDERS O", "WHERE"}), where));
  q.query.SetSQLSyntax(ts4::ssOracle);
  EXPECT_EQ(Statement(q.query), joined(joined(select, {"FROM CUSTOMER C, ", "     ORDERS O", "WHERE",
                                                       "   (C.CUST_NO=O.CUST_NO (+) ) AND"}),
                                       where));
}

TEST(Statement, WhereOnlyWhenSomethingFollows) {
  TSampleStructure s;
  s.customerOrders->SetLinkType(ts4::ltOuterLeft);
  ts4::TWQuery query(&s.db);
  query.SetSQLSyntax(ts4::ssSQL1);
  query.QResult().ResultFields().Add(s.Field("TOTAL"));
  query.SetMainTableName("customer");
  EXPECT_EQ(Statement(query), (Lines{"SELECT DISTINCT O.TOTAL", "FROM CUSTOMER C, ", "     ORDERS O"}));
  query.SetSQLSyntax(ts4::ssOracle);
  EXPECT_EQ(Statement(query), (Lines{"SELECT DISTINCT O.TOTAL", "FROM CUSTOMER C, ", "     ORDERS O", "WHERE",
                                     "   (C.CUST_NO=O.CUST_NO (+) )"}));
  EXPECT_EQ(query.QResult().GetJoinConditions(), "   (C.CUST_NO=O.CUST_NO (+) )");
}

TEST(Statement, TablesFollowPathsAndJoinAfterTheirPartner) {
  TSampleStructure s;
  ts4::TDSTable* pay = s.db.AddTable("PAYMENT", "P");
  s.db.AddField(ts4::wfkData, "AMOUNT", "AMOUNT", pay)->SetFieldType(ts4::ftFloat);
  s.db.AddLink(s.Table("C"), *pay, "CUST_NO", "CUST_NO");
  ts4::TWQuery query(&s.db);
  query.SetSQLOptions(ts4::TSQLOptions{ts4::soBracketJoins});
  auto& fields = query.QResult().ResultFields();
  fields.Add(s.Field("QTY"));     // CUSTOMER is not selected: ITEMS becomes the main table
  fields.Add(s.Field("NAME"));    // path I -> O -> C
  fields.Add(s.Field("AMOUNT"));  // P joins C: placed right after C, before nothing newer
  EXPECT_EQ(Statement(query), (Lines{"SELECT I.QTY, C.NAME, P.AMOUNT", "FROM ((ITEMS I",
                                     "     INNER JOIN ORDERS O ON (O.ORDER_NO=I.ORDER_NO))",
                                     "     INNER JOIN CUSTOMER C ON (C.CUST_NO=O.CUST_NO))",
                                     "     INNER JOIN PAYMENT P ON (C.CUST_NO=P.CUST_NO)"}));
  query.SetMainTableName("CUSTOMER");  // now P is newer than O and joins the same partner
  EXPECT_EQ(Statement(query)[1], "FROM ((CUSTOMER C");
  EXPECT_EQ(Statement(query)[2], "     INNER JOIN PAYMENT P ON (C.CUST_NO=P.CUST_NO))");
}

TEST(Statement, SelectListOptions) {
  TSampleStructure s;
  ts4::TSQLFormats formats;
  formats.SetQuoteSymbol1('[');
  formats.SetQuoteSymbol2(']');
  s.db.SetSQLFormats(formats);
  ts4::TWQuery query(&s.db);
  auto& fields = query.QResult().ResultFields();
  fields.Add(s.Field("NAME"))->SetAlias("CustName");
  fields.AddBySQLExpr("SUM(O.TOTAL)", ts4::stNoSort, "Сумма");
  EXPECT_EQ(Statement(query).front(), "SELECT DISTINCT C.NAME as CustName, SUM(O.TOTAL) as C2");
  fields[1]->SetAlias("Сумма");
  query.SetSQLOptions(ts4::TSQLOptions{ts4::soQuoteAliases});
  EXPECT_EQ(Statement(query).front(), "SELECT C.NAME as [CustName], SUM(O.TOTAL) as [Сумма]");
  fields.SetJustSorting(true);
  EXPECT_EQ(Statement(query).front(), "SELECT *");
}

TEST(Statement, GroupByAndOrderBy) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  auto& fields = query.QResult().ResultFields();
  fields.Add(s.Field("NAME"), ts4::stAscending)->SetSortOrder(2);
  fields.Add(s.Field("CITY"), ts4::stDescending)->SetSortOrder(1);
  fields.AddBySQLExpr("count(O.ORDER_NO)", ts4::stNoSort);
  EXPECT_EQ(Statement(query), (Lines{"SELECT DISTINCT C.NAME, C.CITY, count(O.ORDER_NO)", "FROM CUSTOMER C",
                                     "     INNER JOIN ORDERS O ON (C.CUST_NO=O.CUST_NO)",
                                     "GROUP BY C.NAME, C.CITY", "ORDER BY 2 DESC, 1 ASC"}));
  query.SetSQLOptions(ts4::TSQLOptions{ts4::soSortByNames});
  EXPECT_EQ(Statement(query).back(), "ORDER BY C.CITY DESC, C.NAME ASC");
  fields.Delete(2);
  EXPECT_EQ(Statement(query).size(), 3u);  // no aggregate, no GROUP BY
}

TEST(Statement, NothingSelectedSelectsStar) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  s.Cond(query.Root(), "QTY", "GreaterThan", "2");
  EXPECT_EQ(Statement(query), (Lines{"SELECT DISTINCT *", "FROM ITEMS I", "WHERE", " (", "I.QTY >2", ")"}));
}

TEST(Statement, MainTableByNameAliasOrDefault) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  EXPECT_EQ(query.MainTable(), nullptr);
  s.db.SetDefaultMainTable("ORDERS");
  EXPECT_EQ(query.MainTable(), &s.Table("O"));
  query.SetMainTableName("i");
  EXPECT_EQ(query.MainTable(), &s.Table("I"));
  EXPECT_EQ(Statement(query)[1], "FROM ITEMS I");
}

TEST(Statement, Failures) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  ts4test::ExpectError([&] { query.BuildQuery(); }, 1, "No enough information for building query");
  EXPECT_EQ(query.State(), ts4::stIdle);
  ts4test::ExpectError([&] { query.QResult().GetSQL(); }, 8, "Query was not built properly");

  ts4::TDSTable* lone = s.db.AddTable("LONE", "L");
  s.db.AddField(ts4::wfkData, "X", "X", lone);
  query.QResult().ResultFields().Add(s.Field("NAME"));
  query.QResult().ResultFields().Add(s.Field("X"));
  ts4test::ExpectError<ts4::EWDBStructError>([&] { query.BuildQuery(); }, 5,
                                             "Can not find path between tables");
  EXPECT_EQ(query.State(), ts4::stIdle);
}

}  // namespace
