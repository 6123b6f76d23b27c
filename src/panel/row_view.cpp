#include "panel/row_view_p.h"

#include <QLabel>

#include "panel/dropdown_label.h"
#include "panel/row_controls.h"

namespace ts4::detail {
namespace {

// Disconnected first: a label whose deletion waits for the event loop must
// not reach a view that is gone.
void Dispose(QWidget* widget) {
  if (widget == nullptr) return;
  widget->disconnect();
  widget->hide();
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
  Button->hide();
  if (Check != nullptr) Check->hide();
  for (QLabel* label : Controls)
    if (label != nullptr) label->hide();
}

bool TRowView::HasOpenEditor() const {
  for (QLabel* label : Controls)
    if (const auto* word = qobject_cast<const TDropDownLabel*>(label); word != nullptr && word->Dropped())
      return true;
  return false;
}

}  // namespace ts4::detail
