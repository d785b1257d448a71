#include "analysis/uMissionDatasets.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "analysis/uSensorLookup.h"
#include "base/uDateTime.h"

namespace {

// Columns of sensors, in their order; the dew point has no sensor.
using TSensorColumns = std::span<const TQuantityRow* const>;
constexpr TSensorColumns kEventColumns = kQuantitiesBy<&TQuantityRow::eventsPlace>;
constexpr TSensorColumns kSensorsColumns = kQuantitiesBy<&TQuantityRow::sensorsPlace>;

constexpr std::string_view kDewPoint = "Dew Point";
constexpr std::string_view kTemperature = "Temperature";
constexpr std::string_view kHumidity = "RH";

bool IsPresent(const TSensorList& sensors, std::string_view name) {
  return std::ranges::find(sensors.Sensors(), name, &TSensor::Name) != sensors.Sensors().end();
}

// Fields for the sensors that are present; the dew point needs temperature and humidity.
void DefineSensorFields(TSensorColumns columns, const TSensorList& sensors, TDataset& table) {
  for (const TQuantityRow* column : columns) {
    const bool present = column->field == kDewPoint ? IsPresent(sensors, kTemperature) && IsPresent(sensors, kHumidity)
                                                    : IsPresent(sensors, column->sensorName);
    if (present) table.AddField(std::string(column->field), TFieldType::Single);
  }
}

// A pair of indexes for each field that is there.
void DefineSensorIndexes(TSensorColumns columns, TDataset& table) {
  for (const TQuantityRow* column : columns) table.AddIndexPair(column->indexKey, column->field);
}

// Sensors to look at, by the fields of a table.
struct TSource {
  std::size_t field;
  std::size_t sensor;
};

struct TSources {
  std::vector<TSource> columns;
  std::optional<std::size_t> dewPoint, temperature, humidity;  // the field, and the two sensors that it is made of
};

// `choose` gives the sensor of a name, or nothing.
template <class TChoose>
TSources FindSources(TSensorColumns columns, const TDataset& table, const TChoose& choose) {
  TSources sources;
  for (const TQuantityRow* column : columns) {
    const auto field = table.FindField(column->field);
    if (!field) continue;
    if (column->field == kDewPoint) {
      sources.dewPoint = field;
    } else if (const auto sensor = choose(column->sensorName)) {
      sources.columns.push_back({*field, *sensor});
    }
  }
  sources.temperature = choose(kTemperature);
  sources.humidity = choose(kHumidity);
  return sources;
}

// Stores the readings of one row; `read` gives a sensor's reading, or nothing.
template <class TRead>
void SetSensorFields(const TSources& sources, const TRead& read, TDataset& table) {
  for (const TSource& source : sources.columns) {
    if (const std::optional<float> value = read(source.sensor)) table.SetSingle(source.field, *value);
  }
  if (!sources.dewPoint || !sources.temperature || !sources.humidity) return;
  const std::optional<float> temperature = read(*sources.temperature);
  const std::optional<float> humidity = read(*sources.humidity);
  if (!temperature || !humidity) return;
  const double dewPoint = DewPoint(*temperature, *humidity);
  // Two decimals, halves away from zero.
  if (!std::isnan(dewPoint)) table.SetSingle(*sources.dewPoint, static_cast<float>(std::round(dewPoint * 100) / 100));
}

// Every hundred rows the text moves on and the window lives.
void ReportRow(std::string_view what, std::size_t row, std::size_t count, IProgress& progress) {
  if (row % 100 != 0) return;
  progress.SetStatus(fmt::format("Loading {} ({} of {})", what, row + 1, count));
  progress.ProcessMessages();
}

// The cards show what the event table holds; only the set of fields and their names differ.
void FillCards(IProgress& progress, TMissionDatasets& datasets) {
  progress.SetStatus("Populating the Shock Cards Dataset...");
  const TDataset& events = datasets.Events;
  TDataset& table = datasets.Cards;
  table.Clear();
  struct TCopy {
    std::size_t to, from;
  };
  std::vector<TCopy> singles;
  const auto addSingle = [&](std::string_view card, std::string_view event) {
    const std::size_t to = table.AddField(std::string(card), TFieldType::Single);
    if (const auto from = events.FindField(event)) singles.push_back({to, *from});
  };
  table.AddIdAndTime("Date and Time");
  for (const TQuantityRow& metric : kMetrics) addSingle(metric.field, metric.field);
  table.AddField("Chart", TFieldType::Blob);
  for (const TQuantityRow* column : kEventColumns) {
    if (!column->cardField.empty()) addSingle(column->cardField, column->field);
  }

  table.Reserve(events.RecordCount());
  const std::size_t fromTime = *events.FindField("Timestamp");
  for (std::size_t row = 0; row < events.RecordCount(); ++row) {
    table.AppendAt(row, events.DateTime(row, fromTime));
    for (const TCopy& copy : singles) {
      if (!events.IsNull(row, copy.from)) table.SetSingle(copy.to, events.Single(row, copy.from));
    }
    ReportRow("Shock Cards", row, events.RecordCount(), progress);
  }
}

void FillSensors(const TEventList& events, const TSensorList& sensors, IProgress& progress, TDataset& table) {
  progress.SetStatus("Populating Sensors Dataset...");
  table.Clear();
  table.AddIdAndTime();
  DefineSensorFields(kSensorsColumns, sensors, table);

  // Of two sensors of one name the first counts.
  const TSources sources =
      FindSources(kSensorsColumns, table, [&](std::string_view name) -> std::optional<std::size_t> {
        const auto found = std::ranges::find(sensors.Sensors(), name, &TSensor::Name);
        if (found == sensors.Sensors().end()) return std::nullopt;
        return static_cast<std::size_t>(found - sensors.Sensors().begin());
      });
  const auto driving = std::ranges::find_if(sensors.Sensors(), [](const TSensor& sensor) {
    return sensor.Name != "Battery" && sensor.Name != "Marker" && sensor.Name != "Pressure";
  });
  const std::size_t rows = driving == sensors.Sensors().end() ? 0 : driving->Count();
  table.Reserve(rows);
  for (std::size_t j = 0; j < rows; ++j) {
    table.AppendAt(j, DateTimeOf(events.StartTime, driving->GetItem(j).time));
    // Kept on purpose: readings stand in a row by their position, not by their time.
    const auto readingAt = [&](std::size_t sensor) -> std::optional<float> {
      const auto values = sensors.GetItem(sensor).Values();
      if (j >= values.size()) return std::nullopt;
      return values[j].xvalue;
    };
    SetSensorFields(sources, readingAt, table);
    ReportRow("Sensors data", j, rows, progress);
  }
  table.AddIndexPair("Timestamp", "Timestamp");
  DefineSensorIndexes(kSensorsColumns, table);
  table.SelectIndex("TimestampASC");
}

void FillBattery(const TEventList& events, const TSensorList& sensors, IProgress& progress, TDataset& table) {
  progress.SetStatus("Populating the Battery Dataset...");
  table.Clear();
  const auto battery = std::ranges::find(sensors.Sensors(), "Battery", &TSensor::Name);
  if (battery == sensors.Sensors().end()) return;
  table.AddIdAndTime();
  const std::size_t value = table.AddField("Battery", TFieldType::Single);
  table.Reserve(battery->Count());
  for (std::size_t j = 0; j < battery->Count(); ++j) {
    table.AppendAt(j, DateTimeOf(events.StartTime, battery->GetItem(j).time));
    table.SetSingle(value, battery->GetItem(j).xvalue);
    ReportRow("Battery data", j, battery->Count(), progress);
  }
  table.AddIndexPair("Timestamp", "Timestamp");
  table.AddIndexPair("Battery", "Battery");
  table.SelectIndex("TimestampASC");
}

}  // namespace

