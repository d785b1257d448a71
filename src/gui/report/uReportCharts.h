// The charts of a report, made when they are first painted. Lengths are points. Main thread only.
#pragma once

#include <QPainter>
#include <QRectF>
#include <memory>

#include "gui/report/uReportData.h"

class TEventsChart;
class TSelectedEventChart;
class TSensorsChart;
class TTimeChart;

class TReportCharts {
 public:
  // Borrows the data.
  explicit TReportCharts(const TReportData& data);
  ~TReportCharts();
  TReportCharts(const TReportCharts&) = delete;
  TReportCharts& operator=(const TReportCharts&) = delete;

  // The part of the report's time.
  void PaintEvents(QPainter& painter, const QRectF& place);
  void PaintSensors(QPainter& painter, const QRectF& place);
  // Events above sensors, from the first to the last time of the recording; what the recording lacks is left out.
  void PaintWhole(QPainter& painter, const QRectF& place);
  void PaintSelected(QPainter& painter, const QRectF& place);
  // Histogram and exceedance of the peaks, beside those of the reference.
  void PaintPeaks(QPainter& painter, const QRectF& place);

 private:
  TEventsChart& Events();
  TSensorsChart& Sensors();
  [[nodiscard]] std::optional<TTimeSpan> WholeSpan() const;
  [[nodiscard]] std::optional<TTimeSpan> PartSpan() const;
  static void Paint(QPainter& painter, const QRectF& place, TTimeChart& chart, const std::optional<TTimeSpan>& span);

  const TReportData& FData;
  std::unique_ptr<TEventsChart> FEvents;
  std::unique_ptr<TSensorsChart> FSensors;
  std::unique_ptr<TSelectedEventChart> FSelected;
};
