#include "query/result_table.h"

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "structure/table.h"

namespace ts4 {
namespace {

void CheckIndex(int index, int limit) {
  if (index < 0 || index >= limit) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
}

}  // namespace

const TResultTable& TRTableList::GetItem(int index) const {
  CheckIndex(index, Count());
  return items_[static_cast<std::size_t>(index)];
}

void TRTableList::Insert(int index, TDSTable* table, TDSLink* link) {
  CheckIndex(index, Count() + 1);
  items_.insert(items_.begin() + index, {table, link});
}

void TRTableList::Delete(int index) {
  CheckIndex(index, Count());
  items_.erase(items_.begin() + index);
}

int TRTableList::IndexOf(const TDSTable* table) const {
  for (int i = 0; i < Count(); ++i) {
    if (items_[static_cast<std::size_t>(i)].Table == table) return i;
  }
  return -1;
}

int TRTableList::Find(std::string_view name) const {
  for (int i = 0; i < Count(); ++i) {
    if (SameText(items_[static_cast<std::size_t>(i)].Table->Alias(), name)) return i;
  }
  for (int i = 0; i < Count(); ++i) {
    if (SameText(items_[static_cast<std::size_t>(i)].Table->Name(), name)) return i;
  }
  return -1;
}

}  // namespace ts4
