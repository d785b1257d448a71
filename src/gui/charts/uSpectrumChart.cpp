#include "gui/charts/uSpectrumChart.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kDecibelInSight = 120;  // below the largest line
constexpr double kLogInSight = 1e-6;     // of the largest line
constexpr double kWordsRoom = 0.12;      // of the values, above, for the names of the peaks
constexpr float kFill = 0.14F;           // of a series' colour, below its outline
constexpr double kPeakRadius = 3;        // px

QString AxisTitle(TSpectrumType type) {
  switch (type) {
    case TSpectrumType::Amplitude:
      return QObject::tr("Amplitude (g)");
    case TSpectrumType::Power:
      return QObject::tr("Power (g²)");
    case TSpectrumType::PSD:
      return QObject::tr("PSD (g²/Hz)");
    case TSpectrumType::Decibel:
      break;
  }
  return QObject::tr("Level (dB re 1 g)");
}

// Significant digits, because lines differ by many powers of ten.
constexpr int kDigits = 4;

}  // namespace

QString TSpectrumChart::ValueUnit() const {
  constexpr const char* kUnits[] = {"g", "g²", "g²/Hz", "dB"};
  return QString::fromUtf8(kUnits[static_cast<std::size_t>(FType)]);
}

TSpectrumChart::TSpectrumChart(QWidget* parent) : TAccelerationChart(TAxisUnit::Hertz, parent) {
  setObjectName("chartSpecAnalysis");
  setAccessibleName(tr("Spectrum of the selected event"));
  ValueAxis().setLabel(AxisTitle(FType));
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) {
    if (!HasData()) return;
    PaintBars(painter);
    PaintPeaks(painter);
    painter.setFont(font());
    Labels().Paint(painter, palette());
  });
  Restyle();
  Clear();
}

void TSpectrumChart::Clear() {
  FEvent = nullptr;
  Calculate();
}

void TSpectrumChart::ShowEvent(const TEventList& events, std::size_t index) {
  FEvent = index < events.Count() ? &events.GetItem(index) : nullptr;
  Calculate();
}

void TSpectrumChart::SetType(TSpectrumType type) {
  if (std::exchange(FType, type) == type) return;
  ValueAxis().setLabel(AxisTitle(FType));
  ScaleAxes();
  Recalculate();
  ScaleValues();
}

void TSpectrumChart::SetWindow(TWeightingWindow window) {
  if (std::exchange(FWindow, window) != window) Recalculate();
}

void TSpectrumChart::SetLogFrequencies(bool on) {
  if (std::exchange(FLogFrequencies, on) != on) ShowAll();
}

void TSpectrumChart::SetLogValues(bool on) {
  if (std::exchange(FLogValues, on) != on) ShowAll();
}

void TSpectrumChart::ScaleAxes() {
  SetLogarithmic(TimeAxis(), FLogFrequencies);
  SetLogarithmic(ValueAxis(), FLogValues && FType != TSpectrumType::Decibel);
}

void TSpectrumChart::ShowAll() {
  ScaleAxes();
  if (FSpectrum.lines.empty()) return SetFullRange(std::nullopt);
  SetFullRange(TTimeSpan{FLogFrequencies ? Step() / 2 : -Step() / 2, FSpectrum.lines.back().hertz + Step() / 2});
}

// The lines keep their frequencies, so the view stays.
void TSpectrumChart::Recalculate() {
  if (FSpectrum.lines.empty()) return Calculate();
  FSpectrum = CalcSpectrum(FEvent->Values(), FType, FWindow);
  ShowTitle();
  Range().RescaleValues();
  emit SpectrumChanged();
}

void TSpectrumChart::showEvent(QShowEvent* event) {
  if (FOutdated) Calculate();
  TTimeChart::showEvent(event);
}

void TSpectrumChart::Calculate() {
  FOutdated = FEvent != nullptr && !isVisible();
  FSpectrum = {};
  if (FEvent != nullptr && !FOutdated) FSpectrum = CalcSpectrum(FEvent->Values(), FType, FWindow);
  const std::string why = WhyNoSpectrum(FSpectrum);
  SetPlaceholder(why.empty() ? tr("No event selected") : QtText(why));
  if (FSpectrum.lines.empty()) {
    Legend().SetTitle({});
  } else {
    ShowTitle();
  }
  ShowAll();
  emit SpectrumChanged();
}

// Without the constant part, which would always be the largest.
const TSpectrumLine* TSpectrumChart::PeakOf(const TBarSeries& bar) const {
  const TSpectrumLine* peak = nullptr;
  for (std::size_t i = 1; i < FSpectrum.lines.size(); ++i) {
    const TSpectrumLine& line = FSpectrum.lines[i];
    if (std::isfinite(line.*bar.value) && (peak == nullptr || line.*bar.value > peak->*bar.value)) peak = &line;
  }
  return peak;
}

