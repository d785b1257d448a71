// The flags of a chart: marks at moments or spans that somebody noted, along its top. Main thread only.
#pragma once

#include <QString>
#include <vector>

#include "base/uTimeSpan.h"

class QPointF;
class QRectF;
class QCPPainter;
class TChartPlot;

struct TChartFlag {
  QString id;
  TTimeSpan span;  // in units of the time axis
  QString text;
  bool isCurrent = false;  // drawn filled
};

class TChartFlags {
 public:
  explicit TChartFlags(TChartPlot& plot);

  void Set(std::vector<TChartFlag> flags);
  // The texts of the flags at a position, a line each; empty without one.
  [[nodiscard]] QString TextAt(const QPointF& position) const;
  // The flag at a position, of several the one behind the current, so that clicks go through all; empty without one.
  [[nodiscard]] QString IdAt(const QPointF& position) const;

 private:
  [[nodiscard]] QRectF BoxOf(const TChartFlag& flag) const;
  // Calls visit for those in sight, of several at one pixel for the first, and for the current one.
  template <class TVisit>
  void VisitInSight(const TVisit& visit) const;
  [[nodiscard]] std::vector<const TChartFlag*> FlagsAt(const QPointF& position) const;
  void Paint(QCPPainter& painter) const;

  TChartPlot& FPlot;
  std::vector<TChartFlag> FFlags;  // in the order of time
};
