#include "shell/uSettingsStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string>
#include <variant>

#include "base/uFiles.h"
#include "base/uIniFile.h"
#include "platform/uSafeFile.h"
#include "shell/uColourNames.h"

namespace fs = std::filesystem;

namespace {

// Toggles are flipped, not set, so that all that a click does happens.
void Flip(IControls& screen, std::string_view control, bool on) {
  if (std::get<bool>(screen.Value(control)) != on) screen.Click(control);
}

// A control starts with the default, which stands in for what is missing or does not parse.
void ReadSetting(const TIniFile& ini, const TSetting& row, IControls& screen) {
  const std::string section(row.section);
  const std::string key(row.key);
  const TControlValue start = screen.Value(row.control);
  switch (row.type) {
    case TSettingType::Bool:
      Flip(screen, row.control, ini.ReadBool(section, key, std::get<bool>(start)));
      break;
    case TSettingType::WriteOnly:
      Flip(screen, row.control, false);
      break;
    case TSettingType::Index:
      screen.SetValue(row.control, ini.ReadInteger(section, key, std::get<int>(start)));
      break;
    case TSettingType::Float:
      screen.SetValue(row.control, ini.ReadFloat(section, key, std::get<double>(start)));
      break;
    case TSettingType::Text:
      screen.SetValue(row.control, ini.ReadString(section, key, std::get<std::string>(start)));
      break;
    case TSettingType::Colour:
      if (const auto colour = ColourFromText(ini.ReadString(section, key, ""))) {
        screen.SetValue(row.control, TextFromColour(*colour));
      }
      break;
  }
}

bool HoldsSettings(const TIniFile& ini) {
  return std::ranges::any_of(Settings(), [&](const TSetting& row) { return ini.HasSection(std::string(row.section)); });
}

void WriteSetting(TIniFile& ini, const TSetting& row, const IControls& screen) {
  const std::string section(row.section);
  const std::string key(row.key);
  const TControlValue value = screen.Value(row.control);
  switch (row.type) {
    case TSettingType::Bool:
    case TSettingType::WriteOnly:
      ini.WriteBool(section, key, std::get<bool>(value));
      break;
    case TSettingType::Index:
      ini.WriteInteger(section, key, std::get<int>(value));
      break;
    case TSettingType::Float:
      ini.WriteFloat(section, key, std::get<double>(value));
      break;
    case TSettingType::Text:
    case TSettingType::Colour:
      ini.WriteString(section, key, std::get<std::string>(value));
      break;
  }
}

}  // namespace

TControlValue DefaultOf(const TSetting& setting) {
  const std::string text(setting.def);
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  switch (setting.type) {
    case TSettingType::Bool:
    case TSettingType::WriteOnly:
      return text == "1";
    case TSettingType::Index:
      return static_cast<int>(number);
    case TSettingType::Float:
      return number;
    default:
      return text;
  }
}

void ReadSettings(const fs::path& folder, IControls& screen) {
  const fs::path path = folder / kSettingsFile;
  std::error_code unknown;
  if (!fs::exists(fs::symlink_status(path, unknown))) return;
  TIniFile ini;
  try {
    ini = TIniFile::Load(path);
    if (!HoldsSettings(ini) && fs::file_size(path) > 0) throw std::runtime_error("The file makes no sense.");
  } catch (const std::exception& error) {
    throw std::runtime_error(fmt::format("{} It is kept as {}.", error.what(), Utf8FromPath(KeepAside(path))));
  }
  for (const TSetting& row : Settings()) ReadSetting(ini, row, screen);
}

void WriteSettings(const fs::path& folder, const IControls& screen) {
  const fs::path path = folder / kSettingsFile;
  TIniFile ini;
  if (fs::exists(path)) ini = TIniFile::Load(path);
  for (const std::size_t row : WritingOrder()) WriteSetting(ini, Settings()[row], screen);
  SaveFile(path, ini.Text());
}
