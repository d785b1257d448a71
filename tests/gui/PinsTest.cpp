// Pinned events in the window: beside the selected event, in files, and with another recording.
#include <QComboBox>
#include <QLabel>
#include <QMenu>

#include "gui/charts/uEventsChart.h"
#include "gui/charts/uPinLooks.h"
#include "gui/charts/uResponseChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class PinsInWindow : public TWindowTest {
 protected:
  void StartShock(const QString& file) {
    Start(file);
    FForm->Flow().SwitchView(TView::Shock);
    Settle();
  }
  void Select(std::size_t event) {
    emit Find<TEventsChart>("Chart20")->EventClicked(event);
    Settle();
  }
  void Pin(std::size_t event) {
    Select(event);
    Press("V");
  }
  // An entry of the menu of a pinned event.
  void Choose(int pin, int entry) {
    Find<QMenu>("mnuPins")->actions()[pin]->menu()->actions()[entry]->trigger();
    Settle();
  }
  void AlignAt(TAlignment alignment) {
    Find<QComboBox>("cmbPinAlignment")->setCurrentIndex(static_cast<int>(alignment));
    Settle();
  }
  std::string Notice() { return Find<QLabel>("lblNotice")->text().toStdString(); }
  TSelectedEventChart& Chart() { return *Find<TSelectedEventChart>("Chart2"); }
  // Of the legend, behind those of X, Y, Z and the total.
  const TLegendEntry& Entry(std::size_t pin) { return Chart().Legend().Contents().entries.at(kSeriesCount + pin); }
  std::string TextAt(double ms) {
    Leave(Chart());
    std::string text;
    const auto connection = QObject::connect(&Chart(), &TTimeChart::CursorValueChanged,
                                             [&text](const QString& said) { text = said.toStdString(); });
    Move(Chart(), PointAt(Chart(), ms, 1), Qt::NoButton);
    QObject::disconnect(connection);
    return text;
  }

  QString FTriangles = Save("triangles.kshock", Triangles());
};

TEST_F(PinsInWindow, APinnedEventStandsBesideTheSelectedOneAndStaysWithAnotherRecording) {
  StartShock(FTriangles);
  EXPECT_FALSE(Find("pnlPins")->isVisible());
  Pin(0);
  EXPECT_EQ(Notice(), "Event 0 is pinned, 1 of 8");
  EXPECT_TRUE(Find("pnlPins")->isVisible());
  Select(2);
  EXPECT_THAT(TitleOf(Chart()), HasSubstr(" · pinned events aligned at the start · "));
  EXPECT_EQ(Entry(0).name, "0 (triangles)");
  EXPECT_THAT(TextAt(13), HasSubstr("0 (triangles) X 30 g"));
  EXPECT_EQ(Chart().Range().Full(), (TTimeSpan{0, 87})) << "the longer of both";
  EXPECT_GT(ValuesOf(Chart()).range().upper, 30) << "the higher of both";
  // The peaks are 39 ms and 13 ms behind the starts.
  for (const TAlignment alignment : {TAlignment::Peak, TAlignment::Correlation}) {
    AlignAt(alignment);
    EXPECT_THAT(TextAt(39), HasSubstr("0 (triangles) X 30 g"));
  }
  EXPECT_THAT(TitleOf(Chart()), HasSubstr("aligned at the best correlation"));
  const QPoint top = PointAt(Chart(), 39, 27);
  EXPECT_GT(Ink(Chart(), Entry(0).ink, {top - QPoint(6, 6), QSize(13, 13)}), 5);

  FForm->Flow().Open(Save("three.kshock", ThreeEvents()).toStdString());
  Settle();
  FForm->Flow().SwitchView(TView::Shock);
  Select(1);
  EXPECT_EQ(Entry(0).name, "0 (triangles)");
  EXPECT_THAT(TextAt(13), HasSubstr("0 (triangles) X"));
  ClickLegend(Chart(), kSeriesCount);
  EXPECT_FALSE(Entry(0).shown);
  EXPECT_THAT(TitleOf(Chart()), Not(HasSubstr("pinned")));
  EXPECT_THAT(TextAt(1), Not(HasSubstr("triangles")));
  EXPECT_EQ(Chart().Range().Full(), (TTimeSpan{0, 4}));
  Choose(0, 0);
  EXPECT_TRUE(Entry(0).shown);
  Choose(0, 1);
  EXPECT_EQ(Chart().Legend().Contents().entries.size(), kSeriesCount);
  EXPECT_FALSE(Find("pnlPins")->isVisible());
}

