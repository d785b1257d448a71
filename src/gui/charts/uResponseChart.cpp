#include "gui/charts/uResponseChart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "gui/charts/uChartPaint.h"
#include "gui/charts/uNumberTicker.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kLogInSight = 1e-4;  // of the largest value
constexpr double kFootRoom = 0.03;    // of the values, below the smallest
constexpr double kMargin = 1.05;      // of a frequency, beside the first and the last line
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

bool IsVelocity(const TResponseRequest& request) {
  return request.options.response == TResponse::PseudoVelocity;
}

constexpr double kMmPerM = 1000;
constexpr double kMaxLines = 7;  // of a kind

// velocity = value · factor · hertz^power
struct TDiagonals {
  QString unit;
  double factor;
  int power;

  [[nodiscard]] double VelocityAt(double value, double hertz) const { return value * factor * std::pow(hertz, power); }
  [[nodiscard]] double HertzAt(double value, double velocity) const {
    return std::pow(velocity / (value * factor), power);
  }
  [[nodiscard]] double ValueAt(double hertz, double velocity) const {
    return velocity / (factor * std::pow(hertz, power));
  }
};

const std::array<TDiagonals, 2>& Kinds() {
  static const std::array<TDiagonals, 2> kinds = {
      TDiagonals{QStringLiteral("g"), kStandardGravity / (2 * std::numbers::pi), -1},
      TDiagonals{QStringLiteral("mm"), 2 * std::numbers::pi / kMmPerM, 1}};
  return kinds;
}

// The round values of a kind in sight.
std::vector<double> InSight(const TDiagonals& kind, const QCPRange& hertz, const QCPRange& velocity) {
  const bool falls = kind.power < 0;
  const double min = kind.ValueAt(falls ? hertz.lower : hertz.upper, velocity.lower);
  const double max = kind.ValueAt(falls ? hertz.upper : hertz.lower, velocity.upper);
  return LogSteps(min, max, std::log10(max / min) / kMaxLines);
}

// Of a chart of pseudo-velocity (m/s) over Hz, both logarithmic: lines of constant acceleration fall, those of constant
// displacement rise, at round numbers of g and mm that are in sight.
void DrawDiagonals(QCPPainter& painter, const QCPAxis& hertz, const QCPAxis& velocity, const QPen& pen) {
  painter.setAntialiasing(true);
  const QCPRange range = hertz.range();
  for (const TDiagonals& kind : Kinds()) {
    for (const double value : InSight(kind, range, velocity.range())) {
      const auto at = [&](double one) { return TEnvelopePoint{one, static_cast<float>(kind.VelocityAt(value, one))}; };
      DrawEnvelope(painter, {hertz, velocity}, std::array{at(range.lower), at(range.upper)}, pen);
    }
  }
}

// Adds their names where they enter or leave the axis rect.
void NameDiagonals(TChartLabels& labels, const QCPAxis& hertz, const QCPAxis& velocity, const QColor& ink) {
  const double top = velocity.range().upper;
  for (const TDiagonals& kind : Kinds()) {
    // The upper end, so that the names stand above the curves: at the side, or at the top where the line is cut there.
    const double side = kind.power < 0 ? hertz.range().lower : hertz.range().upper;
    for (const double value : InSight(kind, hertz.range(), velocity.range())) {
      const double atSide = kind.VelocityAt(value, side);
      const bool isCut = atSide > top;
      if (!isCut && atSide < velocity.range().lower) continue;
      const QPointF end(hertz.coordToPixel(isCut ? kind.HertzAt(value, top) : side),
                        velocity.coordToPixel(isCut ? top : atSide));
      labels.AddPoint(end, QString("%1 %2").arg(Digits(value), kind.unit), ink);
    }
  }
}

}  // namespace

TResponseChart::TResponseChart(QWidget* parent) : TFrequencyChart(parent) {
  setObjectName("chartResponse");
  setAccessibleName(tr("Shock response spectrum"));
  SetLogarithmic(TimeAxis(), true);
  SetLogarithmic(ValueAxis(), true);
  SetTimeTitle(tr("Natural frequency (Hz)"));
  new TPainted(&Rect(), "grid", [this](QCPPainter& painter) {
    if (!HasData()) return;
    const QColor ink = palette().color(QPalette::Text);
    ShadeSpans(painter, TimeAxis(), RoughSpans(), Mixed(palette().color(QPalette::Base), ink, 0.05));
    const QPen faint(Mixed(palette().color(QPalette::Base), ink, 0.2), 1);
    if (IsVelocity(FRequest)) DrawDiagonals(painter, TimeAxis(), ValueAxis(), faint);
  });
  connect(&FTask, &TResponseTask::Progressed, this, &TResponseChart::Progressed);
  Restyle();
  Clear();
}

