// Ticks of an axis of date-times: round steps from a millisecond to centuries, labels in the program's date format.
// Times are shown as recorded, in no time zone.
#pragma once

#include <qcustomplot.h>

enum class TDateLabels {
  TwoLines,  // the time of day, the date below it on the first tick and where the day changes
  OneLine    // the date instead of the time of day where the day changes
};

class TDateTicker final : public QCPAxisTicker {
 public:
  // The axis owns the ticker.
  explicit TDateTicker(const QCPAxis& axis, TDateLabels labels = TDateLabels::TwoLines);

  // A label that would be cut at the widget's edge is left empty.
  void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision, QVector<double>& ticks,
                QVector<double>* subTicks, QVector<QString>* tickLabels) override;

 private:
  QVector<QString> LabelsOf(const QVector<double>& ticks, const QCPRange& range, bool dates,
                            const std::string& timeMask) const;

  const QCPAxis& FAxis;
  TDateLabels FLabels;
};
