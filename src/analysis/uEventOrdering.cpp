#include "analysis/uEventOrdering.h"

#include "model/uQuantities.h"

namespace {

constexpr std::string_view kTimestampKey = "Timestamp";

std::optional<std::string_view> KeyOf(const TQuantityRow* quantity) {
  return quantity == nullptr ? std::nullopt : std::optional(quantity->indexKey);
}

}  // namespace

std::optional<std::string_view> EventIndexKey(std::string_view field) {
  if (field == "ID" || field == kTimestampKey) return kTimestampKey;
  return KeyOf(FindQuantity(&TQuantityRow::field, field));
}

std::optional<std::string_view> SensorsIndexKey(std::string_view field) {
  if (field == kTimestampKey) return kTimestampKey;
  const TQuantityRow* quantity = FindQuantity(&TQuantityRow::field, field);
  return KeyOf(quantity != nullptr && quantity->sensorsPlace != 0 ? quantity : nullptr);
}

std::optional<std::string_view> BatteryIndexKey(std::string_view field) {
  if (field == kTimestampKey) return kTimestampKey;
  return KeyOf(field == "Battery" ? FindQuantity(&TQuantityRow::field, field) : nullptr);
}

bool ToggleIndex(TDataset& table, std::string_view indexKey) {
  const std::string descending = std::string(indexKey) + "Desc";
  return table.SelectIndex(table.IndexName() == descending ? std::string(indexKey) + "ASC" : descending);
}
