#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

namespace ts4 {

/// One argument of Format: an integer, a floating-point number or a text.
class TFormatArg {
 public:
  enum class TKind : std::uint8_t { Int, Float, Text };

  template <typename T>
  requires(std::is_integral_v<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char>) TFormatArg(T value)
      : kind_(TKind::Int), int_(static_cast<std::int64_t>(value)) {}
  TFormatArg(double value) : kind_(TKind::Float), float_(value) {}
  TFormatArg(std::string_view value) : kind_(TKind::Text), text_(value) {}
  TFormatArg(const std::string& value) : kind_(TKind::Text), text_(value) {}
  TFormatArg(const char* value) : kind_(TKind::Text), text_(value) {}

  [[nodiscard]] TKind Kind() const { return kind_; }
  [[nodiscard]] std::int64_t Int() const { return int_; }
  [[nodiscard]] double Float() const { return float_; }
  [[nodiscard]] std::string_view Text() const { return text_; }

 private:
  TKind kind_;
  std::int64_t int_ = 0;
  double float_ = 0;
  std::string_view text_;
};

/// Fills a format in the manner of the platform's Format: %s, %d, %u, %x, %f,
/// %g, %e and %% with optional "-", width and ".precision".
[[nodiscard]] std::string Format(std::string_view format, std::initializer_list<TFormatArg> args);

}  // namespace ts4
