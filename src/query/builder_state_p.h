#pragma once

#include "query/query_types.h"

namespace ts4 {

/// Sets a query's state for the time of an operation and puts the previous
/// state back when it ends, also by an error.
class TStateRestorer {
 public:
  TStateRestorer(TWBuilderState& state, TWBuilderState during) : state_(state), saved_(state) {
    state_ = during;
  }
  TStateRestorer(const TStateRestorer&) = delete;
  TStateRestorer& operator=(const TStateRestorer&) = delete;
  ~TStateRestorer() { state_ = saved_; }

 private:
  TWBuilderState& state_;
  TWBuilderState saved_;
};

}  // namespace ts4
