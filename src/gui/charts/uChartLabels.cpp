#include "gui/charts/uChartLabels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "gui/charts/uChartPaint.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kPillPadding = 5;  // px, of a pill
constexpr int kReadingPadding = 4;  // px, of a box of readings
constexpr double kLevelReach = 4;   // how near to a level line the pointer names it
constexpr double kTries = 6;        // heights that are tried for each height of a box
constexpr int kStepsAlong = 40;     // places that are tried along a level line
constexpr double kLabelMargin = 2;  // between labels
constexpr double kStrip = 16;       // px; wider than most dots

}  // namespace

void TChartLabels::Begin(const QRect& axes) {
  *this = {};
  FAxes = axes;
}

void TChartLabels::AddCurve(std::span<const QPointF> points) {
  FCurves.push_back(SkylineOf(points));
}

void TChartLabels::AddStems(std::span<const QPointF> points) {
  FStems.push_back(SkylineOf(points));
}

TChartLabels::TSkyline TChartLabels::SkylineOf(std::span<const QPointF> points) const {
  TSkyline skyline(static_cast<std::size_t>(std::max(1.0, FAxes.width())) + 1);
  const double last = static_cast<double>(skyline.size() - 1);
  const auto include = [&skyline](double column, double from, double to) {
    TExtentOfColumn& here = skyline[static_cast<std::size_t>(column)];
    here.top = std::min(here.top, static_cast<float>(std::min(from, to)));
    here.bottom = std::max(here.bottom, static_cast<float>(std::max(from, to)));
  };
  const QPointF* before = nullptr;
  for (const QPointF& point : points) {
    if (std::isnan(point.y())) {
      before = nullptr;
      continue;
    }
    const QPointF& from = before ? *before : point;
    before = &point;
    const double first = std::max(0.0, std::floor(from.x() - FAxes.left()));
    const double end = std::min(last, std::floor(point.x() - FAxes.left()));
    const double slope = point.x() > from.x() ? (point.y() - from.y()) / (point.x() - from.x()) : 0;
    for (double column = first; column <= end; ++column) {
      // A point may lie before the last one, if only by rounding.
      const auto within = [&](double x) { return std::min(std::max(x, from.x()), point.x()); };
      const double left = within(FAxes.left() + column);
      const double right = within(FAxes.left() + column + 1);
      if (first == end) {
        include(column, from.y(), point.y());
      } else {
        include(column, from.y() + (left - from.x()) * slope, from.y() + (right - from.x()) * slope);
      }
    }
  }
  return skyline;
}

