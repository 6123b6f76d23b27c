#include "qtsql/busy_indicator.h"

#include <utility>

#include "qtsql/busy_scope_p.h"

namespace ts4 {
namespace {

TBusyIndicator& ProcessIndicator() {
  static TBusyIndicator indicator;
  return indicator;
}

}  // namespace

void SetBusyIndicator(TBusyIndicator indicator) {
  ProcessIndicator() = std::move(indicator);
}

const TBusyIndicator& BusyIndicator() {
  return ProcessIndicator();
}

namespace detail {

TBusyScope::TBusyScope() {
  const TBusyIndicator& indicator = BusyIndicator();
  if (!indicator.Begin) return;
  indicator.Begin();
  // The End that matches this Begin, even if the indicator is replaced meanwhile.
  end_ = indicator.End;
}

TBusyScope::~TBusyScope() {
  if (end_) end_();
}

}  // namespace detail
}  // namespace ts4
