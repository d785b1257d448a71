// The CSV exports. Main thread only.
//
// An exception of the progress's ProcessMessages ends an export: complete files stay, the current one is removed. A
// file that cannot be written throws std::filesystem::filesystem_error with its path, and an older file stays as it
// was.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "analysis/uDataset.h"
#include "analysis/uResponseSpectrum.h"
#include "analysis/uSpectrum.h"
#include "base/uProgress.h"
#include "export/uCurveRows.h"
#include "export/uExportNames.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

// Takes the lines one by one, each with its line break.
using TCsvSink = std::function<void(std::string_view)>;

// Ends every line of a CSV file.
inline constexpr std::string_view kLineBreak = "\r\n";

// Appends one field: quote, text, quote, comma. Kept on purpose: the text is not escaped, and the last field of a line
// has its comma too.
void AppendCsvField(std::string& line, std::string_view text);
// Lines with their CR LF: titles, and numbers in general form.
template <class TTitles>
void AppendCsvTitles(std::string& text, const TTitles& titles) {
  for (const std::string_view title : titles) AppendCsvField(text, title);
  text += kLineBreak;
}
void AppendCsvRow(std::string& text, const TCurveRow& row);
// A field with the shortest text that reads back as the same number; empty for NaN.
void AppendCsvExact(std::string& text, double value);
// Titles and lines of a response spectrum, numbers exact, each with its range.
std::string ResponseCsv(std::span<const TResponseLine> lines, TResponse response);

// A line of the labels, then a line of display texts for each record in the order of the selected index; CR LF after
// each. The table stands on its last record afterwards.
void WriteTableCsv(TDataset& table, const TCsvSink& sink);

// A file for each event, by its index in the list, in the folder EventFolderName below `chosen`. The folder is created
// when it is missing; files in it are replaced. Files are put in place many at a time, also when the export ends early;
// `inPlace` gets the folder each time. Returns the folder.
std::filesystem::path ExportEventsCsv(const TMissionData& mission, const TEventList& events,
                                      std::span<const std::uint32_t> indices, TEventFiles kind,
                                      const std::filesystem::path& chosen, IProgress& progress,
                                      const std::function<void(const std::filesystem::path&)>& inPlace = {});

// The curves of one event as the shock chart shows them. Here and below each curve beside it adds five columns with its
// name in their titles, and lines where it is longer; fields are empty behind the end of a curve.
void ExportEventCsv(const TEvent& event, bool highPass, const std::filesystem::path& file, IProgress& progress,
                    std::span<const TBesideCurve> beside = {});

// The spectrum of the shock chart. Kept on purpose: as many lines as the time series has points, with empty fields
// after the last line of the spectrum.
void ExportSpectrumCsv(const TSpectrum& spectrum, std::size_t timePoints, const std::filesystem::path& file,
                       IProgress& progress, std::span<const TBesideCurve> beside = {});

// A response spectrum, as ResponseCsv.
void ExportResponseCsv(std::span<const TResponseLine> lines, TResponse response, const std::filesystem::path& file,
                       IProgress& progress, std::span<const TBesideCurve> beside = {});

// A whole table, as WriteTableCsv.
void ExportTableCsv(TDataset& table, const std::filesystem::path& file, IProgress& progress);

// Whole tables in a folder, which is created when it is missing; a file of the table's name for each. They are put in
// place together: an export that ends early leaves the older files.
void ExportTablesCsv(std::span<const TNamedTable> tables, const std::filesystem::path& folder, IProgress& progress);
