#include <algorithm>
#include <cstdint>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "query/date_values.h"
#include "query/query.h"
#include "sqlimport/sql_query_reader_p.h"
#include "structure/field.h"
#include "structure/link.h"
#include "structure/operator.h"
#include "structure/table.h"

namespace ts4::detail {
namespace {

// Conditions are brought into a shape the operator templates can match.
constexpr std::string_view RewriteRules[] = {
    "@f != '@1'|->@f <> '@1'",
    "not(@f = '@1')|->@f <> '@1'",
};

/// The text with a doubled quote read as one: the inside of an SQL string.
std::string Undoubled(std::string_view text) {
  return text.find("''") == std::string_view::npos ? std::string(text) : ReplaceStr(text, "''", "'");
}

bool IsQuoted(std::string_view item) {
  return item.size() >= 2 && item.front() == '\'' && item.back() == '\'';
}

/// Items of an SQL list, split at commas outside strings and brackets.
std::vector<std::string_view> ListItems(std::string_view list) {
  std::vector<std::string_view> items;
  int depth = 0;
  bool inString = false;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= list.size(); ++i) {
    const char c = i < list.size() ? list[i] : ',';
    if (inString) {
      if (c == '\'') inString = false;  // a doubled quote closes and reopens: same result
    } else if (c == '\'') {
      inString = true;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')') {
      --depth;
    } else if (c == ',' && (depth <= 0 || i == list.size())) {
      items.push_back(Trim(list.substr(start, i - start)));
      start = i + 1;
    }
  }
  return items;
}

/// Removes brackets that enclose the whole text ("(a=b)" gives "a=b").
std::string_view WithoutOuterBrackets(std::string_view text) {
  while (text.size() >= 2 && text.front() == '(' && text.back() == ')') {
    int depth = 0;
    std::size_t i = 0;
    for (; i < text.size(); ++i) {
      if (text[i] == '(') ++depth;
      if (text[i] == ')' && --depth == 0) break;
    }
    if (i != text.size() - 1) break;  // the first bracket closes earlier
    text = text.substr(1, text.size() - 2);
  }
  return text;
}

/// A parsed condition as the reader works on it.
struct TConditionText {
  std::string_view Expr;
  std::string_view Operator;
  std::string_view Value;
  bool Negated = false;

  explicit TConditionText(const TSQLCondition& parsed)
      : Expr(parsed.Expr), Operator(parsed.Operator), Value(parsed.Value), Negated(parsed.Negated) {
    // "x is not null" written by hand: the NOT belongs to the whole condition.
    if (Operator == "is" && Value.size() > 4 && SameText(Value.substr(0, 3), "not") && IsBlank(Value[3])) {
      Value = Trim(Value.substr(4));
      Negated = !Negated;
    }
  }

  void SQL(bool negated, std::string& text) const {
    text.clear();
    if (negated) text += "not(";
    text.append(Expr).append(" ").append(Operator).append(" ").append(Value);
    if (negated) text += ")";
  }
  [[nodiscard]] std::string SQL(bool negated) const {
    std::string text;
    SQL(negated, text);
    return text;
  }
};

std::string TableColumnKey(const TDSTable* table, std::string_view column) {
  return std::to_string(reinterpret_cast<std::uintptr_t>(table)) + "." + LowerCase(column);
}

}  // namespace

