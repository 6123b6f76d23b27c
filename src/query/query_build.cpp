#include <algorithm>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "query/builder_state_p.h"
#include "query/date_values.h"
#include "query/formula.h"
#include "query/query.h"
#include "query/query_notifier_p.h"
#include "structure/field.h"
#include "structure/operator.h"
#include "structure/table.h"

namespace ts4 {

/// Writes the condition tree into the WHERE lines. A bracket's opening
/// line and the separator before a row are held back until a condition
/// below actually writes, so brackets that write nothing leave no trace.
class TWQuery::TConditionWriter {
 public:
  explicit TConditionWriter(TWQuery& query) : query_(query), lines_(query.result_->whereLines_) {}

  void WriteBracket(const TFilterBracket& bracket) {
    if (bracket.rows_.empty()) return;
    const TFilterLinkType link = bracket.LinkType();
    const std::string_view separator = link == fltAll || link == fltNotAll ? " AND" : " OR";
    pendingOpens_.push_back(link == fltNone || link == fltNotAll ? " NOT (" : " (");
    bool wrote = false;
    for (const auto& row : bracket.rows_) {
      if (!row->Enabled()) continue;
      if (wrote) pendingSeparator_ = separator;
      const int before = lines_.Count();
      if (row->IsBracket()) {
        WriteBracket(static_cast<const TFilterBracket&>(*row));  // depth is bounded by MaxBracketDepth
      } else {
        WriteCondition(static_cast<TFilterCond&>(*row));
      }
      wrote = wrote || lines_.Count() > before;
    }
    if (wrote) {
      pendingSeparator_ = {};
      lines_.Add(")");
    } else {
      pendingOpens_.pop_back();
    }
  }

 private:
  void Emit(std::string line) {
    if (!pendingSeparator_.empty()) {
      lines_.AppendToLine(lines_.Count() - 1, pendingSeparator_);
      pendingSeparator_ = {};
    }
    for (std::string_view open : pendingOpens_) lines_.Add(std::string(open));
    pendingOpens_.clear();
    lines_.Add(std::move(line));
  }

  void WriteCondition(TFilterCond& cond) {
    const TDSField* field = cond.Field();
    const TDSOperator* op = cond.Operator();
    if (field == nullptr || op == nullptr) return;  // nothing to test yet
    for (int i = 0; i < field->TableCount(); ++i) query_.AddResultTable(*field->Tables(i));

    const TRTableList& tables = query_.result_->ResultTables();
    const int valueCount = op->GetParamCount();
    // One pass over the template: text put in is never read as a marker
    // again. The field's own SQL is kept apart so its quotes survive below.
    const std::string& pattern = op->SQLName();
    std::string text;
    text.reserve(pattern.size() + 64);
    kept_.clear();
    std::size_t i = 0;
    while (i < pattern.size()) {
      const std::size_t at = pattern.find('@', i);
      if (at == std::string::npos) {
        text.append(pattern, i);
        break;
      }
      text.append(pattern, i, at - i);
      const char next = at + 1 < pattern.size() ? pattern[at + 1] : '\0';
      if (next == 'f') {
        const std::size_t from = text.size();
        text += field->GetSQLExpr();
        kept_.emplace_back(from, text.size());
        i = at + 2;
      } else if (next == 't' && field->TableCount() > 0) {
        text += field->Table()->Name();
        i = at + 2;
      } else if (next == 'm' && !tables.Empty()) {
        text += tables[0].Table->Name();
        i = at + 2;
      } else if (next >= '1' && next <= '9' && next - '0' <= valueCount) {
        text += query_.ExtractValue(cond, next - '0');
        i = at + 2;
      } else {
        text += '@';
        i = at + 1;
      }
    }
    BindParameter(cond, 1, text);
    BindParameter(cond, 2, text);
    const TWCustomDBStructure* structure = query_.structure_;
    const bool quoted = structure != nullptr && structure->QuotedTypes().Contains(field->FieldType());
    // Unquoted types are written bare even where the template quotes them.
    if (!quoted && op->ValueType() != vtSubQuery) RemoveQuotesOutsideKept(text);
    if (query_.OnBuildSQL) query_.OnBuildSQL(cond, text);
    Emit(query_.result_->AdjustCondition(std::move(text)));
  }

