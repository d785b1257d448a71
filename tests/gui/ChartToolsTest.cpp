// The tools of a chart on a plain plot, each with the hands of a user.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <cmath>

#include "gui/charts/uChartGestures.h"
#include "tests/support/uChartHands.h"

namespace {

// Samples 10 ms apart, each as large as its time.
class TSteps final : public IChartReadings {
 public:
  explicit TSteps(const TChartPlot& plot) : FPlot(plot) {}
  QString MomentText(double time) const override { return QString("at %1").arg(CursorMoment(time)); }
  QString CursorText(const QPointF& /*position*/) const override { return "pointed"; }
  std::optional<TReading> NearestTo(const QPointF& position) const override {
    const double time = CursorMoment(FPlot.MomentAt(position));
    return TReading{"nearest", Qt::darkGreen, QPointF(PointAt(FPlot, time, time))};
  }
  double CursorMoment(double time) const override { return std::round(time / 10) * 10; }
  QStringList SpanTexts(double span) const override { return {QString("%1 ms").arg(span)}; }

 private:
  const TChartPlot& FPlot;
};

// 0 … 100 ms, 0 … 100 up.
class Tools : public testing::Test {
 protected:
  Tools() {
    FRange.SetFull(TTimeSpan{0, 100});
    Show(FPlot);
    FMiddle = MiddleOf(FPlot);
    FReplots.clear();
  }
  [[nodiscard]] QPoint AtMs(double ms) const { return {PointAt(FPlot, ms, 0).x(), FMiddle.y()}; }
  [[nodiscard]] double MomentUnder(const QPoint& at) const { return FPlot.MomentAt(at); }
  [[nodiscard]] double Span() const { return FRange.Times().Width(); }
  void Press(int key) { QTest::keyClick(&FPlot, static_cast<Qt::Key>(key)); }
  void ExpectTimes(double from, double to) const {
    EXPECT_NEAR(FRange.Times().start, from, kSame);
    EXPECT_NEAR(FRange.Times().end, to, kSame);
  }
  void ExpectIndicator(double ms) const { EXPECT_NEAR(FMarks.IndicatorTime().value_or(-1), ms, 0.2); }
  void ExpectCursors(std::optional<double> a, std::optional<double> b) const {
    EXPECT_EQ(FCursors.Times(), (TChartCursors::TTimes{a, b}));
  }
  void PutCursor(double ms) {
    Move(FPlot, AtMs(ms), Qt::NoButton);
    Press(Qt::Key_C);
  }