TSQLQueryReader::TSQLQueryReader(TWQuery& query, const TSQLTableList* tables)
    : query_(query), structure_(*query.DbStruct()), tables_(tables) {
  // Operators are tried from the one whose template spells out the most
  // (so "like '%@1%'" is tried before "like '@1%'", which would also take
  // it), then in descending order of their templates.
  for (int i = 0; i < structure_.OperatCount(); ++i) {
    TDSOperator* op = structure_.Operators(i);
    candidates_.push_back({op, TSQLTemplate(op->SQLName())});
  }
  std::stable_sort(candidates_.begin(), candidates_.end(), [](const TCandidate& a, const TCandidate& b) {
    if (a.Template.Weight() != b.Template.Weight()) return a.Template.Weight() > b.Template.Weight();
    return CompareText(a.Template.Text(), b.Template.Text()) > 0;
  });
  for (std::string_view rule : RewriteRules) rules_.emplace_back(rule);

  for (int i = 0; i < structure_.FieldCount(); ++i) {
    TDSField* field = structure_.Fields(i);
    fieldsBySQL_.try_emplace(BlanklessLowerCase(field->GetSQLExpr()), field);
    if (field->Kind() != wfkData) continue;
    auto [it, added] = fieldsByColumn_.try_emplace(LowerCase(field->FieldExpr()), field);
    if (!added && it->second != field) it->second = nullptr;  // two tables have it: ambiguous
    fieldsBySQL_.try_emplace(TableColumnKey(field->Table(), field->FieldExpr()), field);
  }
  for (int i = 0; i < structure_.LinkCount(); ++i) {
    const TDSLink* link = structure_.Links(i);
    for (TSQLSyntax syntax : {ssSQL2, ssOracle}) {
      // "(A.X=B.X) and (A.Y=B.Y)": each part is a condition of its own.
      const std::string text = LowerCase(link->GetSQLExpr(syntax));
      for (std::size_t start = 0; start <= text.size();) {
        const std::size_t found = text.find(" and ", start);
        const std::size_t end = found == std::string::npos ? text.size() : found;
        const std::string key = BlanklessLowerCase(std::string_view(text).substr(start, end - start));
        joinConditions_.try_emplace(std::string(WithoutOuterBrackets(key)), link);
        start = end + 5;
      }
    }
  }
}

TDSField* TSQLQueryReader::FieldBySQL(std::string_view expr) const {
  const std::string key = BlanklessLowerCase(expr);
  if (auto it = fieldsBySQL_.find(key); it != fieldsBySQL_.end()) return it->second;
  const std::size_t dot = key.find('.');
  if (dot == std::string::npos) {
    auto it = fieldsByColumn_.find(key);
    return it != fieldsByColumn_.end() ? it->second : nullptr;
  }
  // A column qualified by the statement's own alias for a table, or by the table's name.
  std::string column = key.substr(dot + 1);
  if (column.size() >= 2 && column.front() == '"' && column.back() == '"')
    column = column.substr(1, column.size() - 2);
  const TDSTable* table = TableOfQualifier(std::string_view(key).substr(0, dot));
  if (table == nullptr) return nullptr;
  auto it = fieldsBySQL_.find(TableColumnKey(table, column));
  return it != fieldsBySQL_.end() ? it->second : nullptr;
}

TDSTable* TSQLQueryReader::TableOfQualifier(std::string_view qualifier) const {
  if (tables_ != nullptr) {
    for (const TSQLTable* parsed : *tables_) {
      if (!SameText(parsed->Alias, qualifier)) continue;
      const std::string_view name = parsed->TableName;
      if (TDSTable* table = structure_.TableByName(tsName, name)) return table;
      const std::size_t dot = name.rfind('.');  // owner.table
      if (dot != std::string_view::npos) return structure_.TableByName(tsName, name.substr(dot + 1));
      return nullptr;
    }
  }
  return structure_.TableByName(tsName, qualifier);
}

std::string TSQLQueryReader::InStructureAliases(std::string_view expr) const {
  std::string result;
  result.reserve(expr.size());
  std::size_t copied = 0;
  for (const auto& [at, length] : SQLQualifiers(expr)) {
    const std::string_view word = expr.substr(at, length);
    const TDSTable* table = TableOfQualifier(word);
    if (table == nullptr || table->Alias().empty() || SameText(table->Alias(), word)) continue;
    result.append(expr.substr(copied, at - copied)).append(table->Alias());
    copied = at + length;
  }
  return result.append(expr.substr(copied));
}

