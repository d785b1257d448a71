// Limit profiles as a person uses them: in the panel that opens below the alarm's button.
#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include "gui/settings/uLimitEdit.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class LimitProfilesOfTheWindow : public TWindowTest {
 protected:
  LimitProfilesOfTheWindow() {
    FProgram.findSettingsFolder = [this] { return (FFolder / "settings/").string(); };
    std::filesystem::create_directories(FFolder / "settings");
  }
  std::string Judgement() {
    const auto* line = Find<QAbstractButton>("btnJudgement");
    return line->isVisible() ? line->accessibleName().toStdString() : "";
  }
  void Type(const char* edit, const char* text) {
    auto* line = Find<QLineEdit>(edit);
    line->selectAll();
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Return);
    Settle();
  }
  void SaveAs(const char* name) {
    Find<QAbstractButton>("btnLimitProfileSaveAs")->click();
    Type("edtLimitProfileName", name);
  }
};

TEST_F(LimitProfilesOfTheWindow, ARecordingFailsThenPassesByWhatIsAllowed) {
  Start(Save("three.kshock", ThreeEvents()));
  EXPECT_EQ(Judgement(), "");
  Press("Ctrl+Alt+A");
  EXPECT_FALSE(Find("edtAllowedAccMax")->isVisible()) << "without a profile nothing is allowed";
  Find<QAbstractButton>("chboxLoadAccAlarmFromFile")->setChecked(false);
  Find<TLimitEdit>("dxBarSpinAlarmAccMax")->setValue(8);
  SaveAs("Fragile");
  EXPECT_EQ(Judgement(), "Failed the limits \"Fragile\": 2 of 3 events above 8 g (none allowed)");
  Type("edtAllowedAccMax", "2");
  EXPECT_EQ(Find<QLineEdit>("edtAllowedAccMax")->text(), "2 events");
  EXPECT_EQ(Judgement(), "Passed the limits \"Fragile\": 2 of 3 events above 8 g (at most 2 allowed)");
  auto* humidity = Find<QLineEdit>("edtAllowedRHMax");
  const auto* problem = Find<QLabel>("lblAlarmLimitRefused");
  Type("edtAllowedRHMax", "long");
  Settle();
  EXPECT_THAT(problem->text().toStdString(), HasSubstr("no length of time"));
  EXPECT_GT(problem->y(), humidity->y());
  EXPECT_LT(problem->y(), Find("edtAllowedLiMax")->y()) << "between the field and the next";
  Find("edtAllowedAccMax")->setFocus();
  QTest::mouseClick(humidity, Qt::LeftButton, {}, {5, 5});
  Settle();
  QTest::keyClicks(humidity, "2 h");
  QTest::keyClick(humidity, Qt::Key_Return);
  EXPECT_EQ(humidity->text(), "2 h") << "typed over what stood there";
  EXPECT_FALSE(problem->isVisible());
  EXPECT_EQ(Find<QLabel>("lblStatusValue")->text(), "");
  Type("edtAllowedRHMax", "");
  Find<QAction>("actAlarmSet")->trigger();
  Settle();
  EXPECT_EQ(Judgement(), "") << "nothing is judged while the alarm is off";
  Find<QAction>("actAlarmSet")->trigger();

  FForm->close();
  FForm.reset();
  Start(Save("three.kshock", ThreeEvents()));
  EXPECT_THAT(Judgement(), StartsWith("Passed the limits \"Fragile\"")) << "after a restart";
  QTest::mouseClick(Find<QAbstractButton>("btnJudgement"), Qt::LeftButton);
  EXPECT_TRUE(Find("edtAllowedAccMax")->isVisible());
  auto* list = Find<QComboBox>("cmbLimitProfile");
  EXPECT_EQ(list->currentText(), "Fragile");
  list->setCurrentIndex(0);
  emit list->activated(0);
  Settle();
  EXPECT_EQ(Judgement(), "");
  EXPECT_EQ(Find<TLimitEdit>("dxBarSpinAlarmAccMax")->value(), 8) << "the limits stay";
}

TEST_F(LimitProfilesOfTheWindow, AFileThatIsNoneIsToldOnceAndThePanelClosesForIt) {
  std::filesystem::create_directories(FFolder / "settings/limits");
  WriteFile(FFolder / "settings/limits/broken.ini", {'?'});
  Start(Save("three.kshock", ThreeEvents()));
  Press("Ctrl+Alt+A");
  auto* list = Find<QComboBox>("cmbLimitProfile");
  ASSERT_EQ(list->count(), 2);
  EXPECT_EQ(list->itemText(1), "broken (cannot be used)");
  list->setCurrentIndex(1);
  emit list->activated(1);
  Settle();
  EXPECT_THAT(FBoxes, testing::ElementsAre(HasSubstr("broken.ini")));
  EXPECT_EQ(list->currentIndex(), 0);
}

TEST_F(LimitProfilesOfTheWindow, WhatTheProductWithstandsIsKeptInTheProfile) {
  Start(Save("three.kshock", ThreeEvents()));
  Press("Ctrl+Alt+A");
  SaveAs("Fragile");
  Press("Ctrl+4");
  Type("edtCriticalVelocity", "2.5");
  Type("edtCriticalAcceleration", "33");
  FForm->close();
  FForm.reset();
  Start(Save("three.kshock", ThreeEvents()));
  EXPECT_EQ(Find<QLineEdit>("edtCriticalVelocity")->text(), "2.5");
  EXPECT_EQ(Find<QLineEdit>("edtCriticalAcceleration")->text(), "33");
}

}  // namespace
