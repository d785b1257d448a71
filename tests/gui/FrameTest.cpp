// The window's frame: it fits, it stays still, and it comes back where it was.
#include <QAction>
#include <QComboBox>
#include <QHelpEvent>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <QToolButton>
#include <QToolTip>
#include <QWindow>
#include <fstream>
#include <set>

#include "gui/charts/uEventsChart.h"
#include "gui/charts/uResponseChart.h"
#include "gui/common/uTheme.h"
#include "gui/docks/uFoldingPanel.h"
#include "gui/mainform/uWindowPlace.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

namespace {

class Frame : public TWindowTest {
 protected:
  void OpenAt(const QSize& size) {
    Start(Save("three.kshock", ThreeEvents()));
    FForm->resize(size);
    Settle();
  }
  void Trigger(const char* action) {
    FForm->findChild<QAction*>(action)->trigger();
    Settle();
  }
  // What the chart in front shows, one after the other; `look` gets the name.
  void ForEveryChartOfAnEvent(const std::function<void(const std::string&)>& look) {
    look("curves");
    for (const char* action : {"actShockSpecAnalysis", "actShockResponse"}) {
      Trigger(action);
      look(action);
    }
    Trigger("actShockResponse");
  }
  void ExpectTabsWhole(const std::string& when) {
    const auto* tabs = Find<QTabWidget>("pgcShockGrids")->tabBar();
    EXPECT_GE(tabs->width(), tabs->sizeHint().width()) << when << " " << tabs->tabText(0).toStdString();
  }
  QList<QList<int>> Splitters() {
    QList<QList<int>> sizes;
    for (const char* name : {"splShock", "splShockEvent"}) sizes << Find<QSplitter>(name)->sizes();
    return sizes;
  }
};

TEST_F(Frame, EveryViewFitsIntoTheSmallestWindowWithAllItsPanels) {
  const QSize smallest(900, 600);
  OpenAt(smallest);
  EXPECT_EQ(FForm->minimumSize(), smallest);
  const auto look = [&](const std::string& view) {
    EXPECT_EQ(FForm->size(), smallest) << view;
    for (const QWidget* panel : FForm->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
      if (panel->isWindow() || panel->visibleRegion().isEmpty()) continue;
      EXPECT_TRUE(FForm->rect().contains(panel->geometry())) << view << panel->objectName().toStdString();
    }
  };
  for (const char* view : {"Ctrl+1", "Ctrl+3", "Ctrl+4", "Ctrl+5", "Ctrl+2"}) {
    Press(view);
    look(view);
  }
  for (const char* action : {"actFilterEdit", "actShockShowTable", "actEventPin"}) Trigger(action);
  ForEveryChartOfAnEvent([&](const std::string& chart) {
    look(chart);
    const auto* shown = Find<QStackedWidget>("stkEventCharts");
    EXPECT_GE(shown->height(), 150) << chart << ": the choices above it take no more than one row";
  });
  emit Find<TFoldingPanel>("dxDockPanelMissionDetails")->FoldAsked(false);
  Settle();
  look("Mission Details beside the filter");
  const auto* details = Find("dxDockPanelMissionDetails");
  EXPECT_GE(details->width(), Find("edtMissionDetails")->minimumWidth());
  for (const char* part : {"Chart20", "stkEventCharts", "dbgShockValues"}) {
    EXPECT_LE(Find(part)->mapTo(FForm.get(), QPoint(Find(part)->width(), 0)).x(), details->x()) << part;
  }
  EXPECT_GE(Find("dbgShockValues")->width(), 120);
  EXPECT_FALSE(Find("pgcShockGrids")->isVisible()) << "the list gives way";
}

TEST_F(Frame, TheTabsOfTheEventGridsAreWholeBesideAndAfterAClippedEvent) {
  OpenAt({1280, 800});
  Press("Ctrl+2");
  for (int width = 900; width <= 1500; width += 50) {
    FForm->resize(width, 800);
    for (const std::size_t event : {1U, 0U}) {
      emit Find<TEventsChart>("Chart20")->EventClicked(event);
      Settle();
      EXPECT_EQ(Find("lblClipped")->isVisible(), event == 1);
      ExpectTabsWhole(std::to_string(width));
    }
  }
  FForm->resize(900, 600);
  emit Find<TEventsChart>("Chart20")->EventClicked(1);
  for (const char* action : {"actShockShowTable", "actFilterEdit"}) {
    Trigger(action);
    ExpectTabsWhole(action);
  }
}

TEST_F(Frame, ChoicesWithoutRoomStandBehindAButtonWithTheirCaptions) {
  OpenAt({900, 600});
  Press("Ctrl+2");
  Trigger("actShockShowTable");
  Trigger("actShockResponse");
  auto* button = Find<QToolButton>("btnResponseChoices");
  auto* quality = Find<QComboBox>("cmbResponseQ");
  ASSERT_TRUE(button->isVisible());
  EXPECT_FALSE(quality->isVisible());
  button->setFocus();
  QTest::keyClick(button, Qt::Key_Space);
  ASSERT_TRUE(quality->isVisible());
  quality->setCurrentIndex(2);
  EXPECT_EQ(Find<TResponseChart>("chartResponse")->Request().options.quality, 25);
  QTest::keyClick(quality, Qt::Key_Escape);
  EXPECT_FALSE(quality->isVisible());
  EXPECT_TRUE(button->hasFocus());
  Trigger("actShockShowTable");
  FForm->resize(1920, 1000);
  Settle();
  EXPECT_FALSE(button->isVisible());
  EXPECT_EQ(quality->window(), FForm.get());
  EXPECT_TRUE(quality->isVisible());
  Trigger("actShockSpecAnalysis");
  EXPECT_FALSE(quality->isVisible());
  EXPECT_TRUE(Find("cmbSpecType")->isVisible());
}

TEST_F(Frame, InANarrowWindowThePanelsBesideTheViewsAreTitlesThatOpenByClickAndKey) {
  OpenAt({1280, 800});
  FForm->resize(1100, 800);
  Settle();
  auto* details = Find<TFoldingPanel>("dxDockPanelMissionDetails");
  auto* sensors = Find<TFoldingPanel>("dxDockPanelSensorGridTemp");
  auto* grid = Find("DBGrid2");
  EXPECT_EQ(details->Fold(), TFold::Upright);
  EXPECT_EQ(sensors->Fold(), TFold::Tab);
  EXPECT_EQ(Find<TFoldingPanel>("dxDockPanelNavigator")->Fold(), TFold::Open);
  EXPECT_FALSE(details->isHidden());
  EXPECT_LT(details->width(), 50);
  EXPECT_FALSE(grid->isVisible());
  for (int step = 0; step < 30; ++step) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    const QWidget* focus = QApplication::focusWidget();
    EXPECT_FALSE(focus->visibleRegion().isEmpty()) << step << focus->objectName().toStdString();
  }

