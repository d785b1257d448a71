// The base of every chart: axes, zoom and pan by mouse, wheel and keys, colours of the palette, side margins.
//
// The time axis counts days since 1899-12-30, ms in a chart of TAxisUnit::Milliseconds, and in one of TAxisUnit::Hertz
// frequencies stand where others have times. Each chart owns its range.
// What a user does is signalled; what the program sets is not. Changes gather into one replot when the chart is next
// painted. Main thread only.
#pragma once

#include <qcustomplot.h>

#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "gui/charts/uChartPaint.h"
#include "gui/charts/uLegendRow.h"

enum class TAxisUnit { Days, Milliseconds, Hertz };

class TChartRect;

// What a chart shows of its data, in numbers.
struct TRangeTable {
  QString span;  // of time, in words
  QStringList titles;
  int words;  // columns of words, the first ones; the others are numbers
  std::vector<QStringList> rows;
};

class TTimeChart : public QCustomPlot {
  Q_OBJECT

 public:
  explicit TTimeChart(TAxisUnit unit, QWidget* parent = nullptr);

  // Takes all data away. Views that borrow from the model let go of it here.
  virtual void Clear() = 0;

  // Shows exactly this span of time; one that is too narrow to be drawn is widened about its middle. Nothing happens
  // without two finite ends in order.
  void SetTimeRange(double from, double to);
  [[nodiscard]] std::pair<double, double> TimeRange() const;
  // The span of the data; one instant is widened by a second each side.
  [[nodiscard]] std::pair<double, double> FullRange() const { return FFullRange; }
  // The recording is longer than this chart's data: everything means this span until other data are set. An empty
  // chart stays as it is.
  void SetRecordingSpan(std::pair<double, double> span);
  // Everything in sight, times and values.
  void ResetZoom();
  // Says whether the chart shows the navigator's band; nothing says nothing.
  void SetSynced(std::optional<bool> synced);
  // What the user asks for by a command, and so signalled: by a factor about a moment, below 1 to see less.
  void ZoomTime(double factor, double about);
  // By a part of what is in sight.
  void PanTime(double part);
  // The user's key F and double-click.
  void ResetByUser();
  // Statistics of what is in sight, computed when asked for; no rows without data.
  [[nodiscard]] virtual TRangeTable VisibleStatistics() const { return {}; }
  // Follows a change of the program's date format.
  virtual void RefreshLabels() { QueueReplot(); }

  // A vertical line with the values at the pointer. Locked it stays where it was clicked; until then, and unlocked, it
  // follows the pointer. Other data take the clicked place away.
  void SetIndicatorVisible(bool visible);
  void SetIndicatorLocked(bool locked);
  // Where the line stands; nothing while there is none.
  [[nodiscard]] std::optional<double> IndicatorTime() const;
  // The sample nearest to the pointer is marked and named.
  void SetNearestVisible(bool visible);
  // The dots of single samples, where these stand apart.
  void SetPointsVisible(bool visible);

  // What is drawn, as large as on the screen and dark on white.
  [[nodiscard]] QImage Picture();

  // The lines A and B, to measure between: their times, while they are set. Other data take them away.
  using TCursors = std::array<std::optional<double>, 2>;
  [[nodiscard]] const TCursors& Cursors() const { return FCursors; }
  // Sets A, then B, then takes both away. They are set at the pointer, where a menu was asked for, or at the clicked
  // indicator; else a third and two thirds into the view.
  void StepCursors();
  void ClearCursors();

  [[nodiscard]] bool HasData() const { return FHasData; }
  [[nodiscard]] TAxisUnit Unit() const { return FUnit; }

  // px between the widget's edge and the axis rect that the axes take; known after the first replot.
  [[nodiscard]] int NeededLeftMargin() const;
  [[nodiscard]] int NeededRightMargin() const;
  // The margins are at least these, so that charts above each other show the same moment at the same place.
  void SetSideMargins(int left, int right);

 signals:
  // The user zoomed or panned.
  void TimeRangeChanged(double from, double to);
  // The user asked for everything to be seen again.
  void ZoomReset();
  // Time and value under the pointer in words; empty when it leaves.
  void CursorValueChanged(const QString& text);
  void NeededMarginsChanged();
  // The user moved the indicator.
  void IndicatorMoved(double time);
  // The user asked for a context menu, in coordinates of the screen; never in the midst of a drag.
  void MenuRequested(const QPoint& at);
  void StatisticsRequested();

 protected:
  // What one series says at one place.
  struct TReading {
    QString text;
    QColor ink;
    std::optional<QPointF> at;  // px, of the sample
  };

  // Left button, less than a drag.
  virtual void Clicked(const QPointF& position) = 0;
  // The last click was the first of a double-click.
  virtual void Unclicked() {}
  // What stands under the pointer, in words; empty when nothing does. By default what the indicator would say.
  [[nodiscard]] virtual QString CursorText(const QPointF& position) const;
  // What the indicator says below the moment, and the samples that say it.
  [[nodiscard]] virtual std::vector<TReading> ReadingsAt(double /*time*/) const { return {}; }
  // The sample nearest to a position, by its distance on the screen.
  [[nodiscard]] virtual std::optional<TReading> NearestTo(const QPointF& /*position*/) const { return std::nullopt; }
  // Where a cursor stands that is put at this time.
  [[nodiscard]] virtual double CursorMoment(double time) const { return time; }
  // From A to B: the length of time in words, and what each visible series changes by.
  [[nodiscard]] virtual QStringList SpanTexts(double span) const;
  [[nodiscard]] virtual std::vector<TReading> DifferencesBetween(double /*a*/, double /*b*/) const { return {}; }
  // The moment of an axis coordinate in the program's date format, with as many decimals as the view tells apart.
  [[nodiscard]] virtual QString MomentText(double time) const;
  // The value axes back to the range of the data.
  virtual void ScaleValues() = 0;
  // Colours and fonts from the palette; each class adds its own.
  virtual void Restyle();
  // Just before a replot: what depends on the size.
  virtual void Prepare() {}

