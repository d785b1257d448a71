// The charts of all events, each alone.
#include <gmock/gmock.h>

#include "gui/charts/uCountChart.h"
#include "gui/charts/uDamageChart.h"
#include "gui/charts/uExceedanceChart.h"
#include "tests/support/uChartHands.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

// What the status bar says of a chart at a place.
std::string SaidAt(TTimeChart& chart, const QPoint& place) {
  QString said;
  const auto connection =
      QObject::connect(&chart, &TTimeChart::CursorValueChanged, [&said](const QString& text) { said = text; });
  QTest::mouseMove(&chart, {1, 1});
  QTest::mouseMove(&chart, place);
  QObject::disconnect(connection);
  return said.toStdString();
}

std::vector<std::string> Texts(const TDataset& table, std::size_t field) {
  std::vector<std::string> texts;
  for (std::size_t row = 0; row < table.RowCount(); ++row) texts.push_back(table.DisplayText(row, field));
  return texts;
}

TEST(CountChart, StepsSayWhatTheyCountWherePointedAt) {
  TCountChart chart(TCountChart::TBars::Steps, "Chart", "Histogram", nullptr);
  Show(chart);
  EXPECT_FALSE(chart.HasData());
  EXPECT_EQ(chart.Table().RowCount(), 0U);
  chart.SetBars({{0, 2, 7, "0 to 2 g"}, {2, 4, 0, "2 to 4 g"}, {4, 6, 1, "4 to 6 g"}}, "Peak (g)");
  Settle();
  EXPECT_THAT(SaidAt(chart, PointAt(chart, 1, 3)), HasSubstr("0 to 2 g: 7 events"));
  EXPECT_THAT(SaidAt(chart, PointAt(chart, 5, 6)), HasSubstr("4 to 6 g: 1 event"));
  EXPECT_THAT(SaidAt(chart, PointAt(chart, 3, 1)), testing::Not(HasSubstr("event"))) << "nothing is counted there";
  EXPECT_GE(ValuesOf(chart).range().upper, 7);
  const TDataset table = chart.Table();
  EXPECT_EQ(table.Fields()[0].Label, "Peak (g) from");
  EXPECT_THAT(Texts(table, 1), ElementsAre("2", "4", "6"));
  EXPECT_THAT(Texts(table, 2), ElementsAre("7", "0", "1"));
  chart.Range().ChangeTimes({3, 6});
  EXPECT_EQ(chart.VisibleStatistics().rows.front().at(1), "1") << "of the steps in sight";
  chart.Clear();
  EXPECT_FALSE(chart.HasData());
}

TEST(CountChart, NamesStandBelowEachOtherTheFirstOnTop) {
  TCountChart chart(TCountChart::TBars::Names, "Chart", "Events by direction", nullptr);
  Show(chart);
  chart.SetBars({{0, 0, 9, "X-pos"}, {0, 0, 2, "unclear"}}, "Direction");
  Settle();
  const int middle = MiddleOf(chart).x();
  const QRect rect = RectOf(chart).rect();
  EXPECT_THAT(SaidAt(chart, {middle, rect.top() + rect.height() / 4}), HasSubstr("X-pos: 9 events"));
  EXPECT_THAT(SaidAt(chart, {middle, rect.top() + rect.height() * 3 / 4}), HasSubstr("unclear: 2 events"));
  EXPECT_THAT(Texts(chart.Table(), 0), ElementsAre("X-pos", "unclear"));
  // Those that have no room share the last bar.
  std::vector<TCountBar> many(60, {0, 0, 1, "X-pos Y-neg Z-pos"});
  many[0].count = 5;
  chart.SetBars(many, "Direction");
  Settle();
  EXPECT_THAT(SaidAt(chart, {middle, RectOf(chart).rect().top() + 4}), HasSubstr("X-pos Y-neg Z-pos: 5 events"));
  EXPECT_THAT(SaidAt(chart, {middle, RectOf(chart).rect().bottom() - 4}), HasSubstr(" others: "));
  EXPECT_EQ(chart.Table().RowCount(), 60U);
  chart.resize(800, 2000);
  Settle();
  EXPECT_THAT(SaidAt(chart, {middle, RectOf(chart).rect().bottom() - 4}), HasSubstr("Z-pos: 1 event"));
}

