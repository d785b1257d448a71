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
