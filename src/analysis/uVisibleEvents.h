// The two visible-event lists: one holds all events, the other those that the filter lets through, both in the order of
// the current index. They are made from the shock event table and its companion when somebody asks, so they are never
// behind a sort or a filter.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "analysis/uDataset.h"

// The events that a table of events shows, by their index in the list, in the table's order.
std::vector<std::uint32_t> VisibleEvents(const TDataset& table);

// The event when the table shows it, else the first one that it shows; nothing when it shows none.
std::optional<std::size_t> VisibleOrFirst(const TDataset& table, std::optional<std::size_t> event);
