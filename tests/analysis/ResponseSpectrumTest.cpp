#include "analysis/uResponseSpectrum.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <numbers>

namespace {

using std::numbers::pi;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TShockSamples Even(double rate, std::vector<double> x, std::vector<double> y = {}, std::vector<double> z = {}) {
  TShockSamples shock;
  shock.grid.stepMs = 1000 / rate;
  y.resize(x.size());
  z.resize(x.size());
  shock.x = std::move(x);
  shock.y = std::move(y);
  shock.z = std::move(z);
  return shock;
}

using TPulse = double (*)(double t);  // g, of 11 ms

double HalfSine(double t) {
  return 50 * std::sin(pi * t / 0.011);
}

const std::pair<const char*, TPulse> kPulses[] = {
    {"half-sine 10 g 11 ms", [](double t) { return HalfSine(t) / 5; }},
    {"half-sine 50 g 11 ms", HalfSine},
    {"terminal sawtooth 40 g 11 ms", [](double t) { return 40 * t / 0.011; }},
    {"trapezoid 50 g 11 ms, ramps 1.1 ms", [](double t) {
       return 50 * std::min({1.0, t / 0.0011, (0.011 - t) / 0.0011});
     }}};

TShockSamples Sampled(TPulse pulse, double rate) {
  std::vector<double> x;
  for (int i = 0; i <= std::lround(0.011 * rate); ++i) x.push_back(i / rate <= 0.011 ? pulse(i / rate) : 0);
  return Even(rate, x);
}

double Peak(const TShockSamples& shock, double hertz, const TResponseOptions& options) {
  return CalcResponseSpectrum(shock, std::array{hertz}, options).front().x;
}

TEST(ResponseSpectrum, EqualsIndependentCalculations) {
  std::ifstream file(TEST_DATA "/response-spectra.json");
  const nlohmann::json reference = nlohmann::json::parse(file);
  for (const auto& [name, pulse] : kPulses) {
    for (const double rate : {10000.0, 1600.0}) {
      const TShockSamples shock = Sampled(pulse, rate);
      for (const auto& [text, values] : reference.at(name).items()) {
        if (text == "deltaV_m_s" || std::stod(text) > rate / 4) continue;
        const auto& sampled = values.at(rate == 1600 ? "sampled_1600" : "sampled_10000");
        const double hertz = std::stod(text);
        const double maximax = sampled.at("maximax");
        const double pv = sampled.at("pv");
        const auto extreme = [&](const char* during, const char* after) {
          return std::max(sampled.at(during).get<double>(), sampled.at(after).get<double>());
        };
        const double near = 1e-9 * maximax;
        EXPECT_NEAR(Peak(shock, hertz, {}), maximax, near) << name << ' ' << rate << ' ' << text;
        EXPECT_NEAR(Peak(shock, hertz, {.sign = TResponseSign::Positive}), extreme("pri_pos", "res_pos"), near);
        EXPECT_NEAR(Peak(shock, hertz, {.sign = TResponseSign::Negative}), extreme("pri_neg", "res_neg"), near);
        EXPECT_NEAR(Peak(shock, hertz, {.response = TResponse::PseudoVelocity}), pv, 1e-9 * pv);
        if (pulse == HalfSine) {
          const double truth = values.at("truth").at("maximax");
          const double chords = std::pow(pi / (0.011 * rate), 2) / 12;  // the area between an arc and its chord
          EXPECT_NEAR(maximax, truth, truth * (1 - std::cos(pi * hertz / rate) + chords)) << "what the range allows";
        }
      }
    }
  }
}

TEST(ResponseSpectrum, ConstantAccelerationFromRestOvershoots) {
  const TShockSamples gravity = Even(1000, std::vector<double>(20000, 1.0));
  EXPECT_NEAR(Peak(gravity, 0.1, {}), 1.85876, 1e-5);
  EXPECT_NEAR(Peak(gravity, 50, {}), 1.85362, 1e-5);
  EXPECT_NEAR(Peak(gravity, 100, {}), 1.82427, 1e-5);
}

// A short pulse is a step of velocity v: the displacement's first extreme times ω is v·exp(−ζφ/√(1 − ζ²)), cos φ = ζ.
TEST(ResponseSpectrum, SlowOscillatorsSeeOnlyTheVelocityChange) {
  const TShockSamples pulse = Even(1000, {1});
  for (const double quality : {0.6, 5.0, 50.0}) {
    const double damping = 1 / (2 * quality);
    const double expected =
        kStandardGravity / 1000 * std::exp(-damping * std::acos(damping) / std::sqrt(1 - damping * damping));
    for (const double hertz : {1.001, 0.999, 0.1, 0.01, 0.001}) {
      const double tolerance = 20 * (hertz / 1000) * (hertz / 1000) + 1e-8;
      EXPECT_NEAR(Peak(pulse, hertz, {quality, TResponse::PseudoVelocity}) / expected, 1, tolerance) << hertz;
    }
  }
}

// Three axes with different pulses, so that the total is none of them.
TShockSamples ThreeAxes(double scale) {
  TShockSamples shock = Sampled(HalfSine, 2000);
  for (std::size_t i = 0; i < shock.Count(); ++i) {
    shock.x[i] *= scale;
    shock.y[i] = scale * std::sin(static_cast<double>(i));
    shock.z[i] = scale * (i == 3 ? 20 : -1);
  }
  return shock;
}

const std::vector<double> kFrequencies = OctaveFrequencies(5, 500, 12);

TEST(ResponseSpectrum, IsLinearAndSwapsItsSignsWithThoseOfTheSamples) {
  const auto one = CalcResponseSpectrum(ThreeAxes(1), kFrequencies, {.sign = TResponseSign::Positive});
  const auto turned = CalcResponseSpectrum(ThreeAxes(-3), kFrequencies, {.sign = TResponseSign::Negative});
  ASSERT_EQ(one.size(), kFrequencies.size());
  for (std::size_t i = 0; i < one.size(); ++i) {
    for (const auto value : {&TResponseLine::x, &TResponseLine::y, &TResponseLine::z, &TResponseLine::total}) {
      EXPECT_NEAR(turned[i].*value, 3 * (one[i].*value), 1e-12 * turned[i].total) << one[i].hertz;
    }
  }
}

TEST(ResponseSpectrum, ZerosBeforeAndBehindTheRecordChangeNothing) {
  TShockSamples padded = ThreeAxes(1);
  for (auto* axis : {&padded.x, &padded.y, &padded.z}) {
    axis->insert(axis->begin(), 7, 0.0);
    axis->resize(axis->size() + 5000);
  }
  for (const double quality : {5.0, 50.0}) {
    const auto one = CalcResponseSpectrum(ThreeAxes(1), kFrequencies, {quality});
    const auto other = CalcResponseSpectrum(padded, kFrequencies, {quality});
    for (std::size_t i = 0; i < one.size(); ++i) {
      EXPECT_NEAR(other[i].y, one[i].y, 1e-12) << one[i].hertz;
      EXPECT_NEAR(other[i].total, one[i].total, 1e-12);
    }
  }
}

TEST(ResponseSpectrum, TotalIsThatOfTheVectorHoweverTheAxesLie) {
  const TShockSamples shock = ThreeAxes(1);
  TShockSamples turned = shock;  // about (1, 1, 1), by an angle whose sines are rational
  for (std::size_t i = 0; i < shock.Count(); ++i) {
    turned.x[i] = (2 * shock.x[i] - shock.y[i] + 2 * shock.z[i]) / 3;
    turned.y[i] = (2 * shock.x[i] + 2 * shock.y[i] - shock.z[i]) / 3;
    turned.z[i] = (-shock.x[i] + 2 * shock.y[i] + 2 * shock.z[i]) / 3;
  }
  const auto one = CalcResponseSpectrum(shock, kFrequencies, {});
  const auto other = CalcResponseSpectrum(turned, kFrequencies, {});
  for (std::size_t i = 0; i < one.size(); ++i) {
    EXPECT_NEAR(other[i].total, one[i].total, 1e-12 * one[i].total);
    EXPECT_LE(one[i].total, std::hypot(one[i].x, one[i].y, one[i].z) * (1 + 1e-12));
  }
}

TEST(ResponseSpectrum, UnevenSamplesOfAPulseGiveNearlyWhatEvenOnesDo) {
  const double step = 1000 / 1600.0;
  const auto eventWith = [step](double shift) {
    TEvent event(0);
    for (int i = -20; i < 60; ++i) {
      const double ms = (i + ((i + 30) % 3 - 1) * shift) * step;
      event.AddValues(70000 + ms, static_cast<float>(ms > 0 && ms < 11 ? HalfSine(ms / 1000) : 0), 0, 0);
    }
    return event;
  };
  const auto at = [&](double shift, double hertz) {
    return Peak(PrepareShock(eventWith(shift).Values(), TBaseline::Before, 1), hertz, {});
  };
  EXPECT_NEAR(FitTimeGrid(eventWith(0.4).Values()).farthest, 0.4, 0.02);
  for (const double hertz : {80.0, 160.0}) {
    EXPECT_NEAR(at(0.4, hertz) / at(0, hertz), 1, 1 - std::cos(pi * hertz / 1600)) << hertz;
  }
}

TEST(ResponseSpectrum, FrequenciesOfOctavesMeetTenHertzAndTheirEnds) {
  const auto twelfths = OctaveFrequencies(10, 40, 12);
  ASSERT_EQ(twelfths.size(), 25);
  EXPECT_NEAR(twelfths[1], 10.59463, 1e-5);
  EXPECT_EQ(twelfths[12], 20);
  EXPECT_EQ(twelfths[24], 40);
  EXPECT_THAT(OctaveFrequencies(2.5, 10, 3), testing::SizeIs(7));
  for (const double bad : {0.0, -1.0, kNaN, std::numeric_limits<double>::infinity()}) {
    EXPECT_THAT(OctaveFrequencies(bad, 10, 3), testing::IsEmpty());
    EXPECT_THAT(OctaveFrequencies(1, bad, 3), testing::IsEmpty());
  }
}

TEST(ResponseSpectrum, ALineSaysHowFarItCanBeTrusted) {
  using enum TResponseRange;
  const TShockSamples shock = Sampled(HalfSine, 1600);
  const std::vector<double> hertz = {500, 160, 161, 400, 401, 0.0017, 0.0015, -5, kNaN};
  const auto lines = CalcResponseSpectrum(shock, hertz, {});
  const TResponseRange expected[] = {None, Valid, Rough, Rough, None, Valid, None, None, None};
  for (std::size_t i = 0; i < hertz.size(); ++i) {
    EXPECT_EQ(lines[i].range, expected[i]) << hertz[i];
    EXPECT_EQ(std::isnan(lines[i].x) && std::isnan(lines[i].total), expected[i] == None) << hertz[i];
  }
  EXPECT_NEAR(lines[2].x, Peak(shock, 161, {}), 0) << "whatever stands beside it";
  EXPECT_THROW(CalcResponseSpectrum(shock, hertz, {0.5}), std::invalid_argument);
  EXPECT_THAT(CalcResponseSpectrum({}, hertz, {}), testing::IsEmpty());
}

TEST(ResponseSpectrum, AnAxisThatIsNoNumberLeavesTheOthers) {
  TShockSamples shock = ThreeAxes(1);
  const auto whole = CalcResponseSpectrum(shock, kFrequencies, {});
  shock.y.assign(shock.Count(), kNaN);
  const auto lines = CalcResponseSpectrum(shock, kFrequencies, {});
  EXPECT_EQ(lines[9].x, whole[9].x);
  EXPECT_TRUE(std::isnan(lines[9].y) && std::isnan(lines[9].total));
}

TEST(ResponseSpectrum, EnvelopeTakesAtEachFrequencyTheEventsThatReachIt) {
  using enum TResponseRange;
  std::vector<TResponseLine> envelope = {{10, 1, 2, kNaN, kNaN, Valid}, {20, kNaN, kNaN, kNaN, kNaN, None}};
  AddToEnvelope(envelope, std::vector<TResponseLine>{{10, 3, 1, 5, 6, Rough}, {20, 4, 4, 4, 7, Rough}});
  AddToEnvelope(envelope, std::vector<TResponseLine>{{10, 2, 1, 4, 5, Valid}, {20, 9, 9, 9, 9, None}});
  EXPECT_EQ(envelope[0].x, 3);
  EXPECT_EQ(envelope[0].y, 2);
  EXPECT_EQ(envelope[0].z, 5);
  EXPECT_EQ(envelope[0].range, Rough);
  EXPECT_EQ(envelope[1].total, 7);
  EXPECT_EQ(envelope[1].range, Rough);
}

}  // namespace
