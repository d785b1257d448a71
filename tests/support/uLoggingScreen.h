// A main window that writes down what it is told: the log is what a test reads. "; " ends a call, a new line begins
// when the window has handled its messages, however often in a row. Controls that are shown, hidden, enabled or
// disabled in a row share their verb.
#pragma once

#include <fmt/format.h>

#include <functional>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "shell/uMainScreen.h"

class TLoggingScreen final : public IMainScreen {
 public:
  // What was said since the last call.
  std::string Said() {
    FVerb = {};
    return std::exchange(FLog, {});
  }

  std::optional<TSettings> Settings;            // as last shown
  std::set<std::string, std::less<>> Closed;    // controls that are not visible
  std::set<std::string, std::less<>> Unusable;  // names of files that cannot be read or written
  std::optional<TTimeSpan> Data;                // of the navigator
  std::optional<TSpectrumChoice> Spectrum;
  bool Confirms = true;
  std::optional<std::string> ChosenFile;     // nothing: dialogs are cancelled
  int AtOnce = 0;                            // how often messages were handled that must not wait
  std::function<void()> OnMessages = [] {};  // what the user does while the window handles its messages

  void SetApplicationTitle(std::string_view title) override { Say("title \"{}\"", title); }
  void SetCaption(std::string_view caption) override { Say("caption \"{}\"", caption); }

  void SetVisible(std::string_view control, bool visible) override { List(visible ? "show" : "hide", control); }
  void SetEnabled(std::string_view control, bool enabled) override { List(enabled ? "enable" : "disable", control); }
  [[nodiscard]] bool IsVisible(std::string_view control) const override { return !Closed.contains(control); }
  void SetText(std::string_view control, std::string_view text) override { Say("text {} \"{}\"", control, text); }
  void SetChecked(std::string_view action) override { Say("check {}", action); }
  void BringToFront(std::string_view panel) override { Say("front {}", panel); }
  void ScrollToTop(std::string_view box) override { Say("top {}", box); }
  void Repaint(std::string_view control) override { Say("repaint {}", control); }
  void ShowSettings(const TSettings& settings) override {
    Settings = settings;
    Say("settings");
  }

  void BeginRibbonUpdate() override { Say("ribbon suspended"); }
  void EndRibbonUpdate() override { Say("ribbon resumed"); }
  void SelectRibbonTab(std::string_view tab) override { Say("tab {}", tab); }

  void AddUserManualIcon(std::string_view name, std::string_view caption, std::string_view file) override {
    Say("manual {} \"{}\" {}", name, caption, file);
  }
  void SetOpenDialogFolder(std::string_view folder) override { Say("dialog folder {}", folder); }
  void PrepareSensorsAxes() override { Say("prepare sensors axes"); }
  void SetSkinColour(std::string_view element, std::uint32_t rgb) override { Say("skin {} {:06X}", element, rgb); }
  void RefreshLookAndFeel() override { Say("refresh look"); }
  void SetUpSensorsAxes() override { Say("set up sensors axes"); }

  void LoadLogo(std::size_t index, const std::filesystem::path& file) override { Touch("load logo", index, file); }
  void SaveLogo(std::size_t index, const std::filesystem::path& file) override { Touch("save logo", index, file); }
  void LoadLayout(const std::filesystem::path& file) override { Touch("load layout", {}, file); }
  void SaveLayout(const std::filesystem::path& file) override { Touch("save layout", {}, file); }
  void RestoreDesignedLayout() override { Say("designed layout"); }
  void ShowRecentDocuments(const TRecentDocuments& recent) override {
    Say("recent {} files {} folders", recent.Files.Entries().size(), recent.Folders.Entries().size());
  }

  void SetProgressMaximum(int maximum) override { Say("progress maximum {}", maximum); }
  void SetProgress(double position) override { Say("progress {:g}", position); }
  void SetTaskbarProgress(bool on) override { Say("taskbar {}", on ? "on" : "off"); }
  void ProcessMessages(bool atOnce) override {
    AtOnce += atOnce;
    if (!FLog.ends_with("messages\n")) {
      Say("messages");
      FLog.replace(FLog.size() - 2, 2, "\n");
    }
    OnMessages();
  }

  [[nodiscard]] std::optional<std::string> AskForRecording(const TOpenDialog& dialog) override {
    Say("ask in {} for entry {} of {}", dialog.folder, dialog.filterIndex, dialog.filter);
    return ChosenFile;
  }
  [[nodiscard]] std::optional<std::string> AskForFolder(std::string_view title, const std::string& folder) override {
    Say("ask \"{}\" in {}", title, folder);
    return ChosenFile;
  }
  [[nodiscard]] std::optional<std::string> AskWhereToSave(const TSaveDialog& dialog) override {
    Say("ask \"{}\" for {}/{} of {} as {}", dialog.title, dialog.folder, dialog.name, dialog.filter, dialog.extension);
    return ChosenFile;
  }
  void ShowMessage(std::string_view text, std::string_view details) override { Say("box \"{}\" {}", text, details); }
  void ShowInformation(std::string_view text) override { Say("information \"{}\"", text); }
  void CloseWindow() override { Say("close window"); }