void LoadKorvexFileData(const TMissionData& mission, const TEventList& events, const TSensorList& sensors,
                        const TDatasetOptions& options, IProgress& progress, TMissionDatasets& datasets) {
  LoadEvents(mission, events, sensors, progress, datasets);
  progress.SetPosition(3.0);
  const auto orderBy = static_cast<std::size_t>(options.orderBy);
  FillMostImportantEvents(orderBy < kOrderByIndexes.size() ? kOrderByIndexes[orderBy] : std::string_view{}, datasets);
  progress.SetPosition(4.0);
  FillCards(progress, datasets);
  progress.SetPosition(5.0);
  FillSensors(events, sensors, progress, datasets.Sensors);
  FillBattery(events, sensors, progress, datasets.Battery);
  datasets.SensorMetrics.clear();
  for (const TSensor& sensor : sensors.Sensors()) datasets.SensorMetrics.push_back(CalcSensorMetrics(sensor));
  ApplyAnalogNames(options.analogNames, datasets);
  ApplyDateFormat(datasets);
}

void LoadEvents(const TMissionData& mission, const TEventList& events, const TSensorList& sensors, IProgress& progress,
                TMissionDatasets& datasets) {
  progress.SetStatus("Populating Shock Event Dataset...");
  progress.SetPosition(2.0);
  TDataset& table = datasets.Events;
  table.Clear();
  table.AddIdAndTime();
  std::array<std::size_t, kMetricCount> metrics{};
  std::ranges::transform(kMetrics, metrics.begin(), [&table](const TQuantityRow& metric) {
    return table.AddField(std::string(metric.field), TFieldType::Single);
  });
  DefineSensorFields(kEventColumns, sensors, table);
  table.Reserve(events.Count());

  // Of two sensors of one name the last that has readings counts.
  const TSources sources = FindSources(kEventColumns, table, [&sensors](std::string_view name) {
    std::optional<std::size_t> last;
    for (std::size_t i = 0; i < sensors.Count(); ++i) {
      if (sensors.GetItem(i).Name == name && sensors.GetItem(i).Count() > 0) last = i;
    }
    return last;
  });
  const TSensorLookup lookup(sensors, events.StartTime);
  const TThresholds levels = ThresholdsOf(mission);

  datasets.Metrics.clear();
  datasets.Metrics.reserve(events.Count());
  for (std::size_t i = 0; i < events.Count(); ++i) {
    const TEvent& event = events.GetItem(i);
    const double time = DateTimeOf(events.StartTime, event.GetStartTime());
    const TEventMetrics& values = datasets.Metrics.emplace_back(CalcEventMetrics(event, levels));
    table.AppendAt(i, time);
    table.SetSingle(metrics[0], event.Max);
    table.SetSingle(metrics[1], static_cast<float>(values.totTotal));
    table.SetSingle(metrics[2], static_cast<float>(values.totMax));
    table.SetSingle(metrics[3], static_cast<float>(values.iotTotal));
    table.SetSingle(metrics[4], static_cast<float>(values.iotMax));
    SetSensorFields(
        sources, [&](std::size_t sensor) { return std::optional(lookup.SensorValueAt(sensor, time)); }, table);
    ReportRow("Shock Events", i, events.Count(), progress);
  }
  for (const char* key : {"ID", "Timestamp"}) table.AddIndexPair(key, key);
  for (const TQuantityRow& metric : kMetrics) table.AddIndexPair(metric.indexKey, metric.field);
  DefineSensorIndexes(kEventColumns, table);
}

