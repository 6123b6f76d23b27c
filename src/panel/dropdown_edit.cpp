#include "panel/dropdown_edit.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <algorithm>

#include "foundation/messages.h"
#include "panel/edit_mask.h"
#include "panel/silent_edit.h"

namespace ts4 {
namespace {

// What the value types let through (numbers as SQL writes them: a point, no grouping).
QValidator* ValidatorFor(TDropDownCustomEdit::TValueType type, QObject* parent) {
  switch (type) {
    case TDropDownCustomEdit::vtInteger:
      return new QRegularExpressionValidator(QRegularExpression(QStringLiteral("-?\\d*")), parent);
    case TDropDownCustomEdit::vtFloat:
      return new QRegularExpressionValidator(QRegularExpression(QStringLiteral("-?\\d*\\.?\\d*")), parent);
    case TDropDownCustomEdit::vtString: break;
  }
  return nullptr;
}

// Editors are at least this many average characters wide, so that a short
// value can be replaced by a longer one without scrolling.
constexpr int MinimumEditorChars = 12;

}  // namespace

TDropDownCustomEdit::TDropDownCustomEdit(QWidget* parent) : TDropDownLabel(parent) {}

TDropDownCustomEdit::~TDropDownCustomEdit() {
  // An editor still open goes with the label, unheard: losing its focus
  // while it is deleted must not drop up a label that is going away.
  QWidget* editor = editor_;
  editor_ = nullptr;
  if (editor != nullptr) editor->disconnect(this);
  delete editor;
}

bool TDropDownCustomEdit::GetOption(int option) const {
  if (option == 1) return upperCase_;
  if (option == 2) return lowerCase_;
  throw EDDLabelError(gecGeneral, msg::UnknownEditOption, option);
}

void TDropDownCustomEdit::SetOption(int option, bool on) {
  if (option == 1)
    upperCase_ = on;
  else if (option == 2)
    lowerCase_ = on;
  else
    throw EDDLabelError(gecGeneral, msg::UnknownEditOption, option);
}

QString TDropDownCustomEdit::GetEditText() const {
  return editor_ != nullptr ? EditorText() : QString();
}

void TDropDownCustomEdit::SetEditText(const QString& text) {
  if (editor_ != nullptr) SetEditorText(text);
}

TSilentEdit* TDropDownCustomEdit::LineEditor() const {
  return qobject_cast<TSilentEdit*>(editor_.data());
}

QWidget* TDropDownCustomEdit::CreateEditor(QWidget* parent) {
  auto* edit = new TSilentEdit(parent);
  edit->setValidator(ValidatorFor(valueType_, edit));
  return edit;
}

QString TDropDownCustomEdit::EditorText() const {
  const TSilentEdit* edit = LineEditor();
  return edit != nullptr ? edit->text() : QString();
}

void TDropDownCustomEdit::SetEditorText(const QString& text) {
  if (TSilentEdit* edit = LineEditor()) edit->setText(text);
}

void TDropDownCustomEdit::ShowControl() {
  // The editor lies over the label, in the label's parent when it has one.
  QWidget* host = parentWidget() != nullptr ? parentWidget() : this;
  QWidget* editor = CreateEditor(host);
  editor_ = editor;
  editor->setFont(parentWidget() != nullptr ? parentWidget()->font() : font());
  SetEditorText(Value());
  const int width = std::max(
      {this->width(), fontMetrics().averageCharWidth() * MinimumEditorChars, editor->sizeHint().width()});
  const int height = editor->sizeHint().height();
  QRect place(host == this ? QPoint(0, 0) : pos(), QSize(width, height));
  place.moveTop(place.top() + (this->height() - height) / 2);
  if (layoutDirection() == Qt::RightToLeft && host != this) place.moveRight(geometry().right());
  editor->setGeometry(place);
  if (TSilentEdit* edit = LineEditor()) {
    edit->SetCaseConversion(upperCase_, lowerCase_);
    edit->selectAll();
    connect(edit, &TSilentEdit::enterPressed, this, [this] { DropUp(true); });
    connect(edit, &TSilentEdit::escapePressed, this, [this] { DropUp(false); });
    connect(edit, &TSilentEdit::exited, this, [this] { DropUp(true); });
    connect(edit, &TSilentEdit::doubleClicked, this, &TDropDownCustomEdit::EditDblClick);
  } else {
    // Other editors report their keys and focus through this filter.
    editor->installEventFilter(this);
    for (QWidget* child : editor->findChildren<QWidget*>()) child->installEventFilter(this);
  }
  editor->show();
  editor->raise();
  editor->setFocus(Qt::OtherFocusReason);
}

void TDropDownCustomEdit::HideControl() {
  if (editor_ == nullptr) return;
  QWidget* editor = editor_;
  editor_ = nullptr;
  editor->hide();
  editor->deleteLater();  // it may be inside one of its own events
}

void TDropDownCustomEdit::ReadInput() {
  PendingInput = GetEditText();
}

void TDropDownCustomEdit::EditDblClick() {
  if (!OnEditDblClick || editor_ == nullptr) return;
  QString value = GetEditText();
  OnEditDblClick(*this, value);
  SetEditText(value);
}

bool TDropDownCustomEdit::eventFilter(QObject* watched, QEvent* event) {
  if (editor_ == nullptr) return TDropDownLabel::eventFilter(watched, event);
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
      DropUp(key != Qt::Key_Escape);
      return true;
    }
  } else if (event->type() == QEvent::FocusOut) {
    // Focus that moves to the editor's own parts or pop-ups (a calendar) has not left it.
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    QWidget* focused = QApplication::focusWidget();
    const bool inside = focused != nullptr && (focused == editor_ || editor_->isAncestorOf(focused));
    if (!inside && reason != Qt::PopupFocusReason && QApplication::activePopupWidget() == nullptr)
      DropUp(true);
  }
  return TDropDownLabel::eventFilter(watched, event);
}

QWidget* TDropDownMaskEdit::CreateEditor(QWidget* parent) {
  auto* edit = static_cast<TSilentEdit*>(TDropDownCustomEdit::CreateEditor(parent));
  edit->setValidator(nullptr);  // the mask says what may be typed
  edit->setInputMask(QString::fromStdString(InputMaskFromEditMask(editMask_.toStdString()).Mask));
  return edit;
}

QString TDropDownMaskEdit::EditorText() const {
  const QString text = TDropDownCustomEdit::EditorText();
  if (useFormattedValue_ || editMask_.isEmpty()) return text;
  const TQtInputMask mask = InputMaskFromEditMask(editMask_.toStdString());
  return QString::fromStdString(WithoutMaskLiterals(mask.Mask, text.toStdString()));
}

}  // namespace ts4
