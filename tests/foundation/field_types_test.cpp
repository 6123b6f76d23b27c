#include "foundation/field_types.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/error.h"
#include "foundation/string_utils.h"
#include "test_support.h"

namespace {

using ts4::TFieldType;
using ts4::TWFieldKind;

// Every type goes through its stored ordinal and its name and back, names
// read in any case; the ends of the range pin the stored ordinals.
TEST(FieldTypes, OrdinalsAndNamesBothWays) {
  for (int ordinal = 0; ordinal < ts4::FieldTypeCount; ++ordinal) {
    const std::optional<TFieldType> type = ts4::FldTypeFromOrdinal(ordinal);
    ASSERT_TRUE(type.has_value()) << ordinal;
    EXPECT_EQ(static_cast<int>(*type), ordinal);
    const std::string name = ts4::FldTypeToStr(*type);
    EXPECT_EQ(name.substr(0, 2), "ft");
    EXPECT_EQ(ts4::StrToFldType(ts4::UpperCase(name)), type) << name;
    EXPECT_EQ(ts4::TryStrToFldType(ts4::LowerCase(name)), type) << name;
  }
  EXPECT_EQ(ts4::FldTypeToStr(TFieldType::ftUnknown), "ftUnknown");
  EXPECT_EQ(ts4::FldTypeFromOrdinal(1), TFieldType::ftString);
  EXPECT_EQ(ts4::FldTypeFromOrdinal(16), TFieldType::ftMemo);
  EXPECT_EQ(ts4::FldTypeFromOrdinal(29), TFieldType::ftDataSet);
  EXPECT_EQ(ts4::FldTypeToStr(TFieldType::ftDataSet), "ftDataSet");
  for (long long ordinal : {-1LL, 30LL, 256LL}) EXPECT_EQ(ts4::FldTypeFromOrdinal(ordinal), std::nullopt);
}

TEST(FieldTypes, UnknownNamesAreRefused) {
  for (std::string name : {"ftNothing", "", "String", "ftString "}) {
    ts4test::ExpectError([&] { (void)ts4::StrToFldType(name); }, 0, "Unknown field type: " + name);
    EXPECT_EQ(ts4::TryStrToFldType(name), std::nullopt);
  }
  EXPECT_EQ(ts4::FldKindToStr(TWFieldKind::wfkData), "wfkData");
  EXPECT_EQ(ts4::FldKindToStr(TWFieldKind::wfkVirtual), "wfkVirtual");
  EXPECT_EQ(ts4::StrToFldKind("WFKVIRTUAL"), TWFieldKind::wfkVirtual);
  EXPECT_EQ(ts4::TryStrToFldKind("wfkdata"), TWFieldKind::wfkData);
  for (std::string name : {"wfkOther", "", "wfkData "}) {
    ts4test::ExpectError([&] { (void)ts4::StrToFldKind(name); }, 0, "Unknown field kind: " + name);
    EXPECT_EQ(ts4::TryStrToFldKind(name), std::nullopt);
  }
}

}  // namespace
