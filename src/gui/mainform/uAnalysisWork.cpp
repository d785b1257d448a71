#include "gui/mainform/uAnalysisWork.h"

#include <QMainWindow>
#include <utility>

#include "analysis/uShockMetrics.h"
#include "gui/common/uAnalysisBar.h"
#include "gui/common/uGuard.h"
#include "shell/uOrderingCommands.h"

namespace {

constexpr int kPollMs = 40;

}  // namespace

TAnalysisWork::TAnalysisWork(QMainWindow& window, const QWidget& views, IMissionViews& shown)
    : FWindow(window), FViews(views), FShown(shown) {
  FTimer.setInterval(kPollMs);
  connect(&FTimer, &QTimer::timeout, this, [this] { Guarded(&FWindow, [this] { Poll(); }); });
  for (const TAnalysisBar* bar : FWindow.findChildren<TAnalysisBar*>()) {
    connect(bar, &TAnalysisBar::Wanted, this, [this] { Guarded(&FWindow, [this] { Start(); }); });
    connect(bar, &TAnalysisBar::Cancelled, this, [this] { Guarded(&FWindow, [this] { Cancel(); }); });
  }
}

void TAnalysisWork::SetMission(TShownMission* mission) {
  FMission = mission;
  End(FMission == nullptr || FMission->Analysis ? &TAnalysisBar::ShowNothing : &TAnalysisBar::ShowIdle);
}

void TAnalysisWork::Start() {
  if (FMission == nullptr || FMission->Analysis || FRun) return;
  FRun = std::make_unique<TAnalysisRun>(FMission->Events, ThresholdsOf(FMission->Data).totOn);
  FTimer.start();
  ShowRunning();
}

void TAnalysisWork::ShowRunning() {
  for (TAnalysisBar* bar : FWindow.findChildren<TAnalysisBar*>())
    bar->ShowRunning(FRun->Done(), FMission->Events.Count());
}

void TAnalysisWork::Done() {
  End(&TAnalysisBar::ShowNothing);
}

void TAnalysisWork::End(void (TAnalysisBar::*show)()) {
  FTimer.stop();
  FRun.reset();
  for (TAnalysisBar* bar : FWindow.findChildren<TAnalysisBar*>()) (bar->*show)();
}

void TAnalysisWork::Poll() {
  if (!FViews.isEnabled()) return;
  auto analysis = [this] {
    try {
      return FRun->Take();
    } catch (...) {  // no memory
      Cancel();
      throw;
    }
  }();
  if (analysis) return TakeAnalysis(*FMission, *std::move(analysis), FShown);
  ShowRunning();
}

void TAnalysisWork::Cancel() {
  End(&TAnalysisBar::ShowCancelled);
  GiveUpAnalysis(*FMission, FShown);
}
