#include "structure/structure.h"

#include <algorithm>
#include <limits>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "structure/database_import.h"
#include "structure/db_info.h"

namespace ts4 {

TWCustomDBStructure::TWCustomDBStructure()
    : rootGroup_(std::make_unique<TDSFieldGroup>(*this, std::string())),
      quotedTypes_(DefaultQuotedTypes),
      exOperators_{xoInList, xoBetween, xoStartsWith, xoContains},
      path_(*this) {
  LoadDefsOpertors();
  AddDefOperators(false);
}

TWCustomDBStructure::~TWCustomDBStructure() = default;

void TWCustomDBStructure::Changed() {
  if (!updates_.Change()) return;
  const std::vector<TDBStructureObserver*> observers = observers_;  // one may unregister while told
  for (TDBStructureObserver* observer : observers) observer->StructureChanged();
  if (OnChange) OnChange(*this);
}

void TWCustomDBStructure::EndUpdate() {
  if (updates_.End()) Changed();
}

// ---- Tables -------------------------------------------------------------------

TDSTable* TWCustomDBStructure::AddTable(std::string_view name, std::string_view alias) {
  auto table =
      std::make_unique<TDSTable>(*this, std::string(name), std::string(alias.empty() ? name : alias));
  table->index_ = tables_.Count();
  TDSTable* added = tables_.Add(std::move(table));
  Changed();
  return added;
}

void TWCustomDBStructure::DelTable(int index) {
  TDSTable* table = Tables(index);
  TStructureRemoval removal;
  removal.TablesOrLinks = true;
  for (TDSField* field : fields_) {
    if (field->Kind() == wfkData && field->Table() == table) removal.Fields.push_back(field);
  }
  NotifyRemoving(removal);
  BeginUpdate();
  for (int i = links_.Count() - 1; i >= 0; --i) {
    TDSLink* link = links_[i];
    if (link->Table1() == table || link->Table2() == table) DelLink(i);
  }
  for (int i = fields_.Count() - 1; i >= 0; --i) {
    TDSField* field = fields_[i];
    if (field->Kind() == wfkData && field->Table() == table)
      DelField(i);
    else
      std::erase(field->tables_, table);
  }
  path_.Clear();
  tables_.Delete(index);
  RenumberTables();
  Changed();
  EndUpdate();
}

TDSTable* TWCustomDBStructure::Tables(int index) const {
  if (!tables_.ValidIndex(index)) throw EWDBStructError(secInvalidTableIndex, msg::InvalidTableIndex, index);
  return tables_[index];
}

TDSTable* TWCustomDBStructure::TableByName(TDSTableSearch mode, std::string_view text) const {
  for (TDSTable* table : tables_) {
    bool match = false;
    switch (mode) {
      case tsName: match = SameText(table->Name(), text); break;
      case tsAlias: match = SameText(table->Alias(), text); break;
      case tsDisplayName: match = SameText(table->DisplayName(), text); break;
      case tsCompoundName: match = SameText(table->GetCompoundName(), text); break;
      case tsSQLExpr: match = SameText(table->GetSQLExpr(), text); break;
      default: return nullptr;
    }
    if (match) return table;
  }
  return nullptr;
}

void TWCustomDBStructure::GetTableNames(TStrings& list) const {
  list.Clear();
  for (TDSTable* table : tables_) list.Add(table->Name());
}

void TWCustomDBStructure::RenumberTables() {
  for (int i = 0; i < tables_.Count(); ++i) tables_[i]->index_ = i;
}

// ---- Fields -------------------------------------------------------------------

TDSField* TWCustomDBStructure::AddField(TWFieldKind kind, std::string_view expr, std::string_view displayName,
                                        TDSTable* table, bool checkColumn) {
  const TDBFieldInfo* column = nullptr;
  if (kind == wfkData && checkColumn) {
    if (databaseInfo_ == nullptr) throw EWDBStructError(secNoDatabaseInfo, std::string(msg::NoDatabaseInfo));
    std::string tableName = table != nullptr ? table->Name() : std::string();
    column = databaseInfo_->GetFieldList(tableName).FindByName(expr);
    if (column == nullptr) throw EWDBStructError(secFieldNotInTable, msg::FieldNotInTable, expr, tableName);
  }
  auto field = std::make_unique<TDSField>(*this, kind, nextFieldID_);
  NoteFieldID(nextFieldID_);
  field->fieldExpr_ = std::string(expr);
  field->displayName_ = std::string(displayName.empty() ? expr : displayName);
  if (table != nullptr) field->tables_.push_back(table);
  if (column != nullptr) {
    field->fieldType_ = column->FieldType;
    field->fieldSize_ = column->FieldSize;
  }
  TDSField* added = fields_.Add(std::move(field));
  rootGroup_->fields_.push_back(added);
  BeginUpdate();
  added->AddAppliedOperators();
  Changed();
  EndUpdate();
  return added;
}

void TWCustomDBStructure::DelField(int index) {
  TDSField* field = fields_.Items(index);
  NotifyRemoving({{field}, {}, false});
  RemoveFieldFromGroup(*field);
  fields_.Delete(index);
  Changed();
}

TDSField* TWCustomDBStructure::FieldByName(TDSFieldSearch mode, std::string_view text) const {
  for (TDSField* field : fields_) {
    bool match = false;
    switch (mode) {
      case fsFieldExpr: match = SameText(field->FieldExpr(), text); break;
      case fsDisplayName: match = SameText(field->DisplayName(), text); break;
      case fsCompoundName: match = SameText(field->GetCompoundName(), text); break;
      case fsSQLExpr: match = SameText(field->GetSQLExpr(), text); break;
      case fsFullName: match = SameText(field->GetFullName(), text); break;
      default: return nullptr;
    }
    if (match) return field;
  }
  return nullptr;
}

TDSField* TWCustomDBStructure::FieldByID(int id) const {
  for (TDSField* field : fields_)
    if (field->ID() == id) return field;
  return nullptr;
}

void TWCustomDBStructure::GetFieldNames(TStrings& list) const {
  list.Clear();
  for (TDSField* field : fields_) list.Add(field->GetCompoundName());
}

void TWCustomDBStructure::NoteFieldID(int id) {
  // IDs come from files too: one at the top of the range must not overflow the counter.
  if (id >= nextFieldID_) nextFieldID_ = id < std::numeric_limits<int>::max() ? id + 1 : id;
}

// ---- Links --------------------------------------------------------------------

std::unique_ptr<TDSLink> TWCustomDBStructure::NewLink(TDSTable& table1, TDSTable& table2) const {
  return std::make_unique<TDSLink>(table1, table2);
}

TDSLink* TWCustomDBStructure::AddLinkByRef(std::unique_ptr<TDSLink> link) {
  TDSLink* added = links_.Add(std::move(link));
  added->Table1()->AddLinkRef(added);
  added->Table2()->AddLinkRef(added);
  Changed();
  return added;
}

TDSLink* TWCustomDBStructure::AddLink(TDSTable& table1, TDSTable& table2, std::string_view fields1,
                                      std::string_view fields2, TDSLinkType type) {
  auto link = NewLink(table1, table2);
  TStrings names;
  names.SetCommaText(fields1);
  link->fldName1_ = names;
  names.SetCommaText(fields2);
  link->fldName2_ = names;
  for (int i = 0; i < link->fldName1_.Count(); ++i) link->operators_.Add("=");
  link->linkType_ = type;
  return AddLinkByRef(std::move(link));
}

void TWCustomDBStructure::DelLink(int index) {
  TDSLink* link = Links(index);
  NotifyRemoving({{}, {}, true});
  link->Table1()->RemoveLinkRef(link);
  link->Table2()->RemoveLinkRef(link);
  links_.Delete(index);
  Changed();
}

TDSLink* TWCustomDBStructure::Links(int index) const {
  if (!links_.ValidIndex(index)) throw EWDBStructError(secInvalidLinkIndex, msg::InvalidLinkIndex, index);
  return links_[index];
}

TDSLink* TWCustomDBStructure::FindLink(std::string_view name1, std::string_view name2) const {
  for (TDSLink* link : links_) {
    const std::string& a = link->Table1()->Name();
    const std::string& b = link->Table2()->Name();
    if ((a == name1 && b == name2) || (a == name2 && b == name1)) return link;
  }
  return nullptr;
}

// ---- Field groups -----------------------------------------------------------------

TDSFieldGroup* TWCustomDBStructure::AddFieldGroup(std::string_view name) {
  TDSFieldGroup* group = groups_.Add(std::make_unique<TDSFieldGroup>(*this, std::string(name)));
  Changed();
  return group;
}

void TWCustomDBStructure::DelFieldGroup(int index) {
  TDSFieldGroup* group = groups_.Items(index);
  for (TDSField* field : group->fields_) {
    field->group_ = nullptr;
    rootGroup_->fields_.push_back(field);
  }
  groups_.Delete(index);
  Changed();
}

void TWCustomDBStructure::RemoveFieldFromGroup(TDSField& field) {
  TDSFieldGroup* group = field.group_ != nullptr ? field.group_ : rootGroup_.get();
  std::erase(group->fields_, &field);
  field.group_ = nullptr;
}

void TWCustomDBStructure::SetFieldGroup(TDSField& field, TDSFieldGroup* group, int position) {
  RemoveFieldFromGroup(field);
  TDSFieldGroup* target = group != nullptr ? group : rootGroup_.get();
  auto& members = target->fields_;
  if (position < 0 || position > static_cast<int>(members.size()))
    position = static_cast<int>(members.size());
  members.insert(members.begin() + position, &field);
  field.group_ = group;
  Changed();
}

void TWCustomDBStructure::SetRootFieldsFirst(bool first) {
  rootFieldsFirst_ = first;
  Changed();
}

// ---- Paths -------------------------------------------------------------------------

const TDSPath& TWCustomDBStructure::GetPath(std::string_view alias1, std::string_view alias2) {
  const TDSTable* from = TableByName(tsAlias, alias1);
  if (from == nullptr) throw EWDBStructError(secNoSuchTable, msg::NoSuchTable, alias1);
  const TDSTable* to = TableByName(tsAlias, alias2);
  if (to == nullptr) throw EWDBStructError(secNoSuchTable, msg::NoSuchTable, alias2);
  FindPath(*from, *to, path_);
  return path_;
}

// ---- Settings and the whole structure ---------------------------------------------------

void TWCustomDBStructure::SetSQLFormats(const TSQLFormats& formats) {
  sqlFormats_ = formats;
  Changed();
}

void TWCustomDBStructure::SetQuotedTypes(TFieldTypes types) {
  quotedTypes_ = types;
  Changed();
}

void TWCustomDBStructure::SetDefaultMainTable(std::string name) {
  defaultMainTable_ = std::move(name);
  Changed();
}

void TWCustomDBStructure::SetDatabaseInfo(TWDBInfo* info) {
  if (info == databaseInfo_) return;
  if (databaseInfo_ != nullptr) RemoveFreeNotification(*databaseInfo_);
  databaseInfo_ = info;
  if (databaseInfo_ != nullptr) FreeNotification(*databaseInfo_);
  Changed();
}

void TWCustomDBStructure::AddObserver(TDBStructureObserver* observer) {
  if (observer != nullptr && std::find(observers_.begin(), observers_.end(), observer) == observers_.end())
    observers_.push_back(observer);
}

void TWCustomDBStructure::RemoveObserver(TDBStructureObserver* observer) {
  std::erase(observers_, observer);
}

void TWCustomDBStructure::NotifyRemoving(const TStructureRemoval& removal) {
  // A copy: an observer may unregister while it is told.
  const std::vector<TDBStructureObserver*> observers = observers_;
  for (TDBStructureObserver* observer : observers) observer->StructureItemsRemoving(removal);
}

void TWCustomDBStructure::Notification(TWComponent& component) {
  if (databaseInfo_ != nullptr && static_cast<TWComponent*>(databaseInfo_) == &component)
    databaseInfo_ = nullptr;
}

void TWCustomDBStructure::ClearStructure() {
  TStructureRemoval removal;
  removal.TablesOrLinks = true;
  for (const TDSField* field : fields_) removal.Fields.push_back(field);
  NotifyRemoving(removal);
  path_.Clear();
  groups_.Clear();
  rootGroup_->fields_.clear();
  fields_.Clear();
  links_.Clear();
  tables_.Clear();
  nextFieldID_ = 1;
  Changed();
}

void TWCustomDBStructure::UpdateDatabaseInfo() {
  if (databaseInfo_ == nullptr) return;
  databaseInfo_->Update();
  // A structure that is still empty is made from the database when asked to.
  if (autoAddFields_ && TableCount() == 0) AddDatabaseTables(*this, *databaseInfo_);
}

void TWCustomDBStructure::Loaded() {
  UpdateDatabaseInfo();
  UpdateExOperators();
  MergeDefOperators();
  UpdateDefOperators();
}

}  // namespace ts4
