#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ts4 {

class TDSField;
class TWCustomDBStructure;

/// A result field's formula: text with markers "@1", "@2" ... that stand for
/// Fields[0], Fields[1] ...
struct TFormula {
  std::string Formula;
  std::vector<TDSField*> Fields;
};

/// Replaces, in one left-to-right pass, each marker "@k" with 1 <= k <=
/// `count` by textOf(k). The longest number that names a field wins ("@12"
/// with twelve fields is marker 12, with two it is marker 1 and a "2");
/// any other "@" stays as written. Text put in is never scanned again.
template <typename TextOf>
std::string SubstituteMarkers(std::string_view formula, std::size_t count, TextOf&& textOf) {
  std::string result;
  result.reserve(formula.size() + 16);
  std::size_t i = 0;
  while (i < formula.size()) {
    const std::size_t at = formula.find('@', i);
    if (at == std::string_view::npos) {
      result.append(formula.substr(i));
      break;
    }
    result.append(formula.substr(i, at - i));
    std::size_t digits = 0;
    while (at + 1 + digits < formula.size() && digits < 9 && formula[at + 1 + digits] >= '0' &&
           formula[at + 1 + digits] <= '9') {
      ++digits;
    }
    std::size_t marker = 0;
    std::size_t used = 0;
    for (std::size_t length = digits; length > 0 && used == 0; --length) {
      std::size_t number = 0;
      for (std::size_t d = 0; d < length; ++d) number = number * 10 + (formula[at + 1 + d] - '0');
      if (number >= 1 && number <= count) {
        marker = number;
        used = length;
      }
    }
    if (used == 0) {
      result += '@';
      i = at + 1;
    } else {
      result.append(textOf(marker));
      i = at + 1 + used;
    }
  }
  return result;
}

/// Reads a user's expression in which fields are named by their captions in
/// braces ("{Total} * 2"). A name is looked up as caption, full name,
/// compound name and SQL expression, in that order. Raises
/// EWQueryPanelError code 11 for a name no field has or an unclosed brace.
[[nodiscard]] TFormula FormulaFromExpression(const TWCustomDBStructure* structure,
                                             std::string_view expression);

/// The user's form of a formula: each marker as its field's caption in
/// braces (the full name where two fields share a caption).
[[nodiscard]] std::string ExpressionFromFormula(const TWCustomDBStructure* structure,
                                                const TFormula& formula);

/// Reads an SQL expression such as "SUM(O.TOTAL)" into "SUM(@1)" and the
/// field whose SQL expression is O.TOTAL. Names are compared ignoring case;
/// a virtual field's whole expression is matched too, and a bare column
/// name stands for the one data field with that column. Text in single
/// quotes and names no field has are kept as written.
[[nodiscard]] TFormula FormulaFromSQL(const TWCustomDBStructure* structure, std::string_view sql);

}  // namespace ts4
