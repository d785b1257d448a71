// Shock analysis in the window, as a person uses it: the table, the filter by velocity change, the damage boundary and
// the statistics.
#include <QAction>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolTip>

#include "gui/charts/uCountChart.h"
#include "gui/charts/uDamageChart.h"
#include "gui/common/uGrid.h"
#include "gui/report/uEventCard.h"
#include "gui/report/uEventCardList.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class AnalysisViews : public TWindowTest {
 protected:
  void Open(const TTestRecording& recording) {
    const QString file = Save("shocks.kshock", recording);
    if (FForm) return FForm->Flow().Open(file.toStdString()), TWindowTest::Settle();
    Start(file);
  }
  void Analysed() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return FForm->Flow().Mission().Analysis.has_value(); }, kPatienceMs));
    TWindowTest::Settle();
  }
  std::vector<std::string> Column(const char* grid, int column = 0) {
    const auto* model = Find<QTableView>(grid)->model();
    std::vector<std::string> cells;
    for (int row = 0; row < model->rowCount(); ++row) {
      cells.push_back(model->index(row, column).data().toString().toStdString());
    }
    return cells;
  }
  std::string TextOf(const char* label) { return Find<QLabel>(label)->text().toStdString(); }
  std::vector<std::size_t> Counts(const char* chart) {
    std::vector<std::size_t> counts;
    for (const TCountBar& bar : Find<TCountChart>(chart)->Bars()) counts.push_back(bar.count);
    return counts;
  }
  std::string Written(const char* action) {
    FTyped = QString::fromStdString((FFolder / "out.csv").string());
    Find<QAction>(action)->trigger();
    TWindowTest::Settle();
    const TBytes bytes = BytesOfFile(FFolder / "out.csv");
    return {bytes.begin(), bytes.end()};
  }
};

TEST_F(AnalysisViews, TheTableIsMadeWhenItsTabIsFirstShownAndFollowsTheOthers) {
  Open(Triangles());
  Press("Ctrl+2");
  EXPECT_FALSE(FForm->Flow().Mission().Analysis);
  Find<QTabWidget>("pgcShockGrids")->setCurrentIndex(2);
  Analysed();
  EXPECT_FALSE(Find("barAnalysis")->isVisible());
  EXPECT_THAT(Column("dbgAnalysis", 2), ElementsAre("0.883", "1.765", "1.324", ""));
  EXPECT_THAT(Column("dbgAnalysis", 6), ElementsAre("X-pos", "X-pos", "X-neg", ""));
  EXPECT_THAT(Column("dbgAnalysis", 8).back(), StartsWith("Fewer than 5 samples"));
  emit Find<TGrid>("dbgAnalysis")->TitleClicked("Delta-v (m/s)");
  EXPECT_THAT(Column("dbgAnalysis"), ElementsAre("1", "2", "0", "3"));
  EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, 1U);
  Press("N");
  EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, 2U) << "the next one in this table";
  EXPECT_EQ(Find<QTableView>("dbgShocks")->currentIndex().row(), 2);
  EXPECT_THAT(
      Written("actTablesExportCSVAnalysis"),
      StartsWith(
          "\"ID\",\"Timestamp\",\"Delta-v (m/s)\",\"Duration 10 % (ms)\",\"Duration 1/3 (ms)\",\"Half-sine (ms)\","));

  Open(RisingEvents(2));
  EXPECT_FALSE(FForm->Flow().Mission().Analysis) << "that of another recording is dropped";
  EXPECT_THAT(Column("dbgAnalysis"), IsEmpty());
}

TEST_F(AnalysisViews, AnExportMakesTheTableThatNobodySaw) {
  Open(Triangles());
  Press("Ctrl+F");
  Type("edtFilterAccelerationMaxFrom", "20");
  const std::string file = Written("actTablesExportCSVAnalysis");
  EXPECT_EQ(std::ranges::count(file, '\n'), 4) << "the titles, and what the filter lets through";
  EXPECT_TRUE(FForm->Flow().Mission().Analysis) << "and it is kept";
}

