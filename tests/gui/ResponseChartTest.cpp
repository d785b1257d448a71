// The shock response spectrum of events in a chart, and in the window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTableView>

#include "gui/charts/uResponseChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uTheme.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uWindowTest.h"

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr int kSampleCount = 2000;  // samples at 1 kHz
// A constant 1 g from rest is 1.859 g at every frequency (Q = 10).
constexpr double kOvershoot = 1.859;

// An event of a constant x for each.
TEventList Steps(std::initializer_list<float> levels, int count = kSampleCount) {
  TEventList events;
  for (const float g : levels) {
    events.NewEvent();
    for (int i = 0; i < count; ++i) events.AddValues(i, g, 0, 0);
  }
  return events;
}

class ResponseChart : public testing::Test {
 protected:
  ResponseChart() { Show(FChart); }
  // The machine may be slow.
  void Await() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return FChart.WhyNone() != "Calculating…"; }, kPatienceMs));
    Settle();
  }
  void ShowEvent(std::size_t index) {
    FChart.ShowEvent(FEvents, index, 1);
    Await();
  }
  void Change(auto change) {
    TResponseRequest request = FChart.Request();
    change(request);
    FChart.SetRequest(request);
    Await();
  }
  // The part of the columns of pixels between two frequencies in which the curve of x is.
  double InkedColumns(double from, double to) {
    const QImage image = FChart.grab().toImage();
    const int left = PointAt(FChart, from, 1).x();
    const int right = PointAt(FChart, to, 1).x();
    int inked = 0;
    for (int x = left; x < right; ++x) {
      const QRect rect = RectOf(FChart).rect();
      bool isInked = false;
      for (int y = rect.top(); y < rect.bottom(); ++y) {
        const QColor colour = image.pixelColor(x, y);
        isInked = isInked || colour.blue() - colour.red() > 100;
      }
      inked += isInked;
    }
    return static_cast<double>(inked) / (right - left);
  }
  double XAt(double hertz) { return FChart.Lines()[FChart.LineAt(hertz)].x; }

  TEventList FEvents = Steps({2, 6, 4});
  TResponseChart FChart;
  QSignalSpy FTexts{&FChart, &TTimeChart::CursorValueChanged};
};

TEST_F(ResponseChart, ShowsHowFarAnOscillatorSwingsAndWhatLimitsItsUse) {
  ShowEvent(0);
  EXPECT_NEAR(XAt(10), 2 * kOvershoot, 0.01);
  EXPECT_NEAR(FChart.Lines().front().hertz, 0.5, 0.03) << "1/duration";
  EXPECT_NEAR(FChart.Lines().back().hertz, 250, 15) << "a quarter of the sampling rate";
  EXPECT_THAT(TitleOf(FChart), StartsWith("Event 0 · maximax · Q 10 · rough above 95.1"));
  EXPECT_THAT(TitleOf(FChart), HasSubstr("no baseline subtracted, fewer than 8 samples before the shock"));
  EXPECT_THAT(TitleOf(FChart), HasSubstr("the record ends before the shock does"));
  EXPECT_EQ(InkedColumns(40, 80), 1);
  EXPECT_LT(InkedColumns(110, 220), 0.9) << "dotted";
  Move(FChart, PointAt(FChart, 10, 3), Qt::NoButton);
  EXPECT_THAT(FTexts.back()[0].toString().toStdString(), HasSubstr("10 Hz  ·  X 3.7"));
  ExpectSaneAxes(FChart);
}

