#include <fmt/format.h>

#include "base/uText.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "export/uCsvExports.h"

namespace {

void Say(const std::string& file, const std::string& what, const TConsole& console) {
  console.err(fmt::format("kshock: {}: {}\n", Printable(file), what));
}

// Says so when there is no such event.
bool HasEvent(const std::string& file, const TRecording& recording, std::size_t event, const TConsole& console) {
  if (event < recording.events.Count()) return true;
  Say(file, fmt::format("There is no event {}; the recording has {}.", event, recording.events.Count()), console);
  return false;
}

}  // namespace

TStatus FilterCommand(const std::string& file, std::size_t event, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  if (!HasEvent(file, recording, event, console)) return TStatus::WrongUse;
  const TEvent& shown = recording.events.GetItem(event);
  std::string text;
  AppendCsvTitles(text, kTimeTitles);
  ForEachCurveRow(shown, true, [&text](const TCurveRow& row) { AppendCsvRow(text, row); });
  console.out(text);
  return recording.status;
}

TStatus SpectrumCommand(const std::string& file, std::size_t event, TSpectrumType type, TWeightingWindow window,
                        const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  if (!HasEvent(file, recording, event, console)) return TStatus::WrongUse;
  const TSpectrum spectrum = CalcSpectrum(recording.events.GetItem(event).Values(), type, window);
  if (spectrum.problem != TSpectrumProblem::None) {
    Say(file, fmt::format("Event {} has no spectrum. {}", event, WhyNoSpectrum(spectrum)), console);
    return WorseOf(recording.status, TStatus::NoResult);
  }
  const std::string done = WhatGridDid(spectrum.grid);
  if (!done.empty()) Say(file, fmt::format("Event {}: {}.", event, done), console);
  std::string text;
  AppendCsvTitles(text, kSpectrumTitles);
  for (const TSpectrumLine& line : spectrum.lines) AppendCsvRow(text, RowOf(line));
  console.out(text);
  return recording.status;
}
