#include "analysis/uResponseSpectrum.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <stdexcept>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kMinPart = 1e-6;        // of the sampling rate; the zeros behind a record are 1.5 periods long
constexpr double kRoundingSlack = 1e-9;  // a frequency that equals a bound but for rounding is within it
constexpr double kSeriesBelow = 1e-3;    // fn·T
constexpr double kPeriodsOfZeros = 1.5;

// The filter's recursion is r = 2·E·cos B·r₁ − E²·r₂ + b0·x + b1·x₁ + b2·x₂. It runs on the change of r from step to
// step, which keeps the digits of slow oscillators: the change is E² times the last one, minus `stiffness` times r₁.
struct TCoefficients {
  double b0, b1, b2;
  double decay;      // E²
  double stiffness;  // 1 − 2·E·cos B + E²
};

// 1 − sin(b)/b without loss of digits.
double OneMinusSinc(double b) {
  if (b > 0.1) return 1 - std::sin(b) / b;
  const double square = b * b;
  return square / 6 * (1 - square / 20 * (1 - square / 42 * (1 - square / 72)));
}

// The relative displacement, times ω³, at ω·t = `phase` after the base began to accelerate as ω·t, by its power series:
// g'' + g'/Q + g = −phase.
double RampResponse(double phase, double quality) {
  double previous = 0;  // the terms of the series, each the power of the phase included
  double term = -phase * phase * phase / 6;
  double sum = term;
  for (int k = 4; k < 12; ++k) {
    const double next = -(term * phase / quality * (k - 1) + previous * phase * phase) / (k * (k - 1));
    previous = term;
    term = next;
    sum += term;
  }
  return sum;
}

class TOscillator {
 public:
  // `phase` is ω·T.
  TOscillator(double phase, double quality)
      : FPhase(phase),
        FQuality(quality),
        FRoot(std::sqrt(1 - 1 / (4 * quality * quality))),
        FAngle(phase * FRoot),
        FLoss(std::expm1(-phase / (2 * quality))),
        FE(FLoss + 1) {}

  // g for g.
  [[nodiscard]] TCoefficients Acceleration() const {
    const double flat = OneMinusSinc(FAngle);
    return {FE * flat - FLoss, 2 * FE * (OneMinusCos() - flat), FE * (FLoss + flat), FE * FE, Stiffness()};
  }

  // m/s for g.
  [[nodiscard]] TCoefficients PseudoVelocity(double rate) const {
    const double omega = FPhase * rate;
    const double scale = kStandardGravity / (omega * FPhase);  // 1/(ω²·T)
    const std::array<double, 3> b = FPhase < 2 * std::numbers::pi * kSeriesBelow ? BySeries() : ByFormula();
    return {b[0] * scale, b[1] * scale, b[2] * scale, FE * FE, Stiffness()};
  }

 private:
  [[nodiscard]] double OneMinusCos() const { return 2 * std::sin(FAngle / 2) * std::sin(FAngle / 2); }
  [[nodiscard]] double Stiffness() const { return FLoss * FLoss + 2 * FE * OneMinusCos(); }

  [[nodiscard]] std::array<double, 3> ByFormula() const {
    const double q = (1 / (2 * FQuality * FQuality) - 1) / FRoot;
    const double cosine = FE * std::cos(FAngle);
    const double sine = q * FE * std::sin(FAngle);
    const double square = FE * FE;
    return {(1 - cosine) / FQuality - sine - FPhase, 2 * cosine * FPhase - (1 - square) / FQuality + 2 * sine,
            -square * (FPhase + 1 / FQuality) + cosine / FQuality - sine};
  }

  // The formula loses all digits of slow oscillators. The response to a straight line between samples is the second
  // difference of the response to a ramp.
  [[nodiscard]] std::array<double, 3> BySeries() const {
    const double g1 = RampResponse(FPhase, FQuality);
    const double g2 = RampResponse(2 * FPhase, FQuality);
    const double g3 = RampResponse(3 * FPhase, FQuality);
    const double twice = 2 * FE * std::cos(FAngle);
    const double square = FE * FE;
    return {g1, g2 - (2 + twice) * g1, g3 - (2 + twice) * g2 + (1 + 2 * twice + square) * g1};
  }

