#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/enum_set.h"
#include "foundation/field_types.h"
#include "foundation/messages.h"

namespace ts4 {

class TWCustomDBStructure;

/// Whether an operator takes a single value, a list of values or a sub-query.
enum class TOpValueType : std::uint8_t { vtScalar, vtList, vtSubQuery };
using enum TOpValueType;

/// The optional standard operators that a structure's ExOperators switches.
enum class TExOperator : std::uint8_t { xoInList, xoBetween, xoStartsWith, xoContains };
using enum TExOperator;
using TExOperators = TEnumSet<TExOperator>;

/// Field types for which operators are offered (the operator's AppliedTypes).
using TAppliedTypes = TFieldTypes;

/// Types that can be compared: the set of the six comparisons, InList and Between.
inline constexpr TFieldTypes ComparableTypes = {ftString,   ftSmallint, ftInteger, ftWord, ftBoolean,
                                                ftFloat,    ftCurrency, ftBCD,     ftDate, ftTime,
                                                ftDateTime, ftAutoInc,  ftLargeint};
/// Types that IsNull is offered for.
inline constexpr TFieldTypes NullableTypes = ComparableTypes | TFieldTypes{ftMemo, ftFmtMemo};
/// Types that the LIKE operators are offered for.
inline constexpr TFieldTypes StringTypes = {ftString, ftMemo, ftFmtMemo, ftWideString};
/// The applied types of a newly created operator.
inline constexpr TFieldTypes TextAndScalarTypes =
    ComparableTypes | TFieldTypes{ftMemo, ftFmtMemo, ftFixedChar, ftWideString};

/// A named SQL template that turns a field and its values into a condition:
/// "@f" stands for the field's SQL expression, "@1", "@2" ... for the values.
/// An operator of a structure tells the structure of every change (Changed).
class TDSOperator {
 public:
  /// The structure whose list holds the operator; null until it is added.
  [[nodiscard]] TWCustomDBStructure* Owner() const { return owner_; }
  [[nodiscard]] const std::string& Name() const { return name_; }
  void SetName(std::string name);
  [[nodiscard]] const std::string& DisplayName() const { return displayName_; }
  void SetDisplayName(std::string caption);
  [[nodiscard]] const std::string& SQLName() const { return sqlName_; }
  void SetSQLName(std::string sqlTemplate);
  [[nodiscard]] const std::string& ValFormat() const { return valFormat_; }
  void SetValFormat(std::string format);
  /// Type of the value expression; ftUnknown means the field's own type.
  [[nodiscard]] TFieldType ExprType() const { return exprType_; }
  void SetExprType(TFieldType type);
  [[nodiscard]] TOpValueType ValueType() const { return valueType_; }
  void SetValueType(TOpValueType type);
  [[nodiscard]] TAppliedTypes AppliedTypes() const { return appliedTypes_; }
  void SetAppliedTypes(TAppliedTypes types);
  /// An object the application attaches; not stored.
  [[nodiscard]] const std::shared_ptr<void>& OleObject() const { return oleObject_; }
  void SetOleObject(std::shared_ptr<void> object) { oleObject_ = std::move(object); }

  /// Number of consecutive value markers "@1", "@2" ... in the template
  /// (counted when the template is set).
  [[nodiscard]] int GetParamCount() const { return paramCount_; }

 private:
  friend class TWCustomDBStructure;
  void Changed() const;

  TWCustomDBStructure* owner_ = nullptr;
  std::string name_;
  std::string displayName_;
  std::string sqlName_;
  int paramCount_ = 0;
  std::string valFormat_;
  TFieldType exprType_ = ftUnknown;
  TOpValueType valueType_ = vtScalar;
  std::shared_ptr<void> oleObject_;
  TAppliedTypes appliedTypes_ = TextAndScalarTypes;
};

/// "vtScalar", "vtList" or "vtSubQuery".
[[nodiscard]] std::string OpValueTypeToStr(TOpValueType type);
/// The value type of that name (case ignored), or nothing.
[[nodiscard]] std::optional<TOpValueType> TryStrToOpValueType(std::string_view name);
/// The value type of that name (case ignored); raises EWTessalyError for an unknown name.
[[nodiscard]] TOpValueType StrToOpValueType(std::string_view name);

/// One of the thirteen standard operators.
struct TStandardOperator {
  std::string_view Name;
  std::string_view Caption;
  std::string_view SQLName;
  TFieldTypes AppliedTypes;
  std::string_view ValFormat = {};
  TOpValueType ValueType = vtScalar;
};

/// The standard operators in their list order, with their default captions
/// and templates (the missing blank in GreaterThan's template is deliberate).
inline constexpr std::array<TStandardOperator, 13> StandardOperators = {{
    {"Equal", "is equal to", "@f = '@1'", ComparableTypes},
    {"NotEqual", "is not equal to", "@f <> '@1'", ComparableTypes},
    {"LessThan", "is less than", "@f < '@1'", ComparableTypes},
    {"LessOrEqual", "is less than or equal to", "@f <= '@1'", ComparableTypes},
    {"GreaterThan", "is greater than", "@f >'@1'", ComparableTypes},
    {"GreaterOrEqual", "is greater than or equal to", "@f >= '@1'", ComparableTypes},
    {"IsNull", "is null", "@f is null", NullableTypes},
    {"InList", "is in list", "@f in (@1)", ComparableTypes, {}, vtList},
    {"StartsWith", "starts with", "@f like '@1%'", StringTypes},
    {"NotStartsWith", "does not start with", "not(@f like '@1%')", StringTypes},
    {"Contains", "contains", "@f like '%@1%'", StringTypes},
    {"NotContains", "does not contain", "not(@f like '%@1%')", StringTypes},
    {"Between", "is between", "@f between '@1' and '@2'", ComparableTypes, msg::And},
}};

/// Positions of the standard operators in StandardOperators.
enum class TStdOp : std::uint8_t {
  Equal,
  NotEqual,
  LessThan,
  LessOrEqual,
  GreaterThan,
  GreaterOrEqual,
  IsNull,
  InList,
  StartsWith,
  NotStartsWith,
  Contains,
  NotContains,
  Between
};

[[nodiscard]] constexpr const TStandardOperator& StandardOperator(TStdOp op) {
  return StandardOperators[static_cast<std::size_t>(op)];
}

/// Operator names that old files use, mapped to today's ("EqualTo" is "Equal").
[[nodiscard]] std::string_view CurrentOperatorName(std::string_view name);

}  // namespace ts4
