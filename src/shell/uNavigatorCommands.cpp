#include "shell/uNavigatorCommands.h"

#include <cmath>

#include "base/uDateTime.h"

namespace {

constexpr std::string_view kCharts[] = {"Chart1", "ChartAllSensors", "Chart20"};

void PutBand(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen) {
  mission.Band = band;
  screen.SetNavigatorBand(band);
}

void SetBand(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen) {
  PutBand(mission, band, screen);
  screen.SetNavigatorCompanions(band);
}

void MoveBand(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen) {
  PutBand(mission, band, screen);
  NavigatorBandResized(mission, screen);
}

void SetSpan(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen) {
  SetBand(mission, band, screen);
  screen.Repaint("Chart1");
  screen.Repaint("ChartAllSensors");
  NavigatorBandResized(mission, screen);
}

void SetInterval(TShownMission& mission, const TCalendarStep& interval, IMainScreen& screen) {
  if (const auto data = screen.NavigatorSpan()) SetSpan(mission, IntervalBand(mission.Band, *data, interval), screen);
}

void Step(TShownMission& mission, TTimeSpan (*moved)(const TTimeSpan&, const TTimeSpan&), IMainScreen& screen) {
  const auto data = screen.NavigatorSpan();
  if (!data) return;
  SetBand(mission, moved(mission.Band, *data), screen);
  screen.Repaint("ChartNavigator");
  NavigatorBandResized(mission, screen);
}

void ZoomTo(TShownMission& mission, double from, double days, IMainScreen& screen) {
  const auto data = screen.NavigatorSpan();
  if (!data || !std::isfinite(from)) return;
  if (!(days > 0 && std::isfinite(days))) days = 0;
  MoveBand(mission, BandAround(mission.Band, *data, from, days), screen);
}

void SyncWith(TShownMission& mission, std::string_view chart, IMainScreen& screen) {
  if (!screen.NavigatorSpan()) return;
  constexpr std::string_view kQuestion = "Do you really want to sync the navigator with the currently viewed timespan?";
  if (mission.Settings.syncConfirmations && !screen.Confirm(kQuestion)) return;
  MoveBand(mission, screen.ChartSpan(chart), screen);
}

}  // namespace

void actNavSetIntAllExecute(TShownMission& mission, IMainScreen& screen) {
  if (const auto data = screen.NavigatorSpan()) SetSpan(mission, *data, screen);
}

void actNavSetIntYearExecute(TShownMission& mission, IMainScreen& screen) {
  SetInterval(mission, kYearInterval, screen);
}

void actNavSetIntMonthExecute(TShownMission& mission, IMainScreen& screen) {
  SetInterval(mission, kMonthInterval, screen);
}

void actNavSetIntWeekExecute(TShownMission& mission, IMainScreen& screen) {
  SetInterval(mission, kWeekInterval, screen);
}

void actNavSetIntDayExecute(TShownMission& mission, IMainScreen& screen) {
  SetInterval(mission, kDayInterval, screen);
}

void actNavSetIntHourExecute(TShownMission& mission, IMainScreen& screen) {
  SetInterval(mission, kHourInterval, screen);
}

void actNavSetIntMinExecute(TShownMission& mission, IMainScreen& screen) {
  SetInterval(mission, kMinInterval, screen);
}

void actNavFwdExecute(TShownMission& mission, IMainScreen& screen) {
  Step(mission, ForwardBand, screen);
}

void actNavRwdExecute(TShownMission& mission, IMainScreen& screen) {
  Step(mission, RewindBand, screen);
}

void NavigatorBandDragging(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen) {
  MoveBand(mission, band, screen);
}

void NavigatorBandResizing(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen) {
  MoveBand(mission, band, screen);
}

void ZoomNavigatorToEvent(TShownMission& mission, std::size_t event, IMainScreen& screen) {
  if (event >= mission.Events.Count()) return;
  const TEvent& shown = mission.Events.GetItem(event);
  const double ms = shown.Count() > 0 ? shown.Values().back().time - shown.GetStartTime() : 0;
  ZoomTo(mission, DateTimeOf(DrawableStart(mission.Events.StartTime), shown.GetStartTime()), ms / kMsPerDay, screen);
}

void ZoomNavigatorToReading(TShownMission& mission, const TDataset& table, std::size_t row, IMainScreen& screen) {
  if (const auto time = ReadingTime(table, row)) ZoomTo(mission, *time, 0, screen);
}

std::optional<double> ReadingTime(const TDataset& table, std::size_t row) {
  const auto timestamp = table.FindField("Timestamp");
  if (!timestamp || row >= table.RowCount()) return std::nullopt;
  return table.DateTime(row, *timestamp);
}

void KeepNavigatorBand(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen) {
  if (const auto data = screen.NavigatorSpan()) MoveBand(mission, BandWithin(band, *data), screen);
}

void NavigatorBandResized(const TShownMission& mission, IMainScreen& screen) {
  for (const std::string_view chart : kCharts) screen.SetChartSpan(chart, mission.Band);
  screen.SetUnsyncedView(std::nullopt);
  screen.SetNavigatorCompanions(mission.Band);
  screen.Repaint("Chart1");
}

void btnToolsSensorsChartSyncWNavClick(TShownMission& mission, IMainScreen& screen) {
  SyncWith(mission, "ChartAllSensors", screen);
}

void btnToolsShockSyncWNavClick(TShownMission& mission, TView view, IMainScreen& screen) {
  SyncWith(mission, view == TView::Shock ? "Chart20" : "Chart1", screen);
}