  QTest::mouseClick(details, Qt::LeftButton, {}, details->rect().center());
  Settle();
  EXPECT_EQ(details->Fold(), TFold::Open);
  EXPECT_EQ(sensors->Fold(), TFold::Flat) << "its column is not folded any more";
  EXPECT_GT(details->width(), 200);
  Press("Ctrl+Shift+S");
  EXPECT_TRUE(grid->isVisible()) << "the command of a folded panel opens it";
  EXPECT_GE(sensors->height(), 100);

  Press("Ctrl+2");
  Press("Ctrl+1");
  EXPECT_EQ(details->Fold(), TFold::Open) << "the user's choice lasts";
  auto* fold = details->findChild<QToolButton*>("Fold");
  fold->setFocus();
  QTest::keyClick(fold, Qt::Key_Space);
  Settle();
  EXPECT_EQ(details->Fold(), TFold::Flat);
  FForm->resize(1280, 800);
  Settle();
  EXPECT_EQ(details->Fold(), TFold::Flat);
  Trigger("actDefaultLayout");
  EXPECT_EQ(details->Fold(), TFold::Open);
}

TEST_F(Frame, TheFilterFoldsThePanelsThatLeaveTheViewTooLittle) {
  OpenAt({1280, 800});
  Press("Ctrl+2");
  const auto* details = Find<TFoldingPanel>("dxDockPanelMissionDetails");
  const int width = details->width();
  Trigger("actShockShowTable");
  const int table = Find("dbgShockValues")->width();
  Trigger("actFilterEdit");
  EXPECT_EQ(details->Fold(), TFold::Upright);
  EXPECT_GE(Find("dbgShockValues")->width(), table - 40);
  Find("dxDockPanelFilter")->hide();
  Settle();
  EXPECT_EQ(details->Fold(), TFold::Open);
  EXPECT_EQ(details->width(), width);
}

