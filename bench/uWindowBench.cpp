// Prints how long the program takes to start, to write a report, and for each step of the window with recordings of
// three sizes: the median and the longest of a few rounds, offscreen, the painting included. `--smoke` uses small
// recordings, to see that the bench works.
#include <fmt/format.h>

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "base/uFiles.h"
#include "bench/uBenchRecordings.h"
#include "bench/uStepTable.h"
#include "gui/common/uGrid.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/report/uReportRun.h"
#include "platform/uMachineMemory.h"
#include "shell/uOrderingCommands.h"

namespace {

constexpr int kRounds = 7;

void Settle() {
  for (int round = 0; round < 4; ++round) QCoreApplication::processEvents();
}

double Milliseconds(const std::function<void()>& step) {
  return SpentOn([&step] {
           step();
           Settle();
         }).processor *
         1000;
}

TStepTable Steps;

void Repeat(const std::string& what, double bound, const std::function<void(int)>& step) {
  std::vector<double> times;
  times.reserve(kRounds);
  for (int round = 0; round < kRounds; ++round) times.push_back(Milliseconds([&] { step(round); }));
  Steps.Add(what, bound, times);
}

// The longest time in which the window answered nothing while a file was read.
class THeartbeat {
 public:
  explicit THeartbeat(TFileFlow& flow) : FFlow(flow) {
    FTimer.setInterval(1);
    QObject::connect(&FTimer, &QTimer::timeout, [this] { Beat(); });
    FTimer.start();
    FSince.start();
  }
  void Beat() {
    const bool reading = FFlow.State() == TFileFlow::TState::Reading;
    if (reading && FReading) FLongest = std::max(FLongest, static_cast<double>(FSince.nsecsElapsed()) / 1e6);
    FReading = reading;
    FSince.start();
  }
  [[nodiscard]] double Longest() const { return FLongest; }

