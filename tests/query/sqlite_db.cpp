#include "query/sqlite_db.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <string_view>

namespace ts4test {

TSQLiteDB::TSQLiteDB() {
  if (sqlite3_open(":memory:", &db_) != SQLITE_OK) Fail("open :memory:");
}

TSQLiteDB::~TSQLiteDB() {
  sqlite3_close(db_);
}

void TSQLiteDB::Fail(const std::string& sql) const {
  throw std::runtime_error(std::string(sqlite3_errmsg(db_)) + "\n" + sql);
}

void TSQLiteDB::Exec(const std::string& script) {
  char* error = nullptr;
  if (sqlite3_exec(db_, script.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
    const std::string message = error != nullptr ? error : "unknown error";
    sqlite3_free(error);
    throw std::runtime_error(message + "\n" + script);
  }
}

std::vector<TSQLiteDB::TRow> TSQLiteDB::Query(const std::string& sql, const TParams& params) {
  sqlite3_stmt* raw = nullptr;
  const char* tail = nullptr;
  if (sqlite3_prepare_v2(db_, sql.c_str(), static_cast<int>(sql.size()), &raw, &tail) != SQLITE_OK) Fail(sql);
  const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> stmt(raw, &sqlite3_finalize);
  if (raw == nullptr || std::string_view(tail).find_first_not_of(" \r\n\t;") != std::string_view::npos)
    throw std::runtime_error("not exactly one statement:\n" + sql);
  if (sqlite3_bind_parameter_count(raw) != static_cast<int>(params.size()))
    throw std::runtime_error(std::to_string(params.size()) + " parameters given for " +
                             std::to_string(sqlite3_bind_parameter_count(raw)) + " in:\n" + sql);
  for (const auto& [name, value] : params) {
    const int index = sqlite3_bind_parameter_index(raw, (":" + name).c_str());
    if (index == 0) throw std::runtime_error("no parameter :" + name + " in:\n" + sql);
    if (sqlite3_bind_text(raw, index, value.c_str(), static_cast<int>(value.size()), SQLITE_TRANSIENT) !=
        SQLITE_OK)
      Fail(sql);
  }
  std::vector<TRow> rows;
  int step = SQLITE_ROW;
  while ((step = sqlite3_step(raw)) == SQLITE_ROW) {
    TRow& row = rows.emplace_back();
    for (int i = 0; i < sqlite3_column_count(raw); ++i) {
      const unsigned char* text = sqlite3_column_text(raw, i);
      row.emplace_back(text != nullptr ? reinterpret_cast<const char*>(text) : "NULL");
    }
  }
  if (step != SQLITE_DONE) Fail(sql);
  return rows;
}

}  // namespace ts4test
