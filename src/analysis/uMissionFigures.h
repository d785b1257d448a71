// A mission as lines of a label and a text, for the details panel, the report and the command line. Texts may hold any
// characters of the recording; an empty one is "-".
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/uMissionSummary.h"
#include "model/uQuantities.h"

struct TFigure {
  std::string label;
  std::string text;
};

// The decimal mask of a quantity.
using TFormats = std::function<std::string_view(TQuantity)>;

// The mission header: names, logger, times, and its four texts.
std::vector<TFigure> HeaderFigures(const TMissionData& mission);
// A sentence when an axis is missing, which is why there are no events; else empty.
std::string WhyNoEvents(const TAxesPresent& axes);

// Events, peak, intensity, ToT and IoT, and the time span over events and sensors; where an axis is missing, that it is
// why there are no events.
std::vector<TFigure> EventFigures(const TMissionSummary& summary, const TEventList& events, const TAxesPresent& axes,
                                  const TFormats& formats);
// The largest velocity change and its event; nothing when none has a pulse. It analyses every event.
std::optional<TFigure> VelocityChangeFigure(const TEventList& events, double levelOn);
// A line for each axis and each day with events: how many, their largest peak and IoT total.
std::vector<TFigure> GroupFigures(const TEventGroups& groups, const TEventList& events, const TFormats& formats);
// A line for each sensor, by the name that people use: readings, minimum and maximum.
std::vector<TFigure> SensorFigures(const TMissionSummary& summary, const TFormats& formats);
