// What a value cell of a grid draws: the value in its quantity's decimal format, with the unit. Columns go by their
// field's key.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "analysis/uDataset.h"

enum class TQuantity {
  Acceleration,
  ToT,
  IoT,
  Temperature,
  Humidity,
  Pressure,
  Light,
  Battery,
  A1,
  A2,
  A3,
  A4,
};
inline constexpr std::size_t kQuantityCount = 12;

// The decimal format of each quantity, a mask of MaskFloat.
using TCellFormats = std::array<std::string_view, kQuantityCount>;
inline constexpr TCellFormats kDefaultCellFormats = {"0.####", "0.#",   "0.###", "0.###", "0.###", "0.###",
                                                     "0.#",    "0.###", "0.0",   "0.0",   "0.0",   "0.0"};

// The text of one cell: singles in their quantity's format and unit, everything else as the table shows it.
std::string CellText(const TDataset& table, std::size_t row, std::size_t field, const TCellFormats& formats);
