// The readings of the slow sensors over time, on up to four value axes. Main thread only.
#pragma once

#include <array>
#include <vector>

#include "gui/charts/uInTimeOrder.h"
#include "gui/charts/uSensorLooks.h"
#include "gui/charts/uTimeChart.h"
#include "model/uOtherSensors.h"

class TSensorsChart final : public TTimeChart {
  Q_OBJECT

 public:
  explicit TSensorsChart(QWidget* parent = nullptr);

  // Makes the value axes beside the left inner one; once, before the first data. SetSensors does so where nobody did.
  void PrepareExtraAxes();
  // Titles, colours and which axes are drawn, from the series that are visible.
  void SetUpAxes();

  // Borrows the readings until Clear or the next call. startTime is the mission's start, a date-time. Shows the full
  // range; of the sensors that would need another unit on the left inner axis only the first is visible.
  void SetSensors(const TSensorList& sensors, double startTime);
  void Clear() override;

  // By the sensor's index in the list. One that comes into view on an axis of another unit hides the others there.
  // Does nothing for an index past the list.
  void SetSensorVisible(std::size_t index, bool visible);
  [[nodiscard]] bool IsSensorVisible(std::size_t index) const;

 signals:
  // The user showed or hid a sensor in the legend.
  void SensorVisibleChanged(std::size_t index, bool visible);

 protected:
  void Clicked(const QPointF& position) override;
  [[nodiscard]] QString CursorText(const QPointF& position) const override;
  void ScaleValues() override;
  void Restyle() override;
  void Prepare() override;

 private:
  struct TSensorSeries {
    QString name;
    TSensorLook look;
    bool visible = false;
    TInTimeOrder<TSensorValue> readings;
    float least = 0, largest = 0;  // of the finite readings
    bool hasValues = false;        // there are finite readings
  };

  TSensorSeries MakeSeries(const TSensor& sensor) const;
  void ChooseVisible();
  void ScaleAxis(TSensorAxis axis);
  void FillLegend();
  void PaintSensors(QCPPainter& painter);
  [[nodiscard]] QCPAxis& AxisOf(TSensorAxis axis) const { return *FAxes[static_cast<std::size_t>(axis)]; }
  [[nodiscard]] QString TitleOf(TSensorAxis axis, int room) const;
  [[nodiscard]] double MsOf(double dateTime) const;

  std::array<QCPAxis*, kSensorAxisCount> FAxes{};
  double FStart = 0;
  std::vector<TSensorSeries> FSeries;     // as in the list
  std::vector<std::size_t> FListed;       // the sensor of each legend entry
  std::vector<TEnvelopePoint> FEnvelope;  // of a replot, kept for its memory
};
