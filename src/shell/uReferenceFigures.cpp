#include "shell/uReferenceFigures.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/uDateTime.h"
#include "base/uText.h"

namespace {

constexpr std::string_view kNoFigure = "–";
constexpr std::string_view kPartMask = "0.0";  // of percents and events a day

std::string Signed(double difference, const std::string& size, const std::string& zero) {
  if (size == zero) return "±" + size;
  return (difference < 0 ? "-" : "+") + size;
}

// `text` gives a size without its sign.
template <class TWriter>
TReferenceFigure Figure(std::string label, std::optional<double> here, std::optional<double> there, const TWriter& text,
                        std::string_view unit, std::optional<TVerdictQuestion> question) {
  TReferenceFigure figure{std::move(label), std::string(kNoFigure), std::string(kNoFigure), {}, question};
  if (here) figure.here = WithUnit(text(*here), unit);
  if (there) figure.there = WithUnit(text(*there), unit);
  if (here && there) {
    const double difference = *here - *there;
    figure.delta = WithUnit(Signed(difference, text(std::fabs(difference)), text(0)), unit);
  }
  return figure;
}

auto InMask(std::string_view mask) {
  return [mask](double value) { return MaskFloat(mask, value); };
}

std::optional<double> ADay(std::size_t events, double days) {
  if (!(days >= 1)) return std::nullopt;
  return static_cast<double>(events) / days;
}

void AddSensors(const TReference& reference, const TVerdict& verdict, const TDisplaySettings& settings,
                std::vector<TReferenceFigure>& figures) {
  std::vector<std::string_view> done;
  for (const TSensorVerdict& sensor : verdict.sensors) {
    const std::string_view name = sensor.quantity->sensorName;
    const auto there = std::ranges::find(reference.sensors, name, &TReferenceSensor::name);
    if (!sensor.min || there == reference.sensors.end() || std::ranges::count(done, name) > 0) continue;
    done.push_back(name);
    const auto text = InMask(settings.FormatOf(*sensor.quantity->quantity));
    const auto low = Figure({}, sensor.min->value, there->min, text, {}, {});
    const auto high = Figure({}, sensor.max->value, there->max, text, {}, {});
    const auto both = [&](std::string TReferenceFigure::*part) {
      return WithUnit(fmt::format("{} … {}", low.*part, high.*part), sensor.quantity->unit);
    };
    figures.push_back({SensorLabel(*sensor.quantity, settings), both(&TReferenceFigure::here),
                       both(&TReferenceFigure::there), both(&TReferenceFigure::delta), TVerdictQuestion::OutOfLimits});
  }
}

}  // namespace

std::vector<TReferenceFigure> ReferenceFigures(const TReference& reference, const TVerdict& verdict, bool isWhole,
                                               const TDisplaySettings& settings) {
  using Q = TVerdictQuestion;
  const auto whole = InMask("0");
  const auto inWords = [](double days) { return DurationInWords(days); };
  const double days = verdict.firstTime ? *verdict.lastTime - *verdict.firstTime : 0;
  const auto events = static_cast<double>(verdict.events);
  std::vector<TReferenceFigure> figures;
  figures.push_back(Figure("Events", events, static_cast<double>(reference.events), whole, {}, Q::Events));
  const auto rate = isWhole ? ADay(verdict.events, days) : std::nullopt;
  if (const auto there = ADay(reference.events, reference.days); rate && there) {
    figures.push_back(Figure("Events a day", rate, there, InMask(kPartMask), {}, {}));
  }
  std::optional<double> peak;
  if (verdict.peak) peak = double{verdict.peak->value};
  figures.push_back(Figure("Peak", peak, MaxOf(reference.distributions[kPeakQuantity]),
                           InMask(settings.FormatOf(TQuantity::Acceleration)), "g", Q::Peak));
  const bool isJudged = verdict.above && verdict.above->limits.maxSource != TLimitSource::File;
  if (isJudged && verdict.events > 0) {
    const double part = static_cast<double>(verdict.above->count) / events;
    const auto there = PartOutside(reference.distributions[kPeakQuantity], verdict.above->limits.values);
    const auto percent = [](double value) { return MaskFloat(kPartMask, 100 * value); };
    figures.push_back(Figure("Events above alarm", part, there, percent, "%", Q::AboveAlarm));
  }
  std::optional<double> worst;
  if (verdict.worst) worst = double{verdict.worst->value};
  figures.push_back(Figure("Worst by intensity", worst, MaxOf(reference.distributions[kIotQuantity]),
                           InMask(settings.FormatOf(TQuantity::IoT)), "g·ms", Q::Intensity));
  AddSensors(reference, verdict, settings, figures);
  if (isWhole) figures.push_back(Figure("Recorded", days, reference.days, inWords, {}, Q::Recorded));
  return figures;
}

std::vector<TFigure> DeltaFigures(const std::vector<TReferenceFigure>& figures) {
  std::vector<TFigure> lines;
  for (const TReferenceFigure& figure : figures) {
    const std::string both = fmt::format("{} against {}", figure.here, figure.there);
    lines.push_back({figure.label, figure.delta.empty() ? both : fmt::format("Δ {} ({})", figure.delta, both)});
  }
  return lines;
}

std::string ReferenceLine(const TShownMission& mission) {
  if (!mission.Reference) return "";
  if (mission.ReferenceIsShown) return "This recording is the reference";
  const TReference& reference = *mission.Reference;
  return fmt::format("Δ against {}: {}{}", ReferenceName(reference), Counted(reference.events, "event"),
                     reference.days > 0 ? " in " + DurationInWords(reference.days) : "");
}
