#include "gui/mainform/uMainScreen.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QCoreApplication>
#include <QDockWidget>
#include <QLabel>
#include <QLoggingCategory>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QToolButton>
#include <map>
#include <utility>

#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uGrid.h"
#include "gui/common/uLogos.h"
#include "gui/common/uQtText.h"
#include "gui/docks/uMissionDetails.h"
#include "gui/filter/uFilterChip.h"
#include "gui/filter/uFilterPanel.h"
#include "gui/mainform/uLayouts.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uViewOutput.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/platform/uDialogs.h"
#include "gui/platform/uTaskbarProgress.h"
#include "gui/report/uReportPanel.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/ribbon/uBackstagePages.h"
#include "gui/ribbon/uRibbon.h"
#include "gui/ribbon/uRibbonGroup.h"
#include "gui/shock/uShockPanel.h"
#include "gui/welcome/uLoadingPanel.h"
#include "gui/welcome/uRecentFiles.h"
#include "gui/welcome/uUserManualIcon.h"
#include "gui/welcome/uWellcomePanel.h"
#include "shell/uSettingsCommands.h"

Q_LOGGING_CATEGORY(lcStart, "shockscope.start", QtWarningMsg)

namespace {

constexpr int kPaintMs = 20;  // a long loop paints at most this often

// A group that is shown has a button of it.
bool HasShownGroup(const QAction& action) {
  for (QObject* widget : action.associatedObjects()) {
    QObject* group = qobject_cast<QToolButton*>(widget);
    while (group != nullptr && qobject_cast<TRibbonGroup*>(group) == nullptr) group = group->parent();
    if (group != nullptr && !static_cast<TRibbonGroup*>(group)->isHidden()) return true;
  }
  return false;
}

QAction* ActionOf(const QWidget& widget) {
  const auto* button = qobject_cast<const QToolButton*>(&widget);
  return button == nullptr ? nullptr : button->defaultAction();
}

}  // namespace

void TMainScreen::SetApplicationTitle(std::string_view title) {
  FWindow.setWindowIconText(QtText(title));
}

void TMainScreen::SetCaption(std::string_view caption) {
  // "[*]" in a title stands for something else, unless it is doubled.
  FWindow.setWindowTitle(QtText(caption).replace("[*]", "[*][*]"));
}

