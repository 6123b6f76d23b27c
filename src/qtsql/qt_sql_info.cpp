#include "qtsql/qt_sql_info.h"

#include <QDate>
#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTime>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "qtsql/busy_scope_p.h"
#include "qtsql/name_quoting_p.h"
#include "qtsql/sql_catalog_p.h"
#include "structure/structure.h"

namespace ts4 {
namespace {

/// A value of a result row as the lists of an editor hold it.
std::string ValueText(const QVariant& value) {
  if (value.isNull()) return {};
  switch (value.metaType().id()) {
    case QMetaType::QDate: return value.toDate().toString(Qt::ISODate).toStdString();
    case QMetaType::QTime: return value.toTime().toString(QStringLiteral("HH:mm:ss")).toStdString();
    case QMetaType::QDateTime:
      return value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toStdString();
    default: return value.toString().toStdString();
  }
}

/// The registered connection of that name, opened when it is not open yet.
QSqlDatabase OpenConnection(const std::string& connectionName) {
  const QString name = QString::fromStdString(connectionName);
  if (!QSqlDatabase::contains(name)) throw EWDBInfoError(gecGeneral, msg::UnknownConnection, connectionName);
  QSqlDatabase database = QSqlDatabase::database(name, false);
  if (!database.isOpen() && !database.open())
    throw EWDBInfoError(gecGeneral, database.lastError().text().simplified().toStdString());
  return database;
}

}  // namespace

TWQtSqlInfo::~TWQtSqlInfo() = default;

void TWQtSqlInfo::SetDatabaseName(std::string_view name) {
  if (databaseName_ == name) return;
  databaseName_ = std::string(name);
  ConnectionChanged();
}

QSqlDatabase TWQtSqlInfo::Database() const {
  return OpenConnection(databaseName_);
}

void TWQtSqlInfo::GetDatabaseNames(TStrings& list) {
  for (const QString& name : QSqlDatabase::connectionNames()) list.Add(name.toStdString());
}

void TWQtSqlInfo::TablesByDatabase(TStrings& list) {
  for (std::string& name : detail::TSQLCatalog(Database()).Tables()) list.Add(std::move(name));
}

void TWQtSqlInfo::FieldsByTable(std::string_view tableName, TDBFieldList& fields) {
  detail::TSQLCatalog(Database()).Columns(tableName, fields);
}

void TWQtSqlInfo::ForeignKeysByDatabase(std::vector<TDBForeignKey>& keys) {
  const TStrings& tables = GetTableNames();
  detail::TSQLCatalog(Database()).ForeignKeys(std::vector<std::string>(tables.begin(), tables.end()), keys);
}

void TWQtSqlInfo::GetSQLValues(std::string_view sql, TStrings& values, TStrings& items) {
  const detail::TBusyScope busy;
  QSqlQuery query =
      detail::RunQuery(Database(), QString::fromUtf8(sql.data(), static_cast<qsizetype>(sql.size())));
  if (query.record().count() < 2) throw EWDBInfoError(gecGeneral, std::string(msg::FieldCountTooSmall));
  while (query.next()) {
    values.Add(ValueText(query.value(0)));
    items.Add(ValueText(query.value(1)));
  }
}

void TWQtSqlInfo::LoadInfo(const TStrings& lines) {
  const std::string name = lines.Values("DatabaseName");
  if (!name.empty()) SetDatabaseName(name);
}

void TWQtSqlInfo::SaveInfo(TStrings& lines) {
  lines.Add("DatabaseName=" + databaseName_);
}

void ImportStructure(std::string_view connectionName, TWDBStructure& structure) {
  const detail::TBusyScope busy;
  // Read before the structure changes, so that a failure leaves it as it was.
  const detail::TNameQuoting quoting(OpenConnection(std::string(connectionName)));
  // A structure that has tables already is the caller's: its quoting stays.
  const bool empty = structure.TableCount() == 0;
  TWQtSqlInfo info;
  info.SetDatabaseName(connectionName);
  // Observers hear of the finished structure once, quoting included.
  structure.BeginUpdate();
  structure.SetDatabaseInfo(&info);
  structure.SetAutoAddFields(true);
  try {
    structure.UpdateDatabaseInfo();
  } catch (...) {
    structure.SetDatabaseInfo(nullptr);
    structure.EndUpdate();
    throw;
  }
  structure.SetDatabaseInfo(nullptr);
  if (empty) quoting.Apply(structure);
  structure.EndUpdate();
}

}  // namespace ts4
