#include "panel/dropdown_label.h"

#include <QMouseEvent>

namespace ts4 {
namespace {

// What an empty caption shows, so that the label can still be clicked.
const QString EmptyCaption = QStringLiteral("_____");

}  // namespace

TDropDownLabel::TDropDownLabel(QWidget* parent) : QLabel(parent) {
  // Plain text and no buddy: an "&" is shown as it is, never as an accelerator.
  setTextFormat(Qt::PlainText);
  QFont underlined = font();
  underlined.setUnderline(true);
  setFont(underlined);
  setText(EmptyCaption);
  UpdateCursor();
}

TDropDownLabel::~TDropDownLabel() = default;

void TDropDownLabel::SetValue(const QString& value) {
  if (value == value_) return;
  value_ = value;
  ValueChanged();
  emit valueChanged(value_);
}

void TDropDownLabel::ValueChanged() {
  SetCaption(value_);
}

void TDropDownLabel::SetCaption(const QString& caption) {
  setText(caption.isEmpty() ? EmptyCaption : caption);
  adjustSize();
}

void TDropDownLabel::SetFixed(bool fixed) {
  fixed_ = fixed;
  UpdateCursor();
}

void TDropDownLabel::UpdateCursor() {
  setCursor(fixed_ ? Qt::ArrowCursor : Qt::PointingHandCursor);
}

void TDropDownLabel::DropDown() {
  if (fixed_ || dropped_) return;
  emit beforeDropDown();
  dropped_ = true;
  PendingInput.clear();
  ShowControl();
  if (dropped_) emit afterDropDown();
}

void TDropDownLabel::DropUp(bool accept) {
  if (!dropped_) return;
  ReadInput();
  DoBeforeDropUp(accept);
  if (accept) AcceptInput();
  dropped_ = false;  // first, so that an editor losing its focus while it closes drops up nothing
  HideControl();
  DoAfterDropUp(accept);
}

void TDropDownLabel::SetEditMode(bool on) {
  if (on)
    DropDown();
  else
    DropUp(false);
}

void TDropDownLabel::AcceptInput() {
  if (!PendingInput.isEmpty()) SetValue(PendingInput);
}

void TDropDownLabel::ShowControl() {
  if (!OnCustomDropDown) return;
  QString value = value_;
  bool accept = false;
  OnCustomDropDown(*this, value, accept);
  PendingInput = value;
  DropUp(accept);
}

void TDropDownLabel::HideControl() {}

void TDropDownLabel::DoBeforeDropUp(bool& accept) {
  if (BeforeDropUp) BeforeDropUp(*this, PendingInput, accept);
}

void TDropDownLabel::DoAfterDropUp(bool accepted) {
  emit afterDropUp(accepted);
}

int TDropDownLabel::DoGetGroupImageIndex(const QString& group) const {
  int index = -1;
  if (OnGetGroupImageIndex) OnGetGroupImageIndex(group, index);
  return index;
}

int TDropDownLabel::DoGetItemImageIndex(const QString& group, const QString& item) const {
  int index = -1;
  if (OnGetItemImageIndex) OnGetItemImageIndex(group, item, index);
  return index;
}

void TDropDownLabel::AltClick() {
  emit altClicked();
}

void TDropDownLabel::DoRightClick() {
  emit rightClicked();
}

void TDropDownLabel::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->button() == Qt::LeftButton;
  QLabel::mousePressEvent(event);
}

void TDropDownLabel::mouseReleaseEvent(QMouseEvent* event) {
  QLabel::mouseReleaseEvent(event);
  const bool inside = rect().contains(event->position().toPoint());
  if (event->button() == Qt::RightButton) {
    if (inside && !fixed_) DoRightClick();
    return;
  }
  if (event->button() != Qt::LeftButton || !pressed_) return;
  pressed_ = false;
  if (!inside || fixed_) return;
  if (event->modifiers().testFlag(Qt::ControlModifier)) {
    AltClick();
  } else if (dropped_) {
    DropUp(true);
  } else {
    DropDown();
  }
}

}  // namespace ts4
