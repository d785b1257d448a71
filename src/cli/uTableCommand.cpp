#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "analysis/uAnalysisTable.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "export/uCsvExports.h"

namespace {

// The table in the order of the index; nothing when it has no such index.
std::optional<TDataset> TableInOrder(const TRecording& recording, const std::string& name, const std::string& index) {
  TDataset table;
  if (name == kAnalysisTable) {
    table = AnalysisOf(recording);
  } else {
    TMissionDatasets tables = TablesOf(recording);
    if (name == "important" && !index.empty()) {
      if (!tables.Events.HasIndex(index)) return std::nullopt;
      FillMostImportantEvents(index, tables);
      return tables.Important;
    }
    const auto isIt = [&name](const auto& each) { return each.first == name; };
    table = std::move(tables.*std::ranges::find_if(kTables, isIt)->second);
  }
  if (!index.empty() && !table.SelectIndex(index)) return std::nullopt;
  return table;
}

}  // namespace

TStatus TableCommand(const std::string& file, const std::string& table, const std::string& index,
                     const TConsole& console) {
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  std::optional<TDataset> shown = TableInOrder(recording, table, index);
  if (!shown) {
    Complain(console, file, fmt::format("The table \"{}\" has no index \"{}\".", table, index));
    return TStatus::WrongUse;
  }
  WriteTableCsv(*shown, console.out);
  return recording.status;
}
