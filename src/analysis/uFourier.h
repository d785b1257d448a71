// The fast Fourier transform and its weighting windows. One thread at a time uses a TFourier; all share one table of
// sines, made when the first transform is.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

inline constexpr std::size_t kMaxSpectrumSize = 8192;

// The spectrum size for an event of so many samples, 128 … kMaxSpectrumSize. Kept on purpose: up to 150 samples it is
// 128, so the last of them are cut off; above 8192 too.
std::size_t SpectrumSizeFor(std::size_t samples);

// A complex transform of N = SpectrumSize() values. Values and spectral lines share the arrays and count from 1: line 1
// is 0 Hz, line N/2 + 1 the highest frequency, lines above are the negative frequencies. Inverse after Forward returns
// the values. A value that is not finite spoils all. Indexes outside 1 … N throw std::out_of_range.
class TFourier {
 public:
  explicit TFourier(std::size_t spectrumSize = 128) { SetSpectrumSize(spectrumSize); }

  // Clears all. Throws std::invalid_argument for what is no power of two from 2 to kMaxSpectrumSize.
  void SetSpectrumSize(std::size_t spectrumSize);
  [[nodiscard]] std::size_t SpectrumSize() const { return FReal.size(); }
  void Clear();

  [[nodiscard]] double Real(std::size_t index) const { return FReal.at(index - 1); }
  [[nodiscard]] double Imag(std::size_t index) const { return FImag.at(index - 1); }
  void SetReal(std::size_t index, double value) { FReal.at(index - 1) = value; }
  void SetImag(std::size_t index, double value) { FImag.at(index - 1) = value; }

  // X(k) = Σ x(i)·exp(-2πj·(i-1)(k-1)/N)
  void Forward();
  // x(i) = 1/N·Σ X(k)·exp(+2πj·(i-1)(k-1)/N)
  void Inverse();

 private:
  std::vector<double> FReal, FImag;
};

enum class TWeightingWindow {
  fwRectangle,
  fwTriangle,
  fwCos2,
  fwGauss,
  fwHamming,
  fwBlackman,
  fwBlkmHarris,
  fwBlkmNuttall,
  fwTukey,
  fwUserDef,
};

// How people know the windows that need no function.
inline constexpr std::array<std::pair<std::string_view, TWeightingWindow>, 9> kWeightingWindows = {{
    {"Rectangle", TWeightingWindow::fwRectangle},
    {"Triangle", TWeightingWindow::fwTriangle},
    {"Cos2", TWeightingWindow::fwCos2},
    {"Gauss", TWeightingWindow::fwGauss},
    {"Hamming", TWeightingWindow::fwHamming},
    {"Blackman", TWeightingWindow::fwBlackman},
    {"BlkmHarris", TWeightingWindow::fwBlkmHarris},
    {"BlkmNuttall", TWeightingWindow::fwBlkmNuttall},
    {"Tukey", TWeightingWindow::fwTukey},
}};

// The weight at a place of the window: 0 is its begin, 1 its end.
using TWeightingFunction = std::function<double(double place)>;

// The weights of `count` samples, periodic as a transform needs them: sample i (from 0) stands at the place i/count, so
// the middle weighs 1 and the end is left to the next period. One sample weighs 1. The Gauss window has a standard
// deviation of 0.2, the Tukey window slopes over the outer quarters. fwUserDef takes its weights from `userDef` and
// throws std::invalid_argument without it.
std::vector<double> WindowWeights(TWeightingWindow window, std::size_t count, const TWeightingFunction& userDef = {});
