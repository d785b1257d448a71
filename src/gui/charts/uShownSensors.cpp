#include "gui/charts/uShownSensors.h"

#include <algorithm>
#include <limits>
#include <set>

#include "analysis/uSensorMetrics.h"
#include "base/uDateTime.h"

namespace {

constexpr int kMovedRank = -1;  // before all others

}  // namespace

void TShownSensors::Set(const TSensorList& sensors, double startTime) {
  Clear();
  FStart = DrawableStart(startTime);
  for (const TSensor& sensor : sensors.Sensors()) {
    TSensorSeries& series = FSeries.emplace_back();
    series.sensor = sensor.Name;
    series.look = PlacedLook(sensor.Name);
    series.readings.Set(sensor.Values());
    const auto readings = series.readings.Samples();
    series.extents.Set(readings.size(), [readings](std::size_t i) { return readings[i].xvalue; });
    series.whole = series.extents.Whole();
    const double median = CalcSensorMetrics(sensor).medianInterval;
    series.gap = median > 0 ? median * kGapIntervals : std::numeric_limits<double>::infinity();
    if (!readings.empty()) FListed.push_back(FSeries.size() - 1);
  }
  for (std::size_t axis = 0; axis < kSensorAxisCount; ++axis) ChooseVisible(static_cast<TSensorAxis>(axis));
}

void TShownSensors::Clear() {
  FSeries.clear();
  FListed.clear();
}

std::optional<TTimeSpan> TShownSensors::TimeSpan() const {
  std::optional<TTimeSpan> span;
  for (const std::size_t index : FListed) {
    const auto readings = FSeries[index].readings.Samples();
    const TTimeSpan own{DateTimeOf(FStart, readings.front().time), DateTimeOf(FStart, readings.back().time)};
    if (!span) span = own;
    span->Include(own);
  }
  return span;
}

double TShownSensors::MsOf(double dateTime) const {
  return (dateTime - FStart) * kMsPerDay;
}

TSensorLook TShownSensors::PlacedLook(const std::string& sensor) const {
  TSensorLook look = LookOf(sensor, FDisplay);
  const auto moved = FMoved.find(sensor);
  if (moved == FMoved.end()) return look;
  look.axis = moved->second;
  look.rank = kMovedRank;
  return look;
}

void TShownSensors::ChooseVisible(TSensorAxis axis) {
  int min = std::numeric_limits<int>::max();
  QString scale;  // of the sensor with that rank
  for (const TSensorSeries& series : FSeries) {
    if (series.look.axis != axis || series.readings.Samples().empty()) continue;
    if (series.look.rank >= min) continue;
    min = series.look.rank;
    scale = series.look.scale;
  }
  std::set<std::string_view> shown;  // of several sensors of one name, the first starts visible
  for (TSensorSeries& series : FSeries) {
    if (series.look.axis != axis) continue;
    series.visible = series.look.scale == scale && !series.readings.Samples().empty() && !shown.contains(series.sensor);
    if (series.visible) shown.insert(series.sensor);
  }
}

QStringList TShownSensors::SetVisible(std::size_t index, bool visible) {
  TSensorSeries& series = FSeries[index];
  if (visible && !series.visible) FindAxisFor(series);
  series.visible = visible;
  return visible ? MakeRoomFor(series) : QStringList();
}

void TShownSensors::FindAxisFor(TSensorSeries& chosen) const {
  const auto scaleOn = [this](TSensorAxis axis) {
    const auto named = NamedOn(axis);
    return named.empty() ? QString() : named.front()->look.scale;
  };
  const TSensorAxis home = PlacedLook(chosen.sensor).axis;
  const QString& own = chosen.look.scale;
  const auto take = [&](TSensorAxis axis) {
    chosen.look.axis = axis;
    chosen.look.rank = axis == home ? PlacedLook(chosen.sensor).rank : kMovedRank;
  };
  take(home);
  if (const QString scale = scaleOn(home); scale.isEmpty() || scale == own) return;
  for (const QString& wanted : {own, QString()}) {
    for (const TSensorAxis axis :
         {TSensorAxis::LeftInner, TSensorAxis::RightInner, TSensorAxis::RightOuter, TSensorAxis::LeftOuter}) {
      if (scaleOn(axis) == wanted) return take(axis);
    }
  }
}

QStringList TShownSensors::MakeRoomFor(const TSensorSeries& chosen) {
  QStringList hidden;
  for (TSensorSeries& other : FSeries) {
    if (other.look.axis != chosen.look.axis || other.look.scale == chosen.look.scale) continue;
    if (std::exchange(other.visible, false)) hidden << other.look.name;
  }
  return hidden;
}

QStringList TShownSensors::Move(std::size_t index, TSensorAxis axis) {
  TSensorSeries& chosen = FSeries[index];
  FMoved[chosen.sensor] = axis;
  if (LookOf(chosen.sensor, FDisplay).axis == axis) FMoved.erase(chosen.sensor);
  for (TSensorSeries& series : FSeries) {
    if (series.sensor == chosen.sensor) series.look = PlacedLook(series.sensor);
  }
  chosen.visible = !chosen.readings.Samples().empty();
  return chosen.visible ? MakeRoomFor(chosen) : QStringList();
}

void TShownSensors::UpdateLooks() {
  for (TSensorSeries& series : FSeries) {
    const TSensorLook look = LookOf(series.sensor, FDisplay);
    series.look.name = look.name;
    series.look.colour = look.colour;
  }
}

bool TShownSensors::IsUsed(TSensorAxis axis) const {
  return std::ranges::any_of(
      FSeries, [axis](const TSensorSeries& series) { return series.visible && series.look.axis == axis; });
}

TExtent TShownSensors::ExtentOn(TSensorAxis axis) const {
  TExtent extent;
  for (const TSensorSeries& series : FSeries) {
    if (series.visible && series.look.axis == axis) extent.Include(series.whole);
  }
  return extent;
}

std::vector<const TSensorSeries*> TShownSensors::NamedOn(TSensorAxis axis) const {
  std::vector<const TSensorSeries*> named;
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible || series.look.axis != axis) continue;
    const auto sameName = [&series](const TSensorSeries* other) { return other->look.name == series.look.name; };
    if (std::ranges::none_of(named, sameName)) named.push_back(&series);
  }
  return named;
}

const TSensorSeries* TShownSensors::MovedOnly(TSensorAxis axis) const {
  const TSensorSeries* moved = nullptr;
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible || series.look.axis != axis) continue;
    if (series.look.rank != kMovedRank) return nullptr;
    if (moved == nullptr) moved = &series;
  }
  return moved;
}
