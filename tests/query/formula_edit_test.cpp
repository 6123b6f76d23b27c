// Editing result fields as the editor does: aggregates around formulas,
// formulas extended by an operator, and the order of the sorted fields.
#include <gtest/gtest.h>

#include "foundation/error.h"
#include "query/formula_edit.h"
#include "query/rfield_list.h"
#include "sample_structure.h"

namespace {

using namespace ts4;

TEST(FormulaEdit, AggregatesWrapTheWholeFormula) {
  struct Case {
    const char* formula;
    TAggregateFunction outer;
    TAggregateFunction wrap;
    const char* wrapped;
  };
  const Case cases[] = {
      {"@1", afNone, afSum, "SUM(@1)"},
      {" sum (@1) ", afSum, afMax, "MAX(@1)"},
      {"COUNT(@1 + @2)", afCount, afNone, "@1 + @2"},
      {"AVG((@1) * 2)", afAvg, afMin, "MIN((@1) * 2)"},
      {"SUM(@1) + SUM(@2)", afNone, afSum, "SUM(SUM(@1) + SUM(@2))"},  // not one call
      {"SUMMARY(@1)", afNone, afNone, "SUMMARY(@1)"},
      {"MAX(@1 || ')')", afMax, afNone, "@1 || ')'"},  // quoted brackets do not count
      {"MAX(@1", afNone, afNone, "MAX(@1"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.formula);
    EXPECT_EQ(OuterAggregate(c.formula), c.outer);
    EXPECT_EQ(WithAggregate(c.formula, c.wrap), c.wrapped);
  }
}

TEST(FormulaEdit, OperatorsKeepWhatTheyApplyTo) {
  struct Case {
    const char* formula;
    TFormulaOperator op;
    const char* combined;
  };
  const Case cases[] = {
      {"@1", foAdd, "@1 + @3"},
      {"@1 + @2", foSubtract, "@1 + @2 - @3"},
      {"@1 - @2", foMultiply, "(@1 - @2) * @3"},
      {"@1 * @2", foDivide, "@1 * @2 / @3"},
      {"SUM(@1 - @2)", foDivide, "SUM(@1 - @2) / @3"},
      {"@1 || '-'", foMultiply, "@1 || '-' * @3"},
  };
  for (const Case& c : cases) EXPECT_EQ(CombineFormula(c.formula, c.op, "@3"), c.combined) << c.formula;

  ts4test::TSampleStructure s;
  TRFieldList list(&s.db);
  TResultField& empty = *list.New();
  empty.Combine(foMultiply, s.Field("TOTAL"));  // nothing to multiply yet: the field as it stands
  EXPECT_EQ(empty.Formula(), "@1");
  EXPECT_EQ(empty.GetSQLExpr(), "O.TOTAL");
}

TEST(FormulaEdit, NewlySortedFieldsGoLastAndMoveAsRanked) {
  ts4test::TSampleStructure s;
  TRFieldList list(&s.db);
  for (const char* name : {"NAME", "CITY", "QTY"}) list.Add(s.Field(name));
  list.SetSorting(2, stDescending);
  list.SetSorting(0, stAscending);
  list.SetSorting(1, stAscending);
  list.SetSorting(2, stAscending);  // another direction keeps the rank: QTY NAME CITY
  list.MoveSortedField(2, 0);
  EXPECT_THROW(list.MoveSortedField(0, 3), EWTessalyError);
  const std::vector<TResultField*> expected = {list[1], list[2], list[0]};
  EXPECT_EQ(list.SortedFields(), expected);
}

}  // namespace
