// Rows as data: identifiers, insertion places, deletion, moving, copying, enabling, nesting.
#include <gtest/gtest.h>

#include <algorithm>

#include "sample_structure.h"
#include "test_support.h"

namespace {

using ts4test::TSampleStructure;

std::vector<std::string> IDs(const ts4::TFilterBracket& bracket) {
  std::vector<std::string> ids;
  for (int i = 0; i < bracket.GetRowCount(); ++i) {
    const ts4::TFilterRow* row = bracket.GetRow(i);
    ids.push_back(row->RowID());
    if (row->IsBracket()) {
      for (const std::string& id : IDs(static_cast<const ts4::TFilterBracket&>(*row))) ids.push_back(id);
    }
  }
  return ids;
}

TEST(ConditionTree, RowIDsFollowEveryInsertion) {
  ts4::TWQuery query;
  ts4::TFilterBracket& root = query.Root();
  root.AddCond();
  ts4::TFilterBracket* inner = root.AddBracket();
  inner->AddCond();
  inner->AddBracket()->AddCond();
  EXPECT_EQ(IDs(root), (std::vector<std::string>{"1.", "2.", "2.1.", "2.2.", "2.2.1."}));
  root.InsertCond(0);  // later siblings and their subtrees move down
  EXPECT_EQ(IDs(root), (std::vector<std::string>{"1.", "2.", "3.", "3.1.", "3.2.", "3.2.1."}));
  EXPECT_EQ(query.RowByID("3.2.1.")->Level(), 3);
  EXPECT_EQ(query.RowByID(""), &root);
  EXPECT_EQ(query.RowByID("3.3."), nullptr);
  EXPECT_EQ(query.RowByID("4."), nullptr);
}

TEST(ConditionTree, IndexForNewRow) {
  ts4::TWQuery query;
  ts4::TFilterBracket& root = query.Root();
  EXPECT_EQ(root.IndexForNewRow(7), 0);
  for (int line : {2, 5, 8}) root.AddCond()->SetRowNum(line);
  const std::pair<int, int> cases[] = {{1, 0}, {2, 0}, {3, 1}, {5, 1}, {6, 2}, {8, 2}, {9, 3}};
  for (auto [line, index] : cases) EXPECT_EQ(root.IndexForNewRow(line), index) << line;
  EXPECT_EQ(root.GetLastRowNum(), 8);
}

TEST(ConditionTree, DeletingTheLastRowOfNestedBrackets) {
  for (bool nonEmpty : {true, false}) {
    ts4::TWQuery query;
    query.SetNonEmptyBrackets(nonEmpty);
    ts4::TFilterBracket& root = query.Root();
    root.AddCond();
    ts4::TFilterBracket* outer = root.AddBracket();
    outer->AddBracket()->AddCond();
    static_cast<ts4::TFilterBracket*>(outer->GetRow(0))->DeleteRow(0);
    // Under the option both single-row brackets go; the root never does.
    const std::vector<std::string> expected =
        nonEmpty ? std::vector<std::string>{"1."} : std::vector<std::string>{"1.", "2.", "2.1."};
    EXPECT_EQ(IDs(root), expected);
  }
}

TEST(ConditionTree, BadIndexesRaiseAndChangeNothing) {
  ts4::TWQuery query;
  ts4test::ExpectIndexError([&] { query.Root().DeleteRow(0); }, 0);
  ts4test::ExpectIndexError([&] { query.Root().InsertCond(1); }, 1);
  ts4test::ExpectIndexError([&] { query.Root().AddCond()->SetValue(3, "x"); }, 3);
  // A one-row nested bracket, which a good index would delete whole.
  ts4::TFilterBracket* single = query.Root().AddBracket();
  single->AddCond();
  ts4test::ExpectIndexError([&] { single->DeleteRow(1); }, 1);
  ts4test::ExpectIndexError([&] { single->MoveRow(0, query.Root(), 3); }, 3);
  EXPECT_EQ(IDs(query.Root()), (std::vector<std::string>{"1.", "2.", "2.1."}));
}

TEST(ConditionTree, MovingKeepsTheRowsAndTheirParameters) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  ts4::TFilterBracket& root = query.Root();
  ts4::TFilterBracket* bracket = root.AddBracket();
  ts4::TFilterCond& cond = s.Cond(*bracket, "NAME", "Contains");
  cond.SetValue1IsParam(true);
  cond.Param1()->SetValue("mit");
  s.Cond(*bracket, "CITY", "Equal", "Riga");
  ts4::TFilterBracket* inner = bracket->AddBracket();
  s.Cond(*inner, "QTY", "Equal", "1");
  root.MoveRow(0, root, 0);  // onto itself: nothing

