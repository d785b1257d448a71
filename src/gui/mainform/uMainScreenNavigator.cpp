// The navigator and the charts that follow it.
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uMainScreen.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/shock/uShockPanel.h"

std::optional<TTimeSpan> TMainScreen::NavigatorSpan() const {
  const auto span = FParts.docks.ChartNavigator->DataSpan();
  if (!span) return std::nullopt;
  return TTimeSpan{span->first, span->second};
}

void TMainScreen::SetNavigatorBand(const TTimeSpan& band) {
  FParts.docks.ChartNavigator->SetBand(band.start, band.end);
}

void TMainScreen::SetNavigatorCompanions(const TTimeSpan& band) {
  FParts.docks.ChartNavigator->SetCompanions(band.start, band.end);
}

void TMainScreen::SetUnsyncedView(const std::optional<TTimeSpan>& view) {
  std::optional<std::pair<double, double>> shown;
  if (view) shown = std::pair(view->start, view->end);
  FParts.docks.ChartNavigator->SetUnsyncedView(shown);
}

TTimeSpan TMainScreen::ChartSpan(std::string_view chart) const {
  const auto [start, end] = Control<TTimeChart>(chart).Range().Times();
  return {start, end};
}

void TMainScreen::SetChartSpan(std::string_view chart, const TTimeSpan& span) {
  auto& shown = Control<TTimeChart>(chart);
  shown.Range().SetTimes(span.start, span.end);
  TellSynced(shown);
}

void TMainScreen::TellSynced(TTimeChart& chart) {
  if (FMission == nullptr) return;
  const auto [start, end] = chart.Range().Times();
  const TTimeSpan shown{start, end};
  chart.Range().SetSynced(shown == FMission->Band);
  MarkUnsynced(&chart);
}

// On the navigator, of the charts in sight: that one, or another that is not synced.
void TMainScreen::MarkUnsynced(const TTimeChart* first) {
  if (FMission == nullptr) return;
  std::optional<TTimeSpan> found;
  for (const TTimeChart* chart : std::initializer_list<const TTimeChart*>{
           FParts.overview->Chart1(), FParts.overview->ChartAllSensors(), FParts.shock->Chart20()}) {
    const auto [start, end] = chart->Range().Times();
    const TTimeSpan shown{start, end};
    if (chart->isVisible() && shown != FMission->Band && (!found || chart == first)) found = shown;
  }
  SetUnsyncedView(found);
}
