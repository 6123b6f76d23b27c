#include "foundation/error.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "foundation/messages.h"

namespace {

TEST(ErrorBase, PlainMessageIsTakenAsItStands) {
  const ts4::EWTessalyError error(5, std::string("100% sure, %d"));
  EXPECT_EQ(error.ErrorCode(), 5);
  EXPECT_STREQ(error.what(), "100% sure, %d");
}

TEST(ErrorBase, FormattingConstructorFillsTheMessage) {
  const ts4::EWTessalyError two(ts4::secFieldNotInTable, ts4::msg::FieldNotInTable, std::string("Name"),
                                std::string_view("Customer"));
  EXPECT_STREQ(two.what(), "Can not find field \"Name\" in table \"Customer\"");
  EXPECT_EQ(two.ErrorCode(), 10);
  const ts4::EWTessalyError number(ts4::gecGeneral, ts4::msg::ListIndexOutOfBounds, -1);
  EXPECT_STREQ(number.what(), "List index out of bounds (-1)");
}

// Each derived error is caught as the base with its code, and as std::runtime_error.
template <typename E>
class ErrorDerived : public ::testing::Test {};

using DerivedErrors = ::testing::Types<ts4::EWDBStructError, ts4::EWQueryPanelError, ts4::EWDBInfoError>;
TYPED_TEST_SUITE(ErrorDerived, DerivedErrors);

TYPED_TEST(ErrorDerived, CaughtAsBaseAndAsRuntimeError) {
  try {
    throw TypeParam(ts4::secInvalidTableIndex, ts4::msg::InvalidTableIndex, 12);
  } catch (const ts4::EWTessalyError& e) {
    EXPECT_EQ(e.ErrorCode(), 1);
    EXPECT_STREQ(e.what(), "Invalid table index 12");
  }
  EXPECT_THROW(throw TypeParam(0, std::string("x")), std::runtime_error);
}

// The parser's error: the code names the kind, the line is a member, and the
// message is the kind's text from the table, CR LF, "Line:" and the line.
TEST(ErrorParser, CodeOfTheKindLineAndDocumentedMessage) {
  const struct {
    ts4::ESQLParserError error;
    int code;
    int line;
    const char* message;
  } cases[] = {
      {{ts4::pecWrongSQL, 3}, 1, 3, "Wrong SQL statement\r\nLine:3"},
      {{ts4::pecLostBracket, 12}, 2, 12, "Lost bracket\r\nLine:12"},
      {{ts4::pecNestingTooDeep, 1, 1000}, 3, 1, "Brackets are nested more than 1000 levels deep\r\nLine:1"},
  };
  for (const auto& c : cases) {
    const ts4::EWTessalyError& base = c.error;
    EXPECT_EQ(base.ErrorCode(), c.code);
    EXPECT_EQ(c.error.Line(), c.line);
    EXPECT_STREQ(base.what(), c.message);
  }
}

}  // namespace
