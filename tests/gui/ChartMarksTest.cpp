// What the charts mark for the user: indicator, nearest sample, dots, alarm limits, colours and names; and what of it
// moves nothing else.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPainter>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <random>

#include "gui/charts/uEventDots.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/common/uTheme.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uTestRecording.h"

using testing::HasSubstr;

namespace {

const QColor kPink(0xC71585U);  // a white number can be read on it

// Pixels of exactly this colour, what smoothing mixes left out.
int Count(TTimeChart& chart, const QColor& colour, const QRect& within = QRect(0, 0, 800, 300)) {
  const QImage image = chart.grab().toImage();
  int count = 0;
  for (int y = within.top(); y <= within.bottom(); ++y) {
    for (int x = within.left(); x <= within.right(); ++x) {
      count += image.rect().contains(x, y) && image.pixelColor(x, y) == colour;
    }
  }
  return count;
}
QRect Around(const QPoint& at, int reach) {
  return {at - QPoint(reach, reach), at + QPoint(reach, reach)};
}
std::string LastText(const QSignalSpy& spy) {
  return spy.isEmpty() ? std::string() : spy.back()[0].toString().toStdString();
}

// One event of samples 10 ms apart that count from 0 to 10 g.
class EventChart : public testing::Test {
 protected:
  EventChart() {
    for (int i = 0; i <= 10; ++i) FSamples.push_back({i * 10.0, static_cast<float>(i)});
    FEvents = Events(FSamples, true);
    FChart.ShowEvent(FEvents, 0, {});
    Show(FChart);
  }
  [[nodiscard]] QPoint AtMs(double ms) { return {PointAt(FChart, ms, 0).x(), MiddleOf(FChart).y()}; }
  void ExpectIndicator(double ms) {
    ASSERT_TRUE(FChart.Marks().IndicatorTime().has_value());
    EXPECT_NEAR(*FChart.Marks().IndicatorTime(), ms, 0.2);
  }

  TSamples FSamples;
  TEventList FEvents;
  TSelectedEventChart FChart;
  QSignalSpy FTexts{&FChart, &TTimeChart::CursorValueChanged};
};

TEST_F(EventChart, IndicatorIsALineThatLeavesNoTrace) {
  const QImage before = FChart.grab().toImage();
  const QColor text = FChart.palette().color(QPalette::Text);
  const QPoint at = AtMs(35);
  const QRect line(at.x(), RectOf(FChart).rect().top() + 80, 1, 100);
  FChart.Marks().SetIndicatorVisible(true);
  QSignalSpy replots(&FChart, &QCustomPlot::afterReplot);
  Move(FChart, at, Qt::NoButton);
  EXPECT_GT(Count(FChart, text, line.adjusted(-1, 0, 1, 0)), 80);
  Leave(FChart);
  EXPECT_EQ(FChart.grab().toImage(), before);
  EXPECT_EQ(replots.count(), 0) << "it is drawn on what is there";
}

TEST_F(EventChart, NearestIsMeasuredOnTheScreen) {
  // Sample 5 is nearer in time, sample 9 on the screen.
  FChart.SetSeriesVisible(TSeries::Y, false);
  FChart.SetSeriesVisible(TSeries::Z, false);
  SetColour(FChart, TSeries::X, kPink);
  const QPoint sample = PointAt(FChart, 90, 9);
  const QPoint pointer = sample - QPoint(20, 20);
  Settle();
  const int without = Count(FChart, kPink, Around(sample, 7));
  FChart.Marks().SetNearestVisible(true);
  Move(FChart, pointer, Qt::NoButton);
  EXPECT_GT(Count(FChart, kPink, Around(sample, 7)), without + 5);
  Leave(FChart);
  EXPECT_EQ(Count(FChart, kPink, Around(sample, 7)), without);
}

TEST(NearestOnScreen, NoSampleIsNearerThanTheOneFound) {
  std::mt19937 random(3);
  std::vector<double> times;
  std::vector<float> values;
  double time = 0;
  for (int i = 0; i < 5000; ++i) {
    times.push_back(time += random() % 3 == 0 ? 0.5 : 0.01);
    values.push_back(i % 50 == 0 ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(random() % 8 * 40));
  }
  TExtents extents;
  extents.Set(values.size(), [&values](std::size_t i) { return values[i]; });
  for (int round = 0; round < 200; ++round) {
    const QPointF at(static_cast<double>(random() % 1000) - 50, static_cast<double>(random() % 400) - 50);
    const auto across = [&](std::size_t i) { return std::fabs(times[i] - at.x()); };
    const auto up = [&](std::size_t i) { return std::fabs(double{values[i]} - at.y()); };
    const auto atLeast = [&](std::size_t i) {
      return std::max(double{extents.BlockOf(i)->min} - at.y(), at.y() - double{extents.BlockOf(i)->max});
    };
    std::size_t start = 0;
    double min = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < times.size(); ++i) {
      if (across(i) < across(start)) start = i;
      if (std::hypot(across(i), up(i)) < min) min = std::hypot(across(i), up(i));
    }
    const auto found = NearestOnScreen(times.size(), start, across, up, atLeast);
    ASSERT_TRUE(found);
    EXPECT_NEAR(std::hypot(across(*found), up(*found)), min, 1e-9);
  }
}

