// The response spectrum of one shock event, or the envelope of several, and what limits its use. Any thread.
#pragma once

#include <atomic>
#include <cstddef>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "analysis/uResponseSpectrum.h"
#include "model/uEvents.h"

struct TResponseRequest {
  TResponseOptions options;
  TBaseline baseline = TBaseline::Before;
  double levelOn = 0;               // g; the first sample that reaches it ends what counts as before the shock
  std::size_t octave = 12;          // frequencies in an octave
  std::optional<double> from, to;   // Hz; 1/duration and a quarter of the sampling rate unless given
  std::vector<double> frequencies;  // Hz, instead of octaves

  bool operator==(const TResponseRequest&) const = default;
};

struct TShockResponse {
  std::vector<TResponseLine> lines;  // none when no event has a spectrum
  std::string reason;                // why the last event that has none has none, with its ID before it
  std::string baseline;              // of one event: what was subtracted; empty where a remark says why nothing was
  std::vector<std::string> remarks;  // what limits the use of the lines, each a part of a sentence
};

// What a calculation shares with the thread that waits for it.
struct TResponseProgress {
  std::stop_token stop;                // requested: the calculation ends soon, and its result means nothing
  std::atomic<std::size_t> events{0};  // that are done
};

// Of one event, or the envelope of several, which are divided among so many threads. Throws as CalcResponseSpectrum.
TShockResponse CalcShockResponse(std::span<const TEvent* const> events, const TResponseRequest& request,
                                 std::size_t threads, TResponseProgress& progress);