// The task ends before what it borrows.
TResponseChart::~TResponseChart() {
  FTask.Stop();
}

QString TResponseChart::ValueUnit() const {
  return IsVelocity(FRequest) ? tr("m/s") : tr("g");
}

void TResponseChart::Clear() {
  FTask.Stop();
  FEvents = nullptr;
  FIndex.reset();
  FVisible.clear();
  Calculate(false);
}

void TResponseChart::ShowEvent(const TEventList& events, std::size_t index, double levelOn) {
  const bool sameEvents = FIsEnvelope && FEvents == &events && FRequest.levelOn == levelOn;
  FEvents = &events;
  FIndex = index < events.Count() ? std::optional(index) : std::nullopt;
  FRequest.levelOn = levelOn;
  if (!sameEvents) Calculate(false);
}

void TResponseChart::SetVisibleEvents(std::vector<bool> visible) {
  if (std::exchange(FVisible, std::move(visible)) != FVisible && FIsEnvelope) Calculate(true);
}

void TResponseChart::SetRequest(const TResponseRequest& request) {
  const double levelOn = FRequest.levelOn;
  FRequest = request;
  FRequest.levelOn = levelOn;
  FCalculated.clear();
  Calculate(true);
}

void TResponseChart::SetEnvelope(bool on) {
  if (std::exchange(FIsEnvelope, on) != on) Calculate(false);
}

void TResponseChart::SetLimit(TLimitCurve limit) {
  FLimit = std::move(limit);
  SeriesChanged();
}

bool TResponseChart::HasLimit() const {
  return !FLimit.empty() && !IsVelocity(FRequest);
}

std::optional<TResponseChart::TMargin> TResponseChart::SmallestMargin(std::optional<std::size_t> line) const {
  std::optional<TMargin> smallest;
  if (!HasLimit()) return smallest;
  for (const TSeries series : VisibleSeries()) {
    for (std::size_t i = line.value_or(0); i < (line ? *line + 1 : FLines.size()); ++i) {
      const auto margin = MarginAt(FLimit, FLines[i].hertz, ValueOf(FLines[i], series));
      if (margin && (!smallest || *margin < smallest->decibel)) smallest = {*margin, FLines[i].hertz, series};
    }
  }
  return smallest;
}

std::vector<TReading> TResponseChart::ReadingsAt(double hertz) const {
  std::vector<TReading> readings = TFrequencyChart::ReadingsAt(hertz);
  if (readings.empty() || !HasLimit()) return readings;
  const std::size_t line = LineAt(hertz);
  const auto limit = LimitAt(FLimit, FLines[line].hertz);
  if (!limit) return readings;
  QString words = tr("Limit %1 g").arg(Digits(*limit, kDigits));
  if (const auto margin = SmallestMargin(line)) {
    words += tr(", margin %1 dB (%2)").arg(margin->decibel, 0, 'f', 1).arg(NameOf(margin->series));
  }
  readings.push_back({words, QColor(TokensOf(palette()).alarm), std::nullopt});
  return readings;
}

void TResponseChart::Cancel() {
  if (!FTask.IsRunning()) return;
  FTask.Drop();
  FWasCancelled = true;
  Show({});
  emit Ended();
}

std::vector<const TEvent*> TResponseChart::Events() const {
  std::vector<const TEvent*> events;
  if (FEvents == nullptr) return events;
  if (!FIsEnvelope) {
    if (FIndex) events.push_back(&FEvents->GetItem(*FIndex));
    return events;
  }
  for (std::size_t i = 0; i < FEvents->Count(); ++i) {
    if (FVisible.empty() || FVisible[i]) events.push_back(&FEvents->GetItem(i));
  }
  return events;
}

void TResponseChart::showEvent(QShowEvent* event) {
  if (FOutdated) Calculate(false);
  TTimeChart::showEvent(event);
}

void TResponseChart::hideEvent(QHideEvent* event) {
  TTimeChart::hideEvent(event);
  if (event->spontaneous() || !FTask.IsRunning()) return;  // spontaneous: the window was minimised
  FTask.Drop();
  FOutdated = true;
  emit Ended();
}

