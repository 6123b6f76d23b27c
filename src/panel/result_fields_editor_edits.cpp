// The result fields editor: what its buttons, edits and choices do to the copy.
#include <QLineEdit>
#include <QListWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <algorithm>

#include "foundation/error.h"
#include "foundation/format.h"
#include "foundation/strings.h"
#include "panel/qt_strings_p.h"
#include "panel/result_fields_editor.h"
#include "query/query.h"

namespace ts4 {

using detail::FromQ;
using detail::ToQ;

template <typename Edit>
void TWResultFieldsEditor::Reformulate(TResultField& field, Edit&& edit) {
  // A caption the user wrote stays; one made from the formula is made again.
  const bool captionFollows = field.CaptionGenerated();
  edit();
  if (captionFollows) field.GenerateCaption();
  ShowFields();
  ShowCurrent();
}

void TWResultFieldsEditor::MakeField() {
  TDSField* field = AvailableField();
  if (field == nullptr) return;
  fields_.Add(*field);
  ShowFields();
  SelectField(fields_.Count() - 1);
}

// Every selected field, and every field of a selected group, in the order the tree shows them.
void TWResultFieldsEditor::AddSelectedFields() {
  const int first = fields_.Count();
  for (QTreeWidgetItemIterator it(availableFields_); *it != nullptr; ++it) {
    const QTreeWidgetItem* item = *it;
    const bool chosen = item->isSelected() || (item->parent() != nullptr && item->parent()->isSelected());
    if (TDSField* field = FieldOf(item); field != nullptr && chosen) fields_.Add(*field);
  }
  if (fields_.Count() == first) return;
  ShowFields();
  SelectField(fields_.Count() - 1);
}

void TWResultFieldsEditor::CombineField(TFormulaOperator op) {
  TResultField* field = CurrentField();
  TDSField* operand = AvailableField();
  if (field == nullptr || operand == nullptr) return;
  Reformulate(*field, [&] { field->Combine(op, *operand); });
}

void TWResultFieldsEditor::NewField() {
  fields_.New();
  ShowFields();
  SelectField(fields_.Count() - 1);
  expressionEdit_->setFocus();
}

void TWResultFieldsEditor::DeleteField() {
  const int row = CurrentRow();
  if (row < 0) return;
  const QString question = ToQ(Format(query_.GetTitle("ttlMgsDeleteField"), {fields_.GetCaption(row)}));
  if (ConfirmDelete && !ConfirmDelete(question)) return;
  fields_.Delete(row);
  ShowFields();
  SelectField(std::min(row, fields_.Count() - 1));
}

void TWResultFieldsEditor::CaptionEdited(const QString& text) {
  TResultField* field = CurrentField();
  if (field == nullptr) return;
  field->SetCaption(FromQ(text));
  ShowFields();  // the rows only: the edit keeps its cursor
}

bool TWResultFieldsEditor::ApplyExpression() {
  TResultField* field = CurrentField();
  if (field == nullptr) return true;
  const std::string text = FromQ(expressionEdit_->text());
  if (text == field->GetExpression()) return true;
  try {
    Reformulate(*field, [&] { field->ProcessExpression(text); });
    return true;
  } catch (const EWTessalyError& error) {
    // The field is as it was; the edit shows it so again before the message
    // takes the focus (which finishes the edit once more).
    ShowCurrent();
    if (ShowError) ShowError(ToQ(error.what()));
    return false;
  }
}

void TWResultFieldsEditor::AggregateChosen(int index) {
  TResultField* field = CurrentField();
  if (field == nullptr || index < 0 || index > static_cast<int>(afAvg)) return;
  Reformulate(*field, [&] { field->SetAggregate(static_cast<TAggregateFunction>(index)); });
}

void TWResultFieldsEditor::SortingChosen(int index) {
  const int row = CurrentRow();
  if (row < 0 || index < 0 || index > static_cast<int>(stDescending)) return;
  fields_.SetSorting(row, static_cast<TSortingType>(index));
  ShowFields();
}

void TWResultFieldsEditor::MoveSorted(int delta) {
  const int from = sortedFields_->currentRow();
  const int to = from + delta;
  if (from < 0 || to < 0 || to >= sortedFields_->count()) return;
  fields_.MoveSortedField(from, to);
  ShowSorted();  // the moved field stays the current one
  UpdateActions();
}

void TWResultFieldsEditor::MoveField(int delta) {
  const int from = CurrentRow();
  const int to = from + delta;
  if (from < 0 || to < 0 || to >= fields_.Count()) return;
  MoveFieldTo(from, to);
}

void TWResultFieldsEditor::MoveFieldTo(int from, int to) {
  fields_.Move(from, to);
  ShowFields();
  SelectField(to);
}

void TWResultFieldsEditor::accept() {
  if (!ApplyExpression()) return;
  // A new field the user never gave an expression would write its bare
  // marker into the SQL: it is not kept.
  for (int i = fields_.Count() - 1; i >= 0; --i)
    if (fields_[i]->FieldCount() == 0 && fields_[i]->Formula() == "@1") fields_.Delete(i);
  TRFieldList& target = query_.QResult().ResultFields();
  TStrings before;
  TStrings after;
  target.SaveToStrings(before);
  fields_.SaveToStrings(after);
  if (before != after) query_.QResult().SetResultFields(fields_);
  QDialog::accept();
}

}  // namespace ts4
