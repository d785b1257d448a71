#include "gui/charts/uExceedanceChart.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr std::array kPercentiles = {50, 90, 95, 99};
constexpr double kRoom = 1.04;  // of the values, beyond the largest
constexpr int kDigits = 4;
constexpr double kDotRadius = 2;       // px
constexpr std::size_t kMaxDots = 200;  // more are a line

}  // namespace

TExceedanceChart::TExceedanceChart(const QString& name, const QString& title, QWidget* parent)
    : TAnalysisChart(TAxisUnit::Number, name, title, parent) {
  SetPlaceholder(tr("No events"));
  SetValueTitle(tr("Exceeded by"), tr("% of events"));
  SetLogarithmic(ValueAxis(), true);
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) { Paint(painter); });
  Restyle();
  Clear();
}

void TExceedanceChart::SetValues(TExceedance values, const QString& quantity, const QString& unit) {
  FValues = std::move(values);
  FQuantity = quantity;
  FUnit = unit;
  SetTimeTitle(tr("%1 (%2)").arg(quantity, unit));
  QString title = tr("Exceedance");
  if (FValues.Values().empty()) {
    Legend().SetTitle(title);
    return SetFullRange(std::nullopt);
  }
  for (const int percentile : kPercentiles) {
    title += tr(" · P%1 %2").arg(percentile).arg(Digits(FValues.Percentile(percentile / 100.0), kDigits));
  }
  Legend().SetTitle(tr("%1 %2").arg(title, unit));
  const double min = FValues.Values().front();
  const double max = FValues.Values().back();
  SetFullRange(TTimeSpan{std::min(0.0, min), max > 0 ? max * kRoom : std::max(max, min + 1)});
}

// Down to the decade of the largest value.
void TExceedanceChart::ScaleValues() {
  const std::size_t count = FValues.Values().size();
  const double last = count == 0 ? 10 : ExceededBy(count - 1);
  ValueAxis().setRange(std::min(10.0, std::pow(10.0, std::floor(std::log10(last)))), 120);
}

QPointF TExceedanceChart::PlaceOf(std::size_t value) const {
  return {TimeAxis().coordToPixel(FValues.Values()[value]), ValueAxis().coordToPixel(ExceededBy(value))};
}

std::size_t TExceedanceChart::ValueAt(double x) const {
  const auto values = FValues.Values();
  const auto after = std::ranges::upper_bound(values, TimeAxis().pixelToCoord(x));
  return after == values.begin() ? 0 : static_cast<std::size_t>(after - values.begin()) - 1;
}

// A value a pixel at most.
void TExceedanceChart::Paint(QCPPainter& painter) {
  if (!HasData()) return;
  painter.setFont(font());
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
    line.append(PlaceOf(i));
    i = std::max(i, std::min(ValueAt(line.last().x() + 0.5), last));
    line.append(PlaceOf(i));
  }
  const QColor ink = InkOn(palette(), QColor(TokensOf(palette()).accent));
  painter.save();
  painter.setClipRect(rect.adjusted(-1, -1, 1, 1), Qt::IntersectClip);
  painter.setAntialiasing(true);
  painter.setPen(QPen(ink, kCurveWidth));
  painter.drawPolyline(line);
  if (last - first < kMaxDots) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    for (std::size_t i = first; i <= last; ++i) painter.drawEllipse(PlaceOf(i), kDotRadius, kDotRadius);
  }
  painter.restore();
  Labels().AddCurve(line);
  Labels().Paint(painter, palette());
}

QString TExceedanceChart::MomentText(double value) const {
  return tr("%1 %2").arg(Digits(value, kDigits), FUnit);
}

std::optional<TReading> TExceedanceChart::NearestTo(const QPointF& position) const {
  if (!HasData()) return std::nullopt;
  const std::size_t value = ValueAt(position.x());
  return TReading{tr("%1 %2: exceeded by %3 % of the events")
                      .arg(Digits(FValues.Values()[value], kDigits), FUnit, Digits(ExceededBy(value), 3)),
                  palette().color(QPalette::Text), PlaceOf(value)};
}

TDataset TExceedanceChart::Table() const {
  TDataset table;
  const std::size_t value = table.AddField(Utf8(tr("%1 (%2)").arg(FQuantity, FUnit)), TFieldType::Single);
  const std::size_t part = table.AddField("Exceeded by (%)", TFieldType::Single);
  table.Reserve(FValues.Values().size());
  for (std::size_t i = 0; i < FValues.Values().size(); ++i) {
    table.Append();
    table.SetSingle(value, static_cast<float>(FValues.Values()[i]));
    table.SetSingle(part, static_cast<float>(ExceededBy(i)));
  }
  return table;
}

TRangeTable TExceedanceChart::VisibleStatistics() const {
  if (!HasData()) return {};
  TRangeTable table{tr("All shown events"),
                    {tr("Figure"), tr("Value (%1)").arg(FUnit)},
                    1,
                    {{tr("Smallest"), Digits(FValues.Values().front())}}};
  for (const int percentile : kPercentiles) {
    table.rows.push_back({tr("P%1").arg(percentile), Digits(FValues.Percentile(percentile / 100.0))});
  }
  table.rows.push_back({tr("Largest"), Digits(FValues.Values().back())});
  return table;
}
