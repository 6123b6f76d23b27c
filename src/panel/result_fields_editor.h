#pragma once

#include <QDialog>
#include <QString>
#include <array>
#include <functional>
#include <string_view>

#include "query/formula_edit.h"
#include "query/rfield_list.h"

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace ts4 {

class TDSField;
class TWQuery;

/// The dialog that edits a query's result fields on a copy; OK writes the copy back as one change.
///
/// Left, the structure's fields by field group; right, the result fields
/// with the selected one's caption, expression, aggregate and sorting, and
/// the sorted fields in the order ORDER BY names them. The buttons between
/// make a result field of the selected structure field, or extend the
/// selected result field's formula with it (+ - * /). Every text comes
/// from the query's captions.
class TWResultFieldsEditor : public QDialog {
  Q_OBJECT

 public:
  explicit TWResultFieldsEditor(TWQuery& query, QWidget* parent = nullptr);
  ~TWResultFieldsEditor() override;

  /// The working copy (for applications and tests).
  [[nodiscard]] TRFieldList& Fields() { return fields_; }
  /// Asked before a result field is deleted, with the filled "Delete Field "%s"?" text; by default a
  /// QMessageBox::question. Tests and applications may replace it.
  std::function<bool(const QString& question)> ConfirmDelete;
  /// Shows why an expression was refused (its field is kept as it was); by
  /// default a QMessageBox::warning.
  std::function<void(const QString& message)> ShowError;

  /// Writes the copy back when it differs from the query's fields, then closes.
  void accept() override;
  /// Moves the selected result field by `delta` places (Ctrl+Up, Ctrl+Down,
  /// or dragging it in the list): the columns of the result follow.
  void MoveField(int delta);

 signals:
  void OnRFEHelpClick();

 protected:
  void changeEvent(QEvent* event) override;
  /// A field dropped in the result list moves there in the copy; the list
  /// never moves its rows itself, it shows the copy.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Building (result_fields_editor.cpp).
  void CreateWidgets();
  void LayOut();
  void Connect();
  /// Arrow icons, which point the way the layout runs.
  void ShowIcons();
  void FillAvailableFields();
  [[nodiscard]] QString Title(std::string_view name) const;

  // Showing the copy (result_fields_editor.cpp).
  /// The rows of the result fields and the sorted fields.
  void ShowFields();
  /// The selected field's caption, expression, aggregate and sorting.
  void ShowCurrent();
  void ShowSorted();
  void UpdateActions();
  void SelectField(int row);
  [[nodiscard]] int CurrentRow() const;
  [[nodiscard]] TResultField* CurrentField() const;
  /// The structure field an item of the available fields stands for, or null.
  [[nodiscard]] TDSField* FieldOf(const QTreeWidgetItem* item) const;
  /// The structure field selected on the left, or null.
  [[nodiscard]] TDSField* AvailableField() const;

  // Gestures (result_fields_editor_edits.cpp).
  void MakeField();
  void AddSelectedFields();
  void CombineField(TFormulaOperator op);
  void NewField();
  void DeleteField();
  void CaptionEdited(const QString& text);
  /// Takes the expression typed; false when it was refused.
  bool ApplyExpression();
  void AggregateChosen(int index);
  void SortingChosen(int index);
  void MoveSorted(int delta);
  void MoveFieldTo(int from, int to);
  /// Changes the field's formula; a caption that was generated follows it.
  template <typename Edit>
  void Reformulate(TResultField& field, Edit&& edit);

  TWQuery& query_;
  TRFieldList fields_;
  QTreeWidget* availableFields_ = nullptr;
  QToolButton* makeButton_ = nullptr;
  std::array<QToolButton*, 4> operatorButtons_{};  // by TFormulaOperator
  QPushButton* addFieldsButton_ = nullptr;
  QTreeWidget* resultFields_ = nullptr;
  QToolButton* newButton_ = nullptr;
  QToolButton* deleteButton_ = nullptr;
  QLineEdit* captionEdit_ = nullptr;
  QLineEdit* expressionEdit_ = nullptr;
  QComboBox* aggregateBox_ = nullptr;
  QComboBox* sortingBox_ = nullptr;
  QListWidget* sortedFields_ = nullptr;
  QToolButton* sortUpButton_ = nullptr;
  QToolButton* sortDownButton_ = nullptr;
  QCheckBox* justSorting_ = nullptr;
  QDialogButtonBox* buttons_ = nullptr;
};

}  // namespace ts4
