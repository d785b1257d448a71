// Shows the mission in the window's charts, grids, cards and texts. Owned by the window.
#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/uVerdict.h"
#include "shell/uIMissionViews.h"

class TAnalysisWork;
class TControls;
class TTimeChart;
struct TChartFlag;
struct TMainParts;

class TMissionViews final : public IMissionViews {
 public:
  TMissionViews(QMainWindow& window, TMainParts& parts, TControls& controls);
  ~TMissionViews() override;

  void EmptyGridsAndCharts() override;
  void PopulateChartSeries(const TShownMission& mission) override;
  void UpdateKorvexUI(TShownMission& mission) override;
  void PrepareReport(const TShownMission& mission) override;
  void RefreshDisplay(const TShownMission& mission) override;
  void ShowPins(const TPins& pins) override;
  void ShowReference(const TShownMission& mission) override;
  void ShowNotes(const TShownMission& mission) override;
  [[nodiscard]] std::optional<TTimeSpan> NavigatorSpan() const override;
  void SetNavigatorBand(const TTimeSpan& band) override;
  void SetNavigatorCompanions(const TTimeSpan& band) override;
  void SetUnsyncedView(const std::optional<TTimeSpan>& view) override;
  [[nodiscard]] TTimeSpan ChartSpan(std::string_view chart) const override;
  void SetChartSpan(std::string_view chart, const TTimeSpan& span) override;
  void RepaintChart(std::string_view chart) override;
  void CopyChart(std::string_view chart) override;
  [[nodiscard]] std::optional<TSpectrumChoice> ShownSpectrum() const override;
  [[nodiscard]] std::optional<TShownResponse> ShownResponse() const override;
  [[nodiscard]] std::string ChartPicture(std::string_view chart, TPictureFormat format, int scale) override;
  [[nodiscard]] TDataset ChartTable(std::string_view chart) const override;
  [[nodiscard]] std::string AnalysisChart(TView view) const override;
  void RefreshGrid(std::string_view grid) override;
  void RebuildFilteredEvents() override;
  void ShowFilter(const TShownMission& mission) override;
  void ShowSelectedEvent(std::optional<std::size_t> event) override;
  void PositionEventGrids(std::optional<std::size_t> event) override;
  void AwaitAnalysis() override;
  void ShowAnalysis(TShownMission& mission) override;

  // Called after notes are shown, also those of a new mission.
  void OnNotesShown(std::function<void()> shown) { FNotesShown = std::move(shown); }
  // Call when one of the three time charts shows another span: updates whether it is synced with the band.
  void UpdateSynced(TTimeChart& chart);
  // Of the shown mission, without the filter.
  [[nodiscard]] const TVerdict& Verdict() const { return FVerdict; }
  // Marks on the navigator the span of a visible chart that is not synced, preferably this one.
  void MarkUnsynced(const TTimeChart* preferred);

 private:
  void ShowInCharts(const TDisplaySettings& display);
  // Names the selected event; empty without one.
  [[nodiscard]] QString SelectedEventWords(std::optional<std::size_t> event) const;
  void ShowVerdict(const TShownMission& mission);
  // The words of FVerdict.
  void ShowStrip(const TShownMission& mission);
  void ShowDetails(const TShownMission& mission);
  // In charts and grids.
  void PlaceNotes(const TShownMission& mission);
  void PlaceEventNotes(const TShownMission& mission, std::optional<std::size_t> event);
  [[nodiscard]] std::vector<TChartFlag> NoteFlags(const TShownMission& mission) const;

  QMainWindow& FWindow;
  TMainParts& FParts;
  TControls& FControls;
  const TShownMission* FMission = nullptr;
  std::unique_ptr<TAnalysisWork> FAnalysis;
  TVerdict FVerdict;
  std::function<void()> FNotesShown = [] {};
  std::optional<std::size_t> FShownEvent;  // in Chart2
};
