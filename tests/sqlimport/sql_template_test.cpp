#include "sqlimport/sql_template.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "structure/operator.h"

namespace ts4 {
namespace {

struct TMatchCase {
  std::string_view Template;
  std::string_view Text;
  std::string_view Field;
  bool Matches;
  std::string_view Value1 = {};
  std::string_view Value2 = {};
  bool Bare = false;
};

TEST(SQLTemplate, CapturesTheValuesTheTemplateStandsFor) {
  const TMatchCase cases[] = {
      {"@f = '@1'", "C.CITY = 'Riga'", "C.CITY", true, "Riga"},
      {"@f = '@1'", "C.CITY = 'O''Brien'", "C.CITY", true, "O''Brien"},  // doubling is undone later
      {"@f = '@1'", "C.CITY = ' end '", "C.CITY", true, " end "},        // blanks inside quotes kept
      {"@f = '@1'", "C.CUST_ID = 5", "C.CUST_ID", true, "5", {}, true},  // written bare
      {"@f = '@1'", "C.CUST_ID =   5  ", "c.cust_id", true, "5", {}, true},
      {"@f = '@1'", "C.CUST_ID = 5 'x'", "C.CUST_ID", false},  // not one plain operand
      {"@f = '@1'", "C.CITY = 'x = y'", "C.CITY", true, "x = y"},
      {"@f = '@1'", "C.CITY <> 'Riga'", "C.CITY", false},
      {"@f = '@1'", "C.TOWN = 'Riga'", "C.CITY", false},  // "@f" must be the left-hand side
      {"@f >'@1'", "O.TOTAL > 10", "O.TOTAL", true, "10", {}, true},
      {"@f >'@1'", "O.TOTAL >= 10", "O.TOTAL", true, "= 10", {}, true},  // why ">=" is tried first
      {"@f is null", "O.SHIP_DATE is NULL", "O.SHIP_DATE", true},
      {"@f is null", "O.SHIP_DATE is null or", "O.SHIP_DATE", false},
      {"@f in (@1)", "C.CITY in ('a','b, c')", "C.CITY", true, "'a','b, c'"},
      {"@f in (@1)", "C.CUST_ID IN (1, 2)", "C.CUST_ID", true, "1, 2"},
      {"@f like '@1%'", "C.CITY like 'Ri%'", "C.CITY", true, "Ri"},
      {"@f like '%@1%'", "C.CITY like '%100%%'", "C.CITY", true, "100%"},
      {"@f like '%@1%'", "C.CITY like 'Ri%'", "C.CITY", false},
      {"not(@f like '%@1%')", "not(C.CITY like '%iga%')", "C.CITY", true, "iga"},
      {"@f between '@1' and '@2'", "O.TOTAL between 1 and 5", "O.TOTAL", true, "1", "5", true},
      {"@f between '@1' and '@2'", "C.CITY between 'a'' and ''b' and 'c'", "C.CITY", true, "a'' and ''b",
       "c"},
      {"@f between '@1' and '@2'", "C.CITY between 'a and b' and 'c and d'", "C.CITY", true, "a and b",
       "c and d"},
      {"@f = '@1'", "I.QUANTITY * I.UNIT_PRICE = 7", "I.QUANTITY*I.UNIT_PRICE", true, "7", {}, true},
  };
  for (const TMatchCase& c : cases) {
    SCOPED_TRACE(std::string(c.Template) + " ~ " + std::string(c.Text));
    TSQLCaptures captures;
    const std::string text(c.Text);
    ASSERT_EQ(TSQLTemplate(c.Template).Match(TSQLMatchText(text, c.Field), captures), c.Matches);
    if (!c.Matches) continue;
    EXPECT_EQ(captures.Value(1), c.Value1);
    EXPECT_EQ(captures.Value(2), c.Value2);
    EXPECT_EQ(captures.Bare, c.Bare);
  }
}

TEST(SQLTemplate, EveryStandardTemplateReadsBackWhatItWrites) {
  for (const TStandardOperator& op : StandardOperators) {
    SCOPED_TRACE(op.SQLName);
    const TSQLTemplate pattern(op.SQLName);
    for (const bool bare : {false, true}) {
      TSQLCaptures written;
      written.Text = {"O.STATUS", "x'' and ''y", "z"};
      written.Bare = bare;
      if (bare) written.Text[1] = "17";
      const std::string text = pattern.Fill(written);
      TSQLCaptures read;
      ASSERT_TRUE(pattern.Match(TSQLMatchText(text, "O.STATUS"), read)) << text;
      for (int k = 1; k <= 2; ++k) {
        if (op.SQLName.find("@" + std::to_string(k)) != std::string_view::npos) {
          EXPECT_EQ(read.Value(k), written.Value(k)) << text;
        }
      }
    }
  }
}

TEST(SQLTemplate, WeightCountsWhatTheTemplateSpellsOut) {
  EXPECT_GT(TSQLTemplate("@f like '%@1%'").Weight(), TSQLTemplate("@f like '@1%'").Weight());
  EXPECT_GT(TSQLTemplate("@f >= '@1'").Weight(), TSQLTemplate("@f >'@1'").Weight());
  EXPECT_GT(TSQLTemplate("@f <= '@1'").Weight(), TSQLTemplate("@f < '@1'").Weight());
}

TEST(SQLRewriteRule, BringsOtherSpellingsOfNotEqualIntoTheTemplateShape) {
  const TSQLRewriteRule notEqual("@f != '@1'|->@f <> '@1'");
  const TSQLRewriteRule notOfEqual(" not(@f = '@1') |-> @f <> '@1' ");
  const struct {
    const TSQLRewriteRule& Rule;
    std::string Text;
    std::string Expected;
  } cases[] = {
      {notEqual, "C.CITY != 'Riga'", "C.CITY <> 'Riga'"},
      {notEqual, "C.CUST_ID != 5", "C.CUST_ID <> 5"},
      {notOfEqual, "not(C.CITY = 'it''s')", "C.CITY <> 'it''s'"},
      {notOfEqual, "not(C.CITY < 'a')", "not(C.CITY < 'a')"},  // left alone
  };
  for (const auto& c : cases) {
    std::string text = c.Text;
    const TSQLMatchText prepared(c.Text, c.Text.find("CUST") != std::string::npos ? "C.CUST_ID" : "C.CITY");
    c.Rule.Apply(prepared, text);
    EXPECT_EQ(text, c.Expected);
  }
}

TEST(SQLTemplate, HostileTextsEndQuickly) {
  // Many places where each marker could end: backtracking is bounded.
  std::string text = "X between ";
  for (int i = 0; i < 20000; ++i) text += "and ";
  const auto start = std::chrono::steady_clock::now();
  TSQLCaptures captures;
  EXPECT_FALSE(TSQLTemplate("@f between @1 and @2 and @3 x").Match(TSQLMatchText(text, "X"), captures));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

}  // namespace
}  // namespace ts4
