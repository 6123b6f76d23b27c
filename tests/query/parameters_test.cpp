// Conditions whose values are left open as named parameters.
#include <gtest/gtest.h>

#include "sample_structure.h"

namespace {

using ts4test::TSampleStructure;

TEST(Parameters, NamesAndCaptions) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  ts4::TFilterCond& between = s.Cond(query.Root(), "QTY", "Between", "1", "5");
  ts4::TFilterCond& name = s.Cond(query.Root(), "NAME", "Equal", "x");
  between.SetValue2IsParam(true);
  EXPECT_EQ(between.Param2()->Caption(), "QTY param");
  between.SetValue1IsParam(true);  // the second parameter of a condition numbers both
  EXPECT_EQ(between.Param1()->Caption(), "QTY param 1");
  EXPECT_EQ(between.Param2()->Caption(), "QTY param 2");
  EXPECT_EQ(between.Param2()->Name(), "Param1");
  EXPECT_EQ(between.Param1()->Name(), "Param2");
  EXPECT_EQ(between.Param1()->DataType(), ts4::ftInteger);
  EXPECT_EQ(between.GetCaption(1), ":Parameter");

  between.SetValue2IsParam(false);
  name.SetValue1IsParam(true);  // the count says Param2, which is taken
  EXPECT_EQ(name.Param1()->Name(), "Param3");
  EXPECT_EQ(query.QResult().FindParameter("param3"), name.Param1());
  EXPECT_EQ(query.QResult().FindParameterByCondition(between), between.Param1());
}

TEST(Parameters, UnbindingGivesTheValueBack) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  ts4::TFilterCond& cond = s.Cond(query.Root(), "NAME", "Contains", "typed");
  cond.SetValue1IsParam(true);
  cond.SetValue1IsParam(true);  // already a parameter: nothing happens
  EXPECT_EQ(query.QResult().GetParamCount(), 1);
  cond.Param1()->SetValue("entered");
  cond.SetValue1IsParam(false);
  EXPECT_EQ(cond.Value1(), "entered");
  EXPECT_EQ(cond.GetCaption(1), "entered");
  EXPECT_EQ(query.QResult().GetParamCount(), 0);

  cond.SetValue1IsParam(true);  // deleting the parameter elsewhere unbinds it
  query.QResult().DeleteParameter(cond.Param1());
  EXPECT_FALSE(cond.Value1IsParam());
  cond.SetValue1IsParam(true);
  query.QResult().ClearParams();
  EXPECT_FALSE(cond.Value1IsParam());
}

TEST(Parameters, FullValue) {
  const struct {
    const char* format;
    const char* value;
    const char* expected;
  } cases[] = {{"@v", "abc", "abc"}, {"%@v%", "abc", "%abc%"}, {"@v%", "", "%"}, {"@v-@v", "x", "x-x"}};
  for (const auto& c : cases) {
    ts4::TSQLParam param(nullptr, "P", ts4::ftString);
    param.SetVFormat(c.format);
    param.SetValue(c.value);
    EXPECT_EQ(param.GetFullValue(), c.expected) << c.format;
  }
}

TEST(Parameters, EqualParametersFeedParameterValues) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  ts4::TFilterCond& cond = s.Cond(query.Root(), "CUST_NO", "Equal", "");
  cond.SetValue1IsParam(true);
  cond.Param1()->SetValue("7");
  EXPECT_EQ(query.ParamValues().Values("CUST_NO"), "7");
  cond.SetOperator(&s.Op("NotEqual"));
  cond.Param1()->SetValue("8");
  EXPECT_EQ(query.ParamValues().IndexOfName("CUST_NO"), -1);
}

}  // namespace
