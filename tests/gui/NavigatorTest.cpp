// The navigator: its bands, and how they lead the charts of the window.
#include <QAbstractButton>
#include <QAction>
#include <QTest>

#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/common/uGrid.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

// Moves the band where the user wants it, and keeps it in `band`.
void Follow(TNavigatorChart& chart, TTimeSpan& band) {
  const auto follow = [&](const TTimeSpan& wanted) {
    band = wanted;
    chart.SetBand(wanted);
  };
  QObject::connect(&chart, &TNavigatorChart::BandDragging, &chart, follow);
  QObject::connect(&chart, &TNavigatorChart::BandResizing, &chart, follow);
}

TEST(Navigator, UsesTheChosenColourAndName) {
  TNavigatorChart chart;
  SetColour(chart, "A1", Qt::darkMagenta);
  SetNames(chart, {"Oil"});
  const TSensorList sensors = Sensors({{"A1", {{0, 1}, {kMinute, 9}}}});
  chart.SetMission({}, sensors);
  Show(chart);
  const int inked = Ink(chart, Qt::darkMagenta, chart.rect());
  const QImage named = chart.grab().toImage();
  SetNames(chart, {});
  EXPECT_NE(chart.grab().toImage(), named);
  SetColour(chart, "A1", Qt::darkGreen);
  EXPECT_LT(Ink(chart, Qt::darkMagenta, chart.rect()), inked - 300);
}

TEST(Navigator, AClickOnTheLegendHidesTheCurveOrTheTicksAndLeavesTheBand) {
  TNavigatorChart chart;
  SetColour(chart, "A1", Qt::darkMagenta);
  const TSensorList sensors = Sensors({{"A1", {{0, 1}, {kDay * 10, 9}}}});
  chart.SetMission(Events({{kDay * 5, 1}}), sensors);
  Show(chart);
  TTimeSpan band{kStart + 4, kStart + 6};
  Follow(chart, band);
  chart.SetBand(band);
  const auto curve = [&chart] {
    const QPoint at = PointAt(chart, kStart + 2.5, 3);
    return Ink(chart, Qt::darkMagenta, QRect(at - QPoint(4, 4), at + QPoint(4, 4)));
  };
  const auto tick = [&chart] {
    const QPoint foot(PointAt(chart, kStart + 5, 0).x(), RectOf(chart).rect().bottom() - 4);
    return Ink(chart, Qt::black, QRect(foot - QPoint(2, 2), foot + QPoint(2, 2)));
  };
  EXPECT_GT(curve(), 0);
  EXPECT_GT(tick(), 0);
  ClickLegend(chart, 0);
  EXPECT_EQ(curve(), 0);
  ClickLegend(chart, 1);
  EXPECT_EQ(tick(), 0);
  ClickLegend(chart, 0);
  EXPECT_GT(curve(), 0);
  EXPECT_EQ(band, (TTimeSpan{kStart + 4, kStart + 6}));
}

TEST(Navigator, KeysMoveAndResizeTheBandWithinTheData) {
  TNavigatorChart chart;
  chart.SetMission(Events({{0, 1}, {kDay * 10, 2}}), {});
  Show(chart);
  TTimeSpan band{0, 0};
  Follow(chart, band);
  const auto press = [&](Qt::Key key, double from, double to) {
    chart.SetBand({kStart + 4, kStart + 6});
    QTest::keyClick(&chart, key);
    EXPECT_NEAR(band.start, kStart + from, kSame) << key;
    EXPECT_NEAR(band.end, kStart + to, kSame) << key;
  };
  press(Qt::Key_Right, 4.2, 6.2);
  press(Qt::Key_Left, 3.8, 5.8);
  press(Qt::Key_Home, 0, 2);
  press(Qt::Key_End, 8, 10);
  press(Qt::Key_Plus, 4.2, 5.8);
  press(Qt::Key_Minus, 3.75, 6.25);
  press(Qt::Key_F, 0, 10);
}

TEST(Navigator, EscapeRestoresTheBandThatIsBeingDragged) {
  TNavigatorChart chart;
  chart.SetMission(Events({{0, 1}, {kDay * 10, 2}}), {});
  Show(chart);
  TTimeSpan band{0, 0};
  Follow(chart, band);
  for (const double pressed : {5.0, 9.0}) {  // in the band and beside it
    chart.SetBand({kStart + 4, kStart + 6});
    QTest::mousePress(&chart, Qt::LeftButton, {}, PointAt(chart, kStart + pressed, 0));
    Move(chart, PointAt(chart, kStart + 7.5, 0), Qt::LeftButton);
    EXPECT_NE(band, (TTimeSpan{kStart + 4, kStart + 6}));
    QTest::keyClick(&chart, Qt::Key_Escape);
    EXPECT_EQ(band, (TTimeSpan{kStart + 4, kStart + 6}));
    Move(chart, PointAt(chart, kStart + 2, 0), Qt::LeftButton);
    EXPECT_EQ(band, (TTimeSpan{kStart + 4, kStart + 6}));
  }
}

