#include "panel/value_label_kind.h"

namespace ts4 {
namespace {

bool IsIntegerType(TFieldType type) {
  return type == ftSmallint || type == ftInteger || type == ftWord || type == ftAutoInc || type == ftLargeint;
}

bool IsFloatType(TFieldType type) {
  return type == ftFloat || type == ftCurrency;
}

// What an edit accepts for values of the type; dates and times as text.
TValueTextType TextTypeOf(TFieldType type) {
  if (IsIntegerType(type)) return vttInteger;
  if (IsFloatType(type)) return vttFloat;
  return vttString;
}

}  // namespace

TValueLabelChoice ChooseValueLabel(TDSEditType editType, TTextEditKind textKind, TFieldType dataType,
                                   TOpValueType opValueType, bool popupValues) {
  if (opValueType == TOpValueType::vtSubQuery) return {vlkSubQuery};
  switch (editType) {
    case etAuto:
      if (dataType == ftDate || dataType == ftDateTime) return {vlkDate};
      if (dataType == ftTime) return {vlkTime};
      return {vlkEdit, TextTypeOf(dataType)};
    case etEdit:
      switch (textKind) {
        case tekSimple: return {vlkEdit, TextTypeOf(dataType)};
        case tekMask: return {vlkMaskEdit};
        case tekDate: return {vlkDate};
        case tekTime: return {vlkTime};
      }
      break;
    case etList:
    case etSQL:
      if (opValueType == TOpValueType::vtList) return {vlkCheckList};
      return {popupValues ? vlkPopup : vlkListBox};
    case etCustom: return {vlkCustom};
  }
  return {vlkEdit};
}

}  // namespace ts4
