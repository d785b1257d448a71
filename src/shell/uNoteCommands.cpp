#include "shell/uNoteCommands.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <utility>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "shell/uNavigatorCommands.h"
#include "shell/uOrderingCommands.h"

namespace {

// What the views show of the notes.
void PlaceNotes(TShownMission& mission) {
  TShownNotes& notes = mission.Notes;
  notes.ofEvents.clear();
  if (!notes.file) return;
  const TNotedEvents events(mission.Events);
  for (const TNote& note : notes.file->Items()) {
    const auto event = events.Of(note);
    if (!event) continue;
    std::string& text = notes.ofEvents[*event];
    text += (text.empty() ? "" : " · ") + NoteText(note);
  }
  notes.problem = notes.file->WhyOtherRecording();
}

}  // namespace

void ReadNotes(const std::filesystem::path& recording, const std::filesystem::path& settingsFolder,
               TShownMission& mission) {
  mission.Notes = {};
  try {
    mission.Notes.file = std::make_shared<TNotes>(recording, settingsFolder);
    PlaceNotes(mission);
  } catch (const std::exception& error) {
    mission.Notes = {};
    mission.Notes.problem = ReasonOf(error);
  }
}

TNote NoteOnEvent(const TShownMission& mission, std::size_t event) {
  const TEvent& on = mission.Events.GetItem(event);
  const auto timeOf = [&mission](double ms) { return DateTimeOf(mission.Events.StartTime, ms); };
  const double start = timeOf(on.GetStartTime());
  if (!std::isfinite(start)) return {};  // it has no place, so the note is on the whole recording
  const double end = on.Count() == 0 ? start : timeOf(on.Values().back().time);
  return {.event = on.ID, .span = TTimeSpan{start, std::max(start, end)}};
}

TNote NoteOnSpan(const TTimeSpan& span) {
  return {.span = span};
}

std::vector<TFigure> NoteFigures(const TShownMission& mission) {
  std::vector<TFigure> figures;
  if (!mission.Notes.problem.empty()) figures.push_back({"Warning", mission.Notes.problem});
  const TNotedEvents events(mission.Events);
  for (const TNote& note : SortedNotes(mission)) {
    const std::string place = NotePlace(note, events);
    figures.push_back({place.empty() ? "Recording" : place, NoteText(note)});
  }
  return figures;
}

std::vector<TNote> SortedNotes(const TShownMission& mission) {
  std::vector<TNote> notes;
  if (mission.Notes.file) notes = mission.Notes.file->Items();
  std::ranges::stable_sort(notes, {}, [](const TNote& note) {
    return note.span ? note.span->start : -std::numeric_limits<double>::infinity();
  });
  return notes;
}

bool TNoteCommands::MayChange() {
  if (!FFlow.FileShown()) return false;
  TShownMission& mission = FFlow.Mission();
  if (mission.Notes.file) return true;
  const std::filesystem::path recording = PathFromUtf8(FFlow.FileName());
  const std::filesystem::path settings = PathFromUtf8(FProgram.findSettingsFolder());
  if (!FDialogs.Confirm(fmt::format("{}\nDo you want to keep that file under another name and begin new notes?",
                                    Printable(mission.Notes.problem)))) {
    return false;
  }
  try {
    TNotes::KeepUnreadableAside(recording, settings);
  } catch (const std::exception& error) {
    FDialogs.ShowMessage("The file of notes could not be renamed.", ReasonOf(error));
    return false;
  }
  ReadNotes(recording, settings, mission);
  Show();
  return mission.Notes.file != nullptr;
}

void TNoteCommands::Add(const TNote& note) {
  if (!FFlow.FileShown() || !FFlow.Mission().Notes.file) return;
  FFlow.Mission().Notes.file->Add(note);
  Save();
}

void TNoteCommands::Change(const TNote& note) {
  if (!FFlow.FileShown() || !FFlow.Mission().Notes.file) return;
  FFlow.Mission().Notes.file->Change(note);
  Save();
}

void TNoteCommands::Remove(const std::string& id) {
  if (!FFlow.FileShown() || !FFlow.Mission().Notes.file) return;
  FFlow.Mission().Notes.file->Remove(id);
  Save();
}

void TNoteCommands::Save() {
  TNotes& notes = *FFlow.Mission().Notes.file;
  if (!notes.HasChecksum()) FSavedWithout = notes.Recording();
  try {
    notes.Save();
  } catch (const std::exception& error) {
    FDialogs.ShowMessage("The notes could not be written.",
                         fmt::format("{}\n{}", Printable(FFlow.FileName()), Printable(ReasonOf(error))));
  }
  Show();
}

void TNoteCommands::Show() {
  if (FFlow.Mission().Notes.file) PlaceNotes(FFlow.Mission());
  FViews.ShowNotes(FFlow.Mission());
}

std::string TNoteCommands::GoTo(const std::string& id) {
  if (!FFlow.FileShown() || !FFlow.Mission().Notes.file) return {};
  TShownMission& mission = FFlow.Mission();
  const std::vector<TNote>& notes = mission.Notes.file->Items();
  const auto note = std::ranges::find(notes, id, &TNote::id);
  if (note == notes.end() || !note->span) return {};
  mission.Notes.current = id;
  const TNotedEvents events(mission.Events);
  if (const auto event = events.Of(*note)) SelectEvent(mission, *event, FViews);
  const TTimeSpan& span = *note->span;
  if (span.start < mission.Band.start || span.end > mission.Band.end) {
    if (span.Width() > mission.Band.Width()) {
      NavigatorBandResizing(mission, span, FViews);
    } else {
      ZoomNavigatorToTime(mission, span.start + span.Width() / 2, FViews);
    }
  }
  FViews.ShowNotes(mission);
  return NoteSentence(*note, events);
}

std::string TNoteCommands::Step() {
  if (!FFlow.FileShown()) return {};
  std::vector<TNote> notes = SortedNotes(FFlow.Mission());
  std::erase_if(notes, [](const TNote& note) { return !note.span; });
  if (notes.empty()) return {};
  auto next = std::ranges::find(notes, FFlow.Mission().Notes.current, &TNote::id);
  if (next != notes.end()) ++next;
  if (next == notes.end()) next = notes.begin();
  return GoTo(next->id);
}

void TNoteCommands::TakeChecksum(const std::filesystem::path& recording, const std::string& sha256) {
  const auto notes = FFlow.Mission().Notes.file;
  if (!notes || notes->Recording() != recording) return;
  notes->SetChecksum(sha256);
  const bool wasSaved = std::exchange(FSavedWithout, {}) == recording;
  wasSaved ? Save() : Show();
}
