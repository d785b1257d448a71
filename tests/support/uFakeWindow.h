// A window without widgets: controls, dialogs and views that write their calls to one log, in order. In the log "; "
// ends a call, and a new line starts when messages were processed. Consecutive calls that show, hide, enable or disable
// controls share one verb.
#pragma once

#include <fmt/format.h>

#include <functional>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "shell/uIControls.h"
#include "shell/uIDialogs.h"
#include "shell/uIMissionViews.h"

class TCallLog {
 public:
  // The calls since the last Take.
  std::string Take() {
    FVerb = {};
    return std::exchange(FText, {});
  }
  template <class... T>
  void Add(fmt::format_string<T...> format, T&&... values) {
    FVerb = {};
    FText += fmt::format(format, std::forward<T>(values)...) + "; ";
  }
  void AddControl(std::string_view verb, std::string_view control) {
    if (verb == FVerb) {
      FText.resize(FText.size() - 2);
    } else {
      FText += verb;
    }
    FVerb = verb;
    FText += fmt::format(" {}; ", control);
  }
  void AddMessages() {
    FVerb = {};
    if (!FText.ends_with("messages\n")) FText += "messages\n";
  }

 private:
  std::string FText;
  std::string_view FVerb;
};

class TFakeControls final : public IControls {
 public:
  explicit TFakeControls(TCallLog& log) : FLog(log) {}

  std::optional<TSettings> Settings;            // as last shown
  std::set<std::string, std::less<>> Closed;    // controls that are not visible
  std::set<std::string, std::less<>> Unusable;  // names of files that cannot be read or written
  int AtOnce = 0;                               // how often messages were processed that must not wait
  std::string Sections;                         // that were last saved with a layout
  std::function<void()> OnMessages = [] {};     // what the user does while messages are processed

  void SetVisible(std::string_view control, bool visible) override {
    FLog.AddControl(visible ? "show" : "hide", control);
  }
  void SetEnabled(std::string_view control, bool enabled) override {
    FLog.AddControl(enabled ? "enable" : "disable", control);
  }
  [[nodiscard]] bool IsVisible(std::string_view control) const override { return !Closed.contains(control); }
  void SetText(std::string_view control, std::string_view text) override { FLog.Add("text {} \"{}\"", control, text); }
  void ShowNotice(std::string_view text, const std::filesystem::path& folder) override {
    FLog.Add("notice \"{}\"{}", text, folder.empty() ? "" : " in " + folder.string());
  }
  void SetChecked(std::string_view action) override { FLog.Add("check {}", action); }
  void BringToFront(std::string_view panel) override { FLog.Add("front {}", panel); }
  void ScrollToTop(std::string_view box) override { FLog.Add("top {}", box); }
  void SetCaption(std::string_view caption) override { FLog.Add("caption \"{}\"", caption); }
  void ShowSettings(const TSettings& settings) override {
    Settings = settings;
    FLog.Add("settings");
  }
  void BeginRibbonUpdate() override { FLog.Add("ribbon suspended"); }
  void EndRibbonUpdate() override { FLog.Add("ribbon resumed"); }
  void SelectRibbonTab(std::string_view tab) override { FLog.Add("tab {}", tab); }
  void ShowRibbonGroups(std::optional<TView> view) override {
    constexpr std::string_view kNames[] = {"overview", "shock view", "report", "damage boundary", "statistics"};
    FLog.Add("groups of {}", view ? kNames[static_cast<std::size_t>(*view)] : "no file");
  }
  void LoadLogo(std::size_t index, const std::filesystem::path& file) override { Touch("load logo", index, file); }
  void SaveLogo(std::size_t index, const std::filesystem::path& file) override { Touch("save logo", index, file); }
  void LoadLayout(const std::filesystem::path& file) override { Touch("load layout", {}, file); }
  void SaveLayout(const std::filesystem::path& file, const std::string& sections) override {
    Sections = sections;
    Touch("save layout", {}, file);
  }
  void RestoreDesignedLayout() override { FLog.Add("designed layout"); }
  void ShowRecentDocuments(const TRecentDocuments& recent) override {
    FLog.Add("recent {} files {} folders", recent.Files.Entries().size(), recent.Folders.Entries().size());
  }
  void SetProgressMaximum(int maximum) override { FLog.Add("progress maximum {}", maximum); }
  void SetProgress(double position) override { FLog.Add("progress {:g}", position); }
  void SetTaskbarProgress(bool on) override { FLog.Add("taskbar {}", on ? "on" : "off"); }
  void ProcessMessages(bool atOnce) override {
    AtOnce += atOnce;
    FLog.AddMessages();
    OnMessages();
  }
  void CloseWindow() override { FLog.Add("close window"); }

 private:
  void Touch(std::string_view what, std::optional<std::size_t> index, const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    FLog.Add("{}{} {}", what, index ? fmt::format(" {}", *index) : "", name);
    if (Unusable.contains(name)) throw std::runtime_error("of no use");
  }

  TCallLog& FLog;
};

class TFakeDialogs final : public IDialogs {
 public:
  explicit TFakeDialogs(TCallLog& log) : FLog(log) {}

  std::optional<std::string> ChosenFile;  // nothing: the user cancels
  int ChosenFilter = 1;
  bool Confirms = true;

