// What of a chart is in sight: the time range, the value axes that are locked or zoomed, and whether the range is the
// navigator's. What the user does is signalled by the plot; what the program sets is not. Main thread only.
#pragma once

#include <QElapsedTimer>
#include <functional>
#include <optional>
#include <vector>

#include "base/uTimeSpan.h"
#include "gui/charts/uChartPlot.h"

class TChartRange {
 public:
  // scaleValues sets the value axes to the range of the data.
  TChartRange(TChartPlot& plot, std::function<void()> scaleValues);

  // Shows exactly this span; one that is too narrow to draw is widened about its middle. A span that is not valid
  // changes nothing.
  void SetTimes(const TTimeSpan& times);
  [[nodiscard]] TTimeSpan Times() const;
  // Shows the span of new data; one instant is widened by a second on each side. Without a span the plot is empty.
  void SetFull(const std::optional<TTimeSpan>& span);
  [[nodiscard]] const TTimeSpan& Full() const { return FFull; }
  // The recording is longer than this chart's data: "everything" includes this span until other data are set. An empty
  // chart stays as it is.
  void SetRecordingSpan(const TTimeSpan& span);
  // Shows everything, times and values.
  void Reset();
  // Scales the value axes to changed data, unless the user zoomed them.
  void RescaleValues();
  // Wheel and pan leave a locked axis as it is.
  void LockAxis(const QCPAxis& axis, bool locked);
  [[nodiscard]] bool IsLocked(const QCPAxis& axis) const { return FLocked.contains(&axis); }
  // The title says whether the chart shows the navigator's band; without a value it is empty.
  void SetSynced(std::optional<bool> synced);
  [[nodiscard]] bool IsUnsynced() const { return FUnsynced; }
  // Whether the user can zoom and pan; true at first.
  void SetZoomable(bool on) { FZoomable = on; }
  // There is data, and the user can zoom it.
  [[nodiscard]] bool CanZoom() const { return FZoomable && FPlot.HasData(); }

  // All below is what the user asks for, and is signalled. The view stays within the data.
  void ChangeTimes(const TTimeSpan& wanted);
  // By a factor, below 1 to see less, about a moment or else the middle.
  void ZoomTime(double factor, std::optional<double> about = std::nullopt);
  // By a part of what is in sight.
  void PanTime(double part);
  void PanToStart();
  void PanToEnd();
  void ZoomValues(QCPAxis& axis, double factor, double aboutPixel);
  void PanValues(double part);
  // The key F and the double-click.
  void ResetByUser();

  // To the time range before the last change by the user, and forward again; changes that follow each other at once, as
  // those of a wheel do, count as one. False without one.
  bool GoBack() { return Go(FBack, FForward); }
  bool GoForward() { return Go(FForward, FBack); }

  // What is in sight, to pan from: PanFrom moves the plot by parts of its width and height.
  struct TView {
    TTimeSpan times{0, 0};
    QList<QCPRange> values;
  };
  [[nodiscard]] TView View() const;
  void PanFrom(const TView& view, double right, double down);

 private:
  // The smallest span that the user can zoom to.
  [[nodiscard]] double MinTimes(double about) const;

  void Remember();
  bool Go(std::vector<TTimeSpan>& from, std::vector<TTimeSpan>& to);

  TChartPlot& FPlot;
  std::function<void()> FScaleValues;
  TTimeSpan FFull{0, 1};
  bool FZoomable = true;
  bool FUnsynced = false;
  bool FValuesZoomed = false;
  QSet<const QCPAxis*> FLocked;
  std::vector<TTimeSpan> FBack, FForward;  // what the user saw, the latest last
  QElapsedTimer FChanged;                  // since the user's last change
};

// The ends of a value axis around data; also usable for one value or none.
QCPRange ScaleAround(double min, double max);
