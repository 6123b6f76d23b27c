#pragma once

#include <vector>

namespace ts4 {

/// Base of the library's long-lived objects that refer to each other without
/// owning (a query and its structure, a structure and its metadata provider).
/// A component that asked for FreeNotification of another is told, through
/// Notification, when that one is destroyed, and drops its pointer then.
class TWComponent {
 public:
  TWComponent() = default;
  TWComponent(const TWComponent&) = delete;
  TWComponent& operator=(const TWComponent&) = delete;
  virtual ~TWComponent();

  /// Asks to be told when `other` is destroyed (and tells `other` likewise).
  void FreeNotification(TWComponent& other);
  /// Withdraws a FreeNotification in both directions.
  void RemoveFreeNotification(TWComponent& other);

 protected:
  /// Called while `component` is being destroyed; override to drop pointers to it.
  virtual void Notification(TWComponent& component) = 0;

 private:
  std::vector<TWComponent*> linked_;
  bool destroying_ = false;
};

}  // namespace ts4