TEST(Navigator, ADragBesideTheBandOrOverAWholeOneDrawsANewBand) {
  TNavigatorChart chart;
  chart.SetMission(Events({{0, 1}, {kDay * 10, 2}}), {});
  Show(chart);
  TTimeSpan band{0, 0};
  Follow(chart, band);
  const auto expect = [&](double start, double end) {
    EXPECT_NEAR(band.start, kStart + start, 0.05);
    EXPECT_NEAR(band.end, kStart + end, 0.05);
  };
  for (const TTimeSpan& before : {TTimeSpan{kStart + 4, kStart + 6}, TTimeSpan{kStart, kStart + 10}}) {
    chart.SetBand(before);
    Drag(chart, PointAt(chart, kStart + 9, 0), PointAt(chart, kStart + 7, 0));
    expect(7, 9);
  }
  chart.SetBand({kStart + 4, kStart + 6});
  Click(chart, PointAt(chart, kStart + 8, 0));
  expect(7, 9);
  QTest::mouseDClick(&chart, Qt::LeftButton, {}, PointAt(chart, kStart + 8, 0));
  expect(0, 10);
}

class NavigatorInWindow : public TWindowTest {
 protected:
  [[nodiscard]] TTimeSpan Band() const { return FForm->Flow().Mission().Band; }
  TTimeSpan SpanOf(const char* band) {
    const auto* object = Find<QObject>(band);
    return {object->property("start").toDouble(), object->property("end").toDouble()};
  }
  bool Shows(const char* band) { return Find<QObject>(band)->property("visible").toBool(); }
};

