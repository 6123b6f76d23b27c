#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ts4 {

/// An aggregate function a whole formula may be wrapped in.
enum class TAggregateFunction : std::uint8_t { afNone, afSum, afCount, afMin, afMax, afAvg };
using enum TAggregateFunction;

/// An arithmetic operator that extends a formula by one more operand.
enum class TFormulaOperator : std::uint8_t { foAdd, foSubtract, foMultiply, foDivide };
using enum TFormulaOperator;

/// The aggregate the whole formula is a call of ("SUM(@1)", "count (@1 + @2)"),
/// afNone when the formula is anything else ("SUM(@1) + @2").
[[nodiscard]] TAggregateFunction OuterAggregate(std::string_view formula);

/// The formula unwrapped from its outer aggregate, then wrapped in the
/// function (afNone leaves it unwrapped): "SUM(@1)" with afMax is "MAX(@1)".
[[nodiscard]] std::string WithAggregate(std::string_view formula, TAggregateFunction function);

/// The formula followed by the operator and the operand ("@1" + "@2" is
/// "@1 + @2"); a formula that adds or subtracts at its top level is put in
/// parentheses before it is multiplied or divided, so that the operator
/// applies to the whole of it.
[[nodiscard]] std::string CombineFormula(std::string_view formula, TFormulaOperator op,
                                         std::string_view operand);

}  // namespace ts4
