// The settings in the window: what a change does at once, and that it lasts beyond a restart.
#include <fmt/format.h>

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <algorithm>
#include <fstream>

#include "base/uDateTime.h"
#include "base/uIniFile.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/common/DatasetTableModel.h"
#include "gui/settings/uColourBox.h"
#include "gui/settings/uLimitEdit.h"
#include "shell/uSettingsSchema.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class SettingsOfTheWindow : public TWindowTest {
 protected:
  SettingsOfTheWindow() {
    FProgram.findSettingsFolder = [this] { return (FFolder / "settings/").string(); };
    std::filesystem::create_directories(FFolder / "settings");
  }
  ~SettingsOfTheWindow() override { SetShortDateFormat("yyyy-mm-dd"); }

  void Open() {
    FForm->Flow().Open(Save("three.kshock", ThreeEvents()).toStdString());
    Settle();
  }
  void Close() {
    FForm->close();
    FForm.reset();
  }
  TIniFile File() { return TIniFile::Load(FFolder / "settings/settings.ini"); }

  TSettings& Set() { return FForm->Flow().Mission().Settings; }
  QTableView* Grid(const char* name) { return Find<QTableView>(name); }
  static int Column(const QTableView* grid, const char* title) {
    for (int column = 0; column < grid->model()->columnCount(); ++column) {
      if (grid->model()->headerData(column, Qt::Horizontal).toString() == title) return column;
    }
    return -1;
  }
  static TCellDrawing Cell(const QTableView* grid, int row, const char* title) {
    return qobject_cast<const DatasetTableModel*>(grid->model())
        ->Drawing(grid->model()->index(row, Column(grid, title)));
  }
  void Choose(const char* list, int index) { Find<QComboBox>(list)->setCurrentIndex(index); }
  // A toggle is an action, a button of one, or a box. Some are disabled while no recording is shown.
  void Toggle(const std::string& name) {
    if (auto* action = FForm->findChild<QAction*>(QString::fromStdString(name))) return action->toggle();
    auto* button = Find<QAbstractButton>(name);
    const auto* ofAction = qobject_cast<QToolButton*>(button);
    ofAction == nullptr ? button->toggle() : ofAction->defaultAction()->toggle();
  }
};

TEST_F(SettingsOfTheWindow, EachStartsWithItsDefaultAndComesBackAfterARestart) {
  Start();
  EXPECT_EQ(Set(), TSettings());
  TSettings wanted;
  int number = 0;
  for (const TSetting& row : Settings()) {
    ++number;
    std::visit(TByType{[&](TFieldOf<bool> field) {
                         field(wanted) = !field(wanted);
                         Toggle(std::string(row.control));
                       },
                       [&](TFieldOf<int> field) {
                         field(wanted) = field(wanted) == 1 ? 0 : 1;
                         Find<QComboBox>(std::string(row.control))->setCurrentIndex(field(wanted));
                       },
                       [&](TFieldOf<double> field) {
                         field(wanted) += number + 0.125;
                         Find<TLimitEdit>(std::string(row.control))->setValue(field(wanted));
                       },
                       [&](TFieldOf<std::string> field) {
                         field(wanted) = fmt::format("Name \"ü\" {}; ", number);
                         Find<QLineEdit>(std::string(row.control))->setText(QString::fromStdString(field(wanted)));
                       },
                       [&](TFieldOf<std::uint32_t> field) {
                         field(wanted) = 0xAB00CD + (number << 8);
                         Find<TColourBox>(std::string(row.control))->SetColour(field(wanted));
                       }},
               row.field);
    EXPECT_TRUE(std::visit([&](auto field) { return field(Set()) == field(wanted); }, row.field)) << row.control;
  }
  Close();
  EXPECT_TRUE(File().ReadBool("Selected Shock Event Chart", "HP Filtering", false));
  wanted.highPass = false;
  Start();
  EXPECT_EQ(Set(), wanted);
  EXPECT_FALSE(Find<TSelectedEventChart>("Chart2")->IsSeriesVisible(TSeries::X)) << "the toggle has its effect too";
  EXPECT_THAT(FBoxes, IsEmpty());
}

