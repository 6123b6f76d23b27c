#include "foundation/field_types.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/error.h"
#include "foundation/string_utils.h"
#include "test_support.h"

namespace {

using ts4::TFieldType;
using ts4::TWFieldKind;

struct TypeCase {
  int ordinal;
  TFieldType type;
  const char* name;
};

// Every field type with its stored ordinal and name, written out by hand so
// that a reordered enumeration or a misspelt name table is caught.
const TypeCase AllTypes[] = {
    {0, TFieldType::ftUnknown, "ftUnknown"},
    {1, TFieldType::ftString, "ftString"},
    {2, TFieldType::ftSmallint, "ftSmallint"},
    {3, TFieldType::ftInteger, "ftInteger"},
    {4, TFieldType::ftWord, "ftWord"},
    {5, TFieldType::ftBoolean, "ftBoolean"},
    {6, TFieldType::ftFloat, "ftFloat"},
    {7, TFieldType::ftCurrency, "ftCurrency"},
    {8, TFieldType::ftBCD, "ftBCD"},
    {9, TFieldType::ftDate, "ftDate"},
    {10, TFieldType::ftTime, "ftTime"},
    {11, TFieldType::ftDateTime, "ftDateTime"},
    {12, TFieldType::ftBytes, "ftBytes"},
    {13, TFieldType::ftVarBytes, "ftVarBytes"},
    {14, TFieldType::ftAutoInc, "ftAutoInc"},
    {15, TFieldType::ftBlob, "ftBlob"},
    {16, TFieldType::ftMemo, "ftMemo"},
    {17, TFieldType::ftGraphic, "ftGraphic"},
    {18, TFieldType::ftFmtMemo, "ftFmtMemo"},
    {19, TFieldType::ftParadoxOle, "ftParadoxOle"},
    {20, TFieldType::ftDBaseOle, "ftDBaseOle"},
    {21, TFieldType::ftTypedBinary, "ftTypedBinary"},
    {22, TFieldType::ftCursor, "ftCursor"},
    {23, TFieldType::ftFixedChar, "ftFixedChar"},
    {24, TFieldType::ftWideString, "ftWideString"},
    {25, TFieldType::ftLargeint, "ftLargeint"},
    {26, TFieldType::ftADT, "ftADT"},
    {27, TFieldType::ftArray, "ftArray"},
    {28, TFieldType::ftReference, "ftReference"},
    {29, TFieldType::ftDataSet, "ftDataSet"},
};

// Stored ordinals and names: both directions, names read in any case.
TEST(FieldTypes, OrdinalsAndNames) {
  static_assert(std::size(AllTypes) == ts4::FieldTypeCount);
  for (const TypeCase& c : AllTypes) {
    EXPECT_EQ(static_cast<int>(c.type), c.ordinal) << c.name;
    EXPECT_EQ(ts4::FldTypeFromOrdinal(c.ordinal), c.type) << c.name;
    EXPECT_EQ(ts4::FldTypeToStr(c.type), c.name);
    EXPECT_EQ(ts4::StrToFldType(ts4::UpperCase(c.name)), c.type) << c.name;
    EXPECT_EQ(ts4::TryStrToFldType(ts4::LowerCase(c.name)), c.type) << c.name;
  }
  for (long long ordinal : {-1LL, 30LL, 256LL, -256LL})
    EXPECT_EQ(ts4::FldTypeFromOrdinal(ordinal), std::nullopt);
}

TEST(FieldTypes, UnknownNamesAreRefused) {
  for (std::string name : {"ftNothing", "", "String", "ftString ", "ftStrings", "1"}) {
    ts4test::ExpectError([&] { (void)ts4::StrToFldType(name); }, 0, "Unknown field type: " + name);
    EXPECT_EQ(ts4::TryStrToFldType(name), std::nullopt);
  }
}

TEST(FieldKinds, NamesBothWays) {
  EXPECT_EQ(ts4::FldKindToStr(TWFieldKind::wfkData), "wfkData");
  EXPECT_EQ(ts4::FldKindToStr(TWFieldKind::wfkVirtual), "wfkVirtual");
  EXPECT_EQ(ts4::StrToFldKind("WFKVIRTUAL"), TWFieldKind::wfkVirtual);
  EXPECT_EQ(ts4::TryStrToFldKind("wfkdata"), TWFieldKind::wfkData);
  for (std::string name : {"wfkOther", "", "virtual", "wfkData "}) {
    ts4test::ExpectError([&] { (void)ts4::StrToFldKind(name); }, 0, "Unknown field kind: " + name);
    EXPECT_EQ(ts4::TryStrToFldKind(name), std::nullopt);
  }
}

}  // namespace
