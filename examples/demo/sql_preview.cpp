#include "sql_preview.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>
#include <array>

#include "common/statement_text.h"
#include "panel/query_panel.h"

namespace ts4demo {
namespace {

struct TNamed {
  const char* Name;
  const char* Meaning;
};

// In the order of the enumerations.
constexpr std::array<TNamed, 3> Syntaxes = {{
    {"ssSQL1", "tables listed with commas, joins in WHERE"},
    {"ssSQL2", "JOIN ... ON"},
    {"ssOracle", "joins in WHERE, outer joins marked (+)"},
}};
constexpr std::array<TNamed, 6> Options = {{
    {"soASCIIRFields", "aliases with non-ASCII characters become C1, C2 ..."},
    {"soSelectDistinct", "SELECT DISTINCT"},
    {"soQuoteAliases", "aliases in quotes"},
    {"soBracketJoins", "JOINs nested in parentheses"},
    {"soBracketConditions", "every condition in parentheses"},
    {"soSortByNames", "ORDER BY expressions instead of positions"},
}};

}  // namespace

TSqlPreview::TSqlPreview(ts4::TWQueryPanel& panel, QWidget* parent)
    : QWidget(parent),
      panel_(&panel),
      syntax_(new QComboBox),
      options_(new QToolButton),
      text_(new QPlainTextEdit) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  auto* bar = new QHBoxLayout;
  column->addLayout(bar);
  auto* caption = new QLabel(tr("&Syntax:"));
  caption->setBuddy(syntax_);
  bar->addWidget(caption);
  for (const TNamed& syntax : Syntaxes)
    syntax_->addItem(
        QStringLiteral("%1 (%2)").arg(QLatin1String(syntax.Name), QLatin1String(syntax.Meaning)));
  bar->addWidget(syntax_);
  connect(syntax_, &QComboBox::activated, this, [this](int index) { panel_->SetSQLSyntaxOrdinal(index); });

  options_->setText(tr("&Options"));
  options_->setPopupMode(QToolButton::InstantPopup);
  auto* menu = new QMenu(options_);
  for (std::size_t i = 0; i < Options.size(); ++i) {
    QAction* action = menu->addAction(QLatin1String(Options[i].Name));
    action->setToolTip(QLatin1String(Options[i].Meaning));
    action->setStatusTip(QLatin1String(Options[i].Meaning));
    action->setCheckable(true);
    action->setData(1 << i);
    connect(action, &QAction::toggled, this, [this, action](bool on) {
      const int bit = action->data().toInt();
      const int bits = panel_->SQLOptionBits();
      panel_->SetSQLOptionBits(on ? bits | bit : bits & ~bit);
    });
  }
  menu->setToolTipsVisible(true);
  options_->setMenu(menu);
  bar->addWidget(options_);
  bar->addStretch();

  text_->setReadOnly(true);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text_->setObjectName(QStringLiteral("sqlText"));
  text_->setAccessibleName(tr("SQL"));
  column->addWidget(text_);

  connect(panel_, &ts4::TWQueryPanel::OnChange, this, &TSqlPreview::Refresh);
  Refresh();
}

QString TSqlPreview::Text() const {
  return text_->toPlainText();
}

void TSqlPreview::Refresh() {
  {
    const QSignalBlocker quiet(syntax_);
    syntax_->setCurrentIndex(panel_->SQLSyntaxOrdinal());
  }
  const int bits = panel_->SQLOptionBits();
  for (QAction* action : options_->menu()->actions()) {
    const QSignalBlocker quiet(action);
    action->setChecked((bits & action->data().toInt()) != 0);
  }
  const QString text = ts4examples::StatementText(*panel_);
  if (text != text_->toPlainText()) text_->setPlainText(text);
}

}  // namespace ts4demo
