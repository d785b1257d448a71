// The labels of every chart in the smallest window, of real recordings: none lies over another.
#include <QAction>

#include "gui/charts/uTimeChart.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uWindowTest.h"

namespace {

class ChartLabelsInWindow : public TWindowTest, public testing::WithParamInterface<std::string> {
 protected:
  void Trigger(const char* action) {
    Find<QAction>(action)->trigger();
    Settle();
  }
  void ExpectLegible(TTimeChart& chart) {
    SCOPED_TRACE(chart.objectName().toStdString() + " at " + std::to_string(FForm->height()));
    chart.grab();
    std::vector<QRectF> boxes = chart.Labels().Boxes();
    std::ranges::copy(chart.Labels().MarkBoxes(), std::back_inserter(boxes));
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      EXPECT_TRUE(QRectF(RectOf(chart).rect()).contains(boxes[i]));
      for (std::size_t k = 0; k < i; ++k) EXPECT_FALSE(boxes[i].intersects(boxes[k])) << i << ", " << k;
    }
    for (const QCPAxis* axis : chart.ValueAxes()) {
      const double height = axis->coordToPixel(axis->range().lower) - axis->coordToPixel(axis->range().upper);
      EXPECT_GT(axis->rangeReversed() ? -height : height, 0);
    }
  }
  void ExpectAllLegible() {
    for (const int height : {600, 500}) {
      FForm->setMinimumSize(0, 0);
      FForm->resize(900, height);
      Settle();
      for (TTimeChart* chart : FForm->findChildren<TTimeChart*>()) {
        if (chart->isVisible()) ExpectLegible(*chart);
      }
    }
  }
};

TEST_P(ChartLabelsInWindow, NeverOverlapWithAlarmCursorsAndTable) {
  Start(QString::fromStdString(GetParam() == "demo" ? DEMO_RECORDING : TEST_DATA "/" + GetParam() + ".kshock"));
  ASSERT_TRUE(FForm->Flow().FileShown());
  Trigger("actAlarmSet");
  int flags = 0;
  for (const char* state : {"actSetViewOverview", "actSetViewShock", "actEventPin", "actShockShowTable",
                            "actShockSpecAnalysis", "actShockResponse"}) {
    Trigger(state);
    for (TTimeChart* chart : FForm->findChildren<TTimeChart*>()) {
      if (!chart->isVisible() || chart->Cursors().Times()[0]) continue;
      for (int cursor = 0; cursor < 2; ++cursor) chart->Gestures().StepCursors();
    }
    ExpectAllLegible();
    for (const TTimeChart* chart : FForm->findChildren<TTimeChart*>()) {
      if (chart->isVisible()) flags += static_cast<int>(chart->Labels().MarkBoxes().size());
    }
  }
  EXPECT_GE(flags, 8);
  for (const char* view : {"actSetViewDamageBoundary", "actSetViewStatistics"}) {
    Trigger(view);
    ExpectAllLegible();
  }
}

INSTANTIATE_TEST_SUITE_P(Recordings, ChartLabelsInWindow,
                         testing::Values("demo", "stairs", "earthquake", "hand_shocks"),
                         [](const auto& recording) { return recording.param; });

}  // namespace