TDSOperator* TSQLQueryReader::Match(const TSQLCondition& condition, bool negated, const TDSField* field,
                                    TSQLCaptures& captures) const {
  // The query writes values bare only for types it does not quote; reading
  // "C.CITY = C.COMPANY" as the text 'C.COMPANY' would change its meaning.
  const bool allowBare = field == nullptr || !structure_.QuotedTypes().Contains(field->FieldType());
  const TConditionText parts(condition);
  std::string& text = scratch_.Text;
  parts.SQL(negated, text);
  TSQLMatchText& prepared = scratch_.Prepared;
  prepared.Reset(text, parts.Expr);
  for (const TSQLRewriteRule& rule : rules_) {
    if (!rule.Apply(prepared, scratch_.Rewritten)) continue;
    text.swap(scratch_.Rewritten);
    prepared.Reset(text, parts.Expr);
  }
  for (const TCandidate& candidate : candidates_) {
    if (condition.IsSubQuery && candidate.Operator->ValueType() != vtSubQuery) continue;
    if (candidate.Template.Match(prepared, captures, allowBare)) return candidate.Operator;
  }
  if (parts.Operator != "like") return nullptr;
  // A LIKE no template explains: its pattern as written, as "contains" (or
  // "does not contain" under a NOT, which reads back the same way).
  TDSOperator* op = structure_.OperatorByName(negated ? "NotContains" : "Contains");
  if (op == nullptr) op = structure_.OperatorByName(negated ? "NotStartsWith" : "StartsWith");
  if (op == nullptr) return nullptr;
  captures = {};
  captures.Text[0] = parts.Expr;
  captures.Text[1] = parts.Value;
  return op;
}

TDSOperator* TSQLQueryReader::OperatorBySQLCond(const TSQLCondition& condition, std::string& value1,
                                                std::string& value2, TStrings* subQueries) const {
  value1.clear();
  value2.clear();
  const bool negated = TConditionText(condition).Negated;
  TSQLCaptures captures;
  TDSOperator* op = Match(condition, negated, FieldBySQL(condition.Expr), captures);
  if (op == nullptr) return nullptr;
  value1 = captures.Value(1);
  value2 = captures.Value(2);
  if (op->ValueType() == vtSubQuery && subQueries != nullptr) subQueries->SetText(value1);
  return op;
}

std::string TSQLQueryReader::ValueFromSQL(TFieldType type, const TDSOperator& op, std::string_view raw,
                                          bool bare) const {
  if (op.ValueType() == vtSubQuery) return std::string(raw);
  if (op.ValueType() == vtList) {
    const std::vector<std::string_view> items = ListItems(raw);
    const bool quoted = std::any_of(items.begin(), items.end(), IsQuoted);
    if (!quoted && !IsDateType(type)) return Undoubled(raw);
    TStrings values;
    for (std::string_view item : items) {
      std::string value = IsQuoted(item) ? Undoubled(item.substr(1, item.size() - 2)) : std::string(item);
      values.Add(query_.ProcessDateValue(type, value, false));
    }
    return values.CommaText();
  }
  return query_.ProcessDateValue(type, bare ? std::string(raw) : Undoubled(raw), false);
}

void TSQLQueryReader::AddCondition(TFilterBracket& bracket, const TSQLCondition& parsed) const {
  TDSField* field = FieldBySQL(parsed.Expr);
  if (field == nullptr) throw EWQueryPanelError(qecUnknownExprField, msg::UnknownExprField, parsed.Expr);
  const bool negated = TConditionText(parsed).Negated;
  TSQLCaptures captures;
  TDSOperator* op = Match(parsed, negated, field, captures);
  TFilterBracket* target = &bracket;
  if (op == nullptr && negated) {
    // No operator says "not" this way: a "none" bracket around the condition does.
    op = Match(parsed, false, field, captures);
    if (op != nullptr) {
      target = bracket.AddBracket();
      target->SetLinkType(fltNone);
    }
  }
  if (op == nullptr) {
    throw EWQueryPanelError(qecUnreadableCondition, msg::UnreadableCondition,
                            TConditionText(parsed).SQL(negated));
  }
  TFilterCond& cond = *target->AddCond();
  cond.SetField(field);
  cond.SetOperator(op);
  const TFieldType type = op->ExprType() != ftUnknown ? op->ExprType() : field->FieldType();
  for (int k = 1; k <= std::min(op->GetParamCount(), 2); ++k) {
    std::string value = ValueFromSQL(type, *op, captures.Value(k), captures.Bare);
    cond.SetCaption(k, value);
    cond.SetValue(k, std::move(value));
  }
  if (op->ValueType() == vtSubQuery) {
    TStrings lines;
    lines.SetText(captures.Value(1));
    cond.SetSubQuery(lines);
  }
}

