#include "foundation/error.h"

#include "foundation/messages.h"

namespace ts4 {

EWTessalyError::EWTessalyError(std::int32_t code, const std::string& message)
    : std::runtime_error(message), code_(code) {}

std::string_view ESQLParserError::MessageOf(TSQLParserErrorCode code) {
  switch (code) {
    case pecWrongSQL: return msg::WrongSQL;
    case pecLostBracket: return msg::LostBracket;
    case pecNestingTooDeep: return msg::NestingTooDeep;
  }
  return msg::WrongSQL;
}

// The documented form: no blank after the colon.
std::string ESQLParserError::WithLine(const std::string& message, int line) {
  return message + "\r\nLine:" + std::to_string(line);
}

}  // namespace ts4
