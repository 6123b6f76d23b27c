// Making a structure from a database: a SQLite file of 500 tables with 20
// columns each (10,000 columns, every table but the first with a foreign
// key to the one before), read through the Qt SQL provider into an empty
// structure with AutoAddFields, time per import.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "qtsql/database_url.h"
#include "qtsql/qt_sql_info.h"
#include "structure/structure.h"

namespace {

constexpr int TableCount = 500;
constexpr int ColumnsPerTable = 20;
constexpr const char* ColumnTypes[] = {"VARCHAR(40)", "INTEGER", "DATE", "NUMERIC(10,2)", "TIMESTAMP"};

// Writes the database; false when a statement fails.
bool CreateDatabase(const QString& path) {
  QSqlDatabase database =
      QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("bench-create"));
  database.setDatabaseName(path);
  bool ok = database.open() && database.transaction();
  QSqlQuery query(database);
  for (int t = 0; t < TableCount && ok; ++t) {
    QString sql = QStringLiteral("CREATE TABLE T%1_ITEMS (ID INTEGER PRIMARY KEY").arg(t);
    sql += t > 0 ? QStringLiteral(", PARENT_ID INTEGER REFERENCES T%1_ITEMS(ID)").arg(t - 1)
                 : QStringLiteral(", PARENT_ID INTEGER");
    for (int c = 2; c < ColumnsPerTable; ++c)
      sql += QStringLiteral(", COLUMN_%1 %2").arg(c).arg(QLatin1String(ColumnTypes[c % 5]));
    ok = query.exec(sql + QStringLiteral(")"));
  }
  ok = ok && database.commit();
  query = QSqlQuery();
  database = QSqlDatabase();
  QSqlDatabase::removeDatabase(QStringLiteral("bench-create"));
  return ok;
}

void BM_ImportDatabase(benchmark::State& state) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("wide.db"));
  if (!folder.isValid() || !CreateDatabase(path)) {
    state.SkipWithError("cannot create the database");
    return;
  }
  ts4::AddDatabaseFromUrl("sqlite:" + path.toStdString(), "bench");
  int fields = 0;
  for (auto _ : state) {
    ts4::TWQtSqlInfo info;
    info.SetDatabaseName("bench");
    ts4::TWDBStructure structure;
    structure.SetDatabaseInfo(&info);
    structure.SetAutoAddFields(true);
    structure.UpdateDatabaseInfo();
    fields = structure.FieldCount();
    benchmark::DoNotOptimize(structure.LinkCount());
  }
  ts4::RemoveDatabase("bench");
  state.counters["tables"] = TableCount;
  state.counters["fields"] = fields;
}

BENCHMARK(BM_ImportDatabase)->Unit(benchmark::kMillisecond)->MinTime(1.0);

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);  // Qt SQL loads its drivers through it
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
