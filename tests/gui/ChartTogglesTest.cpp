// The switches of the charts in the window, by the names of their controls.
#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

namespace {

struct TToggle {
  const char* name;  // of an action, or of the button over one
  bool on;           // at first
};
constexpr TToggle kToggles[] = {{"actShockEventsToolsIndicator", true},
                                {"barbtnShockEventsGAxisLock", true},
                                {"actShockShowTable", false},
                                {"dxBarShockShowTotal", false},
                                {"barbtnShockShowX", true},
                                {"barbtnShockShowY", true},
                                {"barbtnShockShowZ", true},
                                {"barbtnShockToolsPoints", true},
                                {"barbtnShockToolsNearest", false},
                                {"actShockLogFrequency", false},
                                {"actShockLogValues", false},
                                {"actShockToolsIndicator", true},
                                {"barbtnShockIndicatorMouseLock", true},
                                {"barbtnShockGAxisLock", true},
                                {"actSensorsToolsPoints", true},
                                {"actSensorsToolsNearest", false},
                                {"actSensorsToolsIndicator", true},
                                {"actSensorIndicatorMouseLock", true},
                                {"actSensorsAZoomRightII", true},
                                {"actSensorsAZoomRightI", true},
                                {"actSensorsAZoomLeftII", true},
                                {"actSensorsAZoomLeftI", true}};

// Something dark in these columns of a row of titles.
bool HasLetter(const QImage& titles, int begin, int end) {
  for (int x = begin; x < end; ++x) {
    for (int y = 0; y < titles.height() - 2; ++y) {  // a line is below
      if (qGray(titles.pixel(x, y)) < 160) return true;
    }
  }
  return false;
}

class ChartToggles : public TWindowTest {
 protected:
  ChartToggles() : FThree(Save("three.kshock", ThreeEvents())) { Start(); }
  void Open() {
    FForm->Flow().Open(FThree.toStdString());
    Settle();
  }
  void OpenShock() {
    Open();
    FForm->Flow().SwitchView(TView::Shock);
    Settle();
  }
  template <class T>
  T& Find(const char* name) {
    return *TWindowTest::Find<T>(name);
  }
  QAction& Toggle(const char* name) {
    if (auto* action = FForm->findChild<QAction*>(name)) return *action;
    return *Find<QToolButton>(name).defaultAction();
  }
  TSelectedEventChart& Chart2() { return Find<TSelectedEventChart>("Chart2"); }

