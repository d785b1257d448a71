// Data for charts, and the hands and eyes that a test lends to one.
#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "gui/charts/uLegendRow.h"
#include "gui/charts/uSeries.h"
#include "gui/charts/uTimeChart.h"
#include "model/uEvents.h"
#include "model/uOtherSensors.h"

inline constexpr double kStart = 45123.25;  // 2023-07-16 06:00
inline constexpr double kMinute = 60000;    // ms
inline constexpr double kDay = 86400000;    // ms
inline constexpr double kSame = 1e-9;       // days; a twelfth of a millisecond
inline constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
inline constexpr float kInfinity = std::numeric_limits<float>::infinity();

struct TSample {
  double ms;
  float value;
};
using TSamples = std::vector<TSample>;

inline double At(double ms) {
  return kStart + ms / kDay;
}

// One event with a sample on x for each, or all samples in one event.
inline TEventList Events(const TSamples& samples, bool oneEvent = false) {
  TEventList events;
  events.StartTime = kStart;
  for (const auto& [ms, g] : samples) {
    if (!oneEvent || events.Count() == 0) events.NewEvent();
    events.AddValues(ms, g, 0, 0);
  }
  return events;
}

inline TSensorList Sensors(const std::vector<std::pair<const char*, TSamples>>& readings) {
  TSensorList sensors;
  for (const auto& [name, samples] : readings) {
    sensors.Add(name);
    for (const auto& [ms, value] : samples) sensors.AddValues(ms, value);
  }
  return sensors;
}

// Shows a chart by settings that differ from those that it has.
template <class TChange>
void ChangeDisplay(TTimeChart& chart, const TChange& change) {
  TDisplaySettings display = chart.Display();
  change(display);
  chart.SetDisplay(display);
}
inline void SetColour(TTimeChart& chart, TSeries series, const QColor& colour) {
  ChangeDisplay(
      chart, [&](TDisplaySettings& display) { display.accelerationColours[Place(series)] = colour.rgb() & RGB_MASK; });
}
inline void SetColour(TTimeChart& chart, const char* sensor, const QColor& colour) {
  const std::size_t place = FindQuantity(&TQuantityRow::sensorName, sensor)->colourPlace - 1U;
  ChangeDisplay(chart, [&](TDisplaySettings& display) { display.sensorColours[place] = colour.rgb() & RGB_MASK; });
}
// Those of the analog inputs.
inline void SetNames(TTimeChart& chart, const decltype(TDisplaySettings::analogNames)& names) {
  ChangeDisplay(chart, [&](TDisplaySettings& display) { display.analogNames = names; });
}
inline void SetAbsorption(TTimeChart& chart, bool on) {
  ChangeDisplay(chart, [&](TDisplaySettings& display) { display.pointAbsorption = on; });
}
// No other quantity is judged; without limits the alarm is off.
inline void SetLimits(TTimeChart& chart, const std::vector<std::pair<TQuantity, TLimits>>& limits) {
  ChangeDisplay(chart, [&](TDisplaySettings& display) {
    constexpr double kNoLimit = std::numeric_limits<double>::infinity();
    display.alarmActive = !limits.empty();
    display.limits.fill({-kNoLimit, kNoLimit});
    for (const auto& [quantity, own] : limits) display.limits[static_cast<std::size_t>(quantity)] = own;
  });
}

inline QCPAxisRect& RectOf(const TChartPlot& chart) {
  return *chart.axisRects().front();
}
inline std::string TitleOf(const TChartPlot& chart) {
  for (QCPLayoutElement* element : chart.plotLayout()->elements(true)) {
    if (const auto* legend = dynamic_cast<TLegendRow*>(element)) return legend->Title().toStdString();
  }
  return "no legend";
}
inline QCPAxis& TimeOf(const TChartPlot& chart) {
  return *RectOf(chart).axis(QCPAxis::atBottom);
}
inline QCPAxis& ValuesOf(const TChartPlot& chart) {
  return *RectOf(chart).axis(QCPAxis::atLeft);
}
inline QPoint PointAt(const TChartPlot& chart, double time, double value) {
  return QPointF(TimeOf(chart).coordToPixel(time), ValuesOf(chart).coordToPixel(value)).toPoint();
}
inline QPoint MiddleOf(const TChartPlot& chart) {
  return RectOf(chart).rect().center();
}

inline void Settle() {
  for (int round = 0; round < 5; ++round) {
    QCoreApplication::sendPostedEvents();  // Windows' loop may leave them for a later round
    QCoreApplication::processEvents();
  }
}
inline void Show(TChartPlot& chart) {
  chart.resize(800, 300);
  chart.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&chart));
  Settle();
}
inline void ExpectRange(const TChartPlot& chart, double fromMs, double toMs) {
  EXPECT_NEAR(TimeOf(chart).range().lower, At(fromMs), kSame);
  EXPECT_NEAR(TimeOf(chart).range().upper, At(toMs), kSame);
}
inline void ExpectSaneAxes(TChartPlot& chart) {
  for (const QCPAxis* axis : RectOf(chart).axes()) {
    EXPECT_TRUE(std::isfinite(axis->range().lower) && std::isfinite(axis->range().upper));
    EXPECT_LT(axis->range().lower, axis->range().upper);
  }
  EXPECT_EQ(chart.grab().size(), QSize(800, 300));
}

inline void Wheel(TChartPlot& chart, const QPoint& at, int notches, Qt::KeyboardModifiers held = Qt::NoModifier) {
  QWheelEvent wheel(at, chart.mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, held, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&chart, &wheel);
}
inline void Move(TChartPlot& chart, const QPoint& to, Qt::MouseButton held) {
  QMouseEvent move(QEvent::MouseMove, to, chart.mapToGlobal(to), Qt::NoButton, held, Qt::NoModifier);
  QCoreApplication::sendEvent(&chart, &move);
}
inline void Drag(TChartPlot& chart, const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton) {
  QTest::mousePress(&chart, button, {}, from);
  Move(chart, (from + to) / 2, button);
  Move(chart, to, button);
  QTest::mouseRelease(&chart, button, {}, to);
}
inline void Leave(TChartPlot& chart) {
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&chart, &leave);
}
inline void Click(TChartPlot& chart, const QPoint& at) {
  QTest::mouseClick(&chart, Qt::LeftButton, {}, at);
}
inline void ClickLegend(TChartPlot& chart, std::size_t entry) {
  const auto* legend = dynamic_cast<TLegendRow*>(chart.plotLayout()->element(0, 0));
  const QRect rect = legend->rect();
  for (int y = rect.top() + 8; y < rect.bottom(); y += 8) {
    for (int x = 0; x < chart.width(); ++x) {
      if (legend->EntryAt(QPointF(x, y)) == entry) return Click(chart, {x + 2, y});
    }
  }
  FAIL() << "the legend has no entry " << entry;
}

// Pixels that are more of this colour than of anything else.
inline int Ink(TChartPlot& chart, const QColor& colour, const QRect& within) {
  const QImage image = chart.grab().toImage();
  const QRect rect = within & RectOf(chart).rect();
  int count = 0;
  for (int y = rect.top(); y <= rect.bottom(); ++y) {
    for (int x = rect.left(); x <= rect.right(); ++x) {
      const QColor c = image.pixelColor(x, y);
      count +=
          std::abs(c.red() - colour.red()) + std::abs(c.green() - colour.green()) + std::abs(c.blue() - colour.blue()) <
          300;
    }
  }
  return count;
}
