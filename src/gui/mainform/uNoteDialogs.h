// The dialogs for notes. Main thread only.
#pragma once

#include <string>

class IControls;
struct TCommandTargets;

// Asks for a note on the selected event, the navigator's band or the recording. Does nothing without a file.
void AskAndAddNote(const TCommandTargets& on);
// Lists the notes, to edit, delete or go to them.
void ListNotes(const TCommandTargets& on);
// Leads to the next note and says it in the status bar.
void StepNote(const TCommandTargets& on);
// Says a note in the status bar.
void ShowNoteNotice(const std::string& sentence, IControls& controls);
