#include "foundation/strings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "foundation/error.h"
#include "test_support.h"

namespace {

using ts4::TStrings;
using ts4test::ExpectIndexError;
using ts4test::StringsOf;
using Lines = std::vector<std::string>;

// ---------------------------------------------------------------------------
// Comma text

// Each list is written as the text (when one is given) and reads back from it as the same list.
TEST(StringsCommaText, WritesQuotesOnlyWhereNeededAndReadsBack) {
  const struct {
    Lines lines;
    const char* text;
  } cases[] = {
      {{}, ""},
      {{"a", "b", "c"}, "a,b,c"},
      {{""}, R"("")"},
      {{"a", "", "b"}, "a,,b"},  // empty items are not quoted
      {{"a", ""}, "a,"},
      {{"a b", "c"}, R"("a b",c)"},
      {{"a,b"}, R"("a,b")"},
      {{R"(say "hi")"}, R"("say ""hi""")"},
      {{R"(")"}, R"("""")"},
      {{"a\tb"}, "\"a\tb\""},
      {{" a"}, R"(" a")"},
      {{"a=b", "x;y", "'q'"}, "a=b,x;y,'q'"},  // other punctuation stays plain
      {{"Müller", "Straße"}, "Müller,Straße"},
      {{"a", "", "", "b", ""}, nullptr},
      {{" lead", "trail "}, nullptr},
      {{R"("quoted")", R"(in"side)", R"(end")"}, nullptr},
      {{"tab\there", "new\r\nline"}, nullptr},
      {{"[Section]", "a=1,2", " ", ""}, nullptr},
      {{std::string("nul\0byte", 8), "x"}, nullptr},
  };
  for (const auto& c : cases) {
    const std::string text = StringsOf(c.lines).CommaText();
    SCOPED_TRACE(text);
    if (c.text != nullptr) {
      EXPECT_EQ(text, c.text);
    }
    TStrings back{"old"};
    back.SetCommaText(text);
    EXPECT_EQ(back.Lines(), c.lines);
  }
}

TEST(StringsCommaText, ReadsLikeThePlatform) {
  const struct {
    std::string text;
    Lines expected;
  } cases[] = {
      {"  \t ", {}},
      {"   a,b", {"a", "b"}},
      {"a , b", {"a", "b"}},
      {"a b", {"a", "b"}},  // a blank or a control character splits an unquoted item
      {"a\tb\nc", {"a", "b", "c"}},
      {R"("a b, c",d)", {"a b, c", "d"}},
      {R"("abc, d)", {"abc, d"}},  // an unclosed quote runs to the end
      {R"("a"b)", {"a", "b"}},     // glued after a quote: a new item
      {R"("a""b" "c")", {R"(a"b)", "c"}},
      {R"("a",)", {"a", ""}},
      {std::string("a,b\0c", 5), {"a", "b"}},  // NUL ends the text
      {"a, ", {"a"}},
      {R"(a"b)", {R"(a"b)"}},
      {"Müller,\"Groß Straße\"", {"Müller", "Groß Straße"}},
  };
  for (const auto& c : cases) {
    TStrings list{"old1", "old2"};
    list.SetCommaText(c.text);
    EXPECT_EQ(list.Lines(), c.expected) << c.text;
  }
}

// ---------------------------------------------------------------------------
// Names and values

TEST(StringsValues, NamesMatchWholeIgnoringAsciiCaseAndTheFirstWins) {
  const TStrings list{"Alpha=1",  "BETA=2", "Equal=is equal to", "Expr=a=b", "Empty=", "=anonymous",
                      "Alphabet", "Alp=x",  "beta=second"};
  const struct {
    const char* name;
    int index;
    const char* value;
  } cases[] = {{"alpha", 0, "1"},    {"Beta", 1, "2"}, {"Equal", 2, "is equal to"},
               {"EXPR", 3, "a=b"},   {"Empty", 4, ""}, {"Alp", 7, "x"},
               {"Alphabet", -1, ""}, {"Alph", -1, ""}, {"delta", -1, ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(list.IndexOfName(c.name), c.index) << c.name;
    EXPECT_EQ(list.Values(c.name), c.value) << c.name;
  }
  EXPECT_EQ(list.Names(3), "Expr");
  EXPECT_EQ(list.Names(5), "");
  EXPECT_EQ(list.ValueFromIndex(5), "anonymous");
  EXPECT_EQ(list.Names(6), "") << "a line without \"=\" has no name";
  EXPECT_EQ(list.IndexOf("ALPHABET"), 6);
  EXPECT_EQ(list.IndexOf("Alpha"), -1);
  EXPECT_EQ(list.ValueFromIndex(6), "");
}

TEST(StringsValues, SetValueReplacesAppendsOrDeletes) {
  TStrings list{"a=1", "b=2", "c=3"};
  list.SetValue("B", "20");
  EXPECT_EQ(list.Lines(), (Lines{"a=1", "B=20", "c=3"}));
  list.SetValue("d", "x=y");
  EXPECT_EQ(list.Lines(), (Lines{"a=1", "B=20", "c=3", "d=x=y"}));
  list.SetValue("b", "");
  list.SetValue("missing", "");
  EXPECT_EQ(list.Lines(), (Lines{"a=1", "c=3", "d=x=y"}));
}

// ---------------------------------------------------------------------------
// Text

// Lines join with CR LF and no final break; reading splits at every break.
TEST(StringsText, JoinsWithCrLfAndSplitsAtEveryLineBreak) {
  const struct {
    Lines lines;
    std::string text;
    bool written;  // whether the lines write this text, or only read from it
  } cases[] = {
      {{}, "", true},
      {{"abc"}, "abc", true},
      {{"a", "b"}, "a\r\nb", true},
      {{"a", ""}, "a\r\n", true},
      {{"", "", "c"}, "\r\n\r\nc", true},
      {{"", ""}, "\r\n", true},
      {{"", "", ""}, "\r\n\r\n", true},
      {{"", "a", ""}, "\r\na\r\n", true},
      {{"Müller", "  a  ", "\tb,c"}, "Müller\r\n  a  \r\n\tb,c", true},
      {{"a", "b"}, "a\nb", false},
      {{"a", "b"}, "a\rb", false},
      {{"a", "b", "c", "d"}, "a\r\nb\nc\rd", false},
      {{"a", "", "b"}, "a\n\rb", false},  // LF CR is two breaks
  };
  for (const auto& c : cases) {
    if (c.written) {
      EXPECT_EQ(StringsOf(c.lines).Text(), c.text);
    }
    TStrings list{"old"};
    list.SetText(c.text);
    EXPECT_EQ(list.Lines(), c.lines) << ::testing::PrintToString(c.text);
  }
}

// ---------------------------------------------------------------------------
// Files

TEST(StringsFile, SaveWritesCrLfAfterEveryLineAndLoadReadsItBack) {
  ts4test::TTempFile file("roundtrip.txt");
  const TStrings original{"[Main]", "Name=Müller", "", "  indented", "last"};
  original.SaveToFile(file.Name());
  EXPECT_EQ(file.Read(), "[Main]\r\nName=Müller\r\n\r\n  indented\r\nlast\r\n");
  TStrings loaded{"stale"};
  loaded.LoadFromFile(file.Name());
  EXPECT_EQ(loaded, original);

  // A final break ends the last line; LF alone is a break too.
  const std::pair<std::string, Lines> files[] = {{"", {}},
                                                 {"\r\n", {""}},
                                                 {"\r\n\r\n", {"", ""}},
                                                 {"a\r\n\r\n", {"a", ""}},
                                                 {"a\nb\n", {"a", "b"}},
                                                 {"a\r\nb", {"a", "b"}}};
  for (const auto& [bytes, lines] : files) {
    file.Write(bytes);
    loaded.LoadFromFile(file.Name());
    EXPECT_EQ(loaded.Lines(), lines) << ::testing::PrintToString(bytes);
  }
}

// A missing file and a path that opens but cannot be read (a directory) both
// give the library's error and leave the list as it was.
TEST(StringsFile, UnreadableOrUnwritablePathsRaise) {
  const std::filesystem::path temp = std::filesystem::temp_directory_path();
  const std::string missing = (temp / "ts4_no_such_dir" / "missing.txt").string();
  for (const std::string& name : {missing, temp.string()}) {
    TStrings list{"kept"};
    ts4test::ExpectError([&] { list.LoadFromFile(name); }, 0, "Cannot open file \"" + name + "\"");
    EXPECT_EQ(list.Lines(), Lines{"kept"}) << name;
  }
  ts4test::ExpectError([&] { TStrings{"a"}.SaveToFile(missing); }, 0,
                       "Cannot write file \"" + missing + "\"");
}

// ---------------------------------------------------------------------------
// Editing and indices

TEST(StringsEditing, AddInsertDeleteMoveKeepOrder) {
  TStrings list{"b"};
  EXPECT_EQ(list.Add("d"), 1);
  list.Insert(0, "a");
  list.Insert(2, "c");
  list.Insert(4, "e");  // at Count: appends
  EXPECT_EQ(list.Lines(), (Lines{"a", "b", "c", "d", "e"}));
  list.Delete(2);
  list.Delete(0);
  list.SetStrings(1, "D");
  list.AddStrings(TStrings{"f"});
  EXPECT_EQ(list.Lines(), (Lines{"b", "D", "e", "f"}));
  // A move takes the line out, then inserts it at the target.
  const std::pair<std::pair<int, int>, Lines> moves[] = {
      {{0, 2}, {"D", "e", "b", "f"}}, {{3, 0}, {"f", "D", "e", "b"}}, {{1, 1}, {"f", "D", "e", "b"}}};
  for (const auto& [move, expected] : moves) {
    list.Move(move.first, move.second);
    EXPECT_EQ(list.Lines(), expected) << move.first << " to " << move.second;
  }
}

TEST(StringsEditing, BadIndicesRaiseListIndexError) {
  TStrings list{"a", "b"};
  ExpectIndexError([&] { (void)list.Strings(2); }, 2);
  ExpectIndexError([&] { (void)list[-1]; }, -1);
  ExpectIndexError([&] { list.SetStrings(5, "x"); }, 5);
  ExpectIndexError([&] { list.Insert(3, "x"); }, 3);
  ExpectIndexError([&] { list.Delete(2); }, 2);
  ExpectIndexError([&] { list.Move(2, 0); }, 2);
  ExpectIndexError([&] { (void)list.Names(7); }, 7);
  ExpectIndexError([&] { (void)list.ValueFromIndex(-3); }, -3);
  EXPECT_EQ(list.Lines(), (Lines{"a", "b"}));  // failed edits leave the list alone
}

}  // namespace