 private:
  QTimer FTimer;
  QElapsedTimer FSince;
  TFileFlow& FFlow;
  bool FReading = false;
  double FLongest = 0;
};

void WaitWhileBusy(TKorvexMainForm& form) {
  while (form.Flow().Busy()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void Reading(TKorvexMainForm& form, const std::string& file) {
  std::vector<double> gaps, cancels;
  for (int round = 0; round < 3; ++round) {
    const THeartbeat heartbeat(form.Flow());
    form.Flow().Open(file);
    while (form.Flow().State() == TFileFlow::TState::Reading) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    gaps.push_back(heartbeat.Longest());
    WaitWhileBusy(form);
  }
  Steps.Add("reading: longest time without an answer", 100, gaps);
  for (int round = 0; round < kRounds; ++round) {
    form.Flow().Open(file);
    QElapsedTimer reading;
    for (reading.start(); reading.elapsed() < 40 * round;) QCoreApplication::processEvents();
    cancels.push_back(Milliseconds([&form] {
      form.findChild<QPushButton*>("btnLoadingCancel")->click();
      WaitWhileBusy(form);
    }));
  }
  Steps.Add("Cancel", 100, cancels);
}

void Sorting(TKorvexMainForm& form, const char* name) {
  auto* grid = form.findChild<TGrid*>(name);
  std::vector<double> first, again;
  for (int column = 0; column < grid->model()->columnCount(); ++column) {
    const auto click = [&] { Q_EMIT grid->horizontalHeader()->sectionClicked(column); };
    for (int round = 0; round < 2; ++round) first.push_back(Milliseconds(click));
    for (int round = 0; round < 2; ++round) again.push_back(Milliseconds(click));
  }
  Steps.Add(fmt::format("sorting {} by each column for the first time", name), 100, first);
  Steps.Add(fmt::format("sorting {} by each column again", name), 100, again);
}

void Scrolling(TKorvexMainForm& form, const char* name) {
  auto* grid = form.findChild<TGrid*>(name);
  QScrollBar* bar = grid->verticalScrollBar();
  Repeat(fmt::format("scrolling {} by a seventh", name), 100,
         [bar](int round) { bar->setValue(bar->maximum() / kRounds * round); });
}

// Alone, and with the grid and the charts that show it. Every other round lets all events through.
void Filtering(TKorvexMainForm& form) {
  TShownMission& mission = form.Flow().Mission();
  TEventFilter filter;
  for (TRange& range : filter.ranges) range.from = 0;
  filter.axes.fill(true);
  filter.time.from = 1;
  const auto peaks = mission.Tables.Events.Singles(*mission.Tables.Events.FindField("Acceleration max"));
  std::vector<float> sorted(peaks.begin(), peaks.end());
  std::ranges::sort(sorted);
  const float middle = sorted[sorted.size() / 2];
  std::vector<double> alone;
  for (int round = 0; round < kRounds; ++round) {
    filter.ranges[0].from = round % 2 == 0 ? middle : 0;
    alone.push_back(1000 * SpentOn([&] {
                             mission.CLDS.SetShownRows(
                                 EventsThrough(filter, mission.Tables.Events, mission.Events, std::nullopt, nullptr));
                           }).processor);
  }
  Steps.Add("seven conditions on every event, without the window", 50, alone);
  auto* edit = form.findChild<QLineEdit*>("edtFilterAccelerationMaxFrom");
  Repeat("typing a limit of the filter", 33,
         [&](int round) { edit->setText(QString::number(round % 2 == 0 ? middle : 0.0F)); });
  Repeat("switching the filter", 33, [&](int) { form.findChild<QAction*>("actFilterActive")->trigger(); });
}

TProgram Program() {
  TProgram program;
  program.version = "0.0.0.0";
  return program;
}

void AllSteps(const std::filesystem::path& file) {
  TKorvexMainForm form(Program(), [] { return TReadFileThread::kNoMemoryBound; });
  form.resize(1400, 900);
  form.show();
  Settle();
  Reading(form, Utf8FromPath(file));
  Steps.Add("opening, until the overview is painted", 1500, {Milliseconds([&] {
              form.Flow().Open(Utf8FromPath(file));
              WaitWhileBusy(form);
            })});
  Repeat("showing the shock view", 100,
         [&form](int round) { form.Flow().SwitchView(round % 2 == 0 ? TView::Shock : TView::Overview); });
  form.Flow().SwitchView(TView::Shock);
  Settle();
  Sorting(form, "dbgShocks");
  Scrolling(form, "dbgShocks");
  Repeat("the next event", 100, [&form](int) { form.findChild<QAction*>("actNextEvent")->trigger(); });
  form.findChild<QAction*>("actFilterEdit")->trigger();
  Settle();
  Filtering(form);
  form.Flow().SwitchView(TView::Overview);
  Settle();
  Sorting(form, "DBGrid2");
  Scrolling(form, "DBGrid2");
}

// A report without a window, the reading included.
void Report(const std::string& recording) {
  const std::filesystem::path pdf = std::filesystem::temp_directory_path() / "shockscope-bench-report.pdf";
  TReportOrder order;
  order.file = recording;
  order.pdf = Utf8FromPath(pdf);
  Steps.Add("a report of a hundredth of them, from reading on", 5000, {Milliseconds([&order] { RunReport(order); })});
  std::filesystem::remove(pdf);
}

// All of a process that shows a recording and ends: what its user waits for.
int Start(QApplication& application, const QString& recording) {
  ApplyScheme(application, TScheme::Light);
  TKorvexMainForm form(Program(), [] { return TReadFileThread::kNoMemoryBound; });
  form.show();
  form.Flow().Open(Utf8(recording));
  WaitWhileBusy(form);
  Settle();
  fmt::print("{}", 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
  std::fflush(stdout);
  std::_Exit(0);
}

void Starts(const std::filesystem::path& demo) {
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--start", QtText(Utf8FromPath(demo))});
    process.waitForFinished();
    times.push_back(process.readAllStandardOutput().toDouble());
  }
  std::ranges::sort(times);
  PrintRow("start of the program until the demo is shown, processor time",
           fmt::format("{:9.1f} ms  (at most 500; longest {:.1f})", Median(times), times.back()));
}

}  // namespace

int main(int argc, char** argv) {
  TakeMemoryInLargeSteps();  // as the programs do
  const bool smoke = argc > 1 && std::string(argv[1]) == "--smoke";
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  if (argc > 2) return Start(application, application.arguments()[2]);
  ApplyScheme(application, TScheme::Light);
  Starts(PathFromUtf8(Utf8(QCoreApplication::applicationDirPath())) / "data" / "demo.kshock");
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "shockscope-bench-window.kshock";
  const std::uint32_t events = smoke ? 10000 : 1000000;
  for (const std::uint32_t part : {100U, 10U, 1U}) {
    WriteBenchRecording(file, {events / part / 100, 4, 40});
    Report(Utf8FromPath(file));
    WriteBenchRecording(file, {events / part, 4, 40});
    AllSteps(file);
  }
  PrintSpeedOfMachine();
  PrintRow("the window, processor time", fmt::format("{} … {} events", events / 100, events));
  Steps.Print();
  std::filesystem::remove(file);
}
