// The window on a desktop of POSIX systems.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "gui/common/uTheme.h"
#include "gui/platform/uSchemePortal.h"
#include "gui/ribbon/uBackstagePages.h"
#include "gui/ribbon/uRecordingList.h"
#include "tests/support/uBlockedFile.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

namespace {

class Desktop : public TWindowTest {};

TEST_F(Desktop, CancelAndCloseDoNotWaitForAFileThatBlocks) {
  const std::string three = Save("three.kshock", ThreeEvents()).toStdString();
  const std::string far = Save("far.kshock", TTestRecording()).toStdString();
  const TBlockedFile blocked(far);
  Start();
  FForm->Flow().Open(far);
  QTest::mouseClick(Find("btnLoadingCancel"), Qt::LeftButton);
  QCoreApplication::processEvents();
  EXPECT_EQ(Find<QLabel>("PnlLoadingMsg")->text(), "Cancelling…");
  Settle();
  EXPECT_TRUE(Find("WellcomePanel")->isVisible());
  FForm->Flow().Open(three);
  Settle();
  EXPECT_TRUE(FForm->Flow().FileShown());
  FForm->Flow().Open(far);
  ASSERT_EQ(FForm->Flow().State(), TFileFlow::TState::Reading);
  EXPECT_TRUE(FForm->close());
  FForm.reset();
  EXPECT_THAT(FBoxes, testing::IsEmpty());
}

TEST_F(Desktop, ThePortalChoosesTheScheme) {
  Start(Save("three.kshock", ThreeEvents()));
  const auto ground = [this] { return FForm->grab().toImage().pixelColor(2, FForm->height() - 40).rgb() & 0xFFFFFF; };
  TSchemePortal portal(*qApp);
  const auto choose = [&](const char* key, unsigned scheme) {
    QDBusMessage changed = QDBusMessage::createSignal("/", "org.freedesktop.portal.Settings", "SettingChanged");
    changed << "org.freedesktop.appearance" << key << QVariant::fromValue(QDBusVariant(scheme));
    portal.SettingChanged(changed);
    Settle();
  };
  choose("contrast", 1);
  EXPECT_EQ(ground(), kLightTokens.ground);
  choose("color-scheme", 1);
  EXPECT_EQ(ground(), kDarkTokens.ground);
  choose("color-scheme", 2);
  EXPECT_EQ(ground(), kLightTokens.ground);
}

// A stand-in for kshock that hangs at the ninth recording.
TEST_F(Desktop, CancelEndsTheProcessThatReadsRecordingsAndKeepsWhatWasRead) {
  std::filesystem::create_directory(FFolder / "in");
  for (int i = 0; i < 9; ++i) Save(("in/" + std::to_string(i) + ".kshock").c_str(), ThreeEvents());
  const std::string kshock = QCoreApplication::applicationDirPath().toStdString() + "/kshock";
  const std::string script = "#!/bin/sh\nif grep -qsz 8.kshock \"$3\"; then echo $$ > " + (FFolder / "id").string() +
                             "; exec sleep 60; fi\nexec " + kshock + " \"$@\"\n";
  WriteFile(FFolder / "kshock", TBytes(script.begin(), script.end()));
  std::filesystem::permissions(FFolder / "kshock", std::filesystem::perms::owner_all);
  TRecordingPane pane("lst", "Recordings", nullptr);
  pane.show();
  QSignalSpy summarized(pane.List(), &TRecordingList::Summarized);
  pane.List()->SetSource({FFolder / "kshock", FFolder / "cache", {}});
  const auto read = [&] {
    summarized.clear();
    pane.List()->ReadPath(QString::fromStdString((FFolder / "in").string()), {"*.kshock"});
    const auto has8 = [&] { return !summarized.isEmpty() && summarized.last()[0].toInt() == 8; };
    return QTest::qWaitFor(has8, kPatienceMs);
  };
  ASSERT_TRUE(read());
  QFile id(QString::fromStdString((FFolder / "id").string()));
  ASSERT_TRUE(QTest::qWaitFor([&] { return id.size() > 0; }, kPatienceMs));
  ASSERT_TRUE(id.open(QFile::ReadOnly));
  const QString process = "/proc/" + id.readAll().trimmed();
  ASSERT_TRUE(QFile::exists(process));
  QTest::mouseClick(pane.findChild<QPushButton*>("lstCancel"), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(process); }, 20000)) << "it would sleep for a minute";
  EXPECT_EQ(summarized.last()[2].toString(), "cancelled");

  const QDir cache(QString::fromStdString((FFolder / "cache").string()));
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return !cache.entryList({"folder-*.sqlite"}, QDir::Files).isEmpty(); }, kPatienceMs));
  pane.List()->SetSource({FFolder / "no such program", FFolder / "cache", {}});
  EXPECT_TRUE(read()) << "what was read is in the cache";
}

}  // namespace
