#include "gui/report/uReportTables.h"
#include "gui/report/uEventCard.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "analysis/uMissionFigures.h"
#include "base/uDateTime.h"
#include "gui/common/uQtText.h"
#include "gui/report/uPaperTable.h"
#include "gui/report/uPaperText.h"
#include "shell/uNoteCommands.h"
#include "shell/uSettingsCommands.h"
#include "shell/uShownVerdict.h"
#include "shell/uVerdictCells.h"

namespace {

// The columns of the events that fit every page.
constexpr std::string_view kImportantFields[] = {
    "ID", "Timestamp", "Acceleration max", "ToT total", "ToT max", "IoT total", "IoT max", "Temp.", "Humidity"};

std::vector<TPaperFigure> PaperFigures(const std::vector<TFigure>& figures) {
  std::vector<TPaperFigure> shown;
  for (const TFigure& figure : figures) shown.push_back({PlainText(figure.label), PlainText(figure.text)});
  return shown;
}

const TQuantityRow* QuantityOf(const TField& field) {
  return field.Type == TFieldType::Single ? FindQuantity(&TQuantityRow::field, field.Key) : nullptr;
}

QString CellText(const TDataset& table, std::size_t row, std::size_t field, const TReportData& data) {
  const TQuantityRow* quantity = QuantityOf(table.Fields()[field]);
  if (quantity == nullptr || !quantity->quantity || table.IsNull(row, field)) {
    return QtText(Printable(table.DisplayText(row, field)));
  }
  const float value = table.Single(row, field);
  return LimitMark(data.facts.limits, *quantity->quantity, value) +
         NumberText(*quantity->quantity, double{value}, data);
}

// As wide as any cell of the column, without a look at each: the digits before the point of the largest value, and as
// many behind it as the format has.
QString Widest(const TDataset& table, std::size_t field, const TReportData& data) {
  const TField& column = table.Fields()[field];
  if (table.RowCount() == 0) return {};
  if (column.Type == TFieldType::Integer) return QString::number(table.RowCount());
  if (column.Type != TFieldType::Single) return QtText(table.DisplayText(0, field));
  double largest = 0;
  bool isNegative = false;
  for (const float value : table.Singles(field)) {
    if (!std::isfinite(value)) continue;
    largest = std::max(largest, std::fabs(double{value}));
    isNegative = isNegative || value < 0;
  }
  const TQuantityRow* quantity = QuantityOf(column);
  const bool hasFormat = quantity != nullptr && quantity->quantity;
  const std::string_view mask = hasFormat ? data.facts.display.FormatOf(*quantity->quantity) : "0.######";
  const int decimals = static_cast<int>(mask.size()) - 2;
  QString widest = largest < 1e15 ? QString::number(std::ceil(largest), 'f', 0) : QString("2.88888888888888E308");
  widest += '.' + QString(decimals, '8');
  if (isNegative) widest.prepend('-');
  const bool marked =
      hasFormat && data.facts.limits && static_cast<std::size_t>(*quantity->quantity) < kLimitedQuantityCount;
  return marked ? "▲ " + widest : widest;
}

std::pair<QString, QString> TitleOf(const TField& field) {
  const TQuantityRow* quantity = QuantityOf(field);
  const QString unit = quantity == nullptr || !quantity->quantity ? QString() : QtText(UnitInWords(*quantity));
  if (field.Key == "Acceleration max") return {QObject::tr("Peak"), unit};
  if (field.Key == "Timestamp") return {QObject::tr("Date and time"), {}};
  return {PlainText(field.Label), unit};
}

// Row i of the paper is row rowAt(i) of the table.
template <class TRowAt>
TPaperTable DatasetTable(const TDataset& table, const std::vector<std::size_t>& fields, std::size_t rows,
                         const TRowAt& rowAt, const TReportData& data) {
  TPaperTable paper{{}, rows};
  for (const std::size_t field : fields) {
    const TField& column = table.Fields()[field];
    auto [title, unit] = TitleOf(column);
    if (TextWidth(TTextStyle::Strong, title) > kMaxHead && title != QtText(column.Key)) {
      paper.note += QString("%1: %2. ").arg(QtText(column.Key), title);
      title.prepend(QtText(column.Key) + ' ');
    }
    paper.columns.push_back(
        {.title = title,
         .unit = unit,
         .text = [&table, field, rowAt, &data](std::size_t row) { return CellText(table, rowAt(row), field, data); },
         .isNumber = column.Type != TFieldType::DateTime,
         .isKey = column.Key == "ID" || column.Key == "Timestamp",
         .widest = Widest(table, field, data)});
  }
  return paper;
}

std::vector<std::size_t> AllFields(const TDataset& table) {
  std::vector<std::size_t> fields;
  for (std::size_t i = 0; i < table.Fields().size(); ++i) fields.push_back(i);
  return fields;
}

// The rows of the report's time; tables of readings rise in time, or nearly so.
void AddReadings(TPageFlow& flow, const QString& heading, const TDataset& table, const TReportData& data) {
  const auto timestamp = table.FindField("Timestamp");
  std::vector<std::uint32_t> rows;
  if (timestamp) {
    const std::span<const double> times = table.DateTimes(*timestamp);
    const TRange& range = data.config.time;
    for (std::uint32_t row = 0; row < times.size(); ++row) {
      const bool isIn = (!range.from || times[row] >= *range.from) && (!range.to || times[row] <= *range.to);
      if (isIn) rows.push_back(row);
    }
  }
  const std::size_t count = rows.size();
  const auto rowAt = [rows = std::make_shared<std::vector<std::uint32_t>>(std::move(rows))](std::size_t i) {
    return std::size_t{(*rows)[i]};
  };
  AddTable(flow, heading, DatasetTable(table, AllFields(table), count, rowAt, data),
           QObject::tr("There are no readings."));
}

TPaperColumn TextColumn(const QString& title, std::function<QString(std::size_t)> text, bool isKey = false) {
  return {.title = title, .unit = {}, .text = std::move(text), .isNumber = false, .isKey = isKey};
}

TPaperColumn NumberColumn(const QString& title, const QString& unit, std::function<QString(std::size_t)> text) {
  return {.title = title, .unit = unit, .text = std::move(text)};
}

TPaperTable GroupTable(const QString& name, const std::vector<TEventGroup>& groups, const TReportData& data) {
  TPaperTable table{
      {TextColumn(
           name, [&groups](std::size_t i) { return QtText(groups[i].name); }, true),
       NumberColumn(QObject::tr("Events"), {}, [&groups](std::size_t i) { return QString::number(groups[i].events); })},
      groups.size()};
  const auto& above = data.facts.verdict.above;
  if (above && above->limits.maxSource != TLimitSource::File) {
    table.columns.push_back(NumberColumn(QObject::tr("Above alarm"), {},
                                         [&groups](std::size_t i) { return QString::number(groups[i].above); }));
  }
  const auto peak = [&groups, &data](std::size_t i) {
    if (!groups[i].peakEvent) return QString("–");
    return NumberText(TQuantity::Acceleration, double{data.Mission().Events.GetItem(*groups[i].peakEvent).Max}, data);
  };
  const auto event = [&groups](std::size_t i) {
    return groups[i].peakEvent ? QString::number(*groups[i].peakEvent) : QString("–");
  };
  table.columns.push_back(NumberColumn(QObject::tr("Largest peak"), "g", peak));
  table.columns.push_back(NumberColumn(QObject::tr("in event"), {}, event));
  table.columns.push_back(NumberColumn(QObject::tr("Largest IoT total"), "g·ms", [&groups, &data](std::size_t i) {
    return groups[i].events == 0 ? QString("–") : NumberText(TQuantity::IoT, groups[i].maxIot, data);
  }));
  return table;
}

const TLimitVerdict& SideOf(const TSensorVerdict& sensor, bool below) {
  return below ? sensor.below : sensor.above;
}

void AddExtremes(TPageFlow& flow, const TReportData& data) {
  const auto& sensors = data.facts.verdict.sensors;
  const auto name = [&](std::size_t i) { return PlainText(SensorLabel(*sensors[i].quantity, data.facts.display)); };
  const auto value = [&](std::optional<TReadingAt> TSensorVerdict::*side) {
    return [&sensors, &data, side](std::size_t i) {
      const auto& reading = sensors[i].*side;
      return reading ? NumberText(*sensors[i].quantity->quantity, double{reading->value}, data) : QString("–");
    };
  };
  const auto when = [&](std::optional<TReadingAt> TSensorVerdict::*side) {
    return [&sensors, side](std::size_t i) {
      const auto& reading = sensors[i].*side;
      return reading ? MomentText(reading->time) : QString("–");
    };
  };
  TPaperTable table{{TextColumn(QObject::tr("Sensor"), name, true),
                     TextColumn(QObject::tr("Unit"), [&](std::size_t i) { return QtText(sensors[i].quantity->unit); }),
                     NumberColumn(QObject::tr("Minimum"), {}, value(&TSensorVerdict::min)),
                     TextColumn(QObject::tr("first at"), when(&TSensorVerdict::min)),
                     NumberColumn(QObject::tr("Maximum"), {}, value(&TSensorVerdict::max)),
                     TextColumn(QObject::tr("first at"), when(&TSensorVerdict::max))},
                    sensors.size()};
  const bool none = std::ranges::none_of(sensors, [](const TSensorVerdict& each) { return each.min.has_value(); });
  flow.AddSubheading(QObject::tr("Readings"), none ? 20 : TableStart(table.rows));
  if (none) return flow.AddParagraph(QObject::tr("There are no readings."));
  AddPlainTable(flow, table);
}

// A row for each limit that a sensor was beyond.
void AddExcursions(TPageFlow& flow, const TReportData& data) {
  struct TRow {
    const TSensorVerdict* sensor;
    bool below;
  };
  std::vector<TRow> rows;
  for (const TSensorVerdict& sensor : data.facts.verdict.sensors) {
    for (const bool below : {true, false}) {
      if (SideOf(sensor, below).IsOut()) rows.push_back({&sensor, below});
    }
  }
  if (!data.facts.limits) return;
  const QString caption = QObject::tr("* a default limit, which nobody chose for this recording");
  flow.AddSubheading(QObject::tr("Out of limits"), flow.CaptionHeight(caption) + TableStart(rows.size()));
  if (rows.empty()) return flow.AddParagraph(QObject::tr("No sensor was out of its limits."));
  const bool anyDefault = std::ranges::any_of(
      rows, [](const TRow& row) { return SideOf(*row.sensor, row.below).source == TLimitSource::Default; });
  if (anyDefault) flow.AddCaption(caption);
  const auto column = [&rows](const QString& title, auto text) {
    return TextColumn(title, [rows, text](std::size_t i) {
      return text(*rows[i].sensor, SideOf(*rows[i].sensor, rows[i].below), rows[i].below);
    });
  };
  using TOut = const TSensorVerdict&;
  using TSide = const TLimitVerdict&;
  const auto name = [&data](TOut sensor, TSide, bool) {
    return PlainText(SensorLabel(*sensor.quantity, data.facts.display));
  };
  const auto limit = [](TOut sensor, TSide side, bool below) {
    const QString value =
        QString("%1 %2 %3")
            .arg(below ? "below" : "above", QtText(GeneralFloat(side.limit)), QtText(sensor.quantity->unit));
    return side.source == TLimitSource::Default ? value.trimmed() + " *" : value.trimmed();
  };
  const auto timeOut = [](TOut, TSide side, bool) { return QtText(DurationInWords(side.timeOut / kMsPerDay)); };
  const auto count = [](TOut, TSide side, bool) { return QString::number(side.excursions); };
  const auto first = [](TOut, TSide side, bool) { return MomentText(side.first->begin); };
  const auto longest = [](TOut, TSide side, bool) {
    return QString("%1, %2").arg(MomentText(side.longest->begin),
                                 QtText(DurationInWords(side.longest->duration / kMsPerDay)));
  };
  TPaperTable table{{column(QObject::tr("Sensor"), name), column(QObject::tr("Limit"), limit),
                     column(QObject::tr("In all"), timeOut), column(QObject::tr("Times"), count),
                     column(QObject::tr("First"), first), column(QObject::tr("Longest"), longest)},
                    rows.size()};
  table.columns.front().isKey = true;
  table.columns[3].isNumber = true;
  AddPlainTable(flow, table);
}

void AddCompared(TPageFlow& flow, const TReportData& data) {
  const auto& compared = data.facts.compared;
  if (compared.empty()) return;
  const QString name = PlainText(ReferenceName(*data.facts.reference));
  const auto column = [&compared](const QString& title, std::string TReferenceFigure::*text) {
    return TextColumn(title, [&compared, text](std::size_t i) { return PlainText(compared[i].*text); });
  };
  TPaperTable table{{column(QObject::tr("Figure"), &TReferenceFigure::label),
                     column(QObject::tr("This report"), &TReferenceFigure::here),
                     column(name, &TReferenceFigure::there), column("Δ", &TReferenceFigure::delta)},
                    compared.size()};
  table.columns.front().isKey = true;
  flow.AddSubheading(QObject::tr("Compared with %1").arg(name), TableStart(table.rows));
  AddPlainTable(flow, table);
}

// Those on the whole recording, and those of the report's time.
void AddNotes(TPageFlow& flow, const TReportData& data) {
  constexpr qsizetype kMaxText = 2500;  // characters
  const TShownMission& mission = data.Mission();
  const TRange& time = data.config.time;
  const TNotedEvents events(mission.Events);
  QStringList lines;
  if (!mission.Notes.problem.empty()) lines << AsSentence(mission.Notes.problem);
  for (const TNote& note : SortedNotes(mission)) {
    if (note.span && ((time.from && note.span->end < *time.from) || (time.to && note.span->start > *time.to))) continue;
    lines << ShownText(NoteSentence(note, events), kMaxText);
  }
  if (lines.isEmpty()) return;
  flow.AddSubheading(QObject::tr("Notes"), 30);
  for (const QString& line : lines) flow.AddParagraph(line);
}

}  // namespace

