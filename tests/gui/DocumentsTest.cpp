// What outlives the program: recent documents, layouts and logos, over a restart and from files that are of no use.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDockWidget>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QSplitter>
#include <QTest>
#include <QToolButton>
#include <QTreeView>
#include <fstream>
#include <random>
#include <stdexcept>

#include "base/uIniFile.h"
#include "gui/common/uLogos.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/ribbon/uRecentList.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

namespace {

const std::vector<std::string> kDocks = {"dxDockPanelNavigator", "dxDockPanelMissionDetails",
                                         "dxDockPanelSensorGridTemp", "dxDockPanelSensorGridBattery"};

class Documents : public TWindowTest {
 protected:
  Documents() {
    FProgram.findSettingsFolder = [this] { return (FSettings.Path() / "").string(); };
    FSize = {1280, 800};  // no panel is folded
  }
  QString Save(const char* name) { return TWindowTest::Save(name, ThreeEvents()); }
  void Write(const char* name, const std::string& text) { std::ofstream(FSettings / name, std::ios::binary) << text; }
  void Close() {
    EXPECT_TRUE(FForm->close());
    FForm.reset();
  }
  void Open(const QString& path) {
    FForm->Flow().Open(path.toStdString());
    Settle();
  }
  QTreeView* ShowRecent(const char* list) {
    FForm->findChild<QAction*>("actBackstage")->trigger();
    Find<QToolButton>("backstageRecent")->click();
    auto* view = Find<QTreeView>(list);
    view->setFocus();
    return view;
  }
  static std::vector<std::string> Names(const QTreeView* list) {
    std::vector<std::string> names;
    for (int row = 0; row < list->model()->rowCount(); ++row) {
      names.push_back(list->model()->index(row, 1).data().toString().toStdString());
    }
    return names;
  }
  static void Click(QTreeView* list, int row, int column) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualRect(list->model()->index(row, column)).center());
  }
  QDockWidget* Dock(std::size_t index) { return Find<QDockWidget>(kDocks[index]); }
  // Shown, and not behind another.
  static bool InFront(const QDockWidget* panel) {
    return !panel->isHidden() && (panel->isFloating() || !panel->visibleRegion().isEmpty());
  }
  // Where the panels in front are.
  std::vector<QRect> Places() {
    std::vector<QRect> places;
    for (std::size_t i = 0; i < kDocks.size(); ++i) {
      places.push_back(InFront(Dock(i)) ? Dock(i)->geometry() : QRect());
    }
    return places;
  }
  void ExpectInSight() {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (std::size_t i = 0; i < kDocks.size(); ++i) {
      const QDockWidget* panel = Dock(i);
      if (!InFront(panel)) continue;
      const QRect room = panel->isFloating() ? screen : FForm->rect();
      EXPECT_TRUE(room.contains(panel->isFloating() ? panel->frameGeometry() : panel->geometry())) << kDocks[i];
      EXPECT_GE(panel->width(), 20) << kDocks[i];
      EXPECT_GE(panel->height(), 20) << kDocks[i];
    }
    EXPECT_GE(FForm->centralWidget()->width(), 20);
    EXPECT_GE(FForm->centralWidget()->height(), 20);
  }

  TTempFolder FSettings;
};

