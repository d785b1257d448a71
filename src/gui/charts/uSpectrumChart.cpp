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
constexpr double kGroupPart = 0.8;       // of the room of a line, for its bars
constexpr double kMinBar = 2;            // px; thinner bars stand behind each other
constexpr double kWordsRoom = 0.06;      // of the values, above

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

QString TSpectrumChart::UnitOf(TSpectrumType type) {
  constexpr const char* kUnits[] = {"g", "g²", "g²/Hz", "dB"};
  return QString::fromUtf8(kUnits[static_cast<std::size_t>(type)]);
}

TSpectrumChart::TSpectrumChart(QWidget* parent) : TAccelerationChart(TAxisUnit::Hertz, parent) {
  setObjectName("chartSpecAnalysis");
  setAccessibleName(tr("Spectrum of the selected event"));
  ValueAxis().setLabel(AxisTitle(FType));
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) {
    if (HasData()) PaintBars(painter);
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
  Recalculate();
  ScaleValues();
}

void TSpectrumChart::SetWindow(TWeightingWindow window) {
  if (std::exchange(FWindow, window) != window) Recalculate();
}

// The lines keep their frequencies, so the view stays.
void TSpectrumChart::Recalculate() {
  if (FSpectrum.lines.empty()) return Calculate();
  FSpectrum = CalcSpectrum(FEvent->Values(), FType, FWindow);
  ShowTitle();
  Range().RescaleValues();
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
    return SetFullRange(std::nullopt);
  }
  ShowTitle();
  SetFullRange(TTimeSpan{-Step() / 2, FSpectrum.lines.back().hertz + Step() / 2});
}

// The title names the strongest line, because people look for it first.
void TSpectrumChart::ShowTitle() {
  const auto& lines = FSpectrum.lines;
  const TSpectrumLine* peak = nullptr;
  TBarSeries strongest = barSerSpecAnX;
  for (const TBarSeries& bar : VisibleBars()) {
    for (std::size_t i = 1; i < lines.size(); ++i) {
      if (!std::isfinite(lines[i].*bar.value)) continue;
      if (peak != nullptr && !(lines[i].*bar.value > peak->*strongest.value)) continue;
      peak = &lines[i];
      strongest = bar;
    }
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
                 .arg(Digits(peak->*strongest.value, kDigits), UnitOf(FType), Digits(peak->hertz, kDigits),
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
  for (const TBarSeries& bar : VisibleBars()) {
    for (std::size_t i = 1; i < FSpectrum.lines.size(); ++i) {
      const double value = FSpectrum.lines[i].*bar.value;
      if (!std::isfinite(value)) continue;
      min = std::min(min, value);
      max = std::max(max, value);
    }
  }
  if (!(min <= max)) return ValueAxis().setRange(0, 1);
  if (FType == TSpectrumType::Decibel) {
    return ValueAxis().setRange(ScaleAround(std::max(min, max - kDecibelInSight), max));
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

void TSpectrumChart::PaintBars(QCPPainter& painter) const {
  const auto [from, to] = Range().Times();
  if (to < -Step() || from > FSpectrum.lines.back().hertz + Step()) return;
  const std::size_t begin = LineAt(from);
  const std::size_t end = LineAt(to) + 1;
  painter.save();
  painter.setAntialiasing(false);
  painter.setClipRect(Rect().rect(), Qt::IntersectClip);
  const double room = TimeAxis().coordToPixel(Step()) - TimeAxis().coordToPixel(0);
  const auto count = static_cast<double>(VisibleBars().size());
  if (room * kGroupPart >= kMinBar * count) {
    PaintGroups(painter, begin, end);
  } else {
    PaintColumns(painter, begin, end);
  }
  painter.restore();
}

// Decibels have no natural zero, so their bars begin at the lower edge.
double TSpectrumChart::Foot() const {
  const QRectF rect = Rect().rect();
  if (FType == TSpectrumType::Decibel) return rect.bottom() + 1;
  return std::clamp(ValueAxis().coordToPixel(0), rect.top() - 1, rect.bottom() + 1);
}

void TSpectrumChart::PaintBar(QCPPainter& painter, double left, double width, double value, TSeries series) const {
  if (!std::isfinite(value)) return;
  const QRectF rect = Rect().rect();
  const double top = std::clamp(ValueAxis().coordToPixel(value), rect.top() - 1, rect.bottom() + 1);
  const QRectF bar(left, top, width, Foot() - top);
  painter.fillRect(bar.intersected(rect), InkOf(series));  // an SVG file has no clip
}

void TSpectrumChart::PaintGroups(QCPPainter& painter, std::size_t begin, std::size_t end) const {
  const std::vector<TBarSeries> bars = VisibleBars();
  const double width = Step() * kGroupPart / static_cast<double>(std::max<std::size_t>(bars.size(), 1));
  for (std::size_t i = begin; i < end; ++i) {
    const TSpectrumLine& line = FSpectrum.lines[i];
    double left = line.hertz - Step() * kGroupPart / 2;
    for (const TBarSeries& bar : bars) {
      const double x = TimeAxis().coordToPixel(left);
      left += width;
      PaintBar(painter, x, TimeAxis().coordToPixel(left) - x, line.*bar.value, bar.series);
    }
  }
}

void TSpectrumChart::PaintColumns(QCPPainter& painter, std::size_t begin, std::size_t end) const {
  struct TColumn {
    double value;
    TSeries series;
  };
  const std::vector<TBarSeries> bars = VisibleBars();
  std::vector<TColumn> columns;
  for (std::size_t i = begin; i < end;) {
    const double x = std::floor(TimeAxis().coordToPixel(FSpectrum.lines[i].hertz));
    std::size_t next = i + 1;
    while (next < end && TimeAxis().coordToPixel(FSpectrum.lines[next].hertz) < x + 1) ++next;
    columns.clear();
    for (const TBarSeries& bar : bars) {
      double max = -std::numeric_limits<double>::infinity();
      for (std::size_t k = i; k < next; ++k) max = std::fmax(max, FSpectrum.lines[k].*bar.value);
      columns.push_back({max, bar.series});
    }
    std::ranges::stable_sort(columns, std::ranges::greater(), &TColumn::value);
    const double width = next < end ? TimeAxis().coordToPixel(FSpectrum.lines[next].hertz) - x : 1;
    for (const auto& [value, series] : columns) {
      PaintBar(painter, x, std::max(1.0, width * kGroupPart), value, series);
    }
    i = next;
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
    curves.push_back({NameOf(bar.series), UnitOf(FType), InkOf(bar.series), ValueAxis(), lines.size(),
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
