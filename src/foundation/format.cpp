#include "foundation/format.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace ts4 {
namespace {

struct TDirective {
  bool left = false;
  int width = -1;
  int precision = -1;
  char type = 's';
};

std::string IntText(std::int64_t value, char type) {
  char buffer[32];
  int base = type == 'x' ? 16 : 10;
  std::uint64_t magnitude =
      value < 0 && type != 'x' ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
  auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, magnitude, base);
  std::string digits(buffer, end);
  if (type == 'x') {
    for (char& c : digits) c = static_cast<char>(c >= 'a' ? c - 'a' + 'A' : c);
  }
  return value < 0 && type != 'x' ? "-" + digits : digits;
}

std::string FloatText(double value, const TDirective& directive) {
  // Numbers never follow the process locale: to_chars always writes ".".
  if (std::isnan(value)) return "NAN";
  if (std::isinf(value)) return value < 0 ? "-INF" : "INF";
  char buffer[1024];  // the longest fixed text: 309 digits, the point, 300 decimals
  if (directive.type == 'e') {
    // The platform's scientific form: `precision` significant digits
    // (default 15), a capital E, a sign and at least three exponent digits.
    int digits = directive.precision > 0 ? std::min(directive.precision, 18) : 15;
    auto [end, ec] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific, digits - 1);
    std::string text(buffer, end);
    std::size_t e = text.find('e');
    std::string exponent = text.substr(e + 2);
    if (exponent.size() < 3) exponent.insert(0, 3 - exponent.size(), '0');
    return text.substr(0, e) + "E" + text[e + 1] + exponent;
  }
  if (directive.type == 'g') {
    int digits = directive.precision > 0 ? std::min(directive.precision, 18) : 15;
    auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
    return std::string(buffer, end);
  }
  int decimals = directive.precision >= 0 ? std::min(directive.precision, 300) : 2;
  auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  return std::string(buffer, end);
}

std::string ArgText(const TFormatArg& arg, const TDirective& directive) {
  switch (directive.type) {
    case 'd':
    case 'u':
    case 'x':
      if (arg.Kind() == TFormatArg::TKind::Int) {
        std::string text = IntText(arg.Int(), directive.type);
        // The platform's precision on integers is a minimum digit count.
        bool negative = !text.empty() && text[0] == '-';
        std::size_t digits = text.size() - (negative ? 1 : 0);
        if (directive.precision > 0 && digits < static_cast<std::size_t>(directive.precision))
          text.insert(negative ? 1 : 0, static_cast<std::size_t>(directive.precision) - digits, '0');
        return text;
      }
      break;
    case 'f':
    case 'g':
    case 'e':
      if (arg.Kind() == TFormatArg::TKind::Float) return FloatText(arg.Float(), directive);
      if (arg.Kind() == TFormatArg::TKind::Int) return FloatText(static_cast<double>(arg.Int()), directive);
      break;
    default: break;
  }
  // A mismatched argument is written as it stands rather than refused:
  // a message must never fail to be built.
  switch (arg.Kind()) {
    case TFormatArg::TKind::Int: return IntText(arg.Int(), 'd');
    case TFormatArg::TKind::Float: {
      TDirective general;
      general.type = 'g';
      return FloatText(arg.Float(), general);
    }
    case TFormatArg::TKind::Text: {
      std::string_view text = arg.Text();
      if (directive.type == 's' && directive.precision >= 0 &&
          text.size() > static_cast<std::size_t>(directive.precision))
        text = text.substr(0, static_cast<std::size_t>(directive.precision));
      return std::string(text);
    }
  }
  return {};
}

int ReadNumber(std::string_view format, std::size_t& i) {
  int value = 0;
  while (i < format.size() && format[i] >= '0' && format[i] <= '9') {
    if (value < 10000) value = value * 10 + (format[i] - '0');
    ++i;
  }
  return value;
}

}  // namespace

std::string Format(std::string_view format, std::initializer_list<TFormatArg> args) {
  std::string result;
  result.reserve(format.size() + 16);
  const TFormatArg* next = args.begin();
  std::size_t i = 0;
  while (i < format.size()) {
    char c = format[i++];
    if (c != '%') {
      result += c;
      continue;
    }
    if (i < format.size() && format[i] == '%') {
      result += '%';
      ++i;
      continue;
    }
    std::size_t start = i - 1;
    TDirective directive;
    if (i < format.size() && format[i] == '-') {
      directive.left = true;
      ++i;
    }
    if (i < format.size() && format[i] >= '0' && format[i] <= '9') directive.width = ReadNumber(format, i);
    if (i < format.size() && format[i] == '.') {
      ++i;
      directive.precision = ReadNumber(format, i);
    }
    if (i >= format.size()) {
      result.append(format.substr(start));
      break;
    }
    directive.type = static_cast<char>(format[i] | 0x20);  // the platform accepts either case
    ++i;
    if (next == args.end()) {
      // Too few arguments: keep the directive visible instead of inventing a value.
      result.append(format.substr(start, i - start));
      continue;
    }
    std::string text = ArgText(*next++, directive);
    if (directive.width > 0 && text.size() < static_cast<std::size_t>(directive.width)) {
      std::string pad(static_cast<std::size_t>(directive.width) - text.size(), ' ');
      text = directive.left ? text + pad : pad + text;
    }
    result += text;
  }
  return result;
}

}  // namespace ts4
