#include "analysis/uMissionDatasets.h"
#include "gui/mainform/uCommandTable.h"
#include "shell/uNotes.h"
#include "shell/uShownMission.h"

namespace {

using namespace command;
using TMission = const TShownMission&;
using TSpan = const TTimeSpan&;
constexpr TNeed kNeeds[] = {
    {kOfEvents, "no event is shown: the recording has none, or the filter hides all",
     [](TMission mission, TSpan) { return mission.CLDS.RecordCount() > 0; }},
    {kOfAnyEvents, "the recording has no events", [](TMission mission, TSpan) { return mission.Events.Count() > 0; }},
    {kOfBattery, kNoBattery, [](TMission mission, TSpan) { return !mission.Tables.Battery.Fields().empty(); }},
    {kOfSensors, "the recording has no readings of sensors",
     [](TMission mission, TSpan) { return mission.Tables.Sensors.RowCount() > 0; }},
    {kOfNotes, "the recording has no notes",
     [](TMission mission, TSpan) { return mission.Notes.file && !mission.Notes.file->Items().empty(); }},
    {kOfReference, "there is no reference", [](TMission mission, TSpan) { return mission.Reference.has_value(); }},
    {kOfTimeBefore, "the band begins with the recording",
     [](TMission mission, TSpan recorded) { return mission.Band.start > recorded.start; }},
    {kOfTimeAfter, "the band ends with the recording",
     [](TMission mission, TSpan recorded) { return mission.Band.end < recorded.end; }},
};

}  // namespace

std::span<const TNeed> Needs() {
  return kNeeds;
}
