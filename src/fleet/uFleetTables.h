// The three tables that sum up many recordings: recording (a row a file), event (a row an event), sensor (a row a
// sensor of a recording). docs/fleet.md describes the columns. Pure functions; any thread.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "analysis/uLimitProfile.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uOtherSensors.h"

enum class TFleetType { Text, Integer, Real };

struct TFleetColumn {
  std::string_view name;
  TFleetType type;
};

struct TFleetTable {
  std::string_view name;
  std::vector<TFleetColumn> columns;
  std::string_view path;  // the column with the recording's path
};

// recording, event, sensor. Programs go by the names of the columns, so new ones come at the end.
const std::array<TFleetTable, 3>& FleetTables();

// Nothing is NULL. Text is UTF-8.
using TFleetValue = std::variant<std::monostate, std::int64_t, double, std::string>;
using TFleetRow = std::vector<TFleetValue>;  // in the order of the columns

// By FleetTables(): the first has one row.
using TFleetRows = std::array<std::vector<TFleetRow>, 3>;

// What the tables say of the file itself.
struct TFleetFile {
  std::string path = {};                  // as FleetPath gives it
  std::optional<std::int64_t> size = {};  // bytes
  std::string modified = {};              // ISO 8601 in UTC; empty when the system does not tell
  std::string sha256 = {};                // empty when the file cannot be read
  int status = 0;                         // as the exit status of kshock
  std::string reason = {};                // why the status is not 0
  std::optional<bool> creatorValid = {};  // nothing when it is no data file
  std::string options = {};               // of the analysis, see TFleetOptions::Text
  std::string programVersion = {};
  std::string analysedAt = {};  // ISO 8601 in UTC
};

// True for the status of a file that was read, if only as far as it was whole.
inline bool IsUsable(int status) {
  return status == 0 || status == 5;
}

struct TFleetOptions {
  bool analysis = false;  // also the figures of each event's pulse and fall
  std::optional<TLimitProfile> limits;
  std::string limitsText;  // the profile as it was written

  // Rows that were made with the same text and by the same version are the same.
  [[nodiscard]] std::string Text() const;
};

// A mission that was read. Borrows everything.
struct TFleetMission {
  const TMissionData& header;
  const TEventList& events;
  const TSensorList& sensors;
  bool damaged = false;
};

// Without a mission only the row of the file.
TFleetRows FleetRowsOf(const TFleetFile& file, const TFleetMission* mission, const TFleetOptions& options);
