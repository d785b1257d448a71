#include <fmt/format.h>

#include <cmath>

#include "analysis/uMissionSummary.h"
#include "base/uDateTime.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "model/uEvents.h"
#include "model/uMissionText.h"
#include "model/uOtherSensors.h"

namespace {

std::string Line(std::string_view label, std::string_view value) {
  const bool isBlank = value.find_first_not_of(' ') == std::string_view::npos;
  return fmt::format("  {:<18}{}\n", label, isBlank ? "-" : Printable(value));
}

// A length of time, to the millisecond.
std::string DurationText(double days) {
  const double ms = std::round(days * kMsPerDay);
  const double wholeDays = std::floor(ms / kMsPerDay);
  const std::string ofDay = FormatDateTime("hh:nn:ss.zzz", (ms - wholeDays * kMsPerDay) / kMsPerDay);
  return wholeDays > 0 ? fmt::format("{:.0f} d {}", wholeDays, ofDay) : ofDay;
}

std::string MissionText(const TMissionData& mission) {
  return Line("ID", mission.sID) + Line("Title", mission.sTitle) + Line("Operator", mission.sOperator) +
         Line("Logger", mission.sKorvexType + " " + mission.sKorvexVersion) +
         Line("Recording", FormatDateTime(DateTimeMask(), mission.rec_starttime) + " to " +
                               FormatDateTime(DateTimeMask(), mission.rec_endtime)) +
         Line("Start and stop", StartStopText(mission)) + Line("Shocks", LimitText(mission)) +
         Line("Slow channels", StdChannelsText(mission)) + Line("Options", OptionsText(mission));
}

std::string EventsText(const TMissionSummary& summary, const TEventList& events) {
  std::string text = Line("Events", fmt::format("{} with {} samples", summary.events, summary.samples));
  const auto when = [&events](std::size_t event) {
    const double time = DateTimeOf(events.StartTime, events.GetItem(event).GetStartTime());
    return fmt::format("in event {}, begun {}", event, FormatDateTime(DateTimeMask() + ".zzz", time));
  };
  if (summary.peakEvent) {
    const TEvent& event = events.GetItem(*summary.peakEvent);
    text += Line("Peak", fmt::format("{} g ({} g on {}) {}", MaskFloat("0.###", event.Max),
                                     MaskFloat("0.###", event.MaxSingle), event.MaxAxis, when(*summary.peakEvent)));
  }
  if (summary.mostIntense) {
    text += Line("Most intense",
                 fmt::format("{} g ms {}", MaskFloat("0.##", summary.largestIot), when(*summary.mostIntense)));
  }
  text += Line("ToT total", MaskFloat("0.#", summary.totTotal) + " ms");
  text += Line("IoT total", MaskFloat("0.##", summary.iotTotal) + " g ms");
  return text;
}

std::string SensorText(const TSensorSummary& sensor) {
  if (sensor.count == 0) return Line(sensor.name, "no readings");
  if (!sensor.minimum) return Line(sensor.name, fmt::format("{} readings, none a number", sensor.count));
  return Line(sensor.name,
              fmt::format("{} readings, {} to {}{}{}", sensor.count, MaskFloat("0.###", *sensor.minimum),
                          MaskFloat("0.###", *sensor.maximum), sensor.unit.empty() ? "" : " ", sensor.unit));
}

}  // namespace

TStatus InfoCommand(const std::string& file, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  const TMissionSummary summary = SummarizeMission(recording.mission, recording.events, recording.sensors);
  std::string text = Printable(file) + "\n";
  if (recording.mission.bValid) text += MissionText(recording.mission);
  text += EventsText(summary, recording.events);
  if (summary.firstTime) {
    text += Line("Time span", fmt::format("{} to {} ({})", FormatDateTime(DateTimeMask(), *summary.firstTime),
                                          FormatDateTime(DateTimeMask(), *summary.lastTime),
                                          DurationText(*summary.lastTime - *summary.firstTime)));
  }
  console.out(text);
  for (const TSensorSummary& sensor : summary.sensors) console.out(SensorText(sensor));
  return recording.status;
}
