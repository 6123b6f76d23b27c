#pragma once

#include <QAccessible>
#include <QLabel>
#include <QString>
#include <functional>

#include "foundation/error.h"

namespace ts4 {

/// Errors of the drop-down labels, with their messages from the library's
/// string table.
class EDDLabelError : public EWTessalyError {
 public:
  using EWTessalyError::EWTessalyError;
};

/// A word that looks like an underlined link and, when clicked, drops down
/// an editor or a list in its place; closing it ("dropping up") with
/// acceptance makes the chosen input the label's value.
///
/// The base class leaves the drop-down to OnCustomDropDown: the handler gets
/// the value to change and an accept flag, and the label drops up at once.
/// Font and colour come from the parent, with the font underlined. A label
/// with an empty caption shows "_____" so that it can still be clicked.
/// Ctrl+click is the alt-click; a fixed label ignores every click.
///
/// From the keyboard, Space, Enter, F4 and Alt+Down drop the label down
/// (the same keys drop up a label left open without an editor); any other
/// key goes on to the parent. Focus that was in the editor or list comes
/// back to the label when it drops up. A fixed label can still be tabbed
/// to and read, but opens nothing.
///
/// Events that only notify are signals; those that hand something back
/// (the value, the accept flag, an image index) are std::function members.
class TDropDownLabel : public QLabel {
  Q_OBJECT
  Q_PROPERTY(QString Caption READ GetCaption WRITE SetCaption)
  Q_PROPERTY(QString Value READ Value WRITE SetValue NOTIFY valueChanged)
  Q_PROPERTY(bool Dropped READ Dropped)
  Q_PROPERTY(bool Fixed READ Fixed WRITE SetFixed)

 public:
  /// Before the label drops up: the pending input and the accept flag may be changed.
  using TBeforeDropUpEvent = std::function<void(TDropDownLabel& sender, QString& value, bool& accept)>;
  /// The image of an item group of a pop-up (-1: none).
  using TGetGroupImageIndexEvent = std::function<void(const QString& group, int& imageIndex)>;
  /// The image of an item of a pop-up (-1: none).
  using TGetItemImageIndexEvent =
      std::function<void(const QString& group, const QString& item, int& imageIndex)>;

  explicit TDropDownLabel(QWidget* parent = nullptr);
  ~TDropDownLabel() override;

  [[nodiscard]] const QString& Value() const { return value_; }
  /// Stores a different value and calls ValueChanged; an equal one changes nothing.
  void SetValue(const QString& value);

  /// Shows the text as it is ("&" is no accelerator); an empty text shows "_____".
  void SetCaption(const QString& caption);
  /// The text shown, "_____" for an empty caption.
  [[nodiscard]] QString GetCaption() const { return text(); }
  /// The caption as it is read aloud: empty for the "_____" of an empty caption.
  [[nodiscard]] QString SpokenCaption() const;

  [[nodiscard]] bool Dropped() const { return dropped_; }
  [[nodiscard]] bool Fixed() const { return fixed_; }
  /// A fixed label never drops down; it takes the focus from Tab only.
  void SetFixed(bool fixed);

  /// What screen readers announce it as: a button, which opens an editor or
  /// handler of its own; lists announce a combo box.
  [[nodiscard]] virtual QAccessible::Role AccessibleRole() const { return QAccessible::Button; }

  /// Opens the editor or list, unless the label is fixed.
  void DropDown();
  /// Closes the editor or list; with acceptance its input becomes the value.
  void DropUp(bool accept);
  [[nodiscard]] bool IsEditMode() const { return dropped_; }
  [[nodiscard]] bool GetEditMode() const { return dropped_; }
  /// True drops down, false closes an open editor without acceptance.
  void SetEditMode(bool on);

  /// The alt-click (Ctrl+click): altClicked, nothing else.
  void AltClick();
  void DoRightClick();

  TBeforeDropUpEvent BeforeDropUp;
  /// Drops the base label down: change the value and set the accept flag.
  TBeforeDropUpEvent OnCustomDropDown;
  TGetGroupImageIndexEvent OnGetGroupImageIndex;
  TGetItemImageIndexEvent OnGetItemImageIndex;

 signals:
  void beforeDropDown();
  void afterDropDown();
  void afterDropUp(bool accepted);
  void altClicked();
  void rightClicked();
  void valueChanged(const QString& value);

 protected:
  /// Copies what the open editor or list holds into PendingInput, before
  /// BeforeDropUp sees it; the base has nothing to copy.
  virtual void ReadInput() {}
  /// Moves the pending input into the value (when there is one).
  virtual void AcceptInput();
  /// Opens the editor or list at the label.
  virtual void ShowControl();
  /// Closes it.
  virtual void HideControl();
  /// Called when the value changed; the base shows it as the caption.
  virtual void ValueChanged();

  void DoBeforeDropUp(bool& accept);
  void DoAfterDropUp(bool accepted);
  [[nodiscard]] int DoGetGroupImageIndex(const QString& group) const;
  [[nodiscard]] int DoGetItemImageIndex(const QString& group, const QString& item) const;

  /// What the open editor or list holds, taken by AcceptInput.
  QString PendingInput;

  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void UpdateFixedLook();

  QString value_;
  bool dropped_ = false;
  bool fixed_ = false;
  bool pressed_ = false;
};

}  // namespace ts4
