// Shock events: lists of three-axis samples with their peaks. The lists own their items by value, in contiguous memory,
// and are filled by appending only. While a read runs only the reader's thread may touch them.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/uAppendList.h"

struct TChannelInfo {
  std::string name;  // the display name of one channel
};

// One acceleration sample.
struct TEventValue {
  double time;                   // ms since TEventList::StartTime
  float xvalue, yvalue, zvalue;  // g, signed
};
static_assert(sizeof(TEventValue) == 24);

// One shock event.
class TEvent {
 public:
  explicit TEvent(std::int32_t id) : ID(id) {}

  // Appends a sample and updates the peaks. An axis that is NaN is left out, and then so is the vector magnitude.
  void AddValues(double time, float x, float y, float z);
  // The time of the first sample in ms, 0 when there is none.
  [[nodiscard]] double GetStartTime() const { return FItems.Count() == 0 ? 0.0 : FItems.Values().front().time; }
  // Throws std::out_of_range.
  [[nodiscard]] const TEventValue& GetItem(std::size_t Index) const { return FItems.At(Index); }
  [[nodiscard]] std::size_t Count() const { return FItems.Count(); }
  [[nodiscard]] std::span<const TEventValue> Values() const { return FItems.Values(); }
  // Gives back memory that was reserved for samples to come.
  void Trim() noexcept { FItems.Trim(); }

  std::int32_t ID;                    // 0 for the first event of the mission, counting up
  float Max = 0;                      // g: the maximum of |x|, |y|, |z| and the vector magnitude
  float MaxSingle = 0;                // g: the maximum of |x|, |y|, |z|
  std::string_view MaxAxis = "None";  // where MaxSingle stands: "X-pos" … "Z-neg"; always a literal

 private:
  TAppendList<TEventValue> FItems;
};

class TEventList {
 public:
  // The next sample opens a new event.
  void NewEvent() { FNewEvent = true; }
  // Adds a sample to the current event, opening one first if NewEvent was called. Samples before the first NewEvent of
  // an empty list are dropped.
  void AddValues(double time, float x, float y, float z);
  [[nodiscard]] const TEvent& GetItem(std::size_t Index) const { return FItems.at(Index); }
  [[nodiscard]] std::size_t Count() const { return FItems.size(); }
  [[nodiscard]] std::span<const TEvent> Events() const { return FItems; }
  // Back to the state at program start.
  void Clear() { *this = TEventList(); }
  void Trim();

  double StartTime = 0;                     // the mission's start, a date-time
  bool ValidCreator = false;                // the file names a known creator
  std::array<TChannelInfo, 3> ChannelInfo;  // x, y, z

 private:
  void OpenEvent();

  bool FNewEvent = false;
  std::vector<TEvent> FItems;
};

// The mission that is shown.
extern TEventList EventList;

inline void TEvent::AddValues(double time, float x, float y, float z) {
  FItems.Append({time, x, y, z});
  const float absX = std::fabs(x);
  const float absY = std::fabs(y);
  const float absZ = std::fabs(z);
  if (absX > Max) Max = absX;
  if (absY > Max) Max = absY;
  if (absZ > Max) Max = absZ;
  const double squares = double{x} * x + double{y} * y + double{z} * z;
  // The root rounds to a single above Max only if the squares exceed Max², which is exact in double; so most samples
  // need no root.
  if (squares > double{Max} * Max) {
    const auto magnitude = static_cast<float>(std::sqrt(squares));
    if (magnitude > Max) Max = magnitude;
  }
  if (absX > MaxSingle) {
    MaxSingle = absX;
    MaxAxis = x >= 0 ? "X-pos" : "X-neg";
  }
  if (absY > MaxSingle) {
    MaxSingle = absY;
    MaxAxis = y >= 0 ? "Y-pos" : "Y-neg";
  }
  if (absZ > MaxSingle) {
    MaxSingle = absZ;
    MaxAxis = z >= 0 ? "Z-pos" : "Z-neg";
  }
}

inline void TEventList::AddValues(double time, float x, float y, float z) {
  if (FNewEvent) OpenEvent();
  if (!FItems.empty()) FItems.back().AddValues(time, x, y, z);
}
