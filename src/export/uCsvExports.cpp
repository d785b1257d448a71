#include "export/uCsvExports.h"

namespace {

constexpr std::string_view kLineBreak = "\r\n";

}  // namespace

void AppendCsvField(std::string& line, std::string_view text) {
  line += '"';
  line += text;
  line += "\",";
}

void WriteTableCsv(TDataset& table, const TCsvSink& sink) {
  std::string line;
  const auto finishLine = [&] {
    line += kLineBreak;
    sink(line);
    line.clear();
  };
  for (const TField& field : table.Fields()) AppendCsvField(line, field.Label);
  finishLine();
  for (table.First(); !table.Eof(); table.Next()) {
    for (std::size_t field = 0; field < table.Fields().size(); ++field) {
      AppendCsvField(line, table.DisplayText(table.CurrentRow(), field));
    }
    finishLine();
  }
}
