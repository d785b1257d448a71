// What the rows of the command table call: functions that act on the targets, and templates that make such a function
// of a member of the window, of a sequence, or of the charts.
#pragma once

#include <type_traits>

#include "gui/charts/uChartGestures.h"
#include "gui/charts/uChartMarks.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uCommandTable.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uStatisticsDialog.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/shock/uShockPanel.h"
#include "shell/uExportCommands.h"
#include "shell/uOrderingCommands.h"

namespace command {

using TTargets = const TCommandTargets&;

// Calls a member of one of the targets, or a function of the targets or on the shown mission.
template <auto Command>
void Do(TTargets on, bool /*checked*/) {
  using T = decltype(Command);
  if constexpr (std::is_invocable_v<T, TKorvexMainForm&>) {
    (on.form.*Command)();
  } else if constexpr (std::is_invocable_v<T, TFileFlow&>) {
    (on.flow.*Command)();
  } else if constexpr (std::is_invocable_v<T, TExportCommands&>) {
    (on.exports.*Command)();
  } else if constexpr (std::is_invocable_v<T, TTargets>) {
    Command(on);
  } else {
    Command(on.flow.Mission(), on.views);
  }
}

// A function on the shown mission and its file that returns what it did, for a notice.
template <auto Command>
void DoAndSay(TTargets on, bool /*checked*/) {
  if (!on.flow.FileShown()) return;
  on.controls.ShowNotice(Command(on.flow.Mission(), on.flow.FileName(), on.views), {});
}

// In the order of the event grid that is in front, in the overview in that of time.
template <int Events>
void Step(TTargets on, bool /*checked*/) {
  const bool isShock = on.flow.View() == TView::Shock;
  const auto inTable = on.parts.shock->IsAnalysisInFront() ? StepEventInAnalysis : StepEvent;
  const auto step = isShock ? inTable : StepEventInTime;
  step(on.flow.Mission(), Events, on.views);
}

// Below its button, or below the group where that is collapsed.
void OpenAlarmLimits(TTargets on);
// Opens the document of the manual that belongs to what is in front, with the desktop's program for it. When it is
// missing or cannot be opened, a notice says so.
void OpenManual(TTargets on);
// At the mouse.
void OpenMenu(TTargets on, const char* name);

// Of a chart or of its marks.
template <auto Set>
void SetOf(auto& chart, bool checked) {
  if constexpr (std::is_invocable_v<decltype(Set), TChartMarks&, bool>) {
    (chart.Marks().*Set)(checked);
  } else {
    (chart.*Set)(checked);
  }
}
// There are two events charts, and they look alike.
template <auto Set>
void BothEventsCharts(TTargets on, bool checked) {
  SetOf<Set>(*on.parts.overview->Chart1(), checked);
  SetOf<Set>(*on.parts.shock->Chart20(), checked);
}
// The selected event has three: its curves, its spectrum and its response spectrum.
template <auto Set>
void AllEventCharts(TTargets on, bool checked) {
  for (TAccelerationChart* chart : on.parts.shock->EventCharts()) SetOf<Set>(*chart, checked);
}
template <TSeries Series>
void ShowSeries(TTargets on, bool checked) {
  for (TAccelerationChart* chart : on.parts.shock->EventCharts()) chart->SetSeriesVisible(Series, checked);
}
template <auto Set>
void SensorsChart(TTargets on, bool checked) {
  SetOf<Set>(*on.parts.overview->ChartAllSensors(), checked);
}
template <TSensorAxis Axis>
void LockSensorsAxis(TTargets on, bool checked) {
  on.parts.overview->ChartAllSensors()->SetAxisLocked(Axis, checked);
}

TTimeChart& ShownEventsChart(TTargets on);
TTimeChart& ShownEventChart(TTargets on);
TTimeChart& AllSensorsChart(TTargets on);
template <TTimeChart& (*Chart)(TTargets)>
void StepCursors(TTargets on, bool /*checked*/) {
  Chart(on).Gestures().StepCursors();
}
template <TTimeChart& (*Chart)(TTargets)>
void VisibleStatistics(TTargets on, bool /*checked*/) {
  ShowStatistics(on.form, Chart(on));
}

}  // namespace command