void FillMostImportantEvents(std::string_view index, TMissionDatasets& datasets) {
  TDataset& events = datasets.Events;
  TDataset& table = datasets.Important;
  table.Clear();
  for (const TField& field : events.Fields()) table.AddField(field.Key, field.Type, field.Label);
  events.SelectIndex(index);
  for (events.First(); !events.Eof() && table.RecordCount() < kMostImportantCount; events.Next()) {
    table.AppendCopy(events, events.CurrentRow());
  }
  events.SelectIndex("TimestampASC");
  ApplyDateFormat(datasets);
}

void ApplyDateFormat(TMissionDatasets& datasets) {
  const auto apply = [](TDataset& table, std::string_view field, const std::string& mask) {
    if (const auto found = table.FindField(field)) table.SetDisplayFormat(*found, mask);
  };
  for (TDataset* table : {&datasets.Events, &datasets.Important, &datasets.Sensors, &datasets.Battery}) {
    apply(*table, "Timestamp", DateTimeMask());
  }
  apply(datasets.Cards, "Date and Time", DateTimeMask() + ".z");
}

void ApplyAnalogNames(std::span<const std::string, kAnalogInputs.size()> names, TMissionDatasets& datasets) {
  for (const auto& [name, table] : kTables) {
    for (std::size_t i = 0; i < kAnalogInputs.size(); ++i) {
      const std::string_view channel = kAnalogInputs[i]->field;
      const auto field = (datasets.*table).FindField(channel);
      if (field) (datasets.*table).SetLabel(*field, names[i].empty() ? std::string(channel) : names[i]);
    }
  }
}

float DewPoint(float temperature, float humidity) {
  const double t = temperature;
  const double v = humidity * (61.1 * 7.5 * t / (t + 237.7)) / 100;
  if (!(v > 0)) return std::numeric_limits<float>::quiet_NaN();
  const double l = std::log(v);
  return static_cast<float>((237.7 * l - 430.22) / (19.08 - l));
}
