#pragma once

#include <string>
#include <vector>

namespace ts4 {

class TDSField;
class TWCustomDBStructure;

/// A named, ordered group of fields as the user sees them in field menus.
/// The structure keeps membership: a field is in exactly one group or in the
/// root group.
class TDSFieldGroup {
 public:
  TDSFieldGroup(TWCustomDBStructure& owner, std::string name);
  TDSFieldGroup(const TDSFieldGroup&) = delete;
  TDSFieldGroup& operator=(const TDSFieldGroup&) = delete;

  [[nodiscard]] const std::string& GroupName() const { return name_; }
  void SetGroupName(std::string name);
  [[nodiscard]] int FieldCount() const { return static_cast<int>(fields_.size()); }
  /// The field at the index; a bad index raises EWTessalyError.
  [[nodiscard]] TDSField* Fields(int index) const;
  [[nodiscard]] int IndexOf(const TDSField* field) const;

 private:
  friend class TWCustomDBStructure;
  TWCustomDBStructure* owner_;
  std::string name_;
  std::vector<TDSField*> fields_;
};

}  // namespace ts4
