// Prints how long a chart takes to redraw after a zoom or a pan, in ms, beside the chart library's own curves of the
// same data; and what the envelope, and all of showing an event, costs beside reading the file. 1400 × 500 px,
// offscreen.
// `--smoke` uses small recordings, to see that the bench works.
#include <fmt/format.h>

#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "bench/uBenchRecordings.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uReadFileThread.h"

namespace {

constexpr int kWidth = 1400;
constexpr int kHeight = 500;
constexpr int kRounds = 7;  // of a view, each a little beside the one before
constexpr double kBoundMs = 16;
constexpr double kMoveBoundMs = 4;
constexpr double kEnvelopeBound = 0.1;
constexpr double kShowingBound = 0.15;

// Of the processor: the machine's other work does not count.
double Milliseconds(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

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

void PrintRedraws(const std::string& what, const std::vector<double>& times, const std::vector<double>& reference) {
  fmt::print("{:<62} {:6.1f} ms  (at most {}", what, Slowest(times), kBoundMs);
  if (!reference.empty()) fmt::print("; the library's own {:.1f}", Slowest(reference));
  fmt::print("; longest {:.1f})\n", std::ranges::max(times));
  std::fflush(stdout);
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
void PrintMoves(const std::string& what, TTimeChart& chart) {
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
  fmt::print("{:<62} {:6.1f} ms  (at most {}; longest {:.1f})\n", what, Median(times), kMoveBoundMs,
             std::ranges::max(times));
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
  std::vector<double> envelope;
  for (int round = 0; round < 5; ++round) envelope.push_back(EnvelopeTime(EventList.GetItem(0).Values()));
  fmt::print("{:<62} {:6.3f}     (at most {}; {:.0f} ms against {:.0f} ms)\n",
             fmt::format("envelope of an event of {} samples / reading the file", EventList.GetItem(0).Count()),
             Median(envelope) / reading, kEnvelopeBound, Median(envelope), reading);
  TSelectedEventChart chart;
  std::vector<double> building;
  for (int round = 0; round < 5; ++round) {
    building.push_back(Milliseconds([&chart] { chart.ShowEvent(EventList, 0, MissionData); }));
  }
  fmt::print("{:<62} {:6.3f}     (at most {}; {:.0f} ms against {:.0f} ms)\n",
             fmt::format("showing an event of {} samples / reading the file", EventList.GetItem(0).Count()),
             Median(building) / reading, kShowingBound, Median(building), reading);
  PrintRedraws("redraw of the selected event", Redraws(chart), OwnCurves(EventList.GetItem(0)));
  chart.SetSeriesVisible(TSeries::Total, true);
  chart.SetPointsVisible(true);
  PrintRedraws("the same with the total and points", Redraws(chart), {});
  PrintMoves("move of the pointer over it", chart);
}

void Events(const std::filesystem::path& file) {
  ReadingTime(file);
  TEventsChart chart;
  chart.SetEvents(EventList, MissionData);
  fmt::print("{} events\n", EventList.Count());
  PrintRedraws("redraw of the events", Redraws(chart), {});
  std::vector<bool> visible(EventList.Count());
  for (std::size_t i = 0; i < visible.size(); i += 2) visible[i] = true;
  chart.SetVisibleEvents(visible);
  PrintRedraws("the same with every other event filtered out", Redraws(chart), {});
  chart.SetVisibleEvents({});
  chart.SetPointAbsorption(true);
  PrintRedraws("the same with point absorption", Redraws(chart), {});
  PrintMoves("move of the pointer over them", chart);
  TSensorsChart sensors;
  sensors.SetSensors(SensorList, SensorList.StartTime);
  PrintRedraws(fmt::format("redraw of {} sensors of {} readings", SensorList.Count(), SensorList.GetItem(0).Count()),
               Redraws(sensors), {});
  PrintMoves("move of the pointer over them", sensors);
}

}  // namespace

int main(int argc, char** argv) {
  const bool smoke = argc > 1 && std::string(argv[1]) == "--smoke";
  const std::uint32_t part = smoke ? 100 : 1;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const std::filesystem::path folder = std::filesystem::temp_directory_path();
  const std::filesystem::path one = folder / fmt::format("shockscope-bench-{}-one.kshock", part);
  const std::filesystem::path many = folder / fmt::format("shockscope-bench-{}-events.kshock", part);
  WriteBenchRecording(one, {1, 10000000 / part, 1000, 20});
  WriteBenchRecording(many, {1000000 / part, 4, 4});
  SelectedEvent(one);
  Events(many);
  for (const auto& file : {one, many}) std::filesystem::remove(file);
}
