// The current row and its current word, the keyboard, and the three menus.
#include <QActionGroup>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>

#include "foundation/error.h"
#include "panel/dropdown_label.h"
#include "panel/panel_lines_p.h"
#include "panel/popup_menu.h"
#include "panel/query_panel.h"
#include "panel/row_controls.h"
#include "panel/row_view_p.h"
#include "structure/structure.h"

namespace ts4 {

template <typename Gesture>
void TWQueryPanel::Guarded(Gesture&& gesture) {
  try {
    gesture();
  } catch (const EWTessalyError& error) {
    emit OnError(QString::fromUtf8(error.what()));
  }
}

// ---- The current row -------------------------------------------------------------

void TWQueryPanel::SetCurrentRow(TFilterRow* row) {
  if (row == currentRow_) return;
  const TFilterRow* before = currentRow_;
  currentRow_ = row;
  RepaintRow(before);
  RepaintRow(currentRow_);
}

int TWQueryPanel::GetCurrentRowNum() const {
  return currentRow_ != nullptr ? currentRow_->RowNum() : -1;
}

void TWQueryPanel::SetCurrentRowNum(int line) {
  TFilterRow* row = lines_->RowAt(line);
  if (row == nullptr) return;
  SetCurrentRow(row);
  EnsureRowVisible(*row);
}

TFilterBracket* TWQueryPanel::GetCurrentBracket() const {
  if (currentRow_ == nullptr) return nullptr;
  return currentRow_->IsBracket() ? static_cast<TFilterBracket*>(currentRow_) : currentRow_->Parent();
}

void TWQueryPanel::IncRow() {
  controlFrame_ = true;
  const int line = GetCurrentRowNum();
  if (line >= 0 && line < lines_->Count() - 1)
    SetCurrentRowNum(line + 1);
  else
    RepaintRow(currentRow_);
}

void TWQueryPanel::DecRow() {
  controlFrame_ = true;
  const int line = GetCurrentRowNum();
  if (line > 0)
    SetCurrentRowNum(line - 1);
  else
    RepaintRow(currentRow_);
}

void TWQueryPanel::RepaintRow(const TFilterRow* row) {
  if (row == nullptr) return;
  if (detail::TRowView* view = ViewOf(row)) TintButton(*view);
  const QRect band = RowRect(*row);
  if (band.isNull()) return;
  const int margin = TPanelMetrics::RowBandMargin + TPanelMetrics::FrameMargin;
  viewport()->update(QRect(0, band.top() - margin, viewport()->width(), band.height() + 2 * margin));
}

void TWQueryPanel::SetControlFrame(bool on) {
  if (controlFrame_ == on) return;
  controlFrame_ = on;
  RepaintRow(currentRow_);
}

// ---- Inserting and deleting ------------------------------------------------------------

TFilterCond* TWQueryPanel::InsertCondition(TFilterBracket& bracket) {
  TFilterCond* condition = bracket.AddCond();
  SetCurrentRow(condition);
  EnsureRowVisible(*condition);
  return condition;
}

TFilterBracket* TWQueryPanel::InsertBracket(TFilterBracket& bracket) {
  TFilterBracket* added = bracket.AddBracket();
  if (appearance_->Style() == psAndOr || appearance_->Has(aoNonEmptyBrackets)) {
    TFilterCond* first = added->AddCond();
    SetCurrentRow(first);
    EnsureRowVisible(*first);
  }
  return added;
}

void TWQueryPanel::DeleteRow(TFilterRow& row) {
  TFilterBracket* parent = row.Parent();
  if (parent != nullptr) parent->DeleteRow(row.Index());
}

void TWQueryPanel::SetEnabled(bool enabled) {
  if (currentRow_ != nullptr && currentRow_ != &query_->Root()) currentRow_->SetEnabled(enabled);
}

// ---- The current word --------------------------------------------------------------------

namespace {

// Only drop-down labels can be current; moving right also skips hidden ones.
bool CanBeCurrent(const QLabel* label, bool mustBeVisible) {
  return qobject_cast<const TDropDownLabel*>(label) != nullptr && (!mustBeVisible || !label->isHidden());
}

}  // namespace

int TWQueryPanel::CurrentControlIndex(const TFilterRow& row) const {
  const auto found = controlIndexes_.find(&row);
  if (found != controlIndexes_.end()) return found->second;
  // A row starts at its first drop-down word.
  const detail::TRowView* view = ViewOf(&row);
  if (view == nullptr) return rciNone;
  for (int index = 1; index < RowControlSlots; ++index)
    if (CanBeCurrent(view->Controls[static_cast<std::size_t>(index)], true)) return index;
  return rciNone;
}

void TWQueryPanel::SetCurrentControlIndex(const TFilterRow& row, int index) {
  controlIndexes_[&row] = index;
  if (&row == currentRow_) RepaintRow(currentRow_);
}

QWidget* TWQueryPanel::GetCurrentControl() const {
  if (currentRow_ == nullptr) return nullptr;
  const detail::TRowView* view = ViewOf(currentRow_);
  const int index = CurrentControlIndex(*currentRow_);
  if (view == nullptr || index == rciNone) return nullptr;
  return view->Controls[static_cast<std::size_t>(index)];
}

int TWQueryPanel::GetControlIndex(const QWidget* control) const {
  if (control == nullptr) return rciNone;
  for (const auto& [row, view] : views_)
    for (int index = 1; index < RowControlSlots; ++index)
      if (view->Controls[static_cast<std::size_t>(index)] == control) return index;
  return rciNone;
}

void TWQueryPanel::NextCurControl() {
  if (currentRow_ == nullptr) return;
  const detail::TRowView* view = ViewOf(currentRow_);
  if (view == nullptr) return;
  for (int index = CurrentControlIndex(*currentRow_) + 1; index < RowControlSlots; ++index) {
    if (CanBeCurrent(view->Controls[static_cast<std::size_t>(index)], true)) {
      SetCurrentControlIndex(*currentRow_, index);
      return;
    }
  }
}

void TWQueryPanel::PrevCurControl() {
  if (currentRow_ == nullptr) return;
  const detail::TRowView* view = ViewOf(currentRow_);
  if (view == nullptr) return;
  for (int index = CurrentControlIndex(*currentRow_) - 1; index > 0; --index) {
    if (CanBeCurrent(view->Controls[static_cast<std::size_t>(index)], false)) {
      SetCurrentControlIndex(*currentRow_, index);
      return;
    }
  }
  FirstCurControl();
}

void TWQueryPanel::FirstCurControl() {
  if (currentRow_ == nullptr) return;
  const detail::TRowView* view = ViewOf(currentRow_);
  if (view == nullptr) return;
  for (int index = 1; index < RowControlSlots; ++index) {
    if (CanBeCurrent(view->Controls[static_cast<std::size_t>(index)], false)) {
      SetCurrentControlIndex(*currentRow_, index);
      return;
    }
  }
}

// ---- Keys ------------------------------------------------------------------------------

void TWQueryPanel::keyPressEvent(QKeyEvent* event) {
  if (!query_->Active() || !appearance_->Has(aoAllowKeyboard)) {
    QAbstractScrollArea::keyPressEvent(event);
    return;
  }
  const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
  const int key = event->key();
  if (key == Qt::Key_Insert) {
    TFilterBracket* bracket = GetCurrentBracket();
    if (bracket == nullptr) bracket = &query_->Root();
    Guarded([&] {
      if (modifiers == Qt::AltModifier)
        InsertBracket(*bracket);
      else
        InsertCondition(*bracket);
    });
    return;
  }
  const bool needsRow = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Left ||
                        key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down ||
                        key == Qt::Key_Delete;
  if (!needsRow) {
    QAbstractScrollArea::keyPressEvent(event);
    return;
  }
  // The keys of the table act on a current row that is shown, without modifiers
  // (Delete only with Ctrl); the others are taken and do nothing.
  if (currentRow_ == nullptr || currentRow_->RowNum() < 0) return;
  if (key == Qt::Key_Delete) {
    if (modifiers == Qt::ControlModifier && currentRow_ != &query_->Root()) DeleteRow(*currentRow_);
    return;
  }
  if (modifiers != Qt::NoModifier) return;
  EnsureRowVisible(*currentRow_);
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (auto* word = qobject_cast<TDropDownLabel*>(GetCurrentControl())) word->DropDown();
      break;
    case Qt::Key_Left:
      controlFrame_ = true;
      PrevCurControl();
      RepaintRow(currentRow_);
      break;
    case Qt::Key_Right:
      controlFrame_ = true;
      NextCurControl();
      RepaintRow(currentRow_);
      break;
    case Qt::Key_Up: DecRow(); break;
    case Qt::Key_Down: IncRow(); break;
    default: break;
  }
}

