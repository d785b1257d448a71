// The window's export commands and the pictures of its charts: one table of what each is called, where it stands in the
// ribbon and what it runs; and the pop-up menus of the tables.
#pragma once

class TChartImages;
class TExportCommands;
class TKorvexMainForm;
struct TMainParts;

// Makes the actions, buttons and menus. Once, after the ribbon has its groups. The commands are borrowed.
void MakeExportActions(TKorvexMainForm& form, TMainParts& parts, TExportCommands& exports, TChartImages& images);
