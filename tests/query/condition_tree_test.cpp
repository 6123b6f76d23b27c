// Rows as data: identifiers, insertion places, deletion, enabling, nesting, notifications.
#include <gtest/gtest.h>

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

TEST(ConditionTree, BadIndexesRaise) {
  ts4::TWQuery query;
  ts4test::ExpectIndexError([&] { query.Root().DeleteRow(0); }, 0);
  ts4test::ExpectIndexError([&] { query.Root().InsertCond(1); }, 1);
  ts4test::ExpectIndexError([&] { query.Root().AddCond()->SetValue(3, "x"); }, 3);
}

TEST(ConditionTree, CheckIfAllDisabled) {
  struct Case {
    bool bracketOn;
    std::vector<bool> children;
    bool expected;
  };
  const Case cases[] = {{true, {}, false},     {true, {false, false}, false}, {true, {false, true}, true},
                        {false, {true}, true}, {false, {false}, false},       {false, {}, false}};
  for (const Case& c : cases) {
    ts4::TWQuery query;
    ts4::TFilterBracket* bracket = query.Root().AddBracket();
    bracket->SetEnabled(c.bracketOn);
    for (bool on : c.children) bracket->AddCond()->SetEnabled(on);
    bracket->CheckIfAllDisabled();
    EXPECT_EQ(bracket->Enabled(), c.expected);
  }
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
