#include "gui/charts/uChartPaint.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/uText.h"
#include "gui/common/uQtText.h"

namespace {

constexpr int kClipMargin = 14;     // px around the axis rect
constexpr double kDot = 4.5;        // px
constexpr double kLoneDot = 7;      // px from dot to dot
constexpr double kPaperDetail = 4;  // columns for each logical pixel, because paper has a finer resolution

// Cuts the segment to the rect (Liang and Barsky); false if no part is inside. Coordinates may be any finite numbers.
bool ClipSegment(QPointF& a, QPointF& b, const QRectF& rect) {
  // Computed from the nearer end, whose coordinates lose fewer digits.
  const auto away = [middle = rect.center()](const QPointF& p) {
    return std::max(std::fabs(p.x() - middle.x()), std::fabs(p.y() - middle.y()));
  };
  if (away(a) > away(b)) return ClipSegment(b, a, rect);
  double enter = 0;
  double leave = 1;
  const double dx = b.x() - a.x();
  const double dy = b.y() - a.y();
  const auto cut = [&](double direction, double distance) {
    if (direction == 0) return distance >= 0;
    const double t = distance / direction;
    if (direction < 0) {
      enter = std::max(enter, t);
    } else {
      leave = std::min(leave, t);
    }
    return enter <= leave;
  };
  if (!cut(-dx, a.x() - rect.left()) || !cut(dx, rect.right() - a.x()) || !cut(-dy, a.y() - rect.top()) ||
      !cut(dy, rect.bottom() - a.y())) {
    return false;
  }
  const QPointF from = a;
  if (leave < 1) b = QPointF(from.x() + leave * dx, from.y() + leave * dy);
  if (enter > 0) a = QPointF(from.x() + enter * dx, from.y() + enter * dy);
  return true;
}

// Collects the points of a line and draws them in one stroke.
class TStroke {
 public:
  TStroke(QCPPainter& painter, const QRectF& bounds) : FPainter(painter), FBounds(bounds) {}

  void To(const QPointF& point) {
    if (FPending) {
      QPointF a = FLast;
      QPointF b = point;
      if (ClipSegment(a, b, FBounds)) {
        if (FLine.isEmpty() || FLine.back() != a) {
          Flush();
          FLine.append(a);
        }
        FLine.append(b);
      }
      FAlone = false;
    } else {
      FAlone = true;
    }
    FPending = true;
    FLast = point;
  }
  void Break() {
    if (FPending && FAlone && FBounds.contains(FLast)) FDots.append(FLast);
    Cut();
  }
  // A break that leaves no dot.
  void Cut() {
    Flush();
    FPending = false;
  }
  void Finish() {
    Break();
    if (FDots.isEmpty()) return;
    QPen dot = FPainter.pen();
    dot.setCapStyle(Qt::RoundCap);
    dot.setWidthF(4);
    FPainter.setPen(dot);
    FPainter.drawPoints(FDots);
  }

 private:
  void Flush() {
    if (FPainter.modes().testFlag(QCPPainter::pmVectorized)) {
      if (FLine.size() > 1) FPainter.drawPolyline(FLine);
    } else {
      // A smoothed zigzag as one path costs fifty times as much.
      QList<QLineF> lines;
      for (qsizetype i = 1; i < FLine.size(); ++i) lines.append(QLineF(FLine[i - 1], FLine[i]));
      FPainter.drawLines(lines);
    }
    FLine.clear();
  }

  QCPPainter& FPainter;
  QRectF FBounds;
  QPolygonF FLine;
  QPolygonF FDots;
  QPointF FLast;
  bool FPending = false;
  bool FAlone = false;
};

// Cuts a line into dashes. The noise of a dense curve does not count as length, which a dashed pen would do.
class TDashes {
 public:
  TDashes(const QPen& pen, TStroke& stroke, const QRectF& bounds) : FStroke(stroke), FBounds(bounds) {
    if (pen.style() == Qt::SolidLine) return;
    for (const qreal dash : pen.dashPattern()) FEnds.append((FEnds.isEmpty() ? 0 : FEnds.back()) + dash * pen.widthF());
  }

  void Break() {
    FStroke.Break();
    FBegun = false;
  }
  void To(const QPointF& point) {
    constexpr double kStep = 0.5;  // px
    constexpr double kMaxSteps = 10000;
    const QPointF way = point - FLast;
    const double length = std::hypot(way.x(), way.y());
    const bool isSeen = FBegun && std::isfinite(length) && (FBounds.contains(FLast) || FBounds.contains(point));
    if (FEnds.isEmpty() || !isSeen) {
      FStroke.To(point);
      FAnchor = point;
    } else {
      const double steps = std::clamp(std::ceil(length / kStep), 1.0, kMaxSteps);
      for (double step = 1; step <= steps; ++step) Step(FLast + way * (step / steps));
    }
    FBegun = true;
    FLast = point;
  }

