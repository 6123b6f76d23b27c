// Feeds arbitrary text to ParseSQL over the example structure. A statement
// that fails must leave the query as it was; one that reads must give SQL
// that reads back into the same SQL.
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
  ts4fuzz::Check(StatementOf(again) == written);
  return 0;
}
