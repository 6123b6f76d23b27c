#pragma once

#include <string>
#include <utility>
#include <vector>

struct sqlite3;

namespace ts4test {

/// An in-memory SQLite database for running generated statements. Every
/// failure raises std::runtime_error with SQLite's message and the SQL.
class TSQLiteDB {
 public:
  using TRow = std::vector<std::string>;
  /// Parameter name without the colon, and the text bound to it.
  using TParams = std::vector<std::pair<std::string, std::string>>;

  TSQLiteDB();
  ~TSQLiteDB();
  TSQLiteDB(const TSQLiteDB&) = delete;
  TSQLiteDB& operator=(const TSQLiteDB&) = delete;

  /// Runs statements that return nothing (a schema and its data).
  void Exec(const std::string& script);
  /// Runs one statement with the named parameters bound as text and returns
  /// its rows, NULL as "NULL". Every parameter of the statement must be
  /// given, and every one given must occur in it.
  [[nodiscard]] std::vector<TRow> Query(const std::string& sql, const TParams& params = {});

 private:
  [[noreturn]] void Fail(const std::string& sql) const;
  sqlite3* db_ = nullptr;
};

}  // namespace ts4test
