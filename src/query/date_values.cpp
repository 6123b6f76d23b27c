#include "query/date_values.h"

#include <array>
#include <cctype>
#include <cmath>

#include "foundation/string_utils.h"

namespace ts4 {
namespace {

constexpr std::array<std::string_view, 12> MonthNames = {"January",   "February", "March",    "April",
                                                         "May",       "June",     "July",     "August",
                                                         "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> DayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};

bool IsLeap(int year) {
  return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysInMonth(int year, int month) {
  static constexpr std::array<int, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeap(year) ? 29 : days[static_cast<std::size_t>(month - 1)];
}

bool Valid(const TDateTimeParts& p) {
  if (p.HasDate && (p.Year < 1 || p.Year > 9999 || p.Month < 1 || p.Month > 12 || p.Day < 1 ||
                    p.Day > DaysInMonth(p.Year, p.Month))) {
    return false;
  }
  return !p.HasTime || (p.Hour >= 0 && p.Hour < 24 && p.Minute >= 0 && p.Minute < 60 && p.Second >= 0 &&
                        p.Second < 60 && p.Millisecond >= 0 && p.Millisecond < 1000);
}

/// 0 for Sunday (the proleptic Gregorian calendar).
int DayOfWeek(int year, int month, int day) {
  static constexpr std::array<int, 12> offsets = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
  if (month < 3) --year;
  return (year + year / 4 - year / 100 + year / 400 + offsets[static_cast<std::size_t>(month - 1)] + day) % 7;
}

/// Reads between `least` and `most` digits at `pos`; -1 when there are fewer.
int ReadNumber(std::string_view text, std::size_t& pos, std::size_t least, std::size_t most) {
  std::size_t count = 0;
  int value = 0;
  while (count < most && pos < text.size() && std::isdigit(static_cast<unsigned char>(text[pos])) != 0) {
    value = value * 10 + (text[pos] - '0');
    ++pos;
    ++count;
  }
  return count < least ? -1 : value;
}

bool ReadTime(std::string_view text, std::size_t& pos, TDateTimeParts& p) {
  p.Hour = ReadNumber(text, pos, 1, 2);
  if (p.Hour < 0 || pos >= text.size() || text[pos] != ':') return false;
  ++pos;
  p.Minute = ReadNumber(text, pos, 2, 2);
  if (p.Minute < 0) return false;
  if (pos < text.size() && text[pos] == ':') {
    ++pos;
    p.Second = ReadNumber(text, pos, 2, 2);
    if (p.Second < 0) return false;
    if (pos < text.size() && text[pos] == '.') {
      ++pos;
      const std::size_t start = pos;
      p.Millisecond = ReadNumber(text, pos, 1, 3);
      if (p.Millisecond < 0) return false;
      for (std::size_t n = pos - start; n < 3; ++n) p.Millisecond *= 10;
    }
  }
  p.HasTime = true;
  return true;
}

/// Length of the run of `c` (case ignored) at `pos`.
std::size_t RunLength(std::string_view format, std::size_t pos) {
  const auto lower = [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); };
  std::size_t n = 1;
  while (pos + n < format.size() && lower(format[pos + n]) == lower(format[pos])) ++n;
  return n;
}

/// The number in decimal, with leading zeros up to `width` digits.
std::string Padded(int value, std::size_t width) {
  std::string digits = std::to_string(value);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

/// Visits the format's tokens: fn(letter, run length) for fields, lit(text) for literal text.
template <typename Field, typename Literal>
void WalkFormat(std::string_view format, Field&& field, Literal&& literal) {
  bool afterHour = false;
  std::size_t i = 0;
  while (i < format.size()) {
    const char c = format[i];
    if (c == '\'' || c == '"') {
      const std::size_t close = format.find(c, i + 1);
      const std::size_t end = close == std::string_view::npos ? format.size() : close;
      literal(format.substr(i + 1, end - i - 1));
      i = end + 1;
      continue;
    }
    char letter = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (letter == 'y' || letter == 'm' || letter == 'd' || letter == 'h' || letter == 'n' || letter == 's' ||
        letter == 'z') {
      const std::size_t n = RunLength(format, i);
      if (letter == 'm' && afterHour && n <= 2) letter = 'n';
      afterHour = letter == 'h';
      if (!field(letter, n)) return;
      i += n;
      continue;
    }
    literal(format.substr(i, 1));
    ++i;
  }
}

constexpr double MillisecondsPerDay = 86400000.0;

/// Days from 1970-01-01 to the date (proleptic Gregorian calendar).
long long DaysFromCivil(long long year, int month, int day) {
  year -= month <= 2 ? 1 : 0;
  const long long era = (year >= 0 ? year : year - 399) / 400;
  const long long yearOfEra = year - era * 400;
  const long long dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const long long dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

/// The date that many days after 1970-01-01.
void CivilFromDays(long long days, TDateTimeParts& p) {
  days += 719468;
  const long long era = (days >= 0 ? days : days - 146096) / 146097;
  const long long dayOfEra = days - era * 146097;
  const long long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const long long mp = (5 * dayOfYear + 2) / 153;
  p.Day = static_cast<int>(dayOfYear - (153 * mp + 2) / 5 + 1);
  p.Month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  p.Year = static_cast<int>(yearOfEra + era * 400 + (p.Month <= 2 ? 1 : 0));
}

/// Day 0 of date-time numbers, 1899-12-30, counted from 1970-01-01.
const long long NumberEpoch = DaysFromCivil(1899, 12, 30);

}  // namespace

std::optional<TDateTimeParts> ParseISODateTime(std::string_view text) {
  text = Trim(text);
  TDateTimeParts p;
  std::size_t pos = 0;
  const bool timeOnly = text.size() >= 3 && (text[1] == ':' || text[2] == ':');
  if (!timeOnly) {
    p.Year = ReadNumber(text, pos, 4, 4);
    if (p.Year < 0 || pos >= text.size() || text[pos++] != '-') return std::nullopt;
    p.Month = ReadNumber(text, pos, 1, 2);
    if (p.Month < 0 || pos >= text.size() || text[pos++] != '-') return std::nullopt;
    p.Day = ReadNumber(text, pos, 1, 2);
    if (p.Day < 0) return std::nullopt;
    p.HasDate = true;
    if (pos < text.size() && (text[pos] == ' ' || text[pos] == 'T'))
      ++pos;
    else if (pos < text.size())
      return std::nullopt;
  }
  if (pos < text.size() && !ReadTime(text, pos, p)) return std::nullopt;
  if (pos != text.size() || !Valid(p)) return std::nullopt;
  return p;
}

std::string FormatDateTime(std::string_view format, const TDateTimeParts& p) {
  std::string out;
  WalkFormat(
      format,
      [&](char letter, std::size_t n) {
        switch (letter) {
          case 'y': out += n <= 2 ? Padded(p.Year % 100, 2) : Padded(p.Year, 4); break;
          case 'm':
            if (n >= 3 && p.Month >= 1 && p.Month <= 12) {
              const std::string_view name = MonthNames[static_cast<std::size_t>(p.Month - 1)];
              out += n == 3 ? name.substr(0, 3) : name;
            } else {
              out += Padded(p.Month, n);
            }
            break;
          case 'd':
            if (n >= 3 && p.HasDate) {
              const std::string_view name =
                  DayNames[static_cast<std::size_t>(DayOfWeek(p.Year, p.Month, p.Day))];
              out += n == 3 ? name.substr(0, 3) : name;
            } else {
              out += Padded(p.Day, n);
            }
            break;
          case 'h': out += Padded(p.Hour, n); break;
          case 'n': out += Padded(p.Minute, n); break;
          case 's': out += Padded(p.Second, n); break;
          default: out += n >= 3 ? Padded(p.Millisecond, 3) : Padded(p.Millisecond, 1); break;
        }
        return true;
      },
      [&](std::string_view text) { out += text; });
  return out;
}

std::optional<TDateTimeParts> ParseDateTime(std::string_view format, std::string_view text) {
  TDateTimeParts p;
  std::size_t pos = 0;
  bool ok = true;
  WalkFormat(
      format,
      [&](char letter, std::size_t n) {
        int value = -1;
        switch (letter) {
          case 'y':
            value = n <= 2 ? ReadNumber(text, pos, 2, 2) : ReadNumber(text, pos, 4, 4);
            if (value >= 0 && n <= 2) value += value < 50 ? 2000 : 1900;
            p.Year = value;
            p.HasDate = true;
            break;
          case 'm':
            value = n >= 3 ? -1 : ReadNumber(text, pos, n, 2);
            p.Month = value;
            p.HasDate = true;
            break;
          case 'd':
            value = n >= 3 ? -1 : ReadNumber(text, pos, n, 2);
            p.Day = value;
            p.HasDate = true;
            break;
          case 'h':
            p.Hour = value = ReadNumber(text, pos, n, 2);
            p.HasTime = true;
            break;
          case 'n':
            p.Minute = value = ReadNumber(text, pos, n, 2);
            p.HasTime = true;
            break;
          case 's':
            p.Second = value = ReadNumber(text, pos, n, 2);
            p.HasTime = true;
            break;
          default:
            p.Millisecond = value = ReadNumber(text, pos, 1, 3);
            p.HasTime = true;
            break;
        }
        ok = value >= 0;
        return ok;
      },
      [&](std::string_view literal) {
        if (!ok) return;
        if (text.size() - pos < literal.size() || !SameText(text.substr(pos, literal.size()), literal)) {
          ok = false;
          return;
        }
        pos += literal.size();
      });
  if (!ok || pos != text.size() || !Valid(p)) return std::nullopt;
  return p;
}

double DateTimeToNumber(const TDateTimeParts& p) {
  const double days =
      p.HasDate ? static_cast<double>(DaysFromCivil(p.Year, p.Month, p.Day) - NumberEpoch) : 0;
  const double time = p.HasTime ? ((p.Hour * 60.0 + p.Minute) * 60.0 + p.Second) * 1000.0 + p.Millisecond : 0;
  const double fraction = time / MillisecondsPerDay;
  return days < 0 ? days - fraction : days + fraction;
}

std::optional<TDateTimeParts> NumberToDateTime(double number) {
  // 0001-01-01 and the day after 9999-12-31.
  constexpr double First = -693593;
  constexpr double Last = 2958466;
  if (!(number > First - 1 && number < Last)) return std::nullopt;
  const double whole = std::trunc(number);
  auto days = static_cast<long long>(whole);
  auto time = static_cast<long long>(std::llround(std::fabs(number - whole) * MillisecondsPerDay));
  if (time >= static_cast<long long>(MillisecondsPerDay)) {  // rounded up to the next midnight
    time = 0;
    ++days;
  }
  TDateTimeParts p;
  CivilFromDays(days + NumberEpoch, p);
  p.Millisecond = static_cast<int>(time % 1000);
  p.Second = static_cast<int>(time / 1000 % 60);
  p.Minute = static_cast<int>(time / 60000 % 60);
  p.Hour = static_cast<int>(time / 3600000);
  p.HasDate = true;
  p.HasTime = true;
  if (p.Year < 1 || p.Year > 9999) return std::nullopt;
  return p;
}

std::string ISODateTimeText(const TDateTimeParts& p) {
  std::string out;
  if (p.HasDate) out = FormatDateTime("yyyy-mm-dd", p);
  if (p.HasDate && p.HasTime) out += ' ';
  if (p.HasTime) out += FormatDateTime("hh:nn:ss", p);
  return out;
}

}  // namespace ts4
