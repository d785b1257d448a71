// Going to what the user types.
#include "shell/uGoTo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/uDateTime.h"
#include "tests/support/uFakeWindow.h"

namespace {

TEST(TypedTime, ReadsTheProgramsDateFormatIsoAndTimesOfDay) {
  // 2024-05-31 is day 45443; the recording starts there at 18:00.
  const double from = 45443.75;
  SetShortDateFormat("dd.mm.yy");
  EXPECT_EQ(TypedTime("31.05.24", from), 45443.0);
  EXPECT_EQ(TypedTime(" 2024-05-31 06:00 ", from), 45443.25);
  EXPECT_EQ(TypedTime("2024-05-31T12:00:00", from), 45443.5);
  EXPECT_EQ(TypedTime("19:12:00", from), 45443.8);
  EXPECT_EQ(TypedTime("1899-12-28 06:00", from), -2.25) << "the time of day has no sign";
  EXPECT_EQ(TypedTime("12:00", from), 45444.5) << "at noon it had not begun";
  EXPECT_NEAR(*TypedTime("18:00:00.250", from), from + 250 / kMsPerDay, 1e-9);
  SetShortDateFormat("mm-dd-yyyy");
  EXPECT_EQ(TypedTime("05-31-2024 12:00", from), 45443.5);
  SetShortDateFormat(std::string(kDefaultDateFormat));
  for (const char* wrong : {"", "12", "noon", "24:00", "12:60", "12:", ":", "12:00:00.", "1:2:3:4", "2024-02-30",
                            "2024-05", "2024-05-31 noon", "x 12:00", "99999999999-1-1", "2024-05-31-06 12:00"}) {
    EXPECT_EQ(TypedTime(wrong, from), std::nullopt) << wrong;
  }
}

TEST(GoTo, SaysWhyItGoesNowhere) {
  TFakeWindow window;
  ClearMission();
  TShownMission mission;
  EXPECT_EQ(GoTo(mission, "0", window.views), "The recording has no events.");
  EXPECT_EQ(GoTo(mission, "12:00", window.views), "The recording has no times.");
  window.views.Data = TTimeSpan{45443.25, 45443.75};
  EXPECT_EQ(GoTo(mission, "soon", window.views),
            "Type an event's ID, such as 0, or a time, such as 2024-05-31 06:00:00.");
  EXPECT_EQ(GoTo(mission, "05:00", window.views),
            "The recording goes from 2024-05-31 06:00:00 to 2024-05-31 18:00:00.");
  EXPECT_EQ(window.log.Take(), "");
  EXPECT_EQ(GoTo(mission, "12:00", window.views), "");
  EXPECT_LE(mission.Band.start, 45443.5);
  EXPECT_GE(mission.Band.end, 45443.5);
}

}  // namespace