TEST_F(EventChart, SamplesThatStandApartGetDots) {
  SetColour(FChart, TSeries::X, kPink);
  Settle();
  const QRect onSample = Around(PointAt(FChart, 50, 5), 2);
  const QRect between = Around(PointAt(FChart, 55, 5.5), 2);
  const int line = Count(FChart, kPink, between);
  FChart.SetPointsVisible(true);
  EXPECT_GT(Count(FChart, kPink, onSample), line + 5);
  EXPECT_EQ(Count(FChart, kPink, between), line);

  TSamples dense;
  for (int i = 0; i < 5000; ++i) dense.push_back({static_cast<double>(i), static_cast<float>(i % 7)});
  const TEventList events = Events(dense, true);
  FChart.ShowEvent(events, 0, {});
  const QImage dotted = FChart.grab().toImage();
  FChart.SetPointsVisible(false);
  EXPECT_EQ(FChart.grab().toImage(), dotted);
}

TEST_F(EventChart, ALockedIndicatorStaysInTheNextEventThatHasItsTime) {
  FChart.Marks().SetIndicatorVisible(true);
  FChart.Marks().SetIndicatorLocked(true);
  Click(FChart, AtMs(40));
  const TEventList others = Events({{5, 1}, {50, 2}, {90, 1}}, true);
  FChart.ShowEvent(others, 0, {});
  ExpectIndicator(40);
  const TEventList shorter = Events({{0, 1}, {30, 2}}, true);
  FChart.ShowEvent(shorter, 0, {});
  EXPECT_FALSE(FChart.Marks().IndicatorTime());
}

TEST_F(EventChart, ALowPlotHasItsReadingsAboveTheCurves) {
  FChart.resize(800, 150);
  Settle();
  const QImage before = FChart.grab().toImage();
  FChart.Marks().SetIndicatorVisible(true);
  const QPoint at = AtMs(35);
  Move(FChart, at, Qt::NoButton);
  const QImage pointed = FChart.grab().toImage();
  const QRect plot = RectOf(FChart).rect();
  const QRect beside(at.x() + 8, plot.top() + 2, plot.right() - at.x() - 10, plot.height() - 4);
  EXPECT_EQ(pointed.copy(beside), before.copy(beside));
  EXPECT_NE(pointed.copy(0, 0, 800, plot.top()), before.copy(0, 0, 800, plot.top()));
}

TEST_F(EventChart, CursorTextsFollowTheMasks) {
  FChart.SetSeriesVisible(TSeries::Y, false);
  FChart.SetSeriesVisible(TSeries::Z, false);
  ChangeDisplay(FChart, [](TDisplaySettings& display) {
    display.formats[static_cast<std::size_t>(TQuantity::Time)] = 7;          // "0.00"
    display.formats[static_cast<std::size_t>(TQuantity::Acceleration)] = 6;  // "0.0"
  });
  Move(FChart, AtMs(31), Qt::NoButton);
  EXPECT_EQ(LastText(FTexts), "30.00 ms  ·  X 3.0 g");
}

