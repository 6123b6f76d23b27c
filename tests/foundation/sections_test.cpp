#include "foundation/sections.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/strings.h"

namespace {

using ts4::TStrings;
using Lines = std::vector<std::string>;

// Three sections, the second with an empty body, as a structure text might hold them.
const TStrings Sample{
    "[Options]",  //  0
    "Name=Demo",  //  1
    "Version=2",  //  2
    "[Empty]",    //  3
    "[Tables]",   //  4
    "Orders",     //  5
    "",           //  6
    "Customers",  //  7
};

// The body of the first section of that name from the start on, wrapping round to the top, and the
// index after it; -1 and no lines when there is none.
TEST(SectionsRead, GivesTheBodyAndTheIndexAfterIt) {
  const TStrings repeated{"[Row]", "a", "[Row]", "b", "[Row]", "c"};
  const TStrings blanks{"orphan", "  [TABLES]\t", "Orders", " [Links] ", "x"};
  const TStrings similar{"[Tables2]", "a", "[Table]", "b", "Tables", "[Tables]x", "c"};
  const TStrings empty;
  const Lines options = {"Name=Demo", "Version=2"};
  const struct {
    const char* what;
    const TStrings& list;
    int start;
    const char* name;
    int next;
    Lines body;
  } cases[] = {
      {"first", Sample, 0, "Options", 3, options},
      {"empty lines belong to the body of the last", Sample, 0, "Tables", 8, {"Orders", "", "Customers"}},
      {"empty body", Sample, 0, "Empty", 4, {}},
      {"from the index returned", Sample, 3, "Empty", 4, {}},
      {"before the start", Sample, 5, "Options", 3, options},
      {"just before the start", Sample, 4, "Empty", 4, {}},
      {"from the end of the list", Sample, 8, "Options", 3, options},
      {"start before the list", Sample, -5, "Tables", 8, {"Orders", "", "Customers"}},
      {"start past the list", Sample, 100, "Options", 3, options},
      {"repeated, first", repeated, 0, "Row", 2, {"a"}},
      {"repeated, second", repeated, 2, "Row", 4, {"b"}},
      {"repeated, third", repeated, 4, "Row", 6, {"c"}},
      {"repeated, past the last", repeated, 6, "Row", 2, {"a"}},
      {"case and blanks around the header", blanks, 0, "tables", 3, {"Orders"}},
      {"a header with blanks ends the body before", blanks, 0, "LINKS", 5, {"x"}},
      {"only whole names", similar, 0, "Tables", -1, {}},
      {"missing", Sample, 0, "Links", -1, {}},
      {"empty list", empty, 0, "Options", -1, {}},
  };
  for (const auto& c : cases) {
    TStrings body{"stale", "lines"};
    EXPECT_EQ(ts4::XReadSLSectionValues(c.start, c.list, c.name, body), c.next) << c.what;
    EXPECT_EQ(body.Lines(), c.body) << c.what;
  }
}

// ---------------------------------------------------------------------------
// Section names

TEST(SectionsList, ListsTrimmedHeadersInOrderWithCaseAndDuplicates) {
  const std::pair<TStrings, Lines> cases[] = {
      {Sample, {"Options", "Empty", "Tables"}},
      {{"x", " [Row] ", "a", "[ROW]", "[a b]", "not [a] header"}, {"Row", "ROW", "a b"}},
      {{"a", "b=c", "[unclosed"}, {}},
      {{"[\\Main]", " [\\x] ", "[Row]"}, {"Row"}},  // escaped body lines are no headers
  };
  for (const auto& [list, expected] : cases) {
    TStrings names{"stale"};
    ts4::ReadSLSections(list, names);
    EXPECT_EQ(names.Lines(), expected);
  }
}

TEST(SectionsList, HeaderName) {
  EXPECT_EQ(ts4::SectionHeaderName("[Main]"), "Main");
  EXPECT_EQ(ts4::SectionHeaderName("  [Main]\r"), "Main");
  for (const char* line : {"Main", "[Main", "Main]", "[", "[\\Main]"})
    EXPECT_EQ(ts4::SectionHeaderName(line), "") << line;
}

// ---------------------------------------------------------------------------
// Body lines the format cannot hold as they are

TEST(SectionsEscape, StoresSuchLinesEscapedAndReadsThemBackInTheBody) {
  const std::pair<std::string, std::string> cases[] = {
      // Ordinary lines, the escape's own characters in them included, stay as they are.
      {"Name=Demo", "Name=Demo"},
      {"", ""},
      {" [unclosed", " [unclosed"},
      {"a\\nb", "a\\nb"},
      {"[\\x", "[\\x"},
      {"x]", "x]"},
      // Line breaks, and lines that would read as a header.
      {"Value=a\nb", "[\\Value=a\\nb]"},
      {"cr\ronly", "[\\cr\\ronly]"},
      {"crlf\r\n", "[\\crlf\\r\\n]"},
      {"[Row]", "[\\[Row]]"},
      {" [Row] \t", "[\\ [Row] \t]"},
      {"[]", "[\\[]]"},
      {"[\\x]", "[\\[\\\\x]]"},
      {"\\\n\\", "[\\\\\\\\n\\\\]"},
  };
  for (const auto& [line, stored] : cases) {
    EXPECT_EQ(ts4::EscapeSectionLine(line), stored) << testing::PrintToString(line);
    TStrings body;
    ts4::XReadSLSectionValues(0, TStrings{"[S]", stored, "x", "[T]"}, "S", body);
    EXPECT_EQ(body.Lines(), (Lines{line, "x"})) << testing::PrintToString(line);
  }
  // Escapes no writer makes are kept as they stand.
  EXPECT_EQ(ts4::UnescapeSectionLine("[\\a\\qb\\]"), "a\\qb\\");
}

}  // namespace
