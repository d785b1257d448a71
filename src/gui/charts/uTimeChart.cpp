#include "gui/charts/uTimeChart.h"

#include <QMenu>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "analysis/uEnvelope.h"
#include "analysis/uRangeStatistics.h"
#include "base/uDateTime.h"
#include "gui/charts/uChartPaint.h"
#include "gui/charts/uInTimeOrder.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kMsPerSecond = 1000;
constexpr double kMillisecondsBelow = 600 * kMsPerSecond / kMsPerDay;  // days; a longer view shows whole seconds
constexpr double kMaxPeriod = 100;                                     // s; of a longer one no frequency is shown
constexpr std::size_t kMaxReadings = 12;

QString HertzText(double seconds) {
  const double hertz = 1 / seconds;
  return QObject::tr("1/Δt %1 Hz").arg(hertz < 1 ? QString::number(hertz, 'g', 4) : Figure(hertz));
}

QPointF PlaceOf(const QCPAxis& times, const TCurve& curve, std::size_t sample) {
  return {times.coordToPixel(curve.timeAt(sample)), curve.values.coordToPixel(curve.valueAt(sample))};
}

// "RH 41.5 %RH"
QString Words(const TCurve& curve, const QString& number) {
  return QString("%1 %2 %3").arg(curve.name, number, curve.unit).trimmed();
}

TReading ReadingOf(const QCPAxis& times, const TCurve& curve, std::size_t sample) {
  const double value = curve.valueAt(sample);
  TReading reading{Words(curve, curve.number(value)), curve.ink, std::nullopt};
  if (std::isfinite(value)) reading.at = PlaceOf(times, curve, sample);
  return reading;
}

TRangeStatistics StatisticsOf(const TCurve& curve, const TTimeSpan& times) {
  TStatisticsSum sum;
  const std::size_t first = FirstAtOrAfter(curve.count, curve.timeAt, times.start);
  for (std::size_t i = first; i < curve.count && curve.timeAt(i) <= times.end; ++i) sum.Add(curve.valueAt(i));
  return sum.Result();
}

void SharePointer(TTimeChart& from, TTimeChart& to) {
  QObject::connect(&from, &TChartPlot::PointerMoved, &to,
                   [&to](std::optional<double> time) { to.Marks().SetShared(time); });
}

}  // namespace

TTimeChart::TTimeChart(TAxisUnit unit, QWidget* parent)
    : TChartPlot(unit, parent),
      FRange(*this, [this] { ScaleValues(); }),
      FFlags(*this),
      FCursors(*this, *this),
      FMarks(*this, *this),
      FGestures(*this, *this, FRange, FMarks, FCursors) {
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) {
    if (!HasData()) return;
    painter.setFont(font());
    PaintData(painter);
    painter.setFont(font());
    Labels().Paint(painter, palette());
  });
  connect(&FGestures, &TChartGestures::Clicked, this, [this](const QPointF& position) {
    const QPoint at = position.toPoint();
    if (FRange.IsUnsynced() && Legend().IsOnTitle(at)) emit SyncMenuRequested(mapToGlobal(at));
    if (const auto entry = Legend().EntryAt(position)) {
      EntryClicked(*entry);
    } else if (Legend().IsOnMore(position)) {
      ShowEntriesLeftOut(mapToGlobal(at));
    } else if (const QString flag = FFlags.IdAt(position); !flag.isEmpty()) {
      emit FlagClicked(flag);
    } else {
      Clicked(position);
    }
  });
  connect(&FGestures, &TChartGestures::Unclicked, this, &TTimeChart::Unclicked);
}

void TTimeChart::ShowEntriesLeftOut(const QPoint& at) {
  auto* menu = new QMenu(this);
  menu->setObjectName("mnuLegend");
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const std::size_t entry : Legend().EntriesLeftOut()) {
    const TLegendEntry& series = Legend().Contents().entries[entry];
    QAction* action = menu->addAction(QString(series.name).replace('&', "&&"));
    action->setCheckable(true);
    action->setChecked(series.shown);
    connect(action, &QAction::triggered, this, [this, entry] {
      if (entry < Legend().Contents().entries.size()) EntryClicked(entry);
    });
  }
  menu->popup(at);
}

void TTimeChart::SetPointsVisible(bool visible) {
  if (std::exchange(FPointsVisible, visible) != visible) QueueReplot();
}

void TTimeChart::SetDisplay(const TDisplaySettings& display) {
  const TDisplaySettings before = std::exchange(FDisplay, display);
  if (!ShowsChangeFrom(before)) return;
  DisplayChanged();
  FRange.RescaleValues();
  Restyle();
}

bool TTimeChart::ShowsChangeFrom(const TDisplaySettings& before) const {
  return Differ(before, Display(), &TDisplaySettings::dateFormat);
}

std::optional<TLimits> TTimeChart::AlarmOf(TQuantity quantity) const {
  return FDisplay.alarmActive ? std::optional(FDisplay.LimitsOf(quantity)) : std::nullopt;
}

void TTimeChart::SetForPaper(bool on) {
  FForPaper = on;
  Restyle();
}

void TTimeChart::Restyle() {
  TChartPlot::Restyle();
  FillLegend();
}

QList<qreal> TTimeChart::Dashes(std::size_t place) const {
  static const QList<QList<qreal>> kDashes = {
      {}, {6, 3}, {1.5, 2.5}, {9, 2.5, 1.5, 2.5}, {16, 4}, {9, 2.5, 1.5, 2.5, 1.5, 2.5}};
  if (!FForPaper) return {};
  return kDashes.at(static_cast<qsizetype>(place) % kDashes.size());
}

