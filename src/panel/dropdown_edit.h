#pragma once

#include <QPointer>
#include <QString>
#include <functional>

#include "panel/dropdown_label.h"

namespace ts4 {

class TSilentEdit;

/// A label that drops down an editor in its own place: Enter accepts,
/// Escape cancels, leaving the editor accepts. The editor opens with the
/// label's value and, when accepted, its text becomes the value (an empty
/// text leaves the value as it was).
class TDropDownCustomEdit : public TDropDownLabel {
  Q_OBJECT
  Q_PROPERTY(bool AutoUpperCase READ AutoUpperCase WRITE SetAutoUpperCase)
  Q_PROPERTY(bool AutoLowerCase READ AutoLowerCase WRITE SetAutoLowerCase)
  Q_PROPERTY(TValueType ValueType READ ValueType WRITE SetValueType)

 public:
  /// What may be typed: digits with a sign, a number with a decimal point, anything.
  enum TValueType { vtInteger, vtFloat, vtString };
  Q_ENUM(TValueType)
  /// A double click in the editor may change its text.
  using TChangeValueEvent = std::function<void(TDropDownLabel& sender, QString& value)>;

  explicit TDropDownCustomEdit(QWidget* parent = nullptr);
  ~TDropDownCustomEdit() override;

  /// Option 1 is AutoUpperCase, option 2 AutoLowerCase; another number raises EDDLabelError.
  [[nodiscard]] bool GetOption(int option) const;
  void SetOption(int option, bool on);
  [[nodiscard]] bool AutoUpperCase() const { return GetOption(1); }
  void SetAutoUpperCase(bool on) { SetOption(1, on); }
  [[nodiscard]] bool AutoLowerCase() const { return GetOption(2); }
  void SetAutoLowerCase(bool on) { SetOption(2, on); }
  [[nodiscard]] TValueType ValueType() const { return valueType_; }
  void SetValueType(TValueType type) { valueType_ = type; }

  /// The open editor's text (empty when closed).
  [[nodiscard]] QString GetEditText() const;
  void SetEditText(const QString& text);
  /// The open editor, or null.
  [[nodiscard]] QWidget* Editor() const { return editor_; }

  void EditDblClick();
  TChangeValueEvent OnEditDblClick;

 protected:
  /// A new editor, a child of `parent`, not yet shown.
  virtual QWidget* CreateEditor(QWidget* parent);
  [[nodiscard]] virtual QString EditorText() const;
  virtual void SetEditorText(const QString& text);
  /// The open editor as a line edit, or null (the date and time editor is none).
  [[nodiscard]] TSilentEdit* LineEditor() const;

  void ShowControl() override;
  void HideControl() override;
  void ReadInput() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPointer<QWidget> editor_;
  bool upperCase_ = false;
  bool lowerCase_ = false;
  TValueType valueType_ = vtString;
};

/// The plain single-line editor.
class TDropDownEdit : public TDropDownCustomEdit {
  Q_OBJECT

 public:
  using TDropDownCustomEdit::TDropDownCustomEdit;
};

/// An editor with an input mask. EditMask is written as saved structures
/// hold it ("!99/99/0000;1;_", see InputMaskFromEditMask). With
/// UseFormattedValue the value is the text as the mask shows it
/// ("24/12/2026"), else only what was typed ("24122026").
class TDropDownMaskEdit : public TDropDownCustomEdit {
  Q_OBJECT
  Q_PROPERTY(QString EditMask READ EditMask WRITE SetEditMask)
  Q_PROPERTY(bool UseFormattedValue READ UseFormattedValue WRITE SetUseFormattedValue)

 public:
  using TDropDownCustomEdit::TDropDownCustomEdit;

  [[nodiscard]] const QString& EditMask() const { return editMask_; }
  void SetEditMask(const QString& mask) { editMask_ = mask; }
  [[nodiscard]] bool UseFormattedValue() const { return useFormattedValue_; }
  void SetUseFormattedValue(bool on) { useFormattedValue_ = on; }

 protected:
  QWidget* CreateEditor(QWidget* parent) override;
  [[nodiscard]] QString EditorText() const override;

 private:
  QString editMask_;
  bool useFormattedValue_ = false;
};

}  // namespace ts4
