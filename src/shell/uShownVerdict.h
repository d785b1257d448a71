// The verdict on the shown mission, and its words for the overview's strip, the report and kshock. Values stand in the
// formats of the settings, limits as they were typed. Texts may hold names that the user gave, with whatever
// characters. Main thread only.
#pragma once

#include <optional>
#include <string>

#include "analysis/uLimitProfile.h"
#include "analysis/uVerdict.h"
#include "shell/uSettings.h"
#include "shell/uShownMission.h"

// What the verdict answers, each in a cell of the overview's strip.
enum class TVerdictQuestion { Events, Peak, AboveAlarm, Intensity, OutOfLimits, Recorded };
inline constexpr std::size_t kVerdictQuestionCount = 6;

// The limits in force and where each comes from; nothing while the alarm is off. Without a profile a limit that equals
// its default counts as one that nobody chose.
std::optional<TVerdictLimits> LimitsInForce(const TDisplaySettings& settings);

TVerdict VerdictOf(const TShownMission& mission, const TVerdictPart& part = {});

// Whether a verdict by these limits passes the profile in force; nothing without one, or while the alarm is off.
std::optional<TJudgement> JudgementOf(const TVerdict& verdict, const TDisplaySettings& settings);

// "12 of 300 events above 6 g"; "all events exceed the trigger level of 4 g; set limits to judge"; "no limits are set".
std::string EventsAboveText(const TVerdict& verdict, const TDisplaySettings& settings);

// "19.76 g (16 g on Y-pos, clipped: the true peak is higher)".
std::string PeakText(const TPeakVerdict& peak, const TDisplaySettings& settings);

// "3 of 300 events clipped: their true peaks are higher"; empty when none is.
std::string ClippedText(const TVerdict& verdict);

// Where a sensor was out of limits. Without `byDefaultLimits` only limits that somebody chose count.
struct TBeyondLimits {
  std::string text;                          // "humidity above 60 %RH"; empty when it was out of no such limit
  double timeOut = 0;                        // ms
  std::optional<TExcursion> first, longest;  // of equally long ones the first below the lower limit
};
TBeyondLimits BeyondLimits(const TSensorVerdict& sensor, bool byDefaultLimits, const TDisplaySettings& settings);

// "humidity above 60 %RH for 3 d 4 h", "temperature below -4 °C or above 40 °C (default limit) for 2 h". Without
// `byDefaultLimits` only what is beyond limits that somebody chose. Empty when the sensor is out of no such limit.
std::string OutOfLimitsText(const TSensorVerdict& sensor, bool byDefaultLimits, const TDisplaySettings& settings);

// What people call a sensor, as a title has it: "Temperature", or the user's name of an analog input.
std::string SensorLabel(const TQuantityRow& quantity, const TDisplaySettings& settings);

// "humidity 40.2 … 72.9 %RH"; empty without a reading.
std::string ExtremesText(const TSensorVerdict& sensor, const TDisplaySettings& settings);

// All of it in one sentence, without its period: "12 of 300 events above 6 g; the highest peak, event 171,
// reached 19.76 g (16 g on Y-pos, clipped: the true peak is higher) on 2026-03-04 13:26; humidity above 60 %RH for 3 d
// 4 h". The peak comes first where nobody chose limits for events. Without limits it says so and gives the extremes of
// the sensors.
std::string VerdictSentence(const TVerdict& verdict, const TDisplaySettings& settings);

// "4 of 300 events above 10 g (at most 3 allowed)"; "humidity above 60 %RH for 3 d 4 h (none allowed)".
std::string FindingText(const TFinding& finding, const TVerdict& verdict, const TDisplaySettings& settings);

// Whether the recording passes a profile, and by what not, without a period: 'failed the limits "Fragile": 4 of 300
// events above 10 g (at most 3 allowed)'; 'passed the limits "Fragile": none of 300 events above 10 g; humidity never
// above 60 %RH; no reading of light'; 'not judged by the limits "settings": no limit was chosen'. What fails stands
// before what is allowed. The outcome comes first, then that the recording is damaged or, with `filtered`, that the
// verdict is on a part of it: 'passed the limits "Fragile" in the filtered part: …'.
std::string JudgementSentence(const TJudgement& judgement, const TVerdict& verdict, const TLimitProfile& profile,
                              const TDisplaySettings& settings, bool filtered = false);
