#include "gui/mainform/uCommandTable.h"

namespace {

constexpr unsigned kOverview = BitOf(TView::Overview);
constexpr unsigned kShock = BitOf(TView::Shock);
constexpr unsigned kReport = BitOf(TView::Report);
constexpr unsigned kOfAnalysis = BitOf(TView::DamageBoundary) | BitOf(TView::Statistics);
constexpr TGroup kGroups[] = {{"tabHome", "btngrpFile", "File", 0},
                              {"tabHome", "btngrpView", "View", kAllViews},
                              {"tabHome", "btngrpNavigator", "Navigator", kOverview | kShock},
                              {"tabHome", "btngrpFiltering", "Filtering", kOfEventViews},
                              {"tabHome", "btngrpAlarm", "Alarm", kAllViews},
                              {"tabHome", "btngrpLayout", "Layout", kOverview | kShock},
                              {"tabEvents", "btngrpEventsChart", "Events chart", kOverview | kShock},
                              {"tabEvents", "btngrpAnalysis", "Chart of all events", kOfAnalysis},
                              {"tabEvents", "btngrpEventsExport", "Export events", kAllViews},
                              {"tabEvents", "btngrpEventsImage", "Chart picture", kOverview | kShock},
                              {"tabEvents", "btngrpNotes", "Notes", kAllViews},
                              {"tabEvents", "btngrpCompare", "Compare", kAllViews},
                              {"tabEvents", "btngrpEvents", "Overview", kOverview},
                              {"tabShock", "btngrpShock", "Selected event", kShock},
                              {"tabShock", "btngrpFilter", "Filter and spectrum", kShock},
                              {"tabShock", "btngrpShockSeries", "Selected event chart", kShock},
                              {"tabShock", "btngrpShockTools", "Selected event tools", kShock},
                              {"tabShock", "btngrpShockExport", "Export selected event", kShock},
                              {"tabShock", "btngrpShockImage", "Chart picture", kShock},
                              {"tabShock", "btngrpShockOutput", "Shock view", kShock},
                              {"tabSensors", "btngrpSensorsTools", "Sensors chart", kOverview},
                              {"tabSensors", "btngrpSensorsAxes", "Axis zoom locks", kOverview},
                              {"tabSensors", "btngrpSensorsExport", "Export sensors", kAllViews},
                              {"tabSensors", "btngrpSensorsImage", "Chart picture", kOverview},
                              {"tabTables", "btngrpTables", "Export tables", kAllViews},
                              {"tabReport", "btngrpReport", "Report", kReport}};

}  // namespace

std::span<const TGroup> Groups() {
  return kGroups;
}
