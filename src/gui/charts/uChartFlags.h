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

 private:
  [[nodiscard]] QRectF BoxOf(const TChartFlag& flag) const;
  // Calls visit for those in sight, of several at one pixel for the first, and for the current one.
  template <class TVisit>
  void VisitInSight(const TVisit& visit) const;
  void Paint(QCPPainter& painter) const;

  TChartPlot& FPlot;
  std::vector<TChartFlag> FFlags;  // in the order of time
};
