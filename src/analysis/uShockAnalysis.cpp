#include "analysis/uShockAnalysis.h"

#include <fmt/format.h>

#include "base/uText.h"

namespace {

std::string Millimetres(double value) {
  return MaskFloat(value < 10 ? "0.#" : "0", value);
}

}  // namespace

TShockAnalysis AnalyseShock(const TEvent& event, double levelOn) {
  TShockAnalysis analysis;
  const TShockSamples shock = PrepareShock(event.Values(), TBaseline::Before, levelOn);
  analysis.pulse = CalcPulse(event.Values(), shock);
  analysis.reason = WhyNoPulse(analysis.pulse, shock);
  if (analysis.pulse.problem == TPulseProblem::None) analysis.drop = DropBracketOf(analysis.pulse.velocityChange);
  analysis.fall = CalcFall(WithBaseline(shock));
  const std::string why = WhyNoFall(analysis.fall);
  if (!analysis.reason.empty() && !why.empty()) analysis.reason += ' ';
  analysis.reason += why;
  return analysis;
}

std::optional<TLargestVelocityChange> LargestVelocityChange(const TEventList& events, double levelOn) {
  std::optional<TLargestVelocityChange> largest;
  for (std::size_t i = 0; i < events.Count(); ++i) {
    const auto samples = events.GetItem(i).Values();
    const TPulse pulse = CalcPulse(samples, PrepareShock(samples, TBaseline::Before, levelOn));
    if (pulse.problem != TPulseProblem::None) continue;
    if (!largest || pulse.velocityChange > largest->velocityChange) largest = {i, pulse.velocityChange};
  }
  return largest;
}

std::string DropHeightText(const TShockAnalysis& analysis) {
  const TFall& fall = analysis.fall;
  std::string text;
  if (fall.problem == TFallProblem::None) {
    text = fall.isLeast ? fmt::format("at least {} mm", Millimetres(fall.height))
                        : fmt::format("{} mm ({} to {})", Millimetres(fall.height), Millimetres(fall.min),
                                      Millimetres(fall.max));
  }
  if (analysis.drop) {
    AppendListItem(text, fmt::format("{} to {} mm by velocity change", Millimetres(analysis.drop->min),
                                     Millimetres(analysis.drop->max)));
  }
  return text;
}
