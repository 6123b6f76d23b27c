// Loading and storing the structure text as a whole: the all-or-nothing swap
// of a loaded structure, files and the single-string form. The text itself is
// read in structure_file_reader.cpp and written in structure_file_writer.cpp.
#include <algorithm>
#include <memory>
#include <unordered_set>
#include <utility>

#include "structure/db_info.h"
#include "structure/structure.h"
#include "structure/structure_file_p.h"

namespace ts4 {

void TWCustomDBStructure::LoadFromStrings(const TStrings& list) {
  // Everything is built apart: a bad text raises before this structure changes.
  auto loaded = std::make_unique<TWCustomDBStructure>();
  loaded->ClearOperators();
  loaded->defOperators_ = defOperators_;  // captions for the operators of old files
  detail::TStructureReader reader(list, *loaded);
  reader.Read();
  loaded->ArrangeFieldGroups(reader.GroupFields, reader.RootFields);

  TStructureRemoval removal;
  removal.TablesOrLinks = true;
  for (const TDSField* field : fields_) removal.Fields.push_back(field);
  for (const TDSOperator* op : operators_) removal.Operators.push_back(op);
  NotifyRemoving(removal);
  TakeContent(*loaded);
  loaded.reset();  // frees the old items
  Changed();

  if (reader.HasDBSpecInfo && databaseInfo_ != nullptr) databaseInfo_->LoadInfo(reader.DBSpecInfo);
  UpdateDatabaseInfo();
}

void TWCustomDBStructure::TakeContent(TWCustomDBStructure& other) {
  std::swap(tables_, other.tables_);
  std::swap(fields_, other.fields_);
  std::swap(links_, other.links_);
  std::swap(operators_, other.operators_);
  std::swap(groups_, other.groups_);
  std::swap(rootGroup_, other.rootGroup_);
  std::swap(defaultMainTable_, other.defaultMainTable_);
  std::swap(rootFieldsFirst_, other.rootFieldsFirst_);
  std::swap(nextFieldID_, other.nextFieldID_);
  path_.Clear();
  other.path_.Clear();
  PointItemsHere();
  other.PointItemsHere();
}

void TWCustomDBStructure::PointItemsHere() {
  for (TDSTable* table : tables_) table->owner_ = this;
  for (TDSField* field : fields_) {
    field->owner_ = this;
    if (TDSSQLEditor* editor = field->SQLEditor()) editor->structure_ = this;
  }
  for (TDSFieldGroup* group : groups_) group->owner_ = this;
  for (TDSOperator* op : operators_) op->owner_ = this;
  rootGroup_->owner_ = this;
}

TDSField* TWCustomDBStructure::AddLoadedField(TWFieldKind kind, std::string expr, TDSTable* table) {
  // Unlike AddField, no operators are offered (the text lists them) and the
  // field joins its group only when ArrangeFieldGroups runs.
  auto field = std::make_unique<TDSField>(*this, kind, nextFieldID_);
  NoteFieldID(nextFieldID_);
  field->fieldExpr_ = std::move(expr);
  if (table != nullptr) field->tables_.push_back(table);
  return fields_.Add(std::move(field));
}

void TWCustomDBStructure::AddLoadedLink(std::unique_ptr<TDSLink> link) {
  // A link just made is in no table's list yet: AddLinkByRef's check for a
  // duplicate would make a text with many links of one table quadratic.
  TDSLink* added = links_.Add(std::move(link));
  added->table1_->links_.push_back(added);
  if (added->table2_ != added->table1_) added->table2_->links_.push_back(added);
}

void TWCustomDBStructure::ArrangeFieldGroups(const std::vector<std::vector<TDSField*>>& groupFields,
                                             const std::vector<TDSField*>& rootFields) {
  // Every field ends up in exactly one group: the first place that lists it
  // (groups in order, then the root group), else the end of the root group.
  rootGroup_->fields_.clear();
  for (TDSFieldGroup* group : groups_) group->fields_.clear();
  std::unordered_set<const TDSField*> placed;
  auto place = [&](TDSFieldGroup* group, TDSField* field) {
    if (!placed.insert(field).second) return;
    (group != nullptr ? group : rootGroup_.get())->fields_.push_back(field);
    field->group_ = group;
  };
  const std::size_t groupCount = std::min(groupFields.size(), static_cast<std::size_t>(groups_.Count()));
  for (std::size_t i = 0; i < groupCount; ++i)
    for (TDSField* field : groupFields[i]) place(groups_[static_cast<int>(i)], field);
  for (TDSField* field : rootFields) place(nullptr, field);
  for (TDSField* field : fields_) place(nullptr, field);
}

void TWCustomDBStructure::SaveToFile(const std::string& fileName) const {
  TStrings list;
  SaveToStrings(list);
  list.SaveToFile(fileName);
}

void TWCustomDBStructure::LoadFromFile(const std::string& fileName) {
  TStrings list;
  list.LoadFromFile(fileName);
  LoadFromStrings(list);
}

std::string TWCustomDBStructure::GetStructString() const {
  TStrings list;
  SaveToStrings(list);
  return list.Text();
}

void TWCustomDBStructure::SetStructString(std::string_view text) {
  TStrings list;
  list.SetText(text);
  LoadFromStrings(list);
}

}  // namespace ts4
