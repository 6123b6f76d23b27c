#pragma once

#include <functional>

namespace ts4::detail {

/// Shows the process's busy indicator for as long as it lives; ends it
/// however the scope is left.
class TBusyScope {
 public:
  TBusyScope();
  ~TBusyScope();
  TBusyScope(const TBusyScope&) = delete;
  TBusyScope& operator=(const TBusyScope&) = delete;

 private:
  std::function<void()> end_;
};

}  // namespace ts4::detail
