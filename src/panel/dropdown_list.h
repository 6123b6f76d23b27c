#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "panel/dropdown_label.h"

namespace ts4 {

/// A named group of a list's items (by their positions in the list).
struct TItemGroup {
  QString Name;
  std::vector<int> Items;
};

/// The item groups of a list, in the order they were added.
class TItemGroupList {
 public:
  TItemGroup& AddGroup(const QString& name);
  [[nodiscard]] TItemGroup* FindByName(const QString& name);
  [[nodiscard]] const TItemGroup* FindByName(const QString& name) const;
  [[nodiscard]] int Count() const { return static_cast<int>(groups_.size()); }
  [[nodiscard]] const TItemGroup& Items(int index) const {
    return *groups_.at(static_cast<std::size_t>(index));
  }
  void Clear() { groups_.clear(); }

 private:
  std::vector<std::unique_ptr<TItemGroup>> groups_;
};

/// A label that lets the user choose one of its items. Items are the texts
/// shown, Values what the label's value becomes (an item without a value
/// stands for its text). The caption is the text of the item whose value the
/// label has.
class TDropDownList : public TDropDownLabel {
  Q_OBJECT
  Q_PROPERTY(bool SortList READ SortList WRITE SetSortList)
  Q_PROPERTY(QStringList Items READ Items WRITE SetItems)
  Q_PROPERTY(QStringList Values READ Values WRITE SetValues)
  Q_PROPERTY(int ItemIndex READ ItemIndex WRITE SetItemIndex)

 public:
  using TDropDownLabel::TDropDownLabel;

  /// Items are shown in the order of their texts (the positions stay as added).
  [[nodiscard]] bool SortList() const { return sortList_; }
  void SetSortList(bool on) { sortList_ = on; }
  [[nodiscard]] const QStringList& Items() const { return items_; }
  void SetItems(const QStringList& items);
  [[nodiscard]] const QStringList& Values() const { return values_; }
  void SetValues(const QStringList& values);
  [[nodiscard]] const TItemGroupList& ItemGroups() const { return groups_; }

  /// Appends an item, in the named group when `group` is not empty.
  void AddItem(const QString& group, const QString& text, const QString& value = {});
  void AddItems(const QString& group, const QStringList& texts, const QStringList& values = {});
  /// Removes every item, value and group.
  void ClearAll();

  /// The value of the item at the position (its text when it has none).
  [[nodiscard]] QString ValueOf(int index) const;
  /// The position of the first item with the label's value, or -1.
  [[nodiscard]] int ItemIndex() const;
  /// Selects by position: the value and caption follow.
  void SetItemIndex(int index);
  /// The positions in the order the list shows them.
  [[nodiscard]] std::vector<int> ShownOrder() const;

  [[nodiscard]] QAccessible::Role AccessibleRole() const override { return QAccessible::ComboBox; }

 protected:
  void ValueChanged() override;

 private:
  QStringList items_;
  QStringList values_;
  TItemGroupList groups_;
  bool sortList_ = false;
};

}  // namespace ts4
