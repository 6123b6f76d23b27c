#include <gtest/gtest.h>

#include "structure/structure.h"

namespace {

using ts4::TWDBStructure;

struct LinkSQLCase {
  const char* label;
  ts4::TDSLinkType type;
  ts4::TSQLSyntax syntax;
  const char* fields1;
  const char* fields2;
  bool quoteFields;
  const char* sql;
};

class LinkSQL : public testing::TestWithParam<LinkSQLCase> {};

TEST_P(LinkSQL, WritesEachPairInParentheses) {
  const LinkSQLCase& c = GetParam();
  TWDBStructure db;
  ts4::TDSTable* orders = db.AddTable("orders", "Ord");
  ts4::TDSTable* customers = db.AddTable("customer", "Cust");
  orders->SetQuoted(true);  // table quoting never reaches the aliases
  ts4::TDSLink* link = db.AddLink(*orders, *customers, c.fields1, c.fields2, c.type);
  link->SetQuoteFields(c.quoteFields);
  EXPECT_EQ(link->GetSQLExpr(c.syntax), c.sql);
}

INSTANTIATE_TEST_SUITE_P(
    Links, LinkSQL,
    testing::Values(LinkSQLCase{"Inner", ts4::ltInner, ts4::ssSQL2, "CustNo", "CustNo", false,
                                "(Ord.CustNo=Cust.CustNo)"},
                    LinkSQLCase{"InnerMarkerSyntax", ts4::ltInner, ts4::ssOracle, "CustNo", "CustNo", false,
                                "(Ord.CustNo=Cust.CustNo)"},
                    LinkSQLCase{"LeftMarker", ts4::ltOuterLeft, ts4::ssOracle, "CustNo", "CustNo", false,
                                "(Ord.CustNo=Cust.CustNo (+) )"},
                    LinkSQLCase{"RightMarker", ts4::ltOuterRight, ts4::ssOracle, "CustNo", "CustNo", false,
                                "(Ord.CustNo (+) =Cust.CustNo)"},
                    LinkSQLCase{"FullNoMarker", ts4::ltOuterFull, ts4::ssOracle, "CustNo", "CustNo", false,
                                "(Ord.CustNo=Cust.CustNo)"},
                    LinkSQLCase{"LeftInJoinSyntax", ts4::ltOuterLeft, ts4::ssSQL2, "CustNo", "CustNo", false,
                                "(Ord.CustNo=Cust.CustNo)"},
                    LinkSQLCase{"LeftInWhereSyntax", ts4::ltOuterLeft, ts4::ssSQL1, "CustNo", "CustNo", false,
                                "(Ord.CustNo=Cust.CustNo)"},
                    LinkSQLCase{"TwoPairs", ts4::ltInner, ts4::ssSQL2, "CustNo,Branch", "CustNo,BranchNo",
                                false, "(Ord.CustNo=Cust.CustNo) and (Ord.Branch=Cust.BranchNo)"},
                    LinkSQLCase{"TwoPairsMarked", ts4::ltOuterLeft, ts4::ssOracle, "CustNo,Branch",
                                "CustNo,BranchNo", false,
                                "(Ord.CustNo=Cust.CustNo (+) ) and (Ord.Branch=Cust.BranchNo (+) )"},
                    LinkSQLCase{"QuotedFields", ts4::ltInner, ts4::ssSQL2, "\"Cust No\"", "CustNo", true,
                                "(Ord.\"Cust No\"=Cust.\"CustNo\")"}),
    [](const testing::TestParamInfo<LinkSQLCase>& info) { return std::string(info.param.label); });

TEST(Link, OperatorsArePutInWithoutBlanks) {
  TWDBStructure db;
  ts4::TDSTable* a = db.AddTable("a", "A");
  ts4::TDSTable* b = db.AddTable("b", "B");
  ts4::TDSLink* link = db.AddLink(*a, *b, "X,Y", "X,Y");
  link->SetOperators(ts4::TStrings{">=", "<>"});
  EXPECT_EQ(link->GetSQLExpr(ts4::ssSQL2), "(A.X>=B.X) and (A.Y<>B.Y)");
  link->ApplyDefOperator();
  EXPECT_EQ(link->Operators().Lines(), (std::vector<std::string>{"=", "="}));
}

TEST(Link, MissingPartnersDoNotBreakTheText) {
  TWDBStructure db;
  ts4::TDSTable* a = db.AddTable("a", "A");
  ts4::TDSTable* b = db.AddTable("b", "B");
  auto link = db.NewLink(*a, *b);
  link->SetFields1(ts4::TStrings{"X", "Y"});
  link->SetFields2(ts4::TStrings{"X"});
  ts4::TDSLink* added = db.AddLinkByRef(std::move(link));
  EXPECT_EQ(added->GetSQLExpr(ts4::ssSQL2), "(A.X=B.X) and (A.Y=B.)");
  EXPECT_EQ(added->GetDisplayName(), "a - b");
  EXPECT_EQ(added->OtherTable(a), b);
  EXPECT_EQ(added->OtherTable(b), a);
}

TEST(Link, FindLinkMatchesTableNamesInEitherOrderExactly) {
  TWDBStructure db;
  ts4::TDSTable* orders = db.AddTable("orders", "Ord");
  ts4::TDSTable* customers = db.AddTable("customer", "Cust");
  ts4::TDSTable* items = db.AddTable("items", "Itm");
  db.AddLink(*items, *orders, "OrderNo", "OrderNo");
  ts4::TDSLink* link = db.AddLink(*orders, *customers, "CustNo", "CustNo");
  EXPECT_EQ(db.FindLink("orders", "customer"), link);
  EXPECT_EQ(db.FindLink("customer", "orders"), link);
  EXPECT_EQ(db.FindLink("Orders", "customer"), nullptr);
  EXPECT_EQ(db.FindLink("Ord", "Cust"), nullptr) << "names, not aliases";
  EXPECT_EQ(db.FindLink("items", "customer"), nullptr);
}

}  // namespace
