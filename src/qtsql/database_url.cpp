#include "qtsql/database_url.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QUrl>

#include "foundation/error.h"
#include "foundation/messages.h"

namespace ts4 {
namespace {

constexpr std::string_view SQLitePrefix = "sqlite:";

[[noreturn]] void UnknownUrl(std::string_view url) {
  throw EWDBInfoError(gecGeneral, msg::UnknownDatabaseUrl, std::string(url));
}

/// Sets up the connection for the URL, not yet opened.
void Configure(QSqlDatabase& database, std::string_view url) {
  if (url.starts_with(SQLitePrefix)) {
    // Read-only: a path that does not exist is an error, not a new database.
    const std::string_view path = url.substr(SQLitePrefix.size());
    database.setDatabaseName(QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size())));
    database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    return;
  }
  const QUrl parsed(QString::fromUtf8(url.data(), static_cast<qsizetype>(url.size())), QUrl::StrictMode);
  const QString scheme = parsed.scheme();
  if (!parsed.isValid() || (scheme != QStringLiteral("postgresql") && scheme != QStringLiteral("postgres")) ||
      parsed.host().isEmpty() || parsed.path().size() < 2)
    UnknownUrl(url);
  database.setHostName(parsed.host());
  database.setPort(parsed.port(5432));
  database.setUserName(parsed.userName());
  database.setPassword(parsed.password());
  database.setDatabaseName(parsed.path().mid(1));
  database.setConnectOptions(QStringLiteral("connect_timeout=10"));
}

}  // namespace

void AddDatabaseFromUrl(std::string_view url, const std::string& connectionName) {
  const bool sqlite = url.starts_with(SQLitePrefix);
  if (!sqlite && !url.starts_with("postgres")) UnknownUrl(url);
  const QString name = QString::fromStdString(connectionName);
  std::string error;
  {
    QSqlDatabase database =
        QSqlDatabase::addDatabase(sqlite ? QStringLiteral("QSQLITE") : QStringLiteral("QPSQL"), name);
    try {
      if (!database.isValid())
        throw EWDBInfoError(gecGeneral, database.lastError().text().simplified().toStdString());
      Configure(database, url);
    } catch (...) {
      database = QSqlDatabase();
      QSqlDatabase::removeDatabase(name);
      throw;
    }
    if (!database.open()) error = database.lastError().text().simplified().toStdString();
  }
  if (error.empty()) return;
  QSqlDatabase::removeDatabase(name);
  throw EWDBInfoError(gecGeneral, error);
}

void RemoveDatabase(const std::string& connectionName) {
  const QString name = QString::fromStdString(connectionName);
  if (QSqlDatabase::contains(name)) QSqlDatabase::removeDatabase(name);
}

}  // namespace ts4