TEST_F(SettingsOfTheWindow, FormatsNamesAndDatesChangeAtOnceAndKeepTheSelection) {
  Start();
  Open();
  auto* grid = Grid("dbgShocks");
  auto* readings = Grid("DBGrid2");
  const QModelIndex before = grid->currentIndex();
  Choose("cmbSettingsAccDec", 7);
  EXPECT_EQ(Cell(grid, 0, "Acceleration max").text, "20.00");
  Choose("cmbSettingsTempDec", 8);
  EXPECT_EQ(Cell(readings, 1, "Temp.").text, "22.000");
  Choose("cmbSettingsDBCDec", 7);
  EXPECT_EQ(Find<QLabel>("lblCardToTTotalValue")->text(), "3.00 msec") << "of event 1";
  Choose("cmbSettingsDateTimeFormat", 11);
  EXPECT_EQ(Cell(grid, 0, "Timestamp").text, "16.07.2023 06:00:00");
  EXPECT_THAT(Find<QLabel>("lblSelectedEvent")->text().toStdString(), HasSubstr("16.07.2023 06:0"));
  Find<QLineEdit>("cxTextEditCompanyName")->setText("<b>Acme");
  EXPECT_EQ(FForm->Flow().Mission().Display.company, "<b>Acme");
  EXPECT_EQ(grid->currentIndex(), before);
  EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, 1U);
}

TEST_F(SettingsOfTheWindow, TheAlarmMarksWhatLiesBeyondTheLimitsInForce) {
  Start();
  Open();
  auto* grid = Grid("dbgShocks");
  const auto marks = [&](const char* title) {
    std::vector<int> images;
    for (int row = 0; row < 3; ++row) images.push_back(static_cast<int>(Cell(grid, row, title).image));
    return images;
  };
  EXPECT_THAT(marks("Acceleration max"), ElementsAre(0, 0, 0));
  EXPECT_THAT(marks("Temp."), ElementsAre(5, 5, 5)) << "20, 22, 21 °C, whatever the switch says";
  QTest::keySequence(FForm.get(), QKeySequence("Ctrl+Shift+A"));
  EXPECT_TRUE(Find<QAction>("actAlarmSet")->isChecked());
  EXPECT_THAT(marks("Acceleration max"), ElementsAre(2, 2, 2)) << "the file's own level, 2 g";
  auto* limit = Find<TLimitEdit>("dxBarSpinAlarmAccMax");
  EXPECT_FALSE(limit->isEnabled());
  EXPECT_THAT(Find<QLabel>("lblAlarmAccFromFile")->text().toStdString(), HasSubstr("-2 … 2 g"));

  QTest::keySequence(FForm.get(), QKeySequence("Ctrl+Alt+A"));
  auto* panel = Find<QWidget>("pnlAlarmLimits");
  ASSERT_TRUE(panel->isVisible());
  Find<QLineEdit>("tedA1Name")->setText("Oil & pressure");
  const auto labels = panel->findChildren<QLabel*>();
  const auto shows = [&labels](const char* text) {
    return std::ranges::any_of(labels, [text](const QLabel* label) { return label->text() == text; });
  };
  EXPECT_TRUE(shows("Oil && pressure (A&1)") && shows("A&2"));
  Find<QLineEdit>("tedA1Name")->setText("A1");
  Find<QAbstractButton>("chboxLoadAccAlarmFromFile")->click();
  EXPECT_TRUE(limit->isEnabled());
  EXPECT_THAT(marks("Acceleration max"), ElementsAre(2, 2, 0)) << "6 g unless changed";
  limit->setFocus();
  limit->selectAll();
  QTest::keyClicks(limit, "9,5");
  QTest::keyClick(limit, Qt::Key_Return);
  EXPECT_THAT(marks("Acceleration max"), ElementsAre(2, 0, 0));
  Find<TLimitEdit>("dxBarSpinAlarmTempMax")->setValue(21);
  EXPECT_THAT(marks("Temp."), ElementsAre(5, 3, 5));
  QTest::keyClick(panel, Qt::Key_Escape);
  EXPECT_FALSE(panel->isVisible());
  Close();
  EXPECT_EQ(File().ReadFloat("Alarm", "Acc. Max", 0), 9.5);
  EXPECT_TRUE(File().ReadBool("Alarm", "Active", false));
}

TEST_F(SettingsOfTheWindow, ABadFileStopsNeitherStartNorClose) {
  const auto path = FFolder / "settings/settings.ini";
  std::ofstream(path) << std::string(5000, '\x01') << "\n[Date]\nDate Format=-7\n[Most Important Events]\nOrder By=2\n";
  Start();
  EXPECT_EQ(Find<QComboBox>("cmbSettingsDateTimeFormat")->currentIndex(), 0);
  EXPECT_EQ(Find<QComboBox>("cmbOrderMostImporantBy")->currentIndex(), 2);
  Close();
  EXPECT_THAT(FBoxes, IsEmpty());

  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  Start();
  Choose("cmbSettingsDateTimeFormat", 3);
  Close();
  EXPECT_THAT(std::exchange(FBoxes, {}), ElementsAre(HasSubstr("settings.ini")));
  EXPECT_EQ(File().ReadInteger("Date", "Date Format", 9), 0) << "the older file is whole";
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);

  std::ofstream(path) << std::string(2'000'000, 'x');
  Start();
  Close();
  EXPECT_THAT(std::exchange(FBoxes, {}), ElementsAre(HasSubstr("kept as")));
  EXPECT_EQ(File().ReadInteger("Date", "Date Format", 9), 0);
}

