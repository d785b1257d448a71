// Which controls of the window belong to which of its states and views, and the order in which they change.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "shell/uMainScreen.h"

enum class TView { Overview, Shock, Report };

// The welcome panel in front, everything that needs a file away.
void EnterWelcomeState(IMainScreen& screen);
// Closes the four dock panels.
void CloseDockPanels(IMainScreen& screen);
// The same and the filter's editor.
void CloseAllPanels(IMainScreen& screen);
// Shows the dock panels that belong to the view and closes the others.
void ShowDockPanels(IMainScreen& screen, TView view);
// The filter's editor, which opens by its command only.
inline constexpr std::string_view kFilterPanelName = "dxDockPanelFilter";
// The panels that are open, and that one.
std::vector<std::string_view> OpenPanels(const IMainScreen& screen);
// The dock panels that are closed.
std::vector<std::string_view> ClosedDockPanels(const IMainScreen& screen);
bool AllDockPanelsAreClosed(const IMainScreen& screen);
// Hides what only a shown file needs: ribbon groups and view buttons.
void HideFileControls(IMainScreen& screen);
// Brings back the buttons that lead to the views, and the exports of the mission; those of the battery only for a
// recording that has one.
void ShowViewButtons(IMainScreen& screen, bool hasBattery);

void SetViewOverview(IMainScreen& screen);
void SetViewReport(IMainScreen& screen);
void SetViewShock(IMainScreen& screen, std::optional<std::size_t> selectedEvent);
