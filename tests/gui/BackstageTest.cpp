// The backstage, the welcome page and the loading panel as a person uses them.
#include "gui/ribbon/uBackstage.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCompleter>
#include <QDesktopServices>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>
#include <atomic>
#include <mutex>
#include <thread>

#include "base/uDateTime.h"
#include "gui/common/uBackgroundTask.h"
#include "gui/ribbon/uRecordingList.h"
#include "gui/welcome/uLoadingPanel.h"
#include "gui/welcome/uWellcomePanel.h"
#include "platform/uProgram.h"
#include "tests/support/uThreeEvents.h"

namespace {

void Write(const QString& path) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("x");
}

class Backstage : public testing::Test {
 protected:
  void SetUp() override {
    SetShortDateFormat("yyyy-mm-dd");  // the settings of another test's window may have changed it
    FBefore = new QLineEdit(&FWindow);
    FWindow.setCentralWidget(FBefore);
    for (QAction* action : {&FExit, &FOpen, &FUnderneath}) FWindow.addAction(action);
    FUnderneath.setShortcut(QKeySequence("N"));
    FBackstage = new TBackstage(&FWindow);
    FBackstage->AddAction(&FExit, "backstageExit");
    FBackstage->AddAction(&FOpen, "backstageOpen");
    FWindow.resize(640, 480);
    FWindow.show();
    FWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&FWindow));
    FBefore->setFocus();
    FBackstage->show();
  }

  template <typename T = QWidget>
  T* Find(const QString& name) {
    T* found = FWindow.findChild<T*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
  }

  QString Focused() { return FWindow.focusWidget() != nullptr ? FWindow.focusWidget()->objectName() : QString(); }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(FWindow.focusWidget(), key, modifiers);
  }

  // Folders are read in the background.
  void AwaitAnswer() {
    const auto lists = FWindow.findChildren<TRecordingList*>();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return std::ranges::none_of(lists, [](const TRecordingList* list) { return list->Reading(); }); },
        60000));
  }
  QStringList Listed(const QString& list) {
    AwaitAnswer();
    const auto* model = Find<QTreeView>(list)->model();
    QStringList names;
    for (int row = 0; row < model->rowCount(); ++row) names << model->index(row, 0).data().toString();
    return names;
  }

  QTemporaryDir FFolder;
  QMainWindow FWindow;
  QAction FOpen{"&Open…"};
  QAction FExit{"Exit program"};
  QAction FUnderneath{"Next event"};
  QLineEdit* FBefore = nullptr;
  TBackstage* FBackstage = nullptr;
};

TEST_F(Backstage, ArrowKeysMoveTheFocusAndEscReturnsIt) {
  EXPECT_EQ(Focused(), "backstageOpen") << "whatever was added first";
  for (const QString name : {"backstageBrowsePath", "backstageCurrentFolder", "backstageAbout", "backstageExit",
                             "backstageBack", "backstageOpen"}) {
    Press(Qt::Key_Down);
    EXPECT_EQ(Focused().toStdString(), name.toStdString());
  }
  Press(Qt::Key_Up);
  EXPECT_EQ(Focused(), "backstageBack");
  for (int i = 0; i < 30; ++i) {
    Press(Qt::Key_Tab);
    EXPECT_TRUE(FBackstage->isAncestorOf(FWindow.focusWidget())) << "Tab must not leave what is in front";
  }
  Press(Qt::Key_Escape);
  EXPECT_FALSE(FBackstage->isVisible());
  EXPECT_EQ(FWindow.focusWidget(), FBefore);
}

TEST_F(Backstage, CoversTheWindowAtAnySize) {
  EXPECT_EQ(FBackstage->geometry(), FWindow.rect());
  FWindow.resize(900, 700);
  QCoreApplication::processEvents();
  EXPECT_EQ(FBackstage->geometry(), FWindow.rect());
}

TEST_F(Backstage, HidesBeforeTheChosenActionRuns) {
  bool hidden = false;
  QObject::connect(&FOpen, &QAction::triggered, [&] { hidden = !FBackstage->isVisible(); });
  Press(Qt::Key_Return);
  EXPECT_TRUE(hidden);
}

