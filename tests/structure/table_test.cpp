#include <gtest/gtest.h>

#include "structure/structure.h"
#include "test_support.h"

namespace {

using ts4::TWDBStructure;
using ts4test::ExpectError;

TEST(Table, SQLQuotesTheNameAndAddsAliasAndHints) {
  const struct {
    const char* name;
    const char* alias;
    bool quoted;
    const char* hints;
    const char* sql;
  } cases[] = {
      {"customer", "customer", false, "", "customer"},
      {"customer", "CUSTOMER", false, "", "customer CUSTOMER"},
      {"customer", "Cust", true, "", "\"customer\" Cust"},
      {"Order Items", "Order Items", true, "", "\"Order Items\""},
      {"\"Order Items\"", "Itm", true, "", "\"Order Items\" Itm"},
      {"customer", "Cust", false, "NOLOCK", "customer Cust WITH NOLOCK"},
      {"customer", "customer", true, "INDEX(ix)", "\"customer\" WITH INDEX(ix)"},
  };
  for (const auto& c : cases) {
    TWDBStructure db;
    ts4::TDSTable* table = db.AddTable(c.name, c.alias);
    table->SetQuoted(c.quoted);
    table->SetHints(c.hints);
    EXPECT_EQ(table->GetSQLExpr(), c.sql);
  }
}

TEST(Table, NewTableTakesNameAsCaptionAndAlias) {
  TWDBStructure db;
  ts4::TDSTable* table = db.AddTable("customer", "");
  EXPECT_EQ(table->Alias(), "customer");
  EXPECT_EQ(table->DisplayName(), "customer");
  EXPECT_EQ(table->GetCompoundName(), "customer - customer");
  table->SetTableAlias("Cust");
  EXPECT_EQ(table->GetCompoundName(), "customer - Cust");
}

TEST(Table, LinksOfATable) {
  TWDBStructure db;
  ts4::TDSTable* orders = db.AddTable("orders", "Ord");
  ts4::TDSTable* customers = db.AddTable("customer", "Cust");
  ts4::TDSTable* items = db.AddTable("items", "Itm");
  ts4::TDSLink* toCustomers = db.AddLink(*orders, *customers, "CustNo", "CustNo");
  ts4::TDSLink* fromItems = db.AddLink(*items, *orders, "OrderNo", "OrderNo");
  ASSERT_EQ(orders->LinkCount(), 2);
  EXPECT_EQ(orders->Links(0), toCustomers);
  EXPECT_EQ(orders->Links(1), fromItems);
  EXPECT_EQ(orders->LinkByTable(items), fromItems);
  EXPECT_EQ(items->LinkByTable(customers), nullptr);
  EXPECT_EQ(customers->LinkByTableAlias("ord"), toCustomers);
  EXPECT_EQ(customers->LinkByTableAlias("Itm"), nullptr);
  ExpectError<ts4::EWDBStructError>([&] { (void)orders->Links(2); }, 2, "Invalid link index 2");
  orders->DelLink(0);
  EXPECT_EQ(orders->LinkCount(), 1);
  EXPECT_EQ(db.LinkCount(), 2) << "the table forgets the link; the structure keeps it";
  ExpectError<ts4::EWDBStructError>([&] { orders->DelLink(1); }, 2, "Invalid link index 1");
  // A self-link is listed once.
  ts4::TDSLink* manager = db.AddLink(*items, *items, "ManagerNo", "EmpNo");
  EXPECT_EQ(items->LinkCount(), 2);
  EXPECT_EQ(items->LinkByTable(items), manager);
}

}  // namespace
