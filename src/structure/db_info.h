#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/component.h"
#include "foundation/field_types.h"
#include "foundation/object_list.h"
#include "foundation/strings.h"

namespace ts4 {

/// One column of a database table as the metadata provider reports it.
struct TDBFieldInfo {
  std::string FieldName;
  /// The column's size (taken as a 16-bit value, as the engines report it).
  int FieldSize = 0;
  /// The column's type; a provider that cannot tell reports ftString.
  TFieldType FieldType = ftString;
};

/// Columns of one table that refer to columns of another: a join the
/// database itself declares.
struct TDBForeignKey {
  std::string Table;  // the referring table
  std::vector<std::string> Columns;
  std::string RefTable;  // the referred table
  std::vector<std::string> RefColumns;
};

/// The columns of one table, in definition order.
class TDBFieldList {
 public:
  [[nodiscard]] int Count() const { return items_.Count(); }
  [[nodiscard]] TDBFieldInfo* Items(int index) const { return items_.Items(index); }
  TDBFieldInfo* Add(std::string name, int size, TFieldType type);
  void Clear() { items_.Clear(); }
  /// The first column with that name (case ignored), or null.
  [[nodiscard]] TDBFieldInfo* FindByName(std::string_view name) const;

 private:
  TWObjectList<TDBFieldInfo> items_;
};

/// The abstract metadata provider: tells a structure the tables and columns
/// of its database and runs the queries of list editors. The base versions
/// do nothing and return empty results.
class TWDBInfo : public TWComponent {
 public:
  TWDBInfo() = default;
  ~TWDBInfo() override;

  /// Names of the databases that can be chosen.
  virtual void GetDatabaseNames(TStrings& list);
  /// Tables of the current database.
  virtual void TablesByDatabase(TStrings& list);
  /// Columns of a table, in definition order.
  virtual void FieldsByTable(std::string_view tableName, TDBFieldList& fields);
  /// Appends the foreign keys of the database's tables.
  virtual void ForeignKeysByDatabase(std::vector<TDBForeignKey>& keys);
  /// Runs the query; appends column 0 of each row to `values`, column 1 to `items`.
  virtual void GetSQLValues(std::string_view sql, TStrings& values, TStrings& items);
  /// Reads the provider's settings from name=value lines.
  virtual void LoadInfo(const TStrings& lines);
  /// Writes the provider's settings as name=value lines.
  virtual void SaveInfo(TStrings& lines);
  /// Refreshes what the provider knows: forgets the cached tables and columns.
  virtual void Update();
  /// Called when the connection settings change.
  virtual void ConnectionChanged();

  /// The tables of the database, read once and then cached.
  [[nodiscard]] const TStrings& GetTableNames();
  /// The columns of the table; read through FieldsByTable only when another
  /// table than the cached one is asked for.
  [[nodiscard]] const TDBFieldList& GetFieldList(std::string_view tableName);
  /// The column names of GetFieldList.
  void GetFieldNamesByTable(std::string_view tableName, TStrings& list);

 protected:
  void Notification(TWComponent& component) override;

 private:
  TStrings tableNames_;
  bool tablesRead_ = false;
  TDBFieldList fieldCache_;
  std::string cachedTable_;
  bool fieldsRead_ = false;
};

}  // namespace ts4
