#include "foundation/format.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <limits>
#include <string>

#include "locale_support.h"

namespace {

using ts4::Format;

// Each case: the text Format gave, and the text expected.
using Cases = std::initializer_list<std::pair<std::string, const char*>>;

void ExpectAll(Cases cases) {
  int row = 0;
  for (const auto& [formatted, expected] : cases) EXPECT_EQ(formatted, expected) << "row " << row++;
}

TEST(Format, Integers) {
  ExpectAll({
      {Format("Invalid table index %d", {3}), "Invalid table index 3"},
      {Format("%d", {-7}), "-7"},
      {Format("%d", {std::numeric_limits<std::int64_t>::max()}), "9223372036854775807"},
      {Format("%d", {std::numeric_limits<std::int64_t>::min()}), "-9223372036854775808"},
      {Format("%d", {std::size_t{12}}), "12"},
      {Format("%D|%X|%U|%S", {10, 10, 10, "s"}), "10|A|10|s"},  // either case
      {Format("%u", {4294967295u}), "4294967295"},
      {Format("%x", {0x1a2b}), "1A2B"},
      // A width pads on the left unless "-", never truncates; "0" is no flag but part of the width.
      {Format("[%5d][%-5d][%2d]", {-42, 42, 12345}), "[  -42][42   ][12345]"},
      {Format("[%05d][%6x]", {7, 255}), "[    7][    FF]"},
      // The precision is the least number of digits.
      {Format("%.3d|%.3d|%.0d|%.4x", {7, -7, 0, 255}), "007|-007|0|00FF"},
      {Format("[%6.3d][%-6.3d]", {7, -7}), "[   007][-007  ]"},
  });
}

TEST(Format, Texts) {
  ExpectAll({
      {Format("Can not find field \"%s\" in table \"%s\"", {"Name", "Customer"}),
       "Can not find field \"Name\" in table \"Customer\""},
      {Format("%s|%s|%s", {std::string("owned"), std::string_view("view"), ""}), "owned|view|"},
      {Format("[%5s][%-5s][%2s]", {"ab", "ab", "abcdef"}), "[   ab][ab   ][abcdef]"},
      {Format("[%.2s][%.0s][%.10s]", {"abcdef", "abc", "abc"}), "[ab][][abc]"},
      {Format("[%5.2s][%-5.2s]", {"abcdef", "abcdef"}), "[   ab][ab   ]"},
      {Format("%s-%d-%s", {"a", 1, "b"}), "a-1-b"},
      {Format("%d", {1, 2, 3}), "1"},  // extra arguments are ignored
  });
}

// Fixed has two decimals by default; the scientific form counts significant
// digits (15 by default), then a capital E, a sign and three exponent digits.
TEST(Format, Floats) {
  ExpectAll({
      {Format("%f|%f", {1.5, -3.14159}), "1.50|-3.14"},
      {Format("%.3f|%.0f|%.1f", {2.0, 7.0, 36526.75}), "2.000|7|36526.8"},
      {Format("[%8.2f][%-8.2f]", {3.14159, -3.14159}), "[    3.14][-3.14   ]"},
      {Format("%.2f", {5}), "5.00"},  // an integer argument is accepted
      {Format("%g|%g|%g|%.3g", {0.1, 100.0, -36526.5, 3.14159}), "0.1|100|-36526.5|3.14"},
      {Format("%e|%.3e|%.2e", {1234.5, 1234.5, -0.00125}), "1.23450000000000E+003|1.23E+003|-1.3E-003"},
  });
  // The longest fixed text (a 301-digit integer part and 250 decimals) keeps its precision and its point.
  const std::string whole = Format("%.0f", {1e300});
  ASSERT_EQ(whole.size(), 301u);
  EXPECT_EQ(Format("%.250f", {1e300}), whole + "." + std::string(250, '0'));
}

// A message must always be built: what is not a directive, or has no
// argument left, stays as written; a mismatched argument is written as it is.
TEST(Format, WhatIsNotFilledStays) {
  ExpectAll({
      {Format("50%% of %d, %%d", {8}), "50% of 8, %d"},
      {Format("100%", {}), "100%"},
      {Format("a %5", {1}), "a %5"},
      {Format("a %-5.", {1}), "a %-5."},
      {Format("%s and %s", {"a"}), "a and %s"},
      {Format("[%-10.3d] %s", {}), "[%-10.3d] %s"},
      {Format("%s%%%s", {"x"}), "x%%s"},
      {Format("%d|%s|%s|%d", {"abc", 42, 1.5, 2.5}), "abc|42|1.5|2.5"},
      {Format("[%4s]", {7}), "[   7]"},
  });
}

TEST(Format, FloatsAlwaysUsePoint) {
  auto locale = ts4test::CommaDecimalLocale();
  if (!locale) GTEST_SKIP() << "no German locale installed";
  ASSERT_EQ(std::localeconv()->decimal_point, std::string(","));
  EXPECT_EQ(Format("%f|%.3f|%g|%s", {1.5, -2.25, 36526.5, 0.5}), "1.50|-2.250|36526.5|0.5");
  EXPECT_EQ(Format("%.250f", {1e300}).find(','), std::string::npos);
}

}  // namespace
