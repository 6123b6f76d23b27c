// Feeds arbitrary text to the structure reader. A text that loads must write
// a text that loads again and writes the same; a text that fails must leave
// the structure as it was.
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
  ts4::TWDBStructure again;
  again.LoadFromStrings(written);
  ts4::TStrings rewritten;
  again.SaveToStrings(rewritten);
  ts4fuzz::Check(rewritten == written);
  return 0;
}
