#include "shell/uLimitProfileFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uIniFile.h"
#include "base/uText.h"
#include "platform/uSafeFile.h"
#include "shell/uAllowances.h"
#include "shell/uSettings.h"
#include "shell/uSettingsSchema.h"

namespace fs = std::filesystem;

namespace {

constexpr const char *kProfile = "Profile", *kName = "Name", *kAlarm = "Alarm", *kAllowed = "Allowed";
constexpr const char *kProduct = "Product", *kCriticalVelocity = "Critical velocity change",
                     *kCriticalAcceleration = "Critical acceleration";
constexpr std::size_t kMaxNameBytes = 255;

std::string KeyOf(std::string_view control) {
  return std::string(std::ranges::find(Settings(), control, &TSetting::control)->key);
}

// One of the twenty limits.
struct TLimitKey : TLimitEnd {
  std::string key;
};

const std::vector<TLimitKey>& LimitKeys() {
  static const std::vector<TLimitKey> kKeys = [] {
    std::vector<TLimitKey> keys;
    for (std::size_t i = 0; i < kLimitedQuantityCount; ++i) {
      keys.push_back({{static_cast<TQuantity>(i), false}, KeyOf(kQuantityControls[i].min)});
      keys.push_back({{static_cast<TQuantity>(i), true}, KeyOf(kQuantityControls[i].max)});
    }
    return keys;
  }();
  return kKeys;
}

std::string LoadFromFileKey() {
  return KeyOf("chboxLoadAccAlarmFromFile");
}

void RefuseUnknown(const TIniFile& ini, const std::string& section, const std::vector<std::string>& known) {
  for (const std::string& key : ini.Keys(section)) {
    if (std::ranges::none_of(known, [&](const std::string& name) { return IsSameIgnoringCase(name, key); })) {
      Refuse("[{}] has a key that is not known: \"{}\".", section, key);
    }
  }
}

std::vector<std::string> NamesOfLimits() {
  std::vector<std::string> names;
  for (const TLimitKey& limit : LimitKeys()) names.push_back(limit.key);
  return names;
}

void ReadLimits(const TIniFile& ini, bool namedIsChosen, TLimitProfile& profile) {
  if (!ini.HasSection(kAlarm)) Refuse("The file has no section [{}].", kAlarm);
  std::vector<std::string> known = NamesOfLimits();
  known.push_back(LoadFromFileKey());
  known.push_back(KeyOf("barbtnlrgAlarm"));
  RefuseUnknown(ini, kAlarm, known);
  for (const TLimitKey& limit : LimitKeys()) {
    const std::optional<std::string> text = ini.Find(kAlarm, limit.key);
    if (!text) continue;
    const double value = ini.ReadFloat(kAlarm, limit.key, std::nan(""));
    if (std::isnan(value)) Refuse("[{}] {} = {} is no number.", kAlarm, limit.key, *text);
    double& current = limit.ValueIn(profile.limits);
    if (namedIsChosen || value != current) limit.SourceIn(profile.limits) = TLimitSource::User;
    current = value;
  }
  const std::string fromFile = ini.ReadString(kAlarm, LoadFromFileKey(), "0");
  if (fromFile != "0" && fromFile != "1") {
    Refuse("[{}] {} = {} is neither 0 nor 1.", kAlarm, LoadFromFileKey(), fromFile);
  }
  profile.accelerationFromFile = fromFile == "1";
}

void ReadAllowance(const TLimitKey& limit, const std::string& text, TLimitProfile& profile) {
  if (limit.SourceIn(profile.limits) == TLimitSource::Default) {
    Refuse("[{}] names {}, but [{}] does not.", kAllowed, limit.key, kAlarm);
  }
  if (limit.quantity == TQuantity::Acceleration) {
    if (!limit.isMax) Refuse("[{}] cannot name {}: peaks have no sign.", kAllowed, limit.key);
    const std::optional<std::uint32_t> count = ParseEvents(text);
    if (!count) Refuse("[{}] {} = {} is no number of events, such as \"3 events\".", kAllowed, limit.key, text);
    profile.allowedEvents = *count;
    return;
  }
  const std::optional<double> time = ParseDuration(text);
  if (!time) Refuse("[{}] {} = {} is no length of time, such as \"2 h\" or \"1 d 30 min\".", kAllowed, limit.key, text);
  limit.AllowedIn(profile) = *time;
}

void ReadProduct(const TIniFile& ini, TLimitProfile& profile) {
  RefuseUnknown(ini, kProduct, {kCriticalVelocity, kCriticalAcceleration});
  if (!ini.HasSection(kProduct)) return;
  const TFragility product{ini.ReadFloat(kProduct, kCriticalVelocity, std::nan("")),
                           ini.ReadFloat(kProduct, kCriticalAcceleration, std::nan(""))};
  if (!IsUsable(product)) {
    Refuse("[{}] must have {} and {}, both above 0.", kProduct, kCriticalVelocity, kCriticalAcceleration);
  }
  profile.product = product;
}

// What the lines of a file cannot show one by one.
void Check(TLimitProfile profile) {
  if (profile.name.empty() || !IsPlainLine(profile.name) || profile.name.size() > kMaxNameBytes) {
    Refuse("[{}] {} must be a line of 1 to {} bytes.", kProfile, kName, kMaxNameBytes);
  }
  const auto told = [&profile](const TLimitKey& limit) {
    const bool byDefault = limit.SourceIn(profile.limits) == TLimitSource::Default;
    return fmt::format("{} = {}{}", limit.key, limit.ValueIn(profile.limits), byDefault ? " (default)" : "");
  };
  for (std::size_t i = 0; i < LimitKeys().size(); i += 2) {
    const TLimitKey& min = LimitKeys()[i];
    const TLimitKey& max = LimitKeys()[i + 1];
    if (min.ValueIn(profile.limits) > max.ValueIn(profile.limits)) {
      Refuse("[{}] {} is above {}.", kAlarm, told(min), told(max));
    }
  }
}

TLimitProfile ReadOwn(const TIniFile& ini) {
  for (const std::string& section : ini.Sections()) {
    const auto isThis = [&section](const char* known) { return IsSameIgnoringCase(section, known); };
    if (std::ranges::none_of(std::array{kProfile, kAlarm, kAllowed, kProduct}, isThis)) {
      Refuse("[{}] is no section of a limit profile.", section);
    }
  }
  RefuseUnknown(ini, kProfile, {kName});
  RefuseUnknown(ini, kAllowed, NamesOfLimits());
  TLimitProfile profile{.name = ini.ReadString(kProfile, kName, ""), .limits = DefaultLimits()};
  ReadLimits(ini, true, profile);
  for (const TLimitKey& limit : LimitKeys()) {
    if (const auto text = ini.Find(kAllowed, limit.key)) ReadAllowance(limit, *text, profile);
  }
  ReadProduct(ini, profile);
  Check(profile);
  return profile;
}

}  // namespace