TEST_F(AnalysisViews, TheFilterWaitsForTheVelocityChange) {
  Open(Triangles());
  Press("Ctrl+2");
  Press("Ctrl+F");
  EXPECT_FALSE(Find("barFilter")->isVisible());
  Type("edtFilterVelocityChangeFrom", "1");
  Analysed();
  EXPECT_THAT(Column("dbgFilteredShocks"), ElementsAre("1", "2"));
  EXPECT_EQ(TextOf("lblStatusEvents"), "2 of 4 events · filter");
  EXPECT_EQ(TextOf("lblFilterConditions"), "Velocity change from 1 m/s");
  // A reload analyses anew before it filters.
  Press("F5");
  EXPECT_EQ(TextOf("lblStatusEvents"), "2 of 4 events · filter");
  // Another recording keeps the condition, switched off.
  Open(RisingEvents(3));
  EXPECT_EQ(TextOf("lblStatusEvents"), "3 events");
  Press("Ctrl+Shift+F");
  Analysed();
  EXPECT_EQ(TextOf("lblStatusEvents"), "0 of 3 events · filter") << "none of them has a pulse";
}

TEST_F(AnalysisViews, ACancelledAnalysisIsMadeWhenAskedForAgain) {
  Open(Triangles());
  Press("Ctrl+2");
  Press("Ctrl+F");
  const auto click = [this](const char* button) {
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
    return Find<QPushButton>(button)->text().toStdString();
  };
  Find<QTabWidget>("pgcShockGrids")->setCurrentIndex(2);  // it begins at once
  EXPECT_EQ(click("barAnalysisButton"), "Analyse");
  TWindowTest::Settle();
  EXPECT_FALSE(FForm->Flow().Mission().Analysis);
  Type("edtFilterAccelerationMaxFrom", "20");
  Type("edtFilterVelocityChangeFrom", "1");
  EXPECT_EQ(TextOf("lblStatusEvents"), "3 of 4 events · filter") << "it waits";
  click("barFilterButton");
  EXPECT_TRUE(Find<QLineEdit>("edtFilterVelocityChangeFrom")->text().isEmpty()) << "the condition is taken away";
  EXPECT_EQ(TextOf("lblFilterConditions"), "Acceleration max from 20 g");
  TWindowTest::Settle();
  EXPECT_FALSE(FForm->Flow().Mission().Analysis);
  click("barAnalysisButton");
  Analysed();
  EXPECT_THAT(Column("dbgAnalysis"), ElementsAre("0", "1", "3"));
}

TEST_F(AnalysisViews, TheDamageBoundaryCountsListsAndSelects) {
  Open(Triangles());
  Press("Ctrl+4");
  Analysed();
  auto& chart = *Find<TDamageChart>("ChartDamage");
  EXPECT_EQ(TitleOf(chart), "3 events · 1 without a pulse not shown");
  EXPECT_THAT(Column("dbgDamaging"), IsEmpty());
  Type("edtCriticalVelocity", "1");
  EXPECT_THAT(Column("dbgDamaging"), IsEmpty()) << "both limits are needed";
  Type("edtCriticalAcceleration", "10");
  // At 1.3239 times the critical velocity change, that of event 2, the boundary is 1.05 times the critical
  // acceleration.
  EXPECT_EQ(TitleOf(chart), "2 of 3 events beyond the boundary · 2 beyond both limits · 1 without a pulse not shown");
  EXPECT_THAT(Column("dbgDamaging"), ElementsAre("1", "2"));
  Type("edtCriticalAcceleration", "14.9");
  EXPECT_EQ(TitleOf(chart), "1 of 3 events beyond the boundary · 2 beyond both limits · 1 without a pulse not shown");
  Type("edtCriticalAcceleration", "x");
  EXPECT_TRUE(Find("lblDamageProblem")->isVisible());
  Type("edtCriticalAcceleration", "14,9");
  EXPECT_FALSE(Find("lblDamageProblem")->isVisible());

  TWindowTest::Settle();
  QTest::mouseClick(&chart, Qt::LeftButton, {}, PointAt(chart, 0.8826, 30));
  EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, 0U);
  QTest::mouseClick(&chart, Qt::LeftButton, {}, PointAt(chart, 1.3239, 15));
  EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, 2U);
  QTest::mouseMove(&chart, PointAt(chart, 1.7652, 60));
  TWindowTest::Settle();
  EXPECT_THAT(TextOf("lblStatusValue"), HasSubstr("event 1 · ")) << TextOf("lblStatusValue");
  EXPECT_THAT(TextOf("lblStatusValue"), HasSubstr("beyond the boundary"));
  EXPECT_THAT(Written("actAnalysisExportCSV"), HasSubstr("\"60\",\"yes\",\"yes\",\r\n"));

  Press("Ctrl+F");
  Type("edtFilterAccelerationMaxTo", "30");
  EXPECT_EQ(TitleOf(chart), "0 of 2 events beyond the boundary · 1 beyond both limits");
}

