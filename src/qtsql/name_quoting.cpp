#include "qtsql/name_quoting_p.h"

#include <QRegularExpression>
#include <QSqlDriver>
#include <algorithm>
#include <utility>

#include "structure/field.h"
#include "structure/link.h"
#include "structure/structure.h"
#include "structure/table.h"

namespace ts4::detail {

TNameQuoting::TNameQuoting(QSqlDatabase database)
    : database_(std::move(database)), engine_(EngineOf(database_)) {
  if (engine_ != TSQLEngine::PostgreSQL) return;
  // Reserved words, and those that can name a type or function but not a
  // table; the others ("time", "position") may name tables and columns bare.
  QSqlQuery query =
      RunQuery(database_, QStringLiteral("SELECT word FROM pg_get_keywords() WHERE catcode IN ('R', 'T')"));
  while (query.next()) reservedWords_.insert(query.value(0).toString().toStdString());
}

bool TNameQuoting::NeedsQuotes(const std::string& name) const {
  // PostgreSQL folds bare names to lower case, so a bare name reads as
  // itself only when it has no capital (nor any letter beyond ASCII).
  // SQLite keeps the case of names and compares them with case ignored.
  static const QRegularExpression plainPostgreSQLName(QStringLiteral("\\A[a-z_][a-z0-9_$]*\\z"));
  static const QRegularExpression plainSQLiteName(QStringLiteral("\\A[A-Za-z_][A-Za-z0-9_]*\\z"));
  const QString text = QString::fromStdString(name);
  if (engine_ == TSQLEngine::PostgreSQL)
    return !plainPostgreSQLName.match(text).hasMatch() || reservedWords_.contains(name);
  return !plainSQLiteName.match(text).hasMatch() || !SQLiteReadsBare(text);
}

// SQLite lets many of its keywords serve as names and offers no list of
// them to SQL; whether a plain name reads bare is asked of its parser
// instead, with the name as table and column where generated statements put
// them. The statement is only compiled, over a table of that name it defines.
bool TNameQuoting::SQLiteReadsBare(const QString& name) const {
  const QString quoted = database_.driver()->escapeIdentifier(name, QSqlDriver::TableName);
  QSqlQuery trial(database_);
  return trial.prepare(
      QStringLiteral("WITH %2(%2) AS (SELECT 0) SELECT X.%1 FROM %1 X JOIN %1 Y ON X.%1 = Y.%1")
          .arg(name, quoted));
}

void TNameQuoting::Apply(TWCustomDBStructure& structure) const {
  if (engine_ == TSQLEngine::Other) return;
  for (int i = 0; i < structure.TableCount(); ++i) {
    TDSTable& table = *structure.Tables(i);
    // Qt names a PostgreSQL table outside the public schema "schema.table",
    // which one pair of quotes around the whole cannot quote.
    if (engine_ == TSQLEngine::PostgreSQL && table.Name().find('.') != std::string::npos) continue;
    table.SetQuoted(NeedsQuotes(table.Name()));
  }
  for (int i = 0; i < structure.FieldCount(); ++i) {
    TDSField& field = *structure.Fields(i);
    if (field.Kind() == wfkData) field.SetQuoted(NeedsQuotes(field.FieldExpr()));
  }
  // A link quotes all its fields or none; quoting a name that reads bare
  // does no harm.
  for (int i = 0; i < structure.LinkCount(); ++i) {
    TDSLink& link = *structure.Links(i);
    const auto quoted = [this](const TStrings& names) {
      return std::any_of(names.begin(), names.end(), [this](const std::string& n) { return NeedsQuotes(n); });
    };
    link.SetQuoteFields(quoted(link.FldName1()) || quoted(link.FldName2()));
  }
}

}  // namespace ts4::detail
