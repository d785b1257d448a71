#include "gui/charts/uChartCursors.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "gui/charts/uChartPaint.h"

namespace {

constexpr double kReach = 5;  // px, how near to a cursor it can be taken
constexpr int kPadding = 4;   // px, of a flag's letter
constexpr const char* kNames[] = {"A", "B"};

}  // namespace

TChartCursors::TChartCursors(TChartPlot& plot, const IChartReadings& readings) : FPlot(plot), FReadings(readings) {
  new TPainted(&FPlot.Rect(), "marks", [this](QCPPainter& painter) { Paint(painter); });
}

void TChartCursors::Step(std::optional<double> pointed) {
  if (!FPlot.HasData()) return;
  if (FTimes[1]) {
    Clear();
    return;
  }
  const std::size_t next = FTimes[0] ? 1 : 0;
  const QCPRange range = FPlot.TimeAxis().range();
  FTimes[next] = FReadings.CursorMoment(pointed.value_or(range.lower + range.size() * (next == 0 ? 1 : 2) / 3));
  FPlot.RedrawMarks();
  EmitMeasured();
}

bool TChartCursors::Clear() {
  if (!FTimes[0]) return false;
  Reset();
  FPlot.RedrawMarks();
  return true;
}

void TChartCursors::Reset() {
  FTimes = {};
  FHeld.reset();
  FPlot.unsetCursor();
}

std::optional<std::size_t> TChartCursors::At(const QPointF& position) const {
  std::optional<std::size_t> found;
  double min = kReach;
  if (!FPlot.Rect().rect().contains(position.toPoint())) return found;
  for (std::size_t i = 0; i < FTimes.size(); ++i) {
    if (!FTimes[i]) continue;
    const double away = std::fabs(FPlot.TimeAxis().coordToPixel(*FTimes[i]) - position.x());
    if (away > min) continue;
    min = away;
    found = i;
  }
  return found;
}

bool TChartCursors::Take(const QPointF& position) {
  const auto taken = At(position);
  if (taken) FHeld = {*taken, *FTimes[*taken]};
  return taken.has_value();
}

void TChartCursors::Drag(double time) {
  const QCPRange range = FPlot.TimeAxis().range();
  if (FHeld) Move(FReadings.CursorMoment(std::clamp(time, range.lower, range.upper)));
}

void TChartCursors::PutBack() {
  if (FHeld) Move(FHeld->from);
}

void TChartCursors::Move(double moment) {
  if (FTimes[FHeld->cursor] != moment) {
    FTimes[FHeld->cursor] = moment;
    FPlot.RedrawMarks();
  }
  EmitMeasured();
}

void TChartCursors::PointAt(const QPointF& position) {
  if (At(position)) {
    FPlot.setCursor(Qt::SizeHorCursor);
  } else if (FTimes[0]) {
    FPlot.unsetCursor();
  }
}

void TChartCursors::EmitMeasured() const {
  QStringList words;
  for (const TReading& reading : Measures()) words.append(reading.text);
  emit FPlot.CursorValueChanged(words.isEmpty() ? QObject::tr("A is set; C sets B, drag moves, Esc clears")
                                                : words.join("  ·  "));
}

std::vector<TReading> TChartCursors::Measures() const {
  std::vector<TReading> measures;
  if (!FTimes[1]) return measures;
  const QColor text = FPlot.palette().color(QPalette::Text);
  for (const QString& words : FReadings.SpanTexts(*FTimes[1] - *FTimes[0])) {
    measures.push_back({words, text, std::nullopt});
  }
  std::ranges::move(FReadings.DifferencesBetween(*FTimes[0], *FTimes[1]), std::back_inserter(measures));
  return measures;
}

void TChartCursors::Paint(QCPPainter& painter) const {
  if (!FTimes[0]) return;
  const QRect rect = FPlot.Rect().rect();
  const QColor text = FPlot.palette().color(QPalette::Text);
  painter.setFont(FPlot.font());
  const QFontMetrics metrics = painter.fontMetrics();
  double right = rect.left();  // of the lines in sight
  bool inSight = false;
  QPen pen(text, 1, Qt::CustomDashLine);
  pen.setDashPattern({5, 3});
  for (std::size_t i = 0; i < FTimes.size(); ++i) {
    if (!FTimes[i]) continue;
    if (!DrawMoment(painter, FPlot.TimeAxis(), *FTimes[i], pen)) continue;
    const double x = FPlot.TimeAxis().coordToPixel(*FTimes[i]);
    right = std::max(right, x);
    inSight = true;
    QRectF flag(0, 0, metrics.horizontalAdvance(kNames[i]) + 2 * kPadding, metrics.height());
    flag.moveCenter({x, rect.bottom() - flag.height() / 2});
    painter.fillRect(flag, text);
    painter.setPen(FPlot.palette().color(QPalette::Base));
    painter.drawText(flag, Qt::AlignCenter, kNames[i]);
  }
  if (FTimes[1] && inSight) PaintMeasures(painter, right);
}

// At the bottom, because the words of the indicator are at the top.
void TChartCursors::PaintMeasures(QCPPainter& painter, double beside) const {
  const QRect rect = FPlot.Rect().rect();
  std::vector<TReading> lines = Measures();
  const double gap = painter.fontMetrics().height();  // clear of the flag
  QRectF box({beside + gap, 0}, FitReadings(rect, painter.fontMetrics(), lines));
  if (box.right() > rect.right()) box.moveRight(beside - gap);
  if (box.left() < rect.left()) box.moveLeft(rect.left());
  box.moveBottom(rect.bottom());
  QColor veil = FPlot.palette().color(QPalette::Base);
  veil.setAlphaF(0.95F);
  painter.setAntialiasing(false);
  painter.fillRect(box, veil);
  painter.setPen(QPen(FPlot.FaintInk(), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(box);
  DrawReadings(painter, box, lines);
}
