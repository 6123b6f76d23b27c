#include <gtest/gtest.h>

#include "structure/structure.h"
#include "test_support.h"

namespace {

using ts4::TWDBStructure;
using ts4test::ExpectError;

TEST(FieldSQL, DataAndVirtualFields) {
  TWDBStructure db;
  ts4::TDSTable* customers = db.AddTable("customer", "Cust");
  ts4::TDSTable* noAlias = db.AddTable("plain", "x");
  noAlias->SetTableAlias("");
  struct Case {
    ts4::TWFieldKind kind;
    const char* expr;
    ts4::TDSTable* table;
    bool quoted;
    const char* sql;
  };
  for (const Case& c :
       {Case{ts4::wfkData, "Company Name", customers, true, "Cust.\"Company Name\""},
        Case{ts4::wfkData, "Company", nullptr, true, "\"Company\""},
        Case{ts4::wfkData, "Company", noAlias, false, "Company"},
        Case{ts4::wfkVirtual, "Cust.Qty * 2", customers, true, "Cust.Qty * 2"},
        Case{ts4::wfkVirtual, "UPPER(Cust.Company)", nullptr, false, "UPPER(Cust.Company)"}}) {
    ts4::TDSField* field = db.AddField(c.kind, c.expr, "", c.table);
    field->SetQuoted(c.quoted);
    EXPECT_EQ(field->GetSQLExpr(), c.sql) << c.expr;
    EXPECT_EQ(field->DisplayName(), c.expr) << "an empty caption becomes the expression";
  }
}

TEST(FieldSQL, QuoteSymbolsFollowTheStructure) {
  TWDBStructure db;
  ts4::TSQLFormats formats;
  formats.SetQuoteSymbol1('[');
  formats.SetQuoteSymbol2(']');
  db.SetSQLFormats(formats);
  ts4::TDSTable* table = db.AddTable("Order Items", "Itm");
  table->SetQuoted(true);
  ts4::TDSField* field = db.AddField(ts4::wfkData, "Last Name", "", table);
  field->SetQuoted(true);
  EXPECT_EQ(table->GetSQLExpr(), "[Order Items] Itm");
  EXPECT_EQ(field->GetSQLExpr(), "Itm.[Last Name]");
}

TEST(Field, NameAndExpressionBelongToTheirKinds) {
  TWDBStructure db;
  ts4::TDSField* data = db.AddField(ts4::wfkData, "Company", "Company", db.AddTable("c", "c"));
  ts4::TDSField* expr = db.AddField(ts4::wfkVirtual, "1+1", "Two", nullptr);
  data->SetFieldName("CompanyName");
  expr->SetSQLExpr("2");
  EXPECT_EQ(data->FieldExpr(), "CompanyName");
  EXPECT_EQ(expr->FieldExpr(), "2");
  ExpectError<ts4::EWDBStructError>([&] { expr->SetFieldName("x"); }, 7,
                                    "Can not assign field name to virtual field");
  ExpectError<ts4::EWDBStructError>([&] { data->SetSQLExpr("x"); }, 8,
                                    "Can not assign expression to data field");
  EXPECT_EQ(expr->FieldExpr(), "2");
  EXPECT_EQ(data->FieldExpr(), "CompanyName");
}

TEST(Field, NamesWithGroupsAndTables) {
  TWDBStructure db;
  ts4::TDSTable* customers = db.AddTable("customer", "Cust");
  customers->SetDisplayName("Customers");
  ts4::TDSField* company = db.AddField(ts4::wfkData, "Company", "Company", customers);
  ts4::TDSField* total = db.AddField(ts4::wfkVirtual, "SUM(x)", "Total", nullptr);
  EXPECT_EQ(company->GetCompoundName(), "Company");
  EXPECT_EQ(company->GetGroupName(), "");
  EXPECT_EQ(company->GetFullName(), "Customers.Company");
  EXPECT_EQ(total->GetFullName(), "Total");
  ts4::TDSFieldGroup* group = db.AddFieldGroup("Address");
  db.SetFieldGroup(*company, group);
  EXPECT_EQ(company->GetCompoundName(), "Address.Company");
  EXPECT_EQ(company->GetGroupName(), "Address");
  EXPECT_EQ(company->Group(), group);
  // IDs are unique and follow explicit ones.
  total->SetID(40);
  EXPECT_EQ(db.AddField(ts4::wfkVirtual, "3", "", nullptr)->ID(), 41);
  EXPECT_EQ(db.FieldByID(40), total);
  EXPECT_EQ(db.FieldByID(39), nullptr);
}

TEST(Field, TablesOfAVirtualField) {
  TWDBStructure db;
  ts4::TDSTable* a = db.AddTable("a", "A");
  ts4::TDSTable* b = db.AddTable("b", "B");
  ts4::TDSField* field = db.AddField(ts4::wfkVirtual, "A.x + B.y", "Sum", a);
  field->AddTable(*b);
  field->AddTable(*a);
  ASSERT_EQ(field->TableCount(), 2);
  EXPECT_EQ(field->Tables(1), b);
  field->ExcludeTables({a});
  EXPECT_EQ(field->Table(), b);
  ExpectError<ts4::EWDBStructError>([&] { (void)field->Tables(1); }, 1, "Invalid table index 1");
}

}  // namespace
