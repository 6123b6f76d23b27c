#include "panel/row_view_p.h"

#include <QLabel>

#include "panel/dropdown_label.h"
#include "panel/row_controls.h"

namespace ts4::detail {
namespace {

// Hiding a widget that has the focus makes Qt look for the next one, which
// the panel answers from its views: while they change, nobody may ask.
void HideQuietly(QWidget* widget) {
  if (widget->hasFocus()) widget->clearFocus();
  widget->hide();
}

// Disconnected first: a label whose deletion waits for the event loop must
// not reach a view that is gone.
void Dispose(QWidget* widget) {
  if (widget == nullptr) return;
  widget->disconnect();
  HideQuietly(widget);
  widget->deleteLater();
}

}  // namespace

TRowView::~TRowView() {
  Dispose(Button);
  Dispose(Check);
  for (QLabel* label : Controls) Dispose(label);
}

void TRowView::Discard(int index) {
  Dispose(Controls[static_cast<std::size_t>(index)]);
  Controls[static_cast<std::size_t>(index)] = nullptr;
}

void TRowView::Hide() {
  HideQuietly(Button);
  if (Check != nullptr) HideQuietly(Check);
  for (QLabel* label : Controls)
    if (label != nullptr) HideQuietly(label);
}

bool TRowView::HasOpenEditor() const {
  for (QLabel* label : Controls)
    if (const auto* word = qobject_cast<const TDropDownLabel*>(label); word != nullptr && word->Dropped())
      return true;
  return false;
}

}  // namespace ts4::detail
