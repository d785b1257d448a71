// Notes in the window: typed, shown, stepped to, changed, and what their files may hold.
#include <QComboBox>
#include <QDialog>
#include <QHelpEvent>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTextEdit>
#include <QToolTip>

#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uTimeChart.h"
#include "platform/uSha256.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr double kMissionStart = 45123.25;  // of ThreeEvents
constexpr double kMinuteDays = 1.0 / 1440;

class NotesInWindow : public TWindowTest {
 protected:
  void AddNote(const char* place, const char* text) {
    InDialog("Ctrl+M", [&](QDialog& dialog) {
      auto* places = dialog.findChild<QComboBox*>("cmbNotePlace");
      places->setCurrentIndex(places->findText(place, Qt::MatchStartsWith));
      dialog.findChild<QLineEdit*>("edtNoteAuthor")->setText("Ann");
      dialog.findChild<QLineEdit*>("edtNoteTags")->setText(" damage,, fork lift ");
      auto* edit = dialog.findChild<QPlainTextEdit*>("edtNoteText");
      QTest::keyClick(edit, Qt::Key_Return);
      EXPECT_TRUE(dialog.isVisible()) << "there is nothing to keep yet";
      QTest::keyClicks(edit, text);
      QTest::keyClick(edit, Qt::Key_Return);
      EXPECT_FALSE(dialog.isVisible());
    });
  }
  std::string Details() { return Find<QTextEdit>("edtMissionDetails")->toPlainText().toStdString(); }
  std::string LastColumn(const char* grid, int row) {
    const auto* model = Find<QTableView>(grid)->model();
    const int last = model->columnCount() - 1;
    return (model->headerData(last, Qt::Horizontal).toString() + ": " + model->index(row, last).data().toString())
        .toStdString();
  }
  std::string Notice() { return Find<QLabel>("lblNotice")->text().toStdString(); }
  static QPoint PlaceOfFlag(const TTimeChart& chart, double time) {
    return QPointF(chart.TimeAxis().coordToPixel(time) + 2, chart.Rect().rect().top() + 3).toPoint();
  }
  std::string FlagAt(const char* name, double time) {
    auto* chart = Find<TTimeChart>(name);
    return chart->Flags().TextAt(PlaceOfFlag(*chart, time)).toStdString();
  }
  void ClickFlag(const char* name, double time) {
    auto* chart = Find<TTimeChart>(name);
    QTest::mouseClick(chart, Qt::LeftButton, {}, PlaceOfFlag(*chart, time));
    Settle();
  }
  std::string Kept() {
    const TBytes bytes = BytesOfFile(FFolder / "three.kshock.notes.json");
    return {bytes.begin(), bytes.end()};
  }
  void Keep(std::string_view text) { WriteFile(FFolder / "three.kshock.notes.json", TBytes(text.begin(), text.end())); }

  QString FThree = Save("three.kshock", ThreeEvents());
};

TEST_F(NotesInWindow, ANoteIsSeenEverywhereAndCanBeSteppedToChangedAndDeleted) {
  Start(FThree);
  const int columns = Find<QTableView>("dbgShocks")->model()->columnCount();
  Press("Ctrl+2");
  Press("N");
  ASSERT_EQ(FForm->Flow().Mission().SelectedEvent, 2U);
  AddNote("Event 2", "hit by a fork lift");
  AddNote("The whole recording", "arrived wet");
  EXPECT_THAT(Details(), HasSubstr("hit by a fork lift (Ann; damage, fork lift)"));
  EXPECT_THAT(Details(), HasSubstr("arrived wet"));
  EXPECT_EQ(LastColumn("dbgShocks", 2), "Notes: hit by a fork lift (Ann; damage, fork lift)");
  EXPECT_EQ(LastColumn("dbgShocks", 1), "Notes: ");
  for (const char* chart : {"Chart1", "Chart20", "ChartAllSensors", "ChartNavigator"}) {
    EXPECT_THAT(FlagAt(chart, kMissionStart + 2 * kMinuteDays), HasSubstr("fork lift")) << chart;
    EXPECT_EQ(FlagAt(chart, kMissionStart + kMinuteDays), "") << chart;
  }
  // The checksum follows in the background.
  TNoProgress progress;
  const std::string sha256 = Sha256Of(FFolder / "three.kshock", progress);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Kept().find(sha256) != std::string::npos; }, kPatienceMs));

  Press("Ctrl+1");
  Press("P");
  ASSERT_EQ(FForm->Flow().Mission().SelectedEvent, 1U);
  Press("M");
  EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, 2U);
  EXPECT_THAT(Notice(), HasSubstr("hit by a fork lift"));

  InDialog("Ctrl+Alt+M", [this](QDialog& dialog) {
    auto* list = dialog.findChild<QListWidget*>("lstNotes");
    ASSERT_EQ(list->count(), 2);
    list->setCurrentRow(1);
    QTimer::singleShot(200, FForm.get(), [] {
      auto* edit = QApplication::activeModalWidget()->findChild<QPlainTextEdit*>("edtNoteText");
      edit->selectAll();
      QTest::keyClicks(edit, "dropped");
      QTest::keyClick(edit, Qt::Key_Return);
    });
    dialog.findChild<QPushButton*>("btnNoteEdit")->click();
    EXPECT_THAT(list->item(1)->text().toStdString(), HasSubstr("dropped (Ann; damage, fork lift)"));
    QTest::keyClick(&dialog, Qt::Key_Delete);  // the question is answered with Esc
    EXPECT_EQ(list->count(), 2);
  });
  EXPECT_THAT(Details(), Not(HasSubstr("hit by a")));
  EXPECT_THAT(FBoxes, ElementsAre(HasSubstr("Delete this note?")));
  EXPECT_THAT(Kept(), HasSubstr("arrived wet"));
  Press("F5");
  EXPECT_THAT(Details(), HasSubstr("dropped"));
  Keep("{}");
  Press("F5");
  EXPECT_THAT(Details(), Not(HasSubstr("dropped")));
  EXPECT_EQ(Find<QTableView>("dbgShocks")->model()->columnCount(), columns);
  EXPECT_FALSE(Find<QAction>("actNextNote")->isEnabled());
  EXPECT_EQ(FlagAt("Chart1", kMissionStart + 2 * kMinuteDays), "");
}

