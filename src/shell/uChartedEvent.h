// The selected event as the shock chart shows it, with what stands beside it: what an export of the chart holds.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/uSpectrum.h"
#include "export/uCurveRows.h"
#include "shell/uIMissionViews.h"
#include "shell/uShownMission.h"

struct TChartedEvent {
  std::size_t index = 0;
  const TEvent* event = nullptr;  // of the mission
  bool highPass = false;
  std::string_view spectrumType = {};  // empty for curves
  TSpectrum spectrum = {};
  std::optional<TShownResponse> response = {};
  std::vector<TBesideCurve> beside = {};  // the visible pinned events
  std::string lack = {};                  // says that there is nothing to export, else empty
  std::string why = {};                   // the reason
};

// Of an open recording. Spectra are calculated anew.
TChartedEvent ChartedEvent(const TShownMission& mission, const IMissionViews& views);
