// Where the lines of the query panel stand, which of them have widgets,
// the scroll bars, and the painting of the current row.
#include <QApplication>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include "panel/dropdown_label.h"
#include "panel/panel_lines_p.h"
#include "panel/query_panel.h"
#include "panel/row_controls.h"
#include "panel/row_view_p.h"

namespace ts4 {
namespace {

// Lines above and below the viewport that keep their widgets, so that a
// small scroll shows lines that are ready.
constexpr int SpareLines = 4;

}  // namespace

int TWQueryPanel::ButtonHeight() const {
  return RndBtnAutoSize(QStringLiteral("1"), font()).height();
}

int TWQueryPanel::LinePitch() const {
  return ButtonHeight() + TPanelMetrics::LineGap + spacing_.RowSpace;
}

int TWQueryPanel::LineCount() const {
  return lines_->Count();
}

TFilterRow* TWQueryPanel::GetRowByNum(int line) const {
  return lines_->RowAt(line);
}

detail::TRowView* TWQueryPanel::ViewOf(const TFilterRow* row) const {
  const auto found = views_.find(row);
  return found == views_.end() ? nullptr : found->second.get();
}

void TWQueryPanel::ReleaseView(const TFilterRow* row) {
  const auto found = views_.find(row);
  if (found == views_.end()) return;
  std::unique_ptr<detail::TRowView> view = std::move(found->second);
  views_.erase(found);
  // The keys stay with the panel when the word that had them scrolls away.
  if (const QWidget* focus = QApplication::focusWidget();
      focus != nullptr &&
      (view->Button == focus || view->Check == focus ||
       std::find(view->Controls.begin(), view->Controls.end(), focus) != view->Controls.end()))
    setFocus(Qt::OtherFocusReason);
  // A row that goes (or a reset) ends an edit on it: there is nothing left to take it.
  view->Row = nullptr;
  for (QLabel* label : view->Controls)
    if (auto* word = qobject_cast<TDropDownLabel*>(label); word != nullptr && word->Dropped())
      word->DropUp(false);
  view->Hide();
  view->Row = nullptr;
  if (view->Button != nullptr) view->Button->SetRow(nullptr);
  freeViews_.push_back(std::move(view));
}

void TWQueryPanel::ReleaseAllViews() {
  while (!views_.empty()) ReleaseView(views_.begin()->first);
}

void TWQueryPanel::RemakeAllViews() {
  ReleaseAllViews();
  freeViews_.clear();
  Relayout();
}

void TWQueryPanel::RebindAll() {
  for (const auto& [row, view] : views_) BindView(*view, *view->Row);
}

void TWQueryPanel::Relayout() {
  if (resetting_ || updateCount_ > 0) return;
  lines_->Rebuild(query_->Root(), appearance_->Style());
  widestLine_ = 0;
  UpdateScrollBars();
  UpdateViews();
}

void TWQueryPanel::UpdateViews(bool placeAll) {
  if (layingOut_ || lines_->Count() == 0) return;
  layingOut_ = true;
  const int pitch = LinePitch();
  const int top = verticalScrollBar()->value() - spacing_.HeaderTop;
  const int first = std::max(0, top / pitch - SpareLines);
  const int last = std::min(lines_->Count() - 1, (top + viewport()->height()) / pitch + SpareLines);

  // Lines out of the window (or gone) give their widgets back, unless the
  // user is editing a word on them.
  std::vector<const TFilterRow*> leaving;
  for (const auto& [row, view] : views_) {
    const int line = row->RowNum();
    const bool inWindow = line >= first && line <= last && lines_->RowAt(line) == row;
    if (!inWindow && !view->HasOpenEditor()) leaving.push_back(row);
  }
  for (const TFilterRow* row : leaving) ReleaseView(row);
  std::vector<detail::TRowView*> fresh;
  for (int line = first; line <= last; ++line) {
    TFilterRow* row = lines_->RowAt(line);
    if (views_.contains(row)) continue;
    std::unique_ptr<detail::TRowView> view = TakeView(row->IsBracket());
    detail::TRowView& bound = *view;
    views_.emplace(row, std::move(view));
    BindView(bound, *row);
    fresh.push_back(&bound);
  }
  if (placeAll) {
    for (const auto& [row, view] : views_) PlaceView(*view);
  } else {
    for (detail::TRowView* view : fresh) PlaceView(*view);
  }
  PlaceAddRow();
  layingOut_ = false;
  UpdateScrollBars();
  if (placeAll) viewport()->update();
}

void TWQueryPanel::PlaceView(detail::TRowView& view) {
  const TFilterRow& row = *view.Row;
  TRowPlacementInput input;
  input.Header = &row == &query_->Root();
  input.RowNum = row.RowNum();
  input.Depth = row.Level();
  input.Button = view.Button->size();
  if (view.Check != nullptr && !view.Check->isHidden()) input.CheckBox = view.Check->sizeHint();
  for (int index = 0; index < RowControlSlots; ++index) {
    const QLabel* label = view.Controls[static_cast<std::size_t>(index)];
    if (label != nullptr && !label->isHidden())
      input.Controls[static_cast<std::size_t>(index)] = label->sizeHint();
  }
  input.Scroll = {horizontalScrollBar()->value(), verticalScrollBar()->value()};
  input.ClientWidth = viewport()->width();
  input.RightToLeft = isRightToLeft();
  const TRowPlacement placed = PlaceRowControls(input, spacing_);

  view.Button->setGeometry(placed.Button);
  if (input.CheckBox.isValid()) view.Check->setGeometry(placed.CheckBox);
  int right = placed.Button.right();
  for (int index = 0; index < RowControlSlots; ++index) {
    const QRect& rect = placed.Controls[static_cast<std::size_t>(index)];
    if (rect.isNull()) continue;
    view.Controls[static_cast<std::size_t>(index)]->setGeometry(rect);
    right = std::max(right, rect.right());
  }
  // The width a line needs: from the margin to its far end, unscrolled.
  int left = placed.Button.left();
  for (const QRect& rect : placed.Controls)
    if (!rect.isNull()) left = std::min(left, rect.left());
  const int extent = input.RightToLeft ? input.ClientWidth - left + input.Scroll.x() + spacing_.HeaderLeft
                                       : right + input.Scroll.x() + spacing_.HeaderLeft;
  widestLine_ = std::max(widestLine_, extent);
}

void TWQueryPanel::PlaceAddRow() {
  if (!appearance_->Has(aoShowAddRow)) {
    addRowLabel_->hide();
    return;
  }
  addRowLabel_->SetCaption(QStringLiteral("< ") + GetTitle(QStringLiteral("ttlClickToAdd")) +
                           QStringLiteral(" >"));
  const detail::TRowView* last = ViewOf(lines_->LastRow(query_->Root()));
  if (last == nullptr) {  // scrolled away with the last line
    addRowLabel_->hide();
    return;
  }
  addRowLabel_->setGeometry(
      PlaceAddRowLine(last->Button->geometry(), addRowLabel_->sizeHint(), spacing_, isRightToLeft()));
  addRowLabel_->show();
}

void TWQueryPanel::UpdateScrollBars() {
  const int lineCount = std::max(lines_->Count(), 1);
  int height = LineTop(lineCount - 1, ButtonHeight(), spacing_) + ButtonHeight() + spacing_.HeaderTop;
  if (appearance_->Has(aoShowAddRow))
    height += spacing_.RowSpace + TPanelMetrics::AddRowGap + addRowLabel_->sizeHint().height();
  const QSize client = viewport()->size();
  verticalScrollBar()->setPageStep(client.height());
  verticalScrollBar()->setSingleStep(LinePitch());
  verticalScrollBar()->setRange(0, std::max(0, height - client.height()));
  horizontalScrollBar()->setPageStep(client.width());
  horizontalScrollBar()->setSingleStep(LinePitch());
  horizontalScrollBar()->setRange(0, std::max(0, widestLine_ - client.width()));
}

void TWQueryPanel::EnsureRowVisible(const TFilterRow& row) {
  if (row.RowNum() < 0) return;
  const int top =
      row.RowNum() == 0 ? 0 : LineTop(row.RowNum(), ButtonHeight(), spacing_) - spacing_.HeaderTop;
  const int bottom = LineTop(row.RowNum(), ButtonHeight(), spacing_) + LinePitch();
  QScrollBar* bar = verticalScrollBar();
  if (top < bar->value())
    bar->setValue(top);
  else if (bottom > bar->value() + viewport()->height())
    bar->setValue(bottom - viewport()->height());
}

TFilterBtn* TWQueryPanel::RowButton(const TFilterRow& row) const {
  const detail::TRowView* view = ViewOf(&row);
  return view != nullptr ? view->Button : nullptr;
}

TFlatCheckBox* TWQueryPanel::RowCheckBox(const TFilterRow& row) const {
  const detail::TRowView* view = ViewOf(&row);
  return view != nullptr ? view->Check : nullptr;
}

QLabel* TWQueryPanel::RowControl(const TFilterRow& row, int index) const {
  const detail::TRowView* view = ViewOf(&row);
  if (view == nullptr || index < 0 || index >= RowControlSlots) return nullptr;
  return view->Controls[static_cast<std::size_t>(index)];
}

QRect TWQueryPanel::RowRect(const TFilterRow& row) const {
  const detail::TRowView* view = ViewOf(&row);
  if (view == nullptr) return {};
  QRect rect = view->Button->geometry();
  for (const QLabel* label : view->Controls)
    if (label != nullptr && !label->isHidden()) rect = rect.united(label->geometry());
  return rect;
}

void TWQueryPanel::scrollContentsBy(int dx, int dy) {
  // Scrolling up or down moves what is drawn and the widgets with it, so
  // only the lines that come into view need placing.
  if (dx == 0 && !layingOut_) {
    viewport()->scroll(0, dy);
    UpdateViews(false);
    return;
  }
  UpdateViews(true);
}

void TWQueryPanel::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  UpdateScrollBars();
  UpdateViews();
}

