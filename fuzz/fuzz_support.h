#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "foundation/strings.h"
#include "structure/structure.h"

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

/// The written lines as a file gives them back: joined and split again.
/// Equal to `written` only when no line holds a line break.
inline ts4::TStrings ThroughText(const ts4::TStrings& written) {
  ts4::TStrings lines;
  lines.SetText(written.Text());
  return lines;
}

/// The example structure, loaded once.
inline ts4::TWDBStructure& ExampleStructure() {
  static const std::unique_ptr<ts4::TWDBStructure> structure = [] {
    auto loaded = std::make_unique<ts4::TWDBStructure>();
    loaded->LoadFromFile(TS4_EXAMPLE_STRUCTURE);
    return loaded;
  }();
  return *structure;
}

}  // namespace ts4fuzz
