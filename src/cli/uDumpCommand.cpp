#include <algorithm>
#include <limits>
#include <span>

#include "cli/uCommands.h"
#include "cli/uJsonWriter.h"
#include "cli/uRecording.h"
#include "model/uMissionText.h"

namespace {

void WriteMission(const TMissionData& mission, TJsonWriter& json) {
  json.Begin('{');
  json.Member("bValid", mission.bValid);
  VisitStoredFields(mission, [&json](const char* name, const auto& field) { json.Member(name, field); });
  json.End('}');
}

void WriteEvents(const TEventList& events, std::span<const TEventMetrics> metrics, TJsonWriter& json) {
  json.Begin('[');
  for (std::size_t i = 0; i < events.Count(); ++i) {
    const TEvent& event = events.GetItem(i);
    json.Begin('{');
    json.Member("ID", event.ID);
    json.Member("samples", event.Count());
    json.Member("startTime", event.GetStartTime());
    json.Member("Max", event.Max);
    json.Member("MaxSingle", event.MaxSingle);
    json.Member("MaxAxis", event.MaxAxis);
    json.Member("totTotal", metrics[i].totTotal);
    json.Member("totMax", metrics[i].totMax);
    json.Member("iotTotal", metrics[i].iotTotal);
    json.Member("iotMax", metrics[i].iotMax);
    json.End('}');
  }
  json.End(']');
}

void WriteSensors(const TSensorList& sensors, TJsonWriter& json) {
  json.Begin('[');
  for (const TSensor& sensor : sensors.Sensors()) {
    constexpr float kMissing = std::numeric_limits<float>::quiet_NaN();
    const auto values = sensor.Values();
    json.Begin('{');
    json.Member("ID", sensor.ID);
    json.Member("Name", sensor.Name);
    json.Member("samples", sensor.Count());
    json.Member("startTime", sensor.GetStartTime());
    json.Member("first", values.empty() ? kMissing : values.front().xvalue);
    json.Member("last", values.empty() ? kMissing : values.back().xvalue);
    json.End('}');
  }
  json.End(']');
}

void WriteValue(const TDataset& table, std::size_t row, std::size_t field, TJsonWriter& json) {
  if (table.IsNull(row, field)) {
    json.Null();
    return;
  }
  switch (table.Fields()[field].Type) {
    case TFieldType::Integer:
      json.Value(table.Integer(row, field));
      break;
    case TFieldType::Single:
      json.Value(table.Single(row, field));
      break;
    case TFieldType::DateTime:
      json.Value(table.DateTime(row, field));
      break;
    case TFieldType::Text:
      json.Value(table.Text(row, field));
      break;
    case TFieldType::Blob:
      json.Null();
      break;
  }
}

// A picture is no part of the JSON.
void WriteTable(const TDataset& table, std::size_t rowLimit, TJsonWriter& json) {
  const auto isShown = [&table](std::size_t field) { return table.Fields()[field].Type != TFieldType::Blob; };
  json.Begin('{');
  json.Key("fields");
  json.Begin('[');
  for (std::size_t field = 0; field < table.Fields().size(); ++field) {
    if (isShown(field)) json.Value(table.Fields()[field].Label);
  }
  json.End(']');
  json.Member("rowCount", table.RecordCount());
  json.Key("rows");
  json.Begin('[');
  for (std::size_t position = 0; position < std::min(table.RecordCount(), rowLimit); ++position) {
    const std::size_t row = table.RowAt(position);
    json.Begin('[');
    for (std::size_t field = 0; field < table.Fields().size(); ++field) {
      if (isShown(field)) WriteValue(table, row, field, json);
    }
    json.End(']');
  }
  json.End(']');
  json.End('}');
}

void WriteTexts(const TMissionData& mission, TJsonWriter& json) {
  json.Begin('{');
  json.Member("startStop", StartStopText(mission));
  json.Member("limit", LimitText(mission));
  json.Member("stdChannels", StdChannelsText(mission));
  json.Member("options", OptionsText(mission));
  json.End('}');
}

}  // namespace

TStatus DumpCommand(const std::string& file, std::size_t rows, const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  const TMissionDatasets tables = TablesOf(recording);

  TJsonWriter json(console.out);
  json.Begin('{');
  json.Key("message");
  json.Begin('{');
  json.Member("wParam", recording.message.wParam);
  json.Member("lParam", recording.message.lParam);
  json.End('}');
  json.Member("displayable", recording.displayable);
  json.Member("damaged", recording.extent.damaged);
  json.Member("readError", recording.extent.readError);
  json.Member("blocks", recording.extent.dataBlocks);
  json.Key("mission");
  WriteMission(recording.mission, json);
  json.Member("startTime", recording.events.StartTime);
  json.Member("validCreator", recording.events.ValidCreator);
  json.Key("events");
  WriteEvents(recording.events, tables.Metrics, json);
  json.Key("sensors");
  WriteSensors(recording.sensors, json);
  json.Key("texts");
  WriteTexts(recording.mission, json);
  json.Key("tables");
  json.Begin('{');
  for (const auto& [name, table] : kTables) {
    json.Key(name);
    WriteTable(tables.*table, rows, json);
  }
  json.End('}');
  json.End('}');
  json.Finish();
  return recording.status;
}
