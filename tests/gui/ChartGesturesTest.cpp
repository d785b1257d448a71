// Cursors, statistics, menus and grid rows: what a person measures and where it takes the charts.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <map>

#include "base/uDateTime.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/common/uGrid.h"
#include "gui/filter/uFilterPanel.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

void RightClick(TTimeChart& chart, const QPoint& at) {
  QTest::mousePress(&chart, Qt::RightButton, {}, at);
  QContextMenuEvent menu(QContextMenuEvent::Mouse, at, chart.mapToGlobal(at));
  QCoreApplication::sendEvent(&chart, &menu);
  QTest::mouseRelease(&chart, Qt::RightButton, {}, at);
}
std::vector<std::string> Cells(const QStringList& row) {
  std::vector<std::string> cells;
  for (const QString& cell : row) cells.push_back(cell.toStdString());
  return cells;
}

// One event of samples 10 ms apart that count from 0 to 10 g on x.
class Measuring : public testing::Test {
 protected:
  Measuring() {
    TSamples samples;
    for (int i = 0; i <= 10; ++i) samples.push_back({i * 10.0, static_cast<float>(i)});
    FEvents = Events(samples, true);
    FChart.SetSeriesVisible(TSeries::Y, false);
    FChart.SetSeriesVisible(TSeries::Z, false);
    FChart.ShowEvent(FEvents, 0, {});
    Show(FChart);
    FReplots.clear();
  }
  [[nodiscard]] QPoint AtMs(double ms) { return {PointAt(FChart, ms, 0).x(), MiddleOf(FChart).y()}; }
  void PutAt(double ms) {
    Move(FChart, AtMs(ms), Qt::NoButton);
    QTest::keyClick(&FChart, Qt::Key_C);
  }
  void ExpectCursors(std::optional<double> a, std::optional<double> b) {
    EXPECT_EQ(FChart.Cursors().Times()[0], a);
    EXPECT_EQ(FChart.Cursors().Times()[1], b);
  }
  [[nodiscard]] std::string Told() const { return FTexts.back()[0].toString().toStdString(); }

  TEventList FEvents;
  TSelectedEventChart FChart;
  QSignalSpy FTexts{&FChart, &TTimeChart::CursorValueChanged};
  QSignalSpy FReplots{&FChart, &QCustomPlot::afterReplot};
};

TEST_F(Measuring, KeyCSetsAThenBOnSamplesThenRemovesBothWithoutAReplot) {
  const QImage before = FChart.grab().toImage();
  PutAt(31);
  ExpectCursors(30, std::nullopt);
  PutAt(78);
  ExpectCursors(30, 80);
  EXPECT_EQ(Told(), "Δt 50 ms  ·  1/Δt 20 Hz  ·  ΔX 5 g");
  EXPECT_NE(FChart.grab().toImage(), before);
  QTest::keyClick(&FChart, Qt::Key_C);
  ExpectCursors(std::nullopt, std::nullopt);
  EXPECT_EQ(FChart.grab().toImage(), before);
  EXPECT_EQ(FReplots.count(), 0);
}

TEST_F(Measuring, CursorsAreSetWhereTheUserPointedLastAndRemovedWithTheEvent) {
  RightClick(FChart, AtMs(40));
  FChart.Gestures().StepCursors();
  ExpectCursors(40, std::nullopt);
  Move(FChart, AtMs(90), Qt::NoButton);
  Leave(FChart);
  FChart.Gestures().StepCursors();
  ExpectCursors(40, 70);  // nobody points: two thirds into the view
  FChart.Range().SetTimes({0, 30});
  FChart.grab();  // both out of sight
  ExpectCursors(40, 70);
  FChart.ShowEvent(FEvents, 0, {});
  ExpectCursors(std::nullopt, std::nullopt);
  FChart.Clear();
  FChart.Gestures().StepCursors();
  ExpectCursors(std::nullopt, std::nullopt);
}

TEST_F(Measuring, StatisticsCoverTheSamplesInSight) {
  FChart.Range().SetTimes({15, 40});
  TRangeTable table = FChart.VisibleStatistics();
  ASSERT_EQ(table.rows.size(), 1U) << "hidden series are left out";
  // 2, 3, 4 g: the mean of the squares is 29/3.
  EXPECT_THAT(Cells(table.rows[0]), ElementsAre("X", "g", "3", "2", "4", "2", "3", "3.1091"));
  EXPECT_EQ(table.span.toStdString(), "15 … 40 ms");
  FChart.Range().SetTimes({41, 49});
  EXPECT_THAT(Cells(FChart.VisibleStatistics().rows[0]), ElementsAre("X", "g", "0", "–", "–", "–", "–", "–"));
  FChart.Clear();
  EXPECT_TRUE(FChart.VisibleStatistics().rows.empty());
}

