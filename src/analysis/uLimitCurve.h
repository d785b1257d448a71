// A limit for response spectra: the acceleration that is allowed at each natural frequency. Pure but for reading; any
// thread.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

struct TLimitPoint {
  double hertz;
  double g;
};

// At least two points, by rising frequency.
using TLimitCurve = std::vector<TLimitPoint>;

// A line "Hz,g" for each point; the first line may be titles, and lines that are empty or begin with "#" are skipped.
// Throws std::runtime_error with the reason as a sentence, which names the line: what is no two numbers above 0, a
// frequency that does not rise, fewer than two points.
TLimitCurve ParseLimitCurve(std::string_view text);
// The same from a file. Throws also when it cannot be read, is larger than 1 MB or is no text.
TLimitCurve ReadLimitCurve(const std::filesystem::path& file);

// g at a frequency: a straight line between two points where both axes are logarithmic. Nothing outside the points.
std::optional<double> LimitAt(const TLimitCurve& limit, double hertz);

// How far a value is below the limit, in dB; below 0 it is above. Nothing outside the points, or where it is not above
// 0.
std::optional<double> MarginAt(const TLimitCurve& limit, double hertz, double g);
