#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/strings.h"

namespace ts4 {

/// Lexical rules a scanner follows. Only SQL text is read by this library.
enum class TSourceStyle : std::uint8_t { ssNone, ssPascal, ssCpp, ssSQLText };

/// Kinds of token GetTokType reports. The SQL parser tests ttKeyword and
/// ttNumber; the rest are told apart for everyone else's benefit.
enum TTokenType : std::uint8_t {
  ttEnd = 0,         // no token left
  ttIdentifier = 1,  // a word, or the text of a double-quoted name
  ttKeyword = 2,     // a word that is in the keyword list
  ttSymbol = 3,      // "(", "<>", "," ...
  ttString = 4,      // text in single quotes, quotes included
  ttQuote = 5,       // a double-quote character
  ttNumber = 6,      // an unsigned integer
  ttFloat = 7,       // digits with a decimal point
};

/// Marks a token of the source, for ExtractPiece.
struct TWScannerBookmark {
  std::size_t Token = 0;
};

/// Splits lines of text into tokens, one at a time, for the SQL parser.
///
/// Under the SQL style: blanks and line breaks separate tokens; "--" starts
/// a comment to the end of the line and "/*" one up to "*/"; a string in
/// single quotes is one token (a doubled quote inside it stands for one
/// quote, and it may run over lines); a double-quote character is a token
/// of its own, and the text up to the next lone double quote on that line is
/// handed over as one identifier token, so a parser joins a quoted name from
/// the tokens between two double quotes. Words are letters, digits, "_",
/// "$", "#" and any byte of a multi-byte character, starting with no digit.
/// "<>", "!=", "<=" and ">=" are single tokens; every other symbol is a
/// token of one character.
class TWScanner {
 public:
  TWScanner() = default;

  void SetSourceStyle(TSourceStyle style) { style_ = style; }
  [[nodiscard]] TSourceStyle SourceStyle() const { return style_; }
  /// Words (any case) that are reported as ttKeyword.
  [[nodiscard]] TStrings& Keywords() { return keywords_; }
  /// The text to scan; the scanner keeps its own copy of the lines.
  void SetSource(const TStrings& lines);

  /// Positions on the first token.
  void FirstToken();
  /// Moves to the next token; at the end it stays there.
  void NextToken();
  /// True when no token is left.
  [[nodiscard]] bool EOS() const;
  /// The current token normalised: words in lower case, symbols, strings and
  /// numbers as written; empty at the end.
  [[nodiscard]] std::string_view GetTokStr() const;
  /// The current token exactly as written.
  [[nodiscard]] std::string_view GetRealStr() const;
  [[nodiscard]] TTokenType GetTokType() const;
  /// 1-based line of the current token (the last line at the end).
  [[nodiscard]] int GetTokLine() const;

  /// Look-ahead that does not move: the current token is `open`; true when a
  /// word of the comma-separated `list` occurs before the matching `close`
  /// (nested pairs counted, words at any depth). The first list word after
  /// each `skip` word is not counted ("and" closing a "between"). False when
  /// the current token is not `open` or its pair is never closed.
  [[nodiscard]] bool ScanToPair(std::string_view open, std::string_view close, std::string_view skip,
                                std::string_view list);

  void GetBookmark(TWScannerBookmark& bookmark) const { bookmark.Token = current_; }
  /// The source text from the token marked `from` up to the token marked
  /// `to` (the end of the text when `to` is at the end), spacing and case as
  /// written, lines joined by CR LF, blanks trimmed at both ends. With
  /// `includeTo` the token marked `to` is part of the text.
  void ExtractPiece(const TWScannerBookmark& from, const TWScannerBookmark& to, std::string& text,
                    bool includeTo) const;

 private:
  struct TToken {
    int Line = 0;           // 0-based index into lines_
    std::size_t Start = 0;  // byte offset of the first character on that line
    int EndLine = 0;        // a string may end on a later line
    std::size_t End = 0;    // offset just past the last character on EndLine
    std::size_t Text = 0;   // offset of the normalised text in text_
    std::size_t Length = 0;
    TTokenType Type = ttEnd;
  };

  void Tokenize();
  [[nodiscard]] const TToken* Current() const;
  [[nodiscard]] std::size_t MatchOf(std::size_t open, std::string_view openText, std::string_view closeText);

  TSourceStyle style_ = TSourceStyle::ssSQLText;
  TStrings keywords_;
  std::vector<std::string> lines_;
  std::vector<TToken> tokens_;
  std::string text_;  // normalised text of every token, back to back
  std::size_t current_ = 0;
  bool tokenized_ = false;
  // Matching close of each open token, for the pair last asked about.
  std::string matchOpen_;
  std::string matchClose_;
  std::vector<std::size_t> match_;
};

}  // namespace ts4
