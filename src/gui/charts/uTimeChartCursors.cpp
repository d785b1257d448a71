// The cursors A and B of a chart and what is measured between them.
#include <algorithm>
#include <cmath>
#include <utility>

#include "base/uDateTime.h"
#include "gui/charts/uTimeChart.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kCursorReach = 5;  // px, how near to a cursor it can be taken
constexpr int kPadding = 4;         // px, of a flag's letter
constexpr double kDash[] = {5, 3};
constexpr double kMsPerSecond = 1000;
constexpr double kLongestPeriod = 100;  // s; the frequency of a longer one says nothing
constexpr const char* kNames[] = {"A", "B"};

QString HertzText(double seconds) {
  const double hertz = 1 / seconds;
  return QObject::tr("1/Δt %1 Hz").arg(hertz < 1 ? QString::number(hertz, 'g', 4) : Figure(hertz));
}

}  // namespace

void TTimeChart::StepCursors() {
  if (!FHasData || !FZoomable) return;
  if (FCursors[1]) return ClearCursors();
  const std::size_t next = FCursors[0] ? 1 : 0;
  const QCPRange range = FTimeAxis->range();
  double at = range.lower + range.size() * (next == 0 ? 1 : 2) / 3;
  if (FPinned) at = *FPinned;
  if (FAsked) at = *FAsked;
  if (FHover) at = MomentAt(*FHover);
  FCursors[next] = CursorMoment(at);
  RedrawMarks();
  TellCursors();
}

void TTimeChart::ClearCursors() {
  if (!FCursors[0]) return;
  FCursors = {};
  if (FDrag == TDrag::Cursor) EndDrag();
  if (std::exchange(FOverCursor, false)) unsetCursor();
  RedrawMarks();
}

// Of two in one place the later one.
std::optional<std::size_t> TTimeChart::CursorAt(const QPointF& position) const {
  std::optional<std::size_t> found;
  double least = kCursorReach;
  if (!Rect().rect().contains(position.toPoint())) return found;
  for (std::size_t i = 0; i < FCursors.size(); ++i) {
    if (!FCursors[i]) continue;
    const double away = std::fabs(FTimeAxis->coordToPixel(*FCursors[i]) - position.x());
    if (away > least) continue;
    least = away;
    found = i;
  }
  return found;
}

bool TTimeChart::TakeCursor(const QPointF& position) {
  const auto taken = CursorAt(position);
  if (!taken) return false;
  FDrag = TDrag::Cursor;
  FDragButton = Qt::LeftButton;
  FHeldCursor = *taken;
  FHeldFrom = *FCursors[*taken];
  return true;
}

void TTimeChart::DragCursor(double time) {
  const QCPRange range = FTimeAxis->range();
  const double moment = time == FHeldFrom ? time : CursorMoment(std::clamp(time, range.lower, range.upper));
  if (FCursors[FHeldCursor] != moment) {
    FCursors[FHeldCursor] = moment;
    RedrawMarks();
  }
  TellCursors();
}

void TTimeChart::PointAtCursor(const QPointF& position) {
  const bool over = FDrag == TDrag::None && CursorAt(position).has_value();
  if (std::exchange(FOverCursor, over) == over) return;
  if (over) {
    setCursor(Qt::SizeHorCursor);
  } else {
    unsetCursor();
  }
}

void TTimeChart::TellCursors() {
  QStringList words;
  for (const TReading& reading : Measured()) words.append(reading.text);
  emit CursorValueChanged(words.isEmpty() ? tr("A is set; C sets B, drag moves, Esc clears") : words.join("  ·  "));
}

QStringList TTimeChart::SpanTexts(double span) const {
  const QString sign = span < 0 ? "−" : "";
  const double length = std::fabs(span);
  const double seconds = FUnit == TAxisUnit::Days ? length * kMsPerDay / kMsPerSecond : length / kMsPerSecond;
  QStringList texts;
  texts.append(FUnit == TAxisUnit::Days ? tr("Δt %1%2").arg(sign, QtText(FormatDuration(length)))
                                        : tr("Δt %1%2 ms").arg(sign, Figure(length)));
  if (seconds > 0 && seconds <= kLongestPeriod) texts.append(HertzText(seconds));
  return texts;
}

std::vector<TTimeChart::TReading> TTimeChart::Measured() const {
  std::vector<TReading> measured;
  if (!FCursors[1]) return measured;
  const QColor text = palette().color(QPalette::Text);
  for (const QString& words : SpanTexts(*FCursors[1] - *FCursors[0])) measured.push_back({words, text, std::nullopt});
  std::ranges::move(DifferencesBetween(*FCursors[0], *FCursors[1]), std::back_inserter(measured));
  return measured;
}

void TTimeChart::PaintCursors(QCPPainter& painter) const {
  if (!FCursors[0]) return;
  const QRect rect = Rect().rect();
  const QColor text = palette().color(QPalette::Text);
  painter.setFont(font());
  const QFontMetrics metrics = painter.fontMetrics();
  double right = rect.left();  // of the lines in sight
  bool inSight = false;
  for (std::size_t i = 0; i < FCursors.size(); ++i) {
    if (!FCursors[i]) continue;
    const double x = FTimeAxis->coordToPixel(*FCursors[i]);
    if (!(x >= rect.left() - 1 && x <= rect.right() + 1)) continue;
    right = std::max(right, x);
    inSight = true;
    QPen pen(text, 1, Qt::CustomDashLine);
    pen.setDashPattern({kDash[0], kDash[1]});
    painter.setAntialiasing(false);
    painter.setPen(pen);
    painter.drawLine(QPointF(x, rect.top()), QPointF(x, rect.bottom()));
    QRectF flag(0, 0, metrics.horizontalAdvance(kNames[i]) + 2 * kPadding, metrics.height());
    flag.moveCenter({x, rect.bottom() - flag.height() / 2});
    painter.fillRect(flag, text);
    painter.setPen(palette().color(QPalette::Base));
    painter.drawText(flag, Qt::AlignCenter, kNames[i]);
  }
  if (FCursors[1] && inSight) PaintMeasured(painter, right);
}

// At the bottom, because the words of the indicator stand at the top.
void TTimeChart::PaintMeasured(QCPPainter& painter, double beside) const {
  const QRect rect = Rect().rect();
  std::vector<TReading> lines = Measured();
  const double gap = painter.fontMetrics().height();  // clear of the flag
  QRectF box({beside + gap, 0}, FitReadings(painter.fontMetrics(), lines));
  if (box.right() > rect.right()) box.moveRight(beside - gap);
  if (box.left() < rect.left()) box.moveLeft(rect.left());
  box.moveBottom(rect.bottom());
  QColor veil = palette().color(QPalette::Base);
  veil.setAlphaF(0.95F);
  painter.setAntialiasing(false);
  painter.fillRect(box, veil);
  painter.setPen(QPen(FaintInk(), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(box);
  DrawReadings(painter, box, lines);
}