void TSQLQueryReader::ProcessSQLBracket(TFilterBracket& bracket, const TSQLBracket& parsed) const {
  const bool any = parsed.LinkOperator == "or";
  bracket.SetLinkType(parsed.Negated ? (any ? fltNone : fltNotAll) : (any ? fltAny : fltAll));
  bracket.ReserveRows(bracket.GetRowCount() + parsed.Items.Count());
  for (const TSQLConditionNode* node : parsed.Items) {
    if (node->IsBracket()) {
      // Depth is bounded by the parser's nesting limit.
      ProcessSQLBracket(*bracket.AddBracket(), static_cast<const TSQLBracket&>(*node));
    } else {
      AddCondition(bracket, static_cast<const TSQLCondition&>(*node));
    }
  }
}

void TSQLQueryReader::ReadResultFields(const TWParserResult& parsed) const {
  TRFieldList& list = query_.QResult().ResultFields();
  list.SetJustSorting(parsed.AllFields);
  for (const TSQLResultField* field : parsed.ResultFields) {
    const TSortingType sorting = field->SortOrder == 1   ? stAscending
                                 : field->SortOrder == 2 ? stDescending
                                                         : stNoSort;
    TResultField* added = list.AddBySQLExpr(InStructureAliases(field->SQLExpr), sorting);
    added->SetSortOrder(field->SortIndex);
  }
}

std::string TSQLQueryReader::MainTableName(const TWParserResult& parsed) const {
  if (parsed.Tables.Empty()) return {};
  const TSQLTable& first = *parsed.Tables.First();
  TDSTable* table = structure_.TableByName(tsName, first.TableName);
  if (table == nullptr) table = structure_.TableByName(tsAlias, first.Alias);
  if (table == nullptr) return {};
  const std::string& byDefault = structure_.DefaultMainTable();
  const bool isDefault = !byDefault.empty() && (structure_.TableByName(tsName, byDefault) == table ||
                                                structure_.TableByName(tsAlias, byDefault) == table);
  return isDefault ? std::string() : table->Name();
}

bool TSQLQueryReader::IsJoinCondition(const TSQLConditionNode& node,
                                      const std::unordered_set<const TDSTable*>& tables) const {
  if (node.IsBracket()) {
    const auto& bracket = static_cast<const TSQLBracket&>(node);
    if (bracket.Negated || bracket.LinkOperator == "or" || bracket.Items.Empty()) return false;
    for (const TSQLConditionNode* item : bracket.Items) {
      if (item->IsBracket() || !IsJoinCondition(*item, tables)) return false;
    }
    return true;
  }
  const auto& condition = static_cast<const TSQLCondition&>(node);
  if (condition.Negated) return false;
  auto it = joinConditions_.find(BlanklessLowerCase(condition.Expr + condition.Operator + condition.Value));
  return it != joinConditions_.end() && tables.contains(it->second->Table1()) &&
         tables.contains(it->second->Table2());
}

const TSQLBracket& TSQLQueryReader::ConditionsOf(TWParserResult& parsed) const {
  // A statement with JOIN clauses keeps its joins there: its WHERE is all conditions.
  TSQLBracket& where = *parsed.Where;
  if (!parsed.Joined && !where.Negated && where.LinkOperator != "or" && !joinConditions_.empty()) {
    std::unordered_set<const TDSTable*> tables;
    for (const TSQLTable* table : parsed.Tables) {
      if (const TDSTable* known = TableOfQualifier(table->Alias)) tables.insert(known);
    }
    for (int i = where.Items.Count() - 1; i >= 0; --i) {
      if (IsJoinCondition(*where.Items[i], tables)) where.Items.Delete(i);
    }
  }
  const TSQLBracket* root = &where;
  while (!root->Negated && root->Items.Count() == 1 && root->Items[0]->IsBracket())
    root = static_cast<const TSQLBracket*>(root->Items[0]);
  return *root;
}

}  // namespace ts4::detail