TEST_F(Backstage, SingleKeyShortcutsDoNotReachTheWindowBelow) {
  QSignalSpy next(&FUnderneath, &QAction::triggered);
  Press(Qt::Key_N);
  EXPECT_EQ(next.count(), 0);
  FBackstage->hide();
  QTest::keyClick(&FWindow, Qt::Key_N);
  EXPECT_EQ(next.count(), 1);
}

TEST_F(Backstage, BrowsePathOpensAFileListsAFolderAndReportsAMissingPath) {
  Write(FFolder.filePath("a 1.kshock"));
  Write(FFolder.filePath("notes.txt"));
  QSignalSpy chosen(FBackstage, &TBackstage::FileChosen);
  Find<QToolButton>("backstageBrowsePath")->click();
  EXPECT_EQ(Focused(), "edtBrowsePath");
  auto* path = Find<QLineEdit>("edtBrowsePath");
  auto* message = Find<QLabel>("lblBrowsePathMessage");

  path->setText(FFolder.filePath("gone.kshock"));
  QTest::keyClick(path, Qt::Key_Return);
  AwaitAnswer();
  EXPECT_TRUE(message->isVisible());
  EXPECT_TRUE(message->text().contains("gone.kshock"));

  path->setText(FFolder.path());
  Find<QPushButton>("btnBrowsePathOpen")->click();
  EXPECT_EQ(Listed("lstBrowsePath"), QStringList{"a 1.kshock"});
  EXPECT_FALSE(message->isVisible());
  EXPECT_EQ(chosen.count(), 0);
  EXPECT_EQ(Focused(), "lstBrowsePath");
  Press(Qt::Key_Return);
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen[0][0].toString(), FFolder.filePath("a 1.kshock"));
  EXPECT_FALSE(FBackstage->isVisible());

  FBackstage->show();
  path->setText(" '" + FFolder.filePath("a 1.kshock") + "' ");
  QTest::keyClick(path, Qt::Key_Return);
  AwaitAnswer();
  ASSERT_EQ(chosen.count(), 2);
  EXPECT_EQ(chosen[1][0].toString(), FFolder.filePath("a 1.kshock"));
}

TEST_F(Backstage, CurrentFolderListsRecordingsWhenItIsShown) {
  auto* note = Find<QLabel>("lblCurrentFolderNote");
  Press(Qt::Key_Down);
  Press(Qt::Key_Down);
  EXPECT_TRUE(note->text().startsWith("No recording is open")) << note->text().toStdString();
  FBackstage->SetCurrentFolder(FFolder.path());
  AwaitAnswer();
  EXPECT_TRUE(note->text().startsWith("There are no recordings in")) << note->text().toStdString();

  FBackstage->hide();
  for (const char* name : {"run 10.kshock", "RUN 9.KSHOCK", "old.korvex", "notes.txt", ".hidden.kshock"}) {
    Write(FFolder.filePath(name));
  }
  EXPECT_TRUE(Listed("lstCurrentFolder").isEmpty());
  FBackstage->show();
  EXPECT_EQ(Listed("lstCurrentFolder"), (QStringList{"RUN 9.KSHOCK", "run 10.kshock"}));
  FBackstage->SetFilePatterns({"*.kshock", "*.korvex"});
  EXPECT_EQ(Listed("lstCurrentFolder"), (QStringList{"old.korvex", "RUN 9.KSHOCK", "run 10.kshock"}));

  QSignalSpy chosen(FBackstage, &TBackstage::FileChosen);
  auto* list = Find<QTreeView>("lstCurrentFolder");
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(1, 0)).center());
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen[0][0].toString(), FFolder.filePath("RUN 9.KSHOCK"));
}

