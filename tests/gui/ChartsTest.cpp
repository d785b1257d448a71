// The charts without the window: what they show of a model, and what mouse, wheel and keys make of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <cfloat>
#include <set>

#include "base/uDateTime.h"
#include "gui/charts/uDateTicker.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "tests/support/uChartHands.h"

using testing::ElementsAre;

namespace {

// Ten events a minute apart, from 10 to 100 g.
class Chart : public testing::Test {
 protected:
  Chart() {
    for (int i = 0; i < 10; ++i) FPeaks.push_back({i * kMinute, 10.0F * static_cast<float>(i + 1)});
    FChart.SetEvents(Events(FPeaks), {});
    Show(FChart);
    FMiddle = MiddleOf(FChart);
  }
  void ExpectFull() const { ExpectRange(FChart, 0, 9 * kMinute); }

  TSamples FPeaks;
  TEventsChart FChart;
  QPoint FMiddle;
};

TEST_F(Chart, ShowsTheWholeSpanAndOneInstantWithASecondEachSide) {
  ExpectFull();
  FChart.SetEvents(Events({{5000, 1}}), {});
  ExpectRange(FChart, 4000, 6000);
  EXPECT_EQ(FChart.Range().Times(), FChart.Range().Full());
}

TEST_F(Chart, RecordingSpanWidensButNeverCutsTheData) {
  FChart.Range().SetRecordingSpan({At(-kMinute), At(kMinute)});
  ExpectRange(FChart, -kMinute, 9 * kMinute);
  FChart.Clear();
  const auto empty = FChart.Range().Times();
  FChart.Range().SetRecordingSpan({At(0), At(kMinute)});
  EXPECT_EQ(FChart.Range().Times(), empty);
}

TEST_F(Chart, AltWithArrowsGoesBackAndForwardThroughTheZooms) {
  QSignalSpy ranges(&FChart, &TTimeChart::TimeRangeChanged);
  FChart.Range().ChangeTimes({At(kMinute), At(5 * kMinute)});
  QTest::keyClick(&FChart, Qt::Key_Left, Qt::AltModifier);
  ExpectFull();
  QTest::keyClick(&FChart, Qt::Key_Left, Qt::AltModifier);
  ExpectFull();
  QTest::keyClick(&FChart, Qt::Key_Right, Qt::AltModifier);
  ExpectRange(FChart, kMinute, 5 * kMinute);
  EXPECT_EQ(ranges.count(), 3) << "each one is signalled";
}

TEST_F(Chart, ZoomEndsInBothDirections) {
  const TEventList oneEvent = Events({{0, 0}, {1, 5}, {2, 0}}, true);
  TSelectedEventChart milliseconds;
  milliseconds.ShowEvent(oneEvent, 0, {});
  Show(milliseconds);
  for (TTimeChart* chart : std::vector<TTimeChart*>{&FChart, &milliseconds}) {
    for (const QPoint& at : {MiddleOf(*chart), RectOf(*chart).rect().topLeft(), RectOf(*chart).rect().bottomRight()}) {
      for (const Qt::KeyboardModifiers held : {Qt::NoModifier, Qt::ControlModifier}) {
        for (int step = 0; step < 200; ++step) {
          Wheel(*chart, at, step < 100 ? 1 : -1, held);
          if (step % 100 == 99) ExpectSaneAxes(*chart);
        }
        EXPECT_EQ(chart->Range().Times(), chart->Range().Full()) << "there is nothing beyond the data";
      }
      chart->Range().Reset();
    }
  }
}

// However many calls made the change, and though axes may need other margins for it.
TEST_F(Chart, ReplotsOnceForAChange) {
  QSignalSpy replots(&FChart, &QCustomPlot::afterReplot);
  const std::vector<std::function<void()>> changes = {[this] { Wheel(FChart, FMiddle, 1); },
                                                      [this] {
                                                        FChart.SetEvents(Events(FPeaks), {});
                                                        FChart.Range().SetRecordingSpan({At(0), At(20 * kMinute)});
                                                        FChart.Range().SetTimes({At(0), At(5 * kMinute)});
                                                      },
                                                      [this] { QTest::keyClick(&FChart, Qt::Key_F); },
                                                      [this] { FChart.resize(790, 290); }};
  for (std::size_t i = 0; i < changes.size(); ++i) {
    replots.clear();
    changes[i]();
    Settle();
    EXPECT_EQ(replots.count(), 1) << i;
  }
  replots.clear();
  FChart.SetSelectedEvent(3);
  FChart.SetHoveredEvent(4);
  Settle();
  EXPECT_EQ(replots.count(), 0) << "marks are drawn on what is there";
}

TEST(EventsChart, AClickEmitsTheEventAndOfSeveralInOnePixelTheHighest) {
  // A pixel is about 700 ms.
  TEventsChart chart;
  chart.SetEvents(Events({{9 * kMinute, 50}, {0, 40}, {5 * kMinute, 30}, {5 * kMinute + 1, 60}, {1, 20}}), {});
  Show(chart);
  QSignalSpy clicked(&chart, &TEventsChart::EventClicked);
  // The outermost dots stand half outside the axes.
  for (const int x : {-2, 0, 2}) Click(chart, PointAt(chart, At(9 * kMinute), 50) + QPoint(x, 0));
  Click(chart, PointAt(chart, At(0), 40) - QPoint(2, 0));
  Click(chart, PointAt(chart, At(5 * kMinute), 30));
  Click(chart, PointAt(chart, At(2 * kMinute), 30));  // between events
  Click(chart, PointAt(chart, At(0), 60));            // above a dot
  std::vector<qulonglong> told;
  for (const auto& arguments : clicked) told.push_back(arguments[0].toULongLong());
  EXPECT_THAT(told, ElementsAre(0, 0, 0, 1, 3));
}

TEST(EventsChart, ALegendClickHidesASeriesAndItsEventsAnswerToNoClick) {
  TEventsChart chart;
  chart.SetEvents(Events({{0, 40}, {5 * kMinute, 30}}), {});  // both peak on x
  Show(chart);
  QSignalSpy clicked(&chart, &TEventsChart::EventClicked);
  QSignalSpy changed(&chart, &TEventsChart::SeriesVisibleChanged);
  ClickLegend(chart, 0);
  EXPECT_FALSE(chart.IsSeriesVisible(TSeries::X));
  const QPoint top = PointAt(chart, At(5 * kMinute), 30);
  Settle();
  Click(chart, top);
  EXPECT_EQ(clicked.count(), 1) << "the total stands there";
  ClickLegend(chart, 3);
  Settle();
  Click(chart, top);
  EXPECT_EQ(clicked.count(), 1);
  ClickLegend(chart, 0);
  Settle();
  Click(chart, top);
  EXPECT_EQ(clicked.count(), 2);
  EXPECT_EQ(changed.count(), 3);
}

TEST(SensorsChart, LegendClickHidesASensorWithItsAxisAndShowsItAgain) {
  const TSensorList sensors =
      Sensors({{"Temperature", {{0, 20}, {kMinute, 20}}}, {"Pressure", {}}, {"RH", {{0, 40}, {kMinute, 60}}}});
  TSensorsChart chart;
  chart.SetSensors(sensors, kStart);
  Show(chart);
  const auto expect = [&chart](int axes, bool humidity) {
    EXPECT_EQ(chart.IsSensorVisible(2), humidity);
    EXPECT_EQ(std::ranges::count_if(RectOf(chart).axes(QCPAxis::atLeft | QCPAxis::atRight), &QCPAxis::visible), axes);
    EXPECT_EQ(Ink(chart, Qt::blue, chart.rect()) > 300, humidity);
    EXPECT_GT(Ink(chart, Qt::red, chart.rect()), 300);
  };
  expect(2, true);
  ClickLegend(chart, 1);  // the pressure has no reading and so no entry
  expect(1, false);
  ClickLegend(chart, 1);
  expect(2, true);
}

TEST(SensorsChart, OfManySensorsOfOneNameOneStartsVisible) {
  std::vector<std::pair<const char*, TSamples>> readings(600, {"T", {{0, 20}, {kMinute, 21}}});
  readings.front().second.clear();
  TSensorsChart chart;
  chart.SetSensors(Sensors(readings), kStart);
  EXPECT_FALSE(chart.IsSensorVisible(0));
  EXPECT_TRUE(chart.IsSensorVisible(1));
  EXPECT_FALSE(chart.IsSensorVisible(2));
}

TEST(SensorsChart, WheelOverAnAxisZoomsItAloneAndWithControlAllValues) {
  const TSensorList sensors = Sensors({{"Temperature", {{0, 10}, {kMinute, 20}}}, {"RH", {{0, 40}, {kMinute, 60}}}});
  TSensorsChart chart;
  chart.SetSensors(sensors, kStart);
  Show(chart);
  QSignalSpy ranges(&chart, &TTimeChart::TimeRangeChanged);
  QCPAxis& temperature = *RectOf(chart).axis(QCPAxis::atLeft, 1);
  QCPAxis& humidity = *RectOf(chart).axis(QCPAxis::atRight, 0);
  const QCPRange degrees = temperature.range();
  const double percent = humidity.range().size();
  const QPoint over = RectOf(chart).rect().topRight() + QPoint(20, 40);
  const double pointed = humidity.pixelToCoord(over.y());
  Wheel(chart, over, 1);
  const double zoomed = humidity.range().size();
  EXPECT_LT(zoomed, percent);
  EXPECT_NEAR(humidity.pixelToCoord(over.y()), pointed, 1e-6);
  EXPECT_EQ(temperature.range(), degrees);
  Wheel(chart, MiddleOf(chart), 1, Qt::ControlModifier);
  EXPECT_LT(humidity.range().size(), zoomed);
  EXPECT_LT(temperature.range().size(), degrees.size());
  EXPECT_EQ(chart.Range().Times(), chart.Range().Full());
  EXPECT_EQ(ranges.count(), 0);
}

TEST(SelectedEventChart, DrawsEveryPeakAtEveryZoom) {
  TSamples samples(200000);  // 200 s; each peak is one sample
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i].ms = kMinute + static_cast<double>(i);
  samples[70001].value = 9;
  samples[130003].value = -7;
  const TEventList events = Events(samples, true);
  TSelectedEventChart chart;
  chart.ShowEvent(events, 0, {});
  Show(chart);
  for (const auto& [ms, g] : {std::pair(70001, 9), std::pair(130003, -7)}) {
    for (const double half : {250000.0, 100000.0, 33333.3, 5000.0, 700.0, 100.0, 7.0, 2.0}) {
      chart.Range().SetTimes({ms - half, ms + half * 1.1});
      const QPoint peak = PointAt(chart, ms, g);
      EXPECT_GT(Ink(chart, Qt::blue, {peak - QPoint(1, 1), peak + QPoint(1, 1)}), 0) << ms << " ± " << half;
    }
  }
}

