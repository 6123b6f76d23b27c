#include "panel/dropdown_label.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace ts4 {
namespace {

// What an empty caption shows, so that the label can still be clicked.
const QString EmptyCaption = QStringLiteral("_____");

// The keys that open a combo box: Space, Enter, F4 and Alt+Down.
bool IsDropDownKey(const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
  switch (event.key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F4: return modifiers == Qt::NoModifier;
    case Qt::Key_Down: return modifiers == Qt::AltModifier;
    default: return false;
  }
}

void NotifyExpandedChange(TDropDownLabel* label) {
  QAccessible::State changed;
  changed.expanded = true;
  changed.collapsed = true;
  QAccessibleStateChangeEvent event(label, changed);
  QAccessible::updateAccessibility(&event);
}

// Screen readers get the label as AccessibleRole says, named by its caption
// (none for the blank one), valued by its value; pressing it drops it down.
// The role is asked each time: an interface made while a subclass is still
// being constructed must not keep the base's role.
class TDropDownLabelAccessible : public QAccessibleWidget {
 public:
  explicit TDropDownLabelAccessible(TDropDownLabel* label) : QAccessibleWidget(label) {}

  QAccessible::Role role() const override { return Label()->AccessibleRole(); }

  QString text(QAccessible::Text t) const override {
    if (t == QAccessible::Value) return Label()->Value();
    if (t != QAccessible::Name || !widget()->accessibleName().isEmpty()) return QAccessibleWidget::text(t);
    return Label()->SpokenCaption();
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = Label()->Fixed();
    state.expandable = !Label()->Fixed();
    state.expanded = Label()->Dropped();
    state.collapsed = !Label()->Fixed() && !Label()->Dropped();
    return state;
  }

  QStringList actionNames() const override {
    const QStringList names = QAccessibleWidget::actionNames();
    return CanDropDown() ? QStringList{pressAction(), showMenuAction()} + names : names;
  }

  void doAction(const QString& name) override {
    if (CanDropDown() && (name == pressAction() || name == showMenuAction()))
      Label()->DropDown();
    else
      QAccessibleWidget::doAction(name);
  }

 private:
  TDropDownLabel* Label() const { return static_cast<TDropDownLabel*>(widget()); }
  bool CanDropDown() const { return widget()->isEnabled() && !Label()->Fixed() && !Label()->Dropped(); }
};

QAccessibleInterface* AccessibleLabel(const QString& /*className*/, QObject* object) {
  auto* label = qobject_cast<TDropDownLabel*>(object);
  return label != nullptr ? new TDropDownLabelAccessible(label) : nullptr;
}

void InstallAccessibleFactory() {
  [[maybe_unused]] static const bool installed = (QAccessible::installFactory(&AccessibleLabel), true);
}

}  // namespace

TDropDownLabel::TDropDownLabel(QWidget* parent) : QLabel(parent) {
  InstallAccessibleFactory();
  // Plain text and no buddy: an "&" is shown as it is, never as an accelerator.
  setTextFormat(Qt::PlainText);
  QFont underlined = font();
  underlined.setUnderline(true);
  setFont(underlined);
  setText(EmptyCaption);
  UpdateFixedLook();
}

TDropDownLabel::~TDropDownLabel() = default;

QString TDropDownLabel::SpokenCaption() const {
  return text() == EmptyCaption ? QString() : text();
}

void TDropDownLabel::SetValue(const QString& value) {
  if (value == value_) return;
  value_ = value;
  ValueChanged();
  // QLabel announces a new caption (the name) itself; the value is ours to announce.
  QAccessibleValueChangeEvent event(this, value_);
  QAccessible::updateAccessibility(&event);
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
  if (fixed == fixed_) return;
  fixed_ = fixed;
  UpdateFixedLook();
  QAccessible::State changed;
  changed.readOnly = true;
  changed.expandable = true;
  QAccessibleStateChangeEvent event(this, changed);
  QAccessible::updateAccessibility(&event);
}

void TDropDownLabel::UpdateFixedLook() {
  setCursor(fixed_ ? Qt::ArrowCursor : Qt::PointingHandCursor);
  // A fixed label ignores clicks, so a click does not take the focus either.
  setFocusPolicy(fixed_ ? Qt::TabFocus : Qt::StrongFocus);
}

void TDropDownLabel::DropDown() {
  if (fixed_ || dropped_) return;
  emit beforeDropDown();
  dropped_ = true;
  PendingInput.clear();
  NotifyExpandedChange(this);
  ShowControl();
  if (dropped_) emit afterDropDown();
}

void TDropDownLabel::DropUp(bool accept) {
  if (!dropped_) return;
  ReadInput();
  DoBeforeDropUp(accept);
  if (accept) AcceptInput();
  dropped_ = false;  // first, so that an editor losing its focus while it closes drops up nothing
  // The focus the editor or list had comes back here, where the keyboard
  // left off; focus that went elsewhere (and so closed it) stays there.
  const QPointer<QWidget> focused = QApplication::focusWidget();
  HideControl();
  if (focused != nullptr && focused != this && !focused->isVisible() && isVisible())
    setFocus(Qt::OtherFocusReason);
  NotifyExpandedChange(this);
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

void TDropDownLabel::keyPressEvent(QKeyEvent* event) {
  if (fixed_ || !IsDropDownKey(*event)) {
    QLabel::keyPressEvent(event);  // ignores it, so that the parent gets it
    return;
  }
  // A second press drops up a label still open, as a second click does.
  if (dropped_)
    DropUp(true);
  else
    DropDown();
}

void TDropDownLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!hasFocus()) return;
  QStyleOptionFocusRect option;
  option.initFrom(this);
  option.backgroundColor = palette().color(backgroundRole());
  QPainter painter(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

}  // namespace ts4
