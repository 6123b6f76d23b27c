// A metadata provider over an in-memory catalogue, for tests of what the
// structure does with a database.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/error.h"
#include "structure/db_info.h"

namespace ts4test {

class FakeDBInfo : public ts4::TWDBInfo {
 public:
  std::map<std::string, std::vector<ts4::TDBFieldInfo>> catalogue;
  std::vector<ts4::TDBForeignKey> foreignKeys;
  bool failOnForeignKeys = false;
  int fieldReads = 0;
  int tableReads = 0;

  void TablesByDatabase(ts4::TStrings& list) override {
    ++tableReads;
    for (const auto& [name, columns] : catalogue) list.Add(name);
  }
  void FieldsByTable(std::string_view table, ts4::TDBFieldList& fields) override {
    ++fieldReads;
    auto it = catalogue.find(std::string(table));
    if (it == catalogue.end()) return;
    for (const ts4::TDBFieldInfo& info : it->second)
      fields.Add(info.FieldName, info.FieldSize, info.FieldType);
  }
  void ForeignKeysByDatabase(std::vector<ts4::TDBForeignKey>& keys) override {
    if (failOnForeignKeys) throw ts4::EWDBInfoError(ts4::gecGeneral, "connection lost");
    keys.insert(keys.end(), foreignKeys.begin(), foreignKeys.end());
  }
};

}  // namespace ts4test
