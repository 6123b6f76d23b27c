#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "foundation/strings.h"

namespace ts4fuzz {

/// Stops the run as a finding when a property does not hold.
inline void Check(bool condition) {
  if (!condition) std::abort();
}

/// The fuzzer's bytes as the lines of a text (LF, CR LF or CR line ends).
inline ts4::TStrings InputLines(const std::uint8_t* data, std::size_t size) {
  ts4::TStrings lines;
  lines.SetText(std::string_view(reinterpret_cast<const char*>(data), size));
  return lines;
}

}  // namespace ts4fuzz
