#pragma once

namespace ts4 {

class TFilterRow;

/// What a view of a query (the query panel) is told about. Every call comes
/// from the query's own thread, after the data has changed, except
/// RowAboutToBeDeleted, which comes while the row still exists.
class TQueryObserver {
 public:
  virtual ~TQueryObserver() = default;
  virtual void RowInserted(TFilterRow& /*row*/) {}
  /// The row and its whole subtree are about to be freed.
  virtual void RowAboutToBeDeleted(TFilterRow& /*row*/) {}
  /// Field, operator, values, captions, link type or enabled state changed.
  virtual void RowChanged(TFilterRow& /*row*/) {}
  /// Row identifiers were assigned again after a structural change.
  virtual void RowsRenumbered() {}
  virtual void ParametersChanged() {}
  /// A build is about to read the rows: finish any edit in progress.
  virtual void CloseEditors() {}
};

}  // namespace ts4
