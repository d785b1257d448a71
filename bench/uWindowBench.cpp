// Prints how long the window takes for each step with a large recording, in ms: the median and the longest of a few
// rounds, offscreen, the painting included. `--smoke` uses a small recording, to see that the bench works.
#include <fmt/format.h>

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "base/uFiles.h"
#include "bench/uBenchRecordings.h"
#include "gui/common/uGrid.h"
#include "gui/common/uTheme.h"
#include "gui/mainform/KorvexMainForm.h"
#include "shell/uOrderingCommands.h"

namespace {

constexpr int kRounds = 7;

void Settle() {
  for (int round = 0; round < 4; ++round) QCoreApplication::processEvents();
}

double Milliseconds(const std::function<void()>& step) {
  QElapsedTimer timer;
  timer.start();
  step();
  Settle();
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void Print(const std::string& what, double bound, std::vector<double> times) {
  std::ranges::sort(times);
  fmt::print("{:<62} {:7.1f} ms  (at most {}; longest {:.1f})\n", what, times[times.size() / 2], bound, times.back());
  std::fflush(stdout);
}

void Repeat(const std::string& what, double bound, const std::function<void(int)>& step) {
  std::vector<double> times;
  times.reserve(kRounds);
  for (int round = 0; round < kRounds; ++round) times.push_back(Milliseconds([&] { step(round); }));
  Print(what, bound, times);
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
  Print("reading: longest time without an answer", 100, gaps);
  for (int round = 0; round < kRounds; ++round) {
    form.Flow().Open(file);
    QElapsedTimer reading;
    for (reading.start(); reading.elapsed() < 40 * round;) QCoreApplication::processEvents();
    cancels.push_back(Milliseconds([&form] {
      form.findChild<QPushButton*>("btnLoadingCancel")->click();
      WaitWhileBusy(form);
    }));
  }
  Print("Cancel", 100, cancels);
}

void Sorting(TKorvexMainForm& form, const char* name) {
  auto* grid = form.findChild<TGrid*>(name);
  std::vector<double> first, again;
  for (int column = 0; column < grid->model()->columnCount(); ++column) {
    const auto click = [&] { Q_EMIT grid->horizontalHeader()->sectionClicked(column); };
    for (int round = 0; round < 2; ++round) first.push_back(Milliseconds(click));
    for (int round = 0; round < 2; ++round) again.push_back(Milliseconds(click));
  }
  Print(fmt::format("sorting {} by each column for the first time", name), 100, first);
  Print(fmt::format("sorting {} by each column again", name), 100, again);
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
    QElapsedTimer timer;
    timer.start();
    mission.CLDS.SetShownRows(EventsThrough(filter, mission.Tables.Events, mission.Events, std::nullopt, nullptr));
    alone.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  Print("seven conditions on every event, without the window", 50, alone);
  auto* edit = form.findChild<QLineEdit*>("edtFilterAccelerationMaxFrom");
  Repeat("typing a limit of the filter", 100,
         [&](int round) { edit->setText(QString::number(round % 2 == 0 ? middle : 0.0F)); });
  fmt::print("  {} of {} events\n", mission.CLDS.RecordCount(), mission.Events.Count());
  Repeat("switching the filter", 100, [&](int) { form.findChild<QAction*>("actFilterActive")->trigger(); });
}

}  // namespace

int main(int argc, char** argv) {
  const bool smoke = argc > 1 && std::string(argv[1]) == "--smoke";
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  ApplyScheme(application, TScheme::Light);
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "shockscope-bench-window.kshock";
  const std::uint32_t events = smoke ? 1000 : 1000000;
  WriteBenchRecording(file, {events, 4, 40});
  TProgram program;
  program.version = "0.0.0.0";
  TKorvexMainForm form(program, [] { return TReadFileThread::kNoMemoryBound; });
  form.resize(1400, 900);
  form.show();
  Settle();

  fmt::print("{} events{}\n", events, smoke ? "; a small recording, whose times mean nothing" : "");
  Reading(form, Utf8FromPath(file));
  Print("opening, until the overview is painted", 10000, {Milliseconds([&] {
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
  std::filesystem::remove(file);
}
