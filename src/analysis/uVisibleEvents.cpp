#include "analysis/uVisibleEvents.h"

// A row of the shock event table is the event's index in the list, and its companions share its rows.
std::vector<std::uint32_t> VisibleEvents(const TDataset& table) {
  std::vector<std::uint32_t> events;
  events.reserve(table.RecordCount());
  for (std::size_t position = 0; position < table.RecordCount(); ++position) {
    events.push_back(static_cast<std::uint32_t>(table.RowAt(position)));
  }
  return events;
}

std::optional<std::size_t> VisibleOrFirst(const TDataset& table, std::optional<std::size_t> event) {
  if (event && table.PositionOf(*event)) return event;
  if (table.RecordCount() == 0) return std::nullopt;
  return table.RowAt(0);
}
