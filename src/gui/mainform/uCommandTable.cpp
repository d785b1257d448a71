#include "gui/mainform/uCommandTable.h"

#include <QAction>
#include <QCursor>
#include <QMenu>
#include <type_traits>

#include "gui/charts/uChartGestures.h"
#include "gui/charts/uChartMarks.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "gui/filter/uFilterPanel.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uExportPartDialog.h"
#include "gui/mainform/uGoToDialog.h"
#include "gui/mainform/uKeysDialog.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uManual.h"
#include "gui/mainform/uNoteDialogs.h"
#include "gui/mainform/uStatisticsDialog.h"
#include "gui/mainform/uViewOutput.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/settings/uAlarmLimitsPanel.h"
#include "gui/shock/uShockPanel.h"
#include "shell/uExportCommands.h"
#include "shell/uLayoutCommands.h"
#include "shell/uNavigatorCommands.h"
#include "shell/uOrderingCommands.h"
#include "shell/uPinCommands.h"
#include "shell/uReferenceCommands.h"

namespace {

using namespace command;
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
void SwitchFilter(TTargets on, bool checked) {
  if (!ActivateFilter(on.flow.Mission(), checked, on.views)) on.parts.filter->Open();
}

void AskWhereTo(TTargets on, bool /*checked*/) {
  AskAndGoTo(on.form, on.flow.Mission(), on.views);
}

void OpenFilter(TTargets on, bool /*checked*/) {
  on.parts.filter->Open();
}

// Below the group where it is collapsed.
void OpenAlarmLimits(TTargets on, bool /*checked*/) {
  const auto* button = on.form.findChild<QWidget*>("dxBarAlarmLimits");
  on.parts.alarmLimits->OpenBelow(button->isVisible() ? *button : *on.form.findChild<QWidget*>("btngrpAlarm"));
}

void SyncWithEvents(TTargets on, bool /*checked*/) {
  btnToolsShockSyncWNavClick(on.flow.Mission(), on.flow.View(), on.views, on.dialogs);
}

void SyncWithSensors(TTargets on, bool /*checked*/) {
  btnToolsSensorsChartSyncWNavClick(on.flow.Mission(), on.views, on.dialogs);
}

void DefaultLayout(TTargets on, bool /*checked*/) {
  LoadDefaultLayout(on.program, on.flow.View(), on.controls);
}

void UserLayout(TTargets on, bool /*checked*/) {
  LoadUserLayout(on.program, on.flow.View(), on.flow.Mission(), on.controls, on.dialogs, on.views);
}

void SaveLayout(TTargets on, bool /*checked*/) {
  SaveUserLayout(on.program, on.flow.Mission(), on.controls, on.dialogs);
}

void SwitchKeptReference(TTargets on, bool checked) {
  KeepReference(on.flow.Mission(), checked, on.views);
}

void UseShownAsReference(TTargets on, bool /*checked*/) {
  if (!on.flow.FileShown()) return;
  on.controls.ShowNotice(UseAsReference(on.flow.Mission(), on.flow.FileName(), on.views), {});
}

// A function of the targets, with arguments that the row gives.
template <auto Call, auto... Arguments>
void On(TTargets on, bool /*checked*/) {
  Call(on, Arguments...);
}

void SwitchSelectedPin(TTargets on, bool /*checked*/) {
  if (!on.flow.FileShown()) return;
  on.controls.ShowNotice(SwitchPin(on.flow.Mission(), on.flow.FileName(), on.views), {});
}

void SwitchFullScreen(TTargets on, bool /*checked*/) {
  on.form.setWindowState(on.form.windowState() ^ Qt::WindowFullScreen);
}

void ListKeys(TTargets on, bool /*checked*/) {
  ShowKeys(on.form);
}

constexpr char kShocksMenu[] = "mnuExportShocks";
constexpr char kSensorsMenu[] = "mnuExportSensors";
constexpr char kBatteryMenu[] = "mnuExportBattery";
template <const char* Menu>
void OpenMenu(TTargets on, bool /*checked*/) {
  on.form.findChild<QMenu*>(Menu)->popup(QCursor::pos());
}

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

TTimeChart& ShownEventsChart(TTargets on) {
  return on.flow.View() == TView::Shock ? *on.parts.shock->Chart20() : *on.parts.overview->Chart1();
}
TTimeChart& ShownEventChart(TTargets on) {
  return on.parts.shock->ChartInFront();
}
TTimeChart& AllSensorsChart(TTargets on) {
  return *on.parts.overview->ChartAllSensors();
}
template <TTimeChart& (*Chart)(TTargets)>
void StepCursors(TTargets on, bool /*checked*/) {
  Chart(on).Gestures().StepCursors();
}
template <TTimeChart& (*Chart)(TTargets)>
void VisibleStatistics(TTargets on, bool /*checked*/) {
  ShowStatistics(on.form, Chart(on));
}

using F = TKorvexMainForm;
using E = TExportCommands;
constexpr auto kIndicatorTip = "A line with the values at the pointer";
constexpr auto kNearestTip = "Mark and name the sample nearest to the pointer";
constexpr auto kPointsTip = "Dots on the samples, where they stand apart";
constexpr auto kMouseLockTip = "The indicator stays where it was clicked, else it follows the pointer";
constexpr auto kAxisLockTip = "Wheel and keys leave the value axis as it is";
constexpr auto kCursorsTip =
    "Set line A, then B, then take both away (C in the chart); drag moves them, Esc takes them away.\n"
    "Between them stand B − A in time, its reciprocal, and the change of each series from the sample\n"
    "nearest in time to A to that nearest to B.";
constexpr auto kStatisticsTip = "Count, extremes, mean and RMS of what is in sight (R in the chart)";
constexpr auto kCopyTip = "The chart as it stands on the screen, on white, into the clipboard";
constexpr auto kBitmapTip = "The chart as it stands on the screen, on white; a bitmap under the name of a JPG";
constexpr auto kPngTip =
    "The chart on white, under the mission's ID; the dialog's file type says the size: 1, 2 or 4 times";
constexpr auto kSvgTip = "The chart on white, under the mission's ID, as lines and texts that are sharp at any size";
constexpr auto kCsvIcon = "text-csv";
constexpr auto kImageIcon = "image-x-generic";
constexpr auto kXlsxIcon = "x-office-spreadsheet";
constexpr TCommand kCommands[] = {
    {"actFileOpen", "dxBarOpenNewFile", "btngrpFile", "&Open…",
     "Read a recording (.kshock) in place of the one that is shown", "document-open", "Ctrl+O", kLarge,
     Do<&F::actFileOpenExecute>},
    {"actFileOpenDemo", "barbtnlrgOpenDemoFile", "btngrpFile", "&Demo recording…",
     "Choose from the recordings that come with the program", "media-playback-start", "Ctrl+D", kLarge,
     Do<&F::barbtnlrgOpenDemoFileClick>},
    {"actFileReload", "dxBarReload", "btngrpFile", "&Reload",
     "Read the same file again; view, selection, filter and band stay", "view-refresh", "F5", kOfFile,
     Do<&TFileFlow::Reload>},
    {"actFileClose", nullptr, nullptr, "&Close file: does nothing",
     "Does nothing: a recording stays shown until another one is opened", "document-close", "Ctrl+W", 0,
     Do<&F::actFileCloseExecute>},
    {"actSetViewOverview", "dxBarOverview", "btngrpView", "O&verview",
     "Events and sensors over time, the most important events", "view-statistics", "Ctrl+1", kLarge | kView,
     Do<&F::actSetViewOverviewExecute>},
    {"actSetViewShock", "dxBarLargeShockView", "btngrpView", "&Shock events",
     "The tables of events, and the samples of the selected one", "office-chart-line", "Ctrl+2", kLarge | kView,
     Do<&F::actSetViewShockExecute>},
    {"actSetViewReport", "dxBarReport", "btngrpView", "Re&port",
     "The report as it will be printed, and the event cards", "document-preview", "Ctrl+3", kLarge | kView,
     Do<&F::actSetViewReportExecute>},
    {"actSetViewDamageBoundary", "dxBarDamageBoundary", "btngrpView", "&Damage boundary",
     "Which events exceed what a product withstands, by velocity change and peak", "office-chart-scatter", "Ctrl+4",
     kLarge | kView, Do<&F::actSetViewDamageBoundaryExecute>},
    {"actSetViewStatistics", "dxBarStatistics", "btngrpView", "S&tatistics",
     "Events by day, hour and direction; histograms; how often a value is exceeded", "office-chart-bar", "Ctrl+5",
     kLarge | kView, Do<&F::actSetViewStatisticsExecute>},
    {"actNavSetIntAll", "dxBarNavSetIntAll", "btngrpNavigator", "&All",
     "The band covers the whole recording; the charts follow it", "zoom-fit-width", "Ctrl+0", kLarge,
     Do<actNavSetIntAllExecute>},
    {"actNavSetIntYear", "dxBarNavSetIntYear", "btngrpNavigator", "Year",
     "The band covers one calendar year, the one in which it begins", "view-calendar", "Shift+Y", 0,
     Do<actNavSetIntYearExecute>},
    {"actNavSetIntMonth", "dxBarNavSetIntMonth", "btngrpNavigator", "Month",
     "The band covers one calendar month, the one in which it begins", "view-calendar-month", "Shift+M", 0,
     Do<actNavSetIntMonthExecute>},
    {"actNavSetIntWeek", "dxBarNavSetIntWeek", "btngrpNavigator", "Week",
     "The band covers one calendar week, the one in which it begins", "view-calendar-week", "Shift+W", 0,
     Do<actNavSetIntWeekExecute>},
    {"actNavSetIntDay", "dxBarNavSetIntDay", "btngrpNavigator", "Day",
     "The band covers one day, the one in which it begins", "view-calendar-day", "Shift+D", 0,
     Do<actNavSetIntDayExecute>},
    {"actNavSetIntHour", "dxBarNavSetIntHour", "btngrpNavigator", "Hour",
     "The band covers one hour, the one in which it begins", "chronometer", "Shift+H", 0, Do<actNavSetIntHourExecute>},
    {"actNavSetIntMin", "dxBarNavSetIntMin", "btngrpNavigator", "Min",
     "The band covers one minute, the one in which it begins", "chronometer", "Shift+I", 0, Do<actNavSetIntMinExecute>},
    {"actNavRwd", "dxBarNavRwd", "btngrpNavigator", "Rewind", "Move the band back by its own width",
     "media-seek-backward", "Ctrl+Left", kOfTimeBefore, Do<actNavRwdExecute>},
    {"actNavFwd", "dxBarNavFwd", "btngrpNavigator", "Forward", "Move the band forward by its own width",
     "media-seek-forward", "Ctrl+Right", kOfTimeAfter, Do<actNavFwdExecute>},
    {"actSyncWithEvents", "btnToolsShockSyncWNav", "btngrpNavigator", "Sync to events",
     "Set the navigator's band to what the events chart shows", "zoom-select-x", "Ctrl+E", kOfAnyEvents,
     SyncWithEvents},
    {"actSyncWithSensors", "btnToolsSensorsChartSyncWNav", "btngrpNavigator", "Sync to sensors",
     "Set the navigator's band to what the sensors chart shows", "zoom-select-x", "Ctrl+Shift+E", kOfSensors,
     SyncWithSensors},
    {"actGoTo", "dxBarGoTo", "btngrpNavigator", "&Go to…", "Go to an event by its ID, or to a time", "go-jump",
     "Ctrl+G", 0, AskWhereTo},
    {"actNoteAdd", "dxBarNoteAdd", "btngrpNotes", "&Add note…",
     "Note something on the selected event, the navigator's band or the recording", "bookmark-new", "Ctrl+M", kLarge,
     On<AskAndAddNote>},
    {"actNotes", "dxBarNotes", "btngrpNotes", "&Notes…", "All notes, to edit, delete or go to them", "bookmarks",
     "Ctrl+Alt+M", 0, On<ListNotes>},
    {"actNextNote", "dxBarNextNote", "btngrpNotes", "Next note",
     "Go to the next note in time, after the last to the first", "go-next", "M", kOfNotes, On<StepNote>},
    {"actFilterEdit", "dxBarFilterEdit", "btngrpFiltering", "Edit &filter",
     "Set conditions on acceleration, ToT, IoT, axis and time", "view-filter", "Ctrl+F", kLarge, OpenFilter},
    {"actFilterActive", "dxBarFilterActive", "btngrpFiltering", "Filter &on",
     "Switch the conditions on or off without losing them", "dialog-ok-apply", "Ctrl+Shift+F", kLarge | kCheckable,
     SwitchFilter},
    {"actAlarmSet", "barbtnlrgAlarm", "btngrpAlarm", "&Alarm",
     "Mark values outside the alarm limits in tables and charts", "notifications", "Ctrl+Shift+A", kLarge | kCheckable},
    {"actAlarmLimits", "dxBarAlarmLimits", "btngrpAlarm", "Alarm limi&ts…",
     "Set a minimum and a maximum for each quantity", "configure", "Ctrl+Alt+A", kLarge, OpenAlarmLimits},
    {"actDefaultLayout", "dxBarDefaultLayout", "btngrpLayout", "Default &layout",
     "Panels and splitters as at first; shows every panel of this view", "view-restore", "Ctrl+Shift+L", 0,
     DefaultLayout},
    {"actLoadUserLayout", "dxBarLoadUserLayout", "btngrpLayout", "Load &user layout",
     "Panels and splitters as last saved", "document-revert", "Ctrl+U", 0, UserLayout},
    {"actSaveUserLayout", "dxBarSaveUserLayout", "btngrpLayout", "Save user la&yout",
     "Keep panels and splitters as they are; the next start loads them", "document-save", "Ctrl+Shift+U", 0,
     SaveLayout},
    {"actLayoutReference", "dxBarLayoutReference", "btngrpLayout", "With re&ference",
     "Save user layout keeps the reference too (Events, Compare); it is there again whenever that layout is loaded",
     "kr_comparedirs", "", kCheckable, SwitchKeptReference},
    {"actOverviewPrint", "dxBarOverviewPrint", "btngrpEvents", "Print…",
     "Print charts and most important events of the band", "document-print", "", kLarge, On<PrintView>},
    {"actOverviewPreview", "dxBarOverviewPreview", "btngrpEvents", "Print pre&view…",
     "The pages that Print and Save as PDF make", "document-preview", "", kLarge, On<PreviewView>},
    {"actOverviewExport", "dxBarOverviewExport", "btngrpEvents", "Save as PDF…",
     "Charts and most important events of the band as PDF", "document-export", "", kLarge, On<SaveViewAsPdf>},
    {"actPreviousEvent", "dxBarPreviousEvent", "btngrpShock", "Previous event",
     "Select the event before: in the order of the tables, in the overview by time", "go-previous", "P",
     kLarge | kOfEvents, Step<-1>},
    {"actNextEvent", "dxBarNextEvent", "btngrpShock", "Next event",
     "Select the event after: in the order of the tables, in the overview by time", "go-next", "N", kLarge | kOfEvents,
     Step<1>},
    {"actEventPin", "dxBarEventPin", "btngrpShock", "Pin e&vent",
     "Keep a copy of the selected event beside others, also those of other recordings; a pinned event is unpinned",
     "window-pin", "V", kLarge | kOfEvents, SwitchSelectedPin},
    {"actEventPin", "dxBarEventPinAgain", "btngrpCompare", "", "", "", "", kAgain | kLarge},
    {"actUseAsReference", "dxBarUseAsReference", "btngrpCompare", "Use as &reference",
     "Keep the figures and distributions of this recording; other recordings then show Δ against it", "kr_comparedirs",
     "Ctrl+R", kLarge, UseShownAsReference},
    {"actClearReference", "dxBarClearReference", "btngrpCompare", "&Clear reference", "Show no Δ any more",
     "edit-clear", "Ctrl+Shift+R", kLarge | kOfReference, Do<ClearReference>},
    {"actShockPrint", "dxBarShockPrint", "btngrpShockOutput", "Print…",
     "Print the selected event, the events chart and the table of the band's events", "document-print", "", kLarge,
     On<PrintView>},
    {"actShockPreview", "dxBarShockPreview", "btngrpShockOutput", "Print pre&view…",
     "The pages that Print and Save as PDF make", "document-preview", "", kLarge, On<PreviewView>},
    {"actShockExport", "dxBarShockExport", "btngrpShockOutput", "Save as PDF…",
     "The selected event, the events chart and the table of the band's events as PDF", "document-export", "", kLarge,
     On<SaveViewAsPdf>},
    {"actReportConfig", "dxBarReportConfig", "btngrpReport", "&Configure…",
     "Choose sections and their order, paper, event cards and tables", "configure", "", kLarge,
     On<ConfigureReport, false>},
    {"actReportTimeFilter", "dxBarReportTimeFilter", "btngrpReport", "&Time filter…",
     "Limit the report to a span of time; the cover says so", "chronometer", "", kLarge, On<ConfigureReport, true>},
    {"actReportPrint", "dxBarReportPrintOnly", "btngrpReport", "Print…", "Print the report, or some of its pages",
     "document-print", "", kLarge, On<PrintView>},
    {"actReportExport", "dxBarReportExportOnly", "btngrpReport", "Save as PDF…",
     "The report with vector charts and bookmarks", "document-export", "", kLarge, On<SaveViewAsPdf>},
    {"actFullScreen", nullptr, nullptr, "Full screen", "The window without frame, over the whole screen, and back", "",
     "F11", 0, SwitchFullScreen},
    {"actManual", nullptr, nullptr, "Manual", "The document of the manual on what is in front", "", "F1", 0,
     OpenManual},
    {"actKeys", nullptr, nullptr, "All keys", "A list of all keys by view, with a search", "", "F2", 0, ListKeys},
    {"dxDockPanelNavigator", "dxBarShowNavigator", "btngrpLayout", "",
     "The whole recording and the band that the charts show", "view-calendar-timeline", "Ctrl+Shift+N", kPanel},
    {"dxDockPanelMissionDetails", "dxBarShowMissionDetails", "btngrpLayout", "", "What was recorded, with which levels",
     "view-list-text", "Ctrl+Shift+M", kPanel},
    {"dxDockPanelSensorGridTemp", "dxBarShowSensorGrid", "btngrpLayout", "", "The readings of the sensors in numbers",
     "view-list-details", "Ctrl+Shift+S", kPanel},
    {"dxDockPanelSensorGridBattery", "dxBarShowBatteryGrid", "btngrpLayout", "",
     "The readings of the battery in numbers", "battery-100", "Ctrl+Shift+B", kPanel},
    {"actFileExit", nullptr, nullptr, "E&xit", "Save settings and recent documents, and close the window",
     "application-exit", "Ctrl+Q", 0, Do<&F::close>},

    {"actShockEventsToolsIndicator", "dxBarShockEventsIndicator", "btngrpEventsChart", "Indicator", kIndicatorTip,
     "snap-guideline", "Ctrl+I", kKept | kOfChart | kOn, BothEventsCharts<&TChartMarks::SetIndicatorVisible>},
    {"actShockEventsGAxisLock", "barbtnShockEventsGAxisLock", "btngrpEventsChart", "Lock value axis", kAxisLockTip,
     "labplot-axis-vertical", "", kKept | kOfChart | kOn, BothEventsCharts<&TEventsChart::SetValueAxisLocked>},
    {"actShockShowX", "barbtnShockShowX", "btngrpShockSeries", "X", "Show acceleration X", "", "X",
     kKept | kOfChart | kOn, ShowSeries<TSeries::X>},
    {"actShockShowY", "barbtnShockShowY", "btngrpShockSeries", "Y", "Show acceleration Y", "", "Y",
     kKept | kOfChart | kOn, ShowSeries<TSeries::Y>},
    {"actShockShowZ", "barbtnShockShowZ", "btngrpShockSeries", "Z", "Show acceleration Z", "", "Z",
     kKept | kOfChart | kOn, ShowSeries<TSeries::Z>},
    {"actShockShowTotal", "dxBarShockShowTotal", "btngrpShockSeries", "Total", "Show the total acceleration", "", "T",
     kKept | kOfChart, ShowSeries<TSeries::Total>},
    {"actShockToolsPoints", "barbtnShockToolsPoints", "btngrpShockSeries", "Points", kPointsTip, "office-chart-scatter",
     "", kKept | kOfChart | kOn, EventChart<&TSelectedEventChart::SetPointsVisible>},
    {"actShockShowTable", "dxBarShockShowTable", "btngrpShockSeries", "Table", "The samples in numbers", "table",
     "Ctrl+T", kKept | kOfChart, ShockView<&TMainShockPanel::SetValuesVisible>},
    {"actShockHPFilter", "swtHPFilter", "btngrpFilter", "HP Filtering",
     "Take the constant part and the slowest oscillation out of the selected event's curves", "view-filter", "H",
     kKept | kOfChart, EventChart<&TSelectedEventChart::SetHighPass>},
    {"actShockSpecAnalysis", "swtSpecAnalysis", "btngrpFilter", "Spectrum",
     "The selected event's spectrum in place of its curves", "office-chart-bar", "S", kKept | kOfChart | kEventMode,
     ShockView<&TMainShockPanel::SetSpectrumVisible>},
    {"actShockResponse", "swtResponse", "btngrpFilter", "Response",
     "The shock response spectrum in place of the curves: how far an oscillator on the logger would have swung",
     "office-chart-area-focus-peak-node", "O", kKept | kOfChart | kEventMode,
     ShockView<&TMainShockPanel::SetResponseVisible>},
    {"actShockLogFrequency", "dxBarShockLogFrequency", "btngrpFilter", "Log frequency",
     "Frequencies of the spectrum on a logarithmic axis", "labplot-axis-horizontal", "Ctrl+Alt+H", kKept | kOfChart,
     SpectrumChart<&TSpectrumChart::SetLogFrequencies>},
    {"actShockLogValues", "dxBarShockLogValues", "btngrpFilter", "Log values",
     "Values of the spectrum on a logarithmic axis; decibels are logarithms already", "labplot-axis-vertical",
     "Ctrl+Alt+V", kKept | kOfChart, SpectrumChart<&TSpectrumChart::SetLogValues>},
    {"actShockToolsIndicator", "dxBarShockIndicator", "btngrpShockTools", "Indicator", kIndicatorTip, "snap-guideline",
     "I", kKept | kOfChart | kOn, AllEventCharts<&TChartMarks::SetIndicatorVisible>},
    {"actShockIndicatorMouseLock", "barbtnShockIndicatorMouseLock", "btngrpShockTools", "Lock indicator", kMouseLockTip,
     "object-locked", "L", kKept | kOfChart | kOn, AllEventCharts<&TChartMarks::SetIndicatorLocked>},
    {"actShockToolsNearest", "barbtnShockToolsNearest", "btngrpShockTools", "Nearest", kNearestTip, "snap-node", "",
     kKept | kOfChart, AllEventCharts<&TChartMarks::SetNearestVisible>},
    {"actShockGAxisLock", "barbtnShockGAxisLock", "btngrpShockTools", "Lock value axis", kAxisLockTip,
     "labplot-axis-vertical", "", kKept | kOfChart | kOn, AllEventCharts<&TAccelerationChart::SetValueAxisLocked>},
    {"actSensorsToolsPoints", "dxBarSensorsPoints", "btngrpSensorsTools", "Points", kPointsTip, "office-chart-scatter",
     "", kKept | kOfChart | kOn, SensorsChart<&TSensorsChart::SetPointsVisible>},
    {"actSensorsToolsNearest", "dxBarSensorsNearest", "btngrpSensorsTools", "Nearest", kNearestTip, "snap-node", "",
     kKept | kOfChart, SensorsChart<&TChartMarks::SetNearestVisible>},
    {"actSensorsToolsIndicator", "dxBarSensorsIndicator", "btngrpSensorsTools", "Indicator", kIndicatorTip,
     "snap-guideline", "Ctrl+Shift+I", kKept | kOfChart | kOn, SensorsChart<&TChartMarks::SetIndicatorVisible>},
    {"actSensorIndicatorMouseLock", "dxBarSensorsIndicatorLock", "btngrpSensorsTools", "Lock indicator", kMouseLockTip,
     "object-locked", "", kKept | kOfChart | kOn, SensorsChart<&TChartMarks::SetIndicatorLocked>},
    {"actSensorsAZoomLeftII", "dxBarSensorsLockLeftII", "btngrpSensorsAxes", "Left outer", kAxisLockTip,
     "labplot-axis-vertical", "", kKept | kOfChart | kOn, LockSensorsAxis<TSensorAxis::LeftOuter>},
    {"actSensorsAZoomLeftI", "dxBarSensorsLockLeftI", "btngrpSensorsAxes", "Left inner", kAxisLockTip,
     "labplot-axis-vertical", "", kKept | kOfChart | kOn, LockSensorsAxis<TSensorAxis::LeftInner>},
    {"actSensorsAZoomRightI", "dxBarSensorsLockRightI", "btngrpSensorsAxes", "Right inner", kAxisLockTip,
     "labplot-axis-vertical", "", kKept | kOfChart | kOn, LockSensorsAxis<TSensorAxis::RightInner>},
    {"actSensorsAZoomRightII", "dxBarSensorsLockRightII", "btngrpSensorsAxes", "Right outer", kAxisLockTip,
     "labplot-axis-vertical", "", kKept | kOfChart | kOn, LockSensorsAxis<TSensorAxis::RightOuter>},

    {"actEventsCSVAllShocks", "barbtnEventsCSVAllShocks", "btngrpEventsExport", "All events to CSV…",
     "A CSV file for each event, in a folder of the mission", kCsvIcon, "Ctrl+Alt+C", kOfAnyEvents,
     Do<&E::barbtnEventsCSVAllShocksClick>},
    {"actEventsCSVVisibleShocks", "barbtnEventsCSVVisibleShocks", "btngrpEventsExport", "Visible events to CSV…",
     "A CSV file for each event that the filter lets through", kCsvIcon, "", kOfEvents,
     Do<&E::barbtnEventsCSVVisibleShocksClick>},
    {"actEventsCSVCalibration", "barbtnEventsCSVCalibration", "btngrpEventsExport", "Peaks of all events to CSV…",
     "A CSV file for each event, with axis and peak in its name", kCsvIcon, "", kOfAnyEvents,
     Do<&E::barbtnEventsCSVCalibrationClick>},
    {"actEventsCSVCalibrationVisible", "barbtnEventsCSVCalibrationVisible", "btngrpEventsExport",
     "Calibration of visible events to CSV…",
     "A CSV file for each event that the filter lets through, with axis and peak in its name", kCsvIcon, "", kOfEvents,
     Do<&E::barbtnEventsCSVCalibrationVisibleClick>},
    {"actEventsXLSXAllShocks", "barbtnEventsXLSXAllShocks", "btngrpEventsExport", "All events to XLSX…",
     "A workbook with a sheet for each event", kXlsxIcon, "Ctrl+Alt+X", kOfAnyEvents,
     Do<&E::barbtnEventsXLSXAllShocksClick>},
    {"actEventsXLSXVisibileShocks", "barbtnEventsXLSXVisibileShocks", "btngrpEventsExport", "Visible events to XLSX…",
     "A workbook with a sheet for each event that the filter lets through", kXlsxIcon, "", kOfEvents,
     Do<&E::barbtnEventsXLSXVisibileShocksClick>},
    {"actExportShockToCSV", "barbtnShockExportToCSV", "btngrpShockExport", "Event to CSV…",
     "What the chart of the selected event shows, as a CSV file", kCsvIcon, "Ctrl+Shift+C", kOfEvents,
     Do<&E::actExportShockToCSVExecute>},
    {"actShockSaveChartAsXLSX", "barbtnShockSaveChartAsXLSX", "btngrpShockExport", "Event to XLSX…",
     "What the chart of the selected event shows, as a workbook", kXlsxIcon, "Ctrl+Shift+X", kOfEvents,
     Do<&E::barbtnShockSaveChartAsXLSXClick>},
    {"actSensorsExportToXLSX", "barbtnSensorsExportToXLSX", "btngrpSensorsExport", "Sensors and battery to XLSX…",
     "A workbook with the readings of the sensors and of the battery", kXlsxIcon, "", 0,
     Do<&E::barbtnSensorsExportToXLSXClick>},
    {"actTablesExportCSV", "barbtnTablesExportCSV", "btngrpTables", "Shock events to CSV…",
     "The table of the events that the filter lets through, as a CSV file", kCsvIcon, "", 0,
     Do<&E::barbtnTablesExportCSVClick>},
    {"actTablesExportCSVSensors", "barbtnTablesExportCSVSensors", "btngrpTables", "Sensors to CSV…",
     "The table of the sensors, as a CSV file", kCsvIcon, "", 0, Do<&E::barbtnTablesExportCSVSensorsClick>},
    {"actTablesExportCSVBattery", "barbtnTablesExportCSVBattery", "btngrpTables", "Battery to CSV…",
     "The table of the battery, as a CSV file", kCsvIcon, "", kOfBattery, Do<&E::barbtnTablesExportCSVBatteryClick>},
    {"actTablesExportXLSX", "barbtnTablesExportXLSX", "btngrpTables", "Shock events to XLSX…",
     "The table of the events that the filter lets through, as a workbook", kXlsxIcon, "", 0,
     Do<&E::barbtnTablesExportXLSXClick>},
    {"actTablesExportXLSXSensors", "barbtnTablesExportXLSXSensors", "btngrpTables", "Sensors to XLSX…",
     "The table of the sensors, as a workbook", kXlsxIcon, "", 0, Do<&E::barbtnTablesExportXLSXSensorsClick>},
    {"actTablesExportXLSXBattery", "barbtnTablesExportXLSXBattery", "btngrpTables", "Battery to XLSX…",
     "The table of the battery, as a workbook", kXlsxIcon, "", kOfBattery, Do<&E::barbtnTablesExportXLSXBatteryClick>},
    {"actExportPart", "dxBarExportPart", "btngrpTables", "Export a &part…",
     "The navigator's band, what the filter lets through, or all: as a workbook, as CSV files or as a recording",
     "document-export", "Ctrl+Alt+P", kLarge, On<AskAndExportPart>},
    {"actExportPart", "dxBarEventsExportPart", "btngrpEventsExport", "", "", "", "", kAgain},
    {"actExportPart", "dxBarSensorsExportPart", "btngrpSensorsExport", "", "", "", "", kAgain},
    {"actTablesExportCSVAnalysis", "barbtnTablesExportCSVAnalysis", "btngrpTables", "Analysis to CSV…",
     "The shock analysis of the events that the filter lets through, as a CSV file", kCsvIcon, "", kOfAnyEvents,
     Do<&E::barbtnTablesExportCSVAnalysisClick>},
    {"actTablesExportXLSXAnalysis", "barbtnTablesExportXLSXAnalysis", "btngrpTables", "Analysis to XLSX…",
     "The shock analysis of the events that the filter lets through, as a workbook", kXlsxIcon, "", kOfAnyEvents,
     Do<&E::barbtnTablesExportXLSXAnalysisClick>},
    {"actAnalysisCopyChart", "barbtnAnalysisCopyChart", "btngrpAnalysis", "Copy picture", kCopyTip, "edit-copy", "",
     kOfEvents, Do<&E::barbtnAnalysisCopyChartToClipboardClick>},
    {"actAnalysisSaveChart", "barbtnAnalysisSaveChart", "btngrpAnalysis", "Picture as JPG…", kBitmapTip, kImageIcon, "",
     kOfEvents, Do<&E::barbtnAnalysisSaveChartAsJPGClick>},
    {"actAnalysisSaveChartAsPNG", "barbtnAnalysisSaveChartAsPNG", "btngrpAnalysis", "Picture as PNG…", kPngTip,
     kImageIcon, "", kOfEvents, Do<&E::barbtnAnalysisSaveChartAsPNGClick>},
    {"actAnalysisSaveChartAsSVG", "barbtnAnalysisSaveChartAsSVG", "btngrpAnalysis", "Picture as SVG…", kSvgTip,
     kImageIcon, "", kOfEvents, Do<&E::barbtnAnalysisSaveChartAsSVGClick>},
    {"actAnalysisExportCSV", "barbtnAnalysisExportCSV", "btngrpAnalysis", "Chart to CSV…",
     "What the chart shows in which you were last, as a CSV file", kCsvIcon, "", kOfEvents,
     Do<&E::barbtnAnalysisExportCSVClick>},
    {"actEventsCopyChart", "barbtnEventsCopyChartToClipboard", "btngrpEventsImage", "Copy picture", kCopyTip,
     "edit-copy", "", kOfAnyEvents, Do<&E::barbtnEventsCopyChartToClipboardClick>},
    {"actEventsSaveChart", "barbtnEventsSaveChartasJPG", "btngrpEventsImage", "Picture as JPG…", kBitmapTip, kImageIcon,
     "", kOfAnyEvents, Do<&E::barbtnEventsSaveChartasJPGClick>},
    {"actEventsSaveChartAsPNG", "barbtnEventsSaveChartAsPNG", "btngrpEventsImage", "Picture as PNG…", kPngTip,
     kImageIcon, "", kOfAnyEvents, Do<&E::barbtnEventsSaveChartAsPNGClick>},
    {"actEventsSaveChartAsSVG", "barbtnEventsSaveChartAsSVG", "btngrpEventsImage", "Picture as SVG…", kSvgTip,
     kImageIcon, "", kOfAnyEvents, Do<&E::barbtnEventsSaveChartAsSVGClick>},
    {"actShockCopyChart", "barbtnShockCopyChartToClipboard", "btngrpShockImage", "Copy picture", kCopyTip, "edit-copy",
     "", kOfEvents, Do<&E::barbtnShockCopyChartToClipboardClick>},
    {"actShockSaveChart", "barbtnShockSaveChartAsImage", "btngrpShockImage", "Picture as JPG…", kBitmapTip, kImageIcon,
     "", kOfEvents, Do<&E::barbtnShockSaveChartAsImageClick>},
    {"actShockSaveChartAsPNG", "barbtnShockSaveChartAsPNG", "btngrpShockImage", "Picture as PNG…", kPngTip, kImageIcon,
     "", kOfEvents, Do<&E::barbtnShockSaveChartAsPNGClick>},
    {"actShockSaveChartAsSVG", "barbtnShockSaveChartAsSVG", "btngrpShockImage", "Picture as SVG…", kSvgTip, kImageIcon,
     "", kOfEvents, Do<&E::barbtnShockSaveChartAsSVGClick>},
    {"actSensorsCopyChart", "barbtnSensorsCopyChartToClipboard", "btngrpSensorsImage", "Copy picture", kCopyTip,
     "edit-copy", "", kOfSensors, Do<&E::barbtnSensorsCopyChartToClipboardClick>},
    {"actSensorsSaveChart", "barbtnSensorsSaveAsJPG", "btngrpSensorsImage", "Picture as JPG…", kBitmapTip, kImageIcon,
     "", kOfSensors, Do<&E::barbtnSensorsSaveAsJPGClick>},
    {"actSensorsSaveChartAsPNG", "barbtnSensorsSaveAsPNG", "btngrpSensorsImage", "Picture as PNG…", kPngTip, kImageIcon,
     "", kOfSensors, Do<&E::barbtnSensorsSaveAsPNGClick>},
    {"actSensorsSaveChartAsSVG", "barbtnSensorsSaveAsSVG", "btngrpSensorsImage", "Picture as SVG…", kSvgTip, kImageIcon,
     "", kOfSensors, Do<&E::barbtnSensorsSaveAsSVGClick>},
    {"actExportShockGridToCSV", nullptr, nullptr, "Export the shock events…", "The menu of the table of events", "",
     "Ctrl+Alt+E", 0, OpenMenu<kShocksMenu>},
    {"actExportFilteredShockGridToCSV", nullptr, nullptr, "Export the filtered shock events…",
     "The menu of the table of filtered events", "", "Ctrl+Alt+F", 0, OpenMenu<kShocksMenu>},
    {"actExportSensorsGridToCSV", nullptr, nullptr, "Export the sensors…", "The menu of the table of sensors", "",
     "Ctrl+Alt+S", 0, OpenMenu<kSensorsMenu>},
    {"actExportBatteryGridToCSV", nullptr, nullptr, "Export the battery…", "The menu of the table of the battery", "",
     "Ctrl+Alt+B", 0, OpenMenu<kBatteryMenu>},

    {"actEventsCursors", "dxBarEventsCursors", "btngrpEventsChart", "Cursors", kCursorsTip, "measure", "",
     kOfChart | kOfAnyEvents, StepCursors<ShownEventsChart>},
    {"actEventsStatistics", "dxBarEventsStatistics", "btngrpEventsChart", "Statistics", kStatisticsTip,
     "view-statistics", "", kOfChart | kOfAnyEvents, VisibleStatistics<ShownEventsChart>},
    {"actShockCursors", "dxBarShockCursors", "btngrpShockTools", "Cursors", kCursorsTip, "measure", "",
     kOfChart | kOfEvents, StepCursors<ShownEventChart>},
    {"actShockStatistics", "dxBarShockStatistics", "btngrpShockTools", "Statistics", kStatisticsTip, "view-statistics",
     "", kOfChart | kOfEvents, VisibleStatistics<ShownEventChart>},
    {"actSensorsCursors", "dxBarSensorsCursors", "btngrpSensorsTools", "Cursors", kCursorsTip, "measure", "",
     kOfChart | kOfSensors, StepCursors<AllSensorsChart>},
    {"actSensorsStatistics", "dxBarSensorsStatistics", "btngrpSensorsTools", "Statistics", kStatisticsTip,
     "view-statistics", "", kOfChart | kOfSensors, VisibleStatistics<AllSensorsChart>},
    {"actPreviousEvent", "dxBarEventsPrevious", "btngrpEventsChart", "", "", "", "", kAgain},
    {"actNextEvent", "dxBarEventsNext", "btngrpEventsChart", "", "", "", "", kAgain},
};

}  // namespace

std::span<const TCommand> Commands() {
  return kCommands;
}
