#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "structure/db_info.h"

namespace ts4::detail {

/// The engines whose catalogs and names ts4 knows.
enum class TSQLEngine : std::uint8_t { SQLite, PostgreSQL, Other };

[[nodiscard]] TSQLEngine EngineOf(const QSqlDatabase& database);

/// Runs the statement with its values bound in order; raises EWDBInfoError
/// with the driver's message when it fails.
QSqlQuery RunQuery(const QSqlDatabase& database, const QString& sql, const QVariantList& values = {});

/// Reads the columns and foreign keys of a connection's tables the way its
/// engine keeps them: SQLite's table_info and foreign_key_list, PostgreSQL's
/// catalog, or for any other driver the record Qt reports (no foreign keys).
class TSQLCatalog {
 public:
  explicit TSQLCatalog(QSqlDatabase database);

  /// The tables and views, sorted by name (case ignored).
  [[nodiscard]] std::vector<std::string> Tables() const;
  void Columns(std::string_view table, TDBFieldList& fields) const;
  void ForeignKeys(const std::vector<std::string>& tables, std::vector<TDBForeignKey>& keys) const;

 private:
  void SQLiteForeignKeys(const std::vector<std::string>& tables, std::vector<TDBForeignKey>& keys) const;
  void PostgreSQLForeignKeys(std::vector<TDBForeignKey>& keys) const;

  QSqlDatabase database_;
  TSQLEngine engine_;
};

}  // namespace ts4::detail
