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

}  // namespace

std::string CellText(const TDataset& table, std::size_t row, std::size_t field, const TCellFormats& formats) {
  const TField& column = table.Fields()[field];
  const auto* found = std::ranges::find(kColumns, std::string_view(column.Key), &TCellColumn::field);
  if (found == std::end(kColumns) || column.Type != TFieldType::Single || table.IsNull(row, field)) {
    return table.DisplayText(row, field);
  }
  const std::string_view mask = formats[static_cast<std::size_t>(found->quantity)];
  return MaskFloat(mask, table.Single(row, field)).append(found->unit);
}
