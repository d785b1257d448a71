// Limit profiles as INI files that people write and read:
//
//   [Profile]
//   Name = Fragile
//
//   [Alarm]
//   Acc. Max = 10
//   RH Max = 60
//
//   [Allowed]
//   Acc. Max = 3 events
//   RH Max = 2 h
//
//   [Product]
//   Critical velocity change = 2
//   Critical acceleration = 40
//
// [Alarm] has the keys of "settings.ini". A limit that it names is chosen; one that it leaves out has its default.
// [Allowed] gives to chosen limits a number of events or a length of time; what it leaves out is not allowed at all.
// [Product] may be missing; it has m/s and g for the damage boundary.
//
// A file without [Profile] is one of settings: its [Alarm] is read, and all else ignored. It allows nothing, and a
// limit that equals its default is not chosen. In both "Active" is ignored, and "Load Acc. from File" is 0 unless
// given.
#pragma once

#include <filesystem>

#include "analysis/uLimitProfile.h"
#include "model/uGlobalSharedVariables.h"

// Every limit at its default, which nobody chose.
TVerdictLimits DefaultLimits();

// Throws an exception with the reason as a sentence, without the file's name: it cannot be read, is larger than 1 MB,
// has a line, section or key that is not known, a value that is no such number, or a minimum above its maximum.
TLimitProfile ReadLimitProfile(const std::filesystem::path& path);

// Writes the chosen limits only. Throws as ReadLimitProfile would, and when the file cannot be written; the older one
// is then as it was.
void WriteLimitProfile(const std::filesystem::path& path, const TLimitProfile& profile);

// For a recording: when the profile says so, the acceleration limits are ± its trigger level, if there is one.
TVerdictLimits LimitsInForce(const TLimitProfile& profile, const TMissionData& mission);