// The title names the strongest line, because people look for it first.
void TSpectrumChart::ShowTitle() {
  const auto& lines = FSpectrum.lines;
  const TSpectrumLine* peak = nullptr;
  TBarSeries strongest = barSerSpecAnX;
  for (const TBarSeries& bar : VisibleBars()) {
    const TSpectrumLine* const own = PeakOf(bar);
    if (own == nullptr || (peak != nullptr && !(own->*bar.value > peak->*strongest.value))) continue;
    peak = own;
    strongest = bar;
  }
  // What was done to the samples comes first: a narrow chart cuts the end of a title.
  QString title = tr("Event %1").arg(FEvent->ID);
  if (const std::size_t taken = FSpectrum.grid.places.size(); taken < FEvent->Count()) {
    const QLocale english(QLocale::English);
    title += tr(" · first %1 of %2 samples").arg(english.toString(taken), english.toString(FEvent->Count()));
  }
  const std::string done = WhatGridDid(FSpectrum.grid);
  if (!done.empty()) title += tr(" · %1").arg(QtText(done));
  title += tr(" · %1 lines of %2 Hz").arg(lines.size()).arg(Digits(Step(), kDigits));
  if (peak != nullptr) {
    title += tr(" · peak %1 %2 at %3 Hz (%4)")
                 .arg(Digits(peak->*strongest.value, kDigits), ValueUnit(), Digits(peak->hertz, kDigits),
                      NameOf(strongest.series));
  }
  Legend().SetTitle(title);
}

void TSpectrumChart::SeriesChanged() {
  if (!FSpectrum.lines.empty()) ShowTitle();
  Range().RescaleValues();
}

std::vector<TSpectrumChart::TBarSeries> TSpectrumChart::VisibleBars() const {
  std::vector<TBarSeries> visible;
  for (const TSeries series : VisibleSeries()) visible.push_back(kBars[Place(series)]);
  return visible;
}

// Without the constant part, which would leave no height to the lines.
void TSpectrumChart::ScaleValues() {
  double min = std::numeric_limits<double>::infinity();
  double max = -min;
  double minPositive = min;
  for (const TBarSeries& bar : VisibleBars()) {
    for (std::size_t i = 1; i < FSpectrum.lines.size(); ++i) {
      const double value = FSpectrum.lines[i].*bar.value;
      if (!std::isfinite(value)) continue;
      min = std::min(min, value);
      max = std::max(max, value);
      if (value > 0) minPositive = std::min(minPositive, value);
    }
  }
  if (!(min <= max)) return ValueAxis().setRange(0, 1);
  if (FType == TSpectrumType::Decibel) {
    const QCPRange range = ScaleAround(std::max(min, max - kDecibelInSight), max);
    return ValueAxis().setRange(range.lower, max + range.size() * kWordsRoom);
  }
  if (IsLogarithmic(ValueAxis()) && max > 0) {
    const double foot = std::clamp(minPositive, max * kLogInSight, max / 10);
    return ValueAxis().setRange(foot, max * std::pow(max / foot, kWordsRoom));
  }
  ValueAxis().setRange(0, max > 0 ? max * (1 + kWordsRoom) : 1);
}

double TSpectrumChart::Step() const {
  return FSpectrum.lines[1].hertz;
}

std::size_t TSpectrumChart::LineAt(double hertz) const {
  const double last = static_cast<double>(FSpectrum.lines.size() - 1);
  return static_cast<std::size_t>(std::clamp(std::round(hertz / Step()), 0.0, last));
}

// Lines that begin in one pixel become one step, as high as the largest of them.
std::vector<TEnvelopePoint> TSpectrumChart::StepsOf(const TBarSeries& bar, double pixel) const {
  const auto& lines = FSpectrum.lines;
  const auto edge = [&](std::size_t i) { return lines[i].hertz - Step() / 2; };
  const auto [from, to] = Range().Times();
  const std::size_t end = LineAt(to) + 1;
  std::vector<TEnvelopePoint> points;
  for (std::size_t i = LineAt(from); i < end;) {
    const double left = edge(i);
    const double nextPixel = TimeAxis().coordToPixel(left) + pixel;
    double max = -std::numeric_limits<double>::infinity();
    do {
      max = std::fmax(max, lines[i].*bar.value);
    } while (++i < end && TimeAxis().coordToPixel(edge(i)) < nextPixel);
    const float height = std::isfinite(max) ? static_cast<float>(max) : std::numeric_limits<float>::quiet_NaN();
    points.push_back({left, height});
    points.push_back({lines[i - 1].hertz + Step() / 2, height});
  }
  return points;
}

