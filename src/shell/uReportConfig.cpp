#include "shell/uReportConfig.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/uDateTime.h"
#include "base/uIniFile.h"
#include "base/uText.h"
#include "platform/uSafeFile.h"
#include "shell/uGoTo.h"

namespace fs = std::filesystem;

namespace {

constexpr const char *kSections = "Sections", *kPage = "Page", *kTablesSection = "Tables", *kCards = "Event cards",
                     *kTime = "Time";

constexpr std::array<std::string_view, kReportSectionCount> kSectionNames = {
    "Cover",        "Mission details", "Verdict",        "Summary", "Most important events",
    "Events chart", "Sensors chart",   "Selected event", "Tables",  "Event cards",
    "Metrics"};
constexpr std::array<std::string_view, 2> kPapers = {"A4", "Letter"};
constexpr std::array<std::string_view, 2> kOrientations = {"portrait", "landscape"};
constexpr std::array<std::string_view, 4> kCardEvents = {"all", "filtered", "worst", "above alarm"};

struct TKey {
  const char* section;
  const char* key;
};
constexpr TKey kPaperKey{kPage, "Paper"}, kOrientationKey{kPage, "Orientation"}, kCardEventsKey{kCards, "Events"},
    kWorstKey{kCards, "Worst"}, kPerPageKey{kCards, "A page"}, kFromKey{kTime, "From"}, kToKey{kTime, "To"};
constexpr std::pair<TKey, bool TReportConfig::*> kTableKeys[] = {
    {{kTablesSection, "Events"}, &TReportConfig::eventsTable},
    {{kTablesSection, "Sensors"}, &TReportConfig::sensorsTable},
    {{kTablesSection, "Battery"}, &TReportConfig::batteryTable}};
constexpr std::pair<TKey, std::optional<double> TRange::*> kTimeKeys[] = {{kFromKey, &TRange::from},
                                                                          {kToKey, &TRange::to}};
constexpr TKey kOtherKeys[] = {kPaperKey, kOrientationKey, kCardEventsKey, kWorstKey, kPerPageKey};

template <class TNames>
std::string Listed(const TNames& names) {
  std::string list;
  for (const auto& name : names) AppendListItem(list, fmt::format("{}", name));
  return list;
}

// The place of the key's value in a list of names; without the key that of the default.
template <class TNames>
std::size_t ReadChoice(const TIniFile& ini, const TKey& key, const TNames& names, std::size_t byDefault) {
  const auto text = ini.Find(key.section, key.key);
  if (!text) return byDefault;
  const auto* found =
      std::ranges::find_if(names, [&](std::string_view name) { return IsSameIgnoringCase(name, *text); });
  if (found == names.end()) Refuse("[{}] {} = {} is none of {}.", key.section, key.key, *text, Listed(names));
  return static_cast<std::size_t>(found - names.begin());
}

bool ReadSwitch(const TIniFile& ini, const std::string& section, const std::string& key, bool byDefault) {
  const std::string text = ini.ReadString(section, key, byDefault ? "1" : "0");
  if (text != "0" && text != "1") Refuse("[{}] {} = {} is neither 0 nor 1.", section, key, text);
  return text == "1";
}

std::size_t ReadCount(const TIniFile& ini, const TKey& key, std::size_t byDefault) {
  const auto text = ini.Find(key.section, key.key);
  if (!text) return byDefault;
  const auto count = NumberIn<std::size_t>(*text);
  if (!count || *count < 1 || *count > kMaxWorst) {
    Refuse("[{}] {} = {} is no number from 1 to {}.", key.section, key.key, *text, kMaxWorst);
  }
  return *count;
}

void ReadSections(const TIniFile& ini, TReportConfig& config) {
  if (!ini.HasSection(kSections)) return;
  const auto before = config.sections;
  std::size_t place = 0;
  for (const std::string& key : ini.Keys(kSections)) {
    const auto* name =
        std::ranges::find_if(kSectionNames, [&](std::string_view each) { return IsSameIgnoringCase(each, key); });
    if (name == kSectionNames.end()) Refuse("[{}] {} is no section of a report.", kSections, key);
    config.sections.at(place++) = {static_cast<TReportSection>(name - kSectionNames.begin()),
                                   ReadSwitch(ini, kSections, key, true)};
  }
  const auto named = place;
  for (const TReportSectionChoice& choice : before) {
    const auto* end = config.sections.begin() + named;
    const auto isIt = [&](const TReportSectionChoice& each) { return each.section == choice.section; };
    if (std::find_if(config.sections.cbegin(), end, isIt) == end) config.sections.at(place++) = {choice.section, false};
  }
}

void ReadTime(const TIniFile& ini, TRange& time) {
  for (const auto& [key, end] : kTimeKeys) {
    const auto text = ini.Find(key.section, key.key);
    if (!text) continue;
    // Other forms depend on the date format of the settings.
    const bool isIso = text->find('-') == 4;
    time.*end = isIso ? TypedTime(*text, 0) : std::nullopt;
    if (!(time.*end)) Refuse("[{}] {} = {} is no time such as 2026-03-04 06:00:00.", key.section, key.key, *text);
  }
  if (time.from && time.to && *time.from > *time.to) Refuse("[{}] From is after To.", kTime);
}

void RefuseUnknownKeys(const TIniFile& ini) {
  std::vector<TKey> known(std::begin(kOtherKeys), std::end(kOtherKeys));
  for (const auto& row : kTableKeys) known.push_back(row.first);
  for (const auto& row : kTimeKeys) known.push_back(row.first);
  for (const std::string& section : ini.Sections()) {
    if (IsSameIgnoringCase(section, kSections)) continue;
    if (std::ranges::none_of(known, [&](const TKey& key) { return IsSameIgnoringCase(key.section, section); })) {
      Refuse("[{}] is no section of a report's configuration.", section);
    }
    for (const std::string& name : ini.Keys(section)) {
      const auto isIt = [&](const TKey& key) {
        return IsSameIgnoringCase(key.section, section) && IsSameIgnoringCase(key.key, name);
      };
      if (std::ranges::none_of(known, isIt)) Refuse("[{}] has a key that is not known: \"{}\".", section, name);
    }
  }
}

}  // namespace

