#include "panel/row_controls.h"

#include <QStyle>

namespace ts4 {

TFilterBtn::TFilterBtn(QWidget* parent) : TWRndBtn(parent) {
  SetAutoSize(true);
}

TFlatCheckBox::TFlatCheckBox(QWidget* parent) : QCheckBox(parent) {}

QSize TFlatCheckBox::sizeHint() const {
  return {style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this),
          style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this)};
}

}  // namespace ts4
