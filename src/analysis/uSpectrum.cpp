#include "analysis/uSpectrum.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/uText.h"

namespace {

constexpr double kMsPerSecond = 1000;

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  if (values.size() % 2 == 1) return *middle;
  return *middle / 2 + *std::max_element(values.begin(), middle) / 2;
}

bool HasRate(double periodMs) {
  return periodMs > 0 && std::isnormal(periodMs) && std::isfinite(kMsPerSecond / periodMs);
}

// Fills in how the samples stand in time. The period is the mean step, which rounded times leave right.
void MeasureSampling(std::span<const TEventValue> samples, TSpectrum& spectrum) {
  if (samples.size() < 2) {
    spectrum.problem = TSpectrumProblem::TooFewSamples;
    return;
  }
  std::vector<double> steps;
  steps.reserve(samples.size() - 1);
  for (std::size_t i = 1; i < samples.size(); ++i) steps.push_back(samples[i].time - samples[i - 1].time);
  const double period = (samples.back().time - samples.front().time) / static_cast<double>(steps.size());
  const bool finite = std::ranges::all_of(steps, [](double step) { return std::isfinite(step); });
  const double median = finite ? Median(steps) : 0;
  if (!HasRate(median) || !HasRate(period)) {
    spectrum.problem = TSpectrumProblem::NoPeriod;
    return;
  }
  const auto [least, largest] = std::ranges::minmax(steps);
  spectrum.periodMs = period;
  spectrum.medianStepMs = median;
  spectrum.largestStepOff = std::max(median - least, largest - median) / median;
  if (spectrum.largestStepOff > kMostStepOff) spectrum.problem = TSpectrumProblem::UnevenSampling;
}

// The squared magnitude of each line of one axis.
std::vector<double> Squares(std::span<const TEventValue> samples, float TEventValue::*value,
                            std::span<const double> weights, TFourier& transform) {
  const std::size_t lines = transform.SpectrumSize() / 2 + 1;
  transform.Clear();
  for (std::size_t i = 0; i < samples.size(); ++i) {
    if (!std::isfinite(samples[i].*value)) return std::vector(lines, std::numeric_limits<double>::quiet_NaN());
    transform.SetReal(i + 1, weights[i] * double{samples[i].*value});
  }
  transform.Forward();
  std::vector<double> squares(lines);
  for (std::size_t k = 1; k <= lines; ++k) {
    squares[k - 1] = transform.Real(k) * transform.Real(k) + transform.Imag(k) * transform.Imag(k);
  }
  return squares;
}

// What the window does to a sine and to noise.
struct TGains {
  double coherent = 0;  // Σ w, squared
  double noise = 0;     // Σ w²
};

TGains GainsOf(std::span<const double> weights) {
  TGains gains;
  double sum = 0;
  for (const double weight : weights) {
    sum += weight;
    gains.noise += weight * weight;
  }
  gains.coherent = sum * sum;
  return gains;
}

// What squared magnitudes are multiplied by. A line that has a mirror image at the negative frequency stands for both.
double ScaleOf(TSpectrumType type, bool mirrored, const TGains& gains, double rate) {
  switch (type) {
    case TSpectrumType::Amplitude:
    case TSpectrumType::Decibel:
      return (mirrored ? 4 : 1) / gains.coherent;
    case TSpectrumType::Power:
      return (mirrored ? 2 : 1) / gains.coherent;
    case TSpectrumType::PSD:
      return (mirrored ? 2 : 1) / (gains.noise * rate);
  }
  return 0;
}

double Shown(TSpectrumType type, double square) {
  if (type == TSpectrumType::Amplitude) return std::sqrt(square);
  if (type != TSpectrumType::Decibel) return square;
  const double decibel = 10 * std::log10(square);
  return decibel < kLeastDecibel ? kLeastDecibel : decibel;  // NaN stays
}

}  // namespace

TSpectrum CalcSpectrum(std::span<const TEventValue> samples, TSpectrumType type, TWeightingWindow window,
                       const TWeightingFunction& userDef) {
  const std::size_t size = SpectrumSizeFor(samples.size());
  const auto taken = samples.first(std::min(samples.size(), size));
  TSpectrum spectrum;
  const std::vector<double> weights = WindowWeights(window, taken.size(), userDef);
  MeasureSampling(taken, spectrum);
  if (spectrum.problem != TSpectrumProblem::None) return spectrum;
  const TGains gains = GainsOf(weights);
  if (!(std::isnormal(gains.coherent) && std::isnormal(gains.noise))) {
    spectrum.problem = TSpectrumProblem::NoWeight;
    return spectrum;
  }

  TFourier transform(size);
  const auto x = Squares(taken, &TEventValue::xvalue, weights, transform);
  const auto y = Squares(taken, &TEventValue::yvalue, weights, transform);
  const auto z = Squares(taken, &TEventValue::zvalue, weights, transform);
  const double rate = kMsPerSecond / spectrum.periodMs;
  spectrum.lines.reserve(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double scale = ScaleOf(type, i > 0 && i + 1 < x.size(), gains, rate);
    const auto shown = [&](double square) { return Shown(type, square * scale); };
    spectrum.lines.push_back({static_cast<double>(i) * rate / static_cast<double>(size), shown(x[i]), shown(y[i]),
                              shown(z[i]), shown(x[i] + y[i] + z[i])});
  }
  return spectrum;
}

std::string WhyNoSpectrum(const TSpectrum& spectrum) {
  switch (spectrum.problem) {
    case TSpectrumProblem::None:
      break;
    case TSpectrumProblem::TooFewSamples:
      return "A spectrum needs two samples.";
    case TSpectrumProblem::NoPeriod:
      return "The times of the samples do not rise.";
    case TSpectrumProblem::UnevenSampling:
      return fmt::format("The sampling is uneven: a step is {} % off the median of {} ms.",
                         MaskFloat("0.#", spectrum.largestStepOff * 100), MaskFloat("0.####", spectrum.medianStepMs));
    case TSpectrumProblem::NoWeight:
      return "The window weighs nothing.";
  }
  return {};
}
