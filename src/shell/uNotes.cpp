#include "shell/uNotes.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <fstream>
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

fs::path FileBeside(fs::path recording) {
  return recording += ".notes.json";
}

// Recordings of one name and size are told apart by the checksum in the file.
fs::path FileInSettings(const fs::path& recording, const fs::path& settingsFolder) {
  if (settingsFolder.empty()) return {};
  std::error_code unknown;
  fs::path file = settingsFolder / "notes" / recording.filename();
  return file += fmt::format(".{}.notes.json", fs::file_size(recording, unknown));
}

// Notes for another content keep its size and checksum, so that the warning stays. True when the checksum was added to
// notes that had none.
bool NameRecording(const fs::path& recording, const std::string& checksum, json& entry) {
  const auto size = fs::file_size(recording);
  const bool isNew = entry.empty();
  if (isNew) entry = {{"name", Printable(Utf8FromPath(recording.filename()))}, {"size", size}};
  if (checksum.empty() || entry.contains("sha256") || entry.value("size", json()) != size) return false;
  entry["sha256"] = checksum;
  return !isNew;
}

}  // namespace

struct TNotes::TContent {
  explicit TContent(json read) : document(std::move(read)) {}
  json document;
};

const std::vector<TNotedEvents::TStart>& TNotedEvents::Starts() const {
  if (!FStarts.empty()) return FStarts;
  FStarts.reserve(FEvents.Count());
  for (std::size_t i = 0; i < FEvents.Count(); ++i) {
    const TEvent& event = FEvents.GetItem(i);
    FStarts.push_back({DateTimeOf(FEvents.StartTime, event.GetStartTime()), i, event.ID});
  }
  std::erase_if(FStarts, [](const TStart& start) { return !std::isfinite(start.time); });
  std::ranges::stable_sort(FStarts, {}, &TStart::time);
  return FStarts;
}

std::optional<std::size_t> TNotedEvents::Of(const TNote& note) const {
  std::optional<std::size_t> found;
  if (!note.event || !note.span) return found;
  const double begin = note.span->start;
  const std::vector<TStart>& starts = Starts();
  for (auto start = std::ranges::lower_bound(starts, begin - 2 * kHalfMs, {}, &TStart::time);
       start != starts.end() && start->time <= begin + 2 * kHalfMs; ++start) {
    if (!found || start->id == *note.event) found = start->event;
  }
  return found;
}

std::string NotePlace(const TNote& note, const TNotedEvents& events) {
  std::string place;
  if (note.event) {
    const auto event = events.Of(note);
    place = event ? fmt::format("event {}, ", *event) : fmt::format("event {} (not in this recording), ", *note.event);
  }
  if (note.span) place += FormatDateTime(DateTimeMask(), note.span->start);
  if (note.span && !note.event && note.span->Width() > 2 * kHalfMs) {
    place += fmt::format(" to {}", FormatDateTime(DateTimeMask(), note.span->end));
  }
  return place;
}

std::string NoteText(const TNote& note) {
  std::string tags;
  for (const std::string& tag : note.tags) AppendListItem(tags, tag);
  std::string who = note.author;
  if (!tags.empty()) who += (who.empty() ? "" : "; ") + tags;
  return who.empty() ? note.text : fmt::format("{} ({})", note.text, who);
}

std::string NoteSentence(const TNote& note, const TNotedEvents& events) {
  const std::string place = NotePlace(note, events);
  return fmt::format("{}{}{}", place, place.empty() ? "" : ": ", NoteText(note));
}

TNotes::TNotes(fs::path recording, const fs::path& settingsFolder)
    : FRecording(std::move(recording)),
      FBeside(FileBeside(FRecording)),
      FInSettings(FileInSettings(FRecording, settingsFolder)) {
  FContent = std::make_unique<TContent>(Joined(ReadDocument(FBeside), ReadDocument(FInSettings)));
  for (const json& entry : FContent->document["notes"]) {
    if (auto note = NoteOf(entry)) FItems.push_back(std::move(*note));
  }
}

std::vector<fs::path> TNotes::KeepUnreadableAside(const fs::path& recording, const fs::path& settingsFolder) {
  std::vector<fs::path> kept;
  for (const fs::path& file : {FileBeside(recording), FileInSettings(recording, settingsFolder)}) {
    try {
      ReadDocument(file);
    } catch (const std::runtime_error&) {
      kept.push_back(::KeepAside(file));
    }
  }
  return kept;
}

TNotes::~TNotes() = default;

void TNotes::Add(TNote note) {
  note.id = NewId();
  if (note.time.empty()) note.time = FormatDateTime("yyyy-mm-ddThh:nn:ssZ", UtcNow());
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

void TNotes::ReadChecksum(IProgress& progress) {
  FChecksum = Sha256Of(FRecording, progress);
}

std::string TNotes::WhyOtherRecording() const {
  const json& recording = FContent->document["recording"];
  const auto size = recording.find("size");
  if (size == recording.end()) return {};
  std::error_code unknown;
  const std::string sha256 = TextIn(recording, "sha256");
  const bool isSame =
      *size == fs::file_size(FRecording, unknown) && (sha256.empty() || FChecksum.empty() || sha256 == FChecksum);
  return isSame ? std::string() : "The notes were written for another content of this file.";
}

void TNotes::Save() {
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
  if (!NameRecording(FRecording, FChecksum, document["recording"]) && !changed) return;
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
