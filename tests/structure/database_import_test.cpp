// A structure made from what the metadata provider reports: captions,
// aliases, fields with their types and operators, links from foreign keys.
#include "structure/database_import.h"

#include <gtest/gtest.h>

#include "fake_db_info.h"
#include "structure/structure.h"
#include "test_support.h"

namespace {

using ts4::TDBFieldInfo;

TEST(DatabaseImport, CaptionsAreTheWordsOfTheName) {
  const struct {
    const char* name;
    const char* caption;
  } cases[] = {
      {"CUST_NO", "Cust No"},
      {"ORDER_ITEMS", "Order Items"},
      {"orderDate", "Order Date"},
      {"OrderID", "Order Id"},
      {"ADDRESS2", "Address2"},
      {"ship via", "Ship Via"},
      {"sales.orders", "Sales Orders"},
      {"x", "X"},
      {"__", "__"},
      {"first-name", "First Name"},
  };
  for (const auto& c : cases) EXPECT_EQ(ts4::CaptionFromName(c.name), c.caption) << c.name;
}

TEST(DatabaseImport, AliasesAreInitialsMadeUnique) {
  const std::unordered_set<std::string> taken = {"C", "OI", "C2"};
  const struct {
    const char* name;
    const char* alias;
  } cases[] = {
      {"ORDERS", "O"},      {"order_items", "OI2"}, {"CUSTOMERS", "C3"}, {"ORDER_REQUESTS", "OR2"},
      {"ON_NOTICE", "ON2"}, {"2019_sales", "T2S"},  {"_x", "X"},         {"productNotes", "PN"},
  };
  for (const auto& c : cases) EXPECT_EQ(ts4::AliasFromName(c.name, taken), c.alias) << c.name;
}

// Customers, orders (with two keys to employees), items, and employees
// that report to employees.
void FillSalesCatalogue(ts4test::FakeDBInfo& info) {
  info.catalogue["CUSTOMERS"] = {{"CUST_ID", 0, ts4::ftInteger}, {"COMPANY", 40, ts4::ftString}};
  info.catalogue["ORDERS"] = {{"ORDER_ID", 0, ts4::ftInteger},  {"CUST_ID", 0, ts4::ftInteger},
                              {"SALES_REP", 0, ts4::ftInteger}, {"TAKEN_BY", 0, ts4::ftInteger},
                              {"ORDER_DATE", 0, ts4::ftDate},   {"SHIP TIME", 0, ts4::ftTime}};
  info.catalogue["ORDER_ITEMS"] = {{"ORDER_ID", 0, ts4::ftInteger},
                                   {"ITEM_NO", 0, ts4::ftInteger},
                                   {"PRICE", 2, ts4::ftBCD},
                                   {"PICTURE", 0, ts4::ftBlob}};
  info.catalogue["EMPLOYEES"] = {{"EMP_ID", 0, ts4::ftInteger}, {"REPORTS_TO", 0, ts4::ftInteger}};
  info.foreignKeys = {
      {"ORDERS", {"CUST_ID"}, "CUSTOMERS", {"CUST_ID"}},
      {"ORDERS", {"SALES_REP"}, "EMPLOYEES", {"EMP_ID"}},
      {"ORDERS", {"TAKEN_BY"}, "EMPLOYEES", {"EMP_ID"}},  // a second link between the two: none
      {"ORDER_ITEMS", {"ORDER_ID"}, "ORDERS", {"ORDER_ID"}},
      {"EMPLOYEES", {"REPORTS_TO"}, "EMPLOYEES", {"EMP_ID"}},  // to itself: none
      {"ORDERS", {"X"}, "UNKNOWN", {"Y"}},                     // a table the list lacks: none
  };
}

std::vector<std::string> OperatorNames(const ts4::TDSField& field) {
  std::vector<std::string> names;
  for (int i = 0; i < field.OperatCount(); ++i) names.push_back(field.Operators(i)->Name());
  return names;
}

TEST(DatabaseImport, AnEmptyStructureGetsTheTablesColumnsAndForeignKeys) {
  ts4test::FakeDBInfo info;
  FillSalesCatalogue(info);
  ts4::TWDBStructure structure;
  structure.SetDatabaseInfo(&info);
  structure.SetAutoAddFields(true);
  int changes = 0;
  structure.OnChange = [&](ts4::TWCustomDBStructure&) { ++changes; };
  structure.UpdateDatabaseInfo();
  EXPECT_EQ(changes, 1) << "one change for the whole import";

  ASSERT_EQ(structure.TableCount(), 4);
  std::vector<std::string> tables;
  for (int i = 0; i < structure.TableCount(); ++i) {
    const ts4::TDSTable& table = *structure.Tables(i);
    tables.push_back(table.Name() + " " + table.Alias() + " " + table.DisplayName());
  }
  EXPECT_EQ(tables, (std::vector<std::string>{"CUSTOMERS C Customers", "EMPLOYEES E Employees",
                                              "ORDERS O Orders", "ORDER_ITEMS OI Order Items"}));
  ASSERT_EQ(structure.FieldCount(), 14);
  const ts4::TDSField& date = *structure.FieldByName(ts4::fsSQLExpr, "O.ORDER_DATE");
  EXPECT_EQ(date.DisplayName(), "Order Date");
  EXPECT_EQ(date.FieldType(), ts4::ftDate);
  EXPECT_EQ(date.GetCompoundName(), "Orders.Order Date") << "a field group per table";
  EXPECT_EQ(OperatorNames(date),
            (std::vector<std::string>{"Equal", "NotEqual", "LessThan", "LessOrEqual", "GreaterThan",
                                      "GreaterOrEqual", "IsNull", "InList", "Between"}));
  const ts4::TDSField& price = *structure.FieldByName(ts4::fsSQLExpr, "OI.PRICE");
  EXPECT_EQ(price.FieldType(), ts4::ftBCD);
  EXPECT_EQ(price.FieldSize(), 2);
  EXPECT_EQ(structure.FieldByName(ts4::fsFieldExpr, "SHIP TIME")->GetSQLExpr(), "O.\"SHIP TIME\"")
      << "a name with a blank is quoted";
  EXPECT_TRUE(OperatorNames(*structure.FieldByName(ts4::fsFieldExpr, "PICTURE")).empty())
      << "no operator applies to a blob; it is still a result field";

  std::vector<std::string> links;
  for (int i = 0; i < structure.LinkCount(); ++i) {
    const ts4::TDSLink& link = *structure.Links(i);
    links.push_back(link.Table1()->Alias() + "." + link.FldName1().CommaText() + "=" +
                    link.Table2()->Alias() + "." + link.FldName2().CommaText());
  }
  EXPECT_EQ(links, (std::vector<std::string>{"C.CUST_ID=O.CUST_ID", "E.EMP_ID=O.SALES_REP",
                                             "O.ORDER_ID=OI.ORDER_ID"}));
  EXPECT_EQ(structure.GetPath("C", "OI").TableCount(), 3) << "the links join the tables";
}

TEST(DatabaseImport, OnlyAnEmptyStructureWithAutoAddFieldsIsFilled) {
  ts4test::FakeDBInfo info;
  FillSalesCatalogue(info);
  ts4::TWDBStructure manual;
  manual.SetDatabaseInfo(&info);
  manual.UpdateDatabaseInfo();
  EXPECT_EQ(manual.TableCount(), 0) << "without AutoAddFields";

  ts4::TWDBStructure kept;
  kept.AddTable("MINE", "M");
  kept.SetDatabaseInfo(&info);
  kept.SetAutoAddFields(true);
  kept.UpdateDatabaseInfo();
  EXPECT_EQ(kept.TableCount(), 1) << "a structure that has tables keeps them";
}

TEST(DatabaseImport, AProviderErrorLeavesTheStructureEmpty) {
  ts4test::FakeDBInfo info;
  FillSalesCatalogue(info);
  info.failOnForeignKeys = true;
  ts4::TWDBStructure structure;
  structure.SetDatabaseInfo(&info);
  structure.SetAutoAddFields(true);
  EXPECT_THROW(structure.UpdateDatabaseInfo(), ts4::EWDBInfoError);
  EXPECT_EQ(structure.TableCount(), 0);
  EXPECT_EQ(structure.FieldCount(), 0);
}

}  // namespace
