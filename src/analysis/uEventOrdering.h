// Which index of a table a click on a column's title selects. Pure functions; columns go by their field's key.
#pragma once

#include <optional>
#include <string_view>

#include "analysis/uDataset.h"

// The index key of a column: the pair of indexes is the key and "Desc" or "ASC". Nothing for a column that does not
// sort. Kept on purpose: "ID" of the shock events sorts by the timestamp.
std::optional<std::string_view> EventIndexKey(std::string_view field);
std::optional<std::string_view> SensorsIndexKey(std::string_view field);
std::optional<std::string_view> BatteryIndexKey(std::string_view field);

// Selects the pair's ascending index if its descending one is selected, else the descending one: the first click on a
// column sorts descending. False, and nothing changes, when the table has no such index.
bool ToggleIndex(TDataset& table, std::string_view indexKey);
