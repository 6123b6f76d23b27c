#pragma once

#include <string_view>

// The demo's own messages, beside the library's string table
// (foundation/messages.h), filled by ts4::Format where they have directives.
namespace ts4demo::msg {

inline constexpr std::string_view NoTables = "The database at %s has no tables";

}  // namespace ts4demo::msg
