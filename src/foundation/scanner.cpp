#include "foundation/scanner.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <unordered_set>

#include "foundation/string_utils.h"

namespace ts4 {
namespace {

constexpr std::size_t npos = static_cast<std::size_t>(-1);

// What a byte can be in SQL text. Bytes of multi-byte UTF-8 characters count
// as letters, so names in any script read as words.
enum TCharClass : std::uint8_t {
  ccOther,     // a symbol
  ccBlank,     // up to the blank, control characters and NUL included
  ccLetter,    // starts and continues a word
  ccDigit,     // starts a number, continues a word
  ccWordTail,  // "$" and "#": continue a word only
};

constexpr std::array<TCharClass, 256> MakeCharClasses() {
  std::array<TCharClass, 256> classes{};
  for (int c = 0; c < 256; ++c) {
    if (c <= ' ')
      classes[c] = ccBlank;
    else if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c >= 0x80)
      classes[c] = ccLetter;
    else if (c >= '0' && c <= '9')
      classes[c] = ccDigit;
    else if (c == '$' || c == '#')
      classes[c] = ccWordTail;
    else
      classes[c] = ccOther;
  }
  return classes;
}

constexpr std::array<TCharClass, 256> CharClasses = MakeCharClasses();

TCharClass ClassOf(char c) {
  return CharClasses[static_cast<unsigned char>(c)];
}

bool IsLineBreak(char c) {
  return c == '\r' || c == '\n';
}

// Line breaks in s[from, to): CR LF, LF and a lone CR each end a line.
int CountBreaks(std::string_view s, std::size_t from, std::size_t to) {
  int breaks = 0;
  for (std::size_t i = from; i < to; ++i) {
    if (s[i] == '\n' || (s[i] == '\r' && (i + 1 >= s.size() || s[i + 1] != '\n'))) ++breaks;
  }
  return breaks;
}

bool IsTwoCharOperator(char a, char b) {
  return (a == '<' && (b == '>' || b == '=')) || (a == '!' && b == '=') || (a == '>' && b == '=');
}

// The words of a comma-separated list, blanks around them dropped.
std::vector<std::string_view> SplitList(std::string_view list) {
  std::vector<std::string_view> words;
  while (!list.empty()) {
    const std::size_t comma = list.find(',');
    const std::string_view word = Trim(list.substr(0, comma));
    if (!word.empty()) words.push_back(word);
    if (comma == std::string_view::npos) break;
    list.remove_prefix(comma + 1);
  }
  return words;
}

// Look-up tables are kept for the few pairs and lists a parser asks about;
// an unusual caller asking about many only drops the oldest.
constexpr std::size_t MaxCachedTables = 4;

}  // namespace

void TWScanner::SetSource(const TStrings& lines) {
  source_.clear();
  std::size_t size = 0;
  for (const std::string& line : lines) size += line.size() + 2;
  source_.reserve(size);
  for (int i = 0; i < lines.Count(); ++i) {
    if (i > 0) source_ += "\r\n";
    source_ += lines[i];
  }
  text_.clear();
  tokens_.clear();
  answers_.clear();
  lastLine_ = 1;
  current_ = 0;
  tokenized_ = false;
}

void TWScanner::Prepare() {
  if (tokenized_) return;
  Tokenize();
  tokenized_ = true;
  if (current_ > tokens_.size()) current_ = tokens_.size();
}