TEST_F(EventChart, TheTitleSaysHowManySamplesTheHighPassFilterLeaves) {
  FChart.SetHighPass(true);
  EXPECT_THAT(TitleOf(FChart), HasSubstr(" · high-passed; recorded peak 10 g · 10 g on X-pos"));
  for (const auto& [count, part] :
       {std::pair(150, "first 128 of 150 samples;"), {9510, "first 8,192 of 9,510 samples;"}}) {
    const TEventList events = Events(TSamples(static_cast<std::size_t>(count), {0, 1}), true);
    FChart.ShowEvent(events, 0, {});
    EXPECT_THAT(TitleOf(FChart), HasSubstr(part));
    FChart.Clear();
  }
}

TEST_F(EventChart, AlarmLimitsAreLinesWhileSet) {
  const QImage before = FChart.grab().toImage();
  SetLimits(FChart, {{TQuantity::Acceleration, {-6.0, 6.0}}});
  EXPECT_GT(
      Count(FChart, QColor(kLightTokens.alarm), Around(PointAt(FChart, 20, 6), 60).intersected(RectOf(FChart).rect())),
      20);
  EXPECT_LT(ValuesOf(FChart).range().lower, -6);
  SetLimits(FChart, {});
  EXPECT_EQ(FChart.grab().toImage(), before);
}

TEST(EventsChartMarks, AlarmLimitsAreDrawnAtTheirMagnitudeAndDoNotFlattenThePeaks) {
  TEventsChart chart;
  chart.SetEvents(Events({{0, 10}, {kMinute, 20}}), {});
  Show(chart);
  const auto lines = [&chart](double g) {
    return Count(chart, QColor(kLightTokens.alarm),
                 QRect(PointAt(chart, At(kMinute / 2), g) - QPoint(30, 1), QSize(60, 3)));
  };
  SetLimits(chart, {{TQuantity::Acceleration, {-6.0, 15.0}}});
  chart.grab();
  EXPECT_GT(lines(6), 20);
  EXPECT_GT(lines(15), 20);
  SetLimits(chart, {{TQuantity::Acceleration, {-1000.0, 1000.0}}});
  chart.grab();
  EXPECT_LT(ValuesOf(chart).range().upper, 30) << "far limits press nothing flat";
}

TEST(EventsChartMarks, AbsorbedPointsBecomeOneAtTheHighest) {
  // Ten events within a pixel, two alone.
  TSamples peaks = {{0, 90}, {20 * kMinute, 90}};
  for (int i = 0; i < 10; ++i) peaks.push_back({10 * kMinute + i, 40.0F + 0.1F * static_cast<float>(i % 7)});
  TEventsChart chart;
  chart.SetEvents(Events(peaks), {});
  SetColour(chart, TSeries::X, kPink);
  Show(chart);
  const QPoint group = PointAt(chart, At(10 * kMinute), 40.6);
  const QColor filled(StandOut(kPink.rgb() & 0xFFFFFF, 0xFFFFFF, kTextContrast));  // under a white number
  const int absorbed = Count(chart, filled, Around(group, 12));
  QSignalSpy clicked(&chart, &TEventsChart::EventClicked);
  Click(chart, group + QPoint(5, 0));
  SetAbsorption(chart, false);
  EXPECT_GT(absorbed, Count(chart, kPink, Around(group, 12)) + 20);
  ASSERT_EQ(clicked.count(), 1);
  EXPECT_EQ(clicked[0][0].toULongLong(), 2U + 6U);
}

