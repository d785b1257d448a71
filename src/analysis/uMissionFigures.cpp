#include "analysis/uMissionFigures.h"

#include <fmt/format.h>

#include "analysis/uShockAnalysis.h"
#include "base/uDateTime.h"
#include "base/uText.h"
#include "model/uMissionText.h"
#include "model/uQuantities.h"

namespace {

TFigure Figure(std::string label, std::string text) {
  const bool isBlank = text.find_first_not_of(' ') == std::string::npos;
  return {std::move(label), isBlank ? "-" : std::move(text)};
}

std::string SensorText(const TSensorSummary& sensor, const TQuantityRow* known, const TFormats& formats) {
  if (sensor.count == 0) return "no readings";
  if (!sensor.minimum) return Counted(sensor.count, "reading") + ", none a number";
  const std::string_view mask = known != nullptr && known->quantity ? formats(*known->quantity) : "0.###";
  return fmt::format("{} readings, {} to {}{}{}", sensor.count, MaskFloat(mask, *sensor.minimum),
                     MaskFloat(mask, *sensor.maximum), sensor.unit.empty() ? "" : " ", sensor.unit);
}

}  // namespace

std::string WhyNoEvents(const TAxesPresent& axes) {
  const bool present[kAxisCount] = {axes.x, axes.y, axes.z};
  std::string missing;
  for (std::size_t axis = 0; axis < kAxisCount; ++axis) {
    if (!present[axis]) AppendListItem(missing, kKnownChannels[axis].nameInFile);
  }
  return missing.empty() ? missing : fmt::format("Events need all three axes; the recording lacks {}.", missing);
}

std::vector<TFigure> HeaderFigures(const TMissionData& mission) {
  return {Figure("ID", mission.sID),
          Figure("Title", mission.sTitle),
          Figure("Operator", mission.sOperator),
          Figure("Logger", mission.sKorvexType + " " + mission.sKorvexVersion),
          Figure("Recording", FormatDateTime(DateTimeMask(), mission.rec_starttime) + " to " +
                                  FormatDateTime(DateTimeMask(), mission.rec_endtime)),
          Figure("Start and stop", StartStopText(mission)),
          Figure("Shocks", LimitText(mission)),
          Figure("Slow channels", StdChannelsText(mission)),
          Figure("Options", OptionsText(mission))};
}

std::vector<TFigure> EventFigures(const TMissionSummary& summary, const TEventList& events, const TAxesPresent& axes,
                                  const TFormats& formats) {
  std::vector<TFigure> figures;
  figures.push_back(Figure("Events", fmt::format("{} with {}", summary.events, Counted(summary.samples, "sample"))));
  if (const std::string why = WhyNoEvents(axes); !why.empty()) figures.push_back(Figure("Note", why));
  const auto when = [&events](std::size_t event) {
    const double time = DateTimeOf(events.StartTime, events.GetItem(event).GetStartTime());
    return fmt::format("in event {}, begun {}", event, FormatDateTime(DateTimeMask() + ".zzz", time));
  };
  if (summary.peakEvent) {
    const TEvent& event = events.GetItem(*summary.peakEvent);
    figures.push_back(
        Figure("Peak", fmt::format("{} g ({} g on {}) {}", MaskFloat(formats(TQuantity::Acceleration), event.Max),
                                   MaskFloat(formats(TQuantity::Acceleration), event.MaxSingle), event.MaxAxis,
                                   when(*summary.peakEvent))));
  }
  if (summary.mostIntense) {
    figures.push_back(Figure(
        "Most intense",
        fmt::format("{} g·ms {}", MaskFloat(formats(TQuantity::IoT), summary.maxIot), when(*summary.mostIntense))));
  }
  figures.push_back(Figure("ToT total", MaskFloat(formats(TQuantity::ToT), summary.totTotal) + " ms"));
  figures.push_back(Figure("IoT total", MaskFloat(formats(TQuantity::IoT), summary.iotTotal) + " g·ms"));
  if (summary.firstTime) {
    figures.push_back(
        Figure("Time span", fmt::format("{} to {} ({})", FormatDateTime(DateTimeMask(), *summary.firstTime),
                                        FormatDateTime(DateTimeMask(), *summary.lastTime),
                                        DurationInWords(*summary.lastTime - *summary.firstTime))));
  }
  return figures;
}

std::optional<TFigure> VelocityChangeFigure(const TEventList& events, double levelOn) {
  const auto largest = LargestVelocityChange(events, levelOn);
  if (!largest) return std::nullopt;
  return Figure("Velocity change",
                fmt::format("{} m/s in event {}", MaskFloat("0.###", largest->velocityChange), largest->event));
}

std::vector<TFigure> GroupFigures(const TEventGroups& groups, const TEventList& events, const TFormats& formats) {
  std::vector<TFigure> figures;
  const auto add = [&](std::string label, const TEventGroup& group) {
    if (!group.peakEvent) return;
    figures.push_back({std::move(label),
                       fmt::format("{}, peak up to {} g in event {}, IoT up to {} g·ms", Counted(group.events, "event"),
                                   MaskFloat(formats(TQuantity::Acceleration), events.GetItem(*group.peakEvent).Max),
                                   *group.peakEvent, MaskFloat(formats(TQuantity::IoT), group.maxIot))});
  };
  for (const TEventGroup& group : groups.byAxis) add("Peak axis " + group.name, group);
  for (const TEventGroup& group : groups.byDay) add(group.name, group);
  return figures;
}

std::vector<TFigure> SensorFigures(const TMissionSummary& summary, const TFormats& formats) {
  std::vector<TFigure> figures;
  for (const TSensorSummary& sensor : summary.sensors) {
    const TQuantityRow* known = FindQuantity(&TQuantityRow::sensorName, sensor.name);
    const bool isNamed = known != nullptr && !known->cardField.empty();
    figures.push_back({isNamed ? std::string(known->cardField) : sensor.name, SensorText(sensor, known, formats)});
  }
  return figures;
}