TEST_F(ResponseChart, ChoicesChangeTheCurvesAndKeepTheView) {
  ShowEvent(0);
  FChart.Range().SetTimes({5, 50});
  Change([](TResponseRequest& request) { request.options.sign = TResponseSign::Negative; });
  EXPECT_LT(XAt(10), 2) << "it swings back less far";
  EXPECT_EQ(FChart.Range().Times(), (TTimeSpan{5, 50}));
  EXPECT_EQ(FChart.Request().levelOn, 1) << "the recording's";
  Change([](TResponseRequest& request) { request.options = {.response = TResponse::PseudoVelocity}; });
  // As far as it swings about its new rest: 1.855 g/ω.
  EXPECT_NEAR(XAt(10), 2 * 1.8545 * 9.80665 / (2 * 3.14159265 * 10), 0.01);
  EXPECT_EQ(ValuesOf(FChart).label(), "Pseudo-velocity (m/s)");
  const std::size_t names = FChart.Labels().Boxes().size();
  Change([](TResponseRequest& request) { request.options.response = TResponse::Acceleration; });
  EXPECT_LT(FChart.Labels().Boxes().size(), names) << "the diagonals have names";
  const std::size_t twelfths = FChart.Lines().size();
  Change([](TResponseRequest& request) { request.octave = 3; });
  EXPECT_NEAR(static_cast<double>(twelfths), static_cast<double>(4 * FChart.Lines().size()), 4);
  ShowEvent(1);
  EXPECT_EQ(FChart.Range().Times(), FChart.Range().Full());
}

TEST_F(ResponseChart, TheEnvelopeIsThatOfTheVisibleEvents) {
  ShowEvent(0);
  FChart.SetEnvelope(true);
  Await();
  EXPECT_NEAR(XAt(10), 6 * kOvershoot, 0.02);
  EXPECT_THAT(TitleOf(FChart), StartsWith("Envelope of 3 events"));
  FChart.SetVisibleEvents({true, false, true});
  Await();
  EXPECT_NEAR(XAt(10), 4 * kOvershoot, 0.02);
  FChart.SetVisibleEvents({false, false, false});
  EXPECT_EQ(FChart.WhyNone(), "No event is visible.");
  ExpectSaneAxes(FChart);
  FChart.SetEnvelope(false);
  Await();
  EXPECT_NEAR(XAt(10), 2 * kOvershoot, 0.01);
}

TEST_F(ResponseChart, ALimitIsDrawnAndTheSmallestMarginNamed) {
  ShowEvent(0);
  FChart.SetLimit({{5, 10}, {100, 10}});
  EXPECT_THAT(TitleOf(FChart), StartsWith("Event 0 · margin 8.6 dB at ")) << "20·log10(10/3.718)";
  Settle();
  const QPoint on = PointAt(FChart, 40, 10);
  EXPECT_GT(Ink(FChart, QColor(kLightTokens.alarm), {on - QPoint(20, 2), QSize(40, 5)}), 20);
  Move(FChart, on, Qt::NoButton);
  EXPECT_THAT(FTexts.back()[0].toString().toStdString(), HasSubstr("Limit 10 g, margin 8.6 dB (X)"));
  FChart.SetLimit({{5, 2}, {100, 2}});
  EXPECT_THAT(TitleOf(FChart), HasSubstr("margin -5.4 dB"));
  FChart.SetSeriesVisible(TSeries::X, false);
  EXPECT_THAT(TitleOf(FChart), Not(HasSubstr("margin"))) << "nothing that moved is shown";
  FChart.SetSeriesVisible(TSeries::X, true);
  Change([](TResponseRequest& request) { request.options.response = TResponse::PseudoVelocity; });
  EXPECT_THAT(TitleOf(FChart), Not(HasSubstr("margin"))) << "the limit is in g";
}

TEST_F(ResponseChart, WithoutASpectrumItSaysWhy) {
  TEventList events = Steps({1}, 3);
  events.AddValues(1, 1, 1, 1);
  FChart.ShowEvent(events, 0, 1);
  Await();
  EXPECT_THAT(FChart.WhyNone(), StartsWith("No response spectrum. Event 0: The times of the samples repeat"));
  ExpectSaneAxes(FChart);
  ShowEvent(3);
  EXPECT_EQ(FChart.WhyNone(), "No event selected");
  FChart.hide();
  FChart.ShowEvent(FEvents, 0, 1);
  EXPECT_TRUE(FChart.Lines().empty()) << "nothing is calculated out of sight";
  FChart.show();
  Await();
  EXPECT_FALSE(FChart.Lines().empty());
}

