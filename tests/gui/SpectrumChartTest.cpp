// The spectrum of the selected event as bars over Hz.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <numbers>

#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uTheme.h"
#include "tests/support/uChartHands.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr double kPeriodMs = 1;  // so N = 512 samples have lines of 1000/512 Hz
constexpr std::size_t kCount = 512;
constexpr double kStep = 1000.0 / kCount;

// Sines on a line each: x of 3 g on line 64, y of 2 g on line 128, and a constant z of 50 g.
TEventList Sines(double lateBy = 0) {
  TEventList events;
  events.StartTime = kStart;
  events.NewEvent();
  for (std::size_t i = 0; i < kCount; ++i) {
    const double turn = 2 * std::numbers::pi * static_cast<double>(i) / kCount;
    const double ms = static_cast<double>(i) * kPeriodMs + (i == 7 ? lateBy : 0);
    events.AddValues(ms, static_cast<float>(3 * std::sin(64 * turn)), static_cast<float>(2 * std::cos(128 * turn)), 50);
  }
  return events;
}

class SpectrumChart : public testing::Test {
 protected:
  SpectrumChart() { Show(FChart); }
  std::string TextAt(double hertz, double value) {
    Move(FChart, PointAt(FChart, hertz, value), Qt::NoButton);
    return FTexts.back()[0].toString().toStdString();
  }

  TSpectrumChart FChart;
  QSignalSpy FTexts{&FChart, &TTimeChart::CursorValueChanged};
};

TEST_F(SpectrumChart, BarsStandAtTheirFrequenciesAndTheConstantPartDoesNotFlattenThem) {
  const TEventList events = Sines();
  FChart.ShowEvent(events, 0);
  Settle();
  EXPECT_NEAR(ValuesOf(FChart).range().upper, 3.3, 0.2);
  EXPECT_EQ(ValuesOf(FChart).range().lower, 0);
  EXPECT_THAT(TextAt(64 * kStep, 1), HasSubstr("125 Hz  ·  X 3 g  ·  Y "));
  const QPoint top = PointAt(FChart, 128 * kStep, 2);
  EXPECT_GT(Ink(FChart, Qt::red, {top + QPoint(-3, 2), QSize(7, 20)}), 15);
  EXPECT_LT(Ink(FChart, Qt::red, {top + QPoint(-3, -20), QSize(7, 17)}), 20) << "a part of the name at most";

  FChart.SetType(TSpectrumType::Decibel);
  Settle();
  EXPECT_NEAR(ValuesOf(FChart).range().upper, 20 * std::log10(3.0), 20);
  EXPECT_GT(ValuesOf(FChart).range().lower, -140) << "what is next to nothing is out of sight";
  EXPECT_EQ(ValuesOf(FChart).label(), "Level (dB re 1 g)");

  FChart.SetType(TSpectrumType::Power);
  Settle();
  ClickLegend(FChart, 0);
  EXPECT_FALSE(FChart.IsSeriesVisible(TSeries::X));
  EXPECT_NEAR(ValuesOf(FChart).range().upper, 2.1, 0.2) << "half of 2 g squared";
  FChart.SetSeriesVisible(TSeries::Y, false);
  FChart.SetSeriesVisible(TSeries::Z, false);
  ExpectSaneAxes(FChart);
}

TEST_F(SpectrumChart, BarsThatShareAPixelShowTheirMaximum) {
  const TEventList events = Sines();
  FChart.ShowEvent(events, 0);
  FChart.SetWindow(TWeightingWindow::fwBlackman);
  for (const int width : {120, 800, 1600}) {
    FChart.resize(width, 300);
    Settle();
    const QPoint top = PointAt(FChart, 64 * kStep, 3);
    const QRect stem(top + QPoint(-4, 2), QSize(9, 30));
    EXPECT_GT(Ink(FChart, Qt::blue, stem), 10) << width;
  }
  FChart.Range().SetTimes({120, 130});
  const QPoint top = PointAt(FChart, 64 * kStep, 3);
  const double width = TimeOf(FChart).coordToPixel(kStep) - TimeOf(FChart).coordToPixel(0);
  EXPECT_GT(Ink(FChart, Qt::blue, {top - QPoint(static_cast<int>(width / 2), 2), QSize(static_cast<int>(width), 5)}),
            static_cast<int>(width * 0.9))
      << "one step";
}

TEST_F(SpectrumChart, NoSeriesHidesAnother) {
  TEventList events;
  events.StartTime = kStart;
  events.NewEvent();
  for (std::size_t i = 0; i < kCount; ++i) {
    const auto wave = static_cast<float>(std::sin(64 * 2 * std::numbers::pi * static_cast<double>(i) / kCount));
    events.AddValues(static_cast<double>(i) * kPeriodMs, wave, 2 * wave, 3 * wave);
  }
  FChart.ShowEvent(events, 0);
  FChart.Range().SetTimes({120, 130});
  Settle();
  int g = 1;
  for (const TSeries series : {TSeries::X, TSeries::Y, TSeries::Z}) {
    const QColor ink = InkOn(FChart.palette(), QColor(DefaultSettings().display.accelerationColours[Place(series)]));
    const QPoint top = PointAt(FChart, 64 * kStep, g++);
    EXPECT_GT(Ink(FChart, ink, {top - QPoint(30, 2), QSize(60, 5)}), 50) << Place(series);
  }
  EXPECT_EQ(FChart.Labels().Boxes().size(), 3U) << "each names its peak";
  FChart.SetSeriesVisible(TSeries::Y, false);
  Settle();
  EXPECT_EQ(FChart.Labels().Boxes().size(), 2U);
}