  QString FThree;
};

// As the settings set them, before there is a file and their groups are in sight.
TEST_F(ChartToggles, StartInTheirStatesAndChangeWheneverTheyAreExecuted) {
  for (const auto& [name, on] : kToggles) {
    QAction& toggle = Toggle(name);
    EXPECT_TRUE(toggle.isCheckable()) << name;
    EXPECT_EQ(toggle.isChecked(), on) << name;
    toggle.trigger();
    EXPECT_EQ(toggle.isChecked(), !on) << name;
  }
  EXPECT_FALSE(Chart2().IsSeriesVisible(TSeries::X));
  EXPECT_TRUE(Chart2().IsSeriesVisible(TSeries::Total));
  Open();
  for (const auto& [name, on] : kToggles) EXPECT_EQ(Toggle(name).isChecked(), !on) << name;
  FForm->Flow().SwitchView(TView::Shock);
  EXPECT_TRUE(Find<QTableView>("dbgShockValues").isVisible());
}

TEST_F(ChartToggles, AClickOnTheLegendAndTheButtonOfASeriesAreOneState) {
  OpenShock();
  auto& button = Find<QAbstractButton>("barbtnShockShowX");
  ClickLegend(Chart2(), 0);
  EXPECT_FALSE(button.isChecked());
  EXPECT_FALSE(Chart2().IsSeriesVisible(TSeries::X));
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_TRUE(Chart2().IsSeriesVisible(TSeries::X));
  Press("T");
  EXPECT_TRUE(Chart2().IsSeriesVisible(TSeries::Total));
  EXPECT_TRUE(Find<QAbstractButton>("dxBarShockShowTotal").isChecked());
  ClickLegend(Chart2(), 3);
  EXPECT_FALSE(Toggle("dxBarShockShowTotal").isChecked());
}

TEST_F(ChartToggles, TheLockHoldsBothEventsCharts) {
  Open();
  Toggle("barbtnShockEventsGAxisLock").trigger();
  for (const char* name : {"Chart1", "Chart20"}) {
    auto& chart = Find<TEventsChart>(name);
    if (!chart.isVisible()) FForm->Flow().SwitchView(TView::Shock);
    Settle();
    const double span = ValuesOf(chart).range().size();
    Wheel(chart, MiddleOf(chart), 1, Qt::ControlModifier);
    EXPECT_LT(ValuesOf(chart).range().size(), span) << name;
    Toggle("barbtnShockEventsGAxisLock").trigger();
    const QCPRange locked = ValuesOf(chart).range();
    Wheel(chart, MiddleOf(chart), 1, Qt::ControlModifier);
    EXPECT_EQ(ValuesOf(chart).range(), locked) << name;
    Toggle("barbtnShockEventsGAxisLock").trigger();
  }
}

TEST_F(ChartToggles, EachSensorsLockHoldsItsOwnAxis) {
  Open();
  auto& chart = Find<TSensorsChart>("ChartAllSensors");
  const std::pair<const char*, QCPAxis*> locks[] = {
      {"actSensorsAZoomLeftI", RectOf(chart).axis(QCPAxis::atLeft, 0)},
      {"actSensorsAZoomLeftII", RectOf(chart).axis(QCPAxis::atLeft, 1)},
      {"actSensorsAZoomRightI", RectOf(chart).axis(QCPAxis::atRight, 0)},
      {"actSensorsAZoomRightII", RectOf(chart).axis(QCPAxis::atRight, 1)}};
  for (const auto& [name, unlocked] : locks) {
    std::vector<QCPRange> before;
    for (const auto& [_, axis] : locks) before.push_back(axis->range());
    Toggle(name).trigger();
    Wheel(chart, MiddleOf(chart), 1, Qt::ControlModifier);
    for (std::size_t i = 0; i < std::size(locks); ++i) {
      EXPECT_EQ(locks[i].second->range() == before[i], locks[i].second != unlocked) << name << i;
    }
    Toggle(name).trigger();
  }
}

TEST_F(ChartToggles, TheValueTableShowsTheSamplesAndMarksTheOneUnderTheIndicator) {
  OpenShock();
  auto& table = Find<QTableView>("dbgShockValues");
  EXPECT_FALSE(table.isVisible());
  Press("Ctrl+T");
  ASSERT_TRUE(table.isVisible());
  // Event 1, the most intense: 0 9 9 9 0 g on x, a millisecond apart.
  ASSERT_EQ(table.model()->rowCount(), 5);
  Click(Chart2(), PointAt(Chart2(), 3, 5));
  EXPECT_EQ(table.currentIndex().row(), 3);
  Move(Chart2(), PointAt(Chart2(), 1, 5), Qt::NoButton);
  EXPECT_EQ(table.currentIndex().row(), 3) << "the indicator is locked";
  Toggle("barbtnShockIndicatorMouseLock").trigger();
  Move(Chart2(), PointAt(Chart2(), 1, 4), Qt::NoButton);
  EXPECT_EQ(table.currentIndex().row(), 1);

  table.setFocus();
  QTest::keySequence(&table, QKeySequence::Copy);
  EXPECT_EQ(QApplication::clipboard()->text(), "Time (ms)\tX (g)\tY (g)\tZ (g)\tTotal (g)\n1\t9\t0\t0\t9\n");
  EXPECT_EQ(Find<QLabel>("lblStatusValue").text(), "1 row copied");
  Press("N");  // the next event in the grid has other samples
  EXPECT_NE(table.model()->rowCount(), 5);
  FForm->Flow().Reload();
  EXPECT_EQ(table.model()->rowCount(), 0) << "nothing refers to the mission that goes";
  ASSERT_TRUE(QTest::qWaitFor([this] { return !FForm->Flow().Busy(); }, kPatienceMs));
}

TEST_F(ChartToggles, TheValueTableShowsAllItsColumnsWhole) {
  OpenShock();
  FForm->resize(1280, 800);
  Press("Ctrl+T");
  auto& table = Find<QTableView>("dbgShockValues");
  QHeaderView& titles = *table.horizontalHeader();
  for (int mode = 0; mode < 2; ++mode) {
    EXPECT_LE(titles.length(), table.viewport()->width()) << "the spectrum is in front: " << mode;
    // A title ends where its numbers do, and its first letter is whole.
    const QImage picture = titles.grab().toImage();
    for (int column = 0; column < titles.count(); ++column) {
      const int begin = titles.sectionViewportPosition(column);
      const int end = begin + titles.sectionSize(column);
      EXPECT_FALSE(HasLetter(picture, begin, begin + 3)) << column;
      EXPECT_TRUE(HasLetter(picture, end - 12, end - 3)) << column;
    }
    Press("S");
  }
}

TEST_F(ChartToggles, TheValueTableShowsTheLinesWhileTheSpectrumIsInFront) {
  OpenShock();
  auto& table = Find<QTableView>("dbgShockValues");
  Press("Ctrl+T");
  const auto title = [&table](int column) {
    return table.model()->headerData(column, Qt::Horizontal).toString().toStdString();
  };
  table.setColumnWidth(1, 99);
  const QList<int> sizes = Find<QSplitter>("splShockEvent").sizes();
  Press("S");
  auto& chart = Find<TSpectrumChart>("chartSpecAnalysis");
  const auto& lines = chart.Spectrum().lines;
  ASSERT_EQ(table.model()->rowCount(), static_cast<int>(lines.size()));
  EXPECT_EQ(title(0), "Frequency (Hz)");
  EXPECT_EQ(table.model()->index(1, 0).data().toDouble(), QString::number(lines[1].hertz, 'g', 6).toDouble());
  // Event 1: its constant part of 27 g over 5 samples.
  EXPECT_EQ(table.model()->index(0, 1).data(), "5.4");
  EXPECT_NE(table.columnWidth(1), 99) << "frequencies and samples have their own widths";
  Click(chart, PointAt(chart, lines[2].hertz, 1));
  EXPECT_EQ(table.currentIndex().row(), 2);
  Find<QComboBox>("cmbSpecType").setCurrentText("Power");
  EXPECT_EQ(title(1), "X (g²)");
  EXPECT_EQ(Find<QSplitter>("splShockEvent").sizes(), sizes);
  Press("S");
  EXPECT_EQ(title(1), "X (g)");
  EXPECT_EQ(table.model()->rowCount(), 5);
  EXPECT_EQ(table.columnWidth(1), 99);
  Press("S");
  FForm->Flow().Reload();
  EXPECT_EQ(table.model()->rowCount(), 0);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !FForm->Flow().Busy(); }, kPatienceMs));
}

