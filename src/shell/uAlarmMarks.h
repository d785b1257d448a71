// How a value cell of a grid is drawn: the value in its quantity's decimal format, with the unit, and the mark that
// says where it stands to its limits. Columns go by their field's key.
#pragma once

#include <cstddef>
#include <string>

#include "analysis/uDataset.h"
#include "shell/uDisplaySettings.h"

// Images of the program's image list.
enum class TCellImage { None = 0, Alarm = 2, AboveMaximum = 3, BelowMinimum = 4, Within = 5 };

struct TCellDrawing {
  std::string text;
  TCellImage image = TCellImage::None;
  int textOffset = 6;  // px from the cell's left edge
};

TCellDrawing DrawCell(const TDataset& table, std::size_t row, std::size_t field, const TDisplaySettings& settings);

// The text alone: singles in their quantity's format and unit, everything else as the table shows it.
std::string CellText(const TDataset& table, std::size_t row, std::size_t field, const TCellFormats& formats);
