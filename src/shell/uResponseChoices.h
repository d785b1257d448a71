// The choices of the response spectrum and the file of its limit curve, which the next run of the program starts with.
// They stand in "response-spectrum.ini" in the settings folder:
//
//   [Response]
//   Response = acceleration
//   Sign = maximax
//   Q = 10
//   Octave = 12
//   Baseline = before
//   Limit = /data/limits/pallet.csv
#pragma once

#include <filesystem>

#include "analysis/uShockResponse.h"

inline constexpr auto kKeptResponseFile = "response-spectrum.ini";

struct TResponseChoices {
  TResponseRequest request = {};     // what belongs to a recording has its default
  std::filesystem::path limit = {};  // empty: none
};

// What is missing or unknown has its default. Throws when the file is there and cannot be read.
TResponseChoices ReadKeptResponseChoices(const std::filesystem::path& settingsFolder);
// Throws when the file cannot be written; the older one is then as it was.
void KeepResponseChoices(const std::filesystem::path& settingsFolder, const TResponseChoices& choices);
