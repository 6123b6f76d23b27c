#pragma once

#include <vector>

namespace ts4 {

class TDSTable;
class TWCustomDBStructure;

/// A chain of tables from a start table to an end table in which neighbours
/// are joined by a link of the structure. Tables are kept by their position
/// in the structure's table list.
class TDSPath {
 public:
  explicit TDSPath(const TWCustomDBStructure& structure) : structure_(&structure) {}

  /// Appends the structure's table at that position.
  void AddTable(int position);
  /// Removes the entry at that index of the path.
  void DelTable(int index);
  void Clear() { positions_.clear(); }
  [[nodiscard]] int TableCount() const { return static_cast<int>(positions_.size()); }
  /// The table at the index of the path; a bad index raises EWDBStructError code 1.
  [[nodiscard]] TDSTable* Tables(int index) const;
  /// The first table, null for an empty path.
  [[nodiscard]] TDSTable* StartPoint() const;
  /// The last table, null for an empty path.
  [[nodiscard]] TDSTable* EndPoint() const;
  /// The path's table at that structure position, null when the path does not hold it.
  [[nodiscard]] TDSTable* TableByIndex(int position) const;
  /// Makes this path a copy of the other.
  void Assign(const TDSPath& other);

 private:
  const TWCustomDBStructure* structure_;
  std::vector<int> positions_;
};

/// Fills `path` with the chain of links that the breadth-first chain search
/// of the structure returns from `from` to `to`: the fewest links, ties
/// broken by the link order of each table from `from` on. Raises
/// EWDBStructError code 5 when there is none. Runs in time linear in tables
/// plus links.
void FindPath(const TDSTable& from, const TDSTable& to, TDSPath& path);

}  // namespace ts4