void TTimeChart::SetFullRange(const std::optional<TTimeSpan>& span) {
  FCursors.Reset();
  FGestures.EndDrag();
  FRange.SetFull(span);
  if (span) FMarks.ChangeData(FRange.Full());
}

QString TTimeChart::MomentText(double time) const {
  const bool milliseconds = TimeAxis().range().size() < kMillisecondsBelow;
  return QtText(FormatDateTime(DateTimeMask() + (milliseconds ? ".zzz" : ""), time));
}

QString TTimeChart::CursorText(const QPointF& position) const {
  QStringList values;
  for (const TReading& reading : ReadingsAt(MomentAt(position))) values.append(reading.text);
  return values.join("  ·  ");
}

std::vector<TReading> TTimeChart::ReadingsAt(double time) const {
  std::vector<TReading> readings;
  for (const TCurve& curve : Curves()) {
    if (readings.size() == kMaxReadings) {
      readings.push_back({"…", FaintInk(), std::nullopt});
      break;
    }
    readings.push_back(ReadingOf(TimeAxis(), curve, curve.nearest(time)));
  }
  return readings;
}

std::optional<TReading> TTimeChart::NearestTo(const QPointF& position) const {
  const double time = MomentAt(position);
  std::optional<TReading> nearest;
  double minDistance = std::numeric_limits<double>::infinity();
  const TPixels times(TimeAxis());
  for (const TCurve& curve : Curves()) {
    const TPixels values(curve.values);
    const auto across = [&](std::size_t i) { return std::fabs(times.At(curve.timeAt(i)) - position.x()); };
    const auto up = [&](std::size_t i) { return std::fabs(values.At(curve.valueAt(i)) - position.y()); };
    const auto atLeast = [&](std::size_t i) {
      const TExtent* const block = curve.extents ? curve.extents->BlockOf(i) : nullptr;
      if (block == nullptr) return 0.0;
      const auto [top, bottom] = std::minmax({values.At(double{block->min}), values.At(double{block->max})});
      return std::max(top - position.y(), position.y() - bottom);
    };
    const auto found = NearestOnScreen(curve.count, curve.nearest(time), across, up, atLeast);
    if (!found) continue;
    const double distance = std::hypot(across(*found), up(*found));
    if (distance >= minDistance) continue;
    minDistance = distance;
    nearest = ReadingOf(TimeAxis(), curve, *found);
    nearest->text += tr(" at %1").arg(MomentText(curve.timeAt(*found)));
  }
  return nearest;
}

std::vector<TReading> TTimeChart::DifferencesBetween(double a, double b) const {
  std::vector<TReading> differences;
  for (const TCurve& curve : Curves()) {
    const double change = curve.valueAt(curve.nearest(b)) - curve.valueAt(curve.nearest(a));
    const QString number = std::isfinite(change) ? curve.change(change) : QString(kNoNumber);
    differences.push_back({"Δ" + Words(curve, number), curve.ink, std::nullopt});
  }
  return differences;
}

TRangeTable TTimeChart::VisibleStatistics() const {
  if (!HasData()) return {};
  const TTimeSpan times = Range().Times();
  const bool hertz = Unit() == TAxisUnit::Hertz;
  TRangeTable table{tr("%1 … %2").arg(MomentText(times.start), MomentText(times.end)),
                    {tr("Series"), tr("Unit"), hertz ? tr("Lines") : tr("Samples"), tr("Minimum"), tr("Maximum"),
                     tr("Peak to peak"), tr("Mean"), tr("RMS")},
                    2,
                    {}};
  if (Unit() != TAxisUnit::Days) {
    table.span = tr("%1 … %2 %3").arg(Digits(times.start), Digits(times.end), hertz ? "Hz" : "ms");
  }
  for (const TCurve& curve : Curves()) {
    const TRangeStatistics found = StatisticsOf(curve, times);
    QStringList row{curve.name, curve.unit, QString::number(found.count)};
    for (const double value : {found.min, found.max, found.PeakToPeak(), found.mean, found.rms}) {
      row << (std::isfinite(value) ? curve.change(value) : QString(kNoNumber));
    }
    table.rows.push_back(std::move(row));
  }
  return table;
}

QStringList TTimeChart::SpanTexts(double span) const {
  const QString sign = span < 0 ? "−" : "";
  const double length = std::fabs(span);
  const bool days = Unit() == TAxisUnit::Days;
  const double seconds = (days ? length * kMsPerDay : length) / kMsPerSecond;
  QStringList texts;
  texts.append(days ? tr("Δt %1%2").arg(sign, QtText(FormatDuration(length)))
                    : tr("Δt %1%2 ms").arg(sign, Figure(length)));
  if (seconds > 0 && seconds <= kMaxPeriod) texts.append(HertzText(seconds));
  return texts;
}

void PairCharts(TTimeChart& upper, TTimeChart& lower) {
  // Dates need no title, and the charts need the height.
  for (TTimeChart* chart : {&upper, &lower}) chart->SetTimeTitle({});
  SharePointer(upper, lower);
  SharePointer(lower, upper);
  for (TTimeChart* chart : {&upper, &lower}) {
    QObject::connect(chart, &TChartPlot::NeededMarginsChanged, &upper, [&] { AlignMargins(upper, lower); });
    QObject::connect(chart, &QCustomPlot::beforeReplot, &upper, [&] {
      upper.SetTimeLabelsVisible(!lower.HasData() || upper.Range().Times() != lower.Range().Times());
    });
  }
}