  bracket->MoveRow(0, *inner, 1);
  EXPECT_EQ(IDs(root), (std::vector<std::string>{"1.", "1.1.", "1.2.", "1.2.1.", "1.2.2."}));
  EXPECT_EQ(query.RowByID("1.2.2."), &cond);
  ASSERT_EQ(query.QResult().GetParamCount(), 1);
  EXPECT_EQ(cond.Param1()->Name(), "Param1");
  const std::vector<std::string> where = ts4test::WhereLines(query);
  EXPECT_NE(std::find(where.begin(), where.end(), "C.NAME like :Param1"), where.end());

  // Into itself or below itself, into another query, too deep: refused, nothing moves.
  const std::string intoItself = "A bracket can not be moved into itself";
  ts4test::ExpectError<ts4::EWQueryPanelError>([&] { root.MoveRow(0, *bracket, 0); }, 16, intoItself);
  ts4test::ExpectError<ts4::EWQueryPanelError>([&] { bracket->MoveRow(1, *inner, 0); }, 16, intoItself);
  ts4::TWQuery other(&s.db);
  ts4test::ExpectError<ts4::EWQueryPanelError>([&] { root.MoveRow(0, other.Root(), 0); }, 15,
                                               "A row can only be placed in a bracket of its own query");
  ts4::TFilterBracket* deep = &other.Root();
  for (int level = 1; level < ts4::MaxBracketDepth; ++level) deep = deep->AddBracket();
  other.Root().AddBracket()->AddBracket();  // two levels, one too many below `deep`
  ts4test::ExpectError<ts4::EWQueryPanelError>([&] { other.Root().MoveRow(1, *deep, 0); }, 10,
                                               "Brackets are nested more than 1000 levels deep");
  EXPECT_EQ(other.Root().GetRowCount(), 2);
  EXPECT_EQ(IDs(root), (std::vector<std::string>{"1.", "1.1.", "1.2.", "1.2.1.", "1.2.2."}));

  // The last row leaving a nested bracket takes the bracket along.
  inner->MoveRow(0, root, 1);
  inner->MoveRow(0, root, 0);
  EXPECT_EQ(IDs(root), (std::vector<std::string>{"1.", "2.", "2.1.", "3."}));
}

TEST(ConditionTree, ClonesAreDeepWithParametersOfTheirOwn) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  ts4::TFilterBracket* bracket = query.Root().AddBracket();
  bracket->SetLinkType(ts4::fltNone);
  ts4::TFilterCond& between = s.Cond(*bracket, "QTY", "Between", "1", "5");
  between.SetValue2IsParam(true);
  between.Param2()->SetValue("9");
  s.Cond(*bracket, "CITY", "Equal", "Riga").SetEnabled(false);

  ts4::TWQuery copy(&s.db);
  for (ts4::TWQuery* target : {&query, &copy}) target->Root().InsertClone(0, *bracket);
  for (ts4::TWQuery* target : {&query, &copy}) {
    ts4::TFilterBracket& clone = static_cast<ts4::TFilterBracket&>(*target->RowByID("1."));
    ASSERT_NE(&clone, bracket);
    EXPECT_EQ(clone.LinkType(), ts4::fltNone);
    auto& cond = static_cast<ts4::TFilterCond&>(*clone.GetRow(0));
    EXPECT_EQ(cond.Value1(), "1");
    ASSERT_TRUE(cond.Value2IsParam());
    EXPECT_NE(cond.Param2(), between.Param2());
    EXPECT_EQ(cond.Param2()->Value(), "9");
    EXPECT_EQ(cond.Param2()->Condition(), &cond);
    EXPECT_FALSE(clone.GetRow(1)->Enabled());
  }
  EXPECT_EQ(query.QResult().GetParam(1)->Name(), "Param2");
  EXPECT_EQ(copy.QResult().GetParam(0)->Name(), "Param1");
  query.Root().DeleteRow(1);  // the original goes; the copy's parameter stays
  EXPECT_EQ(query.QResult().GetParamCount(), 1);
  bracket = static_cast<ts4::TFilterBracket*>(query.Root().GetRow(0));

  TSampleStructure elsewhere;
  ts4::TWQuery foreign(&elsewhere.db);
  const std::string message = "A row can only be copied from a query over the same structure";
  ts4test::ExpectError<ts4::EWQueryPanelError>([&] { foreign.Root().InsertClone(0, *bracket); }, 15, message);
  ts4test::ExpectError<ts4::EWQueryPanelError>([&] { copy.Root().InsertClone(0, query.Root()); }, 15,
                                               message);
  EXPECT_EQ(foreign.Root().GetRowCount(), 0);
}

