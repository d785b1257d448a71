// The pages of the report and their PDF; tests/flows/check_report.py reads the texts back.
#include "gui/report/uReportPages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <cmath>
#include <limits>

#include "gui/charts/uChartOnPaper.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSensorsChart.h"
#include "model/uExceptions1V0.h"
#include "shell/uMissionLoad.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uLogProgress.h"
#include "tests/support/uThreeEvents.h"

using testing::Contains;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

namespace {

class ReportPages : public testing::Test {
 protected:
  void Load(const TTestRecording& recording) {
    Read(recording);
    TNoProgress progress;
    FillMission(FMission, progress);
  }
  void Only(std::initializer_list<TReportSection> sections) {
    FConfig.sections = TReportConfig().sections;
    for (auto& [section, on] : FConfig.sections) on = false;
    std::size_t place = 0;
    for (const TReportSection wanted : sections) {
      const auto found = std::ranges::find(FConfig.sections, wanted, &TReportSectionChoice::section);
      found->on = true;
      std::swap(*found, FConfig.sections.at(place++));
    }
  }
  std::vector<std::string> Bookmarks() {
    std::vector<std::string> titles;
    const TReportPages pages({FMission}, FConfig);
    for (const auto& [title, page] : pages.Bookmarks()) titles.push_back(title.toStdString());
    return titles;
  }
  // The lowest row of a page's area with ink, pt; the footer does not count.
  static double Ink(const TReportPages& pages, int page) {
    QImage image(pages.PageSize().toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    pages.Paint(painter, page);
    for (int y = image.height() - 50; y > 0; --y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixel(x, y) != qRgb(255, 255, 255)) return y;
      }
    }
    return 0;
  }

  TTempFolder FFolder;
  TShownMission FMission;
  TReportConfig FConfig;
};

TEST_F(ReportPages, SectionsStandInTheChosenOrder) {
  Load(ThreeEvents());
  Only({TReportSection::Metrics, TReportSection::Summary, TReportSection::SelectedEvent});
  FMission.SelectedEvent = 1;
  EXPECT_THAT(Bookmarks(), testing::ElementsAre("What the figures mean", "Summary by axis", "Summary by day",
                                                "Shock Report: event 1"));
}

TEST_F(ReportPages, ALongTableTakesAsManyPagesAsItsRowsAndLeavesNoneEmpty) {
  TTestRecording recording =
      TTestRecording().Creator().StartTime(45123.25).MissionHeader(2, 2).Channels({"ACC x", "ACC y", "ACC z"});
  std::vector<TTestRecord> records;
  for (int i = 0; i < 1000; ++i) {
    records.push_back({i * 1000.0, {3, 0, 0}});
    records.push_back({i * 1000.0 + 1, {kEnd, kEnd, kEnd}});
  }
  Load(recording.Data(records));
  Only({TReportSection::Tables, TReportSection::Metrics});
  for (const bool landscape : {false, true}) {
    FConfig.landscape = landscape;
    const TReportPages pages({FMission}, FConfig);
    const int perPage = landscape ? 36 : 59;
    EXPECT_NEAR(pages.Count(), 1000 / perPage + 1, 2);
    for (const int page : {0, 1, pages.Count() - 2}) {
      EXPECT_GT(Ink(pages, page), pages.PageSize().height() - 85) << page << ": full to the bottom";
    }
    EXPECT_GT(Ink(pages, pages.Count() - 1), 100);
  }
}

TEST_F(ReportPages, EventCardsAloneStandBelowTheHead) {
  Load(ThreeEvents());
  Only({TReportSection::EventCards});
  for (const bool landscape : {false, true}) {
    FConfig.landscape = landscape;
    const TReportPages pages({FMission}, FConfig);
    EXPECT_EQ(pages.Count(), 1);
    EXPECT_GT(Ink(pages, 0), pages.PageSize().height() - 85) << "three cards in two rows";
  }
}

TEST_F(ReportPages, WithoutEventsAndReadingsASentenceStandsForEachChart) {
  Load(TTestRecording().Creator().StartTime(45000).MissionHeader(2, 2));
  Only({TReportSection::Cover, TReportSection::EventsChart, TReportSection::SensorsChart});
  const TReportPages pages({FMission}, FConfig);
  ASSERT_EQ(pages.Count(), 2);
  EXPECT_LT(Ink(pages, 1), 150);
}

