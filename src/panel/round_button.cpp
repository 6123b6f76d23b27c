#include "panel/round_button.h"

#include <cstdlib>

#include <QAccessibleWidget>
#include <QEnterEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace ts4 {
namespace {

constexpr QSize DefaultSize{25, 18};
constexpr int AutoSizeExtraWidth = 10;
constexpr int AutoSizeExtraHeight = 1;

// The caption stays readable on any fill, the pressed colour (black by
// default) included: of the palette's two text colours, the one further
// from the fill in lightness.
QColor TextColorOn(const QColor& fill, const QPalette& palette) {
  const QColor text = palette.color(QPalette::ButtonText);
  const QColor bright = palette.color(QPalette::BrightText);
  const auto distance = [&fill](const QColor& c) { return std::abs(c.lightness() - fill.lightness()); };
  return distance(bright) > distance(text) ? bright : text;
}

// A 1-pixel pen on a QRect covers one pixel more than the rectangle's width
// and height, so the outline of a w x h area is drawn on a (w-1) x (h-1) rect.
void DrawRounded(QPainter& painter, const QRect& area, int corner) {
  const qreal radius = corner / 2.0;
  painter.drawRoundedRect(area.adjusted(0, 0, -1, -1), radius, radius);
}

// Screen readers see a push button named by the caption (unless the
// accessible name says otherwise) that can be pressed.
class TRndBtnAccessible : public QAccessibleWidget {
 public:
  explicit TRndBtnAccessible(TWRndBtn* button) : QAccessibleWidget(button, QAccessible::Button) {}

  QString text(QAccessible::Text t) const override {
    if (t == QAccessible::Name && widget()->accessibleName().isEmpty()) return Button()->Caption();
    return QAccessibleWidget::text(t);
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.pressed = Button()->IsDown();
    return state;
  }

  QStringList actionNames() const override {
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
  }

  void doAction(const QString& name) override {
    if (name == pressAction())
      Button()->Click();
    else
      QAccessibleWidget::doAction(name);
  }

 private:
  TWRndBtn* Button() const { return static_cast<TWRndBtn*>(widget()); }
};

QAccessibleInterface* AccessibleButton(const QString& /*className*/, QObject* object) {
  auto* button = qobject_cast<TWRndBtn*>(object);
  return button != nullptr ? new TRndBtnAccessible(button) : nullptr;
}

}  // namespace

TRndBtnGeometry RndBtnGeometry(QSize size, bool rounded) {
  if (!rounded) return {0, QPoint(1, 1)};
  const int corner = size.height() * 3 / 4;
  return {corner, QPoint(2, corner / 4)};
}

QPoint RndBtnCaptionPos(QSize button, QSize text, bool shifted, int margin, Qt::LayoutDirection direction) {
  int x = (button.width() - text.width()) / 2;
  if (margin >= 0) x = direction == Qt::RightToLeft ? button.width() - text.width() - margin : margin;
  QPoint pos(x, (button.height() - text.height()) / 2);
  if (shifted) pos += QPoint(1, 1);
  return pos;
}

QSize RndBtnAutoSize(const QString& caption, const QFont& font) {
  const QFontMetrics metrics(font);
  return {metrics.horizontalAdvance(caption) + AutoSizeExtraWidth, metrics.height() + AutoSizeExtraHeight};
}

TWRndBtn::TWRndBtn(QWidget* parent) : QWidget(parent) {
  [[maybe_unused]] static const bool accessible = (QAccessible::installFactory(&AccessibleButton), true);
  resize(DefaultSize);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  // Every pixel is painted: the corners outside the outline in the
  // background colour, which the button inherits from its parent.
  setAttribute(Qt::WA_OpaquePaintEvent);
  // Moves without a button pressed reach mouseMoveEvent, for subclasses.
  setMouseTracking(true);
}

