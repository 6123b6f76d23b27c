// The dialog that edits the SQL text of a sub-query value.
#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "panel/qt_strings_p.h"
#include "panel/query_panel.h"

namespace ts4 {

bool TWQueryPanel::RunSubQueryEditor(TFilterCond& condition) {
  QDialog dialog(this);
  dialog.setObjectName(QStringLiteral("SubQueryEditor"));
  dialog.setWindowTitle(GetTitle(QStringLiteral("ttlSubQueryCaption")));
  auto* layout = new QVBoxLayout(&dialog);
  auto* caption = new QLabel(GetTitle(QStringLiteral("ttlResultField")), &dialog);
  auto* text = new QPlainTextEdit(&dialog);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text->setPlainText(detail::ToQ(condition.SubQuery().Text()));
  caption->setBuddy(text);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  buttons->button(QDialogButtonBox::Ok)->setText(GetTitle(QStringLiteral("ttlOkBtnCaption")));
  buttons->button(QDialogButtonBox::Cancel)->setText(GetTitle(QStringLiteral("ttlCancelBtnCaption")));
  connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  layout->addWidget(caption);
  layout->addWidget(text);
  layout->addWidget(buttons);
  dialog.resize(480, 280);
  if (dialog.exec() != QDialog::Accepted) return false;
  TStrings sql;
  sql.SetText(detail::FromQ(text->toPlainText()));
  condition.SetSubQuery(sql);
  return true;
}

}  // namespace ts4