 private:
  void Step(const QPointF& point) {
    constexpr double kNoise = 2;  // px
    const QPointF way = point - FAnchor;
    const double distance = std::hypot(way.x(), way.y());
    const double phase = std::fmod(FLength + distance, FEnds.back());
    if (distance >= kNoise) {
      FLength = std::fmod(FLength + distance, FEnds.back());
      FAnchor = point;
    }
    const auto end = std::ranges::find_if(FEnds, [phase](qreal each) { return phase < each; });
    if ((end - FEnds.begin()) % 2 == 1) return FStroke.Cut();
    FStroke.To(point);
  }

  TStroke& FStroke;
  QRectF FBounds;
  QList<qreal> FEnds;  // px, of lines and gaps in turn
  bool FBegun = false;
  QPointF FLast, FAnchor;
  double FLength = 0;  // up to the anchor
};

}  // namespace

TPainted::TPainted(QCPAxisRect* rect, const QString& layer, TPaint paint)
    : QCPLayerable(rect->parentPlot(), layer), FRect(rect), FPaint(std::move(paint)) {}

QRect TPainted::clipRect() const {
  return FRect->rect().adjusted(-kClipMargin, -kClipMargin, kClipMargin, kClipMargin);
}

void TPainted::applyDefaultAntialiasingHint(QCPPainter* painter) const {
  painter->setAntialiasing(true);
}

void TPainted::draw(QCPPainter* painter) {
  FPaint(*painter);
}

QColor Mixed(const QColor& a, const QColor& b, double part) {
  const auto mix = [part](int from, int to) { return static_cast<int>(std::lround(from + (to - from) * part)); };
  return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

TColumns ColumnsOf(const QCPAxis& keys, const QCPPainter& painter, const TTimeSpan& span) {
  const bool paper = painter.modes().testFlag(QCPPainter::pmVectorized);
  const double detail = paper ? kPaperDetail : painter.deviceTransform().m11();
  return {span, static_cast<std::size_t>(std::max(1.0, std::ceil(keys.axisRect()->width() * detail)))};
}

// The line goes up and down so often that it fills an area. Smoothing would take most of the time and is not visible.
static bool IsNoise(const QCPAxis& values, std::span<const TEnvelopePoint> points) {
  constexpr double kTravelInWidths = 8;
  double travel = 0;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const double step = std::fabs(double{points[i].value} - double{points[i - 1].value});
    if (std::isfinite(step)) travel += step;
  }
  const double pixelsPerUnit = values.axisRect()->height() / values.range().size();
  return travel * pixelsPerUnit > kTravelInWidths * values.axisRect()->width();
}

void DrawEnvelope(QCPPainter& painter, const TCurveAxes& axes, std::span<const TEnvelopePoint> points,
                  const QPen& pen) {
  const QCPAxisRect& rect = *axes.keys.axisRect();
  // An envelope fills every column, so a pen of one device pixel loses nothing and is drawn many times faster.
  QPen drawn = pen;
  const double ratio = painter.device()->devicePixelRatioF();
  const bool dense = points.size() > static_cast<std::size_t>(rect.width());
  drawn.setStyle(Qt::SolidLine);
  if (dense) drawn.setWidthF(1 / ratio);
  painter.save();
  if (dense && IsNoise(axes.values, points)) painter.setAntialiasing(false);
  painter.setClipRect(rect.rect().adjusted(0, 0, 1, 1), Qt::IntersectClip);
  painter.setPen(drawn);
  // An SVG file has no clip.
  const int beyond = painter.modes().testFlag(QCPPainter::pmVectorized) ? 0 : 50;
  const QRectF bounds = QRectF(rect.rect()).adjusted(-beyond, -beyond, beyond, beyond);
  TStroke stroke(painter, bounds);
  TDashes dashes(pen, stroke, bounds);
  for (const TEnvelopePoint& point : points) {
    if (std::isnan(point.value)) {
      dashes.Break();
    } else {
      dashes.To(axes.At(point.key, double{point.value}));
    }
  }
  stroke.Finish();
  painter.restore();
}