TEST(CountChart, AReferenceIsAnOutlineInPercentOfItsOwnEvents) {
  TCountChart chart(TCountChart::TBars::Steps, "Chart", "Histogram", nullptr);
  Show(chart);
  chart.SetBars({{0, 2, 1, "0 to 2 g", 30}, {2, 4, 3, "2 to 4 g", 10}, {4, 6, 0, "4 to 6 g", 0}}, "Peak (g)", "other");
  Settle();
  EXPECT_THAT(SaidAt(chart, PointAt(chart, 1, 3)), HasSubstr("0 to 2 g: 1 event, 25 % · other 75 % · Δ -50 %"));
  const QColor ink = chart.Legend().Contents().entries.at(1).ink;
  const auto inkAt = [&](double x, double percent) {
    return Ink(chart, ink, {PointAt(chart, x, percent) - QPoint(20, 2), QSize(40, 5)});
  };
  EXPECT_GT(inkAt(1, 75), 20);
  EXPECT_GT(inkAt(3, 25), 20);
  EXPECT_EQ(inkAt(1, 50), 0);
  chart.SetBars({{0, 2, 1, "0 to 2 g"}}, "Peak (g)");
  EXPECT_TRUE(chart.Legend().Contents().entries.empty());
  EXPECT_EQ(ValuesOf(chart).label(), "Events");
}

TEST(ExceedanceChart, SaysWhichPartOfTheEventsExceedsAValue) {
  TExceedanceChart chart("Chart", "Exceedance", nullptr);
  Show(chart);
  EXPECT_FALSE(chart.HasData());
  const std::vector<double> peaks = {31, 3, 4, 4, 5, 6, 7, 9, 12, 18};
  chart.SetValues(TExceedance(peaks), "Peak", "g");
  Settle();
  EXPECT_EQ(TitleOf(chart), "Exceedance · P50 6.5 · P90 24.5 · P95 31 · P99 31 g");
  EXPECT_THAT(SaidAt(chart, PointAt(chart, 18.5, 20)), HasSubstr("18 g: exceeded by 15 % of the events"));
  EXPECT_LE(ValuesOf(chart).range().lower, 5) << "the largest is exceeded by 5 %";
  EXPECT_THAT(Texts(chart.Table(), 0), ElementsAre("3", "4", "4", "5", "6", "7", "9", "12", "18", "31"));
  EXPECT_EQ(Texts(chart.Table(), 1).back(), "5");

  const std::vector<double> others = {10, 50};
  chart.SetValues(TExceedance(peaks), "Peak", "g", {"other", TExceedance(others)});
  Settle();
  EXPECT_THAT(TitleOf(chart), HasSubstr("P90 24.5 (Δ -25.5)"));
  EXPECT_GE(chart.Range().Full().end, 50);
  EXPECT_THAT(SaidAt(chart, PointAt(chart, 18.5, 20)), HasSubstr(" · other 75 % · Δ -60 %"));
  EXPECT_EQ(chart.Table().Fields()[2].Label, "Peak (g) other");
  EXPECT_EQ(Texts(chart.Table(), 2).at(1), "50");
  EXPECT_EQ(Texts(chart.Table(), 2).at(2), "");
  EXPECT_EQ(chart.VisibleStatistics().rows.back().back(), "-19");

  chart.SetValues(TExceedance(std::vector<double>{7}), "Peak", "g");
  Settle();
  EXPECT_THAT(TitleOf(chart), StartsWith("Exceedance · P50 7 · P90 7"));
  EXPECT_THAT(SaidAt(chart, PointAt(chart, 7, 50)), HasSubstr("7 g: exceeded by 50 %"));
}

TEST(DamageChart, DrawsManyEventsAndFindsTheNearest) {
  TDamageChart chart(nullptr);
  Show(chart);
  std::vector<TDamageEvent> events;
  for (std::size_t i = 0; i < 50000; ++i) {
    const auto place = static_cast<double>(i % 100);
    events.push_back({i, At(0), {0.01 * place, 10 + 0.2 * place}});
  }
  events.push_back({50000, At(kMinute), {4, 80}});
  chart.SetEvents(std::move(events), {});
  std::size_t clicked = 0;
  QObject::connect(&chart, &TDamageChart::EventClicked, [&clicked](std::size_t event) { clicked = event; });
  Settle();
  QTest::mouseClick(&chart, Qt::LeftButton, {}, PointAt(chart, 4, 80) + QPoint(3, 3));
  EXPECT_EQ(clicked, 50000U);
  EXPECT_THAT(SaidAt(chart, PointAt(chart, 4, 80)), HasSubstr("event 50000 · "));
  EXPECT_THAT(SaidAt(chart, PointAt(chart, 3, 20)), testing::EndsWith("m/s")) << "nothing is near";

  const auto boundary = [&chart](const std::optional<TFragility>& limits) {
    chart.SetLimits(limits);
    Settle();
    return chart.grab().toImage().pixelColor(PointAt(chart, 4.2, 70));
  };
  EXPECT_NE(boundary(TFragility{3, 50}), boundary(TFragility{3, 75})) << "the area beyond the boundary is shaded";
  EXPECT_THAT(Texts(chart.Table(), 4), testing::Contains("yes").Times(1));
  boundary(std::nullopt);
  EXPECT_EQ(Texts(chart.Table(), 4).back(), "");
  EXPECT_EQ(chart.VisibleStatistics().rows.front().at(1), "50001");
  chart.Clear();
  EXPECT_THAT(Texts(chart.Table(), 0), IsEmpty());
}

}  // namespace
