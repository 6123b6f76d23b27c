#include "panel/panel_appearance.h"

#include <QApplication>
#include <QPalette>
#include <string>

#include "foundation/assign.h"
#include "foundation/error.h"
#include "foundation/messages.h"
#include "query/query_types.h"

namespace ts4 {

TQPAppearance::TQPAppearance(TWQueryPanel* panel)
    // The current row is lit like a button's highlight edge.
    : QObject(nullptr), panel_(panel), activeRowColor_(QApplication::palette().color(QPalette::Light)) {}

void TQPAppearance::SetActiveRowColor(const QColor& color) {
  if (AssignIfChanged(activeRowColor_, color)) Change();
}
void TQPAppearance::SetControlBorderColor(const QColor& color) {
  if (AssignIfChanged(controlBorderColor_, color)) Change();
}
void TQPAppearance::SetFieldColor(const QColor& color) {
  if (AssignIfChanged(fieldColor_, color)) Change();
}
void TQPAppearance::SetOperatorColor(const QColor& color) {
  if (AssignIfChanged(operatorColor_, color)) Change();
}
void TQPAppearance::SetValueColor(const QColor& color) {
  if (AssignIfChanged(valueColor_, color)) Change();
}
void TQPAppearance::SetBoolOpColor(const QColor& color) {
  if (AssignIfChanged(boolOpColor_, color)) Change();
}
void TQPAppearance::SetOptions(TQPAppearanceOptions options) {
  if (AssignIfChanged(options_, options)) Change();
}
void TQPAppearance::SetStyle(TQPStyle style) {
  if (AssignIfChanged(style_, style)) Change();
}

bool TQPAppearance::IsStored(const char* property) const {
  const QByteArray name(property);
  for (const char* label : {"FieldColor", "OperatorColor", "ValueColor", "BoolOpColor"})
    if (name == label) return this->property(property).value<QColor>() != DeclaredLabelColor;
  return true;
}

void TQPAppearance::SetOptionBits(int bits) {
  // Bits above the last option name nothing and are dropped.
  constexpr int known = (1 << (static_cast<int>(aoAllowParams) + 1)) - 1;
  SetOptions(TQPAppearanceOptions::FromBits(static_cast<std::uint64_t>(bits & known)));
}

void TQPAppearance::SetStyleOrdinal(int ordinal) {
  if (ordinal != static_cast<int>(psGroups) && ordinal != static_cast<int>(psAndOr))
    throw EWQueryPanelError(qecInvalidPropertyValue, std::string(msg::InvalidPropertyValue));
  SetStyle(static_cast<TQPStyle>(ordinal));
}

void TQPAppearance::Change() {
  if (updates_.Change()) emit Changed();
}

}  // namespace ts4
