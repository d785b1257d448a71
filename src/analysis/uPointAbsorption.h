// Which dots of a picture are drawn when many overlap. Pure; any thread. Coordinates are pixels, y counts down.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

struct TDot {
  double x, y;        // where the highest of those stands that it stands for
  std::size_t item;   // the one of them with the largest value
  std::size_t count;  // how many they are
  double min, max;    // of their values

  // Counts in those that a later dot stands for, wherever they stand.
  void Take(const TDot& later) {
    count += later.count;
    min = std::min(min, later.min);
    if (later.max > max) {
      max = later.max;
      item = later.item;
    }
  }
};

// Gathers items into one dot a cell of the picture, which stands where the highest of its items stands; so there are
// never more dots than cells, however many items come.
class TDotGrid {
 public:
  // Cells of `cell` × `cell` px; what lies outside the width and height is not taken.
  TDotGrid(double left, double top, double width, double height, double cell);

  void Add(double x, double y, std::size_t item, double value) {
    const double column = (x - FLeft) * FCellsPerPixel;
    const double row = (y - FTop) * FCellsPerPixel;
    // Also false for what is no number.
    if (!(column >= 0 && column < FColumns && row >= 0 && row < FRows)) return;
    const auto cell =
        std::size_t{static_cast<std::uint32_t>(column)} * FCellsInColumn + static_cast<std::uint32_t>(row);
    const TDot dot{x, y, item, 1, value, value};
    std::uint32_t& number = FDotOfCell[cell];
    if (number == 0) {
      FDots.push_back(dot);
      number = static_cast<std::uint32_t>(FDots.size());
      return;
    }
    TDot& into = FDots[number - 1];
    into.Take(dot);
    if (y < into.y) {
      into.x = x;
      into.y = y;
    }
  }
  // In the order in which their cells were met.
  [[nodiscard]] std::vector<TDot>& Dots() { return FDots; }

 private:
  double FLeft, FTop, FCellsPerPixel;
  double FColumns, FRows;
  std::size_t FCellsInColumn;
  // Its number counted from 1; 0 for an empty cell. Column by column, because items come in the order of time.
  std::vector<std::uint32_t> FDotOfCell;
  std::vector<TDot> FDots;
};

// Dots that overlap become one, at the highest of them; until none do. radiusOf(count) px does not fall with the count.
void AbsorbDots(std::vector<TDot>& dots, const std::function<double(std::size_t)>& radiusOf);