TEST_F(ChartToggles, ALegendOfOneEventsChartHidesTheSeriesInBoth) {
  Open();
  auto& overview = Find<TEventsChart>("Chart1");
  auto& shock = Find<TEventsChart>("Chart20");
  EXPECT_TRUE(shock.IsSeriesVisible(TSeries::X));
  ClickLegend(overview, 0);
  EXPECT_FALSE(overview.IsSeriesVisible(TSeries::X));
  EXPECT_FALSE(shock.IsSeriesVisible(TSeries::X));
  ClickLegend(overview, 0);
  EXPECT_TRUE(shock.IsSeriesVisible(TSeries::X));
}

TEST_F(ChartToggles, TheSpectrumTakesThePlaceOfTheCurvesAndFollowsChoiceAndSelection) {
  OpenShock();
  auto& chart = Find<TSpectrumChart>("chartSpecAnalysis");
  Press("S");
  ASSERT_TRUE(chart.isVisible());
  EXPECT_FALSE(Chart2().isVisible());
  EXPECT_TRUE(Find<QAbstractButton>("swtSpecAnalysis").isChecked());
  // Event 1: its constant part of 27 g over 5 samples.
  EXPECT_NEAR(chart.Spectrum().lines.at(0).x, 5.4, 1e-6);
  Find<QComboBox>("cmbSpecType").setCurrentText("Decibel");
  EXPECT_NEAR(chart.Spectrum().lines.at(0).x, 20 * std::log10(5.4), 1e-6);
  Find<QComboBox>("cmbSpecWindow").setCurrentText("Triangle");
  EXPECT_GT(chart.Spectrum().lines.at(0).x, 20 * std::log10(5.4)) << "the middle weighs more";
  Find<QComboBox>("cmbSpecType").setCurrentText("Amplitude");
  const double before = chart.Spectrum().lines.at(0).x;
  Press("N");
  EXPECT_NE(chart.Spectrum().lines.at(0).x, before);
  ClickLegend(chart, 0);
  EXPECT_FALSE(Toggle("barbtnShockShowX").isChecked());
  EXPECT_FALSE(Chart2().IsSeriesVisible(TSeries::X));
  FForm->Flow().Reload();
  EXPECT_TRUE(chart.Spectrum().lines.empty()) << "nothing refers to the mission that goes";
  ASSERT_TRUE(QTest::qWaitFor([this] { return !FForm->Flow().Busy(); }, kPatienceMs));
  Press("S");
  EXPECT_TRUE(Chart2().isVisible());
}

TEST_F(ChartToggles, KeysWorkInTheViewOfTheirChartOnly) {
  Open();
  const auto state = [this] { return Toggle("barbtnShockShowX").isChecked(); };
  Press("X");
  EXPECT_TRUE(state());
  FForm->Flow().SwitchView(TView::Shock);
  Settle();
  Press("X");
  EXPECT_FALSE(state());
}

}  // namespace
