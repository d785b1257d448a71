// The event filter in the window, as a person uses it.
#include <QAction>
#include <QCheckBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include "gui/filter/uHistogramStrip.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class FilterEditor : public TWindowTest {
 protected:
  void SetUp() override {
    Start(Save("three.kshock", ThreeEvents()));
    Press("Ctrl+2");
  }
  void Open() {
    FForm->Flow().Open((FFolder / "three.kshock").string());
    Settle();
  }
  std::vector<int> Rows(const char* grid = "dbgFilteredShocks") {
    const auto* model = Find<QTableView>(grid)->model();
    std::vector<int> ids;
    for (int row = 0; row < model->rowCount(); ++row) ids.push_back(model->index(row, 0).data().toInt());
    return ids;
  }
  std::string Current(const char* grid = "dbgFilteredShocks") {
    return Find<QTableView>(grid)->currentIndex().siblingAtColumn(0).data().toString().toStdString();
  }
  std::string Chip() {
    return Find<QLabel>("lblStatusEvents")->text().toStdString() +
           (Find<QToolButton>("btnFilterOff")->isHidden() ? "" : " x");
  }
  std::string State() { return Find<QLabel>("lblFilterState")->text().toStdString(); }
};

TEST_F(FilterEditor, TypedLimitsApplyAtOnceAndTheChipSwitchesThemOff) {
  EXPECT_FALSE(Find("dxDockPanelFilter")->isVisible());
  EXPECT_EQ(Chip(), "3 events");
  Press("Ctrl+F");
  ASSERT_TRUE(Find("dxDockPanelFilter")->isVisible());
  EXPECT_EQ(FForm->focusWidget()->objectName(), "edtFilterAccelerationMaxFrom");
  Type("edtFilterAccelerationMaxFrom", "6");
  EXPECT_THAT(Rows(), ElementsAre(0, 1));
  EXPECT_THAT(Rows("dbgShocks"), ElementsAre(0, 1, 2));
  EXPECT_EQ(Chip(), "2 of 3 events · filter x");
  EXPECT_TRUE(Find<QAction>("actFilterActive")->isChecked());
  EXPECT_EQ(Current(), "1") << "the selected event stays";
  Type("edtFilterToTTotalFrom", "4,5");
  EXPECT_THAT(Rows(), ElementsAre(0));
  EXPECT_EQ(Current(), "0");
  EXPECT_EQ(Find<QLabel>("lblCardToTTotalValue")->text(), "11 msec");

  QTest::keyClick(FForm->focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(Find("dxDockPanelFilter")->isVisible());
  EXPECT_EQ(Chip(), "1 of 3 events · filter x");
  auto* off = Find<QToolButton>("btnFilterOff");
  off->setFocus();
  QTest::keyClick(off, Qt::Key_Space);
  EXPECT_THAT(Rows(), ElementsAre(0, 1, 2));
  EXPECT_EQ(Current(), "1") << "the event that the user chose is back";
  EXPECT_EQ(Chip(), "3 events");
  EXPECT_FALSE(Find<QAction>("actFilterActive")->isChecked());
  Press("Ctrl+Shift+F");
  EXPECT_EQ(Chip(), "1 of 3 events · filter x") << "it was not lost";
  EXPECT_FALSE(Find("dxDockPanelFilter")->isVisible());
}

TEST_F(FilterEditor, InvalidNumbersAreReportedAndChangeNothing) {
  Press("Ctrl+F");
  Type("edtFilterIoTMaxFrom", "5");
  EXPECT_EQ(State(), "2 of 3 events");
  Type("edtFilterIoTMaxTo", "x");
  EXPECT_EQ(State(), "2 of 3 events\n“x” is no number.");
  EXPECT_THAT(Rows(), ElementsAre(1, 2));
  Type("edtFilterIoTMaxTo", "3");
  EXPECT_EQ(State(), "0 of 3 events\nIoT max: “from” is above “to”.");
  Type("edtFilterIoTMaxTo", "nan");
  EXPECT_EQ(State(), "2 of 3 events\n“nan” is no number.");
  Type("edtFilterIoTMaxTo", "9,000");
  EXPECT_THAT(State(), testing::HasSubstr("“9,000” can be read in two ways."));
  QTest::mouseClick(Find("btnFilterClear"), Qt::LeftButton);
  EXPECT_EQ(Find<QLineEdit>("edtFilterIoTMaxTo")->text(), "");
  EXPECT_EQ(State(), "No condition: every event is shown.");
  EXPECT_EQ(Chip(), "3 events");
}

TEST_F(FilterEditor, AFilterWithoutMatchesEmptiesSelectionCardsAndReload) {
  Press("Ctrl+F");
  Type("edtFilterAccelerationMaxFrom", "1000");
  for (const bool reloaded : {false, true}) {
    if (reloaded) Press("F5");
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(Current(), "");
    EXPECT_EQ(Current("dbgShocks"), "");
    EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, std::nullopt);
    EXPECT_EQ(Find<QLabel>("lblCardToTTotalValue")->text(), "–");
    EXPECT_EQ(Chip(), "0 of 3 events · filter x");
    EXPECT_TRUE(Find("dxDockPanelFilter")->isVisible());
  }
  Type("edtFilterAccelerationMaxFrom", "9");
  EXPECT_THAT(Rows(), ElementsAre(0, 1));
  EXPECT_EQ(Current(), "0");

  Open();
  EXPECT_EQ(Chip(), "3 events") << "another file is seen whole";
  Press("Ctrl+F");
  EXPECT_EQ(State(), "The filter is off.");
  EXPECT_EQ(Find<QLineEdit>("edtFilterAccelerationMaxFrom")->text(), "9");
  QTest::keyClick(FForm->focusWidget(), Qt::Key_Return);
  EXPECT_EQ(State(), "2 of 3 events");
}

