// Reading a SELECT statement back into a query.
#include "foundation/error.h"
#include "foundation/messages.h"
#include "query/builder_state_p.h"
#include "query/query.h"
#include "sqlimport/sql_parser.h"
#include "sqlimport/sql_query_reader_p.h"

namespace ts4 {

void TWQuery::ParseSQL(const TStrings& sql) {
  if (structure_ == nullptr) throw EWQueryPanelError(qecNoDbStruct, std::string(msg::NoDbStruct));
  const TStateRestorer loading(state_, stLoading);
  // Read into a new query through the members of its rows and result
  // fields; this one takes the result over, as one reset, only when the
  // whole statement has been read.
  TWSQLParser parser;
  parser.SetSQL(sql);
  parser.Parse();
  TWParserResult& parsed = parser.Result();
  TWQuery read(structure_);
  PrepareForReading(read);
  const detail::TSQLQueryReader reader(read, &parsed.Tables);
  reader.ReadResultFields(parsed);
  read.SetMainTableName(reader.MainTableName(parsed));
  reader.ProcessSQLBracket(read.Root(), reader.ConditionsOf(parsed));

  BeginUpdate();
  TakeOverConditions(read);
  SetMainTableName(read.MainTableName());
  EndUpdate();
}

void TWQuery::ParseSQL(std::string_view sql) {
  TStrings lines;
  lines.SetText(sql);
  ParseSQL(lines);
}

TDSOperator* TWQuery::OperatorBySQLCond(const TSQLCondition& condition, std::string& value1,
                                        std::string& value2, TStrings* subQueries) {
  if (structure_ == nullptr) throw EWQueryPanelError(qecNoDbStruct, std::string(msg::NoDbStruct));
  return detail::TSQLQueryReader(*this, nullptr).OperatorBySQLCond(condition, value1, value2, subQueries);
}

void TWQuery::ProcessSQLBracket(TFilterBracket& bracket, const TSQLBracket& parsed) {
  if (structure_ == nullptr) throw EWQueryPanelError(qecNoDbStruct, std::string(msg::NoDbStruct));
  detail::TSQLQueryReader(*this, nullptr).ProcessSQLBracket(bracket, parsed);
}

}  // namespace ts4
