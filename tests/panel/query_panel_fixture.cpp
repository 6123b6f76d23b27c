#include "panel/query_panel_fixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "panel/dropdown_edit.h"
#include "panel/dropdown_popup.h"
#include "panel/popup_menu.h"

namespace ts4test {

ts4::TFilterCond* QueryPanelTest::AddCond(ts4::TFilterBracket& bracket, int fieldID, const char* op) {
  ts4::TFilterCond* cond = bracket.AddCond();
  ts4::TDSField* field = structure_->FieldByID(fieldID);
  cond->SetField(field);
  cond->SetOperator(op != nullptr ? structure_->OperatorByName(op) : field->Operators(0));
  return cond;
}

void QueryPanelTest::Load(const char* exampleQuery) {
  panel_->LoadFromFile(QString::fromUtf8(TS4_EXAMPLE_DATA "/") + QString::fromUtf8(exampleQuery));
}

namespace {

QAction* Find(const QMenu& menu, const QString& text) {
  for (QAction* action : menu.actions()) {
    if (action->menu() != nullptr) {
      if (QAction* inner = Find(*action->menu(), text)) return inner;
    } else if (action->text() == text) {
      return action;
    }
  }
  return nullptr;
}

}  // namespace

void QueryPanelTest::Choose(ts4::TDropDownLabel* word, const QString& item) {
  ASSERT_NE(word, nullptr);
  word->DropDown();
  auto* popup = qobject_cast<ts4::TDropDownPopup*>(word);
  ASSERT_NE(popup, nullptr);
  ASSERT_NE(popup->Menu(), nullptr);
  QAction* action = Find(*popup->Menu(), item);
  ASSERT_NE(action, nullptr) << item.toStdString();
  action->trigger();
}

void QueryPanelTest::Type(ts4::TDropDownLabel* word, const QString& text) {
  ASSERT_NE(word, nullptr);
  word->DropDown();
  auto* edit = qobject_cast<QLineEdit*>(static_cast<ts4::TDropDownCustomEdit*>(word)->Editor());
  ASSERT_NE(edit, nullptr);
  edit->setText(text);
  QTest::keyClick(edit, Qt::Key_Return);
}

QString QueryPanelTest::Word(const ts4::TFilterRow& row, int index) const {
  const QLabel* label = panel_->RowControl(row, index);
  return label != nullptr && !label->isHidden() ? label->text() : QString();
}

}  // namespace ts4test
