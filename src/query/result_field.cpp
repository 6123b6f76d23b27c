#include "query/result_field.h"

#include <array>
#include <cctype>

#include "foundation/assign.h"
#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "query/rfield_list.h"
#include "structure/field.h"
#include "structure/structure.h"

namespace ts4 {

TWCustomDBStructure* TResultField::Structure() const {
  return owner_ != nullptr ? owner_->Structure() : nullptr;
}

void TResultField::Changed() const {
  if (owner_ != nullptr) owner_->Changed();
}

void TResultField::AddDSField(TDSField* field) {
  formula_.Fields.push_back(field);
  Changed();
}

void TResultField::SetDSFields(std::vector<TDSField*> fields) {
  if (AssignIfChanged(formula_.Fields, std::move(fields))) Changed();
}

void TResultField::SetFormula(std::string formula) {
  if (AssignIfChanged(formula_.Formula, std::move(formula))) Changed();
}

void TResultField::SetAlias(std::string alias) {
  if (AssignIfChanged(alias_, std::move(alias))) Changed();
}

void TResultField::SetCaption(std::string caption) {
  if (AssignIfChanged(caption_, std::move(caption))) Changed();
}

void TResultField::SetSorting(TSortingType sorting) {
  if (AssignIfChanged(sorting_, sorting)) Changed();
}

void TResultField::SetSortOrder(int order) {
  if (AssignIfChanged(sortOrder_, order)) Changed();
}

TDSField* TResultField::Field(int index) const {
  if (index < 0 || index >= FieldCount()) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
  return formula_.Fields[static_cast<std::size_t>(index)];
}

void TResultField::DelDSField(int index) {
  const std::size_t count = formula_.Fields.size();
  if (index < 0 || static_cast<std::size_t>(index) >= count) {
    throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
  }
  const auto removed = static_cast<std::size_t>(index) + 1;
  formula_.Formula = SubstituteMarkers(formula_.Formula, count, [removed](std::size_t k) {
    if (k == removed) return std::string();
    return "@" + std::to_string(k > removed ? k - 1 : k);
  });
  formula_.Fields.erase(formula_.Fields.begin() + index);
  Changed();
}

std::string TResultField::GetSQLExpr() const {
  return SubstituteMarkers(formula_.Formula, formula_.Fields.size(), [this](std::size_t k) {
    const TDSField* field = formula_.Fields[k - 1];
    return field != nullptr ? field->GetSQLExpr() : std::string();
  });
}

std::string TResultField::GetSelectExpr(std::string_view alias) const {
  std::string result = GetSQLExpr();
  if (!alias.empty()) result += " as " + GetSQLAlias(alias);
  return result;
}

std::string TResultField::GetSQLAlias(std::string_view alias) const {
  if (owner_ == nullptr || !owner_->QuoteAliases()) return std::string(alias);
  return GetQuoteSymbol(1) + std::string(alias) + GetQuoteSymbol(2);
}

std::string TResultField::GetOrderName() const {
  if (!formula_.Fields.empty() && formula_.Fields.front() != nullptr)
    return formula_.Fields.front()->GetSQLExpr();
  return GetSQLExpr();
}

bool TResultField::GetAgregate() const {
  const std::string sql = LowerCase(GetSQLExpr());
  static constexpr std::array<std::string_view, 5> functions = {"sum", "count", "max", "min", "avg"};
  for (std::string_view function : functions) {
    // "count(" anywhere, also "count (": blanks before the bracket do not hide it.
    for (std::size_t at = sql.find(function); at != std::string::npos; at = sql.find(function, at + 1)) {
      std::size_t next = at + function.size();
      while (next < sql.size() && (sql[next] == ' ' || sql[next] == '\t')) ++next;
      if (next < sql.size() && sql[next] == '(') return true;
    }
  }
  return false;
}

std::string TResultField::GetExpression() const {
  return ExpressionFromFormula(Structure(), formula_);
}

char TResultField::GetQuoteSymbol(int index) const {
  const TWCustomDBStructure* structure = Structure();
  if (structure == nullptr) return '"';
  return index == 1 ? structure->SQLFormats().QuoteSymbol1() : structure->SQLFormats().QuoteSymbol2();
}

void TResultField::ProcessExpression(std::string_view text) {
  formula_ = FormulaFromExpression(Structure(), text);
  Changed();
}

void TResultField::ProcessSQLExpr(std::string_view text) {
  formula_ = FormulaFromSQL(Structure(), text);
  Changed();
}

void TResultField::SetAggregate(TAggregateFunction function) {
  SetFormula(WithAggregate(formula_.Formula, function));
}

void TResultField::Combine(TFormulaOperator op, TDSField& field) {
  if (formula_.Fields.empty()) {
    formula_ = {"@1", {&field}};
  } else {
    formula_.Fields.push_back(&field);
    formula_.Formula = CombineFormula(formula_.Formula, op, "@" + std::to_string(formula_.Fields.size()));
  }
  Changed();
}

void TResultField::GenerateAlias() {
  if (std::optional<std::string> alias = GeneratedAlias()) SetAlias(std::move(*alias));
}

std::optional<std::string> TResultField::GeneratedAlias() const {
  if (owner_ == nullptr || !owner_->AutoAliases()) return std::nullopt;
  const std::string source = caption_.empty() ? GetExpression() : caption_;
  std::string alias;
  for (char c : source) {
    const auto u = static_cast<unsigned char>(c);
    if (std::isalnum(u) != 0 || c == '_' || (u >= 0x80 && !owner_->ASCIIAliases())) {
      alias += c;
    } else if (u < 0x80 && !alias.empty() && alias.back() != '_') {
      alias += '_';
    }
  }
  while (!alias.empty() && alias.back() == '_') alias.pop_back();
  if (alias.empty() || std::isdigit(static_cast<unsigned char>(alias.front())) != 0) alias.insert(0, "F");
  return owner_->GetUniqAlias(alias, this);
}

void TResultField::GenerateCaption() {
  SetCaption(GeneratedCaption());
}

bool TResultField::CaptionGenerated() const {
  return caption_.empty() || caption_ == GeneratedCaption();
}

std::string TResultField::GeneratedCaption() const {
  std::string caption;
  for (char c : GetExpression()) {
    if (c != '{' && c != '}') caption += c;
  }
  return owner_ != nullptr ? owner_->GetUniqCaption(caption, this) : caption;
}

void TResultField::Assign(const TResultField& source) {
  if (&source == this) return;
  CopyFrom(source);
  Changed();
}

void TResultField::CopyFrom(const TResultField& source) {
  formula_ = source.formula_;
  alias_ = source.alias_;
  caption_ = source.caption_;
  sorting_ = source.sorting_;
  sortOrder_ = source.sortOrder_;
}

}  // namespace ts4
