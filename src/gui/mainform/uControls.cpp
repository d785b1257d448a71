#include "gui/mainform/uControls.h"

#include <QAction>
#include <QCoreApplication>
#include <QDockWidget>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QToolButton>
#include <algorithm>

#include "gui/charts/uNavigatorChart.h"
#include "gui/common/uLogos.h"
#include "gui/mainform/uCommandTable.h"
#include "gui/mainform/uLayouts.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uNotice.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/platform/uTaskbarProgress.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/ribbon/uBackstagePages.h"
#include "gui/ribbon/uRibbon.h"
#include "gui/ribbon/uRibbonGroup.h"
#include "gui/welcome/uLoadingPanel.h"
#include "gui/welcome/uRecentFiles.h"

namespace {

constexpr int kProcessMs = 20;  // a long loop processes messages at most this often

bool HasShownGroup(const QAction& action) {
  for (QObject* widget : action.associatedObjects()) {
    QObject* group = qobject_cast<QToolButton*>(widget);
    while (group != nullptr && qobject_cast<TRibbonGroup*>(group) == nullptr) group = group->parent();
    if (group != nullptr && !static_cast<TRibbonGroup*>(group)->isHidden()) return true;
  }
  return false;
}

QAction* ShownAction(const QWidget& widget) {
  const auto* button = qobject_cast<const QToolButton*>(&widget);
  return button == nullptr ? nullptr : button->defaultAction();
}

}  // namespace

void TControls::SetVisible(std::string_view control, bool visible) {
  auto& widget = NamedChild<QWidget>(FWindow, control);
  if (QAction* action = ShownAction(widget)) {
    action->setVisible(visible);  // the buttons of an action follow it
    return;
  }
  if (auto* panel = qobject_cast<QDockWidget*>(&widget)) {
    FParts.layouts->SetPanelVisible(*panel, visible);
    return;
  }
  if (!visible && FWindow.focusWidget() == &widget) FHiddenWithFocus = &widget;
  widget.setVisible(visible);
  if (visible && FHiddenWithFocus == &widget) {
    widget.setFocus(Qt::OtherFocusReason);
    FHiddenWithFocus.clear();
  }
  if (qobject_cast<TRibbonGroup*>(&widget) == nullptr) return;
  for (const QToolButton* button : widget.findChildren<QToolButton*>()) {
    QAction* action = button->defaultAction();
    if (action == nullptr) continue;
    if (action->property(kKeptBySettings).toBool()) {
      action->setVisible(visible);
    } else {
      action->setEnabled(CanExecute(*action));
    }
  }
}

bool TControls::CanExecute(const QAction& action) const {
  if (!HasShownGroup(action)) return false;
  const unsigned traits = action.property(kTraits).toUInt();
  const TTimeSpan recorded = FParts.docks.ChartNavigator->DataSpan().value_or(TTimeSpan{0, 0});
  return std::ranges::all_of(Needs(), [&](const TNeed& need) {
    return (traits & need.trait) == 0 || (FMission != nullptr && need.met(*FMission, recorded));
  });
}

void TControls::SetEnabled(std::string_view control, bool enabled) {
  auto& widget = NamedChild<QWidget>(FWindow, control);
  QAction* action = ShownAction(widget);
  if (action != nullptr) {
    action->setEnabled(enabled);
  } else {
    widget.setEnabled(enabled);
  }
}

bool TControls::IsVisible(std::string_view control) const {
  return !NamedChild<QWidget>(FWindow, control).isHidden();
}

void TControls::SetText(std::string_view control, std::string_view text) {
  if (control == "PnlLoadingMsg") {
    FParts.loading->SetMessage(QtText(text));
  } else if (control == "PnlLoadingDetail") {
    FParts.loading->SetDetail(QtText(text));
  } else {
    NamedChild<QLabel>(FWindow, control).setText(QtText(text));
  }
}

void TControls::ShowNotice(std::string_view text, const std::filesystem::path& folder) {
  FParts.notice->ShowText(QtText(text), folder);
}

void TControls::SetChecked(std::string_view action) {
  NamedChild<QAction>(FWindow, action).setChecked(true);
}

void TControls::BringToFront(std::string_view panel) {
  auto& widget = NamedChild<QWidget>(FWindow, panel);
  const bool isView = FParts.views->indexOf(&widget) >= 0;
  if (!isView && FParts.front->indexOf(&widget) < 0) {
    widget.raise();
    return;
  }
  FParts.backstage->hide();
  if (isView) FParts.views->setCurrentWidget(&widget);
  FParts.front->setCurrentWidget(isView ? FParts.views : &widget);
}

void TControls::ScrollToTop(std::string_view box) {
  NamedChild<QAbstractScrollArea>(FWindow, box).verticalScrollBar()->setValue(0);
}

void TControls::SetCaption(std::string_view caption) {
  // Qt replaces a single "[*]".
  FWindow.setWindowTitle(QtText(caption).replace("[*]", "[*][*]"));
}

void TControls::BeginRibbonUpdate() {
  FParts.ribbon->BeginUpdate();
}

void TControls::EndRibbonUpdate() {
  FParts.ribbon->EndUpdate();
}

void TControls::SelectRibbonTab(std::string_view tab) {
  FParts.ribbon->SelectTab(QtText(tab));
}

void TControls::ShowRibbonGroups(std::optional<TView> view) {
  for (const TGroup& group : Groups()) {
    if (group.views != 0) SetVisible(group.name, view && (group.views & BitOf(*view)) != 0);
  }
}

void TControls::LoadLogo(std::size_t index, const std::filesystem::path& file) {
  FParts.logos->Load(index, file);
}

void TControls::SaveLogo(std::size_t index, const std::filesystem::path& file) {
  FParts.logos->Save(index, file);
}

void TControls::LoadLayout(const std::filesystem::path& file) {
  FParts.layouts->Load(file);
  FParts.overview->SetSharesHeight(false);
}

void TControls::SaveLayout(const std::filesystem::path& file, const std::string& sections) {
  FParts.layouts->Save(file, sections);
}

void TControls::RestoreDesignedLayout() {
  FParts.layouts->RestoreDesigned();
  FParts.overview->SetSharesHeight(true);
}

void TControls::ShowRecentDocuments(const TRecentDocuments& recent) {
  FParts.recent->ShowRecent(recent);
  FParts.recentFiles->ShowEntries(recent.Files.Entries());
}

void TControls::SetProgressMaximum(int maximum) {
  FParts.loading->SetSteps(maximum);
  FParts.taskbar->SetMaximum(maximum);
}

void TControls::SetProgress(double position) {
  FParts.loading->SetStep(static_cast<int>(position));
  FParts.taskbar->SetPosition(position);
}

void TControls::SetTaskbarProgress(bool on) {
  FParts.taskbar->SetActive(on);
}

void TControls::ProcessMessages(bool atOnce) {
  if (!atOnce && FProcessed.isValid() && FProcessed.elapsed() < kProcessMs) return;
  QCoreApplication::processEvents();
  FProcessed.start();
}

void TControls::CloseWindow() {
  QMetaObject::invokeMethod(&FWindow, &QWidget::close, Qt::QueuedConnection);
}

void TControls::UpdateCommands() {
  unsigned needs = 0;
  for (const TNeed& need : Needs()) needs |= need.trait;
  for (QAction* action : FWindow.actions()) {
    if ((action->property(kTraits).toUInt() & needs) != 0) action->setEnabled(CanExecute(*action));
  }
}
