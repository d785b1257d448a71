#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <thread>
#include <vector>

#include "analysis/uShockAnalysis.h"
#include "analysis/uShockMetrics.h"
#include "base/uDateTime.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "export/uCsvExports.h"

namespace {

constexpr std::string_view kPulseTitles[] = {"ID",
                                             "Timestamp",
                                             "Delta-v X (m/s)",
                                             "Delta-v Y (m/s)",
                                             "Delta-v Z (m/s)",
                                             "Delta-v (m/s)",
                                             "Duration 10 % (ms)",
                                             "Duration 1/3 (ms)",
                                             "Half-sine (ms)",
                                             "Direction",
                                             "Hit side",
                                             "Fall (mm)",
                                             "Fall is",
                                             "Drop min (mm)",
                                             "Drop max (mm)",
                                             "Reason"};

void AppendPulse(std::string& text, const TEvent& event, double startTime, const TShockAnalysis& analysis) {
  const auto& [pulse, fall, drop, reason] = analysis;
  AppendCsvField(text, fmt::format("{}", event.ID));
  AppendCsvField(text, FormatDateTime(DateTimeMask(), DateTimeOf(startTime, event.GetStartTime())));
  const bool hasPulse = pulse.problem == TPulseProblem::None;
  for (const double value : {pulse.velocity.x, pulse.velocity.y, pulse.velocity.z, pulse.velocityChange,
                             pulse.durationTenth, pulse.durationThird, pulse.halfSine}) {
    AppendCsvExact(text, hasPulse ? value : std::nan(""));
  }
  AppendCsvField(text, hasPulse ? DirectionText(pulse.direction) : "");
  AppendCsvField(text, hasPulse ? DirectionText(pulse.direction.Opposite()) : "");
  const bool hasFall = fall.problem == TFallProblem::None;
  AppendCsvExact(text, hasFall ? fall.height : std::nan(""));
  AppendCsvField(text, !hasFall ? "" : fall.isLeast ? "least" : "measured");
  AppendCsvExact(text, drop ? drop->min : std::nan(""));
  AppendCsvExact(text, drop ? drop->max : std::nan(""));
  AppendCsvField(text, reason);
  text += kLineBreak;
}

// One sample that is not finite takes its whole axis.
bool IsNothing(double x, double y, double z) {
  return std::isnan(x) && std::isnan(y) && std::isnan(z);
}

}  // namespace

TStatus FilterCommand(const std::string& file, std::size_t event, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  if (!HasEvent(file, recording, event, console)) return TStatus::WrongUse;
  const TEvent& shown = recording.events.GetItem(event);
  std::string text;
  AppendCsvTitles(text, kTimeTitles);
  bool isNothing = true;
  ForEachCurveRow(shown, true, [&](const TCurveRow& row) {
    isNothing = isNothing && IsNothing(row[1], row[2], row[3]);
    AppendCsvRow(text, row);
  });
  if (isNothing) {
    return NoResult(file, recording, fmt::format("Event {} cannot be filtered. {}", event, kNoAxis), console);
  }
  console.out(text);
  return recording.status;
}

TStatus SpectrumCommand(const std::string& file, std::size_t event, TSpectrumType type, TWeightingWindow window,
                        const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  if (!HasEvent(file, recording, event, console)) return TStatus::WrongUse;
  const TSpectrum spectrum = CalcSpectrum(recording.events.GetItem(event).Values(), type, window);
  const bool isNothing =
      std::ranges::all_of(spectrum.lines, [](const auto& line) { return IsNothing(line.x, line.y, line.z); });
  if (isNothing) {
    const std::string why = spectrum.lines.empty() ? WhyNoSpectrum(spectrum) : std::string(kNoAxis);
    return NoResult(file, recording, fmt::format("Event {} has no spectrum. {}", event, why), console);
  }
  const std::string done = WhatGridDid(spectrum.grid);
  if (!done.empty()) Complain(console, file, fmt::format("Event {}: {}.", event, done));
  std::string text;
  AppendCsvTitles(text, kSpectrumTitles);
  for (const TSpectrumLine& line : spectrum.lines) AppendCsvRow(text, RowOf(line));
  console.out(text);
  return recording.status;
}

TStatus SrsCommand(const std::string& file, const TSrsRequest& request, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  if (request.event && !HasEvent(file, recording, *request.event, console)) return TStatus::WrongUse;
  std::vector<const TEvent*> events;
  for (const TEvent& event : recording.events.Events()) {
    if (!request.event || static_cast<std::size_t>(event.ID) == *request.event) events.push_back(&event);
  }
  TResponseRequest asked = request.response;
  asked.levelOn = ThresholdsOf(recording.mission).totOn;
  TResponseProgress progress;
  const TShockResponse found = CalcShockResponse(events, asked, std::thread::hardware_concurrency(), progress);
  if (found.lines.empty()) {
    const std::string why = found.reason.empty() ? "The recording has no events."
                                                 : fmt::format("No response spectrum. Event {}", found.reason);
    return NoResult(file, recording, why, console);
  }
  const std::string whose = request.event ? fmt::format("Event {}", *request.event) : "Envelope";
  for (const std::string& remark : found.remarks) Complain(console, file, fmt::format("{}: {}.", whose, remark));
  console.out(ResponseCsv(found.lines, asked.options.response));
  return recording.status;
}

TStatus PulseCommand(const std::string& file, std::optional<std::size_t> event, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  if (event && !HasEvent(file, recording, *event, console)) return TStatus::WrongUse;
  std::string text;
  for (const std::string_view title : kPulseTitles) AppendCsvField(text, title);
  text += kLineBreak;
  const double levelOn = ThresholdsOf(recording.mission).totOn;
  std::string why = "The recording has no events.";
  bool isNothing = true;
  for (const TEvent& one : recording.events.Events()) {
    if (event && static_cast<std::size_t>(one.ID) != *event) continue;
    const TShockAnalysis analysis = AnalyseShock(one, levelOn);
    AppendPulse(text, one, recording.events.StartTime, analysis);
    isNothing = isNothing && analysis.pulse.problem != TPulseProblem::None;
    why = fmt::format("Event {} has no pulse. {}", one.ID, analysis.reason);
  }
  console.out(text);
  return isNothing ? NoResult(file, recording, why, console) : recording.status;
}
