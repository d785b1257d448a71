// Makes of the window's commands what the user sees: the ribbon with its buttons, and the menus of the tables. The
// actions belong to the window, so that every shortcut works whatever tab is in front.
#pragma once

struct TCommandTargets;

// Once, when the targets stand. Gives the charts the states that their switches have at first.
void MakeCommands(const TCommandTargets& targets);
