// The navigator and the charts that follow it.
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uMainScreen.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/shock/uShockPanel.h"

std::optional<TTimeSpan> TMainScreen::NavigatorSpan() const {
  return FParts.docks.ChartNavigator->DataSpan();
}

void TMainScreen::SetNavigatorBand(const TTimeSpan& band) {
  FParts.docks.ChartNavigator->SetBand(band);
}

void TMainScreen::SetNavigatorCompanions(const TTimeSpan& band) {
  FParts.docks.ChartNavigator->SetCompanions(band);
}

void TMainScreen::SetUnsyncedView(const std::optional<TTimeSpan>& view) {
  FParts.docks.ChartNavigator->SetUnsyncedView(view);
}

TTimeSpan TMainScreen::ChartSpan(std::string_view chart) const {
  return Control<TTimeChart>(chart).Range().Times();
}

void TMainScreen::SetChartSpan(std::string_view chart, const TTimeSpan& span) {
  auto& shown = Control<TTimeChart>(chart);
  shown.Range().SetTimes(span);
  TellSynced(shown);
}

void TMainScreen::TellSynced(TTimeChart& chart) {
  if (FMission == nullptr) return;
  chart.Range().SetSynced(chart.Range().Times() == FMission->Band);
  MarkUnsynced(&chart);
}

// On the navigator, of the charts in sight: that one, or another that is not synced.
void TMainScreen::MarkUnsynced(const TTimeChart* first) {
  if (FMission == nullptr) return;
  std::optional<TTimeSpan> found;
  for (const TTimeChart* chart : std::initializer_list<const TTimeChart*>{
           FParts.overview->Chart1(), FParts.overview->ChartAllSensors(), FParts.shock->Chart20()}) {
    const TTimeSpan shown = chart->Range().Times();
    if (chart->isVisible() && shown != FMission->Band && (!found || chart == first)) found = shown;
  }
  SetUnsyncedView(found);
}
