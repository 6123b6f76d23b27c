#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>

#include "qtsql/wait_cursor_p.h"

namespace ts4::detail {

TWaitCursor::TWaitCursor() : shown_(qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr) {
  if (shown_) QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

TWaitCursor::~TWaitCursor() {
  if (shown_) QGuiApplication::restoreOverrideCursor();
}

}  // namespace ts4::detail
