// Recordings of a given size to measure with.
#pragma once

#include <cstdint>
#include <filesystem>

struct TBenchSize {
  std::uint32_t events;
  std::uint32_t samplesPerEvent;
  std::uint32_t recordsPerReading;  // every so many acceleration records one carries a reading of all 12 slow sensors
  double noise = 0.25;              // g
};

// Writes noise with a shock in every event, in 15 channels.
void WriteBenchRecording(const std::filesystem::path& file, const TBenchSize& size);
