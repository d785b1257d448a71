// Reads the input as a layout file and arranges panels as it says. The result must be a state that the window takes,
// and its description must have a line for each panel.
#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QStatusBar>
#include <exception>
#include <memory>

#include "base/uIniFile.h"
#include "fuzz/uFuzzFolder.h"
#include "gui/mainform/uDockText.h"

namespace {

constexpr const char* kPanels[] = {"dxDockPanelMissionDetails", "dxDockPanelSensorGridTemp",
                                   "dxDockPanelSensorGridBattery", "dxDockPanelNavigator"};

class TWindow : public QMainWindow {
 public:
  TWindow() {
    setMenuWidget(new QWidget(this));
    statusBar();
    setCentralWidget(new QWidget(this));
    for (const char* name : kPanels) {
      auto* panel = new QDockWidget(name, this);
      panel->setObjectName(name);
      addDockWidget(Qt::RightDockWidgetArea, panel);
    }
    resize(1280, 800);
    Designed = {saveState(), {}};
  }
  TDockArrangement Designed;
};

void Arrange(TWindow& window) {
  const TIniFile ini = TIniFile::Load("layout.ini");
  TDockLines lines;
  for (const std::string& key : ini.Keys("Panels")) {
    lines << std::pair(QString::fromStdString(key), QString::fromStdString(ini.ReadString("Panels", key, {})));
  }
  const TDockArrangement arranged = ArrangementOf(window, lines, window.Designed);
  Require(window.restoreState(arranged.state));
  Require(LinesOf(window, arranged).size() == static_cast<qsizetype>(std::size(kPanels)) + 1);  // and the space
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TFuzzFolder folder;
  static int count = 1;
  static char name[] = "fuzz_layout";
  static char* arguments[] = {name, nullptr};
  static const bool isOffscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
  // Never destroyed: what Qt keeps for the thread is gone before.
  static const auto* const application = std::make_unique<QApplication>(count, arguments).release();
  static TWindow& window = *std::make_unique<TWindow>().release();
  Require(isOffscreen && application != nullptr);
  TFuzzFolder::Write("layout.ini", {data, size});
  try {
    Arrange(window);
  } catch (const std::exception& refused) {
    Require(refused.what()[0] != '\0');
  }
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // tab bars that are not needed any more
  return 0;
}
