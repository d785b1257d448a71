// The charts, grids, cards and texts that show the mission. The window implements this, a test records the calls. Main
// thread only.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/uResponseSpectrum.h"
#include "analysis/uSpectrum.h"
#include "shell/uIControls.h"
#include "shell/uShownMission.h"

enum class TPictureFormat { Bitmap, Png, Svg };

// Which spectrum is shown: entries of kSpectrumTypes and kWeightingWindows.
struct TSpectrumChoice {
  std::size_t type = 0;
  std::size_t window = 0;
};

// The response spectrum in the shock chart.
struct TShownResponse {
  TResponse response = TResponse::Acceleration;
  bool isEnvelope = false;                // else of the selected event
  std::vector<TResponseLine> lines = {};  // none: `why` says why
  std::string why = {};
  std::vector<std::vector<TSpectrumLine>> pinned = {};  // of each pinned event, none where it is not visible
};

class IMissionViews {
 public:
  virtual ~IMissionViews() = default;

  // Call before the model is cleared: afterwards no view refers to it.
  virtual void EmptyGridsAndCharts() = 0;
  // The three steps that show a new mission, in this order. The views refer to the mission until EmptyGridsAndCharts.
  virtual void PopulateChartSeries(const TShownMission& mission) = 0;
  virtual void UpdateKorvexUI(TShownMission& mission) = 0;
  virtual void PrepareReport(const TShownMission& mission) = 0;
  // Applies changed display settings. Zoom, selection and scroll position stay.
  virtual void RefreshDisplay(const TShownMission& mission) = 0;

  // Draws the pinned events beside the selected one; an event that is not visible is only listed.
  virtual void ShowPins(const TPins& pins) = 0;

  // After the reference, or whether it is kept, changed. The mission may be none.
  virtual void ShowReference(const TShownMission& mission) = 0;

  // After the notes changed.
  virtual void ShowNotes(const TShownMission& mission) = 0;

  // The first and the last time of the recording; nothing when the navigator has no point.
  [[nodiscard]] virtual std::optional<TTimeSpan> NavigatorSpan() const = 0;
  virtual void SetNavigatorBand(const TTimeSpan& band) = 0;
  // Shades what lies before and after the band.
  virtual void SetNavigatorCompanions(const TTimeSpan& band) = 0;
  // Marks on the navigator what a chart shows that is not synced; nothing removes the mark.
  virtual void SetUnsyncedView(const std::optional<TTimeSpan>& view) = 0;

  // Charts and grids by their names; an unknown name is a std::logic_error.
  [[nodiscard]] virtual TTimeSpan ChartSpan(std::string_view chart) const = 0;
  virtual void SetChartSpan(std::string_view chart, const TTimeSpan& span) = 0;
  virtual void RepaintChart(std::string_view chart) = 0;
  // The chart as on the screen, but dark on white.
  virtual void CopyChart(std::string_view chart) = 0;
  // No value while the spectrum is not shown.
  [[nodiscard]] virtual std::optional<TSpectrumChoice> ShownSpectrum() const = 0;
  // No value while it is not shown.
  [[nodiscard]] virtual std::optional<TShownResponse> ShownResponse() const = 0;
  // The bytes of a picture file. A bitmap is what CopyChart copies. PNG and SVG have the mission's ID as caption, and
  // neither the state of the sync nor hidden series in the legend; a PNG has `scale` times the pixels of the screen in
  // both directions. Throws when the picture cannot be made.
  [[nodiscard]] virtual std::string ChartPicture(std::string_view chart, TPictureFormat format, int scale) = 0;
  // What a chart of the damage boundary or of the statistics draws, as a table.
  [[nodiscard]] virtual TDataset ChartTable(std::string_view chart) const = 0;
  // The chart of such a view in which the user was last, at first the view's first one.
  [[nodiscard]] virtual std::string AnalysisChart(TView view) const = 0;
  // After the index or the rows of the grid's table changed.
  virtual void RefreshGrid(std::string_view grid) = 0;

  // After the rows of the companion table changed; the selected event becomes the grid's current row.
  virtual void RebuildFilteredEvents() = 0;
  // Shows whether the filter is on and what passes it, everywhere but in the grid.
  virtual void ShowFilter(const TShownMission& mission) = 0;
  // Selects the event in charts and cards; nothing empties them.
  virtual void ShowSelectedEvent(std::optional<std::size_t> event) = 0;
  // Makes the row with this "ID" the current one of both event grids.
  virtual void PositionEventGrids(std::optional<std::size_t> event) = 0;

  // Begins to compute the shock analysis of the shown mission, unless that is being done; TakeAnalysis is called with
  // the result, or GiveUpAnalysis when the user cancels.
  virtual void AwaitAnalysis() = 0;
  // The mission has its shock analysis.
  virtual void ShowAnalysis(TShownMission& mission) = 0;
};
