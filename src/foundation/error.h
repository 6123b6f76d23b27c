#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "foundation/format.h"

namespace ts4 {

/// Base of every error the library raises; carries a numeric code beside the message.
class EWTessalyError : public std::runtime_error {
 public:
  /// The message as given.
  EWTessalyError(std::int32_t code, const std::string& message);
  /// The message is the format filled with the arguments.
  template <typename Arg, typename... Args>
  EWTessalyError(std::int32_t code, std::string_view format, const Arg& arg, const Args&... args)
      : EWTessalyError(code, Format(format, {TFormatArg(arg), TFormatArg(args)...})) {}

  [[nodiscard]] std::int32_t ErrorCode() const noexcept { return code_; }

 private:
  std::int32_t code_;
};

/// Errors of the database structure (codes 1 to 13).
class EWDBStructError : public EWTessalyError {
 public:
  using EWTessalyError::EWTessalyError;
};

/// Errors of the query and its panel.
class EWQueryPanelError : public EWTessalyError {
 public:
  using EWTessalyError::EWTessalyError;
};

/// Kinds of error the SQL parser raises; the code names the kind.
enum TSQLParserErrorCode : std::int32_t {
  pecWrongSQL = 1,        // a word missing, misplaced or left over, or an early end
  pecLostBracket = 2,     // a bracket that is never closed, or a closing one never opened
  pecNestingTooDeep = 3,  // brackets nested deeper than the parser reads
};

/// Errors of the SQL parser: the kind's message from the string table,
/// CR LF, "Line:" and the line at which the reading stopped.
class ESQLParserError : public EWTessalyError {
 public:
  /// The kind's message, filled with the arguments where it has directives.
  template <typename... Args>
  ESQLParserError(TSQLParserErrorCode code, int line, const Args&... args)
      : EWTessalyError(code, WithLine(Format(MessageOf(code), {TFormatArg(args)...}), line)), line_(line) {}

  /// The 1-based line of the token at which the reading stopped.
  [[nodiscard]] int Line() const noexcept { return line_; }
  /// The string table's message of a kind, unfilled.
  [[nodiscard]] static std::string_view MessageOf(TSQLParserErrorCode code);

 private:
  static std::string WithLine(const std::string& message, int line);

  int line_;
};

/// Errors of a database metadata provider.
class EWDBInfoError : public EWTessalyError {
 public:
  using EWTessalyError::EWTessalyError;
};

/// Codes carried by the structure's errors.
enum TStructErrorCode : std::int32_t {
  secInvalidTableIndex = 1,
  secInvalidLinkIndex = 2,
  secInvalidOperatorIndex = 3,
  secNoSuchTable = 4,
  secNoPath = 5,
  secOperatorNotFound = 6,
  secFieldNameOnVirtual = 7,
  secExprOnDataField = 8,
  secSectionNotFound = 9,
  secFieldNotInTable = 10,
  secNoDatabaseInfo = 11,
  secLinkAliasWithLineBreak = 12,
  secUnlistableOperatorName = 13,
};

/// Code of errors raised by the foundation itself (list indices, conversions).
inline constexpr std::int32_t gecGeneral = 0;

}  // namespace ts4
