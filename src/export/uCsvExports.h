// The line format of every CSV export, and tables in it.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "analysis/uDataset.h"

// Takes the lines one by one, each with its line break.
using TCsvSink = std::function<void(std::string_view)>;

// Appends one field: quote, text, quote, comma. Kept on purpose: the text is not escaped, and the last field of a line
// has its comma too.
void AppendCsvField(std::string& line, std::string_view text);

// A line of the labels, then a line of display texts for each record in the order of the selected index; CR LF after
// each. The table stands past its last record afterwards.
void WriteTableCsv(TDataset& table, const TCsvSink& sink);
