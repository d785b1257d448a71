// The XLSX exports. Main thread only; they wait for the thread that packs the sheets.
//
// An exception of the progress's ProcessMessages ends an export without a new file. A file that cannot be written
// throws std::filesystem::filesystem_error with its path. In both cases an older file stays as it was. A table with
// more rows than a sheet holds throws std::runtime_error before anything is written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

#include "analysis/uDataset.h"
#include "analysis/uResponseSpectrum.h"
#include "analysis/uSpectrum.h"
#include "base/uProgress.h"
#include "export/uCurveRows.h"
#include "export/uExportNames.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

// The mission's shock events with their metrics: row i of the table, whatever it shows, is event i of the list.
struct TEventSource {
  const TMissionData& mission;
  const TEventList& events;
  const TDataset& table;
};

// One sheet "Mission-" and the ID, with the ID above the titles.
void ExportTableXlsx(const TMissionData& mission, TDataset& table, const std::filesystem::path& file,
                     IProgress& progress);

// A sheet for each table, under its name.
void ExportTablesXlsx(const TMissionData& mission, std::span<const TNamedTable> tables,
                      const std::filesystem::path& file, IProgress& progress);

// Two sheets, "Sensors" and "Battery".
void ExportMeasurementsXlsx(const TMissionData& mission, TDataset& sensors, TDataset& battery,
                            const std::filesystem::path& file, IProgress& progress);

// A sheet for each event, by its index in the list. An event that is too long for one sheet continues in another with
// the same head. Without events there is one empty sheet with the name of a table's.
void ExportEventsXlsx(const TEventSource& source, std::span<const std::uint32_t> indices,
                      const std::filesystem::path& file, IProgress& progress);

// The event of the shock chart: its curves as the chart shows them, or its spectrum. Here and below each curve beside
// it gets its own sheet, or more where it is too long for one.
void ExportEventXlsx(const TEventSource& source, std::size_t index, bool highPass, const std::filesystem::path& file,
                     IProgress& progress, std::span<const TBesideCurve> beside = {});
void ExportSpectrumXlsx(const TEventSource& source, std::size_t index, const TSpectrum& spectrum,
                        const std::filesystem::path& file, IProgress& progress,
                        std::span<const TBesideCurve> beside = {});
// A response spectrum, of the event at `index` or without one the envelope of several; empty cells where a line is not
// computed.
void ExportResponseXlsx(const TEventSource& source, std::optional<std::size_t> index,
                        std::span<const TResponseLine> lines, TResponse response, const std::filesystem::path& file,
                        IProgress& progress, std::span<const TBesideCurve> beside = {});
