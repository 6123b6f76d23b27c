#pragma once

#include <QWidget>

#include "foundation/component.h"
#include "query/query_observer.h"
#include "query/query_types.h"

class QToolButton;
class QTreeWidget;

namespace ts4 {

class TWQuery;

/// Lists a query's result fields (caption, expression, sorting) and opens the editor.
///
/// The list follows the query through its notifications only. The sorting
/// of a field can be changed in place (a click on the selected field's
/// sorting, or F2); a double click, or the button, opens
/// TWResultFieldsEditor over the query.
class TWResultFieldsPanel : public QWidget, private TQueryObserver, private TWComponent {
  Q_OBJECT

 public:
  explicit TWResultFieldsPanel(QWidget* parent = nullptr);
  ~TWResultFieldsPanel() override;

  [[nodiscard]] TWQuery* Query() const { return query_; }
  /// Not owned. The panel follows the query's notifications (result fields,
  /// captions, structure, resets) and forgets it when the query is
  /// destroyed first. nullptr detaches.
  void SetQuery(TWQuery* query);
  /// Opens TWResultFieldsEditor over the query (modal); true when OK was pressed.
  bool Execute();

  [[nodiscard]] QTreeWidget* FieldList() const { return list_; }
  [[nodiscard]] QToolButton* EditButton() const { return editButton_; }

  [[nodiscard]] QSize sizeHint() const override;

 signals:
  /// The editor's Help button was pressed.
  void OnRFEHelpClick();

 protected:
  /// F2 on the list edits the current field's sorting, whichever column has the focus.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void QueryReset() override;
  void QueryChanged(TQueryAspects aspects) override;
  void Notification(TWComponent& component) override;

  /// Captions of the columns and the button.
  void ShowCaptions();
  /// The rows from the query's result fields.
  void ShowFields();
  /// The sorting chosen in place for the field at the row.
  void SortingChosen(int row, TSortingType sorting);

  TWQuery* query_ = nullptr;
  QTreeWidget* list_;
  QToolButton* editButton_;
};

}  // namespace ts4