void TResponseChart::Calculate(bool sameEvents) {
  FTask.Drop();
  FWasCancelled = false;
  if (!sameEvents) {
    FView.reset();
  } else if (HasData()) {
    FView = {Range().Full(), Range().Times()};
  }
  std::vector<const TEvent*> events = Events();
  FOutdated = !events.empty() && !isVisible();
  if (events.empty() || FOutdated) {
    Show({});
  } else {
    FTask.Start(Jobs(std::move(events)), [this](std::vector<TShockResponse> results) {
      TakeResults(std::move(results));
      emit Ended();
    });
    if (FTask.IsRunning()) Show({});
  }
  if (!FTask.IsRunning()) emit Ended();
}

void TResponseChart::PinsChanged() {
  std::erase_if(FCalculated, [this](const auto& calculated) {
    return std::ranges::find(Pins().items, calculated.first, &TPin::event) == Pins().items.end();
  });
  Calculate(true);
}

std::vector<TPin> TResponseChart::PinsToCalculate() const {
  std::vector<TPin> pins = Pins().items;
  std::erase_if(pins, [this](const TPin& pin) { return !pin.visible || FCalculated.contains(pin.event); });
  return pins;
}

std::vector<TResponseJob> TResponseChart::Jobs(std::vector<const TEvent*> events) const {
  std::vector<TResponseJob> jobs = {{std::move(events), FRequest, {}}};
  for (const TPin& pin : PinsToCalculate()) {
    jobs.push_back({{&pin.event->event}, FRequest, pin.event});
    jobs.back().request.levelOn = pin.event->levels.totOn;
  }
  return jobs;
}

void TResponseChart::TakeResults(std::vector<TShockResponse> results) {
  std::size_t next = 1;
  for (const TPin& pin : PinsToCalculate()) {
    const auto& lines = results[next++].lines;
    FCalculated[pin.event].assign(lines.begin(), lines.end());
  }
  Show(std::move(results.front()));
}

void TResponseChart::Show(TShockResponse response) {
  FResponse = std::move(response);
  FLines.assign(FResponse.lines.begin(), FResponse.lines.end());
  std::vector<std::vector<TSpectrumLine>> pinnedLines;
  for (const TPin& pin : Pins().items) {
    const auto calculated = FCalculated.find(pin.event);
    const bool isThere = !FLines.empty() && pin.visible && calculated != FCalculated.end();
    pinnedLines.push_back(isThere ? calculated->second : std::vector<TSpectrumLine>());
  }
  SetPinnedLines(std::move(pinnedLines));
  SetPlaceholder(QtText(WhyNone()));
  SetValueTitle(IsVelocity(FRequest) ? tr("Pseudo-velocity") : tr("Acceleration response"), ValueUnit());
  ShowTitle();
  std::optional<TTimeSpan> full;
  if (!FLines.empty()) {
    double from = FLines.front().hertz;
    for (const auto& lines : PinnedLines()) from = std::min(from, lines.empty() ? from : lines.front().hertz);
    full = {from / kMargin, MaxHertz() * kMargin};
  }
  const bool keepsView = full && FView && FView->full == *full;
  if (keepsView && HasData()) {
    Range().RescaleValues();
  } else {
    SetFullRange(full);
    if (keepsView) Range().SetTimes(FView->times);
  }
  emit LinesChanged();
}

std::string TResponseChart::WhyNone() const {
  if (!FLines.empty()) return {};
  if (FWasCancelled) return "The calculation was cancelled.";
  if (FTask.IsRunning()) return "Calculating…";
  if (!FResponse.reason.empty()) return "No response spectrum. Event " + FResponse.reason;
  return FIsEnvelope ? "No event is visible." : "No event selected";
}

// What the spectrum is, then what limits its use: a narrow chart cuts the end of a title.
QString TResponseChart::Title() const {
  const auto& [quality, response, sign] = FRequest.options;
  const QString whose =
      FIsEnvelope ? tr("Envelope of %1 events").arg(Events().size()) : tr("Event %1").arg(FEvents->GetItem(*FIndex).ID);
  QStringList parts = {whose, QtText(kResponseSigns[static_cast<std::size_t>(sign)].first), tr("Q %1").arg(quality)};
  if (const auto margin = SmallestMargin()) {
    parts.insert(1, tr("margin %1 dB at %2 Hz (%3)")
                        .arg(margin->decibel, 0, 'f', 1)
                        .arg(Digits(margin->hertz, kDigits), NameOf(margin->series)));
  }
  if (const auto rough = RoughSpans(); !rough.empty()) {
    parts.append(tr("rough above %1 Hz").arg(Digits(rough.front().start, kDigits)));
  }
  for (const std::string& remark : FResponse.remarks) parts.append(QtText(remark));
  if (!FResponse.baseline.empty()) parts.append(QtText(FResponse.baseline));
  parts.append(tr("1/%1 octave").arg(FRequest.octave));
  return parts.join(" · ") + StrongestPeak();
}

