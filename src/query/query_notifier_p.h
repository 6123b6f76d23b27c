#pragma once

#include <unordered_map>
#include <utility>
#include <vector>

#include "query/query_observer.h"

namespace ts4 {

class TWQuery;

namespace detail {

/// Tells a query's observers and events about its changes, and holds them
/// back where the protocol says so: inside an operation (a public member
/// that makes several changes) the query aspects, OnParamListChange and
/// OnChange wait for its end, so that each is told once and only when the
/// tree is whole again; inside BeginUpdate/EndUpdate the rows are told as
/// one reset, or, when only their data changed, once per row at the end.
class TQueryNotifier {
 public:
  explicit TQueryNotifier(TWQuery& query) : query_(query) {}
  TQueryNotifier(const TQueryNotifier&) = delete;
  TQueryNotifier& operator=(const TQueryNotifier&) = delete;

  void AddObserver(TQueryObserver* observer);
  void RemoveObserver(TQueryObserver* observer);
  void ClearObservers() { observers_.clear(); }

  void BeginUpdate() { ++updates_; }
  void EndUpdate();
  [[nodiscard]] bool Updating() const { return updates_ > 0; }
  /// Inside an update: the rows are about to change in ways a view is not told one by one.
  void StartReset();

  void BeginOperation() { ++operations_; }
  void EndOperation();

  void RowsAboutToBeInserted(const TFilterBracket& parent, int first, int last);
  void RowsInserted(const TFilterBracket& parent, int first, int last);
  void RowsAboutToBeRemoved(const TFilterBracket& parent, int first, int last);
  void RowsRemoved(const TFilterBracket& parent, int first, int last);
  void RowsAboutToBeMoved(const TFilterBracket& from, int first, int last, const TFilterBracket& to,
                          int toIndex);
  void RowsMoved(const TFilterBracket& from, int first, int last, const TFilterBracket& to, int toIndex);
  void RowsRenumbered(const TFilterBracket& parent, int first);
  void RowChanged(const TFilterRow& row, TRowAspects aspects);
  void QueryChanged(TQueryAspects aspects);
  /// The parameter list changed: qaParameters and OnParamListChange.
  void ParamListChanged();
  /// The query's data changed: OnChange.
  void DataChanged();
  void CloseEditors();

 private:
  template <typename Call>
  void Tell(Call&& call) {
    if (observers_.empty()) return;
    const std::vector<TQueryObserver*> observers = observers_;  // one may unregister while told
    for (TQueryObserver* observer : observers) call(*observer);
  }
  /// A change of the tree's shape: told now, or made part of the update's reset.
  template <typename Call>
  void TellStructural(Call&& call) {
    if (updates_ > 0) {
      StartReset();
      return;
    }
    Tell(call);
  }
  [[nodiscard]] bool Idle() const { return updates_ == 0 && operations_ == 0; }
  /// Tells what was held back; only when no operation or update is open.
  void Flush();

  TWQuery& query_;
  std::vector<TQueryObserver*> observers_;
  int updates_ = 0;
  int operations_ = 0;
  bool resetStarted_ = false;
  // Row changes of an update without a reset, in the order first told.
  std::vector<std::pair<const TFilterRow*, TRowAspects>> heldRows_;
  std::unordered_map<const TFilterRow*, std::size_t> heldRowIndex_;
  TQueryAspects heldAspects_;
  bool paramListHeld_ = false;
  bool changeHeld_ = false;
};

/// One operation of a query: what it tells at its end is told once.
class TQueryOperation {
 public:
  explicit TQueryOperation(TQueryNotifier& notifier) : notifier_(notifier) { notifier_.BeginOperation(); }
  TQueryOperation(const TQueryOperation&) = delete;
  TQueryOperation& operator=(const TQueryOperation&) = delete;
  ~TQueryOperation() { notifier_.EndOperation(); }

 private:
  TQueryNotifier& notifier_;
};

}  // namespace detail
}  // namespace ts4
