#include "analysis/uPinnedEvents.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "analysis/uFourier.h"
#include "base/uFiles.h"
#include "base/uText.h"

namespace {

constexpr std::size_t kMaxPoints = kMaxSpectrumSize / 2;  // of each event, so that the ends do not meet
constexpr double kNoCorrelation = std::numeric_limits<double>::quiet_NaN();

// ms from the event's start of the first sample that is switched on, or of the one with the largest total.
std::optional<double> AnchorOf(const TEvent& event, const TThresholds& levels, TAlignment alignment) {
  std::optional<double> anchor;
  double max = 0;
  for (const TEventValue& value : event.Values()) {
    const double total = Magnitude(value);
    const bool isSwitchOn = alignment == TAlignment::SwitchOn && total >= levels.totOn;
    if (!isSwitchOn && !(alignment == TAlignment::Peak && total > max)) continue;
    const double ms = value.time - event.GetStartTime();
    if (!std::isfinite(ms)) continue;
    anchor = ms;
    max = total;
    if (isSwitchOn) break;
  }
  return anchor;
}

struct TSpan {
  double duration = 0;    // ms from the start to the last sample
  std::size_t count = 0;  // samples that have a time and a value
};

template <class TUse>
void ForEachTotal(const TEvent& event, const TUse& use) {
  for (const TEventValue& value : event.Values()) {
    const double ms = value.time - event.GetStartTime();
    const double total = Magnitude(value);
    if (std::isfinite(ms) && ms >= 0 && std::isfinite(total)) use(ms, total);
  }
}

TSpan SpanOf(const TEvent& event) {
  TSpan span;
  ForEachTotal(event, [&span](double ms, double /*total*/) {
    span.duration = std::max(span.duration, ms);
    ++span.count;
  });
  return span;
}

// The mean total around each multiple of `step`, less the mean of all; a straight line where there is no sample.
std::vector<double> EvenTotals(const TEvent& event, const TSpan& span, double step) {
  const auto points = static_cast<std::size_t>(std::llround(span.duration / step)) + 1;
  std::vector<double> sums(points), counts(points);
  ForEachTotal(event, [&](double ms, double total) {
    const auto point = static_cast<std::size_t>(std::llround(ms / step));
    sums[point] += total;
    ++counts[point];
  });
  std::optional<std::size_t> before;
  for (std::size_t i = 0; i < points; ++i) {
    if (counts[i] == 0) continue;
    sums[i] /= counts[i];
    for (std::size_t gap = before ? *before + 1 : i; gap < i; ++gap) {
      const double part = static_cast<double>(gap - *before) / static_cast<double>(i - *before);
      sums[gap] = sums[*before] + part * (sums[i] - sums[*before]);
    }
    before = i;
  }
  double mean = 0;
  for (const double value : sums) mean += value / static_cast<double>(points);
  for (double& value : sums) value -= mean;
  return sums;
}

double EnergyOf(const std::vector<double>& values) {
  double energy = 0;
  for (const double value : values) energy += value * value;
  return energy;
}

void TransformOf(const std::vector<double>& values, TFourier& fourier) {
  for (std::size_t i = 0; i < values.size(); ++i) fourier.SetReal(i + 1, values[i]);
  fourier.Forward();
}

// c(k) = Σ a(i + k)·b(i), the transform of which is A·conj(B): the correlation theorem (Press et al., Numerical
// Recipes, "Correlation and Autocorrelation Using the FFT"). The zeros behind both keep their ends apart. The top of
// the parabola through the largest value and its neighbours gives parts of a step.
TShift BestCorrelation(const TEvent& shown, const TEvent& pinned) {
  const TSpan spans[] = {SpanOf(shown), SpanOf(pinned)};
  const double longest = std::max(spans[0].duration, spans[1].duration);
  double step = longest / static_cast<double>(kMaxPoints - 1);
  for (const TSpan& span : spans) {
    if (span.count < 2 || !(span.duration > 0)) return {0, false, kNoCorrelation};
    step = std::max(step, span.duration / static_cast<double>(span.count - 1));
  }
  const std::vector<double> a = EvenTotals(shown, spans[0], step);
  const std::vector<double> b = EvenTotals(pinned, spans[1], step);
  const double energy = std::sqrt(EnergyOf(a) * EnergyOf(b));
  if (!(energy > 0) || !std::isfinite(energy)) return {0, false, kNoCorrelation};
  TFourier first(kMaxSpectrumSize);
  TFourier second(kMaxSpectrumSize);
  TransformOf(a, first);
  TransformOf(b, second);
  for (std::size_t i = 1; i <= kMaxSpectrumSize; ++i) {
    const double real = first.Real(i) * second.Real(i) + first.Imag(i) * second.Imag(i);
    const double imag = first.Imag(i) * second.Real(i) - first.Real(i) * second.Imag(i);
    first.SetReal(i, real);
    first.SetImag(i, imag);
  }
  first.Inverse();
  // k counts from -(b.size() - 1); a negative one stands at the end.
  const auto at = [&first](std::ptrdiff_t k) {
    return first.Real(static_cast<std::size_t>(k < 0 ? k + std::ptrdiff_t{kMaxSpectrumSize} : k) + 1);
  };
  std::ptrdiff_t best = 0;
  for (std::ptrdiff_t k = 1 - std::ssize(b); k < std::ssize(a); ++k) {
    if (at(k) > at(best)) best = k;
  }
  const double curvature = at(best - 1) - 2 * at(best) + at(best + 1);
  const double part = curvature < 0 ? (at(best - 1) - at(best + 1)) / (2 * curvature) : 0;
  return {(static_cast<double>(best) + std::clamp(part, -0.5, 0.5)) * step, true,
          std::clamp(at(best) / energy, -1.0, 1.0)};
}

}  // namespace

TPinnedEvent CopyOfEvent(const TEvent& event, const TThresholds& levels, double missionStart, std::string file) {
  TEvent copy(event.ID);
  for (const TEventValue& value : event.Values()) copy.AddValues(value.time, value.xvalue, value.yvalue, value.zvalue);
  copy.Trim();
  return {std::move(copy), levels, CalcEventMetrics(event, levels), missionStart, std::move(file)};
}

std::string PinName(const TPinnedEvent& pinned) {
  const std::string stem = Utf8FromPath(PathFromUtf8(pinned.file).stem());
  return fmt::format("{} ({})", pinned.event.ID, Printable(stem));
}

TShift ShiftBetween(const TEvent& shown, const TThresholds& levels, const TPinnedEvent& pinned, TAlignment alignment) {
  if (alignment == TAlignment::Correlation) return BestCorrelation(shown, pinned.event);
  if (alignment == TAlignment::Start) return {0, true, kNoCorrelation};
  const auto here = AnchorOf(shown, levels, alignment);
  const auto there = AnchorOf(pinned.event, pinned.levels, alignment);
  if (!here || !there) return {0, false, kNoCorrelation};
  return {*here - *there, true, kNoCorrelation};
}
