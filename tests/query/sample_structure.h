#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "query/query.h"
#include "structure/structure.h"

namespace ts4test {

/// Three linked tables: CUSTOMER C -< ORDERS O -< ITEMS I, each column a
/// data field captioned by its name, with its type's default operators.
///   CUSTOMER: CUST_NO integer, NAME string, CITY string, SINCE date
///   ORDERS:   ORDER_NO integer, CUST_NO integer, TOTAL float, PLACED date-time, STATUS string
///   ITEMS:    ORDER_NO integer, PRODUCT string, QTY integer
class TSampleStructure {
 public:
  TSampleStructure() {
    auto* c = db.AddTable("CUSTOMER", "C");
    auto* o = db.AddTable("ORDERS", "O");
    auto* i = db.AddTable("ITEMS", "I");
    Add(c, "CUST_NO", ts4::ftInteger);
    Add(c, "NAME", ts4::ftString);
    Add(c, "CITY", ts4::ftString);
    Add(c, "SINCE", ts4::ftDate);
    Add(o, "ORDER_NO", ts4::ftInteger);
    Add(o, "CUST_NO", ts4::ftInteger, "O.CUST_NO");
    Add(o, "TOTAL", ts4::ftFloat);
    Add(o, "PLACED", ts4::ftDateTime);
    Add(o, "STATUS", ts4::ftString);
    Add(i, "ORDER_NO", ts4::ftInteger, "I.ORDER_NO");
    Add(i, "PRODUCT", ts4::ftString);
    Add(i, "QTY", ts4::ftInteger);
    customerOrders = db.AddLink(*c, *o, "CUST_NO", "CUST_NO");
    orderItems = db.AddLink(*o, *i, "ORDER_NO", "ORDER_NO");
  }

  /// The field with that caption.
  [[nodiscard]] ts4::TDSField& Field(std::string_view caption) const {
    return *db.FieldByName(ts4::fsDisplayName, caption);
  }
  [[nodiscard]] ts4::TDSOperator& Op(std::string_view name) const { return *db.OperatorByName(name); }
  [[nodiscard]] ts4::TDSTable& Table(std::string_view alias) const {
    return *db.TableByName(ts4::tsAlias, alias);
  }

  /// Appends an enabled condition to the bracket.
  ts4::TFilterCond& Cond(ts4::TFilterBracket& bracket, std::string_view field, std::string_view op,
                         std::string_view value1 = {}, std::string_view value2 = {}) const {
    ts4::TFilterCond& cond = *bracket.AddCond();
    cond.SetField(&Field(field));
    cond.SetOperator(&Op(op));
    cond.SetValue(1, std::string(value1));
    cond.SetValue(2, std::string(value2));
    return cond;
  }

  ts4::TWDBStructure db;
  ts4::TDSLink* customerOrders = nullptr;
  ts4::TDSLink* orderItems = nullptr;

 private:
  void Add(ts4::TDSTable* table, std::string_view column, ts4::TFieldType type,
           std::string_view caption = {}) {
    ts4::TDSField* field = db.AddField(ts4::wfkData, column, caption.empty() ? column : caption, table);
    field->SetFieldType(type);
    field->ClearOperators();
    field->AddAppliedOperators();
  }
};

/// The WHERE lines of a fresh build.
inline std::vector<std::string> WhereLines(ts4::TWQuery& query) {
  query.BuildQuery();
  return query.QResult().WhereLines().Lines();
}

/// The whole statement of a fresh build, line by line.
inline std::vector<std::string> Statement(ts4::TWQuery& query) {
  query.BuildQuery();
  return query.QResult().GetSQL().Lines();
}

}  // namespace ts4test