TEST_F(Documents, RecentFilesAndFoldersComeBackAfterARestart) {
  fs::create_directories(FFolder / "sub");
  const QString paths[] = {Save("one.kshock"), Save("sub/a &amp; b.kshock"), Save("three.kshock")};
  Start(paths[0]);
  Open(paths[1]);
  Open(paths[2]);
  Open("/none/missing.kshock");
  Close();
  EXPECT_EQ(FBoxes.size(), 1U) << "only what was shown is recent";
  Start();
  EXPECT_EQ(Find<QPushButton>("btnWellcomeRecent_0")->accessibleName(), paths[2]);
  EXPECT_THAT(Find<QPushButton>("btnWellcomeRecent_1")->text().toStdString(), HasSubstr("a &&amp; b.kshock"));
  EXPECT_EQ(FForm->findChild<QPushButton*>("btnWellcomeRecent_3"), nullptr);
  Find<QPushButton>("btnWellcomeRecent_1")->click();
  Settle();
  EXPECT_EQ(FForm->Flow().FileName(), paths[1].toStdString());

  QTreeView* files = ShowRecent("lstRecentFiles");
  EXPECT_THAT(Names(files), ElementsAre("a &amp; b.kshock", "three.kshock", "one.kshock"));
  QTest::keyClick(files, Qt::Key_End);
  QTest::keyClick(files, Qt::Key_P);
  EXPECT_THAT(Names(files), ElementsAre("one.kshock", "a &amp; b.kshock", "three.kshock"));
  EXPECT_EQ(files->currentIndex().row(), 0) << "the pinned one stays current";
  Click(files, 2, 0);
  EXPECT_THAT(Names(files), ElementsAre("three.kshock", "one.kshock", "a &amp; b.kshock"));
  QTest::keyClick(files, Qt::Key_Home);
  QTest::keyClick(files, Qt::Key_Delete);
  EXPECT_THAT(Names(files), ElementsAre("one.kshock", "a &amp; b.kshock"));
  QTest::keyClick(files, Qt::Key_Return);
  Settle();
  EXPECT_FALSE(Find("Backstage")->isVisible());
  EXPECT_EQ(FForm->Flow().FileName(), paths[0].toStdString());
  Close();

  fs::remove(paths[1].toStdString());
  Start();
  const auto* missing = Find<QPushButton>("btnWellcomeRecent_1");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !missing->isEnabled(); }, kPatienceMs));
  EXPECT_TRUE(Find<QPushButton>("btnWellcomeRecent_0")->isEnabled());
  FForm->findChild<QAction*>("actBackstage")->trigger();
  files = Find<QTreeView>("lstRecentFiles");
  EXPECT_TRUE(files->isVisible()) << "the page opens on the recent documents";
  EXPECT_THAT(files->model()->index(0, TRecentListView::kAbout).data().toString().toStdString(),
              testing::MatchesRegex("3 events · peak 20\\.?0* g.*"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Names(files).back() == "a &amp; b.kshock (missing)"; }, kPatienceMs));
  EXPECT_THAT(Names(files), ElementsAre("one.kshock", testing::_));
  EXPECT_THAT(TIniFile::Load(FSettings / "recentdocuments.ini").ReadBool("Pinned", "0", false), true);
  QTreeView* folders = ShowRecent("lstRecentFolders");
  EXPECT_THAT(Names(folders), ElementsAre(FFolder.Path().filename().string(), "sub"));
  Click(folders, 0, 1);
  const auto* listed = Find<QTreeView>("lstBrowsePath");
  EXPECT_TRUE(listed->isVisible());
  EXPECT_TRUE(QTest::qWaitFor([&] { return listed->model()->rowCount() == 2; }, kPatienceMs));
  EXPECT_EQ(listed->model()->index(0, 0).data().toString(), "one.kshock");
}

TEST_F(Documents, AUserLayoutComesBackAfterARestartAndByItsCommands) {
  const QString three = Save("three.kshock");
  Start(three);
  Press("Ctrl+Shift+L");
  const std::vector<QRect> designed = Places();
  ExpectInSight();
  Press("Ctrl+U");
  EXPECT_THAT(std::exchange(FBoxes, {}), ElementsAre(HasSubstr("There is no user layout yet.")));

  FForm->resizeDocks({Dock(1)}, {420}, Qt::Horizontal);
  FForm->resizeDocks({Dock(1), Dock(3)}, {150, 400}, Qt::Vertical);
  Dock(3)->raise();
  Dock(0)->setFloating(true);
  Dock(0)->setGeometry(60, 70, 500, 200);
  auto* splitter = Find<QSplitter>("splOverview");
  splitter->setSizes({100, 300, 200});
  Settle();
  const std::vector<QRect> mine = Places();
  const QList<int> sizes = splitter->sizes();
  ASSERT_NE(mine, designed);
  Press("Ctrl+Shift+U");
  EXPECT_TRUE(fs::exists(FSettings / "user-layout.ini"));
  Press("F5");
  EXPECT_EQ(Places(), mine) << "reading again";
  Press("Ctrl+3");
  Press("Ctrl+1");
  EXPECT_EQ(Places(), mine) << "the report between";
  Press("Ctrl+Shift+L");
  EXPECT_EQ(Places(), designed);
  Close();

  Start();
  for (const std::string& name : kDocks) EXPECT_TRUE(Find(name)->isHidden()) << "no file is shown";
  Open(three);
  EXPECT_EQ(Places(), mine);
  EXPECT_EQ(Find<QSplitter>("splOverview")->sizes(), sizes);
  Dock(1)->hide();
  Press("Ctrl+Shift+U");
  Press("Ctrl+Shift+L");
  EXPECT_EQ(Places(), designed);
  Press("Ctrl+U");
  EXPECT_TRUE(Dock(1)->isHidden());
  EXPECT_EQ(Dock(0)->geometry(), mine[0]);
  Press("F5");
  EXPECT_TRUE(Dock(1)->isHidden());
  for (const char* view : {"Ctrl+2", "Ctrl+3", "Ctrl+1"}) Press(view);
  EXPECT_FALSE(Dock(1)->isHidden()) << "a view brings its panels";
  ExpectInSight();
  Press("Ctrl+2");
  Press("Ctrl+Shift+L");
  EXPECT_TRUE(Dock(2)->isHidden()) << "only the panels of the shock view";
  EXPECT_FALSE(Dock(0)->isHidden());
  EXPECT_THAT(FBoxes, IsEmpty());
}

