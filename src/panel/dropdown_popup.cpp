#include "panel/dropdown_popup.h"

#include <QTimer>
#include <map>

namespace ts4 {

TDropDownPopup::~TDropDownPopup() {
  // Before the label's parts go: the menu closing must find nobody to tell.
  if (menu_ != nullptr) menu_->disconnect(this);
  delete menu_.data();
}

QIcon TDropDownPopup::Image(int index) const {
  return index >= 0 && index < images_.size() ? images_[index] : QIcon();
}

void TDropDownPopup::ShowControl() {
  auto* menu = new TWPopupMenu(this);
  menu_ = menu;
  QFont plain = font();  // the label's font without its underline
  plain.setUnderline(false);
  menu->setFont(plain);
  menu->SetItemsPerColumn(itemLimit_);

  std::map<int, QString> groupOf;
  for (int g = 0; g < ItemGroups().Count(); ++g)
    for (int index : ItemGroups().Items(g).Items) groupOf.emplace(index, ItemGroups().Items(g).Name);
  std::map<QString, TWPopupMenu*> subMenus;
  for (int index : ShownOrder()) {
    const auto group = groupOf.find(index);
    QMenu* target = menu;
    QString groupName;
    if (group != groupOf.end()) {
      groupName = group->second;
      TWPopupMenu*& sub = subMenus[groupName];
      if (sub == nullptr) sub = menu->AddSubMenu(Image(DoGetGroupImageIndex(groupName)), groupName);
      target = sub;
    }
    QAction* action =
        target->addAction(Image(DoGetItemImageIndex(groupName, Items()[index])), Items()[index]);
    action->setData(index);
    if (index == ItemIndex()) {
      action->setCheckable(true);
      action->setChecked(true);
      // The group that holds the current item stands out, so the way to it shows.
      if (target != menu) {
        QFont bold = plain;
        bold.setBold(true);
        static_cast<QMenu*>(target)->menuAction()->setFont(bold);
      }
    }
  }

  connect(menu, &QMenu::triggered, this, [this](QAction* action) {
    if (!Dropped()) return;
    PendingInput = ValueOf(action->data().toInt());
    DropUp(true);
  });
  // A menu closed without a choice cancels; the choice, when there is one,
  // may come right after the menu has closed, so look once it is over.
  connect(menu, &QMenu::aboutToHide, this, [this] {
    QTimer::singleShot(0, this, [this] {
      if (Dropped()) DropUp(false);
    });
  });
  const QPoint below = layoutDirection() == Qt::RightToLeft ? rect().bottomRight() : rect().bottomLeft();
  menu->Popup(mapToGlobal(below + QPoint(0, 1)));
}

void TDropDownPopup::HideControl() {
  if (menu_ == nullptr) return;
  TWPopupMenu* menu = menu_;
  menu_ = nullptr;
  menu->disconnect(this);
  if (QWidget* shown = menu->PopupWidget()) shown->close();
  menu->deleteLater();  // it may be inside one of its own signals
}

}  // namespace ts4
