// The five tables of a loaded mission: shock events, most important events, shock cards, sensors, battery.
// Main thread only.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/uDataset.h"
#include "analysis/uSensorMetrics.h"
#include "analysis/uShockMetrics.h"
#include "base/uProgress.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uOtherSensors.h"
#include "model/uQuantities.h"

// What the user may choose about the tables.
struct TDatasetOptions {
  // "Order By", an entry of kOrderByIndexes; any other number leaves the events in the order of time.
  int orderBy = 0;
  // Labels of the analog inputs; an empty one falls back to the channel's own name.
  std::array<std::string, kAnalogInputs.size()> analogNames;
};

// The index of the event table that ranks the most important events, by the entry of "Order By".
inline constexpr std::array<std::string_view, 5> kOrderByIndexes = {"IntSMDesc", "IntDesc", "DBCSMDesc", "DBCDesc",
                                                                    "MaxAccDesc"};
// The entries themselves.
inline constexpr std::array<std::string_view, kOrderByIndexes.size()> kOrderByCaptions = {
    "Intensity (max)", "Intensity (total)", "TOT (max)", "TOT (total)", "Acceleration (max)"};
inline constexpr std::size_t kMostImportantCount = 10;

struct TMissionDatasets {
  TDataset Events;     // a row an event; fields "ID", "Timestamp", five metrics, then the sensors that are present
  TDataset Important;  // the same fields, at most kMostImportantCount rows
  TDataset Cards;      // a row an event; every sensor field is always there
  TDataset Sensors;    // a row a reading of the first sensor that is none of battery, marker, pressure
  TDataset Battery;    // a row a reading; no fields when there is no battery channel

  std::vector<TEventMetrics> Metrics;         // of each event of the list
  std::vector<TSensorMetrics> SensorMetrics;  // of each sensor of the list
};

// Why there is no battery table.
inline constexpr std::string_view kNoBattery = "the recording has no battery channel";

// The tables by the names that commands know them by.
inline constexpr std::pair<std::string_view, TDataset TMissionDatasets::*> kTables[] = {
    {"events", &TMissionDatasets::Events},
    {"important", &TMissionDatasets::Important},
    {"cards", &TMissionDatasets::Cards},
    {"sensors", &TMissionDatasets::Sensors},
    {"battery", &TMissionDatasets::Battery}};

// Fills the metrics and the five tables from the model, in their order above, with progress 2 … 5. An exception of
// ProcessMessages ends it: the current table keeps its rows so far and has no indexes, those before it lack only date
// masks and labels, those after it are as they were.
void LoadKorvexFileData(const TMissionData& mission, const TEventList& events, const TSensorList& sensors,
                        const TDatasetOptions& options, IProgress& progress, TMissionDatasets& datasets);

// Fills the metrics of the events and their table only.
void LoadEvents(const TMissionData& mission, const TEventList& events, const TSensorList& sensors, IProgress& progress,
                TMissionDatasets& datasets);

// Fills the most important events by an index of the event table; an unknown index means the table's current order. The
// event table is in the order of "TimestampASC" afterwards.
void FillMostImportantEvents(std::string_view index, TMissionDatasets& datasets);

// Gives every date-time field its mask from the short date format.
void ApplyDateFormat(TMissionDatasets& datasets);

// Labels the fields of the analog inputs; an empty name falls back to the channel's own.
void ApplyAnalogNames(std::span<const std::string, kAnalogInputs.size()> names, TMissionDatasets& datasets);

// °C from a temperature in °C and a relative humidity in %; NaN where the formula has no logarithm.
// Kept on purpose: the vapour-pressure step multiplies by 7.5·T/(T + 237.7) instead of raising 10 to that power, so
// that the values match the loggers' files and reports.
float DewPoint(float temperature, float humidity);
