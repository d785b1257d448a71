#include "analysis/uShockResponse.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <future>
#include <limits>
#include <utility>

#include "analysis/uShockMetrics.h"
#include "base/uText.h"

namespace {

// What limits a spectrum's use.
enum class TDoubt { NoBaseline, CutShort, Clipped };

constexpr std::string_view kDoubts[] = {
    "no baseline subtracted, fewer than 8 samples before the shock",
    "the record ends before the shock does, so low frequencies come out too small",
    "the sensor was at the end of its range, so the response comes out too small",
};

// The widest limits of all events.
TResponseLimits LimitsOf(std::span<const TEvent* const> events, const std::stop_token& stop) {
  TResponseLimits limits{std::numeric_limits<double>::infinity(), 0};
  for (const TEvent* event : events) {
    if (stop.stop_requested()) break;
    const TTimeGrid grid = FitTimeGrid(event->Values());
    if (grid.problem != TTimeGridProblem::None) continue;
    const TResponseLimits one = ResponseLimitsOf(grid);
    limits = {std::min(limits.from, one.from), std::max(limits.to, one.to)};
  }
  return limits;
}

// The envelope of some events, and what was found on the way.
class TGathered {
 public:
  TGathered(const TResponseRequest& request, std::span<const double> hertz) : FRequest(request), FHertz(hertz) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    for (const double one : hertz) Lines.push_back({{one, kNaN, kNaN, kNaN, kNaN}, TResponseRange::None});
  }

  void Add(const TEvent& event, const std::stop_token& stop) {
    const TShockSamples shock = PrepareShock(event.Values(), FRequest.baseline, FRequest.levelOn);
    const std::string why = WhyNone(shock);
    if (!why.empty()) {
      ++LeftOut;
      Reason = fmt::format("{}: {}", event.ID, why);
      return;
    }
    GridDid = WhatGridDid(shock.grid);
    BaselineDid = WhatBaselineDid(shock, FRequest.baseline);
    Count(TDoubt::NoBaseline, FRequest.baseline == TBaseline::Before && shock.baselineCount == 0);
    Count(TDoubt::CutShort, IsCutShort(shock));
    Count(TDoubt::Clipped, IsClipped(event.Values()));
    const std::vector<TResponseLine> lines = CalcResponseSpectrum(shock, FHertz, FRequest.options, stop);
    if (!stop.stop_requested()) AddToEnvelope(Lines, lines);
  }

  // Of later events.
  void Merge(const TGathered& other) {
    AddToEnvelope(Lines, other.Lines);
    LeftOut += other.LeftOut;
    for (std::size_t i = 0; i < Doubts.size(); ++i) Doubts[i] += other.Doubts[i];
    if (!other.Reason.empty()) Reason = other.Reason;
    if (!other.GridDid.empty()) GridDid = other.GridDid;
    if (!other.BaselineDid.empty()) BaselineDid = other.BaselineDid;
  }

  std::vector<TResponseLine> Lines;
  std::size_t LeftOut = 0;
  std::array<std::size_t, std::size(kDoubts)> Doubts{};
  std::string Reason, GridDid, BaselineDid;  // of the last event that has one

 private:
  void Count(TDoubt doubt, bool found) { Doubts[static_cast<std::size_t>(doubt)] += found ? 1 : 0; }

  [[nodiscard]] std::string WhyNone(const TShockSamples& shock) const {
    if (shock.Count() == 0) return WhyNoGrid(shock.grid);
    if (std::isnan(shock.x[0]) && std::isnan(shock.y[0]) && std::isnan(shock.z[0])) return std::string(kNoAxis);
    const auto isNone = [&](double hertz) { return ResponseRangeOf(hertz, shock.Rate()) == TResponseRange::None; };
    if (!std::ranges::all_of(FHertz, isNone)) return {};
    return fmt::format("None of the frequencies lies between a millionth and a quarter of the sampling rate of {} Hz.",
                       MaskFloat("0.###", shock.Rate()));
  }

  const TResponseRequest& FRequest;
  std::span<const double> FHertz;
};

TGathered Gather(std::span<const TEvent* const> events, const TResponseRequest& request, std::span<const double> hertz,
                 std::size_t threads, TResponseProgress& progress) {
  std::vector<std::future<TGathered>> parts;
  for (std::size_t i = 0; i < threads; ++i) {
    const std::size_t begin = events.size() * i / threads;
    const auto part = events.subspan(begin, events.size() * (i + 1) / threads - begin);
    parts.push_back(std::async([part, &request, hertz, &progress] {
      TGathered gathered(request, hertz);
      for (const TEvent* event : part) {
        if (progress.stop.stop_requested()) break;
        gathered.Add(*event, progress.stop);
        ++progress.events;
      }
      return gathered;
    }));
  }
  TGathered all(request, hertz);
  for (std::future<TGathered>& part : parts) all.Merge(part.get());
  return all;
}

std::vector<std::string> Remarks(const TGathered& gathered, std::size_t events) {
  const auto share = [events](std::size_t count) { return fmt::format("{} of {} events", count, events); };
  std::vector<std::string> remarks;
  if (gathered.LeftOut > 0) {
    remarks.push_back(fmt::format("{} left out; event {}", share(gathered.LeftOut), gathered.Reason));
  }
  for (std::size_t i = 0; i < std::size(kDoubts); ++i) {
    if (gathered.Doubts[i] == 0) continue;
    remarks.push_back(events == 1 ? std::string(kDoubts[i])
                                  : fmt::format("{}: {}", share(gathered.Doubts[i]), kDoubts[i]));
  }
  if (events == 1 && !gathered.GridDid.empty()) remarks.push_back(gathered.GridDid);
  return remarks;
}

}  // namespace

TShockResponse CalcShockResponse(std::span<const TEvent* const> events, const TResponseRequest& request,
                                 std::size_t threads, TResponseProgress& progress) {
  const TResponseLimits limits = LimitsOf(events, progress.stop);
  std::vector<double> hertz = request.frequencies;
  if (hertz.empty()) {
    hertz = OctaveFrequencies(request.from.value_or(limits.from), request.to.value_or(limits.to),
                              static_cast<int>(request.octave));
  }
  TGathered gathered = Gather(events, request, hertz, std::clamp<std::size_t>(threads, 1, events.size() + 1), progress);
  TShockResponse response;
  response.reason = gathered.Reason;
  if (progress.stop.stop_requested() || gathered.LeftOut == events.size()) return response;
  response.remarks = Remarks(gathered, events.size());
  if (std::ranges::min(hertz) < limits.from * (1 - 1e-9)) {
    response.remarks.push_back(
        fmt::format("below {} Hz (1/duration) the record is shorter than a period", MaskFloat("0.###", limits.from)));
  }
  const bool isDoubted = gathered.Doubts[static_cast<std::size_t>(TDoubt::NoBaseline)] > 0;
  if (events.size() == 1 && !isDoubted) response.baseline = gathered.BaselineDid;
  response.lines = std::move(gathered.Lines);
  return response;
}
