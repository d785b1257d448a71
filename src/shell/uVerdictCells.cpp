#include "shell/uVerdictCells.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "shell/uReferenceFigures.h"

namespace {

constexpr std::string_view kClick = "Click: ";    // begins the last line of a tip
constexpr double kMinMargin = 60000 / kMsPerDay;  // days beside an excursion

// "164,904"
std::string Grouped(std::size_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, 1, ',');
  return text;
}

std::string GroupedCount(std::size_t count, std::string_view what) {
  return fmt::format("{} {}{}", Grouped(count), what, count == 1 ? "" : "s");
}

std::string ShortMoment(double time) {
  return FormatDateTime(ShortDateFormat() + " hh:nn", time);
}

void AppendLine(std::string& text, std::string_view line) {
  if (!line.empty()) AppendListItem(text, line, "\n");
}

TVerdictCell EventsCell(const TVerdict& verdict, const TShownMission& mission) {
  TVerdictCell cell{.value = Grouped(verdict.events), .tip = ClippedText(verdict)};
  const std::size_t shown = mission.CLDS.RecordCount();
  cell.note = shown < verdict.events ? fmt::format("{} pass the filter", Grouped(shown))
                                     : GroupedCount(mission.Summary.samples, "sample");
  if (!verdict.clipped.empty() && shown == verdict.events) {
    AppendLine(cell.tip, cell.note);
    cell.note = fmt::format("{} clipped", Grouped(verdict.clipped.size()));
  }
  if (verdict.events == 0) return cell;
  cell.answer = TVerdictAnswer::AllEvents;
  AppendLine(cell.tip, "Click: list all events");
  return cell;
}

TVerdictCell PeakCell(const TVerdict& verdict, const TShownMission& mission) {
  if (!verdict.peak) return {.value = "–", .note = "no events"};
  const TPeakVerdict& peak = *verdict.peak;
  TVerdictCell cell{.value = MaskFloat(mission.Display.FormatOf(TQuantity::Acceleration), peak.value), .unit = "g"};
  cell.note = fmt::format("event {}, {}{}", peak.event, peak.axis, peak.clipped ? ", clipped" : "");
  cell.when = ShortMoment(peak.time);
  cell.tip = PeakText(peak, mission.Display);
  AppendLine(cell.tip, fmt::format("Click: select event {}", peak.event));
  cell.answer = TVerdictAnswer::SelectEvent;
  return cell;
}

TVerdictCell AboveAlarmCell(const TVerdict& verdict, const TDisplaySettings& settings) {
  if (!verdict.above) {
    return {.value = "no limits", .tip = "The alarm is off\nClick: set limits", .answer = TVerdictAnswer::EditLimits};
  }
  const std::string text = EventsAboveText(verdict, settings);
  TVerdictCell cell{.tip = text};
  if (verdict.above->limits.maxSource == TLimitSource::File) {
    cell.note = text;
    AppendLine(cell.tip, "Click: set limits");
    cell.answer = TVerdictAnswer::EditLimits;
    return cell;
  }
  // The sentence begins with the count.
  const std::size_t space = text.find(' ');
  cell.value = text.substr(0, space);
  cell.note = text.substr(space + 1);
  const bool any = verdict.above->count > 0;
  cell.isOut = any && verdict.above->limits.maxSource == TLimitSource::User;
  cell.answer = any ? TVerdictAnswer::FilterAboveAlarm : TVerdictAnswer::EditLimits;
  AppendLine(cell.tip, any ? "Click: filter these events" : "Click: set limits");
  return cell;
}

TVerdictCell IntensityCell(const TVerdict& verdict, const TDisplaySettings& settings) {
  if (!verdict.worst) return {.value = "–", .note = "no intensity"};
  const TIntensityVerdict& worst = *verdict.worst;
  TVerdictCell cell{.value = MaskFloat(settings.FormatOf(TQuantity::IoT), worst.value), .unit = "g·ms"};
  cell.note = fmt::format("event {}{}", worst.event, worst.clipped ? ", clipped" : "");
  cell.when = ShortMoment(worst.time);
  cell.tip =
      fmt::format("The largest integral over threshold (IoT total) of an event\nClick: select event {}", worst.event);
  cell.answer = TVerdictAnswer::SelectEvent;
  return cell;
}

std::string SensorLines(const TVerdict& verdict, const TDisplaySettings& settings) {
  std::string lines;
  for (const TSensorVerdict& sensor : verdict.sensors) {
    const std::string range = ExtremesText(sensor, settings);
    const std::string out = OutOfLimitsText(sensor, true, settings);
    if (out.empty()) {
      AppendLine(lines, range.empty() || !verdict.above ? range : range + ": within limits");
    } else {
      AppendLine(lines, fmt::format("{}: {}", range, out));
    }
  }
  return lines;
}

