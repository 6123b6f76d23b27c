#include "structure/link.h"

#include "structure/structure.h"
#include "structure/table.h"

namespace ts4 {

TDSLink::TDSLink(TDSTable& table1, TDSTable& table2) : table1_(&table1), table2_(&table2) {}

TDSTable* TDSLink::OtherTable(const TDSTable* table) const {
  return table1_ == table ? table2_ : table1_;
}

void TDSLink::Changed() const {
  table1_->Structure().Changed();
}

void TDSLink::SetFields1(const TStrings& names) {
  fldName1_ = names;
  Changed();
}

void TDSLink::SetFields2(const TStrings& names) {
  fldName2_ = names;
  Changed();
}

void TDSLink::SetOperators(const TStrings& symbols) {
  operators_ = symbols;
  Changed();
}

void TDSLink::ApplyDefOperator() {
  operators_.Clear();
  for (int i = 0; i < fldName1_.Count(); ++i) operators_.Add("=");
  Changed();
}

void TDSLink::SetLinkType(TDSLinkType type) {
  linkType_ = type;
  Changed();
}

void TDSLink::SetQuoteFields(bool quote) {
  quoteFields_ = quote;
  Changed();
}

std::string TDSLink::GetSQLExpr(TSQLSyntax syntax) const {
  const TSQLFormats& formats = table1_->Structure().SQLFormats();
  const bool marked = syntax == ssOracle;
  const std::string_view marker = " (+) ";
  const std::string_view afterFirst = marked && linkType_ == ltOuterRight ? marker : "";
  const std::string_view afterSecond = marked && linkType_ == ltOuterLeft ? marker : "";
  std::string result;
  for (int i = 0; i < fldName1_.Count(); ++i) {
    // A hand-edited link may list fewer partners or symbols than names;
    // the missing ones read as empty and "=".
    const std::string field2 = i < fldName2_.Count() ? fldName2_[i] : std::string();
    const std::string symbol = i < operators_.Count() ? operators_[i] : std::string("=");
    if (!result.empty()) result += " and ";
    result += "(";
    result += table1_->Alias() + "." + formats.QuoteName(fldName1_[i], quoteFields_);
    result += afterFirst;
    result += symbol;
    result += table2_->Alias() + "." + formats.QuoteName(field2, quoteFields_);
    result += afterSecond;
    result += ")";
  }
  return result;
}

std::string TDSLink::GetDisplayName() const {
  return table1_->DisplayName() + " - " + table2_->DisplayName();
}

}  // namespace ts4