TEST_F(Measuring, TheRightButtonNeitherZoomsNorSelectsNorOpensAMenuDuringADrag) {
  QSignalSpy ranges(&FChart, &TTimeChart::TimeRangeChanged);
  QSignalSpy menus(&FChart, &TTimeChart::MenuRequested);
  Drag(FChart, AtMs(20), AtMs(80), Qt::RightButton);
  QTest::mouseDClick(&FChart, Qt::RightButton, {}, AtMs(50));
  RightClick(FChart, AtMs(50));
  EXPECT_EQ(menus.count(), 1);
  QTest::keyClick(&FChart, Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(menus.count(), 2);
  QTest::mousePress(&FChart, Qt::LeftButton, {}, AtMs(20));
  RightClick(FChart, AtMs(50));
  EXPECT_EQ(menus.count(), 2);
  EXPECT_EQ(ranges.count(), 0);
}

TEST(EventsChartMeasures, CoverTheEventsThatPassTheFilter) {
  TEventsChart chart;
  chart.SetEvents(Events({{0, 40}, {kMinute, 90}, {2 * kMinute, 20}, {3 * kMinute, 10}, {9 * kMinute, 10}}), {});
  Show(chart);
  chart.Range().SetTimes({At(-kMinute), At(4 * kMinute)});
  const auto value = [&chart](std::size_t row) { return chart.VisibleStatistics().rows[row][1].toStdString(); };
  EXPECT_EQ(value(0), "4");
  EXPECT_EQ(value(1), "90");
  EXPECT_EQ(value(2), "40");
  chart.SetVisibleEvents({true, false, true, true, true});
  EXPECT_EQ(chart.VisibleStatistics().rows[1][0].toStdString(), "Largest peak (g), event 0");
  EXPECT_EQ(value(3), "1");

  QSignalSpy texts(&chart, &TTimeChart::CursorValueChanged);
  for (const double ms : {0.0, 2 * kMinute}) {
    Move(chart, PointAt(chart, At(ms), 5) + QPoint(4, 0), Qt::NoButton);
    QTest::keyClick(&chart, Qt::Key_C);
  }
  EXPECT_EQ(texts.back()[0].toString().toStdString(), "Δt 00:02:00.000  ·  Δpeak -20 g  ·  event 0 → 2")
      << "a cursor stands on the event beside it";
}

TEST(EventsChartMeasures, CoverTheSameEventsAtEveryZoom) {
  TSamples samples;
  for (int i = 0; i < 2000; ++i) samples.push_back({i * kMinute, static_cast<float>(i % 97)});
  TEventsChart chart;
  chart.SetEvents(Events(samples), {});
  Show(chart);
  QSignalSpy texts(&chart, &TTimeChart::CursorValueChanged);
  for (const int event : {100, 1500}) {
    chart.Range().SetTimes({At((event - 3) * kMinute), At((event + 3) * kMinute)});
    chart.grab();
    Move(chart, PointAt(chart, At(event * kMinute), 1), Qt::NoButton);
    QTest::keyClick(&chart, Qt::Key_C);
  }
  QTest::keyClick(&chart, Qt::Key_F);
  chart.grab();
  const QPoint at = PointAt(chart, At(1500 * kMinute), 1);
  QTest::mousePress(&chart, Qt::LeftButton, {}, at);
  Move(chart, at + QPoint(40, 0), Qt::LeftButton);
  QTest::keyClick(&chart, Qt::Key_Escape);
  bool told = false;
  for (const auto& text : texts) told = told || text[0].toString().contains("Δpeak 42 g  ·  event 100 → 1500");
  EXPECT_TRUE(told);
}

TEST(EventsChartMeasures, ADoubleClickRestoresTheSelectionThatItsFirstClickChanged) {
  TEventsChart chart;
  chart.SetEvents(Events({{0, 5}, {kMinute, 5}, {2 * kMinute, 5}}), {});
  Show(chart);
  chart.SetSelectedEvent(2);
  std::size_t selected = 2;
  QObject::connect(&chart, &TEventsChart::EventClicked, &chart, [&](std::size_t event) {
    selected = event;
    chart.SetSelectedEvent(event);
  });
  const QPoint at = PointAt(chart, At(kMinute), 5);
  Click(chart, at);
  EXPECT_EQ(selected, 1U);
  QTest::mouseDClick(&chart, Qt::LeftButton, {}, at);
  EXPECT_EQ(selected, 2U);
}

class MovedSensors : public testing::Test {
 protected:
  MovedSensors() {
    FChart.SetSensors(FSensors, kStart);
    Show(FChart);
  }
  [[nodiscard]] std::vector<bool> Visible() const {
    std::vector<bool> visible;
    for (std::size_t i = 0; i < FSensors.Count(); ++i) visible.push_back(FChart.IsSensorVisible(i));
    return visible;
  }
  TSensorList FSensors = Sensors({{"Temperature", {{0, 10}, {kMinute, 20}}},
                                  {"Temperature p", {{0, 11}, {kMinute, 21}}},
                                  {"RH", {{0, 40}, {kMinute, 60}}},
                                  {"Battery", {{0, 3.5F}, {kMinute, 3.6F}}}});
  TSensorsChart FChart;
};

TEST_F(MovedSensors, HideThoseOfAnotherUnitOnTheirNewAxis) {
  const auto& humidity = dynamic_cast<const TTitledAxis&>(*RectOf(FChart).axis(QCPAxis::atRight, 0));
  QSignalSpy texts(&FChart, &TSensorsChart::SensorsHidden);
  FChart.MoveSensor(1, TSensorAxis::RightInner);
  EXPECT_THAT(texts.back()[0].toString().toStdString(), HasSubstr("hidden: the axis shows Temperature (Pressure)"));
  EXPECT_THAT(Visible(), ElementsAre(true, true, false, true)) << "degrees and percent share no axis";
  FChart.grab();
  EXPECT_EQ(humidity.TitleText(), "Temperature (Pressure) (°C)");
  EXPECT_EQ(humidity.labelColor(), Qt::darkRed) << "the axis is the moved sensor's own";
  EXPECT_NEAR(humidity.range().upper, 21.5, 0.6);
  FChart.MoveSensor(0, TSensorAxis::RightInner);
  EXPECT_THAT(Visible(), ElementsAre(true, true, false, true));
  EXPECT_LT(humidity.range().lower, 10);
  EXPECT_FALSE(RectOf(FChart).axis(QCPAxis::atLeft, 1)->visible()) << "nothing is left on it";
  FChart.SetSensors(FSensors, kStart);
  EXPECT_THAT(Visible(), ElementsAre(true, true, false, true)) << "the choice outlives the recording";
  FChart.MoveSensor(2, TSensorAxis::RightOuter);
  FChart.MoveSensor(99, TSensorAxis::RightOuter);
  EXPECT_THAT(Visible(), ElementsAre(true, true, true, true));
  EXPECT_EQ(FChart.Sensors().Series()[2].look.axis, TSensorAxis::RightOuter);
  FChart.MoveSensor(2, TSensorAxis::RightInner);
  EXPECT_EQ(humidity.labelColor(), Qt::blue) << "as designed";
}

TEST_F(MovedSensors, OneThatIsShownTakesAFreeAxisAndElseSaysWhatItHides) {
  const auto reading = [](const char* name, float value) {
    return std::pair<const char*, TSamples>(name, {{0, value}, {kMinute, value + 1}});
  };
  FSensors = Sensors(
      {reading("Temperature", 10), reading("RH", 40), reading("L", 100), reading("Battery", 3), reading("A1", 7)});
  FChart.SetSensors(FSensors, kStart);
  QSignalSpy texts(&FChart, &TSensorsChart::SensorsHidden);
  EXPECT_THAT(Visible(), ElementsAre(true, true, true, false, false));
  FChart.SetSensorVisible(3, true);
  EXPECT_THAT(Visible(), ElementsAre(true, true, true, true, false));
  EXPECT_EQ(texts.count(), 0);
  const QCPAxis& free = *RectOf(FChart).axis(QCPAxis::atRight, 1);
  EXPECT_TRUE(free.visible());
  EXPECT_NEAR(free.range().upper, 4, 0.1);
  FChart.SetSensorVisible(4, true);
  EXPECT_THAT(Visible(), ElementsAre(true, true, false, true, true));
  ASSERT_EQ(texts.count(), 1);
  EXPECT_EQ(texts[0][0].toString().toStdString(), "Light hidden: the axis shows A1");
  for (const std::size_t sensor : {4, 3, 2, 3}) FChart.SetSensorVisible(sensor, !FChart.IsSensorVisible(sensor));
  EXPECT_EQ(FChart.Sensors().Series()[3].look.axis, TSensorAxis::RightOuter);
}

TEST_F(MovedSensors, TheSignForEntriesWithoutRoomNeverHasARowOfItsOwn) {
  FChart.SetSensorVisible(3, false);
  for (int width = 400; width < 700; width += 3) {
    FChart.resize(width, 200);
    Settle();
    bool entry = false;
    for (int x = 0; x < width; x += 4) entry |= FChart.Legend().EntryAt(QPointF(x, 30)).has_value();
    for (int x = 0; x < width && !entry; x += 4) {
      ASSERT_FALSE(FChart.Legend().IsOnMore(QPointF(x, 30))) << "in the second row, at " << width << " px";
    }
  }
}

TEST_F(MovedSensors, TheLegendOfANarrowChartHasAMenuOfTheHiddenOnesWithoutRoom) {
  FChart.SetSensorVisible(3, false);
  FChart.resize(300, 200);
  Settle();
  QPoint more(-1, -1);
  for (int x = 0; x < FChart.width(); ++x) {
    for (int y = 0; y < 60; y += 4) {
      if (FChart.Legend().IsOnMore(QPointF(x, y))) more = {x, y};
    }
  }
  ASSERT_GE(more.x(), 0);
  Click(FChart, more);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  ASSERT_EQ(menu->actions().size(), 1);
  EXPECT_EQ(menu->actions()[0]->text(), "Battery");
  menu->actions()[0]->trigger();
  menu->close();
  EXPECT_TRUE(FChart.IsSensorVisible(3));
}

class Window : public TWindowTest {
 protected:
  Window() { Start(TWindowTest::Save("three.kshock", ThreeEvents())); }
  template <class T>
  T& Find(const char* name) {
    return *TWindowTest::Find<T>(name);
  }
  [[nodiscard]] TTimeSpan Band() const { return FForm->Flow().Mission().Band; }
  [[nodiscard]] std::optional<std::size_t> Selected() const { return FForm->Flow().Mission().SelectedEvent; }
  void SetBand(double fromMs, double toMs) {
    emit Find<TNavigatorChart>("ChartNavigator").BandResizing({At(fromMs), At(toMs)});
    Settle();
  }
};

TEST_F(Window, EveryChartHasAMenuThatActsOnIt) {
  for (const char* name : {"Chart1", "ChartAllSensors", "ChartNavigator", "Chart20", "Chart2", "chartSpecAnalysis"}) {
    auto& chart = Find<TTimeChart>(name);
    if (!chart.isVisible()) FForm->Flow().SwitchView(TView::Shock);
    if (chart.Unit() == TAxisUnit::Hertz) Press("S");
    Settle();
    ASSERT_TRUE(chart.isVisible()) << name;
    RightClick(chart, MiddleOf(chart));
    auto* menu = chart.findChild<QMenu*>("mnuChart");
    ASSERT_TRUE(menu) << name;
    ASSERT_TRUE(menu->isVisible()) << name;
    EXPECT_TRUE(menu->findChild<QAction*>("actNavFwd")) << "the navigator's commands are in " << name;
    EXPECT_TRUE(menu->findChild<QAction*>("actSyncWithEvents")) << name;
    if (auto* cursors = menu->findChild<QAction*>("mnuChartCursors")) {
      cursors->trigger();
      ASSERT_TRUE(chart.Cursors().Times()[0].has_value()) << name;
      const double middle = chart.Range().Times().Middle();
      EXPECT_NEAR(*chart.Cursors().Times()[0], middle, (chart.Range().Times().end - middle) / 5) << name;
    } else {
      EXPECT_STREQ(name, "ChartNavigator");
    }
    menu->close();
    Settle();
    EXPECT_FALSE(chart.findChild<QMenu*>("mnuChart")) << name;
  }
  Press("S");
  auto& chart = Find<TSelectedEventChart>("Chart2");
  RightClick(chart, MiddleOf(chart));
  chart.findChild<QMenu*>("mnuChart")->findChild<QAction*>("actShockShowX")->trigger();
  EXPECT_FALSE(chart.IsSeriesVisible(TSeries::X));
  EXPECT_FALSE(Find<QAction>("actShockShowX").isChecked());
}

TEST_F(Window, StatisticsAreShownAndCopied) {
  auto& chart = Find<TTimeChart>("ChartAllSensors");
  std::string title;
  QTimer::singleShot(0, [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(dialog);
    title = dialog->objectName().toStdString();
    auto& table = *dialog->findChild<QTableWidget*>("tblStatistics");
    EXPECT_EQ(table.rowCount(), 3);
    QTest::keySequence(&table, QKeySequence::Copy);
    QTest::keyClick(&table, Qt::Key_Return);
    if (dialog->isVisible()) dialog->reject();
  });
  chart.setFocus();
  QTest::keyClick(&chart, Qt::Key_R);
  EXPECT_EQ(title, "dlgStatistics");
  EXPECT_THAT(QApplication::clipboard()->text().toStdString(),
              HasSubstr("Series\tUnit\tSamples\tMinimum\tMaximum\tPeak to peak\tMean\tRMS\n"
                        "Temperature\t°C\t3\t20\t22\t2\t21\t21.016\n"));
}

TEST_F(Window, NAndPStepInTheOrderOfTheViewThatIsShown) {
  const auto press = [this](const char* key) {
    QTest::keySequence(FForm.get(), QKeySequence(key));
    Settle();
    return Selected();
  };
  emit Find<TGrid>("dbgShocks").TitleClicked("ToT total");  // 0, 2, 1
  EXPECT_EQ(press("N"), 1U) << "the overview's is that of time";
  FForm->Flow().SwitchView(TView::Shock);
  EXPECT_EQ(press("P"), 2U);
  EXPECT_EQ(press("P"), 0U);
  FForm->Flow().SwitchView(TView::Report);
  EXPECT_EQ(press("N"), 0U) << "the report has no selected event";
}

TEST_F(Window, NAndPAreDisabledWhileNoEventIsShown) {
  const auto& next = Find<QAction>("actNextEvent");
  const auto& previous = Find<QAction>("actPreviousEvent");
  EXPECT_TRUE(next.isEnabled() && previous.isEnabled());
  TEventFilter none;
  none.ranges[0].from = 999;
  emit Find<TFilterPanel>("dxDockPanelFilter").FilterChanged(none);
  EXPECT_FALSE(next.isEnabled() || previous.isEnabled());
  FForm->Flow().SwitchView(TView::Shock);
  EXPECT_FALSE(next.isEnabled() || previous.isEnabled());
  emit Find<TFilterPanel>("dxDockPanelFilter").FilterChanged({});
  EXPECT_TRUE(next.isEnabled() && previous.isEnabled());
}

// However much of the window a change goes through.
TEST_F(Window, AChartRedrawsOnceForAChangeAndNotAtAllWithoutOne) {
  auto& events = Find<TTimeChart>("Chart1");
  auto& sensors = Find<TTimeChart>("ChartAllSensors");
  auto& navigator = Find<TTimeChart>("ChartNavigator");
  auto& shocks = Find<TTimeChart>("Chart20");
  auto& event = Find<TTimeChart>("Chart2");
  struct TChange {
    const char* what;
    TView view;
    std::function<void()> make;
    std::map<TTimeChart*, int> replots;  // of charts that do not replot there is none
  };
  const auto key = [](TTimeChart& chart, Qt::Key pressed) {
    return [&chart, pressed] { QTest::keyClick(&chart, pressed); };
  };
  const auto choose = [this](const char* box) {
    auto& colours = Find<QComboBox>(box);
    colours.setCurrentIndex(colours.currentIndex() == 1 ? 2 : 1);
    emit colours.activated(colours.currentIndex());
  };
  const std::vector<TChange> changes = {
      {"band", TView::Overview, [this] { SetBand(kMinute / 4, kMinute); }, {{&events, 1}, {&sensors, 1}}},
      {"zoom", TView::Overview, key(events, Qt::Key_Plus), {{&events, 1}}},
      {"pan", TView::Overview, key(sensors, Qt::Key_Right), {{&sensors, 1}}},
      {"reset", TView::Overview, key(events, Qt::Key_F), {{&events, 1}}},
      {"select", TView::Overview, [this] { QTest::keySequence(FForm.get(), QKeySequence("N")); }, {}},
      {"pointer", TView::Overview, [&] { Move(events, MiddleOf(events), Qt::NoButton); }, {}},
      {"cursor", TView::Overview, key(sensors, Qt::Key_C), {}},
      {"sort readings", TView::Overview, [this] { emit Find<TGrid>("DBGrid2").TitleClicked("Timestamp"); }, {}},
      {"hide a sensor", TView::Overview, [&] { ClickLegend(sensors, 0); }, {{&sensors, 1}, {&events, 1}}},  // margins
      {"alarm", TView::Overview, [this] { Find<QAction>("actAlarmSet").trigger(); }, {{&events, 1}, {&sensors, 1}}},
      {"series", TView::Shock, [this] { Find<QAction>("actShockShowY").trigger(); }, {{&event, 1}}},
      {"select", TView::Shock, [this] { QTest::keySequence(FForm.get(), QKeySequence("P")); }, {{&event, 1}}},
      {"pointer", TView::Shock, [&] { Move(event, MiddleOf(event), Qt::NoButton); }, {}},
      {"sort events",
       TView::Shock,
       [this] { emit Find<TGrid>("dbgShocks").TitleClicked("Acceleration max"); },
       {{&event, 1}}},
      {"sort events, same selection",
       TView::Shock,
       [this] { emit Find<TGrid>("dbgShocks").TitleClicked("ToT total"); },
       {}},
      {"colour", TView::Shock, [&] { choose("ccmbShockX"); }, {{&event, 1}, {&shocks, 1}}},
      {"colour", TView::Overview, [&] { choose("ccmbShockX"); }, {{&events, 1}}},
      {"colour", TView::Overview, [&] { choose("ccmbSensorsRH"); }, {{&sensors, 1}}},
      {"colour", TView::Overview, [&] { choose("ccmbSensorsTemp"); }, {{&sensors, 1}, {&navigator, 1}}}};
  for (const TChange& change : changes) {
    if (FForm->Flow().View() != change.view) FForm->Flow().SwitchView(change.view);
    QTest::qWait(20);
    Settle();
    for (TTimeChart* chart : {&events, &sensors, &navigator, &shocks, &event}) chart->grab();
    std::map<TTimeChart*, std::unique_ptr<QSignalSpy>> spies;
    for (TTimeChart* chart : {&events, &sensors, &navigator, &shocks, &event}) {
      spies[chart] = std::make_unique<QSignalSpy>(chart, &QCustomPlot::afterReplot);
    }
    change.make();
    Settle();
    for (const auto& [chart, spy] : spies) {
      const auto wanted = change.replots.find(chart);
      EXPECT_EQ(spy->count(), wanted == change.replots.end() ? 0 : wanted->second)
          << change.what << " " << chart->objectName().toStdString();
    }
  }
}

TEST_F(Window, TheNavigatorMarksTheZoomOfAChartOnlyWhileThatIsInSight) {
  auto& navigator = Find<TNavigatorChart>("ChartNavigator");
  auto& sensors = Find<TSensorsChart>("ChartAllSensors");
  const QImage synced = navigator.grab().toImage();
  sensors.Range().ZoomTime(0.5, At(kMinute));
  Settle();
  const QImage marked = navigator.grab().toImage();
  EXPECT_NE(marked, synced);
  Find<TTimeChart>("Chart1").Range().ResetByUser();
  EXPECT_EQ(navigator.grab().toImage(), marked) << "the sensors chart is still not synced";
  FForm->Flow().SwitchView(TView::Shock);
  Settle();
  EXPECT_NE(navigator.grab().toImage(), marked);
  Move(navigator, MiddleOf(navigator), Qt::NoButton);
  EXPECT_THAT(Find<QLabel>("lblStatusHint").text().toStdString(), HasSubstr("move the band"));
}

TEST_F(Window, SwitchingViewsMovesNeitherPanelsNorTheSelection) {
  const char* docks[] = {"dxDockPanelMissionDetails", "dxDockPanelSensorGridTemp", "dxDockPanelNavigator"};
  std::vector<QRect> before;
  for (const char* dock : docks) before.push_back(Find<QWidget>(dock).geometry());
  for (int round = 0; round < 3; ++round) {
    Press("Ctrl+2");
    Press("Ctrl+1");
    for (std::size_t i = 0; i < before.size(); ++i)
      EXPECT_EQ(Find<QWidget>(docks[i]).geometry(), before[i]) << docks[i];
  }
  auto& important = Find<TGrid>("dbgMostImportant");
  important.SetCurrentId(std::nullopt);
  QSignalSpy chosen(&important, &TGrid::RowChosen);
  important.clearFocus();
  important.setFocus(Qt::TabFocusReason);
  EXPECT_EQ(chosen.count(), 0) << "nobody chose a row";
  EXPECT_FALSE(important.currentIndex().isValid());
}

}  // namespace
