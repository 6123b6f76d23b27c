#include <gtest/gtest.h>

#include "structure/structure.h"

namespace {

using ts4::TWDBStructure;

// Each pair in parentheses; the outer-join marker only in that syntax; table quoting never reaches the
// aliases.
TEST(Link, SQLWritesEachPairInParentheses) {
  const struct {
    ts4::TDSLinkType type;
    ts4::TSQLSyntax syntax;
    const char* fields1;
    const char* fields2;
    bool quoteFields;
    const char* sql;
  } cases[] = {
      {ts4::ltInner, ts4::ssOracle, "CustNo", "CustNo", false, "(Ord.CustNo=Cust.CustNo)"},
      {ts4::ltOuterLeft, ts4::ssOracle, "CustNo", "CustNo", false, "(Ord.CustNo=Cust.CustNo (+) )"},
      {ts4::ltOuterRight, ts4::ssOracle, "CustNo", "CustNo", false, "(Ord.CustNo (+) =Cust.CustNo)"},
      {ts4::ltOuterFull, ts4::ssOracle, "CustNo", "CustNo", false, "(Ord.CustNo=Cust.CustNo)"},
      {ts4::ltOuterLeft, ts4::ssSQL1, "CustNo", "CustNo", false, "(Ord.CustNo=Cust.CustNo)"},
      {ts4::ltInner, ts4::ssSQL2, "CustNo,Branch", "CustNo,BranchNo", false,
       "(Ord.CustNo=Cust.CustNo) and (Ord.Branch=Cust.BranchNo)"},
      {ts4::ltOuterLeft, ts4::ssOracle, "CustNo,Branch", "CustNo,BranchNo", false,
       "(Ord.CustNo=Cust.CustNo (+) ) and (Ord.Branch=Cust.BranchNo (+) )"},
      {ts4::ltInner, ts4::ssSQL2, "\"Cust No\"", "CustNo", true, "(Ord.\"Cust No\"=Cust.\"CustNo\")"},
  };
  for (const auto& c : cases) {
    TWDBStructure db;
    ts4::TDSTable* orders = db.AddTable("orders", "Ord");
    ts4::TDSTable* customers = db.AddTable("customer", "Cust");
    orders->SetQuoted(true);
    ts4::TDSLink* link = db.AddLink(*orders, *customers, c.fields1, c.fields2, c.type);
    link->SetQuoteFields(c.quoteFields);
    EXPECT_EQ(link->GetSQLExpr(c.syntax), c.sql);
  }
}

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
