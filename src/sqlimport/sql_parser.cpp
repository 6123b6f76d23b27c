// Reads one SELECT statement, as the query builder writes it or close to it:
//
//   SELECT [DISTINCT] * | item {, item}       item: expression [AS alias]
//   FROM table {, table}                      table: name [alias] {join}
//   [WHERE condition]
//   [GROUP BY expression {, expression}]      checked, not kept
//   [ORDER BY number [ASC | DESC] {, ...}  |  expression [ASC | DESC] {, ...}]
//   [;]
//
//   name        [owner .] name, each part a word or a name in double quotes;
//               opening brackets before it and closing ones after it are skipped
//   join        [INNER | LEFT [OUTER] | RIGHT [OUTER] | FULL [OUTER]] JOIN name
//               [alias] ON condition; the condition is read and dropped, since
//               the builder derives joins from the links of its structure
//   condition   terms joined by OR; a term is factors joined by AND; a factor is
//               any number of NOT, then either a group "(" condition ")" holding
//               an AND or OR of its own, or a comparison
//   comparison  any number of NOT and brackets around
//               operand [NOT] operator operand [AND operand]   (AND after BETWEEN)
//   operand     the text as written up to an operator word, AND, OR, a keyword,
//               a ";", a NOT after its first token, or a ")" that closes an
//               outer bracket; a sub-query "(select ...)" is one operand
//
// Expressions are kept as written. The text is read whole or refused: clauses
// must come in this order, and a word left over after the last one (a clause
// out of place or one not read, such as HAVING, UNION or LIMIT, a second
// statement, a dangling AND) is "Wrong SQL statement" at its line. A bracket
// with no partner, an opening one never closed or a closing one never
// opened, is "Lost bracket" at its own line, wherever it is.
#include "sqlimport/sql_parser.h"

#include <charconv>

#include "foundation/error.h"
#include "foundation/string_utils.h"

namespace ts4 {
namespace {

constexpr std::string_view Comparisons = "=,<>,<,>,<=,>=,in,like,is,between";

// Words that end an operand at bracket depth 0, besides keywords.
bool EndsOperand(std::string_view token) {
  static constexpr std::string_view words[] = {
      "=", "<>", "!=", ">", "<", ">=", "<=", "like", "in", "is", "between", "or", "and"};
  for (std::string_view word : words) {
    if (token == word) return true;
  }
  return false;
}

// A byte that continues a dotted or quoted name.
bool IsNameChar(char c) {
  return IsSQLNameChar(c) || c == '.' || c == '"';
}

// True when `name` occurs in `expr` as a whole name, case ignored: SUM(X.Y)
// holds X.Y, but X.YZ and W.X.Y do not hold it.
bool ContainsName(std::string_view expr, std::string_view name) {
  if (name.empty()) return false;
  const std::string haystack = LowerCase(expr);
  const std::string needle = LowerCase(name);
  for (std::size_t at = haystack.find(needle); at != std::string::npos; at = haystack.find(needle, at + 1)) {
    const std::size_t end = at + needle.size();
    if ((at == 0 || !IsNameChar(haystack[at - 1])) && (end == haystack.size() || !IsNameChar(haystack[end])))
      return true;
  }
  return false;
}

// A value written in double quotes is a string for the builder.
void DoubleToSingleQuotes(std::string& value) {
  if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
    value.front() = '\'';
    value.back() = '\'';
  }
}

// Joins the last item of the parent and what follows it into a new bracket
// under the linking word. A level makes a bracket only once it has a second
// item, so the tree never holds a bracket of a single item.
TSQLBracket& JoinLastItem(TSQLBracket& parent, std::string_view word) {
  std::unique_ptr<TSQLConditionNode> last = parent.Items.Extract(parent.Items.Count() - 1);
  TSQLBracket& joined = *TSQLBracket::Create(&parent);
  joined.LinkOperator = word;
  joined.Items.Reserve(8);  // a joined level has a few items, often many
  last->Parent = &joined;
  joined.Items.Add(std::move(last));
  return joined;
}

}  // namespace

