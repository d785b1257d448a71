#include "analysis/uAnalysisTable.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "base/uDateTime.h"

namespace {

struct TFigureColumn {
  const char* indexKey;
  std::string_view label;
  const char* mask;  // in grids
  double TPulse::*figure;
};

constexpr TFigureColumn kFigures[] = {{"DeltaV", kVelocityChangeField, "0.000", &TPulse::velocityChange},
                                      {"Duration10", "Duration 10 % (ms)", "0.00", &TPulse::durationTenth},
                                      {"Duration3", "Duration 1/3 (ms)", "0.00", &TPulse::durationThird},
                                      {"HalfSine", "Half-sine (ms)", "0.00", &TPulse::halfSine}};

constexpr std::string_view kTimestamp = "Timestamp";

// The numbers of the fields.
struct TFields {
  std::size_t figures, direction, drop, reason;
};

TFields DefineFields(TDataset& table) {
  TFields fields{};
  table.AddIdAndTime();
  fields.figures = table.Fields().size();
  for (const TFigureColumn& column : kFigures) {
    table.SetDisplayFormat(table.AddField(std::string(column.label), TFieldType::Single), column.mask);
  }
  fields.direction = table.AddField("Direction", TFieldType::Text);
  fields.drop = table.AddField("Drop height", TFieldType::Text);
  fields.reason = table.AddField(std::string(kReasonField), TFieldType::Text);
  return fields;
}

void AppendRow(const TFields& fields, std::size_t event, double start, const TShockAnalysis& analysis,
               TDataset& table) {
  table.AppendAt(event, start);
  if (analysis.pulse.problem == TPulseProblem::None) {
    for (std::size_t column = 0; column < std::size(kFigures); ++column) {
      table.SetSingle(fields.figures + column, static_cast<float>(analysis.pulse.*kFigures[column].figure));
    }
    table.SetText(fields.direction, DirectionText(analysis.pulse.direction));
  }
  table.SetText(fields.drop, DropHeightText(analysis));
  table.SetText(fields.reason, analysis.reason);
}

}  // namespace

TMissionAnalysis AnalyseMission(const TEventList& events, double levelOn,
                                const std::function<void(std::size_t done)>& report) {
  TMissionAnalysis mission;
  const TFields fields = DefineFields(mission.Table);
  mission.Table.Reserve(events.Count());
  mission.Pulses.reserve(events.Count());
  for (std::size_t i = 0; i < events.Count(); ++i) {
    if (report) report(i);
    const TEvent& event = events.GetItem(i);
    const TShockAnalysis analysis = AnalyseShock(event, levelOn);
    AppendRow(fields, i, DateTimeOf(events.StartTime, event.GetStartTime()), analysis, mission.Table);
    mission.Pulses.push_back(analysis.pulse);
  }
  for (const char* key : {"ID", "Timestamp"}) mission.Table.AddIndexPair(key, key);
  for (const TFigureColumn& column : kFigures) mission.Table.AddIndexPair(column.indexKey, column.label);
  return mission;
}

std::optional<std::string_view> AnalysisIndexKey(std::string_view field) {
  if (field == "ID" || field == kTimestamp) return field;
  const auto* column = std::ranges::find(kFigures, field, &TFigureColumn::label);
  return column == std::end(kFigures) ? std::nullopt : std::optional<std::string_view>(column->indexKey);
}

void ApplyDateFormat(TMissionAnalysis& analysis) {
  if (const auto field = analysis.Table.FindField(kTimestamp)) {
    analysis.Table.SetDisplayFormat(*field, DateTimeMask());
  }
}
