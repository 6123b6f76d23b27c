#pragma once

#include <optional>
#include <string>
#include <vector>

#include "query/query_types.h"
#include "structure/sql_formats.h"

namespace ts4::cli {

/// What the command line asks for, checked for usage but not yet run.
struct TCliRequest {
  enum class TCommand { Help, Version, Sql, Structure, Path, Parse, Import };
  TCommand Command = TCommand::Help;
  /// The files (or "-"), for path the two aliases, for import the connection, in order.
  std::vector<std::string> Arguments;
  TSQLSyntax Syntax = ssSQL2;
  /// Set when --options was given ("" gives the empty set).
  std::optional<TSQLOptions> Options;
  /// Set when --main-table was given.
  std::optional<std::string> MainTable;
};

/// The request, or the reason the command line is bad usage.
struct TParseOutcome {
  std::optional<TCliRequest> Request;
  std::string Error;
};

/// Reads the arguments after the program name.
[[nodiscard]] TParseOutcome ParseCommandLine(const std::vector<std::string>& args);

/// The one-line usage summary printed after a usage error.
[[nodiscard]] std::string UsageLine();
/// The text of --help.
[[nodiscard]] std::string HelpText();

}  // namespace ts4::cli
