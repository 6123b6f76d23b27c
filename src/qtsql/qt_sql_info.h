#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "structure/db_info.h"

class QSqlDatabase;

namespace ts4 {

/// The metadata provider over Qt SQL. DatabaseName is the name of a
/// connection the application registered with QSqlDatabase::addDatabase;
/// the provider opens it when it is not open yet and never closes or
/// removes it.
///
/// Tables are the connection's tables and views (SQLite's own sqlite_ tables
/// left out), in the order of their names with case ignored. Columns come
/// with the type their database declares (FieldTypeOfSQLType) on SQLite and
/// PostgreSQL, and from the driver's value types on any other driver.
/// Foreign keys are read from SQLite's foreign_key_list and PostgreSQL's
/// catalog; other drivers report none. Names come as the database keeps
/// them, never quoted.
///
/// A connection that is unknown or cannot be opened, and a query that
/// fails, raise EWDBInfoError with the driver's message.
class TWQtSqlInfo : public TWDBInfo {
 public:
  TWQtSqlInfo() = default;
  ~TWQtSqlInfo() override;

  [[nodiscard]] const std::string& DatabaseName() const { return databaseName_; }
  /// Another connection: what was read of the last one is forgotten.
  void SetDatabaseName(std::string_view name);

  /// The names of the connections the application registered.
  void GetDatabaseNames(TStrings& list) override;
  void TablesByDatabase(TStrings& list) override;
  void FieldsByTable(std::string_view tableName, TDBFieldList& fields) override;
  void ForeignKeysByDatabase(std::vector<TDBForeignKey>& keys) override;
  /// Runs the query and appends each row's first column to `values` and its
  /// second to `items` (null gives an empty text, dates ISO text), with the
  /// busy indicator (SetBusyIndicator) shown meanwhile. Fewer than two
  /// columns raise EWDBInfoError "Field count must be >= 2".
  void GetSQLValues(std::string_view sql, TStrings& values, TStrings& items) override;
  /// Takes DatabaseName from the lines when it is not empty there.
  void LoadInfo(const TStrings& lines) override;
  /// Writes "DatabaseName=" and the name.
  void SaveInfo(TStrings& lines) override;

 private:
  /// The open connection; raises EWDBInfoError when it cannot be had.
  [[nodiscard]] QSqlDatabase Database() const;

  std::string databaseName_;
};

class TWDBStructure;

/// Makes the structure of the connection's database in `structure`, which
/// has no tables yet: every table, column and foreign key, with the busy
/// indicator (SetBusyIndicator) shown meanwhile. On SQLite and PostgreSQL a
/// table or column name is quoted in the SQL exactly when the engine reads
/// it only in quotes (PostgreSQL folds bare names to lower case; a blank or
/// a reserved word needs quotes on both), while its caption stays readable
/// ("OrderItems" shows as "Order Items"). The structure is left without a
/// provider, as the connection's name means nothing beyond it; on an error
/// it stays as it was.
void ImportStructure(std::string_view connectionName, TWDBStructure& structure);

}  // namespace ts4
