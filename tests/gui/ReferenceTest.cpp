// The reference in the window: differences to another recording in every view, and with the layout.
#include <QAction>
#include <QComboBox>
#include <QLabel>

#include "gui/charts/uCountChart.h"
#include "gui/charts/uExceedanceChart.h"
#include "gui/docks/uMissionDetails.h"
#include "gui/report/uReportPages.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class ReferenceInWindow : public TWindowTest {
 protected:
  void Open(const QString& file) {
    FForm->Flow().Open(file.toStdString());
    Settle();
  }
  std::string NameOf(const char* control) { return Find(control)->accessibleName().toStdString(); }
  std::string TextOf(const char* label) { return Find<QLabel>(label)->text().toStdString(); }
  std::string Details() { return FForm->findChild<TMissionDetails*>()->toHtml().toStdString(); }
  // In the statistics, with the analysis done and peaks as quantity.
  void ShowPeaks() {
    Press("Ctrl+5");
    ASSERT_TRUE(QTest::qWaitFor([this] { return FForm->Flow().Mission().Analysis.has_value(); }, kPatienceMs));
    Find<QComboBox>("cmbStatisticsQuantity")->setCurrentIndex(1);
    Settle();
  }
  std::string Csv(const char* chart) {
    Activate();
    Find(chart)->setFocus();
    FTyped = QString::fromStdString((FFolder / "out.csv").string());
    Find<QAction>("actAnalysisExportCSV")->trigger();
    Settle();
    const TBytes bytes = BytesOfFile(FFolder / "out.csv");
    return {bytes.begin(), bytes.end()};
  }
  std::vector<std::string> ReportHeadings() {
    std::vector<std::string> titles;
    const TReportPages pages({FForm->Flow().Mission()}, {});
    for (const auto& [title, page] : pages.Bookmarks()) titles.push_back(title.toStdString());
    return titles;
  }

  QString FTriangles = Save("triangles.kshock", Triangles());
  QString FThree = Save("three.kshock", ThreeEvents());
};

TEST_F(ReferenceInWindow, EveryViewShowsTheDifferencesUntilItIsCleared) {
  Start(FThree);
  const std::string before = Details();
  const std::string peakBefore = NameOf("btnVerdictPeak");
  EXPECT_FALSE(Find<QAction>("actClearReference")->isEnabled());
  ShowPeaks();
  const std::string csvBefore = Csv("ChartHistogram");

  Open(FTriangles);
  Press("Ctrl+R");
  EXPECT_EQ(TextOf("lblNotice"), "triangles is the reference: other recordings show Δ against it");
  EXPECT_EQ(NameOf("btnReference"), "This recording is the reference");
  EXPECT_THAT(NameOf("btnVerdictPeak"), Not(HasSubstr("Δ")));
  ShowPeaks();
  EXPECT_THAT(TextOf("lblStatisticsEvents"), HasSubstr("this recording is the reference"));

  Open(FThree);
  EXPECT_THAT(NameOf("btnReference"), StartsWith("Δ against triangles: 4 events in "));
  EXPECT_THAT(NameOf("btnVerdictPeak"), testing::ContainsRegex("Δ -40\\.?0* g"));
  EXPECT_THAT(Find("btnVerdictPeak")->accessibleDescription().toStdString(), HasSubstr("against triangles"));
  EXPECT_THAT(Details(), AllOf(HasSubstr("Compared with triangles"), HasSubstr("Δ -1 (3 against 4)")));
  EXPECT_THAT(ReportHeadings(), testing::Contains("Peaks, compared with triangles"));
  QTest::mouseClick(Find("btnReference"), Qt::LeftButton);
  EXPECT_EQ(FForm->Flow().View(), TView::Statistics);
  ShowPeaks();
  EXPECT_THAT(TextOf("lblStatisticsEvents"), HasSubstr("Δ -1 events against all 4 of triangles"));
  // 5, 9, 20 against 15, 30, 40, 60.
  EXPECT_THAT(TitleOf(*Find<TExceedanceChart>("ChartExceedance")), HasSubstr("P50 9 (Δ -26)"));
  const auto& histogram = *Find<TCountChart>("ChartHistogram");
  ASSERT_EQ(histogram.Legend().Contents().entries.size(), 2U);
  EXPECT_EQ(histogram.Legend().Contents().entries[1].name, "triangles");
  EXPECT_EQ(ValuesOf(histogram).label(), "% of events");
  EXPECT_NE(ValuesOf(*Find<TCountChart>("ChartByDay")).label(), "% of events");
  EXPECT_THAT(Csv("ChartHistogram"), HasSubstr("\"Events\",\"Events of triangles\""));

  Press("Ctrl+Shift+R");
  EXPECT_EQ(Details(), before);
  EXPECT_EQ(NameOf("btnVerdictPeak"), peakBefore);
  EXPECT_EQ(Csv("ChartHistogram"), csvBefore);
  EXPECT_THAT(ReportHeadings(), Not(testing::Contains(HasSubstr("compared"))));
  EXPECT_FALSE(Find("btnReference")->isVisible());
}

TEST_F(ReferenceInWindow, AFilteredPartIsComparedWithItsWhole) {
  Start(FTriangles);
  Press("Ctrl+R");
  ShowPeaks();
  Press("Ctrl+F");
  Type("edtFilterAccelerationMaxFrom", "35");
  EXPECT_THAT(TextOf("lblStatisticsEvents"), HasSubstr("Δ -2 events against all 4 of triangles"));
  EXPECT_THAT(NameOf("btnVerdictPeak"), Not(HasSubstr("Δ"))) << "the verdict is on the whole";
}

TEST_F(ReferenceInWindow, OneWithoutEventsIsSaidAndNotDrawn) {
  Start(Save("none.kshock", RisingEvents(0)));
  Press("Ctrl+R");
  Open(FThree);
  ShowPeaks();
  EXPECT_THAT(TextOf("lblStatisticsEvents"), HasSubstr("Δ +3 events against all 0 of none"));
  EXPECT_TRUE(Find<TCountChart>("ChartHistogram")->Legend().Contents().entries.empty());
  EXPECT_THAT(Details(), HasSubstr("g against –"));
  EXPECT_THAT(ReportHeadings(), Not(testing::Contains(HasSubstr("Peaks, compared"))));
}

TEST_F(ReferenceInWindow, ALayoutBringsItBack) {
  const TTempFolder settings;
  FProgram.findSettingsFolder = [&settings] { return (settings.Path() / "").string(); };
  Start(FTriangles);
  Press("Ctrl+R");
  ASSERT_TRUE(QTest::qWaitFor([this] { return FForm->Flow().Mission().Analysis.has_value(); }, kPatienceMs));
  Find<QAction>("actLayoutReference")->trigger();
  Press("Ctrl+Shift+U");
  FForm->close();
  FForm.reset();
  Start(FThree);
  EXPECT_THAT(NameOf("btnReference"), StartsWith("Δ against triangles: "));
  EXPECT_TRUE(Find<QAction>("actLayoutReference")->isChecked());
  Find<QAction>("actLayoutReference")->trigger();
  Press("Ctrl+Shift+U");
  FForm->close();
  FForm.reset();
  Start(FThree);
  EXPECT_FALSE(Find("btnReference")->isVisible());
}

}  // namespace
