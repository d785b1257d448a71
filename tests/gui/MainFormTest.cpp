// The window from end to end, through the names of its controls, as a person uses it.
#include "gui/mainform/KorvexMainForm.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QDropEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QTableView>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <fstream>
#include <stdexcept>

#include "gui/common/uGuard.h"
#include "gui/ribbon/uRibbonGroup.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

const std::vector<std::string> kViews = {"WellcomePanel", "MainOverviewPanel", "MainShockPanel", "ReportPanel"};

class MainForm : public TWindowTest {
 protected:
  void Drop(const QStringList& paths) {
    QMimeData files;
    QList<QUrl> urls;
    for (const QString& path : paths) urls << QUrl::fromLocalFile(path);
    files.setUrls(urls);
    QDragEnterEvent enter({9, 9}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(FForm.get(), &enter);
    if (!enter.isAccepted()) return;
    QDropEvent drop({9, 9}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(FForm.get(), &drop);
  }
  // The groups that the ribbon shows, those without a file excepted.
  std::vector<std::string> Groups() {
    std::vector<std::string> names;
    for (const TRibbonGroup* group : FForm->findChildren<TRibbonGroup*>()) {
      const std::string name = group->objectName().toStdString();
      if (!group->isHidden() && name != "btngrpFile") names.push_back(name.substr(std::string_view("btngrp").size()));
    }
    return names;
  }
  std::string Caption() { return FForm->windowTitle().toStdString(); }

  void ExpectWelcome() {
    EXPECT_THAT(Seen(kViews), ElementsAre("WellcomePanel"));
    EXPECT_THAT(Docks(), IsEmpty());
    EXPECT_THAT(Groups(), IsEmpty());
    EXPECT_FALSE(Find("pnlLoading")->isVisible());
    EXPECT_TRUE(Find("dxBarOpenNewFile")->isEnabled());
    EXPECT_EQ(Caption(), "Korvex165 ShockScope [W64] v1.2.3.4");
  }
  void ExpectShown(const QString& path) {
    EXPECT_EQ(Caption(), "Korvex165 ShockScope v1.2.3.4 [" + path.toStdString() + "]");
    EXPECT_TRUE(FForm->Flow().FileShown());
    EXPECT_FALSE(Find("pnlLoading")->isVisible());
  }

  // Clicks a column's title and gives the column back.
  int ClickTitle(QTableView* grid, const QString& title) {
    int column = 0;
    while (grid->model()->headerData(column, Qt::Horizontal).toString() != title) {
      if (++column == grid->model()->columnCount()) throw std::runtime_error("no column " + title.toStdString());
    }
    grid->scrollTo(grid->model()->index(0, column));
    QHeaderView* header = grid->horizontalHeader();
    const QPoint at(header->sectionViewportPosition(column) + 8, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
    return column;
  }
  static std::string CurrentId(const QTableView* grid) {
    return grid->currentIndex().siblingAtColumn(0).data().toString().toStdString();
  }

  QString FThree = Save("three.kshock", ThreeEvents());
};

TEST_F(MainForm, OpensByArgumentDialogAndDrop) {
  const QString second = Save("zweite Fahrt.kshock", ThreeEvents());
  Start(FThree);
  ExpectShown(FThree);
  EXPECT_THAT(Seen(kViews), ElementsAre("MainOverviewPanel"));
  EXPECT_EQ(Find<QLabel>("lblStatusFile")->text(), "three.kshock · complete");
  EXPECT_EQ(Find<QLabel>("lblStatusEvents")->text(), "3 events");
  EXPECT_THAT(FDialogs, IsEmpty());

  Press("Ctrl+O");
  EXPECT_THAT(FDialogs, ElementsAre("dlgOpen|Open a recording|" + FFolder.Path().generic_string() +
                                    "|Korvex ShockScope File (*.kshock)|"));
  ExpectShown(FThree);  // cancelled
  Find<QComboBox>("cmbSettingsDefFileFilter")->setCurrentIndex(1);
  FTyped = second;
  Press("Ctrl+O");
  EXPECT_THAT(FDialogs.back(), HasSubstr("|Korvex Data File (*.kshock *.korvex)"));
  ExpectShown(second);

  Drop({FThree});
  Settle();
  ExpectShown(FThree);
  EXPECT_THAT(Seen({"pnlDamaged", "pnlNotice"}), IsEmpty());
  Drop({second, FThree});
  Settle();
  ExpectShown(second);
  EXPECT_EQ(Find("pnlNotice")->accessibleName(),
            "Opened 1 of 2 files: zweite Fahrt.kshock. A window shows one recording.");
  EXPECT_THAT(FBoxes, IsEmpty());
}

TEST_F(MainForm, AfterAFailedOpenTheWelcomePageHasTheKeys) {
  Start(FThree);
  const std::string missing = "/none/missing.kshock";
  FForm->Flow().Open(missing);
  Settle();
  ASSERT_EQ(FBoxes.size(), 1U);
  EXPECT_EQ(FForm->focusWidget()->objectName(), "btnWellcomeOpen") << "the chart is gone";
  Find("btnWellcomeRecent_0")->setFocus();
  FForm->Flow().Open(missing);
  Settle();
  EXPECT_EQ(FForm->focusWidget()->objectName(), "btnWellcomeRecent_0");
}

TEST_F(MainForm, ADroppedFolderIsListedAndTheRecordingStays) {
  Start(FThree);
  Drop({QFileInfo(FThree).path()});
  Settle();
  EXPECT_TRUE(Find("edtBrowsePath")->isVisible());
  EXPECT_EQ(Find<QLineEdit>("edtBrowsePath")->text(), QDir::toNativeSeparators(QFileInfo(FThree).path()));
  EXPECT_THAT(FBoxes, IsEmpty());
  Press("Esc");
  ExpectShown(FThree);
}

TEST_F(MainForm, MissionDetailsSayWhichAxisIsMissing) {
  Start(Save("flat.kshock", TTestRecording().Creator().MissionHeader(2, 1).Channels({"ACC x", "ACC y"})));
  EXPECT_THAT(Find<QTextEdit>("edtMissionDetails")->toPlainText().toStdString(),
              HasSubstr("Events need all three axes; the recording lacks ACC z."));
  const QHeaderView& titles = *Find<QTableView>("dbgMostImportant")->horizontalHeader();
  ASSERT_GT(titles.count(), 0);
  for (int i = 0; i < titles.count(); ++i) EXPECT_GE(titles.sectionSize(i), titles.sectionSizeHint(i)) << "no rows";
}

TEST_F(MainForm, SaysInOneBoxWhatCannotBeShownAndStaysUsable) {
  const QString text = Save("text.kshock", TBytes{'n', 'o'});
  const std::string missing = (FFolder / "missing.kshock").string();
  Start(QString::fromStdString(missing));
  ASSERT_EQ(FBoxes.size(), 1U);
  EXPECT_THAT(FBoxes[0], testing::StartsWith("msgFile|The file cannot be opened.|" + missing + "\n"));
  ExpectWelcome();
  Drop({FThree});
  Settle();
  Drop({text});
  Settle();
  ASSERT_EQ(FBoxes.size(), 2U);
  EXPECT_EQ(FBoxes[1], "msgFile|This file cannot be displayed.|" + text.toStdString() + "\nIt is no data file.");
  ExpectWelcome();
  EXPECT_EQ(Find<QTableView>("dbgShocks")->model()->rowCount(), 0);
  Drop({FThree});
  Settle();
  ExpectShown(FThree);
  EXPECT_EQ(FBoxes.size(), 2U);
}

TEST_F(MainForm, ShowsADamagedFileWithANoteThatGoesWithIt) {
  TTestRecording recording = ThreeEvents();
  recording.Block(8, {1, 2, 3}).content.pop_back();
  Start(Save("cut.kshock", recording));
  EXPECT_THAT(Seen({"MainOverviewPanel", "pnlDamaged"}), ElementsAre("MainOverviewPanel", "pnlDamaged"));
  EXPECT_THAT(Find<QLabel>("lblDamaged")->text().toStdString(), HasSubstr("2 data blocks"));
  QTest::mouseClick(Find("btnDamagedClose"), Qt::LeftButton);
  EXPECT_THAT(Seen({"pnlDamaged"}), IsEmpty());
  Press("F5");
  EXPECT_TRUE(Find("pnlDamaged")->isVisible()) << "it is still damaged";
  Drop({FThree});
  Settle();
  EXPECT_THAT(Seen({"pnlDamaged"}), IsEmpty());
}

TEST_F(MainForm, CancelsByButtonAndByEsc) {
  Start(FThree);
  Drop({FThree});
  Drop({Save("text.kshock", TBytes{'n', 'o'})});  // refused while another is read
  EXPECT_TRUE(Find("pnlLoading")->isVisible());
  EXPECT_FALSE(Find("dxBarOpenNewFile")->isEnabled());
  QTest::mouseClick(Find("btnLoadingCancel"), Qt::LeftButton);
  Settle();
  ExpectWelcome();
  Drop({FThree});
  QTest::keyClick(FForm->focusWidget(), Qt::Key_Escape);
  Settle();
  ExpectWelcome();
  EXPECT_THAT(FBoxes, IsEmpty());
}

TEST_F(MainForm, ClosesWhileAFileIsRead) {
  TTestRecording recording = TTestRecording().Creator().MissionHeader(2, 2).Channels({"T"});
  for (int block = 0; block < 100; ++block) recording.Data(std::vector<TTestRecord>(5000, {1, {1}}));
  const QString path = Save("long.kshock", recording);
  Start();
  Drop({path});
  ASSERT_EQ(FForm->Flow().State(), TFileFlow::TState::Reading);
  EXPECT_TRUE(FForm->close());
  for (int round = 0; round < 5; ++round) QCoreApplication::processEvents();
  EXPECT_FALSE(FForm->isVisible());
}

TEST_F(MainForm, DoesACloseAfterTheFillingThatItEnds) {
  TTestRecording recording = TTestRecording().Creator().MissionHeader(2, 2).Channels({"ACC x", "ACC y", "ACC z"});
  std::vector<TTestRecord> events;
  for (int i = 0; i < 1500; ++i) {
    for (const float x : {5.0F, kEnd}) events.push_back({static_cast<double>(i), {x, 0, 0}});
  }
  for (int block = 0; block < 60; ++block) recording.Data(events);
  const QString path = Save("many.kshock", recording);
  Start();
  bool asked = false;
  QTimer impatient;
  QObject::connect(&impatient, &QTimer::timeout, [&] {
    if (asked || FForm->Flow().State() != TFileFlow::TState::Filling) return;
    asked = true;
    EXPECT_FALSE(FForm->close());
  });
  impatient.start(0);
  Drop({path});
  EXPECT_TRUE(QTest::qWaitFor([this] { return !FForm->isVisible(); }, kPatienceMs));
  EXPECT_TRUE(asked);
}

TEST_F(MainForm, ATitleClickSortsMarksItsColumnAndSelectsTheFirstRow) {
  Start(FThree);
  EXPECT_EQ(CurrentId(Find<QTableView>("dbgMostImportant")), "1") << "the most intense event";
  Press("Ctrl+2");
  auto* grid = Find<QTableView>("dbgShocks");
  const struct {
    const char* title;
    Qt::SortOrder order;
    const char* first;
  } clicks[] = {{"Timestamp", Qt::DescendingOrder, "2"},
                {"ID", Qt::AscendingOrder, "0"},
                {"IoT total", Qt::DescendingOrder, "1"},
                {"IoT total", Qt::AscendingOrder, "2"}};
  for (const auto& [title, order, first] : clicks) {
    const int column = ClickTitle(grid, title);
    EXPECT_EQ(grid->horizontalHeader()->sortIndicatorSection(), column) << title;
    EXPECT_EQ(grid->horizontalHeader()->sortIndicatorOrder(), order) << title;
    EXPECT_EQ(grid->currentIndex().row(), 0);
    for (const char* other : {"dbgShocks", "dbgFilteredShocks", "dbgMostImportant"}) {
      EXPECT_EQ(CurrentId(Find<QTableView>(other)), first) << title << " in " << other;
    }
  }
  EXPECT_EQ(Find<QLabel>("lblCardToTTotalValue")->text(), "4 msec") << "of event 2";
  Press("N");
  EXPECT_EQ(CurrentId(grid), "0") << "IoT total rises: 9, 10, 14";

  Press("Ctrl+1");
  for (const char* name : {"DBGrid2", "DBGrid8"}) {
    auto* readings = Find<QTableView>(name);
    ClickTitle(readings, "Timestamp");
    EXPECT_EQ(readings->horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(readings->model()->index(0, 0).data().toString(), "2") << name;
  }
  auto* orderBy = Find<QComboBox>("cmbOrderMostImporantBy");
  orderBy->setFocus();
  QTest::keyClick(orderBy, Qt::Key_End);
  auto* important = Find<QTableView>("dbgMostImportant");
  EXPECT_EQ(important->model()->index(2, 0).data().toString(), "2") << "5 g, less than 20 g and 9 g";
  EXPECT_EQ(CurrentId(important), "0") << "the selected event stays marked";
  QTest::keyClick(orderBy, Qt::Key_Home);
  EXPECT_EQ(CurrentId(important), "0");
}

TEST_F(MainForm, AClickOnARowChoosesThatRowAndMovesNothing) {
  TTestRecording recording = TTestRecording().Creator().MissionHeader(2, 2).Channels({"ACC x", "ACC y", "ACC z"});
  std::vector<TTestRecord> records;
  for (int event = 0; event < 200; ++event) {
    records.push_back({100.0 * event, {1.0F, 0, 0}});
    records.push_back({100.0 * event + 1, {kEnd, kEnd, kEnd}});
  }
  recording.Data(records);
  Start(Save("many.kshock", recording));
  Press("Ctrl+2");
  auto* grid = Find<QTableView>("dbgShocks");
  ClickTitle(grid, "ID");
  ClickTitle(grid, "ID");
  const int last = grid->rowAt(grid->viewport()->height() - 1);
  ASSERT_LT(last, grid->model()->rowCount() - 1) << "the grid scrolls";
  const int top = grid->rowAt(0);
  for (const auto& [row, held] : {std::pair(last, Qt::NoModifier), std::pair(top + 1, Qt::ControlModifier)}) {
    const QModelIndex cell = grid->model()->index(row, 0);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, held, {5, grid->rowViewportPosition(row) + 2});
    EXPECT_EQ(grid->currentIndex().row(), row);
    EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, cell.data().toString().toULongLong());
  }
  EXPECT_EQ(grid->selectionModel()->selectedRows().size(), 2) << "Ctrl adds a row to those selected";

  Press("Ctrl+1");
  auto* important = Find<QTableView>("dbgMostImportant");
  ClickTitle(important, "ID");
  EXPECT_FALSE(important->horizontalHeader()->isSortIndicatorShown()) << "its order is that of Order By";
}

TEST_F(MainForm, TheBackstageGivesWayToWhatIsOpened) {
  Start(FThree);
  for (const bool reload : {true, false}) {
    FForm->findChild<QAction*>("actBackstage")->trigger();
    ASSERT_TRUE(Find("Backstage")->isVisible());
    if (reload) {
      Press("F5");
    } else {
      Drop({FThree});
      Settle();
    }
    EXPECT_FALSE(Find("Backstage")->isVisible());
    ExpectShown(FThree);
  }
}

TEST_F(MainForm, NoTextOfAFileIsMarkup) {
  if (!std::ofstream(FFolder / "<b>")) GTEST_SKIP() << "no file may have such a name";
  const QString odd = Save("<b>odd.kshock", ThreeEvents());
  Start(odd);
  ExpectShown(odd);
  EXPECT_EQ(Find<QLabel>("lblStatusFile")->textFormat(), Qt::PlainText);
  const QString unfit = Save("<img src=x>.kshock", {'n', 'o'});
  Drop({unfit});
  Settle();
  EXPECT_THAT(std::exchange(FBoxes, {}), ElementsAre(HasSubstr("|" + unfit.toStdString())));
}

TEST_F(MainForm, KeysSwitchBetweenViewsWithTheirPanelsAndGroups) {
  Start(FThree);
  Press("Ctrl+3");
  EXPECT_THAT(Seen(kViews), ElementsAre("ReportPanel"));
  EXPECT_THAT(Docks(), IsEmpty());
  EXPECT_THAT(Groups(), UnorderedElementsAre("View", "Alarm", "EventsExport", "Notes", "Compare", "SensorsExport",
                                             "Tables", "Report"));
  Press("N");
  Press("Ctrl+Shift+N");
  EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, 1U) << "the keys of hidden groups rest";
  EXPECT_THAT(Docks(), IsEmpty());

  Press("Ctrl+2");
  EXPECT_THAT(Seen(kViews), ElementsAre("MainShockPanel"));
  EXPECT_THAT(Docks(), ElementsAre("dxDockPanelNavigator", "dxDockPanelMissionDetails"));
  EXPECT_THAT(Groups(),
              UnorderedElementsAre("View", "Navigator", "Filtering", "Alarm", "Layout", "EventsChart", "EventsExport",
                                   "EventsImage", "Notes", "Compare", "Shock", "Filter", "ShockSeries", "ShockTools",
                                   "ShockExport", "ShockImage", "ShockOutput", "SensorsExport", "Tables"));
  EXPECT_TRUE(Find("dxBarNextEvent")->isVisible()) << "the tab of the shock view is in front";

  Press("Ctrl+1");
  EXPECT_THAT(Seen(kViews), ElementsAre("MainOverviewPanel"));
  EXPECT_EQ(Docks().size(), 4U);
  EXPECT_THAT(Groups(), UnorderedElementsAre("View", "Navigator", "Filtering", "Alarm", "Layout", "EventsChart",
                                             "EventsExport", "EventsImage", "Notes", "Compare", "Events",
                                             "SensorsTools", "SensorsAxes", "SensorsExport", "SensorsImage", "Tables"));
  EXPECT_TRUE(Find<QAction>("actSetViewOverview")->isChecked());
  Press("Ctrl+W");
  ExpectShown(FThree);
}

TEST_F(MainForm, WithoutAFileItsKeysDoNothing) {
  Start();
  for (const char* keys : {"Ctrl+1", "Ctrl+2", "Ctrl+3", "Ctrl+0", "N", "P", "F5", "Ctrl+D", "Ctrl+W", "Ctrl+Shift+L",
                           "Ctrl+Shift+N", "Ctrl+Shift+M", "Ctrl+Shift+S", "Ctrl+Shift+B"}) {
    Press(keys);
  }
  ExpectWelcome();
  EXPECT_THAT(FDialogs, IsEmpty());
  EXPECT_THAT(FBoxes, IsEmpty());
}

TEST_F(MainForm, TheWelcomePanelOffersManualAndDemoWhereThereAreFiles) {
  Start();
  EXPECT_THAT(Seen({"btnWellcomeOpen", "btnWellcomeDemo"}), ElementsAre("btnWellcomeOpen"));
  std::filesystem::create_directories(FFolder / "doc_shock");
  std::filesystem::create_directories(FFolder / "data");
  Save("doc_shock/Quick-Start.pdf", TBytes{1});
  const QString demo = Save("data/demo.kshock", ThreeEvents());
  Start();
  EXPECT_EQ(Find("frmUserManualIcon_0")->accessibleName(), "Quick Start.pdf");
  FTyped = demo;
  QTest::mouseClick(Find("btnWellcomeDemo"), Qt::LeftButton);
  Settle();
  ExpectShown(demo);
  EXPECT_THAT(FDialogs, ElementsAre(HasSubstr("|" + (FFolder / "data").generic_string() + "|")));
}

TEST_F(MainForm, SavesAViewAsPdfWhereItIsTold) {
  Start(FThree);
  const std::filesystem::path pdf = FFolder / "out" / "view.pdf";
  std::filesystem::create_directory(FFolder / "out");
  FTyped = QString::fromStdString(pdf.string());
  for (const auto& [view, action] :
       {std::pair("Ctrl+1", "actOverviewExport"), {"Ctrl+2", "actShockExport"}, {"Ctrl+3", "actReportExport"}}) {
    std::filesystem::remove(pdf);
    Press(view);
    Find<QAction>(action)->trigger();
    const TBytes bytes = BytesOfFile(pdf);
    ASSERT_GT(bytes.size(), 1000U) << view;
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 5), "%PDF-");
    EXPECT_EQ(Find<QLabel>("lblNotice")->text().toStdString(), "Written: " + pdf.string());
    Press(view);
    EXPECT_FALSE(Find("pnlNotice")->isVisible()) << "the next command ends it";
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(FFolder / "out"), {}), 1) << "nothing else is left";
}

