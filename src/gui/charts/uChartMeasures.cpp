// What each chart says between its cursors and of the range in sight.
#include <algorithm>
#include <cmath>

#include "analysis/uPointAbsorption.h"
#include "analysis/uRangeStatistics.h"
#include "base/uDateTime.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uQtText.h"

namespace {

constexpr auto kNothing = "–";

QString Number(double value) {
  return Digits(value, 6);
}

TRangeTable SeriesTable(const QString& span) {
  return {span,
          {QObject::tr("Series"), QObject::tr("Unit"), QObject::tr("Samples"), QObject::tr("Minimum"),
           QObject::tr("Maximum"), QObject::tr("Peak to peak"), QObject::tr("Mean"), QObject::tr("RMS")},
          2,
          {}};
}

QStringList SeriesRow(const QString& name, const QString& unit, const TRangeStatistics& found) {
  return {name,
          unit,
          QString::number(found.count),
          Number(found.least),
          Number(found.largest),
          Number(found.PeakToPeak()),
          Number(found.mean),
          Number(found.rms)};
}

// Of the samples whose times lie in the range, both ends included.
template <class TTimeAt, class TValueAt>
TRangeStatistics StatisticsIn(const std::pair<double, double>& range, std::size_t count, const TTimeAt& timeAt,
                              const TValueAt& valueAt) {
  TStatisticsSum sum;
  for (std::size_t i = FirstAtOrAfter(count, timeAt, range.first); i < count && timeAt(i) <= range.second; ++i) {
    sum.Add(valueAt(i));
  }
  return sum.Result();
}

}  // namespace

double TSelectedEventChart::CursorMoment(double time) const {
  return Samples().empty() ? time : Samples()[NearestSample(time)].time - FStart;
}

QStringList TSelectedEventChart::SpanTexts(double span) const {
  QStringList texts = TTimeChart::SpanTexts(span);
  texts.front() = tr("Δt %1 ms").arg(QtText(MaskFloat(FMasks.time, span)));
  return texts;
}

std::vector<TTimeChart::TReading> TSelectedEventChart::DifferencesBetween(double a, double b) const {
  if (Samples().empty()) return {};
  const TEventValue& first = Samples()[NearestSample(a)];
  const TEventValue& second = Samples()[NearestSample(b)];
  std::vector<TReading> differences;
  for (const TSeries series : VisibleSeries()) {
    const double change = double{ValueOf(second, series)} - double{ValueOf(first, series)};
    const QString number = std::isfinite(change) ? QtText(MaskFloat(FMasks.acceleration, change)) : QString(kNothing);
    differences.push_back({tr("Δ%1 %2 g").arg(NameOf(series), number), InkOf(series), std::nullopt});
  }
  return differences;
}

TRangeTable TSelectedEventChart::VisibleStatistics() const {
  if (!HasData()) return {};
  const auto [from, to] = TimeRange();
  TRangeTable table = SeriesTable(tr("%1 … %2 ms").arg(Number(from), Number(to)));
  const auto samples = Samples();
  const auto timeAt = [&](std::size_t i) { return samples[i].time - FStart; };
  for (const TSeries series : VisibleSeries()) {
    const auto valueAt = [samples, series](std::size_t i) { return ValueOf(samples[i], series); };
    table.rows.push_back(
        SeriesRow(NameOf(series), tr("g"), StatisticsIn(TimeRange(), samples.size(), timeAt, valueAt)));
  }
  return table;
}

double TSpectrumChart::CursorMoment(double hertz) const {
  return FSpectrum.lines.empty() ? hertz : FSpectrum.lines[LineAt(hertz)].hertz;
}

QStringList TSpectrumChart::SpanTexts(double span) const {
  return {tr("Δf %1 Hz").arg(Number(span))};
}

std::vector<TTimeChart::TReading> TSpectrumChart::DifferencesBetween(double a, double b) const {
  if (FSpectrum.lines.empty()) return {};
  std::vector<TReading> differences;
  for (const TBarSeries& bar : VisibleBars()) {
    const double change = FSpectrum.lines[LineAt(b)].*bar.value - FSpectrum.lines[LineAt(a)].*bar.value;
    differences.push_back(
        {tr("Δ%1 %2 %3").arg(NameOf(bar.series), Number(change), UnitOf(FType)), InkOf(bar.series), std::nullopt});
  }
  return differences;
}