std::vector<TTimeSpan> TResponseChart::RoughSpans() const {
  const auto& lines = FResponse.lines;
  const auto isRough = [&lines](std::size_t i) { return lines[i].range == TResponseRange::Rough; };
  std::vector<TTimeSpan> spans;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!isRough(i)) continue;
    const double start = i > 0 ? lines[i - 1].hertz : lines[i].hertz / kMargin;
    while (i < lines.size() && isRough(i)) ++i;
    spans.push_back({start, i < lines.size() ? lines[i].hertz : lines.back().hertz * kMargin});
  }
  return spans;
}

void TResponseChart::ScaleValues() {
  auto [min, max, minPositive] = Extremes();
  for (const TSpectrumLine& line : FLines) {
    const auto limit = HasLimit() ? LimitAt(FLimit, line.hertz) : std::nullopt;
    max = std::max(max, limit.value_or(max));
  }
  if (!(max > 0)) return ValueAxis().setRange(0.1, 1);
  const double foot = std::clamp(minPositive, max * kLogInSight, max / 10);
  ValueAxis().setRange(foot * std::pow(foot / max, kFootRoom), max * std::pow(max / foot, kWordsRoom));
}

void TResponseChart::PaintData(QCPPainter& painter) {
  painter.setAntialiasing(true);
  PaintPins(painter, [](std::span<const TSpectrumLine> lines, TSeries series) {
    std::vector<TEnvelopePoint> points;
    for (const TSpectrumLine& line : lines) points.push_back(PointOf(line, series));
    return points;
  });
  for (const TSeries series : VisibleSeries()) PaintSeries(painter, series);
  if (HasLimit()) PaintLimit(painter);
  PaintPeaks(painter);
  for (const TTimeSpan& rough : RoughSpans()) {
    const double middle = TimeAxis().coordToPixel(std::sqrt(rough.start * rough.end));
    Labels().AddPoint({middle, double(Rect().rect().bottom())}, tr("rough"), FaintInk());
  }
  if (IsVelocity(FRequest)) NameDiagonals(Labels(), TimeAxis(), ValueAxis(), FaintInk());
}

// A value that a logarithmic axis lacks breaks the line.
TEnvelopePoint TResponseChart::PointOf(const TSpectrumLine& line, TSeries series) {
  const double value = ValueOf(line, series);
  return {line.hertz, value > 0 ? static_cast<float>(value) : kNaN};
}

// Solid between two lines that can be trusted, dotted elsewhere.
void TResponseChart::PaintSeries(QCPPainter& painter, TSeries series) {
  const TCurveAxes axes{TimeAxis(), ValueAxis()};
  std::vector<TEnvelopePoint> all, part;
  bool isDotted = false;
  const auto draw = [&] {
    QPen pen(InkOf(series), kCurveWidth);
    const QList<qreal> dashes = isDotted ? QList<qreal>{1.5, 2.5} : Dashes(Place(series));
    if (!dashes.isEmpty()) pen.setDashPattern(dashes);
    if (part.size() > 1) DrawEnvelope(painter, axes, part, pen);
  };
  for (std::size_t i = 0; i < FLines.size(); ++i) {
    const TEnvelopePoint point = PointOf(FLines[i], series);
    const auto isRough = [this](std::size_t line) { return FResponse.lines[line].range == TResponseRange::Rough; };
    const bool rough = i > 0 && (isRough(i - 1) || isRough(i));
    if (i > 0 && rough != isDotted) {
      draw();
      part = {all.back()};
      isDotted = rough;
    }
    part.push_back(point);
    all.push_back(point);
  }
  draw();
  KeepClear(Labels(), axes, all);
}

void TResponseChart::PaintLimit(QCPPainter& painter) {
  const QColor ink = QColor(TokensOf(palette()).alarm);
  std::vector<TEnvelopePoint> line;
  for (const TLimitPoint& point : FLimit) line.push_back({point.hertz, static_cast<float>(point.g)});
  QPen pen(ink, kCurveWidth);
  pen.setDashPattern({6, 4});
  const TCurveAxes axes{TimeAxis(), ValueAxis()};
  DrawEnvelope(painter, axes, line, pen);
  KeepClear(Labels(), axes, line);
  const QCPRange view = TimeAxis().range();
  const double middle =
      std::sqrt(std::max(view.lower, FLimit.front().hertz) * std::min(view.upper, FLimit.back().hertz));
  if (const auto limit = LimitAt(FLimit, middle)) Labels().AddPoint(axes.At(middle, *limit), tr("Limit"), ink);
}
