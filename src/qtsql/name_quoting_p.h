#pragma once

#include <QSqlDatabase>
#include <string>
#include <unordered_set>

#include "qtsql/sql_catalog_p.h"

namespace ts4 {
class TWCustomDBStructure;
}

namespace ts4::detail {

/// Which table and column names a connection's engine reads only when they
/// are quoted, and a structure's quoting made to match.
class TNameQuoting {
 public:
  /// Reads what the rules need from the database (PostgreSQL's reserved
  /// words); raises EWDBInfoError when that fails.
  explicit TNameQuoting(QSqlDatabase database);

  /// Quotes the structure's tables, data fields and the fields of its links
  /// exactly where the engine needs quotes, so that names the engine reads
  /// bare stay bare. On an engine whose rules are not known here the
  /// structure keeps the quoting it has.
  void Apply(TWCustomDBStructure& structure) const;

 private:
  [[nodiscard]] bool NeedsQuotes(const std::string& name) const;
  [[nodiscard]] bool SQLiteReadsBare(const QString& name) const;

  QSqlDatabase database_;
  TSQLEngine engine_;
  std::unordered_set<std::string> reservedWords_;
};

}  // namespace ts4::detail
