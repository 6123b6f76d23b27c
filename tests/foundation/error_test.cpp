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

using DerivedErrors =
    ::testing::Types<ts4::EWDBStructError, ts4::EWQueryPanelError, ts4::ESQLParserError, ts4::EWDBInfoError>;
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

// The structure's codes and their messages, verbatim.
TEST(ErrorStructCodes, CodesAndMessages) {
  struct Case {
    ts4::TStructErrorCode code;
    int number;
    std::string message;
    const char* expected;
  };
  const Case cases[] = {
      {ts4::secInvalidTableIndex, 1, ts4::Format(ts4::msg::InvalidTableIndex, {3}), "Invalid table index 3"},
      {ts4::secInvalidLinkIndex, 2, ts4::Format(ts4::msg::InvalidLinkIndex, {3}), "Invalid link index 3"},
      {ts4::secInvalidOperatorIndex, 3, ts4::Format(ts4::msg::InvalidOperatorIndex, {3}),
       "Invalid operator index 3"},
      {ts4::secNoSuchTable, 4, ts4::Format(ts4::msg::NoSuchTable, {"T"}), "No such table T"},
      {ts4::secNoPath, 5, std::string(ts4::msg::NoPath), "Can not find path between tables"},
      {ts4::secOperatorNotFound, 6, ts4::Format(ts4::msg::OperatorNotFound, {"like"}),
       "Operator not found: like"},
      {ts4::secFieldNameOnVirtual, 7, std::string(ts4::msg::FieldNameOnVirtual),
       "Can not assign field name to virtual field"},
      {ts4::secExprOnDataField, 8, std::string(ts4::msg::ExprOnDataField),
       "Can not assign expression to data field"},
      {ts4::secSectionNotFound, 9, ts4::Format(ts4::msg::SectionNotFound, {"Tables"}),
       "Can not find section Tables"},
      {ts4::secFieldNotInTable, 10, ts4::Format(ts4::msg::FieldNotInTable, {"F", "T"}),
       "Can not find field \"F\" in table \"T\""},
      {ts4::secNoDatabaseInfo, 11, std::string(ts4::msg::NoDatabaseInfo), "DatabaseInfo is not specified"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(static_cast<int>(c.code), c.number);
    EXPECT_EQ(c.message, c.expected);
  }
}

}  // namespace
