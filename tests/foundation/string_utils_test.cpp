#include "foundation/string_utils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "foundation/strings.h"

namespace {

// ---------------------------------------------------------------------------
// Case folding and comparison

TEST(StringUtilsCase, FoldsAsciiLettersOnly) {
  // Bytes of UTF-8 letters stay as they are.
  EXPECT_EQ(ts4::LowerCase("Hello WORLD 42_[] MÜLLER"), "hello world 42_[] mÜller");
  EXPECT_EQ(ts4::UpperCase("Hello world 42_[] müller"), "HELLO WORLD 42_[] MüLLER");
  EXPECT_EQ(ts4::Trim("\x01 a b \t\r\n\x1f"), "a b");
  EXPECT_EQ(ts4::Trim("   "), "");
}

// Ordering folds to upper case, so the punctuation between "Z" and "a" ([ \ ] ^ _ `) sorts after the
// letters; bytes above 127 compare unsigned, after ASCII, and are not folded.
TEST(StringUtilsCase, CompareTextAndSameTextIgnoreAsciiCase) {
  const struct {
    const char* a;
    const char* b;
    int sign;
  } cases[] = {{"Customer", "CUSTOMER", 0},
               {"", "", 0},
               {"abc", "ABD", -1},
               {"ab", "ABC", -1},
               {"", "a", -1},
               {"_", "a", 1},
               {"A_B", "ab", 1},
               {"[", "{", -1},
               {"@", "`", -1},
               {"Ü", "ü", -1},
               {"Ü", "z", 1}};
  for (const auto& c : cases) {
    const int compared = ts4::CompareText(c.a, c.b);
    EXPECT_EQ((compared > 0) - (compared < 0), c.sign) << c.a << " " << c.b;
    EXPECT_EQ(ts4::CompareText(c.b, c.a), -compared) << c.a << " " << c.b;
    EXPECT_EQ(ts4::SameText(c.a, c.b), c.sign == 0) << c.a << " " << c.b;
  }
}

TEST(StringUtilsSeparator, SplitsAtTheFirstSeparator) {
  const struct {
    const char* separator;
    const char* text;
    const char* before;
    const char* after;
  } cases[] = {{"=", "a=b=c", "a", "b=c"},
               {"=", "=x", "", "x"},
               {"=", "x", "x", ""},
               {"", "text", "text", ""},
               {"->", "a-b->c->d", "a-b", "c->d"},
               {"->", "a-b", "a-b", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(ts4::GetBeforeSep(c.separator, c.text), c.before) << c.separator << " in " << c.text;
    EXPECT_EQ(ts4::GetAfterSep(c.separator, c.text), c.after) << c.separator << " in " << c.text;
  }
}

// ---------------------------------------------------------------------------
// Numbers

TEST(StringUtilsNumbers, XStrToIntReadsDecimalOrFallsBack) {
  const std::pair<const char*, int> numbers[] = {{"42", 42}, {"\t12\r\n", 12}, {"-5", -5},
                                                 {"+5", 5},  {"007", 7},       {"-2147483648", INT32_MIN}};
  for (const auto& [text, value] : numbers) EXPECT_EQ(ts4::XStrToInt(text, 9), value) << text;
  for (const char* text :
       {"", "   ", "12a", "1 2", "1.5", "0x10", "-", "- 5", "+-5", "2147483648", "-2147483649"})
    EXPECT_EQ(ts4::XStrToInt(text, 9), 9) << text;
}

TEST(StringUtilsNumbers, XStrToFloatReadsPointOrCommaOrFallsBack) {
  const std::pair<const char*, double> numbers[] = {{"1.5", 1.5},     {"1,5", 1.5}, {" 36526.5 ", 36526.5},
                                                    {"-0.25", -0.25}, {"+2", 2},    {"1e3", 1000}};
  for (const auto& [text, value] : numbers) EXPECT_EQ(ts4::XStrToFloat(text, 7.5), value) << text;
  for (const char* text : {"", "abc", "1.5x", "1.2.3", "1,000.5", "inf", "nan", "1e999", ".", "+-1.5", "1e"})
    EXPECT_EQ(ts4::XStrToFloat(text, 7.5), 7.5) << text;
}

TEST(StringUtilsNumbers, XFloatToStrWritesTheShortestTextThatReadsBack) {
  const std::pair<double, const char*> cases[] = {{36526, "36526"},
                                                  {36526.5, "36526.5"},
                                                  {-2.25, "-2.25"},
                                                  {1.0 / 3, "0.3333333333333333"},
                                                  {123456789012.0, "123456789012"},
                                                  {std::numeric_limits<double>::infinity(), "0"},
                                                  {std::numeric_limits<double>::quiet_NaN(), "0"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(ts4::XFloatToStr(value), text);

  std::mt19937_64 random(20240601);
  std::uniform_real_distribution<double> days(-100000.0, 100000.0);
  std::uniform_int_distribution<int> exponent(-30, 30);
  for (int i = 0; i < 2000; ++i) {
    const double value = days(random) * std::pow(10.0, exponent(random));
    const std::string text = ts4::XFloatToStr(value);
    EXPECT_EQ(text.find(','), std::string::npos) << text;
    EXPECT_EQ(ts4::XStrToFloat(text, -1), value) << text;
  }
}

TEST(StringUtilsNumbers, Booleans) {
  for (const char* text : {"1", " 1 ", "2", "-1", "true", "TRUE"}) EXPECT_TRUE(ts4::XStrToBool(text));
  for (const char* text : {"0", "", "x", "false", "yes", "1x"}) EXPECT_FALSE(ts4::XStrToBool(text)) << text;
  EXPECT_EQ(ts4::XBoolToStr(true), "1");
  EXPECT_EQ(ts4::XBoolToStr(false), "0");
}

// ---------------------------------------------------------------------------
// Replacing, quoting, searching

// Every occurrence, left to right, without searching the replacement again.
TEST(StringUtilsReplace, ReplacesEveryOccurrenceWithOrWithoutCase) {
  const struct {
    const char* text;
    const char* search;
    const char* replacement;
    const char* exact;
    const char* ignoringCase;
  } cases[] = {
      {"aaa", "aa", "b", "ba", "ba"},
      {"abab", "ab", "", "", ""},
      {"a", "a", "aa", "aa", "aa"},
      {"abc", "", "x", "abc", "abc"},
      {":Param1 and :param1", ":PARAM1", "?", ":Param1 and :param1", "? and ?"},
      {"MÜLLER müller", "müller", "x", "MÜLLER x", "MÜLLER x"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ts4::ReplaceStr(c.text, c.search, c.replacement), c.exact) << c.text;
    EXPECT_EQ(ts4::XReplaceStr(c.text, c.search, c.replacement, false), c.exact) << c.text;
    EXPECT_EQ(ts4::XReplaceStr(c.text, c.search, c.replacement, true), c.ignoringCase) << c.text;
  }
}

TEST(StringUtilsQuote, QuotedStringDoublesInnerQuotesAndUnquotedStringUndoesIt) {
  EXPECT_EQ(ts4::QuotedString("it's", '\''), "'it''s'");
  EXPECT_EQ(ts4::QuotedString("'", '\''), "''''");
  EXPECT_EQ(ts4::QuotedString(R"(say "hi")", '"'), R"("say ""hi""")");
  EXPECT_EQ(ts4::QuotedString("it's", '"'), R"("it's")");
  for (const char* text : {"", "abc", "it's", "''", "a''b", " 'x' "}) {
    EXPECT_EQ(ts4::UnquotedString(ts4::QuotedString(text, '\''), '\''), text);
    EXPECT_EQ(ts4::UnquotedString(ts4::QuotedString(text, '"'), '"'), text);
  }
  // Text that is not quoted as a whole stays as it is.
  for (const char* text : {"abc", "'abc", "abc'", "'", "", "\"abc\"", " 'abc' "})
    EXPECT_EQ(ts4::UnquotedString(text, '\''), text);
}

// One-based from an inclusive start (before the text counts as 1); option 1 ignores ASCII case.
TEST(StringUtilsSearch, CXPos) {
  const struct {
    const char* sub;
    const char* text;
    int start;
    int option;
    int expected;
  } cases[] = {{"b", "abcb", 1, 0, 2},  {"b", "abcb", 2, 0, 2},        {"b", "abcb", 3, 0, 4},
               {"cb", "abcb", 0, 0, 3}, {"WHERE", "a where", 1, 1, 3}, {"WHERE", "a where", 1, 0, 0},
               {"Ü", "ü", 1, 1, 0},     {"c", "abc", 4, 0, 0},         {"abcd", "abc", 1, 0, 0},
               {"", "abc", 1, 0, 0}};
  for (const auto& c : cases)
    EXPECT_EQ(ts4::CXPos(c.sub, c.text, c.start, c.option), c.expected)
        << c.sub << " in " << c.text << " from " << c.start << " option " << c.option;
}

TEST(StringUtilsSearch, CharCountStrInListReplicateAndEqualToSpaces) {
  EXPECT_EQ(ts4::CharCount('A', "aA.A"), 2);
  const ts4::TStrings list{"Orders", "Customers"};
  EXPECT_TRUE(ts4::StrInList("customers", list));
  EXPECT_FALSE(ts4::StrInList("Order", list));
  EXPECT_EQ(ts4::Replicate("ab", 3), "ababab");
  EXPECT_EQ(ts4::Replicate("ab", -2), "");
  for (const auto& [a, b] : {std::pair{"a b c", "abc"}, {" a", "a "}, {"", "   "}})
    EXPECT_TRUE(ts4::EqualToSpaces(a, b)) << a;
  for (const auto& [a, b] : {std::pair{"ab", "ac"}, {"a", ""}, {"ab", "a"}, {"A", "a"}})
    EXPECT_FALSE(ts4::EqualToSpaces(a, b)) << a;
}

}  // namespace
