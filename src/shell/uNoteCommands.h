// The notes of the shown mission: reading, changing, and stepping from one to the next. Main thread only.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "analysis/uMissionFigures.h"
#include "shell/uFileFlow.h"
#include "shell/uNotes.h"

// Reads the notes on a recording into the mission; notes that cannot be read are its problem.
void ReadNotes(const std::filesystem::path& recording, const std::filesystem::path& settingsFolder,
               TShownMission& mission);

// A note to be filled in: on an event, or on a span.
TNote NoteOnEvent(const TShownMission& mission, std::size_t event);
TNote NoteOnSpan(const TTimeSpan& span);

// What is wrong with the notes, then a line for each, in the order of SortedNotes.
std::vector<TFigure> NoteFigures(const TShownMission& mission);

// In the order of time, those on the whole recording first.
std::vector<TNote> SortedNotes(const TShownMission& mission);

// Each changes the mission's notes, writes their file and shows them; none does anything without a file. What cannot be
// written is said, and stays until the next try.
class TNoteCommands {
 public:
  TNoteCommands(const TProgram& program, TFileFlow& flow, IDialogs& dialogs, IMissionViews& views)
      : FProgram(program), FFlow(flow), FDialogs(dialogs), FViews(views) {}

  // Where the file of notes cannot be read, asks whether to keep it under another name and to begin anew; false when
  // the user does not want that. Call before a note is typed.
  [[nodiscard]] bool MayChange();
  void Add(const TNote& note);
  void Change(const TNote& note);
  void Remove(const std::string& id);

  // Leads to a note: selects its event, or moves the band around its span where that is out of sight. Returns its
  // sentence; empty for a note that is gone or has no time.
  std::string GoTo(const std::string& id);
  // The same for the next note in time behind the last one, after the last for the first.
  std::string Step();

  // Call when the checksum of a recording, as the file stands, is known; that may be before the views are complete.
  void TakeChecksum(const std::filesystem::path& recording, const std::string& sha256);

 private:
  void Save();
  void Show();

  const TProgram& FProgram;
  TFileFlow& FFlow;
  IDialogs& FDialogs;
  IMissionViews& FViews;
  std::filesystem::path FSavedWithout;  // the recording whose notes were saved without its checksum
};
