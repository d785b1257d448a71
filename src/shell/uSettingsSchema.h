// Every setting: where it stands in "settings.ini", its default, and the control of the window that holds it while the
// program runs. The program's behaviour follows the control; the file is its copy.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

enum class TSettingType {
  Bool,
  Index,  // of a list's entry, from 0
  Float,
  Text,
  Colour,     // a name such as "clBlue"
  WriteOnly,  // a Bool that starts switched off, whatever the file holds
};

struct TSetting {
  std::string_view section;
  std::string_view key;
  TSettingType type;
  std::string_view def;  // as the file holds it
  std::string_view control;
};

// In the order in which they are read.
std::span<const TSetting> Settings();
// The same in the order in which they are written: indexes in Settings().
std::span<const std::size_t> WritingOrder();
const TSetting& FindSetting(std::string_view control);
// 0xRRGGBB of a colour setting.
std::uint32_t DefaultColour(std::string_view control);

// The entries of the lists, by index.
inline constexpr std::array<std::string_view, 12> kDateFormats = {"yy-mm-dd", "yyyy-mm-dd", "mm-dd-yy", "mm-dd-yyyy",
                                                                  "dd-mm-yy", "dd-mm-yyyy", "yy.mm.dd", "yyyy.mm.dd",
                                                                  "mm.dd.yy", "mm.dd.yyyy", "dd.mm.yy", "dd.mm.yyyy"};
inline constexpr std::array<std::string_view, 12> kDecimalMasks = {
    "0.#", "0.##", "0.###", "0.####", "0.#####", "0.######", "0.0", "0.00", "0.000", "0.0000", "0.00000", "0.000000"};
inline constexpr std::array<std::string_view, 2> kFileFilters = {"*.kshock", "*.kshock & *.korvex"};