TEST_F(NavigatorInWindow, TheNavigatorsBandLeadsTheChartsAndFollowsOnlyWhenSynced) {
  Start(Save("three.kshock", ThreeEvents()));  // two minutes
  auto* events = Find<TTimeChart>("Chart1");
  auto* sensors = Find<TTimeChart>("ChartAllSensors");
  auto* navigator = Find<TNavigatorChart>("ChartNavigator");
  const auto whole = Band();
  EXPECT_EQ(navigator->DataSpan(), whole);
  EXPECT_EQ(events->Range().Times(), whole);
  Press("Shift+I");
  EXPECT_NEAR(Band().Width(), 1.0 / 1440, 1e-9);
  for (int step = 0; step < 3; ++step) Press("Ctrl+Right");
  EXPECT_EQ(Band().end, whole.end);
  for (const char* chart : {"Chart1", "Chart20", "ChartAllSensors"}) {
    EXPECT_EQ(Find<TTimeChart>(chart)->Range().Times(), Band()) << chart;
  }

  // By the mouse: the middle of the second half, dragged beyond the begin.
  const QPoint from(navigator->width() * 3 / 4, navigator->height() / 2);
  QTest::mousePress(navigator, Qt::LeftButton, {}, from);
  QMouseEvent move(QEvent::MouseMove, QPointF(-50, from.y()), navigator->mapToGlobal(QPointF(-50, from.y())),
                   Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(navigator, &move);
  QTest::mouseRelease(navigator, Qt::LeftButton, {}, from);
  EXPECT_EQ(Band().start, whole.start);
  EXPECT_NEAR(Band().Width(), 1.0 / 1440, 1e-9);
  EXPECT_EQ(sensors->Range().Times(), Band());

  const auto before = Band();
  events->Range().ZoomTime(0.5, before.start);
  EXPECT_EQ(Band(), before) << "a zoom belongs to its chart";
  EXPECT_EQ(sensors->Range().Times(), before);
  EXPECT_TRUE(Shows("NavigatorBandUnSyncedView"));
  EXPECT_EQ(SpanOf("NavigatorBandUnSyncedView"), events->Range().Times());
  Press("Ctrl+E");  // Esc answers the question
  EXPECT_EQ(Band(), before);
  Find<QAbstractButton>("chboxDialogConfirmationsSync")->click();
  Press("Ctrl+E");
  EXPECT_EQ(Band(), events->Range().Times());
  EXPECT_EQ(sensors->Range().Times(), Band());
  EXPECT_FALSE(Shows("NavigatorBandUnSyncedView"));
  EXPECT_THAT(std::exchange(FBoxes, {}), ElementsAre(HasSubstr("sync the navigator")));
}

TEST_F(NavigatorInWindow, TheBandsAreHiddenWithoutARecording) {
  const auto shown = [this] {
    std::vector<std::string> names;
    for (const char* band : {"NavigatorBand", "NavigatorBandLeft", "NavigatorBandRight", "NavigatorBandUnSyncedView"}) {
      if (Shows(band)) names.push_back(band);
    }
    return names;
  };
  Start();
  EXPECT_THAT(shown(), testing::IsEmpty());
  emit Find<TNavigatorChart>("ChartNavigator")->BandDragging({1, 2});
  FForm->Flow().Open(Save("three.kshock", ThreeEvents()).toStdString());
  Settle();
  EXPECT_THAT(shown(), ElementsAre("NavigatorBand", "NavigatorBandLeft", "NavigatorBandRight"));
  FForm->Flow().Open(Save("none.kshock", TBytes{1, 2, 3}).toStdString());
  Settle();
  EXPECT_THAT(shown(), testing::IsEmpty());
  FBoxes.clear();
}

struct TShortRecording {
  const char* name;
  double start;                             // a date-time
  std::vector<std::vector<double>> events;  // ms of the samples
};
class ShortRecording : public NavigatorInWindow, public testing::WithParamInterface<TShortRecording> {
 protected:
  ShortRecording() {
    std::vector<TTestRecord> records;
    for (const std::vector<double>& event : GetParam().events) {
      for (const double ms : event) records.push_back({ms, {9, 0, 0}});
      records.push_back({event.back(), {kEnd, kEnd, kEnd}});
    }
    Start(Save("short.kshock", TTestRecording()
                                   .Creator()
                                   .StartTime(GetParam().start)
                                   .MissionHeader(2, 2)
                                   .Channels({"ACC x", "ACC y", "ACC z"})
                                   .Data(records)));
    Find<QAbstractButton>("chboxDialogConfirmationsSync")->click();
  }
  void ExpectSynced(const std::string& after) {
    EXPECT_LT(Band().start, Band().end) << after;
    for (const char* chart : {"Chart1", "Chart20", "ChartAllSensors"}) {
      EXPECT_EQ(Find<TTimeChart>(chart)->Range().Times(), Band()) << chart << " after " << after;
    }
    EXPECT_FALSE(Shows("NavigatorBandUnSyncedView")) << after;
    EXPECT_EQ(SpanOf("NavigatorBand"), Band()) << after;
    EXPECT_EQ(SpanOf("NavigatorBandLeft").end, Band().start) << after;
    EXPECT_EQ(SpanOf("NavigatorBandRight").start, Band().end) << after;
  }
};

TEST_P(ShortRecording, ChartsShowEveryBandExactly) {
  auto& navigator = *Find<TNavigatorChart>("ChartNavigator");
  const auto dragEdge = [&](double edge, int toPixel) {
    const QPoint from = PointAt(navigator, edge, 0);
    Drag(navigator, from, {toPixel, from.y()});
  };
  ExpectSynced("loading");
  const auto execute = [this](std::initializer_list<const char*> actions) {
    for (const char* action : actions) {
      Find<QAction>(action)->trigger();
      ExpectSynced(action);
    }
  };
  execute({"actNavSetIntMin", "actNavSetIntYear", "actNavSetIntHour", "actNavFwd", "actNavRwd", "actNavSetIntAll"});
  const TTimeSpan whole = Band();
  dragEdge(whole.start, 9999);
  ExpectSynced("dragging the left edge over the right");
  EXPECT_GT(Band().start, whole.start);
  dragEdge(Band().end, -9);
  ExpectSynced("dragging the right edge over the left");
  execute({"actNavRwd", "actNavRwd", "actNavFwd", "actNavFwd"});
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Plus, Qt::Key_Right, Qt::Key_Minus, Qt::Key_Left, Qt::Key_End}) {
    for (int times = 0; times < 9; ++times) QTest::keyClick(&navigator, key);
    ExpectSynced("key " + std::to_string(key));
  }
  for (int round = 0; round < 2; ++round) {
    emit Find<TGrid>("dbgMostImportant")->RowOpened(0);
    ExpectSynced("a double-click on an event");
    QTest::keyClick(&navigator, Qt::Key_F);
  }
  auto& events = *Find<TTimeChart>("Chart1");
  for (const int notches : {2, -1, 99}) {
    Wheel(events, MiddleOf(events), notches);
    EXPECT_TRUE(Shows("NavigatorBandUnSyncedView"));
    Press("Ctrl+E");
    ExpectSynced("syncing with a zoomed chart");
    execute({"actNavFwd", "actNavRwd"});
  }
  FForm->Flow().Reload();
  Settle();
  ExpectSynced("reloading");
}

INSTANTIATE_TEST_SUITE_P(Navigator, ShortRecording,
                         testing::Values(TShortRecording{"TenMilliseconds", 45123.25, {{0}, {7, 8, 10}}},
                                         TShortRecording{"OneEvent", 45123.25, {{0, 1, 2, 2.5}}},
                                         TShortRecording{"OnePoint", 45123.25, {{3}}},
                                         TShortRecording{"FarFromEveryCalendar", 1e8, {{0, 1}, {7000, 90000}}}),
                         [](const auto& info) { return info.param.name; });

}  // namespace
