#include "foundation/sections.h"

#include "foundation/string_utils.h"
#include "foundation/strings.h"

namespace ts4 {
namespace {

// Escaped body lines start with "[\" and end with "]". That shape is a
// header to every earlier reader, so no text that reads back as it was
// written holds such a line as body text; and as a header it names nothing,
// since every section name a writer uses starts with a letter. Reading these
// lines as escaped body lines therefore changes no text that had a meaning
// before, while ordinary lines, "\" and "[" anywhere in them included, stay
// exactly as they are.
constexpr std::string_view EscapeLead = "[\\";
constexpr char EscapeEnd = ']';
constexpr char EscapeChar = '\\';

// "[" ... "]" once blanks around it are set aside.
bool IsBracketed(std::string_view line) {
  line = Trim(line);
  return line.size() >= 2 && line.front() == '[' && line.back() == ']';
}

bool IsEscaped(std::string_view line) {
  return line.size() > EscapeLead.size() && line.starts_with(EscapeLead) && line.back() == EscapeEnd;
}

bool IsHeaderOf(std::string_view line, std::string_view section) {
  line = Trim(line);
  return line.size() == section.size() + 2 && IsSectionHeader(line) &&
         SameText(line.substr(1, section.size()), section);
}

}  // namespace

bool IsSectionHeader(std::string_view line) {
  return IsBracketed(line) && !Trim(line).starts_with(EscapeLead);
}

std::string SectionHeaderName(std::string_view line) {
  if (!IsSectionHeader(line)) return {};
  line = Trim(line);
  return std::string(line.substr(1, line.size() - 2));
}

std::string EscapeSectionLine(std::string_view line) {
  if (line.find_first_of("\r\n") == std::string_view::npos && !IsBracketed(line)) return std::string(line);
  std::string escaped(EscapeLead);
  for (char c : line) {
    switch (c) {
      case EscapeChar: escaped += "\\\\"; break;
      case '\r': escaped += "\\r"; break;
      case '\n': escaped += "\\n"; break;
      default: escaped += c; break;
    }
  }
  escaped += EscapeEnd;
  return escaped;
}

std::string UnescapeSectionLine(std::string_view line) {
  if (!IsEscaped(line)) return std::string(line);
  const std::string_view body = line.substr(EscapeLead.size(), line.size() - EscapeLead.size() - 1);
  std::string text;
  text.reserve(body.size());
  for (std::size_t i = 0; i < body.size(); ++i) {
    if (body[i] != EscapeChar || i + 1 == body.size()) {
      text += body[i];
      continue;
    }
    switch (body[++i]) {
      case 'n': text += '\n'; break;
      case 'r': text += '\r'; break;
      case EscapeChar: text += EscapeChar; break;
      default:  // not written by EscapeSectionLine: kept as it stands
        text += EscapeChar;
        text += body[i];
        break;
    }
  }
  return text;
}

void ReadSLSections(const TStrings& list, TStrings& sections) {
  sections.Clear();
  for (const std::string& line : list)
    if (IsSectionHeader(line)) sections.Add(SectionHeaderName(line));
}

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
  for (; i < count && !IsSectionHeader(list[i]); ++i) dest.Add(UnescapeSectionLine(list[i]));
  return i;
}

}  // namespace ts4
