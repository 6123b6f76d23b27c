// Random queries survive the query text: saved, loaded and saved again they
// give the same text, and the same SQL before and after. The text goes
// through its joined form, as through a file, so that a line break the
// writer let through would split its line.
#include <gtest/gtest.h>

#include "random_query.h"
#include "sample_structure.h"

namespace {

/// The statement, or the error a build raises.
std::string SQLOrError(ts4::TWQuery& query) {
  try {
    return query.GetQueryText();
  } catch (const ts4::EWTessalyError& e) {
    return std::string("error: ") + e.what();
  }
}

std::vector<std::string> Text(ts4::TWQuery& query) {
  ts4::TStrings lines;
  query.SaveToStrings(lines);
  return lines.Lines();
}

TEST(QueryRoundTrip, RandomQueries) {
  ts4test::TSampleStructure s;
  // A sub-query operator for the integer fields.
  s.db.AddOperator("InSub", "is in", "@f in (@1)", "", {ts4::ftInteger});
  ts4::TDSOperator* inSub = s.db.OperatorByName("InSub");
  inSub->SetValueType(ts4::vtSubQuery);
  for (int i = 0; i < s.db.FieldCount(); ++i)
    if (s.db.Fields(i)->FieldType() == ts4::ftInteger) s.db.Fields(i)->AddOperator(*inSub);

  for (std::uint32_t seed = 1; seed <= 2000; ++seed) {
    ts4::TWQuery original(&s.db);
    ts4test::BuildRandomQuery(original, seed, static_cast<int>(seed % 16));
    original.SetSQLOptions(ts4::IntToSQLOptions(static_cast<int>(seed * 7 % 64)));
    original.SetSQLSyntax(static_cast<ts4::TSQLSyntax>(seed % 3));
    original.SetSaveSQLOptions(seed % 2 == 0);
    original.SetSaveTitles(seed % 4 == 0);
    // Captions come back in the form the captions loader gives them: each
    // section followed by an empty line.
    ts4::TStrings titles = {"[Query Panel]", "ttlAll=every\r\n" + std::to_string(seed)};
    if (original.SaveTitles()) original.SetTitles(titles);
    // Building first: it sets parameters' value formats and ASCII aliases.
    const std::string sql = SQLOrError(original);
    ts4::TStrings text;
    original.SaveToStrings(text);

    ts4::TWQuery copy(&s.db);
    copy.SetSQLOptions(original.SQLOptions());
    copy.SetSQLSyntax(original.SQLSyntax());
    copy.SetSaveSQLOptions(original.SaveSQLOptions());
    copy.SetSaveTitles(original.SaveTitles());
    ts4::TStrings read;
    read.SetText(text.Text());
    copy.LoadFromStrings(read);
    ASSERT_EQ(Text(copy), text.Lines()) << "seed " << seed;
    ASSERT_EQ(SQLOrError(copy), sql) << "seed " << seed;
  }
}

}  // namespace
