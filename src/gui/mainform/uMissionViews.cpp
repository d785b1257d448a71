#include "gui/mainform/uMissionViews.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <array>
#include <cmath>
#include <utility>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "gui/analysis/uDamagePanel.h"
#include "gui/analysis/uStatisticsPanel.h"
#include "gui/charts/uDamageChart.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uResponseChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uGrid.h"
#include "gui/common/uIcons.h"
#include "gui/docks/uMissionDetails.h"
#include "gui/filter/uFilterChip.h"
#include "gui/filter/uFilterPanel.h"
#include "gui/mainform/uAnalysisWork.h"
#include "gui/mainform/uControls.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uNotice.h"
#include "gui/mainform/uViewOutput.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/overview/uVerdictStrip.h"
#include "gui/report/uReportPanel.h"
#include "gui/settings/uAlarmLimitsPanel.h"
#include "gui/shock/uEventCards.h"
#include "gui/shock/uShockPanel.h"
#include "gui/shock/uShockValuesGrid.h"
#include "shell/uFilterWords.h"
#include "shell/uNoteCommands.h"
#include "shell/uReferenceFigures.h"
#include "shell/uSettingsCommands.h"

TMissionViews::TMissionViews(QMainWindow& window, TMainParts& parts, TControls& controls)
    : FWindow(window),
      FParts(parts),
      FControls(controls),
      FAnalysis(std::make_unique<TAnalysisWork>(window, *parts.views, *this)) {}

TMissionViews::~TMissionViews() = default;

void TMissionViews::EmptyGridsAndCharts() {
  FAnalysis->SetMission(nullptr);
  FMission = nullptr;
  FControls.SetMission(nullptr);
  FShownEvent.reset();
  FVerdict = {};
  FParts.overview->Verdict()->ShowCells({});
  FParts.overview->Verdict()->ShowJudgement({});
  FParts.overview->Verdict()->ShowReference({});
  ShowLimitsInForce(FMission, FControls);
  for (TGrid* grid : FWindow.findChildren<TGrid*>()) {
    grid->SetNotes(nullptr);
    grid->SetDataset(nullptr);
  }
  for (TTimeChart* chart : FWindow.findChildren<TTimeChart*>()) {
    chart->Flags().Set({});
    chart->Range().SetSynced(std::nullopt);
    chart->Clear();
  }
  FParts.damage->ShowMission(nullptr);
  FParts.statistics->ShowMission(nullptr);
  FParts.shock->Cards()->ShowRow({}, std::nullopt, {});
  FParts.docks.details->ShowSections({});
  FParts.report->Clear();
  FParts.filter->SetMission(nullptr);
  FParts.statusEvents->Clear();
  FParts.notice->Clear();
  for (QLabel* label : {FParts.statusValue, FParts.statusFile}) label->clear();
}

void TMissionViews::PopulateChartSeries(const TShownMission& mission) {
  ShowInCharts(mission.Display);
  for (TEventsChart* chart : {FParts.overview->Chart1(), FParts.shock->Chart20()}) {
    chart->SetEvents(mission.Events, mission.Data, mission.Axes);
  }
  FParts.overview->ChartAllSensors()->SetSensors(mission.Sensors, mission.Sensors.StartTime);
  FParts.docks.ChartNavigator->SetMission(mission.Events, mission.Sensors);
  // All show the same span at first, so that equal times are above each other.
  for (TTimeChart* chart : std::initializer_list<TTimeChart*>{FParts.overview->Chart1(), FParts.shock->Chart20(),
                                                              FParts.overview->ChartAllSensors()}) {
    chart->Range().SetRecordingSpan(FParts.docks.ChartNavigator->Range().Full());
  }
  FParts.overview->FitToData();
}

void TMissionViews::UpdateKorvexUI(TShownMission& mission) {
  FMission = &mission;
  FControls.SetMission(&mission);
  FParts.shock->Shocks()->SetDataset(&mission.Tables.Events);
  FParts.shock->FilteredShocks()->SetDataset(&mission.CLDS);
  FParts.overview->MostImportant()->SetDataset(&mission.Important);
  FParts.docks.DBGrid2->SetDataset(&mission.Tables.Sensors);
  FParts.docks.DBGrid8->SetDataset(&mission.Tables.Battery);
  ShowVerdict(mission);
  ShowDetails(mission);
  PlaceNotes(mission);
  ShowLimitsInForce(FMission, FControls);
  FParts.filter->SetMission(&mission);
  FAnalysis->SetMission(&mission);
  if (mission.Analysis) ShowAnalysis(mission);
  ShowFilter(mission);
  FNotesShown();
}

void TMissionViews::ShowPins(const TPins& pins) {
  FParts.shock->ShowPins(pins);
}

