// What there is once in the program: the header of the mission that is shown and what the reader says beside the model.
// While a read runs only the reader's thread may touch it.
#pragma once

#include <cstdint>
#include <string>

// The mission header. Date-times are days since 1899-12-30.
struct TMissionData {
  bool bFirstReadKorvex = false;  // the shell's; the reader does not touch it
  bool bValid = false;            // a mission header was read whole
  std::uint16_t fileVersion = 0;
  std::uint16_t version = 0;
  std::string sKorvexType;
  std::string sKorvexVersion;
  std::string sID;
  std::string sTitle;
  std::string sOperator;
  double rec_starttime = 0;  // configured recording start and end
  double rec_endtime = 0;
  std::uint16_t rec_ctrl = 0;  // bit 7 clear: ring buffer mode
  std::uint16_t options = 0;   // bit 0 marker, bit 1 confirmation and control-input polarity, bit 2 status indication
  std::uint16_t rec_startmode = 0;
  std::uint16_t rec_stopmode = 0;
  double rtc_starttime = 0;  // real-time-clock start and stop
  double rtc_stoptime = 0;
  float adxl_level_on = 0;             // g: the level that opens an event
  float adxl_level_off = 0;            // g: the level that closes it
  double rec_fast_rate = 0;            // s: sampling period of the shock recording
  std::uint16_t buffer_pre_cnts = 0;   // samples kept before the trigger
  std::uint16_t buffer_post_cnts = 0;  // and after it
  std::uint16_t rec_std_mask = 0;      // the slow channels that are on: bit 0 p, 5 RH, 7 T, 8 light, 9 analog
  double tb_meas_rate = 0;             // s: measurement interval of the slow channels
  bool bValidStartTime = false;        // set when a load completes, not stored in the file
  double StartTime = 0;
};

// Calls visit(name, field) with every field that a recording stores, in the order of the file.
template <class TMission, class TVisit>
void VisitStoredFields(TMission& m, const TVisit& visit) {
  visit("fileVersion", m.fileVersion);
  visit("version", m.version);
  visit("sKorvexType", m.sKorvexType);
  visit("sKorvexVersion", m.sKorvexVersion);
  visit("sID", m.sID);
  visit("sTitle", m.sTitle);
  visit("sOperator", m.sOperator);
  visit("rec_starttime", m.rec_starttime);
  visit("rec_endtime", m.rec_endtime);
  visit("rec_ctrl", m.rec_ctrl);
  visit("options", m.options);
  visit("rec_startmode", m.rec_startmode);
  visit("rec_stopmode", m.rec_stopmode);
  visit("rtc_starttime", m.rtc_starttime);
  visit("rtc_stoptime", m.rtc_stoptime);
  visit("adxl_level_on", m.adxl_level_on);
  visit("adxl_level_off", m.adxl_level_off);
  visit("rec_fast_rate", m.rec_fast_rate);
  visit("buffer_pre_cnts", m.buffer_pre_cnts);
  visit("buffer_post_cnts", m.buffer_post_cnts);
  visit("rec_std_mask", m.rec_std_mask);
  visit("tb_meas_rate", m.tb_meas_rate);
}

struct TAxesPresent {
  bool x = false, y = false, z = false;
};

extern TMissionData MissionData;
extern TAxesPresent AxesPresent;   // the axes that the channel list names
extern std::string ReadErrorText;  // why the last read failed; set before its message is posted

// Takes everything of the shown mission out of the model, but for the shell's bFirstReadKorvex; called before each
// load.
void ClearMission();