TEST(EventsChartMarks, AGroupSaysItsRangeInTotalsAndIsRingedForEachOfItsEvents) {
  TEventList events;
  events.StartTime = kStart;
  // Peaks on x of 40, 41, 42 g; the second has the largest total, 58 g.
  for (const auto& [ms, y] : {std::pair(0.0, 0.0F), {1.0, 41.0F}, {2.0, 0.0F}, {20 * kMinute, 0.0F}}) {
    events.NewEvent();
    events.AddValues(ms, ms < kMinute ? 40 + static_cast<float>(ms) : 90, y, 0);
  }
  TEventsChart chart;
  chart.SetEvents(events, {});
  Show(chart);
  const QPoint group = PointAt(chart, At(2), 42);
  const IChartReadings& readings = chart;
  ASSERT_EQ(readings.ReadingsUnder(group).size(), 1U);
  EXPECT_EQ(readings.ReadingsUnder(group)[0].text.toStdString(), "3 events, 40 … 57.9828 g, worst: 1");
  const QColor ring = chart.palette().color(QPalette::Highlight);
  const QRect beside(group + QPoint(8, -4), QSize(6, 8));
  const int without = Ink(chart, ring, beside);
  for (const std::size_t event : {0UL, 1UL, 2UL}) {
    chart.SetSelectedEvent(event);
    EXPECT_GT(Ink(chart, ring, beside), without + 8) << event;
  }
  chart.SetSelectedEvent(3);
  EXPECT_EQ(Ink(chart, ring, beside), without);
}

// Hover, status bar and click use one hit test, so a number in one of them is that of all.
TEST(EventsChartMarks, HoverStatusBarAndClickNameTheSameEvent) {
  ReadFile(TEST_DATA "/stairs.kshock");
  ASSERT_GT(EventList.Count(), 100U);
  TEventsChart chart;
  chart.SetEvents(EventList, MissionData);
  Show(chart);
  const IChartReadings& readings = chart;
  const QRegularExpression event("(?:event|worst:) (\\d+)");
  const auto named = [&event](const QString& text) { return event.match(text).captured(1).toStdString(); };
  std::mt19937 random(7);
  const QRect rect = RectOf(chart).rect();
  int groups = 0;
  for (int round = 0; round < 1000; ++round) {
    const QPoint at(rect.left() + static_cast<int>(random() % static_cast<unsigned>(rect.width())),
                    rect.top() + static_cast<int>(random() % static_cast<unsigned>(rect.height())));
    QSignalSpy clicked(&chart, &TEventsChart::EventClicked);
    Click(chart, at);
    const std::string selected = clicked.isEmpty() ? "" : std::to_string(clicked[0][0].toULongLong());
    const auto hover = readings.ReadingsUnder(at);
    EXPECT_EQ(hover.empty() ? "" : named(hover.front().text), selected) << at.x() << ", " << at.y();
    EXPECT_EQ(named(readings.CursorText(at)), selected) << at.x() << ", " << at.y();
    groups += !hover.empty() && hover.front().text.contains(" events, ");
  }
  EXPECT_GT(groups, 10);
}

