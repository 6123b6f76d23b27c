#pragma once

#include <functional>

namespace ts4 {

/// What the application shows while the Qt SQL layer waits for its
/// database: an import of a structure, a query that fills a value list.
/// Begin runs before the work and End after it, however the work ends; End
/// runs only when Begin did and must not throw. Calls may nest.
struct TBusyIndicator {
  std::function<void()> Begin;
  std::function<void()> End;
};

/// Sets the process's busy indicator; an empty one (the default) shows
/// nothing. Set it from the thread that uses ts4, while no database work runs.
/// The widgets layer sets a wait cursor (InstallWaitCursor).
void SetBusyIndicator(TBusyIndicator indicator);

/// The process's busy indicator.
[[nodiscard]] const TBusyIndicator& BusyIndicator();

}  // namespace ts4
