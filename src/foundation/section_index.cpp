#include "foundation/section_index.h"

#include "foundation/sections.h"
#include "foundation/string_utils.h"
#include "foundation/strings.h"

namespace ts4 {

TSectionIndex::TSectionIndex(const TStrings& list) : list_(&list) {
  for (int i = 0; i < list.Count(); ++i) {
    std::string name = SectionHeaderName(list[i]);
    if (name.empty()) continue;
    lines_.push_back(i);
    names_.push_back(std::move(name));
  }
  taken_.assign(lines_.size(), 0);
}

bool TSectionIndex::Read(std::string_view name, TStrings& body) {
  const int header = indexed_ ? FindIndexed(name) : FindByScan(name);
  if (header < 0) {
    body.Clear();
    return false;
  }
  Take(static_cast<std::size_t>(header), body);
  return true;
}

int TSectionIndex::FindByScan(std::string_view name) {
  // From the header after the one read last, round to the top: a text read
  // in the order it was written finds each section at the first look. Once
  // the looks add up to two passes over the headers, the index takes over.
  const std::size_t count = names_.size();
  if (scanned_ > 2 * count) return FindIndexed(name);
  for (std::size_t k = 0; k < count; ++k) {
    const std::size_t i = (next_ + k) % count;
    if (taken_[i]) continue;
    ++scanned_;
    if (SameText(names_[i], name)) return static_cast<int>(i);
  }
  return -1;
}

int TSectionIndex::FindIndexed(std::string_view name) {
  if (!indexed_) {
    for (std::size_t i = 0; i < names_.size(); ++i) byName_[LowerCase(names_[i])].Headers.push_back(i);
    indexed_ = true;
  }
  auto it = byName_.find(LowerCase(name));
  if (it == byName_.end()) return -1;
  TOccurrences& occurrences = it->second;
  while (occurrences.Next < occurrences.Headers.size() && taken_[occurrences.Headers[occurrences.Next]])
    ++occurrences.Next;
  if (occurrences.Next == occurrences.Headers.size()) return -1;
  return static_cast<int>(occurrences.Headers[occurrences.Next]);
}

void TSectionIndex::Take(std::size_t header, TStrings& body) {
  taken_[header] = 1;
  next_ = header + 1;
  // Starting at the header itself, the search ends at once.
  XReadSLSectionValues(lines_[header], *list_, names_[header], body);
}

}  // namespace ts4
