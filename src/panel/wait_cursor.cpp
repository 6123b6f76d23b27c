#include "panel/wait_cursor.h"

#include <QCursor>
#include <QGuiApplication>

#include "qtsql/busy_indicator.h"

namespace ts4 {

void InstallWaitCursor() {
  if (BusyIndicator().Begin) return;
  SetBusyIndicator({[] { QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor)); },
                    [] { QGuiApplication::restoreOverrideCursor(); }});
}

}  // namespace ts4
