#include "shell/uLimitProfiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/uFiles.h"
#include "base/uIniFile.h"
#include "base/uText.h"
#include "export/uExportNames.h"
#include "platform/uSafeFile.h"
#include "shell/uAllowances.h"
#include "shell/uFailureList.h"
#include "shell/uLimitProfileFile.h"
#include "shell/uSettings.h"
#include "shell/uStartUp.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kFolder = "limits";
constexpr const char *kProfileSection = "Profile", *kFileKey = "File";
constexpr std::string_view kExtension = ".ini";
constexpr std::string_view kNotUsed = "The limit profile cannot be used.";
constexpr std::string_view kNotSaved = "The limit profile is not saved.";

TListedProfile ListedProfile(const fs::path& file) {
  try {
    return {file, ReadLimitProfile(file).name};
  } catch (const std::exception& error) {
    return {file, Printable(Utf8FromPath(file.stem())), ReasonOf(error)};
  }
}

}  // namespace

fs::path ChosenProfile(const fs::path& settingsFolder) {
  const fs::path chosen = settingsFolder / kChosenProfileFile;
  if (!IsThere(chosen)) return {};
  const std::string name = TIniFile::Load(chosen).ReadString(kProfileSection, kFileKey, "");
  // Whatever the file says, nothing outside the folder is read or written.
  const fs::path file = settingsFolder / kFolder / PathFromUtf8(name).filename();
  return name.empty() || file.extension() != kExtension ? fs::path() : file;
}

TLimitProfiles::TLimitProfiles(std::function<std::string()> findSettingsFolder, TShownMission& mission,
                               IControls& controls, IDialogs& dialogs)
    : FFindSettingsFolder(std::move(findSettingsFolder)), FMission(mission), FControls(controls), FDialogs(dialogs) {}

fs::path TLimitProfiles::Folder() const {
  const std::string settings = FFindSettingsFolder();
  return settings.empty() ? fs::path() : PathFromUtf8(settings) / kFolder;
}

std::vector<TListedProfile> TLimitProfiles::List() const {
  std::vector<TListedProfile> profiles;
  std::error_code error;
  for (fs::directory_iterator entry(Folder(), error), end; !error && entry != end; entry.increment(error)) {
    if (profiles.size() == kMaxListed) break;
    std::error_code unknownKind;
    const fs::path& file = entry->path();
    if (file.extension() == kExtension && entry->is_regular_file(unknownKind)) {
      profiles.push_back(ListedProfile(file));
    }
  }
  std::ranges::sort(profiles, {}, [](const TListedProfile& each) { return std::pair(each.name, each.file); });
  return profiles;
}

bool TLimitProfiles::Try(const fs::path& file, std::string_view failure, const std::function<void()>& step) {
  TFailureList failures;
  failures.Run(file, step);
  failures.Show(FDialogs, failure);
  return failures.Empty();
}

void TLimitProfiles::PutInForce(const fs::path& file, std::optional<TLimitProfile> profile, bool alarm) {
  FFile = file;
  FStored = profile.value_or(TLimitProfile());
  TSettings settings = FMission.Settings;
  settings.display.profile.reset();
  if (profile) UseProfile(*profile, settings.display);
  settings.display.alarmActive = settings.display.alarmActive || alarm;
  FMission.Settings.display.profile = std::move(profile);
  FControls.ShowSettings(settings);
}

void TLimitProfiles::Remember() {
  const std::string settings = FFindSettingsFolder();
  if (settings.empty()) return;
  const fs::path chosen = PathFromUtf8(settings) / kChosenProfileFile;
  if (FFile.empty() && !IsThere(chosen)) return;
  TIniFile ini;
  ini.WriteString(kProfileSection, kFileKey, Utf8FromPath(FFile.filename()));
  Try(chosen, "The choice of the limit profile is not kept.", [&] { SaveFile(chosen, ini.Text()); });
}

void TLimitProfiles::Restore() {
  const std::string settings = FFindSettingsFolder();
  if (settings.empty()) return;
  fs::path file;
  if (!Try(PathFromUtf8(settings) / kChosenProfileFile, kNotUsed,
           [&] { file = ChosenProfile(PathFromUtf8(settings)); })) {
    return;
  }
  std::optional<TLimitProfile> profile;
  if (file.empty() || !Try(file, kNotUsed, [&] { profile = ReadLimitProfile(file); })) return;
  PutInForce(file, std::move(profile), false);
}

void TLimitProfiles::Choose(const fs::path& file) {
  Keep();
  std::optional<TLimitProfile> profile;
  if (!file.empty() && !Try(file, kNotUsed, [&] { profile = ReadLimitProfile(file); })) return;
  PutInForce(file, std::move(profile), !file.empty());
  Remember();
}

void TLimitProfiles::Create(std::string_view name) {
  Add({.name = std::string(name), .limits = DefaultLimits()});
}

void TLimitProfiles::SaveAs(std::string_view name) {
  TDisplaySettings display = FMission.Settings.display;
  if (!display.profile) display.profile = {.name = {}, .limits = DefaultLimits()};
  UpdateProfile(display);
  display.profile->name = name;
  Add(std::move(*display.profile));
}

void TLimitProfiles::Add(TLimitProfile profile) {
  const fs::path folder = Folder();
  if (folder.empty()) {
    FDialogs.ShowMessage(kNotSaved, kNoSettingsFolder);
    return;
  }
  const fs::path file = folder / PathFromUtf8(SafeFileName(profile.name) + std::string(kExtension));
  if (IsThere(file)) {
    FDialogs.ShowMessage(kNotSaved, fmt::format("There is a profile of this name: {}", Utf8FromPath(file)));
    return;
  }
  Keep();
  const bool saved = Try(file, kNotSaved, [&] {
    fs::create_directory(folder);
    WriteLimitProfile(file, profile);
  });
  if (!saved) return;
  PutInForce(file, std::move(profile), true);
  Remember();
  FControls.ShowNotice(fmt::format("Limit profile saved: {}", Utf8FromPath(file)), folder);
}

void TLimitProfiles::Delete() {
  if (FFile.empty()) return;
  if (!FDialogs.Confirm(fmt::format("Delete the limit profile \"{}\"? The limits stay as they are.", FStored.name))) {
    return;
  }
  if (!Try(FFile, "The limit profile is not deleted.", [this] { fs::remove(FFile); })) return;
  PutInForce({}, std::nullopt, false);
  Remember();
}

std::string TLimitProfiles::Allow(TQuantity quantity, bool isMax, std::string_view text) {
  std::optional<TLimitProfile>& profile = FMission.Settings.display.profile;
  if (!profile) return "";
  std::string problem = TypeAllowance(text, quantity, isMax, *profile);
  if (problem.empty()) FControls.ShowSettings(FMission.Settings);
  return problem;
}

void TLimitProfiles::SetProduct(const TFragility& product) {
  std::optional<TLimitProfile>& profile = FMission.Settings.display.profile;
  if (!profile || profile->product == product) return;
  profile->product = product;
  FControls.ShowSettings(FMission.Settings);
  Keep();
}

void TLimitProfiles::Keep() {
  UpdateProfile(FMission.Settings.display);
  const std::optional<TLimitProfile>& profile = FMission.Settings.display.profile;
  if (!profile || FFile.empty() || *profile == FStored) return;
  if (Try(FFile, kNotSaved, [&] { WriteLimitProfile(FFile, *profile); })) FStored = *profile;
}
