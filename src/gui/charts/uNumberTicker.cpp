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

QString TLogTicker::getTickLabel(double tick, const QLocale& /*locale*/, QChar /*formatChar*/, int /*precision*/) {
  return Digits(tick);
}
