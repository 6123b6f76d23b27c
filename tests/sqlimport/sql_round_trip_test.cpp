// Property: SQL that a query writes reads back into a query that writes the
// same SQL, in every syntax, for random queries over the example structure.
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <string_view>

#include "query/date_values.h"
#include "query/query.h"
#include "sales_structure.h"
#include "structure/table.h"

namespace ts4 {
namespace {

constexpr std::array<std::string_view, 13> Words = {"Riga", "O'Brien", "Müller",     "a,b", "x = y",
                                                    "100%", "\"q\"",   "two  words", "and", " end ",
                                                    "or",   "(x)",     "''"};

/// Random queries whose SQL carries all they hold: every bracket writes at
/// least two rows (a bracket of one row reads back as that row), no
/// parameters, no result-field aliases; disabled rows are added too, since
/// they write nothing.
class TRandomSQLQuery {
 public:
  TRandomSQLQuery(TWQuery& query, std::uint32_t seed)
      : query_(query), structure_(*query.DbStruct()), random_(seed) {}

  void Build() {
    query_.ClearQuery();
    const bool byNames = Chance(25);
    TSQLOptions options;
    if (byNames) options.Include(soSortByNames);
    if (Chance(30)) options.Include(soBracketConditions);
    if (Chance(30)) options.Include(soSelectDistinct);
    if (Chance(30)) options.Include(soBracketJoins);
    query_.SetSQLOptions(options);
    query_.SetMainTableName(Chance(70) ? "" : structure_.Tables(Below(structure_.TableCount()))->Name());
    AddResultFields(byNames);
    if (Chance(90)) Fill(query_.Root(), 0);
  }

 private:
  int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
  bool Chance(int percent) { return Below(100) < percent; }
  TDSField& AnyField() { return *structure_.Fields(Below(structure_.FieldCount())); }

  void AddResultFields(bool byNames) {
    TRFieldList& list = query_.QResult().ResultFields();
    for (int i = Below(5); i > 0; --i) {
      TDSField& field = AnyField();
      // Sorting by names names a field by its first structure field: only
      // plain fields, each once, are told apart that way.
      if (byNames && list.IndexByExpr(field.GetSQLExpr()) >= 0) continue;
      TResultField* added = list.Add(field, static_cast<TSortingType>(Below(3)));
      if (!byNames && Chance(30)) added->SetFormula(Chance(50) ? "SUM(@1)" : "MAX(@1)");
      added->SetSortOrder(Below(4));
    }
  }

  void Fill(TFilterBracket& bracket, int depth) {
    bracket.SetLinkType(static_cast<TFilterLinkType>(Below(4)));
    for (int i = 2 + Below(3); i > 0; --i) {
      if (depth < 5 && Chance(25)) {
        Fill(*bracket.AddBracket(), depth + 1);
      } else {
        AddCondition(bracket);
      }
    }
    if (Chance(15)) {  // a disabled row anywhere writes nothing
      TFilterRow* row = Chance(50) ? static_cast<TFilterRow*>(AddCondition(bracket)) : bracket.AddBracket();
      row->SetEnabled(false);
    }
  }

  std::string Value(TFieldType type) {
    static constexpr TFieldTypes Integers = {ftSmallint, ftInteger, ftWord, ftAutoInc, ftLargeint};
    static constexpr TFieldTypes Decimals = {ftFloat, ftCurrency, ftBCD};
    if (IsDateType(type)) {
      const TDateTimeParts p{
          1900 + Below(130),           1 + Below(12), 1 + Below(28), Below(24), Below(60), Below(60), 0, true,
          type != ftDate && Chance(50)};
      return ISODateTimeText(p);
    }
    if (Integers.Contains(type)) return std::to_string(Below(2000) - 1000);
    if (Decimals.Contains(type)) return std::to_string(Below(1000)) + "." + std::to_string(10 + Below(90));
    std::string text;
    for (int i = Below(3); i >= 0; --i) text += Words[static_cast<std::size_t>(Below(Words.size()))];
    return text;
  }

  TFilterCond* AddCondition(TFilterBracket& bracket) {
    TFilterCond& cond = *bracket.AddCond();
    TDSField& field = AnyField();
    cond.SetField(&field);
    TDSOperator& op = *field.Operators(Below(field.OperatCount()));
    cond.SetOperator(&op);
    const TFieldType type = cond.GetExprType();
    for (int k = 1; k <= op.GetParamCount(); ++k) {
      if (op.ValueType() != vtList) {
        cond.SetValue(k, Value(type));
        continue;
      }
      TStrings items;
      for (int i = 1 + Below(3); i > 0; --i) items.Add(Value(type));
      cond.SetValue(k, items.CommaText());
    }
    return &cond;
  }

  TWQuery& query_;
  TWCustomDBStructure& structure_;
  std::mt19937 random_;
};

TEST(SQLRoundTrip, GeneratedSQLReadsBackIntoTheSameSQLInEverySyntax) {
  constexpr int Queries = 1500;
  int withConditions = 0;
  for (int seed = 1; seed <= Queries; ++seed) {
    TWQuery query(&ts4test::SalesStructure());
    TRandomSQLQuery(query, static_cast<std::uint32_t>(seed)).Build();
    withConditions += query.Root().GetRowCount() > 0 ? 1 : 0;
    for (TSQLSyntax syntax : {ssSQL2, ssSQL1, ssOracle}) {
      query.SetSQLSyntax(syntax);
      std::string sql;
      try {
        sql = query.GetQueryText();
      } catch (const EWTessalyError&) {
        continue;  // nothing to select from: no statement to read back
      }
      TWQuery read(&ts4test::SalesStructure());
      read.SetSQLSyntax(syntax);
      read.SetSQLOptions(query.SQLOptions());
      try {
        read.ParseSQL(sql);
      } catch (const EWTessalyError& e) {
        FAIL() << "seed " << seed << ": " << e.what() << "\n" << sql;
      }
      ASSERT_EQ(read.GetQueryText(), sql) << "seed " << seed << ", syntax " << static_cast<int>(syntax);
    }
  }
  EXPECT_GT(withConditions, Queries * 8 / 10);
}

}  // namespace
}  // namespace ts4
