#include "sqlimport/sql_parse_tree.h"

#include <utility>
#include <vector>

#include "foundation/string_utils.h"

namespace ts4 {

void TSQLResultField::SetSQLExpr(std::string value) {
  SQLExpr = std::move(value);
  const std::size_t point = SQLExpr.find('.');
  const std::size_t bracket = SQLExpr.find('(');
  // A point inside or after a call's brackets does not qualify a column:
  // count(t.x) keeps its whole text as the name.
  if (bracket != std::string::npos && (point == std::string::npos || point >= bracket)) {
    FieldName = SQLExpr;
  } else {
    FieldName = point == std::string::npos ? SQLExpr : SQLExpr.substr(point + 1);
  }
}

int TSQLResultFieldList::IndexByAlias(std::string_view alias) const {
  for (int i = 0; i < Count(); ++i) {
    if (SameText(Items(i)->Alias, alias)) return i;
  }
  return -1;
}

int TSQLResultFieldList::IndexByExpr(std::string_view expr) const {
  for (int i = 0; i < Count(); ++i) {
    if (SameText(Items(i)->SQLExpr, expr)) return i;
  }
  return -1;
}

void TSQLTable::SetTableName(std::string value) {
  TableName = std::move(value);
  if (Alias.empty()) Alias = TableName;
}

TSQLBracket* TSQLBracket::Create(TSQLBracket* parent) {
  auto bracket = std::make_unique<TSQLBracket>();
  if (parent == nullptr) return bracket.release();  // a free bracket belongs to the caller
  bracket->Parent = parent;
  return static_cast<TSQLBracket*>(parent->Items.Add(std::move(bracket)));
}

void TSQLBracket::DeleteEmptyBrackets() {
  // An explicit stack instead of recursion, since the tree is as deep as the
  // brackets of the text it was read from; and each bracket's items are taken
  // out and put back in one pass, since a list of many thousands of single
  // conditions (a long OR) would make replacing them one by one quadratic.
  std::vector<TSQLBracket*> pending = {this};
  std::vector<std::unique_ptr<TSQLConditionNode>> items;
  while (!pending.empty()) {
    TSQLBracket* bracket = pending.back();
    pending.pop_back();
    items.clear();
    while (!bracket->Items.Empty()) items.push_back(bracket->Items.Extract(bracket->Items.Count() - 1));
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
      while ((*item)->IsBracket() && static_cast<TSQLBracket&>(**item).Items.Count() == 1) {
        const bool lonelyNot = (*item)->Negated;
        std::unique_ptr<TSQLConditionNode> single = static_cast<TSQLBracket&>(**item).Items.Extract(0);
        // The NOT of the bracket that goes moves onto its item.
        single->Negated = single->Negated != lonelyNot;
        *item = std::move(single);
      }
      (*item)->Parent = bracket;
      if ((*item)->IsBracket()) pending.push_back(static_cast<TSQLBracket*>(item->get()));
      bracket->Items.Add(std::move(*item));
    }
  }
}

TSQLCondition* TSQLCondition::Create(TSQLBracket* parent) {
  auto condition = std::make_unique<TSQLCondition>();
  if (parent == nullptr) return condition.release();  // a free condition belongs to the caller
  condition->Parent = parent;
  return static_cast<TSQLCondition*>(parent->Items.Add(std::move(condition)));
}

std::string TSQLCondition::GetSQLExpr() const {
  std::string text = Expr + " " + Operator + " " + Value;
  return Negated ? "not(" + text + ")" : text;
}

TWParserResult::TWParserResult() : Where(std::make_unique<TSQLBracket>()) {}

}  // namespace ts4
