#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "analysis/uShockAnalysis.h"
#include "analysis/uShockMetrics.h"
#include "base/uDateTime.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "export/uCsvExports.h"

namespace {

// The shortest text that reads back as the same number; empty where there is none.
void AppendExact(std::string& text, double value) {
  AppendCsvField(text, std::isnan(value) ? std::string() : fmt::format("{}", value));
}

// What limits a spectrum's use, as it is said on err.
enum class TDoubt { NoBaseline, CutShort, Clipped };

constexpr std::pair<TDoubt, std::string_view> kDoubts[] = {
    {TDoubt::NoBaseline, "no baseline subtracted, fewer than 8 samples before the shock"},
    {TDoubt::CutShort, "the record ends before the shock does, so low frequencies come out too small"},
    {TDoubt::Clipped, "the sensor was at the end of its range, so the response comes out too small"},
};

std::vector<TDoubt> DoubtsOf(const TEvent& event, const TShockSamples& shock, TBaseline baseline) {
  std::vector<TDoubt> doubts;
  if (baseline == TBaseline::Before && shock.baselineCount == 0) doubts.push_back(TDoubt::NoBaseline);
  if (IsCutShort(shock)) doubts.push_back(TDoubt::CutShort);
  if (IsClipped(event.Values())) doubts.push_back(TDoubt::Clipped);
  return doubts;
}

// Of the asked event or of all, its frequencies and its lines.
class TSrs {
 public:
  TSrs(const TRecording& recording, const TSrsRequest& request)
      : FEvents(recording.events.Events()), FLevelOn(ThresholdsOf(recording.mission).totOn), FRequest(request) {
    if (request.event) FEvents = FEvents.subspan(*request.event, 1);
    FHertz = Frequencies();
  }

  // True if an event has a spectrum; else Reason() says why the last one has none.
  bool Calc() {
    for (const double hertz : FHertz) {
      Lines.push_back({hertz, std::nan(""), std::nan(""), std::nan(""), std::nan(""), TResponseRange::None});
    }
    for (const TEvent& event : FEvents) Add(event);
    return FLeftOut < FEvents.size();
  }

  [[nodiscard]] const std::string& Reason() const { return FReason; }

  // What has to be said about the spectrum.
  [[nodiscard]] std::vector<std::string> Warnings() const {
    std::vector<std::string> warnings;
    if (FRequest.event && !FGridDid.empty()) warnings.push_back(FGridDid);
    if (FLeftOut > 0) warnings.push_back(fmt::format("{} left out; event {}", Share(FLeftOut), FReason));
    for (const auto& [doubt, text] : kDoubts) {
      const auto count = static_cast<std::size_t>(std::ranges::count(FDoubts, doubt));
      if (count > 0) warnings.push_back(FRequest.event ? std::string(text) : fmt::format("{}: {}", Share(count), text));
    }
    if (!FHertz.empty() && std::ranges::min(FHertz) < FLimits.from * (1 - 1e-9)) {
      warnings.push_back(fmt::format("below {} Hz (1/duration) the record is shorter than a period",
                                     MaskFloat("0.###", FLimits.from)));
    }
    return warnings;
  }

  std::vector<TResponseLine> Lines;

 private:
  [[nodiscard]] std::string Share(std::size_t count) const {
    return fmt::format("{} of {} events", count, FEvents.size());
  }

  std::vector<double> Frequencies() {
    FLimits = {std::numeric_limits<double>::infinity(), 0};
    for (const TEvent& event : FEvents) {
      const TTimeGrid grid = FitTimeGrid(event.Values());
      if (grid.problem != TTimeGridProblem::None) continue;
      const TResponseLimits one = ResponseLimitsOf(grid);
      FLimits = {std::min(FLimits.from, one.from), std::max(FLimits.to, one.to)};
    }
    if (!FRequest.frequencies.empty()) return FRequest.frequencies;
    return OctaveFrequencies(FRequest.from.value_or(FLimits.from), FRequest.to.value_or(FLimits.to),
                             static_cast<int>(FRequest.octave));
  }

