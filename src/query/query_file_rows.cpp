// The condition rows of a query text (the format is described in
// query_file.cpp): written and read depth first with explicit stacks, so
// neither ever recurses however deep the brackets are nested.
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/section_index.h"
#include "foundation/sections.h"
#include "foundation/string_utils.h"
#include "foundation/strings.h"
#include "query/date_values.h"
#include "query/query.h"
#include "structure/field.h"
#include "structure/operator.h"

namespace ts4 {
namespace {

/// A date value as the text stores it: its date-time number.
std::string DateToStored(std::string_view value) {
  const std::optional<TDateTimeParts> parts = ParseISODateTime(value);
  if (!parts) throw EWQueryPanelError(qecInvalidDateValue, msg::InvalidDateTime, value);
  return XFloatToStr(DateTimeToNumber(*parts));
}

/// A stored date-time number as ISO text: the date unless a time has none,
/// the time unless a date has none (midnight). Text that is not such a
/// number is kept as it is.
std::string DateFromStored(TFieldType type, std::string_view value) {
  const double number = XStrToFloat(value, std::nan(""));
  if (std::isnan(number)) return std::string(value);
  std::optional<TDateTimeParts> parts = NumberToDateTime(number);
  if (!parts) return std::string(value);
  const bool midnight =
      parts->Hour == 0 && parts->Minute == 0 && parts->Second == 0 && parts->Millisecond == 0;
  parts->HasDate = type != ftTime || static_cast<long long>(number) != 0;
  parts->HasTime = type == ftTime || !midnight;
  std::string text = ISODateTimeText(*parts);
  if (parts->HasTime && parts->Millisecond != 0) {
    const std::string ms = std::to_string(parts->Millisecond);
    text += "." + std::string(3 - ms.size(), '0') + ms;
  }
  return text;
}

/// Applies the conversion to a value of a date condition: a list value
/// item by item, a sub-query value (SQL text) not at all.
template <typename Convert>
std::string ConvertDateValue(TOpValueType valueType, const std::string& value, Convert&& convert) {
  if (value.empty() || valueType == vtSubQuery) return value;
  if (valueType != vtList) return convert(value);
  TStrings items;
  items.SetCommaText(value);
  for (int i = 0; i < items.Count(); ++i)
    if (!items[i].empty()) items.SetStrings(i, convert(items[i]));
  return items.CommaText();
}

/// Value 1 and 2 as the text stores them.
std::pair<std::string, std::string> StoredValues(const TFilterCond& cond) {
  std::string value1 = cond.Param1() != nullptr ? cond.Param1()->Value() : cond.Value1();
  std::string value2 = cond.Param2() != nullptr ? cond.Param2()->Value() : cond.Value2();
  const TFieldType type = cond.GetExprType();
  if (IsDateType(type)) {
    const TOpValueType valueType = cond.Operator()->ValueType();
    value1 = ConvertDateValue(valueType, value1, DateToStored);
    // Value 2 is converted from the condition's own value, parameter or not.
    if (!cond.Value2().empty()) value2 = ConvertDateValue(valueType, cond.Value2(), DateToStored);
  }
  return {std::move(value1), std::move(value2)};
}

void WriteCondition(TStrings& list, const TFilterCond& cond) {
  // Lines with texts of the user's are escaped where the format needs it.
  const auto text = [&list](std::string line) { list.Add(EscapeSectionLine(line)); };
  list.Add("FieldID=" + (cond.Field() != nullptr ? std::to_string(cond.Field()->ID()) : std::string()));
  text("Operator=" + (cond.Operator() != nullptr ? cond.Operator()->Name() : std::string()));
  list.Add("Param1=" + XBoolToStr(cond.Value1IsParam()));
  list.Add("Param2=" + XBoolToStr(cond.Value2IsParam()));
  auto [value1, value2] = StoredValues(cond);
  text("Value1=" + value1);
  text("Value2=" + value2);
  for (int k = 1; k <= 2; ++k) {
    const TSQLParam* param = cond.Param(k);
    const std::string number = std::to_string(k);
    text(param != nullptr ? "VFormat" + number + "=" + param->VFormat()
                          : "Caption" + number + "=" + cond.GetCaption(k));
  }
  text("SubQuery=" + cond.SubQuery().CommaText());
  list.Add("SubQueryOptions=" + std::to_string(SQLOptionsToInt(cond.SubQueryOptions())));
}

}  // namespace

void TWQuery::WriteRows(TStrings& list) const {
  // Each row with the ID its place gives it, which is the ID the reader expects.
  std::vector<std::pair<const TFilterRow*, std::string>> pending;
  pending.emplace_back(root_.get(), std::string());
  while (!pending.empty()) {
    auto [row, id] = std::move(pending.back());
    pending.pop_back();
    list.Add("[Row" + id + "]");
    list.Add("Enabled=" + XBoolToStr(row->Enabled()));
    if (row->IsBracket()) {
      const auto& bracket = static_cast<const TFilterBracket&>(*row);
      list.Add("RowType=1");
      list.Add("LinkType=" + std::to_string(static_cast<int>(bracket.LinkType())));
      list.Add("RowCount=" + std::to_string(bracket.GetRowCount()));
      for (int i = bracket.GetRowCount() - 1; i >= 0; --i)
        pending.emplace_back(bracket.rows_[static_cast<std::size_t>(i)].get(),
                             id + std::to_string(i + 1) + ".");
    } else {
      list.Add("RowType=0");
      WriteCondition(list, static_cast<const TFilterCond&>(*row));
    }
    list.Add("");
  }
}

void TWQuery::ReadRows(TSectionIndex& reader) {
  TStrings body;
  if (!reader.Read("Row", body)) return;  // a text without rows
  std::unordered_map<int, TDSField*> fieldsByID;
  for (int i = 0; i < structure_->FieldCount(); ++i) {
    TDSField* field = structure_->Fields(i);
    fieldsByID.try_emplace(field->ID(), field);
  }

  // A bracket being filled: how many rows its section promised and how many are read.
  struct TOpenBracket {
    TFilterBracket* Bracket;
    int Count;
    int Read;
  };
  const auto readBracket = [&](TFilterBracket& bracket) {
    const int link = XStrToInt(body.Values("LinkType"));
    bracket.linkType_ = link >= 0 && link <= 3 ? static_cast<TFilterLinkType>(link) : fltAll;
    bracket.enabled_ = XStrToBool(body.Values("Enabled"));
    return TOpenBracket{&bracket, XStrToInt(body.Values("RowCount")), 0};
  };
  std::vector<TOpenBracket> open = {readBracket(*root_)};
  while (!open.empty()) {
    TOpenBracket& top = open.back();
    if (top.Read >= top.Count) {
      open.pop_back();
      continue;
    }
    TFilterBracket& parent = *top.Bracket;
    const std::string section = "Row" + parent.RowID() + std::to_string(++top.Read) + ".";
    if (!reader.Read(section, body))
      throw EWQueryPanelError(qecSectionNotFound, msg::SectionNotFound, section);

    if (XStrToInt(body.Values("RowType")) == 1) {
      auto* bracket =
          static_cast<TFilterBracket*>(parent.AppendRead(std::make_unique<TFilterBracket>(*this)));
      open.push_back(readBracket(*bracket));  // `top` is not used after this
      continue;
    }
    auto* cond = static_cast<TFilterCond*>(parent.AppendRead(std::make_unique<TFilterCond>(*this)));
    cond->enabled_ = XStrToBool(body.Values("Enabled"));
    const std::string fieldID = body.Values("FieldID");
    if (!fieldID.empty()) {
      const auto found = fieldsByID.find(XStrToInt(fieldID, -1));
      cond->field_ = found != fieldsByID.end() ? found->second : nullptr;
    } else if (const std::string name = body.Values("FldName"); !name.empty()) {
      cond->field_ = structure_->FieldByName(fsFieldExpr, name);
    }
    cond->operator_ = structure_->OperatorByName(body.Values("Operator"));

    const TFieldType type = cond->GetExprType();
    for (int k = 1; k <= 2; ++k) {
      const std::string number = std::to_string(k);
      std::string value = body.Values("Value" + number);
      if (IsDateType(type)) {
        value = ConvertDateValue(cond->operator_->ValueType(), value,
                                 [type](std::string_view item) { return DateFromStored(type, item); });
      }
      const auto slot = static_cast<std::size_t>(k - 1);
      cond->values_[slot] = value;
      if (!XStrToBool(body.Values("Param" + number))) {
        cond->captions_[slot] = body.Values("Caption" + number);
        continue;
      }
      TSQLParam* param = result_->AddLoadedParameter(*cond, k);
      std::string format = body.Values("VFormat" + number);
      param->SetVFormat(format.empty() ? "@v" : std::move(format));
      param->SetValue(std::move(value));
      cond->captions_[slot] = ":" + GetTitle("ttlParameter");
    }
    cond->subQuery_.SetCommaText(body.Values("SubQuery"));
    cond->subQueryOptions_ = IntToSQLOptions(XStrToInt(body.Values("SubQueryOptions")));
  }
}

}  // namespace ts4
