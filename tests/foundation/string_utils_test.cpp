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
  EXPECT_EQ(ts4::LowerCase("Hello WORLD 42_[]"), "hello world 42_[]");
  EXPECT_EQ(ts4::UpperCase("Hello world 42_[]"), "HELLO WORLD 42_[]");
  // Bytes of UTF-8 letters stay as they are.
  EXPECT_EQ(ts4::LowerCase("MÜLLER"), "mÜller");
  EXPECT_EQ(ts4::UpperCase("müller"), "MüLLER");
  EXPECT_EQ(ts4::LowerCase(""), "");
}

TEST(StringUtilsCase, CompareTextIgnoresAsciiCase) {
  EXPECT_EQ(ts4::CompareText("Customer", "CUSTOMER"), 0);
  EXPECT_LT(ts4::CompareText("abc", "ABD"), 0);
  EXPECT_GT(ts4::CompareText("ABD", "abc"), 0);
  EXPECT_LT(ts4::CompareText("ab", "ABC"), 0);  // a prefix sorts first
  EXPECT_GT(ts4::CompareText("abc", "AB"), 0);
  EXPECT_LT(ts4::CompareText("", "a"), 0);
  EXPECT_EQ(ts4::CompareText("", ""), 0);
  EXPECT_NE(ts4::CompareText("Ü", "ü"), 0);  // not ASCII: compared as bytes
  // Bytes above 127 sort after ASCII (unsigned comparison).
  EXPECT_GT(ts4::CompareText("Ü", "z"), 0);
}

// The platform's CompareText folds to upper case, so the punctuation between
// "Z" and "a" ([ \ ] ^ _ `) sorts after the letters: "_" > "a" and "A_B" > "AB".
// Ordering folds to upper case, so "_" (between "Z" and "a") sorts after the letters.
TEST(StringUtilsCase, CompareTextSortsUnderscoreAfterLetters) {
  EXPECT_GT(ts4::CompareText("_", "a"), 0);
  EXPECT_GT(ts4::CompareText("A_B", "ab"), 0);
  EXPECT_LT(ts4::CompareText("ab", "A_B"), 0);
}

TEST(StringUtilsCase, SameText) {
  EXPECT_TRUE(ts4::SameText("ftString", "FTSTRING"));
  EXPECT_TRUE(ts4::SameText("", ""));
  EXPECT_FALSE(ts4::SameText("abc", "abcd"));
  EXPECT_FALSE(ts4::SameText("[", "{"));  // '[' and '{' differ by 0x20 but are not letters
  EXPECT_FALSE(ts4::SameText("@", "`"));
  EXPECT_FALSE(ts4::SameText("Ü", "ü"));
}

TEST(StringUtilsCase, TrimRemovesBlanksAndControlCharacters) {
  EXPECT_EQ(ts4::Trim("  a b \t\r\n"), "a b");
  EXPECT_EQ(ts4::Trim("\x01x\x1f"), "x");
  EXPECT_EQ(ts4::Trim("   "), "");
  EXPECT_EQ(ts4::Trim(""), "");
  EXPECT_EQ(ts4::Trim(" Müller "), "Müller");
}

// ---------------------------------------------------------------------------
// Separators

TEST(StringUtilsSeparator, SplitsAtFirstSeparator) {
  EXPECT_EQ(ts4::GetBeforeSep("=", "Equal=is equal to"), "Equal");
  EXPECT_EQ(ts4::GetAfterSep("=", "Equal=is equal to"), "is equal to");
  EXPECT_EQ(ts4::GetBeforeSep("=", "a=b=c"), "a");
  EXPECT_EQ(ts4::GetAfterSep("=", "a=b=c"), "b=c");
  EXPECT_EQ(ts4::GetBeforeSep("=", "=x"), "");
  EXPECT_EQ(ts4::GetAfterSep("=", "x="), "");
}

TEST(StringUtilsSeparator, AbsentSeparator) {
  EXPECT_EQ(ts4::GetBeforeSep("=", "no separator"), "no separator");
  EXPECT_EQ(ts4::GetAfterSep("=", "no separator"), "");
  EXPECT_EQ(ts4::GetBeforeSep("", "text"), "text");
  EXPECT_EQ(ts4::GetAfterSep("", "text"), "");
}

TEST(StringUtilsSeparator, MultiCharacterSeparator) {
  EXPECT_EQ(ts4::GetBeforeSep("->", "a-b->c->d"), "a-b");
  EXPECT_EQ(ts4::GetAfterSep("->", "a-b->c->d"), "c->d");
  EXPECT_EQ(ts4::GetAfterSep("->", "a-b"), "");
}

// ---------------------------------------------------------------------------
// Numbers

struct IntCase {
  const char* text;
  int fallback;
  int expected;
};

class StringUtilsXStrToInt : public ::testing::TestWithParam<IntCase> {};