  void EmptyGridsAndCharts() override { Say("empty grids and charts"); }
  void PopulateChartSeries(const TShownMission& mission) override { Say("series of {}", mission.Events.Count()); }
  void UpdateKorvexUI(TShownMission& mission) override { Say("update with {}", mission.CLDS.RecordCount()); }
  void PrepareReport(const TShownMission& mission) override { Say("report on {}", mission.Events.Count()); }
  void FreePointAbsorptionLists() override { Say("free point absorption"); }
  void RefreshDisplay(const TShownMission& mission) override {
    Say("display from {}", mission.Display.limits[0].min);
  }
  [[nodiscard]] std::optional<TTimeSpan> NavigatorSpan() const override { return Data; }
  void SetNavigatorBand(const TTimeSpan& band) override { Say("band {}", Name(band)); }
  void SetNavigatorCompanions(const TTimeSpan& band) override { Say("companions of {}", Name(band)); }
  void SetUnsyncedView(const std::optional<TTimeSpan>& view) override {
    Say("unsynced {}", view ? Name(*view) : "none");
  }
  [[nodiscard]] TTimeSpan ChartSpan(std::string_view /*chart*/) const override { return {2, 3}; }
  void SetChartSpan(std::string_view chart, const TTimeSpan& span) override { Say("{} shows {}", chart, Name(span)); }
  void CopyChart(std::string_view chart) override { Say("copy {}", chart); }
  [[nodiscard]] std::optional<TSpectrumChoice> ShownSpectrum() const override { return Spectrum; }
  [[nodiscard]] std::string ChartPicture(std::string_view chart, TPictureFormat format) override {
    return fmt::format("{} as {}", chart, format == TPictureFormat::Png ? "PNG" : "bitmap");
  }
  [[nodiscard]] bool Confirm(std::string_view question) override {
    Say("ask \"{}\"", question);
    return Confirms;
  }
  void RefreshGrid(std::string_view grid) override { Say("grid {}", grid); }
  void RebuildFilteredEvents() override { Say("filtered events"); }
  void ShowFilter(const TShownMission& mission) override {
    Say("filter {}: {} of {}", mission.FilterActive ? "on" : "off", mission.CLDS.RecordCount(), mission.Events.Count());
  }
  void ShowSelectedEvent(std::optional<std::size_t> event) override { Say("selected {}", Name(event)); }
  void PositionEventGrids(std::optional<std::size_t> event) override { Say("position {}", Name(event)); }

 private:
  static std::string Name(const TTimeSpan& span) { return fmt::format("{:g}-{:g}", span.start, span.end); }
  static std::string Name(std::optional<std::size_t> event) { return event ? std::to_string(*event) : "none"; }

  void Touch(std::string_view what, std::optional<std::size_t> index, const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    Say("{}{} {}", what, index ? fmt::format(" {}", *index) : "", name);
    if (Unusable.contains(name)) throw std::runtime_error("of no use");
  }
  template <class... T>
  void Say(fmt::format_string<T...> format, T&&... values) {
    FVerb = {};
    FLog += fmt::format(format, std::forward<T>(values)...) + "; ";
  }
  void List(std::string_view verb, std::string_view control) {
    if (verb == FVerb) {
      FLog.resize(FLog.size() - 2);
    } else {
      FLog += verb;
    }
    FVerb = verb;
    FLog += fmt::format(" {}; ", control);
  }

  std::string FLog;
  std::string_view FVerb;
};

// Controls that come and go together, as the log lists them.
inline const std::string kDockPanelNames =
    " dxDockPanelNavigator dxDockPanelMissionDetails dxDockPanelSensorGridTemp dxDockPanelSensorGridBattery";
inline const std::string kFileControlNames =
    " btngrpNavigator btngrpView btngrpLayout btngrpFiltering btngrpShock btngrpFilter btngrpAlarm"
    " dxBarOverview dxBarLargeShockView dxBarReport"
    " dxBarOverviewPrint dxBarOverviewExport dxBarShockPrint dxBarShockExport"
    " dxBarReportPrintOnly dxBarReportExportOnly dxBarShowSensorGrid dxBarShowBatteryGrid"
    " btngrpEventsChart btngrpEventsImage btngrpShockSeries btngrpShockTools btngrpShockExport btngrpShockImage"
    " btngrpSensorsTools btngrpSensorsAxes btngrpSensorsImage"
    " btngrpEventsExport btngrpSensorsExport btngrpTables dxDockPanelFilter";