  double FPhase, FQuality, FRoot, FAngle, FLoss, FE;
};

// Oscillators of neighbouring frequencies run side by side, so that the compiler puts them into vector registers.
constexpr std::size_t kLanes = 4;
using TLanes = std::array<double, kLanes>;

struct TFilters {
  TLanes b0{}, b1{}, b2{}, decay{}, stiffness{};

  void Set(std::size_t lane, const TCoefficients& one) {
    b0[lane] = one.b0;
    b1[lane] = one.b1;
    b2[lane] = one.b2;
    decay[lane] = one.decay;
    stiffness[lane] = one.stiffness;
  }
};

template <TResponseSign Sign>
struct TAxis {
  TLanes response{}, change{};
  TLanes extreme{};                // for maximax its square
  double before = 0, before2 = 0;  // the last two inputs

  void Step(const TFilters& filters, double input) {
    for (std::size_t i = 0; i < kLanes; ++i) {
      const double force = filters.b0[i] * input + filters.b1[i] * before + filters.b2[i] * before2;
      change[i] = filters.decay[i] * change[i] - filters.stiffness[i] * response[i] + force;
      response[i] += change[i];
      const double candidate = Sign == TResponseSign::Maximax    ? response[i] * response[i]
                               : Sign == TResponseSign::Positive ? response[i]
                                                                 : -response[i];
      extreme[i] = candidate > extreme[i] ? candidate : extreme[i];
    }
    before2 = before;
    before = input;
  }
  [[nodiscard]] double Extreme(std::size_t lane) const {
    return Sign == TResponseSign::Maximax ? std::sqrt(extreme[lane]) : extreme[lane];
  }
};

template <TResponseSign Sign>
struct TOscillators {
  TAxis<Sign> x, y, z;
  TLanes squares{};  // the largest of the total

  void Step(const TFilters& filters, double inputX, double inputY, double inputZ) {
    x.Step(filters, inputX);
    y.Step(filters, inputY);
    z.Step(filters, inputZ);
    for (std::size_t i = 0; i < kLanes; ++i) {
      const double square =
          x.response[i] * x.response[i] + y.response[i] * y.response[i] + z.response[i] * z.response[i];
      squares[i] = square > squares[i] ? square : squares[i];
    }
  }
};

// Calls step(i) for each i below count, until it is asked to stop.
void ForEachStep(std::size_t count, const std::stop_token& stop, const auto& step) {
  constexpr std::size_t kStepsBetween = 16384;
  for (std::size_t begin = 0; begin < count && !stop.stop_requested(); begin += kStepsBetween) {
    const std::size_t end = std::min(begin + kStepsBetween, count);
    for (std::size_t i = begin; i < end; ++i) step(i);
  }
}

// Steps of a number of periods, rounded up.
double StepsOf(double periods, double hertz, double rate) {
  return std::ceil(periods * rate / hertz);
}

template <TResponseSign Sign>
void CalcSome(const TShockSamples& shock, std::span<TResponseLine> lines, double lowest,
              const TResponseOptions& options, const std::stop_token& stop) {
  const double rate = shock.Rate();
  TFilters filters;
  double slowest = lines.front().hertz;
  for (std::size_t i = 0; i < kLanes; ++i) {
    const double hertz = lines[std::min(i, lines.size() - 1)].hertz;
    slowest = std::min(slowest, hertz);
    const TOscillator oscillator(2 * std::numbers::pi * hertz / rate, options.quality);
    filters.Set(
        i, options.response == TResponse::Acceleration ? oscillator.Acceleration() : oscillator.PseudoVelocity(rate));
  }
  // After Q + 2 periods less than a twentieth of a response is left, and no later extreme can be the largest.
  const double zeros = std::min(StepsOf(kPeriodsOfZeros, lowest, rate), StepsOf(options.quality + 2, slowest, rate));
  TOscillators<Sign> all;
  ForEachStep(shock.Count(), stop, [&](std::size_t i) { all.Step(filters, shock.x[i], shock.y[i], shock.z[i]); });
  ForEachStep(static_cast<std::size_t>(zeros), stop, [&](std::size_t) { all.Step(filters, 0, 0, 0); });
  const bool hasX = std::isfinite(shock.x.front());
  const bool hasY = std::isfinite(shock.y.front());
  const bool hasZ = std::isfinite(shock.z.front());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (hasX) lines[i].x = all.x.Extreme(i);
    if (hasY) lines[i].y = all.y.Extreme(i);
    if (hasZ) lines[i].z = all.z.Extreme(i);
    if (hasX && hasY && hasZ) lines[i].total = std::sqrt(all.squares[i]);
  }
}

