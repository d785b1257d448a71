#include "gui/charts/uDateTicker.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "base/uDateTime.h"
#include "gui/charts/uNumberTicker.h"
#include "gui/common/uQtText.h"

namespace {

constexpr int kMaxDateTicks = 12;

using namespace std::chrono_literals;
using std::chrono::milliseconds;

constexpr milliseconds kWeek = 7 * 24h;
constexpr milliseconds kToMonday = 2 * 24h;  // the epoch is a Saturday

// Steps of equal length, and beyond them steps in months.
constexpr milliseconds kSteps[] = {1ms,   2ms, 5ms, 10ms, 20ms, 50ms, 100ms, 200ms, 500ms, 1s,
                                   2s,    5s,  10s, 15s,  30s,  1min, 2min,  5min,  10min, 15min,
                                   30min, 1h,  2h,  3h,   6h,   12h,  24h,   48h,   kWeek, 2 * kWeek};
constexpr int kMonths[] = {1, 2, 3, 6, 12, 24, 60, 120, 240, 600, 1200, 2400, 6000, 12000, 24000, 60000};
constexpr double kDaysOfMonth = 30.436875;

std::string TimeMask(milliseconds step) {
  if (step < 1s) return "hh:nn:ss.zzz";
  return step < 1min ? "hh:nn:ss" : "hh:nn";
}

int WidthOf(const QFontMetrics& metrics, const std::string& mask) {
  return metrics.horizontalAdvance(QtText(FormatDateTime(mask, 36888.86)));
}

QVector<double> EqualSteps(const QCPRange& range, milliseconds step) {
  const auto size = static_cast<double>(step.count());
  const auto offset = static_cast<double>(step % kWeek == 0ms ? kToMonday.count() : 0);
  const double first = std::ceil((range.lower * kMsPerDay - offset) / size);
  const double last = std::floor((range.upper * kMsPerDay - offset) / size);
  QVector<double> ticks;
  for (double n = first; n <= last; ++n) ticks.append((n * size + offset) / kMsPerDay);
  return ticks;
}

QVector<double> MonthSteps(const QCPRange& range, int months) {
  using std::chrono::days;
  const auto date = std::chrono::year_month_day(kDateEpoch + days(static_cast<int>(std::floor(range.lower))));
  int month = static_cast<int>(date.year()) * 12 + static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  month -= month % months;
  QVector<double> ticks;
  for (;; month += months) {
    const auto first = std::chrono::year(month / 12) / std::chrono::month(static_cast<unsigned>(month % 12) + 1) / 1;
    const auto day = static_cast<double>((std::chrono::sys_days(first) - kDateEpoch).count());
    if (day > range.upper) return ticks;
    if (day >= range.lower) ticks.append(day);
  }
}

}  // namespace

TDateTicker::TDateTicker(const QCPAxis& axis, TDateLabels labels) : FAxis(axis), FLabels(labels) {}

void TDateTicker::generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                           QVector<double>& ticks, QVector<double>* subTicks, QVector<QString>* tickLabels) {
  const double firstDate = std::max(range.lower, kFirstDay);
  const double lastDate = std::min(range.upper, kLastDay);
  if (!(firstDate < lastDate)) {
    // Days outside the calendar are shown as numbers.
    setTickCount(3);
    QCPAxisTicker::generate(range, locale, formatChar, precision, ticks, subTicks, tickLabels);
    return;
  }
  if (subTicks) subTicks->clear();

  const QCPRange dates(firstDate, lastDate);
  const QFontMetrics metrics(FAxis.tickLabelFont());
  const double pixelsPerDay = AxisLength(FAxis) / range.size();
  const int gap = metrics.horizontalAdvance("00");
  const auto fits = [&](double stepDays, int width) {
    return range.size() / stepDays < kMaxDateTicks && stepDays * pixelsPerDay >= width + gap;
  };
  const int dateWidth = WidthOf(metrics, ShortDateFormat());
  for (const milliseconds step : kSteps) {
    const bool wholeDays = step >= 24h;
    const std::string mask = TimeMask(step);
    int width = dateWidth;
    if (!wholeDays) {
      width = FLabels == TDateLabels::TwoLines ? std::max(dateWidth, WidthOf(metrics, mask))
                                               : WidthOf(metrics, ShortDateFormat() + ' ' + mask);
    }
    if (!fits(static_cast<double>(step.count()) / kMsPerDay, width)) continue;
    ticks = EqualSteps(dates, step);
    if (tickLabels) *tickLabels = LabelsOf(ticks, range, wholeDays, mask);
    return;
  }
  const auto months = std::ranges::find_if(kMonths, [&](int n) { return fits(n * kDaysOfMonth, dateWidth); });
  ticks = months == std::end(kMonths) ? QVector<double>() : MonthSteps(dates, *months);
  if (tickLabels) *tickLabels = LabelsOf(ticks, range, true, {});
}

QVector<QString> TDateTicker::LabelsOf(const QVector<double>& ticks, const QCPRange& range, bool dates,
                                       const std::string& timeMask) const {
  const QFontMetrics metrics(FAxis.tickLabelFont());
  const int left = FAxis.axisRect()->margins().left();
  const int widget = FAxis.parentPlot()->viewport().width();
  const double pixelsPerDay = AxisLength(FAxis) / range.size();
  QVector<QString> labels;
  std::string shownDate;
  for (const double tick : ticks) {
    const std::string date = FormatDateTime(ShortDateFormat(), tick);
    QString label = QtText(dates ? date : FormatDateTime(timeMask, tick));
    if (!dates && date != shownDate) {
      const bool midnight = std::floor(tick) == tick;
      if (FLabels == TDateLabels::TwoLines) {
        label += '\n' + QtText(date);
      } else {
        label = midnight ? QtText(date) : QtText(date) + ' ' + label;
      }
    }
    const double centre = left + (tick - range.lower) * pixelsPerDay;
    const double half = metrics.size(0, label).width() / 2.0;
    const bool cut = centre - half < 0 || centre + half > widget;
    if (!cut) shownDate = date;
    labels.append(cut ? QString() : label);
  }
  return labels;
}
