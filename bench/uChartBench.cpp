// Prints how long charts take: to show an event, to redraw after a zoom or a pan, beside the chart library's own curves
// of the same data, and to follow the pointer. 1400 × 500 px, offscreen.
// `--smoke` uses small recordings, to see that the bench works.
#include <fmt/format.h>

#include <QApplication>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "bench/uBenchRecordings.h"
#include "bench/uStepTable.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uReadFileThread.h"

namespace {

constexpr int kWidth = 1400;
constexpr int kHeight = 500;
constexpr int kRounds = 7;  // of a view, each a little beside the one before
constexpr double kBoundMs = 8;
constexpr double kMoveBoundMs = 2;
constexpr double kReadingBoundMs = 1000;
constexpr double kEnvelopeBound = 0.1;  // of the reading
constexpr double kShowingBound = 0.15;

double Milliseconds(const std::function<void()>& work) {
  return SpentOn(work).processor * 1000;
}

TStepTable Steps;

// Views from everything to a ten thousandth, kRounds of each.
std::vector<TTimeSpan> Views(const TTimeSpan& full) {
  std::vector<TTimeSpan> views;
  const double span = full.Width();
  for (const double part : {1.0, 0.7, 0.5, 0.2, 0.05, 0.01, 0.0001}) {
    for (int step = 0; step < kRounds; ++step) {
      const double from = full.start + span * (0.0001 * step + (1 - part) / 3);
      views.push_back({from, from + span * part});
    }
  }
  return views;
}

// What the slowest view takes: the largest of the medians.
double Slowest(const std::vector<double>& times) {
  double slowest = 0;
  for (auto view = times.begin(); view != times.end(); view += kRounds) {
    slowest = std::max(slowest, Median({view, view + kRounds}));
  }
  return slowest;
}

void AddRedraws(const std::string& what, const std::vector<double>& times) {
  Steps.Put(what, kBoundMs, Slowest(times), std::ranges::max(times));
}

std::vector<double> Redraws(TTimeChart& chart) {
  std::vector<double> times;
  chart.resize(kWidth, kHeight);
  chart.replot();
  for (const TTimeSpan& view : Views(chart.Range().Full())) {
    chart.Range().SetTimes(view);
    times.push_back(Milliseconds([&chart] { chart.replot(); }));
  }
  return times;
}

// Moves of the pointer over everything, with indicator, nearest sample, both cursors and the labels of the levels: the
// marks, their readings and the painting of the window.
void AddMoves(const std::string& what, TTimeChart& chart) {
  constexpr int kMoves = 200;
  chart.Marks().SetIndicatorVisible(true);
  chart.Marks().SetNearestVisible(true);
  chart.resize(kWidth, kHeight);
  chart.Range().Reset();
  chart.show();
  QCoreApplication::processEvents();
  for (int cursor = 0; cursor < 2; ++cursor) chart.Gestures().StepCursors();
  QCoreApplication::processEvents();
  int replots = 0;
  const auto counted = QObject::connect(&chart, &QCustomPlot::afterReplot, [&replots] { ++replots; });
  const QRectF axes = chart.Rect().rect();
  std::vector<double> times;
  for (int move = 0; move < kMoves; ++move) {
    const QPointF to(axes.left() + axes.width() * move / kMoves, axes.top() + axes.height() * (move % 7) / 7);
    QMouseEvent event(QEvent::MouseMove, to, chart.mapToGlobal(to), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    times.push_back(Milliseconds([&] {
      QCoreApplication::sendEvent(&chart, &event);
      QCoreApplication::processEvents();
    }));
    if (!chart.isVisible() || !chart.Marks().IndicatorTime()) fmt::print("the chart shows no indicator\n");
  }
  QObject::disconnect(counted);
  if (replots > 0) fmt::print("a move replots the whole chart: {} times\n", replots);
  chart.hide();
  Steps.Add(what, kMoveBoundMs, times);
}

// The library's curves of X, Y and Z with its adaptive sampling.
std::vector<double> OwnCurves(const TEvent& event) {
  QCustomPlot plot;
  plot.resize(kWidth, kHeight);
  plot.setViewport(plot.rect());
  for (const auto value : {&TEventValue::xvalue, &TEventValue::yvalue, &TEventValue::zvalue}) {
    QVector<QCPGraphData> data;
    data.reserve(static_cast<qsizetype>(event.Count()));
    for (const TEventValue& sample : event.Values()) {
      data.append(QCPGraphData(sample.time - event.GetStartTime(), double{sample.*value}));
    }
    plot.addGraph()->data()->set(data, true);
    plot.graph()->setAdaptiveSampling(true);
  }
  plot.rescaleAxes();
  std::vector<double> times;
  const QCPRange full = plot.xAxis->range();
  for (const auto& [from, to] : Views({full.lower, full.upper})) {
    plot.xAxis->setRange(from, to);
    times.push_back(Milliseconds([&plot] { plot.replot(); }));
  }
  return times;
}

double ReadingTime(const std::filesystem::path& file) {
  ClearMission();
  return Milliseconds([&file] { TReadFileThread(0, file).WaitFor(); });
}

double EnvelopeTime(std::span<const TEventValue> samples) {
  return Milliseconds([samples] { MeasureSeries(samples); });
}

void SelectedEvent(const std::filesystem::path& file) {
  const double reading = ReadingTime(file);
  std::vector<double> envelope, showing;
  TSelectedEventChart chart;
  for (int round = 0; round < 5; ++round) {
    envelope.push_back(EnvelopeTime(EventList.GetItem(0).Values()));
    showing.push_back(Milliseconds([&chart] { chart.ShowEvent(EventList, 0, MissionData); }));
  }
  Steps.Add("reading an event", kReadingBoundMs, {reading});
  Steps.Add("  its envelope", kReadingBoundMs * kEnvelopeBound, envelope);
  Steps.Add("  showing it", kReadingBoundMs * kShowingBound, showing);
  AddRedraws("  its redraw", Redraws(chart));
  AddRedraws("  the same by the chart library's own curves, for comparison", OwnCurves(EventList.GetItem(0)));
  chart.SetSeriesVisible(TSeries::Total, true);
  chart.SetPointsVisible(true);
  AddRedraws("  the same with the total and points", Redraws(chart));
  AddMoves("  move of the pointer over it", chart);
}

void Events(const std::filesystem::path& file) {
  ReadingTime(file);
  TEventsChart chart;
  chart.SetEvents(EventList, MissionData);
  TDisplaySettings display = DefaultSettings().display;
  display.pointAbsorption = false;
  chart.SetDisplay(display);
  AddRedraws("redraw of the events", Redraws(chart));
  std::vector<bool> visible(EventList.Count());
  for (std::size_t i = 0; i < visible.size(); i += 2) visible[i] = true;
  chart.SetVisibleEvents(visible);
  AddRedraws("  the same with every other event filtered out", Redraws(chart));
  chart.SetVisibleEvents({});
  chart.SetDisplay(DefaultSettings().display);
  AddRedraws("  the same with point absorption", Redraws(chart));
  AddMoves("  move of the pointer over the events", chart);
  TSensorsChart sensors;
  sensors.SetSensors(SensorList, SensorList.StartTime);
  AddRedraws("redraw of 12 sensors with a reading an event", Redraws(sensors));
  AddMoves("  move of the pointer over the sensors", sensors);
}

}  // namespace

int main(int argc, char** argv) {
  const bool smoke = argc > 1 && std::string(argv[1]) == "--smoke";
  const std::uint32_t part = smoke ? 100 : 1;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "shockscope-bench-chart.kshock";
  for (const std::uint32_t times : {1U, 10U, 100U}) {
    WriteBenchRecording(file, {1, 100000 * times / part, 1000, 20});
    SelectedEvent(file);
    WriteBenchRecording(file, {10000 * times / part, 4, 4});
    Events(file);
  }
  PrintSpeedOfMachine();
  PrintRow("charts, processor time", fmt::format("an event of {} … {} samples; {} … {} events", 100000 / part,
                                                 10000000 / part, 10000 / part, 1000000 / part));
  Steps.Print();
  std::filesystem::remove(file);
}