TEST_F(ResponseChart, ALongCalculationReportsAndEndsAtOnceWhenItIsCancelled) {
  const TEventList longEvent = Steps({1, 2, 3, 4}, 500000);
  QSignalSpy progressed(&FChart, &TResponseChart::Progressed);
  QSignalSpy ended(&FChart, &TResponseChart::Ended);
  FChart.SetEnvelope(true);
  ended.clear();
  FChart.ShowEvent(longEvent, 0, 1);
  ASSERT_EQ(progressed.size(), 1);
  EXPECT_EQ(progressed[0][1].toULongLong(), 4U);
  EXPECT_EQ(FChart.WhyNone(), "Calculating…");
  EXPECT_EQ(ended.size(), 0);
  QElapsedTimer timer;
  timer.start();
  FChart.Cancel();
  EXPECT_LT(timer.elapsed(), 2000) << "of many seconds";
  EXPECT_EQ(ended.size(), 1);
  EXPECT_EQ(FChart.WhyNone(), "The calculation was cancelled.");
  FChart.SetEnvelope(false);
  EXPECT_EQ(FChart.WhyNone(), "Calculating…");
  FChart.hide();
  EXPECT_NE(FChart.WhyNone(), "Calculating…") << "nothing is calculated out of sight";
  FChart.show();
  EXPECT_EQ(FChart.WhyNone(), "Calculating…");
  FChart.Clear();
  EXPECT_EQ(FChart.WhyNone(), "No event selected") << "nothing refers to the events that go";
}

class ResponseInWindow : public TWindowTest {
 protected:
  static void Await(const TResponseChart& chart) {
    ASSERT_TRUE(QTest::qWaitFor([&chart] { return !chart.Lines().empty(); }, kPatienceMs));
  }
  QString Recording() {
    std::vector<TTestRecord> records;
    for (int event = 0; event < 2; ++event) {
      for (int i = 0; i < 500; ++i) {
        records.push_back({event * 10000.0 + i, {static_cast<float>(2 + event), 0, 0}});
      }
      records.push_back({event * 10000.0 + 600, {kEnd, kEnd, kEnd}});
    }
    return Save("steps.kshock",
                TTestRecording().Creator().MissionHeader(1, 1).Channels({"ACC x", "ACC y", "ACC z"}).Data(records));
  }
};

TEST_F(ResponseInWindow, TakesThePlaceOfCurvesAndSpectrumInChartTableAndExport) {
  Start(Recording());
  FForm->Flow().SwitchView(TView::Shock);
  Press("S");
  Press("O");
  auto* chart = Find<TResponseChart>("chartResponse");
  ASSERT_TRUE(chart->isVisible());
  Await(*chart);
  EXPECT_FALSE(Find<QAbstractButton>("swtSpecAnalysis")->isChecked()) << "one at a time";
  Press("Ctrl+T");
  auto* table = Find<QTableView>("dbgShockValues");
  EXPECT_EQ(table->model()->rowCount(), static_cast<int>(chart->Lines().size()));
  EXPECT_EQ(table->model()->headerData(1, Qt::Horizontal), "X (g)");
  FTyped = QString::fromStdString((FFolder / "r.csv").string());
  Press("Ctrl+Shift+C");
  EXPECT_THAT(FDialogs.back(), HasSubstr("ID-1 Response.csv"));
  const TBytes csv = BytesOfFile(FFolder / "r.csv");
  EXPECT_THAT(std::string(csv.begin(), csv.end()),
              StartsWith("\"Frequency (Hz)\",\"X (g)\",\"Y (g)\",\"Z (g)\",\"Total (g)\",\"Range\",\r\n"));

  Find<QComboBox>("cmbResponse")->setCurrentIndex(1);
  EXPECT_EQ(table->model()->headerData(1, Qt::Horizontal), "X (m/s)");
  Find<QAbstractButton>("chbResponseEnvelope")->click();
  Await(*chart);
  EXPECT_THAT(TitleOf(*chart), StartsWith("Envelope of 2 events"));
  FTyped = QString::fromStdString((FFolder / "e.xlsx").string());
  Press("Ctrl+Shift+X");
  EXPECT_THAT(FBoxes.back(), HasSubstr("Excel sheet created"));
  FForm->Flow().Reload();
  EXPECT_TRUE(chart->Lines().empty()) << "nothing refers to the mission that goes";
  Settle();
  Await(*chart);
  Press("O");
  EXPECT_TRUE(Find("Chart2")->isVisible());
}

