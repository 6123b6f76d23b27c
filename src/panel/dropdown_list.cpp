#include "panel/dropdown_list.h"

#include <algorithm>
#include <numeric>

#include "foundation/messages.h"

namespace ts4 {

TItemGroup& TItemGroupList::AddGroup(const QString& name) {
  if (TItemGroup* group = FindByName(name)) return *group;
  groups_.push_back(std::make_unique<TItemGroup>());
  groups_.back()->Name = name;
  return *groups_.back();
}

TItemGroup* TItemGroupList::FindByName(const QString& name) {
  for (const auto& group : groups_)
    if (group->Name.compare(name, Qt::CaseInsensitive) == 0) return group.get();
  return nullptr;
}

const TItemGroup* TItemGroupList::FindByName(const QString& name) const {
  return const_cast<TItemGroupList*>(this)->FindByName(name);
}

void TDropDownList::SetItems(const QStringList& items) {
  items_ = items;
  ValueChanged();
}

void TDropDownList::SetValues(const QStringList& values) {
  values_ = values;
  ValueChanged();
}

void TDropDownList::AddItem(const QString& group, const QString& text, const QString& value) {
  // Values stay parallel to the items, also when earlier items came without one.
  while (values_.size() < items_.size()) values_.append(QString());
  items_.append(text);
  values_.append(value);
  if (!group.isEmpty()) groups_.AddGroup(group).Items.push_back(static_cast<int>(items_.size() - 1));
  ValueChanged();
}

void TDropDownList::AddItems(const QString& group, const QStringList& texts, const QStringList& values) {
  for (qsizetype i = 0; i < texts.size(); ++i)
    AddItem(group, texts[i], i < values.size() ? values[i] : QString());
}

void TDropDownList::ClearAll() {
  items_.clear();
  values_.clear();
  groups_.Clear();
  ValueChanged();
}

QString TDropDownList::ValueOf(int index) const {
  if (index < 0 || index >= items_.size()) return {};
  const QString value = index < values_.size() ? values_[index] : QString();
  return value.isEmpty() ? items_[index] : value;
}

int TDropDownList::ItemIndex() const {
  for (int i = 0; i < items_.size(); ++i)
    if (ValueOf(i) == Value()) return i;
  return -1;
}

void TDropDownList::SetItemIndex(int index) {
  if (index < 0 || index >= items_.size()) throw EDDLabelError(gecGeneral, msg::ListIndexOutOfBounds, index);
  SetValue(ValueOf(index));
}

std::vector<int> TDropDownList::ShownOrder() const {
  std::vector<int> order(static_cast<std::size_t>(items_.size()));
  std::iota(order.begin(), order.end(), 0);
  if (sortList_) {
    std::stable_sort(order.begin(), order.end(),
                     [this](int a, int b) { return items_[a].localeAwareCompare(items_[b]) < 0; });
  }
  return order;
}

void TDropDownList::ValueChanged() {
  const int index = ItemIndex();
  SetCaption(index >= 0 ? items_[index] : Value());
}

}  // namespace ts4
