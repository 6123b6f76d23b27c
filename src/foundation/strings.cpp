#include "foundation/strings.h"

#include <fstream>
#include <iterator>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"

namespace ts4 {
namespace {

constexpr char Quote = '"';
constexpr char Delimiter = ',';

constexpr bool IsBlankOrControl(char c) {
  return static_cast<unsigned char>(c) <= ' ';
}

bool NeedsQuotes(std::string_view item) {
  for (char c : item)
    if (IsBlankOrControl(c) || c == Quote || c == Delimiter) return true;
  return false;
}

}  // namespace

void TStrings::CheckIndex(int index, int limit) const {
  if (index < 0 || index >= limit) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
}

const std::string& TStrings::Strings(int index) const {
  CheckIndex(index, Count());
  return lines_[static_cast<std::size_t>(index)];
}

void TStrings::SetStrings(int index, std::string line) {
  CheckIndex(index, Count());
  lines_[static_cast<std::size_t>(index)] = std::move(line);
}

void TStrings::AppendToLine(int index, std::string_view text) {
  CheckIndex(index, Count());
  lines_[static_cast<std::size_t>(index)] += text;
}

int TStrings::Add(std::string line) {
  lines_.push_back(std::move(line));
  return Count() - 1;
}

void TStrings::AddStrings(const TStrings& other) {
  lines_.insert(lines_.end(), other.lines_.begin(), other.lines_.end());
}

void TStrings::Insert(int index, std::string line) {
  CheckIndex(index, Count() + 1);
  lines_.insert(lines_.begin() + index, std::move(line));
}

void TStrings::Delete(int index) {
  CheckIndex(index, Count());
  lines_.erase(lines_.begin() + index);
}

void TStrings::Move(int from, int to) {
  CheckIndex(from, Count());
  CheckIndex(to, Count());
  std::string line = std::move(lines_[static_cast<std::size_t>(from)]);
  lines_.erase(lines_.begin() + from);
  lines_.insert(lines_.begin() + to, std::move(line));
}

int TStrings::IndexOf(std::string_view text) const {
  for (std::size_t i = 0; i < lines_.size(); ++i)
    if (SameText(lines_[i], text)) return static_cast<int>(i);
  return -1;
}

int TStrings::IndexOfName(std::string_view name) const {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    std::string_view line = lines_[i];
    std::size_t eq = line.find('=');
    if (eq != std::string_view::npos && SameText(line.substr(0, eq), name)) return static_cast<int>(i);
  }
  return -1;
}

std::string TStrings::Names(int index) const {
  const std::string& line = Strings(index);
  std::size_t eq = line.find('=');
  return eq == std::string::npos ? std::string() : line.substr(0, eq);
}

std::string TStrings::ValueFromIndex(int index) const {
  const std::string& line = Strings(index);
  std::size_t eq = line.find('=');
  return eq == std::string::npos ? std::string() : line.substr(eq + 1);
}

std::string TStrings::Values(std::string_view name) const {
  int index = IndexOfName(name);
  return index < 0 ? std::string() : ValueFromIndex(index);
}

void TStrings::SetValue(std::string_view name, std::string_view value) {
  int index = IndexOfName(name);
  if (value.empty()) {
    if (index >= 0) Delete(index);
    return;
  }
  std::string line = std::string(name) + "=" + std::string(value);
  if (index < 0)
    Add(std::move(line));
  else
    lines_[static_cast<std::size_t>(index)] = std::move(line);
}

std::string TStrings::CommaText() const {
  if (lines_.size() == 1 && lines_[0].empty()) return std::string(2, Quote);
  std::string result;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (i > 0) result += Delimiter;
    result += NeedsQuotes(lines_[i]) ? QuotedString(lines_[i], Quote) : lines_[i];
  }
  return result;
}

void TStrings::SetCommaText(std::string_view text) {
  // Follows the platform's reader step by step, including its handling of a
  // quote that is never closed (the item runs to the end) and of text glued
  // to a closing quote (it starts a new item).
  lines_.clear();
  std::size_t p = 0;
  auto skipBlanks = [&] {
    while (p < text.size() && text[p] != '\0' && IsBlankOrControl(text[p])) ++p;
  };
  skipBlanks();
  while (p < text.size() && text[p] != '\0') {
    std::string item;
    if (text[p] == Quote) {
      ++p;
      while (p < text.size()) {
        if (text[p] == Quote) {
          if (p + 1 < text.size() && text[p + 1] == Quote) {
            item += Quote;
            p += 2;
            continue;
          }
          ++p;
          break;
        }
        item += text[p++];
      }
    } else {
      std::size_t start = p;
      while (p < text.size() && !IsBlankOrControl(text[p]) && text[p] != Delimiter) ++p;
      item.assign(text.substr(start, p - start));
    }
    lines_.push_back(std::move(item));
    skipBlanks();
    if (p < text.size() && text[p] == Delimiter) {
      if (p + 1 == text.size()) lines_.emplace_back();
      ++p;
      skipBlanks();
    }
  }
}

std::string TStrings::Text() const {
  std::string result;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (i > 0) result += "\r\n";
    result += lines_[i];
  }
  return result;
}

void TStrings::SetText(std::string_view text) {
  lines_.clear();
  if (text.empty()) return;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') continue;
    lines_.emplace_back(text.substr(start, i - start));
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    start = i + 1;
  }
  lines_.emplace_back(text.substr(start));
}

void TStrings::LoadFromFile(const std::string& fileName) {
  std::ifstream in(fileName, std::ios::binary);
  if (!in) throw EWTessalyError(gecGeneral, msg::CannotOpenFile, fileName);
  std::string content;
  try {
    content.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  } catch (const std::exception&) {
    // A path that opens but cannot be read (a directory, a device error).
    throw EWTessalyError(gecGeneral, msg::CannotOpenFile, fileName);
  }
  if (in.bad()) throw EWTessalyError(gecGeneral, msg::CannotOpenFile, fileName);
  // A final line break ends the last line; it does not start another one.
  bool hadText = !content.empty();
  if (!content.empty() && content.back() == '\n') content.pop_back();
  if (!content.empty() && content.back() == '\r') content.pop_back();
  SetText(content);
  if (content.empty() && hadText) lines_.emplace_back();
}

void TStrings::SaveToFile(const std::string& fileName) const {
  std::ofstream out(fileName, std::ios::binary | std::ios::trunc);
  for (const std::string& line : lines_) out << line << "\r\n";
  out.flush();
  if (!out) throw EWTessalyError(gecGeneral, msg::CannotWriteFile, fileName);
}

}  // namespace ts4