TEST_F(AnalysisViews, AnEventCardWithoutAPulseSaysWhy) {
  Open(Triangles());
  const TShownMission& mission = FForm->Flow().Mission();
  const auto figuresOf = [&](std::size_t event) {
    std::string text;
    for (const TCardFigure& figure : MakeEventCard(mission, mission.Display, std::nullopt, event).figures) {
      for (const char* label : {"Δv", "Duration", "Direction"}) {
        if (figure.label == label) text += (figure.label + " " + figure.text + "; ").toStdString();
      }
    }
    return text;
  };
  EXPECT_THAT(figuresOf(1), AllOf(StartsWith("Δv 1.77 m/s; Duration "), HasSubstr("Direction X-pos; ")));
  EXPECT_EQ(figuresOf(3), "Δv —; Duration —; Direction —; ");
  EXPECT_TRUE(MakeEventCard(mission, mission.Display, std::nullopt, 1).whyNoPulse.isEmpty());
  Press("Ctrl+3");
  auto* cards = Find<TEventCardList>("lstEventCards");
  cards->SetCurrent(3);
  TWindowTest::Settle();
  QPoint at;  // the first place at which the tool tip says it
  for (int y = 0; y < cards->viewport()->height() && QToolTip::text().isEmpty(); y += 20) {
    at = {cards->viewport()->width() / 2, y};
    QHelpEvent help(QEvent::ToolTip, at, cards->viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(cards->viewport(), &help);
  }
  EXPECT_THAT(QToolTip::text().toStdString(), StartsWith("Fewer than 5 samples")) << at.y();
}

TEST_F(AnalysisViews, StatisticsAreOfTheVisibleEvents) {
  Open(Triangles());
  Press("Ctrl+5");
  Analysed();
  EXPECT_EQ(TextOf("lblStatisticsEvents"), "4 events · 3 with a pulse");
  EXPECT_THAT(Counts("ChartByDay"), ElementsAre(4));
  EXPECT_EQ(Counts("ChartByHour").at(6), 4U);
  EXPECT_THAT(Counts("ChartByDirection"), ElementsAre(2, 1));
  const auto total = [this](const char* chart) {
    const auto counts = Counts(chart);
    return std::accumulate(counts.begin(), counts.end(), std::size_t{0});
  };
  EXPECT_EQ(total("ChartHistogram"), 3U) << "the velocity change of pulses";
  Find<QComboBox>("cmbStatisticsQuantity")->setCurrentIndex(1);
  EXPECT_EQ(total("ChartHistogram"), 4U) << "each event has a peak";
  Find("ChartExceedance")->setFocus();
  EXPECT_THAT(Written("actAnalysisExportCSV"), StartsWith("\"Peak (g)\",\"Exceeded by (%)\",\r\n\"15\",\"87.5\",\r\n"));
  Activate();
  Find("ChartByDirection")->setFocus();
  EXPECT_EQ(Written("actAnalysisExportCSV"), "\"Direction\",\"Events\",\r\n\"X-pos\",\"2\",\r\n\"X-neg\",\"1\",\r\n");
  Press("Ctrl+F");
  Type("edtFilterAccelerationMaxFrom", "35");
  Type("edtFilterAccelerationMaxTo", "50");
  EXPECT_EQ(TextOf("lblStatisticsEvents"), "1 event · 0 with a pulse");
  EXPECT_THAT(Counts("ChartByDirection"), IsEmpty());
  EXPECT_THAT(Counts("ChartHistogram"), testing::Contains(1U)) << "one event is a histogram, too";
  Type("edtFilterAccelerationMaxFrom", "45");
  EXPECT_THAT(Counts("ChartByDay"), IsEmpty());
  EXPECT_FALSE(Find<QAction>("actAnalysisExportCSV")->isEnabled());
}

}  // namespace
