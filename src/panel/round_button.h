#pragma once

#include <QColor>
#include <QPoint>
#include <QSize>
#include <QString>
#include <QWidget>

class QEnterEvent;
class QKeyEvent;
class QMouseEvent;
class QPaintEvent;

namespace ts4 {

/// Where the rounded outline of a button of a given size bends and how far
/// its raised or sunken bevel reaches in.
struct TRndBtnGeometry {
  int Corner = 0;  // width and height of the ellipse that rounds each corner
  QPoint Inset;    // offset of the bevel's second outline, less one pixel

  friend bool operator==(const TRndBtnGeometry&, const TRndBtnGeometry&) = default;
};

/// The corner size and bevel inset of a button of `size`: three quarters of
/// the height and a quarter of that when `rounded`, else square with (1, 1).
[[nodiscard]] TRndBtnGeometry RndBtnGeometry(QSize size, bool rounded);

/// Top-left point of a caption of size `text` in a button of size `button`:
/// centred when `margin` is negative, else `margin` pixels from the leading
/// edge; one pixel right and down more when `shifted` (pressed).
[[nodiscard]] QPoint RndBtnCaptionPos(QSize button, QSize text, bool shifted, int margin = -1,
                                      Qt::LayoutDirection direction = Qt::LeftToRight);

/// The size that fits `caption` in `font`: its width plus 10, its height plus 1.
[[nodiscard]] QSize RndBtnAutoSize(const QString& caption, const QFont& font);

/// A small button with a rounded outline that takes its parent's colour, fills
/// with its own colours while the mouse is over it and while it is pressed, and
/// (when flat) raises its bevel only under the mouse.
///
/// Font, enabled state, visibility and tool tip are QWidget's own; the fill
/// outside the hover and pressed states is the palette's background role,
/// which a child inherits from its parent. Outline, bevel and caption take
/// the palette's colours for the widget's state; with the keyboard focus the
/// style's focus frame shows inside the bevel, and Space or Enter click.
/// Screen readers see a button named by the caption.
class TWRndBtn : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QString Caption READ Caption WRITE SetCaption NOTIFY CaptionChanged)
  Q_PROPERTY(bool AutoSize READ AutoSize WRITE SetAutoSize NOTIFY AutoSizeChanged)
  Q_PROPERTY(bool AllowPress READ AllowPress WRITE SetAllowPress NOTIFY AllowPressChanged)
  Q_PROPERTY(bool Flat READ Flat WRITE SetFlat NOTIFY FlatChanged)
  Q_PROPERTY(bool Rounded READ Rounded WRITE SetRounded NOTIFY RoundedChanged)
  Q_PROPERTY(QColor OverColor READ OverColor WRITE SetOverColor NOTIFY OverColorChanged)
  Q_PROPERTY(QColor PressedColor READ PressedColor WRITE SetPressedColor NOTIFY PressedColorChanged)
  Q_PROPERTY(int Margin READ Margin WRITE SetMargin NOTIFY MarginChanged)

 public:
  explicit TWRndBtn(QWidget* parent = nullptr);

  [[nodiscard]] QString Caption() const { return caption_; }
  void SetCaption(const QString& caption);
  [[nodiscard]] bool AutoSize() const { return autoSize_; }
  void SetAutoSize(bool autoSize);
  [[nodiscard]] bool AllowPress() const { return allowPress_; }
  void SetAllowPress(bool allowPress);
  [[nodiscard]] bool Flat() const { return flat_; }
  void SetFlat(bool flat);
  [[nodiscard]] bool Rounded() const { return rounded_; }
  void SetRounded(bool rounded);
  [[nodiscard]] QColor OverColor() const { return overColor_; }
  void SetOverColor(const QColor& color);
  [[nodiscard]] QColor PressedColor() const { return pressedColor_; }
  void SetPressedColor(const QColor& color);
  /// Distance of the caption from the leading edge; negative centres it.
  [[nodiscard]] int Margin() const { return margin_; }
  void SetMargin(int margin);

  /// The left button went down on the button and has not been released.
  [[nodiscard]] bool IsDown() const { return down_; }
  /// The mouse is over the button (as far as the button has been told).
  [[nodiscard]] bool IsMouseOver() const { return mouseOver_; }

  [[nodiscard]] QSize sizeHint() const override;

  /// Emits clicked() when the button is enabled, as a click on it would.
  void Click();

 Q_SIGNALS:
  void clicked();
  void doubleClicked();

  void CaptionChanged(const QString& caption);
  void AutoSizeChanged(bool autoSize);
  void AllowPressChanged(bool allowPress);
  void FlatChanged(bool flat);
  void RoundedChanged(bool rounded);
  void OverColorChanged(const QColor& color);
  void PressedColorChanged(const QColor& color);
  void MarginChanged(int margin);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void AdjustSize();
  void UpdateTracking(QPoint pos);
  void ResetMouseState();

  QString caption_;
  bool autoSize_ = false;
  bool allowPress_ = false;
  bool flat_ = true;
  bool rounded_ = true;
  QColor overColor_{192, 192, 192};
  QColor pressedColor_{Qt::black};
  int margin_ = -1;

  bool down_ = false;
  bool mouseOver_ = false;
  bool dragging_ = false;
};

}  // namespace ts4
