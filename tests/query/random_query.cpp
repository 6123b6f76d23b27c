#include "random_query.h"

#include <array>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "query/date_values.h"
#include "query/query.h"

namespace ts4test {
namespace {

// Words with quotes, commas, "=", brackets, blanks at either end, line
// breaks of every kind and the characters of the text's escape ("[\", "\").
constexpr std::array<std::string_view, 19> Words = {
    "Riga",  "O'Brien", "Müller", "a,b",   "x = y",      "100%",     "\"quoted\"", "two words", "_",   "Ω",
    "[tag]", "end ",    " lead",  "[Row]", "line\nfeed", "lone\rcr", "crlf\r\n",   "[\\",       "a\\n"};

class TRandomQuery {
 public:
  TRandomQuery(ts4::TWQuery& query, std::uint32_t seed) : query_(query), random_(seed) {}

  void Build(int rows) {
    query_.ClearQuery();
    query_.SetQueryName(Text(3));
    query_.SetDescription(Lines(3));
    query_.SetUserData(Lines(2));
    ts4::TWCustomDBStructure* structure = query_.DbStruct();
    if (structure == nullptr || structure->FieldCount() == 0) return;
    for (int i = Below(5); i > 0; --i) AddResultField(*structure);
    query_.Root().SetLinkType(static_cast<ts4::TFilterLinkType>(Below(4)));
    std::vector<ts4::TFilterBracket*> open = {&query_.Root()};
    for (int i = 0; i < rows; ++i) {
      if (open.size() > 1 && Chance(20)) open.pop_back();
      ts4::TFilterBracket& bracket = *open.back();
      if (open.size() < 7 && Chance(25)) {
        ts4::TFilterBracket* added = bracket.AddBracket();
        added->SetLinkType(static_cast<ts4::TFilterLinkType>(Below(4)));
        added->SetEnabled(!Chance(10));
        open.push_back(added);
      } else {
        AddCondition(bracket, *structure);
      }
    }
  }

 private:
  int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
  bool Chance(int percent) { return Below(100) < percent; }
  std::string_view Word() { return Words[static_cast<std::size_t>(Below(static_cast<int>(Words.size())))]; }

  /// Up to `words` words joined by blanks.
  std::string Text(int words) {
    std::string text;
    for (int i = Below(words + 1); i > 0; --i)
      text += std::string(text.empty() ? "" : " ") + std::string(Word());
    return text;
  }

  /// Lines, some of which read as section headers ("[tag]" or "[Row]" alone).
  ts4::TStrings Lines(int most) {
    ts4::TStrings lines;
    for (int i = Below(most + 1); i > 0; --i)
      lines.Add(Chance(20) ? "" : Chance(30) ? Text(1) : "- " + Text(4));
    return lines;
  }

  ts4::TDSField& AnyField(const ts4::TWCustomDBStructure& structure) {
    return *structure.Fields(Below(structure.FieldCount()));
  }

  void AddResultField(const ts4::TWCustomDBStructure& structure) {
    ts4::TRFieldList& list = query_.QResult().ResultFields();
    const auto sorting = static_cast<ts4::TSortingType>(Below(3));
    ts4::TResultField* field = list.Add(AnyField(structure), sorting);
    switch (Below(3)) {
      case 0: field->SetFormula("SUM(@1)"); break;
      case 1:
        field->SetFormula("@1 + @2");
        field->AddDSField(&AnyField(structure));
        break;
      default: break;
    }
    if (Chance(50)) field->SetAlias(list.GetUniqAlias("Col" + std::to_string(Below(9))));
    if (Chance(50)) field->SetCaption(Text(2));
    field->SetSortOrder(Below(4));
  }

  /// ISO text of a date, a time of day or both.
  std::string DateTime(bool date, bool time) {
    ts4::TDateTimeParts p{
        1890 + Below(140), 1 + Below(12), 1 + Below(28), Below(24), Below(60), Below(60), 0, date, time};
    const std::string text = ts4::ISODateTimeText(p);
    return time && Chance(20) ? text + "." + std::to_string(100 + Below(900)) : text;
  }

  /// One value of the type, as a user would have entered it.
  std::string Value(ts4::TFieldType type) {
    static constexpr ts4::TFieldTypes Integers = {ts4::ftSmallint, ts4::ftInteger, ts4::ftWord,
                                                  ts4::ftAutoInc, ts4::ftLargeint};
    static constexpr ts4::TFieldTypes Decimals = {ts4::ftFloat, ts4::ftCurrency, ts4::ftBCD};
    if (ts4::IsDateType(type)) return DateTime(type != ts4::ftTime, type == ts4::ftTime || Chance(70));
    if (Integers.Contains(type)) return std::to_string(Below(2000) - 1000);
    if (Decimals.Contains(type)) return std::to_string(Below(1000)) + "." + std::to_string(Below(100));
    return Text(2);
  }

  std::string ListValue(ts4::TFieldType type) {
    ts4::TStrings items;
    for (int i = 1 + Below(3); i > 0; --i) items.Add(Value(type));
    return items.CommaText();
  }

  void AddCondition(ts4::TFilterBracket& bracket, const ts4::TWCustomDBStructure& structure) {
    ts4::TFilterCond& cond = *bracket.AddCond();
    cond.SetEnabled(!Chance(15));
    ts4::TDSField& field = AnyField(structure);
    cond.SetField(&field);
    if (field.OperatCount() == 0) return;
    ts4::TDSOperator& op = *field.Operators(Below(field.OperatCount()));
    cond.SetOperator(&op);
    const ts4::TFieldType type = cond.GetExprType();
    for (int k = 1; k <= 2; ++k) {
      if (op.GetParamCount() < k && (ts4::IsDateType(type) || !Chance(10))) continue;
      std::string value;
      switch (op.ValueType()) {
        case ts4::vtSubQuery: value = "select CUST_NO from ORDERS where STATUS = '" + Text(1) + "'"; break;
        case ts4::vtList: value = ListValue(type); break;
        default: value = Value(type); break;
      }
      cond.SetValue(k, value);
      if (op.ValueType() != ts4::vtSubQuery && Chance(20)) {
        // The parameter carries the same value as the condition, as after a
        // load; a value 2 that differs would be stored from the condition.
        cond.SetValueIsParam(k, true);
        cond.Param(k)->SetValue(value);
        cond.Param(k)->SetVFormat(Chance(50) ? "@v" : "%@v%");
      } else {
        cond.SetCaption(k, Chance(50) ? value : Text(2));
      }
    }
    if (op.ValueType() == ts4::vtSubQuery || Chance(10)) {
      ts4::TStrings lines;
      lines.Add("select CUST_NO from ORDERS");
      if (Chance(50)) lines.Add("where STATUS = '" + Text(1) + "'");
      cond.SetSubQuery(lines);
      cond.SetSubQueryOptions(ts4::IntToSQLOptions(Below(64)));
    }
  }

  ts4::TWQuery& query_;
  std::mt19937 random_;
};

}  // namespace

void BuildRandomQuery(ts4::TWQuery& query, std::uint32_t seed, int rows) {
  TRandomQuery(query, seed).Build(rows);
}

}  // namespace ts4test
