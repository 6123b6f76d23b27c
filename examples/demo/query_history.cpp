#include "query_history.h"

#include <QUndoStack>

#include "foundation/error.h"
#include "foundation/strings.h"
#include "panel/query_panel.h"

namespace ts4demo {

/// One change: the query's text before and after it.
class TQueryStep : public QUndoCommand {
 public:
  TQueryStep(TQueryHistory& history, QString before, QString after)
      : QUndoCommand(QObject::tr("Edit query")),
        history_(&history),
        before_(std::move(before)),
        after_(std::move(after)) {}

  void undo() override { history_->Restore(before_); }
  void redo() override {
    // Pushing calls redo; the query already holds the text then.
    if (pushed_) history_->Restore(after_);
    pushed_ = true;
  }

 private:
  TQueryHistory* history_;
  QString before_;
  QString after_;
  bool pushed_ = false;
};

TQueryHistory::TQueryHistory(ts4::TWQueryPanel& panel, QObject* parent)
    : QObject(parent), panel_(&panel), stack_(new QUndoStack(this)) {
  // A step keeps a whole query text (shared with the step after it), some
  // 150,000 lines for a query of 10,000 conditions: the stack keeps the last 100.
  stack_->setUndoLimit(100);
  connect(panel_, &ts4::TWQueryPanel::OnChange, this, &TQueryHistory::QueryChanged);
  current_ = Snapshot();
}

QString TQueryHistory::Snapshot() const {
  ts4::TStrings text;
  try {
    panel_->SaveToStrings(text);
  } catch (const ts4::EWTessalyError&) {
    // A value the text cannot hold yet (a date being typed): no step for now.
    return current_;
  }
  return QString::fromStdString(text.Text());
}

void TQueryHistory::Reset() {
  stack_->clear();
  current_ = Snapshot();
}

void TQueryHistory::MarkSaved() {
  stack_->setClean();
}

void TQueryHistory::QueryChanged() {
  if (restoring_) return;
  QString now = Snapshot();
  if (now == current_) return;
  stack_->push(new TQueryStep(*this, current_, now));
  current_ = std::move(now);
}

void TQueryHistory::Restore(const QString& text) {
  restoring_ = true;
  try {
    ts4::TStrings lines;
    lines.SetText(text.toStdString());
    panel_->LoadFromStrings(lines);
  } catch (...) {
    restoring_ = false;
    throw;
  }
  restoring_ = false;
  current_ = text;
}

}  // namespace ts4demo
