#include "gui/charts/uFrequencyChart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "gui/charts/uChartPaint.h"

namespace {

constexpr double kPeakRadius = 3;  // px

}  // namespace

void TFrequencyChart::SetPinnedLines(std::vector<std::vector<TSpectrumLine>> lines) {
  FPinned = std::move(lines);
  FillLegend();
}

QString TFrequencyChart::PinWords(std::size_t pin) const {
  const bool has = Lines().empty() || !Pins().items[pin].visible || pin >= FPinned.size() || !FPinned[pin].empty();
  return has ? QString() : tr(" (no spectrum)");
}

double TFrequencyChart::MaxHertz() const {
  double max = Lines().back().hertz;
  for (const auto& lines : FPinned) max = std::max(max, lines.empty() ? max : lines.back().hertz);
  return max;
}

std::size_t TFrequencyChart::LineAt(std::span<const TSpectrumLine> lines, double hertz) {
  const auto next = std::ranges::lower_bound(lines, hertz, {}, &TSpectrumLine::hertz);
  if (next == lines.end()) return lines.size() - 1;
  const auto place = static_cast<std::size_t>(next - lines.begin());
  return place > 0 && hertz - lines[place - 1].hertz < next->hertz - hertz ? place - 1 : place;
}

const TSpectrumLine* TFrequencyChart::PeakOf(TSeries series) const {
  const TSpectrumLine* peak = nullptr;
  for (const TSpectrumLine& line : Lines()) {
    const double value = ValueOf(line, series);
    if (line.hertz > 0 && std::isfinite(value) && (peak == nullptr || value > ValueOf(*peak, series))) peak = &line;
  }
  return peak;
}

TFrequencyChart::TExtremes TFrequencyChart::Extremes() const {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  TExtremes found{kInfinity, -kInfinity, kInfinity};
  const std::vector<TSeries> visible = VisibleSeries();
  const auto include = [&](std::span<const TSpectrumLine> lines) {
    for (const TSeries series : visible) {
      for (const TSpectrumLine& line : lines) {
        const double value = ValueOf(line, series);
        if (line.hertz == 0 || !std::isfinite(value)) continue;
        found.min = std::min(found.min, value);
        found.max = std::max(found.max, value);
        if (value > 0) found.minPositive = std::min(found.minPositive, value);
      }
    }
  };
  include(Lines());
  for (const auto& lines : FPinned) include(lines);
  return found;
}

QString TFrequencyChart::StrongestPeak() const {
  const TSpectrumLine* peak = nullptr;
  TSeries strongest = TSeries::X;
  for (const TSeries series : VisibleSeries()) {
    const TSpectrumLine* const own = PeakOf(series);
    if (own == nullptr || (peak != nullptr && !(ValueOf(*own, series) > ValueOf(*peak, strongest)))) continue;
    peak = own;
    strongest = series;
  }
  if (peak == nullptr) return {};
  return tr(" · peak %1 %2 at %3 Hz (%4)")
      .arg(Digits(ValueOf(*peak, strongest), kDigits), ValueUnit(), Digits(peak->hertz, kDigits), NameOf(strongest));
}

void TFrequencyChart::SeriesChanged() {
  ShowTitle();
  Range().RescaleValues();
}

void TFrequencyChart::PaintPins(QCPPainter& painter, const TPointsOf& pointsOf) {
  const TCurveAxes axes{TimeAxis(), ValueAxis()};
  for (std::size_t i = 0; i < FPinned.size(); ++i) {
    if (FPinned[i].size() < 2) continue;
    for (const TSeries series : VisibleSeries()) {
      const std::vector<TEnvelopePoint> points = pointsOf(FPinned[i], series);
      DrawEnvelope(painter, axes, points, PenOf(Pins().items[i]));
      KeepClear(Labels(), axes, points);
    }
  }
}

void TFrequencyChart::PaintPeaks(QCPPainter& painter) {
  painter.setAntialiasing(true);
  painter.setPen(Qt::NoPen);
  for (const TSeries series : VisibleSeries()) {
    const TSpectrumLine* const peak = PeakOf(series);
    if (peak == nullptr) continue;
    const double value = ValueOf(*peak, series);
    const QPointF at(TimeAxis().coordToPixel(peak->hertz), ValueAxis().coordToPixel(value));
    if (!QRectF(Rect().rect()).adjusted(-1, -1, 1, 1).contains(at)) continue;
    painter.setBrush(InkOf(series));
    painter.drawEllipse(at, kPeakRadius, kPeakRadius);
    Labels().AddDot(at, kPeakRadius);
    Labels().AddPoint(
        at,
        tr("%1 %2 %3 at %4 Hz").arg(NameOf(series), Digits(value, kDigits), ValueUnit(), Digits(peak->hertz, kDigits)),
        InkOf(series));
  }
}

QString TFrequencyChart::MomentText(double hertz) const {
  if (Lines().empty()) return {};
  return tr("%1 Hz").arg(Digits(Lines()[LineAt(hertz)].hertz, kDigits));
}

std::vector<TCurve> TFrequencyChart::Curves() const {
  std::vector<TCurve> curves;
  const auto lines = Lines();
  if (lines.empty()) return curves;
  const auto add = [&](const QString& name, const QColor& ink, std::span<const TSpectrumLine> of, TSeries series) {
    curves.push_back({name, ValueUnit(), ink, ValueAxis(), of.size(), [of](std::size_t i) { return of[i].hertz; },
                      [of, series](std::size_t i) { return ValueOf(of[i], series); },
                      [of](double hertz) { return LineAt(of, hertz); },
                      [](double value) { return Digits(value, kDigits); }, [](double value) { return Digits(value); }});
  };
  for (const TSeries series : VisibleSeries()) add(NameOf(series), InkOf(series), lines, series);
  for (std::size_t i = 0; i < FPinned.size(); ++i) {
    if (FPinned[i].empty()) continue;
    const TPin& pin = Pins().items[i];
    for (const TSeries series : VisibleSeries()) add(CurveName(pin, series), PenOf(pin).color(), FPinned[i], series);
  }
  return curves;
}

// Of the lines under the pointer, the one whose top is nearest.
std::optional<TReading> TFrequencyChart::NearestTo(const QPointF& position) const {
  const double hertz = TimeAxis().pixelToCoord(position.x());
  std::optional<TReading> nearest;
  for (TReading& reading : ReadingsAt(hertz)) {
    if (!reading.at) continue;
    const bool nearer =
        !nearest || std::fabs(reading.at->y() - position.y()) < std::fabs(nearest->at->y() - position.y());
    if (nearer) nearest = std::move(reading);
  }
  if (nearest) nearest->text += tr(" at %1").arg(MomentText(hertz));
  return nearest;
}

double TFrequencyChart::CursorMoment(double hertz) const {
  return Lines().empty() ? hertz : Lines()[LineAt(hertz)].hertz;
}

QStringList TFrequencyChart::SpanTexts(double span) const {
  return {tr("Δf %1 Hz").arg(Digits(span))};
}
