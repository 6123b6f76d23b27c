#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlRecord>
#include <algorithm>
#include <utility>

#include "foundation/error.h"
#include "foundation/string_utils.h"
#include "qtsql/sql_catalog_p.h"
#include "qtsql/sql_type_mapping.h"

namespace ts4::detail {
namespace {

std::string ToStd(const QString& text) {
  return text.toStdString();
}

QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// The name Qt's PostgreSQL driver gives a table: the bare name in the
// public schema, else schema "." name.
constexpr std::string_view PostgreSQLTableName =
    "(CASE WHEN n.nspname = 'public' THEN c.relname::text ELSE n.nspname || '.' || c.relname END)";

/// A column type from the value type the driver reports.
TSQLColumnType FieldTypeOfMetaType(const QSqlField& field) {
  switch (field.metaType().id()) {
    case QMetaType::Short:
    case QMetaType::UShort: return {ftSmallint, 0};
    case QMetaType::Int:
    case QMetaType::UInt: return {ftInteger, 0};
    case QMetaType::LongLong:
    case QMetaType::ULongLong: return {ftLargeint, 0};
    case QMetaType::Float:
    case QMetaType::Double: return {ftFloat, 0};
    case QMetaType::Bool: return {ftBoolean, 0};
    case QMetaType::QDate: return {ftDate, 0};
    case QMetaType::QTime: return {ftTime, 0};
    case QMetaType::QDateTime: return {ftDateTime, 0};
    case QMetaType::QByteArray: return {ftBlob, 0};
    default: return {ftString, std::clamp(static_cast<int>(field.length()), 0, 65535)};
  }
}

}  // namespace

QSqlQuery RunQuery(const QSqlDatabase& database, const QString& sql, const QVariantList& values) {
  QSqlQuery query(database);
  query.setForwardOnly(true);
  bool done = false;
  if (values.isEmpty()) {
    done = query.exec(sql);
  } else {
    done = query.prepare(sql);
    for (const QVariant& value : values) query.addBindValue(value);
    done = done && query.exec();
  }
  if (!done) throw EWDBInfoError(gecGeneral, ToStd(query.lastError().text().simplified()));
  return query;
}

TSQLEngine EngineOf(const QSqlDatabase& database) {
  switch (database.driver()->dbmsType()) {
    case QSqlDriver::SQLite: return TSQLEngine::SQLite;
    case QSqlDriver::PostgreSQL: return TSQLEngine::PostgreSQL;
    default: return TSQLEngine::Other;
  }
}

TSQLCatalog::TSQLCatalog(QSqlDatabase database)
    : database_(std::move(database)), engine_(EngineOf(database_)) {}

std::vector<std::string> TSQLCatalog::Tables() const {
  QStringList names = database_.tables(QSql::Tables) + database_.tables(QSql::Views);
  std::vector<std::string> tables;
  for (const QString& name : names) {
    if (engine_ == TSQLEngine::SQLite && name.startsWith(QStringLiteral("sqlite_"), Qt::CaseInsensitive))
      continue;
    tables.push_back(ToStd(name));
  }
  std::sort(tables.begin(), tables.end(), [](const std::string& a, const std::string& b) {
    const int order = CompareText(a, b);
    return order != 0 ? order < 0 : a < b;
  });
  tables.erase(std::unique(tables.begin(), tables.end()), tables.end());
  return tables;
}

void TSQLCatalog::Columns(std::string_view table, TDBFieldList& fields) const {
  if (engine_ == TSQLEngine::Other) {
    const QSqlRecord record = database_.record(ToQt(table));
    for (int i = 0; i < record.count(); ++i) {
      const TSQLColumnType type = FieldTypeOfMetaType(record.field(i));
      fields.Add(ToStd(record.fieldName(i)), type.Size, type.Type);
    }
    return;
  }
  const QString sql =
      engine_ == TSQLEngine::SQLite
          ? QStringLiteral("SELECT name, type FROM pragma_table_info(?) ORDER BY cid")
          : QStringLiteral(
                "SELECT a.attname, format_type(a.atttypid, a.atttypmod) FROM pg_attribute a "
                "JOIN pg_class c ON c.oid = a.attrelid JOIN pg_namespace n ON n.oid = c.relnamespace "
                "WHERE a.attnum > 0 AND NOT a.attisdropped AND c.relkind IN ('r', 'v', 'm', 'p', 'f') AND ") +
                ToQt(PostgreSQLTableName) + QStringLiteral(" = ? ORDER BY a.attnum");
  QSqlQuery query = RunQuery(database_, sql, {ToQt(table)});
  while (query.next()) {
    const TSQLColumnType type = FieldTypeOfSQLType(ToStd(query.value(1).toString()));
    fields.Add(ToStd(query.value(0).toString()), type.Size, type.Type);
  }
}

void TSQLCatalog::ForeignKeys(const std::vector<std::string>& tables,
                              std::vector<TDBForeignKey>& keys) const {
  if (engine_ == TSQLEngine::SQLite) SQLiteForeignKeys(tables, keys);
  if (engine_ == TSQLEngine::PostgreSQL) PostgreSQLForeignKeys(keys);
}

void TSQLCatalog::SQLiteForeignKeys(const std::vector<std::string>& tables,
                                    std::vector<TDBForeignKey>& keys) const {
  for (const std::string& table : tables) {
    QSqlQuery query = RunQuery(
        database_,
        QStringLiteral(
            "SELECT id, \"table\", \"from\", \"to\" FROM pragma_foreign_key_list(?) ORDER BY id, seq"),
        {ToQt(table)});
    int current = -1;
    while (query.next()) {
      if (query.value(0).toInt() != current || keys.empty()) {
        current = query.value(0).toInt();
        keys.push_back({table, {}, ToStd(query.value(1).toString()), {}});
      }
      keys.back().Columns.push_back(ToStd(query.value(2).toString()));
      // REFERENCES T without columns refers to T's primary key.
      if (!query.value(3).isNull()) keys.back().RefColumns.push_back(ToStd(query.value(3).toString()));
    }
  }
  for (TDBForeignKey& key : keys) {
    if (!key.RefColumns.empty()) continue;
    QSqlQuery query =
        RunQuery(database_, QStringLiteral("SELECT name FROM pragma_table_info(?) WHERE pk > 0 ORDER BY pk"),
                 {ToQt(key.RefTable)});
    while (query.next()) key.RefColumns.push_back(ToStd(query.value(0).toString()));
  }
}

void TSQLCatalog::PostgreSQLForeignKeys(std::vector<TDBForeignKey>& keys) const {
  const QString referred = ToQt(PostgreSQLTableName)
                               .replace(QStringLiteral("n."), QStringLiteral("fn."))
                               .replace(QStringLiteral("c."), QStringLiteral("fc."));
  const QString sql =
      QStringLiteral("SELECT con.oid, ") + ToQt(PostgreSQLTableName) + QStringLiteral(", ") + referred +
      QStringLiteral(
          ", a.attname, fa.attname FROM pg_constraint con "
          "JOIN pg_class c ON c.oid = con.conrelid JOIN pg_namespace n ON n.oid = c.relnamespace "
          "JOIN pg_class fc ON fc.oid = con.confrelid JOIN pg_namespace fn ON fn.oid = fc.relnamespace "
          "CROSS JOIN LATERAL unnest(con.conkey, con.confkey) WITH ORDINALITY AS k(attnum, fattnum, n) "
          "JOIN pg_attribute a ON a.attrelid = con.conrelid AND a.attnum = k.attnum "
          "JOIN pg_attribute fa ON fa.attrelid = con.confrelid AND fa.attnum = k.fattnum "
          "WHERE con.contype = 'f' AND n.nspname NOT IN ('pg_catalog', 'information_schema') "
          "ORDER BY 2, con.conname, k.n");
  QSqlQuery query = RunQuery(database_, sql);
  QVariant current;
  while (query.next()) {
    if (query.value(0) != current) {
      current = query.value(0);
      keys.push_back({ToStd(query.value(1).toString()), {}, ToStd(query.value(2).toString()), {}});
    }
    keys.back().Columns.push_back(ToStd(query.value(3).toString()));
    keys.back().RefColumns.push_back(ToStd(query.value(4).toString()));
  }
}

}  // namespace ts4::detail
