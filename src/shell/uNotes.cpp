#include "shell/uNotes.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <random>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "platform/uPartFile.h"
#include "platform/uSafeFile.h"
#include "platform/uSha256.h"
#include "shell/uGoTo.h"

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

constexpr int kSchema = 1;
constexpr std::uintmax_t kMaxBytes = 16'000'000;
constexpr int kMaxDepth = 16;  // a hostile file could exhaust the stack
constexpr std::string_view kTimeMask = "yyyy-mm-ddThh:nn:ss.zzz";
constexpr double kHalfMs = 0.5 / kMsPerDay;

std::string NewId() {
  std::random_device random;
  return fmt::format("{:08x}{:08x}", random(), random());
}

std::string PresentTime() {
  constexpr double kDaysTo1970 = 25569;
  const auto now = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
  return FormatDateTime("yyyy-mm-ddThh:nn:ssZ", kDaysTo1970 + now / 86400);
}

// A key of another type counts as missing.
std::string TextIn(const json& entry, const char* key) {
  const auto found = entry.find(key);
  return found != entry.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::optional<double> TimeIn(const json& entry, const char* key) {
  return TypedTime(TextIn(entry, key), 0);
}

// Nothing for an entry that this version does not understand; it stays in the file.
std::optional<TNote> NoteOf(const json& entry) {
  if (!entry.is_object() || TextIn(entry, "id").empty()) return std::nullopt;
  TNote note{.id = TextIn(entry, "id"),
             .text = TextIn(entry, "text"),
             .author = TextIn(entry, "author"),
             .time = TextIn(entry, "time")};
  if (const auto begin = TimeIn(entry, "begin")) note.span = {*begin, TimeIn(entry, "end").value_or(*begin)};
  if (const auto event = entry.find("event"); event != entry.end() && event->is_number_integer() && note.span) {
    note.event = event->get<std::int32_t>();
  }
  if (const auto tags = entry.find("tags"); tags != entry.end() && tags->is_array()) {
    for (const json& tag : *tags) {
      if (tag.is_string()) note.tags.push_back(tag.get<std::string>());
    }
  }
  return note;
}

// Keys that a note does not have stay.
void PutInto(json& entry, const TNote& note) {
  if (!entry.is_object()) entry = json::object();
  const auto put = [&entry](const char* key, bool isThere, const json& value) {
    if (isThere) {
      entry[key] = value;
    } else {
      entry.erase(key);
    }
  };
  put("id", true, note.id);
  put("event", note.event.has_value(), note.event.value_or(0));
  put("begin", note.span.has_value(), note.span ? FormatDateTime(kTimeMask, note.span->start) : "");
  put("end", note.span.has_value(), note.span ? FormatDateTime(kTimeMask, note.span->end) : "");
  put("text", true, note.text);
  put("author", !note.author.empty(), note.author);
  put("tags", !note.tags.empty(), note.tags);
  put("time", !note.time.empty(), note.time);
}

json* EntryOf(json& document, const std::string& id) {
  for (json& entry : document["notes"]) {
    if (entry.is_object() && TextIn(entry, "id") == id) return &entry;
  }
  return nullptr;
}

std::optional<TNote> NoteIn(json& document, const std::string& id) {
  const json* entry = EntryOf(document, id);
  return entry == nullptr ? std::nullopt : NoteOf(*entry);
}

json EmptyDocument() {
  return {{"schema", kSchema}, {"recording", json::object()}, {"notes", json::array()}};
}

json ReadDocument(const fs::path& path) {
  std::error_code error;
  if (path.empty() || !fs::exists(path, error)) return EmptyDocument();
  const auto refuse = [&path](std::string_view why) {
    throw std::runtime_error(fmt::format("The notes in {} cannot be read: {}.", Utf8FromPath(path), why));
  };
  if (!fs::is_regular_file(path, error)) refuse("it is no regular file");
  if (fs::file_size(path, error) > kMaxBytes) refuse("it is larger than 16 MB");
  std::ifstream file(path, std::ios::binary);
  json document;
  try {
    document = json::parse(file, [](int depth, json::parse_event_t, const json&) {
      if (depth > kMaxDepth) throw std::runtime_error("it is nested too deep");
      return true;
    });
  } catch (const json::exception&) {
    refuse("it is no JSON");
  }
  if (!document.is_object()) refuse("it holds no notes");
  const json empty = EmptyDocument();
  for (const auto& [key, value] : empty.items()) {
    if (!document.contains(key)) document[key] = value;
  }
  if (!document["notes"].is_array() || !document["recording"].is_object()) refuse("it holds no notes");
  if (document["schema"] != kSchema) refuse("a newer program wrote it");
  return document;
}

// Entries of the second that the first lacks.
json Joined(json document, json other) {
  for (json& entry : other["notes"]) {
    if (NoteOf(entry) && EntryOf(document, TextIn(entry, "id")) == nullptr) document["notes"].push_back(entry);
  }
  if (document["recording"].empty()) document["recording"] = other["recording"];
  return document;
}

}  // namespace

