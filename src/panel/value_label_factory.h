#pragma once

#include <QString>

#include "panel/value_label_kind.h"

class QWidget;

namespace ts4 {

class TDSField;
class TDropDownLabel;
class TStrings;

/// The value control for the field and operator: what ChooseValueLabel
/// picks from the field's editor and the type of the value.
[[nodiscard]] TValueLabelChoice ChooseValueLabel(const TDSField& field, TFieldType valueType,
                                                 TOpValueType opValueType, bool popupValues);

/// A new, hidden control of the chosen kind. The sub-query and custom kinds
/// give a plain label whose drop-down the caller supplies.
[[nodiscard]] TDropDownLabel* NewValueLabel(const TValueLabelChoice& choice, QWidget* parent);

/// How a value control is filled for a field.
struct TValueLabelSetup {
  /// Values other conditions give, for SQL lists that refer to them.
  const TStrings* SQLParams = nullptr;
  bool SortList = false;
  /// Most items a pop-up list shows at once.
  int PopupItemLimit = 0;
};

/// Makes the control edit the field's values: what may be typed, the edit
/// mask, and the items and values of a list (an SQL list read through the
/// structure's provider). Returns why a list could not be read, else an
/// empty text; the list is then empty.
QString SetUpValueLabel(TDropDownLabel& label, const TValueLabelChoice& choice, const TDSField& field,
                        const TValueLabelSetup& setup);

}  // namespace ts4
