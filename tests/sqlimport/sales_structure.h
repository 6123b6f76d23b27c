#pragma once

#include <string>

#include "query/query.h"
#include "structure/field.h"
#include "structure/operator.h"
#include "structure/structure.h"

namespace ts4test {

/// The example structure (customers, orders, order items, products,
/// employees), loaded once and never changed by the tests.
inline ts4::TWDBStructure& SalesStructure() {
  static ts4::TWDBStructure* structure = [] {
    auto* loaded = new ts4::TWDBStructure();
    loaded->LoadFromFile(TS4_EXAMPLE_DATA "/sales.str");
    return loaded;
  }();
  return *structure;
}

/// The condition tree in one line: "all[City Equal (Riga), none[...]]".
inline std::string Describe(const ts4::TFilterBracket& bracket) {
  static constexpr const char* Links[] = {"all", "any", "none", "not all"};
  std::string text = std::string(Links[static_cast<int>(bracket.LinkType())]) + "[";
  for (int i = 0; i < bracket.GetRowCount(); ++i) {
    if (i > 0) text += ", ";
    const ts4::TFilterRow& row = *bracket.GetRow(i);
    if (row.IsBracket()) {
      text += Describe(static_cast<const ts4::TFilterBracket&>(row));
      continue;
    }
    const auto& cond = static_cast<const ts4::TFilterCond&>(row);
    text += cond.Field() != nullptr ? cond.Field()->DisplayName() : "?";
    text += " " + (cond.Operator() != nullptr ? cond.Operator()->Name() : "?");
    const int values = cond.Operator() != nullptr ? cond.Operator()->GetParamCount() : 0;
    for (int k = 1; k <= values; ++k) text += " (" + cond.Value(k) + ")";
  }
  return text + "]";
}

}  // namespace ts4test
