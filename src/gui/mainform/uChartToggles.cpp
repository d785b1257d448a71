#include "gui/mainform/uChartToggles.h"

#include <QAction>
#include <QToolButton>
#include <type_traits>

#include "gui/charts/uChartMarks.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uGuard.h"
#include "gui/common/uIcons.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uMainScreen.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/ribbon/uRibbonGroup.h"
#include "gui/shock/uShockPanel.h"

namespace {

using TApply = void (*)(TMainParts&, bool);

// Of a chart or of its marks.
template <auto Set>
void SetOf(auto& chart, bool on) {
  if constexpr (std::is_invocable_v<decltype(Set), TChartMarks&, bool>) {
    (chart.Marks().*Set)(on);
  } else {
    (chart.*Set)(on);
  }
}
// There are two events charts, and they look alike.
template <auto Set>
void BothEventsCharts(TMainParts& parts, bool on) {
  SetOf<Set>(*parts.overview->Chart1(), on);
  SetOf<Set>(*parts.shock->Chart20(), on);
}
// The selected event has two charts as well, its curves and its spectrum.
template <auto Set>
void EventChart(TMainParts& parts, bool on) {
  SetOf<Set>(*parts.shock->Chart2(), on);
}
template <auto Set>
void BothEventCharts(TMainParts& parts, bool on) {
  SetOf<Set>(*parts.shock->Chart2(), on);
  SetOf<Set>(*parts.shock->ChartSpecAnalysis(), on);
}
template <TSeries Series>
void ShowSeries(TMainParts& parts, bool on) {
  parts.shock->Chart2()->SetSeriesVisible(Series, on);
  parts.shock->ChartSpecAnalysis()->SetSeriesVisible(Series, on);
}
template <auto Set>
void SensorsChart(TMainParts& parts, bool on) {
  SetOf<Set>(*parts.overview->ChartAllSensors(), on);
}
template <TSensorAxis Axis>
void LockSensorsAxis(TMainParts& parts, bool on) {
  parts.overview->ChartAllSensors()->SetAxisLocked(Axis, on);
}

struct TToggleRow {
  const char* action;
  const char* button;
  const char* group;
  const char* caption;
  const char* tip;
  const char* icon;
  const char* keys;
  bool on;  // at first
  TApply apply;
};
constexpr auto kIndicatorTip = "A line with the values at the pointer";
constexpr auto kNearestTip = "Mark and name the sample nearest to the pointer";
constexpr auto kPointsTip = "Dots on the samples, where they stand apart";
constexpr auto kMouseLockTip = "The indicator stays where it was clicked, else it follows the pointer";
constexpr auto kAxisLockTip = "Wheel and keys leave the value axis as it is";
constexpr TToggleRow kToggles[] = {
    {"actShockEventsToolsIndicator", "dxBarShockEventsIndicator", "btngrpEventsChart", "Indicator", kIndicatorTip,
     "snap-guideline", "Ctrl+I", true, BothEventsCharts<&TChartMarks::SetIndicatorVisible>},
    {"actShockEventsGAxisLock", "barbtnShockEventsGAxisLock", "btngrpEventsChart", "Lock value axis", kAxisLockTip,
     "labplot-axis-vertical", "", true, BothEventsCharts<&TEventsChart::SetValueAxisLocked>},

    {"actShockShowX", "barbtnShockShowX", "btngrpShockSeries", "X", "Show acceleration X", "office-chart-line", "X",
     true, ShowSeries<TSeries::X>},
    {"actShockShowY", "barbtnShockShowY", "btngrpShockSeries", "Y", "Show acceleration Y", "office-chart-line", "Y",
     true, ShowSeries<TSeries::Y>},
    {"actShockShowZ", "barbtnShockShowZ", "btngrpShockSeries", "Z", "Show acceleration Z", "office-chart-line", "Z",
     true, ShowSeries<TSeries::Z>},
    {"actShockShowTotal", "dxBarShockShowTotal", "btngrpShockSeries", "Total", "Show the total acceleration",
     "office-chart-line", "T", false, ShowSeries<TSeries::Total>},
    {"actShockToolsPoints", "barbtnShockToolsPoints", "btngrpShockSeries", "Points", kPointsTip, "office-chart-scatter",
     "", true, EventChart<&TSelectedEventChart::SetPointsVisible>},
    {"actShockShowTable", "dxBarShockShowTable", "btngrpShockSeries", "Table", "The samples in numbers", "table",
     "Ctrl+T", false, [](TMainParts& parts, bool on) { parts.shock->SetValuesVisible(on); }},
    {"actShockHPFilter", "swtHPFilter", "btngrpFilter", "HP Filtering",
     "Take the constant part and the slowest oscillation out of the selected event's curves", "view-filter", "H", false,
     EventChart<&TSelectedEventChart::SetHighPass>},
    {"actShockSpecAnalysis", "swtSpecAnalysis", "btngrpFilter", "Spectrum",
     "The selected event's spectrum in place of its curves", "office-chart-bar", "S", false,
     [](TMainParts& parts, bool on) { parts.shock->SetSpectrumVisible(on); }},
    {"actShockToolsIndicator", "dxBarShockIndicator", "btngrpShockTools", "Indicator", kIndicatorTip, "snap-guideline",
     "I", true, BothEventCharts<&TChartMarks::SetIndicatorVisible>},
    {"actShockIndicatorMouseLock", "barbtnShockIndicatorMouseLock", "btngrpShockTools", "Lock indicator", kMouseLockTip,
     "object-locked", "L", true, BothEventCharts<&TChartMarks::SetIndicatorLocked>},
    {"actShockToolsNearest", "barbtnShockToolsNearest", "btngrpShockTools", "Nearest", kNearestTip, "snap-node", "",
     false, BothEventCharts<&TChartMarks::SetNearestVisible>},
    {"actShockGAxisLock", "barbtnShockGAxisLock", "btngrpShockTools", "Lock value axis", kAxisLockTip,
     "labplot-axis-vertical", "", true, BothEventCharts<&TAccelerationChart::SetValueAxisLocked>},

    {"actSensorsToolsPoints", "dxBarSensorsPoints", "btngrpSensorsTools", "Points", kPointsTip, "office-chart-scatter",
     "", true, SensorsChart<&TSensorsChart::SetPointsVisible>},
    {"actSensorsToolsNearest", "dxBarSensorsNearest", "btngrpSensorsTools", "Nearest", kNearestTip, "snap-node", "",
     false, SensorsChart<&TChartMarks::SetNearestVisible>},
    {"actSensorsToolsIndicator", "dxBarSensorsIndicator", "btngrpSensorsTools", "Indicator", kIndicatorTip,
     "snap-guideline", "Ctrl+Shift+I", true, SensorsChart<&TChartMarks::SetIndicatorVisible>},
    {"actSensorIndicatorMouseLock", "dxBarSensorsIndicatorLock", "btngrpSensorsTools", "Lock indicator", kMouseLockTip,
     "object-locked", "", true, SensorsChart<&TChartMarks::SetIndicatorLocked>},
    {"actSensorsAZoomLeftII", "dxBarSensorsLockLeftII", "btngrpSensorsAxes", "Left outer", kAxisLockTip,
     "labplot-axis-vertical", "", true, LockSensorsAxis<TSensorAxis::LeftOuter>},
    {"actSensorsAZoomLeftI", "dxBarSensorsLockLeftI", "btngrpSensorsAxes", "Left inner", kAxisLockTip,
     "labplot-axis-vertical", "", true, LockSensorsAxis<TSensorAxis::LeftInner>},
    {"actSensorsAZoomRightI", "dxBarSensorsLockRightI", "btngrpSensorsAxes", "Right inner", kAxisLockTip,
     "labplot-axis-vertical", "", true, LockSensorsAxis<TSensorAxis::RightInner>},
    {"actSensorsAZoomRightII", "dxBarSensorsLockRightII", "btngrpSensorsAxes", "Right outer", kAxisLockTip,
     "labplot-axis-vertical", "", true, LockSensorsAxis<TSensorAxis::RightOuter>},
};

void MakeToggle(TKorvexMainForm& form, TMainParts& parts, const TToggleRow& row) {
  auto* group = form.findChild<TRibbonGroup*>(row.group);
  const QString caption = QObject::tr(row.caption);
  // The group says which chart is meant, where the action stands alone.
  auto* action = new QAction(Icon(row.icon), QString("%1: %2").arg(group->accessibleName(), caption), &form);
  action->setObjectName(row.action);
  action->setIconText(caption);
  action->setToolTip(QObject::tr(row.tip));
  if (*row.keys != '\0') action->setShortcut(QKeySequence(row.keys));
  action->setCheckable(true);
  action->setChecked(row.on);
  action->setProperty(kKeptBySettings, true);
  row.apply(parts, row.on);
  QObject::connect(action, &QAction::toggled, &form,
                   [&form, &parts, apply = row.apply](bool on) { Guarded(&form, [&] { apply(parts, on); }); });
  form.addAction(action);
  group->AddSmall(action, row.button);
}

}  // namespace

void MakeChartToggles(TKorvexMainForm& form, TMainParts& parts) {
  for (const TToggleRow& row : kToggles) MakeToggle(form, parts, row);
  const auto follow = [&form](TSeries series, bool visible) {
    constexpr const char* kActions[] = {"actShockShowX", "actShockShowY", "actShockShowZ", "actShockShowTotal"};
    form.findChild<QAction*>(kActions[static_cast<std::size_t>(series)])->setChecked(visible);
  };
  for (const TAccelerationChart* chart :
       std::initializer_list<TAccelerationChart*>{parts.shock->Chart2(), parts.shock->ChartSpecAnalysis()}) {
    QObject::connect(chart, &TAccelerationChart::SeriesVisibleChanged, &form, follow);
  }
}
