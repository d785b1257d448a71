#include "analysis/uEventOrdering.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace {

struct TColumnIndex {
  std::string_view field;
  std::string_view indexKey;
};

constexpr TColumnIndex kEvents[] = {{"Acceleration max", "MaxAcc"},
                                    {"ToT total", "DBC"},
                                    {"ToT max", "DBCSM"},
                                    {"IoT total", "Int"},
                                    {"IoT max", "IntSM"},
                                    {"ID", "Timestamp"},
                                    {"Timestamp", "Timestamp"},
                                    {"Temp.", "Temp."},
                                    {"Temp. P", "Temp. P"},
                                    {"Temp. RH", "Temp. RH"},
                                    {"Light", "Light"},
                                    {"Pressure", "Pressure"},
                                    {"Humidity", "Humidity"},
                                    {"Dew Point", "DewPoint"},
                                    {"A1", "A1"},
                                    {"A2", "A2"},
                                    {"A3", "A3"},
                                    {"A4", "A4"},
                                    {"Battery", "Battery"}};

constexpr TColumnIndex kSensors[] = {{"Timestamp", "Timestamp"},
                                     {"Temp.", "Temp."},
                                     {"Temp. P", "Temp. P"},
                                     {"Temp. RH", "Temp. RH"},
                                     {"Light", "Light"},
                                     {"Pressure", "Pressure"},
                                     {"Humidity", "Humidity"},
                                     {"Dew Point", "DewPoint"},
                                     {"A1", "A1"},
                                     {"A2", "A2"},
                                     {"A3", "A3"},
                                     {"A4", "A4"}};

constexpr TColumnIndex kBattery[] = {{"Timestamp", "Timestamp"}, {"Battery", "Battery"}};

std::optional<std::string_view> KeyIn(std::span<const TColumnIndex> columns, std::string_view field) {
  const auto found = std::ranges::find(columns, field, &TColumnIndex::field);
  if (found == columns.end()) return std::nullopt;
  return found->indexKey;
}

}  // namespace

std::optional<std::string_view> EventIndexKey(std::string_view field) {
  return KeyIn(kEvents, field);
}

std::optional<std::string_view> SensorsIndexKey(std::string_view field) {
  return KeyIn(kSensors, field);
}

std::optional<std::string_view> BatteryIndexKey(std::string_view field) {
  return KeyIn(kBattery, field);
}

bool ToggleIndex(TDataset& table, std::string_view indexKey) {
  const std::string descending = std::string(indexKey) + "Desc";
  return table.SelectIndex(table.IndexName() == descending ? std::string(indexKey) + "ASC" : descending);
}
