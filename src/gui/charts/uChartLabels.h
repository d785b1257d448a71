// The labels of a chart: words on pills in the surface's colour. Each stands where no curve, no dot and no other label
// is; one that finds no place is left out, and LevelAt still says it. Pixels of the plot. Main thread only.
#pragma once

#include <qcustomplot.h>

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "gui/charts/uChartReadings.h"

inline constexpr double kLabelGap = 6;  // px, between a line or a point and its words

class TChartLabels {
 public:
  // Begins a picture: nothing is drawn, no label is placed.
  void Begin(const QRect& axes);

  // What labels keep clear of. A curve is given by its points; a NaN breaks it.
  void AddCurve(std::span<const QPointF> points);
  // Stems may be so many that a level line is nowhere clear of them; its words then stand over them.
  void AddStems(std::span<const QPointF> points);
  void AddDot(const QPointF& middle, double radius);

  // Words at a level line, at the end where its axis is; drawn by Paint.
  void AddLevel(double y, const QString& words, const QColor& ink, Qt::AlignmentFlag side);
  // Words beside a point; drawn by Paint.
  void AddPoint(const QPointF& at, const QString& words, const QColor& ink);
  // Places and draws them in the order in which they were added. The painter has the font.
  void Paint(QCPPainter& painter, const QPalette& palette);

  // The words of the level line at a height, within a few pixels; empty without one. These also name a level whose
  // label found no place.
  [[nodiscard]] QString LevelAt(double y) const;
  // Of the labels that were drawn.
  [[nodiscard]] const std::vector<QRectF>& Boxes() const { return FBoxes; }

  // The boxes of marks that stay while the pointer moves; the places below keep clear of them, too.
  void ClearMarkBoxes() { FMarkBoxes.clear(); }
  void AddMarkBox(const QRectF& box) { FMarkBoxes.push_back(box); }
  [[nodiscard]] const std::vector<QRectF>& MarkBoxes() const { return FMarkBoxes; }

  // A place for a box beside the vertical line at x, px away from it, as near to that end as possible: where nothing is
  // drawn, else where no other box is; nothing where there is no such place.
  enum class TEnd { Top, Bottom };
  [[nodiscard]] std::optional<QRectF> BesideLine(double x, double away, const QSizeF& size, TEnd end) const;
  // The same on the line itself, near the bottom.
  [[nodiscard]] std::optional<QRectF> OnLine(double x, const QSizeF& size) const;

 private:
  struct TLevel {
    double y;
    QString words;
    QColor ink;
    Qt::AlignmentFlag side;
  };
  struct TPoint {
    QPointF at;
    QString words;
    QColor ink;
  };
  // From the highest to the lowest point of a curve in each column of pixels; empty where it has none.
  struct TExtentOfColumn {
    float top = 1e9F;
    float bottom = -1e9F;
  };
  using TSkyline = std::vector<TExtentOfColumn>;

  [[nodiscard]] TSkyline SkylineOf(std::span<const QPointF> points) const;
  [[nodiscard]] bool Covers(const TSkyline& skyline, const QRectF& box) const;
  // The numbers of the strips that a box meets, and of the one behind.
  [[nodiscard]] std::pair<std::size_t, std::size_t> StripsOf(const QRectF& box) const;
  [[nodiscard]] bool CoversDot(const QRectF& box) const;
  // Curves and dots, and stems if these count.
  [[nodiscard]] bool CoversData(const QRectF& box, bool stems = true) const;
  [[nodiscard]] bool IsFree(const QRectF& box) const;
  // The first place at one of these left edges, at heights from that end on.
  [[nodiscard]] std::optional<QRectF> FreeAt(std::span<const double> lefts, const QSizeF& size, TEnd end,
                                             bool overData) const;
  [[nodiscard]] std::optional<QRectF> PlaceOf(const TLevel& level, const QSizeF& size) const;
  [[nodiscard]] std::optional<QRectF> PlaceOf(const TPoint& point, const QSizeF& size) const;

  QRectF FAxes;
  std::vector<TSkyline> FCurves;
  std::vector<TSkyline> FStems;
  std::vector<std::vector<QRectF>> FDots;  // by the vertical strips of the axes that they meet
  std::vector<TLevel> FLevels;
  std::vector<TPoint> FPoints;
  std::vector<QRectF> FBoxes;
  std::vector<QRectF> FMarkBoxes;
};

// Words on a pill that fills the box.
void DrawPill(QCPPainter& painter, const QRectF& box, const QString& words, const QColor& ink, const QPalette& palette);
// The size of a pill around words.
QSizeF PillSize(const QFontMetrics& metrics, const QString& words);

// A box of readings, a line each. Fit cuts what the axes have no room for and gives the size of the box.
QSizeF FitReadings(const QRect& axes, const QFontMetrics& metrics, std::vector<TReading>& readings);
void DrawReadings(QCPPainter& painter, const QRectF& box, const std::vector<TReading>& readings);
