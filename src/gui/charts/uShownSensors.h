// The slow sensors of a mission as the sensors chart shows them: names, colours, axes, and which are visible. An axis
// has one scale, so a sensor of another unit than those on its axis goes to a free one. Main thread only.
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/uExtents.h"
#include "base/uTimeSpan.h"
#include "gui/charts/uInTimeOrder.h"
#include "gui/charts/uSensorLooks.h"
#include "model/uOtherSensors.h"

struct TSensorSeries {
  std::string sensor;  // its name in the list
  TSensorLook look;
  bool visible = false;
  TInTimeOrder<TSensorValue> readings;
  TExtents extents;
  double gap = 0;  // ms; readings that are farther apart have a gap between them
  TExtent whole;   // empty without a finite reading
};

class TShownSensors {
 public:
  // Borrows what the settings say of sensors.
  explicit TShownSensors(const TDisplaySettings& display) : FDisplay(display) {}
  // Borrows the readings until Clear or the next call. startTime is the mission's start, a date-time. Of the sensors
  // that would need another unit on one axis only the first is visible.
  void Set(const TSensorList& sensors, double startTime);
  void Clear();

  // As in the list.
  [[nodiscard]] const std::vector<TSensorSeries>& Series() const { return FSeries; }
  // The sensors with readings, by their indexes.
  [[nodiscard]] const std::vector<std::size_t>& Listed() const { return FListed; }
  // From the first to the last reading, date-times.
  [[nodiscard]] std::optional<TTimeSpan> TimeSpan() const;
  [[nodiscard]] double Start() const { return FStart; }
  // The readings' own time, ms from the start.
  [[nodiscard]] double MsOf(double dateTime) const;

  // By an index of the list. One that comes into view where another unit is goes to an axis with its own unit, else to
  // a free one. Where there is none it hides those on its axis; gives their names.
  QStringList SetVisible(std::size_t index, bool visible);
  // All sensors of this name move; away from where they belong they stay from recording to recording and come first.
  QStringList Move(std::size_t index, TSensorAxis axis);
  // The settings changed.
  void UpdateLooks();

  [[nodiscard]] bool IsUsed(TSensorAxis axis) const;
  // The visible readings on an axis; empty without any.
  [[nodiscard]] TExtent ExtentOn(TSensorAxis axis) const;
  // The visible sensors on an axis, the first of each name.
  [[nodiscard]] std::vector<const TSensorSeries*> NamedOn(TSensorAxis axis) const;
  // The first sensor of an axis that moved sensors have to themselves; nullptr where others are on it, or none.
  [[nodiscard]] const TSensorSeries* MovedOnly(TSensorAxis axis) const;

 private:
  [[nodiscard]] TSensorLook PlacedLook(const std::string& sensor) const;
  void ChooseVisible(TSensorAxis axis);
  void FindAxisFor(TSensorSeries& chosen) const;
  QStringList MakeRoomFor(const TSensorSeries& chosen);

  const TDisplaySettings& FDisplay;
  std::map<std::string, TSensorAxis> FMoved;  // by the user
  double FStart = 0;                          // a date-time
  std::vector<TSensorSeries> FSeries;
  std::vector<std::size_t> FListed;
};
