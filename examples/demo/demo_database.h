#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "qtsql/qt_sql_info.h"
#include "structure/structure.h"

namespace ts4demo {

/// The structure the demo's queries are over and the database they run on.
/// Each is replaced whole: a structure file or an import that fails, or a
/// database that cannot be opened, leaves what was there before.
class TDemoDatabase : public QObject {
  Q_OBJECT

 public:
  explicit TDemoDatabase(QObject* parent = nullptr);
  ~TDemoDatabase() override;

  [[nodiscard]] ts4::TWDBStructure& Structure() const { return *structure_; }
  /// The structure file, or the URL the structure was imported from.
  [[nodiscard]] const QString& StructureSource() const { return structureSource_; }
  /// The database queries run on; empty before one is opened.
  [[nodiscard]] const QString& DatabaseUrl() const { return databaseUrl_; }
  /// The Qt SQL connection of that database.
  [[nodiscard]] const QString& ConnectionName() const { return connectionName_; }

  /// Opens the database (sqlite:PATH or a postgresql:// URL) that queries
  /// run on and that the structure's SQL lists read. Raises EWDBInfoError.
  void OpenDatabase(const QString& url);
  /// Reads a structure file. Raises the structure's errors.
  void LoadStructureFile(const QString& path);
  /// Opens the database and makes its tables, columns and foreign keys the
  /// structure. Raises EWDBInfoError, also when the database has no table.
  void ImportStructure(const QString& url);

 signals:
  /// A new structure is in place; the old one is still alive during the
  /// call, so that views can move over before it goes.
  void StructureReplaced(ts4::TWDBStructure* structure);
  void DatabaseChanged();

 private:
  /// Registers and opens a connection under a fresh name.
  [[nodiscard]] QString Connect(const QString& url);
  void UseConnection(const QString& url, const QString& connection);
  void Replace(std::unique_ptr<ts4::TWDBStructure> structure, const QString& source);

  ts4::TWQtSqlInfo info_;
  std::unique_ptr<ts4::TWDBStructure> structure_;
  QString structureSource_;
  QString databaseUrl_;
  QString connectionName_;
  int connections_ = 0;
};

}  // namespace ts4demo