TReportConfig::TReportConfig() {
  for (std::size_t i = 0; i < sections.size(); ++i) {
    const auto section = static_cast<TReportSection>(i);
    sections.at(i) = {section, section != TReportSection::SelectedEvent};
  }
}

bool TReportConfig::Has(TReportSection section) const {
  return std::ranges::find(sections, TReportSectionChoice{section, true}) != sections.end();
}

std::string_view SectionName(TReportSection section) {
  return kSectionNames.at(static_cast<std::size_t>(section));
}

TReportConfig ReadReportConfig(const fs::path& path) {
  const TIniFile ini = TIniFile::LoadStrict(path);
  RefuseUnknownKeys(ini);
  TReportConfig config;
  ReadSections(ini, config);
  config.paper = static_cast<TReportPaper>(ReadChoice(ini, kPaperKey, kPapers, 0));
  config.landscape = ReadChoice(ini, kOrientationKey, kOrientations, 0) == 1;
  for (const auto& [key, value] : kTableKeys) config.*value = ReadSwitch(ini, key.section, key.key, config.*value);
  config.cardEvents = static_cast<TCardEvents>(
      ReadChoice(ini, kCardEventsKey, kCardEvents, static_cast<std::size_t>(config.cardEvents)));
  config.worstCount = ReadCount(ini, kWorstKey, config.worstCount);
  config.cardsPerPage = ReadCount(ini, kPerPageKey, config.cardsPerPage);
  if (!std::ranges::count(kCardsPerPage, config.cardsPerPage)) {
    Refuse("[{}] {} = {} is none of {}.", kCards, kPerPageKey.key, config.cardsPerPage, Listed(kCardsPerPage));
  }
  ReadTime(ini, config.time);
  if (std::ranges::none_of(config.sections, &TReportSectionChoice::on)) {
    Refuse("[{}] switches every section off; a report needs one.", kSections);
  }
  return config;
}

void WriteReportConfig(const fs::path& path, const TReportConfig& config) {
  TIniFile ini;
  const auto write = [&ini](const TKey& key, std::string_view value) {
    ini.WriteString(key.section, key.key, std::string(value));
  };
  for (const auto& [section, on] : config.sections) ini.WriteBool(kSections, std::string(SectionName(section)), on);
  write(kPaperKey, kPapers.at(static_cast<std::size_t>(config.paper)));
  write(kOrientationKey, kOrientations.at(config.landscape ? 1 : 0));
  for (const auto& [key, value] : kTableKeys) ini.WriteBool(key.section, key.key, config.*value);
  write(kCardEventsKey, kCardEvents.at(static_cast<std::size_t>(config.cardEvents)));
  write(kWorstKey, std::to_string(config.worstCount));
  write(kPerPageKey, std::to_string(config.cardsPerPage));
  for (const auto& [key, end] : kTimeKeys) {
    if (config.time.*end) write(key, FormatDateTime("yyyy-mm-dd hh:nn:ss.zzz", *(config.time.*end)));
  }
  SaveFile(path, ini.Text());
}

TReportConfig ReadKeptReportConfig(const fs::path& settingsFolder) {
  const fs::path file = settingsFolder / kKeptReportConfigFile;
  if (!fs::exists(file)) return {};
  TReportConfig config = ReadReportConfig(file);
  config.time = {};
  return config;
}

void KeepReportConfig(const fs::path& settingsFolder, const TReportConfig& config) {
  TReportConfig kept = config;
  kept.time = {};
  WriteReportConfig(settingsFolder / kKeptReportConfigFile, kept);
}
