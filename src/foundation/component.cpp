#include "foundation/component.h"

#include <algorithm>

namespace ts4 {

TWComponent::~TWComponent() {
  // Detach first so that a Notification that removes links does not touch
  // the list being walked.
  std::vector<TWComponent*> linked = std::move(linked_);
  linked_.clear();
  for (TWComponent* other : linked) {
    std::erase(other->linked_, this);
    other->Notification(*this);
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
