#pragma once

#include <cstdint>

#include "foundation/field_types.h"
#include "structure/field.h"
#include "structure/operator.h"
#include "structure/value_editor.h"

namespace ts4 {

/// The kind of control that edits a condition's value.
enum class TValueLabelKind : std::uint8_t {
  vlkSubQuery,   // a plain label whose drop-down opens the sub-query editor
  vlkEdit,       // TDropDownEdit
  vlkMaskEdit,   // TDropDownMaskEdit
  vlkDate,       // TDropDownDateTimeEdit, ekDate
  vlkTime,       // TDropDownDateTimeEdit, ekTime
  vlkCheckList,  // TDropDownCheckListBox: several values
  vlkPopup,      // TDropDownPopup
  vlkListBox,    // TDropDownListBox
  vlkCustom,     // a plain label whose drop-down is the panel's custom handler
};
using enum TValueLabelKind;

/// What may be typed into an edit: the numbering of TDropDownCustomEdit::TValueType.
enum class TValueTextType : std::uint8_t { vttInteger, vttFloat, vttString };
using enum TValueTextType;

/// The value control a condition gets for its field and operator.
struct TValueLabelChoice {
  TValueLabelKind Kind = vlkEdit;
  TValueTextType TextType = vttString;  // for vlkEdit

  friend bool operator==(const TValueLabelChoice&, const TValueLabelChoice&) = default;
};

/// Chooses by the operator's value type first (a sub-query), then by the
/// field's edit type: automatic editors follow the data type (numbers typed
/// as numbers, dates and times picked); simple text editors type numbers as
/// numbers and everything else, dates included, as text; lists give a check
/// list for list operators, else a pop-up (with `popupValues`) or a list box.
[[nodiscard]] TValueLabelChoice ChooseValueLabel(TDSEditType editType, TTextEditKind textKind,
                                                 TFieldType dataType, TOpValueType opValueType,
                                                 bool popupValues);

}  // namespace ts4
