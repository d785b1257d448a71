// Every CSV export, in one line format. Main thread only.
//
// Progress goes to an IProgress. What its ProcessMessages throws ends an export: the files that are complete stay, the
// one in work goes. A file that cannot be written throws std::filesystem::filesystem_error with its path; an older file
// of that name then is as it was.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "analysis/uDataset.h"
#include "analysis/uSpectrum.h"
#include "base/uProgress.h"
#include "export/uCurveRows.h"
#include "export/uExportNames.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

// Takes the lines one by one, each with its line break.
using TCsvSink = std::function<void(std::string_view)>;

// Appends one field: quote, text, quote, comma. Kept on purpose: the text is not escaped, and the last field of a line
// has its comma too.
void AppendCsvField(std::string& line, std::string_view text);
// Lines with their CR LF: titles, and numbers in general form.
void AppendCsvTitles(std::string& text, const TCurveTitles& titles);
void AppendCsvRow(std::string& text, const TCurveRow& row);

// A line of the labels, then a line of display texts for each record in the order of the selected index; CR LF after
// each. The table stands on its last record afterwards.
void WriteTableCsv(TDataset& table, const TCsvSink& sink);

// A file for each event, by the indices of the events in the list, in the folder EventFolderName of the chosen one; it
// is made when it is not there, and files in it are replaced. Files are put in place many at a time, also where the
// export ends early; `inPlace` gets the folder each time. Returns the folder.
std::filesystem::path ExportEventsCsv(const TMissionData& mission, const TEventList& events,
                                      std::span<const std::uint32_t> indices, TEventFiles kind,
                                      const std::filesystem::path& chosen, IProgress& progress,
                                      const std::function<void(const std::filesystem::path&)>& inPlace = {});

// The curves of one event as the shock chart shows them.
void ExportEventCsv(const TEvent& event, bool highPass, const std::filesystem::path& file, IProgress& progress);

// The spectrum of the shock chart. Kept on purpose: there are as many lines as the chart's time series has points; past
// the last line of the spectrum the fields are empty.
void ExportSpectrumCsv(const TSpectrum& spectrum, std::size_t timePoints, const std::filesystem::path& file,
                       IProgress& progress);

// A whole table, as WriteTableCsv.
void ExportTableCsv(TDataset& table, const std::filesystem::path& file, IProgress& progress);
