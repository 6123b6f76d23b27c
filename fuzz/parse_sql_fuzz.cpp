// Feeds arbitrary text to ParseSQL over the example structure. A statement
// that fails must leave the query as it was; one that reads must give SQL
// that reads back, into the same conditions. (Result-field expressions may
// read back differently: text around a data field can come back as a
// virtual field's expression, which changes GROUP BY.)
#include <cstddef>
#include <cstdint>
#include <string>

#include "foundation/error.h"
#include "fuzz_support.h"
#include "query/query.h"

namespace {

/// The statement of the query, or empty when it cannot be built.
std::string StatementOf(ts4::TWQuery& query) {
  try {
    return query.GetQueryText();
  } catch (const ts4::EWTessalyError&) {
    return {};
  }
}

/// The WHERE clause of a statement, up to GROUP BY or ORDER BY.
std::string WhereClause(const std::string& sql) {
  const std::size_t where = sql.find("\r\nWHERE\r\n");
  if (where == std::string::npos) return {};
  std::size_t end = sql.find("\r\nGROUP BY ", where);
  if (end == std::string::npos) end = sql.find("\r\nORDER BY ", where);
  return sql.substr(where, end == std::string::npos ? std::string::npos : end - where);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ts4::TStrings input = ts4fuzz::InputLines(data, size);
  ts4::TWQuery query(&ts4fuzz::ExampleStructure());
  query.ParseSQL("SELECT C.CITY FROM CUSTOMERS C WHERE C.CITY = 'Riga' ORDER BY 1");
  const std::string before = StatementOf(query);
  try {
    query.ParseSQL(input);
  } catch (const ts4::EWTessalyError&) {
    ts4fuzz::Check(StatementOf(query) == before);
    return 0;
  }
  const std::string written = StatementOf(query);
  if (written.empty()) return 0;
  ts4::TWQuery again(&ts4fuzz::ExampleStructure());
  again.SetSQLOptions(query.SQLOptions());
  again.ParseSQL(written);  // what the query writes must read back
  ts4fuzz::Check(WhereClause(StatementOf(again)) == WhereClause(written));
  return 0;
}