TEST_F(Backstage, AFolderShowsTheFiguresOfItsRecordingsAndASecondLookTakesThemFromTheCache) {
  WriteFile(FFolder.filePath("three.kshock").toStdString(), Deflated(ThreeEvents().content));
  Write(FFolder.filePath("broken.kshock"));
  using M = TRecordingModel;
  const auto kshock = std::filesystem::path(QCoreApplication::applicationDirPath().toStdString()) / kKshockFile;
  const std::filesystem::path cache = FFolder.filePath("cache").toStdString();
  auto* list = Find<TRecordingList>("lstCurrentFolder");
  QSignalSpy summarized(list, &TRecordingList::Summarized);
  const auto look = [&](const std::filesystem::path& program) {
    FBackstage->hide();
    summarized.clear();
    FBackstage->SetSummarySource({program, cache, TLimits{-10, 10}});
    FBackstage->SetCurrentFolder(FFolder.path());
    FBackstage->show();
    FBackstage->SelectPage("backstageCurrentFolder");
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return !summarized.isEmpty() && summarized.last()[0] == summarized.last()[1]; }, 60000))
        << (summarized.isEmpty() ? "nothing" : summarized.last()[2].toString().toStdString());
    // The cache is written after the last recording was shown.
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return !QDir(FFolder.filePath("cache")).entryList({"*.sqlite"}, QDir::Files).isEmpty(); }, 60000));
  };
  const auto row = [&](int at) {
    QStringList cells;
    for (const int column : {M::kName, M::kBegin, M::kEvents, M::kPeak, M::kAbove, M::kState}) {
      cells << list->model()->index(at, column).data().toString();
    }
    return cells;
  };
  const QStringList three = {"three.kshock", "2023-07-16 06:00:00", "3", "20", "1", "complete"};
  look(kshock);
  EXPECT_EQ(row(1), three);
  EXPECT_EQ(row(0).first(), "broken.kshock");
  EXPECT_TRUE(row(0)[2].isEmpty());
  EXPECT_GT(row(0).last().size(), 10) << "it says why";
  const QString reason = row(0).last();
  list->sortByColumn(M::kPeak, Qt::AscendingOrder);
  EXPECT_EQ(row(0), three) << "a recording without figures stands behind";
  Find<QLineEdit>("lstCurrentFolderFilter")->setText("BROK");
  EXPECT_EQ(list->model()->rowCount(), 1);
  Find<QLineEdit>("lstCurrentFolderFilter")->clear();

  ASSERT_TRUE(QTest::qWaitFor([&] { return !std::filesystem::is_empty(cache); }, 60000));
  look(FFolder.filePath("no such program").toStdString());
  EXPECT_EQ(row(0), three);
  EXPECT_EQ(row(1).last(), reason);
}

