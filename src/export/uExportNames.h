// Names of files, folders and sheets that exports make. What a recording or a setting says never leaves the folder that
// the user chose: a name is one part of a path, and such as every file system takes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

// The three kinds of folders with a file for each event.
enum class TEventFiles { Samples, Peaks, Calibration };

// What stands before the mission's ID in the names that are proposed for files.
inline constexpr std::string_view kMissionName = "Mission-";
inline constexpr std::string_view kBatteryName = "Battery Mission-";
inline constexpr std::string_view kSensorsName = "Sensors Mission-";
inline constexpr std::string_view kShocksName = "Shocks Mission-";
inline constexpr std::string_view kShocksWorkbookName = "Shocks of Mission-";

// With "_" for path separators, control and reserved characters, for blanks and dots at the end, and for a name that
// is a device's, whatever its extension. Empty becomes "_".
std::string SafeFileName(std::string_view name);

// The name that is proposed for a file, without extension: a prefix of those above and the mission's ID, of which at
// most 120 bytes count.
std::string ProposedName(std::string_view prefix, const TMissionData& mission);

// The same for the event in the shock chart: "Mission-A17 ID-7", with the spectrum's type behind it where one is shown.
std::string ProposedEventName(const TMissionData& mission, std::size_t event, std::string_view spectrumType = {});

// "Mission-A17"; the peaks' and the calibration folder also carry the start of the recording in the short date format.
// Throws std::runtime_error when that format has a path separator in it.
std::string EventFolderName(TEventFiles kind, const TMissionData& mission);

// "ID-7.csv", in the two other folders "ID-7-X-pos-12.csv" with the axis and the whole g of the peak.
std::string EventFileName(TEventFiles kind, std::size_t index, const TEvent& event);

// With "_" for what a spreadsheet forbids in a sheet's name, and cut at 31 characters.
std::string SafeSheetName(std::string_view name);

// "Event 7", where it goes on "Event 7 (2)". IDs are counted, so no two sheets share a name.
std::string EventSheetName(std::int32_t id, std::size_t part = 1);
