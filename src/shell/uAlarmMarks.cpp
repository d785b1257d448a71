#include "shell/uAlarmMarks.h"

#include <algorithm>
#include <iterator>

#include "base/uText.h"

namespace {

struct TCellColumn {
  std::string_view field;
  TQuantity quantity;
  std::string_view unit;  // with the blank before it
};

constexpr TCellColumn kColumns[] = {{"Acceleration max", TQuantity::Acceleration, ""},
                                    {"ToT total", TQuantity::ToT, " msec"},
                                    {"ToT max", TQuantity::ToT, " msec"},
                                    {"IoT total", TQuantity::IoT, ""},
                                    {"IoT max", TQuantity::IoT, ""},
                                    {"Temp.", TQuantity::Temperature, ""},
                                    {"Temp. RH", TQuantity::Temperature, ""},
                                    {"Temp. P", TQuantity::Temperature, ""},
                                    {"Dew Point", TQuantity::Temperature, ""},
                                    {"Temperature", TQuantity::Temperature, ""},
                                    {"Humidity", TQuantity::Humidity, " %RH"},
                                    {"Pressure", TQuantity::Pressure, " mbar"},
                                    {"Light", TQuantity::Light, " lux"},
                                    {"Battery", TQuantity::Battery, " V"},
                                    {"A1", TQuantity::A1, ""},
                                    {"A2", TQuantity::A2, ""},
                                    {"A3", TQuantity::A3, ""},
                                    {"A4", TQuantity::A4, ""}};

constexpr int kOffsetBesideImage = 22;  // px

// Nothing for a column or a value that is shown as the table has it.
const TCellColumn* ColumnOf(const TDataset& table, std::size_t row, std::size_t field) {
  const TField& column = table.Fields()[field];
  const auto* found = std::ranges::find(kColumns, std::string_view(column.Key), &TCellColumn::field);
  if (found == std::end(kColumns) || column.Type != TFieldType::Single || table.IsNull(row, field)) return nullptr;
  return found;
}

// Temperatures always say where they stand; the others are marked while the alarm is on.
TCellImage ImageOf(TQuantity quantity, float value, const TDisplaySettings& settings) {
  if (static_cast<std::size_t>(quantity) >= kLimitedQuantityCount) return TCellImage::None;
  const TLimits& limits = settings.LimitsOf(quantity);
  if (quantity == TQuantity::Temperature) {
    if (IsBelow(limits, value)) return TCellImage::BelowMinimum;
    return IsAbove(limits, value) ? TCellImage::AboveMaximum : TCellImage::Within;
  }
  return settings.AlarmActive && IsOutside(limits, value) ? TCellImage::Alarm : TCellImage::None;
}

std::string TextOf(const TCellColumn& column, float value, const TCellFormats& formats) {
  return MaskFloat(formats[static_cast<std::size_t>(column.quantity)], value).append(column.unit);
}

}  // namespace

TCellDrawing DrawCell(const TDataset& table, std::size_t row, std::size_t field, const TDisplaySettings& settings) {
  TCellDrawing drawing;
  const TCellColumn* column = ColumnOf(table, row, field);
  if (column == nullptr) {
    drawing.text = table.DisplayText(row, field);
    return drawing;
  }
  const float value = table.Single(row, field);
  drawing.text = TextOf(*column, value, settings.Formats);
  drawing.image = ImageOf(column->quantity, value, settings);
  if (drawing.image != TCellImage::None) drawing.textOffset = kOffsetBesideImage;
  return drawing;
}

std::string CellText(const TDataset& table, std::size_t row, std::size_t field, const TCellFormats& formats) {
  const TCellColumn* column = ColumnOf(table, row, field);
  return column == nullptr ? table.DisplayText(row, field) : TextOf(*column, table.Single(row, field), formats);
}
