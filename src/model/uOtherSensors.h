// The slow sensors: lists of readings. They own their items by value, in contiguous memory, and are filled by appending
// only. While a read runs only the reader's thread may touch them.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "model/uAppendList.h"
#include "model/uEvents.h"

struct TSensorValue {
  double time;   // ms since TEventList::StartTime
  float xvalue;  // the reading, in the sensor's unit
};
static_assert(sizeof(TSensorValue) == 16);

class TSensor {
 public:
  TSensor(std::int32_t id, std::string name) : ID(id), Name(std::move(name)) {}

  void AddValues(double time, float value) { FItems.Append({time, value}); }
  // The time of the first reading in ms, 0 when there is none.
  [[nodiscard]] double GetStartTime() const { return FItems.Count() == 0 ? 0.0 : FItems.Values().front().time; }
  // Throws std::out_of_range.
  [[nodiscard]] const TSensorValue& GetItem(std::size_t Index) const { return FItems.At(Index); }
  [[nodiscard]] std::size_t Count() const { return FItems.Count(); }
  [[nodiscard]] std::span<const TSensorValue> Values() const { return FItems.Values(); }
  void Trim() noexcept { FItems.Trim(); }

  std::int32_t ID;   // its index in the list when it was made
  std::string Name;  // "Temperature", "RH" …, see kKnownChannels

 private:
  TAppendList<TSensorValue> FItems;
};

class TSensorList {
 public:
  void NewSensor() { FNewSensor = true; }
  // Appends to the last sensor; does nothing when the list is empty. Kept on purpose: unlike TEventList::AddValues it
  // never makes an item and takes no notice of NewSensor; the reader makes the sensors with Add.
  void AddValues(double time, float value);
  // Appends a sensor without readings. References to other sensors do not survive.
  TSensor& Add(std::string name);
  [[nodiscard]] const TSensor& GetItem(std::size_t Index) const { return FItems.at(Index); }
  [[nodiscard]] TSensor& GetItem(std::size_t Index) { return FItems.at(Index); }
  [[nodiscard]] std::size_t Count() const { return FItems.size(); }
  [[nodiscard]] std::span<const TSensor> Sensors() const { return FItems; }
  // Back to the state at program start.
  void Clear() { *this = TSensorList(); }
  void Trim();

  double StartTime = 0;  // the mission's start, a date-time
  std::array<TChannelInfo, 9> ChannelInfo;

 private:
  bool FNewSensor = false;
  std::vector<TSensor> FItems;
};

// The mission that is shown.
extern TSensorList SensorList;
