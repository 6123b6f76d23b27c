#pragma once

#include <QDialog>
#include <QStringList>
#include <vector>

namespace ts4 {
class TDropDownLabel;
class TWQuery;
}  // namespace ts4

namespace ts4demo {

/// Asks for the value of each of a query's parameters before it runs. Each
/// value is edited by the control the panel gives its condition's field (a
/// number edit, a date picker, a list of the field's values ...), and
/// starts from the value the parameter holds.
class TParamDialog : public QDialog {
  Q_OBJECT

 public:
  explicit TParamDialog(ts4::TWQuery& query, QWidget* parent = nullptr);

  /// The value of each parameter, in the query's order.
  [[nodiscard]] QStringList Values() const;
  /// The control of the parameter at the index.
  [[nodiscard]] ts4::TDropDownLabel* Editor(int index) const { return editors_.at(std::size_t(index)); }

 private:
  std::vector<ts4::TDropDownLabel*> editors_;
};

}  // namespace ts4demo
