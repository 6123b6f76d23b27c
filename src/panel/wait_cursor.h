#pragma once

namespace ts4 {

/// Makes the Qt SQL layer show the wait cursor while it waits for its
/// database (an import, the query of a value list), unless the application
/// has set a busy indicator of its own (SetBusyIndicator). Every query panel
/// calls it when it is made; an application that imports a structure before
/// it makes its first panel calls it itself, once its QApplication exists.
void InstallWaitCursor();

}  // namespace ts4
