// The context menus of the charts, and the statistics that their keys open.
#pragma once

class TKorvexMainForm;

// Call after MakeCommands: the menus contain the window's actions.
void ConnectChartMenus(TKorvexMainForm& form);