void DrawLoneDots(QCPPainter& painter, const TCurveAxes& axes, std::span<const TEnvelopePoint> points,
                  const QColor& ink) {
  const QRectF bounds = QRectF(axes.keys.axisRect()->rect()).adjusted(-kDot, -kDot, kDot, kDot);
  const auto pixel = [&](std::size_t i) { return axes.At(points[i].key, double{points[i].value}); };
  // A break has the key of the point after it.
  QList<QPointF> dots;
  double before = -std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (std::isnan(points[i].value)) continue;
    std::size_t next = i + 1;
    if (next < points.size() && std::isnan(points[next].value)) ++next;
    const QPointF dot = pixel(i);
    const bool alone = dot.x() - before >= kLoneDot && (next >= points.size() || pixel(next).x() - dot.x() >= kLoneDot);
    before = dot.x();
    if (alone && bounds.contains(dot)) dots.append(dot);
  }
  DrawDots(painter, dots, TMarker::Circle, kDot / 2, ink);
}

void DrawDots(QCPPainter& painter, const QList<QPointF>& dots, TMarker marker, double radius, const QColor& ink) {
  if (marker != TMarker::Circle) {
    for (const QPointF& dot : dots) DrawMarker(painter, marker, dot, radius, ink);
    return;
  }
  painter.setAntialiasing(true);
  painter.setPen(QPen(ink, 2 * radius, Qt::SolidLine, Qt::RoundCap));
  painter.drawPoints(dots.constData(), static_cast<int>(dots.size()));
}

void DrawLevel(QCPPainter& painter, TChartLabels& labels, const QCPAxis& values, double value, const QString& name,
               const QColor& ink) {
  if (!std::isfinite(value) || !values.range().contains(value)) return;
  const QRect rect = values.axisRect()->rect();
  const double y = std::round(values.coordToPixel(value)) + 0.5;
  QPen pen(ink, 1, Qt::CustomDashLine);
  pen.setDashPattern({6, 4});
  painter.setAntialiasing(false);
  painter.setPen(pen);
  painter.drawLine(QPointF(rect.left(), y), QPointF(rect.right(), y));
  labels.AddLevel(y, name, ink, values.axisType() == QCPAxis::atLeft ? Qt::AlignLeft : Qt::AlignRight);
}

void KeepClear(TChartLabels& labels, const TCurveAxes& axes, std::span<const TEnvelopePoint> points) {
  std::vector<QPointF> line;
  line.reserve(points.size());
  for (const TEnvelopePoint& point : points) {
    const bool gap = std::isnan(point.value);
    line.push_back(gap ? QPointF(0, std::numeric_limits<double>::quiet_NaN())
                       : axes.At(point.key, double{point.value}));
  }
  labels.AddCurve(line);
}

bool DrawMoment(QCPPainter& painter, const QCPAxis& keys, double time, const QPen& pen) {
  const QRect rect = keys.axisRect()->rect();
  const double x = keys.coordToPixel(time);
  if (!(x >= rect.left() - 1 && x <= rect.right() + 1)) return false;
  painter.setAntialiasing(false);
  painter.setPen(pen);
  painter.drawLine(QPointF(x, rect.top()), QPointF(x, rect.bottom()));
  return true;
}

void ShadeSpans(QCPPainter& painter, const QCPAxis& keys, std::span<const TTimeSpan> spans, const QColor& shade) {
  const QRect rect = keys.axisRect()->rect();
  const double from = keys.range().lower;
  const double to = keys.range().upper;
  painter.setAntialiasing(false);
  double left = 0;
  double right = -1;  // of the current shade
  const auto shadeIt = [&] {
    if (right >= left) painter.fillRect(QRectF(left, rect.top(), std::max(right - left, 1.0), rect.height()), shade);
  };
  for (const auto& [begin, end] : spans) {
    if (end < from) continue;
    if (begin > to) break;
    const double beginX = keys.coordToPixel(std::max(begin, from));
    const double endX = keys.coordToPixel(std::min(end, to));
    // Spans less than a pixel apart become one shade: the cost depends on the pixels, not on the number of spans.
    if (right >= left && beginX - right < 1) {
      right = std::max(right, endX);
      continue;
    }
    shadeIt();
    left = beginX;
    right = endX;
  }
  shadeIt();
}

QString Digits(double value, int digits) {
  return std::isfinite(value) ? QtText(GeneralFloat(QString::number(value, 'g', digits).toDouble()))
                              : QString(kNoNumber);
}

QString Figure(double value) {
  const double size = std::fabs(value);
  if (std::isfinite(value) && size != 0 && (size < 0.01 || size >= 1e6)) return Digits(value, 4);
  return QtText(MaskFloat("0.##", value));
}
