#include "param_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "panel/dropdown_label.h"
#include "panel/value_label_factory.h"
#include "query/query.h"
#include "query/sql_param.h"

namespace ts4demo {

TParamDialog::TParamDialog(ts4::TWQuery& query, QWidget* parent) : QDialog(parent) {
  setWindowTitle(tr("Parameter values"));
  auto* column = new QVBoxLayout(this);
  auto* intro = new QLabel(tr("Click a value to change it."));
  column->addWidget(intro);
  auto* form = new QFormLayout;
  column->addLayout(form);

  const ts4::TQueryResult& result = query.QResult();
  for (int i = 0; i < result.GetParamCount(); ++i) {
    const ts4::TSQLParam& param = *result.GetParam(i);
    const ts4::TFilterCond* condition = param.Condition();
    ts4::TValueLabelChoice choice;  // a plain edit when the condition says nothing else
    if (condition != nullptr && condition->Field() != nullptr && condition->Operator() != nullptr)
      choice = ts4::ChooseValueLabel(*condition->Field(), condition->GetExprType(),
                                     condition->Operator()->ValueType(), false);
    // Sub-queries and the application's own editors have no value to type here.
    if (choice.Kind == ts4::vlkSubQuery || choice.Kind == ts4::vlkCustom) choice = {};
    ts4::TDropDownLabel* editor = ts4::NewValueLabel(choice, this);
    if (condition != nullptr && condition->Field() != nullptr) {
      const QString problem =
          ts4::SetUpValueLabel(*editor, choice, *condition->Field(), {&query.ParamValues(), true, 0});
      editor->setToolTip(problem);
    }
    editor->SetValue(QString::fromStdString(param.Value()));
    editor->setFocusPolicy(Qt::StrongFocus);
    const std::string& caption = param.Caption().empty() ? param.Name() : param.Caption();
    auto* label = new QLabel(QString::fromStdString(caption) + QLatin1Char(':'));
    label->setBuddy(editor);
    editor->setAccessibleName(label->text());
    form->addRow(label, editor);
    editor->show();
    editors_.push_back(editor);
  }

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Ok)->setText(tr("Run"));
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  column->addWidget(buttons);
  // Room for the editors, which open over the value where it stands.
  setMinimumWidth(fontMetrics().averageCharWidth() * 50);
}

QStringList TParamDialog::Values() const {
  QStringList values;
  for (const ts4::TDropDownLabel* editor : editors_) values << editor->Value();
  return values;
}

}  // namespace ts4demo
