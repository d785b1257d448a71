// The context menus of the charts, and what their own keys open.
#pragma once

class TKorvexMainForm;

// After the window's actions are made, which stand in the menus.
void ConnectChartMenus(TKorvexMainForm& form);
