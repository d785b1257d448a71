#include "model/uMissionText.h"

#include <fmt/format.h>

#include <cmath>
#include <string_view>
#include <utility>

#include "base/uDateTime.h"
#include "base/uText.h"

namespace {

constexpr unsigned kMarkerOption = 1;
constexpr unsigned kConfirmationOption = 2;  // also the polarity of the control input
constexpr unsigned kStatusOption = 4;        // also the stop by push-button
constexpr unsigned kNoRingBuffer = 128;      // in rec_ctrl

std::string StartText(const TMissionData& data) {
  switch (data.rec_startmode) {
    case 1:
      return "Start immediately";
    case 2:
      return "Start at " + FormatDateTime(DateTimeMask(), data.rtc_starttime);
    case 3:
      return "Start by_push-button";
    // Kept on purpose: the same option bit selects H for the start and L for the stop.
    case 4:
      return (data.options & kConfirmationOption) != 0 ? "Start by control input H" : "Start by control input L";
    default:
      return "Start undefined (" + std::to_string(data.rec_startmode) + ")";
  }
}

std::string StopText(const TMissionData& data) {
  switch (data.rec_stopmode) {
    case 0:
    case 1:
      return "";
    case 2:
      return ", Stop at " + FormatDateTime(DateTimeMask(), data.rtc_stoptime);
    case 3:
      return (data.options & kStatusOption) != 0 ? ", Stop by push-button" : "";
    case 4:
      return (data.options & kConfirmationOption) != 0 ? ", Stop by control input L" : ", Stop by control input H";
    default:
      return ", Stop undefined (" + std::to_string(data.rec_stopmode) + ")";
  }
}

std::string FastRateText(const TMissionData& data) {
  const double rate = 1 / data.rec_fast_rate;
  return std::isfinite(rate) ? fmt::format("~{} Hz", MaskFloat("0", rate)) : "?";
}

}  // namespace

std::string StartStopText(const TMissionData& Data) {
  return StartText(Data) + StopText(Data);
}

std::string LimitText(const TMissionData& Data) {
  return "Limit= " + GeneralFloat(Data.adxl_level_on) + " g, Measurement rate= " + FastRateText(Data);
}

std::string StdChannelsText(const TMissionData& Data) {
  constexpr std::pair<unsigned, std::string_view> kChannels[] = {
      {1, "p"}, {32, "RH"}, {128, "T"}, {256, "Light"}, {512, "analog"}};
  std::string text;
  for (const auto& [bit, name] : kChannels) {
    if ((Data.rec_std_mask & bit) != 0) AppendListItem(text, name);
  }
  if (text.empty()) return "-";
  AppendListItem(text, "Measurement rate= " + MaskFloat("0", Data.tb_meas_rate) + " s");
  return text;
}

std::string OptionsText(const TMissionData& Data) {
  std::string text;
  if ((Data.options & kMarkerOption) != 0) AppendListItem(text, "Marker function");
  if ((Data.options & kConfirmationOption) != 0) AppendListItem(text, "Confirmation function");
  if ((Data.options & kStatusOption) != 0) AppendListItem(text, "Status indication");
  // Kept on purpose: the ring buffer stands in another word than the options, and its bit says no.
  if ((Data.rec_ctrl & kNoRingBuffer) == 0) AppendListItem(text, "Ring buffer mode");
  return text;
}