TEST(ConditionTree, ChangingTheFieldDropsWhatNoLongerFits) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  ts4::TFilterCond& cond = s.Cond(query.Root(), "QTY", "Equal", "5");
  cond.SetValue1IsParam(true);
  cond.SetField(&s.Field("CUST_NO"));  // the same kind of value: all stays
  EXPECT_EQ(cond.Operator(), &s.Op("Equal"));
  EXPECT_TRUE(cond.Value1IsParam());
  cond.SetField(&s.Field("CITY"));  // a text: the number and its parameter go
  EXPECT_EQ(cond.Operator(), &s.Op("Equal"));
  EXPECT_EQ(cond.Value1(), "");
  EXPECT_EQ(query.QResult().GetParamCount(), 0);
  cond.SetOperator(&s.Op("Contains"));
  cond.SetValue(1, "ig");
  cond.SetField(&s.Field("TOTAL"));  // numbers are never "contained"
  EXPECT_EQ(cond.Operator(), nullptr);
  EXPECT_EQ(cond.Value1(), "");
  s.Field("STATUS").SetEditType(ts4::etList);
  ts4::TFilterCond& status = s.Cond(query.Root(), "NAME", "Equal", "S");
  status.SetField(&s.Field("STATUS"));  // a name is no status code
  EXPECT_EQ(status.Value1(), "");
  status.SetValue(1, "S");
  status.SetField(&s.Field("CITY"));  // nor a status code a city
  EXPECT_EQ(status.Value1(), "");
}

TEST(ConditionTree, BracketsFollowTheirRowsEnabledState) {
  ts4::TWQuery query;
  query.SetNonEmptyBrackets(false);
  ts4::TFilterBracket* outer = query.Root().AddBracket();
  ts4::TFilterBracket* inner = outer->AddBracket();
  ts4::TFilterCond* a = inner->AddCond();
  ts4::TFilterCond* b = inner->AddCond();
  a->SetEnabled(false);
  EXPECT_TRUE(inner->Enabled());
  b->SetEnabled(false);  // the last enabled row: both brackets above go off, the root never
  EXPECT_FALSE(inner->Enabled());
  EXPECT_FALSE(outer->Enabled());
  EXPECT_TRUE(query.Root().Enabled());
  a->SetEnabled(true);
  EXPECT_TRUE(outer->Enabled());
  inner->ClearRows();  // an empty bracket is off, and on again with its first row
  EXPECT_FALSE(inner->Enabled());
  inner->AddCond();
  EXPECT_TRUE(inner->Enabled());
}

TEST(ConditionTree, NestingIsBounded) {
  TSampleStructure s;
  ts4::TWQuery query(&s.db);
  ts4::TFilterBracket* deepest = &query.Root();
  for (int level = 1; level <= ts4::MaxBracketDepth; ++level) deepest = deepest->AddBracket();
  ts4test::ExpectError<ts4::EWQueryPanelError>([&] { deepest->AddBracket(); }, 10,
                                               "Brackets are nested more than 1000 levels deep");
  EXPECT_EQ(deepest->GetRowCount(), 0);
  s.Cond(*deepest, "QTY", "Equal", "1");  // conditions may still go in, and are written
  EXPECT_EQ(ts4test::WhereLines(query).size(), 2u * (ts4::MaxBracketDepth + 1) + 1);
  // A subtree handed in is measured whole.
  auto subtree = std::make_unique<ts4::TFilterBracket>(query);
  subtree->AddBracket();
  ts4::TFilterBracket* near = static_cast<ts4::TFilterBracket*>(query.Root().GetRow(0));
  for (int level = 2; level < ts4::MaxBracketDepth; ++level)
    near = static_cast<ts4::TFilterBracket*>(near->GetRow(0));
  EXPECT_THROW(near->InsertRow(0, std::move(subtree)), ts4::EWQueryPanelError);
  EXPECT_EQ(near->GetRowCount(), 1);
}

TEST(ConditionTree, StructureItemsGoingAway) {
  auto s = std::make_unique<TSampleStructure>();
  ts4::TWQuery query(&s->db);
  ts4::TFilterCond& city = s->Cond(query.Root(), "CITY", "Equal", "Riga");
  ts4::TFilterCond& qty = s->Cond(query.Root(), "QTY", "Equal", "2");
  query.QResult().ResultFields().Add(s->Field("CITY"));
  query.QResult().ResultFields().Add(s->Field("NAME"));
  EXPECT_EQ(ts4test::Statement(query).size(), 9u);

  s->db.DelField(s->db.IndexOfField(&s->Field("CITY")));
  EXPECT_EQ(city.Field(), nullptr);
  EXPECT_EQ(city.Operator(), nullptr);
  EXPECT_EQ(query.QResult().ResultFields().Count(), 1);
  s->db.DeleteOperatorByName("Equal");
  EXPECT_EQ(qty.Operator(), nullptr);
  EXPECT_EQ(ts4test::Statement(query),
            (std::vector<std::string>{"SELECT DISTINCT C.NAME", "FROM CUSTOMER C"}));

  s->db.DelTable(s->Table("C").Index());
  EXPECT_EQ(query.QResult().ResultFields().Count(), 0);
  s.reset();  // the structure goes first: the query lets go of it
  EXPECT_EQ(query.DbStruct(), nullptr);
  EXPECT_EQ(query.MainTable(), nullptr);
}

}  // namespace
