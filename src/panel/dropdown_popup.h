#pragma once

#include <QIcon>
#include <QList>
#include <QPointer>

#include "panel/dropdown_list.h"
#include "panel/popup_menu.h"

namespace ts4 {

/// A label that drops down its items as a pop-up menu: the items of a group
/// in a sub-menu named after it (where the group's first item stands),
/// images from the image list by the indexes OnGetGroupImageIndex and
/// OnGetItemImageIndex give, long menus split into columns. Choosing an item
/// accepts it; closing the menu otherwise cancels.
class TDropDownPopup : public TDropDownList {
  Q_OBJECT
  Q_PROPERTY(int ItemLimit READ ItemLimit WRITE SetItemLimit)

 public:
  using TDropDownList::TDropDownList;
  ~TDropDownPopup() override;

  /// The images the image-index events refer to.
  [[nodiscard]] const QList<QIcon>& Images() const { return images_; }
  void SetImages(const QList<QIcon>& images) { images_ = images; }
  /// How many items a column of the menu holds; 0: as many as fit on the screen.
  [[nodiscard]] int ItemLimit() const { return itemLimit_; }
  void SetItemLimit(int limit) { itemLimit_ = limit; }

  /// The open menu, or null.
  [[nodiscard]] TWPopupMenu* Menu() const { return menu_; }

 protected:
  void ShowControl() override;
  void HideControl() override;

 private:
  [[nodiscard]] QIcon Image(int index) const;

  QList<QIcon> images_;
  int itemLimit_ = 0;
  QPointer<TWPopupMenu> menu_;
};

}  // namespace ts4