  // Sets the span of the data and shows it. Without one the chart is empty and shows `nothing`.
  void SetFullRange(std::optional<std::pair<double, double>> range);
  void SetNothing(const QString& words) { FNothing = words; }
  // Zoom and pan by the user; on until turned off.
  void SetZoomable(bool on) { FZoomable = on; }
  void QueueReplot();
  // Draws the layer of the marks alone.
  void RedrawMarks();

  [[nodiscard]] QCPAxisRect& Rect() const;
  [[nodiscard]] QCPAxis& TimeAxis() const { return *FTimeAxis; }
  [[nodiscard]] QCPAxis& ValueAxis() const { return *FValueAxis; }  // the left inner one
  [[nodiscard]] TLegendRow& Legend() const { return *FLegend; }
  [[nodiscard]] QList<QCPAxis*> ValueAxes() const;
  // A value axis beside those that are there.
  QCPAxis* AddAxis(QCPAxis::AxisType side);
  // An axis in the house style.
  void StyleAxis(QCPAxis& axis, const QColor& ink) const;
  [[nodiscard]] QColor FaintInk() const;
  // Scales the values to what they have become, unless the user zoomed them.
  void RescaleValues();
  // Wheel and pan leave a locked axis as it is.
  void LockAxis(QCPAxis& axis, bool locked);
  [[nodiscard]] bool PointsVisible() const { return FPointsVisible; }
  // The ends of a value axis around data; sensible also for one value or none.
  static QCPRange ScaleAround(double least, double largest);

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  enum class TDrag { None, Span, Pan, Cursor };

  void PaintGround(QCPPainter& painter) const;
  void LayOut();
  void TellMargins();
  void ApplyRange(double from, double to);
  void UserRange(double from, double to);
  [[nodiscard]] bool IsLocked(const QCPAxis& axis) const { return FLocked.contains(&axis); }
  void ZoomValues(QCPAxis& axis, double factor, double aboutPixel);
  void PanValues(double part);
  void DragPan(const QPointF& position);
  void EndDrag();
  // The drag is long enough to zoom.
  [[nodiscard]] bool HasDragSpan() const;
  void TellCursor(const QPointF& position);
  void TellLocked();
  void Hover(const QPointF& position);
  void PinIndicator(const QPointF& position);
  void UnpinIndicator();
  void PaintPointed(QCPPainter& painter) const;
  // Gives the box of its words.
  QRectF PaintIndicator(QCPPainter& painter, double time) const;
  // Cuts what the axes have no room for; gives the size of the box that the rest takes, a line each.
  QSizeF FitReadings(const QFontMetrics& metrics, std::vector<TReading>& readings) const;
  static void DrawReadings(QCPPainter& painter, const QRectF& box, const std::vector<TReading>& readings);
  [[nodiscard]] std::optional<std::size_t> CursorAt(const QPointF& position) const;
  [[nodiscard]] bool TakeCursor(const QPointF& position);
  void DragCursor(double time);
  // The pointer says where a cursor can be taken.
  void PointAtCursor(const QPointF& position);
  void TellCursors();
  [[nodiscard]] std::vector<TReading> Measured() const;
  void PaintCursors(QCPPainter& painter) const;
  void PaintMeasured(QCPPainter& painter, double beside) const;
  [[nodiscard]] double MomentAt(const QPointF& position) const;
  [[nodiscard]] QCPAxis* ValueAxisAt(const QPointF& position) const;
  // The smallest span that the user can zoom to.
  [[nodiscard]] double LeastSpan(double about) const;

  TAxisUnit FUnit;
  TChartRect* FRect = nullptr;
  TLegendRow* FLegend = nullptr;
  QCPAxis* FTimeAxis = nullptr;
  QCPAxis* FValueAxis = nullptr;
  QString FNothing;
  std::pair<double, double> FFullRange{0, 1};
  bool FHasData = false;
  bool FZoomable = true;
  bool FStale = true;  // a replot waits for the chart to be painted
  bool FValuesZoomed = false;
  QSet<const QCPAxis*> FLocked;
  bool FIndicator = false, FIndicatorLocked = false, FNearest = false, FPointsVisible = false;
  std::optional<QPointF> FHover;                 // the pointer, while it is over the axes
  std::optional<double> FPinned, FPinnedBefore;  // where the indicator was clicked, and the click before
  TCursors FCursors;
  std::optional<double> FAsked;     // where the last menu was asked for, until the pointer comes back
  std::size_t FHeldCursor = 0;      // by the mouse
  double FHeldFrom = 0;             // where it was taken
  bool FOverCursor = false;         // the pointer is
  std::pair<int, int> FTold{0, 0};  // the needed margins that were signalled last

  TDrag FDrag = TDrag::None;
  Qt::MouseButton FDragButton = Qt::NoButton;
  bool FSpaceDown = false;
  QPointF FPressed, FPointer;
  QCPRange FPressedRange;
  QList<QCPRange> FPressedValues;
};

// Gives both charts the larger of their needed margins.
void AlignMargins(TTimeChart& a, TTimeChart& b);