TEST_F(ResponseInWindow, ALimitCurveOfNoUseIsRefusedWithItsLine) {
  Start(Recording());
  FForm->Flow().SwitchView(TView::Shock);
  Press("O");
  auto* chart = Find<TResponseChart>("chartResponse");
  Await(*chart);
  auto* limit = Find<QAbstractButton>("btnResponseLimit");
  const auto choose = [&](const std::string& text) {
    WriteFile(FFolder / "limit.csv", TBytes(text.begin(), text.end()));
    FTyped = QString::fromStdString((FFolder / "limit.csv").string());
    limit->click();
  };
  choose("Hz,g\n10,20\n100,20\n");
  EXPECT_TRUE(limit->isChecked());
  EXPECT_THAT(TitleOf(*chart), HasSubstr("margin "));
  EXPECT_EQ(limit->text(), "Remove &limit");
  limit->click();
  EXPECT_EQ(limit->text(), "&Limit…");
  EXPECT_THAT(TitleOf(*chart), Not(HasSubstr("margin ")));
  choose("10,20\n5,20\n");
  EXPECT_FALSE(limit->isChecked());
  EXPECT_THAT(FBoxes.back(), HasSubstr("The limit curve cannot be used."));
  EXPECT_THAT(FBoxes.back(), HasSubstr("The frequency of line 2 does not rise."));
}

TEST_F(ResponseInWindow, ChoicesAndLimitCurveAreThoseOfTheLastRun) {
  std::filesystem::create_directory(FFolder / "settings");
  FProgram.findSettingsFolder = [this] { return (FFolder / "settings").string(); };
  const std::string curve = "1,20\n100,20\n";
  WriteFile(FFolder / "limit.csv", TBytes(curve.begin(), curve.end()));
  const auto run = [this] {
    FForm.reset();
    Start(Recording());
    FForm->Flow().SwitchView(TView::Shock);
    Press("O");
    Await(*Find<TResponseChart>("chartResponse"));
    Settle();
    return TitleOf(*Find<TResponseChart>("chartResponse"));
  };
  EXPECT_THAT(run(), Not(HasSubstr("margin")));
  const std::pair<const char*, int> entries[] = {
      {"cmbResponseSign", 2}, {"cmbResponseQ", 3}, {"cmbResponseOctave", 0}, {"cmbResponseBaseline", 1}};
  for (const auto& [list, entry] : entries) Find<QComboBox>(list)->setCurrentIndex(entry);
  FTyped = QString::fromStdString((FFolder / "limit.csv").string());
  Find<QAbstractButton>("btnResponseLimit")->click();
  const std::string kept = run();
  for (const auto& [list, entry] : entries) EXPECT_EQ(Find<QComboBox>(list)->currentIndex(), entry) << list;
  EXPECT_THAT(kept, StartsWith("Event 1 · margin "));
  for (const char* word : {"negative", "Q 50", "1/3 octave", "no baseline"}) EXPECT_THAT(kept, HasSubstr(word));
  EXPECT_TRUE(Find<QAbstractButton>("btnResponseLimit")->isChecked());

  std::filesystem::remove(FFolder / "limit.csv");
  EXPECT_TRUE(FBoxes.empty());
  EXPECT_THAT(run(), HasSubstr("Q 50"));
  ASSERT_EQ(FBoxes.size(), 1U);
  EXPECT_THAT(FBoxes[0], HasSubstr("The limit curve cannot be used."));
  EXPECT_FALSE(Find<QAbstractButton>("btnResponseLimit")->isChecked());
}

}  // namespace
