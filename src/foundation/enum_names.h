#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/string_utils.h"

namespace ts4 {

// Conversions between an enumeration and its table of member names (indexed
// by ordinal), shared by every reader and writer of stored names.

/// The name of the member, or empty for a value outside the table.
template <typename E, std::size_t N>
[[nodiscard]] std::string EnumToName(const std::array<std::string_view, N>& names, E value) {
  const auto ordinal = static_cast<std::size_t>(value);
  return ordinal < N ? std::string(names[ordinal]) : std::string();
}

/// The member of that name (ASCII case ignored), or nothing.
template <typename E, std::size_t N>
[[nodiscard]] std::optional<E> EnumFromName(const std::array<std::string_view, N>& names,
                                            std::string_view name) {
  for (std::size_t i = 0; i < N; ++i)
    if (SameText(names[i], name)) return static_cast<E>(i);
  return std::nullopt;
}

}  // namespace ts4
