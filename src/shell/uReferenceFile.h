// The reference in the file of a layout, as sections that people can read:
//
//   [Reference]
//   Recording = /home/ann/demo.kshock
//   Events = 300
//   Days = 10.02
//   Hours = 3 0 0 … 11                      events by the hour of the day
//   Directions = 1 0 0 81, 0 -1 0 7         x y z and events; missing without a shock analysis
//   Peak = 2.5 2.75 x12 3.1 …               rising values; "x12": twelve events have it
//
//   [Reference sensors]
//   Temperature = 11.5 31                   minimum and maximum
//
// The file may hold anything.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "analysis/uReference.h"

std::string ReferenceSections(const TReference& reference);

// Nothing when the file has none. Throws an exception with the reason as a sentence, without the file's name: it cannot
// be read, is larger than 1 MB, or its reference makes no sense.
std::optional<TReference> ReadReference(const std::filesystem::path& layout);
