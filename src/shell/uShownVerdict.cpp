#include "shell/uShownVerdict.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "shell/uSettings.h"

namespace {

TLimitSource SourceOf(double limit, double byDefault) {
  return limit == byDefault ? TLimitSource::Default : TLimitSource::User;
}

std::string Value(TQuantity quantity, double value, const TDisplaySettings& settings) {
  return MaskFloat(settings.FormatOf(quantity), value);
}

// "above 60 %RH", "above 60 %RH (default limit)".
std::string Beyond(std::string_view side, std::string_view limit, std::string_view unit, TLimitSource source) {
  return fmt::format("{} {}{}", side, WithUnit(limit, unit), source == TLimitSource::Default ? " (default limit)" : "");
}

// The user's name of an analog input; nothing for other quantities.
std::optional<std::string> OwnName(const TQuantityRow& quantity, const TDisplaySettings& settings) {
  const auto* input = std::ranges::find(kAnalogInputs, &quantity);
  if (input == kAnalogInputs.end()) return std::nullopt;
  const std::string& name = settings.analogNames[static_cast<std::size_t>(input - kAnalogInputs.begin())];
  return name.empty() ? std::string(quantity.sensorName) : name;
}

// A name as it stands inside a sentence; one that the user gave stays as it is.
std::string NameOf(const TQuantityRow& quantity, std::string_view label, const TDisplaySettings& settings) {
  return OwnName(quantity, settings).value_or(AsciiLower(label));
}

std::string SensorName(const TQuantityRow& quantity, const TDisplaySettings& settings) {
  return NameOf(quantity, quantity.cardField, settings);
}

// All temperatures have one.
std::string QuantityName(TQuantity quantity, const TDisplaySettings& settings) {
  const auto* row = std::ranges::find(kQuantities, std::optional(quantity), &TQuantityRow::quantity);
  return NameOf(*row, kQuantityControls[static_cast<std::size_t>(quantity)].caption, settings);
}

std::string Moment(double time, const TDisplaySettings& settings) {
  return FormatDateTime(fmt::format("{} hh:nn", settings.DateFormat()), time);
}

// A single reading has no length.
std::string ForOrOn(double timeOut, std::string_view inWords, const TExcursion& first,
                    const TDisplaySettings& settings) {
  return timeOut > 0 ? fmt::format("for {}", inWords) : fmt::format("on {}", Moment(first.begin, settings));
}

void AppendClause(std::string& sentence, std::string_view clause) {
  if (!clause.empty()) AppendListItem(sentence, clause, "; ");
}

// The worst sensor, and how many others are out. A profile does not judge by default limits, so with one they do not
// count.
std::string SensorsClause(const TVerdict& verdict, const TDisplaySettings& settings) {
  if (!verdict.worstSensor) {
    const bool anyReading =
        std::ranges::any_of(verdict.sensors, [](const TSensorVerdict& sensor) { return sensor.min.has_value(); });
    return anyReading ? "no sensor out of limits" : "";
  }
  const TWorstSensor& worst = *verdict.worstSensor;
  std::string clause = OutOfLimitsText(verdict.sensors[worst.index], worst.byDefaultLimits, settings);
  const std::size_t chosen = verdict.SensorsOut(false);
  const std::size_t byDefault = settings.profile ? 0 : verdict.SensorsOut(true);
  const auto add = [&clause](std::size_t out, bool isNamed, std::string_view limits) {
    const std::size_t more = out > 0 && isNamed ? out - 1 : out;
    if (more > 0) clause += fmt::format(", {} out of {}", Counted(more, "more sensor"), limits);
  };
  add(chosen, !worst.byDefaultLimits, "limits");
  add(byDefault, worst.byDefaultLimits, "default limits");
  return clause;
}

std::string ExtremesClause(const TVerdict& verdict, const TDisplaySettings& settings) {
  std::string clause;
  for (const TSensorVerdict& sensor : verdict.sensors) {
    if (const std::string text = ExtremesText(sensor, settings); !text.empty()) AppendListItem(clause, text);
  }
  return clause;
}

bool IsFound(TQuantity quantity, bool below, const TJudgement& judgement, const TVerdict& verdict) {
  return std::ranges::any_of(judgement.findings, [&](const TFinding& finding) {
    return finding.sensor && finding.below == below && verdict.sensors[*finding.sensor].quantity->quantity == quantity;
  });
}

// "humidity never below 20 %RH or above 60 %RH": the chosen limits of a quantity that none of its sensors is beyond.
std::string NeverText(const TSensorVerdict& sensor, const TJudgement& judgement, const TVerdict& verdict,
                      const TDisplaySettings& settings) {
  const TQuantity quantity = *sensor.quantity->quantity;
  std::string text;
  for (const bool below : {true, false}) {
    const TLimitVerdict& limit = below ? sensor.below : sensor.above;
    if (limit.source == TLimitSource::Default || IsFound(quantity, below, judgement, verdict)) continue;
    text += text.empty() ? QuantityName(quantity, settings) + " never " : " or ";
    text += Beyond(below ? "below" : "above", GeneralFloat(limit.limit), sensor.quantity->unit, limit.source);
  }
  return text;
}

// What a recording that passes is not beyond; at most kMaxNever quantities by name.
void AppendNever(const TJudgement& judgement, const TVerdict& verdict, const TDisplaySettings& settings,
                 std::string& clauses) {
  constexpr std::size_t kMaxNever = 4;
  const auto isOfEvents = [](const TFinding& finding) { return !finding.sensor; };
  if (judgement.eventsJudged && std::ranges::none_of(judgement.findings, isOfEvents)) {
    AppendClause(clauses, EventsAboveText(verdict, settings));
  }
  std::vector<TQuantity> said;
  for (const TSensorVerdict& sensor : verdict.sensors) {
    const TQuantity quantity = *sensor.quantity->quantity;
    if (!sensor.min || std::ranges::count(said, quantity) > 0) continue;
    const std::string text = NeverText(sensor, judgement, verdict, settings);
    if (text.empty()) continue;
    if (said.size() < kMaxNever) AppendClause(clauses, text);
    said.push_back(quantity);
  }
  if (said.size() <= kMaxNever) return;
  const std::size_t more = said.size() - kMaxNever;
  AppendClause(clauses, more == 1 ? "1 more quantity never beyond its limits"
                                  : fmt::format("{} more quantities never beyond their limits", more));
}

std::string PartText(bool filtered, bool damaged) {
  if (filtered) return damaged ? " in the filtered part of what could be read" : " in the filtered part";
  return damaged ? " in what could be read" : "";
}

}  // namespace

