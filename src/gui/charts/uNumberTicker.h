// Ticks of an axis of numbers: as many as there is room for, each label with as many decimals as the step needs; on a
// logarithmic axis at 1, 2 and 5 of each power of ten, or at fewer.
#pragma once

#include <qcustomplot.h>

#include <vector>

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

// 1, 2 and 5 of each power of ten in from … to, which are above 0; powers of ten alone, or some of them, where steps of
// less than `min` decades would be too near.
std::vector<double> LogSteps(double from, double to, double min);

class TLogTicker final : public QCPAxisTicker {
 public:
  // The axis owns the ticker.
  explicit TLogTicker(const QCPAxis& axis) : FAxis(axis) {}

 protected:
  QVector<double> createTickVector(double tickStep, const QCPRange& range) override;
  QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;

 private:
  const QCPAxis& FAxis;
};
