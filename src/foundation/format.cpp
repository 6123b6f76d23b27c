#include "foundation/format.h"

#include <charconv>
#include <cstdio>

namespace ts4 {
namespace {

struct TSpec {
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

std::string FloatText(double value, const TSpec& spec) {
  // Numbers never follow the process locale: to_chars always writes ".".
  char buffer[512];
  std::chars_format format = spec.type == 'e'   ? std::chars_format::scientific
                             : spec.type == 'g' ? std::chars_format::general
                                                : std::chars_format::fixed;
  int precision = spec.precision >= 0 ? spec.precision : (spec.type == 'g' ? 15 : 2);
  if (precision > 300) precision = 300;
  auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value, format, precision);
  if (ec != std::errc()) return std::to_string(value);
  return std::string(buffer, end);
}

std::string ArgText(const TFormatArg& arg, const TSpec& spec) {
  switch (spec.type) {
    case 'd':
    case 'u':
    case 'x':
      if (arg.Kind() == TFormatArg::TKind::Int) {
        std::string text = IntText(arg.Int(), spec.type);
        // The platform's precision on integers is a minimum digit count.
        bool negative = !text.empty() && text[0] == '-';
        std::size_t digits = text.size() - (negative ? 1 : 0);
        if (spec.precision > 0 && digits < static_cast<std::size_t>(spec.precision))
          text.insert(negative ? 1 : 0, static_cast<std::size_t>(spec.precision) - digits, '0');
        return text;
      }
      break;
    case 'f':
    case 'g':
    case 'e':
      if (arg.Kind() == TFormatArg::TKind::Float) return FloatText(arg.Float(), spec);
      if (arg.Kind() == TFormatArg::TKind::Int) return FloatText(static_cast<double>(arg.Int()), spec);
      break;
    default: break;
  }
  // A mismatched argument is written as it stands rather than refused:
  // a message must never fail to be built.
  switch (arg.Kind()) {
    case TFormatArg::TKind::Int: return IntText(arg.Int(), 'd');
    case TFormatArg::TKind::Float: {
      TSpec general;
      general.type = 'g';
      return FloatText(arg.Float(), general);
    }
    case TFormatArg::TKind::Text: {
      std::string_view text = arg.Text();
      if (spec.type == 's' && spec.precision >= 0 && text.size() > static_cast<std::size_t>(spec.precision))
        text = text.substr(0, static_cast<std::size_t>(spec.precision));
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
    TSpec spec;
    if (i < format.size() && format[i] == '-') {
      spec.left = true;
      ++i;
    }
    if (i < format.size() && format[i] >= '0' && format[i] <= '9') spec.width = ReadNumber(format, i);
    if (i < format.size() && format[i] == '.') {
      ++i;
      spec.precision = ReadNumber(format, i);
    }
    if (i >= format.size()) {
      result.append(format.substr(start));
      break;
    }
    spec.type = static_cast<char>(format[i] | 0x20);  // the platform accepts either case
    ++i;
    if (next == args.end()) {
      // Too few arguments: keep the directive visible instead of inventing a value.
      result.append(format.substr(start, i - start));
      continue;
    }
    std::string text = ArgText(*next++, spec);
    if (spec.width > 0 && text.size() < static_cast<std::size_t>(spec.width)) {
      std::string pad(static_cast<std::size_t>(spec.width) - text.size(), ' ');
      text = spec.left ? text + pad : pad + text;
    }
    result += text;
  }
  return result;
}

}  // namespace ts4
