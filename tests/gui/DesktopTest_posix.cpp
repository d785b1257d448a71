// The window on a desktop of POSIX systems.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QLabel>
#include <QTest>

#include "gui/common/uTheme.h"
#include "gui/platform/uSchemePortal.h"
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

}  // namespace
