#include "panel/dropdown_datetime.h"

#include <QDateEdit>
#include <QTimeEdit>

namespace ts4 {
namespace {

const QString DateFormat = QStringLiteral("yyyy-MM-dd");
const QString TimeFormat = QStringLiteral("HH:mm:ss");

}  // namespace

QWidget* TDropDownDateTimeEdit::CreateEditor(QWidget* parent) {
  if (kind_ == ekTime) {
    auto* edit = new QTimeEdit(parent);
    edit->setDisplayFormat(TimeFormat);
    return edit;
  }
  auto* edit = new QDateEdit(parent);
  edit->setDisplayFormat(DateFormat);
  edit->setCalendarPopup(true);
  return edit;
}

QString TDropDownDateTimeEdit::EditorText() const {
  const auto* edit = qobject_cast<const QDateTimeEdit*>(Editor());
  if (edit == nullptr) return {};
  return kind_ == ekTime ? edit->time().toString(TimeFormat) : edit->date().toString(DateFormat);
}

void TDropDownDateTimeEdit::SetEditorText(const QString& text) {
  auto* edit = qobject_cast<QDateTimeEdit*>(Editor());
  if (edit == nullptr) return;
  if (kind_ == ekTime) {
    const QTime time = QTime::fromString(text, Qt::ISODate);
    edit->setTime(time.isValid() ? time : QTime(0, 0));
  } else {
    const QDate date = QDate::fromString(text, Qt::ISODate);
    edit->setDate(date.isValid() ? date : QDate::currentDate());
  }
}

}  // namespace ts4
