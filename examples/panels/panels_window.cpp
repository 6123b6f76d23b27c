#include "panels_window.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "common/statement_text.h"
#include "panel/query_panel.h"

namespace ts4panels {
namespace {

struct TLook {
  QString Caption;
  ts4::TQPStyle Style;
  Qt::LayoutDirection Direction;
};

QLabel* NewCaption(const QString& text) {
  auto* caption = new QLabel(text);
  QFont bold = caption->font();
  bold.setBold(true);
  caption->setFont(bold);
  return caption;
}

}  // namespace

TPanelsWindow::TPanelsWindow(ts4::TWCustomDBStructure& structure, const QString& queryFile, QWidget* parent)
    : QWidget(parent) {
  setWindowTitle(QStringLiteral("ts4 query panels"));
  const std::array<TLook, 3> looks = {{
      {QStringLiteral("Groups"), ts4::psGroups, Qt::LeftToRight},
      {QStringLiteral("And/or"), ts4::psAndOr, Qt::LeftToRight},
      {QStringLiteral("Right to left"), ts4::psGroups, Qt::RightToLeft},
  }};
  auto* column = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  column->addLayout(grid, 3);
  for (std::size_t i = 0; i < looks.size(); ++i) {
    const int at = static_cast<int>(i);
    grid->addWidget(NewCaption(looks[i].Caption), 0, at);
    // In the window before loading, so that the window frees it if the load throws.
    auto* panel = new ts4::TWQueryPanel(this);
    grid->addWidget(panel, 1, at);
    panel->Appearance()->SetStyle(looks[i].Style);
    panel->setLayoutDirection(looks[i].Direction);
    panel->SetDbStruct(&structure);
    panel->LoadFromFile(queryFile);
    grid->setColumnStretch(at, 1);
    panels_[i] = panel;
  }

  column->addWidget(NewCaption(QStringLiteral("SQL of the first panel")));
  sql_ = new QPlainTextEdit;
  sql_->setReadOnly(true);
  sql_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  sql_->setLineWrapMode(QPlainTextEdit::NoWrap);
  column->addWidget(sql_, 2);

  connect(panels_[0], &ts4::TWQueryPanel::OnChange, this, &TPanelsWindow::ShowSQL);
  ShowSQL();
  resize(1260, 820);
}

void TPanelsWindow::FocusFirstPanel() {
  panels_[0]->setFocus(Qt::OtherFocusReason);
  panels_[0]->SetCurrentRowNum(1);
}

void TPanelsWindow::ShowSQL() {
  sql_->setPlainText(ts4examples::StatementText(*panels_[0]));
}

}  // namespace ts4panels
