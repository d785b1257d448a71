#include "fleet/uFleetTables.h"

#include <algorithm>
#include <cmath>

#include "analysis/uMissionDatasets.h"
#include "analysis/uShockAnalysis.h"
#include "base/uDateTime.h"
#include "model/uQuantities.h"
#include "shell/uLimitProfileFile.h"

namespace {

constexpr TFleetType kText = TFleetType::Text, kInteger = TFleetType::Integer, kReal = TFleetType::Real;
using TValue = TFleetValue;

TValue Real(double value) {
  return std::isfinite(value) ? TValue(value) : TValue();
}
TValue Whole(std::size_t value) {
  return static_cast<std::int64_t>(value);
}
TValue Text(std::string_view text) {
  return text.empty() ? TValue() : TValue(std::string(text));
}

// As recorded, to the millisecond.
TValue Time(double dateTime) {
  constexpr double kFirstYear = -693593, kPastLastYear = 2958466;
  if (!(dateTime >= kFirstYear && dateTime < kPastLastYear)) return {};
  return FormatDateTime("yyyy-mm-ddThh:nn:ss.zzz", dateTime);
}

// A sensor's readings that are numbers.
struct TSensorFigures {
  const TSensor* sensor = nullptr;
  const TSensorVerdict* verdict = nullptr;  // null without limits
  const TSensorValue *min = nullptr, *max = nullptr;
  double sum = 0;
  std::size_t numbers = 0;
  double firstTime = 0, lastTime = 0;  // ms, over all readings
};

// What the columns of a recording are made of.
struct TFacts {
  const TFleetFile& file;
  const TFleetMission& mission;
  TMissionDatasets tables = {};
  std::vector<TShockAnalysis> analyses = {};  // of each event, where it is asked for
  std::vector<TSensorFigures> sensors = {};
  TVerdict verdict = {};
  TJudgementOutcome judgement = TJudgementOutcome::NotJudged;
  std::size_t samples = 0;
  double totTotal = 0, totMax = 0, iotTotal = 0, iotMax = 0;
  std::optional<double> largestVelocityChange = {};

  [[nodiscard]] TValue TimeOf(double ms) const { return Time(DateTimeOf(mission.events.StartTime, ms)); }
  // NULL without events.
  [[nodiscard]] TValue OfEvents(double value) const { return mission.events.Count() == 0 ? TValue() : Real(value); }
};

struct TEventFacts {
  const TFacts& facts;
  std::size_t index;

  [[nodiscard]] const TEvent& Event() const { return facts.mission.events.GetItem(index); }
  [[nodiscard]] const TEventMetrics& Metrics() const { return facts.tables.Metrics[index]; }
  // NULL where the recording has no such sensor.
  [[nodiscard]] TValue Sensor(std::string_view field) const {
    const TDataset& events = facts.tables.Events;
    const auto column = events.FindField(field);
    return !column || events.IsNull(index, *column) ? TValue() : Real(events.Single(index, *column));
  }
  [[nodiscard]] const TShockAnalysis& Analysis() const { return facts.analyses[index]; }
  // NULL where the event has no pulse.
  [[nodiscard]] TValue OfPulse(const TValue& value) const {
    return Analysis().pulse.problem == TPulseProblem::None ? value : TValue();
  }
  [[nodiscard]] TValue OfFall(const TValue& value) const {
    return Analysis().fall.problem == TFallProblem::None ? value : TValue();
  }
};

struct TSensorFacts {
  const TFacts& facts;
  const TSensorFigures& figures;