TEST_F(Documents, AUserLayoutWithAllPanelsClosedShowsThePanelsOfTheView) {
  Start(Save("three.kshock"));
  FForm->resize(1600, 1000);
  FForm->resizeDocks({Dock(1)}, {420}, Qt::Horizontal);
  Settle();
  const int width = Dock(1)->width();
  for (std::size_t i = 0; i < kDocks.size(); ++i) Dock(i)->close();
  Press("Ctrl+Shift+U");
  Press("Ctrl+Shift+L");
  EXPECT_NE(Dock(1)->width(), width);
  Press("Ctrl+U");
  EXPECT_EQ(Docks(), kDocks);
  EXPECT_EQ(Dock(1)->width(), width) << "in its place";
  Dock(3)->close();
  Press("Ctrl+Shift+U");
  Press("Ctrl+U");
  EXPECT_TRUE(Dock(3)->isHidden()) << "a layout with a panel says which";
}

TEST_F(Documents, AFloatingPanelOutsideTheScreenIsMovedOntoIt) {
  Start(Save("three.kshock"));
  Dock(0)->setFloating(true);
  Dock(0)->setGeometry(30000, -20000, 4000, 3000);
  Press("Ctrl+Shift+U");
  Press("Ctrl+Shift+L");
  Press("Ctrl+U");
  EXPECT_TRUE(Dock(0)->isFloating());
  ExpectInSight();
}

TEST_F(Documents, AnUnusableLayoutFileGivesTheDesignedLayoutAndIsKept) {
  const QString three = Save("three.kshock");
  Start(three);
  const std::vector<QRect> designed = Places();
  Close();
  TIniFile foreign;
  QMainWindow other;
  foreign.WriteString("Docks", "Docks", other.saveState().toBase64().toStdString());
  Write("foreign.ini", foreign.Text());
  const TBytes foreignBytes = BytesOfFile(FSettings / "foreign.ini");
  const std::string texts[] = {"", "\0\x01[Docks]\xFF\nDocks=//8=", std::string(2'000'000, '='),
                               std::string(foreignBytes.begin(), foreignBytes.end())};
  for (const std::string& text : texts) {
    Write("user-layout.ini", text);
    Write("default-layout.ini", text);
    Start(three);
    EXPECT_EQ(Places(), designed);
    Press("Ctrl+Shift+L");
    EXPECT_EQ(Places(), designed);
    Close();
    EXPECT_THAT(std::exchange(FBoxes, {}), ElementsAre(HasSubstr("user-layout.ini")));
    EXPECT_EQ(fs::file_size(FSettings / "user-layout.ini"), text.size());
  }
  for (const char* name : {"user-layout.ini", "default-layout.ini"}) {
    fs::remove(FSettings / name);
    fs::create_directories(FSettings / name);
  }
  Start(three);
  Press("Ctrl+Shift+U");
  Press("Ctrl+Shift+L");
  EXPECT_EQ(Places(), designed);
  EXPECT_EQ(FBoxes.size(), 2U) << "at the start and by the command";
}

