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
  FTimer.stop();
  FRun.reset();
  FMission = mission;
  for (TAnalysisBar* bar : FWindow.findChildren<TAnalysisBar*>()) {
    if (FMission == nullptr || FMission->Analysis) {
      bar->ShowNothing();
    } else {
      bar->ShowIdle();
    }
  }
}

void TAnalysisWork::Start() {
  if (FMission == nullptr || FMission->Analysis || FRun) return;
  FRun = std::make_unique<TAnalysisRun>(FMission->Events, ThresholdsOf(FMission->Data).totOn);
  FTimer.start();
  for (TAnalysisBar* bar : FWindow.findChildren<TAnalysisBar*>()) bar->ShowRunning(0, FMission->Events.Count());
}

void TAnalysisWork::Done() {
  FTimer.stop();
  FRun.reset();
  for (TAnalysisBar* bar : FWindow.findChildren<TAnalysisBar*>()) bar->ShowNothing();
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
  for (TAnalysisBar* bar : FWindow.findChildren<TAnalysisBar*>())
    bar->ShowRunning(FRun->Done(), FMission->Events.Count());
}

void TAnalysisWork::Cancel() {
  FTimer.stop();
  FRun.reset();
  for (TAnalysisBar* bar : FWindow.findChildren<TAnalysisBar*>()) bar->ShowCancelled();
  GiveUpAnalysis(*FMission, FShown);
}
