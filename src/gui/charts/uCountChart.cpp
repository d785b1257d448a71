#include "gui/charts/uCountChart.h"

#include <algorithm>
#include <cmath>

#include "gui/charts/uChartPaint.h"
#include "gui/charts/uReferenceLooks.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kCountRoom = 1.08;   // of the counts, beyond the longest bar
constexpr double kHalfBar = 0.4;      // of the place of a name
constexpr double kBarGap = 1;         // px, between bars that are wider than that
constexpr double kNameHeight = 1.15;  // lines of text, for a name
constexpr float kBarFill = 0.55F;
constexpr double kHoursStep = 3;

// Whole numbers only.
class TCountTicker final : public QCPAxisTicker {
 protected:
  double getTickStep(const QCPRange& range) override {
    const double step = std::max(1.0, QCPAxisTicker::getTickStep(range));
    return step == std::floor(step) ? step : 2 * step;  // 2.5
  }
};

}  // namespace

TAxisUnit TCountChart::UnitOf(TBars bars) {
  return bars == TBars::Days ? TAxisUnit::Days : TAxisUnit::Number;
}

TCountChart::TCountChart(TBars bars, const QString& name, const QString& title, QWidget* parent)
    : TAnalysisChart(UnitOf(bars), name, title, parent), FKind(bars), FTitle(title) {
  SetPlaceholder(tr("No events"));
  if (FKind == TBars::Names) ValueAxis().setRangeReversed(true);
  TitleCounts();
  if (FKind == TBars::Hours) {
    auto hours = QSharedPointer<QCPAxisTickerFixed>::create();
    hours->setTickStep(kHoursStep);
    hours->setScaleStrategy(QCPAxisTickerFixed::ssMultiples);
    TimeAxis().setTicker(hours);
  }
  if (FKind == TBars::Names || FKind == TBars::Hours) Range().SetZoomable(false);
  Restyle();
  Clear();
}

QCPAxis& TCountChart::CountAxis() const {
  return FKind == TBars::Names ? TimeAxis() : static_cast<QCPAxis&>(ValueAxis());
}

void TCountChart::TitleCounts() {
  const QString title = FReference.isEmpty() ? tr("Events") : tr("% of events");
  FKind == TBars::Names ? SetTimeTitle(title) : ValueAxis().setLabel(title);
  CountAxis().setTicker(FReference.isEmpty() ? QSharedPointer<TCountTicker>::create().staticCast<QCPAxisTicker>()
                                             : QSharedPointer<QCPAxisTicker>::create());
}

double TCountChart::Length(const TCountBar& bar) const {
  const auto count = static_cast<double>(bar.count);
  if (FReference.isEmpty()) return count;
  return FEvents > 0 ? 100 * count / FEvents : 0;
}

double TCountChart::ReferenceLength(const TCountBar& bar) const {
  return FReferenceEvents > 0 ? 100 * static_cast<double>(bar.reference) / FReferenceEvents : 0;
}

double TCountChart::MaxLength(const std::vector<TCountBar>& bars) const {
  double max = std::max(1.0, FLevel.value_or(0));
  for (const TCountBar& bar : bars) max = std::max({max, Length(bar), ReferenceLength(bar)});
  return max;
}

void TCountChart::SetLevel(std::optional<double> events, const QString& name) {
  if (FLevel == events && FLevelName == name) return;
  FLevel = events;
  FLevelName = name;
  if (HasData()) ScaleValues();
  QueueReplot();
}

void TCountChart::SetBars(std::vector<TCountBar> bars, const QString& quantity, const QString& reference) {
  FBars = std::move(bars);
  FEvents = FReferenceEvents = 0;
  for (const TCountBar& bar : FBars) {
    FEvents += static_cast<double>(bar.count);
    FReferenceEvents += static_cast<double>(bar.reference);
  }
  const bool changes = FReference.isEmpty() != reference.isEmpty();
  FReference = reference;
  if (changes) TitleCounts();
  FillLegend();
  FQuantity = quantity.isEmpty() ? FTitle : quantity;
  Legend().SetTitle(FTitle);
  if (FKind == TBars::Steps || FKind == TBars::Hours) SetTimeTitle(FQuantity);
  FDrawn.clear();
  if (FBars.empty()) return SetFullRange(std::nullopt);
  if (FKind == TBars::Names) return SetFullRange(TTimeSpan{0, MaxLength(FBars) * kCountRoom});
  FDrawn = FBars;
  SetFullRange(TTimeSpan{FBars.front().from, FBars.back().to});
}