TEST(SelectedEventChart, ClearReleasesTheModel) {
  TEventList events = Events({{0, 0}, {1, 5}, {2, 0}}, true);
  TSelectedEventChart chart;
  TSelectedEventChart fresh;
  Show(chart);
  Show(fresh);
  const QImage nothing = fresh.grab().toImage();
  chart.ShowEvent(events, 0, {});
  EXPECT_NE(chart.grab().toImage(), nothing);
  chart.Clear();
  events.Clear();
  Wheel(chart, MiddleOf(chart), 1);
  Move(chart, MiddleOf(chart), Qt::NoButton);
  EXPECT_EQ(chart.grab().toImage(), nothing);
}

// As many as can be read, in order and within the axis; their labels tell them apart.
void ExpectSaneTicks(const TTimeChart& chart) {
  for (const QCPAxis* axis : RectOf(chart).axes()) {
    if (!axis->visible() || !axis->tickLabels()) continue;
    const QVector<double> ticks = axis->tickVector();
    const QVector<QString> labels = axis->tickVectorLabels();
    EXPECT_LE(ticks.size(), 40);
    EXPECT_TRUE(std::ranges::is_sorted(ticks));
    std::set<QString> told;
    for (qsizetype i = 0; i < ticks.size(); ++i) {
      EXPECT_TRUE(std::isfinite(ticks[i]));
      if (axis->range().contains(ticks[i]) && !labels[i].isEmpty() && axis->axisType() != QCPAxis::atBottom) {
        EXPECT_TRUE(told.insert(labels[i]).second) << labels[i].toStdString();
      }
    }
  }
}