void TMissionViews::ShowReference(const TShownMission& mission) {
  NamedChild<QAction>(FWindow, "actLayoutReference").setChecked(mission.ReferenceIsKept);
  if (FMission == nullptr) return;
  ShowStrip(mission);
  ShowDetails(mission);
  FParts.statistics->ShowMission(&mission);
  FParts.report->ShowReport(mission);
  FControls.UpdateCommands();
}

void TMissionViews::ShowNotes(const TShownMission& mission) {
  ShowDetails(mission);
  PlaceNotes(mission);
  FParts.report->ShowReport(mission);
  FControls.UpdateCommands();
  FNotesShown();
}

std::vector<TChartFlag> TMissionViews::NoteFlags(const TShownMission& mission) const {
  constexpr qsizetype kMaxText = 300;  // characters, of a tip
  std::vector<TChartFlag> flags;
  const TNotedEvents events(mission.Events);
  for (const TNote& note : SortedNotes(mission)) {
    if (!note.span) continue;
    // An event's flag is as narrow as its line.
    const TTimeSpan span = note.event ? TTimeSpan{note.span->start, note.span->start} : *note.span;
    flags.push_back(
        {QtText(note.id), span, ShownText(NoteSentence(note, events), kMaxText), note.id == mission.Notes.current});
  }
  return flags;
}

void TMissionViews::PlaceNotes(const TShownMission& mission) {
  const std::vector<TChartFlag> flags = NoteFlags(mission);
  for (TTimeChart* chart :
       std::initializer_list<TTimeChart*>{FParts.overview->Chart1(), FParts.shock->Chart20(),
                                          FParts.overview->ChartAllSensors(), FParts.docks.ChartNavigator}) {
    chart->Flags().Set(flags);
  }
  PlaceEventNotes(mission, FShownEvent);
  for (TGrid* grid : {FParts.shock->Shocks(), FParts.shock->FilteredShocks(), FParts.overview->MostImportant()}) {
    grid->SetNotes(&mission.Notes.ofEvents);
  }
}

// The chart of an event counts ms from its start.
void TMissionViews::PlaceEventNotes(const TShownMission& mission, std::optional<std::size_t> event) {
  std::vector<TChartFlag> flags;
  if (event) {
    flags = NoteFlags(mission);
    const double start = DateTimeOf(mission.Events.StartTime, mission.Events.GetItem(*event).GetStartTime());
    // Notes are kept to the millisecond; one on the event stands at its start.
    const auto ms = [start](double time) {
      const double fromStart = (time - start) * kMsPerDay;
      return std::fabs(fromStart) < 1 ? 0 : fromStart;
    };
    for (TChartFlag& flag : flags) flag.span = {ms(flag.span.start), ms(flag.span.end)};
  }
  FParts.shock->Chart2()->Flags().Set(std::move(flags));
}

void TMissionViews::PrepareReport(const TShownMission& mission) {
  FParts.report->ShowReport(mission);
}

void TMissionViews::RefreshDisplay(const TShownMission& mission) {
  ShowInCharts(mission.Display);
  ShowLimitsInForce(FMission, FControls);
  if (FMission == nullptr) return;
  for (TGrid* grid : FWindow.findChildren<TGrid*>()) grid->Reformat();
  FParts.shock->Cards()->ShowRow(mission.Tables.Events, mission.SelectedEvent, mission.Display);
  FParts.overview->SetSelectedWords(SelectedEventWords(mission.SelectedEvent));
  ShowVerdict(mission);
  ShowDetails(mission);
  FParts.filter->SetMission(&mission);
  FParts.report->ShowReport(mission);
  FParts.damage->ShowMission(&mission);
  FParts.statistics->ShowMission(&mission);
}

void TMissionViews::ShowInCharts(const TDisplaySettings& display) {
  for (TTimeChart* chart : FWindow.findChildren<TTimeChart*>()) chart->SetDisplay(display);
  FParts.shock->Values()->SetDisplay(display);
  constexpr std::array kSwitches = {"actShockShowX", "actShockShowY", "actShockShowZ", "actShockShowTotal"};
  for (std::size_t i = 0; i < kSeriesCount; ++i) {
    FWindow.findChild<QAction*>(kSwitches[i])->setIcon(DotIcon(QColor(display.accelerationColours[i])));
  }
  FParts.alarmLimits->ShowAnalogNames(display.analogNames);
}

void TMissionViews::ShowVerdict(const TShownMission& mission) {
  FVerdict = VerdictOf(mission);
  ShowStrip(mission);
}

void TMissionViews::ShowStrip(const TShownMission& mission) {
  FParts.overview->Verdict()->ShowCells(VerdictCells(FVerdict, mission));
  FParts.overview->Verdict()->ShowJudgement(JudgementLine(FVerdict, mission.Display));
  FParts.overview->Verdict()->ShowReference(ReferenceLine(mission));
}

