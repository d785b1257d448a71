#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>

#include "analysis/uMissionSummary.h"
#include "base/uFiles.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "export/uRecordingPart.h"
#include "shell/uGoTo.h"

namespace {

// Both ends of the recording where nothing was typed. Complains of a text that is no time.
std::optional<TTimeSpan> SpanOf(const TTimeSpan& whole, const std::string& from, const std::string& to,
                                const TConsole& console) {
  TTimeSpan span = whole;
  for (const auto& [typed, end, earliest] :
       {std::tuple{&from, &span.start, &whole.start}, {&to, &span.end, &span.start}}) {
    if (typed->empty()) continue;
    const std::optional<double> time = TypedTime(*typed, *earliest);
    if (!time) {
      Complain(console, *typed, "This is no time; one is such as \"2026-03-04 12:00\".");
      return std::nullopt;
    }
    *end = *time;
  }
  // A time outside the recording leaves nothing beyond it.
  if (to.empty()) span.end = std::max(span.start, span.end);
  if (from.empty()) span.start = std::min(span.start, span.end);
  if (span.IsValid()) return span;
  Complain(console, to, "The end lies before the beginning.");
  return std::nullopt;
}

}  // namespace

TStatus CutCommand(const std::string& file, const std::string& from, const std::string& to, const std::string& out,
                   const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.displayable || recording.status == TStatus::CannotRead) return recording.status;
  const TMissionSummary summary = [&] {
    const TThresholds levels = ThresholdsOf(recording.mission);
    std::vector<TEventMetrics> metrics;
    for (const TEvent& event : recording.events.Events()) metrics.push_back(CalcEventMetrics(event, levels));
    return SummarizeMission(recording.events, metrics, recording.sensors);
  }();
  const TTimeSpan whole{summary.firstTime.value_or(std::nan("")), summary.lastTime.value_or(std::nan(""))};
  if (!whole.IsValid()) return NoResult(file, recording, "The recording has no times.", console);
  const auto span = SpanOf(whole, from, to, console);
  if (!span) return TStatus::WrongUse;
  const std::string name = Utf8FromPath(PathFromUtf8(file).filename());
  const TPartSource source{recording.mission,
                           recording.events,
                           recording.sensors,
                           recording.axes,
                           name,
                           recording.status == TStatus::Damaged};
  const TPartSize size = SizeOfPart(source, *span);
  if (size.events == 0 && size.readings == 0) {
    return NoResult(file, recording, "Nothing of the recording lies between these times.", console);
  }
  try {
    if (IsSameFile(PathFromUtf8(file), PathFromUtf8(out))) {
      Complain(console, out, "A part cannot replace the recording that it is cut from.");
      return TStatus::WrongUse;
    }
    TNoProgress progress;
    WriteRecordingPart(PathFromUtf8(out), source, *span, progress);
    return recording.status;
  } catch (const std::invalid_argument& error) {
    Complain(console, out, error.what());
    return TStatus::WrongUse;
  } catch (const std::exception& error) {
    Complain(console, out, Describe(error));
    return TStatus::CannotWrite;
  }
}
