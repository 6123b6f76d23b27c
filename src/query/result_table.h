#pragma once

#include <string_view>
#include <vector>

namespace ts4 {

class TDSLink;
class TDSTable;

/// A table of the FROM clause and the link that joins it to a table listed
/// before it (none for the main table).
struct TResultTable {
  TDSTable* Table = nullptr;
  TDSLink* Link = nullptr;
};

/// The tables of the FROM clause in order; the first is the main table.
class TRTableList {
 public:
  [[nodiscard]] int Count() const { return static_cast<int>(items_.size()); }
  [[nodiscard]] bool Empty() const { return items_.empty(); }
  /// The entry at the index; a bad index raises EWTessalyError.
  [[nodiscard]] const TResultTable& GetItem(int index) const;
  [[nodiscard]] const TResultTable& operator[](int index) const { return GetItem(index); }
  void Add(TDSTable* table, TDSLink* link) { items_.push_back({table, link}); }
  void Insert(int index, TDSTable* table, TDSLink* link);
  void Delete(int index);
  void Clear() { items_.clear(); }
  [[nodiscard]] int IndexOf(const TDSTable* table) const;
  /// Index of the table with that alias, else with that name (case ignored), or -1.
  [[nodiscard]] int Find(std::string_view name) const;
  [[nodiscard]] auto begin() const { return items_.begin(); }
  [[nodiscard]] auto end() const { return items_.end(); }

 private:
  std::vector<TResultTable> items_;
};

}  // namespace ts4
