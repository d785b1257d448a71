// The commands of the window: one table of what each is called, where it stands in the ribbon and what it calls. A new
// command is a row and that function.
#pragma once

#include <span>
#include <string_view>

class TChartImages;
class TExportCommands;
class TFileFlow;
class TKorvexMainForm;
class TMainScreen;
struct TMainParts;
struct TProgram;

// What commands act on. Everything is borrowed from the window and lives as long as it does.
struct TCommandTargets {
  TKorvexMainForm& form;
  const TProgram& program;
  TMainParts& parts;
  TFileFlow& flow;
  TMainScreen& screen;
  TExportCommands& exports;
  TChartImages& images;
};

namespace command {
inline constexpr unsigned kLarge = 1;      // the button; else it is small
inline constexpr unsigned kCheckable = 2;  // a click changes the state first, then calls
inline constexpr unsigned kView = 4;       // checkable; one of these is checked
inline constexpr unsigned kKept = 8;       // checkable; the settings keep it, and every change of its state calls
inline constexpr unsigned kOn = 16;        // the state of a kept one at first
inline constexpr unsigned kOfChart = 32;   // the group says which chart is meant, where the action stands alone
inline constexpr unsigned kOfEvents = 64;  // disabled while no event is shown
inline constexpr unsigned kPanel = 128;    // shows and hides the dock panel of that name: the panel's own action
inline constexpr unsigned kAgain = 256;    // another button of an action that an earlier row makes
}  // namespace command

struct TCommand {
  const char* action;
  const char* button = nullptr;  // none: keys, a menu or another page alone
  const char* group = nullptr;   // of the ribbon
  const char* caption = "";
  const char* tip = "";
  const char* icon = "";
  const char* keys = "";
  unsigned traits = 0;
  void (*execute)(const TCommandTargets& on, bool checked) = nullptr;
  std::string_view whyDisabled = {};  // in the tool tip while the command is disabled
};

// In the order of the buttons in each group.
std::span<const TCommand> Commands();
