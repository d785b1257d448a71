// The context menus of the charts, and the ribbon's commands that act on one chart: cursors and statistics.
#pragma once

class TKorvexMainForm;
struct TMainParts;

// After the groups of the charts are made.
void MakeChartMenus(TKorvexMainForm& form, TMainParts& parts);
