#pragma once

#include <QColor>
#include <QObject>
#include <cstdint>

#include "foundation/update_counter.h"
#include "query/appearance_options.h"

namespace ts4 {

class TWQueryPanel;

/// How a query panel shows brackets: as lines of their own with the
/// link-type sentence, or without lines, each condition carrying an and/or
/// word instead.
enum class TQPStyle : std::uint8_t { psGroups, psAndOr };
using enum TQPStyle;

/// Colours, options and style of a query panel. Every setter refreshes the
/// panel, unless an update is open (BeginUpdate/EndUpdate nest; the last
/// EndUpdate refreshes once).
///
/// Sets and enumerations are published as integers (the set's bits, the
/// enumerator's ordinal) so that they store like any other property. A
/// colour equal to its declared default is not stored (IsStored): the label
/// colours declare blue, and BoolOpColor starts black although it declares
/// blue too, so a stored form that holds blue does not write it and a panel
/// read back from it shows black.
class TQPAppearance : public QObject {
  Q_OBJECT
  Q_PROPERTY(QColor ActiveRowColor READ ActiveRowColor WRITE SetActiveRowColor)
  Q_PROPERTY(QColor ControlBorderColor READ ControlBorderColor WRITE SetControlBorderColor)
  Q_PROPERTY(QColor FieldColor READ FieldColor WRITE SetFieldColor)
  Q_PROPERTY(QColor OperatorColor READ OperatorColor WRITE SetOperatorColor)
  Q_PROPERTY(QColor ValueColor READ ValueColor WRITE SetValueColor)
  Q_PROPERTY(QColor BoolOpColor READ BoolOpColor WRITE SetBoolOpColor)
  Q_PROPERTY(int Options READ OptionBits WRITE SetOptionBits)
  Q_PROPERTY(int Style READ StyleOrdinal WRITE SetStyleOrdinal)

 public:
  /// The options a new panel has: all but aoShowGroupName and aoSortListData.
  static constexpr TQPAppearanceOptions DefaultOptions = {aoFlatButtons, aoRoundButtons,   aoNonEmptyBrackets,
                                                          aoPopupField,  aoPopupValue,     aoAllowKeyboard,
                                                          aoShowAddRow,  aoShowCheckBoxes, aoAllowParams};
  /// The declared default of the four label colours.
  static constexpr QColor DeclaredLabelColor{0, 0, 255};

  explicit TQPAppearance(TWQueryPanel* panel);

  [[nodiscard]] TWQueryPanel* Panel() const { return panel_; }

  [[nodiscard]] QColor ActiveRowColor() const { return activeRowColor_; }
  void SetActiveRowColor(const QColor& color);
  [[nodiscard]] QColor ControlBorderColor() const { return controlBorderColor_; }
  void SetControlBorderColor(const QColor& color);
  [[nodiscard]] QColor FieldColor() const { return fieldColor_; }
  void SetFieldColor(const QColor& color);
  [[nodiscard]] QColor OperatorColor() const { return operatorColor_; }
  void SetOperatorColor(const QColor& color);
  [[nodiscard]] QColor ValueColor() const { return valueColor_; }
  void SetValueColor(const QColor& color);
  [[nodiscard]] QColor BoolOpColor() const { return boolOpColor_; }
  void SetBoolOpColor(const QColor& color);
  /// Whether a form writes the property: not when it holds its declared default.
  [[nodiscard]] bool IsStored(const char* property) const;

  [[nodiscard]] TQPAppearanceOptions Options() const { return options_; }
  void SetOptions(TQPAppearanceOptions options);
  [[nodiscard]] bool Has(TQPAppearanceOption option) const { return options_.Contains(option); }
  [[nodiscard]] int OptionBits() const { return static_cast<int>(options_.Bits()); }
  void SetOptionBits(int bits);

  [[nodiscard]] TQPStyle Style() const { return style_; }
  void SetStyle(TQPStyle style);
  [[nodiscard]] int StyleOrdinal() const { return static_cast<int>(style_); }
  /// Raises EWQueryPanelError code 13 for a number that names no style.
  void SetStyleOrdinal(int ordinal);

  void BeginUpdate() { updates_.Begin(); }
  /// Closes an update; the outermost one refreshes the panel.
  void EndUpdate() {
    if (updates_.End()) emit Changed();
  }
  [[nodiscard]] bool Updating() const { return updates_.Count() > 0; }

 signals:
  /// A property changed (told once per outermost update).
  void Changed();

 private:
  void Change();

  TWQueryPanel* panel_;
  QColor activeRowColor_;
  QColor controlBorderColor_{Qt::black};
  QColor fieldColor_ = DeclaredLabelColor;
  QColor operatorColor_ = DeclaredLabelColor;
  QColor valueColor_ = DeclaredLabelColor;
  QColor boolOpColor_{Qt::black};
  TQPAppearanceOptions options_ = DefaultOptions;
  TQPStyle style_ = psGroups;
  TUpdateCounter updates_;
};

}  // namespace ts4
