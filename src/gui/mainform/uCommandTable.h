// The window's commands and ribbon groups, a row each. A new command is a row and the function that it calls; a new
// group is a row with the views that it belongs to.
#pragma once

#include <span>
#include <string_view>

#include "shell/uIControls.h"

class IDialogs;
class IMissionViews;
class TExportCommands;
class TFileFlow;
class TKorvexMainForm;
class TNoteCommands;
struct TMainParts;
struct TProgram;
struct TShownMission;
struct TTimeSpan;

// What commands act on. The window owns everything.
struct TCommandTargets {
  TKorvexMainForm& form;
  const TProgram& program;
  TMainParts& parts;
  TFileFlow& flow;
  IControls& controls;
  IDialogs& dialogs;
  IMissionViews& views;
  TExportCommands& exports;
  TNoteCommands& notes;
};

namespace command {
inline constexpr unsigned kLarge = 1;        // the button; else it is small
inline constexpr unsigned kCheckable = 2;    // a click changes the state first, then calls
inline constexpr unsigned kView = 4;         // checkable; one of these is checked
inline constexpr unsigned kKept = 8;         // checkable; the settings keep it, and every change of its state calls
inline constexpr unsigned kOn = 16;          // the state of a kept one at first
inline constexpr unsigned kOfChart = 32;     // the group says which chart is meant, where the action stands alone
inline constexpr unsigned kOfEvents = 64;    // one of Needs()
inline constexpr unsigned kOfBattery = 512;  // one of Needs(), as kOfEvents
inline constexpr unsigned kOfAnyEvents = 1024;
inline constexpr unsigned kOfSensors = 4096;
inline constexpr unsigned kOfTimeBefore = 8192;
inline constexpr unsigned kOfTimeAfter = 16384;
inline constexpr unsigned kOfFile = 2048;         // disabled until a recording is opened
inline constexpr unsigned kPanel = 128;           // shows and hides the dock panel of that name: the panel's own action
inline constexpr unsigned kEventMode = 32768;     // one of these at most is checked
inline constexpr unsigned kOfNotes = 65536;       // one of Needs()
inline constexpr unsigned kOfReference = 131072;  // one of Needs()
inline constexpr unsigned kAgain = 256;           // another button of an action that an earlier row makes
}  // namespace command

// Properties of actions. The settings keep the state of such an action: it can be executed while its group is hidden,
// but not by its shortcut.
inline constexpr auto kKeptBySettings = "keptBySettings";
// The traits of the action's row.
inline constexpr auto kTraits = "traits";

// What a command needs of the shown mission, whose recording has that span; `why` says what is missing, in the tool tip
// of the disabled command.
struct TNeed {
  unsigned trait;
  std::string_view why;
  bool (*met)(const TShownMission& mission, const TTimeSpan& recorded);
};
std::span<const TNeed> Needs();

struct TCommand {
  const char* action;
  const char* button = nullptr;  // none: keys, a menu or another page alone
  const char* group = nullptr;   // of the ribbon
  const char* caption = "";
  const char* tip = "";  // what the caption does not say
  const char* icon = "";
  const char* keys = "";
  unsigned traits = 0;
  void (*execute)(const TCommandTargets& on, bool checked) = nullptr;
};

// In the order of the buttons in each group.
std::span<const TCommand> Commands();

constexpr unsigned BitOf(TView view) {
  return 1U << static_cast<unsigned>(view);
}

inline constexpr unsigned kOfEventViews =
    BitOf(TView::Overview) | BitOf(TView::Shock) | BitOf(TView::DamageBoundary) | BitOf(TView::Statistics);
inline constexpr unsigned kAllViews = kOfEventViews | BitOf(TView::Report);

struct TGroup {
  const char* tab;
  const char* name;
  const char* title;
  unsigned views;  // the views that show the group, a BitOf each; 0: it is always shown, also without a file
};

// In the order of the ribbon.
std::span<const TGroup> Groups();