void AddMissionDetails(TPageFlow& flow, const TReportData& data) {
  const TShownMission& mission = data.Mission();
  flow.AddHeading(QObject::tr("Mission details"), 100);
  AddFigures(flow, PaperFigures(HeaderFigures(mission.Data)));
  if (!mission.Damage.empty()) AddFigures(flow, {{QObject::tr("Damage"), QtText(mission.Damage)}});
  flow.AddSubheading(QObject::tr("Events of the whole recording"), 40);
  std::vector<TFigure> events = EventFigures(mission.Summary, mission.Events, mission.Axes, FormatsOf(mission.Display));
  const auto& known = data.contents.velocityChange;
  const auto velocityChange = known ? *known : VelocityChangeFigure(mission.Events, ThresholdsOf(mission.Data).totOn);
  if (velocityChange) events.push_back(*velocityChange);
  AddFigures(flow, PaperFigures(events));
  flow.AddSubheading(QObject::tr("Sensors of the whole recording"), 30);
  if (mission.Summary.sensors.empty()) flow.AddParagraph(QObject::tr("The recording has no sensor readings."));
  AddFigures(flow, PaperFigures(NamedSensorFigures(mission)));
  AddNotes(flow, data);
}

void AddVerdict(TPageFlow& flow, const TReportData& data) {
  const TReportFacts& facts = data.facts;
  flow.AddHeading(QObject::tr("Verdict"), 60);
  if (facts.judgement) flow.AddParagraph(AsSentence(JudgementText(facts)));
  flow.AddParagraph(AsSentence(VerdictSentence(facts.verdict, facts.display)));
  flow.AddGap(4);
  AddFigures(flow, PaperFigures(VerdictFigures(facts.verdict, facts.display)));
  AddCompared(flow, data);
  if (facts.verdict.sensors.empty()) return;
  AddExtremes(flow, data);
  AddExcursions(flow, data);
}

