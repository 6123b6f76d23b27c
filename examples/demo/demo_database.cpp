#include "demo_database.h"

#include "demo_messages.h"
#include "foundation/error.h"
#include "qtsql/database_url.h"
#include "structure/db_info.h"

namespace ts4demo {

TDemoDatabase::TDemoDatabase(QObject* parent)
    : QObject(parent), structure_(std::make_unique<ts4::TWDBStructure>()) {}

TDemoDatabase::~TDemoDatabase() {
  structure_.reset();
  if (!connectionName_.isEmpty()) ts4::RemoveDatabase(connectionName_.toStdString());
}

QString TDemoDatabase::Connect(const QString& url) {
  const QString name = QStringLiteral("ts4demo-%1").arg(++connections_);
  ts4::AddDatabaseFromUrl(url.trimmed().toStdString(), name.toStdString());
  return name;
}

void TDemoDatabase::UseConnection(const QString& url, const QString& connection) {
  const QString old = connectionName_;
  connectionName_ = connection;
  databaseUrl_ = url.trimmed();
  info_.SetDatabaseName(connection.toStdString());
  structure_->SetDatabaseInfo(&info_);
  if (!old.isEmpty()) ts4::RemoveDatabase(old.toStdString());
  emit DatabaseChanged();
}

void TDemoDatabase::OpenDatabase(const QString& url) {
  UseConnection(url, Connect(url));
}

void TDemoDatabase::LoadStructureFile(const QString& path) {
  auto fresh = std::make_unique<ts4::TWDBStructure>();
  fresh->LoadFromFile(path.toStdString());
  // The file may name a provider of its own; the demo's lists read the open database.
  if (!connectionName_.isEmpty()) fresh->SetDatabaseInfo(&info_);
  Replace(std::move(fresh), path);
}

void TDemoDatabase::ImportStructure(const QString& url) {
  const QString connection = Connect(url);
  auto fresh = std::make_unique<ts4::TWDBStructure>();
  try {
    ts4::ImportStructure(connection.toStdString(), *fresh);
    if (fresh->TableCount() == 0) throw ts4::EWDBInfoError(ts4::gecGeneral, msg::NoTables, url.toStdString());
  } catch (...) {
    ts4::RemoveDatabase(connection.toStdString());
    throw;
  }
  Replace(std::move(fresh), url.trimmed());
  UseConnection(url, connection);
}

void TDemoDatabase::Replace(std::unique_ptr<ts4::TWDBStructure> structure, const QString& source) {
  std::unique_ptr<ts4::TWDBStructure> old = std::move(structure_);
  structure_ = std::move(structure);
  structureSource_ = source;
  emit StructureReplaced(structure_.get());
}

}  // namespace ts4demo
