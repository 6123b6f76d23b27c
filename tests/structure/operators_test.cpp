#include <gtest/gtest.h>

#include <algorithm>
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

// Each option adds and removes its operators, in the structure and in the fields that offer them.
TEST(ExOperators, EachOptionControlsItsOperators) {
  struct Case {
    ts4::TExOperator option;
    std::vector<std::string> gone;
  };
  for (const Case& c : {Case{ts4::xoInList, {"InList"}}, Case{ts4::xoBetween, {"Between"}},
                        Case{ts4::xoStartsWith, {"StartsWith", "NotStartsWith"}},
                        Case{ts4::xoContains, {"Contains", "NotContains"}}}) {
    TWDBStructure db;
    ts4::TDSField* name = db.AddField(ts4::wfkData, "Name", "Name", db.AddTable("customer", "C"));
    ts4::TExOperators all = db.ExOperators();
    db.SetExOperators(ts4::TExOperators(all).Exclude(c.option));
    std::vector<std::string> left = AllThirteen;
    std::erase_if(left, [&](const std::string& op) { return std::ranges::count(c.gone, op) > 0; });
    EXPECT_EQ(OperatorNames(db), left);
    EXPECT_EQ(FieldOperatorNames(*name), left);
    db.SetExOperators(all);  // back at the end of the list
    std::vector<std::string> again = OperatorNames(db);
    EXPECT_TRUE(std::ranges::is_permutation(again, AllThirteen)) << testing::PrintToString(again);
  }
}

TEST(ExOperators, CaptionRefreshLeavesAbsentStartsWithAlone) {
  TWDBStructure db;
  // Setting the current value does nothing: a caption edited by hand stays.
  db.Operators(0)->SetDisplayName("equals");
  int changes = 0;
  db.OnChange = [&](ts4::TWCustomDBStructure&) { ++changes; };
  db.SetExOperators(db.ExOperators());
  EXPECT_EQ(db.Operators(0)->DisplayName(), "equals");
  EXPECT_EQ(changes, 0);
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
  EXPECT_EQ(db.DefOperators().Count(), 13);
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
  for (const Case& c : {Case{"@f between '@1' and '@2'", 2}, Case{"@f is null", 0}, Case{"@f in (@2)", 0},
                        Case{"@3 @1 @2", 3}, Case{"@1 @3", 1}}) {
    ts4::TDSOperator op;
    op.SetSQLName(c.sqlName);
    EXPECT_EQ(op.GetParamCount(), c.count) << c.sqlName;
  }
}

TEST(Operators, ValueTypeNames) {
  for (auto type : {ts4::vtScalar, ts4::vtList, ts4::vtSubQuery})
    EXPECT_EQ(ts4::StrToOpValueType(ts4::OpValueTypeToStr(type)), type);
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
       {Case{ts4::ftString, AllThirteen}, Case{ts4::ftDate, comparable},
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
}

}  // namespace