TEST_F(PinsInWindow, EightArePinnedAndEachKeepsItsColour) {
  StartShock(Save("rising.kshock", RisingEvents(10)));
  for (std::size_t event = 0; event < 9; ++event) Pin(event);
  EXPECT_EQ(Notice(), "Event 8 is not pinned: 8 events are, which is the maximum");
  const QColor fourth = Entry(3).ink;
  const QColor fifth = Entry(4).ink;
  Pin(3);
  EXPECT_EQ(Notice(), "Event 3 is no longer pinned");
  EXPECT_EQ(Entry(3).name, "4 (rising)");
  EXPECT_EQ(Entry(3).ink, fifth);
  Pin(8);
  EXPECT_EQ(Entry(3).name, "8 (rising)") << "the free colour is taken";
  EXPECT_EQ(Entry(3).ink, fourth);
}

TEST_F(PinsInWindow, TheLegendSaysThatOneHasNoSpectrum) {
  const auto record = [](double ms, float x) { return TTestRecord{ms, {x, 0, 0, kNone, kNone, kNone}}; };
  TTestRecording recording = Triangles();
  recording.Data({record(300000, 9), {300001, {kEnd, kEnd, kEnd, kNone, kNone, kNone}}});
  StartShock(Save("one.kshock", recording));
  Pin(4);
  Select(0);
  for (const char* key : {"S", "O"}) {
    Press(key);
    auto* chart = Find<TFrequencyChart>(*key == 'S' ? "chartSpecAnalysis" : "chartResponse");
    ASSERT_TRUE(QTest::qWaitFor([chart] { return !chart->Lines().empty(); }, kPatienceMs));
    const auto name = [chart] { return chart->Legend().Contents().entries.at(kSeriesCount).name; };
    EXPECT_EQ(name(), "4 (one) (no spectrum)");
    Choose(0, 0);
    EXPECT_EQ(name(), "4 (one)") << "it is hidden";
    Choose(0, 0);
  }
}

TEST_F(PinsInWindow, SpectrumResponseAndFilesHoldThem) {
  StartShock(FTriangles);
  Pin(0);
  auto* spectrum = Find<TSpectrumChart>("chartSpecAnalysis");
  auto* response = Find<TResponseChart>("chartResponse");
  const auto xOf = [](std::span<const TSpectrumLine> lines) {
    std::vector<double> x;
    for (const TSpectrumLine& line : lines) x.push_back(line.x);
    return x;
  };
  const auto awaitLines = [&] {
    ASSERT_TRUE(QTest::qWaitFor([&] { return !response->Lines().empty(); }, kPatienceMs));
  };
  Press("S");
  const auto own = xOf(spectrum->Lines());
  Select(2);
  EXPECT_EQ(xOf(spectrum->PinnedLines()[0]), own);
  EXPECT_GT(spectrum->Range().Full().end, 500) << "event 2 is sampled every 3 ms only";
  Press("O");
  awaitLines();
  const auto pinned = xOf(response->PinnedLines()[0]);
  Select(0);
  awaitLines();
  EXPECT_EQ(xOf(response->Lines()), pinned);
  Press("O");

  Select(2);
  AlignAt(TAlignment::Peak);
  FTyped = QString::fromStdString((FFolder / "e.csv").string());
  Press("Ctrl+Shift+C");
  const TBytes bytes = BytesOfFile(FFolder / "e.csv");
  const std::string csv(bytes.begin(), bytes.end());
  EXPECT_THAT(csv, StartsWith("\"Time (msec)\",\"X (g)\",\"Y (g)\",\"Z (g)\",\"Total (g)\","
                              "\"Time (msec) 0 (triangles)\",\"X (g) 0 (triangles)\","));
  EXPECT_THAT(csv, HasSubstr("\"26\",\"0\",\"0\",\"0\",\"0\",\r\n"));
  FTyped = QString::fromStdString((FFolder / "e.xlsx").string());
  Press("Ctrl+Shift+X");
  EXPECT_THAT(FBoxes.back(), HasSubstr("Excel sheet created"));
}

}  // namespace