TWSQLParser::TWSQLParser() : result_(std::make_unique<TWParserResult>()) {
  scanner_.SetSourceStyle(TSourceStyle::ssSQLText);
  // Besides the words of the clauses it reads, the words that start clauses
  // it does not read: as keywords they end the expression before them, so
  // that such a clause is refused instead of taken into a value or a name.
  for (const char* word : {"select", "from", "join", "where", "order", "group", "by", "having", "union",
                           "intersect", "except", "limit", "fetch"})
    scanner_.Keywords().Add(word);
}

void TWSQLParser::Parse() {
  // Each call reads into a fresh result, so a parser can read several statements.
  result_ = std::make_unique<TWParserResult>();
  depth_ = 0;
  scanner_.SetSource(sql_);
  FindLostBrackets();
  if (scanner_.GetTokType() == ttUnclosed) Error(pecWrongSQL);
  ProcessSelect();
  ProcessFrom();
  if (!scanner_.EOS() && Is("where")) ProcessWhere();
  if (!scanner_.EOS() && Is("group")) ProcessGroupBy();
  if (!scanner_.EOS() && Is("order")) ProcessOrderBy();
  ProcessEnd();
}

void TWSQLParser::FindLostBrackets() {
  // Brackets pair as they nest, before the reading starts: the reading then
  // fails at the first lost one it comes to (Next), so an error earlier in
  // the text still comes first, and the line is the bracket's own.
  lost_.clear();
  std::vector<std::size_t> open;
  for (scanner_.FirstToken(); !scanner_.EOS(); scanner_.NextToken()) {
    const bool symbol = scanner_.GetTokType() == ttSymbol;
    if (symbol && Is("(")) {
      open.push_back(lost_.size());
    } else if (symbol && Is(")")) {
      if (open.empty()) {
        lost_.push_back(true);
        continue;
      }
      open.pop_back();
    }
    lost_.push_back(false);
  }
  for (std::size_t at : open) lost_[at] = true;
  scanner_.FirstToken();
}

void TWSQLParser::ProcessEnd() {
  if (!scanner_.EOS() && Is(";")) Next();
  if (scanner_.EOS()) return;
  Error(AtLostBracket() ? pecLostBracket : pecWrongSQL);
}

void TWSQLParser::Error(TSQLParserErrorCode code) const {
  ErrorAtLine(code, scanner_.GetTokLine());
}

void TWSQLParser::ErrorAtLine(TSQLParserErrorCode code, int line) const {
  throw ESQLParserError(code, line);
}

// ---- Select list -----------------------------------------------------------------

void TWSQLParser::ProcessSelect() {
  if (!Is("select")) Error(pecWrongSQL);
  Next();
  if (Is("distinct")) {
    result_->Distinct = true;
    Next();
  }
  if (Is("*")) {
    result_->AllFields = true;
    result_->ResultFields.AllFields = true;
    Next();
    return;
  }
  ProcessResultField();
  while (Is(",")) {
    Next();
    ProcessResultField();
  }
}

void TWSQLParser::ProcessResultField() {
  std::string expr = ProcessSQLExpr();
  if (expr.empty()) Error(pecWrongSQL);  // "select , x" or "select from"
  std::string alias;
  if (Is("as")) {
    Next();
    alias = ProcessAlias();
  }
  AddResultField(std::move(expr), std::move(alias));
}

void TWSQLParser::AddResultField(std::string expr, std::string alias) {
  auto field = std::make_unique<TSQLResultField>();
  field->SetSQLExpr(std::move(expr));
  field->Alias = std::move(alias);
  result_->ResultFields.Add(std::move(field));
}

std::string TWSQLParser::ProcessSQLExpr() {
  return ReadExpression({"as"});
}

std::string TWSQLParser::ReadExpression(std::initializer_list<std::string_view> stops) {
  // The text is cut from the source rather than joined from tokens, so an
  // expression such as SUM(I.QUANTITY * I.UNIT_PRICE) keeps its blanks.
  TWScannerBookmark from;
  scanner_.GetBookmark(from);
  int depth = 0;
  while (!scanner_.EOS()) {
    if (depth < 1) {
      if (scanner_.GetTokType() == ttKeyword || Is(",")) break;
      bool stop = false;
      for (std::string_view word : stops) stop = stop || Is(word);
      if (stop) break;
    }
    if (Is("(")) ++depth;
    if (Is(")")) --depth;
    Next();
  }
  return TextSince(from);
}

