#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "foundation/field_types.h"
#include "foundation/object_list.h"

namespace ts4 {

class TFilterCond;

/// A condition value left open: the SQL shows ":" and the name, and the
/// application supplies the value when it runs the statement. Changes to a
/// parameter bound to a condition are told to the query's observers as
/// qaParameters.
class TSQLParam {
 public:
  TSQLParam(TFilterCond* condition, std::string name, TFieldType dataType)
      : name_(std::move(name)), dataType_(dataType), condition_(condition) {}

  [[nodiscard]] const std::string& Name() const { return name_; }
  void SetName(std::string name);
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  [[nodiscard]] TFieldType DataType() const { return dataType_; }
  void SetDataType(TFieldType type);
  [[nodiscard]] const std::string& Value() const { return value_; }
  /// Stores the value and lets the condition refresh the query's parameter values.
  void SetValue(std::string value);
  [[nodiscard]] TFilterCond* Condition() const { return condition_; }
  /// The text around the value inside the condition's template, "@v"
  /// standing for the value: "%@v%" for a "contains" condition. Every build
  /// sets it again from the template, so setting it is not a change.
  [[nodiscard]] const std::string& VFormat() const { return vFormat_; }
  void SetVFormat(std::string format) { vFormat_ = std::move(format); }
  /// The value to bind: VFormat with every "@v" replaced by Value.
  [[nodiscard]] std::string GetFullValue() const;

 private:
  friend class TQueryResult;
  /// Tells the query of the condition, when there is one.
  void Changed() const;

  std::string name_;
  std::string caption_;
  TFieldType dataType_;
  std::string value_;
  TFilterCond* condition_;
  std::string vFormat_ = "@v";
};

/// The parameters of a query, owned.
class TSQLParamList : public TWObjectList<TSQLParam> {
 public:
  [[nodiscard]] TSQLParam* GetItem(int index) const { return Items(index); }
  /// Index of the parameter of that name (case ignored), or -1.
  [[nodiscard]] int IndexByName(std::string_view name) const;
  /// Index of the first parameter of the condition, or -1.
  [[nodiscard]] int IndexByCondition(const TFilterCond* condition) const;
  /// Frees every parameter of the condition; returns how many there were.
  int DeleteByCondition(const TFilterCond* condition);
};

}  // namespace ts4
