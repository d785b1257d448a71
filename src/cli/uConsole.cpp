#include "cli/uConsole.h"

#include <algorithm>
#include <array>

TStatus WorseOf(TStatus a, TStatus b) {
  constexpr std::array kFromGoodToBad = {TStatus::Done,       TStatus::Damaged,     TStatus::NotDisplayable,
                                         TStatus::CannotRead, TStatus::CannotWrite, TStatus::WrongUse};
  return std::ranges::find(kFromGoodToBad, a) > std::ranges::find(kFromGoodToBad, b) ? a : b;
}
