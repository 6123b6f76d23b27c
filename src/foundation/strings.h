#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ts4 {

/// An ordered list of text lines with name=value access, comma text and
/// joined text: the list every reader and writer of the library works on.
///
/// Names are matched ignoring ASCII case; a line without "=" has no name.
/// `Text` joins the lines with CR LF; setting it splits at CR LF, LF or CR.
/// Comma text follows the platform's rules: an item that is empty (as the
/// only item), or holds a character up to the blank, a comma or a double
/// quote, is written in double quotes with inner quotes doubled; reading
/// splits at commas and, outside quotes, at blanks.
class TStrings {
 public:
  TStrings() = default;
  TStrings(std::initializer_list<std::string> lines) : lines_(lines) {}

  [[nodiscard]] int Count() const { return static_cast<int>(lines_.size()); }
  [[nodiscard]] bool Empty() const { return lines_.empty(); }
  /// The line at the index; a bad index raises EWTessalyError.
  [[nodiscard]] const std::string& Strings(int index) const;
  [[nodiscard]] const std::string& operator[](int index) const { return Strings(index); }
  void SetStrings(int index, std::string line);
  /// Appends the text to the line at the index.
  void AppendToLine(int index, std::string_view text);
  /// Makes room for that many lines.
  void Reserve(int count) { lines_.reserve(static_cast<std::size_t>(count > 0 ? count : 0)); }

  int Add(std::string line);
  void AddStrings(const TStrings& other);
  void Insert(int index, std::string line);
  void Delete(int index);
  void Move(int from, int to);
  void Clear() { lines_.clear(); }
  void Assign(const TStrings& other) { lines_ = other.lines_; }

  /// Index of the first line equal to the text ignoring ASCII case, or -1.
  [[nodiscard]] int IndexOf(std::string_view text) const;
  /// Index of the first line whose name equals `name` ignoring ASCII case, or -1.
  [[nodiscard]] int IndexOfName(std::string_view name) const;
  /// The text before the first "=" of the line; empty for a line without "=".
  [[nodiscard]] std::string Names(int index) const;
  /// The text after the first "=" of the line; empty for a line without "=".
  [[nodiscard]] std::string ValueFromIndex(int index) const;
  /// The value of the first line with that name; empty when there is none.
  [[nodiscard]] std::string Values(std::string_view name) const;
  /// Sets the value of the named line, adding the line when missing; an
  /// empty value deletes the line, as the platform's lists do.
  void SetValue(std::string_view name, std::string_view value);

  [[nodiscard]] std::string CommaText() const;
  void SetCommaText(std::string_view text);
  [[nodiscard]] std::string Text() const;
  void SetText(std::string_view text);

  /// Reads a text file (LF or CR LF); raises EWTessalyError when it cannot be read.
  void LoadFromFile(const std::string& fileName);
  /// Writes every line ended by CR LF; raises EWTessalyError when it cannot be written.
  void SaveToFile(const std::string& fileName) const;

  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }
  [[nodiscard]] auto begin() const { return lines_.begin(); }
  [[nodiscard]] auto end() const { return lines_.end(); }
  [[nodiscard]] friend bool operator==(const TStrings&, const TStrings&) = default;

 private:
  void CheckIndex(int index, int limit) const;
  std::vector<std::string> lines_;
};

}  // namespace ts4
