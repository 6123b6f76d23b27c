#include <algorithm>

#include "query/query.h"
#include "query/query_notifier_p.h"

namespace ts4::detail {

void TQueryNotifier::AddObserver(TQueryObserver* observer) {
  if (observer != nullptr && std::find(observers_.begin(), observers_.end(), observer) == observers_.end())
    observers_.push_back(observer);
}

void TQueryNotifier::RemoveObserver(TQueryObserver* observer) {
  std::erase(observers_, observer);
}

void TQueryNotifier::EndUpdate() {
  if (updates_ == 0) return;
  --updates_;
  if (Idle()) Flush();
}

void TQueryNotifier::StartReset() {
  if (updates_ == 0 || resetStarted_) return;
  resetStarted_ = true;
  heldRows_.clear();  // the reset tells them
  heldRowIndex_.clear();
  Tell([](TQueryObserver& o) { o.QueryAboutToBeReset(); });
}

void TQueryNotifier::EndOperation() {
  if (operations_ == 0) return;
  --operations_;
  if (Idle()) Flush();
}

void TQueryNotifier::RowsAboutToBeInserted(const TFilterBracket& parent, int first, int last) {
  TellStructural([&](TQueryObserver& o) { o.RowsAboutToBeInserted(parent, first, last); });
}

void TQueryNotifier::RowsInserted(const TFilterBracket& parent, int first, int last) {
  TellStructural([&](TQueryObserver& o) { o.RowsInserted(parent, first, last); });
}

void TQueryNotifier::RowsAboutToBeRemoved(const TFilterBracket& parent, int first, int last) {
  TellStructural([&](TQueryObserver& o) { o.RowsAboutToBeRemoved(parent, first, last); });
}

void TQueryNotifier::RowsRemoved(const TFilterBracket& parent, int first, int last) {
  TellStructural([&](TQueryObserver& o) { o.RowsRemoved(parent, first, last); });
}

void TQueryNotifier::RowsAboutToBeMoved(const TFilterBracket& from, int first, int last,
                                        const TFilterBracket& to, int toIndex) {
  TellStructural([&](TQueryObserver& o) { o.RowsAboutToBeMoved(from, first, last, to, toIndex); });
}

void TQueryNotifier::RowsMoved(const TFilterBracket& from, int first, int last, const TFilterBracket& to,
                               int toIndex) {
  TellStructural([&](TQueryObserver& o) { o.RowsMoved(from, first, last, to, toIndex); });
}

void TQueryNotifier::RowsRenumbered(const TFilterBracket& parent, int first) {
  TellStructural([&](TQueryObserver& o) { o.RowsRenumbered(parent, first); });
}

void TQueryNotifier::RowChanged(const TFilterRow& row, TRowAspects aspects) {
  if (aspects.Empty()) return;
  if (updates_ == 0) {
    Tell([&](TQueryObserver& o) { o.RowChanged(row, aspects); });
    return;
  }
  if (resetStarted_ || observers_.empty()) return;
  const auto [it, added] = heldRowIndex_.try_emplace(&row, heldRows_.size());
  if (added) {
    heldRows_.emplace_back(&row, aspects);
  } else {
    heldRows_[it->second].second = heldRows_[it->second].second | aspects;
  }
}

void TQueryNotifier::QueryChanged(TQueryAspects aspects) {
  heldAspects_ = heldAspects_ | aspects;
  if (Idle()) Flush();
}

void TQueryNotifier::ParamListChanged() {
  heldAspects_.Include(qaParameters);
  paramListHeld_ = true;
  if (Idle()) Flush();
}

void TQueryNotifier::DataChanged() {
  changeHeld_ = true;
  if (Idle()) Flush();
}

void TQueryNotifier::CloseEditors() {
  Tell([](TQueryObserver& o) { o.CloseEditors(); });
}

void TQueryNotifier::Flush() {
  // Everything is taken out first: a handler may change the query again.
  if (resetStarted_) {
    resetStarted_ = false;
    Tell([](TQueryObserver& o) { o.QueryReset(); });
  } else if (!heldRows_.empty()) {
    const auto rows = std::move(heldRows_);
    heldRows_.clear();
    heldRowIndex_.clear();
    for (const auto& held : rows) Tell([&](TQueryObserver& o) { o.RowChanged(*held.first, held.second); });
  }
  if (!heldAspects_.Empty()) {
    const TQueryAspects aspects = heldAspects_;
    heldAspects_ = {};
    Tell([&](TQueryObserver& o) { o.QueryChanged(aspects); });
  }
  if (paramListHeld_) {
    paramListHeld_ = false;
    if (query_.OnParamListChange) query_.OnParamListChange(query_);
  }
  if (changeHeld_) {
    changeHeld_ = false;
    if (query_.OnChange) query_.OnChange(query_);
  }
}

}  // namespace ts4::detail
