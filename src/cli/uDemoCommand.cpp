#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <exception>
#include <numbers>
#include <vector>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "cli/uCommands.h"
#include "model/uBlockTypes.h"
#include "model/uQuantities.h"
#include "model/uRecordingWriter.h"
#include "platform/uSafeFile.h"

namespace {

constexpr double kStartTime = 46083;  // 2026-03-02
constexpr double kDays = 10;
constexpr double kRate = 1600;      // samples a second
constexpr double kRange = 16;       // g, where the accelerometer clips
constexpr double kStepsPerG = 256;  // its resolution
constexpr double kQuietHourMs = 3600000;
constexpr double kTruckFromHour = 55.5, kTruckToHour = 60;  // third day, 07:30 to 12:00
constexpr double kDropHour = 110.25;                        // fifth day, 14:15

using std::numbers::pi;

// SplitMix64: the same numbers on every machine.
class TRandom {
 public:
  explicit TRandom(std::uint64_t seed) : FState(seed) {}
  std::uint64_t Next() {
    FState += 0x9E3779B97F4A7C15U;
    std::uint64_t z = FState;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }
  double Uniform(double from, double to) { return from + (to - from) * static_cast<double>(Next() >> 11) * 0x1p-53; }
  // Close to normal, with standard deviation `sigma`.
  double Noise(double sigma) { return sigma * (Uniform(-1, 1) + Uniform(-1, 1) + Uniform(-1, 1)); }

 private:
  std::uint64_t FState;
};

struct TVector {
  double x = 0, y = 0, z = 0;
};

enum class TKind { HalfSine, Ringing, Truck, Drop };

struct TDemoEvent {
  double startMs;
  std::uint32_t samples;
  TKind kind;
};

bool InTruck(double hour) {
  return hour >= kTruckFromHour && hour < kTruckToHour;
}

// How many events an hour of the mission draws: few at night, many on the road.
double Weight(int hour) {
  const int ofDay = hour % 24;
  if (InTruck(hour)) return 25;
  return ofDay >= 7 && ofDay < 19 ? 1.0 : 0.08;
}

// Start times in rising order that follow the weights.
std::vector<double> StartTimes(std::uint32_t count, TRandom& random) {
  constexpr int kHours = static_cast<int>(kDays * 24);
  double total = 0;
  for (int hour = 0; hour < kHours; ++hour) total += Weight(hour);
  std::vector<double> starts;
  starts.reserve(count);
  int hour = 0;
  double before = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    const double at = (i + random.Uniform(0.05, 0.95)) / count * total;
    while (hour + 1 < kHours && before + Weight(hour) < at) before += Weight(hour++);
    starts.push_back((hour + (at - before) / Weight(hour)) * kQuietHourMs);
  }
  return starts;
}

std::vector<TDemoEvent> PlanEvents(const TDemoSize& size, TRandom& random) {
  constexpr double kGapMs = 50;
  std::vector<TDemoEvent> events;
  double freeFrom = 0;
  bool dropped = false;
  for (const double wanted : StartTimes(size.events, random)) {
    const double start = std::max(wanted, freeFrom);
    const double hour = start / kQuietHourMs;
    const auto usual = static_cast<std::uint32_t>(random.Uniform(0.1, 0.6) * kRate);
    TDemoEvent event{start, size.samples == 0 ? usual : size.samples, TKind::HalfSine};
    if (InTruck(hour)) {
      event.kind = TKind::Truck;
    } else if (!dropped && hour >= kDropHour) {
      event.kind = TKind::Drop;
      if (size.samples == 0) event.samples = static_cast<std::uint32_t>(0.6 * kRate);
      dropped = true;
    } else if (random.Uniform(0, 1) < 0.5) {
      event.kind = TKind::Ringing;
    }
    events.push_back(event);
    freeFrom = start + event.samples / kRate * 1000 + kGapMs;
  }
  return events;
}

TVector RandomDirection(TRandom& random) {
  // Shocks come mostly along the axes of the box.
  TVector v{random.Noise(0.25), random.Noise(0.25), random.Noise(0.25)};
  const double sign = random.Uniform(0, 1) < 0.5 ? -1 : 1;
  const std::array<double*, 3> axes = {&v.x, &v.y, &v.z};
  *axes[random.Next() % axes.size()] += sign;
  const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  return {v.x / length, v.y / length, v.z / length};
}

double HalfSine(double t, double length) {
  return t < 0 || t > length ? 0 : std::sin(pi * t / length);
}
double Ringing(double t, double hertz, double decay) {
  return t < 0 ? 0 : std::exp(-t / decay) * std::sin(2 * pi * hertz * t);
}

