#include <iostream>

#include "structure/structure.h"

int main() {
  ts4::TWDBStructure db;
  ts4::TDSTable* orders = db.AddTable("orders", "Ord");
  ts4::TDSTable* customers = db.AddTable("customer", "Cust");
  db.AddLink(*orders, *customers, "CustNo", "CustNo");
  const bool ok = db.Links(0)->GetSQLExpr(ts4::ssSQL2) == "(Ord.CustNo=Cust.CustNo)" &&
                  db.GetPath("Cust", "Ord").TableCount() == 2;
  std::cout << (ok ? "consumer ok" : "consumer FAILED") << "\n";
  return ok ? 0 : 1;
}