// At any size, with limits that nearly meet, and with hardly any height.
TEST(ChartLabels, NeverOverlapAndAxesNeverRunUpsideDown) {
  TSamples ramp;
  for (int i = 0; i <= 100; ++i) ramp.push_back({i * 10.0, static_cast<float>(i % 21) - 10});
  const TEventList one = Events(ramp, true);
  TMissionData mission;
  mission.bValid = true;
  mission.adxl_level_on = 4;
  mission.adxl_level_off = 3.9F;
  TEventsChart events;
  events.SetEvents(Events({{0, 3}, {kMinute, 20}, {2 * kMinute, 7}}), mission);
  SetLimits(events, {{TQuantity::Acceleration, {-4.1, 4.2}}});
  TSelectedEventChart selected;
  selected.ShowEvent(one, 0, mission);
  SetLimits(selected, {{TQuantity::Acceleration, {-4.0, 4.0}}});
  const TSensorList readings = Sensors({{"RH", {{0, 40}, {kMinute, 70}}}, {"Temperature", {{0, 18}, {kMinute, 30}}}});
  TSensorsChart sensors;
  sensors.SetSensors(readings, kStart);
  SetLimits(sensors, {{TQuantity::Humidity, {41, 60}}, {TQuantity::Temperature, {20, 25}}});
  for (TTimeChart* chart : std::vector<TTimeChart*>{&events, &selected, &sensors}) {
    for (const QSize size : {QSize(900, 600), QSize(452, 160), QSize(300, 60)}) {
      Show(*chart);
      chart->resize(size);
      chart->grab();
      const auto& boxes = chart->Labels().Boxes();
      EXPECT_TRUE(size.height() < 600 || boxes.size() >= 2);
      for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_TRUE(QRectF(RectOf(*chart).rect()).contains(boxes[i]));
        for (std::size_t k = 0; k < i; ++k) EXPECT_FALSE(boxes[i].intersects(boxes[k]));
      }
      const QCPAxis& values = ValuesOf(*chart);
      EXPECT_LT(values.coordToPixel(values.range().upper), values.coordToPixel(values.range().lower));
      EXPECT_GT(RectOf(*chart).rect().height(), 5);
    }
  }
  // The level that has no label is still said.
  const QString said = events.Labels().LevelAt(ValuesOf(events).coordToPixel(4.0));
  EXPECT_THAT(said.toStdString(), HasSubstr("trigger 4 g"));
}

TEST(ChartLabels, StandOffTheStemsOfEvents) {
  TMissionData mission;
  mission.bValid = true;
  mission.adxl_level_on = 4;
  TEventsChart chart;
  chart.SetEvents(Events({{0, 20}, {kMinute, 20}, {2 * kMinute, 20}, {20 * kMinute, 20}}), mission);
  Show(chart);
  chart.grab();
  const auto& boxes = chart.Labels().Boxes();
  ASSERT_EQ(boxes.size(), 1U);
  for (const double minute : {0, 1, 2, 20}) {
    const double x = TimeOf(chart).coordToPixel(At(minute * kMinute));
    EXPECT_TRUE(x < boxes[0].left() || x > boxes[0].right()) << minute;
  }
}

TEST(SensorsChartMarks, LimitsNameTheirSensorAndNoLineIsDrawnThatCannotBeCrossed) {
  const TSensorList readings = Sensors({{"L", {{0, 1}, {kMinute, 90}}}, {"RH", {{0, 40}, {kMinute, 70}}}});
  TSensorsChart chart;
  chart.SetSensors(readings, kStart);
  SetLimits(chart, {{TQuantity::Light, {0, 60}}, {TQuantity::Humidity, {0, 60}}});
  Show(chart);
  const auto said = [&chart](const QCPAxis& axis, double value) {
    return chart.Labels().LevelAt(axis.coordToPixel(value)).toStdString();
  };
  const QCPAxis& light = ValuesOf(chart);
  EXPECT_EQ(said(light, 0), "");
  EXPECT_THAT(said(light, 60), HasSubstr("Light 60 lux"));
  const QCPAxis& humidity = *RectOf(chart).axis(QCPAxis::atRight);
  EXPECT_THAT(said(humidity, 60), HasSubstr("Humidity 60 %RH"));
}

TEST(SensorsChartMarks, LinesBreakWhereReadingsAreFarApart) {
  TSamples samples;
  for (int i = 0; i < 100; ++i) samples.push_back({i * 1000.0, 20});
  for (int i = 0; i < 100; ++i) samples.push_back({200000 + i * 1000.0, 20});
  const TSensorList readings = Sensors({{"A1", samples}});
  TSensorsChart chart;
  SetColour(chart, "A1", kPink);
  chart.SetSensors(readings, kStart);
  Show(chart);
  EXPECT_GT(Ink(chart, kPink, Around(PointAt(chart, At(50000), 20), 3)), 0);
  EXPECT_EQ(Ink(chart, kPink, Around(PointAt(chart, At(150000), 20), 3)), 0);
}

// By the number of events; a crowd is drawn in another way.
class EventPoints : public testing::TestWithParam<int> {};

