// Notes on a recording: on an event, on a span of time, or on the whole. They are kept in NAME.kshock.notes.json beside
// the recording, which is never changed, or in the settings folder where that cannot be written. Main thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/uProgress.h"
#include "base/uTimeSpan.h"
#include "model/uEvents.h"

struct TNote {
  std::string id = {};                     // of the entry in the file; TNotes::Add makes it
  std::optional<std::int32_t> event = {};  // TEvent::ID of the event that begins at the span's start
  std::optional<TTimeSpan> span = {};      // date-times, to the millisecond; nothing: the whole recording
  std::string text = {};
  std::string author = {};
  std::vector<std::string> tags = {};
  std::string time = {};  // when it was written, ISO 8601 in UTC

  bool operator==(const TNote&) const = default;
};

// Finds the events that notes are on. The events are sorted when the first note on one is asked for: most recordings
// have none. One thread at a time.
class TNotedEvents {
 public:
  // Borrows the list.
  explicit TNotedEvents(const TEventList& events) : FEvents(events) {}

  // The event of that start, of several the one with the note's ID; nothing when the recording has no such event.
  [[nodiscard]] std::optional<std::size_t> Of(const TNote& note) const;

 private:
  struct TStart {
    double time;  // a date-time
    std::size_t event;
    std::int32_t id;
  };
  [[nodiscard]] const std::vector<TStart>& Starts() const;

  const TEventList& FEvents;
  mutable std::vector<TStart> FStarts;  // in the order of time; see Starts
};

// What a note is on: "event 5, 2026-03-04 13:26:11", the times of its span, or nothing for the whole recording. An
// event that the recording does not have is said to be missing.
std::string NotePlace(const TNote& note, const TNotedEvents& events);
// "hit by a fork lift (Ann; damage, fork lift)"
std::string NoteText(const TNote& note);
// Both, with a colon between.
std::string NoteSentence(const TNote& note, const TNotedEvents& events);

class TNotes {
 public:
  // Reads the notes of a recording; none when there is no file. `settingsFolder` may be empty. Throws
  // std::runtime_error with the file's name when a file of notes cannot be read, is larger than 16 MB or holds
  // something else; a caller then has no TNotes that could overwrite it.
  TNotes(std::filesystem::path recording, const std::filesystem::path& settingsFolder);
  // Renames the files of notes that cannot be read, so that new notes can be made. Returns the new names. Throws
  // std::filesystem::filesystem_error.
  static std::vector<std::filesystem::path> KeepUnreadableAside(const std::filesystem::path& recording,
                                                                const std::filesystem::path& settingsFolder);
  ~TNotes();
  TNotes(const TNotes&) = delete;
  TNotes& operator=(const TNotes&) = delete;

  [[nodiscard]] const std::vector<TNote>& Items() const { return FItems; }
  // Gives the note an ID, and the present time unless it has one.
  void Add(TNote note);
  // The note with the same ID; does nothing when there is none.
  void Change(const TNote& note);
  void Remove(const std::string& id);

  // True for the file that holds the notes.
  [[nodiscard]] bool AreKeptIn(const std::filesystem::path& file) const;

  // The SHA-256 of the recording, which takes time to compute: Sha256Of, on any thread. Until it is set, the recording
  // is known by its size alone, and Save writes no checksum.
  void SetChecksum(std::string sha256) { FChecksum = std::move(sha256); }
  void ReadChecksum(IProgress& progress);
  [[nodiscard]] bool HasChecksum() const { return !FChecksum.empty(); }
  [[nodiscard]] const std::filesystem::path& Recording() const { return FRecording; }

  // A sentence when the notes were written for a file of another size or checksum, else empty.
  [[nodiscard]] std::string WhyOtherRecording() const;

  // Writes what was added, changed and removed into the file as it stands now, so that what another program wrote
  // meanwhile stays; where both changed one note, this one counts. Unknown keys stay. The file is written whole or not
  // at all, and not at all when nothing changed. Throws std::filesystem::filesystem_error, and what the constructor
  // throws.
  void Save();

 private:
  struct TContent;
  std::filesystem::path FRecording;
  std::filesystem::path FBeside, FInSettings;
  std::unique_ptr<TContent> FContent;  // as it was read
  std::vector<TNote> FItems;
  std::string FChecksum;
};
