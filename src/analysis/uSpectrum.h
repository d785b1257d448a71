// The one-sided spectrum of a shock event. Pure functions; any thread.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/uFourier.h"
#include "analysis/uTimeGrid.h"
#include "model/uEvents.h"

enum class TSpectrumType {
  Amplitude,  // g: a sine shows its amplitude
  Power,      // g², mean square: a sine shows half its squared amplitude
  PSD,  // g²/Hz: the power by the noise bandwidth of the window. Its sum by the line distance is Σ(w·x)²/Σw², the mean
        // square of the weighted samples; that of the samples themselves only where all weigh the same
  Decibel,  // dB: the amplitude above 1 g, kMinDecibel at least
};

inline constexpr std::array<std::pair<std::string_view, TSpectrumType>, 4> kSpectrumTypes = {{
    {"Amplitude", TSpectrumType::Amplitude},
    {"Power", TSpectrumType::Power},
    {"PSD", TSpectrumType::PSD},
    {"Decibel", TSpectrumType::Decibel},
}};

// An amplitude of nothing; far below what a single can resolve.
inline constexpr double kMinDecibel = -200;

enum class TSpectrumProblem {
  None,
  NoGrid,    // the times allow none; the grid says why
  NoWeight,  // a window of the user's that weighs nothing, or is not finite
};

struct TSpectrumLine {
  double hertz;
  double x, y, z;
  double total;  // of the three axes' power at this frequency
};

struct TSpectrum {
  TSpectrumProblem problem = TSpectrumProblem::None;
  TTimeGrid grid;                    // of the first SpectrumSizeFor(n) samples
  std::vector<TSpectrumLine> lines;  // from 0 Hz to half the sampling rate; none when there is a problem
};

// Of the points of the grid, weighted by the window and padded with zeros to N = SpectrumSizeFor(points): N/2 + 1
// lines. Points past the N-th are left out. The constant part is not taken away. An axis with a sample that is not
// finite becomes NaN as a whole, and so does the total. Throws std::invalid_argument for fwUserDef without a function.
TSpectrum CalcSpectrum(std::span<const TEventValue> samples, TSpectrumType type, TWeightingWindow window,
                       const TWeightingFunction& userDef = {});

// Why it has no lines, as a sentence for people; empty when there is no problem.
std::string WhyNoSpectrum(const TSpectrum& spectrum);
