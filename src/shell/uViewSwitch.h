// The order in which the controls change when the window enters the welcome state or switches the view. What the ribbon
// shows in which view is decided by IControls::ShowRibbonGroups.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "shell/uIControls.h"
#include "shell/uIMissionViews.h"

// The panel with the filter's conditions; only its command opens it.
inline constexpr std::string_view kFilterPanelName = "dxDockPanelFilter";

// The four dock panels; the filter panel is not one of them.
void CloseDockPanels(IControls& controls);
void CloseAllPanels(IControls& controls);
// Shows the dock panels that belong to the view and closes the others.
void ShowDockPanels(IControls& controls, TView view);
std::vector<std::string_view> ClosedDockPanels(const IControls& controls);
bool AllDockPanelsAreClosed(const IControls& controls);
// The filter panel counts here.
std::vector<std::string_view> OpenPanels(const IControls& controls);

// Hides everything that needs a file, dock panels excepted.
void HideFileControls(IControls& controls);
// Shows the welcome panel and hides everything that needs a file.
void EnterWelcomeState(IControls& controls);

void SetViewOverview(IControls& controls, IMissionViews& views);
void SetViewReport(IControls& controls);
void SetViewShock(IControls& controls, IMissionViews& views, std::optional<std::size_t> selectedEvent);
// The damage boundary or the statistics; neither has dock panels.
void SetViewOfAllEvents(IControls& controls, TView view);
