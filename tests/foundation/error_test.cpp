#include "foundation/error.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>

#include "foundation/messages.h"

namespace {

TEST(ErrorBase, CarriesCodeAndMessage) {
  const ts4::EWTessalyError error(5, std::string("Can not find path between tables"));
  EXPECT_EQ(error.ErrorCode(), 5);
  EXPECT_STREQ(error.what(), "Can not find path between tables");
}

TEST(ErrorBase, PlainMessageIsNotFormatted) {
  // Without arguments the text is taken as it stands, directives included.
  const ts4::EWTessalyError error(0, std::string("100% sure, %d"));
  EXPECT_STREQ(error.what(), "100% sure, %d");
}

TEST(ErrorBase, FormattingConstructorFillsTheMessage) {
  const ts4::EWTessalyError one(ts4::secNoSuchTable, ts4::msg::NoSuchTable, "Orders");
  EXPECT_STREQ(one.what(), "No such table Orders");
  EXPECT_EQ(one.ErrorCode(), 4);

  const ts4::EWTessalyError two(ts4::secFieldNotInTable, ts4::msg::FieldNotInTable, std::string("Name"),
                                std::string_view("Customer"));
  EXPECT_STREQ(two.what(), "Can not find field \"Name\" in table \"Customer\"");
  EXPECT_EQ(two.ErrorCode(), 10);

  const ts4::EWTessalyError number(ts4::gecGeneral, ts4::msg::ListIndexOutOfBounds, -1);
  EXPECT_STREQ(number.what(), "List index out of bounds (-1)");
  EXPECT_EQ(number.ErrorCode(), 0);
}

TEST(ErrorBase, IsARuntimeError) {
  static_assert(std::is_base_of_v<std::runtime_error, ts4::EWTessalyError>);
  try {
    throw ts4::EWTessalyError(7, std::string("boom"));
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "boom");
  }
}

// Each derived error must be catchable as the base (keeping its code) and
// as std::runtime_error.
template <typename E>
class ErrorDerived : public ::testing::Test {};

using DerivedErrors =
    ::testing::Types<ts4::EWDBStructError, ts4::EWQueryPanelError, ts4::ESQLParserError, ts4::EWDBInfoError>;
TYPED_TEST_SUITE(ErrorDerived, DerivedErrors);

TYPED_TEST(ErrorDerived, CaughtAsBaseWithCodeAndMessage) {
  static_assert(std::is_base_of_v<ts4::EWTessalyError, TypeParam>);
  try {
    throw TypeParam(ts4::secInvalidTableIndex, ts4::msg::InvalidTableIndex, 12);
  } catch (const ts4::EWTessalyError& e) {
    EXPECT_EQ(e.ErrorCode(), 1);
    EXPECT_STREQ(e.what(), "Invalid table index 12");
    EXPECT_NE(dynamic_cast<const TypeParam*>(&e), nullptr);
  }
}

TYPED_TEST(ErrorDerived, CaughtAsRuntimeError) {
  try {
    throw TypeParam(ts4::secSectionNotFound, std::string("Can not find section Tables"));
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "Can not find section Tables");
    const auto* base = dynamic_cast<const ts4::EWTessalyError*>(&e);
    ASSERT_NE(base, nullptr);
    EXPECT_EQ(base->ErrorCode(), 9);
  }
}

TEST(ErrorDerived, DistinctTypesAreNotConfused) {
  bool caughtStruct = false;
  try {
    try {
      throw ts4::ESQLParserError(0, std::string("Lost bracket"));
    } catch (const ts4::EWDBStructError&) {
      caughtStruct = true;
    }
  } catch (const ts4::ESQLParserError& e) {
    EXPECT_STREQ(e.what(), "Lost bracket");
  }
  EXPECT_FALSE(caughtStruct);
}

// The structure's codes and messages, filled as the structure raises them.
struct StructMessageCase {
  ts4::TStructErrorCode code;
  int number;
  std::string message;
};

TEST(ErrorStructCodes, CodesAndMessages) {
  const StructMessageCase cases[] = {
      {ts4::secInvalidTableIndex, 1, ts4::Format(ts4::msg::InvalidTableIndex, {3})},
      {ts4::secInvalidLinkIndex, 2, ts4::Format(ts4::msg::InvalidLinkIndex, {3})},
      {ts4::secInvalidOperatorIndex, 3, ts4::Format(ts4::msg::InvalidOperatorIndex, {3})},
      {ts4::secNoSuchTable, 4, ts4::Format(ts4::msg::NoSuchTable, {"T"})},
      {ts4::secNoPath, 5, std::string(ts4::msg::NoPath)},
      {ts4::secOperatorNotFound, 6, ts4::Format(ts4::msg::OperatorNotFound, {"like"})},
      {ts4::secFieldNameOnVirtual, 7, std::string(ts4::msg::FieldNameOnVirtual)},
      {ts4::secExprOnDataField, 8, std::string(ts4::msg::ExprOnDataField)},
      {ts4::secSectionNotFound, 9, ts4::Format(ts4::msg::SectionNotFound, {"Tables"})},
      {ts4::secFieldNotInTable, 10, ts4::Format(ts4::msg::FieldNotInTable, {"F", "T"})},
      {ts4::secNoDatabaseInfo, 11, std::string(ts4::msg::NoDatabaseInfo)},
  };
  const char* expected[] = {"Invalid table index 3",
                            "Invalid link index 3",
                            "Invalid operator index 3",
                            "No such table T",
                            "Can not find path between tables",
                            "Operator not found: like",
                            "Can not assign field name to virtual field",
                            "Can not assign expression to data field",
                            "Can not find section Tables",
                            "Can not find field \"F\" in table \"T\"",
                            "DatabaseInfo is not specified"};
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const ts4::EWDBStructError error(cases[i].code, cases[i].message);
    EXPECT_EQ(error.ErrorCode(), cases[i].number);
    EXPECT_STREQ(error.what(), expected[i]);
  }
}

}  // namespace
