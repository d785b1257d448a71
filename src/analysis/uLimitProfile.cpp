#include "analysis/uLimitProfile.h"

#include <algorithm>
#include <cmath>

namespace {

void JudgeLimit(const TLimitVerdict& limit, TFinding finding, TJudgement& judgement) {
  if (!limit.IsOutOfChosen()) return;
  finding.amount = std::round(limit.timeOut);
  finding.fails = finding.allowed == 0 || finding.amount > finding.allowed;
  judgement.findings.push_back(finding);
}

bool HasChosen(const TJudgedLimits& limits) {
  return limits.minSource != TLimitSource::Default || limits.maxSource != TLimitSource::Default;
}

bool IsRecorded(TQuantity quantity, const TVerdict& verdict) {
  return std::ranges::any_of(verdict.sensors, [quantity](const TSensorVerdict& sensor) {
    return sensor.quantity->quantity == quantity && sensor.min;
  });
}

}  // namespace

bool AreEventsJudged(const TJudgedLimits& acceleration) {
  return acceleration.maxSource == TLimitSource::User ||
         (acceleration.minSource == TLimitSource::User && acceleration.values.min > 0);
}

TJudgement JudgeByProfile(const TVerdict& verdict, const TLimitProfile& profile) {
  TJudgement judgement;
  judgement.eventsJudged = verdict.above && AreEventsJudged(verdict.above->limits);
  bool anyJudged = judgement.eventsJudged;
  if (judgement.eventsJudged && verdict.above->count > 0) {
    const bool fails = verdict.above->count > profile.allowedEvents;
    judgement.findings.push_back(
        {{}, false, static_cast<double>(verdict.above->count), static_cast<double>(profile.allowedEvents), fails});
  }
  for (std::size_t i = 0; i < verdict.sensors.size(); ++i) {
    const TSensorVerdict& sensor = verdict.sensors[i];
    const TAllowedTimes& allowed = profile.allowedTimes.at(static_cast<std::size_t>(*sensor.quantity->quantity));
    JudgeLimit(sensor.below, {i, true, 0, allowed.below, false}, judgement);
    JudgeLimit(sensor.above, {i, false, 0, allowed.above, false}, judgement);
  }
  for (std::size_t i = 0; i < profile.limits.size(); ++i) {
    const auto quantity = static_cast<TQuantity>(i);
    if (quantity == TQuantity::Acceleration || !HasChosen(profile.limits[i])) continue;
    if (IsRecorded(quantity, verdict)) {
      anyJudged = true;
    } else {
      judgement.notRecorded.push_back(quantity);
    }
  }
  judgement.empty = verdict.events == 0 && std::ranges::none_of(verdict.sensors, [](const TSensorVerdict& sensor) {
                      return sensor.min.has_value();
                    });
  const bool failed = std::ranges::any_of(judgement.findings, &TFinding::fails);
  if (anyJudged && !judgement.empty) judgement.outcome = failed ? TJudgementOutcome::Failed : TJudgementOutcome::Passed;
  return judgement;
}
