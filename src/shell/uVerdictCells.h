// The words of the verdict strip, a cell for each question that it answers. Main thread only.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "analysis/uMissionFigures.h"
#include "shell/uShownVerdict.h"

// What a click on a cell does.
enum class TVerdictAnswer {
  Nothing,
  AllEvents,
  SelectEvent,
  FilterAboveAlarm,
  EditLimits,
  ShowExcursion,
  ShowWhole,
  ShowStatistics
};

struct TVerdictCell {
  std::string value = {};  // "281"; may be empty, the note then says it all
  std::string unit = {};   // of the value, "g"
  std::string note = {};   // "of 300 events above 6 g"
  std::string when = {};   // date and time of what the cell names
  std::string delta = {};  // to the reference: "Δ +5.1 g"
  std::string tip = {};    // what the cell leaves out, and where a click leads
  bool isOut = false;      // beyond a limit that somebody chose
  TVerdictAnswer answer = TVerdictAnswer::Nothing;
};
using TVerdictCells = std::array<TVerdictCell, kVerdictQuestionCount>;  // by TVerdictQuestion

// The verdict is that of the whole mission; of the filter the cells say how many events it lets through.
TVerdictCells VerdictCells(const TVerdict& verdict, const TShownMission& mission);

// Whether the recording passes the profile in force, as one line; empty without one.
struct TJudgementLine {
  TJudgementOutcome outcome = TJudgementOutcome::NotJudged;
  std::string text;  // 'failed the limits "Fragile": …'
};
TJudgementLine JudgementLine(const TVerdict& verdict, const TDisplaySettings& settings);

// The verdict as lines of the mission's details; what there is nothing to say of has no line.
std::vector<TFigure> VerdictFigures(const TVerdict& verdict, const TDisplaySettings& settings);

// The longest excursion of the worst sensor with as much time on both sides; nothing when no sensor is out of limits.
std::optional<TTimeSpan> WorstExcursion(const TVerdict& verdict, const TDisplaySettings& settings);
