// What a value cell of a grid draws: the value in its quantity's decimal format, with the unit. Columns go by their
// field's key.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "analysis/uAlarmLimits.h"
#include "analysis/uDataset.h"

// The decimal format of each quantity, a mask of MaskFloat.
using TCellFormats = std::array<std::string_view, kQuantityCount>;
inline constexpr TCellFormats kDefaultCellFormats = {"0.####", "0.###", "0.###", "0.###",  "0.#", "0.###", "0.0",
                                                     "0.0",    "0.0",   "0.0",   "0.####", "0.#", "0.###"};

// The text of one cell: singles in their quantity's format and unit, everything else as the table shows it.
std::string CellText(const TDataset& table, std::size_t row, std::size_t field, const TCellFormats& formats);