// Panels side by side in a column, tabs in an order of one's own, one afloat, one closed.
TEST_F(Documents, AnyArrangementIsRestoredFromItsFile) {
  const QString three = Save("three.kshock");
  Start(three);
  FForm->resize(1280, 1000);
  auto* filter = Find<QDockWidget>("dxDockPanelFilter");
  FForm->addDockWidget(Qt::TopDockWidgetArea, Dock(3));
  FForm->splitDockWidget(Dock(3), filter, Qt::Horizontal);
  filter->show();
  FForm->splitDockWidget(Dock(3), Dock(0), Qt::Vertical);
  FForm->tabifyDockWidget(filter, Dock(1));
  FForm->resizeDocks({Dock(3), filter}, {500, 700}, Qt::Horizontal);
  FForm->resizeDocks({Dock(3), Dock(0)}, {210, 140}, Qt::Vertical);
  filter->raise();
  Dock(2)->setFloating(true);
  Dock(2)->setGeometry(40, 50, 300, 200);
  Settle();
  const std::vector<QRect> mine = Places();
  const QRect filterPlace = filter->geometry();
  ASSERT_TRUE(InFront(filter) && !InFront(Dock(1)));
  Press("Ctrl+Shift+U");
  Press("Ctrl+Shift+L");
  EXPECT_NE(Places(), mine);
  Press("Ctrl+U");
  EXPECT_EQ(Places(), mine);
  EXPECT_EQ(filter->geometry(), filterPlace);
  EXPECT_TRUE(InFront(filter));

  Dock(3)->close();
  Dock(2)->close();
  Settle();
  const std::vector<QRect> fewer = Places();
  Press("Ctrl+Shift+U");
  Press("Ctrl+Shift+L");
  Press("Ctrl+U");
  EXPECT_EQ(Places(), fewer);
  Dock(3)->show();
  Dock(2)->show();
  Settle();
  EXPECT_EQ(Places(), mine) << "closed panels keep their places, too";
  Dock(2)->setFloating(false);
  Settle();
  EXPECT_EQ(FForm->tabifiedDockWidgets(Dock(2)).size(), 0) << "its docked place is the designed column";
  EXPECT_EQ(FForm->dockWidgetArea(Dock(2)), Qt::RightDockWidgetArea);
}

TEST_F(Documents, TheFrontTabIsRestoredEvenIfAllPanelsWereClosed) {
  for (const std::size_t front : {2U, 3U}) {
    Start(Save("three.kshock"));
    Dock(front)->raise();
    Settle();
    for (std::size_t i = 0; i < kDocks.size(); ++i) {
      Dock(i)->close();
      Settle();
    }
    Press("Ctrl+Shift+U");
    Press("Ctrl+Shift+L");
    EXPECT_TRUE(InFront(Dock(2))) << "as designed";
    Press("Ctrl+U");
    EXPECT_EQ(Docks(), kDocks);
    EXPECT_TRUE(InFront(Dock(front)) && !InFront(Dock(5 - front))) << front;
    Close();
    fs::remove(FSettings / "user-layout.ini");
  }
}

TEST_F(Documents, ALayoutFileMayBeEditedByHand) {
  Start(Save("three.kshock"));
  FForm->resize(1600, 1000);
  Settle();
  const std::vector<QRect> designed = Places();
  Write("user-layout.ini",
        "[Panels]\n"
        "dxDockPanelNavigator = top , 900x200\n"
        "nobody = left, open\n"
        "dxDockPanelSensorGridBattery = below dxDockPanelNavigator, sideways, 10x99999, -3x7, below nobody\n"
        "dxDockPanelMissionDetails = below dxDockPanelMissionDetails, closed\n");
  Press("Ctrl+U");
  EXPECT_EQ(FForm->dockWidgetArea(Dock(0)), Qt::TopDockWidgetArea);
  EXPECT_EQ(FForm->dockWidgetArea(Dock(3)), Qt::TopDockWidgetArea);
  EXPECT_GT(Dock(0)->height(), 80) << "less than asked: the panel below asks for more than there is";
  EXPECT_LT(Dock(0)->geometry().bottom(), Dock(3)->y());
  EXPECT_TRUE(Dock(1)->isHidden());
  EXPECT_NEAR(Dock(2)->width(), designed[2].width(), 5) << "not said";
  ExpectInSight();
  EXPECT_THAT(FBoxes, IsEmpty());
}

TEST_F(Documents, NoLayoutFileCanLoseAPanel) {
  Start(Save("three.kshock"));
  const std::vector<std::string> words = {"left",
                                          "right",
                                          "top",
                                          "bottom",
                                          "below ",
                                          "right of ",
                                          "tabbed with ",
                                          "1x1",
                                          "32767x32767",
                                          "300x200",
                                          "open",
                                          "closed",
                                          "in front",
                                          "floating 1x1-99999-99999",
                                          "floating 32767x32767+99999+0",
                                          "0x5",
                                          "\xFF",
                                          "\xC3\xA4",
                                          ","};
  std::mt19937 random(1);
  const auto any = [&](const std::vector<std::string>& list) { return list[random() % list.size()]; };
  std::vector<std::string> names = kDocks;
  names.insert(names.end(), {"dxDockPanelFilter", "nobody", "Space"});
  for (int round = 0; round < 60; ++round) {
    std::string text = "[Panels]\n" + kDocks[0] + "=open\n";
    for (int line = 0; line < 8; ++line) {
      text += any(names) + " = ";
      for (int word = 0; word < 4; ++word) text += any(words) + (random() % 2 == 0 ? any(names) : "") + ", ";
      text += '\n';
    }
    Write("user-layout.ini", text);
    FForm->findChild<QAction*>("actLoadUserLayout")->trigger();
    for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
    ExpectInSight();
    if (HasFailure()) FAIL() << text;
  }
  Press("Ctrl+Shift+L");
  EXPECT_EQ(Docks(), kDocks);
  EXPECT_THAT(FBoxes, IsEmpty());
}