TVerdictLimits DefaultLimits() {
  TVerdictLimits limits;
  for (std::size_t i = 0; i < limits.size(); ++i) {
    limits[i] = {DefaultSettings().display.limits[i], TLimitSource::Default, TLimitSource::Default};
  }
  return limits;
}

TLimitProfile ReadLimitProfile(const fs::path& path) {
  const TIniFile ini = TIniFile::LoadStrict(path);
  if (ini.HasSection(kProfile)) return ReadOwn(ini);
  if (ini.HasSection(kAllowed)) Refuse("The file has a section [{}], but no [{}].", kAllowed, kProfile);
  TLimitProfile profile{.name = Printable(Utf8FromPath(path.stem())), .limits = DefaultLimits()};
  ReadLimits(ini, false, profile);
  Check(profile);
  return profile;
}

void WriteLimitProfile(const fs::path& path, const TLimitProfile& profile) {
  Check(profile);
  TLimitProfile written = profile;
  TIniFile ini;
  ini.WriteString(kProfile, kName, written.name);
  ini.WriteBool(kAlarm, LoadFromFileKey(), written.accelerationFromFile);
  for (const TLimitKey& limit : LimitKeys()) {
    if (limit.SourceIn(written.limits) == TLimitSource::Default) continue;
    ini.WriteFloat(kAlarm, limit.key, limit.ValueIn(written.limits));
    if (limit.quantity == TQuantity::Acceleration) {
      if (limit.isMax && written.allowedEvents > 0) {
        ini.WriteString(kAllowed, limit.key, fmt::format("{} events", written.allowedEvents));
      }
    } else if (const double time = limit.AllowedIn(written); time > 0) {
      ini.WriteString(kAllowed, limit.key, ExactDuration(time));
    }
  }
  if (written.product) {
    ini.WriteFloat(kProduct, kCriticalVelocity, written.product->velocityChange);
    ini.WriteFloat(kProduct, kCriticalAcceleration, written.product->acceleration);
  }
  SaveFile(path, ini.Text());
}

TVerdictLimits LimitsInForce(const TLimitProfile& profile, const TMissionData& mission) {
  TVerdictLimits limits = profile.limits;
  if (!profile.accelerationFromFile) return limits;
  if (const std::optional<double> level = TriggerLevel(mission)) {
    limits[static_cast<std::size_t>(TQuantity::Acceleration)] = {
        {-*level, *level}, TLimitSource::File, TLimitSource::File};
  }
  return limits;
}
