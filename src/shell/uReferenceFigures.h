// The differences between the shown mission and the reference, in words. Main thread only.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/uMissionFigures.h"
#include "analysis/uReference.h"
#include "shell/uShownVerdict.h"

// One figure of both. Texts have their units.
struct TReferenceFigure {
  std::string label;
  std::string here, there;  // "–" where there is none
  std::string delta;        // "+5.1 g", "±0"; empty where one of both is missing
  std::optional<TVerdictQuestion> question = {};
};

// `isWhole` is false for the verdict on a part of the mission: that has no events a day. Nor have recordings of less
// than a day.
std::vector<TReferenceFigure> ReferenceFigures(const TReference& reference, const TVerdict& verdict, bool isWhole,
                                               const TDisplaySettings& settings);

// As lines of the mission's details: "Δ +5.1 g (19.76 g against 14.66 g)".
std::vector<TFigure> DeltaFigures(const std::vector<TReferenceFigure>& figures);

// "Δ against demo: 300 events in 10 d"; that the shown mission is the reference; empty without one.
std::string ReferenceLine(const TShownMission& mission);
