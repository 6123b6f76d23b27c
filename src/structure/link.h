#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/strings.h"
#include "structure/sql_formats.h"

namespace ts4 {

class TDSTable;

/// How a link joins its two tables.
enum class TDSLinkType : std::uint8_t { ltInner, ltOuterLeft, ltOuterRight, ltOuterFull };
using enum TDSLinkType;

/// A join between two tables: pairs of field names compared by operators.
class TDSLink {
 public:
  TDSLink(TDSTable& table1, TDSTable& table2);
  TDSLink(const TDSLink&) = delete;
  TDSLink& operator=(const TDSLink&) = delete;

  [[nodiscard]] TDSTable* Table1() const { return table1_; }
  [[nodiscard]] TDSTable* Table2() const { return table2_; }
  /// The other end of the link seen from `table` (Table2 when `table` is Table1).
  [[nodiscard]] TDSTable* OtherTable(const TDSTable* table) const;

  /// Field names of the first table, pairwise with FldName2.
  [[nodiscard]] const TStrings& FldName1() const { return fldName1_; }
  [[nodiscard]] const TStrings& FldName2() const { return fldName2_; }
  /// Comparison symbols between the pairs ("=").
  [[nodiscard]] const TStrings& Operators() const { return operators_; }
  void SetFields1(const TStrings& names);
  void SetFields2(const TStrings& names);
  void SetOperators(const TStrings& symbols);
  /// Gives every field pair the comparison "=".
  void ApplyDefOperator();

  [[nodiscard]] TDSLinkType LinkType() const { return linkType_; }
  void SetLinkType(TDSLinkType type);
  [[nodiscard]] bool QuoteFields() const { return quoteFields_; }
  void SetQuoteFields(bool quote);

  /// The join condition: "(A.f1=B.f2)" per pair joined by " and "; with
  /// ssOracle the outer side carries the marker " (+) ".
  [[nodiscard]] std::string GetSQLExpr(TSQLSyntax syntax) const;
  /// "Caption of table 1 - caption of table 2".
  [[nodiscard]] std::string GetDisplayName() const;

 private:
  friend class TWCustomDBStructure;
  void Changed() const;
  TDSTable* table1_;
  TDSTable* table2_;
  TStrings fldName1_;
  TStrings fldName2_;
  TStrings operators_;
  TDSLinkType linkType_ = ltInner;
  bool quoteFields_ = false;
};

}  // namespace ts4
