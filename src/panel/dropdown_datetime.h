#pragma once

#include "panel/dropdown_edit.h"

namespace ts4 {

/// A date or a time picked in place: a date editor with a calendar, or a
/// time editor. Values are ISO text, "2026-11-22" or "14:30:00"; a value
/// that is no such text opens the editor on today or midnight.
class TDropDownDateTimeEdit : public TDropDownCustomEdit {
  Q_OBJECT
  Q_PROPERTY(TDateTimeEditKind Kind READ Kind WRITE SetKind)

 public:
  enum TDateTimeEditKind { ekTime, ekDate };
  Q_ENUM(TDateTimeEditKind)

  using TDropDownCustomEdit::TDropDownCustomEdit;

  [[nodiscard]] TDateTimeEditKind Kind() const { return kind_; }
  void SetKind(TDateTimeEditKind kind) { kind_ = kind; }

 protected:
  QWidget* CreateEditor(QWidget* parent) override;
  [[nodiscard]] QString EditorText() const override;
  void SetEditorText(const QString& text) override;

 private:
  TDateTimeEditKind kind_ = ekDate;
};

}  // namespace ts4
