#pragma once

#include <QCheckBox>

#include "panel/round_button.h"

namespace ts4 {

class TFilterRow;

/// The button at the start of a query panel's line: it shows the row's path
/// ("2.1") and opens the row's menu.
class TFilterBtn : public TWRndBtn {
  Q_OBJECT

 public:
  explicit TFilterBtn(QWidget* parent = nullptr);

  /// The row the button stands for (null while unused).
  [[nodiscard]] TFilterRow* Row() const { return row_; }
  void SetRow(TFilterRow* row) { row_ = row; }

 private:
  TFilterRow* row_ = nullptr;
};

/// The enable/disable check box of a line, as large as the style's check mark.
class TFlatCheckBox : public QCheckBox {
  Q_OBJECT

 public:
  explicit TFlatCheckBox(QWidget* parent = nullptr);
  [[nodiscard]] QSize sizeHint() const override;
};

}  // namespace ts4
