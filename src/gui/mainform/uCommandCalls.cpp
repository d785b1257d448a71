#include "gui/mainform/uCommandCalls.h"

#include <fmt/format.h>

#include <QCursor>
#include <QDesktopServices>
#include <QFileInfo>
#include <QMenu>
#include <QUrl>

#include "base/uFiles.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/common/uQtText.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/settings/uAlarmLimitsPanel.h"

namespace command {

namespace {

TManualTopic TopicInFront(const TCommandTargets& on) {
  const TMainParts& parts = on.parts;
  if (!on.flow.FileShown() || parts.backstage->isVisible()) return TManualTopic::QuickStart;
  if (on.flow.View() == TView::Report) return TManualTopic::Output;
  if (parts.docks.ChartNavigator->hasFocus()) return TManualTopic::Charts;
  if (on.flow.View() == TView::DamageBoundary || on.flow.View() == TView::Statistics) return TManualTopic::Metrics;
  if (on.flow.View() == TView::Overview) return TManualTopic::QuickStart;
  return &parts.shock->ChartInFront() != parts.shock->Chart2() ? TManualTopic::Metrics : TManualTopic::Charts;
}

}  // namespace

void OpenAlarmLimits(TTargets on) {
  const auto* button = on.form.findChild<QWidget*>("dxBarAlarmLimits");
  on.parts.alarmLimits->OpenBelow(button->isVisible() ? *button : *on.form.findChild<QWidget*>("btngrpAlarm"));
}

void OpenManual(TTargets on) {
  const std::string file = Utf8FromPath(ManualDocument(on.program, TopicInFront(on)));
  if (!QFileInfo::exists(QtText(file))) {
    on.controls.ShowNotice(fmt::format("The manual is missing: {}", file), {});
  } else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(QtText(file)))) {
    on.controls.ShowNotice(fmt::format("The desktop has no program for {}", file), PathFromUtf8(file).parent_path());
  }
}

void OpenMenu(TTargets on, const char* name) {
  on.form.findChild<QMenu*>(name)->popup(QCursor::pos());
}

TTimeChart& ShownEventsChart(TTargets on) {
  return on.flow.View() == TView::Shock ? *on.parts.shock->Chart20() : *on.parts.overview->Chart1();
}

TTimeChart& ShownEventChart(TTargets on) {
  return on.parts.shock->ChartInFront();
}

TTimeChart& AllSensorsChart(TTargets on) {
  return *on.parts.overview->ChartAllSensors();
}

}  // namespace command