std::string TWSQLParser::TextSince(const TWScannerBookmark& from) const {
  TWScannerBookmark to;
  scanner_.GetBookmark(to);
  std::string text;
  scanner_.ExtractPiece(from, to, text, false);
  return text;
}

std::string TWSQLParser::ProcessIdentifier() {
  // Nothing left where a name is due is an early end of the statement.
  if (scanner_.EOS()) Error(pecWrongSQL);
  std::string name;
  if (Is("\"")) {
    // The scanner hands a quoted name over between two quote tokens.
    Next();
    while (!scanner_.EOS() && !Is("\"")) {
      name += scanner_.GetRealStr();
      Next();
    }
    Next();
    return name;
  }
  name = scanner_.GetRealStr();
  Next();
  return name;
}

void TWSQLParser::SkipTokens(std::string_view token) {
  while (!scanner_.EOS() && Is(token)) Next();
}

// ---- FROM ------------------------------------------------------------------------

void TWSQLParser::ProcessFrom() {
  if (!Is("from")) Error(pecWrongSQL);
  Next();
  ProcessTable();
  while (Is(",")) {
    Next();
    ProcessTable();
  }
}

bool TWSQLParser::AtJoin() const {
  return Is("join") || Is("inner") || Is("left") || Is("right") || Is("full");
}

bool TWSQLParser::AtClause() const {
  // A semicolon ends the statement.
  return Is("where") || Is("group") || Is("order") || Is(";");
}

std::string TWSQLParser::ProcessTableName() {
  std::string name = ProcessIdentifier();
  while (Is(".")) {
    Next();
    name += "." + ProcessIdentifier();
  }
  return name;
}

void TWSQLParser::ProcessTable() {
  auto owned = std::make_unique<TSQLTable>();
  SkipTokens("(");
  owned->SetTableName(ProcessTableName());
  SkipTokens(")");
  TSQLTable& table = *result_->Tables.Add(std::move(owned));
  if (scanner_.EOS() || Is(",") || AtClause()) return;
  if (!AtJoin()) {
    if (scanner_.GetTokType() == ttKeyword) return;  // no alias: a clause, read or refused after
    table.Alias = ProcessIdentifier();
    // Only joins may follow an aliased table.
    if (scanner_.EOS() || Is(",") || AtClause()) return;
  }
  if (AtJoin()) ProcessTableJoins();
}

void TWSQLParser::ProcessTableJoins() {
  while (AtJoin()) {
    result_->Joined = true;
    if (Is("left") || Is("right") || Is("full")) {
      Next();
      if (Is("outer")) Next();
      if (!Is("join")) Error(pecWrongSQL);
    } else if (Is("inner")) {
      Next();
      if (!Is("join")) Error(pecWrongSQL);
    }
    Next();
    auto table = std::make_unique<TSQLTable>();
    table->SetTableName(ProcessTableName());
    if (!Is("on")) table->Alias = ProcessIdentifier();
    if (!Is("on")) Error(pecWrongSQL);
    Next();
    {
      TSQLBracket dropped;
      ProcessBoolExpr(dropped);
    }
    result_->Tables.Add(std::move(table));
    SkipTokens(")");
  }
}

// ---- WHERE -----------------------------------------------------------------------

void TWSQLParser::ProcessWhere() {
  if (!Is("where")) Error(pecWrongSQL);
  Next();
  ProcessBoolExpr(*result_->Where);
  // A root that holds nothing but one bracket gives way to it.
  std::unique_ptr<TSQLBracket>& root = result_->Where;
  while (root->Items.Count() == 1 && root->Items[0]->IsBracket()) {
    std::unique_ptr<TSQLBracket> child(static_cast<TSQLBracket*>(root->Items.Extract(0).release()));
    child->Parent = nullptr;
    root = std::move(child);
  }
}