TEST_P(EventPoints, ShowEveryEventWithoutAbsorption) {
  std::mt19937 random(11);
  TSamples peaks;
  for (int i = 0; i < GetParam(); ++i) {
    peaks.push_back({std::generate_canonical<double, 32>(random) * 20 * kMinute,
                     static_cast<float>(std::generate_canonical<double, 32>(random) * 90 + 5)});
  }
  TEventsChart chart;
  chart.SetEvents(Events(peaks), {});
  SetColour(chart, TSeries::X, kPink);
  SetAbsorption(chart, false);
  Show(chart);
  const QImage image = chart.grab().toImage();
  // The axes are drawn over what stands at the edge.
  const QRect inside = RectOf(chart).rect().adjusted(2, 0, -2, 0);
  for (const auto& [ms, g] : peaks) {
    const QPoint point = PointAt(chart, At(ms), double{g});
    if (inside.contains(point) && image.pixelColor(point) != kPink) ADD_FAILURE() << ms << " ms, " << g << " g";
  }
}

INSTANTIATE_TEST_SUITE_P(Counts, EventPoints, testing::Values(800, 60000));

// Also over other dots, and where the picture cuts a dot.
TEST(DotStamp, GivesThePictureThatDrawingGives) {
  constexpr double kRadius = 4.5;
  const std::pair<QPointF, QRgb> dots[] = {{{20, 20}, 0xFF0000FF},
                                           {{23.25, 18.5}, 0xFFFF0000},
                                           {{12.75, 22}, 0xFF008000},
                                           {{0.5, 30.25}, 0xFF000000},
                                           {{39.5, 0}, 0xFF00FFFF}};
  QImage stamped(40, 40, QImage::Format_ARGB32_Premultiplied);
  stamped.fill(Qt::transparent);
  QImage drawn = stamped;
  QPainter painter(&drawn);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const TDotStamp stamp(stamped, kRadius);
  for (const auto& [middle, ink] : dots) {
    stamp.Press(middle, ink);
    painter.setBrush(QColor(ink));
    painter.drawEllipse(middle, kRadius, kRadius);
  }
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x) {
      const QColor is = stamped.pixelColor(x, y);
      const QColor was = drawn.pixelColor(x, y);
      EXPECT_NEAR(is.alpha(), was.alpha(), 40) << x << ' ' << y;
      if (was.alpha() == 255) {
        EXPECT_NEAR(is.red(), was.red(), 50) << x << ' ' << y;
      }
    }
  }
}

class SensorMarks : public testing::Test {
 protected:
  SensorMarks() {
    FChart.SetSensors(FSensors, kStart);
    Show(FChart);
  }
  QCPAxis& Temperature() { return *RectOf(FChart).axis(QCPAxis::atLeft, 1); }
  QCPAxis& Humidity() { return *RectOf(FChart).axis(QCPAxis::atRight, 0); }
  TSensorList FSensors = Sensors({{"Temperature", {{0, 10}, {kMinute, 20}}},
                                  {"RH", {{0, 40}, {kMinute, 60}}},
                                  {"A1", {{0, 5}, {kMinute, 5}}},
                                  {"A2", {{0, 6}, {kMinute, 9}}}});
  TSensorsChart FChart;
  const TTitledAxis& FAnalog = FChart.ValueAxis();
};

TEST_F(SensorMarks, DisplayNamesStandInTitlesAndCursorTexts) {
  QSignalSpy texts(&FChart, &TTimeChart::CursorValueChanged);
  SetNames(FChart, {"Oil", ""});
  FChart.grab();
  EXPECT_EQ(FAnalog.TitleText(), "Oil, A2");
  EXPECT_EQ(FAnalog.Title()[0].ink, InkOn(FChart.palette(), FChart.Sensors().Series()[2].look.colour));
  Move(FChart, MiddleOf(FChart), Qt::NoButton);
  EXPECT_THAT(LastText(texts), HasSubstr("Oil 5"));
  SetNames(FChart, {"Same", "Same"});
  FChart.grab();
  EXPECT_EQ(FAnalog.TitleText(), "Same");
  FChart.SetSensors(FSensors, kStart);
  SetNames(FChart, {});
  FChart.grab();
  EXPECT_EQ(FAnalog.TitleText(), "A1, A2");
}

