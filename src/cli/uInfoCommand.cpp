#include <fmt/format.h>

#include <vector>

#include "analysis/uMissionFigures.h"
#include "analysis/uShockAnalysis.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"

namespace {

void Print(const std::vector<TFigure>& figures, const TConsole& console) {
  for (const TFigure& figure : figures) {
    console.out(fmt::format("  {:<18}{}\n", Printable(figure.label), Printable(figure.text)));
  }
}

}  // namespace

TStatus InfoCommand(const std::string& file, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  const TThresholds levels = ThresholdsOf(recording.mission);
  std::vector<TEventMetrics> metrics;
  for (const TEvent& event : recording.events.Events()) metrics.push_back(CalcEventMetrics(event, levels));
  const TMissionSummary summary = SummarizeMission(recording.events, metrics, recording.sensors);
  console.out(Printable(file) + "\n");
  if (recording.mission.bValid) Print(HeaderFigures(recording.mission), console);
  Print(EventFigures(summary, recording.events, recording.axes), console);
  if (const auto largest = LargestVelocityChange(recording.events, levels.totOn)) {
    Print({{"Velocity change",
            fmt::format("{} m/s in event {}", MaskFloat("0.###", largest->velocityChange), largest->event)}},
          console);
  }
  Print(SensorFigures(summary), console);
  return recording.status;
}