  void Add(const TEvent& event) {
    const TShockSamples shock = PrepareShock(event.Values(), FRequest.baseline, FLevelOn);
    const std::string why = WhyNone(shock);
    if (!why.empty()) {
      ++FLeftOut;
      FReason = fmt::format("{}: {}", event.ID, why);
      return;
    }
    FGridDid = WhatGridDid(shock.grid);
    std::ranges::copy(DoubtsOf(event, shock, FRequest.baseline), std::back_inserter(FDoubts));
    AddToEnvelope(Lines, CalcResponseSpectrum(shock, FHertz, FRequest.options));
  }

  [[nodiscard]] std::string WhyNone(const TShockSamples& shock) const {
    if (shock.Count() == 0) return WhyNoGrid(shock.grid);
    if (std::isnan(shock.x[0]) && std::isnan(shock.y[0]) && std::isnan(shock.z[0])) return std::string(kNoAxis);
    const auto isNone = [&](double hertz) { return ResponseRangeOf(hertz, shock.Rate()) == TResponseRange::None; };
    if (!std::ranges::all_of(FHertz, isNone)) return {};
    return fmt::format("No frequency lies below {} Hz, a quarter of the sampling rate.",
                       MaskFloat("0.###", shock.Rate() / 4));
  }

  std::span<const TEvent> FEvents;
  double FLevelOn;
  const TSrsRequest& FRequest;
  TResponseLimits FLimits{};
  std::vector<double> FHertz;
  std::size_t FLeftOut = 0;
  std::string FReason, FGridDid;
  std::vector<TDoubt> FDoubts;
};

void PrintSrs(const std::vector<TResponseLine>& lines, TResponse response, const TConsole& console) {
  const std::string_view unit = response == TResponse::Acceleration ? "g" : "m/s";
  std::string text;
  AppendCsvField(text, "Frequency (Hz)");
  for (const char* series : {"X", "Y", "Z", "Total"}) AppendCsvField(text, fmt::format("{} ({})", series, unit));
  AppendCsvField(text, "Range");
  text += kLineBreak;
  for (const TResponseLine& line : lines) {
    for (const double value : {line.hertz, line.x, line.y, line.z, line.total}) AppendExact(text, value);
    AppendCsvField(text, kResponseRangeNames[static_cast<std::size_t>(line.range)]);
    text += kLineBreak;
  }
  console.out(text);
}

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
    AppendExact(text, hasPulse ? value : std::nan(""));
  }
  AppendCsvField(text, hasPulse ? DirectionText(pulse.direction) : "");
  AppendCsvField(text, hasPulse ? DirectionText(pulse.direction.Opposite()) : "");
  const bool hasFall = fall.problem == TFallProblem::None;
  AppendExact(text, hasFall ? fall.height : std::nan(""));
  AppendCsvField(text, !hasFall ? "" : fall.isLeast ? "least" : "measured");
  AppendExact(text, drop ? drop->min : std::nan(""));
  AppendExact(text, drop ? drop->max : std::nan(""));
  AppendCsvField(text, reason);
  text += kLineBreak;
}

}  // namespace

TStatus SrsCommand(const std::string& file, const TSrsRequest& request, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  if (request.event && !HasEvent(file, recording, *request.event, console)) return TStatus::WrongUse;
  TSrs srs(recording, request);
  if (!srs.Calc()) {
    const std::string why = srs.Reason().empty() ? "The recording has no events."
                                                 : fmt::format("No response spectrum. Event {}", srs.Reason());
    return NoResult(file, recording, why, console);
  }
  const std::string whose = request.event ? fmt::format("Event {}", *request.event) : "Envelope";
  for (const std::string& warning : srs.Warnings()) Complain(console, file, fmt::format("{}: {}.", whose, warning));
  PrintSrs(srs.Lines, request.options.response, console);
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
