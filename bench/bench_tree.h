// A structure of four linked tables and condition trees of any size over
// it, shared by the benchmarks.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "query/query.h"
#include "structure/structure.h"

namespace ts4bench {

inline constexpr int CondsPerBracket = 10;
inline constexpr int BracketsPerGroup = 10;
inline constexpr int CondsPerGroup = CondsPerBracket * BracketsPerGroup;

inline constexpr std::array<ts4::TFilterLinkType, 4> LinkTypes = {ts4::fltAll, ts4::fltAny, ts4::fltNone,
                                                                  ts4::fltNotAll};

// The thirteen standard operators in their list order; the four LIKE ones
// (indexes 8 to 11) only go on string fields.
inline constexpr std::array<std::string_view, 13> OperatorNames = {
    "Equal",  "NotEqual",   "LessThan",      "LessOrEqual", "GreaterThan", "GreaterOrEqual", "IsNull",
    "InList", "StartsWith", "NotStartsWith", "Contains",    "NotContains", "Between"};

inline bool IsLikeOperator(std::size_t index) {
  return index >= 8 && index <= 11;
}

// Four linked tables, CUSTOMER C -< ORDERS O -< ITEMS I >- PRODUCT P, each
// column a data field with its type's default operators; CUSTOMER is the
// main table.
class TBenchStructure {
 public:
  TBenchStructure() {
    auto* c = db.AddTable("CUSTOMER", "C");
    auto* o = db.AddTable("ORDERS", "O");
    auto* i = db.AddTable("ITEMS", "I");
    auto* p = db.AddTable("PRODUCT", "P");
    Add(c, "CUST_NO", "Customer no", ts4::ftInteger);
    Add(c, "NAME", "Customer", ts4::ftString);
    Add(c, "CITY", "City", ts4::ftString);
    Add(c, "SINCE", "Customer since", ts4::ftDate);
    Add(o, "ORDER_NO", "Order no", ts4::ftInteger);
    Add(o, "TOTAL", "Order total", ts4::ftFloat);
    Add(o, "PLACED", "Placed", ts4::ftDateTime);
    Add(o, "STATUS", "Status", ts4::ftString);
    Add(i, "QTY", "Quantity", ts4::ftInteger);
    Add(i, "PRICE", "Price", ts4::ftFloat);
    Add(p, "TITLE", "Product", ts4::ftString);
    Add(p, "ADDED", "Listed on", ts4::ftDate);
    db.AddLink(*c, *o, "CUST_NO", "CUST_NO");
    db.AddLink(*o, *i, "ORDER_NO", "ORDER_NO");
    db.AddLink(*p, *i, "PROD_NO", "PROD_NO");
    db.SetDefaultMainTable("CUSTOMER");
    for (std::string_view name : OperatorNames) operators.push_back(db.OperatorByName(name));
  }

  // Condition `k` of the tree: operator k mod 13 on a field it applies to,
  // with the values that operator takes.
  bool SetCondition(ts4::TFilterCond& cond, int k) const {
    const auto opIndex = static_cast<std::size_t>(k) % OperatorNames.size();
    const std::vector<ts4::TDSField*>& candidates = IsLikeOperator(opIndex) ? stringFields : fields;
    const auto turn = static_cast<std::size_t>(k) / OperatorNames.size();
    ts4::TDSField* field = candidates[turn % candidates.size()];
    ts4::TDSOperator* op = operators[opIndex];
    if (op == nullptr || field->IndexOfOperator(op) < 0) return false;
    cond.SetField(field);
    cond.SetOperator(op);
    const std::string_view name = OperatorNames[opIndex];
    if (name == "IsNull") return true;
    if (name == "InList") {
      cond.SetValue(1, ListValue(field->FieldType(), turn));
    } else {
      cond.SetValue(1, Value(field->FieldType(), turn));
      if (name == "Between") cond.SetValue(2, Value(field->FieldType(), turn + 3));
    }
    return true;
  }

  ts4::TWDBStructure db;
  std::vector<ts4::TDSField*> fields;
  std::vector<ts4::TDSField*> stringFields;
  std::vector<ts4::TDSOperator*> operators;

 private:
  void Add(ts4::TDSTable* table, std::string_view column, std::string_view caption, ts4::TFieldType type) {
    ts4::TDSField* field = db.AddField(ts4::wfkData, column, caption, table);
    field->SetFieldType(type);
    field->ClearOperators();
    field->AddAppliedOperators();
    fields.push_back(field);
    if (type == ts4::ftString) stringFields.push_back(field);
  }

  // A typed value as the user enters it; dates in ISO form, some text with a quote.
  static std::string Value(ts4::TFieldType type, std::size_t n) {
    static constexpr std::array<std::string_view, 4> words = {"Smith", "O'Brien", "Lisbon", "pending"};
    switch (type) {
      case ts4::ftString: return std::string(words[n % words.size()]);
      case ts4::ftFloat: return std::to_string(n % 1000) + ".25";
      case ts4::ftDate: return "2024-" + TwoDigits(n % 12 + 1) + "-" + TwoDigits(n % 28 + 1);
      case ts4::ftDateTime: return "2024-05-" + TwoDigits(n % 28 + 1) + " " + TwoDigits(n % 24) + ":30:00";
      default: return std::to_string(n % 10000);
    }
  }

  static std::string ListValue(ts4::TFieldType type, std::size_t n) {
    return Value(type, n) + "," + Value(type, n + 1) + "," + Value(type, n + 2);
  }

  static std::string TwoDigits(std::size_t n) { return (n < 10 ? "0" : "") + std::to_string(n); }
};

// The root holds count / 100 brackets, each holding ten brackets of ten
// conditions; link types cycle over all brackets in creation order.
inline bool FillTree(ts4::TWQuery& query, const TBenchStructure& structure, int count) {
  query.BeginUpdate();
  int k = 0;
  std::size_t brackets = 0;
  bool ok = true;
  for (int g = 0; g < count / CondsPerGroup; ++g) {
    ts4::TFilterBracket* group = query.Root().AddBracket();
    group->SetLinkType(LinkTypes[brackets++ % LinkTypes.size()]);
    for (int b = 0; b < BracketsPerGroup; ++b) {
      ts4::TFilterBracket* bracket = group->AddBracket();
      bracket->SetLinkType(LinkTypes[brackets++ % LinkTypes.size()]);
      for (int c = 0; c < CondsPerBracket; ++c) ok = structure.SetCondition(*bracket->AddCond(), k++) && ok;
    }
  }
  query.EndUpdate();
  return ok;
}

}  // namespace ts4bench