void TChartLabels::AddDot(const QPointF& middle, double radius) {
  const QRectF dot(middle - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
  const auto [first, end] = StripsOf(dot);
  if (FDots.size() < end) FDots.resize(end);
  for (std::size_t strip = first; strip < end; ++strip) FDots[strip].push_back(dot);
}

void TChartLabels::AddLevel(double y, const QString& words, const QColor& ink, Qt::AlignmentFlag side) {
  if (!words.isEmpty()) FLevels.push_back({y, words, ink, side});
}

void TChartLabels::AddPoint(const QPointF& at, const QString& words, const QColor& ink) {
  FPoints.push_back({at, words, ink});
}

std::pair<std::size_t, std::size_t> TChartLabels::StripsOf(const QRectF& box) const {
  const auto strip = [this](double x) {
    return static_cast<std::size_t>(std::min(std::max(0.0, x - FAxes.left()), std::max(0.0, FAxes.width())) / kStrip);
  };
  return {strip(box.left()), strip(box.right()) + 1};
}

bool TChartLabels::CoversDot(const QRectF& box) const {
  const auto meets = [&box](const QRectF& dot) { return dot.intersects(box); };
  const auto [first, end] = StripsOf(box);
  for (std::size_t strip = first; strip < std::min(end, FDots.size()); ++strip) {
    if (std::ranges::any_of(FDots[strip], meets)) return true;
  }
  return false;
}

bool TChartLabels::CoversData(const QRectF& box, bool stems) const {
  const auto covers = [&](const TSkyline& skyline) { return Covers(skyline, box); };
  return CoversDot(box) || std::ranges::any_of(FCurves, covers) || (stems && std::ranges::any_of(FStems, covers));
}

bool TChartLabels::Covers(const TSkyline& skyline, const QRectF& box) const {
  const auto first = static_cast<std::size_t>(std::max(0.0, box.left() - FAxes.left()));
  const auto end = std::min(skyline.size(), static_cast<std::size_t>(std::max(0.0, box.right() - FAxes.left())) + 1);
  for (std::size_t column = first; column < end; ++column) {
    if (double{skyline[column].top} <= box.bottom() && double{skyline[column].bottom} >= box.top()) return true;
  }
  return false;
}

bool TChartLabels::IsFree(const QRectF& box) const {
  if (!FAxes.contains(box)) return false;
  const QRectF around = box.adjusted(-kLabelMargin, -kLabelMargin, kLabelMargin, kLabelMargin);
  const auto meets = [&around](const QRectF& taken) { return taken.intersects(around); };
  return std::ranges::none_of(FBoxes, meets) && std::ranges::none_of(FMarkBoxes, meets);
}

// On the line from its axis inwards, then above and below it; where stems are everywhere, over the fewest of them.
std::optional<QRectF> TChartLabels::PlaceOf(const TLevel& level, const QSizeF& size) const {
  const double room = FAxes.width() - size.width() - 2 * kLabelGap;
  const auto stemsIn = [this](const QRectF& box) {
    int columns = 0;
    for (double x = box.left(); x < box.right(); ++x) {
      const QRectF column(x, box.top(), 0, box.height());
      columns += std::ranges::any_of(FStems, [&](const TSkyline& stems) { return Covers(stems, column); }) ? 1 : 0;
    }
    return columns;
  };
  std::optional<QRectF> best;
  int fewest = std::numeric_limits<int>::max();
  for (const double up : {0.0, 1.0, -1.0}) {
    for (int step = 0; step < kStepsAlong; ++step) {
      const double along = kLabelGap + room * step / kStepsAlong;
      const double left = level.side == Qt::AlignLeft ? FAxes.left() + along : FAxes.right() - along - size.width();
      const QRectF box({left, level.y - size.height() / 2 - up * (size.height() / 2 + kLabelMargin)}, size);
      if (!IsFree(box) || CoversData(box, false)) continue;
      const int covered = stemsIn(box);
      if (covered == 0) return box;
      if (covered >= fewest) continue;
      fewest = covered;
      best = box;
    }
  }
  return best;
}

// Above, below, right, left of it, farther away each time.
std::optional<QRectF> TChartLabels::PlaceOf(const TPoint& point, const QSizeF& size) const {
  const double across = size.width() / 2 + kLabelGap;
  const double up = size.height() / 2 + kLabelGap;
  for (const double away : {1.0, 1.5, 2.0, 3.0}) {
    for (const QPointF& to : {QPointF(0, -up), QPointF(0, up), QPointF(across, 0), QPointF(-across, 0),
                              QPointF(across, -up), QPointF(-across, -up), QPointF(across, up), QPointF(-across, up)}) {
      QRectF box(QPointF(), size);
      box.moveCenter(point.at + to * away);
      if (IsFree(box) && !CoversData(box)) return box;
    }
  }
  return std::nullopt;
}

void TChartLabels::Paint(QCPPainter& painter, const QPalette& palette) {
  const QFontMetrics metrics = painter.fontMetrics();
  const auto draw = [&](const auto& label) {
    const auto box = PlaceOf(label, PillSize(metrics, label.words));
    if (!box) return;
    FBoxes.push_back(*box);
    DrawPill(painter, *box, label.words, label.ink, palette);
  };
  for (const TPoint& point : FPoints) draw(point);
  for (const TLevel& level : FLevels) draw(level);
}

QString TChartLabels::LevelAt(double y) const {
  QStringList words;
  for (const TLevel& level : FLevels) {
    if (std::fabs(level.y - y) <= kLevelReach && FAxes.top() <= y && y <= FAxes.bottom()) words.append(level.words);
  }
  return words.join("  ·  ");
}

std::optional<QRectF> TChartLabels::FreeAt(std::span<const double> lefts, const QSizeF& size, TEnd end,
                                           bool overData) const {
  const double room = FAxes.height() - size.height();
  for (double away = 0; away <= room; away += size.height() / kTries) {
    const double top = end == TEnd::Top ? FAxes.top() + away : FAxes.bottom() - size.height() - away;
    for (const double left : lefts) {
      const QRectF box({left, top}, size);
      if (IsFree(box) && (overData || !CoversData(box))) return box;
    }
  }
  return std::nullopt;
}

std::optional<QRectF> TChartLabels::BesideLine(double x, double away, const QSizeF& size, TEnd end) const {
  const std::array lefts = {x + away, x - away - size.width(), FAxes.right() - size.width(), FAxes.left()};
  const auto free = FreeAt(std::span(lefts).first(2), size, end, false);
  return free ? free : FreeAt(lefts, size, end, true);
}

std::optional<QRectF> TChartLabels::OnLine(double x, const QSizeF& size) const {
  const double inside = std::max(FAxes.left(), std::min(x - size.width() / 2, FAxes.right() - size.width()));
  const auto free = FreeAt(std::span(&inside, 1), size, TEnd::Bottom, false);
  return free ? free : FreeAt(std::span(&inside, 1), size, TEnd::Bottom, true);
}

QSizeF PillSize(const QFontMetrics& metrics, const QString& words) {
  return QSizeF(metrics.size(0, words)) + QSizeF(2 * kPillPadding, 2);
}

void DrawPill(QCPPainter& painter, const QRectF& box, const QString& words, const QColor& ink,
              const QPalette& palette) {
  painter.setAntialiasing(true);
  painter.setPen(QPen(Mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.2), 1));
  painter.setBrush(palette.color(QPalette::Base));
  painter.drawRoundedRect(box, kPillPadding, kPillPadding);
  painter.setPen(InkOn(palette, ink, kTextContrast));
  painter.drawText(box, Qt::AlignCenter, words);
}

QSizeF FitReadings(const QRect& axes, const QFontMetrics& metrics, std::vector<TReading>& readings) {
  const int room = std::max(1, axes.height() / metrics.height());
  if (std::cmp_greater(readings.size(), room)) readings.resize(static_cast<std::size_t>(room));
  int width = 0;
  for (TReading& reading : readings) {
    reading.text = metrics.elidedText(reading.text, Qt::ElideRight, axes.width() / 2);
    width = std::max(width, metrics.horizontalAdvance(reading.text));
  }
  return {width + 2.0 * kReadingPadding, static_cast<double>(readings.size()) * metrics.height()};
}

void DrawReadings(QCPPainter& painter, const QRectF& box, const std::vector<TReading>& readings) {
  QRectF line = box.adjusted(kReadingPadding, 0, -kReadingPadding, 0);
  line.setHeight(painter.fontMetrics().height());
  for (const TReading& reading : readings) {
    painter.setPen(reading.ink);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, reading.text);
    line.translate(0, line.height());
  }
}