void AddSummary(TPageFlow& flow, const TReportData& data) {
  const TEventGroups& groups = data.facts.groups;
  const QString none = QObject::tr("There are no shock events.");
  TPaperTable byAxis = GroupTable(QObject::tr("Axis of the peak"), groups.byAxis, data);
  if (data.facts.events.empty()) byAxis.rows = 0;
  AddTable(flow, QObject::tr("Summary by axis"), byAxis, none);
  AddTable(flow, QObject::tr("Summary by day"), GroupTable(QObject::tr("Day"), groups.byDay, data), none);
}

void AddImportantEvents(TPageFlow& flow, const TReportData& data) {
  const TDataset& table = data.Mission().Tables.Events;
  std::vector<std::size_t> fields;
  for (const std::string_view key : kImportantFields) {
    if (const auto field = table.FindField(key)) fields.push_back(*field);
  }
  const auto& rows = data.facts.important;
  const auto rowAt = [&rows](std::size_t i) { return std::size_t{rows[i]}; };
  const auto entry = static_cast<std::size_t>(data.Mission().Settings.orderBy);
  AddTable(flow, QObject::tr("Most important events"), DatasetTable(table, fields, rows.size(), rowAt, data),
           QObject::tr("There are no shock events."),
           QObject::tr("Ordered by %1.").arg(QtText(kOrderByCaptions.at(entry < kOrderByCaptions.size() ? entry : 0))));
}

void AddTables(TPageFlow& flow, const TReportData& data) {
  const TMissionDatasets& tables = data.Mission().Tables;
  if (data.config.eventsTable) {
    const auto& rows = data.facts.events;
    const auto rowAt = [&rows](std::size_t i) { return std::size_t{rows[i]}; };
    AddTable(flow, QObject::tr("Shock events"),
             DatasetTable(tables.Events, AllFields(tables.Events), rows.size(), rowAt, data),
             QObject::tr("There are no shock events."),
             data.facts.limits ? QObject::tr("▲ above, ▼ below a limit. Sensors: the reading nearest to the event.")
                               : QString());
  }
  if (data.config.sensorsTable) AddReadings(flow, QObject::tr("Sensor readings"), tables.Sensors, data);
  if (data.config.batteryTable) AddReadings(flow, QObject::tr("Battery readings"), tables.Battery, data);
}
