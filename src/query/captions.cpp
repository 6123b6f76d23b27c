#include "query/captions.h"

#include <string>

#include "foundation/sections.h"
#include "foundation/string_utils.h"
#include "foundation/strings.h"

namespace ts4 {
namespace {

// Section names of captions tables written by earlier versions.
constexpr std::string_view OldQueryPanel = "[PanelTitles]";
constexpr std::string_view OldEditor = "[RFETitles]";

/// Sets every value that `values` gives (not empty) for a name of `table`;
/// the table keeps its names, lines and order.
void Merge(TStrings& table, const TStrings& values) {
  for (int i = 0; i < table.Count(); ++i) {
    const std::string name = table.Names(i);
    if (name.empty()) continue;  // separator lines
    const std::string value = values.Values(name);
    if (!value.empty()) table.SetStrings(i, name + "=" + value);
  }
}

}  // namespace

void LoadTitlesFromStrings(const TStrings& defaults, TStrings& dest, TStrings& source) {
  // Neither old name holds a line break, so renaming line by line is the
  // same as renaming in the whole text.
  for (int i = 0; i < source.Count(); ++i) {
    const std::string& line = source[i];
    if (line.find(OldQueryPanel) == std::string::npos && line.find(OldEditor) == std::string::npos) continue;
    source.SetStrings(
        i, ReplaceStr(ReplaceStr(line, OldQueryPanel, "[Query Panel]"), OldEditor, "[Result Fields Editor]"));
  }
  TStrings sections;
  ReadSLSections(defaults, sections);
  TStrings result;
  if (sections.Empty()) {
    result = defaults;
    Merge(result, source);
  } else {
    TStrings table;
    TStrings values;
    for (const std::string& section : sections) {
      XReadSLSectionValues(0, defaults, section, table);
      XReadSLSectionValues(0, source, section, values);
      Merge(table, values);
      result.Add("[" + section + "]");
      result.AddStrings(table);
      result.Add("");
    }
  }
  dest = std::move(result);
}

}  // namespace ts4
