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
  ttUnclosed = 8,    // a string or a double-quoted name that is never closed
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
/// "$", "#" and any byte of a multi-byte character, starting with a letter,
/// "_" or such a byte; digits make a number, digits with a decimal point a
/// float. "<>", "!=", "<=" and ">=" are single tokens; every other symbol is
/// a token of one character. Every byte up to the blank separates tokens.
/// The other source styles read text by the same rules.
class TWScanner {
 public:
  TWScanner() = default;

  void SetSourceStyle(TSourceStyle style) { style_ = style; }
  [[nodiscard]] TSourceStyle SourceStyle() const { return style_; }
  /// Words (any case) that are reported as ttKeyword; a change applies
  /// from the next move.
  [[nodiscard]] TStrings& Keywords() {
    tokenized_ = false;
    return keywords_;
  }
  /// The text to scan; the scanner keeps its own copy of the lines.
  void SetSource(const TStrings& lines);

  /// Positions on the first token. The source is split into tokens on the
  /// first move after SetSource.
  void FirstToken();
  /// Moves to the next token; at the end it stays there.
  void NextToken();
  /// True when no token is left.
  [[nodiscard]] bool EOS() const { return current_ >= tokens_.size(); }
  /// The current token normalised: words in lower case, symbols, strings and
  /// numbers as written; empty at the end.
  [[nodiscard]] std::string_view GetTokStr() const {
    if (EOS()) return {};
    const TToken& token = tokens_[current_];
    return {text_.data() + token.Start, token.End - token.Start};
  }
  /// The current token exactly as written.
  [[nodiscard]] std::string_view GetRealStr() const;
  [[nodiscard]] TTokenType GetTokType() const { return EOS() ? ttEnd : tokens_[current_].Type; }
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
  /// The source text from the token marked `from` to the last token before
  /// the one marked `to` (the last token of the text when `to` is at the
  /// end), spacing and case as written, lines joined by CR LF, blanks
  /// trimmed at both ends. A comment between the tokens becomes one blank
  /// (a line break when it spans lines), so the piece keeps its meaning
  /// wherever it is written again. With `includeTo` the token marked
  /// `to` is part of the text. Empty when `to` is not after `from`.
  void ExtractPiece(const TWScannerBookmark& from, const TWScannerBookmark& to, std::string& text,
                    bool includeTo) const;

 private:
  struct TToken {
    std::size_t Start = 0;  // byte offset in source_
    std::size_t End = 0;    // offset just past the token
    int Line = 1;           // 1-based line of its first character
    TTokenType Type = ttEnd;
  };
  // For one question ScanToPair is asked (open, close, skip word, word
  // list): at each open token, the answer.
  struct TPairAnswers {
    std::string Open;
    std::string Close;
    std::string Skip;
    std::string List;
    std::vector<bool> Answer;
  };

  void Prepare();
  void Tokenize();
  [[nodiscard]] bool TokenIs(std::size_t index, std::string_view word) const;
  [[nodiscard]] const std::vector<bool>& Answers(std::string_view open, std::string_view close,
                                                 std::string_view skip, std::string_view list);

  TSourceStyle style_ = TSourceStyle::ssSQLText;
  TStrings keywords_;
  std::string source_;  // the lines joined by CR LF
  std::string text_;    // source_ with every word lower-cased: the normalised tokens
  std::vector<TToken> tokens_;
  int lastLine_ = 1;
  std::size_t current_ = 0;
  bool tokenized_ = false;
  std::vector<TPairAnswers> answers_;
};

}  // namespace ts4
