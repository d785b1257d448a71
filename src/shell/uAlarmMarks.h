// How a grid draws the cell of a value: the value in its quantity's decimal format, the unit, and a mark that compares
// it with the alarm limits. The key of a column's field says which quantity it shows.
#pragma once

#include <cstddef>
#include <string>

#include "analysis/uDataset.h"
#include "shell/uSettings.h"

// Indexes in the program's image list.
enum class TCellImage { None = 0, Alarm = 2, AboveMaximum = 3, BelowMinimum = 4, Within = 5 };

struct TCellDrawing {
  std::string text;
  TCellImage image = TCellImage::None;
  int textOffset = 6;  // px from the cell's left edge
};

TCellDrawing DrawCell(const TDataset& table, std::size_t row, std::size_t field, const TDisplaySettings& settings);

// The text alone.
std::string CellText(const TDataset& table, std::size_t row, std::size_t field, const TDisplaySettings& settings);
