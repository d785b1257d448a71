// Finds the recordings of a fleet. Nothing here opens a file. Any thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

// A path as the tables hold it: UTF-8 as it was given; a byte that is no UTF-8 is written as \xE4.
std::string FleetPath(const std::filesystem::path& path);

struct TFleetEntry {
  std::filesystem::path path;
  std::string name;     // FleetPath
  std::string problem;  // why nothing can be read there; empty for a file
};

// The files that are given, whatever their names, and what ends with ".kshock" in the folders that are given and below.
// Links are followed; one that leads back to a folder that was listed is an entry with a problem, so is a folder that
// cannot be listed. Sorted by name, without doubles. A file that does not exist is an entry like any other.
std::vector<TFleetEntry> ListRecordings(const std::vector<std::filesystem::path>& given);

struct TFileState {
  std::int64_t size = 0;
  std::string modified;  // ISO 8601 in UTC, to the nanosecond
  bool operator==(const TFileState&) const = default;
};
// Nothing when the system does not tell.
std::optional<TFileState> StateOf(const std::filesystem::path& path);