TEST_F(Frame, ALowWindowFoldsTheNavigatorAndTheNextLargeOneHasItAsHighAsBefore) {
  OpenAt({1280, 800});
  const auto* navigator = Find<TFoldingPanel>("dxDockPanelNavigator");
  const int height = navigator->height();
  FForm->resize(900, 600);
  Settle();
  EXPECT_EQ(navigator->Fold(), TFold::Flat);
  EXPECT_GE(navigator->width(), 800);
  FForm->resize(1280, 800);
  Settle();
  EXPECT_EQ(navigator->height(), height);
}

TEST_F(Frame, KeysReachTheViewFromTheFirstSecondAndAfterWhatHadThemIsGone) {
  const auto focused = [] {
    const QWidget* widget = QApplication::focusWidget();
    return widget == nullptr ? "" : widget->objectName().toStdString();
  };
  Start();
  EXPECT_EQ(focused(), "btnWellcomeOpen");
  FForm->Flow().Open(Save("three.kshock", ThreeEvents()).toStdString());
  Settle();
  EXPECT_EQ(focused(), "Chart1");
  for (const auto& [view, widget] : {std::pair("Ctrl+2", "Chart2"), {"Ctrl+3", "scrlReport"}, {"Ctrl+1", "Chart1"}}) {
    Press(view);
    EXPECT_EQ(focused(), widget) << view;
  }
  Find("DBGrid2")->setFocus();
  Press("Ctrl+Shift+S");
  EXPECT_EQ(focused(), "Chart1") << "the panel is closed";
  Find<QLineEdit>("edtFilterAccelerationMaxFrom")->setText("6");
  Find<QToolButton>("btnFilterOff")->setFocus();
  QTest::keyClick(Find("btnFilterOff"), Qt::Key_Space);
  Settle();
  EXPECT_EQ(focused(), "Chart1") << "the button went with the filter";
  Press("F5");
  EXPECT_EQ(focused(), "Chart1");

  auto* tabs = Find<QTabBar>("tabsRibbon");
  Find("dxBarOverview")->setFocus();
  QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(2).center());
  EXPECT_EQ(focused(), "tabsRibbon") << "and no button of the page";
  FForm->resize(1280, 800);
  Settle();
  for (int step = 0; step < 80; ++step) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_FALSE(QApplication::focusWidget()->visibleRegion().isEmpty()) << step << focused();
  }
}

TEST_F(Frame, TheSchemeFollowsTheDesktopWhileTheProgramRuns) {
  OpenAt({1280, 800});
  const auto ground = [this] { return FForm->grab().toImage().pixelColor(2, FForm->height() - 40).rgb() & 0xFFFFFF; };
  const auto icon = [this] { return Find<QAction>("actFileOpen")->icon().pixmap(22).toImage(); };
  ASSERT_EQ(ground(), kLightTokens.ground);
  const QImage light = icon();
  ApplyScheme(*qApp, TScheme::Desktop);
  QApplication::setPalette(QPalette(Qt::white, Qt::black));
  Settle();
  EXPECT_EQ(ground(), kDarkTokens.ground);
  EXPECT_NE(icon(), light);
  EXPECT_TRUE(Find<QTextEdit>("edtMissionDetails")->toHtml().contains(QColor(kDarkTokens.secondaryInk).name()));
  // The offscreen desktop itself is light.
  QEvent theme(QEvent::ThemeChange);
  QApplication::sendEvent(FForm->windowHandle(), &theme);
  Settle();
  EXPECT_EQ(ground(), kLightTokens.ground);
  EXPECT_EQ(icon(), light);
}

