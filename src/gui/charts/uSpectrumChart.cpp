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
constexpr double kLinesInSight = 1e-6;   // of the largest line
constexpr float kOutlineFill = 0.14F;    // of a series' colour, below its outline

// By TSpectrumType.
struct TValueWords {
  const char* title;  // of the axis
  const char* unit;
};
constexpr TValueWords kValueWords[] = {
    {"Amplitude (g)", "g"}, {"Power (g²)", "g²"}, {"PSD (g²/Hz)", "g²/Hz"}, {"Level (dB re 1 g)", "dB"}};

const TValueWords& WordsOf(TSpectrumType type) {
  return kValueWords[static_cast<std::size_t>(type)];
}

}  // namespace

QString TSpectrumChart::ValueUnit() const {
  return QtText(WordsOf(FType).unit);
}

TSpectrumChart::TSpectrumChart(QWidget* parent) : TFrequencyChart(parent) {
  setObjectName("chartSpecAnalysis");
  setAccessibleName(tr("Spectrum of the selected event"));
  ValueAxis().setLabel(tr(WordsOf(FType).title));
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
  ValueAxis().setLabel(tr(WordsOf(FType).title));
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
  SetFullRange(TTimeSpan{FLogFrequencies ? Step() / 2 : -Step() / 2, MaxHertz() + Step() / 2});
}

// The lines keep their frequencies, so the view stays.
void TSpectrumChart::Recalculate() {
  if (FSpectrum.lines.empty()) return Calculate();
  FSpectrum = CalcSpectrum(FEvent->Values(), FType, FWindow);
  CalculatePins();
  ShowTitle();
  Range().RescaleValues();
  emit LinesChanged();
}

void TSpectrumChart::showEvent(QShowEvent* event) {
  if (FOutdated) Calculate();
  TTimeChart::showEvent(event);
}

void TSpectrumChart::Calculate() {
  FOutdated = FEvent != nullptr && !isVisible();
  FSpectrum = {};
  if (FEvent != nullptr && !FOutdated) FSpectrum = CalcSpectrum(FEvent->Values(), FType, FWindow);
  CalculatePins();
  const std::string why = WhyNoSpectrum(FSpectrum);
  SetPlaceholder(why.empty() ? tr("No event selected") : QtText(why));
  ShowTitle();
  ShowAll();
  emit LinesChanged();
}

void TSpectrumChart::CalculatePins() {
  std::vector<std::vector<TSpectrumLine>> lines;
  for (const TPin& pin : Pins().items) {
    lines.emplace_back();
    if (FSpectrum.lines.empty() || !pin.visible) continue;
    lines.back() = CalcSpectrum(pin.event->event.Values(), FType, FWindow).lines;
  }
  SetPinnedLines(std::move(lines));
}

void TSpectrumChart::PinsChanged() {
  const TTimeSpan full = Range().Full();
  const TTimeSpan times = Range().Times();
  CalculatePins();
  if (FSpectrum.lines.empty()) return;
  if (MaxHertz() + Step() / 2 == full.end) return Range().RescaleValues();
  ShowAll();
  if (times != full) Range().SetTimes(times);
}

// The title names the strongest line, because people look for it first.
QString TSpectrumChart::Title() const {
  // What was done to the samples comes first: a narrow chart cuts the end of a title.
  QString title = tr("Event %1").arg(FEvent->ID);
  if (const std::size_t taken = FSpectrum.grid.places.size(); taken < FEvent->Count()) {
    const QLocale english(QLocale::English);
    title += tr(" · first %1 of %2 samples").arg(english.toString(taken), english.toString(FEvent->Count()));
  }
  const std::string done = WhatGridDid(FSpectrum.grid);
  if (!done.empty()) title += tr(" · %1").arg(QtText(done));
  title += tr(" · %1 lines of %2 Hz").arg(FSpectrum.lines.size()).arg(Digits(Step(), kDigits));
  return title + StrongestPeak();
}

void TSpectrumChart::ScaleValues() {
  const auto [min, max, minPositive] = Extremes();
  if (!(min <= max)) return ValueAxis().setRange(0, 1);
  if (FType == TSpectrumType::Decibel) {
    const QCPRange range = ScaleAround(std::max(min, max - kDecibelInSight), max);
    return ValueAxis().setRange(range.lower, max + range.size() * kWordsRoom);
  }
  if (IsLogarithmic(ValueAxis()) && max > 0) {
    const double foot = std::clamp(minPositive, max * kLinesInSight, max / 10);
    return ValueAxis().setRange(foot, max * std::pow(max / foot, kWordsRoom));
  }
  ValueAxis().setRange(0, max > 0 ? max * (1 + kWordsRoom) : 1);
}

double TSpectrumChart::Step() const {
  return FSpectrum.lines[1].hertz;
}

// Lines that begin in one pixel become one step, as high as the largest of them.
std::vector<TEnvelopePoint> TSpectrumChart::StepsOf(std::span<const TSpectrumLine> lines, TSeries series,
                                                    double pixel) const {
  const double half = lines[1].hertz / 2;
  const auto edge = [&](std::size_t i) { return lines[i].hertz - half; };
  const auto [from, to] = Range().Times();
  const std::size_t end = LineAt(lines, to) + 1;
  std::vector<TEnvelopePoint> points;
  for (std::size_t i = LineAt(lines, from); i < end;) {
    const double left = edge(i);
    const double nextPixel = TimeAxis().coordToPixel(left) + pixel;
    double max = -std::numeric_limits<double>::infinity();
    do {
      max = std::fmax(max, ValueOf(lines[i], series));
    } while (++i < end && TimeAxis().coordToPixel(edge(i)) < nextPixel);
    const float height = std::isfinite(max) ? static_cast<float>(max) : std::numeric_limits<float>::quiet_NaN();
    points.push_back({left, height});
    points.push_back({lines[i - 1].hertz + half, height});
  }
  return points;
}

void TSpectrumChart::PaintData(QCPPainter& painter) {
  const auto [from, to] = Range().Times();
  if (to < -Step() || from > MaxHertz() + Step()) return;
  const TCurveAxes axes{TimeAxis(), ValueAxis()};
  const double pixel =
      TimeAxis().axisRect()->width() / static_cast<double>(ColumnsOf(TimeAxis(), painter, {from, to}).count);
  std::vector<std::pair<QColor, std::vector<TEnvelopePoint>>> outlines;
  for (const TSeries series : VisibleSeries()) {
    outlines.emplace_back(InkOf(series), StepsOf(FSpectrum.lines, series, pixel));
  }
  // Every fill is below every outline.
  for (const auto& [ink, points] : outlines) FillBelow(painter, points, ink);
  painter.setAntialiasing(true);
  PaintPins(painter, [&](const auto& lines, TSeries series) { return StepsOf(lines, series, pixel); });
  for (const auto& [ink, points] : outlines) {
    KeepClear(Labels(), axes, points);
    DrawEnvelope(painter, axes, points, QPen(ink, kCurveWidth));
  }
  PaintPeaks(painter);
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
  ink.setAlphaF(kOutlineFill);
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setAntialiasing(false);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ink);
  painter.drawPolygon(area);
  painter.restore();
}
