#include "model/uMissionText.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>
#include <utility>

#include "base/uDateTime.h"

namespace {

TEST(MissionText, StartAndStopByTheirModes) {
  struct TCase {
    std::uint16_t start, stop, options;
    const char* text;
  };
  const TCase cases[] = {
      {1, 0, 0, "Start immediately"},
      {1, 1, 0, "Start immediately"},
      {2, 2, 0, "Start at 16.07.2023 06:00:00, Stop at 17.07.2023 12:00:00"},
      {3, 3, 4, "Start by_push-button, Stop by push-button"},
      {3, 3, 2, "Start by_push-button"},
      {4, 4, 2, "Start by control input H, Stop by control input L"},  // the sense is reversed on purpose
      {4, 4, 5, "Start by control input L, Stop by control input H"},
      {7, 9, 0, "Start undefined (7), Stop undefined (9)"},
      {0, 0, 0, "Start undefined (0)"}};
  SetShortDateFormat("dd.mm.yyyy");
  for (const auto& [start, stop, options, text] : cases) {
    TMissionData mission;
    mission.rec_startmode = start;
    mission.rec_stopmode = stop;
    mission.options = options;
    mission.rtc_starttime = 45123.25;
    mission.rtc_stoptime = 45124.5;
    EXPECT_EQ(StartStopText(mission), text);
  }
  SetShortDateFormat("yyyy-mm-dd");
}

TEST(MissionText, LimitNamesTheLevelAndTheRate) {
  TMissionData mission;
  mission.adxl_level_on = 0.1F;
  mission.rec_fast_rate = 0.001;
  EXPECT_EQ(LimitText(mission), "Limit= 0.100000001490116 g, Measurement rate= ~1000 Hz");
  mission.rec_fast_rate = 0.4;
  EXPECT_EQ(LimitText(mission), "Limit= 0.100000001490116 g, Measurement rate= ~3 Hz");
  for (const double period : {0.0, -0.0, 1e-320, std::numeric_limits<double>::quiet_NaN()}) {
    mission.rec_fast_rate = period;
    EXPECT_EQ(LimitText(mission), "Limit= 0.100000001490116 g, Measurement rate= ?");
  }
}

TEST(MissionText, ChannelsAndOptionsByTheirBits) {
  TMissionData mission;
  mission.tb_meas_rate = 60;
  const std::pair<std::uint16_t, const char*> masks[] = {{0, "-"},
                                                         {33, "p, RH, Measurement rate= 60 s"},
                                                         {0xFFFF, "p, RH, T, Light, analog, Measurement rate= 60 s"},
                                                         {0xFFFF & ~(1 + 32 + 128 + 256 + 512), "-"}};
  for (const auto& [mask, text] : masks) {
    mission.rec_std_mask = mask;
    EXPECT_EQ(StdChannelsText(mission), text);
  }
  const std::tuple<std::uint16_t, std::uint16_t, const char*> controls[] = {
      {0, 0, "Ring buffer mode"},
      {7, 0, "Marker function, Confirmation function, Status indication, Ring buffer mode"},
      {7, 128, "Marker function, Confirmation function, Status indication"},
      {128, 128, ""}};
  for (const auto& [options, control, text] : controls) {
    mission.options = options;
    mission.rec_ctrl = control;
    EXPECT_EQ(OptionsText(mission), text);
  }
}

}  // namespace
