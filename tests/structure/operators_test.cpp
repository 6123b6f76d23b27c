#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "structure/structure.h"
#include "test_support.h"

namespace {

using ts4::TWDBStructure;
using ts4test::ExpectError;

std::vector<std::string> OperatorNames(const ts4::TWCustomDBStructure& db) {
  std::vector<std::string> names;
  for (int i = 0; i < db.OperatCount(); ++i) names.push_back(db.Operators(i)->Name());
  return names;
}

std::vector<std::string> FieldOperatorNames(const ts4::TDSField& field) {
  std::vector<std::string> names;
  for (int i = 0; i < field.OperatCount(); ++i) names.push_back(field.Operators(i)->Name());
  return names;
}

const std::vector<std::string> AllThirteen = {
    "Equal",  "NotEqual",   "LessThan",      "LessOrEqual", "GreaterThan", "GreaterOrEqual", "IsNull",
    "InList", "StartsWith", "NotStartsWith", "Contains",    "NotContains", "Between"};

struct DefaultOperatorCase {
  const char* name;
  const char* caption;
  const char* sqlName;
  const char* valFormat;
  ts4::TOpValueType valueType;
  ts4::TFieldTypes appliedTypes;
};

class DefaultOperator : public testing::TestWithParam<DefaultOperatorCase> {};

TEST_P(DefaultOperator, HasItsCaptionTemplateAndTypes) {
  const DefaultOperatorCase& c = GetParam();
  TWDBStructure db;
  const ts4::TDSOperator* op = db.OperatorByName(c.name);
  ASSERT_NE(op, nullptr);
  EXPECT_EQ(op->DisplayName(), c.caption);
  EXPECT_EQ(op->SQLName(), c.sqlName);
  EXPECT_EQ(op->ValFormat(), c.valFormat);
  EXPECT_EQ(op->ValueType(), c.valueType);
  EXPECT_EQ(op->AppliedTypes(), c.appliedTypes);
  EXPECT_EQ(op->ExprType(), ts4::ftUnknown);
  EXPECT_EQ(db.GetDefOperator(c.name), c.caption);
}

INSTANTIATE_TEST_SUITE_P(
    StandardSet, DefaultOperator,
    testing::Values(
        DefaultOperatorCase{"Equal", "is equal to", "@f = '@1'", "", ts4::vtScalar, ts4::ComparableTypes},
        DefaultOperatorCase{"NotEqual", "is not equal to", "@f <> '@1'", "", ts4::vtScalar,
                            ts4::ComparableTypes},
        DefaultOperatorCase{"LessThan", "is less than", "@f < '@1'", "", ts4::vtScalar, ts4::ComparableTypes},
        DefaultOperatorCase{"LessOrEqual", "is less than or equal to", "@f <= '@1'", "", ts4::vtScalar,
                            ts4::ComparableTypes},
        DefaultOperatorCase{"GreaterThan", "is greater than", "@f >'@1'", "", ts4::vtScalar,
                            ts4::ComparableTypes},
        DefaultOperatorCase{"GreaterOrEqual", "is greater than or equal to", "@f >= '@1'", "", ts4::vtScalar,
                            ts4::ComparableTypes},
        DefaultOperatorCase{"IsNull", "is null", "@f is null", "", ts4::vtScalar, ts4::NullableTypes},
        DefaultOperatorCase{"InList", "is in list", "@f in (@1)", "", ts4::vtList, ts4::ComparableTypes},
        DefaultOperatorCase{"StartsWith", "starts with", "@f like '@1%'", "", ts4::vtScalar,
                            ts4::StringTypes},
        DefaultOperatorCase{"NotStartsWith", "does not start with", "not(@f like '@1%')", "", ts4::vtScalar,
                            ts4::StringTypes},
        DefaultOperatorCase{"Contains", "contains", "@f like '%@1%'", "", ts4::vtScalar, ts4::StringTypes},
        DefaultOperatorCase{"NotContains", "does not contain", "not(@f like '%@1%')", "", ts4::vtScalar,
                            ts4::StringTypes},
        DefaultOperatorCase{"Between", "is between", "@f between '@1' and '@2'", "and", ts4::vtScalar,
                            ts4::ComparableTypes}),
    [](const testing::TestParamInfo<DefaultOperatorCase>& info) { return std::string(info.param.name); });

TEST(StandardSet, NewStructureHasAllThirteenInOrder) {
  TWDBStructure db;
  EXPECT_EQ(OperatorNames(db), AllThirteen);
  EXPECT_EQ(db.ExOperators(),
            (ts4::TExOperators{ts4::xoInList, ts4::xoBetween, ts4::xoStartsWith, ts4::xoContains}));
  ASSERT_EQ(db.DefOperators().Count(), 13);
  EXPECT_EQ(db.DefOperators()[0], "Equal=is equal to");
  EXPECT_EQ(db.DefOperators()[12], "Between=is between");
}

TEST(StandardSet, TypeSetsAreBuiltFromEachOther) {
  EXPECT_TRUE(ts4::NullableTypes.Contains(ts4::ftMemo));
  EXPECT_FALSE(ts4::ComparableTypes.Contains(ts4::ftMemo));
  EXPECT_EQ(ts4::NullableTypes - ts4::ComparableTypes, (ts4::TFieldTypes{ts4::ftMemo, ts4::ftFmtMemo}));
  EXPECT_TRUE(ts4::TextAndScalarTypes.Contains(ts4::ftFixedChar));
  EXPECT_FALSE(ts4::TextAndScalarTypes.Contains(ts4::ftBlob));
  EXPECT_EQ(ts4::TDSOperator().AppliedTypes(), ts4::TextAndScalarTypes);
}

TEST(StandardSet, UpdateRestoresTemplateAndNoUpdateDuplicates) {
  TWDBStructure db;
  db.Operators(0)->SetSQLName("@f == '@1'");
  db.Operators(0)->SetValueType(ts4::vtSubQuery);
  db.AddDefOperators(true);
  EXPECT_EQ(db.OperatCount(), 13);
  EXPECT_EQ(db.Operators(0)->SQLName(), "@f = '@1'");
  EXPECT_EQ(db.Operators(0)->ValueType(), ts4::vtSubQuery) << "re-initialising keeps the value type";
  db.AddDefOperators(false);
  EXPECT_EQ(db.OperatCount(), 26);
  EXPECT_EQ(db.Operators(13)->Name(), "Equal");
  EXPECT_EQ(db.OperatorIndexByName("Equal"), 0);
}

TEST(ExOperators, RemovingContainsDeletesBothFromStructureAndFields) {
  TWDBStructure db;
  ts4::TDSTable* t = db.AddTable("customer", "C");
  ts4::TDSField* name = db.AddField(ts4::wfkData, "Name", "Name", t);
  ASSERT_EQ(FieldOperatorNames(*name), AllThirteen);
  db.SetExOperators({ts4::xoInList, ts4::xoBetween, ts4::xoStartsWith});
  EXPECT_EQ(db.OperatorByName("Contains"), nullptr);
  EXPECT_EQ(db.OperatorByName("NotContains"), nullptr);
  EXPECT_EQ(FieldOperatorNames(*name),
            (std::vector<std::string>{"Equal", "NotEqual", "LessThan", "LessOrEqual", "GreaterThan",
                                      "GreaterOrEqual", "IsNull", "InList", "StartsWith", "NotStartsWith",
                                      "Between"}));
}

TEST(ExOperators, EachOptionControlsItsOperators) {
  struct Case {
    ts4::TExOperator option;
    std::vector<std::string> gone;
  };
  for (const Case& c : {Case{ts4::xoInList, {"InList"}}, Case{ts4::xoBetween, {"Between"}},
                        Case{ts4::xoStartsWith, {"StartsWith", "NotStartsWith"}},
                        Case{ts4::xoContains, {"Contains", "NotContains"}}}) {
    TWDBStructure db;
    ts4::TExOperators all = db.ExOperators();
    db.SetExOperators(ts4::TExOperators(all).Exclude(c.option));
    for (const std::string& name : c.gone) EXPECT_EQ(db.OperatorByName(name), nullptr) << name;
    EXPECT_EQ(db.OperatCount(), 13 - static_cast<int>(c.gone.size()));
    db.SetExOperators(all);
    for (const std::string& name : c.gone) EXPECT_NE(db.OperatorByName(name), nullptr) << name;
    EXPECT_EQ(db.OperatCount(), 13);
  }
}

TEST(ExOperators, SettingTheCurrentValueDoesNothing) {
  TWDBStructure db;
  ts4::TStrings captions = db.DefOperators();
  // A caption edited by hand is not refreshed by a no-op set.
  db.Operators(0)->SetDisplayName("equals");
  int changes = 0;
  db.OnChange = [&](ts4::TWCustomDBStructure&) { ++changes; };
  db.SetExOperators(db.ExOperators());
  EXPECT_EQ(db.Operators(0)->DisplayName(), "equals");
  EXPECT_EQ(changes, 0);
}

TEST(ExOperators, CaptionRefreshLeavesAbsentStartsWithAlone) {
  TWDBStructure db;
  db.SetExOperators({ts4::xoInList, ts4::xoBetween});
  ASSERT_EQ(db.OperatorByName("StartsWith"), nullptr);
  // Application operators that happen to carry optional names.
  db.AddOperator("StartsWith", "begins with", "@f like '@1%'", "", ts4::StringTypes);
  db.AddOperator("Contains", "has", "@f like '%@1%'", "", ts4::StringTypes);
  db.UpdateDefOperators();
  ASSERT_NE(db.OperatorByName("StartsWith"), nullptr);
  EXPECT_EQ(db.OperatorByName("StartsWith")->DisplayName(), "begins with");
  EXPECT_EQ(db.OperatorByName("Contains"), nullptr);
}

TEST(ExOperators, SwitchingRefreshesCaptionsFromDefOperators) {
  TWDBStructure db;
  db.SetExOperators({});
  ts4::TStrings captions = db.DefOperators();
  captions.SetValue("Between", "lies between");
  captions.SetValue("Equal", "equals");
  db.SetDefOperators(captions);
  db.SetExOperators({ts4::xoBetween});
  EXPECT_EQ(db.OperatorByName("Between")->DisplayName(), "lies between");
  EXPECT_EQ(db.OperatorByName("Between")->ValFormat(), "and");
  EXPECT_EQ(db.OperatorByName("Equal")->DisplayName(), "equals");
}

TEST(DefOperators, MissingCaptionGivesEmptyNameUntilMerged) {
  TWDBStructure db;
  ts4::TStrings captions = db.DefOperators();
  captions.Delete(captions.IndexOfName("IsNull"));
  captions.SetStrings(0, "Equal=");
  db.SetDefOperators(captions);
  EXPECT_EQ(db.OperatorByName("IsNull")->DisplayName(), "");
  EXPECT_EQ(db.OperatorByName("Equal")->DisplayName(), "");
  db.MergeDefOperators();
  db.UpdateDefOperators();
  EXPECT_EQ(db.OperatorByName("IsNull")->DisplayName(), "is null");
  EXPECT_EQ(db.OperatorByName("Equal")->DisplayName(), "is equal to");
  EXPECT_EQ(db.DefOperators().Values("IsNull"), "is null");
}

TEST(DefOperators, MergeKeepsExistingCaptions) {
  TWDBStructure db;
  ts4::TStrings captions;
  captions.Add("Equal=ist gleich");
  db.SetDefOperators(captions);
  db.MergeDefOperators();
  EXPECT_EQ(db.DefOperators().Count(), 13);
  EXPECT_EQ(db.DefOperators()[0], "Equal=ist gleich");
  db.Loaded();
  EXPECT_EQ(db.OperatorByName("Equal")->DisplayName(), "ist gleich");
  EXPECT_EQ(db.OperatorByName("Between")->DisplayName(), "is between");
  db.LoadDefsOpertors();
  EXPECT_EQ(db.DefOperators()[0], "Equal=is equal to");
}

TEST(Lookup, OperatorIndexByNameMapsOnlyTheExactOldName) {
  TWDBStructure db;
  struct Case {
    const char* name;
    int index;
  };
  for (const Case& c : {Case{"Equal", 0}, Case{"EQUAL", 0}, Case{"EqualTo", 0}, Case{"equalto", -1},
                        Case{"between", 12}, Case{"Nothing", -1}, Case{"", -1}}) {
    EXPECT_EQ(db.OperatorIndexByName(c.name), c.index) << c.name;
    EXPECT_EQ(db.OperatorByName(c.name) == nullptr, c.index < 0) << c.name;
  }
  db.AddOperator("equalto", "old", "@f = @1", "", ts4::ComparableTypes);
  EXPECT_EQ(db.OperatorIndexByName("equalto"), 13);
}

TEST(Lookup, OperatorByExprTakesTheFirstTemplateContainingTheText) {
  TWDBStructure db;
  struct Case {
    const char* text;
    const char* name;
  };
  for (const Case& c :
       {Case{"like", "StartsWith"}, Case{"LIKE '%", "Contains"}, Case{"not(", "NotStartsWith"},
        Case{"between", "Between"}, Case{"is null", "IsNull"}, Case{"<", "NotEqual"}, Case{"@f", "Equal"}}) {
    const ts4::TDSOperator* op = db.OperatorByExpr(c.text);
    ASSERT_NE(op, nullptr) << c.text;
    EXPECT_EQ(op->Name(), c.name) << c.text;
  }
  EXPECT_EQ(db.OperatorByExpr("similar to"), nullptr);
}

TEST(Lookup, BadIndexAndUnknownNames) {
  TWDBStructure db;
  ExpectError([&] { (void)db.Operators(13); }, 3, "Invalid operator index 13");
  ExpectError([&] { (void)db.Operators(-1); }, 3, "Invalid operator index -1");
  db.DeleteOperatorByName("Nothing");
  db.UpdateOperatorCaption("Nothing", "x");
  EXPECT_EQ(db.OperatCount(), 13);
  ts4::TStrings names;
  db.GetOperatorNames(names);
  EXPECT_EQ(names.Lines(), AllThirteen);
}

TEST(Operators, AddUpdateOperator) {
  TWDBStructure db;
  int index = db.AddUpdateOperator(true, "LessThan", "below", "@f < @1", "", ts4::ComparableTypes);
  EXPECT_EQ(index, 2);
  EXPECT_EQ(db.Operators(2)->DisplayName(), "below");
  index = db.AddUpdateOperator(true, "Similar", "sounds like", "soundex(@f) = soundex('@1')", "",
                               ts4::StringTypes);
  EXPECT_EQ(index, 13);
  index = db.AddUpdateOperator(false, "Similar", "again", "x", "", ts4::StringTypes);
  EXPECT_EQ(index, 14);
  EXPECT_EQ(db.OperatorByName("Similar")->DisplayName(), "sounds like");
}

TEST(Operators, DeletingDetachesFromEveryField) {
  TWDBStructure db;
  ts4::TDSTable* t = db.AddTable("t", "t");
  ts4::TDSField* a = db.AddField(ts4::wfkData, "A", "A", t);
  ts4::TDSField* b = db.AddField(ts4::wfkData, "B", "B", t);
  b->SetFieldType(ts4::ftInteger);
  b->AddAppliedOperators();
  db.DeleteOperatorByName("Equal");
  EXPECT_EQ(a->Operators(0)->Name(), "NotEqual");
  EXPECT_EQ(b->Operators(0)->Name(), "NotEqual");
  db.ClearOperators();
  EXPECT_EQ(db.OperatCount(), 0);
  EXPECT_EQ(a->OperatCount(), 0);
  EXPECT_EQ(b->OperatCount(), 0);
}

TEST(Operators, ParamCountCountsConsecutiveMarkersFromOne) {
  struct Case {
    const char* sqlName;
    int count;
  };
  for (const Case& c : {Case{"@f between '@1' and '@2'", 2}, Case{"@f is null", 0}, Case{"@f = '@1'", 1},
                        Case{"@f in (@2)", 0}, Case{"@3 @1 @2", 3}, Case{"@1 @3", 1}, Case{"", 0}}) {
    ts4::TDSOperator op;
    op.SetSQLName(c.sqlName);
    EXPECT_EQ(op.GetParamCount(), c.count) << c.sqlName;
  }
}

TEST(Operators, ValueTypeNames) {
  for (auto type : {ts4::vtScalar, ts4::vtList, ts4::vtSubQuery}) {
    EXPECT_EQ(ts4::StrToOpValueType(ts4::OpValueTypeToStr(type)), type);
  }
  EXPECT_EQ(ts4::OpValueTypeToStr(ts4::vtList), "vtList");
  EXPECT_EQ(ts4::StrToOpValueType("VTSUBQUERY"), ts4::vtSubQuery);
  EXPECT_EQ(ts4::TryStrToOpValueType("vtTree"), std::nullopt);
  ExpectError([] { (void)ts4::StrToOpValueType("vtTree"); }, 0, "Unknown value type: vtTree");
}

TEST(FieldOperators, AppliedOperatorsFollowTheStructuresOrder) {
  struct Case {
    ts4::TFieldType type;
    std::vector<std::string> names;
  };
  const std::vector<std::string> comparable = {"Equal",       "NotEqual",    "LessThan",
                                               "LessOrEqual", "GreaterThan", "GreaterOrEqual",
                                               "IsNull",      "InList",      "Between"};
  for (const Case& c :
       {Case{ts4::ftString, AllThirteen}, Case{ts4::ftInteger, comparable}, Case{ts4::ftDate, comparable},
        Case{ts4::ftMemo, {"IsNull", "StartsWith", "NotStartsWith", "Contains", "NotContains"}},
        Case{ts4::ftWideString, {"StartsWith", "NotStartsWith", "Contains", "NotContains"}},
        Case{ts4::ftBlob, {}}}) {
    TWDBStructure db;
    ts4::TDSField* field = db.AddField(ts4::wfkVirtual, "x", "x", nullptr);
    field->SetFieldType(c.type);
    field->AddAppliedOperators();
    EXPECT_EQ(FieldOperatorNames(*field), c.names) << ts4::FldTypeToStr(c.type);
  }
}

TEST(FieldOperators, ByNameMoveAndDelete) {
  TWDBStructure db;
  ts4::TDSField* field = db.AddField(ts4::wfkVirtual, "x", "x", nullptr);
  field->ClearOperators();
  EXPECT_EQ(field->AddOperatorByName("Between"), 0);
  EXPECT_EQ(field->AddOperatorByName("EqualTo"), 1);
  EXPECT_EQ(field->AddOperator(*db.Operators(6)), 2);
  ExpectError<ts4::EWDBStructError>([&] { field->AddOperatorByName("Like"); }, 6, "Operator not found: Like");
  field->MoveOperat(2, 0);
  EXPECT_EQ(FieldOperatorNames(*field), (std::vector<std::string>{"IsNull", "Between", "Equal"}));
  field->DelOperator(1);
  EXPECT_EQ(FieldOperatorNames(*field), (std::vector<std::string>{"IsNull", "Equal"}));
  EXPECT_EQ(field->IndexOfOperator(db.OperatorByName("Equal")), 1);
  ExpectError<ts4::EWDBStructError>([&] { (void)field->Operators(2); }, 3, "Invalid operator index 2");
  ExpectError<ts4::EWDBStructError>([&] { field->DelOperator(5); }, 3, "Invalid operator index 5");
}

}  // namespace
