#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ts4 {

/// The text of one condition prepared for matching against templates, with
/// its left-hand expression: which of its single quotes open or close a
/// string (a doubled quote inside a string does neither), and where the
/// expression ends after each lead ("" or "not(") asked about.
class TSQLMatchText {
 public:
  TSQLMatchText() = default;
  TSQLMatchText(std::string_view text, std::string_view field) { Reset(text, field); }
  /// Prepares another text, keeping the storage of the last one.
  void Reset(std::string_view text, std::string_view field);
  [[nodiscard]] std::string_view Text() const { return text_; }
  [[nodiscard]] bool IsDelimiter(std::size_t at) const { return delimiters_[at]; }
  /// The left-hand expression in lower case without blanks.
  [[nodiscard]] const std::string& FieldKey() const { return fieldKey_; }
  /// The end of the left-hand expression when the text starts with `lead`
  /// and then the expression (blanks and case ignored); npos otherwise.
  [[nodiscard]] std::size_t FieldEnd(std::string_view lead) const;

 private:
  std::string_view text_;
  std::vector<bool> delimiters_;
  std::string fieldKey_;
  // Ends already found, by lead; the leads are the templates' own texts.
  mutable std::array<std::pair<std::string_view, std::size_t>, 4> fieldEnds_;
  mutable std::size_t knownEnds_ = 0;
};

/// What each marker of a matched template stood for: slot 0 is "@f", slots
/// 1 to 9 are "@1" to "@9"; trimmed, doubled quotes kept.
struct TSQLCaptures {
  std::array<std::string, 10> Text;
  /// The template matched with its single quotes left out: values were
  /// written bare, as for a type that is not quoted.
  bool Bare = false;

  [[nodiscard]] const std::string& Field() const { return Text[0]; }
  [[nodiscard]] const std::string& Value(int index) const { return Text[static_cast<std::size_t>(index)]; }
};

/// An operator template ("@f between '@1' and '@2'") read for matching
/// conditions against it and for filling it again.
///
/// Matching ignores blanks and letter case in the template's own text. "@f"
/// must stand for the given left-hand expression (blanks and case ignored);
/// "@1" ... capture any text. A template quote matches only a quote that
/// opens or closes a string, so a value in quotes is captured whole even
/// when it holds the template's words. When the template does not match as
/// written, it is tried once more without its quotes, the way values of
/// types that are not quoted are written. A marker inside the template's
/// quotes captures the inside of one string, never text across strings. A
/// value captured without quotes holds no quote and no line break.
class TSQLTemplate {
 public:
  explicit TSQLTemplate(std::string_view text);

  [[nodiscard]] const std::string& Text() const { return text_; }
  /// Letters and symbols of the template outside its markers: the more a
  /// template spells out, the better a match with it explains a condition.
  [[nodiscard]] int Weight() const { return weight_; }

  /// A quick look at the text right after the left-hand expression: false
  /// when the template cannot match it.
  [[nodiscard]] bool MayMatch(const TSQLMatchText& text) const;
  /// `allowBare` allows the second try without quotes.
  [[nodiscard]] bool Match(const TSQLMatchText& text, TSQLCaptures& captures, bool allowBare = true) const;
  /// The template with its markers replaced by the captured texts (quotes
  /// left out when the captures came from a bare match).
  [[nodiscard]] std::string Fill(const TSQLCaptures& captures) const;

 private:
  struct TSegment {
    std::string Literal;    // blanks removed, lower case; empty for a marker
    int Marker = -1;        // 0 for "@f", 1 to 9 for "@1" to "@9"
    bool InString = false;  // a marker inside quotes captures the inside of one string
  };
  class TMatcher;

  [[nodiscard]] static bool MatchSegments(const std::vector<TSegment>& segments, const TSQLMatchText& text,
                                          TSQLCaptures& captures);
  std::string text_;
  std::vector<TSegment> segments_;
  std::vector<TSegment> bareSegments_;  // the same without quotes; empty when it has none
  int weight_ = 0;
  // When the template starts with "@f" (after a lead such as "not("): the
  // lead, and the text that must follow the expression up to its first
  // quote (blanks removed, lower case; empty for any).
  bool fieldFirst_ = false;
  std::string lead_;
  std::string afterField_;
};

/// A rewrite rule "pattern|->replacement": a condition that matches the
/// pattern is replaced by the filled replacement.
class TSQLRewriteRule {
 public:
  explicit TSQLRewriteRule(std::string_view rule);
  /// The rewritten text when the prepared text matches; false when it does not.
  bool Apply(const TSQLMatchText& text, std::string& rewritten) const;

 private:
  TSQLTemplate pattern_;
  TSQLTemplate replacement_;
};

}  // namespace ts4
