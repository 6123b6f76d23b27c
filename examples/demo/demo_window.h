#pragma once

#include <QMainWindow>
#include <QString>

#include "query_runner.h"

class QLabel;
class QSplitter;
class QStandardItemModel;
class QTableView;

namespace ts4 {
class TWQueryPanel;
class TWResultFieldsPanel;
class TWDBStructure;
}  // namespace ts4

namespace ts4demo {

class TDemoDatabase;
class TQueryHistory;
class TSqlPreview;

/// The demo's main window: a query over the sample database built by
/// clicking, its result fields, its SQL as it changes, and its rows.
class TDemoWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// `remember`: restore and keep the window's state in QSettings.
  explicit TDemoWindow(TDemoDatabase& database, bool remember = true, QWidget* parent = nullptr);
  ~TDemoWindow() override;

  [[nodiscard]] ts4::TWQueryPanel* Panel() const { return panel_; }
  [[nodiscard]] ts4::TWResultFieldsPanel* ResultFieldsPanel() const { return resultFields_; }
  [[nodiscard]] TSqlPreview* Preview() const { return preview_; }
  [[nodiscard]] TQueryHistory* History() const { return history_; }
  [[nodiscard]] QStandardItemModel* Rows() const { return rows_; }
  /// The line under the rows: how many, or what went wrong.
  [[nodiscard]] QString RunStatus() const;
  [[nodiscard]] const QString& FileName() const { return fileName_; }

  /// Reads a saved query; says what went wrong in a message box when `tell`.
  bool OpenQuery(const QString& fileName, bool tell = true);
  bool SaveQuery(const QString& fileName);
  /// Reads an SELECT statement into the query; the query stays as it was
  /// when it cannot be read, and the message says why.
  bool PasteSQL(const QString& sql, QString* problem = nullptr);
  /// Runs the statement with the parameters' values as they are; true when
  /// the rows are shown.
  bool RunWithValues();

 public slots:
  void NewQuery();
  void Open();
  bool Save();
  bool SaveAs();
  void AskForSQL();
  void OpenStructureFile();
  void ImportStructure();
  void OpenDatabase();
  /// Asks for parameter values, when there are any, then runs.
  void Run();
  void EditResultFields();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildActions();
  void StructureReplaced(ts4::TWDBStructure* structure);
  /// Offers to save unsaved changes; false when the user cancels.
  bool MaybeSave();
  void ShowRows(const TQueryRows& rows);
  void ShowRunError(const QString& message);
  void ClearRows();
  /// The query as it is now is the file's (empty: a new query): no steps
  /// to undo, nothing unsaved, no rows of another query.
  void StartOver(const QString& fileName);
  void UpdateTitle();
  void UpdateStatus();
  void Warn(const QString& what, const QString& why);
  /// A database URL the user types; empty when cancelled.
  [[nodiscard]] QString AskForUrl(const QString& title, const QString& what);
  void RestoreState();
  void KeepState() const;

  TDemoDatabase* database_;
  bool remember_;
  ts4::TWQueryPanel* panel_;
  ts4::TWResultFieldsPanel* resultFields_;
  TSqlPreview* preview_;
  TQueryHistory* history_;
  QTableView* table_;
  QStandardItemModel* rows_;
  QLabel* runStatus_;
  QLabel* sourceStatus_;
  QSplitter* vertical_;
  QSplitter* horizontal_;
  QSplitter* lower_;
  QString fileName_;
};

}  // namespace ts4demo
