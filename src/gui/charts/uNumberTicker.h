// Ticks of an axis of numbers: as many as there is room for, each label with as many decimals as the step needs; on a
// logarithmic axis at powers of ten.
#pragma once

#include <qcustomplot.h>

// The length in pixels that an axis has, from the plot's present size and the margins of the last layout.
int AxisLength(const QCPAxis& axis);

class TNumberTicker final : public QCPAxisTicker {
 public:
  // The axis owns the ticker.
  explicit TNumberTicker(const QCPAxis& axis) : FAxis(axis) {}

  void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision, QVector<double>& ticks,
                QVector<double>* subTicks, QVector<QString>* tickLabels) override;

 protected:
  double getTickStep(const QCPRange& range) override;
  QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;

 private:
  const QCPAxis& FAxis;
  double FStep = 1;
};

class TLogTicker final : public QCPAxisTickerLog {
 protected:
  QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;
};
