#include "foundation/section_reader.h"

#include <algorithm>

#include "foundation/sections.h"
#include "foundation/string_utils.h"
#include "foundation/strings.h"

namespace ts4 {

bool TSectionReader::Read(std::string_view section, TStrings& dest) {
  const int count = list_.Count();
  // Scanning is cheap while the sections come in order; two passes over the
  // list in all is the most it may cost before the index is worth building.
  if (!indexed_ && scanned_ <= 2LL * count) {
    const int next = XReadSLSectionValues(position_, list_, section, dest);
    if (next < 0) {
      scanned_ += count;
      return false;
    }
    const int header = next - dest.Count() - 1;
    scanned_ += header >= position_ ? header - position_ : count - position_ + header;
    position_ = next;
    return true;
  }
  const int header = FindIndexed(section);
  if (header < 0) {
    dest.Clear();
    return false;
  }
  position_ = XReadSLSectionValues(header, list_, section, dest);
  return true;
}

int TSectionReader::FindIndexed(std::string_view section) {
  if (!indexed_) {
    for (int i = 0; i < list_.Count(); ++i) {
      const std::string name = SectionHeaderName(list_[i]);
      if (!name.empty()) headers_[LowerCase(name)].push_back(i);  // ascending by construction
    }
    indexed_ = true;
  }
  const auto found = headers_.find(LowerCase(section));
  if (found == headers_.end()) return -1;
  const std::vector<int>& lines = found->second;
  const auto at = std::lower_bound(lines.begin(), lines.end(), position_);
  return at != lines.end() ? *at : lines.front();
}

}  // namespace ts4
