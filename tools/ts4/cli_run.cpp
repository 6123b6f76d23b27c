#include "cli_run.h"

#include <exception>
#include <ostream>

#include "cli_commands.h"
#include "cli_request.h"

#ifndef TS4_VERSION
#define TS4_VERSION "unknown"
#endif

namespace ts4::cli {

int RunTs4(const std::vector<std::string>& args, std::istream& in, std::ostream& out, std::ostream& err) {
  const TParseOutcome parsed = ParseCommandLine(args);
  if (!parsed.Request) {
    err << "ts4: " << parsed.Error << "\n" << UsageLine() << "\n";
    return esUsage;
  }
  const TCliRequest& request = *parsed.Request;
  if (request.Command == TCliRequest::TCommand::Help) {
    out << HelpText();
    return esOK;
  }
  if (request.Command == TCliRequest::TCommand::Version) {
    out << "ts4 " << TS4_VERSION << "\n";
    return esOK;
  }
  TStrings lines;
  try {
    RunCommand(request, in, lines);
  } catch (const std::exception& e) {
    err << "ts4: " << e.what() << "\n";
    return esFailed;
  }
  for (const std::string& line : lines) out << line << "\n";
  return esOK;
}

}  // namespace ts4::cli