  /// Replaces the quoted text around "@p1" (or "@p2") by ":" and the
  /// parameter's name, and keeps that text, quotes removed and the marker
  /// as "@v", as the parameter's value format.
  void BindParameter(const TFilterCond& cond, int index, std::string& text) {
    TSQLParam* param = cond.Param(index);
    if (param == nullptr) return;
    const std::string_view marker = index == 1 ? "@p1" : "@p2";
    const std::size_t at = text.find(marker);
    if (at == std::string::npos) return;
    std::size_t first = at;
    for (std::size_t k = at; k-- > 0;) {
      if (text[k] == '\'') {
        first = k;
        break;
      }
    }
    std::size_t last = at + marker.size() - 1;
    for (std::size_t k = at + marker.size(); k < text.size(); ++k) {
      if (text[k] == '\'') {
        last = k;
        break;
      }
    }
    const std::string span = text.substr(first, last - first + 1);
    param->SetVFormat(ReplaceStr(UnquotedString(span, '\''), marker, "@v"));
    const std::string name = ":" + param->Name();
    text.replace(first, span.size(), name);
    for (auto& [from, to] : kept_) {
      if (from > last) {
        from = from - span.size() + name.size();
        to = to - span.size() + name.size();
      } else if (to > first) {
        to = from;  // the span swallowed it
      }
    }
  }

  void RemoveQuotesOutsideKept(std::string& text) const {
    std::size_t out = 0;
    std::size_t range = 0;
    for (std::size_t k = 0; k < text.size(); ++k) {
      while (range < kept_.size() && kept_[range].second <= k) ++range;
      const bool inside = range < kept_.size() && kept_[range].first <= k;
      if (text[k] != '\'' || inside) text[out++] = text[k];
    }
    text.resize(out);
  }

