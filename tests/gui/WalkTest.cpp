// The window through what a long day brings: damaged recordings, cancelled reads and exports, closed and opened again.
// checks/walk runs this for hours' worth under the address sanitizer.
#include <QAction>
#include <QPushButton>
#include <QToolButton>
#include <cstdlib>
#include <random>

#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

namespace fs = std::filesystem;

namespace {

constexpr TView kWalkedViews[] = {TView::Overview, TView::Shock, TView::Report, TView::DamageBoundary,
                                  TView::Statistics};

class Walk : public TWindowTest {
 protected:
  // Cancels what runs after so many rounds of events.
  void CancelAfter(int rounds) {
    for (int round = 0; round < rounds && FForm->Flow().Busy(); ++round) QCoreApplication::processEvents();
    if (FForm->Flow().Busy()) Find<QPushButton>("btnLoadingCancel")->click();
    Settle();
  }
  void LookAround() {
    for (const TView view : kWalkedViews) {
      FForm->Flow().SwitchView(view);
      Settle();
      for (const char* action : {"actNextEvent", "actShockSpecAnalysis", "actShockResponse"}) {
        if (auto* found = Find<QAction>(action); found->isEnabled()) found->trigger();
        Settle();
      }
    }
  }
};

// SHOCKSCOPE_MUTANTS is how many.
TEST_F(Walk, DamagedRecordingsOpenInAnyOrderAndLeaveAUsableWindow) {
  const char* const wanted = std::getenv("SHOCKSCOPE_MUTANTS");
  const int mutants = wanted == nullptr ? 8 : std::atoi(wanted);
  const TBytes content = ThreeEvents().content;
  std::mt19937 random(3);
  Start();
  for (int number = 0; number < mutants && !HasFailure(); ++number) {
    SCOPED_TRACE(number);
    // Damage of the blocks, which the checksum does not show, and of the stream.
    const TBytes stream = number % 2 == 0 ? Deflated(Mutant(content, random)) : Mutant(Deflated(content), random);
    FForm->Flow().Open(Save("mutant.kshock", stream).toStdString());
    if (number % 5 == 4) CancelAfter(number % 7);
    Settle();
    LookAround();
    if (number % 8 == 7) {
      FForm->close();
      Start(Save("mutant.kshock", stream));
    }
  }
  FForm->Flow().Open(Save("three.kshock", ThreeEvents()).toStdString());
  Settle();
  EXPECT_EQ(FForm->Flow().Mission().Events.Count(), 3U);
}

TEST_F(Walk, AnExportThatIsCancelledAtAnyStepLeavesNothingUnfinished) {
  const fs::path to = FFolder / "to";
  Start(Save("three.kshock", ThreeEvents()));
  int left = 0;  // steps before the cancel
  int cancelled = 0;
  QTimer steps;
  QObject::connect(&steps, &QTimer::timeout, [&] {
    if (FForm->Flow().State() != TFileFlow::TState::Exporting || left-- != 0) return;
    Find<QPushButton>("btnLoadingCancel")->click();
    ++cancelled;
  });
  steps.start(0);
  const struct {
    const char *button, *file;
  } kExports[] = {{"barbtnEventsCSVAllShocks", ""},
                  {"barbtnEventsXLSXAllShocks", "events.xlsx"},
                  {"barbtnTablesExportCSVSensors", "sensors.csv"},
                  {"barbtnTablesExportXLSX", "table.xlsx"},
                  {"barbtnTablesExportXLSXAnalysis", "analysis.xlsx"},
                  {"dxBarReportExportOnly", "report.pdf"}};
  for (const auto& [button, file] : kExports) {
    SCOPED_TRACE(button);
    FForm->Flow().SwitchView(*file == 'r' ? TView::Report : TView::Overview);
    Settle();
    for (int step = 0, before = -1; cancelled != before && step < 200; ++step) {
      fs::remove_all(to);
      fs::create_directory(to);
      FTyped = QString::fromStdString((*file == 0 ? to : to / file).string());
      before = cancelled;
      left = step;
      Find<QToolButton>(button)->click();
      Settle();
      for (const auto& entry : fs::directory_iterator(to)) {
        EXPECT_FALSE(entry.path().filename().string().starts_with(".")) << entry.path() << " after step " << step;
      }
      EXPECT_TRUE(cancelled > before || !fs::is_empty(to)) << "neither cancelled nor written";
    }
  }
  EXPECT_GT(cancelled, 6);
  EXPECT_THAT(FBoxes, testing::Each(testing::HasSubstr("Excel sheet created"))) << "those that were not cancelled";
}

}  // namespace
