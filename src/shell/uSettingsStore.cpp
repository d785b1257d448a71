#include "shell/uSettingsStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <variant>

#include "base/uFiles.h"
#include "base/uIniFile.h"
#include "platform/uSafeFile.h"
#include "shell/uColourNames.h"
#include "shell/uSettingsSchema.h"

namespace fs = std::filesystem;

namespace {

// What is missing or does not parse leaves the field as it is.
void ReadSetting(const TIniFile& ini, const TSetting& row, TSettings& settings) {
  const std::string section(row.section);
  const std::string key(row.key);
  std::visit(
      TByType{[&](TFieldOf<bool> field) { field(settings) = ini.ReadBool(section, key, field(settings)); },
              [&](TFieldOf<int> field) { field(settings) = ini.ReadInteger(section, key, field(settings)); },
              [&](TFieldOf<double> field) { field(settings) = ini.ReadFloat(section, key, field(settings)); },
              [&](TFieldOf<std::string> field) { field(settings) = ini.ReadString(section, key, field(settings)); },
              [&](TFieldOf<std::uint32_t> field) {
                field(settings) = ColourFromText(ini.ReadString(section, key, "")).value_or(field(settings));
              }},
      row.field);
}

void WriteSetting(TIniFile& ini, const TSetting& row, TSettings& settings) {
  const std::string section(row.section);
  const std::string key(row.key);
  std::visit(
      TByType{[&](TFieldOf<bool> field) { ini.WriteBool(section, key, field(settings)); },
              [&](TFieldOf<int> field) { ini.WriteInteger(section, key, field(settings)); },
              [&](TFieldOf<double> field) { ini.WriteFloat(section, key, field(settings)); },
              [&](TFieldOf<std::string> field) { ini.WriteString(section, key, field(settings)); },
              [&](TFieldOf<std::uint32_t> field) { ini.WriteString(section, key, TextFromColour(field(settings))); }},
      row.field);
}

bool HoldsSettings(const TIniFile& ini) {
  return std::ranges::any_of(Settings(), [&](const TSetting& row) { return ini.HasSection(std::string(row.section)); });
}

}  // namespace

// The defaults are read as a file that holds them.
TSettings::TSettings() {
  TIniFile defaults;
  for (const TSetting& row : Settings()) {
    defaults.WriteString(std::string(row.section), std::string(row.key), std::string(row.def));
    ReadSetting(defaults, row, *this);
  }
}

std::optional<TSettings> LoadSettings(const fs::path& folder) {
  const fs::path path = folder / kSettingsFile;
  if (!IsThere(path)) return std::nullopt;
  const TIniFile ini = TIniFile::Load(path);
  if (!HoldsSettings(ini) && fs::file_size(path) > 0) throw std::runtime_error("The file makes no sense.");
  TSettings settings;
  for (const TSetting& row : Settings()) {
    if (row.isRead) ReadSetting(ini, row, settings);
  }
  return settings;
}

std::optional<TSettings> ReadSettings(const fs::path& folder) {
  try {
    return LoadSettings(folder);
  } catch (const std::exception& error) {
    const std::string kept = Utf8FromPath(KeepAside(folder / kSettingsFile));
    throw std::runtime_error(fmt::format("{} It is kept as {}.", error.what(), kept));
  }
}

void WriteSettings(const fs::path& folder, TSettings settings) {
  const fs::path path = folder / kSettingsFile;
  TIniFile ini;
  if (fs::exists(path)) ini = TIniFile::Load(path);
  for (const std::size_t row : WritingOrder()) WriteSetting(ini, Settings()[row], settings);
  SaveFile(path, ini.Text());
}