void TMissionViews::ShowDetails(const TShownMission& mission) {
  std::vector<TFigure> events = EventFigures(mission.Summary, mission.Events, mission.Axes, FormatsOf(mission.Display));
  std::erase_if(events, [](const TFigure& figure) { return figure.label == "Peak" || figure.label == "Most intense"; });
  std::vector<TFigure> verdict = VerdictFigures(FVerdict, mission.Display);
  if (const TJudgementLine judgement = JudgementLine(FVerdict, mission.Display); !judgement.text.empty()) {
    verdict.insert(verdict.begin(), {"Judgement", judgement.text});
  }
  std::vector<TMissionDetails::TSection> sections = {{QObject::tr("Verdict"), std::move(verdict)},
                                                     {QObject::tr("Mission"), HeaderFigures(mission.Data)},
                                                     {QObject::tr("Events"), std::move(events)},
                                                     {QObject::tr("Sensors"), NamedSensorFigures(mission)}};
  if (std::vector<TFigure> notes = NoteFigures(mission); !notes.empty()) {
    sections.insert(sections.begin() + 1, {QObject::tr("Notes"), std::move(notes)});
  }
  if (const TReference* reference = ReferenceFor(mission, false)) {
    const auto figures = ReferenceFigures(*reference, FVerdict, true, mission.Display);
    sections.insert(sections.begin() + 1,
                    {QObject::tr("Compared with %1").arg(QtText(ReferenceName(*reference))), DeltaFigures(figures)});
  }
  FParts.docks.details->ShowSections(std::move(sections));
}

std::optional<TTimeSpan> TMissionViews::NavigatorSpan() const {
  return FParts.docks.ChartNavigator->DataSpan();
}

void TMissionViews::SetNavigatorBand(const TTimeSpan& band) {
  FParts.docks.ChartNavigator->SetBand(band);
  FControls.UpdateCommands();
}

void TMissionViews::SetNavigatorCompanions(const TTimeSpan& band) {
  FParts.docks.ChartNavigator->SetCompanions(band);
}

void TMissionViews::SetUnsyncedView(const std::optional<TTimeSpan>& view) {
  FParts.docks.ChartNavigator->SetUnsyncedView(view);
}

TTimeSpan TMissionViews::ChartSpan(std::string_view chart) const {
  return NamedChild<TTimeChart>(FWindow, chart).Range().Times();
}

void TMissionViews::SetChartSpan(std::string_view chart, const TTimeSpan& span) {
  auto& shown = NamedChild<TTimeChart>(FWindow, chart);
  shown.Range().SetTimes(span);
  UpdateSynced(shown);
}

void TMissionViews::RepaintChart(std::string_view chart) {
  NamedChild<QWidget>(FWindow, chart).update();
}

void TMissionViews::CopyChart(std::string_view chart) {
  QApplication::clipboard()->setImage(NamedChild<TTimeChart>(FWindow, chart).Picture());
}

std::optional<TSpectrumChoice> TMissionViews::ShownSpectrum() const {
  if (!NamedChild<QAction>(FWindow, "actShockSpecAnalysis").isChecked()) return std::nullopt;
  const auto entryOf = [this](std::string_view list) {
    return static_cast<std::size_t>(NamedChild<QComboBox>(FWindow, list).currentIndex());
  };
  return TSpectrumChoice{entryOf("cmbSpecType"), entryOf("cmbSpecWindow")};
}

std::optional<TShownResponse> TMissionViews::ShownResponse() const {
  const TResponseChart& chart = *FParts.shock->ChartResponse();
  if (&FParts.shock->ChartInFront() != &chart) return std::nullopt;
  return TShownResponse{chart.Request().options.response, chart.IsEnvelope(), chart.Response().lines, chart.WhyNone(),
                        chart.PinnedLines()};
}

std::string TMissionViews::ChartPicture(std::string_view chart, TPictureFormat format, int scale) {
  const QString caption =
      FMission == nullptr ? QString() : QObject::tr("Mission %1").arg(QtText(Printable(FMission->Data.sID)));
  return ChartFile(NamedChild<TTimeChart>(FWindow, chart), caption, format, scale);
}

TDataset TMissionViews::ChartTable(std::string_view chart) const {
  return NamedChild<TAnalysisChart>(FWindow, chart).Table();
}

std::string TMissionViews::AnalysisChart(TView view) const {
  const TAnalysisChart* chart = FParts.damage->Chart();
  if (view == TView::Statistics) chart = FParts.statistics->CurrentChart();
  return Utf8(chart->objectName());
}

void TMissionViews::AwaitAnalysis() {
  FAnalysis->Start();
}