// ---- Tab between the words ------------------------------------------------------------

namespace {

// What Tab stops at on a line, in order: its check box, its button, its words.
std::vector<QWidget*> TabStops(const detail::TRowView& view) {
  std::vector<QWidget*> stops;
  if (view.Check != nullptr && !view.Check->isHidden()) stops.push_back(view.Check);
  stops.push_back(view.Button);
  for (QLabel* label : view.Controls)
    if (CanBeCurrent(label, true) && label->isEnabled()) stops.push_back(label);
  return stops;
}

}  // namespace

bool TWQueryPanel::focusNextPrevChild(bool next) {
  if (layingOut_ || resetting_) return false;
  // The stops of a line; after the last line, the add-row line.
  const auto stopsOf = [this](int line) {
    if (line == lines_->Count())
      return addRowLabel_->isHidden() ? std::vector<QWidget*>{} : std::vector<QWidget*>{addRowLabel_};
    TFilterRow* row = lines_->RowAt(line);
    EnsureRowVisible(*row);
    const detail::TRowView* view = ViewOf(row);
    return view != nullptr ? TabStops(*view) : std::vector<QWidget*>{};
  };
  // Where the focus is: a stop of a line, or the panel itself (before the
  // current line's first stop, or after its last going back).
  const QWidget* focus = QApplication::focusWidget();
  int line = std::max(GetCurrentRowNum(), 0);
  int stop = next ? -1 : RowControlSlots + 2;
  bool inside = focus == this;
  if (focus == addRowLabel_) {
    line = lines_->Count();
    stop = 0;
    inside = true;
  }
  for (const auto& [row, view] : views_) {
    const std::vector<QWidget*> stops = TabStops(*view);
    const auto found = std::find(stops.begin(), stops.end(), focus);
    if (found == stops.end()) continue;
    line = row->RowNum();
    stop = static_cast<int>(found - stops.begin());
    inside = true;
  }
  if (!inside) return QAbstractScrollArea::focusNextPrevChild(next);
  const int step = next ? 1 : -1;
  for (; line >= 0 && line <= lines_->Count(); line += step, stop = next ? -1 : RowControlSlots + 2) {
    const std::vector<QWidget*> stops = stopsOf(line);
    stop = std::clamp(stop, -1, static_cast<int>(stops.size())) + step;
    if (stop < 0 || stop >= static_cast<int>(stops.size())) continue;
    QWidget* target = stops[static_cast<std::size_t>(stop)];
    if (TFilterRow* row = lines_->RowAt(line)) {
      SetCurrentRow(row);
      if (const int index = GetControlIndex(target); index != rciNone) SetCurrentControlIndex(*row, index);
    }
    target->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
  }
  // Past the last stop (or before the first): on to what follows the panel.
  for (QWidget* other = next ? nextInFocusChain() : previousInFocusChain(); other != this;
       other = next ? other->nextInFocusChain() : other->previousInFocusChain()) {
    if (isAncestorOf(other) || !(other->focusPolicy() & Qt::TabFocus) || !other->isVisible() ||
        !other->isEnabled())
      continue;
    other->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
  }
  return false;
}

