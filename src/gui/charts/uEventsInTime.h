// The events of a mission in the order of time, as the events chart shows them. Main thread only.
//
// An event's place is its number in the order of time, its index that in the list. Events without a finite time have no
// place.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "analysis/uEnvelope.h"
#include "analysis/uExtents.h"
#include "gui/charts/uSeries.h"
#include "model/uEvents.h"

class TEventsInTime {
 public:
  static constexpr std::size_t kNoAxis = 3;
  // A stem is that of a series, or of the events that the filter hides.
  static constexpr std::size_t kHidden = kSeriesCount;

  // Copies what a chart needs, 17 bytes an event. All events are visible.
  void Set(const TEventList& events);
  void Clear() { *this = {}; }
  // A mask by index; an empty one marks all. False when it is the mask already.
  bool SetVisible(std::vector<bool> visible);

  [[nodiscard]] std::size_t Count() const { return FTimes.size(); }
  [[nodiscard]] double Time(std::size_t place) const { return FTimes[place]; }  // a date-time
  [[nodiscard]] float Max(std::size_t place) const { return FMax[place]; }      // g
  // Of the largest axis, with its sign; the total where no axis is the largest.
  [[nodiscard]] float Peak(std::size_t place) const {
    return FAxes[place] == kNoAxis ? FMax[place] : FMaxSingle[place];
  }
  // 0 x, 1 y, 2 z, kNoAxis none
  [[nodiscard]] std::size_t Axis(std::size_t place) const { return FAxes[place]; }
  // g, of all finite peaks
  [[nodiscard]] float MaxPeak() const { return FMaxPeak; }
  [[nodiscard]] bool HasFilter() const { return !FVisible.empty(); }
  [[nodiscard]] bool IsVisible(std::size_t place) const { return FVisible.empty() || FVisible[IndexOf(place)]; }

  [[nodiscard]] std::size_t IndexOf(std::size_t place) const { return FIndexes.empty() ? place : FIndexes[place]; }
  [[nodiscard]] std::optional<std::size_t> PlaceOf(std::optional<std::size_t> index) const;
  // The visible event that begins at exactly this time; of several the largest.
  [[nodiscard]] std::optional<std::size_t> PlaceOn(double time) const;
  // What stands at a place, g; NaN for nothing.
  [[nodiscard]] float Stem(std::size_t place, std::size_t series) const;
  // The place of the highest stem in each column; the columns span date-times.
  [[nodiscard]] std::vector<std::size_t> StemsIn(const TColumns& columns, std::size_t series) const;

 private:
  void SortByTime();
  void Measure() const;

  std::vector<double> FTimes;
  std::vector<float> FMax, FMaxSingle;  // g
  std::vector<std::uint8_t> FAxes;      // of the peak
  std::vector<std::uint32_t> FIndexes;  // empty while every place is its index
  std::vector<bool> FVisible;           // by index; empty while all are
  float FMaxPeak = 0;
  // By series; measured when they are first asked for, because most changes of the filter meet a chart out of sight.
  mutable std::array<TExtents, kSeriesCount + 1> FStems;
  mutable bool FIsMeasured = false;
};
