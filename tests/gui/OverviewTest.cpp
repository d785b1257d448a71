// The overview: the verdict and where its buttons lead, the two charts as one instrument, the most important events;
// and what the filter changes.
#include <QAbstractButton>
#include <QAction>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>
#include <QTextTable>
#include <QToolButton>

#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Overview : public TWindowTest {
 protected:
  void StartWithThree() { Start(Save("three.kshock", ThreeEvents())); }
  const TShownMission& Mission() { return FForm->Flow().Mission(); }
  std::string Says(const char* button) { return Find<QAbstractButton>(button)->accessibleName().toStdString(); }
  void Click(const char* button) {
    QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton);
    Settle();
  }
  std::vector<int> Rows(const char* grid) {
    const auto* model = Find<QTableView>(grid)->model();
    std::vector<int> ids;
    for (int row = 0; row < model->rowCount(); ++row) ids.push_back(model->index(row, 0).data().toInt());
    return ids;
  }
  int RowsInSight(const char* grid) {
    const auto* view = Find<QTableView>(grid);
    return view->viewport()->height() / view->rowHeight(0);
  }
};

TEST_F(Overview, TheVerdictNamesTheWorstAndLeadsThere) {
  StartWithThree();
  EXPECT_EQ(Says("btnVerdictEvents"), "Events: 3 2 clipped");
  EXPECT_THAT(Says("btnVerdictPeak"), HasSubstr("Peak: 20 g event 0, X-pos"));
  EXPECT_THAT(Says("btnVerdictIntensity"), HasSubstr("14 g·ms event 1, clipped"));
  Click("btnVerdictPeak");
  EXPECT_EQ(Mission().SelectedEvent, 0U);
  Click("btnVerdictIntensity");
  EXPECT_EQ(Mission().SelectedEvent, 1U);

  const TTimeSpan whole = Mission().Band;
  emit Find<TNavigatorChart>("ChartNavigator")->BandResizing({At(0), At(kMinute)});
  ASSERT_NE(Mission().Band, whole);
  Click("btnVerdictRecorded");
  EXPECT_EQ(Mission().Band, whole);

  Click("btnVerdictEvents");
  EXPECT_TRUE(Find("MainShockPanel")->isVisible());
  EXPECT_FALSE(Find("pnlVerdict")->isVisible());
}

TEST_F(Overview, WithoutLimitsTheVerdictAsksForThemAndThenJudges) {
  StartWithThree();
  EXPECT_EQ(Says("btnVerdictAboveAlarm"), "Above alarm: no limits");
  Press("Alt+S");
  Click("btnVerdictAboveAlarm");
  EXPECT_TRUE(Find("pnlAlarmLimits")->isVisible());
  EXPECT_TRUE(Find("btngrpAlarm")->isVisible()) << "it hangs below a button of Home";
  Find("pnlAlarmLimits")->hide();

  auto* fromFile = Find<QAbstractButton>("chboxLoadAccAlarmFromFile");
  if (fromFile->isChecked()) fromFile->click();
  Find<QAction>("actAlarmSet")->trigger();
  Settle();
  EXPECT_THAT(Says("btnVerdictAboveAlarm"), HasSubstr("2 of 3 events above 6 g (default limit)"));
  fromFile->click();
  Settle();
  EXPECT_THAT(Says("btnVerdictAboveAlarm"),
              HasSubstr("all events exceed the trigger level of 2 g; set limits to judge"));
}

