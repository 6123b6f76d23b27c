#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "foundation/error.h"
#include "foundation/messages.h"

namespace ts4 {

/// An ordered list that owns its items and frees them when they are deleted
/// or the list goes away. A bad index raises EWTessalyError; owners that
/// document their own code for it check the index first.
template <typename T>
class TWObjectList {
 public:
  TWObjectList() = default;
  TWObjectList(const TWObjectList&) = delete;
  TWObjectList& operator=(const TWObjectList&) = delete;
  TWObjectList(TWObjectList&&) noexcept = default;
  TWObjectList& operator=(TWObjectList&&) noexcept = default;

  [[nodiscard]] int Count() const { return static_cast<int>(items_.size()); }
  [[nodiscard]] bool Empty() const { return items_.empty(); }
  [[nodiscard]] bool ValidIndex(int index) const { return index >= 0 && index < Count(); }

  [[nodiscard]] T* Items(int index) const {
    Check(index, Count());
    return items_[static_cast<std::size_t>(index)].get();
  }
  [[nodiscard]] T* operator[](int index) const { return Items(index); }
  [[nodiscard]] T* First() const { return items_.empty() ? nullptr : items_.front().get(); }
  [[nodiscard]] T* Last() const { return items_.empty() ? nullptr : items_.back().get(); }

  /// Takes ownership and appends; returns the item.
  T* Add(std::unique_ptr<T> item) {
    items_.push_back(std::move(item));
    return items_.back().get();
  }
  T* Insert(int index, std::unique_ptr<T> item) {
    Check(index, Count() + 1);
    return items_.insert(items_.begin() + index, std::move(item))->get();
  }
  /// Frees the item at the index.
  void Delete(int index) {
    Check(index, Count());
    items_.erase(items_.begin() + index);
  }
  /// Removes the item at the index and hands it back to the caller.
  [[nodiscard]] std::unique_ptr<T> Extract(int index) {
    Check(index, Count());
    std::unique_ptr<T> item = std::move(items_[static_cast<std::size_t>(index)]);
    items_.erase(items_.begin() + index);
    return item;
  }
  void Move(int from, int to) {
    Check(from, Count());
    Check(to, Count());
    auto item = std::move(items_[static_cast<std::size_t>(from)]);
    items_.erase(items_.begin() + from);
    items_.insert(items_.begin() + to, std::move(item));
  }
  void Clear() { items_.clear(); }
  /// Makes room for that many items without moving the list again.
  void Reserve(int count) { items_.reserve(static_cast<std::size_t>(std::max(count, 0))); }
  /// Frees every item the predicate holds for, in one pass; returns how many.
  template <typename Pred>
  int DeleteIf(Pred pred) {
    return static_cast<int>(
        std::erase_if(items_, [&](const std::unique_ptr<T>& item) { return pred(item.get()); }));
  }

  [[nodiscard]] int IndexOf(const T* item) const {
    auto it = std::find_if(items_.begin(), items_.end(),
                           [item](const std::unique_ptr<T>& p) { return p.get() == item; });
    return it == items_.end() ? -1 : static_cast<int>(it - items_.begin());
  }

  /// Iterates over the items as plain pointers.
  class const_iterator {
   public:
    using Base = typename std::vector<std::unique_ptr<T>>::const_iterator;
    explicit const_iterator(Base it) : it_(it) {}
    T* operator*() const { return it_->get(); }
    const_iterator& operator++() {
      ++it_;
      return *this;
    }
    bool operator==(const const_iterator&) const = default;

   private:
    Base it_;
  };
  [[nodiscard]] const_iterator begin() const { return const_iterator(items_.begin()); }
  [[nodiscard]] const_iterator end() const { return const_iterator(items_.end()); }

 private:
  static void Check(int index, int limit) {
    if (index < 0 || index >= limit) throw EWTessalyError(gecGeneral, msg::ListIndexOutOfBounds, index);
  }
  std::vector<std::unique_ptr<T>> items_;
};

}  // namespace ts4
