#include "shell/uResponseChoices.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <system_error>

#include "base/uFiles.h"
#include "base/uIniFile.h"
#include "platform/uSafeFile.h"

namespace fs = std::filesystem;

namespace {

constexpr auto kResponseSection = "Response";

// By the tables of names and values that `kshock srs` has, too.
template <class TTable, class TValue>
void ReadName(const TIniFile& ini, const char* key, const TTable& table, TValue& value) {
  const std::string name = ini.ReadString(kResponseSection, key, "");
  const auto found = std::ranges::find(table, std::string_view(name), &TTable::value_type::first);
  if (found != table.end()) value = found->second;
}

template <class TTable, class TValue>
void WriteName(TIniFile& ini, const char* key, const TTable& table, TValue value) {
  ini.WriteString(kResponseSection, key,
                  std::string(std::ranges::find(table, value, &TTable::value_type::second)->first));
}

}  // namespace

TResponseChoices ReadKeptResponseChoices(const fs::path& settingsFolder) {
  TResponseChoices choices;
  std::error_code unknown;
  if (!fs::exists(settingsFolder / kKeptResponseFile, unknown)) return choices;
  const TIniFile ini = TIniFile::Load(settingsFolder / kKeptResponseFile);
  TResponseRequest& request = choices.request;
  ReadName(ini, "Response", kResponses, request.options.response);
  ReadName(ini, "Sign", kResponseSigns, request.options.sign);
  ReadName(ini, "Baseline", kBaselines, request.baseline);
  request.options.quality = ini.ReadFloat(kResponseSection, "Q", request.options.quality);
  request.octave =
      static_cast<std::size_t>(ini.ReadInteger(kResponseSection, "Octave", static_cast<int>(request.octave)));
  choices.limit = PathFromUtf8(ini.ReadString(kResponseSection, "Limit", ""));
  return choices;
}

void KeepResponseChoices(const fs::path& settingsFolder, const TResponseChoices& choices) {
  const TResponseRequest& request = choices.request;
  TIniFile ini;
  WriteName(ini, "Response", kResponses, request.options.response);
  WriteName(ini, "Sign", kResponseSigns, request.options.sign);
  ini.WriteFloat(kResponseSection, "Q", request.options.quality);
  ini.WriteInteger(kResponseSection, "Octave", static_cast<int>(request.octave));
  WriteName(ini, "Baseline", kBaselines, request.baseline);
  if (!choices.limit.empty()) ini.WriteString(kResponseSection, "Limit", Utf8FromPath(choices.limit));
  SaveFile(settingsFolder / kKeptResponseFile, ini.Text());
}
