#include "shell/uAlarmMarks.h"

#include "base/uText.h"
#include "model/uQuantities.h"

namespace {

constexpr int kOffsetBesideImage = 22;  // px

// Null when the cell shows what the table has: the column has no quantity, or the value is null.
const TQuantityRow* ColumnOf(const TDataset& table, std::size_t row, std::size_t field) {
  const TField& column = table.Fields()[field];
  if (column.Type != TFieldType::Single || table.IsNull(row, field)) return nullptr;
  const TQuantityRow* found = FindQuantity(&TQuantityRow::field, column.Key);
  if (found == nullptr) found = FindQuantity(&TQuantityRow::cardField, column.Key);
  return found == nullptr || !found->quantity ? nullptr : found;
}

// Temperatures always have a mark; the others have one only while the alarm is on.
TCellImage ImageOf(TQuantity quantity, float value, const TDisplaySettings& settings) {
  if (static_cast<std::size_t>(quantity) >= kLimitedQuantityCount) return TCellImage::None;
  const TLimits& limits = settings.LimitsOf(quantity);
  if (quantity == TQuantity::Temperature) {
    if (IsBelow(limits, value)) return TCellImage::BelowMinimum;
    return IsAbove(limits, value) ? TCellImage::AboveMaximum : TCellImage::Within;
  }
  return settings.alarmActive && IsOutside(limits, value) ? TCellImage::Alarm : TCellImage::None;
}

// Of a column without a quantity.
std::string PlainText(const TDataset& table, std::size_t row, std::size_t field) {
  const TField& column = table.Fields()[field];
  const bool masked = column.Type == TFieldType::Single && !column.DisplayFormat.empty() && !table.IsNull(row, field);
  return masked ? MaskFloat(column.DisplayFormat, double{table.Single(row, field)}) : table.DisplayText(row, field);
}

std::string TextOf(const TQuantityRow& column, float value, const TDisplaySettings& settings) {
  std::string text = MaskFloat(settings.FormatOf(*column.quantity), value);
  if (column.showsUnit) text.append(" ").append(column.unit);
  return text;
}

}  // namespace

TCellDrawing DrawCell(const TDataset& table, std::size_t row, std::size_t field, const TDisplaySettings& settings) {
  TCellDrawing drawing;
  const TQuantityRow* column = ColumnOf(table, row, field);
  if (column == nullptr) {
    drawing.text = PlainText(table, row, field);
    return drawing;
  }
  const float value = table.Single(row, field);
  drawing.text = TextOf(*column, value, settings);
  drawing.image = ImageOf(*column->quantity, value, settings);
  if (drawing.image != TCellImage::None) drawing.textOffset = kOffsetBesideImage;
  return drawing;
}

std::string CellText(const TDataset& table, std::size_t row, std::size_t field, const TDisplaySettings& settings) {
  const TQuantityRow* column = ColumnOf(table, row, field);
  return column == nullptr ? PlainText(table, row, field) : TextOf(*column, table.Single(row, field), settings);
}
