#include "shell/uReferenceFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "base/uIniFile.h"
#include "base/uText.h"
#include "model/uQuantities.h"

namespace {

constexpr const char *kReferenceSection = "Reference", *kSensorsSection = "Reference sensors";
constexpr const char *kRecording = "Recording", *kEventsKey = "Events", *kDays = "Days", *kHours = "Hours",
                     *kDirections = "Directions";
constexpr std::size_t kMaxEvents = 1'000'000'000;
constexpr std::size_t kMaxPath = 4096;  // bytes
constexpr std::size_t kMaxDirections = 27;

[[noreturn]] void RefuseValue(std::string_view key) {
  throw std::runtime_error(fmt::format("The layout's [{}] makes no sense at \"{}\".", kReferenceSection, key));
}

// Throws unless all of the text is one number.
template <class TNumber>
TNumber NumberOf(std::string_view text, std::string_view key) {
  const auto number = NumberIn<TNumber>(text);
  if (!number) RefuseValue(key);
  return *number;
}

std::vector<std::string_view> Parts(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> parts;
  while (!text.empty()) {
    if (const std::string_view part = TakeUntil(text, separator); !part.empty()) parts.push_back(part);
  }
  return parts;
}

std::string DistributionText(const TDistribution& distribution) {
  std::string text;
  for (const auto& [value, count] : distribution) {
    text += fmt::format("{}{}", text.empty() ? "" : " ", value);
    if (count > 1) text += fmt::format(" x{}", count);
  }
  return text;
}

TDistribution ReadDistribution(const std::string& text, std::string_view key, std::size_t events) {
  TDistribution distribution;
  std::size_t count = 0;
  for (const std::string_view part : Parts(text, " ")) {
    if (part.starts_with('x')) {
      if (distribution.empty() || distribution.back().count != 1) RefuseValue(key);
      distribution.back().count = NumberOf<std::uint32_t>(part.substr(1), key);
      if (distribution.back().count < 2) RefuseValue(key);
      count += distribution.back().count - 1;
    } else {
      const auto value = NumberOf<float>(part, key);
      const bool isRising = distribution.empty() || value >= distribution.back().value;
      if (!std::isfinite(value) || !isRising || distribution.size() == kMaxDistribution) RefuseValue(key);
      distribution.push_back({value, 1});
      ++count;
    }
    if (count > events) RefuseValue(key);
  }
  return distribution;
}

void ReadHours(const std::string& text, TReference& reference) {
  const auto parts = Parts(text, " ");
  if (parts.size() != reference.hours.size()) RefuseValue(kHours);
  std::size_t count = 0;
  for (std::size_t hour = 0; hour < parts.size(); ++hour) {
    reference.hours[hour] = NumberOf<std::uint32_t>(parts[hour], kHours);
    count += reference.hours[hour];
  }
  if (count > reference.events) RefuseValue(kHours);
}

void ReadDirections(const std::string& text, TReference& reference) {
  std::size_t count = 0;
  for (const std::string_view part : Parts(text, ",")) {
    const auto numbers = Parts(part, " ");
    if (numbers.size() != 4 || reference.directions.size() == kMaxDirections) RefuseValue(kDirections);
    std::int8_t axes[3];
    for (std::size_t i = 0; i < std::size(axes); ++i) {
      axes[i] = NumberOf<std::int8_t>(numbers[i], kDirections);
      if (std::abs(axes[i]) > 1) RefuseValue(kDirections);
    }
    const TDirection direction{axes[0], axes[1], axes[2]};
    if (std::ranges::count(reference.directions, direction, &TDirectionCount::direction) > 0) RefuseValue(kDirections);
    reference.directions.push_back({direction, NumberOf<std::uint32_t>(numbers[3], kDirections)});
    count += reference.directions.back().count;
  }
  if (count > reference.events) RefuseValue(kDirections);
}

void ReadSensors(const TIniFile& ini, TReference& reference) {
  for (const std::string& name : ini.Keys(kSensorsSection)) {
    const auto* known = FindQuantity(&TQuantityRow::sensorName, name);
    const std::string text = ini.ReadString(kSensorsSection, name, {});
    const auto parts = Parts(text, " ");
    const bool isThere = std::ranges::count(reference.sensors, name, &TReferenceSensor::name) > 0;
    if (known == nullptr || !known->quantity || isThere || parts.size() != 2) RefuseValue(name);
    const auto min = NumberOf<float>(parts[0], name);
    const auto max = NumberOf<float>(parts[1], name);
    if (!(min <= max)) RefuseValue(name);
    reference.sensors.push_back({name, min, max});
  }
}

std::string Key(const TEventQuantity& quantity) {
  return quantity.name;
}

}  // namespace

std::string ReferenceSections(const TReference& reference) {
  TIniFile ini;
  ini.WriteString(kReferenceSection, kRecording, reference.file);
  ini.WriteString(kReferenceSection, kEventsKey, std::to_string(reference.events));
  ini.WriteString(kReferenceSection, kDays, fmt::format("{}", reference.days));
  ini.WriteString(kReferenceSection, kHours, fmt::format("{}", fmt::join(reference.hours, " ")));
  std::string directions;
  for (const auto& [direction, count] : reference.directions) {
    AppendListItem(directions, fmt::format("{} {} {} {}", direction.x, direction.y, direction.z, count));
  }
  if (reference.hasPulses) ini.WriteString(kReferenceSection, kDirections, directions);
  for (std::size_t i = 0; i < kEventQuantities.size(); ++i) {
    ini.WriteString(kReferenceSection, Key(kEventQuantities[i]), DistributionText(reference.distributions[i]));
  }
  for (const auto& [name, min, max] : reference.sensors) {
    ini.WriteString(kSensorsSection, name, fmt::format("{} {}", min, max));
  }
  return ini.Text();
}

std::optional<TReference> ReadReference(const std::filesystem::path& layout) {
  const TIniFile ini = TIniFile::Load(layout);
  if (!ini.HasSection(kReferenceSection)) return std::nullopt;
  const auto text = [&ini](const std::string& key) { return ini.ReadString(kReferenceSection, key, {}); };
  TReference reference;
  reference.file = text(kRecording);
  if (reference.file.empty() || reference.file.size() > kMaxPath || !IsPlainLine(reference.file))
    RefuseValue(kRecording);
  reference.events = NumberOf<std::uint32_t>(text(kEventsKey), kEventsKey);
  if (reference.events > kMaxEvents) RefuseValue(kEventsKey);
  reference.days = NumberOf<double>(text(kDays), kDays);
  if (!(reference.days >= 0 && reference.days <= kMaxReferenceDays)) RefuseValue(kDays);
  ReadHours(text(kHours), reference);
  reference.hasPulses = ini.Find(kReferenceSection, kDirections).has_value();
  ReadDirections(text(kDirections), reference);
  for (std::size_t i = 0; i < kEventQuantities.size(); ++i) {
    const std::string key = Key(kEventQuantities[i]);
    reference.distributions[i] = ReadDistribution(text(key), key, reference.events);
  }
  ReadSensors(ini, reference);
  return reference;
}
