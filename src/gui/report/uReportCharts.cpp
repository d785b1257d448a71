#include "gui/report/uReportCharts.h"

#include <algorithm>

#include "gui/charts/uChartOnPaper.h"
#include "gui/charts/uCountChart.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uExceedanceChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/report/uPaperText.h"

namespace {

constexpr double kEventsPart = 0.58;  // of the height of both charts

}  // namespace

TReportCharts::TReportCharts(const TReportData& data) : FData(data) {}

TReportCharts::~TReportCharts() = default;

TEventsChart& TReportCharts::Events() {
  if (!FEvents) {
    const TShownMission& mission = FData.Mission();
    FEvents = std::make_unique<TEventsChart>();
    PrepareForPaper(*FEvents);
    FEvents->SetEvents(mission.Events, mission.Data, mission.Axes);
    FEvents->SetDisplay(FData.facts.display);
    FEvents->SetVisibleEvents(FData.facts.part.events);
  }
  return *FEvents;
}

TSensorsChart& TReportCharts::Sensors() {
  if (!FSensors) {
    FSensors = std::make_unique<TSensorsChart>();
    PrepareForPaper(*FSensors);
    FSensors->SetDisplay(FData.facts.display);
    FSensors->SetSensors(FData.Mission().Sensors, FData.Mission().Sensors.StartTime);
  }
  return *FSensors;
}

std::optional<TTimeSpan> TReportCharts::WholeSpan() const {
  const TVerdict& verdict = FData.facts.verdict;
  if (!verdict.firstTime || !verdict.lastTime) return std::nullopt;
  return TTimeSpan{*verdict.firstTime, *verdict.lastTime};
}

std::optional<TTimeSpan> TReportCharts::PartSpan() const {
  std::optional<TTimeSpan> span = WholeSpan();
  const TRange& time = FData.config.time;
  if (!span) return span;
  if (time.from) span->start = *time.from;
  if (time.to) span->end = *time.to;
  span->end = std::max(span->start, span->end);
  return span;
}

void TReportCharts::Paint(QPainter& painter, const QRectF& place, TTimeChart& chart,
                          const std::optional<TTimeSpan>& span) {
  if (span) chart.Range().SetTimes(*span);
  SizeForPaper(chart, place.size());
  DrawOnPaper(chart, painter, place.topLeft(), {});
}

void TReportCharts::PaintEvents(QPainter& painter, const QRectF& place) {
  Events().SetSideMargins({});
  Paint(painter, place, Events(), PartSpan());
}

void TReportCharts::PaintSensors(QPainter& painter, const QRectF& place) {
  Sensors().SetSideMargins({});
  Paint(painter, place, Sensors(), PartSpan());
}

void TReportCharts::PaintWhole(QPainter& painter, const QRectF& place) {
  const bool hasEvents = FData.Mission().Events.Count() > 0;
  const bool hasSensors = FData.facts.verdict.firstTime && FData.HasReadings();
  if (!hasEvents && !hasSensors) {
    return DrawLine(painter, {place.left(), place.top(), place.width(), LineHeight(TTextStyle::Body)}, TTextStyle::Body,
                    QObject::tr("The recording has neither events nor sensor readings."), kPaperInk);
  }
  const double split = !hasSensors ? place.height() : hasEvents ? place.height() * kEventsPart : 0;
  const QRectF above(place.left(), place.top(), place.width(), split);
  const QRectF below(place.left(), place.top() + split, place.width(), place.height() - split);
  Events().SetSideMargins({});
  Sensors().SetSideMargins({});
  if (hasEvents && hasSensors) {
    // Both are laid out before their margins are made equal.
    SizeForPaper(Events(), above.size());
    SizeForPaper(Sensors(), below.size());
    AlignMargins(Events(), Sensors());
  }
  if (hasEvents) Paint(painter, above, Events(), WholeSpan());
  if (hasSensors) Paint(painter, below, Sensors(), WholeSpan());
}

void TReportCharts::PaintPeaks(QPainter& painter, const QRectF& place) {
  const TReference& reference = *FData.facts.reference;
  TCountChart histogram(TCountChart::TBars::Steps, {}, QObject::tr("Histogram"), nullptr);
  TExceedanceChart exceedance({}, QObject::tr("Exceedance"), nullptr);
  PrepareForPaper(histogram);
  PrepareForPaper(exceedance);
  const TEventQuantity& quantity = kEventQuantities[kPeakQuantity];
  ShowDistribution(quantity, ValuesOf(quantity, FData.facts.events, FData.Mission().Tables, nullptr),
                   PlainText(ReferenceName(reference)), reference.distributions[kPeakQuantity], histogram, exceedance);
  const QSizeF half(place.width() / 2, place.height());
  Paint(painter, QRectF(place.topLeft(), half), histogram, std::nullopt);
  Paint(painter, QRectF(place.topLeft() + QPointF(half.width(), 0), half), exceedance, std::nullopt);
}

void TReportCharts::PaintSelected(QPainter& painter, const QRectF& place) {
  if (FData.contents.shownEvent) return FData.contents.shownEvent->paint(painter, place);
  const TShownMission& mission = FData.Mission();
  if (!FSelected) {
    FSelected = std::make_unique<TSelectedEventChart>();
    PrepareForPaper(*FSelected);
    FSelected->SetDisplay(FData.facts.display);
    FSelected->ShowEvent(mission.Events, mission.SelectedEvent.value_or(mission.Events.Count()), mission.Data);
  }
  Paint(painter, place, *FSelected, std::nullopt);
}
