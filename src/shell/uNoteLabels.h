// Notes as labels that other programs read and write. Two forms, both lines of UTF-8 with tabs between the fields and
// times in seconds since the start of the recording:
//
//   labels           start, end, text; no titles                     Audacity's
//   table of events  onset, duration, text; with a line of titles    events.tsv
//
// A note on the whole recording has the times 0 and 0. Author, tags and IDs have no place in either.
#pragma once

#include <string>
#include <string_view>

#include "model/uEvents.h"
#include "shell/uNotes.h"

std::string LabelsOf(const TNotes& notes, const TEventList& events);
std::string EventTableOf(const TNotes& notes, const TEventList& events);

struct TLabelsTaken {
  std::size_t added = 0;
  std::size_t known = 0;  // that the notes had already
};

// Adds a note for each line of either form; one that begins with an event, to a millisecond, is a note on it. Lines
// that begin with a backslash, which are parts of the label before, are left out. Throws std::runtime_error with the
// number of the line that is no label; nothing is added then.
TLabelsTaken AddLabels(std::string_view text, const TEventList& events, TNotes& notes);