void TWQueryPanel::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::FontChange) {
    RemakeAllViews();
  }
}

bool TWQueryPanel::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Paint) {
    const bool handled = QAbstractScrollArea::viewportEvent(event);
    PaintRows(static_cast<QPaintEvent*>(event));
    return handled;
  }
  if (event->type() == QEvent::MouseButtonPress) {
    // A click on the background finishes any edit and gives the panel the keys.
    CloseEdit();
    setFocus(Qt::MouseFocusReason);
  }
  return QAbstractScrollArea::viewportEvent(event);
}

void TWQueryPanel::PaintRows(QPaintEvent* /*event*/) {
  if (!appearance_->Has(aoAllowKeyboard) || currentRow_ == nullptr) return;
  const detail::TRowView* view = ViewOf(currentRow_);
  if (view == nullptr) return;
  QPainter painter(viewport());
  const QRect button = view->Button->geometry();
  const int margin = TPanelMetrics::RowBandMargin;
  painter.fillRect(QRect(0, button.top() - margin, viewport()->width(), button.height() + 2 * margin),
                   appearance_->ActiveRowColor());
  if (!controlFrame_) return;
  const QWidget* control = GetCurrentControl();
  if (control == nullptr || control->isHidden()) return;
  const int frame = TPanelMetrics::FrameMargin;
  painter.setPen(appearance_->ControlBorderColor());
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(control->geometry().adjusted(-frame, -frame, frame - 1, frame - 1));
}

}  // namespace ts4