TEST(LimitEdit, KeepsEveryDigitOfAValue) {
  TLimitEdit edit(nullptr);
  for (const double value : {0.000125, -6.0, 1e9, 2.5, 123456.789, 2e12, -1e300, 1.5e-12, 1e-300}) {
    edit.setValue(value);
    EXPECT_EQ(edit.value(), value);
    EXPECT_EQ(edit.text().toDouble(), value);
  }
}

TEST(LimitEdit, TakesAPointOrACommaAndRefusesWhatCanBeReadInTwoWays) {
  TLimitEdit edit(nullptr);
  QString problem;
  QObject::connect(&edit, &TLimitEdit::Refused, [&problem](const QString& told) { problem = told; });
  const auto typed = [&](const char* text) {
    problem.clear();
    edit.setValue(7);
    edit.selectAll();
    QTest::keyClicks(&edit, text);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(edit.text().toDouble(), edit.value());
    return edit.value();
  };
  const std::pair<const char*, double> taken[] = {{"5,5", 5.5},       {"abc-1,25x", -1.25}, {"0,1234", 0.1234},
                                                  {" 1000 ", 1000.0}, {"1.000", 1.0},       {"-2e3", -2000.0}};
  for (const auto& [text, value] : taken) {
    EXPECT_EQ(typed(text), value) << text;
    EXPECT_EQ(problem, "") << text;
  }
  for (const char* text : {"1,000", "-1,000", "1.000,5", "1,000.5", "1 000", "1,000,000", "1,000e3"}) {
    EXPECT_EQ(typed(text), 7) << text;
    EXPECT_TRUE(problem.startsWith(QString("“%1” can be read in two ways.").arg(text))) << problem.toStdString();
  }
  for (const char* text : {"1,5,5", "-", "1e", "1e999"}) {
    EXPECT_EQ(typed(text), 7) << text;
    EXPECT_EQ(problem, QString("“%1” is no number.").arg(text));
  }
}

TEST_F(SettingsOfTheWindow, ARefusedLimitSaysWhyUntilTheUserTypesAgain) {
  Start();
  Open();
  QTest::keySequence(FForm.get(), QKeySequence("Ctrl+Alt+A"));
  auto* limit = Find<TLimitEdit>("dxBarSpinAlarmTempMax");
  const auto* problem = Find<QLabel>("lblAlarmLimitRefused");
  EXPECT_FALSE(problem->isVisible());
  limit->setFocus();
  limit->selectAll();
  QTest::keyClicks(limit, "1,000");
  QTest::keyClick(limit, Qt::Key_Tab);
  EXPECT_EQ(limit->text(), "40");
  EXPECT_TRUE(problem->isVisible());
  EXPECT_THAT(problem->text().toStdString(), HasSubstr("“1,000” can be read in two ways."));
  EXPECT_TRUE(Find<QWidget>("pnlAlarmLimits")->rect().contains(problem->geometry()));
  QTest::keyClicks(Find<TLimitEdit>("dxBarSpinAlarmPresMin"), "1");
  EXPECT_FALSE(problem->isVisible());
  limit->setFocus();
  limit->selectAll();
  QTest::keyClicks(limit, "1 000");
  Find<QWidget>("pnlAlarmLimits")->hide();
  EXPECT_THAT(Find<QLabel>("lblStatusValue")->text().toStdString(), HasSubstr("“1 000”"));
}

TEST_F(SettingsOfTheWindow, WithoutALevelInTheFileTheUsersLimitsCanBeEdited) {
  Start();
  TTestRecording recording = TTestRecording().Creator().StartTime(45123.25).MissionHeader(0, 0);
  FForm->Flow().Open(Save("none.kshock", recording.Channels({"T"}).Data({{0, {20}}})).toStdString());
  Settle();
  auto* limit = Find<TLimitEdit>("dxBarSpinAlarmAccMax");
  auto* said = Find<QLabel>("lblAlarmAccFromFile");
  EXPECT_TRUE(limit->isEnabled());
  EXPECT_EQ(said->text(), "the file names no level");
  Find<QAbstractButton>("chboxLoadAccAlarmFromFile")->click();
  EXPECT_EQ(said->text(), "");
  Find<QAbstractButton>("chboxLoadAccAlarmFromFile")->click();
  EXPECT_EQ(said->text(), "the file names no level");
  Open();
  EXPECT_FALSE(limit->isEnabled()) << "the next file names 2 g";
}

}  // namespace
