// Finds the window's controls by their object names. Owned by the window.
#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <QPointer>
#include <optional>
#include <string>
#include <string_view>

#include "gui/mainform/uNamedChild.h"
#include "gui/mainform/uSettingsBinder.h"
#include "shell/uIControls.h"
#include "shell/uShownMission.h"

class QAction;
struct TMainParts;

class TControls final : public IControls {
 public:
  TControls(QMainWindow& window, TMainParts& parts, TSettingsBinder& settings)
      : FWindow(window), FParts(parts), FSettings(settings) {}

  void SetVisible(std::string_view control, bool visible) override;
  void SetEnabled(std::string_view control, bool enabled) override;
  [[nodiscard]] bool IsVisible(std::string_view control) const override;
  void SetText(std::string_view control, std::string_view text) override;
  void ShowNotice(std::string_view text, const std::filesystem::path& folder) override;
  void SetChecked(std::string_view action) override;
  void BringToFront(std::string_view panel) override;
  void ScrollToTop(std::string_view box) override;
  void SetCaption(std::string_view caption) override;
  void ShowSettings(const TSettings& settings) override { FSettings.Show(settings); }
  void BeginRibbonUpdate() override;
  void EndRibbonUpdate() override;
  void SelectRibbonTab(std::string_view tab) override;
  void ShowRibbonGroups(std::optional<TView> view) override;
  void LoadLogo(std::size_t index, const std::filesystem::path& file) override;
  void SaveLogo(std::size_t index, const std::filesystem::path& file) override;
  void LoadLayout(const std::filesystem::path& file) override;
  void SaveLayout(const std::filesystem::path& file, const std::string& sections) override;
  void RestoreDesignedLayout() override;
  void ShowRecentDocuments(const TRecentDocuments& recent) override;
  void SetProgressMaximum(int maximum) override;
  void SetProgress(double position) override;
  void SetTaskbarProgress(bool on) override;
  void ProcessMessages(bool atOnce) override;
  void CloseWindow() override;

  // Decides which commands are enabled: some need an event that passes the filter, some a battery. Nothing: no mission.
  void SetMission(const TShownMission* mission) { FMission = mission; }
  // Call when other events pass the filter.
  void UpdateCommands();

 private:
  [[nodiscard]] bool CanExecute(const QAction& action) const;

  QMainWindow& FWindow;
  TMainParts& FParts;
  TSettingsBinder& FSettings;
  const TShownMission* FMission = nullptr;
  QPointer<QWidget> FHiddenWithFocus;  // gets the focus back when it is shown
  QElapsedTimer FProcessed;            // since messages were last processed
};
