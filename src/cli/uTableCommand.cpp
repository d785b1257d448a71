#include <fmt/format.h>

#include "analysis/uMissionDatasets.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "export/uCsvExports.h"
#include "model/uExceptions1V0.h"

namespace {

TDataset& TableOf(const std::string& name, TMissionDatasets& tables) {
  if (name == "important") return tables.Important;
  if (name == "cards") return tables.Cards;
  if (name == "sensors") return tables.Sensors;
  if (name == "battery") return tables.Battery;
  return tables.Events;
}

bool UseIndex(const std::string& table, const std::string& index, TMissionDatasets& tables) {
  if (index.empty()) return true;
  if (table != "important") return TableOf(table, tables).SelectIndex(index);
  if (!tables.Events.HasIndex(index)) return false;
  FillMostImportantEvents(index, tables);
  return true;
}

}  // namespace

TStatus TableCommand(const std::string& file, const std::string& table, const std::string& index,
                     const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (recording.status == TStatus::NotDisplayable || recording.message.lParam == kCannotOpenDataFile) {
    return recording.status;
  }
  TMissionDatasets tables;
  TNoProgress progress;
  LoadKorvexFileData(MissionData, EventList, SensorList, {}, progress, tables);
  if (!UseIndex(table, index, tables)) {
    console.err(fmt::format("kshock: {}: The table \"{}\" has no index \"{}\".\n", file, table, index));
    return TStatus::WrongUse;
  }
  WriteTableCsv(TableOf(table, tables), console.out);
  return recording.status;
}
