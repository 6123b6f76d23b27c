#pragma once

#include <string_view>

#include "query/appearance_options.h"

namespace ts4 {

class TWQuery;

/// Takes the "Options" value of a form saved with the earlier option set,
/// written as a set ("[poFlatButtons, poOracleJoins]"), and spreads it over
/// the current settings: appearance options and SQL options are added,
/// the SQL syntax is always replaced (ssOracle for poOracleJoins, else
/// ssSQL2 for poNewJoinsStyle, else ssSQL1). Unknown names are ignored. A
/// value that is not a set raises EWQueryPanelError code 13 and changes
/// nothing.
void ReadOldOptions(std::string_view value, TQPAppearanceOptions& appearance, TWQuery& query);

}  // namespace ts4
