#include "export/uExportNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>

#include "base/uDateTime.h"
#include "base/uText.h"

namespace {

constexpr std::size_t kMaxPartBytes = 120;
constexpr std::size_t kMaxSheetCharacters = 31;
constexpr std::string_view kPathSeparators = "/\\";
constexpr std::string_view kReserved = "/\\:*?\"<>|";
constexpr std::string_view kReservedInSheets = "/\\:*?[]";
constexpr std::string_view kDevices[] = {"con", "prn", "aux", "nul", "conin$", "conout$"};

bool IsFollowing(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The first bytes of the text, as many as fit without cutting a character.
std::string_view CutBytes(std::string_view utf8, std::size_t max) {
  if (utf8.size() <= max) return utf8;
  while (max > 0 && IsFollowing(utf8[max])) --max;
  return utf8.substr(0, max);
}

// Control characters, those of two bytes included, and the given ones become "_".
std::string Replaced(std::string_view utf8, std::string_view forbidden) {
  std::string text;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    const bool isHighControl = byte == 0xC2 && i + 1 < utf8.size() && static_cast<unsigned char>(utf8[i + 1]) < 0xA0;
    const bool isBad =
        byte < 0x20 || byte == 0x7F || isHighControl || forbidden.find(utf8[i]) != std::string_view::npos;
    text += isBad ? '_' : utf8[i];
    if (isHighControl) ++i;
  }
  return text;
}

bool IsDevice(std::string_view name) {
  std::string stem = AsciiLower(name.substr(0, name.find('.')));
  stem.erase(stem.find_last_not_of(' ') + 1);
  const bool isPort = (stem.starts_with("com") || stem.starts_with("lpt")) && stem.size() == 4;
  return std::ranges::find(kDevices, stem) != std::end(kDevices) || (isPort && stem[3] >= '0' && stem[3] <= '9');
}

std::string StampOf(const TMissionData& mission) {
  std::string stamp = FormatDateTime(ShortDateFormat() + "-hh-nn-ss", mission.rec_starttime);
  if (stamp.find_first_of(kPathSeparators) != std::string::npos) {
    throw std::runtime_error(fmt::format(
        "No folder can be named after the date format \"{}\": it has a path separator in it. Choose another format.",
        ShortDateFormat()));
  }
  return stamp;
}

}  // namespace

std::string SafeFileName(std::string_view name) {
  std::string safe = Replaced(name, kReserved);
  for (std::size_t i = safe.size(); i > 0 && (safe[i - 1] == '.' || safe[i - 1] == ' '); --i) safe[i - 1] = '_';
  if (IsDevice(safe)) safe = fmt::format("_{}", safe.substr(std::min(safe.find('.'), safe.size())));
  return safe.empty() ? "_" : safe;
}

std::string ProposedName(std::string_view prefix, const TMissionData& mission) {
  return SafeFileName(fmt::format("{}{}", prefix, CutBytes(mission.sID, kMaxPartBytes)));
}

std::string ProposedEventName(const TMissionData& mission, std::size_t event, std::string_view spectrumType) {
  const std::string_view blank = spectrumType.empty() ? "" : " ";
  return SafeFileName(
      fmt::format("{}{} ID-{}{}{}", kMissionName, CutBytes(mission.sID, kMaxPartBytes), event, blank, spectrumType));
}

std::string EventFolderName(TEventFiles kind, const TMissionData& mission) {
  if (kind == TEventFiles::Samples) return ProposedName(kMissionName, mission);
  return SafeFileName(fmt::format("{}-{}{}-{}", kind == TEventFiles::Peaks ? "Peaks" : "Calibration", kMissionName,
                                  CutBytes(mission.sID, kMaxPartBytes), CutBytes(StampOf(mission), kMaxPartBytes)));
}

std::string EventFileName(TEventFiles kind, std::size_t index, const TEvent& event) {
  if (kind == TEventFiles::Samples) return fmt::format("ID-{}.csv", index);
  return fmt::format("ID-{}-{}-{}.csv", index, event.MaxAxis, GeneralFloat(std::trunc(double{event.MaxSingle})));
}

std::string SafeSheetName(std::string_view name) {
  std::string safe = Replaced(name, kReservedInSheets);
  std::size_t end = 0;
  for (std::size_t characters = 0; end < safe.size() && characters < kMaxSheetCharacters; ++characters) {
    do ++end;
    while (end < safe.size() && IsFollowing(safe[end]));
  }
  safe.resize(end);
  // An apostrophe is forbidden at either end only.
  if (safe.starts_with('\'')) safe.front() = '_';
  if (safe.ends_with('\'')) safe.back() = '_';
  return safe.empty() ? "_" : safe;
}

std::string EventSheetName(std::int32_t id, std::size_t part) {
  return part == 1 ? fmt::format("Event {}", id) : fmt::format("Event {} ({})", id, part);
}
