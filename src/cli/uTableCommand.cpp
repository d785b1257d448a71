#include <fmt/format.h>

#include <algorithm>

#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "export/uCsvExports.h"

namespace {

TDataset& TableOf(std::string_view name, TMissionDatasets& tables) {
  return tables.*
         std::ranges::find(kTables, name, &std::pair<std::string_view, TDataset TMissionDatasets::*>::first)->second;
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
  if (!recording.HasMission()) return recording.status;
  TMissionDatasets tables = TablesOf(recording);
  if (!UseIndex(table, index, tables)) {
    Complain(console, file, fmt::format("The table \"{}\" has no index \"{}\".", table, index));
    return TStatus::WrongUse;
  }
  WriteTableCsv(TableOf(table, tables), console.out);
  return recording.status;
}
