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

TEST(SectionsRead, ReturnsBodyAndIndexAfterIt) {
  TStrings dest{"stale"};
  EXPECT_EQ(ts4::XReadSLSectionValues(0, Sample, "Options", dest), 3);
  EXPECT_EQ(dest.Lines(), (Lines{"Name=Demo", "Version=2"}));
}

TEST(SectionsRead, LastSectionRunsToTheEndOfTheList) {
  TStrings dest;
  EXPECT_EQ(ts4::XReadSLSectionValues(0, Sample, "Tables", dest), 8);
  EXPECT_EQ(dest.Lines(), (Lines{"Orders", "", "Customers"}));  // empty lines belong to the body
}

TEST(SectionsRead, EmptySectionGivesNoLines) {
  TStrings dest{"stale"};
  EXPECT_EQ(ts4::XReadSLSectionValues(0, Sample, "Empty", dest), 4);
  EXPECT_TRUE(dest.Empty());
}

TEST(SectionsRead, ContinuesFromTheReturnedIndex) {
  TStrings dest;
  int next = ts4::XReadSLSectionValues(0, Sample, "Options", dest);
  next = ts4::XReadSLSectionValues(next, Sample, "Empty", dest);
  EXPECT_EQ(next, 4);
  next = ts4::XReadSLSectionValues(next, Sample, "Tables", dest);
  EXPECT_EQ(next, 8);
  EXPECT_EQ(dest.Lines(), (Lines{"Orders", "", "Customers"}));
  // From the end of the list the search wraps round to the top.
  EXPECT_EQ(ts4::XReadSLSectionValues(next, Sample, "Options", dest), 3);
  EXPECT_EQ(dest.Lines(), (Lines{"Name=Demo", "Version=2"}));
}

TEST(SectionsRead, FindsSectionBeforeTheStart) {
  TStrings dest;
  EXPECT_EQ(ts4::XReadSLSectionValues(5, Sample, "Options", dest), 3);
  EXPECT_EQ(dest.Lines(), (Lines{"Name=Demo", "Version=2"}));
  EXPECT_EQ(ts4::XReadSLSectionValues(4, Sample, "Empty", dest), 4);
}

TEST(SectionsRead, RepeatedSectionIsFoundFromTheStart) {
  const TStrings list{"[Row]", "a", "[Row]", "b", "[Row]", "c"};
  TStrings dest;
  int next = ts4::XReadSLSectionValues(0, list, "Row", dest);
  EXPECT_EQ(dest.Lines(), Lines{"a"});
  next = ts4::XReadSLSectionValues(next, list, "Row", dest);
  EXPECT_EQ(dest.Lines(), Lines{"b"});
  next = ts4::XReadSLSectionValues(next, list, "Row", dest);
  EXPECT_EQ(dest.Lines(), Lines{"c"});
  EXPECT_EQ(next, 6);
  // Past the last one the search wraps to the first.
  EXPECT_EQ(ts4::XReadSLSectionValues(next, list, "Row", dest), 2);
  EXPECT_EQ(dest.Lines(), Lines{"a"});
}

TEST(SectionsRead, StartOutsideTheListSearchesFromTheTop) {
  TStrings dest;
  EXPECT_EQ(ts4::XReadSLSectionValues(-5, Sample, "Tables", dest), 8);
  EXPECT_EQ(ts4::XReadSLSectionValues(100, Sample, "Options", dest), 3);
  EXPECT_EQ(dest.Lines(), (Lines{"Name=Demo", "Version=2"}));
}

TEST(SectionsRead, HeaderMatchIgnoresCaseAndSurroundingBlanks) {
  const TStrings list{"  [TABLES]\t", "Orders", " [Links] ", "x"};
  TStrings dest;
  EXPECT_EQ(ts4::XReadSLSectionValues(0, list, "tables", dest), 2);
  EXPECT_EQ(dest.Lines(), Lines{"Orders"});
  EXPECT_EQ(ts4::XReadSLSectionValues(0, list, "LINKS", dest), 4);
  EXPECT_EQ(dest.Lines(), Lines{"x"});
}

TEST(SectionsRead, HeaderMustMatchTheWholeName) {
  const TStrings list{"[Tables2]", "a", "[Table]", "b", "Tables", "[Tables]x", "c"};
  TStrings dest{"stale"};
  EXPECT_EQ(ts4::XReadSLSectionValues(0, list, "Tables", dest), -1);
  EXPECT_TRUE(dest.Empty());
}

TEST(SectionsRead, MissingSectionEmptiesDestAndReturnsMinusOne) {
  TStrings dest{"stale", "lines"};
  EXPECT_EQ(ts4::XReadSLSectionValues(0, Sample, "Links", dest), -1);
  EXPECT_TRUE(dest.Empty());
  dest.Add("again");
  EXPECT_EQ(ts4::XReadSLSectionValues(0, TStrings{}, "Options", dest), -1);
  EXPECT_TRUE(dest.Empty());
}

TEST(SectionsRead, BodyStopsAtAnyHeader) {
  const TStrings list{"[A]", "1", "  [B]  ", "2"};
  TStrings dest;
  EXPECT_EQ(ts4::XReadSLSectionValues(0, list, "A", dest), 2);
  EXPECT_EQ(dest.Lines(), Lines{"1"});
}

TEST(SectionsRead, LinesBeforeTheFirstHeaderBelongToNoSection) {
  const TStrings list{"orphan", "[A]", "1"};
  TStrings dest;
  EXPECT_EQ(ts4::XReadSLSectionValues(0, list, "A", dest), 3);
  EXPECT_EQ(dest.Lines(), Lines{"1"});
}

// ---------------------------------------------------------------------------
// Section names

TEST(SectionsList, ListsNamesInOrder) {
  TStrings names{"stale"};
  ts4::ReadSLSections(Sample, names);
  EXPECT_EQ(names.Lines(), (Lines{"Options", "Empty", "Tables"}));
}

TEST(SectionsList, KeepsCaseAndDuplicatesAndTrimsTheLine) {
  const TStrings list{"x", " [Row] ", "a", "[ROW]", "[a b]", "not [a] header"};
  TStrings names;
  ts4::ReadSLSections(list, names);
  EXPECT_EQ(names.Lines(), (Lines{"Row", "ROW", "a b"}));
}

TEST(SectionsList, NoHeadersGivesEmptyList) {
  TStrings names{"stale"};
  ts4::ReadSLSections(TStrings{"a", "b=c", "[unclosed"}, names);
  EXPECT_TRUE(names.Empty());
}

TEST(SectionsList, HeaderName) {
  EXPECT_EQ(ts4::SectionHeaderName("[Main]"), "Main");
  EXPECT_EQ(ts4::SectionHeaderName("  [Main]\r"), "Main");
  EXPECT_EQ(ts4::SectionHeaderName("Main"), "");
  EXPECT_EQ(ts4::SectionHeaderName("[Main"), "");
  EXPECT_EQ(ts4::SectionHeaderName("Main]"), "");
  EXPECT_EQ(ts4::SectionHeaderName("["), "");
}

}  // namespace
