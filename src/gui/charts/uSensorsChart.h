// The readings of the slow sensors over time, on up to four value axes. Main thread only.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include "gui/charts/uSensorLooks.h"
#include "gui/charts/uShownSensors.h"
#include "gui/charts/uTimeChart.h"
#include "model/uOtherSensors.h"

class TSensorsChart final : public TTimeChart {
  Q_OBJECT

 public:
  explicit TSensorsChart(QWidget* parent = nullptr);

  // Borrows the readings until Clear or the next call. startTime is the mission's start, a date-time. Shows the full
  // range; of the sensors that would need another unit on the left inner axis only the first is visible.
  void SetSensors(const TSensorList& sensors, double startTime);
  void Clear() override;

  // By the sensor's index in the list. One that comes into view goes to a free axis where its own has another unit, and
  // hides those of another unit where none is free.
  // Does nothing for an index past the list.
  void SetSensorVisible(std::size_t index, bool visible);
  [[nodiscard]] bool IsSensorVisible(std::size_t index) const;
  // Shows it on another value axis, where those of another unit make room for it. All of this name move; away
  // from where they belong they stay from recording to recording, come first, and give the axis their colour.
  void MoveSensor(std::size_t index, TSensorAxis axis);
  // What is shown of each sensor.
  [[nodiscard]] const TShownSensors& Sensors() const { return FSensors; }
  // Marks a moment, a date-time.
  void SetHoveredTime(std::optional<double> time);

  void SetAxisLocked(TSensorAxis axis, bool locked) { Range().LockAxis(AxisOf(axis), locked); }

 signals:
  // Sensors had to make room for another; in words.
  void SensorsHidden(const QString& words);

 protected:
  void EntryClicked(std::size_t entry) override;
  [[nodiscard]] std::vector<TCurve> Curves() const override;
  void ScaleValues() override;
  [[nodiscard]] bool ShowsChangeFrom(const TDisplaySettings& before) const override;
  void DisplayChanged() override { FSensors.UpdateLooks(); }
  void PaintData(QCPPainter& painter) override;
  [[nodiscard]] std::vector<TLegendEntry> LegendEntries() const override;
  void Restyle() override;
  void Prepare() override;

 private:
  // Shows or moves a sensor; `change` gives the names of those that made room for it.
  void Change(std::size_t index, const std::function<QStringList()>& change);
  void ScaleAxis(TSensorAxis axis);
  // Colours and which axes are drawn, from the series that are visible.
  void SetUpAxes();
  void PaintAlarms(QCPPainter& painter);
  // Those of its readings that these can be beyond.
  [[nodiscard]] std::vector<double> LimitsOf(const TSensorSeries& series) const;
  [[nodiscard]] QColor InkOf(const TSensorSeries& series) const { return SensorInk(palette(), series.look.colour); }
  [[nodiscard]] QColor InkOf(TSensorAxis axis) const;
  [[nodiscard]] QList<qreal> DashesOf(const TSensorSeries& series) const;
  [[nodiscard]] std::vector<TTitlePart> TitleOf(TSensorAxis axis) const;
  [[nodiscard]] TTitledAxis& AxisOf(TSensorAxis axis) const { return *FAxes[static_cast<std::size_t>(axis)]; }

  std::array<TTitledAxis*, kSensorAxisCount> FAxes{};  // by TSensorAxis
  TShownSensors FSensors{Display()};
  std::optional<double> FHovered;  // a date-time
};