void TWScanner::Tokenize() {
  // One pass over the whole text. A token is a pair of offsets into the
  // source; its normalised text is the same range of text_, a copy of the
  // source in which the words are lower-cased, so no token allocates.
  tokens_.clear();
  answers_.clear();
  text_ = source_;

  std::vector<std::string> words;
  for (const std::string& word : keywords_) words.push_back(LowerCase(word));
  const std::unordered_set<std::string_view> keywords(words.begin(), words.end());
  // Most words are names: their length or first letter rules them out
  // before the set is asked.
  std::array<bool, 256> keywordStarts{};
  std::size_t longestKeyword = 0;
  for (const std::string& word : words) {
    if (word.empty()) continue;
    keywordStarts[static_cast<unsigned char>(word.front())] = true;
    longestKeyword = std::max(longestKeyword, word.size());
  }
  const auto isKeyword = [&](std::size_t start, std::size_t end) {
    return end - start <= longestKeyword && keywordStarts[static_cast<unsigned char>(text_[start])] &&
           keywords.contains(std::string_view(text_).substr(start, end - start));
  };

  const std::string_view s = source_;
  const std::size_t n = s.size();
  tokens_.reserve(n / 3 + 16);  // SQL has a token for every three or four bytes
  int line = 1;
  std::size_t p = 0;
  auto add = [this](std::size_t start, std::size_t end, int startLine, TTokenType type) {
    tokens_.push_back(TToken{start, end, startLine, type});
  };

  while (p < n) {
    const char c = s[p];
    const TCharClass cls = ClassOf(c);
    const std::size_t start = p;
    const char next = p + 1 < n ? s[p + 1] : '\0';

    if (cls == ccBlank) {
      if (c == '\n' || (c == '\r' && next != '\n')) ++line;
      ++p;
    } else if (c == '-' && next == '-') {
      while (p < n && !IsLineBreak(s[p])) ++p;
    } else if (c == '/' && next == '*') {
      const std::size_t close = s.find("*/", p + 2);
      p = close == std::string_view::npos ? n : close + 2;
      line += CountBreaks(s, start, p);
    } else if (c == '\'') {
      // A doubled quote stands for one; an unclosed string runs to the end.
      ++p;
      bool closed = false;
      while (p < n && !closed) {
        if (s[p] != '\'') {
          ++p;
        } else if (p + 1 < n && s[p + 1] == '\'') {
          p += 2;
        } else {
          ++p;
          closed = true;
        }
      }
      add(start, p, line, closed ? ttString : ttUnclosed);
      line += CountBreaks(s, start, p);
    } else if (c == '"') {
      // The quote, the name up to the next lone quote on the line as one
      // token (doubled quotes kept in it), and the closing quote if any.
      const std::size_t quote = tokens_.size();
      add(p, p + 1, line, ttQuote);
      ++p;
      std::size_t q = p;
      bool closed = false;
      while (q < n && !IsLineBreak(s[q])) {
        if (s[q] == '"') {
          if (q + 1 < n && s[q + 1] == '"') {
            q += 2;
            continue;
          }
          closed = true;
          break;
        }
        ++q;
      }
      if (!closed) tokens_[quote].Type = ttUnclosed;
      if (q > p) add(p, q, line, closed ? ttIdentifier : ttUnclosed);
      if (closed) {
        add(q, q + 1, line, ttQuote);
        ++q;
      }
      p = q;
    } else if (cls == ccLetter) {
      while (p < n && ClassOf(s[p]) != ccBlank && ClassOf(s[p]) != ccOther) {
        if (s[p] >= 'A' && s[p] <= 'Z') text_[p] = static_cast<char>(s[p] - 'A' + 'a');
        ++p;
      }
      add(start, p, line, isKeyword(start, p) ? ttKeyword : ttIdentifier);
    } else if (cls == ccDigit) {
      while (p < n && ClassOf(s[p]) == ccDigit) ++p;
      TTokenType type = ttNumber;
      if (p + 1 < n && s[p] == '.' && ClassOf(s[p + 1]) == ccDigit) {
        p += 2;
        while (p < n && ClassOf(s[p]) == ccDigit) ++p;
        type = ttFloat;
      }
      add(start, p, line, type);
    } else {
      p += IsTwoCharOperator(c, next) ? 2 : 1;
      add(start, p, line, ttSymbol);
    }
  }
  lastLine_ = line;
}

void TWScanner::FirstToken() {
  Prepare();
  current_ = 0;
}

void TWScanner::NextToken() {
  Prepare();
  if (current_ < tokens_.size()) ++current_;
}

std::string_view TWScanner::GetRealStr() const {
  if (EOS()) return {};
  const TToken& token = tokens_[current_];
  return std::string_view(source_).substr(token.Start, token.End - token.Start);
}

int TWScanner::GetTokLine() const {
  return EOS() ? lastLine_ : tokens_[current_].Line;
}

bool TWScanner::ScanToPair(std::string_view open, std::string_view close, std::string_view skip,
                           std::string_view list) {
  // The answers come from a table built once per question, so a parser
  // that asks at every bracket of a deeply nested text stays linear.
  Prepare();
  if (EOS() || GetTokStr() != open) return false;
  return Answers(open, close, skip, list)[current_];
}

