#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ts4 {

/// The three SQL syntaxes that statements are written in: joins in the WHERE
/// clause, JOIN clauses, and the outer-join marker "(+)".
enum class TSQLSyntax : std::uint8_t { ssSQL1, ssSQL2, ssOracle };
using enum TSQLSyntax;

/// How dates and times are written into SQL, and the characters that quote names.
class TSQLFormats {
 public:
  [[nodiscard]] const std::string& DateFormat() const { return dateFormat_; }
  void SetDateFormat(std::string format) { dateFormat_ = std::move(format); }
  [[nodiscard]] const std::string& TimeFormat() const { return timeFormat_; }
  void SetTimeFormat(std::string format) { timeFormat_ = std::move(format); }
  [[nodiscard]] const std::string& DateTimeFormat() const { return dateTimeFormat_; }
  void SetDateTimeFormat(std::string format) { dateTimeFormat_ = std::move(format); }
  /// Opening quote of quoted names.
  [[nodiscard]] char QuoteSymbol1() const { return quoteSymbol1_; }
  void SetQuoteSymbol1(char symbol) { quoteSymbol1_ = symbol; }
  /// Closing quote of quoted names.
  [[nodiscard]] char QuoteSymbol2() const { return quoteSymbol2_; }
  void SetQuoteSymbol2(char symbol) { quoteSymbol2_ = symbol; }

  /// The name between the quote symbols when `quote` is true, else as it stands.
  [[nodiscard]] std::string QuoteName(std::string_view name, bool quote) const;

  [[nodiscard]] friend bool operator==(const TSQLFormats&, const TSQLFormats&) = default;

 private:
  std::string dateFormat_ = "yyyy-mm-dd";
  std::string timeFormat_ = "hh:nn:ss";
  std::string dateTimeFormat_ = "yyyy-mm-dd hh:nn:ss";
  char quoteSymbol1_ = '"';
  char quoteSymbol2_ = '"';
};

}  // namespace ts4
