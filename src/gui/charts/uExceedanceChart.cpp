#include "gui/charts/uExceedanceChart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

#include "gui/charts/uChartPaint.h"
#include "gui/charts/uCountChart.h"
#include "gui/charts/uReferenceLooks.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr std::array kPercentiles = {50, 90, 95, 99};
constexpr double kValueRoom = 1.04;  // of the values, beyond the largest
constexpr int kDigits = 4;
constexpr double kDotRadius = 2;       // px
constexpr std::size_t kMaxDots = 200;  // more are a line
constexpr std::size_t kHistogramSteps = 30;

}  // namespace

TExceedanceChart::TExceedanceChart(const QString& name, const QString& title, QWidget* parent)
    : TAnalysisChart(TAxisUnit::Number, name, title, parent) {
  SetPlaceholder(tr("No events"));
  SetValueTitle(tr("Exceeded by"), tr("% of events"));
  SetLogarithmic(ValueAxis(), true);
  Restyle();
  Clear();
}

QString TExceedanceChart::PercentileText(int percentile) const {
  const double value = FValues.Percentile(percentile / 100.0);
  const QString text = tr("P%1 %2").arg(percentile).arg(Digits(value, kDigits));
  if (!HasReference()) return text;
  const double there = FReference.values.Percentile(percentile / 100.0);
  return tr("%1 (Δ %2)").arg(text, SignedDigits(value - there, kDigits));
}

void TExceedanceChart::SetValues(TExceedance values, const QString& quantity, const QString& unit,
                                 TReferenceCurve reference) {
  FValues = std::move(values);
  FReference = std::move(reference);
  FQuantity = quantity;
  FUnit = unit;
  SetTimeTitle(tr("%1 (%2)").arg(quantity, unit));
  FillLegend();
  QString title = tr("Exceedance");
  if (FValues.Values().empty()) {
    Legend().SetTitle(title);
    return SetFullRange(std::nullopt);
  }
  for (const int percentile : kPercentiles) title += " · " + PercentileText(percentile);
  Legend().SetTitle(tr("%1 %2").arg(title, unit));
  double min = FValues.Values().front();
  double max = FValues.Values().back();
  if (HasReference()) {
    min = std::min(min, FReference.values.Values().front());
    max = std::max(max, FReference.values.Values().back());
  }
  SetFullRange(TTimeSpan{std::min(0.0, min), max > 0 ? max * kValueRoom : std::max(max, min + 1)});
}

std::vector<TLegendEntry> TExceedanceChart::LegendEntries() const {
  return ReferenceEntries(palette(), FReference.name);
}

// Down to the decade of the largest value.
void TExceedanceChart::ScaleValues() {
  const std::size_t count = FValues.Values().size();
  double last = count == 0 ? 10 : ExceededBy(count - 1);
  if (HasReference()) {
    const TExceedance& reference = FReference.values;
    last = std::min(last, 100 * reference.ExceededPart(reference.Values().size() - 1));
  }
  ValueAxis().setRange(std::min(10.0, std::pow(10.0, std::floor(std::log10(last)))), 120);
}

QPointF TExceedanceChart::PlaceOf(const TExceedance& of, std::size_t value) const {
  return {TimeAxis().coordToPixel(of.Values()[value]), ValueAxis().coordToPixel(100 * of.ExceededPart(value))};
}

std::size_t TExceedanceChart::ValueAt(double x) const {
  const auto values = FValues.Values();
  const auto after = std::ranges::upper_bound(values, TimeAxis().pixelToCoord(x));
  return after == values.begin() ? 0 : static_cast<std::size_t>(after - values.begin()) - 1;
}

// A value a pixel at most.
void TExceedanceChart::PaintData(QCPPainter& painter) {
  for (const int percentile : kPercentiles) {
    DrawLevel(painter, Labels(), ValueAxis(), 100.0 - percentile,
              tr("P%1 %2 %3").arg(percentile).arg(Digits(FValues.Percentile(percentile / 100.0), kDigits), FUnit),
              FaintInk());
  }
  const QRectF rect = Rect().rect();
  const std::size_t first = ValueAt(rect.left());
  const std::size_t last = std::min(ValueAt(rect.right()) + 1, FValues.Values().size() - 1);
  QPolygonF line;
  for (std::size_t i = first; i <= last; ++i) {
    line.append(PlaceOf(FValues, i));
    i = std::max(i, std::min(ValueAt(line.last().x() + 0.5), last));
    line.append(PlaceOf(FValues, i));
  }
  const QColor ink = InkOn(palette(), QColor(TokensOf(palette()).accent));
  painter.save();
  painter.setClipRect(rect.adjusted(-1, -1, 1, 1), Qt::IntersectClip);
  painter.setAntialiasing(true);
  const auto draw = [&](const QPen& pen) {
    painter.setPen(pen);
    painter.drawPolyline(line);
    Labels().AddCurve(line);
  };
  draw(QPen(ink, kCurveWidth));
  if (last - first < kMaxDots) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    for (std::size_t i = first; i <= last; ++i) painter.drawEllipse(PlaceOf(FValues, i), kDotRadius, kDotRadius);
  }
  if (HasReference()) {
    line.clear();
    const TExceedance& reference = FReference.values;
    for (std::size_t i = 0; i < reference.Values().size(); ++i) line.append(PlaceOf(reference, i));
    draw(ReferencePen(QColor(TokensOf(palette()).ink)));
  }
  painter.restore();
}

