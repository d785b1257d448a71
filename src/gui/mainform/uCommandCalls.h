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

// Calls a member of one of the targets, or a function on the shown mission.
template <auto Command>
void Do(TTargets on, bool /*checked*/) {
  using T = decltype(Command);
  if constexpr (std::is_invocable_v<T, TKorvexMainForm&>) {
    (on.form.*Command)();
  } else if constexpr (std::is_invocable_v<T, TFileFlow&>) {
    (on.flow.*Command)();
  } else if constexpr (std::is_invocable_v<T, TExportCommands&>) {
    (on.exports.*Command)();
  } else {
    Command(on.flow.Mission(), on.views);
  }
}

// In the order of the event grid that is in front, in the overview in that of time.
template <int Events>
void Step(TTargets on, bool /*checked*/) {
  const bool isShock = on.flow.View() == TView::Shock;
  const auto inTable = on.parts.shock->IsAnalysisInFront() ? StepEventInAnalysis : StepEvent;
  const auto step = isShock ? inTable : StepEventInTime;
  step(on.flow.Mission(), Events, on.views);
}

// A filter without conditions cannot be switched on; its panel asks for some.
void SwitchFilter(TTargets on, bool checked);
void OpenFilter(TTargets on, bool checked);
// Below its button, or below the group where that is collapsed.
void OpenAlarmLimits(TTargets on, bool checked);
void AskWhereTo(TTargets on, bool checked);
void SyncWithEvents(TTargets on, bool checked);
void SyncWithSensors(TTargets on, bool checked);
void DefaultLayout(TTargets on, bool checked);
void UserLayout(TTargets on, bool checked);
void SaveLayout(TTargets on, bool checked);
void SwitchKeptReference(TTargets on, bool checked);
void UseShownAsReference(TTargets on, bool checked);
void SwitchSelectedPin(TTargets on, bool checked);
void SwitchFullScreen(TTargets on, bool checked);
void ListKeys(TTargets on, bool checked);

// A function of the targets, with arguments that the row gives.
template <auto Call, auto... Arguments>
void On(TTargets on, bool /*checked*/) {
  Call(on, Arguments...);
}

// Each opens the menu of exports of its table at the mouse; the two tables of events share one.
void actExportShockGridToCSVExecute(TTargets on, bool checked);
void actExportFilteredShockGridToCSVExecute(TTargets on, bool checked);
void actExportSensorsGridToCSVExecute(TTargets on, bool checked);
void actExportBatteryGridToCSVExecute(TTargets on, bool checked);

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
void EventChart(TTargets on, bool checked) {
  SetOf<Set>(*on.parts.shock->Chart2(), checked);
}
template <auto Set>
void AllEventCharts(TTargets on, bool checked) {
  for (TAccelerationChart* chart : on.parts.shock->EventCharts()) SetOf<Set>(*chart, checked);
}
template <auto Set>
void SpectrumChart(TTargets on, bool checked) {
  SetOf<Set>(*on.parts.shock->ChartSpecAnalysis(), checked);
}
template <TSeries Series>
void ShowSeries(TTargets on, bool checked) {
  for (TAccelerationChart* chart : on.parts.shock->EventCharts()) chart->SetSeriesVisible(Series, checked);
}
template <auto Set>
void ShockView(TTargets on, bool checked) {
  (on.parts.shock->*Set)(checked);
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