class AnyData : public testing::TestWithParam<TSamples> {};

TEST_P(AnyData, HasFiniteAxesInEveryChart) {
  const TEventList events = Events(GetParam());
  const TEventList oneEvent = Events(GetParam(), true);
  const TSensorList sensors = Sensors({{"Temperature", GetParam()}, {"RH", GetParam()}});
  TEventsChart eventsChart;
  TSensorsChart sensorsChart;
  TSelectedEventChart selectedEventChart;
  TNavigatorChart navigator;
  TNavigatorChart withoutSensor;
  TSensorsChart noSensors;
  withoutSensor.SetMission(events, {});
  noSensors.SetSensors({}, kStart);
  eventsChart.SetEvents(events, {});
  sensorsChart.SetSensors(sensors, kStart);
  selectedEventChart.ShowEvent(oneEvent, 0, {});
  navigator.SetMission(events, sensors);
  for (TTimeChart* chart : std::vector<TTimeChart*>{&eventsChart, &sensorsChart, &selectedEventChart, &navigator,
                                                    &withoutSensor, &noSensors}) {
    Show(*chart);
    for (const Qt::KeyboardModifiers held : {Qt::NoModifier, Qt::ControlModifier}) {
      ExpectSaneAxes(*chart);
      Wheel(*chart, MiddleOf(*chart), 5, held);
      Move(*chart, MiddleOf(*chart), Qt::NoButton);
      Click(*chart, MiddleOf(*chart));
      chart->Gestures().StepCursors();
      ExpectSaneTicks(*chart);
    }
    ExpectSaneAxes(*chart);
    for (const QStringList& row : chart->VisibleStatistics().rows) EXPECT_FALSE(row.contains("nan"));
    for (const Qt::Key key : {Qt::Key_F, Qt::Key_C, Qt::Key_Home, Qt::Key_End, Qt::Key_Minus, Qt::Key_Left}) {
      QTest::keyClick(chart, key);
    }
    ExpectSaneAxes(*chart);
  }
}