QString TExceedanceChart::MomentText(double value) const {
  return tr("%1 %2").arg(Digits(value, kDigits), FUnit);
}

std::optional<TReading> TExceedanceChart::NearestTo(const QPointF& position) const {
  if (!HasData()) return std::nullopt;
  const std::size_t value = ValueAt(position.x());
  const double at = FValues.Values()[value];
  QString words =
      tr("%1 %2: exceeded by %3 % of the events").arg(Digits(at, kDigits), FUnit, Digits(ExceededBy(value), 3));
  if (HasReference()) {
    const double there = 100 * FReference.values.PartAbove(at);
    words +=
        tr(" · %1 %2 % · Δ %3 %").arg(FReference.name, Digits(there, 3), SignedDigits(ExceededBy(value) - there, 3));
  }
  return TReading{words, palette().color(QPalette::Text), PlaceOf(FValues, value)};
}

TDataset TExceedanceChart::Table() const {
  TDataset table;
  const auto addCurve = [&](const QString& name, const TExceedance& values) {
    const std::size_t value = table.AddField(Utf8(tr("%1 (%2)%3").arg(FQuantity, FUnit, name)), TFieldType::Single);
    table.AddField(Utf8("Exceeded by (%)" + name), TFieldType::Single);
    return [&table, &values, value](std::size_t row) {
      if (row >= values.Values().size()) return;
      table.SetSingle(value, static_cast<float>(values.Values()[row]));
      table.SetSingle(value + 1, static_cast<float>(100 * values.ExceededPart(row)));
    };
  };
  const auto own = addCurve({}, FValues);
  std::function<void(std::size_t)> reference = [](std::size_t) {};
  if (HasReference()) reference = addCurve(" " + FReference.name, FReference.values);
  const std::size_t rows = std::max(FValues.Values().size(), FReference.values.Values().size());
  table.Reserve(rows);
  for (std::size_t row = 0; row < rows; ++row) {
    table.Append();
    own(row);
    reference(row);
  }
  return table;
}

TRangeTable TExceedanceChart::VisibleStatistics() const {
  if (!HasData()) return {};
  TRangeTable table{tr("All shown events"), {tr("Figure"), tr("Value (%1)").arg(FUnit)}, 1, {}};
  if (HasReference()) table.titles << FReference.name << "Δ";
  const auto add = [&](const QString& figure, double part) {
    const double value = FValues.Percentile(part);
    table.rows.push_back({figure, Digits(value)});
    if (!HasReference()) return;
    const double there = FReference.values.Percentile(part);
    table.rows.back() << Digits(there) << SignedDigits(value - there, kDigits);
  };
  add(tr("Smallest"), 0);
  for (const int percentile : kPercentiles) add(tr("P%1").arg(percentile), percentile / 100.0);
  add(tr("Largest"), 1);
  return table;
}

void ShowDistribution(const TEventQuantity& quantity, std::span<const double> values, const QString& reference,
                      const TDistribution& there, TCountChart& histogram, TExceedanceChart& exceedance) {
  const bool isAny = std::ranges::any_of(values, [](double value) { return std::isfinite(value); });
  const TDistribution beside = isAny ? there : TDistribution();
  const QString name = beside.empty() ? QString() : reference;
  const TRoundHistogram steps = HistogramInRoundSteps(values, kHistogramSteps, beside);
  const QString unit = quantity.unit;
  std::vector<TCountBar> bars;
  for (std::size_t i = 0; i < steps.counts.size(); ++i) {
    const double from = steps.first + static_cast<double>(i) * steps.step;
    const double to = from + steps.step;
    bars.push_back({from, to, steps.counts[i], QObject::tr("%1 to %2 %3").arg(Digits(from), Digits(to), unit),
                    steps.referenceCounts[i]});
  }
  const QString title = QObject::tr(quantity.name);
  histogram.SetBars(std::move(bars), QObject::tr("%1 (%2)").arg(title, unit), name);
  exceedance.SetValues(TExceedance(values), title, unit, {name, TExceedance::Of(beside)});
}
