#include "gui/charts/uRangeTable.h"

#include <QObject>

#include "gui/charts/uChartPaint.h"

QString StatisticsNumber(double value) {
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
          StatisticsNumber(found.least),
          StatisticsNumber(found.largest),
          StatisticsNumber(found.PeakToPeak()),
          StatisticsNumber(found.mean),
          StatisticsNumber(found.rms)};
}