  TChartPlot FPlot{TAxisUnit::Milliseconds};
  TSteps FReadings{FPlot};
  TChartRange FRange{FPlot, [this] { FPlot.ValueAxis().setRange(0, 100); }};
  TChartMarks FMarks{FPlot, FReadings};
  TChartCursors FCursors{FPlot, FReadings};
  TChartGestures FGestures{FPlot, FReadings, FRange, FMarks, FCursors};
  QPoint FMiddle;
  QSignalSpy FRanges{&FPlot, &TChartPlot::TimeRangeChanged};
  QSignalSpy FResets{&FPlot, &TChartPlot::ZoomReset};
  QSignalSpy FClicked{&FGestures, &TChartGestures::Clicked};
  QSignalSpy FTexts{&FPlot, &TChartPlot::CursorValueChanged};
  QSignalSpy FReplots{&FPlot, &QCustomPlot::afterReplot};
};

TEST_F(Tools, RangeSignalsWhatTheUserDoesOnly) {
  FRange.SetTimes({10, 20});
  FRange.SetRecordingSpan({0, 200});
  FRange.Reset();
  FRange.SetFull(TTimeSpan{0, 100});
  EXPECT_EQ(FRanges.count() + FResets.count(), 0);

  Wheel(FPlot, FMiddle, 1);
  ASSERT_EQ(FRanges.count(), 1);
  EXPECT_EQ(FRanges[0][0].value<TTimeSpan>(), FRange.Times());
  Press(Qt::Key_F);
  ExpectTimes(0, 100);
  EXPECT_EQ(FRanges.count(), 2);
  EXPECT_EQ(FResets.count(), 1);
}

TEST_F(Tools, TheUserCannotChangeTheRangeOfAnEmptyOrFixedPlot) {
  const auto change = [this] {
    Drag(FPlot, AtMs(20), AtMs(80));
    Wheel(FPlot, FMiddle, 1);
    Press(Qt::Key_Up);
    PutCursor(30);
  };
  FRange.SetZoomable(false);
  change();
  ExpectTimes(0, 100);
  FRange.SetZoomable(true);
  FRange.SetFull(std::nullopt);
  const auto empty = FRange.Times();
  change();
  EXPECT_EQ(FRange.Times(), empty);
  EXPECT_EQ(ValuesOf(FPlot).range(), QCPRange(0, 100));
  EXPECT_EQ(FRanges.count(), 0);
  ExpectCursors(std::nullopt, std::nullopt);
}

TEST_F(Tools, RangeLeavesALockedValueAxisAsItIs) {
  const QPoint overAxis = RectOf(FPlot).rect().bottomLeft() - QPoint(20, 60);
  const auto change = [&] {
    Wheel(FPlot, overAxis, 1);
    Wheel(FPlot, FMiddle, 1, Qt::ControlModifier);
    Press(Qt::Key_Up);
  };
  FRange.LockAxis(ValuesOf(FPlot), true);
  Wheel(FPlot, overAxis, 1);
  EXPECT_TRUE(FTexts.back()[0].toString().contains("locked"));
  change();
  EXPECT_EQ(ValuesOf(FPlot).range(), QCPRange(0, 100));
  FRange.LockAxis(ValuesOf(FPlot), false);
  change();
  const QCPRange zoomed = ValuesOf(FPlot).range();
  EXPECT_LT(zoomed.size(), 70);
  FRange.LockAxis(ValuesOf(FPlot), true);
  Wheel(FPlot, FMiddle, 1);
  Drag(FPlot, FMiddle, FMiddle + QPoint(50, 50), Qt::MiddleButton);
  EXPECT_EQ(ValuesOf(FPlot).range(), zoomed);
  EXPECT_LT(Span(), 90);
}

TEST_F(Tools, WheelZoomsTimeAboutThePointerAndScrollsWithShift) {
  const QPoint at(RectOf(FPlot).rect().left() + 150, 100);
  const double moment = MomentUnder(at);
  Wheel(FPlot, at, 2);
  ASSERT_LT(Span(), 90);
  EXPECT_NEAR(MomentUnder(at), moment, kSame);
  const double span = Span();
  const double first = FRange.Times().start;
  Wheel(FPlot, at, -1, Qt::ShiftModifier);
  EXPECT_GT(FRange.Times().start, first);
  EXPECT_NEAR(Span(), span, kSame);
  EXPECT_EQ(ValuesOf(FPlot).range(), QCPRange(0, 100));
}

TEST_F(Tools, LeftDragZoomsToItsSpanWhicheverWayItGoes) {
  const QPoint from = AtMs(30);
  const QPoint to = AtMs(50) + QPoint(0, 40);
  const std::pair wanted(MomentUnder(from), MomentUnder(to));
  for (const bool back : {false, true}) {
    FRange.Reset();
    Drag(FPlot, back ? to : from, back ? from : to);
    ExpectTimes(wanted.first, wanted.second);
  }
  EXPECT_EQ(FRanges.count(), 2);
  EXPECT_EQ(FClicked.count(), 0);
}

TEST_F(Tools, DragUnderTwentyPixelsIsAClick) {
  Drag(FPlot, AtMs(40), AtMs(40) + QPoint(19, 0));
  EXPECT_EQ(FRanges.count(), 0);
  ASSERT_EQ(FClicked.count(), 1);
  EXPECT_EQ(FClicked[0][0].toPointF(), QPointF(AtMs(40)));
  Drag(FPlot, AtMs(40), AtMs(40) + QPoint(20, 0));
  EXPECT_EQ(FRanges.count(), 1);
  EXPECT_EQ(FClicked.count(), 1);
}

TEST_F(Tools, MiddleDragAndSpaceWithLeftDragPan) {
  for (const Qt::MouseButton button : {Qt::MiddleButton, Qt::LeftButton}) {
    FRange.SetTimes({30, 60});
    const QPoint to = FMiddle + QPoint(100, 0);
    const double moment = MomentUnder(FMiddle);
    if (button == Qt::LeftButton) QTest::keyPress(&FPlot, Qt::Key_Space);
    Drag(FPlot, FMiddle, to, button);
    if (button == Qt::LeftButton) QTest::keyRelease(&FPlot, Qt::Key_Space);
    EXPECT_NEAR(MomentUnder(to), moment, kSame) << "what was taken hold of stays under the pointer";
    EXPECT_NEAR(Span(), 30, kSame);
  }
}

TEST_F(Tools, EscapeCancelsADragAndADisabledPlotIgnoresTheUser) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
    QTest::mousePress(&FPlot, button, {}, FMiddle);
    Move(FPlot, FMiddle + QPoint(100, 0), button);
    Press(Qt::Key_Escape);
    QTest::mouseRelease(&FPlot, button, {}, FMiddle + QPoint(100, 0));
    ExpectTimes(0, 100);
  }
  EXPECT_EQ(FClicked.count(), 0);
  FPlot.setEnabled(false);
  FRanges.clear();
  Drag(FPlot, AtMs(20), AtMs(80));
  Wheel(FPlot, FMiddle, 1);
  Press(Qt::Key_Plus);
  EXPECT_EQ(FRanges.count(), 0);
}

