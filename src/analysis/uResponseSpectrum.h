// The shock response spectrum: for each natural frequency the largest response of a damped oscillator whose base moves
// as the sensor did. Pure functions; any thread.
//
// The oscillator is a ramp-invariant digital filter (D. O. Smallwood, "An improved recursive formula for calculating
// shock response spectra", 1981; ISO 18431-4): exact where the acceleration is a straight line between samples. It
// starts at rest, with an input of 0 one step before the first sample; zeros follow the last one.
#pragma once

#include <array>
#include <span>
#include <stop_token>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/uShockSamples.h"
#include "analysis/uSpectrum.h"

enum class TResponse {
  Acceleration,    // g, of the mass, absolute
  PseudoVelocity,  // m/s, 2π·fn times the displacement of the mass from its base
};

inline constexpr std::array<std::pair<std::string_view, TResponse>, 2> kResponses = {{
    {"acceleration", TResponse::Acceleration},
    {"pseudo-velocity", TResponse::PseudoVelocity},
}};

// Which extreme of a response counts; each is given as an amount, 0 where the response never has that sign.
enum class TResponseSign { Maximax, Positive, Negative };

inline constexpr std::array<std::pair<std::string_view, TResponseSign>, 3> kResponseSigns = {{
    {"maximax", TResponseSign::Maximax},
    {"positive", TResponseSign::Positive},
    {"negative", TResponseSign::Negative},
}};

struct TResponseOptions {
  double quality = 10;  // Q, above 0.5: 1/(2·damping ratio)
  TResponse response = TResponse::Acceleration;
  TResponseSign sign = TResponseSign::Maximax;

  bool operator==(const TResponseOptions&) const = default;
};

// How far a line can be trusted. The response is read at the samples alone, which loses up to 1 − cos(π·fn/fs) of a
// smooth pulse and more of a sharp one.
enum class TResponseRange {
  Valid,  // up to fs/10: a loss of up to 4.9 %, of a terminal sawtooth 9.7 %
  Rough,  // up to fs/4: up to 29 %, of a terminal sawtooth 40 %
  None,   // above, or below a millionth of fs: not computed
};

inline constexpr std::array<std::string_view, 3> kResponseRangeNames = {"valid", "rough", "none"};

// Of a frequency at a sampling rate, both in Hz.
TResponseRange ResponseRangeOf(double hertz, double rate);

// Over natural frequencies. The total is the largest length over time of the vector of the three responses; the same
// for every sign.
struct TResponseLine : TSpectrumLine {
  TResponseRange range;
};

// A line for each frequency, in their order. A line of TResponseRange::None, and an axis that is NaN, with it the
// total, has NaN. Throws std::invalid_argument for a quality that is not finite and above 0.5. Without samples: no
// lines. Asked to stop it returns soon, and the values mean nothing.
std::vector<TResponseLine> CalcResponseSpectrum(const TShockSamples& shock, std::span<const double> hertz,
                                                const TResponseOptions& options, const std::stop_token& stop = {});

// 10 Hz times 2^(k/perOctave) for every whole k that leads into from … to, ends included, rising. None unless both are
// above 0 and finite.
std::vector<double> OctaveFrequencies(double from, double to, int perOctave);

// Where a spectrum begins and ends unless the user says otherwise: 1/duration … fs/4. Of a grid without a problem; a
// record of fewer than five points has `from` above `to`.
struct TResponseLimits {
  double from, to;  // Hz
};
TResponseLimits ResponseLimitsOf(const TTimeGrid& grid);

// Keeps the larger of each value; a line that is not computed changes nothing. The range becomes the worst of those
// that were. Both have the same frequencies.
void AddToEnvelope(std::span<TResponseLine> envelope, std::span<const TResponseLine> lines);
