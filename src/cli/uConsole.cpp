#include "cli/uConsole.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "base/uFiles.h"

std::string Describe(const std::exception& error) {
  const bool ofFile = dynamic_cast<const std::filesystem::filesystem_error*>(&error) != nullptr;
  return (ofFile ? "The file cannot be written: " : "") + ReasonOf(error);
}

TStatus WorseOf(TStatus a, TStatus b) {
  constexpr std::array kFromGoodToBad = {TStatus::Done,           TStatus::NoResult,   TStatus::Damaged,
                                         TStatus::NotDisplayable, TStatus::CannotRead, TStatus::CannotWrite,
                                         TStatus::WrongUse};
  return std::ranges::find(kFromGoodToBad, a) > std::ranges::find(kFromGoodToBad, b) ? a : b;
}
