// The plot under every chart: axes in the colours of the palette, a legend row, side margins, and a layer "marks" that
// is drawn without a replot.
//
// The time axis counts days since 1899-12-30, ms in a plot of TAxisUnit::Milliseconds, and in one of TAxisUnit::Hertz
// frequencies stand where others have times, in one of TAxisUnit::Number what the chart names. Changes gather into one
// replot when the plot is next painted. Main thread only.
#pragma once

#include <qcustomplot.h>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "base/uTimeSpan.h"
#include "gui/charts/uChartLabels.h"
#include "gui/charts/uLegendRow.h"

enum class TAxisUnit { Days, Milliseconds, Hertz, Number };

class TChartRect;

struct TTitlePart {
  QString text;
  QColor ink;
};

// An axis at the left or right whose title is in parts, each in its own colour. The label of the base class stays empty
// while there is such a title.
class TTitledAxis final : public QCPAxis {
  Q_OBJECT

 public:
  using QCPAxis::QCPAxis;

  // In the label's font; none without parts.
  void SetTitle(std::vector<TTitlePart> parts) { FParts = std::move(parts); }
  [[nodiscard]] const std::vector<TTitlePart>& Title() const { return FParts; }
  [[nodiscard]] QString TitleText() const;

 protected:
  int calculateMargin() override;
  void draw(QCPPainter* painter) override;

 private:
  std::vector<TTitlePart> FParts;
};

inline bool IsLogarithmic(const QCPAxis& axis) {
  return axis.scaleType() == QCPAxis::stLogarithmic;
}

class TChartPlot : public QCustomPlot {
  Q_OBJECT

 public:
  explicit TChartPlot(TAxisUnit unit, QWidget* parent = nullptr);

  [[nodiscard]] TAxisUnit Unit() const { return FUnit; }
  // Without data there are neither ticks nor grid lines, and the placeholder stands in the middle. False at first.
  void SetHasData(bool hasData);
  [[nodiscard]] bool HasData() const { return FHasData; }
  void SetPlaceholder(const QString& words) { FPlaceholder = words; }

  [[nodiscard]] QCPAxisRect& Rect() const;
  [[nodiscard]] QCPAxis& TimeAxis() const { return *FTimeAxis; }
  [[nodiscard]] TTitledAxis& ValueAxis() const { return *FValueAxis; }  // the left inner one
  [[nodiscard]] QList<QCPAxis*> ValueAxes() const;
  // Whose ticks and labels stand at a position; nullptr where none do.
  [[nodiscard]] QCPAxis* ValueAxisAt(const QPointF& position) const;
  [[nodiscard]] TLegendRow& Legend() const { return *FLegend; }
  // Of the last picture; the chart fills them while it paints, the marks keep clear of them.
  [[nodiscard]] TChartLabels& Labels() { return FLabels; }
  [[nodiscard]] const TChartLabels& Labels() const { return FLabels; }
  // The moment at a position, in units of the time axis.
  [[nodiscard]] double MomentAt(const QPointF& position) const { return FTimeAxis->pixelToCoord(position.x()); }
  [[nodiscard]] QColor FaintInk() const;
  // Something to click stands there, so a double-click counts as two clicks: an entry of the legend at least.
  [[nodiscard]] virtual bool IsButtonAt(const QPointF& position) const {
    return FLegend->EntryAt(position) || FLegend->IsOnMore(position);
  }

  void QueueReplot();
  // Draws the layer of the marks alone.
  void RedrawMarks();
  // What is drawn, as large as on the screen and dark on white.
  [[nodiscard]] QImage Picture();
  // The same for a file, laid out for a size, which the painter may scale. A caption stands before the title; the state
  // of the sync and hidden series are left out of the legend.
  void DrawWith(QCPPainter& painter, const QString& caption, const QSize& size);

  // px between the widget's edge and the axis rect that the axes take; known after the first replot.
  struct TSideMargins {
    int left = 0, right = 0;
    bool operator==(const TSideMargins&) const = default;
  };
  [[nodiscard]] TSideMargins NeededMargins() const;
  // The margins are at least these, so that charts above each other show the same moment at the same place.
  void SetSideMargins(const TSideMargins& min);

  // The labels of the time axis; a chart right below may show the same. A picture always has them.
  void SetTimeLabelsVisible(bool visible);
  void SetTimeTitle(const QString& title);

 signals:
  void NeededMarginsChanged();
  // What the user does with the tools of a chart, which emit these signals. The first: zoomed or panned.
  void TimeRangeChanged(const TTimeSpan& times);
  // Asked to see everything again.
  void ZoomReset();
  void IndicatorMoved(double time);
  // The moment under the pointer, or where the indicator was clicked; nothing when there is neither.
  void PointerMoved(std::optional<double> time);
  // Time and value under the pointer in words, or a hint; empty when the pointer leaves.
  void CursorValueChanged(const QString& text);
  // Asked for a context menu, in coordinates of the screen; never during a drag.
  void MenuRequested(const QPoint& at);
  void StatisticsRequested();
  // Clicked on "Not Synced", in coordinates of the screen.
  void SyncMenuRequested(const QPoint& at);

 protected:
  // Colours and fonts from the palette; each class adds its own.
  virtual void Restyle();
  // Just before a replot: what depends on the size.
  virtual void Prepare() {}
  // What stands at a position besides titles and levels; empty for nothing.
  [[nodiscard]] virtual QString TipAt(const QPoint& /*at*/) const { return {}; }
  // Over everything that is drawn, at each paint.
  virtual void PaintOver(QPainter& /*painter*/) const {}

  // "name (unit)" at the value axis, or the unit alone where that is too long for its height.
  void SetValueTitle(const QString& name, const QString& unit);
  // A value axis beside those that are there.
  TTitledAxis* AddAxis(QCPAxis::AxisType side);
  // Equal steps along the axis become equal factors, or the reverse; a range below zero is made positive.
  static void SetLogarithmic(QCPAxis& axis, bool on);
  // An axis in the house style.
  void StyleAxis(QCPAxis& axis, const QColor& ink) const;

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void PaintGround(QCPPainter& painter);
  void LayOut();
  void SettleMargins();
  // Calls `draw` with the light palette and all labels.
  void InLight(const std::function<void()>& draw);
  void UpdateTimeLabels();
  // Low charts have fewer words, so that the curves keep some height.
  void ThinOut();
  void ShowValueTitle();
  void EmitNeededMargins();

  TAxisUnit FUnit;
  TChartRect* FRect = nullptr;
  TLegendRow* FLegend = nullptr;
  QCPAxis* FTimeAxis = nullptr;
  TTitledAxis* FValueAxis = nullptr;
  TChartLabels FLabels;
  QString FPlaceholder;
  QString FTimeTitle, FValueTitle, FValueUnit;
  bool FHasData = false;
  bool FTimeLabels = true;
  bool FStale = true;     // a replot waits for the plot to be painted
  TSideMargins FEmitted;  // the needed margins that were signalled last
};

// Gives both the larger of their needed margins.
void AlignMargins(TChartPlot& a, TChartPlot& b);
