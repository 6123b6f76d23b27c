#include "foundation/component.h"

#include <algorithm>

namespace ts4 {

TWComponent::~TWComponent() {
  // The live list is walked: a Notification may destroy another linked
  // component, which then takes itself off this list. A component being
  // destroyed is never notified itself.
  destroying_ = true;
  while (!linked_.empty()) {
    TWComponent* other = linked_.back();
    linked_.pop_back();
    std::erase(other->linked_, this);
    if (!other->destroying_) other->Notification(*this);
  }
}

void TWComponent::FreeNotification(TWComponent& other) {
  if (&other == this) return;
  if (std::find(linked_.begin(), linked_.end(), &other) == linked_.end()) linked_.push_back(&other);
  if (std::find(other.linked_.begin(), other.linked_.end(), this) == other.linked_.end())
    other.linked_.push_back(this);
}

void TWComponent::RemoveFreeNotification(TWComponent& other) {
  std::erase(linked_, &other);
  std::erase(other.linked_, this);
}

}  // namespace ts4