const TSamples kData[] = {{},
                          {{7, 5}},
                          {{0, 5}, {1, 5}, {9, 5}},
                          {{0, kNaN}, {9, kNaN}},
                          {{0, kInfinity}, {9, -kInfinity}},
                          {{0, 1}, {3, kNaN}, {6, kInfinity}, {9, 2}},
                          {{0, 1e-30F}, {9, 1e30F}},
                          {{0, 1e-30F}, {9, 2e-30F}},
                          {{0, -FLT_MAX / 2}, {9, FLT_MAX / 2}},
                          {{5, 1}, {5, 2}, {5, 3}},
                          {{9, 1}, {0, 2}, {5, 3}},
                          {{0, 1}, {double{kNaN}, 2}, {double{kInfinity}, 3}, {9, 4}},
                          {{double{kNaN}, 1}, {-double{kInfinity}, 2}},
                          {{-1e300, 1}, {0, 2}, {1e300, 3}},
                          {{-1e15, 1}, {1e15, 2}},
                          {{0, 1}, {1, kNaN}, {2, kNaN}, {2, 3}, {2, kNaN}, {1, 4}, {9, kNaN}},
                          {{0, 1000000}, {9, 1000000.06F}}};
INSTANTIATE_TEST_SUITE_P(Charts, AnyData, testing::ValuesIn(kData),
                         [](const auto& info) { return std::to_string(info.index); });

