// The types of blocks in a data file, and the constants of their contents.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

inline constexpr std::uint16_t kFileHeaderBlock = 0;
inline constexpr std::uint16_t kCreatorBlock = 1;         // one string
inline constexpr std::uint16_t kStartTimeBlock = 2;       // one double, days since 2000-01-01
inline constexpr std::uint16_t kChannelListBlock = 6;     // strings until the body ends
inline constexpr std::uint16_t kDataBlock = 8;            // records until the body ends
inline constexpr std::uint16_t kMissionHeaderBlock = 27;  // the stored fields of TMissionData

// From days since 2000-01-01 to a date-time.
inline constexpr double kDaysTo2000 = 36526;

// The time of a record is from 0 to this many days; any other time ends its block.
inline constexpr double kMaxRecordDays = 36500;

// Bit patterns that mark a reading without a value.
inline constexpr std::uint32_t kNoValue = 0xFFFFFFFF;
inline constexpr std::uint32_t kEndOfEvent = 0xFFFFFFFE;

// Only files of these creators are shown.
inline constexpr std::array<std::string_view, 3> kValidCreators = {"korvex_createShockFile.exe", "korvex165_reader.exe",
                                                                   "korvexCARD_reader.exe (kshock)"};

// For people.
inline constexpr std::pair<std::uint16_t, std::string_view> kBlockDescriptions[] = {
    {kFileHeaderBlock, "file header"},   {kCreatorBlock, "creator"}, {kStartTimeBlock, "start time"},
    {kChannelListBlock, "channel list"}, {kDataBlock, "data"},       {kMissionHeaderBlock, "mission header"}};

constexpr std::string_view BlockDescription(std::uint16_t type) {
  for (const auto& [known, description] : kBlockDescriptions) {
    if (known == type) return description;
  }
  return "unknown, skipped";
}
