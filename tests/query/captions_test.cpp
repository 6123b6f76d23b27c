// The captions table: partial and old tables laid over the defaults, old numbered captions.
#include <gtest/gtest.h>

#include "query/captions.h"
#include "query/query.h"
#include "test_support.h"

namespace {

using Lines = std::vector<std::string>;
using ts4test::StringsOf;

/// The default table as the captions loader gives it: each section followed by an empty line.
Lines FullDefaults(const ts4::TWQuery& query) {
  Lines lines = query.DefTitles().Lines();
  lines.insert(lines.begin() + 19, "");  // after the blank line that ends the first section
  lines.emplace_back("");
  return lines;
}

Lines With(Lines lines, const std::string& name, const std::string& value) {
  for (std::string& line : lines)
    if (line.starts_with(name + "=")) line = name + "=" + value;
  return lines;
}

TEST(Captions, PartialTablesGiveTheWholeTable) {
  ts4::TWQuery query;
  const Lines full = FullDefaults(query);
  const std::pair<Lines, Lines> cases[] = {
      {{"[Query Panel]", "ttlAll=every"}, With(full, "ttlAll", "every")},
      {{"[PanelTitles]", "ttlAll=every", " [RFETitles] ", "ttlAsIs=raw"},
       With(With(full, "ttlAll", "every"), "ttlAsIs", "raw")},
      {{"[Query Panel]", "ttlAny=", "ttlUnknown=x", "=y"}, full},
      {{"ttlAll=every"}, full},  // values outside a section are not read
      {{}, full},
  };
  for (const auto& [source, expected] : cases) {
    ts4::TStrings value = StringsOf(source);
    query.SetTitles(value);
    EXPECT_EQ(query.Titles().Lines(), expected) << (source.empty() ? "" : source.front());
    // Old section names are renamed in the given list too.
    for (const std::string& line : value.Lines()) EXPECT_EQ(line.find("Titles]"), std::string::npos);
  }
  EXPECT_EQ(query.GetTitle("ttlNoSuchName"), "");

  // Defaults without sections: plain name=value lines, one list in every role.
  ts4::TStrings table = {"a=1", "b=2", "c=3"};
  ts4::TStrings source = {"b=two", "d=4", "[x]", "c=three"};
  ts4::LoadTitlesFromStrings(table, table, source);
  ts4::LoadTitlesFromStrings(table, table, table);
  EXPECT_EQ(table, (ts4::TStrings{"a=1", "b=two", "c=three"}));
}

TEST(Captions, StoredFormTables) {
  ts4::TWQuery query;
  const Lines full = FullDefaults(query);
  const Lines defaults = query.DefTitles().Lines();
  const std::pair<Lines, Lines> cases[] = {
      {{"[Query Panel]", "ttlFilter=Find @", "ttlAll=every"},
       With(With(full, "ttlFilter", "Find @"), "ttlAll", "every")},
      // Old forms stored caption i as line i, laid over the built-in table.
      {{" Find @ ", "", "every"}, With(With(defaults, "ttlFilter", "Find @"), "ttlAll", "every")},
      // Too short to tell by the third line: a first line with "[" is sectioned.
      {{"[Query Panel]", "ttlAll=every"}, With(full, "ttlAll", "every")},
      {{"Find @"}, With(defaults, "ttlFilter", "Find @")},
      {{}, full},
  };
  for (const auto& [stored, expected] : cases) {
    query.LoadStoredTitles(StringsOf(stored));
    EXPECT_EQ(query.Titles().Lines(), expected) << (stored.empty() ? "" : stored.front());
    EXPECT_EQ(query.DesignTitles(), query.Titles());
  }
}

TEST(Captions, OldNumberedCaptions) {
  // Number 13 has no caption in today's table, numbers above 21 none at all.
  ts4::TWQuery query;
  ts4::TStrings lines;
  for (int i = 0; i < 25; ++i) lines.Add(i == 1 ? "  " : "t" + std::to_string(i));
  query.MergeDFMTitles(lines);
  EXPECT_EQ(query.GetTitle("ttlFilter"), "t0");
  EXPECT_EQ(query.GetTitle("ttlBracket"), "@ of the following apply");  // blank lines change nothing
  EXPECT_EQ(query.GetTitle("ttlSortCaption"), "t17");
  EXPECT_EQ(query.Titles().Count(), query.DefTitles().Count());

  // The keys up to the line count are read: Title3 of three lines, not of two.
  const std::pair<ts4::TStrings, std::string> cases[] = {
      {{"Title3= every ", "x", "y"}, "every"},
      {{"Title3=every", "x"}, "any"},
      {{"Title0=Find @", "Title3="}, "any"},
  };
  for (const auto& [source, any] : cases) {
    ts4::TWQuery old;
    old.LoadOldTitlesFromStrings(source);
    EXPECT_EQ(old.GetTitle("ttlAny"), any) << source[0];
  }
}

}  // namespace
