#include <fmt/format.h>

#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "export/uCsvExports.h"

namespace {

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
