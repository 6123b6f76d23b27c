#include "foundation/field_types.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "foundation/error.h"
#include "foundation/string_utils.h"

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

class FieldTypeNames : public ::testing::TestWithParam<TypeCase> {};

TEST_P(FieldTypeNames, OrdinalMatchesStoredOrder) {
  EXPECT_EQ(static_cast<int>(GetParam().type), GetParam().ordinal);
  EXPECT_EQ(ts4::FldTypeFromOrdinal(GetParam().ordinal), GetParam().type);
}

TEST_P(FieldTypeNames, WritesName) {
  EXPECT_EQ(ts4::FldTypeToStr(GetParam().type), GetParam().name);
}

TEST_P(FieldTypeNames, ReadsNameInAnyCase) {
  const std::string name = GetParam().name;
  EXPECT_EQ(ts4::StrToFldType(name), GetParam().type);
  EXPECT_EQ(ts4::StrToFldType(ts4::UpperCase(name)), GetParam().type);
  EXPECT_EQ(ts4::StrToFldType(ts4::LowerCase(name)), GetParam().type);
  EXPECT_EQ(ts4::TryStrToFldType(ts4::LowerCase(name)), GetParam().type);
}

TEST_P(FieldTypeNames, RoundTrip) {
  EXPECT_EQ(ts4::StrToFldType(ts4::FldTypeToStr(GetParam().type)), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(FieldTypes, FieldTypeNames, ::testing::ValuesIn(AllTypes),
                         [](const ::testing::TestParamInfo<TypeCase>& info) {
                           return std::string(info.param.name);
                         });

TEST(FieldTypes, TableCoversEveryTypeOnce) {
  static_assert(ts4::FieldTypeCount == 30);
  static_assert(std::size(AllTypes) == ts4::FieldTypeCount);
  std::set<std::string> names;
  for (std::string_view name : ts4::FieldTypeNames) names.insert(ts4::LowerCase(name));
  EXPECT_EQ(names.size(), 30u);  // no two names equal ignoring case
}

void ExpectUnknownType(const std::string& name) {
  try {
    (void)ts4::StrToFldType(name);
    ADD_FAILURE() << "no error for \"" << name << "\"";
  } catch (const ts4::EWTessalyError& e) {
    EXPECT_EQ(std::string(e.what()), "Unknown field type: " + name);
    EXPECT_EQ(e.ErrorCode(), 0);
  }
  EXPECT_EQ(ts4::TryStrToFldType(name), std::nullopt);
}

TEST(FieldTypes, UnknownNamesAreRefused) {
  for (const char* name : {"ftNothing", "", "String", "ftString ", " ftString", "ft", "ftStrings", "1"})
    ExpectUnknownType(name);
}

TEST(FieldTypes, FldTypeFromOrdinalBounds) {
  EXPECT_EQ(ts4::FldTypeFromOrdinal(0), TFieldType::ftUnknown);
  EXPECT_EQ(ts4::FldTypeFromOrdinal(29), TFieldType::ftDataSet);
  EXPECT_EQ(ts4::FldTypeFromOrdinal(-1), std::nullopt);
  EXPECT_EQ(ts4::FldTypeFromOrdinal(30), std::nullopt);
  EXPECT_EQ(ts4::FldTypeFromOrdinal(256), std::nullopt);  // would wrap to 0 in a byte
  EXPECT_EQ(ts4::FldTypeFromOrdinal(286), std::nullopt);
  EXPECT_EQ(ts4::FldTypeFromOrdinal(-256), std::nullopt);
}

TEST(FieldTypes, FieldTypeSet) {
  const ts4::TFieldTypes quoted{TFieldType::ftString, TFieldType::ftDate, TFieldType::ftWideString};
  EXPECT_TRUE(quoted.Contains(TFieldType::ftString));
  EXPECT_TRUE(quoted.Contains(TFieldType::ftWideString));
  EXPECT_FALSE(quoted.Contains(TFieldType::ftInteger));
  EXPECT_EQ(quoted.Bits(), (1u << 1) | (1u << 9) | (1u << 24));
}

// ---------------------------------------------------------------------------
// Field kinds

TEST(FieldKinds, NamesRoundTrip) {
  EXPECT_EQ(ts4::FldKindToStr(TWFieldKind::wfkData), "wfkData");
  EXPECT_EQ(ts4::FldKindToStr(TWFieldKind::wfkVirtual), "wfkVirtual");
  EXPECT_EQ(static_cast<int>(TWFieldKind::wfkData), 0);
  EXPECT_EQ(static_cast<int>(TWFieldKind::wfkVirtual), 1);
  for (TWFieldKind kind : {TWFieldKind::wfkData, TWFieldKind::wfkVirtual})
    EXPECT_EQ(ts4::StrToFldKind(ts4::FldKindToStr(kind)), kind);
}

TEST(FieldKinds, ReadsNameInAnyCase) {
  EXPECT_EQ(ts4::StrToFldKind("WFKVIRTUAL"), TWFieldKind::wfkVirtual);
  EXPECT_EQ(ts4::StrToFldKind("wfkdata"), TWFieldKind::wfkData);
  EXPECT_EQ(ts4::TryStrToFldKind("WfkData"), TWFieldKind::wfkData);
}

TEST(FieldKinds, UnknownNamesAreRefused) {
  for (const char* name : {"wfkOther", "", "Data", "virtual", "wfkData "}) {
    try {
      (void)ts4::StrToFldKind(name);
      ADD_FAILURE() << "no error for \"" << name << "\"";
    } catch (const ts4::EWTessalyError& e) {
      EXPECT_EQ(std::string(e.what()), std::string("Unknown field kind: ") + name);
      EXPECT_EQ(e.ErrorCode(), 0);
    }
    EXPECT_EQ(ts4::TryStrToFldKind(name), std::nullopt);
  }
}

}  // namespace