// Names wait for the height that they get.
void TCountChart::ScaleValues() {
  if (FKind != TBars::Names) ValueAxis().setRange(0, MaxLength(FBars) * kCountRoom);
}

std::vector<TLegendEntry> TCountChart::LegendEntries() const {
  return ReferenceEntries(palette(), FReference);
}

void TCountChart::Restyle() {
  TTimeChart::Restyle();
  if (FKind != TBars::Names) return;
  ValueAxis().grid()->setPen(Qt::NoPen);
  ValueAxis().grid()->setZeroLinePen(Qt::NoPen);
}

void TCountChart::Prepare() {
  if (FKind != TBars::Names || FBars.empty()) return;
  const double rows = Rect().rect().height() / (fontMetrics().height() * kNameHeight);
  const std::size_t count = std::clamp<std::size_t>(static_cast<std::size_t>(rows), 1, FBars.size());
  if (FDrawn.size() == count) return;
  FDrawn.assign(FBars.begin(), FBars.begin() + static_cast<std::ptrdiff_t>(count));
  if (count < FBars.size()) {
    for (std::size_t i = count; i < FBars.size(); ++i) {
      FDrawn.back().count += FBars[i].count;
      FDrawn.back().reference += FBars[i].reference;
    }
    FDrawn.back().name = tr("%1 others").arg(FBars.size() - count + 1);
  }
  auto names = QSharedPointer<QCPAxisTickerText>::create();
  for (std::size_t i = 0; i < count; ++i) names->addTick(static_cast<double>(i), FDrawn[i].name);
  ValueAxis().setTicker(names);
  ValueAxis().setRange(-0.5, static_cast<double>(count) - 0.5);
  TimeAxis().setRange(0, MaxLength(FDrawn) * kCountRoom);
}

QRectF TCountChart::RectOf(std::size_t bar, double length) const {
  const TCountBar& one = FDrawn[bar];
  if (FKind == TBars::Names) {
    const auto place = static_cast<double>(bar);
    return QRectF(QPointF(TimeAxis().coordToPixel(0), ValueAxis().coordToPixel(place - kHalfBar)),
                  QPointF(TimeAxis().coordToPixel(length), ValueAxis().coordToPixel(place + kHalfBar)))
        .normalized();
  }
  QRectF rect = QRectF(QPointF(TimeAxis().coordToPixel(one.from), ValueAxis().coordToPixel(length)),
                       QPointF(TimeAxis().coordToPixel(one.to), ValueAxis().coordToPixel(0)))
                    .normalized();
  if (rect.width() > 3 * kBarGap) rect.adjust(0, 0, -kBarGap, 0);
  return rect;
}

void TCountChart::PaintData(QCPPainter& painter) {
  const QColor ink = InkOn(palette(), QColor(TokensOf(palette()).accent));
  QColor fill = ink;
  fill.setAlphaF(kBarFill);
  const QRectF rect = Rect().rect();
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setAntialiasing(false);
  for (std::size_t i = 0; i < FDrawn.size(); ++i) {
    const QRectF bar = RectOf(i, Length(FDrawn[i])) & rect.adjusted(-1, -1, 1, 1);
    if (FDrawn[i].count == 0 || bar.isEmpty()) continue;
    painter.fillRect(bar, fill);
    painter.setPen(QPen(ink, 1));
    if (FKind == TBars::Names) {
      painter.drawLine(bar.topRight(), bar.bottomRight());
    } else {
      painter.drawLine(bar.topLeft(), bar.topRight());
    }
  }
  if (!FReference.isEmpty()) PaintReference(painter, QColor(TokensOf(palette()).ink));
  painter.restore();
  if (FLevel) DrawLevel(painter, Labels(), ValueAxis(), *FLevel, FLevelName, QColor(TokensOf(palette()).ink));
}

