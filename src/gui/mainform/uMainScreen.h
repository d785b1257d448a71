// The main window as the shell's sequences see it. Finds controls by their object names.
#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "gui/common/uQtText.h"
#include "gui/mainform/uSettingsBinder.h"
#include "shell/uMainScreen.h"

class QAction;
class TTimeChart;
struct TMainParts;

// The property of actions whose state the settings keep. They can be executed also while their group is out of sight,
// but not by their shortcut.
inline constexpr auto kKeptBySettings = "keptBySettings";
// The property of actions that are disabled while no event is shown.
inline constexpr auto kNeedsEvents = "needsEvents";

class TMainScreen final : public IMainScreen {
 public:
  TMainScreen(QMainWindow& window, TMainParts& parts, TSettingsBinder& settings)
      : FWindow(window), FParts(parts), FSettings(settings) {}

  void SetApplicationTitle(std::string_view title) override;
  void SetCaption(std::string_view caption) override;

  void SetVisible(std::string_view control, bool visible) override;
  void SetEnabled(std::string_view control, bool enabled) override;
  [[nodiscard]] bool IsVisible(std::string_view control) const override;
  void SetText(std::string_view control, std::string_view text) override;
  void SetChecked(std::string_view action) override;
  void BringToFront(std::string_view panel) override;
  void ScrollToTop(std::string_view box) override;
  void Repaint(std::string_view control) override;
  void ShowSettings(const TSettings& settings) override { FSettings.Show(settings); }

  void BeginRibbonUpdate() override;
  void EndRibbonUpdate() override;
  void SelectRibbonTab(std::string_view tab) override;

  void AddUserManualIcon(std::string_view name, std::string_view caption, std::string_view file) override;
  void SetOpenDialogFolder(std::string_view folder) override;
  void PrepareSensorsAxes() override;
  void SetSkinColour(std::string_view element, std::uint32_t rgb) override;
  void RefreshLookAndFeel() override;
  void SetUpSensorsAxes() override;

  void LoadLogo(std::size_t index, const std::filesystem::path& file) override;
  void SaveLogo(std::size_t index, const std::filesystem::path& file) override;
  void LoadLayout(const std::filesystem::path& file) override;
  void SaveLayout(const std::filesystem::path& file) override;
  void RestoreDesignedLayout() override;
  void ShowRecentDocuments(const TRecentDocuments& recent) override;

  void SetProgressMaximum(int maximum) override;
  void SetProgress(double position) override;
  void SetTaskbarProgress(bool on) override;
  void ProcessMessages(bool atOnce) override;

  [[nodiscard]] std::optional<std::string> AskForRecording(const TOpenDialog& dialog) override;
  [[nodiscard]] std::optional<std::string> AskForFolder(std::string_view title, const std::string& folder) override;
  [[nodiscard]] std::optional<std::string> AskWhereToSave(const TSaveDialog& dialog) override;
  void ShowMessage(std::string_view text, std::string_view details) override;
  void ShowInformation(std::string_view text) override;
  void CloseWindow() override;

  void EmptyGridsAndCharts() override;
  void PopulateChartSeries(const TShownMission& mission) override;
  void UpdateKorvexUI(TShownMission& mission) override;
  void PrepareReport(const TShownMission& mission) override;
  void FreePointAbsorptionLists() override;
  [[nodiscard]] std::optional<TTimeSpan> NavigatorSpan() const override;
  void SetNavigatorBand(const TTimeSpan& band) override;
  void SetNavigatorCompanions(const TTimeSpan& band) override;
  void SetUnsyncedView(const std::optional<TTimeSpan>& view) override;
  [[nodiscard]] TTimeSpan ChartSpan(std::string_view chart) const override;
  void SetChartSpan(std::string_view chart, const TTimeSpan& span) override;
  void CopyChart(std::string_view chart) override;
  [[nodiscard]] std::optional<TSpectrumChoice> ShownSpectrum() const override;
  [[nodiscard]] std::string ChartPicture(std::string_view chart, TPictureFormat format) override;
  [[nodiscard]] bool Confirm(std::string_view question) override;
  // A main chart shows another span than before: it says whether that is the band, and the navigator shows it if not.
  void TellSynced(TTimeChart& chart);
  void MarkUnsynced(const TTimeChart* first);
  void RefreshDisplay(const TShownMission& mission) override;
  void RefreshGrid(std::string_view grid) override;
  void RebuildFilteredEvents() override;
  void ShowFilter(const TShownMission& mission) override;
  void ShowSelectedEvent(std::optional<std::size_t> event) override;
  void PositionEventGrids(std::optional<std::size_t> event) override;

 private:
  template <class T>
  [[nodiscard]] T& Control(std::string_view name) const {
    auto* found = FWindow.findChild<T*>(QtText(name));
    if (found == nullptr) throw std::logic_error("the window has no control " + std::string(name));
    return *found;
  }

  [[nodiscard]] bool CanExecute(const QAction& action) const;
  void ShowInCharts(const TDisplaySettings& display);
  void TellLimits();
  void ShowDetails(const TShownMission& mission);

  QMainWindow& FWindow;
  TMainParts& FParts;
  TSettingsBinder& FSettings;
  const TShownMission* FMission = nullptr;  // while its views are filled
  std::optional<std::size_t> FShownEvent;   // in Chart2
  QPointer<QWidget> FHiddenWithFocus;       // gets it back when it is shown
  int FDateFormat = -1;                     // of the charts' labels
  QElapsedTimer FPainted;                   // since the messages were last processed
};
