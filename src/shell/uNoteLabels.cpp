#include "shell/uNoteLabels.h"

#include <fmt/format.h>

#include <cmath>
#include <set>
#include <stdexcept>
#include <vector>

#include "base/uDateTime.h"
#include "base/uText.h"

namespace {

constexpr double kSecondsPerDay = kMsPerDay / 1000;
constexpr double kMaxSeconds = 1e10;
constexpr std::string_view kEventTitles = "onset\tduration\ttext";

// In seconds since the start of the recording.
struct TLabel {
  double start = 0;
  double end = 0;
  std::string text;

  [[nodiscard]] std::string Line() const { return fmt::format("{:.3f}\t{:.3f}\t{}\n", start, end, text); }
};

TLabel LabelOf(const TNote& note, const TEventList& events) {
  TLabel label{.text = note.text};
  for (char& c : label.text) {
    if (c == '\t' || c == '\n' || c == '\r') c = ' ';
  }
  label.text = Printable(label.text);
  if (!note.span) return label;
  label.start = (note.span->start - events.StartTime) * kSecondsPerDay;
  label.end = (note.span->end - events.StartTime) * kSecondsPerDay;
  return label;
}

TNote NoteOfLabel(const TLabel& label, const TEventList& events) {
  TNote note{.text = label.text};
  if (label.start == 0 && label.end == 0) return note;
  note.span = {DateTimeOf(events.StartTime, label.start * 1000), DateTimeOf(events.StartTime, label.end * 1000)};
  for (const TEvent& event : events.Events()) {
    if (std::fabs(event.GetStartTime() - label.start * 1000) <= 1) note.event = event.ID;
  }
  return note;
}

double SecondsIn(std::string_view field, std::size_t line) {
  if (field == "n/a") return 0;
  const auto value = NumberIn<double>(field);
  if (value && std::fabs(*value) <= kMaxSeconds) return *value;
  throw std::runtime_error(fmt::format("Line {} has no time in seconds: \"{}\".", line, field.substr(0, 40)));
}

std::vector<TLabel> ParseLabels(std::string_view text) {
  std::vector<TLabel> labels;
  const std::string utf8 = IsUtf8(text) ? std::string() : Windows1252ToUtf8(text);  // as older programs write it
  if (!utf8.empty()) text = utf8;
  bool isEventTable = false;
  for (std::size_t number = 1; !text.empty(); ++number) {
    std::string_view line = TakeUntil(text, "\n");
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (number == 1 && line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
    if (number == 1 && line.starts_with("onset\tduration")) {
      isEventTable = true;
      continue;
    }
    if (line.empty() || line.starts_with('\\')) continue;
    TLabel label;
    label.start = SecondsIn(TakeUntil(line, "\t"), number);
    label.end = SecondsIn(TakeUntil(line, "\t"), number) + (isEventTable ? label.start : 0);
    label.text = Printable(isEventTable ? TakeUntil(line, "\t") : line);
    if (label.end < label.start) throw std::runtime_error(fmt::format("Line {} ends before it begins.", number));
    labels.push_back(std::move(label));
  }
  return labels;
}

}  // namespace

std::string LabelsOf(const TNotes& notes, const TEventList& events) {
  std::string text;
  for (const TNote& note : notes.Items()) text += LabelOf(note, events).Line();
  return text;
}

std::string EventTableOf(const TNotes& notes, const TEventList& events) {
  std::string text = fmt::format("{}\n", kEventTitles);
  for (const TNote& note : notes.Items()) {
    const TLabel label = LabelOf(note, events);
    text += TLabel{label.start, label.end - label.start, label.text}.Line();
  }
  return text;
}

TLabelsTaken AddLabels(std::string_view text, const TEventList& events, TNotes& notes) {
  const std::vector<TLabel> labels = ParseLabels(text);
  std::multiset<std::string> known;
  for (const TNote& note : notes.Items()) known.insert(LabelOf(note, events).Line());
  TLabelsTaken taken;
  for (const TLabel& label : labels) {
    if (const auto found = known.find(label.Line()); found != known.end()) {
      known.erase(found);
      ++taken.known;
    } else {
      notes.Add(NoteOfLabel(label, events));
      ++taken.added;
    }
  }
  return taken;
}
