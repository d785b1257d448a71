// What of a chart is in sight: the time range, the value axes that are locked or zoomed, and whether the range is the
// navigator's. What a user does is signalled; what the program sets is not. Main thread only.
#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <utility>

#include "gui/charts/uChartPlot.h"

class TChartRange final : public QObject {
  Q_OBJECT

 public:
  // scaleValues sets the value axes to the range of the data.
  TChartRange(TChartPlot& plot, std::function<void()> scaleValues);

  // Shows exactly this span of time; one that is too narrow to be drawn is widened about its middle. Nothing happens
  // without two finite ends in order.
  void SetTimes(double from, double to);
  [[nodiscard]] std::pair<double, double> Times() const;
  // The span of the data, which is shown; one instant is widened by a second each side. Nothing empties the plot.
  void SetFull(std::optional<std::pair<double, double>> range);
  [[nodiscard]] std::pair<double, double> Full() const { return FFull; }
  // The recording is longer than this chart's data: everything means this span until other data are set. An empty
  // chart stays as it is.
  void SetRecordingSpan(std::pair<double, double> span);
  // Everything in sight, times and values.
  void Reset();
  // Scales the values to what they have become, unless the user zoomed them.
  void RescaleValues();
  // Wheel and pan leave a locked axis as it is.
  void LockAxis(const QCPAxis& axis, bool locked);
  [[nodiscard]] bool IsLocked(const QCPAxis& axis) const { return FLocked.contains(&axis); }
  // Says whether the chart shows the navigator's band; nothing says nothing.
  void SetSynced(std::optional<bool> synced);
  // Zoom and pan by the user; on until turned off.
  void SetZoomable(bool on) { FZoomable = on; }
  // There is data, and the user may zoom it.
  [[nodiscard]] bool CanZoom() const { return FZoomable && FPlot.HasData(); }

  // What the user asks for, and so signalled. Kept near the data and within what doubles tell apart.
  void ChangeTimes(double from, double to);
  // By a factor about a moment or the middle, below 1 to see less.
  void ZoomTime(double factor, double about);
  void ZoomTime(double factor);
  // By a part of what is in sight.
  void PanTime(double part);
  void PanToStart();
  void PanToEnd();
  void ZoomValues(QCPAxis& axis, double factor, double aboutPixel);
  void PanValues(double part);
  // The key F and the double-click.
  void ResetByUser();

  // What is in sight, to pan from: the plot moves by parts of its width and height.
  struct TView {
    QCPRange times;
    QList<QCPRange> values;
  };
  [[nodiscard]] TView View() const;
  void PanFrom(const TView& view, double right, double down);

 signals:
  // The user zoomed or panned.
  void TimesChanged(double from, double to);
  // The user asked for everything to be seen again.
  void ResetDone();

 private:
  // The smallest span that the user can zoom to.
  [[nodiscard]] double MinTimes(double about) const;

  TChartPlot& FPlot;
  std::function<void()> FScaleValues;
  std::pair<double, double> FFull{0, 1};
  bool FZoomable = true;
  bool FValuesZoomed = false;
  QSet<const QCPAxis*> FLocked;
};

// The ends of a value axis around data; sensible also for one value or none.
QCPRange ScaleAround(double min, double max);
