#pragma once

#include <QListWidget>
#include <QPointer>
#include <QRect>

#include "panel/dropdown_list.h"

namespace ts4 {

/// Where a list of `size` opens for a label at `label` (both in global
/// coordinates) on a screen whose free area is `screen`: just below the
/// label, lined up with its leading edge (the left one, or the right one
/// right to left); above it when there is more room there than below;
/// moved sideways to stay on the screen, and never larger than it.
[[nodiscard]] QRect PlaceListNearLabel(const QRect& label, QSize size, const QRect& screen,
                                       Qt::LayoutDirection direction);

/// A label that drops down its items as a list placed next to it.
class TDropDownCustomListBox : public TDropDownList {
  Q_OBJECT

 public:
  using TDropDownList::TDropDownList;
  ~TDropDownCustomListBox() override;

  /// The open list, or null.
  [[nodiscard]] QListWidget* ListBox() const { return list_; }

 protected:
  /// A new list, filled, not yet shown.
  virtual QListWidget* CreateList() = 0;
  /// The input the list holds when it is accepted.
  [[nodiscard]] virtual QString ListInput() const = 0;
  /// Whether the list closing by a click elsewhere accepts it.
  [[nodiscard]] virtual bool AcceptsOnClose() const { return false; }

  void ShowControl() override;
  void HideControl() override;
  void ReadInput() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPointer<QListWidget> list_;
};

/// One choice: a click on an item or Enter accepts, Escape cancels.
class TDropDownListBox : public TDropDownCustomListBox {
  Q_OBJECT

 public:
  using TDropDownCustomListBox::TDropDownCustomListBox;

 protected:
  QListWidget* CreateList() override;
  [[nodiscard]] QString ListInput() const override;
};

/// A list whose items carry check boxes that a click or Space toggles.
class TWCheckListBox : public QListWidget {
  Q_OBJECT

 public:
  explicit TWCheckListBox(QWidget* parent = nullptr);
  void Toggle(QListWidgetItem* item);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

/// Several choices: the value is the values of the checked items joined by
/// commas, the caption their texts joined by ", ". Clicks toggle items;
/// Enter or a click elsewhere accepts, Escape cancels.
class TDropDownCheckListBox : public TDropDownListBox {
  Q_OBJECT

 public:
  using TDropDownListBox::TDropDownListBox;

  /// The positions of the items the value names.
  [[nodiscard]] std::vector<int> CheckedItems() const;

 protected:
  QListWidget* CreateList() override;
  [[nodiscard]] QString ListInput() const override;
  [[nodiscard]] bool AcceptsOnClose() const override { return true; }
  /// Unchecking every item is a choice too: an empty input is taken.
  void AcceptInput() override;
  void ValueChanged() override;
};

}  // namespace ts4
