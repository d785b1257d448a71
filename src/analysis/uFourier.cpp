#include "analysis/uFourier.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>
#include <span>
#include <stdexcept>

namespace {

using std::numbers::pi;

// A stage that joins transforms of `half` values needs exp(-πj·k/half) for k < half, whatever the spectrum size; its
// factors begin at half - 1.
struct TTwiddles {
  std::vector<double> cosine, sine;
};

const TTwiddles& Twiddles() {
  static const TTwiddles table = [] {
    TTwiddles made;
    made.cosine.reserve(kMaxSpectrumSize);
    made.sine.reserve(kMaxSpectrumSize);
    for (std::size_t half = 1; half < kMaxSpectrumSize; half *= 2) {
      for (std::size_t k = 0; k < half; ++k) {
        const double angle = -pi * static_cast<double>(k) / static_cast<double>(half);
        made.cosine.push_back(std::cos(angle));
        made.sine.push_back(std::sin(angle));
      }
    }
    return made;
  }();
  return table;
}

void ReverseBits(std::span<double> real, std::span<double> imag) {
  const std::size_t size = real.size();
  for (std::size_t i = 0, reversed = 0; i < size; ++i) {
    if (i < reversed) {
      std::swap(real[i], real[reversed]);
      std::swap(imag[i], imag[reversed]);
    }
    // Adds one from the highest bit down.
    std::size_t bit = size / 2;
    while (bit > 0 && (reversed & bit) != 0) {
      reversed ^= bit;
      bit /= 2;
    }
    reversed |= bit;
  }
}

// Joins two transforms of `half` values that lie behind each other.
void Join(const TTwiddles& twiddles, double* real, double* imag, std::size_t half) {
  const double* cosine = &twiddles.cosine[half - 1];
  const double* sine = &twiddles.sine[half - 1];
  double* upperReal = real + half;
  double* upperImag = imag + half;
  for (std::size_t k = 0; k < half; ++k) {
    const double turnedReal = upperReal[k] * cosine[k] - upperImag[k] * sine[k];
    const double turnedImag = upperReal[k] * sine[k] + upperImag[k] * cosine[k];
    upperReal[k] = real[k] - turnedReal;
    upperImag[k] = imag[k] - turnedImag;
    real[k] += turnedReal;
    imag[k] += turnedImag;
  }
}

void Transform(std::span<double> real, std::span<double> imag) {
  const TTwiddles& twiddles = Twiddles();
  ReverseBits(real, imag);
  for (std::size_t half = 1; half < real.size(); half *= 2) {
    for (std::size_t begin = 0; begin < real.size(); begin += 2 * half) {
      Join(twiddles, &real[begin], &imag[begin], half);
    }
  }
}

// a0 - a1·cos(2πt) + a2·cos(4πt) - a3·cos(6πt)
double CosineSum(double place, double a0, double a1, double a2 = 0, double a3 = 0) {
  const double angle = 2 * pi * place;
  return a0 - a1 * std::cos(angle) + a2 * std::cos(2 * angle) - a3 * std::cos(3 * angle);
}

double Gauss(double place) {
  constexpr double kDeviation = 0.2;
  const double distance = (place - 0.5) / kDeviation;
  return std::exp(-distance * distance / 2);
}

double Tukey(double place) {
  constexpr double kSlope = 0.25;  // on each side
  const double fromEdge = std::min(place, 1 - place);
  return fromEdge < kSlope ? CosineSum(fromEdge / kSlope / 2, 0.5, 0.5) : 1;
}

double Weight(TWeightingWindow window, double place) {
  switch (window) {
    case TWeightingWindow::fwTriangle:
      return 1 - std::fabs(2 * place - 1);
    case TWeightingWindow::fwCos2:
      return CosineSum(place, 0.5, 0.5);
    case TWeightingWindow::fwGauss:
      return Gauss(place);
    case TWeightingWindow::fwHamming:
      return CosineSum(place, 0.54, 0.46);
    case TWeightingWindow::fwBlackman:
      return CosineSum(place, 0.42, 0.5, 0.08);
    case TWeightingWindow::fwBlkmHarris:
      return CosineSum(place, 0.35875, 0.48829, 0.14128, 0.01168);
    case TWeightingWindow::fwBlkmNuttall:
      return CosineSum(place, 0.3635819, 0.4891775, 0.1365995, 0.0106411);
    case TWeightingWindow::fwTukey:
      return Tukey(place);
    case TWeightingWindow::fwRectangle:
    case TWeightingWindow::fwUserDef:
      break;
  }
  return 1;
}

}  // namespace

std::size_t SpectrumSizeFor(std::size_t samples) {
  constexpr std::size_t kMinPoints = 128;
  constexpr std::size_t kMaxCutToMinPoints = 150;
  if (samples <= kMaxCutToMinPoints) return kMinPoints;
  return std::bit_ceil(std::min(samples, kMaxSpectrumSize));
}

void TFourier::SetSpectrumSize(std::size_t spectrumSize) {
  if (spectrumSize < 2 || spectrumSize > kMaxSpectrumSize || !std::has_single_bit(spectrumSize)) {
    throw std::invalid_argument("A spectrum size is a power of two from 2 to 8192.");
  }
  FReal.assign(spectrumSize, 0.0);
  FImag.assign(spectrumSize, 0.0);
}

void TFourier::Clear() {
  std::ranges::fill(FReal, 0.0);
  std::ranges::fill(FImag, 0.0);
}

void TFourier::Forward() {
  Transform(FReal, FImag);
}

void TFourier::Inverse() {
  // With the parts exchanged the exponents change their sign.
  Transform(FImag, FReal);
  const double scale = 1 / static_cast<double>(SpectrumSize());
  for (double& value : FReal) value *= scale;
  for (double& value : FImag) value *= scale;
}

std::vector<double> WindowWeights(TWeightingWindow window, std::size_t count, const TWeightingFunction& userDef) {
  if (window == TWeightingWindow::fwUserDef && !userDef) {
    throw std::invalid_argument("The window fwUserDef needs a function.");
  }
  std::vector<double> weights(count, 1.0);
  if (count < 2) return weights;
  for (std::size_t i = 0; i < count; ++i) {
    const double place = static_cast<double>(i) / static_cast<double>(count);
    weights[i] = window == TWeightingWindow::fwUserDef ? userDef(place) : Weight(window, place);
  }
  return weights;
}