TEST_F(SensorMarks, SeriesAndAxesHaveTheirOwnColours) {
  const QColor axisColour(0x2E8B57U);
  EXPECT_EQ(FAnalog.labelColor(), Qt::black);
  EXPECT_EQ(Temperature().labelColor(), Qt::red);
  EXPECT_EQ(Humidity().labelColor(), Qt::blue);
  SetColour(FChart, "A1", kPink);
  ChangeDisplay(FChart, [&](TDisplaySettings& display) {
    display.axisColours[static_cast<std::size_t>(TSensorAxis::LeftOuter)] = axisColour.rgb() & RGB_MASK;
  });
  EXPECT_EQ(Temperature().labelColor(), axisColour);
  EXPECT_EQ(FAnalog.labelColor(), Qt::black);
  const QRect inside = RectOf(FChart).rect().adjusted(2, 2, -2, -2);
  EXPECT_GT(Count(FChart, kPink, inside), 300);
  FChart.SetSensors(FSensors, kStart);
  EXPECT_GT(Count(FChart, kPink, inside), 300) << "colours stay from recording to recording";
}

TEST_F(SensorMarks, AxesAreLockedOneByOne) {
  const auto zoomAll = [this] { Wheel(FChart, MiddleOf(FChart), 1, Qt::ControlModifier); };
  const QCPRange degrees = Temperature().range();
  const QCPRange percent = Humidity().range();
  FChart.SetAxisLocked(TSensorAxis::LeftOuter, true);
  zoomAll();
  EXPECT_EQ(Temperature().range(), degrees);
  EXPECT_LT(Humidity().range().size(), percent.size());
  FChart.SetAxisLocked(TSensorAxis::LeftOuter, false);
  zoomAll();
  EXPECT_LT(Temperature().range().size(), degrees.size());
}

TEST_F(SensorMarks, AlarmLimitsAreLinesInTheColourOfTheSeries) {
  SetColour(FChart, "A2", kPink);
  FChart.SetSensorVisible(2, false);
  const auto ink = [this] {
    FChart.grab();
    const int y = static_cast<int>(FAnalog.coordToPixel(8));
    return Count(FChart, kPink, QRect(RectOf(FChart).rect().center().x() - 150, y - 1, 200, 5));
  };
  const int series = ink();
  SetLimits(FChart, {{TQuantity::A2, {-1.0, 8.0}}, {TQuantity::A1, {5.5, 7.0}}});
  EXPECT_GT(ink(), series + 60);
  SetLimits(FChart, {});
  EXPECT_EQ(ink(), series);
}

