#include "foundation/string_utils.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "foundation/strings.h"

namespace ts4 {
namespace {

constexpr char FoldCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// Ordering folds to upper case, as the platform does, so that "_" sorts after letters.
constexpr char FoldUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

std::string ReplaceAll(std::string_view text, std::string_view search, std::string_view replacement,
                       bool ignoreCase) {
  if (search.empty()) return std::string(text);
  if (!ignoreCase) {
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = text.find(search); at != std::string_view::npos; at = text.find(search, from)) {
      if (result.empty()) result.reserve(text.size() + replacement.size());
      result.append(text.substr(from, at - from)).append(replacement);
      from = at + search.size();
    }
    result.append(text.substr(from));
    return result;
  }
  std::string result;
  result.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    bool match = i + search.size() <= text.size();
    for (std::size_t k = 0; match && k < search.size(); ++k)
      match = ignoreCase ? FoldCase(text[i + k]) == FoldCase(search[k]) : text[i + k] == search[k];
    if (match) {
      result.append(replacement);
      i += search.size();
    } else {
      result += text[i++];
    }
  }
  return result;
}

}  // namespace

std::string LowerCase(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = FoldCase(c);
  return result;
}

std::string UpperCase(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return result;
}

int CompareText(std::string_view a, std::string_view b) {
  std::size_t n = a.size() < b.size() ? a.size() : b.size();
  for (std::size_t i = 0; i < n; ++i) {
    auto ca = static_cast<unsigned char>(FoldUpper(a[i]));
    auto cb = static_cast<unsigned char>(FoldUpper(b[i]));
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool SameText(std::string_view a, std::string_view b) {
  return a.size() == b.size() && CompareText(a, b) == 0;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string GetBeforeSep(std::string_view separator, std::string_view text) {
  std::size_t at = separator.empty() ? std::string_view::npos : text.find(separator);
  return std::string(at == std::string_view::npos ? text : text.substr(0, at));
}

std::string GetAfterSep(std::string_view separator, std::string_view text) {
  std::size_t at = separator.empty() ? std::string_view::npos : text.find(separator);
  return at == std::string_view::npos ? std::string() : std::string(text.substr(at + separator.size()));
}

int XStrToInt(std::string_view text, int fallback) {
  text = Trim(text);
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && text.front() == '-') return fallback;
  }
  int value = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || ec != std::errc() || end != text.data() + text.size()) return fallback;
  return value;
}

bool XStrToBool(std::string_view text) {
  text = Trim(text);
  if (SameText(text, "true")) return true;
  return XStrToInt(text, 0) != 0;
}

std::string XBoolToStr(bool value) {
  return value ? "1" : "0";
}

std::string XFloatToStr(double value) {
  if (!std::isfinite(value)) return "0";
  char buffer[64];
  auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  return ec == std::errc() ? std::string(buffer, end) : std::string("0");
}

double XStrToFloat(std::string_view text, double fallback) {
  std::string copy(Trim(text));
  if (!copy.empty() && copy.front() == '+') {
    copy.erase(0, 1);
    if (!copy.empty() && copy.front() == '-') return fallback;
  }
  for (char& c : copy)
    if (c == ',') c = '.';
  double value = 0;
  auto [end, ec] = std::from_chars(copy.data(), copy.data() + copy.size(), value);
  if (copy.empty() || ec != std::errc() || end != copy.data() + copy.size() || !std::isfinite(value))
    return fallback;
  return value;
}

std::string ReplaceStr(std::string_view text, std::string_view search, std::string_view replacement) {
  return ReplaceAll(text, search, replacement, false);
}

std::string XReplaceStr(std::string_view text, std::string_view search, std::string_view replacement,
                        bool ignoreCase) {
  return ReplaceAll(text, search, replacement, ignoreCase);
}

std::string QuotedString(std::string_view text, char quote) {
  std::string result(1, quote);
  for (char c : text) {
    result += c;
    if (c == quote) result += quote;
  }
  result += quote;
  return result;
}

std::string UnquotedString(std::string_view text, char quote) {
  if (text.size() < 2 || text.front() != quote || text.back() != quote) return std::string(text);
  std::string result;
  std::string_view inner = text.substr(1, text.size() - 2);
  for (std::size_t i = 0; i < inner.size(); ++i) {
    result += inner[i];
    if (inner[i] == quote && i + 1 < inner.size() && inner[i + 1] == quote) ++i;
  }
  return result;
}

int CXPos(std::string_view what, std::string_view text, int start, int option) {
  if (start < 1) start = 1;
  auto from = static_cast<std::size_t>(start - 1);
  if (what.empty() || from > text.size() || what.size() > text.size() - from) return 0;
  for (std::size_t i = from; i + what.size() <= text.size(); ++i) {
    bool match = true;
    for (std::size_t k = 0; match && k < what.size(); ++k)
      match = option == 1 ? FoldCase(text[i + k]) == FoldCase(what[k]) : text[i + k] == what[k];
    if (match) return static_cast<int>(i + 1);
  }
  return 0;
}

std::string Replicate(std::string_view text, int count) {
  std::string result;
  if (count <= 0) return result;
  result.reserve(text.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) result.append(text);
  return result;
}

int CharCount(char c, std::string_view text) {
  int count = 0;
  for (char x : text)
    if (x == c) ++count;
  return count;
}

bool EqualToSpaces(std::string_view a, std::string_view b) {
  std::size_t i = 0;
  std::size_t j = 0;
  while (true) {
    while (i < a.size() && a[i] == ' ') ++i;
    while (j < b.size() && b[j] == ' ') ++j;
    if (i == a.size() || j == b.size()) return i == a.size() && j == b.size();
    if (a[i++] != b[j++]) return false;
  }
}

bool StrInList(std::string_view text, const TStrings& list) {
  return list.IndexOf(text) >= 0;
}

std::string BlanklessLowerCase(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (char c : text) {
    if (!IsBlank(c)) result += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return result;
}

bool IsSQLNameChar(char c) {
  const auto u = static_cast<unsigned char>(c);
  return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u >= 0x80 ||
         c == '_' || c == '$' || c == '#';
}

std::vector<std::pair<std::size_t, std::size_t>> SQLQualifiers(std::string_view expr) {
  std::vector<std::pair<std::size_t, std::size_t>> found;
  std::size_t i = 0;
  while (i < expr.size()) {
    if (expr[i] == '\'' || expr[i] == '"') {  // nothing inside strings and quoted names
      const std::size_t close = expr.find(expr[i], i + 1);
      i = close == std::string_view::npos ? expr.size() : close + 1;
      continue;
    }
    if (!IsSQLNameChar(expr[i]) || (i > 0 && (IsSQLNameChar(expr[i - 1]) || expr[i - 1] == '.'))) {
      ++i;
      continue;
    }
    std::size_t end = i;
    while (end < expr.size() && IsSQLNameChar(expr[end])) ++end;
    if (end < expr.size() && expr[end] == '.') found.emplace_back(i, end - i);
    i = end;
  }
  return found;
}

}  // namespace ts4
