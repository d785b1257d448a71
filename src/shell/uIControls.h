// The window's controls, by their names. The window implements this, a test records the calls. Main thread only; text
// is UTF-8.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "shell/uRecentDocuments.h"
#include "shell/uSettings.h"

enum class TView { Overview, Shock, Report, DamageBoundary, Statistics };

class IControls {
 public:
  virtual ~IControls() = default;

  // An unknown name is a mistake in the program: std::logic_error. Hiding a dock panel closes it. The shortcut of a
  // hidden or disabled control does nothing.
  virtual void SetVisible(std::string_view control, bool visible) = 0;
  virtual void SetEnabled(std::string_view control, bool enabled) = 0;
  // True unless the control itself is hidden; what it stands in may be.
  [[nodiscard]] virtual bool IsVisible(std::string_view control) const = 0;
  virtual void SetText(std::string_view control, std::string_view text) = 0;
  // A line of text until the next command, with a button that opens the folder if there is one. Empty text: none.
  virtual void ShowNotice(std::string_view text, const std::filesystem::path& folder) = 0;
  virtual void SetChecked(std::string_view action) = 0;
  virtual void BringToFront(std::string_view panel) = 0;
  virtual void ScrollToTop(std::string_view box) = 0;
  virtual void SetCaption(std::string_view caption) = 0;

  // Shows these settings, with all that a change of each does; the settings in TShownMission follow. A control does not
  // take an entry that its list lacks.
  virtual void ShowSettings(const TSettings& settings) = 0;

  // The ribbon is not drawn between these two.
  virtual void BeginRibbonUpdate() = 0;
  virtual void EndRibbonUpdate() = 0;
  virtual void SelectRibbonTab(std::string_view tab) = 0;
  // Shows the ribbon groups that belong to the view and hides the others; without a view those that need no file stay.
  virtual void ShowRibbonGroups(std::optional<TView> view) = 0;

  // Each throws when the file cannot be read or written. The logos: 0 is the company's, 1 the report's. A logo file
  // that cannot be read leaves the built-in picture, and SaveLogo then leaves that file alone.
  virtual void LoadLogo(std::size_t index, const std::filesystem::path& file) = 0;
  virtual void SaveLogo(std::size_t index, const std::filesystem::path& file) = 0;
  // The arrangement of dock panels and splitters. A layout file that cannot be read leaves the designed arrangement.
  virtual void LoadLayout(const std::filesystem::path& file) = 0;
  // `sections` are further ones of the INI file.
  virtual void SaveLayout(const std::filesystem::path& file, const std::string& sections) = 0;
  virtual void RestoreDesignedLayout() = 0;
  virtual void ShowRecentDocuments(const TRecentDocuments& recent) = 0;

  // Of the loading panel and of the program's icon in the task bar.
  virtual void SetProgressMaximum(int maximum) = 0;
  virtual void SetProgress(double position) = 0;
  virtual void SetTaskbarProgress(bool on) = 0;
  // Handles waiting messages; what the user does may call back into the shell. Unless `atOnce` is set, a call soon
  // after the last one does nothing.
  virtual void ProcessMessages(bool atOnce) = 0;
  // Closes the window once the caller has returned to the message loop.
  virtual void CloseWindow() = 0;
};
