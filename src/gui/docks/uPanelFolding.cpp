#include "gui/docks/uPanelFolding.h"

#include <QAction>
#include <QKeyEvent>
#include <QMainWindow>
#include <QResizeEvent>
#include <QTabBar>
#include <algorithm>
#include <utility>

#include "gui/common/uTheme.h"
#include "gui/docks/uFoldingPanel.h"

namespace {

constexpr int kNarrow = 1200;  // px of the window's width, without the panel that comes first

bool Shows(const QTabBar& tabs, const QDockWidget& panel) {
  for (int i = 0; i < tabs.count(); ++i) {
    if (tabs.tabText(i) == panel.windowTitle()) return true;
  }
  return false;
}

}  // namespace

TPanelFolding::TPanelFolding(QMainWindow& window, QList<TFoldingPanel*> panels, QList<TFoldingPanel*> inNarrow)
    : QObject(&window), FWindow(window), FPanels(std::move(panels)), FInNarrow(std::move(inNarrow)) {
  FWindow.installEventFilter(this);
  for (TFoldingPanel* panel : FPanels) {
    connect(panel, &TFoldingPanel::FoldAsked, this, [this, panel](bool folded) { Choose(*panel, folded); });
    for (auto changed : {&QDockWidget::visibilityChanged, &QDockWidget::topLevelChanged}) {
      connect(panel, changed, this, &TPanelFolding::UpdateLater);
    }
    connect(panel, &QDockWidget::dockLocationChanged, this, &TPanelFolding::UpdateLater);
    // The command of a folded panel opens it instead of closing it.
    connect(panel->toggleViewAction(), &QAction::triggered, this, [this, panel] {
      if (!IsFolded(*panel, FWindow.size())) return;
      panel->show();
      panel->raise();
      Choose(*panel, false);
    });
  }
}

void TPanelFolding::GiveWayTo(QDockWidget& panel) {
  FFirst = &panel;
  const auto update = [this] {
    for (TFoldingPanel* each : FPanels) each->KeepOpenSize();
    UpdateLater();
  };
  connect(&panel, &QDockWidget::visibilityChanged, this, update);
  connect(&panel, &QDockWidget::topLevelChanged, this, update);
}

TPanelFolding::TChoices TPanelFolding::Choices() const {
  TChoices choices = FChoices;
  for (const TFoldingPanel* panel : FPanels) {
    if (panel->Fold() != TFold::Open) choices[panel->objectName()] = true;
  }
  return choices;
}

void TPanelFolding::SetChoices(const TChoices& choices) {
  FChoices.clear();
  for (TFoldingPanel* panel : FPanels) {
    const QString name = panel->objectName();
    if (choices.contains(name)) FChoices[name] = choices[name];
    if (choices.value(name)) panel->KeepOpenSize();
  }
  UpdateLater();
}

bool TPanelFolding::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &FWindow) {
    if (event->type() == QEvent::Resize) {
      // A smaller window squeezes the panels before they are folded.
      const QSize before = static_cast<QResizeEvent*>(event)->oldSize();
      for (TFoldingPanel* panel : FPanels) {
        if (IsFolded(*panel, FWindow.size()) && !IsFolded(*panel, before)) panel->KeepOpenSize();
      }
    }
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show) UpdateLater();
  } else if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const auto* tabs = static_cast<QTabBar*>(watched);
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
      OpenTab(tabs->tabText(tabs->currentIndex()));
  }
  return QObject::eventFilter(watched, event);
}

void TPanelFolding::Choose(TFoldingPanel& panel, bool folded) {
  if (folded) panel.KeepOpenSize();
  FChoices[panel.objectName()] = folded;
  for (const QDockWidget* tab : FWindow.tabifiedDockWidgets(&panel)) FChoices[tab->objectName()] = folded;
  Update();
}

void TPanelFolding::UpdateLater() {
  if (!std::exchange(FIsDue, true)) QMetaObject::invokeMethod(this, &TPanelFolding::Update, Qt::QueuedConnection);
}

bool TPanelFolding::IsFolded(const TFoldingPanel& panel, const QSize& window) const {
  const bool isFirstBeside = FFirst != nullptr && !FFirst->isHidden() && !FFirst->isFloating();
  const int width = window.width() - (isFirstBeside ? FFirst->width() : 0);
  const bool isSmall = FInNarrow.contains(&panel) ? width < kNarrow : window.height() < kLowWindow;
  return !panel.isFloating() && FChoices.value(panel.objectName(), isSmall);
}

