#include "panel/system_metrics.h"

#include <algorithm>

#include <QApplication>
#include <QFontMetrics>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionMenuItem>

namespace ts4 {

TWSystemMetrics::TWSystemMetrics(const QStyle* style) : style_(style ? style : QApplication::style()) {}

QFont TWSystemMetrics::MenuFont() {
  return QApplication::font("QMenu");
}

// The item height is the height of the text "I" in the menu font, grown by
// the style's margins around a menu item's contents: what the style's
// sizeFromContents(CT_MenuItem) makes of a text item that tall. The style
// also applies its minimum item height there, so the result matches the
// rows a menu draws for plain text items.
int TWSystemMetrics::MenuItemHeight() const {
  const QFont font = MenuFont();
  const QFontMetrics metrics(font);
  const QRect textBounds = metrics.boundingRect(QStringLiteral("I"));
  QStyleOptionMenuItem option;
  option.menuItemType = QStyleOptionMenuItem::Normal;
  option.checkType = QStyleOptionMenuItem::NotCheckable;
  option.text = QStringLiteral("I");
  option.font = font;
  option.fontMetrics = metrics;
  option.state = QStyle::State_Enabled;
  const QSize item = style_->sizeFromContents(QStyle::CT_MenuItem, &option, textBounds.size(), nullptr);
  return std::max({item.height(), textBounds.height(), 1});
}

int TWSystemMetrics::MenuVerticalFrame() const {
  return style_->pixelMetric(QStyle::PM_MenuVMargin) + style_->pixelMetric(QStyle::PM_MenuPanelWidth);
}

// The menu's frame and margins come off the screen's height first, so that a
// full column still fits.
int TWSystemMetrics::ItemsPerColumn(const QScreen* screen) const {
  if (!screen) screen = QGuiApplication::primaryScreen();
  if (!screen) return 1;
  const int height = screen->availableGeometry().height() - 2 * MenuVerticalFrame();
  return std::max(1, height / MenuItemHeight());
}

}  // namespace ts4
