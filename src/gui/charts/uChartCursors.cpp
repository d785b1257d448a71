#include "gui/charts/uChartCursors.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "gui/charts/uChartPaint.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kCursorReach = 5;  // px, how near to a cursor it can be taken
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
  double min = kCursorReach;
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
  FPlot.Labels().ClearMarkBoxes();
  if (!FTimes[0]) return;
  const QRect rect = FPlot.Rect().rect();
  painter.setFont(FPlot.font());
  double right = rect.left();  // of the lines in sight
  bool inSight = false;
  QPen pen(FPlot.palette().color(QPalette::Text), 1, Qt::CustomDashLine);
  pen.setDashPattern({5, 3});
  for (std::size_t i = 0; i < FTimes.size(); ++i) {
    if (!FTimes[i] || !DrawMoment(painter, FPlot.TimeAxis(), *FTimes[i], pen)) continue;
    const double x = FPlot.TimeAxis().coordToPixel(*FTimes[i]);
    right = std::max(right, x);
    inSight = true;
    PaintFlag(painter, x, kNames[i]);
  }
  if (FTimes[1] && inSight) PaintMeasures(painter, right);
}

void TChartCursors::PaintFlag(QCPPainter& painter, double x, const QString& name) const {
  const auto flag = FPlot.Labels().OnLine(x, PillSize(painter.fontMetrics(), name));
  if (!flag) return;
  FPlot.Labels().AddMarkBox(*flag);
  DrawPill(painter, *flag, name, FPlot.palette().color(QPalette::Text), FPlot.palette());
}

// From the bottom up, because the words of the indicator begin at the top. Without room the status bar says them.
void TChartCursors::PaintMeasures(QCPPainter& painter, double beside) const {
  std::vector<TReading> lines = Measures();
  for (TReading& line : lines) line.ink = InkOn(FPlot.palette(), line.ink, kTextContrast);
  const QSizeF size = FitReadings(FPlot.Rect().rect(), painter.fontMetrics(), lines);
  const double away = painter.fontMetrics().height();  // clear of the flag
  const auto box = FPlot.Labels().BesideLine(beside, away, size, TChartLabels::TEnd::Bottom);
  if (!box) return;
  FPlot.Labels().AddMarkBox(*box);
  DrawPill(painter, *box, {}, FPlot.FaintInk(), FPlot.palette());
  DrawReadings(painter, *box, lines);
}