TEST_F(SpectrumChart, LogarithmicAxesSpreadLowFrequenciesAndSmallLinesAndZoomByFactors) {
  const TEventList events = Sines();
  FChart.ShowEvent(events, 0);
  FChart.SetSeriesVisible(TSeries::Z, false);
  FChart.SetLogFrequencies(true);
  FChart.SetLogValues(true);
  Settle();
  const auto x = [this](double hertz) { return TimeOf(FChart).coordToPixel(hertz); };
  EXPECT_NEAR(x(20) - x(10), x(200) - x(100), 1e-6);
  EXPECT_DOUBLE_EQ(FChart.Range().Times().start, kStep / 2) << "0 Hz has no place";
  EXPECT_NEAR(ValuesOf(FChart).range().lower, 3e-6, 1e-6) << "the noise of the calculation is out of sight";
  EXPECT_THAT(TextAt(64 * kStep, 1), HasSubstr("125 Hz  ·  X 3 g"));

  const TTimeSpan before = FChart.Range().Times();
  QTest::keyClick(&FChart, Qt::Key_Plus);
  EXPECT_GT(FChart.Range().Times().start, before.start);
  QTest::keyClick(&FChart, Qt::Key_Minus);
  EXPECT_NEAR(FChart.Range().Times().start, before.start, 1e-9);
  const double ratio = before.end / before.start;
  QTest::keyClick(&FChart, Qt::Key_Plus);
  const TTimeSpan zoomed = FChart.Range().Times();
  QTest::keyClick(&FChart, Qt::Key_Right);
  const TTimeSpan moved = FChart.Range().Times();
  EXPECT_NEAR(moved.end / moved.start, zoomed.end / zoomed.start, ratio * 1e-9);
  for (int i = 0; i < 100; ++i) QTest::keyClick(&FChart, Qt::Key_Left);
  EXPECT_GE(FChart.Range().Times().start, before.start);
  ExpectSaneAxes(FChart);

  FChart.SetType(TSpectrumType::Decibel);
  EXPECT_LT(ValuesOf(FChart).range().lower, 0) << "decibels keep equal steps";
  FChart.SetLogFrequencies(false);
  EXPECT_DOUBLE_EQ(FChart.Range().Times().start, -kStep / 2);
  FChart.Clear();
  FChart.SetLogFrequencies(true);
  ExpectSaneAxes(FChart);
}

TEST_F(SpectrumChart, WithoutASpectrumItSaysWhyAndNothingIsDrawn) {
  const TEventList uneven = Sines(0.2);
  FChart.ShowEvent(uneven, 0);
  EXPECT_THAT(TitleOf(FChart), StartsWith("Event 0 · times off the grid by up to 0.2 sample · "));
  const TEventList goingBack = Sines(2);
  FChart.ShowEvent(goingBack, 0);
  EXPECT_EQ(FChart.Spectrum().problem, TSpectrumProblem::NoGrid);
  const TEventList single = Events({{0, 1}});
  for (const std::size_t index : {std::size_t{0}, std::size_t{1}}) {
    FChart.ShowEvent(single, index);
    EXPECT_TRUE(FChart.Spectrum().lines.empty());
    EXPECT_EQ(TextAt(0.5, 0.5), "");
    ExpectSaneAxes(FChart);
  }
  TEventList gap = Sines();
  gap.AddValues(512, kNaN, 1, 1);
  FChart.ShowEvent(gap, 0);
  Settle();
  EXPECT_THAT(TextAt(100, 1), HasSubstr("X –"));
  ExpectSaneAxes(FChart);
}

TEST_F(SpectrumChart, NothingIsComputedOutOfSight) {
  const TEventList events = Sines();
  FChart.hide();
  FChart.ShowEvent(events, 0);
  EXPECT_TRUE(FChart.Spectrum().lines.empty());
  FChart.show();
  EXPECT_FALSE(FChart.Spectrum().lines.empty());
  FChart.hide();
  FChart.Clear();
  FChart.show();
  EXPECT_TRUE(FChart.Spectrum().lines.empty());
}

TEST_F(SpectrumChart, AnotherWindowOrTypeKeepsTheViewAndSlowEventsHaveTheirOwn) {
  const TEventList events = Sines();
  FChart.ShowEvent(events, 0);
  FChart.Range().SetTimes({100, 150});
  QTest::keyClick(&FChart, Qt::Key_C);
  FChart.SetWindow(TWeightingWindow::fwHamming);
  FChart.SetType(TSpectrumType::Decibel);
  EXPECT_EQ(FChart.Range().Times(), (TTimeSpan{100.0, 150.0}));
  EXPECT_TRUE(FChart.Cursors().Times()[0].has_value());
  EXPECT_LT(ValuesOf(FChart).range().lower, 0);
  TSamples slow;
  for (int i = 0; i < 200; ++i) slow.push_back({i * 1e6, static_cast<float>(i % 5)});
  const TEventList slowEvents = Events(slow, true);
  FChart.ShowEvent(slowEvents, 0);
  EXPECT_LT(FChart.Range().Full().end, 0.001) << "Hz";
}

}  // namespace
