#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace ts4::cli {

/// Exit statuses of the tool.
enum TExitStatus : int { esOK = 0, esFailed = 1, esUsage = 2 };

/// The whole tool: reads the arguments (without the program name), runs the
/// command, writes its lines to `out` or one "ts4: " message to `err`, and
/// returns the exit status. Nothing reaches `out` when the command fails.
int RunTs4(const std::vector<std::string>& args, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace ts4::cli
