#include "gui/report/uReportSections.h"

#include <algorithm>
#include <functional>

#include "analysis/uShockMetrics.h"
#include "gui/common/uQtText.h"
#include "gui/report/uEventCard.h"
#include "gui/report/uPaperText.h"
#include "gui/report/uReportCover.h"
#include "gui/report/uReportTables.h"

namespace {

constexpr double kChartPart = 0.42;       // of the page's height, so that two charts stand on one page
constexpr double kMaxSectionChart = 330;  // pt
constexpr double kPeaksPart = 0.7;        // of that height
constexpr double kCardGap = 10;           // pt between cards

double ChartHeight(const TPageFlow& flow) {
  return std::min(flow.Area().height() * kChartPart, kMaxSectionChart);
}

void AddEventsChart(TPageFlow& flow, const TReportData& data, TReportCharts& charts) {
  const bool none = data.facts.events.empty();
  flow.AddHeading(QObject::tr("Events chart"), none ? 20 : ChartHeight(flow));
  if (none) return flow.AddParagraph(QObject::tr("There are no shock events."));
  flow.Add(ChartHeight(flow), [&charts](QPainter& painter, const QRectF& rect) { charts.PaintEvents(painter, rect); });
}

// Only beside a reference.
void AddPeaks(TPageFlow& flow, const TReportData& data, TReportCharts& charts) {
  const auto& reference = data.facts.reference;
  if (!reference || data.facts.events.empty() || reference->events == 0) return;
  const double height = ChartHeight(flow) * kPeaksPart;
  flow.AddHeading(QObject::tr("Peaks, compared with %1").arg(PlainText(ReferenceName(*reference))), height);
  flow.Add(height, [&charts](QPainter& painter, const QRectF& rect) { charts.PaintPeaks(painter, rect); });
}

void AddSensorsChart(TPageFlow& flow, const TReportData& data, TReportCharts& charts) {
  const bool none = !data.HasReadings();
  flow.AddHeading(QObject::tr("Sensors chart"), none ? 20 : ChartHeight(flow));
  if (none) return flow.AddParagraph(QObject::tr("The recording has no sensor readings."));
  flow.Add(ChartHeight(flow), [&charts](QPainter& painter, const QRectF& rect) { charts.PaintSensors(painter, rect); });
}

void AddSelectedEvent(TPageFlow& flow, const TReportData& data, TReportCharts& charts) {
  const auto& event = data.Mission().SelectedEvent;
  const auto& shown = data.contents.shownEvent;
  QString heading = event ? QObject::tr("Shock Report: event %1").arg(*event) : QObject::tr("Shock Report:");
  if (shown && !shown->name.isEmpty()) heading += QObject::tr(", %1").arg(shown->name);
  flow.AddHeading(heading, ChartHeight(flow));
  flow.Add(ChartHeight(flow),
           [&charts](QPainter& painter, const QRectF& rect) { charts.PaintSelected(painter, rect); });
}

struct TCardGrid {
  std::size_t columns, rows;
};

TCardGrid CardGridOf(const TReportConfig& config) {
  switch (config.cardsPerPage) {
    case 2:
      return config.landscape ? TCardGrid{2, 1} : TCardGrid{1, 2};
    case 6:
      return config.landscape ? TCardGrid{3, 2} : TCardGrid{2, 3};
    default:
      return {2, 2};
  }
}

void PaintCard(QPainter& painter, const QRectF& place, std::size_t row, const TReportData& data) {
  const TCardLook look;
  const TEventCard card = MakeEventCard(data.Mission(), data.facts.display, data.facts.limits, row);
  PaintEventCard(painter, place, card, look);
  PaintCardChart(painter, CardChartRect(card, place), data.Mission().Events.GetItem(row), data.facts.display, look);
}

void AddEventCards(TPageFlow& flow, const TReportData& data) {
  const auto [columns, rows] = CardGridOf(data.config);
  const std::vector<std::uint32_t>& cards = data.facts.cards;
  // The first section stands on the page of the head, another begins a page.
  const double room = flow.Bookmarks().empty() ? flow.Room() : flow.Area().height();
  const QString which = AsSentence(CardsTitle(data.facts, data.config, data.Mission()));
  const QString curves = QObject::tr("Curves: X solid, Y dashed, Z dotted; acceleration in g.");
  const double heading = TPageFlow::HeadingHeight() + flow.CaptionHeight(which) + flow.CaptionHeight(curves);
  const double height = (room - heading) / static_cast<double>(rows) - kCardGap;
  const double width = (flow.Width() + kCardGap) / static_cast<double>(columns) - kCardGap;
  flow.AddHeading(QObject::tr("Event cards"),
                  cards.empty() ? LineHeight(TTextStyle::Body) : room - TPageFlow::HeadingHeight());
  flow.AddCaption(which);
  if (!cards.empty()) flow.AddCaption(curves);
  for (std::size_t first = 0; first < cards.size(); first += columns) {
    const std::size_t last = std::min(first + columns, cards.size());
    flow.Add(height, [&data, width, first, last](QPainter& painter, const QRectF& rect) {
      for (std::size_t i = first; i < last; ++i) {
        const double left = rect.left() + static_cast<double>(i - first) * (width + kCardGap);
        PaintCard(painter, {left, rect.top(), width, rect.height()}, data.facts.cards[i], data);
      }
    });
    flow.AddGap(kCardGap);
  }
}

void AddMetrics(TPageFlow& flow, const TReportData& data) {
  const TThresholds levels = ThresholdsOf(data.Mission().Data);
  const auto g = [&data](double level) { return NumberText(TQuantity::Acceleration, level, data); };
  flow.AddHeading(QObject::tr("What the figures mean"), 100);
  const QString texts[] = {
      QObject::tr("Peak: the largest vector sum of the three axes in an event, in g. Its axis is the one with the "
                  "largest single value."),
      QObject::tr("ToT, time over threshold, in ms: how long the vector sum of the axes was at or above %1 g; an "
                  "interval ends below %2 g. ToT total is the sum of all intervals of an event, ToT max the longest.")
          .arg(g(levels.totOn), g(levels.totOff)),
      QObject::tr("IoT, integral over threshold, in g·ms: the area between the vector sum and %1 g where it is above. "
                  "IoT total is the whole area of an event, IoT max that of the largest run. A run that reaches the "
                  "event's last sample counts in the total only.")
          .arg(g(levels.iot)),
      QObject::tr(
          "Clipped: three neighbouring samples stand at one extreme of an axis. The sensor was at the end of its "
          "range, so the true peak is higher."),
      QObject::tr(
          "Δv, the change of velocity, in m/s: the area under the samples around the peak, as a vector of the "
          "three axes. Duration, in ms: how long the vector sum stays above a tenth of the peak. Direction: the "
          "nearest of 26 directions to that vector; the side that was hit is the opposite one. A clipped event, "
          "and one whose pulse has fewer than 5 samples, has none of them."),
      QObject::tr("Dew point: by the formula of the loggers, which multiplies where the textbook takes a power. Do not "
                  "judge condensation by it. At 0 °C and below it is empty."),
      QObject::tr(
          "Events chart: the bars of an event are the peaks of its axes; total is the vector sum. A circle with "
          "a number stands for as many events as would overlap there. Events that the report leaves out are "
          "faint."),
      QObject::tr("Sensors at an event: the reading that is nearest in time to the event's start."),
      QObject::tr("Out of limits: a reading counts until the next one, at most five times the median interval of its "
                  "sensor; so a gap in the recording counts neither as inside nor as outside. A value equal to a limit "
                  "is inside."),
      QObject::tr("Times are those of the logger's clock, without a time zone.")};
  for (const QString& text : texts) flow.AddParagraph(text);
}

}  // namespace

void AddSections(TPageFlow& flow, const TReportData& data, TReportCharts& charts) {
  // By TReportSection.
  const std::function<void()> add[kReportSectionCount] = {
      [&] {
        flow.BeginPage();
        AddCover(flow, data, charts);
        flow.BeginPage();
      },
      [&] { AddMissionDetails(flow, data); },
      [&] { AddVerdict(flow, data); },
      [&] {
        AddSummary(flow, data);
        AddPeaks(flow, data, charts);
      },
      [&] { AddImportantEvents(flow, data); },
      [&] { AddEventsChart(flow, data, charts); },
      [&] { AddSensorsChart(flow, data, charts); },
      [&] { AddSelectedEvent(flow, data, charts); },
      [&] { AddTables(flow, data); },
      [&] { AddEventCards(flow, data); },
      [&] { AddMetrics(flow, data); },
  };
  if (!data.config.Has(TReportSection::Cover)) AddPageHead(flow, data);
  for (const auto& [section, on] : data.config.sections) {
    if (on) add[static_cast<std::size_t>(section)]();
  }
}