TRangeTable TSpectrumChart::VisibleStatistics() const {
  if (!HasData()) return {};
  const auto [from, to] = TimeRange();
  TRangeTable table = SeriesTable(tr("%1 … %2 Hz").arg(Number(from), Number(to)));
  table.titles[2] = tr("Lines");
  const auto& lines = FSpectrum.lines;
  const auto hertzAt = [&](std::size_t i) { return lines[i].hertz; };
  for (const TBarSeries& bar : VisibleBars()) {
    const auto valueAt = [&](std::size_t i) { return lines[i].*bar.value; };
    table.rows.push_back(
        SeriesRow(NameOf(bar.series), UnitOf(FType), StatisticsIn(TimeRange(), lines.size(), hertzAt, valueAt)));
  }
  return table;
}

std::vector<TTimeChart::TReading> TSensorsChart::DifferencesBetween(double a, double b) const {
  std::vector<TReading> differences;
  for (const TSensorSeries& series : FSeries) {
    const auto readings = series.readings.Samples();
    if (!series.visible || readings.empty()) continue;
    const double change = double{readings[series.readings.Nearest(MsOf(b))].xvalue} -
                          double{readings[series.readings.Nearest(MsOf(a))].xvalue};
    const QString number = std::isfinite(change) ? Figure(change) : QString(kNothing);
    differences.push_back(
        {QString("Δ%1 %2 %3").arg(series.name, number, series.look.unit).trimmed(), InkOf(series), std::nullopt});
  }
  return differences;
}

TRangeTable TSensorsChart::VisibleStatistics() const {
  if (!HasData()) return {};
  const auto [from, to] = TimeRange();
  TRangeTable table = SeriesTable(tr("%1 … %2").arg(MomentText(from), MomentText(to)));
  for (const TSensorSeries& series : FSeries) {
    const auto readings = series.readings.Samples();
    if (!series.visible || readings.empty()) continue;
    const auto timeAt = [&](std::size_t i) { return DateTimeOf(FStart, readings[i].time); };
    const auto valueAt = [readings](std::size_t i) { return readings[i].xvalue; };
    table.rows.push_back(
        SeriesRow(series.name, series.look.unit, StatisticsIn(TimeRange(), readings.size(), timeAt, valueAt)));
  }
  return table;
}

// A cursor near an event stands on it.
double TEventsChart::CursorMoment(double time) const {
  const auto place = PlaceAt(time);
  return place ? FTimes[*place] : time;
}

// Whatever the zoom; of several begun at one time the largest.
std::optional<std::size_t> TEventsChart::PlaceOn(double time) const {
  std::optional<std::size_t> found;
  const auto first = std::ranges::lower_bound(FTimes, time);
  for (auto at = first; at != FTimes.end() && *at == time; ++at) {
    const auto place = static_cast<std::size_t>(at - FTimes.begin());
    if (IsVisibleEvent(place) && (!found || FMax[place] > FMax[*found])) found = place;
  }
  return found;
}

std::vector<TTimeChart::TReading> TEventsChart::DifferencesBetween(double a, double b) const {
  const auto first = PlaceOn(a);
  const auto second = PlaceOn(b);
  if (!first || !second) return {};
  const QColor text = palette().color(QPalette::Text);
  const double change = double{FMax[*second]} - double{FMax[*first]};
  return {{tr("Δpeak %1").arg(std::isfinite(change) ? GText(change) : QString(kNothing)), text, std::nullopt},
          {tr("event %1 → %2").arg(IndexOf(*first)).arg(IndexOf(*second)), text, std::nullopt}};
}

TRangeTable TEventsChart::VisibleStatistics() const {
  if (!HasData()) return {};
  const auto [from, to] = TimeRange();
  std::size_t count = 0;
  std::size_t hidden = 0;
  std::optional<std::size_t> largest;
  TStatisticsSum sum;
  const auto timeAt = [this](std::size_t i) { return FTimes[i]; };
  for (std::size_t i = FirstAtOrAfter(FTimes.size(), timeAt, from); i < FTimes.size() && FTimes[i] <= to; ++i) {
    if (!IsVisibleEvent(i)) {
      ++hidden;
      continue;
    }
    ++count;
    sum.Add(FMax[i]);
    if (std::isfinite(FMax[i]) && (!largest || FMax[i] > FMax[*largest])) largest = i;
  }
  const TRangeStatistics peaks = sum.Result();
  const QString which = largest ? tr("Largest peak (g), event %1").arg(IndexOf(*largest)) : tr("Largest peak (g)");
  TRangeTable table{tr("%1 … %2").arg(MomentText(from), MomentText(to)),
                    {tr("Figure"), tr("Value")},
                    1,
                    {{tr("Events"), QString::number(count)},
                     {which, Number(peaks.largest)},
                     {tr("Mean peak (g)"), Number(peaks.mean)}}};
  if (hidden > 0) table.rows.push_back({tr("Events hidden by the filter"), QString::number(hidden)});
  return table;
}
