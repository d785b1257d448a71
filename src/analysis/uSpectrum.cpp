#include "analysis/uSpectrum.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kMsPerSecond = 1000;

// The squared magnitude of each line of one axis; points past the weights are left out.
std::vector<double> Squares(std::span<const TGridValue> points, double TGridValue::*axis,
                            std::span<const double> weights, TFourier& transform) {
  transform.Clear();
  for (std::size_t i = 0; i < weights.size(); ++i) transform.SetReal(i + 1, weights[i] * points[i].*axis);
  transform.Forward();
  std::vector<double> squares(transform.SpectrumSize() / 2 + 1);
  for (std::size_t k = 1; k <= squares.size(); ++k) {
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
  return decibel < kMinDecibel ? kMinDecibel : decibel;  // NaN stays
}

}  // namespace

TSpectrum CalcSpectrum(std::span<const TEventValue> samples, TSpectrumType type, TWeightingWindow window,
                       const TWeightingFunction& userDef) {
  const auto taken = samples.first(std::min(samples.size(), SpectrumSizeFor(samples.size())));
  TSpectrum spectrum;
  spectrum.grid = FitTimeGrid(taken);
  const std::size_t size = SpectrumSizeFor(spectrum.grid.PointCount());
  const std::vector<double> weights = WindowWeights(window, std::min(spectrum.grid.PointCount(), size), userDef);
  if (spectrum.grid.problem != TTimeGridProblem::None) {
    spectrum.problem = TSpectrumProblem::NoGrid;
    return spectrum;
  }
  const TGains gains = GainsOf(weights);
  if (!(std::isnormal(gains.coherent) && std::isnormal(gains.noise))) {
    spectrum.problem = TSpectrumProblem::NoWeight;
    return spectrum;
  }

  TFourier transform(size);
  const std::vector<TGridValue> points = ValuesOnGrid(taken, spectrum.grid);
  const auto squaresOf = [&](float TEventValue::*sample, double TGridValue::*point) {
    // An interpolated grid may step over a sample.
    const bool finite =
        std::ranges::all_of(taken, [sample](const auto& value) { return std::isfinite(value.*sample); });
    return finite ? Squares(points, point, weights, transform)
                  : std::vector(size / 2 + 1, std::numeric_limits<double>::quiet_NaN());
  };
  const auto x = squaresOf(&TEventValue::xvalue, &TGridValue::x);
  const auto y = squaresOf(&TEventValue::yvalue, &TGridValue::y);
  const auto z = squaresOf(&TEventValue::zvalue, &TGridValue::z);
  const double rate = kMsPerSecond / spectrum.grid.stepMs;
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
  return spectrum.problem == TSpectrumProblem::NoWeight ? "The window weighs nothing." : WhyNoGrid(spectrum.grid);
}
