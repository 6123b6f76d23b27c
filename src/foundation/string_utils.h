#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ts4 {

class TStrings;

// Text helpers used across the library. Case folding is ASCII only: names,
// keywords and keys are compared without regard to ASCII case, and any other
// byte of UTF-8 text compares as it is.

/// Lower-cases ASCII letters.
[[nodiscard]] std::string LowerCase(std::string_view text);
/// Upper-cases ASCII letters.
[[nodiscard]] std::string UpperCase(std::string_view text);
/// Compares ignoring ASCII case: negative, zero or positive.
[[nodiscard]] int CompareText(std::string_view a, std::string_view b);
/// True when the texts are equal ignoring ASCII case.
[[nodiscard]] bool SameText(std::string_view a, std::string_view b);
/// The text without leading and trailing blanks and control characters.
[[nodiscard]] std::string_view Trim(std::string_view text);

/// The text before the first occurrence of the separator; the whole text when absent.
[[nodiscard]] std::string GetBeforeSep(std::string_view separator, std::string_view text);
/// The text after the first occurrence of the separator; empty when absent.
[[nodiscard]] std::string GetAfterSep(std::string_view separator, std::string_view text);

/// The decimal value (blanks around it allowed); `fallback` for the empty text
/// of a missing key and for anything that is not a number in range.
[[nodiscard]] int XStrToInt(std::string_view text, int fallback = 0);
/// True for "1" (and any other non-zero number, or "true" in any case); false
/// for "0", the empty text of a missing key and anything else.
[[nodiscard]] bool XStrToBool(std::string_view text);
/// "1" or "0", the form booleans are stored in.
[[nodiscard]] std::string XBoolToStr(bool value);
/// The shortest text that reads back as the same number, with "." as the
/// decimal separator whatever the locale.
[[nodiscard]] std::string XFloatToStr(double value);
/// The number written with "." (a "," is accepted too); `fallback` for the
/// empty text and anything that is not a number.
[[nodiscard]] double XStrToFloat(std::string_view text, double fallback = 0);

/// Replaces every occurrence of `search` (case-sensitive).
[[nodiscard]] std::string ReplaceStr(std::string_view text, std::string_view search,
                                     std::string_view replacement);
/// Replaces every occurrence of `search`; case-sensitive when `ignoreCase` is
/// false, ignoring ASCII case when it is true.
[[nodiscard]] std::string XReplaceStr(std::string_view text, std::string_view search,
                                      std::string_view replacement, bool ignoreCase);

/// The text enclosed in the quote character with inner quote characters doubled.
[[nodiscard]] std::string QuotedString(std::string_view text, char quote);
/// The reverse of QuotedString for a text that starts and ends with the
/// quote; any other text is returned as it stands.
[[nodiscard]] std::string UnquotedString(std::string_view text, char quote);

/// Position (from 1) of the first occurrence of `what` in `text` at or after
/// position `start`, 0 when absent. Option 1 ignores ASCII case, 0 compares exactly.
[[nodiscard]] int CXPos(std::string_view what, std::string_view text, int start, int option);

/// The text repeated `count` times.
[[nodiscard]] std::string Replicate(std::string_view text, int count);
/// Number of occurrences of a character.
[[nodiscard]] int CharCount(char c, std::string_view text);
/// True when the texts are equal once every blank is removed from both.
[[nodiscard]] bool EqualToSpaces(std::string_view a, std::string_view b);
/// True for a blank: space, tab, line break or any other byte up to the space.
[[nodiscard]] constexpr bool IsBlank(char c) {
  return static_cast<unsigned char>(c) <= ' ';
}
/// The text in lower case with every blank taken out: how SQL expressions
/// are compared ("C.Qty * C.Price" and "c.qty*c.price" are the same).
[[nodiscard]] std::string BlanklessLowerCase(std::string_view text);
/// A byte of an SQL name: an ASCII letter or digit, "_", "$", "#", or a byte
/// of a multi-byte character.
[[nodiscard]] bool IsSQLNameChar(char c);
/// The names in an SQL expression that qualify another name (the "C" of
/// C.CITY), outside strings and quoted names, as offset and length.
[[nodiscard]] std::vector<std::pair<std::size_t, std::size_t>> SQLQualifiers(std::string_view expr);
/// True when the list holds a line equal to the text ignoring ASCII case.
[[nodiscard]] bool StrInList(std::string_view text, const TStrings& list);
/// The smaller of two integers.
[[nodiscard]] constexpr int MinInt(int a, int b) {
  return a < b ? a : b;
}

}  // namespace ts4
