#pragma once

#include <QImage>
#include <QWidget>
#include <functional>
#include <vector>

class QGridLayout;

namespace ts4gallery {

/// A window that shows every drop-down label, round button and pop-up menu
/// of the widget library in each of its states, side by side with a line
/// saying which state it is.
class TGalleryWindow : public QWidget {
  Q_OBJECT

 public:
  explicit TGalleryWindow(QWidget* parent = nullptr);

  /// Puts the controls into the states the gallery shows (editors and lists
  /// dropped down, buttons hovered and pressed); call it right after show().
  void ShowStates();
  /// The window with the pop-up windows it opened painted over it where
  /// they are on the screen.
  [[nodiscard]] QImage Render();

 private:
  /// Adds a row to the section: what it shows, and the control.
  void AddRow(QGridLayout& section, const QString& state, QWidget* control);

  std::vector<std::function<void()>> states_;
};

}  // namespace ts4gallery