  [[nodiscard]] std::optional<std::string> AskForRecording(const TOpenDialog& dialog) override {
    FLog.Add("ask in {} for entry {} of {}", dialog.folder, dialog.filterIndex, dialog.filter);
    return ChosenFile;
  }
  [[nodiscard]] std::optional<std::string> AskForFolder(std::string_view title, const std::string& folder) override {
    FLog.Add("ask \"{}\" in {}", title, folder);
    return ChosenFile;
  }
  [[nodiscard]] std::optional<TSaveChoice> AskWhereToSave(const TSaveDialog& dialog) override {
    FLog.Add("ask \"{}\" for {}/{} of {} as {}", dialog.title, dialog.folder, dialog.name, dialog.filter,
             dialog.extension);
    if (!ChosenFile) return std::nullopt;
    return TSaveChoice{*ChosenFile, ChosenFilter};
  }
  void ShowMessage(std::string_view text, std::string_view details) override {
    FLog.Add("box \"{}\" {}", text, details);
  }
  void ShowInformation(std::string_view text) override { FLog.Add("information \"{}\"", text); }
  [[nodiscard]] bool Confirm(std::string_view question) override {
    FLog.Add("ask \"{}\"", question);
    return Confirms;
  }

 private:
  TCallLog& FLog;
};

class TFakeViews final : public IMissionViews {
 public:
  explicit TFakeViews(TCallLog& log) : FLog(log) {}

  std::optional<TTimeSpan> Data;            // of the navigator
  std::optional<TSpectrumChoice> Spectrum;  // nothing: the curves are shown
  std::optional<TShownResponse> Response;
  std::function<void()> OnEmpty = [] {};  // called by EmptyGridsAndCharts

  void EmptyGridsAndCharts() override {
    FLog.Add("empty grids and charts");
    OnEmpty();
  }
  void PopulateChartSeries(const TShownMission& mission) override { FLog.Add("series of {}", mission.Events.Count()); }
  void UpdateKorvexUI(TShownMission& mission) override { FLog.Add("update with {}", mission.CLDS.RecordCount()); }
  void PrepareReport(const TShownMission& mission) override { FLog.Add("report on {}", mission.Events.Count()); }
  void RefreshDisplay(const TShownMission& mission) override {
    FLog.Add("display from {}", mission.Display.limits[0].min);
  }
  void ShowPins(const TPins& pins) override { FLog.Add("pins {}", pins.items.size()); }
  void ShowReference(const TShownMission& mission) override {
    FLog.Add("reference {}", mission.Reference ? ReferenceName(*mission.Reference) : "none");
  }
  void ShowNotes(const TShownMission& mission) override {
    FLog.Add("notes on {} events{}", mission.Notes.ofEvents.size(),
             mission.Notes.problem.empty() ? "" : ": " + mission.Notes.problem);
  }
  [[nodiscard]] std::optional<TTimeSpan> NavigatorSpan() const override { return Data; }
  void SetNavigatorBand(const TTimeSpan& band) override { FLog.Add("band {}", Name(band)); }
  void SetNavigatorCompanions(const TTimeSpan& band) override { FLog.Add("companions of {}", Name(band)); }
  void SetUnsyncedView(const std::optional<TTimeSpan>& view) override {
    FLog.Add("unsynced {}", view ? Name(*view) : "none");
  }
  [[nodiscard]] TTimeSpan ChartSpan(std::string_view /*chart*/) const override { return {2, 3}; }
  void SetChartSpan(std::string_view chart, const TTimeSpan& span) override {
    FLog.Add("{} shows {}", chart, Name(span));
  }
  void RepaintChart(std::string_view chart) override { FLog.Add("repaint {}", chart); }
  void CopyChart(std::string_view chart) override { FLog.Add("copy {}", chart); }
  [[nodiscard]] std::optional<TSpectrumChoice> ShownSpectrum() const override { return Spectrum; }
  [[nodiscard]] std::optional<TShownResponse> ShownResponse() const override { return Response; }
  [[nodiscard]] std::string ChartPicture(std::string_view chart, TPictureFormat format, int scale) override {
    if (format == TPictureFormat::Bitmap) return fmt::format("{} as bitmap", chart);
    return fmt::format("{} as {} {}x", chart, format == TPictureFormat::Png ? "PNG" : "SVG", scale);
  }
  [[nodiscard]] TDataset ChartTable(std::string_view /*chart*/) const override { return {}; }
  [[nodiscard]] std::string AnalysisChart(TView /*view*/) const override { return "ChartDamage"; }
  void RefreshGrid(std::string_view grid) override { FLog.Add("grid {}", grid); }
  void RebuildFilteredEvents() override { FLog.Add("filtered events"); }
  void ShowFilter(const TShownMission& mission) override {
    FLog.Add("filter {}: {} of {}", mission.FilterActive ? "on" : "off", mission.CLDS.RecordCount(),
             mission.Events.Count());
  }
  void ShowSelectedEvent(std::optional<std::size_t> event) override { FLog.Add("selected {}", Name(event)); }
  void PositionEventGrids(std::optional<std::size_t> event) override { FLog.Add("position {}", Name(event)); }
  void AwaitAnalysis() override { FLog.Add("await analysis"); }
  void ShowAnalysis(TShownMission& mission) override {
    FLog.Add("analysis of {}", mission.Analysis->Table.RecordCount());
  }

 private:
  static std::string Name(const TTimeSpan& span) { return fmt::format("{:g}-{:g}", span.start, span.end); }
  static std::string Name(std::optional<std::size_t> event) { return event ? std::to_string(*event) : "none"; }

  TCallLog& FLog;
};

// A whole window, for the sequences that need all of it.
struct TFakeWindow {
  TCallLog log;
  TFakeControls controls{log};
  TFakeDialogs dialogs{log};
  TFakeViews views{log};
};

inline const std::string kDockPanelNames =
    " dxDockPanelNavigator dxDockPanelMissionDetails dxDockPanelSensorGridTemp dxDockPanelSensorGridBattery";