// The outline over steps side by side, and a bar of its own around each name.
void TCountChart::PaintReference(QCPPainter& painter, const QColor& ink) {
  painter.setPen(ReferencePen(ink));
  painter.setBrush(Qt::NoBrush);
  const double zero = ValueAxis().coordToPixel(0);
  QPolygonF outline;
  for (std::size_t i = 0; i < FDrawn.size(); ++i) {
    const double length = ReferenceLength(FDrawn[i]);
    if (FKind == TBars::Names) {
      const QRectF bar = RectOf(i, length);
      const QPolygonF open({bar.topLeft(), bar.topRight(), bar.bottomRight(), bar.bottomLeft()});
      if (length > 0) painter.drawPolyline(open);
      continue;
    }
    const double y = ValueAxis().coordToPixel(length);
    const double from = TimeAxis().coordToPixel(FDrawn[i].from);
    const double to = TimeAxis().coordToPixel(FDrawn[i].to);
    if (i == 0) outline << QPointF(from, zero);
    outline << QPointF(from, y) << QPointF(to, y);
    if (i + 1 == FDrawn.size()) outline << QPointF(to, zero);
  }
  painter.drawPolyline(outline);
}

// The bar in whose row or column the position is.
std::optional<TReading> TCountChart::NearestTo(const QPointF& position) const {
  for (std::size_t i = 0; i < FDrawn.size(); ++i) {
    const TCountBar& one = FDrawn[i];
    const QRectF bar = RectOf(i, Length(one));
    const bool isHere = FKind == TBars::Names ? position.y() >= bar.top() && position.y() <= bar.bottom()
                                              : position.x() >= bar.left() && position.x() <= bar.right() + kBarGap;
    if (!isHere || (one.count == 0 && one.reference == 0)) continue;
    QString words = one.count == 1 ? tr("%1: 1 event").arg(one.name) : tr("%1: %2 events").arg(one.name).arg(one.count);
    if (!FReference.isEmpty()) {
      words += tr(", %1 % · %2 %3 % · Δ %4 %")
                   .arg(Digits(Length(one), 3), FReference, Digits(ReferenceLength(one), 3),
                        SignedDigits(Length(one) - ReferenceLength(one), 3));
    }
    const QPointF end =
        FKind == TBars::Names ? QPointF(bar.right(), bar.center().y()) : QPointF(bar.center().x(), bar.top());
    return TReading{words, palette().color(QPalette::Text), end};
  }
  return std::nullopt;
}

TDataset TCountChart::Table() const {
  TDataset table;
  const bool hasSteps = FKind == TBars::Steps;
  const std::string title = Utf8(FQuantity);
  const std::size_t first =
      table.AddField(hasSteps ? title + " from" : title, hasSteps ? TFieldType::Single : TFieldType::Text);
  const std::size_t end = hasSteps ? table.AddField(title + " to", TFieldType::Single) : first;
  const std::size_t events = table.AddField("Events", TFieldType::Integer);
  const std::size_t reference =
      FReference.isEmpty() ? events : table.AddField(Utf8(tr("Events of %1").arg(FReference)), TFieldType::Integer);
  for (const TCountBar& bar : FBars) {
    table.Append();
    if (!FReference.isEmpty()) table.SetInteger(reference, static_cast<std::int32_t>(bar.reference));
    if (hasSteps) {
      table.SetSingle(first, static_cast<float>(bar.from));
      table.SetSingle(end, static_cast<float>(bar.to));
    } else {
      table.SetText(first, Utf8(bar.name));
    }
    table.SetInteger(events, static_cast<std::int32_t>(bar.count));
  }
  return table;
}

TRangeTable TCountChart::VisibleStatistics() const {
  if (!HasData()) return {};
  const auto [from, to] = Range().Times();
  std::size_t events = 0;
  const TCountBar* largest = &FBars.front();
  for (const TCountBar& bar : FBars) {
    if (FKind != TBars::Names && (bar.to <= from || bar.from >= to)) continue;
    events += bar.count;
    if (bar.count > largest->count) largest = &bar;
  }
  return {FQuantity,
          {tr("Figure"), tr("Value")},
          2,
          {{tr("Events"), QString::number(events)},
           {tr("Most events"), tr("%1: %2").arg(largest->name).arg(largest->count)}}};
}
