#include "analysis/uSpectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <random>

#include "analysis/uHighPassFilter.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr double kPeriodMs = 0.625;  // 1600 Hz

std::vector<TEventValue> Noise(std::size_t count) {
  std::mt19937_64 random(count);
  std::normal_distribution<float> normal(1, 3);
  std::vector<TEventValue> samples(count);
  for (std::size_t i = 0; i < count; ++i) {
    samples[i] = {100 + kPeriodMs * static_cast<double>(i), normal(random), normal(random), normal(random)};
  }
  return samples;
}

// 3 g on x and 2 g on y as sines of so many periods in `size` samples, 1 g on z all the time.
std::vector<TEventValue> Sines(std::size_t count, double size, double periodsX, double periodsY) {
  std::vector<TEventValue> samples;
  for (std::size_t i = 0; i < count; ++i) {
    const double turns = static_cast<double>(i) / size;
    samples.push_back({7000 + kPeriodMs * static_cast<double>(i),
                       static_cast<float>(3 * std::sin(2 * std::numbers::pi * periodsX * turns + 0.4)),
                       static_cast<float>(2 * std::cos(2 * std::numbers::pi * periodsY * turns)), 1});
  }
  return samples;
}

// The definition: without the constant and line 2 of `size` points, line `size` left in.
std::vector<double> DirectlyFiltered(const std::vector<TEventValue>& samples, std::size_t size,
                                     float TEventValue::*axis) {
  const std::size_t count = std::min(size, samples.size());
  const double turn = 2 * std::numbers::pi / static_cast<double>(size);
  double sum = 0;
  std::complex<double> slowest = 0;
  for (std::size_t i = 0; i < count; ++i) {
    sum += samples[i].*axis;
    slowest += double{samples[i].*axis} * std::polar(1.0, -turn * static_cast<double>(i));
  }
  std::vector<double> filtered;
  for (std::size_t i = 0; i < count; ++i) {
    const double part = sum + (slowest * std::polar(1.0, turn * static_cast<double>(i))).real();
    filtered.push_back(samples[i].*axis - part / static_cast<double>(size));
  }
  return filtered;
}

TEST(HighPassFilter, RemovesTwoLinesButNotTheirMirrorImage) {
  const std::vector<std::pair<std::size_t, std::size_t>> sizes = {{0, 128},   {1, 128},   {128, 128},   {150, 128},
                                                                  {151, 256}, {300, 512}, {10000, 8192}};
  for (const auto& [count, size] : sizes) {
    const auto samples = Noise(count);
    const auto filtered = HighPassFiltered(samples);
    const auto x = DirectlyFiltered(samples, size, &TEventValue::xvalue);
    const auto y = DirectlyFiltered(samples, size, &TEventValue::yvalue);
    const auto z = DirectlyFiltered(samples, size, &TEventValue::zvalue);
    ASSERT_EQ(filtered.size(), std::min(count, size));
    for (std::size_t i = 0; i < filtered.size(); ++i) {
      ASSERT_EQ(filtered[i].time, samples[i].time);
      ASSERT_NEAR(filtered[i].x, x[i], 1e-11);
      ASSERT_NEAR(filtered[i].y, y[i], 1e-11);
      ASSERT_NEAR(filtered[i].z, z[i], 1e-11);
      ASSERT_NEAR(filtered[i].total, std::hypot(x[i], y[i], z[i]), 1e-11);
    }
  }
}

TEST(HighPassFilter, RemovesAConstantWhenNothingIsPadded) {
  for (const std::size_t count : {128, 140, 256}) {
    for (const TFilteredValue& value : HighPassFiltered(std::vector<TEventValue>(count, {5, 0, 0, 1}))) {
      ASSERT_NEAR(value.total, 0, 1e-12);
    }
  }
}

TEST(HighPassFilter, ANaNSpoilsItsAxisAndTheTotalOnly) {
  auto samples = Noise(200);
  samples[199].yvalue = kNaN;
  samples[3].time = kNaN;
  const auto filtered = HighPassFiltered(samples);
  EXPECT_TRUE(std::isnan(filtered[0].y));
  EXPECT_TRUE(std::isnan(filtered[0].total));
  EXPECT_TRUE(std::isfinite(filtered[0].x + filtered[199].z));
}

class SpectrumOfWindow : public testing::TestWithParam<std::pair<std::string_view, TWeightingWindow>> {};

TEST_P(SpectrumOfWindow, ASineShowsItsAmplitudeWithAndWithoutPadding) {
  for (const std::size_t count : {1024, 900}) {
    const auto samples = Sines(count, 1024, 256, 128);
    const auto linesOf = [&](TSpectrumType type) { return CalcSpectrum(samples, type, GetParam().second).lines; };
    const auto amplitude = linesOf(TSpectrumType::Amplitude);
    ASSERT_EQ(amplitude.size(), 513);
    EXPECT_EQ(amplitude[256].hertz, 400);
    EXPECT_NEAR(amplitude[256].x, 3, 1e-3);
    EXPECT_NEAR(amplitude[128].y, 2, 2e-3);
    EXPECT_NEAR(amplitude[0].z, 1, 1e-6);
    EXPECT_NEAR(amplitude[256].total, std::hypot(3, amplitude[256].y, amplitude[256].z), 1e-3);
    EXPECT_NEAR(linesOf(TSpectrumType::Power)[256].x, 4.5, 3e-3);
    EXPECT_NEAR(linesOf(TSpectrumType::Power)[0].z, 1, 1e-6);
    EXPECT_NEAR(linesOf(TSpectrumType::Decibel)[256].x, 9.5424, 3e-3);

    double meanSquare = 0;  // the sum of the density by the distance of two lines
    for (const TSpectrumLine& line : linesOf(TSpectrumType::PSD)) meanSquare += line.total * 1600 / 1024;
    EXPECT_NEAR(meanSquare, 4.5 + 2 + 1, 2e-2);
  }
}

