#include "structure/field_group.h"

#include <algorithm>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "structure/structure.h"

namespace ts4 {

TDSFieldGroup::TDSFieldGroup(TWCustomDBStructure& owner, std::string name)
    : owner_(&owner), name_(std::move(name)) {}

void TDSFieldGroup::SetGroupName(std::string name) {
  name_ = std::move(name);
  owner_->Changed();
}

TDSField* TDSFieldGroup::Fields(int index) const {
  if (index < 0 || index >= FieldCount()) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
  return fields_[static_cast<std::size_t>(index)];
}

int TDSFieldGroup::IndexOf(const TDSField* field) const {
  auto it = std::find(fields_.begin(), fields_.end(), field);
  return it == fields_.end() ? -1 : static_cast<int>(it - fields_.begin());
}

}  // namespace ts4
