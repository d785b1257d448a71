// The window as the sequences of the shell see it: controls with fixed names and a few things that only a window can
// do. The window implements it, a test logs its calls. Main thread only. Text is UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "shell/uRecentDocuments.h"
#include "shell/uShownMission.h"

// What an open dialog starts with.
struct TOpenDialog {
  std::string folder;       // empty: the system's choice
  std::string_view filter;  // "name|patterns|name|patterns", patterns separated by ";"
  int filterIndex = 1;      // counted from 1
};

// What a save dialog starts with.
struct TSaveDialog {
  std::string_view title;
  std::string folder;
  std::string name;            // without extension
  std::string_view filter;     // as in TOpenDialog; its first entry is chosen
  std::string_view extension;  // of a name without one; without its dot
  bool replaces = false;       // an existing file may be chosen without a question
};

enum class TPictureFormat { Bitmap, Png };

// Which spectrum is shown: entries of kSpectrumTypes and kWeightingWindows.
struct TSpectrumChoice {
  std::size_t type = 0;
  std::size_t window = 0;
};

class IMainScreen {
 public:
  virtual ~IMainScreen() = default;

  virtual void SetApplicationTitle(std::string_view title) = 0;
  virtual void SetCaption(std::string_view caption) = 0;

  // Controls by their names. A name that the window does not have is a mistake in the program: std::logic_error.
  // A dock panel that is hidden is closed. What is hidden or disabled does not answer to its shortcut either.
  virtual void SetVisible(std::string_view control, bool visible) = 0;
  virtual void SetEnabled(std::string_view control, bool enabled) = 0;
  // Shown, or about to be with what it stands in.
  [[nodiscard]] virtual bool IsVisible(std::string_view control) const = 0;
  virtual void SetText(std::string_view control, std::string_view text) = 0;
  virtual void SetChecked(std::string_view action) = 0;
  virtual void BringToFront(std::string_view panel) = 0;
  virtual void ScrollToTop(std::string_view box) = 0;
  virtual void Repaint(std::string_view control) = 0;

  // Lets the controls show these settings, with all that a change of each does; the settings in TShownMission follow. A
  // control does not take an entry that its list lacks.
  virtual void ShowSettings(const TSettings& settings) = 0;

  // Between the two the ribbon changes without being drawn.
  virtual void BeginRibbonUpdate() = 0;
  virtual void EndRibbonUpdate() = 0;
  virtual void SelectRibbonTab(std::string_view tab) = 0;

  // Steps of the start.
  virtual void AddUserManualIcon(std::string_view name, std::string_view caption, std::string_view file) = 0;
  virtual void SetOpenDialogFolder(std::string_view folder) = 0;
  virtual void PrepareSensorsAxes() = 0;
  virtual void SetSkinColour(std::string_view element, std::uint32_t rgb) = 0;
  virtual void RefreshLookAndFeel() = 0;
  virtual void SetUpSensorsAxes() = 0;

  // The files of the settings folder. What cannot be written, or is of no use when read, is an exception.
  // The pictures by their index: 0 is the company's logo, 1 the report's. A file of no use leaves the built-in picture,
  // and saving then leaves that file alone.
  virtual void LoadLogo(std::size_t index, const std::filesystem::path& file) = 0;
  virtual void SaveLogo(std::size_t index, const std::filesystem::path& file) = 0;
  // The arrangement of dock panels and views. A file of no use leaves the designed one.
  virtual void LoadLayout(const std::filesystem::path& file) = 0;
  virtual void SaveLayout(const std::filesystem::path& file) = 0;
  virtual void RestoreDesignedLayout() = 0;
  // Fills the lists of recent files and folders.
  virtual void ShowRecentDocuments(const TRecentDocuments& recent) = 0;

  // The loading indicator.
  virtual void SetProgressMaximum(int maximum) = 0;
  virtual void SetProgress(double position) = 0;
  virtual void SetTaskbarProgress(bool on) = 0;
  // Lets the window handle what is waiting; what the user does meanwhile may call back into the shell. Unless it has to
  // be at once, the window leaves it out when it did so just before.
  virtual void ProcessMessages(bool atOnce) = 0;

  // Dialogs; nothing when the user cancels.
  [[nodiscard]] virtual std::optional<std::string> AskForRecording(const TOpenDialog& dialog) = 0;
  [[nodiscard]] virtual std::optional<std::string> AskForFolder(std::string_view title, const std::string& folder) = 0;
  [[nodiscard]] virtual std::optional<std::string> AskWhereToSave(const TSaveDialog& dialog) = 0;
  // One message box: `text` is what happened, `details` the file and what to do about it.
  virtual void ShowMessage(std::string_view text, std::string_view details) = 0;
  // A box with OK that says what has been done.
  virtual void ShowInformation(std::string_view text) = 0;
  virtual void CloseWindow() = 0;

  // The mission. EmptyGridsAndCharts comes before the model goes; nothing of the screen refers to it afterwards.
  virtual void EmptyGridsAndCharts() = 0;
  virtual void PopulateChartSeries(const TShownMission& mission) = 0;
  virtual void UpdateKorvexUI(TShownMission& mission) = 0;
  virtual void PrepareReport(const TShownMission& mission) = 0;
  virtual void FreePointAbsorptionLists() = 0;
  // Everything that shows the mission follows its display settings; zoom, selection and scroll position stay.
  virtual void RefreshDisplay(const TShownMission& mission) = 0;
  // The navigator. Its data run from the first to the last time of the recording; nothing while it has no point.
  [[nodiscard]] virtual std::optional<TTimeSpan> NavigatorSpan() const = 0;
  virtual void SetNavigatorBand(const TTimeSpan& band) = 0;
  // What lies before and after the band is shaded.
  virtual void SetNavigatorCompanions(const TTimeSpan& band) = 0;
  // What a chart with a zoom of its own shows; nothing hides it.
  virtual void SetUnsyncedView(const std::optional<TTimeSpan>& view) = 0;
  [[nodiscard]] virtual TTimeSpan ChartSpan(std::string_view chart) const = 0;
  virtual void SetChartSpan(std::string_view chart, const TTimeSpan& span) = 0;
  // A chart as it stands on the screen, but dark on white: into the clipboard, or as the bytes of a picture file.
  virtual void CopyChart(std::string_view chart) = 0;
  // Nothing while the selected event's curves are shown.
  [[nodiscard]] virtual std::optional<TSpectrumChoice> ShownSpectrum() const = 0;
  [[nodiscard]] virtual std::string ChartPicture(std::string_view chart, TPictureFormat format) = 0;
  // Asks with OK and Cancel; false unless the user says OK.
  [[nodiscard]] virtual bool Confirm(std::string_view question) = 0;
  // Grids and sort marks after a table's index or rows changed.
  virtual void RefreshGrid(std::string_view grid) = 0;
  // The grid of the companion table, after its rows changed; the selected event is its current row.
  virtual void RebuildFilteredEvents() = 0;
  // What the filter is, whether it is on and what it lets through, everywhere but in the grid.
  virtual void ShowFilter(const TShownMission& mission) = 0;
  // Shows an event as the selected one in charts and cards; nothing empties them.
  virtual void ShowSelectedEvent(std::optional<std::size_t> event) = 0;
  // Puts the current row of both event grids on the event with this "ID".
  virtual void PositionEventGrids(std::optional<std::size_t> event) = 0;
};