std::optional<TVerdictLimits> LimitsInForce(const TDisplaySettings& settings) {
  if (!settings.alarmActive) return std::nullopt;
  TVerdictLimits limits;
  for (std::size_t i = 0; i < limits.size(); ++i) {
    const TLimits& chosen = settings.limits[i];
    const TLimits& byDefault = DefaultSettings().display.limits[i];
    limits[i] = {chosen, SourceOf(chosen.min, byDefault.min), SourceOf(chosen.max, byDefault.max)};
    if (!settings.profile) continue;
    limits[i].minSource = settings.profile->limits[i].minSource;
    limits[i].maxSource = settings.profile->limits[i].maxSource;
  }
  if (settings.accelerationFromFile && settings.fileNamesLimits) {
    TJudgedLimits& acceleration = limits[static_cast<std::size_t>(TQuantity::Acceleration)];
    acceleration.minSource = acceleration.maxSource = TLimitSource::File;
  }
  return limits;
}

TVerdict VerdictOf(const TShownMission& mission, const TVerdictPart& part) {
  TVerdict verdict =
      JudgeMission(mission.Events, mission.Sensors, mission.Tables, LimitsInForce(mission.Display), part);
  verdict.damaged = !mission.Damage.empty();
  return verdict;
}

std::optional<TJudgement> JudgementOf(const TVerdict& verdict, const TDisplaySettings& settings) {
  if (!settings.profile || !verdict.above) return std::nullopt;
  return JudgeByProfile(verdict, *settings.profile);
}

