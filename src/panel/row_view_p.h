#pragma once

#include <QPointer>
#include <array>

#include "panel/panel_geometry.h"
#include "panel/value_label_kind.h"

class QLabel;

namespace ts4 {
class TFilterBtn;
class TFilterRow;
class TFlatCheckBox;
}  // namespace ts4

namespace ts4::detail {

/// The widgets that show one line of a query panel: its button, its check
/// box and its words by control index. A view is bound to one row at a
/// time and goes back to the panel's pool when its line scrolls away.
/// Bracket views (the header's too) and condition views are kept apart,
/// as their words are different kinds of widget.
struct TRowView {
  explicit TRowView(bool bracket) : Bracket(bracket) {}
  TRowView(const TRowView&) = delete;
  TRowView& operator=(const TRowView&) = delete;
  /// Hides the widgets and lets Qt delete them once the events in progress are done.
  ~TRowView();

  TFilterRow* Row = nullptr;
  const bool Bracket;
  TFilterBtn* Button = nullptr;
  TFlatCheckBox* Check = nullptr;
  std::array<QLabel*, RowControlSlots> Controls{};
  /// The kinds the two value labels were made as (valid where they exist).
  std::array<TValueLabelChoice, 2> ValueKinds{};

  /// Hides every widget of the line (binding shows what the row has).
  void Hide();
  /// Whether one of the words has its editor or list open.
  [[nodiscard]] bool HasOpenEditor() const;
  /// Lets the widget at the slot go (hidden now, deleted later).
  void Discard(int index);
};

}  // namespace ts4::detail
