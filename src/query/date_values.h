#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "foundation/field_types.h"

namespace ts4 {

/// True for the types whose values are dates, times or both.
[[nodiscard]] constexpr bool IsDateType(TFieldType type) {
  return type == ftDate || type == ftTime || type == ftDateTime;
}

/// A calendar date and a time of day, either of which may be absent.
struct TDateTimeParts {
  int Year = 0;
  int Month = 0;
  int Day = 0;
  int Hour = 0;
  int Minute = 0;
  int Second = 0;
  int Millisecond = 0;
  bool HasDate = false;
  bool HasTime = false;
};

/// Reads "yyyy-mm-dd", "hh:nn[:ss[.zzz]]" or both separated by a blank or
/// "T"; nothing for anything else or an impossible date or time.
[[nodiscard]] std::optional<TDateTimeParts> ParseISODateTime(std::string_view text);

/// Writes the parts by a date-time format: yyyy yy m mm mmm mmmm d dd ddd
/// dddd h hh n nn s ss z zzz (an m right after an h means minutes), text
/// in single or double quotes as it stands, any other character as it is.
[[nodiscard]] std::string FormatDateTime(std::string_view format, const TDateTimeParts& parts);

/// Reads text written by FormatDateTime with the same format; nothing when
/// it does not fit or names an impossible date or time.
[[nodiscard]] std::optional<TDateTimeParts> ParseDateTime(std::string_view format, std::string_view text);

/// The parts as ISO text: "yyyy-mm-dd", "hh:nn:ss" or both with a blank.
[[nodiscard]] std::string ISODateTimeText(const TDateTimeParts& parts);

/// The date-time number of the parts: days since 1899-12-30, the time of
/// day as the fraction. Before that day the fraction still counts forward
/// from midnight, so 1899-12-29 06:00 is -1.25. Absent parts count as zero.
[[nodiscard]] double DateTimeToNumber(const TDateTimeParts& parts);
/// The date and time of a date-time number (both parts present), to the
/// millisecond; nothing for a number outside the years 1 to 9999.
[[nodiscard]] std::optional<TDateTimeParts> NumberToDateTime(double number);

}  // namespace ts4