TEST_F(FilterEditor, SwitchedOnWithoutAConditionItOpensTheEditor) {
  Press("Ctrl+Shift+F");
  EXPECT_TRUE(Find("dxDockPanelFilter")->isVisible());
  EXPECT_FALSE(Find<QAction>("actFilterActive")->isChecked());
  QTest::mouseClick(Find("chkFilterX-neg"), Qt::LeftButton, {}, {8, Find("chkFilterX-neg")->height() / 2});
  EXPECT_EQ(State(), "0 of 3 events");
  EXPECT_TRUE(Find<QCheckBox>("chkFilterActive")->isChecked());
  Find<QCheckBox>("chkFilterX-pos")->click();
  EXPECT_EQ(State(), "3 of 3 events");
  Find<QCheckBox>("chkFilterActive")->click();
  EXPECT_EQ(State(), "The filter is off.");
  Find<QCheckBox>("chkFilterActive")->click();
  Find<QCheckBox>("chkFilterX-pos")->click();
  Find<QCheckBox>("chkFilterX-neg")->click();
  Find<QCheckBox>("chkFilterAboveAlarm")->click();
  EXPECT_EQ(State(), "3 of 3 events") << "the limits in force are those of the file, 2 g";
  Find<QAbstractButton>("chboxLoadAccAlarmFromFile")->click();
  EXPECT_EQ(State(), "2 of 3 events") << "those of the settings, 6 g";
  Press("Ctrl+3");
  EXPECT_FALSE(Find("dxDockPanelFilter")->isVisible());
}

TEST_F(FilterEditor, TimesAreExactToTheMillisecond) {
  Press("Ctrl+F");
  auto* from = Find<QDateTimeEdit>("dteFilterTimeFrom");
  auto* to = Find<QDateTimeEdit>("dteFilterTimeTo");
  EXPECT_EQ(from->text(), "23-07-16 06:00:00.000");
  EXPECT_EQ(to->text(), "23-07-16 06:02:00.005");
  Find<QCheckBox>("chkFilterTimeFrom")->click();
  Find<QCheckBox>("chkFilterTimeTo")->click();
  EXPECT_EQ(State(), "3 of 3 events") << "both ends are included";
  to->setSelectedSection(QDateTimeEdit::MinuteSection);
  to->stepDown();
  EXPECT_THAT(Rows(), ElementsAre(0, 1));
  QTest::mouseClick(Find("btnFilterNavigatorSpan"), Qt::LeftButton);
  EXPECT_THAT(Rows(), ElementsAre(0, 1, 2));
}

TEST_F(FilterEditor, ADragOnTheHistogramSetsTheLimits) {
  Press("Ctrl+F");
  Find<QLineEdit>("edtFilterToTMaxFrom")->setFocus();  // 2, 3 and 4 ms
  auto* strip = Find<THistogramStrip>("FilterHistogram");
  const int y = strip->height() / 3;
  const auto drag = [&](double left, double right) {
    QTest::mousePress(strip, Qt::LeftButton, {}, {static_cast<int>(strip->width() * left), y});
    QTest::mouseMove(strip, {static_cast<int>(strip->width() * right), y});
    QTest::mouseRelease(strip, Qt::LeftButton, {}, {static_cast<int>(strip->width() * right), y});
  };
  drag(0.75, 0.25);
  EXPECT_THAT(Rows(), ElementsAre(1));
  EXPECT_NEAR(Find<QLineEdit>("edtFilterToTMaxFrom")->text().toDouble(), 2.5, 0.1);
  EXPECT_LE(Find<QLineEdit>("edtFilterToTMaxFrom")->text().size(), 4) << "a round number";
  drag(0.5, 1.0);
  EXPECT_EQ(Find<QLineEdit>("edtFilterToTMaxTo")->text(), "") << "over the edge: open";
  EXPECT_THAT(Rows(), testing::Contains(2));
  QTest::mouseDClick(strip, Qt::LeftButton, {}, {strip->width() / 2, y});
  EXPECT_EQ(Chip(), "3 events");
}

}  // namespace