TEST_F(Overview, TheFilterChangesAllThatListsEvents) {
  StartWithThree();
  Find<QAction>("actAlarmSet")->trigger();
  if (auto* fromFile = Find<QAbstractButton>("chboxLoadAccAlarmFromFile"); fromFile->isChecked()) fromFile->click();
  Settle();
  const auto* tabs = Find<QTabWidget>("pgcShockGrids");
  EXPECT_EQ(tabs->tabToolTip(0), "All events 3");
  auto* navigator = Find<TNavigatorChart>("ChartNavigator");
  emit navigator->BandResizing({At(0), At(kMinute)});  // its edges are not over the last tick
  const QImage all = navigator->grab().toImage();
  Click("btnVerdictAboveAlarm");
  EXPECT_THAT(Rows("dbgMostImportant"), testing::UnorderedElementsAre(0, 1));
  EXPECT_EQ(tabs->tabToolTip(1), "Filtered events 2");
  EXPECT_EQ(tabs->currentIndex(), 1);
  EXPECT_EQ(Find<QLabel>("lblFilterConditions")->text(), "above alarm");
  EXPECT_THAT(Find("pnlFilterChip")->toolTip().toStdString(), HasSubstr("above"));
  EXPECT_THAT(Says("btnVerdictEvents"), HasSubstr("2 pass the filter"));
  EXPECT_THAT(Says("btnVerdictAboveAlarm"), HasSubstr("2 of 3")) << "the verdict is on the whole recording";
  EXPECT_NE(navigator->grab().toImage(), all) << "the tick of the hidden event is faint";
  Press("Ctrl+Shift+F");
  EXPECT_EQ(Rows("dbgMostImportant").size(), 3U);
  EXPECT_TRUE(Find("lblFilterConditions")->isHidden());
  EXPECT_EQ(navigator->grab().toImage(), all);
}

TEST_F(Overview, BothChartsShowOnePointerTimeAndOneDateAxis) {
  StartWithThree();
  auto& events = *Find<TEventsChart>("Chart1");
  auto& sensors = *Find<TSensorsChart>("ChartAllSensors");
  EXPECT_FALSE(TimeOf(events).tickLabels());
  EXPECT_TRUE(TimeOf(sensors).tickLabels());
  Move(events, PointAt(events, At(kMinute), 5), Qt::NoButton);
  ASSERT_TRUE(events.Marks().IndicatorTime());
  EXPECT_EQ(sensors.Marks().IndicatorTime(), events.Marks().IndicatorTime());
  const QImage pointed = sensors.grab().toImage();
  Leave(events);
  EXPECT_FALSE(sensors.Marks().IndicatorTime());
  EXPECT_NE(sensors.grab().toImage(), pointed);

  sensors.Range().ChangeTimes({At(0), At(kMinute / 2)});
  Settle();
  EXPECT_TRUE(TimeOf(events).tickLabels()) << "each has its own span";
  const QImage alone = sensors.grab().toImage();
  Move(events, PointAt(events, At(kMinute), 5), Qt::NoButton);
  EXPECT_EQ(sensors.grab().toImage(), alone) << "that time is out of sight";
  sensors.Range().ChangeTimes(events.Range().Times());
  Settle();
  EXPECT_FALSE(TimeOf(events).tickLabels());
}

TEST_F(Overview, ChartsAndListShareTheHeight) {
  StartWithThree();
  FForm->resize(900, 600);
  Settle();
  EXPECT_GE(RowsInSight("dbgMostImportant"), 3);
  for (const auto& [height, rows] : {std::pair(800, 5), {1000, 10}}) {
    FForm->resize(1280, height);
    Settle();
    EXPECT_GE(RowsInSight("dbgMostImportant"), rows);
    for (const char* chart : {"Chart1", "ChartAllSensors"}) {
      Find<TTimeChart>(chart)->grab();
      EXPECT_GE(RectOf(*Find<TTimeChart>(chart)).height(), 100) << chart << height;
    }
  }
  FForm->resize(900, 600);
  TLimitProfile profile;
  profile.name = "Fragile";
  FForm->Flow().Mission().Settings.display.profile = profile;
  Find<QAction>("actAlarmSet")->trigger();
  Find<QAction>("actFilterEdit")->trigger();
  Settle();
  EXPECT_TRUE(Find("btnJudgement")->isVisible());
  EXPECT_EQ(Find("btnVerdictEvents")->y(), Find("btnVerdictRecorded")->y()) << "one row";
  for (const char* chart : {"Chart1", "ChartAllSensors"}) {
    Find<TTimeChart>(chart)->grab();
    EXPECT_GE(RectOf(*Find<TTimeChart>(chart)).height(), 40) << chart;
  }
  EXPECT_GE(RowsInSight("dbgMostImportant"), 2);
}

TEST_F(Overview, AChartWithoutDataLeavesItsHeightToTheOther) {
  Start(Save("shocks.kshock", RisingEvents(3)));
  FForm->resize(1280, 800);
  Settle();
  EXPECT_GT(Find("Chart1")->height(), 2 * Find("ChartAllSensors")->height());
  FForm->Flow().Open(Save("three.kshock", ThreeEvents()).toStdString());
  Settle();
  EXPECT_NEAR(Find("Chart1")->height(), Find("ChartAllSensors")->height(), 30) << "which has the dates";
}