void TWSQLParser::ProcessBoolExpr(TSQLBracket& parent) {
  ProcessJoined(parent, "or", &TWSQLParser::ProcessBoolTerm);
}

void TWSQLParser::ProcessBoolTerm(TSQLBracket& parent) {
  ProcessJoined(parent, "and", &TWSQLParser::ProcessBoolFactor);
}

void TWSQLParser::ProcessJoined(TSQLBracket& parent, std::string_view word,
                                void (TWSQLParser::*readItem)(TSQLBracket&)) {
  (this->*readItem)(parent);
  TSQLBracket* joined = nullptr;
  while (Is(word)) {
    Next();
    if (scanner_.EOS()) Error(pecWrongSQL);  // nothing after the AND or OR
    if (joined == nullptr) joined = &JoinLastItem(parent, word);
    (this->*readItem)(*joined);
  }
}

void TWSQLParser::CheckNesting() const {
  // The reading recurses once per bracket level: bound it, so that hostile
  // text ends in an error instead of exhausting the stack. The outermost
  // bracket is not counted: the builder writes its root bracket around the
  // whole condition and nests up to that many levels inside it, and what it
  // writes must read back.
  if (depth_ > MaxSQLNesting) throw ESQLParserError(pecNestingTooDeep, scanner_.GetTokLine(), MaxSQLNesting);
}

void TWSQLParser::ProcessBoolFactor(TSQLBracket& bracket) {
  // NOTs are counted in a loop, and a NOT before a group of conditions
  // negates the group: the builder writes its "none" and "not all" brackets
  // as NOT ( ... OR ... ) and NOT ( ... AND ... ), and they read back as such.
  bool negate = false;
  while (Is("not")) {
    negate = !negate;
    Next();
  }
  if (Is("(")) {
    CheckNesting();
    if (scanner_.ScanToPair("(", ")", "between", "and,or")) {
      Next();
      ++depth_;
      ProcessBoolExpr(bracket);
      TSQLConditionNode& read = *bracket.Items.Last();
      read.Negated = read.Negated != negate;
      if (!Is(")")) Error(pecLostBracket);
      Next();
      --depth_;
      return;
    }
  }
  ProcessCondition(bracket, negate);
}

void TWSQLParser::ProcessCondition(TSQLBracket& bracket, bool negate) {
  // NOTs and brackets around one comparison, as in not(a = 1), are taken in
  // a loop; the brackets are closed after the comparison, innermost first.
  int opened = 0;
  while (true) {
    while (Is("not")) {
      negate = !negate;
      Next();
    }
    if (!Is("(")) break;
    CheckNesting();
    if (!scanner_.ScanToPair("(", ")", "", Comparisons)) break;
    Next();
    ++depth_;
    ++opened;
  }
  ProcessComparison(bracket, negate);
  for (; opened > 0; --opened) {
    if (!Is(")")) Error(pecLostBracket);
    Next();
    --depth_;
  }
}

void TWSQLParser::ProcessComparison(TSQLBracket& bracket, bool negate) {
  TSQLCondition& condition = *TSQLCondition::Create(&bracket);
  bool isSubQuery = false;
  condition.Expr = ProcessConditionValue(isSubQuery);
  if (scanner_.EOS()) Error(pecWrongSQL);
  if (Is("not")) {
    negate = !negate;
    Next();
  }
  condition.Operator = scanner_.GetTokStr();
  Next();
  if (scanner_.EOS()) Error(pecWrongSQL);
  condition.Negated = negate;
  std::string value = ProcessConditionValue(isSubQuery);
  DoubleToSingleQuotes(value);
  if (condition.Operator == "between") {
    if (!Is("and")) Error(pecWrongSQL);
    Next();
    std::string upper = ProcessConditionValue(isSubQuery);
    DoubleToSingleQuotes(upper);
    value += " and " + upper;
  }
  condition.Value = std::move(value);
  condition.IsSubQuery = isSubQuery;
}

