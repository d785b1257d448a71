#include "shell/uMissionPart.h"

#include <fmt/format.h>

#include <limits>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "export/uRecordingPart.h"
#include "shell/uNavigatorCommands.h"

namespace {

// A row without a time lies in no span.
void ShowRowsIn(const TTimeSpan& span, TDataset& table) {
  std::vector<bool> shown(table.RowCount());
  for (std::size_t row = 0; row < shown.size(); ++row) {
    const auto time = ReadingTime(table, row);
    shown[row] = time && LiesIn(span, *time);
  }
  table.SetShownRows(std::move(shown));
}

void ShowEventsIn(const TTimeSpan& span, const TEventList& events, TDataset& table) {
  std::vector<bool> shown(events.Count());
  for (std::size_t i = 0; i < shown.size(); ++i) {
    shown[i] = LiesIn(span, DateTimeOf(events.StartTime, events.GetItem(i).GetStartTime()));
  }
  table.SetShownRows(std::move(shown));
}

}  // namespace

TMissionPart PartOf(const TShownMission& mission, TPartChoice choice) {
  TMissionPart part{{}, mission.Tables.Events, mission.Tables.Sensors, mission.Tables.Battery};
  if (choice == TPartChoice::Band) ShowEventsIn(mission.Band, mission.Events, part.shocks);
  if (choice == TPartChoice::Filtered) part.shocks = mission.CLDS;
  constexpr double kEndless = std::numeric_limits<double>::infinity();
  const TRange& time = mission.Filter.time;
  const TTimeSpan ofFilter{time.from.value_or(-kEndless), time.to.value_or(kEndless)};
  const bool filtered = choice == TPartChoice::Filtered && mission.FilterActive && time.IsSet();
  if (choice == TPartChoice::Band || filtered) {
    for (TDataset* table : {&part.sensors, &part.battery}) ShowRowsIn(filtered ? ofFilter : mission.Band, *table);
  }
  part.events = VisibleEvents(part.shocks);
  return part;
}

std::string PartSizeText(const TMissionPart& part) {
  return fmt::format("{}, {} of sensors, {} of the battery", Counted(part.events.size(), "event"),
                     Counted(part.sensors.RecordCount(), "row"), part.battery.RecordCount());
}
