#include "foundation/strings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "foundation/error.h"
#include "test_support.h"

namespace {

using ts4test::ExpectIndexError;

using ts4::TStrings;
using Lines = std::vector<std::string>;

TStrings FromLines(const Lines& lines) {
  TStrings list;
  for (const std::string& line : lines) list.Add(line);
  return list;
}

Lines ReadComma(std::string_view text) {
  TStrings list;
  list.SetCommaText(text);
  return list.Lines();
}

Lines ReadText(std::string_view text) {
  TStrings list;
  list.SetText(text);
  return list.Lines();
}

// A file under the temporary directory that is removed again at the end of the test.
class TempFile {
 public:
  // The name includes the running test's name, so that tests run in parallel
  // processes never share a file.
  explicit TempFile(const std::string& name)
      : path_(std::filesystem::temp_directory_path() / UniqueName(name)) {}
  ~TempFile() {
    std::error_code ec;
    std::filesystem::remove(path_, ec);
  }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  [[nodiscard]] std::string Name() const { return path_.string(); }
  void Write(const std::string& bytes) const {
    std::ofstream out(path_, std::ios::binary | std::ios::trunc);
    out << bytes;
  }
  [[nodiscard]] std::string Read() const {
    std::ifstream in(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }

 private:
  static std::string UniqueName(const std::string& name) {
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string unique = "ts4_" + std::string(info->test_suite_name()) + "_" + info->name() + "_" + name;
    for (char& c : unique)
      if (c == '/') c = '_';
    return unique;
  }
  std::filesystem::path path_;
};

// ---------------------------------------------------------------------------
// Writing comma text

struct CommaWriteCase {
  const char* label;
  Lines lines;
  std::string expected;
};

class CommaTextWrite : public ::testing::TestWithParam<CommaWriteCase> {};

TEST_P(CommaTextWrite, QuotesOnlyWhereNeeded) {
  EXPECT_EQ(FromLines(GetParam().lines).CommaText(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Strings, CommaTextWrite,
    ::testing::Values(
        CommaWriteCase{"Empty", {}, ""}, CommaWriteCase{"Plain", {"a", "b", "c"}, "a,b,c"},
        CommaWriteCase{"SingleEmptyLine", {""}, R"("")"},
        CommaWriteCase{"EmptyItemsNotQuoted", {"a", "", "b"}, "a,,b"},
        CommaWriteCase{"TwoEmptyLines", {"", ""}, ","}, CommaWriteCase{"TrailingEmpty", {"a", ""}, "a,"},
        CommaWriteCase{"LeadingEmpty", {"", "a"}, ",a"}, CommaWriteCase{"Blank", {"a b", "c"}, R"("a b",c)"},
        CommaWriteCase{"Comma", {"a,b"}, R"("a,b")"},
        CommaWriteCase{"QuoteDoubled", {R"(say "hi")"}, R"("say ""hi""")"},
        CommaWriteCase{"LoneQuote", {R"(")"}, R"("""")"}, CommaWriteCase{"Tab", {"a\tb"}, "\"a\tb\""},
        CommaWriteCase{"ControlChar", {"a\x01"}, "\"a\x01\""},
        CommaWriteCase{"LeadingBlank", {" a"}, R"(" a")"},
        CommaWriteCase{"OtherPunctuationPlain", {"a=b", "x;y", "'q'"}, "a=b,x;y,'q'"},
        CommaWriteCase{"Utf8NotQuoted", {"Müller", "Straße"}, "Müller,Straße"}),
    [](const ::testing::TestParamInfo<CommaWriteCase>& info) { return std::string(info.param.label); });

// ---------------------------------------------------------------------------
// Reading comma text

struct CommaReadCase {
  const char* label;
  std::string text;
  Lines expected;
};

class CommaTextRead : public ::testing::TestWithParam<CommaReadCase> {};

TEST_P(CommaTextRead, SplitsLikeThePlatform) {
  EXPECT_EQ(ReadComma(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Strings, CommaTextRead,
    ::testing::Values(CommaReadCase{"Empty", "", {}}, CommaReadCase{"OnlyBlanks", "  \t ", {}},
                      CommaReadCase{"Plain", "a,b,c", {"a", "b", "c"}},
                      CommaReadCase{"LeadingBlanksSkipped", "   a,b", {"a", "b"}},
                      CommaReadCase{"BlanksAroundCommas", "a , b", {"a", "b"}},
                      CommaReadCase{"BlankSplitsUnquoted", "a b", {"a", "b"}},
                      CommaReadCase{"ControlCharSplitsUnquoted", "a\tb\nc", {"a", "b", "c"}},
                      CommaReadCase{"QuotedKeepsBlanksAndCommas", R"("a b, c",d)", {"a b, c", "d"}},
                      CommaReadCase{"DoubledQuotesUndone", R"("say ""hi""")", {R"(say "hi")"}},
                      CommaReadCase{"QuotedEmpty", R"("")", {""}},
                      CommaReadCase{"UnclosedQuoteRunsToEnd", R"("abc, d)", {"abc, d"}},
                      CommaReadCase{"GluedAfterQuoteIsNewItem", R"("a"b)", {"a", "b"}},
                      CommaReadCase{"GluedQuotedItems", R"("a""b" "c")", {R"(a"b)", "c"}},
                      CommaReadCase{"TrailingComma", "a,", {"a", ""}},
                      CommaReadCase{"TrailingCommaAfterQuoted", R"("a",)", {"a", ""}},
                      CommaReadCase{"NulEndsTheText", std::string("a,b\0c", 5), {"a", "b"}},
                      CommaReadCase{"TrailingCommaThenBlank", "a, ", {"a"}},
                      CommaReadCase{"LeadingComma", ",a", {"", "a"}},
                      CommaReadCase{"OnlyComma", ",", {"", ""}},
                      CommaReadCase{"EmptyMiddle", "a,,b", {"a", "", "b"}},
                      CommaReadCase{"QuoteInsideUnquoted", R"(a"b)", {R"(a"b)"}},
                      CommaReadCase{"Utf8", "Müller,\"Groß Straße\"", {"Müller", "Groß Straße"}}),
    [](const ::testing::TestParamInfo<CommaReadCase>& info) { return std::string(info.param.label); });

TEST(StringsCommaText, SettingReplacesTheOldLines) {
  TStrings list{"old1", "old2", "old3"};
  list.SetCommaText("x");
  EXPECT_EQ(list.Lines(), Lines{"x"});
  list.SetCommaText("");
  EXPECT_TRUE(list.Empty());
}

// ---------------------------------------------------------------------------
// Comma text round trip: whatever is written reads back as the same list.

class CommaTextRoundTrip : public ::testing::TestWithParam<Lines> {};

TEST_P(CommaTextRoundTrip, ReadsBackEqual) {
  const TStrings original = FromLines(GetParam());
  TStrings back;
  back.SetCommaText(original.CommaText());
  EXPECT_EQ(back.Lines(), original.Lines()) << "comma text: " << original.CommaText();
}

INSTANTIATE_TEST_SUITE_P(
    Strings, CommaTextRoundTrip,
    ::testing::Values(Lines{}, Lines{""}, Lines{"", ""}, Lines{"", "", ""}, Lines{"a", ""}, Lines{"", "a"},
                      Lines{"a", "", "b"}, Lines{"a", "", "", "b", ""}, Lines{" "}, Lines{" lead", "trail "},
                      Lines{"a b c"}, Lines{"a,b", ",", ",,"}, Lines{"\"", "\"\""},
                      Lines{R"("quoted")", R"(in"side)", R"(end")"}, Lines{"tab\there", "new\r\nline"},
                      Lines{"Müller", "Groß Straße", "naïve,café"}, Lines{"Name=Value", "Sel=\"x, y\""},
                      Lines{"[Section]", "a=1,2", " ", ""}, Lines{std::string("nul\0byte", 8), "x"}));

// ---------------------------------------------------------------------------
// Names and values

TEST(StringsValues, NamesAreMatchedIgnoringAsciiCase) {
  TStrings list{"Alpha=1", "BETA=2", "gamma=3"};
  EXPECT_EQ(list.IndexOfName("alpha"), 0);
  EXPECT_EQ(list.IndexOfName("Beta"), 1);
  EXPECT_EQ(list.IndexOfName("GAMMA"), 2);
  EXPECT_EQ(list.IndexOfName("delta"), -1);
  EXPECT_EQ(list.Values("beta"), "2");
  EXPECT_EQ(list.Values("delta"), "");
}

TEST(StringsValues, NameMustMatchWhole) {
  TStrings list{"Alphabet=1", "Alp=2"};
  EXPECT_EQ(list.IndexOfName("Alp"), 1);
  EXPECT_EQ(list.IndexOfName("Alpha"), -1);
}

TEST(StringsValues, LineWithoutEqualsHasNoName) {
  TStrings list{"Alpha", "Alpha=x"};
  EXPECT_EQ(list.IndexOfName("Alpha"), 1);
  EXPECT_EQ(list.Names(0), "");
  EXPECT_EQ(list.ValueFromIndex(0), "");
  EXPECT_EQ(list.Names(1), "Alpha");
}

TEST(StringsValues, ValueIsTextAfterFirstEquals) {
  TStrings list{"Equal=is equal to", "Expr=a=b", "Empty=", "=anonymous"};
  EXPECT_EQ(list.Values("Expr"), "a=b");
  EXPECT_EQ(list.Names(1), "Expr");
  EXPECT_EQ(list.Values("Equal"), "is equal to");
  EXPECT_EQ(list.Values("Empty"), "");
  EXPECT_EQ(list.IndexOfName("Empty"), 2);
  EXPECT_EQ(list.Names(3), "");
  EXPECT_EQ(list.ValueFromIndex(3), "anonymous");
}

TEST(StringsValues, FirstOfDuplicateNamesWins) {
  TStrings list{"Key=first", "KEY=second"};
  EXPECT_EQ(list.Values("key"), "first");
}

TEST(StringsValues, SetValueReplacesInPlace) {
  TStrings list{"a=1", "b=2", "c=3"};
  list.SetValue("B", "20");
  EXPECT_EQ(list.Lines(), (Lines{"a=1", "B=20", "c=3"}));
}

TEST(StringsValues, SetValueOnMissingNameAppends) {
  TStrings list{"a=1"};
  list.SetValue("b", "x=y");
  EXPECT_EQ(list.Lines(), (Lines{"a=1", "b=x=y"}));
  EXPECT_EQ(list.Values("b"), "x=y");
}

TEST(StringsValues, SetValueWithEmptyValueDeletesTheLine) {
  TStrings list{"a=1", "b=2", "c=3"};
  list.SetValue("b", "");
  EXPECT_EQ(list.Lines(), (Lines{"a=1", "c=3"}));
  list.SetValue("missing", "");
  EXPECT_EQ(list.Lines(), (Lines{"a=1", "c=3"}));
}

TEST(StringsValues, IndexOfIgnoresAsciiCaseOnly) {
  TStrings list{"Hello", "MÜLLER", "hello"};
  EXPECT_EQ(list.IndexOf("HELLO"), 0);
  EXPECT_EQ(list.IndexOf("mÜller"), 1);
  EXPECT_EQ(list.IndexOf("müller"), -1);  // Ü is not folded
  EXPECT_EQ(list.IndexOf("Hell"), -1);
}

// ---------------------------------------------------------------------------
// Text

TEST(StringsText, JoinsWithCrLfWithoutTrailingBreak) {
  EXPECT_EQ(TStrings{}.Text(), "");
  EXPECT_EQ((TStrings{"a"}).Text(), "a");
  EXPECT_EQ((TStrings{"a", "b"}).Text(), "a\r\nb");
  EXPECT_EQ((TStrings{"a", ""}).Text(), "a\r\n");
  EXPECT_EQ((TStrings{"", "", "c"}).Text(), "\r\n\r\nc");
}

struct TextReadCase {
  const char* label;
  std::string text;
  Lines expected;
};

class StringsSetText : public ::testing::TestWithParam<TextReadCase> {};

TEST_P(StringsSetText, SplitsAtEveryLineBreak) {
  EXPECT_EQ(ReadText(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Strings, StringsSetText,
    ::testing::Values(TextReadCase{"Empty", "", {}}, TextReadCase{"OneLine", "abc", {"abc"}},
                      TextReadCase{"CrLf", "a\r\nb", {"a", "b"}}, TextReadCase{"Lf", "a\nb", {"a", "b"}},
                      TextReadCase{"LoneCr", "a\rb", {"a", "b"}},
                      TextReadCase{"Mixed", "a\r\nb\nc\rd", {"a", "b", "c", "d"}},
                      TextReadCase{"LfCrIsTwoBreaks", "a\n\rb", {"a", "", "b"}},
                      TextReadCase{"EmptyLines", "\r\n\r\n", {"", "", ""}},
                      TextReadCase{"TrailingBreak", "a\r\n", {"a", ""}},
                      TextReadCase{"BlanksKept", "  a  \r\n\tb", {"  a  ", "\tb"}}),
    [](const ::testing::TestParamInfo<TextReadCase>& info) { return std::string(info.param.label); });

TEST(StringsText, RoundTripsListsWithMoreThanOneLine) {
  for (const Lines& lines : {Lines{"a"}, Lines{"a", "b"}, Lines{"", ""}, Lines{"a", ""}, Lines{"", "a", ""},
                             Lines{"Müller", " x ", "a,b"}}) {
    TStrings back;
    back.SetText(FromLines(lines).Text());
    EXPECT_EQ(back.Lines(), lines);
  }
}

// ---------------------------------------------------------------------------
// Files

TEST(StringsFile, SaveWritesCrLfAfterEveryLineAndLoadReadsItBack) {
  TempFile file("roundtrip.txt");
  const TStrings original{"[Main]", "Name=Müller", "", "  indented", "last"};
  original.SaveToFile(file.Name());
  EXPECT_EQ(file.Read(), "[Main]\r\nName=Müller\r\n\r\n  indented\r\nlast\r\n");
  TStrings loaded{"stale"};
  loaded.LoadFromFile(file.Name());
  EXPECT_EQ(loaded, original);
}

TEST(StringsFile, RoundTripKeepsEmptyLinesAtTheEdges) {
  for (const Lines& lines : {Lines{}, Lines{""}, Lines{"", ""}, Lines{"a", ""}, Lines{"", "a"}}) {
    TempFile file("edges.txt");
    FromLines(lines).SaveToFile(file.Name());
    TStrings loaded;
    loaded.LoadFromFile(file.Name());
    EXPECT_EQ(loaded.Lines(), lines) << "file bytes: " << ::testing::PrintToString(file.Read());
  }
}

struct FileReadCase {
  const char* label;
  std::string bytes;
  Lines expected;
};

class StringsLoadFromFile : public ::testing::TestWithParam<FileReadCase> {};

TEST_P(StringsLoadFromFile, FinalBreakEndsTheLastLine) {
  TempFile file("load.txt");
  file.Write(GetParam().bytes);
  TStrings list;
  list.LoadFromFile(file.Name());
  EXPECT_EQ(list.Lines(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Strings, StringsLoadFromFile,
    ::testing::Values(FileReadCase{"EmptyFile", "", {}}, FileReadCase{"NoFinalBreak", "a\r\nb", {"a", "b"}},
                      FileReadCase{"FinalCrLf", "a\r\nb\r\n", {"a", "b"}},
                      FileReadCase{"FinalLf", "a\nb\n", {"a", "b"}}, FileReadCase{"OnlyCrLf", "\r\n", {""}},
                      FileReadCase{"OnlyLf", "\n", {""}}, FileReadCase{"TwoBreaks", "\r\n\r\n", {"", ""}},
                      FileReadCase{"EmptyLastLine", "a\r\n\r\n", {"a", ""}},
                      FileReadCase{"LfFile", "x=1\ny=2\n", {"x=1", "y=2"}}),
    [](const ::testing::TestParamInfo<FileReadCase>& info) { return std::string(info.param.label); });

// A missing file and a path that opens but cannot be read (a directory) both
// give the library's error and leave the list as it was.
TEST(StringsFile, UnreadablePathsRaiseCannotOpen) {
  const std::filesystem::path temp = std::filesystem::temp_directory_path();
  for (const std::string& name : {(temp / "ts4_no_such_dir" / "missing.txt").string(), temp.string()}) {
    TStrings list{"kept"};
    ts4test::ExpectError([&] { list.LoadFromFile(name); }, 0, "Cannot open file \"" + name + "\"");
    EXPECT_EQ(list.Lines(), Lines{"kept"}) << name;
  }
}

TEST(StringsFile, UnwritableFileRaisesCannotWrite) {
  const std::string name = (std::filesystem::temp_directory_path() / "ts4_no_such_dir" / "out.txt").string();
  ts4test::ExpectError([&] { TStrings{"a"}.SaveToFile(name); }, 0, "Cannot write file \"" + name + "\"");
}

// ---------------------------------------------------------------------------
// Editing and indices

TEST(StringsEditing, AddInsertDeleteKeepOrder) {
  TStrings list;
  EXPECT_EQ(list.Add("b"), 0);
  EXPECT_EQ(list.Add("d"), 1);
  list.Insert(0, "a");
  list.Insert(2, "c");
  list.Insert(4, "e");  // at Count: appends
  EXPECT_EQ(list.Lines(), (Lines{"a", "b", "c", "d", "e"}));
  list.Delete(2);
  list.Delete(0);
  EXPECT_EQ(list.Lines(), (Lines{"b", "d", "e"}));
  list.SetStrings(1, "D");
  EXPECT_EQ(list[1], "D");
  EXPECT_EQ(list.Strings(2), "e");
}

TEST(StringsEditing, MoveTakesOutThenInsertsAtTarget) {
  TStrings list{"a", "b", "c", "d"};
  list.Move(0, 2);
  EXPECT_EQ(list.Lines(), (Lines{"b", "c", "a", "d"}));
  list.Move(3, 0);
  EXPECT_EQ(list.Lines(), (Lines{"d", "b", "c", "a"}));
  list.Move(1, 1);
  EXPECT_EQ(list.Lines(), (Lines{"d", "b", "c", "a"}));
  list.Move(1, 3);
  EXPECT_EQ(list.Lines(), (Lines{"d", "c", "a", "b"}));
}

TEST(StringsEditing, AddStringsAssignAndClear) {
  TStrings list{"a"};
  list.AddStrings(TStrings{"b", "c"});
  EXPECT_EQ(list.Lines(), (Lines{"a", "b", "c"}));
  TStrings other{"x"};
  other.Assign(list);
  EXPECT_EQ(other, list);
  other.Clear();
  EXPECT_TRUE(other.Empty());
  EXPECT_EQ(other.Count(), 0);
  EXPECT_EQ(list.Count(), 3);
}

TEST(StringsEditing, BadIndicesRaiseListIndexError) {
  TStrings list{"a", "b"};
  ExpectIndexError([&] { (void)list.Strings(2); }, 2);
  ExpectIndexError([&] { (void)list[-1]; }, -1);
  ExpectIndexError([&] { list.SetStrings(5, "x"); }, 5);
  ExpectIndexError([&] { list.Insert(3, "x"); }, 3);
  ExpectIndexError([&] { list.Insert(-1, "x"); }, -1);
  ExpectIndexError([&] { list.Delete(2); }, 2);
  ExpectIndexError([&] { list.Move(2, 0); }, 2);
  ExpectIndexError([&] { list.Move(0, 2); }, 2);
  ExpectIndexError([&] { (void)list.Names(7); }, 7);
  ExpectIndexError([&] { (void)list.ValueFromIndex(-3); }, -3);
  ExpectIndexError([&] { TStrings{}.Delete(0); }, 0);
  EXPECT_EQ(list.Lines(), (Lines{"a", "b"}));  // failed edits leave the list alone
}

}  // namespace
