#include "sqlimport/sql_template.h"

#include <algorithm>

#include "foundation/string_utils.h"

namespace ts4 {
namespace {

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The marker at `at` ("@f", "@1" ... "@9"), or -1.
int MarkerAt(std::string_view text, std::size_t at) {
  if (text[at] != '@' || at + 1 >= text.size()) return -1;
  const char next = text[at + 1];
  if (next == 'f' || next == 'F') return 0;
  if (next >= '1' && next <= '9') return next - '0';
  return -1;
}

/// The end of `literal` (lower case, no blanks) read at `at` with blanks
/// skipped and case ignored, or npos.
std::size_t LiteralEnd(std::string_view text, std::string_view literal, std::size_t at) {
  for (char wanted : literal) {
    while (at < text.size() && IsBlank(text[at])) ++at;
    if (at == text.size() || Lower(text[at]) != wanted) return std::string_view::npos;
    ++at;
  }
  return at;
}

}  // namespace

void TSQLMatchText::Reset(std::string_view text, std::string_view field) {
  text_ = text;
  delimiters_.assign(text.size(), false);
  fieldKey_ = BlanklessLowerCase(field);
  knownEnds_ = 0;
  bool inside = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\'') continue;
    if (inside && i + 1 < text.size() && text[i + 1] == '\'') {
      ++i;  // a doubled quote inside a string
      continue;
    }
    delimiters_[i] = true;
    inside = !inside;
  }
}

std::size_t TSQLMatchText::FieldEnd(std::string_view lead) const {
  for (std::size_t i = 0; i < knownEnds_; ++i) {
    if (fieldEnds_[i].first == lead) return fieldEnds_[i].second;
  }
  std::size_t end = LiteralEnd(text_, lead, 0);
  if (end != std::string_view::npos) end = LiteralEnd(text_, fieldKey_, end);
  if (knownEnds_ < fieldEnds_.size()) fieldEnds_[knownEnds_++] = {lead, end};
  return end;
}

/// Backtracking over the segments, with a budget: a hostile text can make
/// the candidate ends of several markers multiply, and matching must still
/// end quickly (running out counts as no match).
class TSQLTemplate::TMatcher {
 public:
  TMatcher(const std::vector<TSegment>& segments, const TSQLMatchText& text, TSQLCaptures& captures)
      : segments_(segments),
        text_(text),
        chars_(text.Text()),
        captures_(captures),
        budget_(64 * (chars_.size() + 64)) {}

  bool Run() { return From(0, 0); }

 private:
  bool From(std::size_t segment, std::size_t at) {
    if (segment == segments_.size()) return SkipBlanks(at) == chars_.size();
    const TSegment& current = segments_[segment];
    if (current.Marker < 0) {
      const std::size_t end = Literal(current.Literal, at, true);
      return end != npos && From(segment + 1, end);
    }
    if (current.Marker == 0) {  // the left-hand expression: exactly one way to read it
      const std::size_t end = Literal(text_.FieldKey(), at, false);
      if (end == npos) return false;
      Capture(current, at, end);
      return From(segment + 1, end);
    }
    if (segment + 1 == segments_.size()) {
      if (current.InString && CrossesString(at, chars_.size())) return false;
      Capture(current, at, chars_.size());
      return true;
    }
    const TSegment& next = segments_[segment + 1];
    for (std::size_t end = at; end <= chars_.size(); ++end) {
      if (budget_ == 0) return false;
      --budget_;
      if (current.InString && end > at && text_.IsDelimiter(end - 1)) return false;  // and so on for longer
      if (next.Marker < 0) {
        if (end == chars_.size() || Lower(chars_[end]) != next.Literal.front()) continue;
        const std::size_t after = Literal(next.Literal, end, true);
        if (after == npos) continue;
        Capture(current, at, end);
        if (From(segment + 2, after)) return true;
      } else {
        Capture(current, at, end);
        if (From(segment + 1, end)) return true;
      }
    }
    return false;
  }

  /// End of `literal` read at `at` with blanks skipped, or npos. A quote of
  /// the literal must open or close a string of the text when `quotes`.
  std::size_t Literal(std::string_view literal, std::size_t at, bool quotes) {
    for (char wanted : literal) {
      at = SkipBlanks(at);
      if (budget_ == 0 || at == chars_.size() || Lower(chars_[at]) != wanted) return npos;
      --budget_;
      if (quotes && wanted == '\'' && !text_.IsDelimiter(at)) return npos;
      ++at;
    }
    return at;
  }

  std::size_t SkipBlanks(std::size_t at) const {
    while (at < chars_.size() && IsBlank(chars_[at])) ++at;
    return at;
  }

  bool CrossesString(std::size_t from, std::size_t to) const {
    for (std::size_t i = from; i < to; ++i)
      if (text_.IsDelimiter(i)) return true;
    return false;
  }

