// A mission in lines of a label and a text: what the details panel, the report and the command line print. Texts are
// as in the recording, with whatever characters it holds; "-" stands where there is nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "analysis/uMissionSummary.h"

struct TFigure {
  std::string label;
  std::string text;
};

// The mission header: names, logger, times, and its four texts.
std::vector<TFigure> HeaderFigures(const TMissionData& mission);
// Why there are no events, as a sentence, where an axis is missing; empty where none is.
std::string WhyNoEvents(const TAxesPresent& axes);

// Events, peak, intensity, ToT and IoT, and the time span over events and sensors; where an axis is missing, that it is
// why there are no events.
std::vector<TFigure> EventFigures(const TMissionSummary& summary, const TEventList& events, const TAxesPresent& axes);
// A line a sensor: readings, least and largest.
std::vector<TFigure> SensorFigures(const TMissionSummary& summary);