void TSpectrumChart::PaintBars(QCPPainter& painter) {
  const auto [from, to] = Range().Times();
  if (to < -Step() || from > FSpectrum.lines.back().hertz + Step()) return;
  const TCurveAxes axes{TimeAxis(), ValueAxis()};
  const double pixel =
      TimeAxis().axisRect()->width() / static_cast<double>(ColumnsOf(TimeAxis(), painter, {from, to}).count);
  std::vector<std::pair<QColor, std::vector<TEnvelopePoint>>> outlines;
  for (const TBarSeries& bar : VisibleBars()) outlines.emplace_back(InkOf(bar.series), StepsOf(bar, pixel));
  // Every fill is below every outline.
  for (const auto& [ink, points] : outlines) FillBelow(painter, points, ink);
  painter.setAntialiasing(true);
  for (const auto& [ink, points] : outlines) {
    KeepClear(Labels(), axes, points);
    DrawEnvelope(painter, axes, points, QPen(ink, kCurveWidth));
  }
}

void TSpectrumChart::FillBelow(QCPPainter& painter, std::span<const TEnvelopePoint> steps, QColor ink) const {
  const QRectF rect = Rect().rect();
  const auto across = [&](double hertz) {
    return std::clamp(TimeAxis().coordToPixel(hertz), rect.left() - 1, rect.right() + 1);
  };
  const auto height = [&](double value) {
    return std::clamp(ValueAxis().coordToPixel(value), rect.top() - 1, rect.bottom() + 1);
  };
  // Decibels have no natural zero, so their bars begin at the lower edge.
  const double foot = FType == TSpectrumType::Decibel ? rect.bottom() + 1 : height(0);
  QPolygonF area;
  for (const TEnvelopePoint& point : steps) {
    area.append({across(point.key), std::isnan(point.value) ? foot : height(double{point.value})});
  }
  area.append({area.last().x(), foot});
  area.append({area.first().x(), foot});
  ink.setAlphaF(kFill);
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setAntialiasing(false);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ink);
  painter.drawPolygon(area);
  painter.restore();
}

void TSpectrumChart::PaintPeaks(QCPPainter& painter) {
  painter.setAntialiasing(true);
  painter.setPen(Qt::NoPen);
  for (const TBarSeries& bar : VisibleBars()) {
    const TSpectrumLine* const peak = PeakOf(bar);
    if (peak == nullptr) continue;
    const QPointF at(TimeAxis().coordToPixel(peak->hertz), ValueAxis().coordToPixel(peak->*bar.value));
    if (!QRectF(Rect().rect()).adjusted(-1, -1, 1, 1).contains(at)) continue;
    painter.setBrush(InkOf(bar.series));
    painter.drawEllipse(at, kPeakRadius, kPeakRadius);
    Labels().AddDot(at, kPeakRadius);
    Labels().AddPoint(
        at,
        tr("%1 %2 %3 at %4 Hz")
            .arg(NameOf(bar.series), Digits(peak->*bar.value, kDigits), ValueUnit(), Digits(peak->hertz, kDigits)),
        InkOf(bar.series));
  }
}

QString TSpectrumChart::MomentText(double hertz) const {
  if (FSpectrum.lines.empty()) return {};
  return tr("%1 Hz").arg(Digits(FSpectrum.lines[LineAt(hertz)].hertz, kDigits));
}

std::vector<TCurve> TSpectrumChart::Curves() const {
  std::vector<TCurve> curves;
  const auto& lines = FSpectrum.lines;
  if (lines.empty()) return curves;
  for (const TBarSeries& bar : VisibleBars()) {
    curves.push_back({NameOf(bar.series), ValueUnit(), InkOf(bar.series), ValueAxis(), lines.size(),
                      [&lines](std::size_t i) { return lines[i].hertz; },
                      [&lines, bar](std::size_t i) { return lines[i].*bar.value; },
                      [this](double hertz) { return LineAt(hertz); },
                      [](double value) { return Digits(value, kDigits); }, [](double value) { return Digits(value); }});
  }
  return curves;
}

// Of the bars of the line under the pointer, the one whose top is nearest.
std::optional<TReading> TSpectrumChart::NearestTo(const QPointF& position) const {
  const double hertz = TimeAxis().pixelToCoord(position.x());
  std::optional<TReading> nearest;
  for (TReading& reading : ReadingsAt(hertz)) {
    if (!reading.at) continue;
    const bool nearer =
        !nearest || std::fabs(reading.at->y() - position.y()) < std::fabs(nearest->at->y() - position.y());
    if (nearer) nearest = std::move(reading);
  }
  if (nearest) nearest->text += tr(" at %1").arg(MomentText(hertz));
  return nearest;
}

double TSpectrumChart::CursorMoment(double hertz) const {
  return FSpectrum.lines.empty() ? hertz : FSpectrum.lines[LineAt(hertz)].hertz;
}

QStringList TSpectrumChart::SpanTexts(double span) const {
  return {tr("Δf %1 Hz").arg(Digits(span))};
}
