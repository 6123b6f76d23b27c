#include "sample_databases.h"

#include <cstdlib>

#include "qtsql/database_url.h"

namespace ts4test {

std::string SampleDatabaseUrl(const std::string& engine) {
  if (engine == "sqlite") return std::string("sqlite:") + TS4_SAMPLE_DB;
  const char* url = std::getenv("TS4_PG_URL");
  return url != nullptr ? url : "";
}

SampleConnection::SampleConnection(const std::string& engine) : name_("ts4-test-" + engine) {
  ts4::AddDatabaseFromUrl(SampleDatabaseUrl(engine), name_);
}

SampleConnection::~SampleConnection() {
  ts4::RemoveDatabase(name_);
}

QSqlDatabase SampleConnection::Database() const {
  return QSqlDatabase::database(QString::fromStdString(name_));
}

}  // namespace ts4test
