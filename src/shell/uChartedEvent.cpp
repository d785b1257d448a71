#include "shell/uChartedEvent.h"

#include <utility>

#include "analysis/uHighPassFilter.h"
#include "analysis/uPinnedEvents.h"

namespace {

// Nothing for a spectrum without lines.
void AddLines(const TPinnedEvent& pinned, std::vector<TSpectrumLine> lines, std::vector<TBesideCurve>& curves) {
  if (lines.empty()) return;
  const std::size_t count = lines.size();
  curves.push_back({PinName(pinned), count, [lines = std::move(lines)](std::size_t row) { return RowOf(lines[row]); }});
}

// Its times as in the chart: from the start of the shown event.
TBesideCurve CurveBeside(const TEvent& shown, const TShownMission& mission, const TPinnedEvent& pinned) {
  const TShift shift = ShiftBetween(shown, ThresholdsOf(mission.Data), pinned, mission.Pins.alignment);
  const double start = pinned.event.GetStartTime() - shift.ms;
  if (mission.Settings.highPass) {
    auto values = HighPassFiltered(pinned.event.Values());
    const std::size_t count = values.size();
    return {PinName(pinned), count,
            [values = std::move(values), start](std::size_t row) { return RowOf(values[row], start); }};
  }
  return {PinName(pinned), pinned.event.Count(),
          [values = pinned.event.Values(), start](std::size_t row) { return RowOf(values[row], start); }};
}

TChartedEvent Without(std::string lack, std::string why) {
  return {.lack = std::move(lack), .why = std::move(why)};
}

TChartedEvent WithResponse(TChartedEvent charted, TShownResponse response, const TShownMission& mission) {
  if (response.lines.empty()) return Without("There is no response spectrum to export.", response.why);
  charted.spectrumType = "Response";
  for (std::size_t i = 0; i < response.pinned.size(); ++i) {
    AddLines(*mission.Pins.items[i].event, response.pinned[i], charted.beside);
  }
  charted.response = std::move(response);
  return charted;
}

TChartedEvent WithSpectrum(TChartedEvent charted, const TSpectrumChoice& choice, const TShownMission& mission) {
  const auto& [name, type] = kSpectrumTypes.at(choice.type);
  const TWeightingWindow window = kWeightingWindows.at(choice.window).second;
  charted.spectrumType = name;
  charted.spectrum = CalcSpectrum(charted.event->Values(), type, window);
  if (charted.spectrum.problem != TSpectrumProblem::None) {
    return Without("There is no spectrum to export.", WhyNoSpectrum(charted.spectrum));
  }
  for (const TPin& pin : mission.Pins.items) {
    if (pin.visible) AddLines(*pin.event, CalcSpectrum(pin.event->event.Values(), type, window).lines, charted.beside);
  }
  return charted;
}

}  // namespace

TChartedEvent ChartedEvent(const TShownMission& mission, const IMissionViews& views) {
  if (!mission.SelectedEvent) return Without("There is no event to export.", "No shock event is selected.");
  TChartedEvent charted{.index = *mission.SelectedEvent,
                        .event = &mission.Events.GetItem(*mission.SelectedEvent),
                        .highPass = mission.Settings.highPass};
  if (auto response = views.ShownResponse()) return WithResponse(std::move(charted), *std::move(response), mission);
  if (const auto choice = views.ShownSpectrum()) return WithSpectrum(std::move(charted), *choice, mission);
  for (const TPin& pin : mission.Pins.items) {
    if (pin.visible) charted.beside.push_back(CurveBeside(*charted.event, mission, *pin.event));
  }
  return charted;
}
