#include "gui/charts/uCountChart.h"

#include <algorithm>
#include <cmath>

#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kRoom = 1.08;        // of the counts, beyond the longest bar
constexpr double kHalfBar = 0.4;      // of the place of a name
constexpr double kGap = 1;            // px, between bars that are wider than that
constexpr double kNameHeight = 1.15;  // lines of text, for a name
constexpr float kFill = 0.55F;
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
  QCPAxis& counts = FKind == TBars::Names ? TimeAxis() : static_cast<QCPAxis&>(ValueAxis());
  counts.setTicker(QSharedPointer<TCountTicker>::create());
  if (FKind == TBars::Names) {
    SetTimeTitle(tr("Events"));
    ValueAxis().setRangeReversed(true);
  } else {
    ValueAxis().setLabel(tr("Events"));
  }
  if (FKind == TBars::Hours) {
    auto hours = QSharedPointer<QCPAxisTickerFixed>::create();
    hours->setTickStep(kHoursStep);
    hours->setScaleStrategy(QCPAxisTickerFixed::ssMultiples);
    TimeAxis().setTicker(hours);
  }
  if (FKind == TBars::Names || FKind == TBars::Hours) Range().SetZoomable(false);
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) { Paint(painter); });
  Restyle();
  Clear();
}

double TCountChart::MaxCount(const std::vector<TCountBar>& bars) {
  std::size_t max = 1;
  for (const TCountBar& bar : bars) max = std::max(max, bar.count);
  return static_cast<double>(max);
}

void TCountChart::SetBars(std::vector<TCountBar> bars, const QString& quantity) {
  FBars = std::move(bars);
  FQuantity = quantity.isEmpty() ? FTitle : quantity;
  Legend().SetTitle(FTitle);
  if (FKind == TBars::Steps || FKind == TBars::Hours) SetTimeTitle(FQuantity);
  FDrawn.clear();
  if (FBars.empty()) return SetFullRange(std::nullopt);
  if (FKind == TBars::Names) return SetFullRange(TTimeSpan{0, MaxCount(FBars) * kRoom});
  FDrawn = FBars;
  SetFullRange(TTimeSpan{FBars.front().from, FBars.back().to});
}

// Names wait for the height that they get.
void TCountChart::ScaleValues() {
  if (FKind != TBars::Names) ValueAxis().setRange(0, MaxCount(FBars) * kRoom);
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
    for (std::size_t i = count; i < FBars.size(); ++i) FDrawn.back().count += FBars[i].count;
    FDrawn.back().name = tr("%1 others").arg(FBars.size() - count + 1);
  }
  auto names = QSharedPointer<QCPAxisTickerText>::create();
  for (std::size_t i = 0; i < count; ++i) names->addTick(static_cast<double>(i), FDrawn[i].name);
  ValueAxis().setTicker(names);
  ValueAxis().setRange(-0.5, static_cast<double>(count) - 0.5);
  TimeAxis().setRange(0, MaxCount(FDrawn) * kRoom);
}

QRectF TCountChart::RectOf(std::size_t bar) const {
  const TCountBar& one = FDrawn[bar];
  const auto count = static_cast<double>(one.count);
  if (FKind == TBars::Names) {
    const auto place = static_cast<double>(bar);
    return QRectF(QPointF(TimeAxis().coordToPixel(0), ValueAxis().coordToPixel(place - kHalfBar)),
                  QPointF(TimeAxis().coordToPixel(count), ValueAxis().coordToPixel(place + kHalfBar)))
        .normalized();
  }
  QRectF rect = QRectF(QPointF(TimeAxis().coordToPixel(one.from), ValueAxis().coordToPixel(count)),
                       QPointF(TimeAxis().coordToPixel(one.to), ValueAxis().coordToPixel(0)))
                    .normalized();
  if (rect.width() > 3 * kGap) rect.adjust(0, 0, -kGap, 0);
  return rect;
}

void TCountChart::Paint(QCPPainter& painter) {
  if (!HasData()) return;
  const QColor ink = InkOn(palette(), QColor(TokensOf(palette()).accent));
  QColor fill = ink;
  fill.setAlphaF(kFill);
  const QRectF rect = Rect().rect();
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setAntialiasing(false);
  for (std::size_t i = 0; i < FDrawn.size(); ++i) {
    const QRectF bar = RectOf(i) & rect.adjusted(-1, -1, 1, 1);
    if (FDrawn[i].count == 0 || bar.isEmpty()) continue;
    painter.fillRect(bar, fill);
    painter.setPen(QPen(ink, 1));
    if (FKind == TBars::Names) {
      painter.drawLine(bar.topRight(), bar.bottomRight());
    } else {
      painter.drawLine(bar.topLeft(), bar.topRight());
    }
  }
  painter.restore();
}

// The bar in whose row or column the position is.
std::optional<TReading> TCountChart::NearestTo(const QPointF& position) const {
  for (std::size_t i = 0; i < FDrawn.size(); ++i) {
    const QRectF bar = RectOf(i);
    const bool isHere = FKind == TBars::Names ? position.y() >= bar.top() && position.y() <= bar.bottom()
                                              : position.x() >= bar.left() && position.x() <= bar.right() + kGap;
    if (!isHere || FDrawn[i].count == 0) continue;
    const std::size_t count = FDrawn[i].count;
    const QString words =
        count == 1 ? tr("%1: 1 event").arg(FDrawn[i].name) : tr("%1: %2 events").arg(FDrawn[i].name).arg(count);
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
  for (const TCountBar& bar : FBars) {
    table.Append();
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
