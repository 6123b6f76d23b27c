#pragma once

#include <utility>

namespace ts4 {

/// Stores `value` in `member` when it differs and says whether it did, so
/// that a setter announces exactly the changes:
/// `if (AssignIfChanged(name_, std::move(name))) Changed();`
template <typename T, typename U>
[[nodiscard]] bool AssignIfChanged(T& member, U&& value) {
  if (member == value) return false;
  member = std::forward<U>(value);
  return true;
}

}  // namespace ts4