void TMissionViews::ShowAnalysis(TShownMission& mission) {
  FAnalysis->Done();
  FParts.shock->Analysis()->SetDataset(&mission.Analysis->Table);
  FParts.shock->Analysis()->SetCurrentId(mission.SelectedEvent);
  FParts.damage->ShowMission(&mission);
  FParts.statistics->ShowMission(&mission);
  FParts.filter->ShowAnalysis();
}

void TMissionViews::RefreshGrid(std::string_view grid) {
  NamedChild<TGrid>(FWindow, grid).Refresh();
}

void TMissionViews::RebuildFilteredEvents() {
  if (FMission == nullptr) return;
  FParts.shock->FilteredShocks()->RefreshRows(FMission->SelectedEvent);
  FParts.shock->Analysis()->RefreshRows(FMission->SelectedEvent);
  FParts.overview->MostImportant()->Refresh();
  FParts.overview->ShowSelectedEvent(FMission->SelectedEvent, SelectedEventWords(FMission->SelectedEvent));
}

void TMissionViews::ShowFilter(const TShownMission& mission) {
  NamedChild<QAction>(FWindow, "actFilterActive").setChecked(mission.FilterActive);
  FParts.statusEvents->ShowEvents(mission.CLDS.RecordCount(), mission.Events.Count());
  for (TEventsChart* chart : {FParts.overview->Chart1(), FParts.shock->Chart20()}) {
    chart->SetVisibleEvents(mission.CLDS.ShownRows());
  }
  FParts.docks.ChartNavigator->SetVisibleEvents(mission.CLDS.ShownRows());
  FParts.shock->ChartResponse()->SetVisibleEvents(mission.CLDS.ShownRows());
  const QString conditions = QtText(FilterWords(mission.Filter, mission.Display));
  FParts.statusEvents->setToolTip(Qt::convertFromPlainText(conditions));
  FParts.shock->ShowFilter(mission.CLDS.RecordCount(), mission.Events.Count(),
                           mission.FilterActive ? conditions : QString());
  FParts.filter->ShowFilter();
  FParts.damage->ShowMission(&mission);
  FParts.statistics->ShowMission(&mission);
  FParts.overview->Verdict()->ShowCells(VerdictCells(FVerdict, mission));
  FParts.report->ShowReport(mission);
  FControls.UpdateCommands();
}

void TMissionViews::ShowSelectedEvent(std::optional<std::size_t> event) {
  for (TEventsChart* chart : {FParts.overview->Chart1(), FParts.shock->Chart20()}) chart->SetSelectedEvent(event);
  FParts.overview->ShowSelectedEvent(event, SelectedEventWords(event));
  FParts.report->SetSelectedEvent(event);
  FParts.damage->SetSelectedEvent(event);
  if (FMission == nullptr) return;
  FParts.shock->Cards()->ShowRow(FMission->Tables.Events, event, FMission->Display);
  FParts.shock->ShowClipped(event && FMission->Tables.Metrics[*event].clipped);
  if (std::exchange(FShownEvent, event) == event) return;  // its chart keeps its zoom
  FParts.shock->ShowEvent(FMission->Events, event, FMission->Data);
  PlaceEventNotes(*FMission, event);
}

QString TMissionViews::SelectedEventWords(std::optional<std::size_t> event) const {
  if (FMission == nullptr || !event) return {};
  const TEvent& selected = FMission->Events.GetItem(*event);
  const double time = DateTimeOf(FMission->Events.StartTime, selected.GetStartTime());
  QString words =
      QObject::tr("Selected: event %1 · %2 · %3 g")
          .arg(selected.ID)
          .arg(QtText(FormatDateTime(DateTimeMask(), time)),
               QtText(MaskFloat(FMission->Display.FormatOf(TQuantity::Acceleration), double{selected.Max})));
  if (FMission->Tables.Metrics[*event].clipped) words += QObject::tr(" · clipped");
  return words;
}

void TMissionViews::PositionEventGrids(std::optional<std::size_t> event) {
  FParts.shock->Shocks()->SetCurrentId(event);
  FParts.shock->FilteredShocks()->SetCurrentId(event);
  FParts.shock->Analysis()->SetCurrentId(event);
}

void TMissionViews::UpdateSynced(TTimeChart& chart) {
  if (FMission == nullptr) return;
  const TTimeSpan shown = chart.Range().Times();
  chart.Range().SetSynced(shown == FMission->Band);
  MarkUnsynced(&chart);
}

void TMissionViews::MarkUnsynced(const TTimeChart* preferred) {
  if (FMission == nullptr) return;
  std::optional<TTimeSpan> found;
  for (const TTimeChart* chart : std::initializer_list<const TTimeChart*>{
           FParts.overview->Chart1(), FParts.overview->ChartAllSensors(), FParts.shock->Chart20()}) {
    const TTimeSpan shown = chart->Range().Times();
    if (chart->isVisible() && shown != FMission->Band && (!found || chart == preferred)) found = shown;
  }
  SetUnsyncedView(found);
}