std::string EventsAboveText(const TVerdict& verdict, const TDisplaySettings& settings) {
  if (!verdict.above) return "no limits are set";
  if (verdict.events == 0) return "no events";
  const TEventsAbove& above = *verdict.above;
  const auto [low, high] = above.limits.values;
  if (above.limits.maxSource == TLimitSource::File) {
    const std::string level = Value(TQuantity::Acceleration, high, settings);
    const std::string who = above.count == verdict.events
                                ? std::string(verdict.events == 1 ? "the event exceeds" : "all events exceed")
                                : fmt::format("{} of {} events exceed", above.count, verdict.events);
    return fmt::format("{} the trigger level of {} g; set limits to judge", who, level);
  }
  const std::string count = above.count == 0 ? "none" : std::to_string(above.count);
  // Peaks have no sign, so only a lower limit above 0 can be crossed.
  const std::string beyond = low > 0 ? Beyond("outside", fmt::format("{} … {}", GeneralFloat(low), GeneralFloat(high)),
                                              "g", above.limits.maxSource)
                                     : Beyond("above", GeneralFloat(high), "g", above.limits.maxSource);
  return fmt::format("{} of {} {}", count, Counted(verdict.events, "event"), beyond);
}

std::string PeakText(const TPeakVerdict& peak, const TDisplaySettings& settings) {
  if (peak.axisValue == 0) return Value(TQuantity::Acceleration, peak.value, settings) + " g";
  const std::string clipped = peak.clipped ? ", clipped: the true peak is higher" : "";
  return fmt::format("{} g ({} g on {}{})", Value(TQuantity::Acceleration, peak.value, settings),
                     Value(TQuantity::Acceleration, peak.axisValue, settings), peak.axis, clipped);
}

std::string ClippedText(const TVerdict& verdict) {
  if (verdict.clipped.empty()) return "";
  if (verdict.clipped.size() == 1) return fmt::format("event {} clipped: its true peak is higher", verdict.clipped[0]);
  return fmt::format("{} of {} events clipped: their true peaks are higher", verdict.clipped.size(), verdict.events);
}

TBeyondLimits BeyondLimits(const TSensorVerdict& sensor, bool byDefaultLimits, const TDisplaySettings& settings) {
  TBeyondLimits beyond;
  const auto add = [&](std::string_view side, const TLimitVerdict& limit) {
    if (!limit.IsOut() || (!byDefaultLimits && limit.source == TLimitSource::Default)) return;
    beyond.text += beyond.text.empty() ? SensorName(*sensor.quantity, settings) + " " : " or ";
    beyond.text += Beyond(side, GeneralFloat(limit.limit), sensor.quantity->unit, limit.source);
    beyond.timeOut += limit.timeOut;
    if (!beyond.first || limit.first->begin < beyond.first->begin) beyond.first = limit.first;
    if (!beyond.longest || limit.longest->duration > beyond.longest->duration) beyond.longest = limit.longest;
  };
  add("below", sensor.below);
  add("above", sensor.above);
  return beyond;
}

std::string OutOfLimitsText(const TSensorVerdict& sensor, bool byDefaultLimits, const TDisplaySettings& settings) {
  const TBeyondLimits beyond = BeyondLimits(sensor, byDefaultLimits, settings);
  if (beyond.text.empty()) return "";
  return fmt::format("{} {}", beyond.text,
                     ForOrOn(beyond.timeOut, DurationInWords(beyond.timeOut / kMsPerDay), *beyond.first, settings));
}

std::string SensorLabel(const TQuantityRow& quantity, const TDisplaySettings& settings) {
  return OwnName(quantity, settings).value_or(std::string(quantity.cardField));
}

std::string ExtremesText(const TSensorVerdict& sensor, const TDisplaySettings& settings) {
  if (!sensor.min || !sensor.max) return "";
  const TQuantity quantity = *sensor.quantity->quantity;
  const std::string range = fmt::format("{} … {}", Value(quantity, sensor.min->value, settings),
                                        Value(quantity, sensor.max->value, settings));
  return fmt::format("{} {}", SensorName(*sensor.quantity, settings), WithUnit(range, sensor.quantity->unit));
}