// Beside the views, and so is every visible panel of that side.
bool TPanelFolding::IsColumnFolded(const TFoldingPanel& panel) const {
  const Qt::DockWidgetArea area = FWindow.dockWidgetArea(const_cast<TFoldingPanel*>(&panel));
  if (area != Qt::LeftDockWidgetArea && area != Qt::RightDockWidgetArea) return false;
  const QList<QDockWidget*> all = FWindow.findChildren<QDockWidget*>();
  return std::ranges::all_of(all, [&](QDockWidget* other) {
    if (other->isHidden() || other->isFloating() || FWindow.dockWidgetArea(other) != area) return true;
    const auto* folding = qobject_cast<TFoldingPanel*>(other);
    return folding != nullptr && IsFolded(*folding, FWindow.size());
  });
}

void TPanelFolding::Update() {
  FIsDue = false;
  if (!FWindow.isVisible()) return;
  QList<TFoldingPanel*> opened;
  bool changed = false;
  for (TFoldingPanel* panel : FPanels) {
    const bool inColumn = IsColumnFolded(*panel);
    TFold fold = TFold::Open;
    if (IsFolded(*panel, FWindow.size())) {
      const bool hasTabs = !FWindow.tabifiedDockWidgets(panel).isEmpty();
      fold = !inColumn ? TFold::Flat : hasTabs ? TFold::Tab : TFold::Upright;
    }
    const Qt::DockWidgetArea area = FWindow.dockWidgetArea(panel);
    const auto outside = area == Qt::LeftDockWidgetArea ? QTabWidget::West : QTabWidget::East;
    if (!panel->isHidden()) FWindow.setTabPosition(area, inColumn ? outside : QTabWidget::South);
    if (panel->Fold() == fold) continue;
    changed = true;
    if (fold == TFold::Open) opened << panel;
    panel->SetFold(fold);
  }
  WatchTabs();
  if (!changed) return;
  Resize(opened);
  Q_EMIT Changed();
}

// As large as they were.
void TPanelFolding::Resize(const QList<TFoldingPanel*>& opened) {
  QList<QDockWidget*> panels;
  QList<int> widths;
  QList<int> heights;
  for (TFoldingPanel* panel : opened) {
    panels << panel;
    widths << panel->OpenSize().width();
    heights << panel->OpenSize().height();
  }
  // Their room is that of the other open panels of their side; without a word to them Qt shares the loss.
  for (TFoldingPanel* other : FPanels) {
    int growth = 0;
    for (qsizetype i = 0; i < opened.size(); ++i) {
      if (FWindow.dockWidgetArea(opened[i]) == FWindow.dockWidgetArea(other)) growth = std::max(growth, heights[i]);
    }
    if (growth == 0 || opened.contains(other) || other->Fold() != TFold::Open || !other->isVisible()) continue;
    panels << other;
    widths << other->width();
    heights << std::max(1, other->height() - growth);
  }
  FWindow.resizeDocks(panels, widths, Qt::Horizontal);
  FWindow.resizeDocks(panels, heights, Qt::Vertical);
}

// Of a folded panel that is a tab, or has tabs below its title. Qt makes tab bars as it needs them.
void TPanelFolding::WatchTabs() {
  for (QTabBar* tabs : FWindow.findChildren<QTabBar*>(QString(), Qt::FindDirectChildrenOnly)) {
    // Qt keeps the bar of a panel whose companions are closed out of sight.
    tabs->setFocusPolicy(tabs->count() > 1 ? Qt::TabFocus : Qt::NoFocus);
    tabs->setDrawBase(false);
    tabs->setUsesScrollButtons(false);
    tabs->removeEventFilter(this);
    tabs->installEventFilter(this);
    tabs->disconnect(this);
    connect(tabs, &QTabBar::tabBarClicked, this, [this, tabs](int index) { OpenTab(tabs->tabText(index)); });
    // The tabs of a folded column keep their words.
    for (TFoldingPanel* panel : FPanels) {
      if (Shows(*tabs, *panel)) panel->setMinimumHeight(panel->Fold() == TFold::Tab ? tabs->sizeHint().height() : 0);
    }
  }
}

void TPanelFolding::OpenTab(const QString& title) {
  for (TFoldingPanel* panel : FPanels) {
    if (panel->windowTitle() == title && panel->Fold() != TFold::Open) Choose(*panel, false);
  }
}
