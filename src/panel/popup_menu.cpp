#include "panel/popup_menu.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

#include "panel/popup_window_p.h"
#include "panel/system_metrics.h"

namespace ts4 {

struct TWPopupMenuPrivate {
  TWPopupMenu::TMenuBreak breakType = TWPopupMenu::TMenuBreak::mbBarBreak;
  TWPopupSplitType splitType = pstBalanced;
  bool fitToScreen = true;
  int itemsPerColumn = 0;
  std::vector<int> breaks;
  QPointer<detail::TPopupWindow> window;
};

TWPopupMenu::TWPopupMenu(QWidget* parent) : QMenu(parent), d(std::make_unique<TWPopupMenuPrivate>()) {}

TWPopupMenu::TWPopupMenu(const QString& title, QWidget* parent)
    : QMenu(title, parent), d(std::make_unique<TWPopupMenuPrivate>()) {}

TWPopupMenu::~TWPopupMenu() = default;

TWPopupMenu::TMenuBreak TWPopupMenu::BreakType() const {
  return d->breakType;
}
void TWPopupMenu::SetBreakType(TMenuBreak breakType) {
  d->breakType = breakType;
}
TWPopupSplitType TWPopupMenu::PopupSplitType() const {
  return d->splitType;
}
void TWPopupMenu::SetPopupSplitType(TWPopupSplitType splitType) {
  d->splitType = splitType;
}
bool TWPopupMenu::FitToScreen() const {
  return d->fitToScreen;
}
void TWPopupMenu::SetFitToScreen(bool fitToScreen) {
  d->fitToScreen = fitToScreen;
}
int TWPopupMenu::ItemsPerColumn() const {
  return d->itemsPerColumn;
}
void TWPopupMenu::SetItemsPerColumn(int itemsPerColumn) {
  d->itemsPerColumn = std::max(0, itemsPerColumn);
}

TWPopupMenu* TWPopupMenu::AddSubMenu(const QIcon& icon, const QString& title) {
  auto* subMenu = new TWPopupMenu(title, this);
  subMenu->setIcon(icon);
  addMenu(subMenu);
  return subMenu;
}

TWPopupMenu* TWPopupMenu::AddSubMenu(const QString& title) {
  return AddSubMenu(QIcon(), title);
}

const std::vector<int>& TWPopupMenu::ColumnBreaks() const {
  return d->breaks;
}

QWidget* TWPopupMenu::PopupWidget() const {
  return d->window && d->window->isVisible() ? d->window : nullptr;
}

QRect TWPopupMenu::ItemGeometry(const QAction* action) const {
  return PopupWidget() ? d->window->ItemGeometry(action) : QRect();
}

void TWPopupMenu::LaidOut(detail::TPopupWindow* window, const std::vector<int>& breaks) {
  d->window = window;
  d->breaks = breaks;
}

// Gives every TWPopupMenu level below and including menu the breaks for its
// visible actions; with itemsPerColumn 0 the breaks are cleared. Plain QMenu
// levels are split when their window opens; the walk goes through them to
// reach TWPopupMenu levels further down. A menu reached twice is split once.
void TWPopupMenu::SplitLevels(QMenu& menu, int itemsPerColumn, TWPopupSplitType splitType,
                              QList<const QMenu*>& done) {
  if (done.contains(&menu)) return;
  done.append(&menu);
  const QList<QAction*> actions = detail::VisibleActions(menu);
  if (auto* popupMenu = qobject_cast<TWPopupMenu*>(&menu))
    popupMenu->d->breaks = PopupColumnBreaks(static_cast<int>(actions.size()), itemsPerColumn, splitType);
  for (QAction* action : actions)
    if (QMenu* subMenu = action->menu()) SplitLevels(*subMenu, itemsPerColumn, splitType, done);
}

void TWPopupMenu::Popup(QPoint globalPos) {
  if (d->window) d->window->close();
  if (!d->fitToScreen || d->breakType == TMenuBreak::mbNone) {
    QList<const QMenu*> done;
    SplitLevels(*this, 0, d->splitType, done);
    QMenu::popup(globalPos);
    return;
  }
  const QScreen* screen = QGuiApplication::screenAt(globalPos);
  const int itemsPerColumn =
      d->itemsPerColumn > 0 ? d->itemsPerColumn : TWSystemMetrics(style()).ItemsPerColumn(screen);
  QList<const QMenu*> done;
  SplitLevels(*this, itemsPerColumn, d->splitType, done);
  if (detail::VisibleActions(*this).isEmpty()) return;
  const detail::TPopupSettings settings{itemsPerColumn, d->splitType, d->breakType == TMenuBreak::mbBarBreak};
  auto* window = new detail::TPopupWindow(*this, settings, nullptr);
  window->PopupAt(globalPos);
}

QAction* TWPopupMenu::Exec(QPoint globalPos) {
  QPointer<QAction> chosen;
  QEventLoop loop;
  connect(this, &QMenu::triggered, &loop, [&chosen](QAction* action) { chosen = action; });
  // Queued: the loop must be running to be left, and triggered follows aboutToHide.
  connect(this, &QMenu::aboutToHide, &loop, &QEventLoop::quit, Qt::QueuedConnection);
  connect(this, &QObject::destroyed, &loop, &QEventLoop::quit, Qt::QueuedConnection);
  Popup(globalPos);
  if (PopupWidget() || isVisible()) loop.exec();
  return chosen;
}

}  // namespace ts4
