// Settings from end to end: every control of the table, what it does at once, and that it is there after a restart.
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
#include <fstream>

#include "base/uDateTime.h"
#include "base/uIniFile.h"
#include "gui/common/DatasetTableModel.h"
#include "gui/mainform/uSettingsBinder.h"
#include "gui/settings/uColourBox.h"
#include "gui/settings/uLimitEdit.h"
#include "shell/uSettingsStore.h"
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
  void Type(const char* edit, const char* text) {
    auto* found = Find<QLineEdit>(edit);
    found->selectAll();
    QTest::keyClicks(found, text);
  }
};

TEST_F(SettingsOfTheWindow, EachStartsWithItsDefaultAndComesBackAfterARestart) {
  Start();
  std::map<std::string_view, TControlValue> wanted;
  {
    TSettingsBinder controls(*FForm);
    int number = 0;
    for (const TSetting& row : Settings()) {
      TControlValue value = controls.Value(row.control);
      EXPECT_EQ(value, DefaultOf(row)) << row.control;
      ++number;
      if (auto* on = std::get_if<bool>(&value)) {
        controls.Click(row.control);
        *on = !*on;
      } else {
        if (auto* index = std::get_if<int>(&value)) *index = *index == 1 ? 0 : 1;
        if (auto* limit = std::get_if<double>(&value)) *limit += number + 0.125;
        if (auto* text = std::get_if<std::string>(&value)) {
          *text = row.type == TSettingType::Colour ? fmt::format("$00AB{:02X}CD", number) : "Name \"ü\"; ";
        }
        controls.SetValue(row.control, value);
      }
      EXPECT_EQ(controls.Value(row.control), value) << row.control;
      wanted[row.control] = row.type == TSettingType::WriteOnly ? TControlValue(false) : value;
    }
  }
  Close();
  EXPECT_TRUE(File().ReadBool("Selected Shock Event Chart", "HP Filtering", false));
  Start();
  const TSettingsBinder controls(*FForm);
  for (const auto& [control, value] : wanted) EXPECT_EQ(controls.Value(control), value) << control;
  EXPECT_THAT(FBoxes, IsEmpty());
}

TEST_F(SettingsOfTheWindow, FormatsNamesAndDatesAreShownAtOnceAndMoveNothing) {
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
  Find<QLineEdit>("cxTextEditCompanyName")->setText("<b>Acme");
  EXPECT_EQ(FForm->Flow().Mission().Display.Company, "<b>Acme");
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

TEST_F(SettingsOfTheWindow, ABadFileCostsNeitherStartNorClose) {
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

TEST_F(SettingsOfTheWindow, ALimitEditKeepsEveryDigitAndTakesAComma) {
  TLimitEdit edit(nullptr);
  for (const double value : {0.000125, -6.0, 1e9, 2.5, 123456.789}) {
    edit.setValue(value);
    EXPECT_EQ(edit.value(), value);
    EXPECT_EQ(edit.text().toDouble(), value);
  }
  edit.selectAll();
  QTest::keyClicks(&edit, "abc-1,25x");
  QTest::keyClick(&edit, Qt::Key_Return);
  EXPECT_EQ(edit.value(), -1.25);
}

}  // namespace
