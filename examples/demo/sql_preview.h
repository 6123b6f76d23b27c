#pragma once

#include <QWidget>

class QComboBox;
class QPlainTextEdit;
class QToolButton;

namespace ts4 {
class TWQueryPanel;
}

namespace ts4demo {

/// The SQL a panel's query writes, shown as it changes, with the join
/// syntax and the options it is written with. The choices are the query's
/// own settings: the options travel in its text (saved, and undone with
/// it), the syntax stays with the window, as query files do not keep it.
class TSqlPreview : public QWidget {
  Q_OBJECT

 public:
  explicit TSqlPreview(ts4::TWQueryPanel& panel, QWidget* parent = nullptr);

  /// The statement shown, or "-- " and why there is none.
  [[nodiscard]] QString Text() const;
  [[nodiscard]] QComboBox* SyntaxBox() const { return syntax_; }
  [[nodiscard]] QToolButton* OptionsButton() const { return options_; }

 public slots:
  /// Writes the statement again and shows the query's settings.
  void Refresh();

 private:
  ts4::TWQueryPanel* panel_;
  QComboBox* syntax_;
  QToolButton* options_;
  QPlainTextEdit* text_;
};

}  // namespace ts4demo
