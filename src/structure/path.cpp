#include "structure/path.h"

#include <limits>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "structure/link.h"
#include "structure/structure.h"
#include "structure/table.h"

namespace ts4 {

void TDSPath::AddTable(int position) {
  (void)structure_->Tables(position);  // raises for a position the structure does not have
  positions_.push_back(position);
}

void TDSPath::DelTable(int index) {
  if (index < 0 || index >= TableCount())
    throw EWDBStructError(secInvalidTableIndex, msg::InvalidTableIndex, index);
  positions_.erase(positions_.begin() + index);
}

TDSTable* TDSPath::Tables(int index) const {
  if (index < 0 || index >= TableCount())
    throw EWDBStructError(secInvalidTableIndex, msg::InvalidTableIndex, index);
  return structure_->Tables(positions_[static_cast<std::size_t>(index)]);
}

TDSTable* TDSPath::StartPoint() const {
  return positions_.empty() ? nullptr : Tables(0);
}

TDSTable* TDSPath::EndPoint() const {
  return positions_.empty() ? nullptr : Tables(TableCount() - 1);
}

TDSTable* TDSPath::TableByIndex(int position) const {
  for (int p : positions_)
    if (p == position) return structure_->Tables(p);
  return nullptr;
}

void TDSPath::Assign(const TDSPath& other) {
  structure_ = other.structure_;
  positions_ = other.positions_;
}

// The documented search expands every chain that does not revisit its own
// tables, level by level, and returns the first chain (in the order links
// are listed at each table) whose end is linked to the target. That chain is
// a shortest path, and among shortest paths it is the one that takes, at
// each step, the first listed link leading one step closer to the target.
// So one breadth-first pass from the target (distances) and one greedy walk
// from the start give the same chain without enumerating chains, which can
// be exponential in number.
void FindPath(const TDSTable& from, const TDSTable& to, TDSPath& path) {
  path.Clear();
  const int start = from.Index();
  const int target = to.Index();
  const TWCustomDBStructure& structure = from.Structure();

  if (start == target) {
    // The chain search only looks for the target among the ends of links, so
    // a table reaches itself through a self-link, else by going to its first
    // linked neighbour and back.
    for (int i = 0; i < from.LinkCount(); ++i) {
      if (from.Links(i)->OtherTable(&from) == &from) {
        path.AddTable(start);
        path.AddTable(start);
        return;
      }
    }
    if (from.LinkCount() == 0) throw EWDBStructError(secNoPath, std::string(msg::NoPath));
    path.AddTable(start);
    path.AddTable(from.Links(0)->OtherTable(&from)->Index());
    path.AddTable(start);
    return;
  }

  constexpr int Unreached = std::numeric_limits<int>::max();
  std::vector<int> distance(static_cast<std::size_t>(structure.TableCount()), Unreached);
  std::vector<const TDSTable*> queue;
  queue.reserve(distance.size());
  distance[static_cast<std::size_t>(target)] = 0;
  queue.push_back(&to);
  for (std::size_t head = 0; head < queue.size() && distance[static_cast<std::size_t>(start)] == Unreached;
       ++head) {
    const TDSTable* table = queue[head];
    const int next = distance[static_cast<std::size_t>(table->Index())] + 1;
    for (int i = 0; i < table->LinkCount(); ++i) {
      const TDSTable* other = table->Links(i)->OtherTable(table);
      int& d = distance[static_cast<std::size_t>(other->Index())];
      if (d == Unreached) {
        d = next;
        queue.push_back(other);
      }
    }
  }
  if (distance[static_cast<std::size_t>(start)] == Unreached)
    throw EWDBStructError(secNoPath, std::string(msg::NoPath));

  const TDSTable* current = &from;
  path.AddTable(start);
  while (current != &to) {
    const int wanted = distance[static_cast<std::size_t>(current->Index())] - 1;
    for (int i = 0; i < current->LinkCount(); ++i) {
      const TDSTable* other = current->Links(i)->OtherTable(current);
      if (distance[static_cast<std::size_t>(other->Index())] == wanted) {
        current = other;
        break;
      }
    }
    path.AddTable(current->Index());
  }
}

}  // namespace ts4
