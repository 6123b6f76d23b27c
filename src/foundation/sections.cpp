#include "foundation/sections.h"

#include "foundation/string_utils.h"
#include "foundation/strings.h"

namespace ts4 {

std::string SectionHeaderName(std::string_view line) {
  line = Trim(line);
  if (line.size() < 2 || line.front() != '[' || line.back() != ']') return {};
  return std::string(line.substr(1, line.size() - 2));
}

void ReadSLSections(const TStrings& list, TStrings& sections) {
  sections.Clear();
  for (const std::string& line : list) {
    std::string_view trimmed = Trim(line);
    if (trimmed.size() >= 2 && trimmed.front() == '[' && trimmed.back() == ']')
      sections.Add(SectionHeaderName(trimmed));
  }
}

namespace {

bool IsHeaderOf(std::string_view line, std::string_view section) {
  line = Trim(line);
  return line.size() == section.size() + 2 && line.front() == '[' && line.back() == ']' &&
         SameText(line.substr(1, section.size()), section);
}

bool IsHeader(std::string_view line) {
  line = Trim(line);
  return line.size() >= 2 && line.front() == '[' && line.back() == ']';
}

}  // namespace

int XReadSLSectionValues(int start, const TStrings& list, std::string_view section, TStrings& dest) {
  dest.Clear();
  const int count = list.Count();
  if (start < 0 || start > count) start = 0;
  int header = -1;
  for (int k = 0; k < count && header < 0; ++k) {
    int i = (start + k) % count;
    if (IsHeaderOf(list[i], section)) header = i;
  }
  if (header < 0) return -1;
  int i = header + 1;
  for (; i < count && !IsHeader(list[i]); ++i) dest.Add(list[i]);
  return i;
}

}  // namespace ts4
