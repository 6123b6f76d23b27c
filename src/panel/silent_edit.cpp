#include "panel/silent_edit.h"

#include <QKeyEvent>

namespace ts4 {

void TSilentEdit::SetCaseConversion(bool upper, bool lower) {
  upper_ = upper;
  lower_ = lower;
}

void TSilentEdit::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      event->accept();
      emit enterPressed();
      return;
    case Qt::Key_Escape:
      event->accept();
      emit escapePressed();
      return;
    default: break;
  }
  const QString typed = event->text();
  if ((upper_ || lower_) && !typed.isEmpty() && typed.front().isLetter()) {
    // The same key with its text converted, so that validators and masks see the converted text.
    QKeyEvent converted(event->type(), event->key(), event->modifiers(),
                        upper_ ? typed.toUpper() : typed.toLower(), event->isAutoRepeat(),
                        static_cast<quint16>(event->count()));
    QLineEdit::keyPressEvent(&converted);
    event->setAccepted(converted.isAccepted());
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void TSilentEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  // A pop-up of the edit's own (its context menu) is no leaving.
  if (event->reason() != Qt::PopupFocusReason) emit exited();
}

void TSilentEdit::mouseDoubleClickEvent(QMouseEvent* event) {
  QLineEdit::mouseDoubleClickEvent(event);
  emit doubleClicked();
}

}  // namespace ts4
