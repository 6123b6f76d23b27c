#include "query/old_options.h"

#include <array>
#include <optional>
#include <string>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "query/query.h"

namespace ts4 {
namespace {

/// What one member of the earlier option set becomes.
struct TOldOption {
  std::string_view Name;
  std::optional<TQPAppearanceOption> Appearance;
  std::optional<TSQLOption> SQLOption;
};

constexpr std::array<TOldOption, 17> OldOptions = {{
    {"poFlatButtons", aoFlatButtons, {}},
    {"poRoundButtons", aoRoundButtons, {}},
    {"poNonEmptyBrackets", aoNonEmptyBrackets, {}},
    {"poPopupField", aoPopupField, {}},
    {"poPopupValue", aoPopupValue, {}},
    {"poShowGroupName", aoShowGroupName, {}},
    {"poAllowKeyboard", aoAllowKeyboard, {}},
    {"poSortListData", aoSortListData, {}},
    {"poShowAddRow", aoShowAddRow, {}},
    {"poShowCheckBoxes", aoShowCheckBoxes, {}},
    {"poNewJoinsStyle", {}, {}},  // the syntax, below
    {"poOracleJoins", {}, {}},
    {"poAsciiRFields", {}, soASCIIRFields},
    {"poSelectDistinct", {}, soSelectDistinct},
    {"poQuoteAliases", {}, soQuoteAliases},
    {"poBracketJoins", {}, soBracketJoins},
    {"poBracketConditions", {}, soBracketConditions},
}};

bool IsIdentifier(std::string_view text) {
  if (text.empty()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    if (!letter && (i == 0 || c < '0' || c > '9')) return false;
  }
  return true;
}

}  // namespace

void ReadOldOptions(std::string_view value, TQPAppearanceOptions& appearance, TWQuery& query) {
  const std::string_view text = Trim(value);
  if (text.size() < 2 || text.front() != '[' || text.back() != ']')
    throw EWQueryPanelError(qecInvalidPropertyValue, std::string(msg::InvalidPropertyValue));
  // Read the whole set before anything changes.
  TQPAppearanceOptions addedAppearance;
  TSQLOptions addedOptions;
  bool newJoins = false;
  bool oracleJoins = false;
  const std::string_view members = Trim(text.substr(1, text.size() - 2));
  std::size_t start = 0;
  while (!members.empty() && start <= members.size()) {
    std::size_t comma = members.find(',', start);
    if (comma == std::string_view::npos) comma = members.size();
    const std::string_view name = Trim(members.substr(start, comma - start));
    if (!IsIdentifier(name))
      throw EWQueryPanelError(qecInvalidPropertyValue, std::string(msg::InvalidPropertyValue));
    for (const TOldOption& old : OldOptions) {
      if (!SameText(old.Name, name)) continue;
      if (old.Appearance) addedAppearance.Include(*old.Appearance);
      if (old.SQLOption) addedOptions.Include(*old.SQLOption);
      newJoins = newJoins || old.Name == "poNewJoinsStyle";
      oracleJoins = oracleJoins || old.Name == "poOracleJoins";
    }
    start = comma + 1;
  }
  appearance = appearance | addedAppearance;
  if (addedAppearance.Contains(aoNonEmptyBrackets)) query.SetNonEmptyBrackets(true);
  query.SetSQLSyntax(oracleJoins ? ssOracle : newJoins ? ssSQL2 : ssSQL1);
  query.SetSQLOptions(query.SQLOptions() | addedOptions);
}

}  // namespace ts4