  TWQuery& query_;
  TStrings& lines_;
  std::vector<std::string_view> pendingOpens_;
  std::string_view pendingSeparator_;
  std::vector<std::pair<std::size_t, std::size_t>> kept_;  // field SQL inside the condition's text
};

void TWQuery::AddResultTable(TDSTable& table) {
  TRTableList& tables = result_->ResultTables();
  if (tables.Empty()) {
    tables.Add(&table, nullptr);
    return;
  }
  if (tables.IndexOf(&table) >= 0) return;
  const TDSTable* main = tables[0].Table;
  const TDSPath& path = structure_->GetPath(main->Alias(), table.Alias());
  for (int i = 0; i + 1 < path.TableCount(); ++i) {
    TDSTable* from = path.Tables(i);
    TDSTable* to = path.Tables(i + 1);
    if (tables.IndexOf(to) >= 0) continue;
    TDSLink* link = from->LinkByTable(to);
    const int partner = link != nullptr ? tables.IndexOf(link->OtherTable(to)) : -1;
    if (partner < 0) throw EWTessalyError(qecWrongLink, std::string(msg::WrongResultLink));
    // Right after its partner: a newer table joined to the same partner comes first.
    tables.Insert(partner + 1, to, link);
  }
}

void TWQuery::BuildResultFields() {
  TRFieldList& list = result_->ResultFields();
  list.GenerateNumbers();
  const bool byNames = list.JustSorting() || SQLOptions().Contains(soSortByNames);
  std::vector<bool> aggregate;
  std::vector<std::pair<int, std::string>> sortItems;  // SortOrder, item
  for (const TResultField* rf : list) {
    aggregate.push_back(rf->GetAgregate());
    for (const TDSField* field : rf->Fields()) {
      if (field == nullptr) continue;
      for (int i = 0; i < field->TableCount(); ++i) AddResultTable(*field->Tables(i));
    }
    if (rf->Sorting() == stNoSort) continue;
    std::string item = byNames ? rf->GetOrderName() : std::to_string(rf->Number());
    item += rf->Sorting() == stAscending ? " ASC" : " DESC";
    const auto place = std::upper_bound(sortItems.begin(), sortItems.end(), rf->SortOrder(),
                                        [](int order, const auto& entry) { return order < entry.first; });
    sortItems.insert(place, {rf->SortOrder(), std::move(item)});
  }
  std::string orderBy;
  for (const auto& [order, item] : sortItems) orderBy += (orderBy.empty() ? "" : ", ") + item;
  result_->SetOrderBy(std::move(orderBy));

  if (std::find(aggregate.begin(), aggregate.end(), true) == aggregate.end()) return;
  std::string groupBy;
  for (int i = 0; i < list.Count(); ++i) {
    if (aggregate[static_cast<std::size_t>(i)]) continue;
    for (const TDSField* field : list[i]->Fields()) {
      if (field != nullptr) groupBy += (groupBy.empty() ? "" : ", ") + field->GetSQLExpr();
    }
  }
  result_->SetGroupBy(std::move(groupBy));
}

void TWQuery::BuildQuery() {
  const TStateRestorer building(state_, stBuilding);
  result_->SetOrderBy({});
  result_->SetGroupBy({});
  result_->ResultTables().Clear();
  if (TDSTable* main = MainTable()) result_->ResultTables().Add(main, nullptr);
  result_->WhereLines().Clear();
  BuildResultFields();
  if (!active_) return;
  notifier_->CloseEditors();
  TConditionWriter(*this).WriteBracket(*root_);
  if (result_->ResultTables().Empty())
    throw EWTessalyError(qecNotEnoughInfo, std::string(msg::NotEnoughInfo));
}

std::string TWQuery::GetQueryText() {
  BuildQuery();
  return result_->GetSQL().Text();
}

std::string TWQuery::ExtractValue(const TFilterCond& condition, int index) const {
  if (condition.Param(index) != nullptr) return index == 1 ? "@p1" : "@p2";
  std::string value = condition.Value(index);
  const TDSOperator* op = condition.Operator();
  if (op == nullptr || op->GetParamCount() < index) return value;
  const TFieldType type = condition.GetExprType();
  if (IsDateType(type)) {
    if (op->ValueType() == vtList) {
      TStrings items;
      items.SetCommaText(value);
      for (int i = 0; i < items.Count(); ++i) items.SetStrings(i, ProcessDateValue(type, items[i], true));
      value = items.CommaText();
    } else {
      value = ProcessDateValue(type, value, true);
    }
  }
  if (op->ValueType() != vtSubQuery && value.find('\'') != std::string::npos)
    value = ReplaceStr(value, "'", "''");
  const TDSField* field = condition.Field();
  if (op->ValueType() == vtList && field != nullptr && structure_ != nullptr &&
      structure_->QuotedTypes().Contains(field->FieldType())) {
    TStrings items;
    items.SetCommaText(value);
    std::string quoted;
    for (const std::string& item : items) quoted += (quoted.empty() ? "'" : ",'") + item + "'";
    value = std::move(quoted);
  }
  return value;
}

std::string TWQuery::ProcessDateValue(TFieldType type, std::string_view value, bool toSQL) const {
  if (!IsDateType(type)) return std::string(value);
  static const TSQLFormats isoFormats;
  const TSQLFormats& formats = structure_ != nullptr ? structure_->SQLFormats() : isoFormats;
  const std::string& format = type == ftDate   ? formats.DateFormat()
                              : type == ftTime ? formats.TimeFormat()
                                               : formats.DateTimeFormat();
  std::optional<TDateTimeParts> parts = toSQL ? ParseISODateTime(value) : ParseDateTime(format, value);
  if (!parts && !toSQL) parts = ParseISODateTime(value);
  if (!parts) return std::string(value);
  if (type == ftDate && !parts->HasDate) return std::string(value);
  if (type == ftTime && !parts->HasTime) return std::string(value);
  if (type == ftDateTime) {
    if (!parts->HasDate) return std::string(value);
    parts->HasTime = true;  // a date alone is that day's midnight
  }
  if (type == ftDate) parts->HasTime = false;
  if (type == ftTime) parts->HasDate = false;
  return toSQL ? FormatDateTime(format, *parts) : ISODateTimeText(*parts);
}

}  // namespace ts4
