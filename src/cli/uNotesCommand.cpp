#include <fmt/format.h>

#include <cerrno>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "base/uFiles.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "platform/uSafeFile.h"
#include "platform/uUserFolders.h"
#include "shell/uNoteLabels.h"
#include "shell/uNotes.h"

namespace {

constexpr std::size_t kMaxLabelBytes = 16'000'000;

std::string ReadLabels(const std::filesystem::path& path) {
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::filesystem::filesystem_error("", path, std::error_code(errno, std::generic_category()));
  std::string text(kMaxLabelBytes + 1, '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(file.gcount()));
  if (text.size() > kMaxLabelBytes) throw std::runtime_error("The file is larger than 16 MB.");
  return text;
}

TStatus TakeLabels(const TRecording& recording, const std::string& file, const std::string& from, TNotes& notes,
                   const TConsole& console) {
  TLabelsTaken taken;
  try {
    taken = AddLabels(ReadLabels(PathFromUtf8(from)), recording.events, notes);
  } catch (const std::exception& error) {
    Complain(console, from, ReasonOf(error));
    return TStatus::CannotRead;
  }
  try {
    notes.Save();
  } catch (const std::exception& error) {
    Complain(console, file, fmt::format("The notes cannot be written: {}", ReasonOf(error)));
    return TStatus::CannotWrite;
  }
  console.out(fmt::format("{} added, {} already there\n", Counted(taken.added, "note"), taken.known));
  return TStatus::Done;
}

}  // namespace

TStatus NotesCommand(const std::string& file, const std::string& to, const std::string& from, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.displayable) return recording.status;
  TNoProgress progress;
  std::optional<TNotes> notes;
  try {
    notes.emplace(PathFromUtf8(file), SettingsFolderPath());
    if (!notes->Items().empty() || !from.empty()) notes->ReadChecksum(progress);
    if (const std::string why = notes->WhyOtherRecording(); !why.empty()) Complain(console, file, why);
  } catch (const std::exception& error) {
    Complain(console, file, ReasonOf(error));
    return WorseOf(recording.status, TStatus::CannotRead);
  }
  if (!from.empty()) return WorseOf(recording.status, TakeLabels(recording, file, from, *notes, console));
  const bool isEventTable = to.ends_with(".tsv");
  const std::string text = isEventTable ? EventTableOf(*notes, recording.events) : LabelsOf(*notes, recording.events);
  if (to.empty()) {
    console.out(text);
    return recording.status;
  }
  if (IsSameFile(PathFromUtf8(to), PathFromUtf8(file)) || notes->AreKeptIn(PathFromUtf8(to))) {
    Complain(console, to, "Labels cannot replace the recording or its notes.");
    return TStatus::WrongUse;
  }
  try {
    SaveFile(PathFromUtf8(to), text);
  } catch (const std::exception& error) {
    Complain(console, to, Describe(error));
    return TStatus::CannotWrite;
  }
  return recording.status;
}