TVerdictCell OutOfLimitsCell(const TVerdict& verdict, const TDisplaySettings& settings) {
  TVerdictCell cell{.tip = SensorLines(verdict, settings)};
  if (!verdict.above) {
    cell.value = "no limits";
    cell.answer = TVerdictAnswer::EditLimits;
    AppendLine(cell.tip, "The alarm is off\nClick: set limits");
  } else if (verdict.worstSensor) {
    const TWorstSensor& worst = *verdict.worstSensor;
    const TBeyondLimits beyond = BeyondLimits(verdict.sensors[worst.index], worst.byDefaultLimits, settings);
    const std::string timeOut = beyond.timeOut > 0 ? DurationInWords(beyond.timeOut / kMsPerDay) : "1 reading";
    cell.value = worst.byDefaultLimits ? "default limits" : timeOut;
    cell.note = worst.byDefaultLimits ? fmt::format("{}: {}", timeOut, beyond.text) : beyond.text;
    if (const std::size_t others = verdict.SensorsOut(worst.byDefaultLimits) - 1; others > 0) {
      cell.note += fmt::format(", {}", GroupedCount(others, "more sensor"));
    }
    cell.isOut = !worst.byDefaultLimits;
    cell.answer = TVerdictAnswer::ShowExcursion;
    AppendLine(cell.tip, "Click: bring the navigator's band to the longest time out of limits");
  } else {
    cell.value = verdict.sensors.empty() ? "–" : "none";
    cell.note =
        verdict.sensors.empty() ? "no sensors" : fmt::format("of {}", GroupedCount(verdict.sensors.size(), "sensor"));
  }
  return cell;
}

TVerdictCell RecordedCell(const TVerdict& verdict) {
  TVerdictCell cell{.value = "–", .note = verdict.damaged ? "damaged" : "complete"};
  if (!verdict.firstTime) return cell;
  cell.value = DurationInWords(*verdict.lastTime - *verdict.firstTime);
  cell.note = fmt::format("to {}, {}", FormatDateTime(ShortDateFormat(), *verdict.lastTime), cell.note);
  cell.tip =
      fmt::format("{} to {}{}\nClick: show all of it", ShortMoment(*verdict.firstTime), ShortMoment(*verdict.lastTime),
                  verdict.damaged ? "\nOnly what could be read is shown and judged" : "");
  cell.answer = TVerdictAnswer::ShowWhole;
  return cell;
}

// The sensors have one cell, which names the worst: its tip has them all.
void AddDeltas(const TVerdict& verdict, const TShownMission& mission, TVerdictCells& cells) {
  const TReference* reference = ReferenceFor(mission, false);
  if (reference == nullptr) return;
  const std::string name = ReferenceName(*reference);
  for (const TReferenceFigure& figure : ReferenceFigures(*reference, verdict, true, mission.Display)) {
    if (!figure.question || figure.delta.empty()) continue;
    TVerdictCell& cell = cells[static_cast<std::size_t>(*figure.question)];
    const bool isSensor = figure.question == TVerdictQuestion::OutOfLimits;
    if (!isSensor) cell.delta = "Δ " + figure.delta;
    std::string line =
        fmt::format("{}Δ {} against {} ({})", isSensor ? figure.label + ": " : "", figure.delta, name, figure.there);
    const std::size_t click = cell.tip.find(kClick);
    if (click == std::string::npos) {
      AppendLine(cell.tip, line);
    } else {
      cell.tip.insert(click, line + '\n');
    }
  }
}

}  // namespace

TVerdictCells VerdictCells(const TVerdict& verdict, const TShownMission& mission) {
  TVerdictCells cells = {EventsCell(verdict, mission),
                         PeakCell(verdict, mission),
                         AboveAlarmCell(verdict, mission.Display),
                         IntensityCell(verdict, mission.Display),
                         OutOfLimitsCell(verdict, mission.Display),
                         RecordedCell(verdict)};
  AddDeltas(verdict, mission, cells);
  return cells;
}

TJudgementLine JudgementLine(const TVerdict& verdict, const TDisplaySettings& settings) {
  const std::optional<TJudgement> judgement = JudgementOf(verdict, settings);
  if (!judgement) return {};
  return {judgement->outcome, JudgementSentence(*judgement, verdict, *settings.profile, settings)};
}

std::vector<TFigure> VerdictFigures(const TVerdict& verdict, const TDisplaySettings& settings) {
  const auto inEvent = [](std::size_t event, double time) {
    return fmt::format("event {}, {}", event, FormatDateTime(DateTimeMask(), time));
  };
  std::vector<TFigure> figures;
  if (verdict.peak) {
    const TPeakVerdict& peak = *verdict.peak;
    figures.push_back({"Peak", fmt::format("{}: {}", PeakText(peak, settings), inEvent(peak.event, peak.time))});
  }
  if (verdict.worst) {
    const TIntensityVerdict& worst = *verdict.worst;
    figures.push_back(
        {"Worst by intensity", fmt::format("{} g·ms{}: {}", MaskFloat(settings.FormatOf(TQuantity::IoT), worst.value),
                                           worst.clipped ? ", clipped" : "", inEvent(worst.event, worst.time))});
  }
  figures.push_back({"Above alarm", EventsAboveText(verdict, settings)});
  if (verdict.above && verdict.worstSensor) {
    const TWorstSensor& worst = *verdict.worstSensor;
    figures.push_back(
        {"Out of limits", OutOfLimitsText(verdict.sensors[worst.index], worst.byDefaultLimits, settings)});
  }
  if (!verdict.clipped.empty()) figures.push_back({"Clipped", ClippedText(verdict)});
  return figures;
}

std::optional<TTimeSpan> WorstExcursion(const TVerdict& verdict, const TDisplaySettings& settings) {
  if (!verdict.worstSensor) return std::nullopt;
  const TWorstSensor& worst = *verdict.worstSensor;
  const auto longest = BeyondLimits(verdict.sensors[worst.index], worst.byDefaultLimits, settings).longest;
  if (!longest) return std::nullopt;
  const double days = longest->duration / kMsPerDay;
  const double margin = std::max(days, kMinMargin);
  return TTimeSpan{longest->begin - margin, longest->begin + days + margin};
}