std::string VerdictSentence(const TVerdict& verdict, const TDisplaySettings& settings) {
  std::string events = EventsAboveText(verdict, settings);
  if (!verdict.above) AppendClause(events, verdict.events == 0 ? "no events" : Counted(verdict.events, "event"));
  std::string sentence;
  const bool byDefault = verdict.above && verdict.above->limits.maxSource == TLimitSource::Default &&
                         !AreEventsJudged(verdict.above->limits);
  const bool peakLeads = verdict.peak && byDefault;
  if (!peakLeads) sentence = events;
  if (verdict.peak) {
    AppendClause(sentence, fmt::format("the highest peak, event {}, reached {} on {}", verdict.peak->event,
                                       PeakText(*verdict.peak, settings), Moment(verdict.peak->time, settings)));
  }
  if (peakLeads) AppendClause(sentence, events);
  const bool saidAll = verdict.clipped.size() == 1 && verdict.peak->clipped;
  if (!saidAll) AppendClause(sentence, ClippedText(verdict));
  AppendClause(sentence, verdict.above ? SensorsClause(verdict, settings) : ExtremesClause(verdict, settings));
  if (verdict.damaged) {
    AppendClause(sentence, fmt::format("the recording was not read whole{}",
                                       verdict.above ? ", and only what could be read is judged" : ""));
  }
  return sentence;
}

std::string FindingText(const TFinding& finding, const TVerdict& verdict, const TDisplaySettings& settings) {
  if (!finding.sensor) {
    const std::string allowed = finding.allowed > 0 ? fmt::format("at most {}", finding.allowed) : "none";
    return fmt::format("{} ({} allowed)", EventsAboveText(verdict, settings), allowed);
  }
  const TSensorVerdict& sensor = verdict.sensors[*finding.sensor];
  const TLimitVerdict& limit = finding.below ? sensor.below : sensor.above;
  const std::string allowed = ExactDuration(finding.allowed);
  std::string timeOut = DurationInWords(finding.amount / kMsPerDay);
  // Rounded, both may read the same.
  if (finding.fails && timeOut == DurationInWords(finding.allowed / kMsPerDay)) timeOut = ExactDuration(finding.amount);
  return fmt::format(
      "{} {} {} ({} allowed)", SensorName(*sensor.quantity, settings),
      Beyond(finding.below ? "below" : "above", GeneralFloat(limit.limit), sensor.quantity->unit, limit.source),
      ForOrOn(finding.amount, timeOut, *limit.first, settings),
      finding.allowed > 0 ? fmt::format("at most {}", allowed) : "none");
}

std::string JudgementSentence(const TJudgement& judgement, const TVerdict& verdict, const TLimitProfile& profile,
                              const TDisplaySettings& settings, bool filtered) {
  std::string clauses;
  for (const bool fails : {true, false}) {
    std::string_view before = !fails && judgement.outcome == TJudgementOutcome::Failed ? "still allowed: " : "";
    for (const TFinding& finding : judgement.findings) {
      if (finding.fails != fails) continue;
      AppendClause(clauses, fmt::format("{}{}", before, FindingText(finding, verdict, settings)));
      before = {};
    }
  }
  if (judgement.outcome == TJudgementOutcome::Passed) AppendNever(judgement, verdict, settings, clauses);
  const bool noneChosen = judgement.outcome == TJudgementOutcome::NotJudged && judgement.notRecorded.empty();
  if (judgement.empty) {
    AppendClause(clauses, "there is no event and no reading");
  } else if (noneChosen) {
    AppendClause(clauses, "no limit was chosen");
  } else if (!judgement.eventsJudged) {
    AppendClause(clauses, "events are not judged");
  }
  std::string missing;
  for (const TQuantity quantity : judgement.notRecorded) AppendListItem(missing, QuantityName(quantity, settings));
  if (!missing.empty() && !judgement.empty) AppendClause(clauses, "no reading of " + missing);
  const std::string_view outcome = judgement.outcome == TJudgementOutcome::Passed   ? "passed"
                                   : judgement.outcome == TJudgementOutcome::Failed ? "failed"
                                                                                    : "not judged by";
  return fmt::format("{} the limits \"{}\"{}{}{}", outcome, profile.name, PartText(filtered, verdict.damaged),
                     clauses.empty() ? "" : ": ", clauses);
}