TEST_P(StringUtilsXStrToInt, ReadsDecimalOrFallsBack) {
  EXPECT_EQ(ts4::XStrToInt(GetParam().text, GetParam().fallback), GetParam().expected)
      << "text: \"" << GetParam().text << "\"";
}

INSTANTIATE_TEST_SUITE_P(
    StringUtils, StringUtilsXStrToInt,
    ::testing::Values(IntCase{"42", -1, 42}, IntCase{"0", -1, 0}, IntCase{"", 0, 0}, IntCase{"", 7, 7},
                      IntCase{"   ", 7, 7}, IntCase{" 12 ", -1, 12}, IntCase{"\t12\r\n", -1, 12},
                      IntCase{"-5", 0, -5}, IntCase{"+5", 0, 5}, IntCase{"007", -1, 7}, IntCase{"12a", 9, 9},
                      IntCase{"a12", 9, 9}, IntCase{"1 2", 9, 9}, IntCase{"1.5", 9, 9}, IntCase{"0x10", 9, 9},
                      IntCase{"+", 9, 9}, IntCase{"-", 9, 9}, IntCase{"- 5", 9, 9}, IntCase{"++5", 9, 9},
                      IntCase{"2147483647", 0, 2147483647},
                      IntCase{"-2147483648", 0, std::numeric_limits<int>::min()}, IntCase{"2147483648", 9, 9},
                      IntCase{"-2147483649", 9, 9}, IntCase{"99999999999999999999", 9, 9}));

// One sign only: "+-5" is not a number.
TEST(StringUtilsNumbers, PlusThenMinusIsNotANumber) {
  EXPECT_EQ(ts4::XStrToInt("+-5", 9), 9);
  EXPECT_EQ(ts4::XStrToFloat("+-1.5", 9.0), 9.0);
}

TEST(StringUtilsNumbers, XStrToBool) {
  EXPECT_TRUE(ts4::XStrToBool("1"));
  EXPECT_TRUE(ts4::XStrToBool(" 1 "));
  EXPECT_TRUE(ts4::XStrToBool("2"));
  EXPECT_TRUE(ts4::XStrToBool("-1"));
  EXPECT_TRUE(ts4::XStrToBool("true"));
  EXPECT_TRUE(ts4::XStrToBool("TRUE"));
  EXPECT_TRUE(ts4::XStrToBool("True"));
  EXPECT_FALSE(ts4::XStrToBool("0"));
  EXPECT_FALSE(ts4::XStrToBool(""));
  EXPECT_FALSE(ts4::XStrToBool("x"));
  EXPECT_FALSE(ts4::XStrToBool("false"));
  EXPECT_FALSE(ts4::XStrToBool("yes"));
  EXPECT_FALSE(ts4::XStrToBool("1x"));
}

TEST(StringUtilsNumbers, BoolRoundTrip) {
  EXPECT_EQ(ts4::XBoolToStr(true), "1");
  EXPECT_EQ(ts4::XBoolToStr(false), "0");
  EXPECT_TRUE(ts4::XStrToBool(ts4::XBoolToStr(true)));
  EXPECT_FALSE(ts4::XStrToBool(ts4::XBoolToStr(false)));
}

struct FloatWriteCase {
  double value;
  const char* expected;
};

class StringUtilsXFloatToStr : public ::testing::TestWithParam<FloatWriteCase> {};