  /// Blanks around a value are layout, except inside a string.
  void Capture(const TSegment& marker, std::size_t from, std::size_t to) {
    const std::string_view text = chars_.substr(from, to - from);
    captures_.Text[static_cast<std::size_t>(marker.Marker)] = marker.InString ? text : Trim(text);
  }

  static constexpr std::size_t npos = std::string_view::npos;
  const std::vector<TSegment>& segments_;
  const TSQLMatchText& text_;
  std::string_view chars_;
  TSQLCaptures& captures_;
  std::size_t budget_;
};

TSQLTemplate::TSQLTemplate(std::string_view text) : text_(text) {
  const auto split = [&](bool keepQuotes, std::vector<TSegment>& segments) {
    std::string literal;
    bool inString = false;
    const auto flush = [&] {
      if (!literal.empty()) segments.push_back({std::move(literal), -1, false});
      literal.clear();
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (const int marker = MarkerAt(text, i); marker >= 0) {
        flush();
        segments.push_back({{}, marker, keepQuotes && inString});
        ++i;
      } else if (!IsBlank(text[i]) && (keepQuotes || text[i] != '\'')) {
        literal += Lower(text[i]);
      }
      if (text[i] == '\'') inString = !inString;
    }
    flush();
  };
  split(true, segments_);
  if (text.find('\'') != std::string_view::npos) split(false, bareSegments_);
  for (const TSegment& segment : segments_) weight_ += static_cast<int>(segment.Literal.size());
  // Most templates start with the field: a look at what follows it rules
  // most of them out at once. A lead or a next character that is a quote
  // differs between the two tries, so those are not looked at early.
  const std::size_t fieldAt = segments_.size() > 1 && segments_[0].Marker < 0 ? 1 : 0;
  if (fieldAt < segments_.size() && segments_[fieldAt].Marker == 0) {
    lead_ = fieldAt == 1 ? segments_[0].Literal : std::string();
    fieldFirst_ = lead_.find('\'') == std::string::npos;
    if (fieldAt + 1 < segments_.size() && segments_[fieldAt + 1].Marker < 0) {
      const std::string& next = segments_[fieldAt + 1].Literal;
      afterField_ = next.substr(0, next.find('\''));
    }
  }
}

bool TSQLTemplate::MatchSegments(const std::vector<TSegment>& segments, const TSQLMatchText& text,
                                 TSQLCaptures& captures) {
  for (std::string& captured : captures.Text) captured.clear();
  captures.Bare = false;
  return TMatcher(segments, text, captures).Run();
}

bool TSQLTemplate::MayMatch(const TSQLMatchText& text) const {
  if (!fieldFirst_) return true;
  std::size_t at = text.FieldEnd(lead_);
  if (at == std::string_view::npos) return false;
  return LiteralEnd(text.Text(), afterField_, at) != std::string_view::npos;
}

bool TSQLTemplate::Match(const TSQLMatchText& text, TSQLCaptures& captures, bool allowBare) const {
  if (!MayMatch(text)) return false;
  if (MatchSegments(segments_, text, captures)) return true;
  if (!allowBare || bareSegments_.empty() || !MatchSegments(bareSegments_, text, captures)) return false;
  // A value written bare is a plain operand: the query never writes one
  // with a quote or a line break in it, so such text is not a value.
  for (std::size_t k = 1; k < captures.Text.size(); ++k) {
    if (captures.Text[k].find_first_of("'\r\n") != std::string::npos) return false;
  }
  captures.Bare = true;
  return true;
}

std::string TSQLTemplate::Fill(const TSQLCaptures& captures) const {
  std::string result;
  result.reserve(text_.size() + 32);
  for (std::size_t i = 0; i < text_.size(); ++i) {
    if (const int marker = MarkerAt(text_, i); marker >= 0) {
      result += captures.Value(marker);
      ++i;
    } else if (!captures.Bare || text_[i] != '\'') {
      result += text_[i];
    }
  }
  return result;
}

namespace {

std::string_view RulePart(std::string_view rule, bool pattern) {
  const std::size_t at = rule.find("|->");
  if (at == std::string_view::npos) return pattern ? Trim(rule) : std::string_view();
  return Trim(pattern ? rule.substr(0, at) : rule.substr(at + 3));
}

}  // namespace

TSQLRewriteRule::TSQLRewriteRule(std::string_view rule)
    : pattern_(RulePart(rule, true)), replacement_(RulePart(rule, false)) {}

bool TSQLRewriteRule::Apply(const TSQLMatchText& text, std::string& rewritten) const {
  if (!pattern_.MayMatch(text)) return false;
  TSQLCaptures captures;
  if (!pattern_.Match(text, captures)) return false;
  rewritten = replacement_.Fill(captures);
  return true;
}

}  // namespace ts4