TEST_F(Overview, TheSelectedEventIsInSightOrNamedInALine) {
  Start(Save("rising.kshock", RisingEvents(15)));
  Find<QAction>("actSetViewOverview")->trigger();
  EXPECT_GE(RowsInSight("dbgMostImportant"), 5);
  FForm->resize(1280, 1000);
  Settle();
  EXPECT_GE(RowsInSight("dbgMostImportant"), 10);
  ASSERT_EQ(Rows("dbgMostImportant").size(), 10U);
  Click("btnVerdictPeak");
  EXPECT_TRUE(Find("btnShowSelectedEvent")->isHidden()) << "its row is in sight";
  emit Find<TEventsChart>("Chart1")->EventClicked(0);
  EXPECT_TRUE(Find("btnShowSelectedEvent")->isVisible());
  EXPECT_THAT(Find<QLabel>("lblSelectedEvent")->text().toStdString(), HasSubstr("event 0 · "));
  Click("btnShowSelectedEvent");
  EXPECT_TRUE(Find("MainShockPanel")->isVisible());
  EXPECT_EQ(Find<QTableView>("dbgShocks")->currentIndex().siblingAtColumn(0).data().toInt(), 0);
}

TEST_F(Overview, ACurrentRowStaysWhollyInSight) {
  Start(Save("rising.kshock", RisingEvents(60)));
  Press("Ctrl+2");
  auto* grid = Find<QTableView>("dbgShocks");
  for (const int height : {800, 640, 700, 600}) {
    FForm->resize(1000, height);
    Settle();
    for (const std::size_t event : {0U, 31U, 59U}) {
      emit Find<TEventsChart>("Chart20")->EventClicked(event);
      Settle();
      const QRect row = grid->visualRect(grid->currentIndex());
      EXPECT_GE(row.top(), 0) << height;
      EXPECT_LT(row.bottom(), grid->viewport()->height()) << height << " " << event;
    }
  }
}

TEST_F(Overview, ClippedEventsAreNamedWhereTheirFiguresStand) {
  StartWithThree();
  Press("Ctrl+2");
  emit Find<TEventsChart>("Chart20")->EventClicked(1);
  EXPECT_THAT(TitleOf(*Find<TSelectedEventChart>("Chart2")), HasSubstr("clipped"));
  EXPECT_TRUE(Find("lblClipped")->isVisible());
  emit Find<TEventsChart>("Chart20")->EventClicked(0);
  EXPECT_THAT(TitleOf(*Find<TSelectedEventChart>("Chart2")), testing::Not(HasSubstr("clipped")));
  EXPECT_FALSE(Find("lblClipped")->isVisible());
}

TEST_F(Overview, DetailsBeginWithWhatTheRecordingIsJudgedBy) {
  StartWithThree();
  auto* details = Find<QTextEdit>("edtMissionDetails");
  const QString text = details->toPlainText();
  QTextCursor cursor(details->document());
  for (const char* figure : {"Peak", "Worst by intensity", "Above alarm", "Clipped"}) {
    cursor = details->document()->find(figure);
    ASSERT_FALSE(cursor.isNull()) << figure;
    EXPECT_LT(details->cursorRect(cursor).bottom(), details->viewport()->height()) << figure;
  }
  EXPECT_LT(text.indexOf("Above alarm"), text.indexOf("Operator"));
  EXPECT_EQ(text.count("Peak"), 1);

  details->resize(details->minimumWidth() * 4 / 3, 400);  // narrower, and figures stand below their labels
  int labels = 0;
  for (QTextFrame* frame : details->document()->rootFrame()->childFrames()) {
    const auto* table = qobject_cast<QTextTable*>(frame);
    for (int row = 0; table != nullptr && row < table->rows(); ++row) {
      const QTextBlock label = table->cellAt(row, 0).firstCursorPosition().block();
      ++labels;
      for (int line = 1; line < label.layout()->lineCount(); ++line)
        EXPECT_EQ(label.text()[label.layout()->lineAt(line).textStart() - 1], ' ') << label.text().toStdString();
    }
  }
  EXPECT_GE(labels, 10);
}

}  // namespace
