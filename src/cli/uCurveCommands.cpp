#include <fmt/format.h>

#include <initializer_list>

#include "analysis/uHighPassFilter.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "export/uCsvExports.h"

namespace {

void PrintLine(std::string& line, const TConsole& console) {
  line += "\r\n";
  console.out(line);
  line.clear();
}

void PrintTitles(std::initializer_list<std::string_view> titles, const TConsole& console) {
  std::string line;
  for (const std::string_view title : titles) AppendCsvField(line, title);
  PrintLine(line, console);
}

void PrintNumbers(std::initializer_list<double> numbers, std::string& line, const TConsole& console) {
  for (const double number : numbers) AppendCsvField(line, GeneralFloat(number));
  PrintLine(line, console);
}

void Complain(const std::string& file, const std::string& what, const TConsole& console) {
  console.err(fmt::format("kshock: {}: {}\n", Printable(file), what));
}

// Says so when there is no such event.
bool HasEvent(const std::string& file, const TRecording& recording, std::size_t event, const TConsole& console) {
  if (event < recording.events.Count()) return true;
  Complain(file, fmt::format("There is no event {}; the recording has {}.", event, recording.events.Count()), console);
  return false;
}

}  // namespace

TStatus FilterCommand(const std::string& file, std::size_t event, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  if (!HasEvent(file, recording, event, console)) return TStatus::WrongUse;
  const TEvent& shown = recording.events.GetItem(event);
  PrintTitles({"Time (msec)", "X (g)", "Y (g)", "Z (g)", "Total (g)"}, console);
  std::string line;
  for (const TFilteredValue& value : HighPassFiltered(shown.Values())) {
    PrintNumbers({value.time - shown.GetStartTime(), value.x, value.y, value.z, value.total}, line, console);
  }
  return recording.status;
}

TStatus SpectrumCommand(const std::string& file, std::size_t event, TSpectrumType type, TWeightingWindow window,
                        const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  if (!HasEvent(file, recording, event, console)) return TStatus::WrongUse;
  const TSpectrum spectrum = CalcSpectrum(recording.events.GetItem(event).Values(), type, window);
  if (spectrum.problem != TSpectrumProblem::None) {
    Complain(file, fmt::format("Event {} has no spectrum. {}", event, WhyNoSpectrum(spectrum)), console);
    return WorseOf(recording.status, TStatus::NotDisplayable);
  }
  PrintTitles({"HZ", "X", "Y", "Z", "Total"}, console);
  std::string line;
  for (const TSpectrumLine& value : spectrum.lines) {
    PrintNumbers({value.hertz, value.x, value.y, value.z, value.total}, line, console);
  }
  return recording.status;
}
