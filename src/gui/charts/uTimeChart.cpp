#include "gui/charts/uTimeChart.h"

#include <cmath>
#include <utility>

#include "base/uDateTime.h"
#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kMsPerSecond = 1000;
constexpr double kMillisecondsBelow = 600 * kMsPerSecond / kMsPerDay;  // days; a longer view tells whole seconds
constexpr double kMaxPeriod = 100;                                     // s; the frequency of a longer one says nothing

QString HertzText(double seconds) {
  const double hertz = 1 / seconds;
  return QObject::tr("1/Δt %1 Hz").arg(hertz < 1 ? QString::number(hertz, 'g', 4) : Figure(hertz));
}

}  // namespace

TTimeChart::TTimeChart(TAxisUnit unit, QWidget* parent)
    : TChartPlot(unit, parent),
      FRange(*this, [this] { ScaleValues(); }),
      FMarks(*this, *this),
      FCursors(*this, *this),
      FGestures(*this, *this, FRange, FMarks, FCursors) {
  connect(&FRange, &TChartRange::TimesChanged, this, &TTimeChart::TimeRangeChanged);
  connect(&FRange, &TChartRange::ResetDone, this, &TTimeChart::ZoomReset);
  connect(&FMarks, &TChartMarks::IndicatorMoved, this, &TTimeChart::IndicatorMoved);
  connect(&FCursors, &TChartCursors::Measured, this, &TTimeChart::CursorValueChanged);
  connect(&FGestures, &TChartGestures::CursorValueChanged, this, &TTimeChart::CursorValueChanged);
  connect(&FGestures, &TChartGestures::MenuRequested, this, &TTimeChart::MenuRequested);
  connect(&FGestures, &TChartGestures::StatisticsRequested, this, &TTimeChart::StatisticsRequested);
  connect(&FGestures, &TChartGestures::Clicked, this, &TTimeChart::Clicked);
  connect(&FGestures, &TChartGestures::Unclicked, this, &TTimeChart::Unclicked);
}

void TTimeChart::SetPointsVisible(bool visible) {
  if (std::exchange(FPointsVisible, visible) != visible) QueueReplot();
}

void TTimeChart::SetFullRange(std::optional<std::pair<double, double>> range) {
  FMarks.Reset();
  FCursors.Reset();
  FGestures.EndDrag();
  FRange.SetFull(range);
}

QString TTimeChart::MomentText(double time) const {
  const bool milliseconds = TimeAxis().range().size() < kMillisecondsBelow;
  return QtText(FormatDateTime(DateTimeMask() + (milliseconds ? ".zzz" : ""), time));
}

QString TTimeChart::CursorText(const QPointF& position) const {
  QStringList values;
  for (const TReading& reading : ReadingsAt(MomentAt(position))) values.append(reading.text);
  return values.join("  ·  ");
}

QStringList TTimeChart::SpanTexts(double span) const {
  const QString sign = span < 0 ? "−" : "";
  const double length = std::fabs(span);
  const bool days = Unit() == TAxisUnit::Days;
  const double seconds = (days ? length * kMsPerDay : length) / kMsPerSecond;
  QStringList texts;
  texts.append(days ? tr("Δt %1%2").arg(sign, QtText(FormatDuration(length)))
                    : tr("Δt %1%2 ms").arg(sign, Figure(length)));
  if (seconds > 0 && seconds <= kMaxPeriod) texts.append(HertzText(seconds));
  return texts;
}