// The table below looks at every token of a text that may be megabytes
// long, so a token is first told apart by its length and first byte.
bool TWScanner::TokenIs(std::size_t index, std::string_view word) const {
  const TToken& token = tokens_.data()[index];
  const std::size_t size = word.size();
  const char* text = text_.data() + token.Start;
  return token.End - token.Start == size && size > 0 && text[0] == word[0] &&
         (size == 1 || std::memcmp(text, word.data(), size) == 0);
}

const std::vector<bool>& TWScanner::Answers(std::string_view open, std::string_view close,
                                            std::string_view skip, std::string_view list) {
  for (const TPairAnswers& table : answers_) {
    if (table.Open == open && table.Close == close && table.Skip == skip && table.List == list)
      return table.Answer;
  }
  if (answers_.size() >= MaxCachedTables) answers_.erase(answers_.begin());
  TPairAnswers& table = answers_.emplace_back();
  table.Open = open;
  table.Close = close;
  table.Skip = skip;
  table.List = list;
  const std::size_t count = tokens_.size();
  table.Answer.assign(count, false);

  // Opens and closes pair as a forward scan pairs them: a close goes with
  // the nearest open before it that is still unpaired. When the two words
  // are the same, their occurrences pair up in turn from the start.
  std::vector<std::size_t> sameClose;
  if (open == close) {
    sameClose.assign(count, npos);
    std::size_t opened = npos;
    for (std::size_t i = 0; i < count; ++i) {
      if (!TokenIs(i, open)) continue;
      if (opened == npos) {
        opened = i;
      } else {
        sameClose[opened] = i;
        opened = npos;
      }
    }
  }
  const std::vector<std::string_view> words = SplitList(list);
  std::array<bool, 256> starts{};
  for (std::string_view word : words) starts[static_cast<unsigned char>(word.front())] = true;
  // Backwards, with the first counted list word after each token for each
  // of the two states a scan can be in there: nothing pending, or a skip
  // word waiting to swallow the next list word. Walking backwards, the
  // closes not yet paired wait on a stack for their opens.
  std::vector<std::size_t> closes;
  std::size_t idle = npos;
  std::size_t pending = npos;
  for (std::size_t i = count; i-- > 0;) {
    std::size_t match = npos;
    if (open == close) {
      match = sameClose[i];
    } else if (TokenIs(i, close)) {
      closes.push_back(i);
    } else if (TokenIs(i, open) && !closes.empty()) {
      match = closes.back();
      closes.pop_back();
    }
    // `idle` is still the first hit after this token, as a scan from its
    // next token finds it.
    if (match != npos) table.Answer[i] = idle < match;
    bool listed = false;
    if (starts[static_cast<unsigned char>(text_.data()[tokens_.data()[i].Start])]) {
      for (std::string_view word : words) listed = listed || TokenIs(i, word);
    }
    if (listed) {
      pending = idle;
      idle = i;
    } else if (TokenIs(i, skip)) {
      idle = pending;
    }
  }
  return table.Answer;
}

void TWScanner::ExtractPiece(const TWScannerBookmark& from, const TWScannerBookmark& to, std::string& text,
                             bool includeTo) const {
  // The piece ends with its last token, so a comment after it stays out.
  text.clear();
  const std::size_t count = tokens_.size();
  if (from.Token >= count || to.Token <= from.Token) return;
  const std::size_t last = to.Token < count && includeTo ? to.Token : std::min(to.Token, count) - 1;
  const std::string_view source = source_;
  text.reserve(tokens_[last].End - tokens_[from.Token].Start);
  for (std::size_t i = from.Token; i <= last; ++i) {
    if (i > from.Token) {
      const std::string_view gap = source.substr(tokens_[i - 1].End, tokens_[i].Start - tokens_[i - 1].End);
      const bool comment = std::any_of(gap.begin(), gap.end(), [](char c) { return !IsBlank(c); });
      if (comment) {
        text += gap.find('\n') != std::string_view::npos ? "\r\n" : " ";  // lines stay lines
      } else {
        text += gap;
      }
    }
    text += source.substr(tokens_[i].Start, tokens_[i].End - tokens_[i].Start);
  }
}

}  // namespace ts4