std::string TWSQLParser::ProcessConditionValue(bool& isSubQuery) {
  TWScannerBookmark from;
  scanner_.GetBookmark(from);
  int depth = 0;
  while (!scanner_.EOS() && Is("(")) {
    ++depth;
    Next();
  }
  if (!scanner_.EOS() && Is("select")) isSubQuery = true;
  bool first = true;
  while (!scanner_.EOS()) {
    const std::string_view token = scanner_.GetTokStr();
    if (token == "(") {
      ++depth;
    } else if (token == ")") {
      if (depth <= 0) break;
      --depth;
    } else if (depth == 0) {
      if (scanner_.GetTokType() == ttKeyword || EndsOperand(token) || token == ";") break;
      // A NOT after the left operand belongs to the operator (a not like 'x',
      // a not in (...)); one that starts an operand is its text (is not null).
      if (token == "not" && !first) break;
    }
    first = false;
    Next();
  }
  return TextSince(from);
}

// ---- GROUP BY and ORDER BY -------------------------------------------------------

void TWSQLParser::ProcessGroupBy() {
  // Grouping is rebuilt from the result fields, so the items are only checked:
  // any expression, not only table.field, since the builder groups by
  // expressions as well.
  if (!Is("group")) Error(pecWrongSQL);
  Next();
  if (!Is("by")) Error(pecWrongSQL);
  do {
    Next();
    if (ReadExpression({";"}).empty()) Error(pecWrongSQL);
  } while (Is(","));
}

void TWSQLParser::ProcessOrderBy() {
  if (!Is("order")) Error(pecWrongSQL);
  Next();
  if (!Is("by")) Error(pecWrongSQL);
  Next();
  if (scanner_.GetTokType() == ttNumber) {
    ProcessOrderByNumbers();
  } else {
    ProcessOrderByNames();
  }
}

void TWSQLParser::ReadSortOrder(TSQLResultField& field, int index) {
  // Only ASC or DESC is taken: any other word is left over, and an error.
  field.SortOrder = 1;
  field.SortIndex = index;
  if (Is("asc") || Is("desc")) {
    if (Is("desc")) field.SortOrder = 2;
    Next();
  }
}

void TWSQLParser::ProcessOrderByNumbers() {
  TSQLResultFieldList& fields = result_->ResultFields;
  for (int index = 1;; ++index) {
    if (scanner_.GetTokType() != ttNumber) Error(pecWrongSQL);  // names and numbers are not mixed
    const std::string_view digits = scanner_.GetTokStr();
    int position = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), position).ec != std::errc())
      position = 0;
    if (position < 1 || position > fields.Count()) Error(pecWrongSQL);
    Next();
    ReadSortOrder(*fields[position - 1], index);
    if (scanner_.EOS() || !Is(",")) break;
    Next();
  }
}

void TWSQLParser::ProcessOrderByNames() {
  // An item is looked up as written, blanks and case aside; failing that, as
  // a name inside a field's expression, since the builder sorts an aggregate
  // such as SUM(X.Y) by the name X.Y. Under "*" an unknown item becomes a field.
  TSQLResultFieldList& fields = result_->ResultFields;
  for (int index = 1;; ++index) {
    const int line = scanner_.GetTokLine();
    if (scanner_.GetTokType() == ttNumber) Error(pecWrongSQL);  // names and numbers are not mixed
    const std::string item = ReadExpression({"asc", "desc", ";"});
    if (item.empty()) Error(pecWrongSQL);
    int found = -1;
    const std::string squeezed = BlanklessLowerCase(item);
    for (int i = 0; i < fields.Count() && found < 0; ++i) {
      if (BlanklessLowerCase(fields[i]->SQLExpr) == squeezed) found = i;
    }
    for (int i = 0; i < fields.Count() && found < 0; ++i) {
      if (ContainsName(fields[i]->SQLExpr, item)) found = i;
    }
    if (found < 0 && fields.AllFields) {
      AddResultField(item, "");
      found = fields.Count() - 1;
    }
    if (found < 0) ErrorAtLine(pecWrongSQL, line);
    ReadSortOrder(*fields[found], index);
    if (scanner_.EOS() || !Is(",")) break;
    Next();
  }
}

}  // namespace ts4
