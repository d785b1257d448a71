#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <optional>
#include <vector>

#include "analysis/uLimitProfile.h"
#include "analysis/uMissionFigures.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "platform/uUserFolders.h"
#include "shell/uLimitProfileFile.h"
#include "shell/uNotes.h"
#include "shell/uSettingsCommands.h"
#include "shell/uShownVerdict.h"

namespace {

constexpr int kLabelWidth = 22;  // that of "Temperature (Humidity)"; names of analog inputs may be longer

void Print(const std::vector<TFigure>& figures, const TConsole& console) {
  for (const TFigure& figure : figures) {
    console.out(fmt::format("  {:<{}} {}\n", Printable(figure.label), kLabelWidth, Printable(figure.text)));
  }
}

std::vector<TFigure> VerdictFigures(const TRecording& recording, const TMissionDatasets& tables,
                                    const TLimitProfile& profile) {
  TDisplaySettings settings = DefaultSettings().display;
  const auto* format = std::ranges::find(kDateFormats, kDefaultDateFormat);
  settings.profile = profile;
  settings.dateFormat = static_cast<int>(format - kDateFormats.begin());
  TVerdict verdict =
      JudgeMission(recording.events, recording.sensors, tables, LimitsInForce(profile, recording.mission));
  verdict.damaged = recording.status != TStatus::Done;
  return {{"Verdict", VerdictSentence(verdict, settings)},
          {"Judgement", JudgementSentence(JudgeByProfile(verdict, profile), verdict, profile, settings)}};
}

void PrintNotes(const std::string& file, const TRecording& recording, const TConsole& console) try {
  TNoProgress progress;
  TNotes notes(PathFromUtf8(file), SettingsFolderPath());
  if (notes.Items().empty()) return;
  notes.ReadChecksum(progress);
  if (const std::string why = notes.WhyOtherRecording(); !why.empty()) Complain(console, file, why);
  const TNotedEvents events(recording.events);
  for (const TNote& note : notes.Items()) Print({{"Note", NoteSentence(note, events)}}, console);
} catch (const std::exception& error) {
  Complain(console, file, ReasonOf(error));
}

TStatus Show(const std::string& file, const std::optional<TLimitProfile>& profile, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  // Only what is computed of events and sensors; no table is needed.
  TMissionDatasets tables;
  const TThresholds levels = ThresholdsOf(recording.mission);
  for (const TEvent& event : recording.events.Events()) tables.Metrics.push_back(CalcEventMetrics(event, levels));
  const TMissionSummary summary = SummarizeMission(recording.events, tables.Metrics, recording.sensors);
  console.out(Printable(file) + "\n");
  if (recording.mission.bValid) Print(HeaderFigures(recording.mission), console);
  const TFormats formats = FormatsOf(DefaultSettings().display);
  Print(EventFigures(summary, recording.events, recording.axes, formats), console);
  if (const auto figure = VelocityChangeFigure(recording.events, levels.totOn)) Print({*figure}, console);
  Print(GroupFigures(GroupEvents(recording.events, tables.Metrics), recording.events, formats), console);
  Print(SensorFigures(summary, formats), console);
  PrintNotes(file, recording, console);
  if (!profile) return recording.status;
  for (const TSensor& sensor : recording.sensors.Sensors()) tables.SensorMetrics.push_back(CalcSensorMetrics(sensor));
  Print(VerdictFigures(recording, tables, *profile), console);
  return recording.status;
}

}  // namespace

TStatus InfoCommand(const std::vector<std::string>& files, const std::optional<std::string>& limits,
                    const TConsole& console) {
  std::optional<TLimitProfile> profile;
  try {
    if (limits) profile = ReadLimitProfile(PathFromUtf8(*limits));
  } catch (const std::exception& error) {
    Complain(console, *limits, ReasonOf(error));
    return TStatus::CannotRead;
  }
  TStatus status = TStatus::Done;
  for (const std::string& file : files) status = WorseOf(status, Show(file, profile, console));
  return status;
}