void TMainScreen::SetVisible(std::string_view control, bool visible) {
  auto& widget = Control<QWidget>(control);
  if (QAction* action = ActionOf(widget)) {
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

bool TMainScreen::CanExecute(const QAction& action) const {
  const bool hasEvents = FMission != nullptr && FMission->CLDS.RecordCount() > 0;
  return HasShownGroup(action) && (hasEvents || !action.property(kNeedsEvents).toBool());
}

void TMainScreen::SetEnabled(std::string_view control, bool enabled) {
  auto& widget = Control<QWidget>(control);
  QAction* action = ActionOf(widget);
  if (action != nullptr) {
    action->setEnabled(enabled);
  } else {
    widget.setEnabled(enabled);
  }
}

bool TMainScreen::IsVisible(std::string_view control) const {
  return !Control<QWidget>(control).isHidden();
}

void TMainScreen::SetText(std::string_view control, std::string_view text) {
  if (control == "PnlLoadingMsg") {
    FParts.loading->SetMessage(QtText(text));
  } else if (control == "PnlLoadingDetail") {
    FParts.loading->SetDetail(QtText(text));
  } else {
    Control<QLabel>(control).setText(QtText(text));
  }
}

void TMainScreen::SetChecked(std::string_view action) {
  Control<QAction>(action).setChecked(true);
}

void TMainScreen::BringToFront(std::string_view panel) {
  auto& widget = Control<QWidget>(panel);
  const bool isView = FParts.views->indexOf(&widget) >= 0;
  if (!isView && FParts.front->indexOf(&widget) < 0) {
    widget.raise();
    return;
  }
  FParts.backstage->hide();
  if (isView) FParts.views->setCurrentWidget(&widget);
  FParts.front->setCurrentWidget(isView ? FParts.views : &widget);
  MarkUnsynced(nullptr);
}

void TMainScreen::ScrollToTop(std::string_view box) {
  Control<QScrollArea>(box).verticalScrollBar()->setValue(0);
}

void TMainScreen::Repaint(std::string_view control) {
  Control<QWidget>(control).update();
}

void TMainScreen::BeginRibbonUpdate() {
  FParts.ribbon->BeginUpdate();
}

void TMainScreen::EndRibbonUpdate() {
  FParts.ribbon->EndUpdate();
}

void TMainScreen::SelectRibbonTab(std::string_view tab) {
  FParts.ribbon->SelectTab(QtText(tab));
}

void TMainScreen::AddUserManualIcon(std::string_view name, std::string_view caption, std::string_view file) {
  FParts.welcome->AddUserManualIcon(QtText(name), QtText(caption), QtText(file));
}

void TMainScreen::SetOpenDialogFolder(std::string_view folder) {
  FParts.backstage->ProposeBrowsePath(QtText(folder));
}

void TMainScreen::PrepareSensorsAxes() {
  FParts.overview->ChartAllSensors()->PrepareExtraAxes();
}

// Widgets have no skin: their colours are those of the palette.
void TMainScreen::SetSkinColour(std::string_view element, std::uint32_t rgb) {
  qCDebug(lcStart) << "no skin colour" << QtText(element) << Qt::hex << rgb;
}

void TMainScreen::RefreshLookAndFeel() {
  FWindow.update();
}

void TMainScreen::SetUpSensorsAxes() {
  FParts.overview->ChartAllSensors()->SetUpAxes();
}

void TMainScreen::LoadLogo(std::size_t index, const std::filesystem::path& file) {
  FParts.logos->Load(index, file);
}

void TMainScreen::SaveLogo(std::size_t index, const std::filesystem::path& file) {
  FParts.logos->Save(index, file);
}

void TMainScreen::LoadLayout(const std::filesystem::path& file) {
  FParts.layouts->Load(file);
}

void TMainScreen::SaveLayout(const std::filesystem::path& file) {
  FParts.layouts->Save(file);
}

void TMainScreen::RestoreDesignedLayout() {
  FParts.layouts->RestoreDesigned();
}

void TMainScreen::ShowRecentDocuments(const TRecentDocuments& recent) {
  FParts.recent->ShowRecent(recent);
  FParts.recentFiles->ShowEntries(recent.Files.Entries());
}

void TMainScreen::SetProgressMaximum(int maximum) {
  FParts.loading->SetSteps(maximum);
  FParts.taskbar->SetMaximum(maximum);
}

void TMainScreen::SetProgress(double position) {
  FParts.loading->SetStep(static_cast<int>(position));
  FParts.taskbar->SetPosition(position);
}

void TMainScreen::SetTaskbarProgress(bool on) {
  FParts.taskbar->SetActive(on);
}

void TMainScreen::ProcessMessages(bool atOnce) {
  if (!atOnce && FPainted.isValid() && FPainted.elapsed() < kPaintMs) return;
  QCoreApplication::processEvents();
  FPainted.start();
}

std::optional<std::string> TMainScreen::AskForRecording(const TOpenDialog& dialog) {
  return AskForFile(&FWindow, QObject::tr("Open a recording"), dialog);
}

std::optional<std::string> TMainScreen::AskForFolder(std::string_view title, const std::string& folder) {
  const auto chosen = ::AskForFolder(&FWindow, QtText(title), QtText(folder));
  if (!chosen) return std::nullopt;
  return Utf8(*chosen);
}

std::optional<std::string> TMainScreen::AskWhereToSave(const TSaveDialog& dialog) {
  const auto chosen = ::AskWhereToSave(&FWindow, dialog);
  if (!chosen) return std::nullopt;
  return Utf8(*chosen);
}

// Before the window stands a box would be the only window, and its end the program's.
void TMainScreen::ShowMessage(std::string_view text, std::string_view details) {
  const auto tell = [this, text = QtText(text), details = QtText(details)] { TellUser(&FWindow, text, details); };
  if (FWindow.isVisible()) {
    tell();
  } else {
    QMetaObject::invokeMethod(&FWindow, tell, Qt::QueuedConnection);
  }
}

void TMainScreen::ShowInformation(std::string_view text) {
  InformUser(&FWindow, QtText(text));
}

void TMainScreen::CloseWindow() {
  QMetaObject::invokeMethod(&FWindow, &QWidget::close, Qt::QueuedConnection);
}

void TMainScreen::EmptyGridsAndCharts() {
  FMission = nullptr;
  FShownEvent.reset();
  TellLimits();
  for (TGrid* grid : FWindow.findChildren<TGrid*>()) grid->SetDataset(nullptr);
  for (TTimeChart* chart : FWindow.findChildren<TTimeChart*>()) {
    chart->Range().SetSynced(std::nullopt);
    chart->Clear();
  }
  FParts.shock->ShowCards({}, std::nullopt, {});
  FParts.docks.details->ShowSections({});
  FParts.report->Clear();
  FParts.filter->SetMission(nullptr);
  FParts.statusEvents->Clear();
  for (QLabel* label : {FParts.statusValue, FParts.statusFile}) label->clear();
}

void TMainScreen::PopulateChartSeries(const TShownMission& mission) {
  ShowInCharts(mission.Display);
  for (TEventsChart* chart : {FParts.overview->Chart1(), FParts.shock->Chart20()}) {
    chart->SetEvents(mission.Events, mission.Data, mission.Axes);
  }
  FParts.overview->ChartAllSensors()->SetSensors(mission.Sensors, mission.Sensors.StartTime);
  FParts.docks.ChartNavigator->SetMission(mission.Events, mission.Sensors);
  // All of them show the same span at first, so that equal times stand above each other.
  for (TTimeChart* chart : std::initializer_list<TTimeChart*>{FParts.overview->Chart1(), FParts.shock->Chart20(),
                                                              FParts.overview->ChartAllSensors()}) {
    chart->Range().SetRecordingSpan(FParts.docks.ChartNavigator->Range().Full());
  }
}

void TMainScreen::UpdateKorvexUI(TShownMission& mission) {
  FMission = &mission;
  FParts.shock->Shocks()->SetDataset(&mission.Tables.Events);
  FParts.shock->FilteredShocks()->SetDataset(&mission.CLDS);
  FParts.overview->MostImportant()->SetDataset(&mission.Tables.Important);
  FParts.docks.DBGrid2->SetDataset(&mission.Tables.Sensors);
  FParts.docks.DBGrid8->SetDataset(&mission.Tables.Battery);
  ShowDetails(mission);
  TellLimits();
  FParts.filter->SetMission(&mission);
  ShowFilter(mission);
}

void TMainScreen::PrepareReport(const TShownMission& mission) {
  FParts.report->ShowReport(mission);
}

void TMainScreen::FreePointAbsorptionLists() {
  for (TEventsChart* chart : {FParts.overview->Chart1(), FParts.shock->Chart20()}) chart->Clear();
}

void TMainScreen::CopyChart(std::string_view chart) {
  QApplication::clipboard()->setImage(Control<TTimeChart>(chart).Picture());
}

std::string TMainScreen::ChartPicture(std::string_view chart, TPictureFormat format) {
  return Encoded(Control<TTimeChart>(chart).Picture(), format);
}

std::optional<TSpectrumChoice> TMainScreen::ShownSpectrum() const {
  if (!Control<QAction>("actShockSpecAnalysis").isChecked()) return std::nullopt;
  const auto entryOf = [this](std::string_view list) {
    return static_cast<std::size_t>(Control<QComboBox>(list).currentIndex());
  };
  return TSpectrumChoice{entryOf("cmbSpecType"), entryOf("cmbSpecWindow")};
}

bool TMainScreen::Confirm(std::string_view question) {
  return AskUser(&FWindow, QtText(question));
}

void TMainScreen::RefreshDisplay(const TShownMission& mission) {
  ShowInCharts(mission.Display);
  TellLimits();
  if (FMission == nullptr) return;
  for (TGrid* grid : FWindow.findChildren<TGrid*>()) grid->Reformat();
  FParts.shock->ShowCards(mission.Tables.Events, mission.SelectedEvent, mission.Display);
  ShowDetails(mission);
  FParts.filter->SetMission(&mission);
  FParts.report->ShowReport(mission);
}

void TMainScreen::ShowInCharts(const TDisplaySettings& display) {
  const TValueMasks masks{std::string(display.FormatOf(TQuantity::Time)),
                          std::string(display.FormatOf(TQuantity::Acceleration))};
  TAlarmLimits acceleration;
  if (display.alarmActive) acceleration = display.LimitsOf(TQuantity::Acceleration);
  const auto colour = [&](auto& chart) {
    for (std::size_t i = 0; i < kSeriesCount; ++i)
      chart.SetColour(kAllSeries[i], QColor(display.accelerationColours[i]));
  };
  for (TEventsChart* chart : {FParts.overview->Chart1(), FParts.shock->Chart20()}) {
    colour(*chart);
    chart->SetAlarmLimits(acceleration);
    chart->SetPointAbsorption(display.pointAbsorption);
  }
  colour(*FParts.shock->Chart2());
  FParts.shock->Chart2()->SetAlarmLimits(acceleration);
  colour(*FParts.shock->ChartSpecAnalysis());
  FParts.overview->Chart1()->SetMasks(masks);
  FParts.shock->SetMasks(masks);

  TSensorsChart& sensors = *FParts.overview->ChartAllSensors();
  std::map<std::string, TLimits> limits;
  for (std::size_t i = 0; i < kColouredSensors.size(); ++i) {
    const TQuantityRow& row = *kColouredSensors[i];
    sensors.SetSensorColour(row.sensorName, QColor(display.sensorColours[i]));
    FParts.docks.ChartNavigator->SetSensorColour(row.sensorName, QColor(display.sensorColours[i]));
    if (display.alarmActive && row.quantity) limits.emplace(row.sensorName, display.LimitsOf(*row.quantity));
  }
  sensors.SetAlarmLimits(std::move(limits));
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) {
    sensors.SetAxisColour(static_cast<TSensorAxis>(i), QColor(display.axisColours[i]));
  }
  std::map<std::string, std::string> names;
  for (std::size_t i = 0; i < kAnalogInputs.size(); ++i)
    names.emplace(kAnalogInputs[i]->sensorName, display.analogNames[i]);
  FParts.docks.ChartNavigator->SetSensorNames(names);
  sensors.SetSensorNames(std::move(names));
  if (std::exchange(FDateFormat, display.dateFormat) == display.dateFormat) return;
  for (TTimeChart* chart : FWindow.findChildren<TTimeChart*>()) chart->RefreshLabels();
}

void TMainScreen::TellLimits() {
  ShowLimitsInForce(FMission, *this);
}

void TMainScreen::ShowDetails(const TShownMission& mission) {
  FParts.docks.details->ShowSections(
      {{QObject::tr("Mission"), HeaderFigures(mission.Data)},
       {QObject::tr("Events"), EventFigures(mission.Summary, mission.Events, mission.Axes)},
       {QObject::tr("Sensors"), NamedSensorFigures(mission)}});
}

void TMainScreen::RefreshGrid(std::string_view grid) {
  Control<TGrid>(grid).Refresh();
}

void TMainScreen::RebuildFilteredEvents() {
  if (FMission != nullptr) FParts.shock->FilteredShocks()->RefreshRows(FMission->SelectedEvent);
}

void TMainScreen::ShowFilter(const TShownMission& mission) {
  Control<QAction>("actFilterActive").setChecked(mission.FilterActive);
  FParts.statusEvents->ShowEvents(mission.CLDS.RecordCount(), mission.Events.Count());
  for (TEventsChart* chart : {FParts.overview->Chart1(), FParts.shock->Chart20()}) {
    chart->SetVisibleEvents(mission.CLDS.ShownRows());
  }
  FParts.filter->ShowFilter();
  for (QAction* action : FWindow.actions()) {
    if (action->property(kNeedsEvents).toBool()) action->setEnabled(CanExecute(*action));
  }
}

void TMainScreen::ShowSelectedEvent(std::optional<std::size_t> event) {
  for (TEventsChart* chart : {FParts.overview->Chart1(), FParts.shock->Chart20()}) chart->SetSelectedEvent(event);
  FParts.overview->MostImportant()->SetCurrentId(event);
  if (FMission == nullptr) return;
  FParts.shock->ShowCards(FMission->Tables.Events, event, FMission->Display);
  if (std::exchange(FShownEvent, event) == event) return;  // its chart keeps its zoom
  FParts.shock->ShowEvent(FMission->Events, event, FMission->Data);
}

void TMainScreen::PositionEventGrids(std::optional<std::size_t> event) {
  FParts.shock->Shocks()->SetCurrentId(event);
  FParts.shock->FilteredShocks()->SetCurrentId(event);
}
