// Which dots of a picture are drawn when many overlap. Pure; any thread. Coordinates are pixels, y counts down.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "analysis/uEnvelope.h"

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
    const double column = CellsTo(x);
    const double row = (y - FTop) * FCellsPerPixel;
    // Also false for what is no number.
    if (!(column >= 0 && column < FColumns && row >= 0 && row < FRows)) return;
    Put(
        ColumnAt(column)[static_cast<std::uint32_t>(row)], [x](std::size_t) { return x; }, y, item, value);
  }
  // Adds those items of [begin, end) for which isShown(item) holds, faster than one by one. xOf(item) rises; it is
  // asked only where a column of cells begins and where a dot stands.
  template <class TIsShown, class TXOf, class TYOf, class TValueOf>
  void AddRising(std::size_t begin, std::size_t end, const TIsShown& isShown, const TXOf& xOf, const TYOf& yOf,
                 const TValueOf& valueOf) {
    const auto columnOf = [&](std::size_t item) { return CellsTo(xOf(item)); };
    std::size_t width = 1;  // items in a column, as in the one before
    while (begin < end) {
      const double column = std::floor(columnOf(begin));
      std::size_t next = begin + 1;
      if (column >= 0 && column < FColumns) {
        next = FirstAtOrAfterNear(std::min(begin + width, end), begin, end, columnOf, column + 1);
        std::uint32_t* const cells = ColumnAt(column);
        for (std::size_t block = begin; block < next; block += kBlock) {
          AddToColumn(cells, block, std::min(block + kBlock, next), isShown, xOf, yOf, valueOf);
        }
      }
      width = next - begin;
      begin = next;
    }
  }
  // In the order in which their cells were met.
  [[nodiscard]] std::vector<TDot>& Dots() { return FDots; }

 private:
  [[nodiscard]] double CellsTo(double x) const { return (x - FLeft) * FCellsPerPixel; }

  [[nodiscard]] std::uint32_t* ColumnAt(double column) {
    return FDotOfCell.data() + std::size_t{static_cast<std::uint32_t>(column)} * FCellsInColumn;
  }

  // At most kBlock items. Finds all their cells before it changes dots: each search would wait for the change before.
  template <class TIsShown, class TXOf, class TYOf, class TValueOf>
  void AddToColumn(std::uint32_t* cells, std::size_t begin, std::size_t end, const TIsShown& isShown, const TXOf& xOf,
                   const TYOf& yOf, const TValueOf& valueOf) {
    struct THit {
      std::uint32_t row;
      std::uint32_t after;  // begin
      double y;
    };
    std::array<THit, kBlock> hits;
    std::size_t count = 0;
    for (std::size_t item = begin; item < end; ++item) {
      if (!isShown(item)) continue;
      const double y = yOf(item);
      const double row = (y - FTop) * FCellsPerPixel;
      if (!(row >= 0 && row < FRows)) continue;
      hits[count++] = {static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(item - begin), y};
    }
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t item = begin + hits[i].after;
      Put(cells[hits[i].row], xOf, hits[i].y, item, valueOf(item));
    }
  }

  template <class TXOf>
  void Put(std::uint32_t& number, const TXOf& xOf, double y, std::size_t item, double value) {
    if (number == 0) {
      FDots.push_back({xOf(item), y, item, 1, value, value});
      number = static_cast<std::uint32_t>(FDots.size());
      return;
    }
    TDot& dot = FDots[number - 1];
    dot.Take({dot.x, dot.y, item, 1, value, value});
    if (y < dot.y) {
      dot.x = xOf(item);
      dot.y = y;
    }
  }

  static constexpr std::size_t kBlock = 256;

  double FLeft, FTop, FCellsPerPixel;
  double FColumns, FRows;
  std::size_t FCellsInColumn;
  // Its number counted from 1; 0 for an empty cell. Column by column, because items come in the order of time.
  std::vector<std::uint32_t> FDotOfCell;
  std::vector<TDot> FDots;
};

// Dots that overlap become one, at the highest of them; until none do. radiusOf(count) px does not fall with the count.
void AbsorbDots(std::vector<TDot>& dots, const std::function<double(std::size_t)>& radiusOf);