void TWRndBtn::SetCaption(const QString& caption) {
  if (caption == caption_) return;
  caption_ = caption;
  AdjustSize();
  update();
  if (accessibleName().isEmpty()) {
    QAccessibleEvent event(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
  }
  Q_EMIT CaptionChanged(caption_);
}

void TWRndBtn::SetAutoSize(bool autoSize) {
  if (autoSize == autoSize_) return;
  autoSize_ = autoSize;
  AdjustSize();
  updateGeometry();
  Q_EMIT AutoSizeChanged(autoSize_);
}

void TWRndBtn::SetAllowPress(bool allowPress) {
  if (allowPress == allowPress_) return;
  allowPress_ = allowPress;
  update();
  Q_EMIT AllowPressChanged(allowPress_);
}

void TWRndBtn::SetFlat(bool flat) {
  if (flat == flat_) return;
  flat_ = flat;
  update();
  Q_EMIT FlatChanged(flat_);
}

void TWRndBtn::SetRounded(bool rounded) {
  if (rounded == rounded_) return;
  rounded_ = rounded;
  update();
  Q_EMIT RoundedChanged(rounded_);
}

void TWRndBtn::SetOverColor(const QColor& color) {
  if (color == overColor_) return;
  overColor_ = color;
  update();
  Q_EMIT OverColorChanged(overColor_);
}

void TWRndBtn::SetPressedColor(const QColor& color) {
  if (color == pressedColor_) return;
  pressedColor_ = color;
  update();
  Q_EMIT PressedColorChanged(pressedColor_);
}

void TWRndBtn::SetMargin(int margin) {
  if (margin == margin_) return;
  margin_ = margin;
  update();
  Q_EMIT MarginChanged(margin_);
}

QSize TWRndBtn::sizeHint() const {
  return autoSize_ ? RndBtnAutoSize(caption_, font()) : DefaultSize;
}

void TWRndBtn::AdjustSize() {
  if (!autoSize_) return;
  resize(RndBtnAutoSize(caption_, font()));
  updateGeometry();
}

void TWRndBtn::Click() {
  if (isEnabled()) Q_EMIT clicked();
}

void TWRndBtn::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  // The palette's colour group follows the state: disabled, inactive window.
  QStyleOptionFocusRect option;
  option.initFrom(this);
  const QPalette& pal = option.palette;
  const QColor background = pal.color(backgroundRole());
  const QColor fill = down_ ? pressedColor_ : mouseOver_ ? overColor_ : background;
  const TRndBtnGeometry geometry = RndBtnGeometry(size(), rounded_);

  painter.fillRect(rect(), background);
  painter.setPen(fill);
  painter.setBrush(fill);
  DrawRounded(painter, rect(), geometry.Corner);

  if (!caption_.isEmpty()) {
    const QFontMetrics metrics = fontMetrics();
    const QSize text(metrics.horizontalAdvance(caption_), metrics.height());
    const QPoint pos = RndBtnCaptionPos(size(), text, allowPress_ && down_, margin_, layoutDirection());
    painter.setPen(isEnabled() ? TextColorOn(fill, pal) : pal.color(QPalette::ButtonText));
    painter.drawText(pos + QPoint(0, metrics.ascent()), caption_);
  }

  if (hasFocus()) {
    // Inside the bevel, where the outline does not cut its corners off.
    const QPoint inside = geometry.Inset + QPoint(1, 1);
    option.rect = rect().adjusted(inside.x(), inside.y(), -inside.x(), -inside.y());
    option.backgroundColor = fill;
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
  }

  painter.setBrush(Qt::NoBrush);
  if (!allowPress_ || (flat_ && !mouseOver_)) {
    painter.setPen(pal.color(QPalette::Dark));
    DrawRounded(painter, rect(), geometry.Corner);
    return;
  }
  // The bevel: one outline moved up-left, so that only its bottom and right
  // sides show, and one moved in by the inset, so that only its top and left
  // sides show. Raised is light at the top left; sunken swaps the pens.
  const QColor light = pal.color(QPalette::Light);
  const QColor dark = pal.color(QPalette::Dark);
  painter.setPen(down_ ? light : dark);
  DrawRounded(painter, rect().translated(-1, -1), geometry.Corner);
  painter.setPen(down_ ? dark : light);
  DrawRounded(painter, rect().translated(geometry.Inset + QPoint(1, 1)), geometry.Corner);
}

void TWRndBtn::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool activates = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
  if (!activates || (event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
    QWidget::keyPressEvent(event);  // ignores it, so that the parent gets it
    return;
  }
  // Held down, the key clicks once: a slot may open a menu.
  if (!event->isAutoRepeat()) Click();
}

void TWRndBtn::mousePressEvent(QMouseEvent* event) {
  // Accepted whatever the button, as the control takes its own clicks.
  if (event->button() != Qt::LeftButton || !isEnabled()) return;
  down_ = true;
  dragging_ = true;
  update();
}

void TWRndBtn::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !dragging_) return;
  const QPoint pos = event->position().toPoint();
  dragging_ = false;
  down_ = false;
  mouseOver_ = false;
  UpdateTracking(pos);
  // Repainted wherever the button comes up, or it would stay drawn pressed
  // after a release outside.
  update();
  // Last: a slot may open a menu, or delete the button.
  if (rect().contains(pos)) Q_EMIT clicked();
}

void TWRndBtn::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && isEnabled()) Q_EMIT doubleClicked();
  // The second press of a double click presses the button like the first.
  mousePressEvent(event);
}

void TWRndBtn::enterEvent(QEnterEvent* event) {
  mouseOver_ = true;
  update();
  QWidget::enterEvent(event);
}

void TWRndBtn::leaveEvent(QEvent* event) {
  mouseOver_ = false;
  // While the left button is held the look stays until it is released.
  if (!dragging_) update();
  QWidget::leaveEvent(event);
}

void TWRndBtn::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  switch (event->type()) {
    case QEvent::FontChange: AdjustSize(); break;
    case QEvent::LayoutDirectionChange: update(); break;
    // A disabled button gets no release: it must not come back stuck down.
    case QEvent::EnabledChange:
      if (!isEnabled()) ResetMouseState();
      break;
    default: break;
  }
}

// A flat button raises under the mouse again after a click.
void TWRndBtn::UpdateTracking(QPoint pos) {
  if (flat_) mouseOver_ = rect().contains(pos);
}

void TWRndBtn::ResetMouseState() {
  down_ = false;
  dragging_ = false;
  mouseOver_ = false;
  update();
}

}  // namespace ts4
