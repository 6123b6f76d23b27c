#include <gtest/gtest.h>

#include <memory>

#include "structure/db_info.h"
#include "structure/structure.h"
#include "test_support.h"

namespace {

using ts4::TWDBStructure;
using ts4test::ExpectError;

// Customers, orders and items, linked in a chain, with a grouped field.
struct OrderEntry {
  TWDBStructure db;
  ts4::TDSTable* customers = db.AddTable("customer", "Cust");
  ts4::TDSTable* orders = db.AddTable("orders", "Ord");
  ts4::TDSTable* items = db.AddTable("items", "Itm");
  ts4::TDSField* company = db.AddField(ts4::wfkData, "Company", "Company", customers);
  ts4::TDSField* saleDate = db.AddField(ts4::wfkData, "SaleDate", "Sale date", orders);
  ts4::TDSField* amount = db.AddField(ts4::wfkVirtual, "Itm.Qty * Itm.Price", "Amount", items);

  OrderEntry() {
    customers->SetDisplayName("Customers");
    db.AddLink(*orders, *customers, "CustNo", "CustNo");
    db.AddLink(*items, *orders, "OrderNo", "OrderNo");
    db.SetFieldGroup(*company, db.AddFieldGroup("Customer"));
    amount->AddTable(*orders);
  }
};

TEST(Tables, LookupModes) {
  OrderEntry s;
  struct Case {
    ts4::TDSTableSearch mode;
    const char* text;
    ts4::TDSTable* found;
  };
  for (const Case& c :
       {Case{ts4::tsName, "ORDERS", s.orders}, Case{ts4::tsName, "Ord", nullptr},
        Case{ts4::tsAlias, "ord", s.orders}, Case{ts4::tsAlias, "orders", nullptr},
        Case{ts4::tsDisplayName, "customers", s.customers}, Case{ts4::tsCompoundName, "items - itm", s.items},
        Case{ts4::tsSQLExpr, "customer cust", s.customers},
        Case{static_cast<ts4::TDSTableSearch>(7), "Ord", nullptr}}) {
    EXPECT_EQ(s.db.TableByName(c.mode, c.text), c.found) << static_cast<int>(c.mode) << " " << c.text;
  }
  ExpectError<ts4::EWDBStructError>([&] { (void)s.db.Tables(3); }, 1, "Invalid table index 3");
  ExpectError<ts4::EWDBStructError>([&] { (void)s.db.Links(-1); }, 2, "Invalid link index -1");
  ts4::TStrings names;
  s.db.GetTableNames(names);
  EXPECT_EQ(names.Lines(), (std::vector<std::string>{"customer", "orders", "items"}));
}

TEST(Fields, LookupModes) {
  OrderEntry s;
  struct Case {
    ts4::TDSFieldSearch mode;
    const char* text;
    ts4::TDSField* found;
  };
  for (const Case& c :
       {Case{ts4::fsFieldExpr, "saledate", s.saleDate}, Case{ts4::fsDisplayName, "SALE DATE", s.saleDate},
        Case{ts4::fsCompoundName, "customer.company", s.company},
        Case{ts4::fsCompoundName, "Company", nullptr}, Case{ts4::fsSQLExpr, "ord.saledate", s.saleDate},
        Case{ts4::fsSQLExpr, "Itm.Qty * Itm.Price", s.amount},
        Case{ts4::fsFullName, "Customers.Company", s.company},
        Case{static_cast<ts4::TDSFieldSearch>(9), "Company", nullptr}}) {
    EXPECT_EQ(s.db.FieldByName(c.mode, c.text), c.found) << static_cast<int>(c.mode) << " " << c.text;
  }
  ts4::TStrings names;
  s.db.GetFieldNames(names);
  EXPECT_EQ(names.Lines(), (std::vector<std::string>{"Customer.Company", "Sale date", "Amount"}));
}

TEST(Structure, ChangesFireOnChangeUnlessSuspended) {
  TWDBStructure db;
  int changes = 0;
  db.OnChange = [&](ts4::TWCustomDBStructure& changed) {
    EXPECT_EQ(&changed, &db);
    ++changes;
  };
  ts4::TDSTable* a = db.AddTable("a", "A");
  ts4::TDSTable* b = db.AddTable("b", "B");
  db.AddLink(*a, *b, "x", "x");
  db.AddOperator("Like", "like", "@f like '@1'", "", ts4::StringTypes);
  EXPECT_EQ(changes, 4);
  db.BeginUpdate();
  db.BeginUpdate();
  a->SetDisplayName("A table");
  db.DelLink(0);
  db.EndUpdate();
  EXPECT_EQ(changes, 4);
  db.EndUpdate();
  EXPECT_EQ(changes, 5) << "the outermost EndUpdate reports the suspended changes once";
  db.EndUpdate();  // unbalanced: ignored
  EXPECT_EQ(changes, 5);
  EXPECT_EQ(db.UpdateCount(), 0);
  // Empty means fewer than two fields.
  EXPECT_TRUE(db.Empty());
  db.AddField(ts4::wfkVirtual, "1", "", nullptr);
  EXPECT_TRUE(db.Empty());
  db.AddField(ts4::wfkVirtual, "2", "", nullptr);
  EXPECT_FALSE(db.Empty());
}

TEST(Structure, DeletingATableTakesItsLinksAndDataFields) {
  OrderEntry s;
  s.db.DelTable(1);  // orders
  EXPECT_EQ(s.db.TableCount(), 2);
  EXPECT_EQ(s.db.LinkCount(), 0);
  EXPECT_EQ(s.customers->LinkCount(), 0);
  EXPECT_EQ(s.items->LinkCount(), 0);
  EXPECT_EQ(s.db.FieldCount(), 2);
  EXPECT_EQ(s.db.FieldByName(ts4::fsFieldExpr, "SaleDate"), nullptr);
  EXPECT_EQ(s.amount->TableCount(), 1) << "a virtual field only forgets the table";
  EXPECT_EQ(s.items->Index(), 1) << "positions follow the list";
  ExpectError<ts4::EWDBStructError>([&] { s.db.DelTable(2); }, 1, "Invalid table index 2");
}

TEST(Structure, GroupsKeepEveryFieldInExactlyOnePlace) {
  OrderEntry s;
  const ts4::TDSFieldGroup& root = s.db.RootGroup();
  EXPECT_EQ(root.FieldCount(), 2);
  ts4::TDSFieldGroup* customer = s.db.FieldGroups(0);
  EXPECT_EQ(customer->Fields(0), s.company);
  s.db.SetFieldGroup(*s.amount, customer, 0);
  EXPECT_EQ(customer->FieldCount(), 2);
  EXPECT_EQ(customer->Fields(0), s.amount);
  EXPECT_EQ(root.FieldCount(), 1);
  s.db.DelFieldGroup(0);
  EXPECT_EQ(s.db.FieldGroupCount(), 0);
  EXPECT_EQ(root.FieldCount(), 3);
  EXPECT_EQ(s.amount->Group(), nullptr);
  EXPECT_EQ(s.amount->GetCompoundName(), "Amount");
  s.db.DelField(s.db.IndexOfField(s.saleDate));
  EXPECT_EQ(root.FieldCount(), 2);
  EXPECT_EQ(root.IndexOf(s.saleDate), -1);
}

TEST(Structure, ClearStructureKeepsOperators) {
  OrderEntry s;
  s.db.ClearStructure();
  EXPECT_EQ(s.db.TableCount() + s.db.FieldCount() + s.db.LinkCount() + s.db.FieldGroupCount(), 0);
  EXPECT_EQ(s.db.RootGroup().FieldCount(), 0);
  EXPECT_EQ(s.db.OperatCount(), 13);
}

// A provider that knows one table.
class OneTableInfo : public ts4::TWDBInfo {
 public:
  void FieldsByTable(std::string_view table, ts4::TDBFieldList& fields) override {
    if (table == "customer") {
      fields.Add("CustNo", 8, ts4::ftInteger);
      fields.Add("Company", 30, ts4::ftString);
    }
  }
};

TEST(Structure, DataFieldColumnsAreCheckedThroughTheProvider) {
  TWDBStructure db;
  ts4::TDSTable* customers = db.AddTable("customer", "Cust");
  ExpectError<ts4::EWDBStructError>([&] { db.AddField(ts4::wfkData, "CustNo", "", customers, true); }, 11,
                                    "DatabaseInfo is not specified");
  EXPECT_EQ(db.FieldCount(), 0);
  OneTableInfo info;
  db.SetDatabaseInfo(&info);
  ExpectError<ts4::EWDBStructError>([&] { db.AddField(ts4::wfkData, "Phone", "", customers, true); }, 10,
                                    "Can not find field \"Phone\" in table \"customer\"");
  EXPECT_EQ(db.FieldCount(), 0);
  ts4::TDSField* custNo = db.AddField(ts4::wfkData, "custno", "Number", customers, true);
  EXPECT_EQ(custNo->FieldType(), ts4::ftInteger);
  EXPECT_EQ(custNo->FieldSize(), 8);
  EXPECT_EQ(custNo->Operators(0)->Name(), "Equal");
  // Virtual fields and unchecked data fields never ask.
  EXPECT_NE(db.AddField(ts4::wfkVirtual, "1", "", nullptr, true), nullptr);
  EXPECT_NE(db.AddField(ts4::wfkData, "Phone", "", customers), nullptr);
}

TEST(Structure, ForgetsAProviderThatGoesAway) {
  TWDBStructure db;
  {
    OneTableInfo info;
    db.SetDatabaseInfo(&info);
    EXPECT_EQ(db.DatabaseInfo(), &info);
  }
  EXPECT_EQ(db.DatabaseInfo(), nullptr);
  db.UpdateDatabaseInfo();  // must not touch the destroyed provider
  auto info = std::make_unique<OneTableInfo>();
  {
    TWDBStructure shortLived;
    shortLived.SetDatabaseInfo(info.get());
  }
  info.reset();  // the provider must not notify the destroyed structure
}

}  // namespace