// One pulse of an event; a sum of pulses over gravity and noise makes the event.
struct TDemoPulse {
  TKind kind;
  double at;      // s
  double height;  // g
  double length;  // s
  double hertz;
  TVector direction;

  [[nodiscard]] double At(double t) const {
    return height * (kind == TKind::HalfSine ? HalfSine(t - at, length) : Ringing(t - at, hertz, length));
  }
};

// A demo of very long events stays quiet behind their beginning.
constexpr double kMaxRideSeconds = 2;

std::vector<TDemoPulse> PlanPulses(const TDemoEvent& event, TRandom& random) {
  const double length = event.samples / kRate;
  const auto pulse = [&random](TKind kind, double at, double height, double duration) {
    return TDemoPulse{kind, at, height, duration, random.Uniform(30, 120), RandomDirection(random)};
  };
  const double trigger = std::min(0.1, length * 0.25);
  switch (event.kind) {
    case TKind::Truck: {
      std::vector<TDemoPulse> pulses = {pulse(TKind::Ringing, trigger, random.Uniform(7.5, 10), 0.03)};
      for (double at = trigger + 0.06; at < std::min(length, kMaxRideSeconds); at += random.Uniform(0.05, 0.2)) {
        pulses.push_back(pulse(TKind::Ringing, at, random.Uniform(0.5, 3), 0.04));
      }
      return pulses;
    }
    case TKind::Drop: {
      std::vector<TDemoPulse> pulses = {pulse(TKind::HalfSine, length * 0.6, 45, 0.012),
                                        pulse(TKind::Ringing, length * 0.6 + 0.004, 9, 0.05),
                                        pulse(TKind::HalfSine, length * 0.85, 6, 0.015)};
      pulses[0].direction = {0.2, -0.1, 0.97};
      return pulses;
    }
    case TKind::Ringing:
      return {pulse(TKind::Ringing, trigger, random.Uniform(9, 22), random.Uniform(0.02, 0.08))};
    case TKind::HalfSine:
      break;
  }
  return {pulse(TKind::HalfSine, trigger, random.Uniform(5.5, 14), random.Uniform(0.006, 0.03))};
}

std::uint32_t Reading(double value, double stepsPerUnit) {
  return std::bit_cast<std::uint32_t>(static_cast<float>(std::round(value * stepsPerUnit) / stepsPerUnit));
}

// The slow sensors at a moment, in the order of kKnownChannels.
std::array<std::uint32_t, 12> SlowReadings(double days, bool marked, TRandom& random) {
  const double sun = std::sin(2 * pi * (days - 0.375));  // warmest at 15:00, coldest at 03:00
  const double noon = std::max(0.0, std::cos(2 * pi * (days - 0.5)));
  const bool inTruck = InTruck(days * 24);
  const double temperature = 17 + 6.5 * sun + 1.5 * std::sin(days * 0.9) + (inTruck ? -4 : 0) + random.Noise(0.03);
  const double humidity = std::clamp(58 - 14 * sun - 4 * std::sin(days * 0.9) + random.Noise(0.2), 5.0, 99.0);
  const double light = inTruck ? 2 + random.Noise(0.3) : 640 * noon * noon + 4 + random.Noise(1.0 + 8 * noon);
  const double pressure =
      1009 + 8 * std::sin(days * 0.7 + 1) +
      (inTruck ? -18 * std::sin(pi * (days * 24 - kTruckFromHour) / (kTruckToHour - kTruckFromHour)) : 0) +
      random.Noise(0.05);
  const double battery = 4.12 - 0.055 * days + 0.012 * sun + random.Noise(0.001);
  return {Reading(temperature, 100),
          Reading(temperature + 0.35 + random.Noise(0.02), 100),
          Reading(temperature + 0.8 + random.Noise(0.02), 100),
          Reading(humidity, 100),
          Reading(std::max(0.0, light), 10),
          Reading(pressure, 100),
          Reading(battery, 1000),
          Reading(marked ? 1 : 0, 1),
          Reading(2.5 + 0.8 * std::sin(2 * pi * days / 2) + random.Noise(0.004), 1000),
          Reading(0.12 * days + random.Noise(0.002), 1000),
          Reading(inTruck ? 4.8 + random.Noise(0.02) : 0.02 + std::fabs(random.Noise(0.004)), 1000),
          Reading(20 + 2.2 * sun + random.Noise(0.05), 100)};
}