TEST_P(StringUtilsXFloatToStr, WritesShortestText) {
  EXPECT_EQ(ts4::XFloatToStr(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(StringUtils, StringUtilsXFloatToStr,
                         ::testing::Values(FloatWriteCase{36526, "36526"}, FloatWriteCase{36526.5, "36526.5"},
                                           FloatWriteCase{0.1, "0.1"}, FloatWriteCase{-2.25, "-2.25"},
                                           FloatWriteCase{0, "0"},
                                           FloatWriteCase{1.0 / 3, "0.3333333333333333"},
                                           FloatWriteCase{36526.75, "36526.75"},
                                           FloatWriteCase{123456789012.0, "123456789012"}));

TEST(StringUtilsNumbers, XFloatToStrNonFiniteIsZero) {
  EXPECT_EQ(ts4::XFloatToStr(std::numeric_limits<double>::infinity()), "0");
  EXPECT_EQ(ts4::XFloatToStr(std::numeric_limits<double>::quiet_NaN()), "0");
}

TEST(StringUtilsNumbers, XFloatToStrReadsBackExactlyAndNeverWritesComma) {
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

struct FloatReadCase {
  const char* text;
  double fallback;
  double expected;
};

class StringUtilsXStrToFloat : public ::testing::TestWithParam<FloatReadCase> {};

TEST_P(StringUtilsXStrToFloat, ReadsPointOrCommaOrFallsBack) {
  EXPECT_EQ(ts4::XStrToFloat(GetParam().text, GetParam().fallback), GetParam().expected)
      << "text: \"" << GetParam().text << "\"";
}

INSTANTIATE_TEST_SUITE_P(StringUtils, StringUtilsXStrToFloat,
                         ::testing::Values(FloatReadCase{"1.5", -1, 1.5}, FloatReadCase{"1,5", -1, 1.5},
                                           FloatReadCase{" 36526.5 ", -1, 36526.5},
                                           FloatReadCase{"-0.25", -1, -0.25}, FloatReadCase{"+2", -1, 2},
                                           FloatReadCase{"36526", -1, 36526}, FloatReadCase{"1e3", -1, 1000},
                                           FloatReadCase{"", 7.5, 7.5}, FloatReadCase{"  ", 7.5, 7.5},
                                           FloatReadCase{"abc", 7.5, 7.5}, FloatReadCase{"1.5x", 7.5, 7.5},
                                           FloatReadCase{"1.2.3", 7.5, 7.5},
                                           FloatReadCase{"1,000.5", 7.5, 7.5}, FloatReadCase{"inf", 7.5, 7.5},
                                           FloatReadCase{"nan", 7.5, 7.5}, FloatReadCase{"1e999", 7.5, 7.5},
                                           FloatReadCase{".", 7.5, 7.5}));

// ---------------------------------------------------------------------------
// Replacing

TEST(StringUtilsReplace, ReplacesEveryOccurrence) {
  EXPECT_EQ(ts4::ReplaceStr("a.b.c", ".", "::"), "a::b::c");
  EXPECT_EQ(ts4::ReplaceStr("aaa", "aa", "b"), "ba");  // left to right, no overlap
  EXPECT_EQ(ts4::ReplaceStr("abc", "x", "y"), "abc");
  EXPECT_EQ(ts4::ReplaceStr("abab", "ab", ""), "");
  EXPECT_EQ(ts4::ReplaceStr("a", "a", "aa"), "aa");  // the replacement is not searched again
  EXPECT_EQ(ts4::ReplaceStr("", "a", "b"), "");
}

TEST(StringUtilsReplace, ReplaceStrIsCaseSensitive) {
  EXPECT_EQ(ts4::ReplaceStr("Name NAME name", "name", "x"), "Name NAME x");
}

TEST(StringUtilsReplace, XReplaceStrCaseFlag) {
  EXPECT_EQ(ts4::XReplaceStr("Name NAME name", "name", "x", true), "x x x");
  EXPECT_EQ(ts4::XReplaceStr("Name NAME name", "name", "x", false), "Name NAME x");
  EXPECT_EQ(ts4::XReplaceStr(":Param1 and :param1", ":PARAM1", "?", true), "? and ?");
  EXPECT_EQ(ts4::XReplaceStr("MÜLLER müller", "müller", "x", true), "MÜLLER x");
}

TEST(StringUtilsReplace, EmptySearchReturnsTheText) {
  EXPECT_EQ(ts4::ReplaceStr("abc", "", "x"), "abc");
  EXPECT_EQ(ts4::XReplaceStr("abc", "", "x", true), "abc");
  EXPECT_EQ(ts4::XReplaceStr("abc", "", "x", false), "abc");
}

// ---------------------------------------------------------------------------
// Quoting

TEST(StringUtilsQuote, QuotedStringDoublesInnerQuotes) {
  EXPECT_EQ(ts4::QuotedString("abc", '\''), "'abc'");
  EXPECT_EQ(ts4::QuotedString("it's", '\''), "'it''s'");
  EXPECT_EQ(ts4::QuotedString("", '\''), "''");
  EXPECT_EQ(ts4::QuotedString("'", '\''), "''''");
  EXPECT_EQ(ts4::QuotedString(R"(say "hi")", '"'), R"("say ""hi""")");
  EXPECT_EQ(ts4::QuotedString("it's", '"'), R"("it's")");
}

TEST(StringUtilsQuote, UnquotedStringUndoesQuotedString) {
  for (const char* text : {"", "abc", "it's", "''", "'", "a''b", "Müller's", " 'x' "}) {
    EXPECT_EQ(ts4::UnquotedString(ts4::QuotedString(text, '\''), '\''), text);
    EXPECT_EQ(ts4::UnquotedString(ts4::QuotedString(text, '"'), '"'), text);
  }
}

TEST(StringUtilsQuote, UnquotedStringLeavesOtherTextAlone) {
  EXPECT_EQ(ts4::UnquotedString("abc", '\''), "abc");
  EXPECT_EQ(ts4::UnquotedString("'abc", '\''), "'abc");
  EXPECT_EQ(ts4::UnquotedString("abc'", '\''), "abc'");
  EXPECT_EQ(ts4::UnquotedString("'", '\''), "'");
  EXPECT_EQ(ts4::UnquotedString("", '\''), "");
  EXPECT_EQ(ts4::UnquotedString("\"abc\"", '\''), "\"abc\"");
  EXPECT_EQ(ts4::UnquotedString(" 'abc' ", '\''), " 'abc' ");
}

// ---------------------------------------------------------------------------
// Searching

TEST(StringUtilsSearch, CXPosIsOneBasedFromStart) {
  EXPECT_EQ(ts4::CXPos("b", "abcb", 1, 0), 2);
  EXPECT_EQ(ts4::CXPos("a", "abcb", 1, 0), 1);
  EXPECT_EQ(ts4::CXPos("b", "abcb", 2, 0), 2);  // start is inclusive
  EXPECT_EQ(ts4::CXPos("b", "abcb", 3, 0), 4);
  EXPECT_EQ(ts4::CXPos("cb", "abcb", 1, 0), 3);
  EXPECT_EQ(ts4::CXPos("b", "abcb", 0, 0), 2);  // a start before the text counts as 1
}

TEST(StringUtilsSearch, CXPosOptionSelectsCase) {
  EXPECT_EQ(ts4::CXPos("WHERE", "select * where x", 1, 1), 10);
  EXPECT_EQ(ts4::CXPos("WHERE", "select * where x", 1, 0), 0);
  EXPECT_EQ(ts4::CXPos("where", "select * where x", 1, 0), 10);
  EXPECT_EQ(ts4::CXPos("Ü", "ü", 1, 1), 0);
}

TEST(StringUtilsSearch, CXPosAbsentOrOutOfRange) {
  EXPECT_EQ(ts4::CXPos("x", "abc", 1, 0), 0);
  EXPECT_EQ(ts4::CXPos("a", "abc", 2, 0), 0);
  EXPECT_EQ(ts4::CXPos("c", "abc", 3, 0), 3);
  EXPECT_EQ(ts4::CXPos("c", "abc", 4, 0), 0);
  EXPECT_EQ(ts4::CXPos("c", "abc", 100, 1), 0);
  EXPECT_EQ(ts4::CXPos("abcd", "abc", 1, 0), 0);
  EXPECT_EQ(ts4::CXPos("", "abc", 1, 0), 0);
  EXPECT_EQ(ts4::CXPos("a", "", 1, 0), 0);
}

TEST(StringUtilsSearch, CharCount) {
  EXPECT_EQ(ts4::CharCount('.', "a.b.c"), 2);
  EXPECT_EQ(ts4::CharCount('.', ""), 0);
  EXPECT_EQ(ts4::CharCount('x', "abc"), 0);
  EXPECT_EQ(ts4::CharCount('A', "aAa"), 1);
}

TEST(StringUtilsSearch, StrInListIgnoresCase) {
  const ts4::TStrings list{"Orders", "Customers"};
  EXPECT_TRUE(ts4::StrInList("ORDERS", list));
  EXPECT_TRUE(ts4::StrInList("customers", list));
  EXPECT_FALSE(ts4::StrInList("Order", list));
  EXPECT_FALSE(ts4::StrInList("", list));
  EXPECT_FALSE(ts4::StrInList("x", ts4::TStrings{}));
}

// ---------------------------------------------------------------------------
// Other helpers

TEST(StringUtilsMisc, Replicate) {
  EXPECT_EQ(ts4::Replicate("ab", 3), "ababab");
  EXPECT_EQ(ts4::Replicate("-", 1), "-");
  EXPECT_EQ(ts4::Replicate("ab", 0), "");
  EXPECT_EQ(ts4::Replicate("ab", -2), "");
  EXPECT_EQ(ts4::Replicate("", 5), "");
}

TEST(StringUtilsMisc, EqualToSpacesIgnoresEveryBlank) {
  EXPECT_TRUE(ts4::EqualToSpaces("a b c", "abc"));
  EXPECT_TRUE(ts4::EqualToSpaces(" a", "a "));
  EXPECT_TRUE(ts4::EqualToSpaces("a  =  b", "a=b"));
  EXPECT_TRUE(ts4::EqualToSpaces("", "   "));
  EXPECT_TRUE(ts4::EqualToSpaces("", ""));
  EXPECT_FALSE(ts4::EqualToSpaces("ab", "ac"));
  EXPECT_FALSE(ts4::EqualToSpaces("a", ""));
  EXPECT_FALSE(ts4::EqualToSpaces("ab", "a"));
  EXPECT_FALSE(ts4::EqualToSpaces("A", "a"));  // case still counts
}

TEST(StringUtilsMisc, MinInt) {
  static_assert(ts4::MinInt(3, 5) == 3);
  EXPECT_EQ(ts4::MinInt(-1, -2), -2);
  EXPECT_EQ(ts4::MinInt(4, 4), 4);
}

}  // namespace
