// Names of files, folders and sheets of exports. Whatever a recording or a setting says, a name is one part of a path
// that every file system takes, so nothing is written outside the chosen folder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

class TDataset;

// A table of an export of several.
struct TNamedTable {
  std::string_view name;  // of its sheet, or its file without extension
  TDataset& table;
};

// The three kinds of folders with a file for each event.
enum class TEventFiles { Samples, Peaks, Calibration };

// Prefixes of the mission's ID in proposed file names.
inline constexpr std::string_view kMissionName = "Mission-";
inline constexpr std::string_view kBatteryName = "Battery Mission-";
inline constexpr std::string_view kSensorsName = "Sensors Mission-";
inline constexpr std::string_view kShocksName = "Shocks Mission-";
inline constexpr std::string_view kAnalysisName = "Analysis Mission-";
inline constexpr std::string_view kDamageBoundaryName = "Damage boundary Mission-";
inline constexpr std::string_view kStatisticsName = "Statistics Mission-";
inline constexpr std::string_view kShocksWorkbookName = "Shocks of Mission-";
inline constexpr std::string_view kPartName = "Part of Mission-";

// Replaces by "_": path separators, control and reserved characters, blanks and dots at the end, the name of a device
// whatever its extension, and an empty name.
std::string SafeFileName(std::string_view name);

// The proposed file name without extension: a prefix and the mission's ID, cut at 120 bytes.
std::string ProposedName(std::string_view prefix, const TMissionData& mission);

// The same for the event in the shock chart: "Mission-A17 ID-7", then the type of the spectrum if one is shown.
std::string ProposedEventName(const TMissionData& mission, std::size_t event, std::string_view spectrumType = {});

// "Mission-A17"; the peaks' and the calibration folder also carry the start of the recording in the short date format.
// Throws std::runtime_error when that format has a path separator in it.
std::string EventFolderName(TEventFiles kind, const TMissionData& mission);

// "ID-7.csv", in the two other folders "ID-7-X-pos-12.csv" with the axis and the whole g of the peak.
std::string EventFileName(TEventFiles kind, std::size_t index, const TEvent& event);

// With "_" for what a spreadsheet forbids in a sheet's name, and cut at 31 characters.
std::string SafeSheetName(std::string_view name);

// "Event 7", for later parts "Event 7 (2)". IDs are unique, so names are, too.
std::string EventSheetName(std::int32_t id, std::size_t part = 1);