// By the seconds in sight.
class DateTicks : public testing::TestWithParam<double> {
 protected:
  DateTicks() { SetShortDateFormat("dd.mm.yyyy"); }
  ~DateTicks() override { SetShortDateFormat("yyyy-mm-dd"); }

  static QDateTime MomentOf(double dateTime) {
    return QDateTime({1899, 12, 30}, {}, Qt::UTC).addMSecs(std::llround(dateTime * kDay));
  }
  // Every part is the date or the time of day in the format, and what it leaves out is zero.
  static void ExpectLabel(const QString& label, const QDateTime& moment) {
    const QString time = moment.toString("HH:mm:ss.zzz");
    bool timed = false;
    for (const QString& part : label.split(QRegularExpression("[ \n]"), Qt::SkipEmptyParts)) {
      if (part == moment.toString("dd.MM.yyyy")) continue;
      timed = true;
      EXPECT_EQ(part + QString("00:00:00.000").mid(part.size()), time);
      EXPECT_GE(part.size(), 5);
    }
    EXPECT_TRUE(timed || label.isEmpty() || moment.time() == QTime(0, 0)) << label.toStdString();
  }
};

TEST_P(DateTicks, StandAtRoundTimesWithLabelsApart) {
  const double seconds = GetParam();
  TEventsChart eventsChart;
  TNavigatorChart navigator;
  eventsChart.SetEvents(Events({{0, 1}}), {});
  navigator.SetMission(Events({{0, 1}}), {});
  for (TTimeChart* chart : std::vector<TTimeChart*>{&eventsChart, &navigator}) {
    chart->Range().SetTimes({At(1234567.25), At(1234567.25 + seconds * 1000)});
    Show(*chart);
    const QCPAxis& axis = TimeOf(*chart);
    const QFontMetrics metrics(axis.tickLabelFont());
    QVector<double> ticks;
    QVector<QString> labels;
    axis.ticker()->generate(axis.range(), {}, 'g', 6, ticks, nullptr, &labels);
    ASSERT_EQ(ticks.size(), labels.size());
    EXPECT_GE(ticks.size(), seconds < 0.01 ? 1 : 2);
    EXPECT_LE(ticks.size(), 12);

    std::set<qint64> steps;
    double taken = 0;  // px, to the right end of the label before
    for (qsizetype i = 0; i < ticks.size(); ++i) {
      const QDateTime moment = MomentOf(ticks[i]);
      ExpectLabel(labels[i], moment);
      if (i > 0) steps.insert(MomentOf(ticks[i - 1]).msecsTo(moment));
      if (seconds > 400 * 86400) {
        EXPECT_EQ(moment.toString("dd HH:mm:ss.zzz"), "01 00:00:00.000");
      }
      if (labels[i].isEmpty()) continue;
      const double centre = axis.coordToPixel(ticks[i]);
      const double half = metrics.size(0, labels[i]).width() / 2.0;
      EXPECT_GE(centre - half, taken);
      taken = centre + half;
    }
    EXPECT_LE(taken, chart->width());
    if (seconds > 90 * 86400 || steps.empty()) continue;
    // Months differ; below them all steps are one, which fits a day wholly or is whole days.
    EXPECT_EQ(steps.size(), 1U);
    const qint64 day = 86400000;
    const qint64 step = *steps.begin();
    EXPECT_EQ(step < day ? day % step : step % day, 0) << step;
    EXPECT_EQ(MomentOf(ticks[0]).time().msecsSinceStartOfDay() % step, 0) << step;
  }
}

INSTANTIATE_TEST_SUITE_P(Spans, DateTicks,
                         testing::Values(0.001, 0.007, 0.1, 1, 7, 60, 1000, 3600, 20000, 86400, 3 * 86400, 9 * 86400,
                                         45 * 86400, 120 * 86400, 500 * 86400, 3653 * 86400, 10957.0 * 86400));

}  // namespace