TEST_F(Documents, LogosCanBeReplacedAndABrokenFileIsNotOverwritten) {
  Start();
  auto* logos = FForm->findChild<TLogos*>();
  const QSize builtIn = logos->Image(TLogos::kReport).size();
  const fs::path files[] = {FSettings / "Company-Logo.png", FSettings / "Report-Logo.png"};
  const auto saved = [&](int index) { return QImage(QString::fromStdString(files[index].string())); };
  EXPECT_EQ(saved(0).size(), logos->Image(0).size());
  EXPECT_NE(saved(0), saved(1));
  Close();

  QImage mine(30, 20, QImage::Format_ARGB32);
  mine.fill(Qt::red);
  mine.save(QString::fromStdString(files[0].string()), "PNG");
  QImage(5000, 1, QImage::Format_ARGB32).save(QString::fromStdString(files[1].string()), "PNG");
  const TBytes huge = BytesOfFile(files[1]);
  Start();
  logos = FForm->findChild<TLogos*>();
  EXPECT_EQ(logos->Image(0).pixelColor(5, 5), QColor(Qt::red));
  EXPECT_EQ(logos->Image(1).size(), builtIn);
  EXPECT_THAT(std::exchange(FBoxes, {}), ElementsAre(HasSubstr("Report-Logo.png: ")));
  fs::remove(files[0]);
  Close();
  EXPECT_EQ(saved(0).pixelColor(5, 5), QColor(Qt::red)) << "saved again";
  EXPECT_EQ(BytesOfFile(files[1]), huge) << "not ours to overwrite";
  EXPECT_THAT(FBoxes, IsEmpty());

  Start();
  logos = FForm->findChild<TLogos*>();
  QSignalSpy changed(logos, &TLogos::Changed);
  WriteFile(FFolder / "broken.png", {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0});
  EXPECT_THROW(logos->Replace(1, FFolder / "broken.png"), std::runtime_error);
  EXPECT_THROW(logos->Replace(1, FFolder.Path()), std::runtime_error);
  EXPECT_EQ(changed.count(), 0);
  mine.save(QString::fromStdString((FFolder / "mine.bmp").string()), "BMP");
  logos->Replace(1, FFolder / "mine.bmp");
  EXPECT_EQ(changed.count(), 1);
  Close();
  EXPECT_EQ(saved(1).pixelColor(5, 5), QColor(Qt::red)) << "the user put it in the broken one's place";
}

TEST_F(Documents, AFailedWriteAtCloseKeepsTheOldFileAndCloses) {
  const std::string old = (FFolder / "old.kshock").string();
  Write("recentdocuments.ini", "[FullPath]\n0=" + old + "\n");
  fs::permissions(FSettings / "recentdocuments.ini", fs::perms::owner_read);
  Start(Save("three.kshock"));
  EXPECT_THAT(FBoxes, IsEmpty());
  fs::remove(FSettings / "Company-Logo.png");
  fs::create_directories(FSettings / "Company-Logo.png");
  Close();
  ASSERT_EQ(FBoxes.size(), 1U);
  EXPECT_THAT(FBoxes[0], testing::AllOf(HasSubstr("Company-Logo.png: "), HasSubstr("recentdocuments.ini: ")));
  EXPECT_EQ(TIniFile::Load(FSettings / "recentdocuments.ini").ReadString("FullPath", "0", ""), old);
  EXPECT_TRUE(fs::exists(FSettings / "Report-Logo.png"));
}

TEST_F(Documents, UnusableRecentDocumentsAreRenamedAndReportedOnce) {
  fs::create_directories(FSettings / "recentdocuments.ini");
  const QString three = Save("three.kshock");
  Start(three);
  EXPECT_THAT(std::exchange(FBoxes, {}), ElementsAre(HasSubstr("recentdocuments.ini: ")));
  Close();
  Start();
  EXPECT_TRUE(fs::is_directory(FSettings / "recentdocuments-kept.ini"));
  EXPECT_EQ(Find<QPushButton>("btnWellcomeRecent_0")->accessibleName(), three);
  EXPECT_THAT(FBoxes, IsEmpty());
}

}  // namespace
