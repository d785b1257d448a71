#include "analysis/uFourier.h"

#include <fftw3.h>
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <random>

namespace {

using TComplex = std::complex<double>;

// FFTW's answer, without a scale.
std::vector<TComplex> Reference(std::vector<TComplex> values, int sign) {
  auto* data = reinterpret_cast<fftw_complex*>(values.data());
  fftw_plan plan = fftw_plan_dft_1d(static_cast<int>(values.size()), data, data, sign, FFTW_ESTIMATE);
  fftw_execute(plan);
  fftw_destroy_plan(plan);
  return values;
}

// The largest distance, as a part of the largest magnitude.
double Distance(const TFourier& transform, const std::vector<TComplex>& expected, double scale) {
  double distance = 0;
  double largest = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const TComplex wanted = expected[i] * scale;
    distance = std::max(distance, std::abs(TComplex(transform.Real(i + 1), transform.Imag(i + 1)) - wanted));
    largest = std::max(largest, std::abs(wanted));
  }
  return distance / largest;
}

class FourierOfSize : public testing::TestWithParam<std::size_t> {};

TEST_P(FourierOfSize, AgreesWithFftwForwardAndBack) {
  const std::size_t size = GetParam();
  std::mt19937_64 random(size);
  std::normal_distribution<double> normal;
  std::vector<TComplex> values(size);
  for (TComplex& value : values) value = {normal(random), normal(random)};
  TFourier transform(size);
  const auto load = [&] {
    for (std::size_t i = 0; i < size; ++i) {
      transform.SetReal(i + 1, values[i].real());
      transform.SetImag(i + 1, values[i].imag());
    }
  };
  load();
  transform.Forward();
  EXPECT_LT(Distance(transform, Reference(values, FFTW_FORWARD), 1), 1e-12);
  transform.Inverse();
  EXPECT_LT(Distance(transform, values, 1), 1e-12);
  load();
  transform.Inverse();
  EXPECT_LT(Distance(transform, Reference(values, FFTW_BACKWARD), 1 / static_cast<double>(size)), 1e-12);
}

INSTANTIATE_TEST_SUITE_P(EverySize, FourierOfSize,
                         testing::Values(2, 4, 8, 16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192));

TEST(Fourier, CountsFromOneAndRefusesOtherSizes) {
  TFourier transform(4);
  EXPECT_THROW(static_cast<void>(transform.Real(0)), std::out_of_range);
  EXPECT_THROW(transform.SetImag(5, 1), std::out_of_range);
  for (const std::size_t size : {0, 1, 3, 100, 16384}) {
    EXPECT_THROW(transform.SetSpectrumSize(size), std::invalid_argument);
  }
  for (std::size_t i = 1; i <= 4; ++i) transform.SetReal(i, 3);
  transform.Forward();
  EXPECT_EQ(transform.Real(1), 12) << "line 1 is 0 Hz";
  transform.Clear();
  EXPECT_EQ(transform.Real(1), 0);
  EXPECT_EQ(transform.SpectrumSize(), 4);
}

TEST(Fourier, TheFirstStepOfTheSpectrumSizesIsUneven) {
  const std::vector<std::pair<std::size_t, std::size_t>> sizes = {
      {0, 128},     {1, 128},     {128, 128},   {129, 128},   {150, 128},        {151, 256},   {256, 256},
      {257, 512},   {512, 512},   {513, 1024},  {1024, 1024}, {1025, 2048},      {2048, 2048}, {2049, 4096},
      {4096, 4096}, {4097, 8192}, {8192, 8192}, {8193, 8192}, {10'000'000, 8192}};
  for (const auto& [samples, size] : sizes) EXPECT_EQ(SpectrumSizeFor(samples), size) << samples;
}

TEST(WeightingWindows, HaveTheGainAndNoiseBandwidthOfTheirKind) {
  // Cosine sums: a0 and (a0² + Σ aᵢ²/2)/a0²; the others by integrals over the continuous window.
  const double sigma = 0.2;
  const double gaussGain = sigma * std::sqrt(2 * M_PI) * std::erf(0.5 / sigma / std::sqrt(2.0));
  const double gaussNoise = sigma * std::sqrt(M_PI) * std::erf(0.5 / sigma);
  struct TKind {
    TWeightingWindow window;
    double gain, bandwidth;
  };
  const std::vector<TKind> kinds = {{TWeightingWindow::fwRectangle, 1, 1},
                                    {TWeightingWindow::fwTriangle, 0.5, 4.0 / 3},
                                    {TWeightingWindow::fwCos2, 0.5, 1.5},
                                    {TWeightingWindow::fwGauss, gaussGain, gaussNoise / gaussGain / gaussGain},
                                    {TWeightingWindow::fwHamming, 0.54, 1.362826},
                                    {TWeightingWindow::fwBlackman, 0.42, 1.726757},
                                    {TWeightingWindow::fwBlkmHarris, 0.35875, 2.004353},
                                    {TWeightingWindow::fwBlkmNuttall, 0.3635819, 1.976112},
                                    {TWeightingWindow::fwTukey, 0.75, 1.222222}};
  constexpr std::size_t kCount = 4096;
  for (const TKind& kind : kinds) {
    double sum = 0;
    double squares = 0;
    const auto weights = WindowWeights(kind.window, kCount);
    for (const double weight : weights) {
      sum += weight;
      squares += weight * weight;
    }
    EXPECT_NEAR(sum / kCount, kind.gain, 1e-5);
    EXPECT_NEAR(squares * kCount / sum / sum, kind.bandwidth, 2e-5);
    EXPECT_NEAR(weights[kCount / 2], 1, 1e-7);
    EXPECT_NEAR(weights[kCount / 4], weights[kCount - kCount / 4], 1e-12);
    EXPECT_EQ(WindowWeights(kind.window, 1), std::vector{1.0});
  }
}

}  // namespace