TRecordingHead DemoHead(const TDemoSize& size) {
  TRecordingHead head;
  head.startTime = kStartTime;
  for (const TQuantityRow& channel : kKnownChannels) head.channels.emplace_back(channel.nameInFile);
  TMissionData& mission = head.mission;
  mission.fileVersion = 1;
  mission.version = 1;
  mission.sKorvexType = "Korvex165";
  mission.sKorvexVersion = "V2.04";
  mission.sID = "165-00042";
  mission.sTitle = "Demo: ten days in transit";
  mission.sOperator = "ShockScope";
  mission.rec_starttime = mission.rtc_starttime = kStartTime;
  mission.rec_endtime = mission.rtc_stoptime = kStartTime + kDays;
  mission.rec_ctrl = 128;
  mission.options = 5;
  mission.rec_startmode = 2;
  mission.rec_stopmode = 2;
  mission.adxl_level_on = 4;
  mission.adxl_level_off = 2.5;
  mission.rec_fast_rate = 1 / kRate;
  mission.buffer_pre_cnts = 160;
  mission.buffer_post_cnts = 480;
  mission.rec_std_mask = 1 | 32 | 128 | 256 | 512;
  mission.tb_meas_rate = size.readings == 0 ? 0 : kDays * 86400 / size.readings;
  return head;
}

// Writes the slow readings that fall before a moment of the mission.
class TSlowSeries {
 public:
  TSlowSeries(const TDemoSize& size, TRandom& random, TRecordingWriter& writer)
      : FCount(size.readings), FRandom(random), FWriter(writer) {}

  void WriteUntil(double ms) {
    std::array<std::uint32_t, kChannelCount> record{};
    record.fill(kNoValue);
    for (; FNext < FCount && TimeOf(FNext) <= ms; ++FNext) {
      // Somebody pressed the button when the truck left and a day after the drop.
      const bool marked = FNext == IndexAt(kTruckFromHour) || FNext == IndexAt(kDropHour + 24);
      std::ranges::copy(SlowReadings(TimeOf(FNext) / kMsPerDay, marked, FRandom), record.begin() + kAxisCount);
      FWriter.Append(TimeOf(FNext), record);
    }
  }

 private:
  [[nodiscard]] double TimeOf(std::uint32_t index) const { return index * (kDays * kMsPerDay / FCount); }
  [[nodiscard]] std::uint32_t IndexAt(double hour) const {
    return static_cast<std::uint32_t>(hour / 24 / kDays * FCount);
  }

  std::uint32_t FCount;
  std::uint32_t FNext = 0;
  TRandom& FRandom;
  TRecordingWriter& FWriter;
};

void WriteEvent(const TDemoEvent& event, TRandom& random, TSlowSeries& slow, TRecordingWriter& writer) {
  const std::vector<TDemoPulse> pulses = PlanPulses(event, random);
  std::array<std::uint32_t, kChannelCount> record{};
  record.fill(kNoValue);
  const double length = event.samples / kRate;
  for (std::uint32_t i = 0; i < event.samples; ++i) {
    const double t = i / kRate;
    const bool falls = event.kind == TKind::Drop && t > length * 0.1 && t < length * 0.6;
    TVector a{random.Noise(0.04), random.Noise(0.04), (falls ? 0 : 1) + random.Noise(0.04)};
    for (const TDemoPulse& pulse : pulses) {
      const double height = pulse.At(t);
      a = {a.x + height * pulse.direction.x, a.y + height * pulse.direction.y, a.z + height * pulse.direction.z};
    }
    const std::array<double, kAxisCount> axes = {a.x, a.y, a.z};
    std::ranges::transform(axes, record.begin(),
                           [](double g) { return Reading(std::clamp(g, -kRange, kRange), kStepsPerG); });
    const double ms = event.startMs + t * 1000;
    slow.WriteUntil(ms);
    writer.Append(ms, record);
  }
  std::fill_n(record.begin(), kAxisCount, kEndOfEvent);
  writer.Append(event.startMs + length * 1000, record);
}

void WriteDemo(const std::filesystem::path& path, const TDemoSize& size) {
  TRandom random(size.seed);
  TRecordingWriter writer(path, DemoHead(size));
  TSlowSeries slow(size, random, writer);
  for (const TDemoEvent& event : PlanEvents(size, random)) WriteEvent(event, random, slow, writer);
  slow.WriteUntil(kDays * kMsPerDay);
  writer.Close();
}

}  // namespace

TStatus DemoCommand(const std::string& out, const TDemoSize& size, const TConsole& console) {
  try {
    WriteBesideAndRename(PathFromUtf8(out), [&size](const std::filesystem::path& path) { WriteDemo(path, size); });
    return TStatus::Done;
  } catch (const std::exception& error) {
    Complain(console, out, Describe(error));
    return TStatus::CannotWrite;
  }
}
