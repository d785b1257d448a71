#include "cli/uConsole.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "base/uFiles.h"
#include "base/uText.h"

std::string Describe(const std::exception& error) {
  const bool ofFile = dynamic_cast<const std::filesystem::filesystem_error*>(&error) != nullptr;
  return (ofFile ? "The file cannot be written: " : "") + ReasonOf(error);
}

void Complain(const TConsole& console, std::string_view file, std::string_view what) {
  console.err(fmt::format("kshock: {}: {}\n", Printable(file), Printable(what)));
}

TStatus WorseOf(TStatus a, TStatus b) {
  constexpr std::array kFromGoodToBad = {TStatus::Done,           TStatus::NoResult,   TStatus::Damaged,
                                         TStatus::NotDisplayable, TStatus::CannotRead, TStatus::CannotWrite,
                                         TStatus::WrongUse};
  return std::ranges::find(kFromGoodToBad, a) > std::ranges::find(kFromGoodToBad, b) ? a : b;
}
