// Feeds arbitrary text to every captions loader: the sectioned merge, the old
// form lines, the old keyed values and the titles stored with a form. Whatever the input, the result keeps
// the default table's names in their order.
#include <cstddef>
#include <cstdint>

#include "fuzz_support.h"
#include "query/captions.h"
#include "query/query.h"

namespace {

void CheckSameNames(const ts4::TStrings& titles, const ts4::TStrings& defaults) {
  ts4fuzz::Check(titles.Count() >= defaults.Count());
  for (int i = 0, j = 0; i < defaults.Count(); ++i) {
    if (defaults.Names(i).empty()) continue;
    while (j < titles.Count() && titles.Names(j) != defaults.Names(i)) ++j;
    ts4fuzz::Check(j < titles.Count());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ts4::TStrings source = ts4fuzz::InputLines(data, size);

  ts4::TWQuery query;
  ts4::TStrings merged;
  ts4::TStrings work = source;
  ts4::LoadTitlesFromStrings(query.DefTitles(), merged, work);
  CheckSameNames(merged, query.DefTitles());

  query.MergeDFMTitles(source);
  CheckSameNames(query.Titles(), query.DefTitles());
  query.LoadOldTitlesFromStrings(source);
  CheckSameNames(query.Titles(), query.DefTitles());

  ts4::TWQuery stored;
  stored.LoadStoredTitles(source);
  CheckSameNames(stored.Titles(), stored.DefTitles());
  return 0;
}