TEST_F(Tools, DoubleClickResetsTimeAndValues) {
  QSignalSpy unclicked(&FGestures, &TChartGestures::Unclicked);
  Wheel(FPlot, FMiddle, 3);
  Wheel(FPlot, FMiddle, 3, Qt::ControlModifier);
  QTest::mouseDClick(&FPlot, Qt::LeftButton, {}, FMiddle);
  ExpectTimes(0, 100);
  EXPECT_EQ(ValuesOf(FPlot).range(), QCPRange(0, 100));
  EXPECT_EQ(FResets.count(), 1);
  EXPECT_EQ(unclicked.count(), 1);
}

TEST_F(Tools, KeysZoomAndMove) {
  Press(Qt::Key_Plus);
  Press(Qt::Key_Plus);
  ExpectTimes(18, 82);  // 0.8² of 100 about 50
  Press(Qt::Key_Right);
  ExpectTimes(24.4, 88.4);
  Press(Qt::Key_Left);
  ExpectTimes(18, 82);
  Press(Qt::Key_Home);
  ExpectTimes(0, 64);
  Press(Qt::Key_End);
  ExpectTimes(36, 100);
  Press(Qt::Key_Right);
  Press(Qt::Key_Minus);
  ExpectTimes(20, 100);  // nothing was recorded beyond
  Press(Qt::Key_Home);
  Drag(FPlot, FMiddle, FMiddle + QPoint(100, 0), Qt::MiddleButton);
  ExpectTimes(0, 80);
  Press(Qt::Key_Up);
  EXPECT_NEAR(ValuesOf(FPlot).range().lower, 10, kSame);
}

TEST_F(Tools, IndicatorFollowsThePointerAndLeavesWithIt) {
  QSignalSpy moved(&FPlot, &TChartPlot::IndicatorMoved);
  Move(FPlot, AtMs(30), Qt::NoButton);
  EXPECT_FALSE(FMarks.IndicatorTime()) << "it is off";
  FMarks.SetIndicatorVisible(true);
  for (const double ms : {30.0, 60.0}) {
    Move(FPlot, AtMs(ms), Qt::NoButton);
    ExpectIndicator(ms);
    EXPECT_NEAR(moved.back()[0].toDouble(), ms, 0.2);
  }
  EXPECT_EQ(FTexts.back()[0].toString().toStdString(), "at 60  ·  pointed");
  Click(FPlot, AtMs(40));
  Move(FPlot, AtMs(70), Qt::NoButton);
  ExpectIndicator(70);
  Leave(FPlot);
  EXPECT_FALSE(FMarks.IndicatorTime());
  EXPECT_EQ(FTexts.back()[0].toString(), "");
  EXPECT_EQ(FReplots.count(), 0);
}