struct TNotes::TContent {
  explicit TContent(json read) : document(std::move(read)) {}
  json document;
};

std::optional<std::size_t> EventOfNote(const TNote& note, const TEventList& events) {
  std::optional<std::size_t> found;
  if (!note.event || !note.span) return found;
  for (std::size_t i = 0; i < events.Count(); ++i) {
    const TEvent& event = events.GetItem(i);
    if (std::fabs(DateTimeOf(events.StartTime, event.GetStartTime()) - note.span->start) > 2 * kHalfMs) continue;
    if (!found || event.ID == *note.event) found = i;
  }
  return found;
}

std::string NoteSentence(const TNote& note, const TEventList& events) {
  std::string place;
  if (note.event) {
    const auto event = EventOfNote(note, events);
    place = event ? fmt::format("event {}, ", *event) : fmt::format("event {} (not in this recording), ", *note.event);
  }
  if (note.span) place += FormatDateTime(DateTimeMask(), note.span->start);
  if (note.span && !note.event && note.span->Width() > 2 * kHalfMs) {
    place += fmt::format(" to {}", FormatDateTime(DateTimeMask(), note.span->end));
  }
  std::string tags;
  for (const std::string& tag : note.tags) AppendListItem(tags, tag);
  std::string who = note.author;
  if (!tags.empty()) who += (who.empty() ? "" : "; ") + tags;
  return fmt::format("{}{}{}{}", place, place.empty() ? "" : ": ", note.text,
                     who.empty() ? "" : fmt::format(" ({})", who));
}

TNotes::TNotes(fs::path recording, const fs::path& settingsFolder)
    : FRecording(std::move(recording)), FBeside(FRecording) {
  FBeside += ".notes.json";
  std::error_code error;
  if (!settingsFolder.empty()) {
    // Recordings of one name and size are told apart by the checksum in the file.
    FInSettings = settingsFolder / "notes" / FRecording.filename();
    FInSettings += fmt::format(".{}.notes.json", fs::file_size(FRecording, error));
  }
  FContent = std::make_unique<TContent>(Joined(ReadDocument(FBeside), ReadDocument(FInSettings)));
  for (const json& entry : FContent->document["notes"]) {
    if (auto note = NoteOf(entry)) FItems.push_back(std::move(*note));
  }
}

TNotes::~TNotes() = default;

void TNotes::Add(TNote note) {
  note.id = NewId();
  if (note.time.empty()) note.time = PresentTime();
  FItems.push_back(std::move(note));
}

void TNotes::Change(const TNote& note) {
  const auto item = std::ranges::find(FItems, note.id, &TNote::id);
  if (item != FItems.end()) *item = note;
}

void TNotes::Remove(const std::string& id) {
  std::erase_if(FItems, [&id](const TNote& note) { return note.id == id; });
}

bool TNotes::AreKeptIn(const fs::path& file) const {
  return IsSameFile(file, FBeside) || IsSameFile(file, FInSettings);
}

std::string TNotes::WhyOtherRecording(IProgress& progress) const {
  const json& recording = FContent->document["recording"];
  const auto size = recording.find("size");
  if (size == recording.end()) return {};
  const bool isSame =
      *size == fs::file_size(FRecording) && TextIn(recording, "sha256") == Sha256Of(FRecording, progress);
  return isSame ? std::string() : "The notes were written for another content of this file.";
}

void TNotes::Save(IProgress& progress) {
  const TFolderLock lock(FBeside.parent_path() / ".");
  json& before = FContent->document;
  json document = Joined(ReadDocument(FBeside), ReadDocument(FInSettings));
  bool changed = false;
  for (const TNote& note : FItems) {
    if (NoteIn(before, note.id) == note) continue;
    json* entry = EntryOf(document, note.id);
    PutInto(entry != nullptr ? *entry : document["notes"].emplace_back(), note);
    changed = true;
  }
  for (const json& entry : before["notes"]) {
    const auto note = NoteOf(entry);
    if (!note || std::ranges::find(FItems, note->id, &TNote::id) != FItems.end()) continue;
    if (NoteIn(document, note->id) != note) continue;  // removed or changed meanwhile by another program
    document["notes"].erase(document["notes"].begin() + (EntryOf(document, note->id) - &document["notes"][0]));
    changed = true;
  }
  if (!changed) return;
  // Notes for another content keep its checksum, so that the warning stays.
  if (document["recording"].empty()) {
    document["recording"] = {{"name", Printable(Utf8FromPath(FRecording.filename()))},
                             {"size", fs::file_size(FRecording)},
                             {"sha256", Sha256Of(FRecording, progress)}};
  }
  const std::string text = document.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
  std::error_code error;
  try {
    SaveFile(FBeside, text);
    fs::remove(FInSettings, error);
  } catch (const fs::filesystem_error&) {
    if (FInSettings.empty()) throw;
    fs::create_directories(FInSettings.parent_path(), error);
    SaveFile(FInSettings, text);
  }
  before = std::move(document);
  FItems.clear();
  for (const json& entry : before["notes"]) {
    if (auto note = NoteOf(entry)) FItems.push_back(std::move(*note));
  }
}