TEST_F(ReportPages, ACancelledPdfLeavesTheOlderOne) {
  Load(ThreeEvents());
  const TReportPages pages({FMission}, FConfig);
  const auto file = FFolder / "report.pdf";
  TLogProgress done;
  WriteReportPdf(file, pages, done);
  const TBytes older = BytesOfFile(file);
  EXPECT_THAT(done.log, HasSubstr(" of " + std::to_string(pages.Count()) + " @1"));
  // While pages are painted, while the file is finished, and while the disk takes it.
  int calls = 1000000 - done.most;
  ASSERT_GT(calls, pages.Count() + 1);
  for (const int most : {0, pages.Count(), calls - 1}) {
    TLogProgress cancelling;
    cancelling.most = most;
    EXPECT_THROW(WriteReportPdf(file, pages, cancelling), EKorvex) << most;
    EXPECT_EQ(BytesOfFile(file), older);
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(FFolder.Path()), {}), 1) << "nothing is left beside it";
}

// How often, from left to right, a colour begins inside the axes.
template <class TIsInk>
int RunsOf(const QImage& image, const QRect& rect, const TIsInk& isInk) {
  int runs = 0;
  bool before = false;
  for (int x = rect.left(); x <= rect.right(); ++x) {
    bool now = false;
    for (int y = rect.top() + 2; y < rect.bottom() - 2 && !now; ++y) now = isInk(image.pixelColor(x, y));
    if (now && !before) ++runs;
    before = now;
  }
  return runs;
}

TEST(ChartOnPaper, LinesDifferWithoutColoursEvenWhereTheyAreNoisyAndGapsStay) {
  // A reading a second with noise, and an hour without any.
  TSamples temperature, humidity;
  for (int i = 0; i < 20000; ++i) {
    if (i > 9000 && i < 12600) continue;
    temperature.push_back({i * 1000.0, static_cast<float>(20 + std::sin(i / 3000.0) + 0.01 * (i % 2))});
    humidity.push_back({i * 1000.0, static_cast<float>(50 + std::cos(i / 3000.0) + 0.01 * (i % 3))});
  }
  // The last readings part the curves, so that none covers the other.
  temperature.back().value = 10;
  humidity.back().value = 60;
  const TSensorList readings = Sensors({{"Temperature", temperature}, {"RH", humidity}});
  TSensorsChart chart;
  PrepareForPaper(chart);
  SetColour(chart, "Temperature", Qt::red);
  SetColour(chart, "RH", Qt::blue);
  chart.SetSensors(readings, kStart);
  SizeForPaper(chart, {480, 200});
  QImage image(480 * 4, 200 * 4, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.scale(4, 4);
  DrawOnPaper(chart, painter, {0, 0}, "Mission 1");
  const QRect axes = RectOf(chart).rect();
  const QRect inside(axes.topLeft() * 3, axes.size() * 3);  // 0.75 pt a pixel, four pixels of the image a point
  EXPECT_EQ(RunsOf(image, inside, [](const QColor& c) { return c.red() > 200 && c.green() < 90 && c.blue() < 90; }), 2);
  EXPECT_GT(RunsOf(image, inside, [](const QColor& c) { return c.blue() > 200 && c.green() < 90 && c.red() < 90; }),
            30);
}

TEST(ChartOnPaper, TheLegendNamesNoLimitThatIsNotJudged) {
  TEventsChart chart;
  PrepareForPaper(chart);
  const auto names = [&](const TLimits& limits) {
    SetLimits(chart, {{TQuantity::Acceleration, limits}});
    std::vector<std::string> all;
    for (const TLegendEntry& entry : chart.Legend().Contents().entries) all.push_back(entry.name.toStdString());
    return all;
  };
  EXPECT_THAT(names(TLimits{-6, 15}), IsSupersetOf({"alarm 15 g", "alarm -6 g"}));
  EXPECT_THAT(names(TLimits{-std::numeric_limits<double>::infinity(), 15}), Not(Contains(HasSubstr("INF"))));
}

TEST_F(ReportPages, LogosAndTextsOfAnyShapeFit) {
  Load(ThreeEvents());
  FMission.Display.company = std::string(300, 'W');
  MissionData.sTitle = std::string(5000, 'x');
  Only({TReportSection::Cover});
  for (const QSize size : {QSize(4000, 3), QSize(3, 4000), QSize(1, 1), QSize()}) {
    QImage logo(size, QImage::Format_RGB32);
    logo.fill(Qt::red);
    for (const bool landscape : {false, true}) {
      FConfig.landscape = landscape;
      const TReportPages pages({.mission = FMission, .logos = {logo, logo}, .file = "a.kshock"}, FConfig);
      EXPECT_EQ(pages.Count(), 1) << size.width() << " × " << size.height();
      EXPECT_GT(Ink(pages, 0), 300);
    }
  }
}

}  // namespace