INSTANTIATE_TEST_SUITE_P(EachWindow, SpectrumOfWindow, testing::ValuesIn(kWeightingWindows),
                         [](const auto& info) { return std::string(info.param.first); });

TSpectrum Amplitudes(const std::vector<TEventValue>& samples) {
  return CalcSpectrum(samples, TSpectrumType::Amplitude, TWeightingWindow::fwRectangle);
}

TEST(Spectrum, TheHighestLineIsNotDoubled) {
  std::vector<TEventValue> samples;
  for (int i = 0; i < 128; ++i) samples.push_back({double(i), i % 2 == 0 ? 5.0F : -5.0F, 0, 0});
  EXPECT_NEAR(Amplitudes(samples).lines[64].x, 5, 1e-12);
  EXPECT_EQ(CalcSpectrum(samples, TSpectrumType::Decibel, TWeightingWindow::fwCos2).lines[3].y, kMinDecibel);
}

TEST(Spectrum, RoundedTimesLeaveEveryAmplitudeAsItIs) {
  const auto even = Noise(10000);
  auto rounded = even;
  for (std::size_t i = 1; i < 8000; ++i) rounded[i].time += (i % 3 == 0 ? 0.3 : -0.15) * kPeriodMs;
  rounded[9000].time += 5;  // what is not transformed does not count
  const TSpectrum spectrum = Amplitudes(rounded);
  EXPECT_NEAR(spectrum.grid.farthest, 0.3, 0.01);
  EXPECT_NEAR(spectrum.lines[1].hertz, 1600.0 / 8192, 1e-6);
  const auto lines = Amplitudes(even).lines;
  ASSERT_EQ(lines.size(), 4097);
  for (std::size_t i = 0; i < lines.size(); ++i) ASSERT_EQ(spectrum.lines[i].total, lines[i].total);
}

// The clock gains and loses 0.8 sample eight times: taken as even, each sine would have neighbours 8 lines away.
TEST(Spectrum, SamplesFarOffTheGridAreInterpolated) {
  std::vector<TEventValue> samples;
  for (int i = 0; i < 1024; ++i) {
    const double time = i + 0.8 * std::sin(2 * std::numbers::pi * i / 128);
    samples.push_back({time, static_cast<float>(std::sin(2 * std::numbers::pi * 32 * time / 1024)), 0, 0});
  }
  const auto lines = Amplitudes(samples).lines;
  EXPECT_NEAR(lines[32].x, 1, 0.02);
  EXPECT_LT(lines[24].x, 0.01) << "else 0.08";
  EXPECT_LT(lines[40].x, 0.01);
}

TEST(Spectrum, TheSizeIsThatOfTheGridWithItsMissingSamples) {
  auto samples = Noise(257);
  samples.erase(samples.begin() + 100);
  EXPECT_EQ(Amplitudes(samples).lines.size(), 257);
}

TEST(Spectrum, TimesWithoutAGridGiveTheReason) {
  auto samples = Noise(300);
  samples[7].time = samples[6].time;
  const TSpectrum none = Amplitudes(samples);
  EXPECT_EQ(none.problem, TSpectrumProblem::NoGrid);
  EXPECT_TRUE(none.lines.empty());
  EXPECT_EQ(WhyNoSpectrum(none), "The times of the samples repeat or go back.");
}

TEST(Spectrum, ANaNSpoilsItsAxisAndTheTotalOnly) {
  auto samples = Noise(200);
  samples[7].zvalue = kNaN;
  for (const auto& [name, type] : kSpectrumTypes) {
    const TSpectrumLine line = CalcSpectrum(samples, type, TWeightingWindow::fwTukey).lines[20];
    EXPECT_TRUE(std::isfinite(line.x + line.y)) << name;
    EXPECT_TRUE(std::isnan(line.z) && std::isnan(line.total)) << name;
  }
}

TEST(Spectrum, TheUsersWindowWeighsByPlace) {
  const auto samples = Noise(256);
  const auto with = [&](const TWeightingFunction& window) {
    return CalcSpectrum(samples, TSpectrumType::PSD, TWeightingWindow::fwUserDef, window);
  };
  const auto triangle = CalcSpectrum(samples, TSpectrumType::PSD, TWeightingWindow::fwTriangle);
  const auto own = with([](double place) { return place < 0.5 ? 2 * place : 2 - 2 * place; });
  EXPECT_DOUBLE_EQ(own.lines[17].total, triangle.lines[17].total);
  EXPECT_EQ(with([](double) { return 0.0; }).problem, TSpectrumProblem::NoWeight);
  EXPECT_EQ(with([](double) { return double{kNaN}; }).problem, TSpectrumProblem::NoWeight);
  EXPECT_THROW(with({}), std::invalid_argument);
}

}  // namespace
