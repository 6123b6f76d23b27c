#include "foundation/scanner.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "test_support.h"

namespace {

using ts4::TWScanner;
using ts4::TWScannerBookmark;
using Lines = std::vector<std::string>;

void Load(TWScanner& scanner, const Lines& lines) {
  scanner.Keywords().Add("select");
  scanner.Keywords().Add("FROM");
  scanner.SetSource(ts4test::StringsOf(lines));
  scanner.FirstToken();
}

// Each token as a type letter, ":" and its normalised text.
std::vector<std::string> Tokens(const Lines& lines) {
  static const char letters[] = "EIKSTQNFU";
  TWScanner scanner;
  Load(scanner, lines);
  std::vector<std::string> tokens;
  for (; !scanner.EOS(); scanner.NextToken())
    tokens.push_back(letters[scanner.GetTokType()] + (":" + std::string(scanner.GetTokStr())));
  return tokens;
}

struct TokenCase {
  const char* label;
  Lines lines;
  std::vector<std::string> expected;
};

class ScannerTokens : public testing::TestWithParam<TokenCase> {};

TEST_P(ScannerTokens, SplitsAndNormalises) {
  EXPECT_EQ(Tokens(GetParam().lines), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Scanner, ScannerTokens,
    testing::Values(
        TokenCase{"words", {"SELECT Name FROM T"}, {"K:select", "I:name", "K:from", "I:t"}},
        TokenCase{"operators",
                  {"a<>b!=c>=d<e=f"},
                  {"I:a", "S:<>", "I:b", "S:!=", "I:c", "S:>=", "I:d", "S:<", "I:e", "S:=", "I:f"}},
        TokenCase{"numbers", {"1.5 12 3. 12ab"}, {"F:1.5", "N:12", "N:3", "S:.", "N:12", "I:ab"}},
        TokenCase{"word characters",
                  {"_x$1 #y \xC3\x84"
                   "Bc"},
                  {"I:_x$1", "S:#", "I:y",
                   "I:\xC3\x84"
                   "bc"}},
        TokenCase{"control bytes separate", {std::string("a\x01") + '\0' + "b\tc"}, {"I:a", "I:b", "I:c"}},
        TokenCase{"comments", {"a -- b c", "d /* e", "f */ g /* open"}, {"I:a", "I:d", "I:g"}},
        TokenCase{"strings", {"'it''s' 'x", "Y' 'open"}, {"T:'it''s'", "T:'x\r\nY'", "U:'open"}},
        TokenCase{"quoted names",
                  {"\"Order Details\".\"Unit \"\"Price\" \"\" x"},
                  {"Q:\"", "I:Order Details", "Q:\"", "S:.", "Q:\"", "I:Unit \"\"Price", "Q:\"", "Q:\"",
                   "Q:\"", "I:x"}},
        TokenCase{
            "unclosed quoted name ends with its line", {"\"A b", "c\""}, {"U:\"", "U:A b", "I:c", "U:\""}},
        TokenCase{"nothing", {"", " -- only a comment"}, {}}),
    [](const auto& info) {
      std::string name = info.param.label;
      for (char& c : name)
        if (c == ' ') c = '_';
      return name;
    });

TEST(Scanner, RealTextKeepsCaseAndQuotes) {
  TWScanner scanner;
  Load(scanner, {"SELECT Name FROM 'It''s'"});
  std::vector<std::string> real;
  for (; !scanner.EOS(); scanner.NextToken()) real.emplace_back(scanner.GetRealStr());
  EXPECT_EQ(real, (std::vector<std::string>{"SELECT", "Name", "FROM", "'It''s'"}));
  EXPECT_EQ(scanner.GetTokStr(), "");
  EXPECT_EQ(scanner.GetTokType(), ts4::ttEnd);
  scanner.NextToken();  // stays at the end
  EXPECT_TRUE(scanner.EOS());
  // Keywords added later apply from the next move.
  Load(scanner, {"where x"});
  EXPECT_EQ(scanner.GetTokType(), ts4::ttIdentifier);
  scanner.Keywords().Add("WHERE");
  scanner.FirstToken();
  EXPECT_EQ(scanner.GetTokType(), ts4::ttKeyword);
}

TEST(Scanner, LinesCountFromOneAndEndOnTheLastLine) {
  TWScanner scanner;
  Load(scanner, {"a 'x", "y' /*", "*/ b", "", ""});
  std::vector<int> lines;
  for (; !scanner.EOS(); scanner.NextToken()) lines.push_back(scanner.GetTokLine());
  EXPECT_EQ(lines, (std::vector<int>{1, 1, 3}));
  EXPECT_EQ(scanner.GetTokLine(), 5);
}

struct PairCase {
  const char* text;
  int at;  // index of the token to ask at
  bool comparisons;
  bool expected;
};

TEST(Scanner, ScanToPairLooksForListWordsInsideThePair) {
  const PairCase cases[] = {{"(x between 1 and 2) and y = 1", 0, false, false},
                            {"(x between 1 and 2 or y = 1)", 0, false, true},
                            {"((a) or (b = 1))", 5, true, true},
                            {"(a) or (b = 1)", 0, true, false},
                            {"(x = 1 or y = 2", 0, false, false}};
  for (const PairCase& c : cases) {
    TWScanner scanner;
    Load(scanner, {c.text});
    for (int i = 0; i < c.at; ++i) scanner.NextToken();
    const std::string before(scanner.GetTokStr());
    const bool found = c.comparisons ? scanner.ScanToPair("(", ")", "", "=,<>,<,>,<=,>=,in,like,is,between")
                                     : scanner.ScanToPair("(", ")", "between", "and,or");
    EXPECT_EQ(found, c.expected) << c.text << " at " << c.at;
    EXPECT_EQ(scanner.GetTokStr(), before) << "moved";
  }
}

// ScanToPair as a plain forward scan: pairs found from the start of the
// text (a close goes with the nearest unpaired open; equal words pair in
// turn), then the words inside the pair counted one by one.
bool ScanToPairByHand(const std::vector<std::string>& tokens, std::size_t at, const std::string& open,
                      const std::string& close, const std::string& skip) {
  if (tokens[at] != open) return false;
  std::vector<std::size_t> match(tokens.size(), std::string::npos);
  std::vector<std::size_t> opened;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (!opened.empty() && tokens[i] == close) {
      match[opened.back()] = i;
      opened.pop_back();
    } else if (tokens[i] == open) {
      opened.push_back(i);
    }
  }
  bool skipping = false;
  for (std::size_t i = at + 1; i < match[at] && match[at] != std::string::npos; ++i) {
    if (tokens[i] == "and" || tokens[i] == "or") {
      if (!skipping) return true;
      skipping = false;
    } else if (tokens[i] == skip) {
      skipping = true;
    }
  }
  return false;
}

TEST(Scanner, ScanToPairAgreesWithAPlainScanOnAnyText) {
  // Random texts with unbalanced brackets, skip words and equal open and close words.
  const std::vector<std::string> alphabet = {"(", ")", "|", "and", "or", "between", "x"};
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    std::vector<std::string> tokens(random() % 24);
    std::string text;
    for (std::string& token : tokens) {
      token = alphabet[random() % alphabet.size()];
      text += token + " ";
    }
    const bool same = round % 2 == 1;
    const std::string open = same ? "|" : "(";
    const std::string close = same ? "|" : ")";
    TWScanner scanner;
    Load(scanner, {text});
    for (std::size_t at = 0; at < tokens.size(); ++at, scanner.NextToken()) {
      EXPECT_EQ(scanner.ScanToPair(open, close, "between", "and,or"),
                ScanToPairByHand(tokens, at, open, close, "between"))
          << text << " at " << at;
    }
  }
}

// The piece between the n-th and m-th token (m may be past the end).
std::string Piece(const Lines& lines, std::size_t from, std::size_t to, bool includeTo = false) {
  TWScanner scanner;
  Load(scanner, lines);
  std::string text = "unchanged";
  scanner.ExtractPiece(TWScannerBookmark{from}, TWScannerBookmark{to}, text, includeTo);
  return text;
}

TEST(Scanner, ExtractPieceGivesTheSourceAsWritten) {
  EXPECT_EQ(Piece({"x + 1 = 3"}, 0, 2, true), "x + 1");
  EXPECT_EQ(Piece({"x + 1 = 3"}, 3, 99), "= 3");
  EXPECT_EQ(Piece({"A +", "  b -- note", " = 1"}, 0, 3), "A +\r\n  b");
  EXPECT_EQ(Piece({"a /* inner */ b /* after */ c"}, 0, 2), "a b");  // a comment becomes a blank
  EXPECT_EQ(Piece({"a -- note", "b"}, 0, 2), "a\r\nb");
  EXPECT_EQ(Piece({"a b"}, 1, 1), "");
  EXPECT_EQ(Piece({"a b"}, 1, 0, true), "");
}

}  // namespace
