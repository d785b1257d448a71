// The switches of the charts: one table of what each is called, where it stands in the ribbon, its state at first, and
// what it does. A switch does in every way of changing it what a click does.
#pragma once

class TKorvexMainForm;
struct TMainParts;

// Makes the actions and buttons, and gives the charts the states at first. Once, after the ribbon has its groups.
void MakeChartToggles(TKorvexMainForm& form, TMainParts& parts);
