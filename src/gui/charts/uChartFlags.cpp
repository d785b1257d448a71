#include "gui/charts/uChartFlags.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "gui/charts/uChartPaint.h"
#include "gui/charts/uChartPlot.h"

namespace {

constexpr double kWidth = 8;      // px of the cloth
constexpr double kHeight = 7;     // px
constexpr double kFlagReach = 4;  // px around it that belong to it, too
constexpr int kMaxTexts = 8;      // in one tip

}  // namespace

TChartFlags::TChartFlags(TChartPlot& plot) : FPlot(plot) {
  // After the ground, which empties the list of what labels keep clear of.
  new TPainted(&plot.Rect(), "grid", [this](QCPPainter&) {
    VisitInSight([this](const TChartFlag& flag) {
      const QRectF box = BoxOf(flag);
      FPlot.Labels().AddDot(box.center(), kWidth / 2);
    });
  });
  new TPainted(&plot.Rect(), "marks", [this](QCPPainter& painter) { Paint(painter); });
}

void TChartFlags::Set(std::vector<TChartFlag> flags) {
  if (flags.empty() && FFlags.empty()) return;
  FFlags = std::move(flags);
  std::ranges::stable_sort(FFlags, {}, [](const TChartFlag& flag) { return flag.span.start; });
  FPlot.QueueReplot();
}

QRectF TChartFlags::BoxOf(const TChartFlag& flag) const {
  const QRectF rect(FPlot.Rect().rect());
  const double x = std::max(FPlot.TimeAxis().coordToPixel(flag.span.start), rect.left());
  // At the right edge it would fly out of the chart.
  const bool toLeft = x + kWidth > rect.right();
  return {toLeft ? x - kWidth : x, rect.top() + 1, kWidth, kHeight};
}

template <class TVisit>
void TChartFlags::VisitInSight(const TVisit& visit) const {
  if (!FPlot.HasData()) return;
  const QCPRange view = FPlot.TimeAxis().range();
  double last = -1e9;
  for (const TChartFlag& flag : FFlags) {
    if (flag.span.start > view.upper || flag.span.end < view.lower) continue;
    const double x = BoxOf(flag).left();
    if (x - last < 1 && !flag.isCurrent) continue;
    last = x;
    visit(flag);
  }
}

void TChartFlags::Paint(QCPPainter& painter) const {
  const QRectF rect(FPlot.Rect().rect());
  const QColor ink = FPlot.palette().color(QPalette::Text);
  const QColor ground = FPlot.palette().color(QPalette::Base);
  VisitInSight([&](const TChartFlag& flag) {
    const double start = FPlot.TimeAxis().coordToPixel(flag.span.start);
    const double end = std::min(FPlot.TimeAxis().coordToPixel(flag.span.end), rect.right());
    painter.setAntialiasing(false);
    const double left = std::max(start, rect.left());
    if (end - left > kWidth) painter.fillRect(QRectF(left, rect.top(), end - left, 2), Mixed(ground, ink, 0.6));
    painter.setPen(QPen(Mixed(ground, ink, 0.6), 1));
    if (start >= rect.left()) painter.drawLine(QPointF(start, rect.top()), QPointF(start, rect.top() + 2 * kHeight));
    painter.setAntialiasing(true);
    painter.setPen(QPen(ink, 1));
    painter.setBrush(flag.isCurrent ? ink : ground);
    painter.drawRect(BoxOf(flag));
  });
}

std::vector<const TChartFlag*> TChartFlags::FlagsAt(const QPointF& position) const {
  std::vector<const TChartFlag*> found;
  if (!FPlot.HasData()) return found;
  const QCPRange view = FPlot.TimeAxis().range();
  for (const TChartFlag& flag : FFlags) {
    if (flag.span.start > view.upper || flag.span.end < view.lower) continue;
    if (BoxOf(flag).adjusted(-kFlagReach, -kFlagReach, kFlagReach, kFlagReach).contains(position))
      found.push_back(&flag);
  }
  return found;
}

QString TChartFlags::TextAt(const QPointF& position) const {
  QStringList texts;
  for (const TChartFlag* flag : FlagsAt(position)) {
    if (texts.size() == kMaxTexts) return texts.join('\n') + "\n…";
    texts.append(flag->text);
  }
  return texts.join('\n');
}

QString TChartFlags::IdAt(const QPointF& position) const {
  const std::vector<const TChartFlag*> flags = FlagsAt(position);
  if (flags.empty()) return {};
  auto next = std::ranges::find_if(flags, &TChartFlag::isCurrent);
  if (next != flags.end()) ++next;
  return next == flags.end() ? flags.front()->id : (*next)->id;
}
