// Builds a small order-entry structure in memory and prints the SQL text of
// each table, field and link, the chain of joins between two tables, and a
// query over it written in the three join syntaxes.
#include <iostream>

#include "foundation/error.h"
#include "query/query.h"
#include "structure/structure.h"

namespace {

void BuildStructure(ts4::TWDBStructure& db) {
  using namespace ts4;
  TDSTable* customers = db.AddTable("customer", "Cust");
  customers->SetDisplayName("Customers");
  TDSTable* orders = db.AddTable("orders", "Ord");
  orders->SetDisplayName("Orders");
  TDSTable* items = db.AddTable("items", "Itm");
  items->SetDisplayName("Order items");
  TDSTable* parts = db.AddTable("parts", "Part");
  parts->SetDisplayName("Parts");
  parts->SetQuoted(true);
  TDSTable* employees = db.AddTable("employee", "Emp");
  employees->SetDisplayName("Employees");

  db.AddLink(*orders, *customers, "CustNo", "CustNo");
  db.AddLink(*items, *orders, "OrderNo", "OrderNo");
  db.AddLink(*items, *parts, "PartNo", "PartNo");
  db.AddLink(*orders, *employees, "EmpNo", "EmpNo", ltOuterLeft);

  TDSFieldGroup* group = db.AddFieldGroup("Customer");
  auto addData = [&](TDSTable* table, const char* column, const char* caption, TFieldType type) {
    TDSField* field = db.AddField(wfkData, column, caption, table);
    field->SetFieldType(type);
    field->AddAppliedOperators();
    return field;
  };
  db.SetFieldGroup(*addData(customers, "Company", "Company", ftString), group);
  db.SetFieldGroup(*addData(customers, "City", "City", ftString), group);
  addData(orders, "SaleDate", "Sale date", ftDate);
  addData(orders, "ItemsTotal", "Order total", ftCurrency);
  addData(parts, "Description", "Part", ftString)->SetQuoted(true);
  addData(employees, "LastName", "Sales person", ftString);
  TDSField* amount = db.AddField(wfkVirtual, "Itm.Qty * Part.ListPrice", "Line amount", nullptr);
  amount->AddTable(*items);
  amount->AddTable(*parts);
  amount->SetFieldType(ftFloat);
  amount->AddAppliedOperators();
}

// Companies in Riga or Tallinn with big orders not sold by Smith, and their order totals.
void BuildQuery(ts4::TWDBStructure& db, ts4::TWQuery& query) {
  using namespace ts4;
  auto field = [&](const char* caption) { return db.FieldByName(fsDisplayName, caption); };
  auto condition = [&](TFilterBracket& bracket, const char* caption, const char* op, const char* value) {
    TFilterCond* cond = bracket.AddCond();
    cond->SetField(field(caption));
    cond->SetOperator(db.OperatorByName(op));
    cond->SetValue(1, value);
    return cond;
  };
  condition(query.Root(), "City", "InList", "Riga,Tallinn");
  condition(query.Root(), "Order total", "GreaterOrEqual", "1000");
  TFilterBracket* notBy = query.Root().AddBracket();
  notBy->SetLinkType(fltNone);
  condition(*notBy, "Sales person", "StartsWith", "Smith");
  condition(query.Root(), "Sale date", "GreaterThan", "2024-01-01")->SetValue1IsParam(true);
  query.QResult().ResultFields().Add(*field("Company"), stAscending);
  query.QResult().ResultFields().AddByExpression("SUM({Order total})", stDescending, "Total", "Total");
}

}  // namespace

int main() {
  try {
    ts4::TWDBStructure db;
    BuildStructure(db);

    std::cout << "Tables\n";
    for (int i = 0; i < db.TableCount(); ++i) {
      const ts4::TDSTable* table = db.Tables(i);
      std::cout << "  " << table->DisplayName() << ": " << table->GetSQLExpr() << "\n";
    }
    std::cout << "Fields\n";
    for (int i = 0; i < db.FieldCount(); ++i) {
      const ts4::TDSField* field = db.Fields(i);
      std::cout << "  " << field->GetCompoundName() << ": " << field->GetSQLExpr() << "  ("
                << field->OperatCount() << " operators, first: "
                << (field->OperatCount() > 0 ? field->Operators(0)->DisplayName() : "none") << ")\n";
    }
    std::cout << "Links\n";
    for (int i = 0; i < db.LinkCount(); ++i) {
      const ts4::TDSLink* link = db.Links(i);
      std::cout << "  " << link->GetDisplayName() << ": " << link->GetSQLExpr(ts4::ssSQL2)
                << "   with outer-join markers: " << link->GetSQLExpr(ts4::ssOracle) << "\n";
    }
    const ts4::TDSPath& path = db.GetPath("cust", "part");
    std::cout << "Path from Cust to Part:";
    for (int i = 0; i < path.TableCount(); ++i) std::cout << (i ? " -> " : " ") << path.Tables(i)->Alias();
    std::cout << "\n";

    ts4::TWQuery query(&db);
    BuildQuery(db, query);
    const std::pair<ts4::TSQLSyntax, const char*> syntaxes[] = {{ts4::ssSQL2, "JOIN clauses"},
                                                                {ts4::ssSQL1, "joins in WHERE"},
                                                                {ts4::ssOracle, "outer-join markers"}};
    for (auto [syntax, name] : syntaxes) {
      query.SetSQLSyntax(syntax);
      query.BuildQuery();
      std::cout << "\nQuery, " << name << ":\n";
      for (const std::string& line : query.QResult().GetSQL()) std::cout << "  " << line << "\n";
    }
    const ts4::TSQLParam* param = query.QResult().GetParam(0);
    std::cout << "Parameter :" << param->Name() << " (" << param->Caption() << ")\n";
    return 0;
  } catch (const ts4::EWTessalyError& e) {
    std::cerr << "structure_demo: " << e.what() << " (code " << e.ErrorCode() << ")\n";
    return 1;
  }
}
