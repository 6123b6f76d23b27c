#include "foundation/format.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "locale_support.h"

namespace {

using ts4::Format;

// ---------------------------------------------------------------------------
// Integers

TEST(FormatInteger, Decimal) {
  EXPECT_EQ(Format("%d", {42}), "42");
  EXPECT_EQ(Format("%d", {0}), "0");
  EXPECT_EQ(Format("%d", {-7}), "-7");
  EXPECT_EQ(Format("Invalid table index %d", {3}), "Invalid table index 3");
  EXPECT_EQ(Format("%d", {std::numeric_limits<std::int64_t>::max()}), "9223372036854775807");
  EXPECT_EQ(Format("%d", {std::numeric_limits<std::int64_t>::min()}), "-9223372036854775808");
  EXPECT_EQ(Format("%d", {static_cast<short>(-12)}), "-12");
  EXPECT_EQ(Format("%d", {std::size_t{12}}), "12");
}

TEST(FormatInteger, UnsignedAndHexInEitherCase) {
  EXPECT_EQ(Format("%D|%X|%U", {10, 10, 10}), "10|A|10");
  EXPECT_EQ(Format("%S", {"text"}), "text");
  EXPECT_EQ(Format("%u", {42}), "42");
  EXPECT_EQ(Format("%u", {4294967295u}), "4294967295");
  EXPECT_EQ(Format("%x", {255}), "FF");
  EXPECT_EQ(Format("%x", {0}), "0");
  EXPECT_EQ(Format("%x", {0x1a2b}), "1A2B");
}

TEST(FormatInteger, WidthPadsOnTheLeftUnlessMinus) {
  EXPECT_EQ(Format("[%5d]", {42}), "[   42]");
  EXPECT_EQ(Format("[%-5d]", {42}), "[42   ]");
  EXPECT_EQ(Format("[%5d]", {-42}), "[  -42]");
  EXPECT_EQ(Format("[%2d]", {12345}), "[12345]");  // width never truncates
  EXPECT_EQ(Format("[%05d]", {7}), "[    7]");     // no zero flag: "05" is a width
  EXPECT_EQ(Format("[%6x]", {255}), "[    FF]");
}

TEST(FormatInteger, PrecisionIsMinimumDigitCount) {
  EXPECT_EQ(Format("%.3d", {7}), "007");
  EXPECT_EQ(Format("%.3d", {-7}), "-007");
  EXPECT_EQ(Format("%.3d", {12345}), "12345");
  EXPECT_EQ(Format("%.0d", {0}), "0");
  EXPECT_EQ(Format("[%6.3d]", {7}), "[   007]");
  EXPECT_EQ(Format("[%-6.3d]", {-7}), "[-007  ]");
  EXPECT_EQ(Format("%.4x", {255}), "00FF");
  EXPECT_EQ(Format("%.4u", {12}), "0012");
}

// ---------------------------------------------------------------------------
// Texts

TEST(FormatText, Strings) {
  EXPECT_EQ(Format("No such table %s", {"Orders"}), "No such table Orders");
  EXPECT_EQ(Format("%s", {std::string("owned")}), "owned");
  EXPECT_EQ(Format("%s", {std::string_view("view")}), "view");
  EXPECT_EQ(Format("%s", {""}), "");
  EXPECT_EQ(Format("%s=%s", {"Müller", "x"}), "Müller=x");
  EXPECT_EQ(Format("Can not find field \"%s\" in table \"%s\"", {"Name", "Customer"}),
            "Can not find field \"Name\" in table \"Customer\"");
}

TEST(FormatText, WidthAndPrecision) {
  EXPECT_EQ(Format("[%5s]", {"ab"}), "[   ab]");
  EXPECT_EQ(Format("[%-5s]", {"ab"}), "[ab   ]");
  EXPECT_EQ(Format("[%.2s]", {"abcdef"}), "[ab]");
  EXPECT_EQ(Format("[%.0s]", {"abc"}), "[]");
  EXPECT_EQ(Format("[%.10s]", {"abc"}), "[abc]");
  EXPECT_EQ(Format("[%5.2s]", {"abcdef"}), "[   ab]");
  EXPECT_EQ(Format("[%-5.2s]", {"abcdef"}), "[ab   ]");
  EXPECT_EQ(Format("[%2s]", {"abcdef"}), "[abcdef]");
}

TEST(FormatText, ArgumentsAreTakenInOrder) {
  EXPECT_EQ(Format("%s-%d-%s", {"a", 1, "b"}), "a-1-b");
  EXPECT_EQ(Format("%d", {1, 2, 3}), "1");  // extra arguments are ignored
  EXPECT_EQ(Format("no directives", {1}), "no directives");
  EXPECT_EQ(Format("", {1, "a"}), "");
}

// ---------------------------------------------------------------------------
// Floating point

TEST(FormatFloat, Fixed) {
  EXPECT_EQ(Format("%f", {1.5}), "1.50");  // two decimals by default
  EXPECT_EQ(Format("%f", {0.0}), "0.00");
  EXPECT_EQ(Format("%f", {-3.14159}), "-3.14");
  EXPECT_EQ(Format("%.3f", {2.0}), "2.000");
  EXPECT_EQ(Format("%.0f", {7.0}), "7");
  EXPECT_EQ(Format("%.1f", {36526.75}), "36526.8");
  EXPECT_EQ(Format("[%8.2f]", {3.14159}), "[    3.14]");
  EXPECT_EQ(Format("[%-8.2f]", {-3.14159}), "[-3.14   ]");
  EXPECT_EQ(Format("%.2f", {5}), "5.00");  // an integer argument is accepted
}

TEST(FormatFloat, General) {
  EXPECT_EQ(Format("%g", {0.1}), "0.1");
  EXPECT_EQ(Format("%g", {1.5}), "1.5");
  EXPECT_EQ(Format("%g", {100.0}), "100");
  EXPECT_EQ(Format("%g", {-36526.5}), "-36526.5");
  EXPECT_EQ(Format("%g", {1234567.0}), "1234567");
  EXPECT_EQ(Format("%.3g", {3.14159}), "3.14");
}

// The platform's scientific form: the precision counts significant digits
// (15 by default), then a capital E, a sign and three exponent digits.
TEST(FormatFloat, Scientific) {
  EXPECT_EQ(Format("%e", {1234.5}), "1.23450000000000E+003");
  EXPECT_EQ(Format("%.3e", {1234.5}), "1.23E+003");
  EXPECT_EQ(Format("%.2e", {-0.00125}), "-1.3E-003");
}

// The longest fixed text (a 301-digit integer part and 250 decimals) keeps
// its precision and its point.
TEST(FormatFloat, LongFixedTextKeepsPrecision) {
  const std::string whole = Format("%.0f", {1e300});
  ASSERT_EQ(whole.size(), 301u);
  EXPECT_EQ(Format("%.250f", {1e300}), whole + "." + std::string(250, '0'));
}

// ---------------------------------------------------------------------------
// Directives that are not filled

TEST(FormatDirectives, PercentSigns) {
  EXPECT_EQ(Format("%%", {}), "%");
  EXPECT_EQ(Format("50%% of %d", {8}), "50% of 8");
  EXPECT_EQ(Format("%%d", {8}), "%d");
  EXPECT_EQ(Format("100%", {}), "100%");  // a lone "%" at the end stays
  EXPECT_EQ(Format("a %5", {1}), "a %5");
  EXPECT_EQ(Format("a %-5.", {1}), "a %-5.");
}

TEST(FormatDirectives, TooFewArgumentsKeepTheDirective) {
  EXPECT_EQ(Format("%s and %s", {"a"}), "a and %s");
  EXPECT_EQ(Format("Invalid table index %d", {}), "Invalid table index %d");
  EXPECT_EQ(Format("[%-10.3d] %s", {}), "[%-10.3d] %s");
  EXPECT_EQ(Format("%s%%%s", {"x"}), "x%%s");
}

TEST(FormatDirectives, MismatchedArgumentIsWrittenAsItStands) {
  // A message must always be built, even from a wrong argument.
  EXPECT_EQ(Format("%d", {"abc"}), "abc");
  EXPECT_EQ(Format("%s", {42}), "42");
  EXPECT_EQ(Format("%s", {1.5}), "1.5");
  EXPECT_EQ(Format("%d", {2.5}), "2.5");
  EXPECT_EQ(Format("[%4s]", {7}), "[   7]");
}

// ---------------------------------------------------------------------------
// Locale

using ts4test::CommaDecimalLocale;

TEST(FormatLocale, FloatsAlwaysUsePoint) {
  auto locale = CommaDecimalLocale();
  if (!locale) GTEST_SKIP() << "no German locale installed";
  ASSERT_EQ(std::localeconv()->decimal_point, std::string(","));
  EXPECT_EQ(Format("%f", {1.5}), "1.50");
  EXPECT_EQ(Format("%.3f", {-2.25}), "-2.250");
  EXPECT_EQ(Format("%g", {36526.5}), "36526.5");
  EXPECT_EQ(Format("%s", {0.5}), "0.5");
  EXPECT_EQ(Format("%.250f", {1e300}).find(','), std::string::npos);
}

}  // namespace
