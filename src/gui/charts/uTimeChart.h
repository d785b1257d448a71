// The base of every chart: a plot with its tools. The range is what is in sight, the gestures are what the user does,
// the marks and the cursors are drawn for the user. Each chart owns its range. Main thread only.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "analysis/uExtents.h"
#include "gui/charts/uChartCursors.h"
#include "gui/charts/uChartFlags.h"
#include "gui/charts/uChartGestures.h"
#include "gui/charts/uChartMarks.h"
#include "gui/charts/uChartPlot.h"
#include "gui/charts/uChartRange.h"
#include "shell/uSettings.h"

// A visible series of a chart, for what is said of its samples. It borrows the chart's data.
struct TCurve {
  QString name;
  QString unit;
  QColor ink;
  const QCPAxis& values;
  std::size_t count;  // samples, at least one
  // In units of the time axis, which do not fall, and of the value axis.
  std::function<double(std::size_t)> timeAt;
  std::function<double(std::size_t)> valueAt;
  // The sample nearest to a time.
  std::function<std::size_t(double)> nearest;
  // A value in words, and a finite difference of two values.
  std::function<QString(double)> number;
  std::function<QString(double)> change;
  const TExtents* extents = nullptr;  // of its values, where the samples are many
};

// The statistics of the range in sight, as a table of words.
struct TRangeTable {
  QString span;  // of time, in words
  QStringList titles;
  int words;  // how many columns, counted from the first, hold words; the others hold numbers
  std::vector<QStringList> rows;
};

// One of these settings differs.
template <class... TField>
bool Differ(const TDisplaySettings& a, const TDisplaySettings& b, TField TDisplaySettings::*... fields) {
  return ((a.*fields != b.*fields) || ...);
}

class TTimeChart : public TChartPlot, public IChartReadings {
  Q_OBJECT

 public:
  explicit TTimeChart(TAxisUnit unit, QWidget* parent = nullptr);

  // Removes all data. A chart that borrows from the model stops to do so here.
  virtual void Clear() = 0;
  // Statistics of the samples in sight, computed when asked for; no rows without data.
  [[nodiscard]] virtual TRangeTable VisibleStatistics() const;
  // Colours, limits, formats, names, and the program's date format. At first those of DefaultSettings.
  void SetDisplay(const TDisplaySettings& display);
  [[nodiscard]] const TDisplaySettings& Display() const { return FDisplay; }
  // The dots of single samples, where these stand apart.
  void SetPointsVisible(bool visible);

  // For paper, which may be without colours: lines differ by their style, dots by their shape.
  void SetForPaper(bool on);

  [[nodiscard]] TChartRange& Range() { return FRange; }
  [[nodiscard]] const TChartRange& Range() const { return FRange; }
  [[nodiscard]] TChartMarks& Marks() { return FMarks; }
  [[nodiscard]] const TChartCursors& Cursors() const { return FCursors; }
  [[nodiscard]] TChartGestures& Gestures() { return FGestures; }
  // What somebody noted; stays until other flags are set.
  [[nodiscard]] TChartFlags& Flags() { return FFlags; }
  [[nodiscard]] bool IsButtonAt(const QPointF& position) const override {
    return TChartPlot::IsButtonAt(position) || !FFlags.IdAt(position).isEmpty();
  }

 signals:
  void FlagClicked(const QString& id);

 protected:
  // The visible series with samples, in the order of the legend.
  [[nodiscard]] virtual std::vector<TCurve> Curves() const { return {}; }
  // Left button, less than a drag, beside the entries of the legend and the flags.
  virtual void Clicked(const QPointF& /*position*/) {}
  // Shows or hides a series, by its place in the legend.
  virtual void EntryClicked(std::size_t entry) = 0;
  // The last click was the first of a double-click.
  virtual void Unclicked() {}
  // Sets the value axes to the range of the data.
  virtual void ScaleValues() = 0;
  // There is data, and the painter has the font. Labels that are added are placed afterwards, in their order.
  virtual void PaintData(QCPPainter& /*painter*/) {}
  [[nodiscard]] virtual std::vector<TLegendEntry> LegendEntries() const { return {}; }
  void FillLegend() { Legend().SetEntries(LegendEntries()); }
  void Restyle() override;
  // Whether the chart shows what differs from the settings before. By itself: dates.
  [[nodiscard]] virtual bool ShowsChangeFrom(const TDisplaySettings& before) const;
  // Before the values are scaled and all is drawn anew.
  virtual void DisplayChanged() {}
  // The limits of a quantity; nothing while there is no alarm.
  [[nodiscard]] std::optional<TLimits> AlarmOf(TQuantity quantity) const;
  // In the program's date format, with as many decimals as the view resolves.
  [[nodiscard]] QString MomentText(double time) const override;
  // What the indicator would say.
  [[nodiscard]] QString CursorText(const QPointF& position) const override;
  [[nodiscard]] std::vector<TReading> ReadingsAt(double time) const override;
  [[nodiscard]] std::vector<TReading> ReadingsUnder(const QPointF& pointer) const override {
    return ReadingsAt(MomentAt(pointer));
  }
  [[nodiscard]] std::optional<TReading> NearestTo(const QPointF& position) const override;
  [[nodiscard]] QStringList SpanTexts(double span) const override;
  [[nodiscard]] std::vector<TReading> DifferencesBetween(double a, double b) const override;

  // Other data of this span, which is shown; without a span the chart is empty.
  void SetFullRange(const std::optional<TTimeSpan>& span);
  [[nodiscard]] bool PointsVisible() const { return FPointsVisible; }
  [[nodiscard]] bool IsForPaper() const { return FForPaper; }
  // Of the series at a place among those that are shown; solid on the screen.
  [[nodiscard]] QList<qreal> Dashes(std::size_t place) const;

  void PaintOver(QPainter& painter) const override { FGestures.PaintSpan(painter); }
  [[nodiscard]] QString TipAt(const QPoint& at) const override { return FFlags.TextAt(at); }

 private:
  // A menu of them, to show and hide.
  void ShowEntriesLeftOut(const QPoint& at);

  TDisplaySettings FDisplay = DefaultSettings().display;
  TChartRange FRange;
  TChartFlags FFlags;
  TChartCursors FCursors;  // drawn first: the words of the marks keep clear of those of the cursors
  TChartMarks FMarks;
  TChartGestures FGestures;
  bool FPointsVisible = false;
  bool FForPaper = false;
};

// Makes two charts above each other one instrument: equal side margins, one pointer time through both, and the date
// axis of the lower one for both while they show the same span. Both must live as long as each other.
void PairCharts(TTimeChart& upper, TTimeChart& lower);
