// What the words of a line do when the user chooses something: every
// choice lands in the row through its own members, and the view follows
// from the query's notification.
#include <QCursor>
#include <QLabel>

#include "panel/dropdown_list.h"
#include "panel/panel_lines_p.h"
#include "panel/popup_menu.h"
#include "panel/qt_strings_p.h"
#include "panel/query_panel.h"
#include "panel/row_view_p.h"
#include "query/sql_param.h"
#include "structure/structure.h"

namespace ts4 {

using detail::FromQ;
using detail::TRowView;

namespace {

// Several changes of one row told as one.
class TRowEdit {
 public:
  explicit TRowEdit(TWQuery& query) : query_(query) { query_.BeginUpdate(); }
  ~TRowEdit() { query_.EndUpdate(); }
  TRowEdit(const TRowEdit&) = delete;
  TRowEdit& operator=(const TRowEdit&) = delete;

 private:
  TWQuery& query_;
};

}  // namespace

void TWQueryPanel::FieldChosen(TRowView& view) {
  if (view.Row == nullptr || query_->DbStruct() == nullptr) return;
  auto& condition = static_cast<TFilterCond&>(*view.Row);
  const auto* label = static_cast<const TDropDownList*>(view.Controls[rciFirst]);
  TDSField* field = query_->DbStruct()->FieldByID(label->Value().toInt());
  if (field == nullptr) return;
  const TRowEdit edit(*query_);
  condition.SetField(field);
  // A condition needs an operator: the field's first, until the user picks another.
  if (condition.Operator() == nullptr && field->OperatCount() > 0) condition.SetOperator(field->Operators(0));
}

void TWQueryPanel::OperatorChosen(TRowView& view) {
  if (view.Row == nullptr) return;
  auto& condition = static_cast<TFilterCond&>(*view.Row);
  const auto* label = static_cast<const TDropDownList*>(view.Controls[rciSecond]);
  const TDSField* field = condition.Field();
  const int index = label->Value().toInt();
  if (field != nullptr && index >= 0 && index < field->OperatCount())
    condition.SetOperator(field->Operators(index));
}

void TWQueryPanel::LinkTypeChosen(TRowView& view, bool andOrWord) {
  if (view.Row == nullptr) return;
  const int value =
      static_cast<const TDropDownList*>(view.Controls[andOrWord ? rciAndOr : rciSecond])->Value().toInt();
  if (!andOrWord) {
    if (value >= 0 && value <= static_cast<int>(fltNotAll))
      static_cast<TFilterBracket&>(*view.Row).SetLinkType(static_cast<TFilterLinkType>(value));
    return;
  }
  // "and" or "or" keeps the bracket's negation.
  const TFilterBracket* joining = JoiningBracket(*view.Row);
  if (joining == nullptr) return;
  auto& bracket = const_cast<TFilterBracket&>(*joining);
  const bool negated = bracket.LinkType() == fltNone || bracket.LinkType() == fltNotAll;
  if (value == 1)
    bracket.SetLinkType(negated ? fltNone : fltAny);
  else
    bracket.SetLinkType(negated ? fltNotAll : fltAll);
}

void TWQueryPanel::ValueChosen(TRowView& view, int index, bool accepted) {
  if (!accepted || view.Row == nullptr) return;
  auto& condition = static_cast<TFilterCond&>(*view.Row);
  const auto* label = static_cast<const TDropDownLabel*>(
      view.Controls[static_cast<std::size_t>(index == 1 ? rciValue1 : rciValue2)]);
  if (label == nullptr || condition.Param(index) != nullptr) return;
  const QString value = label->Value();
  QString caption = value.isEmpty() ? QString() : label->GetCaption();
  if (OnSetValue) OnSetValue(condition, index, caption);
  const TRowEdit edit(*query_);
  condition.SetValue(index, FromQ(value));
  condition.SetCaption(index, FromQ(caption));
}

void TWQueryPanel::ValueRightClick(TRowView& view, int index) {
  QLabel* label = view.Controls[static_cast<std::size_t>(index == 1 ? rciValue1 : rciValue2)];
  if (label == nullptr) return;
  MakeCurrent(view, label);
  VPopup();
  valueMenu_->Popup(QCursor::pos());
}

void TWQueryPanel::ValueAltClick(TRowView& view, int index) {
  if (!appearance_->Has(aoAllowParams) || view.Row == nullptr) return;
  MakeCurrent(view, view.Controls[static_cast<std::size_t>(index == 1 ? rciValue1 : rciValue2)]);
  static_cast<TFilterCond&>(*view.Row).SetValueIsParam(index, true);
}

void TWQueryPanel::ValueMenuItemClick(int tag) {
  auto* condition = dynamic_cast<TFilterCond*>(currentRow_);
  if (condition == nullptr) return;
  const int control = CurrentControlIndex(*condition);
  const int index = control == rciValue1 ? 1 : 2;
  if (tag == vmtParameter && !appearance_->Has(aoAllowParams)) return;
  condition->SetValueIsParam(index, tag == vmtParameter);
}

void TWQueryPanel::CheckBoxToggled(TRowView& view, bool checked) {
  if (view.Row != nullptr) view.Row->SetEnabled(checked);
}

void TWQueryPanel::MakeCurrent(TRowView& view, QWidget* control) {
  if (view.Row == nullptr) return;
  SetCurrentRow(view.Row);
  const int index = GetControlIndex(control);
  if (index != rciNone) SetCurrentControlIndex(*view.Row, index);
}

void TWQueryPanel::CustomDropDownHandler(TFilterCond& condition, QString& value, bool& accepted) {
  if (!OnCustomEdit && !OnCustomValue) return;
  const QString before = value;
  if (OnCustomEdit) OnCustomEdit(condition.Field(), value);
  if (OnCustomValue) OnCustomValue(condition, value);
  accepted = value != before;
}

}  // namespace ts4
