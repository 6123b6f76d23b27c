#pragma once

#include <QObject>
#include <QString>

class QUndoStack;

namespace ts4 {
class TWQueryPanel;
}

namespace ts4demo {

/// Undo and redo of everything done to a panel's query: after each change
/// the query's text is compared with the one before, and a difference
/// becomes a step of the undo stack that puts either text back. The text
/// holds conditions, parameters, result fields and settings, so a step
/// undoes whatever the change touched.
class TQueryHistory : public QObject {
  Q_OBJECT

 public:
  TQueryHistory(ts4::TWQueryPanel& panel, QObject* parent = nullptr);

  [[nodiscard]] QUndoStack* Stack() const { return stack_; }
  /// Forgets every step: the query as it is now is where history starts,
  /// and it counts as saved.
  void Reset();
  /// The query as it is now is what its file holds.
  void MarkSaved();

 private:
  friend class TQueryStep;
  void QueryChanged();
  /// Puts a text back into the query without making a step of it.
  void Restore(const QString& text);
  [[nodiscard]] QString Snapshot() const;

  ts4::TWQueryPanel* panel_;
  QUndoStack* stack_;
  QString current_;
  bool restoring_ = false;
};

}  // namespace ts4demo