// ---- Menus --------------------------------------------------------------------------------

namespace {

QAction* AddTagged(QMenu& menu, int tag) {
  QAction* action = menu.addAction(QString());
  action->setData(tag);
  return action;
}

}  // namespace

void TWQueryPanel::CreateMenus() {
  panelMenu_ = new TWPopupMenu(this);
  AddTagged(*panelMenu_, mtAddCond);
  AddTagged(*panelMenu_, mtAddBracket);
  rowMenu_ = new TWPopupMenu(this);
  AddTagged(*rowMenu_, mtAddCond);
  AddTagged(*rowMenu_, mtAddBracket);
  AddTagged(*rowMenu_, mtDelRow);
  rowMenu_->addSeparator();
  AddTagged(*rowMenu_, mtEnableDisable);
  for (TWPopupMenu* menu : {panelMenu_, rowMenu_})
    connect(menu, &QMenu::triggered, this,
            [this](QAction* action) { MenuItemClick(action->data().toInt()); });

  valueMenu_ = new TWPopupMenu(this);
  auto* group = new QActionGroup(valueMenu_);
  for (const int tag : {vmtConstant, vmtParameter}) {
    QAction* action = AddTagged(*valueMenu_, tag);
    action->setCheckable(true);
    group->addAction(action);
  }
  valueMenu_->actions().first()->setChecked(true);
  connect(valueMenu_, &QMenu::triggered, this,
          [this](QAction* action) { ValueMenuItemClick(action->data().toInt()); });
  UpdateMenuCaptions();
}

