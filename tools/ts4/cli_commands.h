#pragma once

#include <iosfwd>

#include "cli_request.h"
#include "foundation/strings.h"

namespace ts4::cli {

/// Runs sql, structure, path, parse or import and appends the output lines to `out`.
/// Library errors and unreadable files propagate as EWTessalyError.
void RunCommand(const TCliRequest& request, std::istream& in, TStrings& out);

}  // namespace ts4::cli
