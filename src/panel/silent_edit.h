#pragma once

#include <QLineEdit>

namespace ts4 {

/// A line edit that keeps Enter and Escape to itself, instead of passing
/// them on to a dialog's default or cancel button, and reports them and the
/// loss of its focus.
class TSilentEdit : public QLineEdit {
  Q_OBJECT

 public:
  using QLineEdit::QLineEdit;

  /// Text typed from now on is turned into capitals (upper) or small letters (lower).
  void SetCaseConversion(bool upper, bool lower);

 signals:
  void enterPressed();
  void escapePressed();
  void exited();
  void doubleClicked();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  bool upper_ = false;
  bool lower_ = false;
};

}  // namespace ts4