TEST_F(MainForm, TheTaskbarShowsProgressWhileAFileIsReadHoweverThatEnds) {
  Start();
  const auto* progress = Find<QObject>("dxTaskbarProgress1");
  for (const QString& path : {FThree, Save("none.kshock", TBytes{1, 2, 3})}) {
    EXPECT_FALSE(progress->property("active").toBool());
    FForm->Flow().Open(path.toStdString());
    EXPECT_TRUE(progress->property("active").toBool());
    EXPECT_EQ(progress->property("position"), 0.0);
    EXPECT_EQ(progress->property("maximum"), 9.0);
    Settle();
  }
  EXPECT_FALSE(progress->property("active").toBool());
  FBoxes.clear();
}

TEST_F(MainForm, EveryControlSaysWhatItIs) {
  Start(FThree);
  const auto isOneOf = []<class... T>(const QObject* object, T*...) { return (... || qobject_cast<const T*>(object)); };
  constexpr QAbstractButton* kButton = nullptr;
  constexpr QTableView* kTable = nullptr;
  constexpr QLineEdit* kEdit = nullptr;
  constexpr QComboBox* kCombo = nullptr;
  constexpr QTabBar* kTabs = nullptr;
  for (const QWidget* control : FForm->findChildren<QWidget*>()) {
    const std::string name = control->objectName().toStdString();
    const bool isPart = name.starts_with("qt_") || isOneOf(control->parent(), kTable, kEdit, kCombo, kTabs);
    if (isPart || !isOneOf(control, kButton, kTable, kEdit, kCombo)) continue;
    const auto* button = qobject_cast<const QAbstractButton*>(control);
    EXPECT_FALSE(name.empty()) << "in " << control->parent()->objectName().toStdString();
    EXPECT_FALSE(control->accessibleName().isEmpty() && (button == nullptr || button->text().isEmpty())) << name;
    EXPECT_FALSE(qobject_cast<const QToolButton*>(control) && control->toolTip().isEmpty()) << name;
  }
}

TEST_F(MainForm, AnExceptionInAHandlerEndsAsOneBox) {
  Start();
  Guarded(FForm.get(), [] { throw std::runtime_error("The disk is full."); });
  Guarded(FForm.get(), [] { throw std::bad_alloc(); });
  EXPECT_THAT(std::exchange(FBoxes, {}),
              ElementsAre("msgFailure|The command could not be completed.|The disk is full.",
                          "msgFailure|The command could not be completed.|There is not enough memory."));
}

}  // namespace
