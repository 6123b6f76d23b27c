#include "query/rfield_list.h"

#include <algorithm>

#include "foundation/assign.h"
#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "query/query_result.h"
#include "structure/field.h"

namespace ts4 {

void TRFieldList::Changed() const {
  if (result_ != nullptr) result_->ResultFieldsChanged();
}

void TRFieldList::SetJustSorting(bool on) {
  if (AssignIfChanged(justSorting_, on)) Changed();
}

void TRFieldList::SetAutoAliases(bool on) {
  if (AssignIfChanged(autoAliases_, on)) Changed();
}

void TRFieldList::Delete(int index) {
  fields_.Delete(index);
  Changed();
}

void TRFieldList::Move(int from, int to) {
  if (from == to) return;
  fields_.Move(from, to);
  Changed();
}

void TRFieldList::Clear() {
  if (fields_.Empty()) return;
  fields_.Clear();
  Changed();
}

TResultField* TRFieldList::Place(int index, std::unique_ptr<TResultField> field) {
  field->owner_ = this;
  TResultField* placed = index < 0 ? fields_.Add(std::move(field)) : fields_.Insert(index, std::move(field));
  Changed();
  return placed;
}

TResultField* TRFieldList::New(int index) {
  return Place(index, std::make_unique<TResultField>(this));
}

TResultField* TRFieldList::Insert(int index, TDSField& field, TSortingType sorting) {
  auto made = std::make_unique<TResultField>(this);
  made->formula_ = {"@1", {&field}};
  made->sorting_ = sorting;
  made->caption_ = GetUniqCaption(field.DisplayName());
  if (std::optional<std::string> alias = made->GeneratedAlias()) made->alias_ = std::move(*alias);
  return Place(index, std::move(made));
}

TResultField* TRFieldList::InsertByExpression(int index, std::string_view expression, TSortingType sorting,
                                              std::string_view caption, std::string_view alias) {
  auto made = std::make_unique<TResultField>(this);
  made->formula_ = FormulaFromExpression(structure_, expression);  // may raise: nothing is added then
  made->sorting_ = sorting;
  made->alias_ = alias;
  made->caption_ = caption.empty() ? made->GeneratedCaption() : std::string(caption);
  if (alias.empty()) {
    if (std::optional<std::string> generated = made->GeneratedAlias()) made->alias_ = std::move(*generated);
  }
  return Place(index, std::move(made));
}

TResultField* TRFieldList::InsertBySQLExpr(int index, std::string_view sqlExpr, TSortingType sorting,
                                           std::string_view alias) {
  auto made = std::make_unique<TResultField>(this);
  made->formula_ = FormulaFromSQL(structure_, sqlExpr);
  made->sorting_ = sorting;
  made->alias_ = alias;
  made->caption_ = alias.empty() ? made->GeneratedCaption() : GetUniqCaption(alias, made.get());
  return Place(index, std::move(made));
}

int TRFieldList::IndexByExpr(std::string_view sqlExpr) const {
  for (int i = 0; i < Count(); ++i) {
    if (SameText(fields_[i]->GetSQLExpr(), sqlExpr)) return i;
  }
  return -1;
}

bool TRFieldList::CheckUniqAlias(std::string_view alias, const TResultField* except) const {
  for (const TResultField* field : fields_) {
    if (field != except && SameText(field->Alias(), alias)) return false;
  }
  return true;
}

bool TRFieldList::CheckUniqCaption(std::string_view caption, const TResultField* except) const {
  for (const TResultField* field : fields_) {
    if (field != except && SameText(field->Caption(), caption)) return false;
  }
  return true;
}

std::string TRFieldList::GetUniqAlias(std::string_view alias, const TResultField* except) const {
  std::string candidate(alias);
  for (int n = 1; !CheckUniqAlias(candidate, except); ++n) candidate = std::string(alias) + std::to_string(n);
  return candidate;
}

std::string TRFieldList::GetUniqCaption(std::string_view caption, const TResultField* except) const {
  std::string candidate(caption);
  for (int n = 1; !CheckUniqCaption(candidate, except); ++n)
    candidate = std::string(caption) + std::to_string(n);
  return candidate;
}

void TRFieldList::GenerateNumbers() {
  int number = 0;
  for (TResultField* field : fields_) field->number_ = ++number;
}

void TRFieldList::RegenerateAliases() {
  bool changed = false;
  for (TResultField* field : fields_) {
    std::optional<std::string> alias = field->GeneratedAlias();
    if (!alias || *alias == field->alias_) continue;
    field->alias_ = std::move(*alias);
    changed = true;
  }
  if (changed) Changed();
}

int TRFieldList::GetSortCount() const {
  int count = 0;
  for (const TResultField* field : fields_) count += field->Sorting() != stNoSort ? 1 : 0;
  return count;
}

std::vector<TResultField*> TRFieldList::SortedFields() const {
  std::vector<TResultField*> sorted;
  for (TResultField* field : fields_) {
    if (field->Sorting() != stNoSort) sorted.push_back(field);
  }
  std::stable_sort(sorted.begin(), sorted.end(), [](const TResultField* a, const TResultField* b) {
    return a->SortOrder() < b->SortOrder();
  });
  return sorted;
}

void TRFieldList::SetSorting(int index, TSortingType sorting) {
  TResultField* field = GetRField(index);
  if (field->sorting_ == sorting) return;
  if (field->sorting_ == stNoSort) {
    int last = 0;
    for (const TResultField* other : SortedFields()) last = std::max(last, other->SortOrder());
    field->sortOrder_ = last + 1;
  }
  field->sorting_ = sorting;
  Changed();
}

void TRFieldList::MoveSortedField(int from, int to) {
  std::vector<TResultField*> sorted = SortedFields();
  const int count = static_cast<int>(sorted.size());
  for (int index : {from, to}) {
    if (index < 0 || index >= count) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
  }
  TResultField* moved = sorted[static_cast<std::size_t>(from)];
  sorted.erase(sorted.begin() + from);
  sorted.insert(sorted.begin() + to, moved);
  bool changed = false;
  for (int rank = 1; rank <= count; ++rank) changed |= AssignIfChanged(sorted[rank - 1]->sortOrder_, rank);
  if (changed) Changed();
}

std::string TRFieldList::GetCaption(int index) const {
  const TResultField* field = GetRField(index);
  return field->Caption().empty() ? field->GetExpression() : field->Caption();
}

void TRFieldList::Assign(const TRFieldList& source) {
  if (&source == this) return;
  TWObjectList<TResultField> copies;
  for (const TResultField* field : source.fields_) {
    auto copy = std::make_unique<TResultField>(this);
    copy->CopyFrom(*field);
    copies.Add(std::move(copy));
  }
  fields_ = std::move(copies);
  structure_ = source.structure_;
  quoteAliases_ = source.quoteAliases_;
  justSorting_ = source.justSorting_;
  asciiAliases_ = source.asciiAliases_;
  autoAliases_ = source.autoAliases_;
  Changed();
}

}  // namespace ts4
