#include "structure/db_info.h"

#include "foundation/string_utils.h"

namespace ts4 {

TDBFieldInfo* TDBFieldList::Add(std::string name, int size, TFieldType type) {
  auto info = std::make_unique<TDBFieldInfo>();
  info->FieldName = std::move(name);
  info->FieldSize = static_cast<std::uint16_t>(size);
  info->FieldType = type == ftUnknown ? ftString : type;
  return items_.Add(std::move(info));
}

TDBFieldInfo* TDBFieldList::FindByName(std::string_view name) const {
  for (TDBFieldInfo* info : items_)
    if (SameText(info->FieldName, name)) return info;
  return nullptr;
}

TWDBInfo::~TWDBInfo() = default;

void TWDBInfo::GetDatabaseNames(TStrings& /*list*/) {}
void TWDBInfo::TablesByDatabase(TStrings& /*list*/) {}
void TWDBInfo::FieldsByTable(std::string_view /*tableName*/, TDBFieldList& /*fields*/) {}
void TWDBInfo::ForeignKeysByDatabase(std::vector<TDBForeignKey>& /*keys*/) {}
void TWDBInfo::GetSQLValues(std::string_view /*sql*/, TStrings& /*values*/, TStrings& /*items*/) {}
void TWDBInfo::LoadInfo(const TStrings& /*lines*/) {}
void TWDBInfo::SaveInfo(TStrings& /*lines*/) {}

void TWDBInfo::Update() {
  tableNames_.Clear();
  tablesRead_ = false;
  fieldCache_.Clear();
  cachedTable_.clear();
  fieldsRead_ = false;
}

void TWDBInfo::ConnectionChanged() {
  Update();
}

const TStrings& TWDBInfo::GetTableNames() {
  if (!tablesRead_) {
    tableNames_.Clear();
    TablesByDatabase(tableNames_);
    tablesRead_ = true;
  }
  return tableNames_;
}

const TDBFieldList& TWDBInfo::GetFieldList(std::string_view tableName) {
  if (!fieldsRead_ || cachedTable_ != tableName) {
    fieldCache_.Clear();
    fieldsRead_ = false;
    FieldsByTable(tableName, fieldCache_);
    cachedTable_ = std::string(tableName);
    fieldsRead_ = true;
  }
  return fieldCache_;
}

void TWDBInfo::GetFieldNamesByTable(std::string_view tableName, TStrings& list) {
  list.Clear();
  const TDBFieldList& fields = GetFieldList(tableName);
  for (int i = 0; i < fields.Count(); ++i) list.Add(fields.Items(i)->FieldName);
}

void TWDBInfo::Notification(TWComponent& /*component*/) {}

}  // namespace ts4
