#include "cli/uConsole.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <new>

std::string Describe(const std::exception& error) {
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) return "There is not enough memory.";
  if (const auto* file = dynamic_cast<const std::filesystem::filesystem_error*>(&error)) {
    return "The file cannot be written: " + file->code().message() + ".";
  }
  return error.what();
}

TStatus WorseOf(TStatus a, TStatus b) {
  constexpr std::array kFromGoodToBad = {TStatus::Done,           TStatus::NoResult,   TStatus::Damaged,
                                         TStatus::NotDisplayable, TStatus::CannotRead, TStatus::CannotWrite,
                                         TStatus::WrongUse};
  return std::ranges::find(kFromGoodToBad, a) > std::ranges::find(kFromGoodToBad, b) ? a : b;
}