// Of a control that shows one line; empty: it fits or says the whole in its tool tip.
std::string CutText(const QWidget& control) {
  if (!control.toolTip().isEmpty()) return {};
  const auto* label = qobject_cast<const QLabel*>(&control);
  const bool isWords = label != nullptr && !label->text().isEmpty() && !label->wordWrap();
  if (!isWords && qobject_cast<const QAbstractButton*>(&control) == nullptr) return {};
  const int needed = isWords ? control.fontMetrics().size(Qt::TextShowMnemonic, label->text()).width()
                             : control.minimumSizeHint().width();
  const int room = isWords ? label->contentsRect().width() : control.width();
  return needed > room ? control.objectName().toStdString() : std::string();
}

TEST_F(Frame, AtTheSmallestSizeNoTextIsCutWithoutAToolTipAndFocusIsSeen) {
  OpenAt({900, 600});
  const auto look = [this] {
    for (QWidget* control : FForm->findChildren<QWidget*>()) {
      if (control->visibleRegion().isEmpty()) continue;
      EXPECT_EQ(CutText(*control), "");
      if (const auto* tabs = qobject_cast<QTabBar*>(control)) {
        EXPECT_GE(tabs->height(), tabs->sizeHint().height());
      }
      const std::string name = control->metaObject()->className() + ("|" + control->objectName().toStdString());
      const bool takesKeys = control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) != 0;
      if (!takesKeys || control->focusProxy() != nullptr) continue;
      const auto grabbed = [control] { return control->grab().toImage(); };
      control->clearFocus();
      const QImage without = grabbed();
      control->setFocus(Qt::TabFocusReason);
      EXPECT_NE(grabbed(), without) << name;
      control->clearFocus();
    }
  };
  look();
  for (const char* panel : {"dxDockPanelMissionDetails", "dxDockPanelSensorGridTemp"}) {
    emit Find<TFoldingPanel>(panel)->FoldAsked(false);
  }
  Settle();
  look();
  Press("Ctrl+2");
  for (const char* action : {"actFilterEdit", "actShockShowTable"}) Trigger(action);
  ForEveryChartOfAnEvent([&](const std::string&) { look(); });
  Find<QTabWidget>("pgcShockGrids")->setCurrentIndex(2);
  look();
  for (const char* view : {"Ctrl+3", "Ctrl+4", "Ctrl+5"}) {
    Press(view);
    look();
  }
  for (int page = 0; page < 4; ++page) {
    Trigger("actBackstage");
    Find<QToolButton>("backstageSettings")->click();
    Find<QTabWidget>("pgcSettings")->setCurrentIndex(page);
    Settle();
    look();
  }
  EXPECT_EQ(FForm->size(), QSize(900, 600));
}

TEST_F(Frame, SteppingAndATableThatComesAndGoesMoveNoSplitter) {
  Start(Save("rising.kshock", RisingEvents(51)));
  FForm->resize(1280, 800);
  Press("Ctrl+2");
  const auto before = Splitters();
  Trigger("actShockShowTable");
  const auto withTable = Splitters();
  SCOPED_TRACE(testing::PrintToString(withTable));
  EXPECT_GE(withTable[1][1], 300) << "what the table needs beyond comes from the list";
  EXPECT_LT(withTable[1][1], before[1][1]);
  std::set<std::size_t> seen;
  for (int step = 0; step < 50; ++step) {
    Press("P");
    seen.insert(*FForm->Flow().Mission().SelectedEvent);
    ASSERT_EQ(Splitters(), withTable) << step;
  }
  EXPECT_GE(seen.size(), 50U);
  Trigger("actShockShowTable");
  EXPECT_EQ(Splitters(), before);
}

