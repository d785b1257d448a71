// The window's actions and where they stand in the ribbon: one table. The actions belong to the window, so that every
// shortcut works whatever tab is in front.
#pragma once

class TKorvexMainForm;
struct TMainParts;

// Makes the ribbon's tabs, groups and buttons, the actions behind them, and what of them backstage and welcome offer.
void MakeMainActions(TKorvexMainForm& form, TMainParts& parts);
