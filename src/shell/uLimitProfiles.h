// The limit profiles of the user: files in the folder "limits" of the settings folder, of which one may be in force.
// Its limits are those of the settings, which the alarm panel edits; what was edited is kept when the panel closes.
// Which one is in force stands in "limit-profile.ini" beside "settings.ini". Main thread only.
//
// A profile is put into its file's place whole, so a failed write never costs the older one. Errors are messages that
// name the file; the limits in force then stay as they are.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/uLimitProfile.h"
#include "shell/uIControls.h"
#include "shell/uIDialogs.h"
#include "shell/uShownMission.h"

struct TListedProfile {
  std::filesystem::path file;
  std::string name;
  std::string problem = {};  // why the file cannot be used; its name is then that of the file
};

inline constexpr std::string_view kChosenProfileFile = "limit-profile.ini";

// The file of the profile that was in force last; empty: none was. Throws when the choice cannot be read.
std::filesystem::path ChosenProfile(const std::filesystem::path& settingsFolder);

class TLimitProfiles {
 public:
  // `findSettingsFolder` as in TProgram.
  TLimitProfiles(std::function<std::string()> findSettingsFolder, TShownMission& mission, IControls& controls,
                 IDialogs& dialogs);

  // By name; at most kMaxListed.
  [[nodiscard]] std::vector<TListedProfile> List() const;
  // The file of the profile in force; empty: there is none.
  [[nodiscard]] const std::filesystem::path& File() const { return FFile; }

  // At the start: puts the profile in force again that was in force last. The alarm stays as the settings say.
  void Restore();
  // Puts a profile in force and switches the alarm on. An empty path: none, and the limits stay.
  void Choose(const std::filesystem::path& file);
  // A new profile with every limit at its default, so that nothing is judged yet; then it is in force.
  void Create(std::string_view name);
  // The limits as they stand, with what the profile in force allows, under another name, which is then in force.
  void SaveAs(std::string_view name);
  // Asks, and removes the file of the profile in force. The limits stay.
  void Delete();
  // Takes what was typed as allowed; an empty return, or why it is refused.
  [[nodiscard]] std::string Allow(TQuantity quantity, bool isMax, std::string_view text);
  // What the product withstands becomes part of the profile in force, if there is one, and is written.
  void SetProduct(const TFragility& product);
  // Writes the profile in force when it was changed.
  void Keep();

  static constexpr std::size_t kMaxListed = 100;

 private:
  [[nodiscard]] std::filesystem::path Folder() const;
  // Runs a step that reads or writes `file`; false after a message.
  bool Try(const std::filesystem::path& file, std::string_view failure, const std::function<void()>& step);
  void Add(TLimitProfile profile);
  void PutInForce(const std::filesystem::path& file, std::optional<TLimitProfile> profile, bool alarm);
  void Remember();

  std::function<std::string()> FFindSettingsFolder;
  TShownMission& FMission;
  IControls& FControls;
  IDialogs& FDialogs;
  std::filesystem::path FFile;
  TLimitProfile FStored;  // what FFile holds
};
