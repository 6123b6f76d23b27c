#include "panel/value_label_factory.h"

#include "foundation/error.h"
#include "panel/dropdown_datetime.h"
#include "panel/dropdown_edit.h"
#include "panel/dropdown_listbox.h"
#include "panel/dropdown_popup.h"
#include "panel/qt_strings_p.h"
#include "structure/field.h"
#include "structure/value_editor.h"

namespace ts4 {

using detail::ToQ;

TValueLabelChoice ChooseValueLabel(const TDSField& field, TFieldType valueType, TOpValueType opValueType,
                                   bool popupValues) {
  const TDSTextEditor* text = field.TextEditor();
  return ChooseValueLabel(field.EditType(), text != nullptr ? text->EditKind() : tekSimple, valueType,
                          opValueType, popupValues);
}

TDropDownLabel* NewValueLabel(const TValueLabelChoice& choice, QWidget* parent) {
  TDropDownLabel* label = nullptr;
  switch (choice.Kind) {
    case vlkSubQuery:
    case vlkCustom: label = new TDropDownLabel(parent); break;
    case vlkEdit: label = new TDropDownEdit(parent); break;
    case vlkMaskEdit: label = new TDropDownMaskEdit(parent); break;
    case vlkDate:
    case vlkTime: {
      auto* picker = new TDropDownDateTimeEdit(parent);
      picker->SetKind(choice.Kind == vlkDate ? TDropDownDateTimeEdit::ekDate : TDropDownDateTimeEdit::ekTime);
      label = picker;
      break;
    }
    case vlkCheckList: label = new TDropDownCheckListBox(parent); break;
    case vlkPopup: label = new TDropDownPopup(parent); break;
    case vlkListBox: label = new TDropDownListBox(parent); break;
  }
  label->hide();
  return label;
}

QString SetUpValueLabel(TDropDownLabel& label, const TValueLabelChoice& choice, const TDSField& field,
                        const TValueLabelSetup& setup) {
  const TDSTextEditor* text = field.TextEditor();
  if (auto* edit = qobject_cast<TDropDownCustomEdit*>(&label)) {
    edit->SetValueType(static_cast<TDropDownCustomEdit::TValueType>(choice.TextType));
    if (text != nullptr && field.EditType() == etEdit) {
      edit->SetOption(1, text->GetOption(1));
      edit->SetOption(2, text->GetOption(2));
    }
    if (auto* mask = qobject_cast<TDropDownMaskEdit*>(&label); mask != nullptr && text != nullptr) {
      mask->SetEditMask(ToQ(text->EditMask()));
      mask->SetUseFormattedValue(text->FmtVal() != 0);
    }
  }
  QString problem;
  if (auto* list = qobject_cast<TDropDownList*>(&label)) {
    list->SetSortList(setup.SortList);
    if (auto* popup = qobject_cast<TDropDownPopup*>(list)) popup->SetItemLimit(setup.PopupItemLimit);
    if (TDSSQLEditor* sql = field.SQLEditor()) {
      if (setup.SQLParams != nullptr) sql->SetSQLParams(*setup.SQLParams);
      try {
        sql->SetOpened(true);
      } catch (const EWTessalyError& error) {
        problem = QString::fromUtf8(error.what());
      }
    }
    const TDSListEditor* items = field.ListEditor();
    list->SetItems(items != nullptr ? ToQ(items->Items()) : QStringList());
    list->SetValues(items != nullptr ? ToQ(items->Values()) : QStringList());
  }
  return problem;
}

}  // namespace ts4