void TWQueryPanel::UpdateMenuCaptions() {
  static constexpr std::pair<int, const char*> RowItems[] = {{mtAddCond, "ttlAddCond"},
                                                             {mtAddBracket, "ttlAddBracket"},
                                                             {mtDelRow, "ttlDelRow"},
                                                             {mtEnableDisable, "ttlEnableDisable"}};
  for (TWPopupMenu* menu : {panelMenu_, rowMenu_})
    for (QAction* action : menu->actions())
      for (const auto& [tag, key] : RowItems)
        if (!action->isSeparator() && action->data().toInt() == tag)
          action->setText(GetTitle(QLatin1String(key)));
  const QList<QAction*> values = valueMenu_->actions();
  values[0]->setText(GetTitle(QStringLiteral("ttlConstant")));
  values[1]->setText(GetTitle(QStringLiteral("ttlParameter")));
  values[1]->setVisible(appearance_->Has(aoAllowParams));
}

void TWQueryPanel::MainButtonClick() {
  // Conditions need a field to test: without one the menu has nothing to offer.
  const TWCustomDBStructure* structure = query_->DbStruct();
  bool anyField = false;
  for (int i = 0; structure != nullptr && !anyField && i < structure->FieldCount(); ++i)
    anyField = structure->Fields(i)->OperatCount() > 0;
  if (!anyField) return;
  SetCurrentRow(&query_->Root());
  const detail::TRowView* view = ViewOf(&query_->Root());
  const QPoint corner =
      view != nullptr ? view->Button->mapToGlobal(view->Button->rect().bottomLeft()) : QCursor::pos();
  panelMenu_->Popup(corner);
}

void TWQueryPanel::RowButtonClick(TFilterBtn& button) {
  if (button.Row() == nullptr) return;
  lastClickedRow_ = button.Row();
  SetCurrentRow(button.Row());
  rowMenu_->Popup(button.mapToGlobal(button.rect().bottomLeft()));
}

void TWQueryPanel::MenuItemClick(int tag) {
  TFilterBracket* bracket = GetCurrentBracket();
  if (bracket == nullptr) bracket = &query_->Root();
  switch (tag) {
    case mtAddBracket: Guarded([&] { InsertBracket(*bracket); }); break;
    case mtAddCond: InsertCondition(*bracket); break;
    case mtDelRow:
      // The row of the button whose menu this is, not the keyboard's current row.
      if (lastClickedRow_ != nullptr && lastClickedRow_ != &query_->Root()) DeleteRow(*lastClickedRow_);
      break;
    case mtEnableDisable:
      if (currentRow_ != nullptr) SetEnabled(!currentRow_->Enabled());
      break;
    default: break;
  }
}

void TWQueryPanel::VPopup() {
  const auto* condition = dynamic_cast<const TFilterCond*>(currentRow_);
  const int control = condition != nullptr ? CurrentControlIndex(*condition) : rciNone;
  const bool isParam = condition != nullptr && ((control == rciValue1 && condition->Value1IsParam()) ||
                                                (control == rciValue2 && condition->Value2IsParam()));
  const QList<QAction*> items = valueMenu_->actions();
  items[isParam ? 1 : 0]->setChecked(true);
  items[1]->setVisible(appearance_->Has(aoAllowParams));
}

}  // namespace ts4
