// The tables of many recordings as text, for programs that do not read SQLite. Main thread only.
//
//   csv    three files: OUT has the recordings, and beside it OUT-event and OUT-sensor with its ending the rest. A line
//   of
//          names first; empty: NULL. Commas, double quotes where a text needs them, LF.
//   jsonl  one file, a JSON object a line; "table" names the table, NULL is null.
#pragma once

#include <filesystem>

#include "fleet/uFleetDatabase.h"

// The file of a table, 0 … 2.
std::filesystem::path FleetCsvPath(const std::filesystem::path& out, std::size_t table);

// Each file is written whole or not at all. Throw EFleetDatabase and std::filesystem::filesystem_error.
void WriteFleetCsv(TFleetDatabase& database, const std::filesystem::path& out);
void WriteFleetJsonLines(TFleetDatabase& database, const std::filesystem::path& out);

// Add the rows of such a file. Columns that this version does not know are left out. Throw EFleetDatabase for a file
// that is none.
void ReadFleetCsv(const std::filesystem::path& out, TFleetDatabase& database);
void ReadFleetJsonLines(const std::filesystem::path& out, TFleetDatabase& database);
