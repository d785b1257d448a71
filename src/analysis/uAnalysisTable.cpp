#include "analysis/uAnalysisTable.h"

#include <array>

#include "base/uDateTime.h"

namespace {

struct TFigureColumn {
  const char* indexKey;
  const char* label;
  double TPulse::*figure;
};

constexpr TFigureColumn kFigures[] = {{"DeltaV", "Delta-v (m/s)", &TPulse::velocityChange},
                                      {"Duration10", "Duration 10 % (ms)", &TPulse::durationTenth},
                                      {"Duration3", "Duration 1/3 (ms)", &TPulse::durationThird},
                                      {"HalfSine", "Half-sine (ms)", &TPulse::halfSine}};

}  // namespace

void FillAnalysisTable(const TEventList& events, std::span<const TShockAnalysis> analyses, TDataset& table) {
  table.Clear();
  const std::size_t id = table.AddField("ID", TFieldType::Integer);
  const std::size_t timestamp = table.AddField("Timestamp", TFieldType::DateTime);
  table.SetDisplayFormat(timestamp, DateTimeMask());
  const std::size_t figures = table.Fields().size();
  for (const TFigureColumn& column : kFigures) table.AddField(column.label, TFieldType::Single);
  const std::size_t direction = table.AddField("Direction", TFieldType::Text);
  const std::size_t drop = table.AddField("Drop height", TFieldType::Text);
  const std::size_t reason = table.AddField("Reason", TFieldType::Text);
  table.Reserve(events.Count());
  for (std::size_t i = 0; i < events.Count(); ++i) {
    const TShockAnalysis& analysis = analyses[i];
    table.Append();
    table.SetInteger(id, static_cast<std::int32_t>(i));
    table.SetDateTime(timestamp, DateTimeOf(events.StartTime, events.GetItem(i).GetStartTime()));
    if (analysis.pulse.problem == TPulseProblem::None) {
      for (std::size_t column = 0; column < std::size(kFigures); ++column) {
        table.SetSingle(figures + column, static_cast<float>(analysis.pulse.*kFigures[column].figure));
      }
      table.SetText(direction, DirectionText(analysis.pulse.direction));
    }
    table.SetText(drop, DropHeightText(analysis));
    table.SetText(reason, analysis.reason);
  }
  for (const char* key : {"ID", "Timestamp"}) table.AddIndexPair(key, key);
  for (const TFigureColumn& column : kFigures) table.AddIndexPair(column.indexKey, column.label);
}
