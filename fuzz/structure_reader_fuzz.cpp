// Feeds arbitrary text to the structure reader. A text that loads must write
// lines that survive a file (no line holds a line break), that load again and
// write the same; a text that fails must leave the structure as it was.
#include <cstddef>
#include <cstdint>

#include "foundation/error.h"
#include "fuzz_support.h"
#include "structure/structure.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ts4::TStrings input = ts4fuzz::InputLines(data, size);
  ts4::TWDBStructure structure;
  ts4::TStrings before;
  structure.SaveToStrings(before);
  try {
    structure.LoadFromStrings(input);
  } catch (const ts4::EWTessalyError&) {
    ts4::TStrings after;
    structure.SaveToStrings(after);
    ts4fuzz::Check(after == before);
    return 0;
  }
  ts4::TStrings written;
  structure.SaveToStrings(written);
  const ts4::TStrings read = ts4fuzz::ThroughText(written);
  ts4fuzz::Check(read == written);
  ts4::TWDBStructure again;
  again.LoadFromStrings(read);
  ts4::TStrings rewritten;
  again.SaveToStrings(rewritten);
  ts4fuzz::Check(rewritten == written);
  return 0;
}
