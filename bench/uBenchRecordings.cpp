#include "bench/uBenchRecordings.h"

#include <array>
#include <bit>
#include <cmath>
#include <random>

#include "model/uBlockTypes.h"
#include "model/uQuantities.h"
#include "model/uRecordingWriter.h"

void WriteBenchRecording(const std::filesystem::path& file, const TBenchSize& size) {
  TRecordingHead head;
  head.startTime = 46000;
  head.mission.adxl_level_on = 4;
  head.mission.adxl_level_off = 3;
  for (const TQuantityRow& channel : kKnownChannels) head.channels.emplace_back(channel.nameInFile);

  TRecordingWriter writer(file, head);
  std::mt19937 random(1);
  const auto reading = [](double value) {
    return std::bit_cast<std::uint32_t>(static_cast<float>(std::round(value * 256) / 256));
  };
  const auto noise = [&] { return static_cast<double>(random() % 64) / 64 * size.noise; };
  std::array<std::uint32_t, kChannelCount> record{};
  std::uint64_t number = 0;
  for (std::uint32_t event = 0; event < size.events; ++event) {
    const double startMs = 600.0 * 1000 / 1600 * size.samplesPerEvent * event / 100;
    for (std::uint32_t sample = 0; sample < size.samplesPerEvent; ++sample, ++number) {
      const double shock = 12 * std::exp(-0.02 * sample) * std::sin(0.4 * sample);
      record.fill(kNoValue);
      record[0] = reading(noise() + shock);
      record[1] = reading(noise() + 0.3 * shock);
      record[2] = reading(noise() + 1);
      if (number % size.recordsPerReading == 0) {
        for (std::size_t channel = kAxisCount; channel < record.size(); ++channel) {
          record[channel] = reading(20 + static_cast<double>(channel) + noise());
        }
      }
      writer.Append(startMs + sample * 0.625, record);
    }
    record.fill(kNoValue);
    record[0] = kEndOfEvent;
    writer.Append(startMs + size.samplesPerEvent * 0.625, record);
  }
  writer.Close();
}
