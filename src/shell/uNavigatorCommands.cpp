#include "shell/uNavigatorCommands.h"

#include <cmath>

#include "base/uDateTime.h"

namespace {

constexpr std::string_view kCharts[] = {"Chart1", "ChartAllSensors", "Chart20"};

void PutBand(TShownMission& mission, const TTimeSpan& band, IMissionViews& views) {
  mission.Band = band;
  views.SetNavigatorBand(band);
}

void SetBand(TShownMission& mission, const TTimeSpan& band, IMissionViews& views) {
  PutBand(mission, band, views);
  views.SetNavigatorCompanions(band);
}

void MoveBand(TShownMission& mission, const TTimeSpan& band, IMissionViews& views) {
  PutBand(mission, band, views);
  NavigatorBandResized(mission, views);
}

void SetSpan(TShownMission& mission, const TTimeSpan& band, IMissionViews& views) {
  SetBand(mission, band, views);
  views.RepaintChart("Chart1");
  views.RepaintChart("ChartAllSensors");
  NavigatorBandResized(mission, views);
}

void StepBand(TShownMission& mission, TTimeSpan (*moved)(const TTimeSpan&, const TTimeSpan&), IMissionViews& views) {
  const auto data = views.NavigatorSpan();
  if (!data) return;
  SetBand(mission, moved(mission.Band, *data), views);
  views.RepaintChart("ChartNavigator");
  NavigatorBandResized(mission, views);
}

void ZoomTo(TShownMission& mission, double from, double days, IMissionViews& views) {
  const auto data = views.NavigatorSpan();
  if (!data || !std::isfinite(from)) return;
  if (!(days > 0 && std::isfinite(days))) days = 0;
  MoveBand(mission, BandAround(mission.Band, *data, from, days), views);
}

void SyncWith(TShownMission& mission, std::string_view chart, IMissionViews& views, IDialogs& dialogs) {
  if (!views.NavigatorSpan()) return;
  constexpr std::string_view kQuestion = "Do you really want to sync the navigator with the currently viewed timespan?";
  if (mission.Settings.syncConfirmations && !dialogs.Confirm(kQuestion)) return;
  MoveBand(mission, views.ChartSpan(chart), views);
}

}  // namespace

void actNavSetIntAllExecute(TShownMission& mission, IMissionViews& views) {
  if (const auto data = views.NavigatorSpan()) SetSpan(mission, *data, views);
}

void SetNavigatorInterval(TShownMission& mission, const TCalendarStep& interval, IMissionViews& views) {
  if (const auto data = views.NavigatorSpan()) SetSpan(mission, IntervalBand(mission.Band, *data, interval), views);
}

void actNavFwdExecute(TShownMission& mission, IMissionViews& views) {
  StepBand(mission, ForwardBand, views);
}

void actNavRwdExecute(TShownMission& mission, IMissionViews& views) {
  StepBand(mission, RewindBand, views);
}

void NavigatorBandDragging(TShownMission& mission, const TTimeSpan& band, IMissionViews& views) {
  MoveBand(mission, band, views);
}

void NavigatorBandResizing(TShownMission& mission, const TTimeSpan& band, IMissionViews& views) {
  MoveBand(mission, band, views);
}

void ZoomNavigatorToEvent(TShownMission& mission, std::size_t event, IMissionViews& views) {
  if (event >= mission.Events.Count()) return;
  const TEvent& shown = mission.Events.GetItem(event);
  const double ms = shown.Count() > 0 ? shown.Values().back().time - shown.GetStartTime() : 0;
  ZoomTo(mission, DateTimeOf(DrawableStart(mission.Events.StartTime), shown.GetStartTime()), ms / kMsPerDay, views);
}

void ZoomNavigatorToTime(TShownMission& mission, double time, IMissionViews& views) {
  ZoomTo(mission, time, 0, views);
}

void ZoomNavigatorToReading(TShownMission& mission, const TDataset& table, std::size_t row, IMissionViews& views) {
  if (const auto time = ReadingTime(table, row)) ZoomNavigatorToTime(mission, *time, views);
}

std::optional<double> ReadingTime(const TDataset& table, std::size_t row) {
  const auto timestamp = table.FindField("Timestamp");
  if (!timestamp || row >= table.RowCount()) return std::nullopt;
  return table.DateTime(row, *timestamp);
}

void KeepNavigatorBand(TShownMission& mission, const TTimeSpan& band, IMissionViews& views) {
  if (const auto data = views.NavigatorSpan()) MoveBand(mission, BandWithin(band, *data), views);
}

void NavigatorBandResized(const TShownMission& mission, IMissionViews& views) {
  for (const std::string_view chart : kCharts) views.SetChartSpan(chart, mission.Band);
  views.SetUnsyncedView(std::nullopt);
  views.SetNavigatorCompanions(mission.Band);
  views.RepaintChart("Chart1");
}

void btnToolsSensorsChartSyncWNavClick(TShownMission& mission, IMissionViews& views, IDialogs& dialogs) {
  SyncWith(mission, "ChartAllSensors", views, dialogs);
}

void btnToolsShockSyncWNavClick(TShownMission& mission, TView view, IMissionViews& views, IDialogs& dialogs) {
  SyncWith(mission, view == TView::Shock ? "Chart20" : "Chart1", views, dialogs);
}