TEST_F(Frame, ACellThatIsCutSaysTheWholeInItsToolTip) {
  OpenAt({900, 600});
  Press("Ctrl+2");
  auto* grid = Find<QTableView>("dbgShocks");
  const QModelIndex time = grid->model()->index(0, 1);
  const auto tip = [&] {
    QToolTip::hideText();
    const QPoint at = grid->visualRect(time).center();
    QHelpEvent event(QEvent::ToolTip, at, grid->viewport()->mapToGlobal(at));
    QApplication::sendEvent(grid->viewport(), &event);
    return QToolTip::text();
  };
  const QString whole = Qt::convertFromPlainText(time.data().toString());
  EXPECT_NE(tip(), whole);
  grid->setColumnWidth(1, 40);
  EXPECT_EQ(tip(), whole);
}

TEST_F(Frame, ABandAtAnEndOfTheRecordingCannotBeMovedBeyond) {
  OpenAt({1280, 800});
  const auto canMove = [this] {
    return std::pair(Find<QAction>("actNavRwd")->isEnabled(), Find<QAction>("actNavFwd")->isEnabled());
  };
  EXPECT_EQ(canMove(), std::pair(false, false));
  EXPECT_TRUE(Find<QAction>("actNavRwd")->toolTip().endsWith("Not available: the band begins with the recording"));
  Press("Shift+I");
  EXPECT_EQ(canMove(), std::pair(false, true));
  Press("Ctrl+Right");
  EXPECT_EQ(canMove().first, true);
  Press("Ctrl+0");
  EXPECT_EQ(canMove(), std::pair(false, false));
}

TEST_F(Frame, TheLimitsOpenBelowTheirGroupWhereItIsCollapsed) {
  OpenAt({900, 600});
  Press("Ctrl+Alt+A");
  const auto* group = Find("btngrpAlarm");
  ASSERT_FALSE(Find("dxBarAlarmLimits")->isVisible());
  const QPoint at = Find("pnlAlarmLimits")->pos();
  EXPECT_NEAR(at.y(), group->mapToGlobal(QPoint(0, group->height())).y(), 4);
  EXPECT_GE(at.x(), 400) << "as far to the right as the screen allows";
  Find("pnlAlarmLimits")->hide();
}

TEST_F(Frame, TheCardsShowSevenDigitsWithTheirUnitWhole) {
  for (const QSize& size : {QSize(1280, 800), QSize(900, 600)}) {
    OpenAt(size);
    Press("Ctrl+2");
    for (const char* name :
         {"lblCardToTTotalValue", "lblCardIoTTotalValue", "lblCardToTMaxValue", "lblCardIoTMaxValue"}) {
      auto* value = Find<QLabel>(name);
      value->setText("9999.999 g ms");
      value->grab();
      EXPECT_EQ(value->toolTip(), "") << name << " is cut at " << size.width();
      EXPECT_EQ(value->visibleRegion().boundingRect(), value->rect()) << name;
    }
  }
}

TEST(WindowPlace, ComesBackUnlessItsScreenIsGoneOrTheFileIsWrong) {
  const TTempFolder folder;
  const auto file = folder / kWindowPlaceFile;
  QMainWindow window;
  window.setGeometry(20, 60, 500, 400);
  SaveWindowPlace(window, file);
  QMainWindow next;
  LoadWindowPlace(next, file);
  EXPECT_EQ(next.geometry(), QRect(20, 60, 500, 400));
  const QRect first = FirstPlace(next.screen()->availableGeometry());
  for (const char* text : {"[Window]\nLeft=9000\nTop=60\nWidth=500\nHeight=400\n", "[Window]\nLeft=20\nTop=60\n",
                           "[Window]\nLeft=20\nTop=60\nWidth=-5\nHeight=400\n", "\xff"}) {
    std::ofstream(file, std::ios::binary) << text;
    LoadWindowPlace(next, file);
    EXPECT_EQ(next.geometry(), first) << text;
  }
  EXPECT_EQ(FirstPlace({0, 0, 3840, 2160}).size(), QSize(1600, 1000));
  EXPECT_EQ(FirstPlace({100, 0, 1000, 800}), QRect(175, 60, 850, 680));
}

}  // namespace