// However a chart looks, it shows the same span and values of the same event, and draws itself once for the change.
TEST_F(EventChart, AChangeOfColoursOrLimitsKeepsTheTimes) {
  TEventsChart events;
  events.SetEvents(Events(FSamples), {});
  Show(events);
  events.SetSelectedEvent(4);
  TSensorsChart sensors;
  const TSensorList list = Sensors({{"A1", FSamples}, {"RH", FSamples}});
  sensors.SetSensors(list, kStart);
  Show(sensors);
  const std::vector<std::pair<TTimeChart*, std::function<void()>>> changes = {
      {&events, [&] { SetAbsorption(events, false); }},
      {&events,
       [&] {
         SetLimits(events, {{TQuantity::Acceleration, {-6.0, 7.0}}});
       }},
      {&events, [&] { SetColour(events, TSeries::X, kPink); }},
      {&events, [&] { events.Marks().SetIndicatorVisible(true); }},
      {&events, [&] { ChangeDisplay(events, [](TDisplaySettings& display) { display.formats.fill(0); }); }},
      {&FChart,
       [&] {
         SetLimits(FChart, {{TQuantity::Acceleration, {-6.0, 7.0}}});
       }},
      {&FChart, [&] { FChart.SetSeriesVisible(TSeries::Total, true); }},
      {&FChart, [&] { FChart.SetSeriesVisible(TSeries::X, false); }},
      {&FChart, [&] { FChart.SetPointsVisible(true); }},
      {&FChart, [&] { FChart.Marks().SetNearestVisible(true); }},
      {&FChart, [&] { FChart.SetValueAxisLocked(true); }},
      {&sensors, [&] { SetColour(sensors, "A1", kPink); }},
      {&sensors,
       [&] { ChangeDisplay(sensors, [](TDisplaySettings& display) { display.axisColours.fill(0xFF69B4); }); }},
      {&sensors,
       [&] {
         SetLimits(sensors, {{TQuantity::A1, {1, 7}}});
       }},
      {&sensors, [&] { SetNames(sensors, {"B1"}); }}};
  for (TTimeChart* chart : std::vector<TTimeChart*>{&events, &FChart, &sensors}) {
    Wheel(*chart, MiddleOf(*chart), 2);
    Wheel(*chart, MiddleOf(*chart), 1, Qt::ControlModifier);
    Settle();
  }
  for (std::size_t i = 0; i < changes.size(); ++i) {
    TTimeChart& chart = *changes[i].first;
    const auto times = chart.Range().Times();
    const QCPRange values = ValuesOf(chart).range();
    QSignalSpy replots(&chart, &QCustomPlot::afterReplot);
    changes[i].second();
    Settle();
    EXPECT_EQ(chart.Range().Times(), times) << i;
    EXPECT_EQ(ValuesOf(chart).range(), values) << i;
    EXPECT_LE(replots.count(), 1) << i;
  }
  EXPECT_GT(Ink(events, events.palette().color(QPalette::Highlight), Around(PointAt(events, At(40), 4), 9)), 10)
      << "the event is still the selected one";
}

TEST(HiddenEvents, AreFaintStemsWithoutADotAndIgnoreClicks) {
  TEventsChart chart;
  chart.SetEvents(Events({{0, 5}, {kMinute, 5}, {2 * kMinute, 5}}), {});
  Show(chart);
  const QPoint middle = PointAt(chart, At(kMinute), 5);
  QSignalSpy clicked(&chart, &TEventsChart::EventClicked);
  for (const bool visible : {true, false, true}) {
    chart.SetVisibleEvents({true, visible, true});
    EXPECT_EQ(Count(chart, Qt::blue, Around(middle, 4)) > 10, visible);
    clicked.clear();
    Click(chart, middle);
    EXPECT_EQ(clicked.size(), visible ? 1 : 0);
  }
}

TEST(Peaks, AmongEqualTimesAtTheEndAndFarOutOfSightAreDrawnWhereTheyAre) {
  for (int i = 0; i < 40; ++i) {
    TSensorsChart chart;
    SetColour(chart, "A1", kPink);
    const double last = 1000.7 * (i + 1);
    const TSensorList list = Sensors({{"A1", {{0, 5}, {last, 5}, {last, 100}, {last, 5}}}});
    chart.SetSensors(list, kStart + i * 0.0137);
    Show(chart);
    const QPoint top(RectOf(chart).rect().right(), static_cast<int>(ValuesOf(chart).coordToPixel(80)));
    EXPECT_GT(Ink(chart, kPink, Around(top, 3)), 0) << i;
  }
  TSelectedEventChart far;
  const TEventList events = Events({{0, 0}, {10, -1e20F}, {20, 5}, {30, 5}}, true);
  far.ShowEvent(events, 0, {});
  Show(far);
  ValuesOf(far).setRange(-10, 10);
  far.replot();
  const int x = PointAt(far, 20, 0).x();
  EXPECT_GT(Ink(far, Qt::blue, {x - 2, PointAt(far, 20, 0).y(), 5, 40}), 20) << "from below";
  EXPECT_EQ(Ink(far, Qt::blue, {x - 2, PointAt(far, 20, 9).y(), 5, 20}), 0);
}

}  // namespace
