#include "cli_commands.h"

#include <istream>
#include <iterator>
#include <string>

#include "foundation/error.h"
#include "foundation/format.h"
#include "foundation/messages.h"
#include "qtsql/database_url.h"
#include "qtsql/qt_sql_info.h"
#include "query/query.h"
#include "structure/structure.h"

namespace ts4::cli {
namespace {

using TCommand = TCliRequest::TCommand;

// A file's lines, or standard input's for "-"; LF or CR LF line ends.
TStrings ReadLines(const std::string& file, std::istream& in) {
  TStrings lines;
  if (file == "-")
    lines.SetText(std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()));
  else
    lines.LoadFromFile(file);
  return lines;
}

void LoadStructure(TWCustomDBStructure& structure, const std::string& file, std::istream& in) {
  structure.LoadFromStrings(ReadLines(file, in));
}

void RunSql(const TCliRequest& request, std::istream& in, TStrings& out) {
  TWDBStructure structure;
  LoadStructure(structure, request.Arguments[0], in);
  TWQuery query(&structure);
  query.LoadFromStrings(ReadLines(request.Arguments[1], in));
  query.SetSQLSyntax(request.Syntax);
  if (request.Options) query.SetSQLOptions(*request.Options);
  if (request.MainTable) {
    query.SetMainTableName(*request.MainTable);
    if (query.MainTable() == nullptr)
      throw EWDBStructError(secNoSuchTable, msg::NoSuchTable, *request.MainTable);
  }
  query.SetActive(true);
  query.BuildQuery();
  out.AddStrings(query.QResult().GetSQL());
}

// The statement read into a new query, written as a query text without
// the captions block: it starts with [Main].
void RunParse(const TCliRequest& request, std::istream& in, TStrings& out) {
  TWDBStructure structure;
  LoadStructure(structure, request.Arguments[0], in);
  TWQuery query(&structure);
  query.ParseSQL(ReadLines(request.Arguments[1], in));
  query.SetSaveTitles(false);
  query.SaveToStrings(out);
}

void RunPath(const TCliRequest& request, std::istream& in, TStrings& out) {
  TWDBStructure structure;
  LoadStructure(structure, request.Arguments[0], in);
  const TDSPath& path = structure.GetPath(request.Arguments[1], request.Arguments[2]);
  for (int i = 0; i < path.TableCount(); ++i) out.Add(path.Tables(i)->Alias());
}

// The structure a database's tables, columns and foreign keys make.
void RunImport(const TCliRequest& request, TStrings& out) {
  static const std::string connection = "ts4-import";
  AddDatabaseFromUrl(request.Arguments[0], connection);
  try {
    TWDBStructure structure;
    ImportStructure(connection, structure);
    structure.SaveToStrings(out);
  } catch (...) {
    RemoveDatabase(connection);
    throw;
  }
  RemoveDatabase(connection);
}

}  // namespace

void RunCommand(const TCliRequest& request, std::istream& in, TStrings& out) {
  switch (request.Command) {
    case TCommand::Sql: RunSql(request, in, out); break;
    case TCommand::Structure: {
      TWDBStructure structure;
      LoadStructure(structure, request.Arguments[0], in);
      structure.SaveToStrings(out);
      break;
    }
    case TCommand::Path: RunPath(request, in, out); break;
    case TCommand::Parse: RunParse(request, in, out); break;
    case TCommand::Import: RunImport(request, out); break;
    case TCommand::Help:
    case TCommand::Version: break;
  }
}

}  // namespace ts4::cli
