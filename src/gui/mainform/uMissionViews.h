// Shows the mission in the window's charts, grids, cards and texts. Owned by the window.
#pragma once

#include <QMainWindow>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/uVerdict.h"
#include "shell/uIMissionViews.h"

class TControls;
class TTimeChart;
struct TMainParts;

class TMissionViews final : public IMissionViews {
 public:
  TMissionViews(QMainWindow& window, TMainParts& parts, TControls& controls)
      : FWindow(window), FParts(parts), FControls(controls) {}

  void EmptyGridsAndCharts() override;
  void PopulateChartSeries(const TShownMission& mission) override;
  void UpdateKorvexUI(TShownMission& mission) override;
  void PrepareReport(const TShownMission& mission) override;
  void RefreshDisplay(const TShownMission& mission) override;
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
  void RefreshGrid(std::string_view grid) override;
  void RebuildFilteredEvents() override;
  void ShowFilter(const TShownMission& mission) override;
  void ShowSelectedEvent(std::optional<std::size_t> event) override;
  void PositionEventGrids(std::optional<std::size_t> event) override;

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
  void ShowDetails(const TShownMission& mission);

  QMainWindow& FWindow;
  TMainParts& FParts;
  TControls& FControls;
  const TShownMission* FMission = nullptr;
  TVerdict FVerdict;
  std::optional<std::size_t> FShownEvent;  // in Chart2
  int FDateFormat = -1;                    // of the charts' labels
};
