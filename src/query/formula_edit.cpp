#include "query/formula_edit.h"

#include <array>
#include <optional>

#include "foundation/string_utils.h"

namespace ts4 {
namespace {

// SQL names of the functions, by ordinal of TAggregateFunction.
constexpr std::array<std::string_view, 6> AggregateNames = {"", "SUM", "COUNT", "MIN", "MAX", "AVG"};

/// Calls `visit(position)` for each character of the formula that stands
/// outside quoted text and parentheses; false when they do not balance.
template <typename Visit>
bool ForEachTopLevel(std::string_view text, Visit&& visit) {
  int depth = 0;
  char quote = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (quote != 0) {
      if (c == quote) quote = 0;  // a doubled quote closes and opens again
    } else if (c == '\'' || c == '"') {
      quote = c;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')') {
      if (--depth < 0) return false;
      if (depth == 0) visit(i);
    } else if (depth == 0) {
      visit(i);
    }
  }
  return depth == 0 && quote == 0;
}

struct TAggregateCall {
  TAggregateFunction Function;
  std::string_view Argument;
};

/// The formula as a call of an aggregate: the function and what it is applied to.
std::optional<TAggregateCall> AggregateCall(std::string_view formula) {
  const std::string_view text = Trim(formula);
  std::size_t name = 0;
  while (name < text.size() && IsSQLNameChar(text[name])) ++name;
  std::size_t function = 1;
  while (function < AggregateNames.size() && !SameText(AggregateNames[function], text.substr(0, name)))
    ++function;
  if (function == AggregateNames.size()) return std::nullopt;
  std::size_t open = name;
  while (open < text.size() && IsBlank(text[open])) ++open;
  if (open == text.size() || text[open] != '(') return std::nullopt;
  // The bracket that opens the argument must be the one the text ends with.
  std::size_t topLevel = 0;
  std::size_t last = 0;
  const bool balanced = ForEachTopLevel(text.substr(open), [&](std::size_t i) {
    ++topLevel;
    last = i;
  });
  if (!balanced || topLevel != 1 || last != text.size() - open - 1) return std::nullopt;
  return TAggregateCall{static_cast<TAggregateFunction>(function),
                        Trim(text.substr(open + 1, text.size() - open - 2))};
}

}  // namespace

TAggregateFunction OuterAggregate(std::string_view formula) {
  const std::optional<TAggregateCall> call = AggregateCall(formula);
  return call ? call->Function : afNone;
}

std::string WithAggregate(std::string_view formula, TAggregateFunction function) {
  const std::optional<TAggregateCall> call = AggregateCall(formula);
  const std::string_view argument = call ? call->Argument : Trim(formula);
  if (function == afNone) return std::string(argument);
  return std::string(AggregateNames[static_cast<std::size_t>(function)]) + "(" + std::string(argument) + ")";
}

std::string CombineFormula(std::string_view formula, TFormulaOperator op, std::string_view operand) {
  static constexpr std::array<char, 4> symbols = {'+', '-', '*', '/'};
  std::string left(Trim(formula));
  if (op == foMultiply || op == foDivide) {
    bool sum = false;
    ForEachTopLevel(left, [&](std::size_t i) { sum = sum || left[i] == '+' || left[i] == '-'; });
    if (sum) left = "(" + left + ")";
  }
  return left + " " + symbols[static_cast<std::size_t>(op)] + " " + std::string(operand);
}

}  // namespace ts4