// The desktop's locale is no business of a list of recordings.
TEST_F(Backstage, SizesAndDatesUseADecimalPoint) {
  QLocale::setDefault(QLocale(QLocale::German));
  QFile file(FFolder.filePath("run.kshock"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(45261, 'x'));  // 44.2 KiB
  ASSERT_TRUE(file.flush());
  ASSERT_TRUE(file.setFileTime(QDateTime({2023, 7, 16}, {6, 5, 4}), QFileDevice::FileModificationTime));
  file.close();
  FBackstage->SetCurrentFolder(FFolder.path());
  Press(Qt::Key_Down);
  Press(Qt::Key_Down);
  EXPECT_EQ(Listed("lstCurrentFolder"), QStringList{"run.kshock"});
  const auto* model = Find<QTreeView>("lstCurrentFolder")->model();
  EXPECT_EQ(model->index(0, 1).data().toString(), "44.20 KiB");
  EXPECT_EQ(model->index(0, 2).data().toString(), "2023-07-16 06:05:04");
  QLocale::setDefault(QLocale::c());
}

TEST_F(Backstage, CompletesATypedPathWithFoldersAndRecordings) {
  ASSERT_TRUE(QDir(FFolder.path()).mkdir("journey"));
  Write(FFolder.filePath("jolt.kshock"));
  Write(FFolder.filePath("jolt.txt"));
  FBackstage->SetFilePatterns({"*.kshock"});
  Find<QAbstractButton>("backstageBrowsePath")->click();
  auto* path = Find<QLineEdit>("edtBrowsePath");
  QTest::keyClicks(path, FFolder.path() + "/jo");
  const auto* completions = path->completer()->completionModel();
  ASSERT_TRUE(QTest::qWaitFor([&] { return completions->rowCount() == 2; }, 60000));
  EXPECT_EQ(completions->index(0, 0).data().toString(), QDir::toNativeSeparators(FFolder.filePath("jolt.kshock")));
  EXPECT_EQ(completions->index(1, 0).data().toString(), QDir::toNativeSeparators(FFolder.filePath("journey/")));
}

TEST_F(Backstage, ALateAnswerIsDropped) {
  QTemporaryDir other;
  Write(FFolder.filePath("first.kshock"));
  Write(other.filePath("second.kshock"));
  QSignalSpy chosen(FBackstage, &TBackstage::FileChosen);
  Find<QToolButton>("backstageBrowsePath")->click();
  auto* path = Find<QLineEdit>("edtBrowsePath");
  path->setText(FFolder.path());
  QTest::keyClick(path, Qt::Key_Return);
  path->setText(other.path());
  QTest::keyClick(path, Qt::Key_Return);
  EXPECT_EQ(Listed("lstBrowsePath"), QStringList{"second.kshock"});

  for (const bool typed : {true, false}) {
    path->setText(FFolder.filePath("first.kshock"));
    QTest::keyClick(path, Qt::Key_Return);
    typed ? QTest::keyClicks(path, "x") : Press(Qt::Key_Escape);
    AwaitAnswer();
    QTest::qWait(50);
    EXPECT_EQ(chosen.count(), 0) << typed;
  }
}

TEST(BackgroundTask, HangingWorkIsAbandonedAndItsReportsAreDropped) {
  // Shared with threads that may outlive the test.
  struct TGate {
    std::mutex Closed;
    std::atomic<int> Dropped = 0;
  };
  const auto gate = std::make_shared<TGate>();
  gate->Closed.lock();
  int answers = 0;
  auto task = std::make_unique<TBackgroundTask>(nullptr);
  const auto hangs = [gate, &answers](const TBackgroundTask::TReport& report) {
    { const std::lock_guard wait(gate->Closed); }
    if (!report([&answers] { ++answers; })) ++gate->Dropped;
  };
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(task->Start(hangs));
  std::string told;
  ASSERT_TRUE(task->Start([&told](const TBackgroundTask::TReport& report) { report([&told] { told = "a"; }); }));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }, 60000)) << "three that hang hold up no fourth";
  for (int i = 0; i < 2; ++i) ASSERT_TRUE(task->Start(hangs));
  ASSERT_TRUE(task->Start([&told](const TBackgroundTask::TReport& report) { report([&told] { told += "b"; }); }));
  gate->Closed.unlock();
  ASSERT_TRUE(QTest::qWaitFor([&] { return told == "ab"; }, 60000)) << "the latest waits for a thread";
  EXPECT_EQ(answers, 0);
  gate->Closed.lock();
  ASSERT_TRUE(task->Start(hangs));
  task.reset();
  const int before = gate->Dropped;
  gate->Closed.unlock();
  ASSERT_TRUE(QTest::qWaitFor([&] { return gate->Dropped > before; }, 60000));
  QCoreApplication::processEvents();
  EXPECT_EQ(answers, 0) << "nobody is there to answer to";
}

TEST_F(Backstage, ReadingAFolderStopsAtItsBoundsAndReportsIt) {
  for (int i = 0; i < 4; ++i) Write(FFolder.filePath(QString("%1.kshock").arg(i)));
  EXPECT_TRUE(ReadFolder(FFolder.path(), {"*.kshock"}, {.Recordings = 4}).Complete);
  const auto few = ReadFolder(FFolder.path(), {"*.kshock"}, {.Recordings = 3});
  EXPECT_EQ(few.Entries.size(), 3U);
  EXPECT_FALSE(few.Complete);
  EXPECT_FALSE(ReadFolder(FFolder.path(), {"*.none"}, {.Entries = 3}).Complete);
}

// Stands for the desktop.
class TDesktop : public QObject {
  Q_OBJECT

 public:
  TDesktop() { QDesktopServices::setUrlHandler("file", this, "Open"); }
  ~TDesktop() override { QDesktopServices::unsetUrlHandler("file"); }
  QStringList Opened;

 public slots:
  void Open(const QUrl& url) { Opened << url.toLocalFile(); }
};

