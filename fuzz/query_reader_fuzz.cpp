// Feeds arbitrary text to the query reader over the example structure. A
// text that loads must write lines that survive a file (no line holds a line
// break), that load again and write the same, and must give SQL or a coded
// error; a text that fails must leave the query as it was.
#include <cstddef>
#include <cstdint>

#include "foundation/error.h"
#include "fuzz_support.h"
#include "query/query.h"
#include "structure/structure.h"

using ts4fuzz::ExampleStructure;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ts4::TStrings input = ts4fuzz::InputLines(data, size);
  ts4::TWQuery query(&ExampleStructure());
  ts4::TStrings before;
  query.SaveToStrings(before);
  try {
    query.LoadFromStrings(input);
  } catch (const ts4::EWTessalyError&) {
    ts4::TStrings after;
    query.SaveToStrings(after);
    ts4fuzz::Check(after == before);
    return 0;
  }
  ts4::TStrings written;
  try {
    query.SaveToStrings(written);
  } catch (const ts4::EWTessalyError&) {
    return 0;  // a date condition holding text that is no date cannot be written
  }
  const ts4::TStrings read = ts4fuzz::ThroughText(written);
  ts4fuzz::Check(read == written);
  ts4::TWQuery again(&ExampleStructure());
  again.LoadFromStrings(read);
  ts4::TStrings rewritten;
  again.SaveToStrings(rewritten);
  ts4fuzz::Check(rewritten == written);
  try {
    query.BuildQuery();
    static_cast<void>(query.QResult().GetSQL());
  } catch (const ts4::EWTessalyError&) {
  }
  return 0;
}