// The same by the sign that the options name.
void CalcBySign(const TShockSamples& shock, std::span<TResponseLine> lines, double lowest,
                const TResponseOptions& options, const std::stop_token& stop) {
  using enum TResponseSign;
  const auto calc = options.sign == Maximax    ? CalcSome<Maximax>
                    : options.sign == Positive ? CalcSome<Positive>
                                               : CalcSome<Negative>;
  calc(shock, lines, lowest, options, stop);
}

}  // namespace

TResponseRange ResponseRangeOf(double hertz, double rate) {
  if (!(hertz >= rate * kMinPart) || hertz > rate / 4 * (1 + kRoundingSlack)) return TResponseRange::None;
  return hertz > rate / 10 * (1 + kRoundingSlack) ? TResponseRange::Rough : TResponseRange::Valid;
}

std::vector<TResponseLine> CalcResponseSpectrum(const TShockSamples& shock, std::span<const double> hertz,
                                                const TResponseOptions& options, const std::stop_token& stop) {
  if (!(options.quality > 0.5) || !std::isfinite(options.quality)) {
    throw std::invalid_argument("The quality of an oscillator is above 0.5.");
  }
  if (shock.Count() == 0) return {};
  // The lines that are computed, gathered so that full lanes run.
  std::vector<TResponseLine> computed;
  double lowest = std::numeric_limits<double>::infinity();
  for (const double one : hertz) {
    const TResponseRange range = ResponseRangeOf(one, shock.Rate());
    if (range == TResponseRange::None) continue;
    computed.push_back({{one, kNaN, kNaN, kNaN, kNaN}, range});
    lowest = std::min(lowest, one);
  }
  for (std::size_t i = 0; i < computed.size(); i += kLanes) {
    CalcBySign(shock, std::span(computed).subspan(i, std::min(kLanes, computed.size() - i)), lowest, options, stop);
  }
  std::vector<TResponseLine> lines;
  auto next = computed.begin();
  for (const double one : hertz) {
    const bool isNone = ResponseRangeOf(one, shock.Rate()) == TResponseRange::None;
    lines.push_back(isNone ? TResponseLine{{one, kNaN, kNaN, kNaN, kNaN}, TResponseRange::None} : *next++);
  }
  return lines;
}

std::vector<double> OctaveFrequencies(double from, double to, int perOctave) {
  std::vector<double> frequencies;
  if (!(from > 0 && std::isfinite(from) && to > 0 && std::isfinite(to))) return frequencies;
  const auto stepOf = [perOctave](double hertz) { return perOctave * std::log2(hertz / 10); };
  const auto last = static_cast<int>(std::floor(stepOf(to) + kRoundingSlack));
  for (auto k = static_cast<int>(std::ceil(stepOf(from) - kRoundingSlack)); k <= last; ++k) {
    frequencies.push_back(10 * std::exp2(static_cast<double>(k) / perOctave));
  }
  return frequencies;
}

TResponseLimits ResponseLimitsOf(const TTimeGrid& grid) {
  const double rate = 1000 / grid.stepMs;
  return {rate / static_cast<double>(grid.PointCount() - 1), rate / 4};
}

void AddToEnvelope(std::span<TResponseLine> envelope, std::span<const TResponseLine> lines) {
  for (std::size_t i = 0; i < envelope.size(); ++i) {
    if (lines[i].range == TResponseRange::None) continue;
    TResponseLine& line = envelope[i];
    line.range = line.range == TResponseRange::None ? lines[i].range : std::max(line.range, lines[i].range);
    for (const auto value : {&TResponseLine::x, &TResponseLine::y, &TResponseLine::z, &TResponseLine::total}) {
      line.*value = std::fmax(line.*value, lines[i].*value);  // the other one where one is NaN
    }
  }
}