TEST_F(Tools, LockedIndicatorStaysWhereItWasClicked) {
  FMarks.SetIndicatorVisible(true);
  FMarks.SetIndicatorLocked(true);
  Move(FPlot, AtMs(30), Qt::NoButton);
  ExpectIndicator(30);  // nobody clicked yet
  Click(FPlot, AtMs(40));
  Move(FPlot, AtMs(70), Qt::NoButton);
  Leave(FPlot);
  ExpectIndicator(40);
  Click(FPlot, AtMs(80));
  QTest::mouseDClick(&FPlot, Qt::LeftButton, {}, AtMs(80));
  ExpectIndicator(40);  // the reset of the zoom is no choice of a place
  Wheel(FPlot, AtMs(50), 1);
  ExpectIndicator(40);
  Press(Qt::Key_Escape);
  EXPECT_FALSE(FMarks.IndicatorTime());
}

TEST_F(Tools, ARestingPointerReadsWhatAChangeBringsUnderIt) {
  std::optional<double> shared;
  QObject::connect(&FPlot, &TChartPlot::PointerMoved, [&](std::optional<double> time) { shared = time; });
  Move(FPlot, AtMs(80), Qt::NoButton);
  Press(Qt::Key_Plus);
  Settle();
  EXPECT_EQ(FTexts.back()[0].toString().toStdString(), "at 70  ·  pointed");
  EXPECT_NEAR(shared.value_or(0), 74, 0.2);  // 50 + 30 · 0.8
  FRange.SetTimes({0, 10});
  Settle();
  EXPECT_EQ(FTexts.back()[0].toString().toStdString(), "at 10  ·  pointed");
  FRange.SetFull(std::nullopt);
  Settle();
  EXPECT_EQ(FTexts.back()[0].toString(), "");
  EXPECT_FALSE(shared);
}

TEST_F(Tools, TheNearestSampleIsLabelledWhereThereIsRoom) {
  FMarks.SetNearestVisible(true);
  const auto words = [this](double ms) {
    Move(FPlot, AtMs(ms), Qt::NoButton);
    const QPoint sample = PointAt(FPlot, ms, ms);
    const auto ink = [&](const QRect& within) { return Ink(FPlot, Qt::darkGreen, within.translated(sample)); };
    return std::pair(ink({-30, -25, 60, 16}), ink({-30, 9, 60, 16}));
  };
  const auto [above, below] = words(90);
  EXPECT_GT(above, 20);
  EXPECT_EQ(below, 0);
  FPlot.ValueAxis().setRange(0, 92);  // the sample stands at the upper edge
  FPlot.replot();
  const auto [aboveEdge, belowEdge] = words(90);
  EXPECT_EQ(aboveEdge, 0);
  EXPECT_GT(belowEdge, 20);
}

TEST_F(Tools, ADragMovesTheNearestCursorAndNothingElse) {
  PutCursor(21);
  PutCursor(80);
  FMarks.SetIndicatorVisible(true);
  FMarks.SetIndicatorLocked(true);
  Drag(FPlot, AtMs(80) + QPoint(3, 0), AtMs(10));
  ExpectCursors(20, 10);
  EXPECT_EQ(FTexts.back()[0].toString().toStdString(), "-10 ms");
  QTest::mousePress(&FPlot, Qt::LeftButton, {}, AtMs(20));
  Move(FPlot, AtMs(60), Qt::LeftButton);
  ExpectCursors(60, 10);
  Press(Qt::Key_Escape);
  ExpectCursors(20, 10);
  QTest::mouseRelease(&FPlot, Qt::LeftButton, {}, AtMs(60));
  QTest::mouseDClick(&FPlot, Qt::LeftButton, {}, AtMs(20));
  Leave(FPlot);
  EXPECT_EQ(FRanges.count() + FReplots.count(), 0);
  EXPECT_EQ(FMarks.IndicatorTime(), std::nullopt) << "nobody clicked a place for it";
  Press(Qt::Key_Escape);
  ExpectCursors(std::nullopt, std::nullopt);
}

TEST_F(Tools, CursorsRemovedDuringADragStayRemoved) {
  PutCursor(20);
  PutCursor(80);
  QTest::mousePress(&FPlot, Qt::LeftButton, {}, AtMs(80));
  Press(Qt::Key_C);
  Move(FPlot, AtMs(50), Qt::LeftButton);
  QTest::mouseRelease(&FPlot, Qt::LeftButton, {}, AtMs(50));
  ExpectCursors(std::nullopt, std::nullopt);
}

}  // namespace