  [[nodiscard]] TValue TimeOf(double ms) const { return figures.sensor->Count() == 0 ? TValue() : facts.TimeOf(ms); }
  [[nodiscard]] TValue OfNumbers(double value) const { return figures.numbers == 0 ? TValue() : Real(value); }
};

template <class TOf>
struct TColumn {
  std::string_view name;
  TFleetType type;
  TValue (*value)(const TOf&);
};

// The table "recording", in four parts by what they need.
constexpr TColumn<TFleetFile> kFileColumns[] = {
    {"path", kText, [](const TFleetFile& f) { return Text(f.path); }},
    {"size_bytes", kInteger, [](const TFleetFile& f) { return f.size ? TValue(*f.size) : TValue(); }},
    {"modified", kText, [](const TFleetFile& f) { return Text(f.modified); }},
    {"sha256", kText, [](const TFleetFile& f) { return Text(f.sha256); }},
    {"status", kInteger, [](const TFleetFile& f) { return TValue(std::int64_t{f.status}); }},
    {"reason", kText, [](const TFleetFile& f) { return Text(f.reason); }},
    {"program_version", kText, [](const TFleetFile& f) { return Text(f.programVersion); }},
    {"analysed_at", kText, [](const TFleetFile& f) { return Text(f.analysedAt); }},
    {"options", kText, [](const TFleetFile& f) { return TValue(f.options); }},
    {"creator_valid", kInteger,
     [](const TFleetFile& f) { return f.creatorValid ? TValue(std::int64_t{*f.creatorValid}) : TValue(); }},
};

constexpr TColumn<TMissionData> kHeaderColumns[] = {
    {"mission_id", kText, [](const TMissionData& m) { return Text(m.sID); }},
    {"title", kText, [](const TMissionData& m) { return Text(m.sTitle); }},
    {"operator", kText, [](const TMissionData& m) { return Text(m.sOperator); }},
    {"logger", kText, [](const TMissionData& m) { return Text(m.sKorvexType + " " + m.sKorvexVersion); }},
    {"trigger_on_g", kReal, [](const TMissionData& m) { return Real(m.adxl_level_on); }},
    {"trigger_off_g", kReal, [](const TMissionData& m) { return Real(m.adxl_level_off); }},
    {"fast_period_s", kReal, [](const TMissionData& m) { return Real(m.rec_fast_rate); }},
    {"slow_period_s", kReal, [](const TMissionData& m) { return Real(m.tb_meas_rate); }},
};

constexpr TColumn<TFacts> kMissionColumns[] = {
    {"begin", kText, [](const TFacts& f) { return f.verdict.firstTime ? Time(*f.verdict.firstTime) : TValue(); }},
    {"end", kText, [](const TFacts& f) { return f.verdict.lastTime ? Time(*f.verdict.lastTime) : TValue(); }},
    {"span_s", kReal,
     [](const TFacts& f) {
       if (!f.verdict.firstTime) return TValue();
       return Real(std::round((*f.verdict.lastTime - *f.verdict.firstTime) * kMsPerDay) / 1000);
     }},
    {"events", kInteger, [](const TFacts& f) { return Whole(f.mission.events.Count()); }},
    {"samples", kInteger, [](const TFacts& f) { return Whole(f.samples); }},
    {"clipped_events", kInteger, [](const TFacts& f) { return Whole(f.verdict.clipped.size()); }},
    {"tot_total_ms", kReal, [](const TFacts& f) { return f.OfEvents(f.totTotal); }},
    {"tot_max_ms", kReal, [](const TFacts& f) { return f.OfEvents(f.totMax); }},
    {"iot_total_g_ms", kReal, [](const TFacts& f) { return f.OfEvents(f.iotTotal); }},
    {"iot_max_g_ms", kReal, [](const TFacts& f) { return f.OfEvents(f.iotMax); }},
    {"delta_v_max_m_s", kReal,
     [](const TFacts& f) { return f.largestVelocityChange ? Real(*f.largestVelocityChange) : TValue(); }},
    {"above_limit", kInteger,
     [](const TFacts& f) { return f.verdict.above ? Whole(f.verdict.above->count) : TValue(); }},
    {"verdict", kText,
     [](const TFacts& f) {
       if (f.judgement == TJudgementOutcome::NotJudged) return TValue();
       return Text(f.judgement == TJudgementOutcome::Passed ? "passed" : "failed");
     }},
    {"damaged", kInteger, [](const TFacts& f) { return TValue(std::int64_t{f.mission.damaged}); }},
};

constexpr TColumn<TPeakVerdict> kPeakColumns[] = {
    {"peak_g", kReal, [](const TPeakVerdict& p) { return Real(p.value); }},
    {"peak_axis", kText, [](const TPeakVerdict& p) { return Text(p.axis); }},
    {"peak_axis_g", kReal, [](const TPeakVerdict& p) { return Real(p.axisValue); }},
    {"peak_event", kInteger, [](const TPeakVerdict& p) { return Whole(p.event); }},
    {"peak_time", kText, [](const TPeakVerdict& p) { return Time(p.time); }},
};

// The key of a column of the event table, for the sensors nearest to an event.
template <std::size_t N>
struct TFieldName {
  char text[N];
  constexpr TFieldName(const char (&name)[N]) { std::copy_n(name, N, text); }  // NOLINT: a name is one
};
template <TFieldName Name>
TValue SensorOf(const TEventFacts& f) {
  return f.Sensor(Name.text);
}

constexpr TColumn<TEventFacts> kEventColumns[] = {
    {"recording", kText, [](const TEventFacts& f) { return Text(f.facts.file.path); }},
    {"event_id", kInteger, [](const TEventFacts& f) { return TValue(std::int64_t{f.Event().ID}); }},
    {"begin", kText, [](const TEventFacts& f) { return f.facts.TimeOf(f.Event().GetStartTime()); }},
    {"samples", kInteger, [](const TEventFacts& f) { return Whole(f.Event().Count()); }},
    {"peak_g", kReal, [](const TEventFacts& f) { return Real(f.Event().Max); }},
    {"peak_axis", kText, [](const TEventFacts& f) { return Text(f.Event().MaxAxis); }},
    {"peak_axis_g", kReal, [](const TEventFacts& f) { return Real(f.Event().MaxSingle); }},
    {"clipped", kInteger, [](const TEventFacts& f) { return TValue(std::int64_t{f.Metrics().clipped}); }},
    {"tot_total_ms", kReal, [](const TEventFacts& f) { return Real(f.Metrics().totTotal); }},
    {"tot_max_ms", kReal, [](const TEventFacts& f) { return Real(f.Metrics().totMax); }},
    {"iot_total_g_ms", kReal, [](const TEventFacts& f) { return Real(f.Metrics().iotTotal); }},
    {"iot_max_g_ms", kReal, [](const TEventFacts& f) { return Real(f.Metrics().iotMax); }},
    {"temperature_c", kReal, SensorOf<"Temp.">},
    {"temperature_p_c", kReal, SensorOf<"Temp. P">},
    {"temperature_rh_c", kReal, SensorOf<"Temp. RH">},
    {"humidity_rh", kReal, SensorOf<"Humidity">},
    {"dew_point_c", kReal, SensorOf<"Dew Point">},
    {"light_lux", kReal, SensorOf<"Light">},
    {"pressure_mbar", kReal, SensorOf<"Pressure">},
    {"battery_v", kReal, SensorOf<"Battery">},
    {"a1", kReal, SensorOf<"A1">},
    {"a2", kReal, SensorOf<"A2">},
    {"a3", kReal, SensorOf<"A3">},
    {"a4", kReal, SensorOf<"A4">},
};

constexpr TColumn<TEventFacts> kAnalysisColumns[] = {
    {"delta_v_m_s", kReal, [](const TEventFacts& f) { return f.OfPulse(Real(f.Analysis().pulse.velocityChange)); }},
    {"delta_v_x_m_s", kReal, [](const TEventFacts& f) { return f.OfPulse(Real(f.Analysis().pulse.velocity.x)); }},
    {"delta_v_y_m_s", kReal, [](const TEventFacts& f) { return f.OfPulse(Real(f.Analysis().pulse.velocity.y)); }},
    {"delta_v_z_m_s", kReal, [](const TEventFacts& f) { return f.OfPulse(Real(f.Analysis().pulse.velocity.z)); }},
    {"duration_10_ms", kReal, [](const TEventFacts& f) { return f.OfPulse(Real(f.Analysis().pulse.durationTenth)); }},
    {"duration_33_ms", kReal, [](const TEventFacts& f) { return f.OfPulse(Real(f.Analysis().pulse.durationThird)); }},
    {"half_sine_ms", kReal, [](const TEventFacts& f) { return f.OfPulse(Real(f.Analysis().pulse.halfSine)); }},
    {"direction", kText,
     [](const TEventFacts& f) { return f.OfPulse(Text(DirectionText(f.Analysis().pulse.direction))); }},
    {"hit_side", kText,
     [](const TEventFacts& f) { return f.OfPulse(Text(DirectionText(f.Analysis().pulse.direction.Opposite()))); }},
    {"fall_mm", kReal, [](const TEventFacts& f) { return f.OfFall(Real(f.Analysis().fall.height)); }},
    {"fall_is", kText,
     [](const TEventFacts& f) { return f.OfFall(Text(f.Analysis().fall.isLeast ? "least" : "measured")); }},
    {"drop_min_mm", kReal,
     [](const TEventFacts& f) { return f.Analysis().drop ? Real(f.Analysis().drop->min) : TValue(); }},
    {"drop_max_mm", kReal,
     [](const TEventFacts& f) { return f.Analysis().drop ? Real(f.Analysis().drop->max) : TValue(); }},
    {"reason", kText, [](const TEventFacts& f) { return Text(f.Analysis().reason); }},
};

TValue OutOf(const TSensorFacts& f, const TLimitVerdict TSensorVerdict::*limit) {
  return f.figures.verdict == nullptr ? TValue() : Real((f.figures.verdict->*limit).timeOut / 1000);
}

constexpr TColumn<TSensorFacts> kSensorColumns[] = {
    {"recording", kText, [](const TSensorFacts& f) { return Text(f.facts.file.path); }},
    {"name", kText, [](const TSensorFacts& f) { return Text(f.figures.sensor->Name); }},
    {"unit", kText,
     [](const TSensorFacts& f) { return Text(FindQuantity(&TQuantityRow::sensorName, f.figures.sensor->Name)->unit); }},
    {"readings", kInteger, [](const TSensorFacts& f) { return Whole(f.figures.sensor->Count()); }},
    {"first_time", kText, [](const TSensorFacts& f) { return f.TimeOf(f.figures.firstTime); }},
    {"last_time", kText, [](const TSensorFacts& f) { return f.TimeOf(f.figures.lastTime); }},
    {"min", kReal, [](const TSensorFacts& f) { return f.figures.min ? Real(f.figures.min->xvalue) : TValue(); }},
    {"min_time", kText, [](const TSensorFacts& f) { return f.figures.min ? f.TimeOf(f.figures.min->time) : TValue(); }},
    {"max", kReal, [](const TSensorFacts& f) { return f.figures.max ? Real(f.figures.max->xvalue) : TValue(); }},
    {"max_time", kText, [](const TSensorFacts& f) { return f.figures.max ? f.TimeOf(f.figures.max->time) : TValue(); }},
    {"mean", kReal,
     [](const TSensorFacts& f) { return f.OfNumbers(f.figures.sum / static_cast<double>(f.figures.numbers)); }},
    {"below_limit_s", kReal, [](const TSensorFacts& f) { return OutOf(f, &TSensorVerdict::below); }},
    {"above_limit_s", kReal, [](const TSensorFacts& f) { return OutOf(f, &TSensorVerdict::above); }},
};

template <class TOf, std::size_t N>
void AddColumns(const TColumn<TOf> (&columns)[N], TFleetTable& table) {
  for (const auto& column : columns) table.columns.push_back({column.name, column.type});
}

template <class TOf, std::size_t N>
void FillColumns(const TColumn<TOf> (&columns)[N], const TOf* of, TFleetRow& row) {
  for (const auto& column : columns) row.push_back(of == nullptr ? TValue() : column.value(*of));
}

TSensorFigures FiguresOf(const TSensor& sensor) {
  TSensorFigures figures{.sensor = &sensor};
  if (sensor.Count() == 0) return figures;
  figures.firstTime = figures.lastTime = sensor.GetStartTime();
  for (const TSensorValue& value : sensor.Values()) {
    figures.firstTime = std::min(figures.firstTime, value.time);
    figures.lastTime = std::max(figures.lastTime, value.time);
    if (std::isnan(value.xvalue)) continue;
    if (figures.min == nullptr || value.xvalue < figures.min->xvalue) figures.min = &value;
    if (figures.max == nullptr || value.xvalue > figures.max->xvalue) figures.max = &value;
    figures.sum += double{value.xvalue};
    ++figures.numbers;
  }
  return figures;
}

void Judge(const TFleetOptions& options, TFacts& facts) {
  const TFleetMission& mission = facts.mission;
  for (const TSensor& sensor : mission.sensors.Sensors()) {
    facts.tables.SensorMetrics.push_back(CalcSensorMetrics(sensor));
    facts.sensors.push_back(FiguresOf(sensor));
  }
  std::optional<TVerdictLimits> limits;
  if (options.limits) limits = LimitsInForce(*options.limits, mission.header);
  facts.verdict = JudgeMission(mission.events, mission.sensors, facts.tables, limits);
  if (!options.limits) return;
  facts.judgement = JudgeByProfile(facts.verdict, *options.limits).outcome;
  for (const TSensorVerdict& verdict : facts.verdict.sensors) facts.sensors[verdict.sensor].verdict = &verdict;
}

void SumUpEvents(const TFleetOptions& options, TFacts& facts) {
  const TEventList& events = facts.mission.events;
  for (std::size_t i = 0; i < events.Count(); ++i) {
    const TEventMetrics& metrics = facts.tables.Metrics[i];
    facts.samples += events.GetItem(i).Count();
    facts.totTotal += metrics.totTotal;
    facts.iotTotal += metrics.iotTotal;
    facts.totMax = std::max(facts.totMax, metrics.totMax);
    facts.iotMax = std::max(facts.iotMax, metrics.iotMax);
  }
  const double levelOn = ThresholdsOf(facts.mission.header).totOn;
  std::optional<double>& largest = facts.largestVelocityChange;
  if (!options.analysis) {
    if (const auto found = LargestVelocityChange(events, levelOn)) largest = found->velocityChange;
    return;
  }
  for (const TEvent& event : events.Events()) {
    const TPulse& pulse = facts.analyses.emplace_back(AnalyseShock(event, levelOn)).pulse;
    if (pulse.problem == TPulseProblem::None) largest = std::max(largest.value_or(0), pulse.velocityChange);
  }
}

void AddMission(const TFleetMission& mission, const TFleetOptions& options, const TFleetFile& file, TFleetRows& rows) {
  TFacts facts{.file = file, .mission = mission};
  TNoProgress progress;
  LoadEvents(mission.header, mission.events, mission.sensors, progress, facts.tables);
  Judge(options, facts);
  SumUpEvents(options, facts);
  TFleetRow& recording = rows[0][0];
  FillColumns(kHeaderColumns, mission.header.bValid ? &mission.header : nullptr, recording);
  FillColumns(kMissionColumns, &facts, recording);
  FillColumns(kPeakColumns, facts.verdict.peak ? &*facts.verdict.peak : nullptr, recording);
  for (std::size_t i = 0; i < mission.events.Count(); ++i) {
    const TEventFacts event{facts, i};
    FillColumns(kEventColumns, &event, rows[1].emplace_back());
    FillColumns(kAnalysisColumns, options.analysis ? &event : nullptr, rows[1].back());
  }
  for (const TSensorFigures& figures : facts.sensors) {
    const TSensorFacts sensor{facts, figures};
    FillColumns(kSensorColumns, &sensor, rows[2].emplace_back());
  }
}

}  // namespace

const std::array<TFleetTable, 3>& FleetTables() {
  static const std::array<TFleetTable, 3> kTables = [] {
    std::array<TFleetTable, 3> tables = {
        {{"recording", {}, "path"}, {"event", {}, "recording"}, {"sensor", {}, "recording"}}};
    AddColumns(kFileColumns, tables[0]);
    AddColumns(kHeaderColumns, tables[0]);
    AddColumns(kMissionColumns, tables[0]);
    AddColumns(kPeakColumns, tables[0]);
    AddColumns(kEventColumns, tables[1]);
    AddColumns(kAnalysisColumns, tables[1]);
    AddColumns(kSensorColumns, tables[2]);
    return tables;
  }();
  return kTables;
}

std::string TFleetOptions::Text() const {
  return (analysis ? "analysis\n" : "") + limitsText;
}

TFleetRows FleetRowsOf(const TFleetFile& file, const TFleetMission* mission, const TFleetOptions& options) {
  TFleetRows rows;
  FillColumns(kFileColumns, &file, rows[0].emplace_back());
  if (mission != nullptr) AddMission(*mission, options, file, rows);
  rows[0][0].resize(FleetTables()[0].columns.size());
  return rows;
}
