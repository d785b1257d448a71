#include "model/uOtherSensors.h"

TSensorList SensorList;

void TSensorList::AddValues(double time, float value) {
  if (!FItems.empty()) FItems.back().AddValues(time, value);
}

TSensor& TSensorList::Add(std::string name) {
  return FItems.emplace_back(static_cast<std::int32_t>(FItems.size()), std::move(name));
}

void TSensorList::Trim() {
  for (TSensor& sensor : FItems) sensor.Trim();
  FItems.shrink_to_fit();
}
