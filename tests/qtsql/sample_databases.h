// The sample sales database on each engine the tests reach: SQLite always
// (the file the build makes), PostgreSQL when the test command started a
// server and named it in TS4_PG_URL.
#pragma once

#include <string>

#include <QSqlDatabase>

namespace ts4test {

/// The connection URL of the engine's sample database, or "" when the engine
/// is not available ("sqlite" or "postgresql").
std::string SampleDatabaseUrl(const std::string& engine);

/// A registered, open connection to the engine's sample database for as
/// long as it lives.
class SampleConnection {
 public:
  explicit SampleConnection(const std::string& engine);
  ~SampleConnection();
  SampleConnection(const SampleConnection&) = delete;
  SampleConnection& operator=(const SampleConnection&) = delete;

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] QSqlDatabase Database() const;

 private:
  std::string name_;
};

/// Skips the running test when the engine is not available.
#define TS4_REQUIRE_ENGINE(engine)                                                            \
  if (ts4test::SampleDatabaseUrl(engine).empty()) {                                           \
    GTEST_SKIP() << "no " << (engine) << " database: run the tests through with-postgres.sh"; \
  }

}  // namespace ts4test