TEST(WellcomePanel, OpensADocumentByMouseAndKeyboardAndReportsAMissingOne) {
  QTemporaryDir folder;
  const QString present = folder.filePath("Views & metrics #1.pdf");
  Write(present);
  TDesktop desktop;
  TWellcomePanel panel(nullptr);
  QSignalSpy failed(&panel, &TWellcomePanel::OpenFailed);
  auto* icon = panel.AddUserManualIcon("manual1", "Views", present);
  auto* gone = panel.AddUserManualIcon("manual2", "Gone", folder.filePath("gone.pdf"));
  panel.show();
  QTest::keyClick(icon, Qt::Key_Return);
  QTest::keyClick(icon, Qt::Key_Space);
  QTest::mouseClick(icon, Qt::LeftButton);
  EXPECT_EQ(desktop.Opened, (QStringList{present, present, present}));
  EXPECT_EQ(failed.count(), 0);
  QTest::keyClick(gone, Qt::Key_Return);
  ASSERT_EQ(failed.count(), 1);
  EXPECT_EQ(failed[0][0].toString(), folder.filePath("gone.pdf"));
}

TEST(WellcomePanel, WrapsManyDocumentsAndClipsNothingInASmallWindow) {
  TWellcomePanel panel(nullptr);
  QAction open("&Open…");
  QAction demo("&Demo recording…");
  panel.AddButton(&open, "btnWellcomeOpen");
  QPushButton* second = panel.AddButton(&demo, "btnWellcomeDemo");
  panel.resize(480, 320);
  panel.show();
  const auto headings = [&panel] {
    int shown = 0;
    for (const QLabel* label : panel.findChildren<QLabel*>())
      shown += label->text() == "User manual" && label->isVisible();
    return shown;
  };
  EXPECT_EQ(headings(), 0);
  QWidget* last = nullptr;
  for (int i = 0; i < 20; ++i) last = panel.AddUserManualIcon(QString("manual%1").arg(i), "A caption", "/none");
  for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
  EXPECT_EQ(headings(), 1);
  auto* scroll = panel.findChild<QScrollArea*>();
  EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
  EXPECT_TRUE(scroll->widget()->rect().contains(QRect(last->mapTo(scroll->widget(), QPoint(0, 0)), last->size())));
  EXPECT_GT(last->y(), 3 * last->height());
  demo.setVisible(false);
  EXPECT_FALSE(second->isVisible());
}

TEST(LoadingPanel, IsCentredKeepsTheFocusAndEmitsCancelled) {
  QWidget window;
  QLineEdit before(&window);
  TLoadingPanel panel(&window);
  panel.SetMessage("Reading");
  panel.SetDetail("/a/folder/" + QString(300, 'x') + "/run.kshock: 12 blocks");
  window.resize(640, 480);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  before.setFocus();
  panel.show();
  window.resize(900, 700);
  QCoreApplication::processEvents();
  EXPECT_LE((panel.geometry().center() - window.rect().center()).manhattanLength(), 2);
  const auto* detail = panel.findChild<QLabel*>("PnlLoadingDetail");
  EXPECT_TRUE(panel.rect().contains(detail->geometry()));
  EXPECT_TRUE(detail->toolTip().contains("run.kshock")) << "the text is cut";

  EXPECT_NE(window.childAt(1, 1), nullptr) << "the window is veiled";
  auto* progress = panel.findChild<QProgressBar*>("cxProgressBar1");
  panel.SetSteps(9);
  panel.SetStep(0);
  EXPECT_EQ(progress->maximum(), 0) << "busy";
  panel.SetStep(3);
  EXPECT_EQ(progress->maximum(), 9);
  EXPECT_FALSE(progress->isTextVisible());

  QSignalSpy cancelled(&panel, &TLoadingPanel::Cancelled);
  auto* cancel = panel.findChild<QPushButton*>("btnLoadingCancel");
  EXPECT_TRUE(cancel->hasFocus());
  for (const auto key : {Qt::Key_Tab, Qt::Key_Escape, Qt::Key_Return}) QTest::keyClick(window.focusWidget(), key);
  EXPECT_EQ(cancelled.count(), 2);
  panel.hide();
  EXPECT_EQ(window.childAt(window.width() - 1, 1), nullptr);
  EXPECT_TRUE(before.hasFocus());
}

}  // namespace

#include "BackstageTest.moc"
