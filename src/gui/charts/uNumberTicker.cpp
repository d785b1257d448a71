#include "gui/charts/uNumberTicker.h"

#include <algorithm>
#include <cmath>

#include "gui/charts/uChartPaint.h"

namespace {

constexpr int kMaxTicks = 12;
constexpr double kMaxFixed = 1e7;  // numbers above, or far below, are written in powers of ten
constexpr int kMaxDecimals = 7;

}  // namespace

int AxisLength(const QCPAxis& axis) {
  const QRect viewport = axis.parentPlot()->viewport();
  const QMargins margins = axis.axisRect()->margins();
  const int length = axis.orientation() == Qt::Horizontal ? viewport.width() - margins.left() - margins.right()
                                                          : viewport.height() - margins.top() - margins.bottom();
  return std::max(length, 1);
}

void TNumberTicker::generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                             QVector<double>& ticks, QVector<double>* subTicks, QVector<QString>* tickLabels) {
  const QFontMetrics metrics(FAxis.tickLabelFont());
  const bool across = FAxis.orientation() == Qt::Horizontal;
  const int length = AxisLength(FAxis);
  const int room = across ? metrics.horizontalAdvance("0000.00  ") : metrics.height() * 5 / 2;
  // The base class may exceed the wanted number of ticks by half.
  setTickCount(std::clamp(length / room, 2, kMaxTicks - 4));
  QCPAxisTicker::generate(range, locale, formatChar, precision, ticks, subTicks, tickLabels);
  if (!across || !tickLabels) return;
  // The width of the labels is known only after the step is.
  for (int count = tickCount(); count > 1; --count) {
    int widest = 0;
    for (const QString& label : *tickLabels) widest = std::max(widest, metrics.horizontalAdvance(label));
    if (FStep / range.size() * length > widest + metrics.horizontalAdvance("00")) return;
    setTickCount(count - 1);
    QCPAxisTicker::generate(range, locale, formatChar, precision, ticks, subTicks, tickLabels);
  }
}

double TNumberTicker::getTickStep(const QCPRange& range) {
  FStep = QCPAxisTicker::getTickStep(range);
  return FStep;
}

QString TNumberTicker::getTickLabel(double tick, const QLocale& /*locale*/, QChar /*formatChar*/, int /*precision*/) {
  if (std::fabs(tick) < FStep * 1e-6) return QStringLiteral("0");
  const double decimals = -std::floor(std::log10(FStep * 1.0001));
  if (std::fabs(tick) < kMaxFixed && decimals <= kMaxDecimals) {
    // A step of 2.5 needs one decimal more than its magnitude says.
    const auto places = static_cast<int>(std::max(decimals, 0.0));
    const double shifted = FStep * std::pow(10.0, places);
    const bool needsMore = std::fabs(shifted - std::round(shifted)) > 1e-6 * shifted;
    return QString::number(tick, 'f', places + (needsMore ? 1 : 0));
  }
  const double digits = std::floor(std::log10(std::fabs(tick))) + decimals + 2;
  return QString::number(tick, 'g', static_cast<int>(std::clamp(digits, 3.0, 15.0)));
}

std::vector<double> LogSteps(double from, double to, double min) {
  const double kSmallest = std::log10(2.0);  // from 1 to 2, the least of the steps
  const bool fine = min <= kSmallest;
  const int powers = fine ? 1 : std::max(1, static_cast<int>(std::ceil(min)));
  std::vector<double> steps;
  const auto last = static_cast<int>(std::floor(std::log10(to)));
  for (int power = static_cast<int>(std::floor(std::log10(from))); power <= last; ++power) {
    if (power % powers != 0) continue;
    for (const double part : {1.0, 2.0, 5.0}) {
      const double step = part * std::pow(10.0, power);
      if (step >= from && step <= to && (fine || part == 1)) steps.push_back(step);
    }
  }
  return steps;
}

QVector<double> TLogTicker::createTickVector(double /*tickStep*/, const QCPRange& range) {
  const QFontMetrics metrics(FAxis.tickLabelFont());
  const bool across = FAxis.orientation() == Qt::Horizontal;
  const double room = across ? metrics.horizontalAdvance("10000 ") : metrics.height() * 1.5;
  const std::vector<double> steps =
      LogSteps(range.lower, range.upper, std::log10(range.upper / range.lower) * room / AxisLength(FAxis));
  if (steps.size() > 1) return {steps.begin(), steps.end()};
  // A narrow view has equal steps.
  return QCPAxisTicker::createTickVector(getTickStep(range), range);
}

QString TLogTicker::getTickLabel(double tick, const QLocale& /*locale*/, QChar /*formatChar*/, int /*precision*/) {
  return Digits(tick);
}
