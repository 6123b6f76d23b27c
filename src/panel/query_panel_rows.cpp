// The widgets of a line and what they show: a view is made (or taken from
// the pool) for a row and bound to it, and bound again whenever the row
// changes, so every word says what the row holds.
#include <QLabel>

#include "foundation/error.h"
#include "panel/dropdown_datetime.h"
#include "panel/dropdown_edit.h"
#include "panel/dropdown_listbox.h"
#include "panel/dropdown_popup.h"
#include "panel/panel_lines_p.h"
#include "panel/qt_strings_p.h"
#include "panel/query_panel.h"
#include "panel/row_controls.h"
#include "panel/row_view_p.h"
#include "panel/value_label_factory.h"
#include "query/sql_param.h"
#include "structure/structure.h"

namespace ts4 {

using detail::ToQ;
using detail::TRowView;

namespace {

QLabel* MakeText(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setAttribute(Qt::WA_TranslucentBackground);
  label->hide();
  return label;
}

void ShowText(QLabel* label, const QString& text) {
  label->setText(text);
  label->adjustSize();
  label->show();
}

// The slot of value 1 or 2.
int ValueSlot(int index) {
  return index == 1 ? rciValue1 : rciValue2;
}

}  // namespace

std::unique_ptr<TRowView> TWQueryPanel::TakeView(bool bracket) {
  for (auto it = freeViews_.begin(); it != freeViews_.end(); ++it) {
    if ((*it)->Bracket != bracket) continue;
    std::unique_ptr<TRowView> view = std::move(*it);
    freeViews_.erase(it);
    return view;
  }
  auto view = std::make_unique<TRowView>(bracket);
  TRowView* v = view.get();
  QWidget* parent = viewport();
  v->Button = new TFilterBtn(parent);
  v->Button->hide();
  connect(v->Button, &TWRndBtn::clicked, this, [this, v] {
    if (v->Row == &query_->Root())
      MainButtonClick();
    else if (v->Row != nullptr)
      RowButtonClick(*v->Button);
  });
  v->Check = new TFlatCheckBox(parent);
  v->Check->hide();
  connect(v->Check, &QCheckBox::clicked, this, [this, v](bool checked) { CheckBoxToggled(*v, checked); });

  // A click on a word makes its line and the word current first; a choice
  // accepted goes to its handler.
  const auto word = [this, v](TDropDownLabel* label, auto chosen) {
    label->hide();
    connect(label, &TDropDownLabel::beforeDropDown, this, [this, v, label] { MakeCurrent(*v, label); });
    connect(label, &TDropDownLabel::afterDropUp, this, [chosen](bool accepted) {
      if (accepted) chosen();
    });
    return label;
  };
  if (bracket) {
    v->Controls[rciFirst] = MakeText(parent);
    v->Controls[rciSecond] = word(new TDropDownPopup(parent), [this, v] { LinkTypeChosen(*v, false); });
    v->Controls[rciValue1] = MakeText(parent);
    return view;
  }
  TDropDownList* field = appearance_->Has(aoPopupField)
                             ? static_cast<TDropDownList*>(new TDropDownPopup(parent))
                             : new TDropDownListBox(parent);
  connect(field, &TDropDownLabel::beforeDropDown, this, [this, field] { FillFieldList(*field); });
  v->Controls[rciFirst] = word(field, [this, v] { FieldChosen(*v); });
  auto* op = new TDropDownPopup(parent);
  connect(op, &TDropDownLabel::beforeDropDown, this, [this, v, op] {
    if (v->Row != nullptr) FillOperatorList(*op, static_cast<const TFilterCond&>(*v->Row));
  });
  v->Controls[rciSecond] = word(op, [this, v] { OperatorChosen(*v); });
  v->Controls[rciBetween] = MakeText(parent);
  v->Controls[rciAndOr] = word(new TDropDownPopup(parent), [this, v] { LinkTypeChosen(*v, true); });
  return view;
}

void TWQueryPanel::StyleLabel(QLabel& label, const QColor& color) const {
  QPalette palette = label.palette();
  palette.setColor(QPalette::WindowText, color);
  label.setPalette(palette);
}

void TWQueryPanel::BindButton(TRowView& view, TFilterRow& row) {
  const bool header = &row == &query_->Root();
  TFilterBtn& button = *view.Button;
  button.SetRow(&row);
  if (header) {
    button.SetAutoSize(false);
    button.resize(TPanelMetrics::HeaderButtonSide, TPanelMetrics::HeaderButtonSide);
    button.setAccessibleName(GetTitle(QStringLiteral("ttlAddCond")).remove(QLatin1Char('&')));
  } else {
    const std::string& path = row.RowID();
    button.SetAutoSize(true);
    button.SetCaption(ToQ(std::string_view(path).substr(0, path.empty() ? 0 : path.size() - 1)));
    button.setAccessibleName(button.Caption());
  }
  button.SetFlat(appearance_->Has(aoFlatButtons));
  button.SetRounded(appearance_->Has(aoRoundButtons));
  TintButton(view);
  button.show();
}

void TWQueryPanel::TintButton(TRowView& view) {
  // A button takes the colour of what it stands on: the current row's band, or the panel.
  const bool onBand = view.Row == currentRow_ && appearance_->Has(aoAllowKeyboard);
  QPalette palette = view.Button->palette();
  palette.setColor(QPalette::Window,
                   onBand ? appearance_->ActiveRowColor() : viewport()->palette().color(QPalette::Window));
  view.Button->setPalette(palette);
}

void TWQueryPanel::BindView(TRowView& view, TFilterRow& row) {
  view.Row = &row;
  const bool header = &row == &query_->Root();
  BindButton(view, row);
  TFilterBtn& button = *view.Button;
  view.Check->setVisible(!header && appearance_->Has(aoShowCheckBoxes));
  view.Check->setChecked(row.Enabled());
  view.Check->resize(view.Check->sizeHint());

  if (row.IsBracket())
    BindBracket(view, static_cast<TFilterBracket&>(row));
  else
    BindCondition(view, static_cast<TFilterCond&>(row));

  // Tab reaches the words through the panel, in line order (focusNextPrevChild):
  // coming from outside it stops at the panel, not at whichever word Qt made last.
  for (QLabel* label : view.Controls)
    if (auto* word = qobject_cast<TDropDownLabel*>(label))
      word->setFocusPolicy(word->Fixed() ? Qt::NoFocus : Qt::ClickFocus);
  button.setFocusPolicy(Qt::ClickFocus);
  view.Check->setFocusPolicy(Qt::ClickFocus);

  const QString sentence = RowSentence(view);
  if (header) setAccessibleName(sentence);  // the panel reads as its header sentence
  button.setAccessibleDescription(sentence);
  view.Check->setAccessibleName(sentence);
  for (QLabel* label : view.Controls)
    if (label != nullptr) label->setAccessibleDescription(sentence);
}

void TWQueryPanel::BindBracket(TRowView& view, TFilterBracket& bracket) {
  const bool header = &bracket == &query_->Root();
  auto* link = static_cast<TDropDownPopup*>(view.Controls[rciSecond]);
  if (header && appearance_->Style() == psAndOr) {
    // The and/or words stand for the link word: the sentence only leads in.
    ShowText(view.Controls[rciFirst], headerLeft_.trimmed());
    link->hide();
    view.Controls[rciValue1]->hide();
    return;
  }
  ShowText(view.Controls[rciFirst], header ? headerLeft_ : bracketLeft_);
  ShowText(view.Controls[rciValue1], header ? headerRight_ : bracketRight_);
  link->ClearAll();
  int value = 0;
  for (const char* key : {"ttlAll", "ttlAny", "ttlNone", "ttlNotAll"})
    link->AddItem({}, ToQ(query_->GetTitle(key)), QString::number(value++));
  link->SetValue(QString::number(static_cast<int>(bracket.LinkType())));
  StyleLabel(*link, Qt::blue);
  link->setEnabled(bracket.Enabled());
  link->show();
}

void TWQueryPanel::BindCondition(TRowView& view, TFilterCond& condition) {
  const TDSField* field = condition.Field();
  const TDSOperator* op = condition.Operator();
  auto* fieldLabel = static_cast<TDropDownList*>(view.Controls[rciFirst]);
  QString fieldCaption;
  if (field != nullptr)
    fieldCaption = ToQ(appearance_->Has(aoShowGroupName) ? field->GetCompoundName() : field->DisplayName());
  fieldLabel->SetValue(field != nullptr ? QString::number(field->ID()) : QString());
  fieldLabel->SetCaption(fieldCaption);
  if (auto* popup = qobject_cast<TDropDownPopup*>(fieldLabel)) {
    popup->SetItemLimit(maxPopupItemCount_);
    popup->SetImages(images_);
    popup->OnGetGroupImageIndex = OnGetGroupImageIndex;
    popup->OnGetItemImageIndex = OnGetItemImageIndex;
  }
  StyleLabel(*fieldLabel, appearance_->FieldColor());
  fieldLabel->setEnabled(condition.Enabled());
  fieldLabel->show();

  auto* opLabel = static_cast<TDropDownPopup*>(view.Controls[rciSecond]);
  opLabel->setVisible(field != nullptr);
  opLabel->SetValue(field != nullptr && op != nullptr ? QString::number(field->IndexOfOperator(op))
                                                      : QString());
  opLabel->SetCaption(op != nullptr ? ToQ(op->DisplayName()) : QString());
  StyleLabel(*opLabel, appearance_->OperatorColor());
  opLabel->setEnabled(condition.Enabled());

  const int values = op != nullptr ? op->GetParamCount() : 0;
  for (const int index : {1, 2}) {
    if (index <= values)
      BindValueLabel(view, condition, index);
    else
      view.Discard(ValueSlot(index));
  }
  QLabel* between = view.Controls[rciBetween];
  if (values >= 2 && !op->ValFormat().empty())
    ShowText(between, ToQ(op->ValFormat()));
  else
    between->hide();

  // In psAndOr a condition is joined to the line after it by the word of
  // the bracket that joins them: "and" for all and not all, "or" for any and none.
  auto* andOr = static_cast<TDropDownPopup*>(view.Controls[rciAndOr]);
  const TFilterBracket* parent = appearance_->Style() == psAndOr ? JoiningBracket(condition) : nullptr;
  if (parent == nullptr) {
    andOr->hide();
    return;
  }
  andOr->ClearAll();
  andOr->AddItem({}, ToQ(query_->GetTitle("ttlAnd")), QStringLiteral("0"));
  andOr->AddItem({}, ToQ(query_->GetTitle("ttlOr")), QStringLiteral("1"));
  const bool isOr = parent->LinkType() == fltAny || parent->LinkType() == fltNone;
  andOr->SetValue(isOr ? QStringLiteral("1") : QStringLiteral("0"));
  StyleLabel(*andOr, appearance_->BoolOpColor());
  andOr->setEnabled(condition.Enabled());
  andOr->show();
}

void TWQueryPanel::BindValueLabel(TRowView& view, TFilterCond& condition, int index) {
  const TDSField& field = *condition.Field();
  const TValueLabelChoice choice = ChooseValueLabel(
      field, condition.GetExprType(), condition.Operator()->ValueType(), appearance_->Has(aoPopupValue));
  const auto slot = static_cast<std::size_t>(ValueSlot(index));
  auto* label = static_cast<TDropDownLabel*>(view.Controls[slot]);
  if (label == nullptr || view.ValueKinds[static_cast<std::size_t>(index - 1)] != choice) {
    view.Discard(ValueSlot(index));
    view.ValueKinds[static_cast<std::size_t>(index - 1)] = choice;
    label = MakeValueLabel(view, index);
    view.Controls[slot] = label;
  }
  // The list comes from the database, with the values other conditions give;
  // why it could not be read is shown as the word's tip.
  const QString problem = SetUpValueLabel(
      *label, choice, field, {&query_->ParamValues(), appearance_->Has(aoSortListData), maxPopupItemCount_});

  const bool isParam = condition.Param(index) != nullptr;
  const QString value = ToQ(condition.Value(index));
  const QString caption = ToQ(condition.GetCaption(index));
  label->SetFixed(isParam);
  if (choice.Kind == vlkSubQuery) {
    label->SetCaption(ToQ(query_->GetTitle("ttlSubQueryCaption")));
  } else if (isParam) {
    label->SetValue(ToQ(condition.Param(index)->Value()));
    label->SetCaption(caption);
  } else {
    // A list shows the text of the value's item; a custom value the caption
    // the application gave it; an edit the value itself, which is what was
    // typed (a caption stored earlier may be for another value).
    label->SetValue(value);
    const auto* list = qobject_cast<const TDropDownList*>(label);
    const bool itemShown = list != nullptr && (list->ItemIndex() >= 0 || choice.Kind == vlkCheckList);
    const bool captioned = list != nullptr || choice.Kind == vlkCustom;
    if (!itemShown) label->SetCaption(captioned && !caption.isEmpty() ? caption : value);
  }
  label->setToolTip(problem.isEmpty() ? ToQ(condition.GetHint(index)) : problem);
  StyleLabel(*label, appearance_->ValueColor());
  label->setEnabled(condition.Enabled());
  label->show();
}

TDropDownLabel* TWQueryPanel::MakeValueLabel(TRowView& view, int index) {
  TRowView* v = &view;
  const TValueLabelChoice& choice = view.ValueKinds[static_cast<std::size_t>(index - 1)];
  TDropDownLabel* label = NewValueLabel(choice, viewport());
  if (choice.Kind == vlkSubQuery) {
    label->OnCustomDropDown = [this, v](TDropDownLabel&, QString&, bool& accept) {
      accept = false;
      if (v->Row != nullptr) RunSubQueryEditor(static_cast<TFilterCond&>(*v->Row));
    };
  } else if (choice.Kind == vlkCustom) {
    label->OnCustomDropDown = [this, v](TDropDownLabel&, QString& value, bool& accept) {
      if (v->Row != nullptr) CustomDropDownHandler(static_cast<TFilterCond&>(*v->Row), value, accept);
    };
  }
  if (auto* edit = qobject_cast<TDropDownCustomEdit*>(label)) {
    edit->OnEditDblClick = [this, v, index](TDropDownLabel&, QString& value) {
      if (OnValueDblClick && v->Row != nullptr)
        OnValueDblClick(static_cast<TFilterCond&>(*v->Row), index, value);
    };
  }
  label->BeforeDropUp = [this, v, index](TDropDownLabel&, QString& value, bool& accept) {
    if (accept && OnChangeValue && v->Row != nullptr)
      OnChangeValue(static_cast<TFilterCond&>(*v->Row), index, value);
  };
  connect(label, &TDropDownLabel::beforeDropDown, this, [this, v, label] { MakeCurrent(*v, label); });
  connect(label, &TDropDownLabel::afterDropUp, this,
          [this, v, index](bool accepted) { ValueChosen(*v, index, accepted); });
  connect(label, &TDropDownLabel::altClicked, this, [this, v, index] { ValueAltClick(*v, index); });
  connect(label, &TDropDownLabel::rightClicked, this, [this, v, index] { ValueRightClick(*v, index); });
  return label;
}

void TWQueryPanel::FillFieldList(TDropDownLabel& label) const {
  auto& list = static_cast<TDropDownList&>(label);
  const QString caption = list.GetCaption();
  list.ClearAll();
  if (const TWCustomDBStructure* structure = query_->DbStruct()) {
    for (int i = 0; i < structure->FieldCount(); ++i) {
      const TDSField& field = *structure->Fields(i);
      if (!field.UseInConditions() || field.OperatCount() == 0) continue;
      list.AddItem(ToQ(field.GetGroupName()), ToQ(field.DisplayName()), QString::number(field.ID()));
    }
  }
  list.SetCaption(caption);  // the caption keeps the condition's (group) name
}

void TWQueryPanel::FillOperatorList(TDropDownLabel& label, const TFilterCond& condition) const {
  auto& list = static_cast<TDropDownList&>(label);
  const QString caption = list.GetCaption();
  list.ClearAll();
  if (const TDSField* field = condition.Field())
    for (int i = 0; i < field->OperatCount(); ++i)
      list.AddItem({}, ToQ(field->Operators(i)->DisplayName()), QString::number(i));
  list.SetCaption(caption);
}

QString TWQueryPanel::RowSentence(const TRowView& view) const {
  QStringList words;
  for (const QLabel* label : view.Controls) {
    if (label == nullptr || label->isHidden()) continue;
    const auto* word = qobject_cast<const TDropDownLabel*>(label);
    const QString text = (word != nullptr ? word->SpokenCaption() : label->text()).trimmed();
    if (!text.isEmpty()) words.append(text);
  }
  return words.join(QLatin1Char(' '));
}

}  // namespace ts4
