#pragma once

#include <QWidget>
#include <array>

class QPlainTextEdit;

namespace ts4 {
class TWCustomDBStructure;
class TWQueryPanel;
}  // namespace ts4

namespace ts4panels {

/// One saved query shown by three query panels side by side, as groups, as
/// and/or words and right to left, with the SQL of the first panel below,
/// kept up to date as the first panel is edited.
class TPanelsWindow : public QWidget {
  Q_OBJECT

 public:
  /// Loads the query file into each panel; the structure must outlive the
  /// window. Throws what the query loader throws.
  TPanelsWindow(ts4::TWCustomDBStructure& structure, const QString& queryFile, QWidget* parent = nullptr);

  /// Gives the first panel the keys with its first condition current, so
  /// that the current-row band and the word frame show.
  void FocusFirstPanel();

 private:
  void ShowSQL();

  std::array<ts4::TWQueryPanel*, 3> panels_{};
  QPlainTextEdit* sql_ = nullptr;
};

}  // namespace ts4panels
