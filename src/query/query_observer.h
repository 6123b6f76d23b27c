#pragma once

#include <cstdint>

#include "foundation/enum_set.h"

namespace ts4 {

class TFilterBracket;
class TFilterRow;

/// What changed in one row.
enum class TRowAspect : std::uint8_t {
  raField,     // the condition's field
  raOperator,  // the condition's operator
  raValues,    // value 1 or 2, the sub-query or its options
  raCaptions,  // the texts shown for the values
  raHints,     // the hints of the values
  raParams,    // a value became a parameter or a constant again
  raLinkType,  // the bracket's link type
  raEnabled,   // the row's enabled state
  raHidden,    // the row's hidden state
};
using enum TRowAspect;
using TRowAspects = TEnumSet<TRowAspect>;

/// What changed in the query as a whole.
enum class TQueryAspect : std::uint8_t {
  qaCaptions,      // the captions table
  qaSettings,      // SQL options and syntax, main table, name, description, user data, flags
  qaResultFields,  // the result fields or their settings
  qaParameters,    // the parameter list, a parameter's data, the parameter values
  qaStructure,     // another structure, or the structure itself changed
  qaActive,        // the active flag
};
using enum TQueryAspect;
using TQueryAspects = TEnumSet<TQueryAspect>;

/// What a view of a query (the query panel) is told, shaped like the
/// signals of a Qt item model. Rows are named by their bracket and their
/// positions in it; positions and row IDs in a notification are those of
/// the tree at the time of the call. Every call comes on the query's own
/// thread. An "about to" call comes while the tree is still as it was; the
/// others come once the change is complete, so the observer may read the
/// query then.
///
/// Inside BeginUpdate/EndUpdate the query tells no single rows: the first
/// change to the rows brings QueryAboutToBeReset, the outermost EndUpdate
/// QueryReset; row changes alone are told then, once per row, with their
/// aspects merged. Query aspects are merged and told at the end of each
/// operation (or update), after the row notifications.
class TQueryObserver {
 public:
  virtual ~TQueryObserver() = default;

  /// Any part of the tree may change: drop everything that points into it.
  virtual void QueryAboutToBeReset() {}
  /// The tree is new: read it again from the root.
  virtual void QueryReset() {}

  virtual void RowsAboutToBeInserted(const TFilterBracket& /*parent*/, int /*first*/, int /*last*/) {}
  /// The rows at first..last of the bracket are new, IDs included.
  virtual void RowsInserted(const TFilterBracket& /*parent*/, int /*first*/, int /*last*/) {}
  /// The rows at first..last of the bracket, with their subtrees, are about to be freed.
  virtual void RowsAboutToBeRemoved(const TFilterBracket& /*parent*/, int /*first*/, int /*last*/) {}
  virtual void RowsRemoved(const TFilterBracket& /*parent*/, int /*first*/, int /*last*/) {}
  /// The rows at first..last of `from` move so that the first of them is
  /// at `to` index `toIndex` once the move is done.
  virtual void RowsAboutToBeMoved(const TFilterBracket& /*from*/, int /*first*/, int /*last*/,
                                  const TFilterBracket& /*to*/, int /*toIndex*/) {}
  virtual void RowsMoved(const TFilterBracket& /*from*/, int /*first*/, int /*last*/,
                         const TFilterBracket& /*to*/, int /*toIndex*/) {}
  /// Rows that were in the tree before the change, the bracket's rows from
  /// `first` on with their subtrees, have new IDs.
  virtual void RowsRenumbered(const TFilterBracket& /*parent*/, int /*first*/) {}
  virtual void RowChanged(const TFilterRow& /*row*/, TRowAspects /*aspects*/) {}
  virtual void QueryChanged(TQueryAspects /*aspects*/) {}

  /// A build is about to read the rows: finish any edit in progress.
  virtual void CloseEditors() {}
};

}  // namespace ts4
