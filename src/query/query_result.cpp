#include "query/query_result.h"

#include "foundation/assign.h"
#include "foundation/error.h"
#include "foundation/messages.h"
#include "query/filter_row.h"
#include "query/query.h"
#include "query/query_notifier_p.h"
#include "structure/field.h"
#include "structure/link.h"
#include "structure/table.h"

namespace ts4 {
namespace {

constexpr std::string_view Indent = "     ";  // five blanks before each further FROM table

bool HasNonASCII(std::string_view text) {
  for (char c : text) {
    if (static_cast<unsigned char>(c) > 127) return true;
  }
  return false;
}

std::string JoinWord(const TDSLink& link, const TDSTable* table) {
  const bool second = link.Table2() == table;
  switch (link.LinkType()) {
    case ltOuterLeft: return second ? "LEFT OUTER" : "RIGHT OUTER";
    case ltOuterRight: return second ? "RIGHT OUTER" : "LEFT OUTER";
    case ltOuterFull: return "FULL";
    default: return "INNER";
  }
}

/// Captions the condition's new parameter after its field; when the
/// condition has another one, the parameter of value 1 ends in " 1" and the
/// other in " 2".
void CaptionParameters(const TFilterCond& condition, TSQLParam* existing, TSQLParam& added) {
  const std::string base =
      (condition.Field() != nullptr ? condition.Field()->DisplayName() : std::string()) + " param";
  if (existing != nullptr) {
    const bool existingIsFirst = condition.Param1() == existing;
    existing->SetCaption(base + (existingIsFirst ? " 1" : " 2"));
    added.SetCaption(base + (existingIsFirst ? " 2" : " 1"));
  } else {
    added.SetCaption(base);
  }
}

}  // namespace

TQueryResult::TQueryResult(TWQuery& query) : query_(&query), resultFields_(query.DbStruct()) {
  sqlOptions_ = DefaultSQLOptions;
  resultFields_.SetQuoteAliases(sqlOptions_.Contains(soQuoteAliases));
  resultFields_.SetASCIIAliases(sqlOptions_.Contains(soASCIIRFields));
  resultFields_.result_ = this;
}

TQueryResult::~TQueryResult() {
  resultFields_.result_ = nullptr;
}

void TQueryResult::ResultFieldsChanged() {
  query_->Notifier().QueryChanged({qaResultFields});
  query_->Changed();
}

void TQueryResult::SetResultFields(const TRFieldList& fields) {
  const detail::TQueryOperation operation(query_->Notifier());
  resultFields_.Assign(fields);
  resultFields_.SetStructure(query_->DbStruct());
  // The flags that follow the options stay in step.
  resultFields_.SetQuoteAliases(sqlOptions_.Contains(soQuoteAliases));
  resultFields_.SetASCIIAliases(sqlOptions_.Contains(soASCIIRFields));
}

void TQueryResult::SetSQLOptions(TSQLOptions options) {
  if (options == sqlOptions_) return;
  sqlOptions_ = options;
  resultFields_.SetQuoteAliases(options.Contains(soQuoteAliases));
  resultFields_.SetASCIIAliases(options.Contains(soASCIIRFields));
  query_->SettingsChanged();
}

void TQueryResult::SetSQLSyntax(TSQLSyntax syntax) {
  if (AssignIfChanged(sqlSyntax_, syntax)) query_->SettingsChanged();
}

void TQueryResult::SetParamBase(int base) {
  if (AssignIfChanged(paramBase_, base)) query_->SettingsChanged();
}

std::string TQueryResult::GetSelectClause() {
  std::string line = sqlOptions_.Contains(soSelectDistinct) ? "SELECT DISTINCT " : "SELECT ";
  if (resultFields_.JustSorting() || resultFields_.Count() == 0) {
    line += "*";
    return line;
  }
  // Writing the statement changes nothing in the query: an alias the SQL
  // cannot carry is replaced by "C" and its position here only, and the
  // result field keeps the one the user gave it.
  const bool asciiOnly = sqlOptions_.Contains(soASCIIRFields);
  for (int i = 0; i < resultFields_.Count(); ++i) {
    const TResultField* field = resultFields_[i];
    if (i > 0) line += ", ";
    line += asciiOnly && HasNonASCII(field->Alias()) ? field->GetSelectExpr("C" + std::to_string(i + 1))
                                                     : field->GetSelectExpr();
  }
  return line;
}

const TStrings& TQueryResult::GetFromClause() {
  if (resultTables_.Empty()) throw EWTessalyError(qecNotBuilt, std::string(msg::QueryNotBuilt));
  oldStyleJoins_ = false;
  fromLines_.Clear();
  fromLines_.Add("FROM " + resultTables_[0].Table->GetSQLExpr());
  int brackets = 0;
  const bool bracketJoins = sqlOptions_.Contains(soBracketJoins);
  for (int i = 1; i < resultTables_.Count(); ++i) {
    const TResultTable& entry = resultTables_[i];
    if (sqlSyntax_ != ssSQL2 || entry.Link == nullptr) {
      fromLines_.AppendToLine(fromLines_.Count() - 1, ", ");
      fromLines_.Add(std::string(Indent) + entry.Table->GetSQLExpr());
      oldStyleJoins_ = true;
      continue;
    }
    std::string line = std::string(Indent) + JoinWord(*entry.Link, entry.Table) + " JOIN " +
                       entry.Table->GetSQLExpr() + " ON " + entry.Link->GetSQLExpr(ssSQL2);
    if (bracketJoins && i < resultTables_.Count() - 1) {
      line += ")";
      ++brackets;
    }
    fromLines_.Add(std::move(line));
  }
  if (brackets > 0) {
    std::string first = fromLines_[0];
    first.insert(5, static_cast<std::size_t>(brackets), '(');  // after "FROM "
    fromLines_.SetStrings(0, std::move(first));
  }
  return fromLines_;
}

std::string TQueryResult::AdjustCondition(std::string text) const {
  if (sqlOptions_.Contains(soBracketConditions)) return "(" + text + ")";
  return text;
}

bool TQueryResult::AddOldStyleInnerJoins(TStrings& lines) const {
  bool added = false;
  for (int i = 1; i < resultTables_.Count(); ++i) {
    const TDSLink* link = resultTables_[i].Link;
    if (link == nullptr || (sqlSyntax_ != ssOracle && link->LinkType() != ltInner)) continue;
    if (added) lines.AppendToLine(lines.Count() - 1, " AND");
    lines.Add("   " + AdjustCondition(link->GetSQLExpr(sqlSyntax_ == ssOracle ? ssOracle : ssSQL2)));
    added = true;
  }
  return added;
}

const TStrings& TQueryResult::GetSQL() {
  GetFromClause();
  sql_.Clear();
  sql_.Reserve(whereLines_.Count() + fromLines_.Count() + 8);
  sql_.Add(GetSelectClause());
  sql_.AddStrings(fromLines_);
  TStrings joins;
  const bool joined = oldStyleJoins_ && AddOldStyleInnerJoins(joins);
  // WHERE only when something follows it.
  if (joined || !whereLines_.Empty()) {
    sql_.Add("WHERE");
    sql_.AddStrings(joins);
    if (joined && !whereLines_.Empty()) sql_.AppendToLine(sql_.Count() - 1, " AND");
    sql_.AddStrings(whereLines_);
  }
  if (!groupBy_.empty()) sql_.Add("GROUP BY " + groupBy_);
  if (!orderBy_.empty()) sql_.Add("ORDER BY " + orderBy_);
  return sql_;
}

std::string TQueryResult::GetJoinConditions() const {
  TStrings lines;
  AddOldStyleInnerJoins(lines);
  return lines.Text();
}

void TQueryResult::GetResFieldCaptions(TStrings& list) const {
  list.Clear();
  for (const TResultField* field : resultFields_) list.Add(field->Caption());
}

void TQueryResult::DbStructChanged() {
  resultTables_.Clear();
  fromLines_.Clear();
  oldStyleJoins_ = false;
}

// ---- Parameters -------------------------------------------------------------------

std::string TQueryResult::FreeParameterName() const {
  // The first free number from the count on: names stay unique after deletions.
  int number = params_.Count() + paramBase_ + 1;
  while (params_.IndexByName("Param" + std::to_string(number)) >= 0) ++number;
  return "Param" + std::to_string(number);
}

TSQLParam* TQueryResult::AddParameter(TFilterCond& condition) {
  const detail::TQueryOperation operation(query_->Notifier());
  TSQLParam* existing = FindParameterByCondition(condition);
  auto param = std::make_unique<TSQLParam>(&condition, FreeParameterName(), condition.GetExprType());
  CaptionParameters(condition, existing, *param);
  TSQLParam* added = params_.Add(std::move(param));
  query_->ParametersListChanged();
  return added;
}

void TQueryResult::BindCopyOfParameter(TFilterCond& condition, int index, const TSQLParam& source) {
  auto param = std::make_unique<TSQLParam>(&condition, FreeParameterName(), source.DataType());
  param->caption_ = source.Caption();
  param->value_ = source.Value();
  param->vFormat_ = source.VFormat();
  condition.params_[index == 1 ? 0 : 1] = params_.Add(std::move(param));
}

void TQueryResult::DeleteOwnParameter(TSQLParam* param) {
  // A bound parameter is unbound by its condition, which keeps its value and removes it.
  TFilterCond* cond = param->Condition();
  for (std::size_t slot = 0; cond != nullptr && slot < 2; ++slot) {
    if (cond->params_[slot] != param) continue;
    cond->UnbindParam(slot);
    return;
  }
  RemoveParameter(param);
}

void TQueryResult::RemoveParameter(TSQLParam* param) {
  const int index = params_.IndexOf(param);
  if (index >= 0) params_.Delete(index);
}

TSQLParam* TQueryResult::AddLoadedParameter(TFilterCond& condition, int index) {
  // The list was empty when reading began and grows in row order, so the
  // running number is free without searching the list.
  const int number = params_.Count() + paramBase_ + 1;
  auto param =
      std::make_unique<TSQLParam>(&condition, "Param" + std::to_string(number), condition.GetExprType());
  CaptionParameters(condition, condition.Param(index == 1 ? 2 : 1), *param);
  TSQLParam* added = params_.Add(std::move(param));
  condition.params_[index == 1 ? 0 : 1] = added;
  return added;
}

void TQueryResult::DeleteParameter(TSQLParam* param) {
  const detail::TQueryOperation operation(query_->Notifier());
  if (params_.IndexOf(param) >= 0) DeleteOwnParameter(param);
  query_->ParametersListChanged();
}

void TQueryResult::DeleteParameters(const TFilterCond& condition) {
  const detail::TQueryOperation operation(query_->Notifier());
  // Unbind first so the condition never points at a freed parameter.
  auto& cond = const_cast<TFilterCond&>(condition);
  cond.UnbindParam(0);
  cond.UnbindParam(1);
  params_.DeleteByCondition(&condition);
  query_->ParametersListChanged();
}

TSQLParam* TQueryResult::FindParameter(std::string_view name) const {
  const int index = params_.IndexByName(name);
  return index >= 0 ? params_[index] : nullptr;
}

TSQLParam* TQueryResult::FindParameterByCondition(const TFilterCond& condition) const {
  const int index = params_.IndexByCondition(&condition);
  return index >= 0 ? params_[index] : nullptr;
}

void TQueryResult::ClearParams() {
  const detail::TQueryOperation operation(query_->Notifier());
  while (!params_.Empty()) DeleteOwnParameter(params_[params_.Count() - 1]);
  query_->ParametersListChanged();
}

}  // namespace ts4