TEST_F(NotesInWindow, AClickOnAFlagGoesToItsNoteAndLeavesBandAndZoom) {
  Keep(R"({"notes": [
      {"id": "a", "text": "loaded", "begin": "2023-07-16T06:00:00.000", "end": "2023-07-16T06:00:20.000"},
      {"id": "b", "event": 2, "text": "hit", "begin": "2023-07-16T06:02:00.000", "end": "2023-07-16T06:02:00.005"},
      {"id": "c", "text": "by a lift", "begin": "2023-07-16T06:02:00.000", "end": "2023-07-16T06:02:00.003"}]})");
  Start(FThree);
  const TTimeSpan band = FForm->Flow().Mission().Band;
  for (const char* chart : {"Chart1", "ChartAllSensors", "ChartNavigator", "Chart20"}) {
    if (std::string_view(chart) == "Chart20") Press("Ctrl+2");
    ClickFlag(chart, kMissionStart);
    EXPECT_THAT(Notice(), HasSubstr("loaded")) << chart;
    const QPoint at = PlaceOfFlag(*Find<TTimeChart>(chart), kMissionStart);
    QHelpEvent help(QEvent::ToolTip, at, Find(chart)->mapToGlobal(at));
    QCoreApplication::sendEvent(Find(chart), &help);
    EXPECT_THAT(QToolTip::text().toStdString(), HasSubstr("loaded")) << chart;
    ClickFlag(chart, kMissionStart + 2 * kMinuteDays);
    EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, 2U) << chart;
    EXPECT_THAT(Notice(), HasSubstr("hit")) << chart;
    ClickFlag(chart, kMissionStart + 2 * kMinuteDays);
    EXPECT_THAT(Notice(), HasSubstr("by a lift")) << chart << " has both flags there";
    ClickFlag(chart, kMissionStart + 2 * kMinuteDays);
    EXPECT_THAT(Notice(), HasSubstr("hit")) << chart;
    Press("P");
    EXPECT_NE(FForm->Flow().Mission().SelectedEvent, 2U) << chart;
  }
  EXPECT_EQ(FForm->Flow().Mission().Band, band);
  EXPECT_EQ(Find<TTimeChart>("Chart1")->Range().Times(), band);
}

TEST_F(NotesInWindow, NotesThatCannotBeReadAreSaidAndNeverReplacedUnasked) {
  Keep("{");
  Start(FThree);
  EXPECT_THAT(Details(), HasSubstr("it is no JSON"));
  EXPECT_THAT(Notice(), HasSubstr("it is no JSON"));
  Press("Ctrl+M");  // the question is answered with Esc
  EXPECT_THAT(FBoxes, ElementsAre(HasSubstr("keep that file under another name")));
  EXPECT_EQ(Kept(), "{");
}

TEST_F(NotesInWindow, NotesForAnotherContentStayWithAWarningOnceTheChecksumIsKnown) {
  Keep(R"({"recording": {"size": )" + std::to_string(BytesOfFile(FFolder / "three.kshock").size()) +
       R"(, "sha256": "00"}, "notes": [{"id": "a", "text": "of another"}]})");
  Start(FThree);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Details().find("another content") != std::string::npos; }, kPatienceMs));
  EXPECT_THAT(Details(), HasSubstr("of another"));
  AddNote("The whole recording", "new");
  EXPECT_THAT(Details(), HasSubstr("another content"));
  EXPECT_THAT(Kept(), HasSubstr("of another"));
}

}  // namespace
