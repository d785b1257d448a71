// The table of the settings: where each stands in "settings.ini", its default, the control of the window that shows it,
// and its field in TSettings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "shell/uSettings.h"

template <class T>
using TFieldOf = T& (*)(TSettings&);
// A bool is "1" or "0" in the file, an int is the index of a list's entry, a std::uint32_t is a colour and stands in
// the file as uColourNames writes it.
using TSettingField =
    std::variant<TFieldOf<bool>, TFieldOf<int>, TFieldOf<double>, TFieldOf<std::string>, TFieldOf<std::uint32_t>>;

struct TSetting {
  std::string_view section;
  std::string_view key;
  std::string_view def;  // as the file holds it
  std::string_view control;
  TSettingField field;
  bool isRead = true;  // else it has its default at every start, whatever the file holds
};

// Visits a TSettingField with a function for each type.
template <class... T>
struct TByType : T... {
  using T::operator()...;
};
template <class... T>
TByType(T...) -> TByType<T...>;

// In the order in which they are read.
std::span<const TSetting> Settings();
// The same in the order in which they are written: indexes in Settings().
std::span<const std::size_t> WritingOrder();
