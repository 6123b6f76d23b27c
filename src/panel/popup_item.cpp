#include "panel/popup_item_p.h"

#include <algorithm>

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QStyleOptionMenuItem>
#include <QStylePainter>

namespace ts4::detail {
namespace {

// The shortcut shown right of the text: after a tab in the text, else the
// action's shortcut, as menus show it.
QString ShortcutText(const QAction& action) {
  const qsizetype tab = action.text().indexOf(u'\t');
  if (tab >= 0) return action.text().mid(tab + 1);
  return action.shortcut().toString(QKeySequence::NativeText);
}

QString PlainText(const QAction& action) {
  const qsizetype tab = action.text().indexOf(u'\t');
  return tab >= 0 ? action.text().left(tab) : action.text();
}

}  // namespace

TPopupItemMetrics MeasureItems(const QList<QAction*>& actions, const QWidget& window) {
  TPopupItemMetrics metrics;
  const int iconExtent = window.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &window);
  for (const QAction* action : actions) {
    // The same room as a menu gives an icon: the small icon size and a little air.
    if (!action->icon().isNull() && action->isIconVisibleInMenu())
      metrics.maxIconWidth = std::max(metrics.maxIconWidth, iconExtent + 4);
    const QString shortcut = ShortcutText(*action);
    if (!shortcut.isEmpty()) {
      const QFontMetrics font(action->font().resolve(window.font()));
      metrics.tabWidth = std::max(metrics.tabWidth, font.horizontalAdvance(shortcut));
    }
    metrics.hasCheckableItems = metrics.hasCheckableItems || action->isCheckable();
  }
  return metrics;
}

TPopupItem::TPopupItem(QAction& action, const TPopupItemMetrics& metrics, QWidget* parent)
    : QWidget(parent), action_(&action), metrics_(metrics) {
  // The window finds the row under the mouse itself; see TPopupWindow.
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

bool TPopupItem::IsSelectable() const {
  return action_ && action_->isEnabled() && !action_->isSeparator() &&
         (!action_->menu() || action_->menu()->isEnabled());
}

void TPopupItem::SetHighlighted(bool highlighted) {
  if (highlighted_ == highlighted) return;
  highlighted_ = highlighted;
  update();
}

// As a menu fills its style option for an action.
void TPopupItem::InitStyleOption(QStyleOptionMenuItem& option) const {
  option.initFrom(this);
  option.state = QStyle::State_None;
  if (window()->isActiveWindow()) option.state |= QStyle::State_Active;
  if (!action_) return;
  if (IsSelectable() || (action_->isSeparator() && isEnabled()))
    option.state |= QStyle::State_Enabled;
  else
    option.palette.setCurrentColorGroup(QPalette::Disabled);
  if (highlighted_ && IsSelectable()) option.state |= QStyle::State_Selected;
  option.font = action_->font().resolve(font());
  option.fontMetrics = QFontMetrics(option.font);
  option.menuHasCheckableItems = metrics_.hasCheckableItems;
  if (!action_->isCheckable()) {
    option.checkType = QStyleOptionMenuItem::NotCheckable;
  } else {
    const bool exclusive = action_->actionGroup() && action_->actionGroup()->isExclusive();
    option.checkType = exclusive ? QStyleOptionMenuItem::Exclusive : QStyleOptionMenuItem::NonExclusive;
    option.checked = action_->isChecked();
  }
  if (action_->menu())
    option.menuItemType = QStyleOptionMenuItem::SubMenu;
  else if (action_->isSeparator())
    option.menuItemType = QStyleOptionMenuItem::Separator;
  else
    option.menuItemType = QStyleOptionMenuItem::Normal;
  if (action_->isIconVisibleInMenu()) option.icon = action_->icon();
  const QString shortcut = ShortcutText(*action_);
  option.text = shortcut.isEmpty() ? PlainText(*action_) : PlainText(*action_) + u'\t' + shortcut;
  option.reservedShortcutWidth = metrics_.tabWidth;
  option.maxIconWidth = metrics_.maxIconWidth;
  option.menuRect = rect();
}

QSize TPopupItem::sizeHint() const {
  QStyleOptionMenuItem option;
  InitStyleOption(option);
  if (!action_ || action_->isSeparator())
    return style()->sizeFromContents(QStyle::CT_MenuItem, &option, QSize(0, 0), this);
  const QRect text = option.fontMetrics.boundingRect(QRect(), Qt::TextSingleLine | Qt::TextShowMnemonic,
                                                     PlainText(*action_));
  QSize contents(text.width(), option.fontMetrics.height());
  if (!option.icon.isNull()) {
    const int iconExtent = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    contents.setHeight(std::max(contents.height(), iconExtent));
  }
  QSize size = style()->sizeFromContents(QStyle::CT_MenuItem, &option, contents, this);
  size.rwidth() += metrics_.tabWidth;
  return size;
}

void TPopupItem::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionMenuItem option;
  InitStyleOption(option);
  option.rect = rect();
  painter.drawControl(QStyle::CE_MenuItem, option);
}

}  // namespace ts4::detail
