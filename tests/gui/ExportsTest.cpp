// The exports in the window: buttons, menus, dialogs, and what can be done while one runs.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QMenu>
#include <QTableView>
#include <QToolButton>
#include <QUrl>
#include <QXmlStreamReader>
#include <algorithm>
#include <cstdlib>
#include <set>

#include "gui/charts/uResponseChart.h"
#include "gui/charts/uTimeChart.h"
#include "gui/common/uTheme.h"
#include "gui/ribbon/uRibbon.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

namespace {

const std::vector<std::string> kFront = {"WellcomePanel", "MainOverviewPanel", "MainShockPanel", "ReportPanel"};

class TOpened : public QObject {
  Q_OBJECT

 public:
  QUrl Last;

 public slots:
  void Open(const QUrl& url) { Last = url; }
};

class Exports : public TWindowTest {
 protected:
  Exports() {
    fs::create_directory(FTo);
    QObject::connect(&FMeanwhileTimer, &QTimer::timeout, [this] {
      if (FForm && FForm->Flow().State() == TFileFlow::TState::Exporting) FMeanwhile();
    });
    FMeanwhileTimer.start(5);
  }
  void Click(const char* tab, const char* button) {
    FForm->findChild<TRibbon*>()->SelectTab(tab);
    QCoreApplication::processEvents();
    auto* found = Find<QToolButton>(button);
    ASSERT_TRUE(found->isEnabled()) << button;
    found->click();
    Settle();
  }
  QMenu* OpenMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  std::string NameOfMenu() {
    QMenu* menu = OpenMenu();
    if (menu == nullptr) return {};
    const std::string name = menu->objectName().toStdString();
    menu->close();
    return name;
  }
  std::vector<std::string> Written() {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(FTo)) {
      if (!entry.is_directory()) names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }
  QString To(const char* name) { return QString::fromStdString((FTo / name).string()); }
  // A recording whose export to files takes some seconds.
  static TTestRecording ManyEvents() {
    TTestRecording recording =
        TTestRecording().Creator().StartTime(45000).MissionHeader(2, 2).Channels({"ACC x", "ACC y", "ACC z"});
    for (int event = 0; event < 3000; ++event) {
      std::vector<TTestRecord> records;
      for (int i = 0; i < 100; ++i) records.push_back({event * 1000.0 + i, {3, 1, 1}});
      records.push_back({event * 1000.0 + 100, {kEnd, kEnd, kEnd}});
      recording.Data(records);
    }
    return recording;
  }

  fs::path FTo = FFolder / "to";
  std::function<void()> FMeanwhile = [] {};  // while an export runs
  QTimer FMeanwhileTimer;
};

TEST_F(Exports, AFolderOfEventsIsAskedForWrittenAndFollowedByTheShockView) {
  Start(Save("three.kshock", ThreeEvents()));
  Click("tabEvents", "barbtnEventsCSVAllShocks");
  EXPECT_THAT(FDialogs, ElementsAre(HasSubstr("dlgFolder|Choose the folder for the CSV files|" +
                                              FFolder.Path().generic_string())));
  EXPECT_THAT(Seen(kFront), ElementsAre("MainOverviewPanel")) << "cancelled";
  FTyped = QString::fromStdString(FTo.string());
  for (int again = 0; again < 2; ++again) {
    Press("Ctrl+1");
    Click("tabEvents", "barbtnEventsCSVAllShocks");
    EXPECT_THAT(Seen(kFront), ElementsAre("MainShockPanel"));
    EXPECT_THAT(Docks(), ElementsAre("dxDockPanelNavigator", "dxDockPanelMissionDetails"));
    EXPECT_THAT(Seen({"pnlLoading"}), IsEmpty());
  }
  EXPECT_THAT(Written(), ElementsAre("ID-0.csv", "ID-1.csv", "ID-2.csv"));
  EXPECT_THAT(FBoxes, IsEmpty());
}

TEST_F(Exports, AGridsMenuOpensByMouseKeyboardAndAction) {
  Start(Save("three.kshock", ThreeEvents()));
  const struct {
    const char *view, *grid, *action, *menu;
  } grids[] = {{"Ctrl+1", "DBGrid2", "actExportSensorsGridToCSV", "mnuExportSensors"},
               {"Ctrl+1", "DBGrid8", "actExportBatteryGridToCSV", "mnuExportBattery"},
               {"Ctrl+2", "dbgShocks", "actExportShockGridToCSV", "mnuExportShocks"},
               {"Ctrl+2", "dbgFilteredShocks", "actExportFilteredShockGridToCSV", "mnuExportShocks"}};
  for (const auto& [view, name, action, menu] : grids) {
    Press(view);
    auto* grid = Find<QTableView>(name);
    QContextMenuEvent click(QContextMenuEvent::Mouse, {5, 5}, grid->viewport()->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(grid->viewport(), &click);
    ASSERT_NE(OpenMenu(), nullptr) << name;
    EXPECT_EQ(OpenMenu()->actions().mid(2, Find<QMenu>(menu)->actions().size()), Find<QMenu>(menu)->actions())
        << name << ": below Copy";
    EXPECT_EQ(NameOfMenu(), "mnuGrid");
    QTest::keyClick(grid, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(NameOfMenu(), "mnuGrid") << name;
    QCursor::setPos(FForm->mapToGlobal(QPoint(200, 150)));
    Press(Find<QAction>(action)->shortcut().toString().toUtf8());
    ASSERT_NE(OpenMenu(), nullptr) << action;
    EXPECT_LT((OpenMenu()->pos() - QCursor::pos()).manhattanLength(), 10);
    EXPECT_EQ(NameOfMenu(), menu) << action;
  }
  FForm->Flow().Open((FFolder / "missing").string());
  Settle();
  EXPECT_FALSE(Find<QAction>("actExportSensorsGridToCSV")->isEnabled());
  EXPECT_FALSE(Find<QAction>("actTablesExportCSV")->isEnabled());
}

TEST_F(Exports, ATableIsExportedFromItsMenuAndTheGridHasTheFocusAgain) {
  Start(Save("three.kshock", ThreeEvents()));
  Press("Ctrl+2");
  auto* grid = Find<QTableView>("dbgShocks");
  grid->setFocus();
  FTyped = To("table");
  QTest::keyClick(grid, Qt::Key_F10, Qt::ShiftModifier);
  ASSERT_NE(OpenMenu(), nullptr);
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}) QTest::keyClick(OpenMenu(), key);
  Settle();
  EXPECT_EQ(FDialogs.back(), "dlgSave|Save the Filtered Shocks Grid to CSV file|" + FFolder.Path().generic_string() +
                                 "|CSV file (*.csv)|Shocks Mission-165-00007.csv");
  EXPECT_THAT(Written(), ElementsAre("table.csv"));
  EXPECT_THAT(Seen({"dbgShocks", "dbgFilteredShocks"}), ElementsAre("dbgShocks")) << "the other is behind its tab";

  Press("Ctrl+1");
  auto* battery = Find<QTableView>("DBGrid8");
  Find("dxDockPanelSensorGridBattery")->raise();
  battery->setFocus();
  FTyped = To("battery 1.5");  // the extension is added
  std::set<bool> gridShown;
  FMeanwhile = [&] { gridShown.insert(battery->isVisible()); };
  const QRect place = Find("dxDockPanelSensorGridBattery")->geometry();
  Click("tabTables", "barbtnTablesExportXLSXBattery");
  EXPECT_THAT(gridShown, testing::Not(testing::Contains(true)));
  EXPECT_EQ(Find<QLabel>("lblNotice")->text(), "Written: " + To("battery 1.5.xlsx"));
  EXPECT_TRUE(battery->isVisible());
  TOpened opened;
  QDesktopServices::setUrlHandler("file", &opened, "Open");
  QTest::mouseClick(Find("btnNoticeFolder"), Qt::LeftButton);
  QDesktopServices::unsetUrlHandler("file");
  EXPECT_EQ(opened.Last, QUrl::fromLocalFile(QString::fromStdString(FTo.string())));
  EXPECT_EQ(FForm->focusWidget(), battery);
  EXPECT_EQ(Find("dxDockPanelSensorGridBattery")->geometry(), place);
  EXPECT_THAT(FBoxes, ElementsAre("msgInformation|Excel sheet created|"));
  EXPECT_THAT(Seen(kFront), ElementsAre("MainOverviewPanel"));
  EXPECT_THAT(Written(), ElementsAre("battery 1.5.xlsx", "table.csv"));
  EXPECT_THAT(FDialogs.back(),
              HasSubstr("|" + FTo.generic_string() + "|XLSX file (*.xlsx)|Battery Mission-165-00007.xlsx"));
}

TEST_F(Exports, ChartImagesAreAsOnTheScreenButOnWhite) {
  const QPalette before = QApplication::palette();
  ApplyScheme(*qApp, TScheme::Dark);
  Start(Save("three.kshock", ThreeEvents()));
  Press("Ctrl+2");
  auto* chart = Find<TTimeChart>("Chart2");
  const QImage shown = chart->grab().toImage();
  EXPECT_LT(qGray(shown.pixel(4, 4)), 100);
  Click("tabShock", "barbtnShockCopyChartToClipboard");
  const QImage copied = QApplication::clipboard()->image();
  EXPECT_EQ(copied.size(), shown.size());
  EXPECT_EQ(copied.pixelColor(4, 4), QColor(Qt::white));
  chart->Range().SetTimes({0, 1});
  Click("tabShock", "barbtnShockCopyChartToClipboard");
  EXPECT_NE(QApplication::clipboard()->image(), copied) << "the zoom counts";
  EXPECT_EQ(chart->Range().Times(), (TTimeSpan{0.0, 1.0})) << "and stays";
  EXPECT_LT(qGray(chart->grab().toImage().pixel(4, 4)), 100) << "dark again";

  FTyped = To("x.jpg");
  Click("tabShock", "barbtnShockSaveChartAsImage");
  const TBytes bitmap = BytesOfFile(FTo / "x.jpg");
  EXPECT_EQ(std::string(bitmap.begin(), bitmap.begin() + 2), "BM");
  EXPECT_EQ(QImage::fromData(bitmap.data(), static_cast<int>(bitmap.size())), QApplication::clipboard()->image());
  FTyped = To("x.png");
  Press("S");
  Click("tabShock", "barbtnShockSaveChartAsPNG");
  EXPECT_EQ(QImage(To("x.png"), "PNG").size(), Find("chartSpecAnalysis")->size().expandedTo({640, 400}));
  FTyped = To("spectrum");
  Press("Ctrl+Shift+C");
  EXPECT_THAT(FDialogs.back(), HasSubstr("Mission-165-00007 ID-1 Amplitude.csv"));
  const TBytes csv = BytesOfFile(FTo / "spectrum.csv");
  EXPECT_THAT(std::string(csv.begin(), csv.end()),
              testing::StartsWith("\"HZ\",\"X\",\"Y\",\"Z\",\"Total\",\r\n\"0\",\"5.4\","));
  ApplyScheme(*qApp, TScheme::Light);
  QApplication::setPalette(before);
}

bool HasInk(const QImage& picture) {
  QImage white = picture;
  white.fill(Qt::white);
  return picture != white;
}

// What an SVG file draws.
struct TDrawing {
  QStringList texts;
  std::vector<QPolygonF> lines;
  int shapes = 0;
  int images = 0;
  QString error;
};
TDrawing DrawingIn(const QString& path) {
  TDrawing drawing;
  QFile file(path);
  file.open(QIODevice::ReadOnly);
  QXmlStreamReader xml(&file);
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    const auto name = xml.name();
    drawing.shapes += name == QString("path") || name == QString("rect") || name == QString("polyline");
    drawing.images += name == QString("image");
    if (name == QString("polyline")) {
      QPolygonF line;
      const QString points = xml.attributes().value("points").toString();
      for (const QString& point : points.split(' ', Qt::SkipEmptyParts)) {
        line.append({point.section(',', 0, 0).toDouble(), point.section(',', 1, 1).toDouble()});
      }
      drawing.lines.push_back(line);
    }
    if (name == QString("text")) drawing.texts.append(xml.readElementText().trimmed());
  }
  drawing.error = xml.errorString();
  return drawing;
}

TEST_F(Exports, APngHasTheSizeThatTheFileTypeSays) {
  Start(Save("three.kshock", ThreeEvents()));
  FForm->resize(900, 600);
  Settle();
  const QSize shown = Find("ChartAllSensors")->size();
  const QSize size = shown.expandedTo({640, 400});
  ASSERT_NE(size, shown);
  FTyped = To("x.png");
  for (const auto& [type, scale] :
       {std::pair("PNG, size of the screen (*.png)", 1), {"PNG, 4 × size (*.png)", 4}, {"PNG, 2 × size (*.png)", 2}}) {
    FFileType = type;
    fs::remove(FTo / "x.png");
    Click("tabSensors", "barbtnSensorsSaveAsPNG");
    const QImage picture(To("x.png"), "PNG");
    EXPECT_EQ(picture.size(), size * scale);
    const QRect bottom(0, picture.height() * 9 / 10, picture.width(), picture.height() / 10);
    EXPECT_TRUE(HasInk(picture.copy(bottom))) << "drawn as large as the picture";
  }
  EXPECT_EQ(Find("ChartAllSensors")->size(), shown);
  EXPECT_EQ(Find<QLabel>("lblNotice")->text(), "Written: " + To("x.png"));
}

TEST_F(Exports, AnSvgHasLinesAndTextsUnderTheMissionsIdAndNoStateOfTheWindow) {
  Start(Save("three.kshock", ThreeEvents()));
  auto* events = Find<TTimeChart>("Chart1");
  ASSERT_EQ(events->Legend().Title(), "Synced");
  const QImage before = events->Picture();
  FTyped = To("x.svg");
  Click("tabEvents", "barbtnEventsSaveChartAsSVG");
  const TDrawing shown = DrawingIn(FTyped);
  EXPECT_EQ(shown.error, QString());
  EXPECT_TRUE(shown.texts.contains("Mission 165-00007")) << shown.texts.join('|').toStdString();
  EXPECT_FALSE(shown.texts.contains("Synced"));
  EXPECT_GT(shown.shapes, 10);
  EXPECT_EQ(shown.images, 0);
  EXPECT_EQ(events->Legend().Title(), "Synced") << "on the screen";
  EXPECT_EQ(events->Picture(), before) << "a bitmap is what it was";

  Press("Ctrl+2");
  FForm->resize(1600, 1000);
  Settle();
  auto* chart = Find<TTimeChart>("Chart2");
  ASSERT_GE(std::min(chart->width(), chart->height() + 240), 640) << "the picture is laid out as the chart is";
  Click("tabShock", "barbtnShockShowY");
  chart->Range().SetTimes({0.1, 3.9});
  chart->ValueAxis().setRange(0, 2);  // below the tops of the curve
  FTyped = To("y.svg");
  Click("tabShock", "barbtnShockSaveChartAsSVG");
  const TDrawing curves = DrawingIn(FTyped);
  EXPECT_TRUE(curves.texts.contains("X")) << curves.texts.join('|').toStdString();
  EXPECT_FALSE(curves.texts.contains("Y")) << "hidden";
  EXPECT_TRUE(std::ranges::any_of(curves.texts, [](const QString& text) {
    return text.startsWith("Mission 165-00007 · Event 1");
  })) << curves.texts.join('|').toStdString();
  const QRectF rect = chart->Rect().rect();
  int slopes = 0;
  for (const QPolygonF& line : curves.lines) {
    const QRectF place = line.boundingRect();
    if (place.width() < 2 || place.height() < 2 || !place.intersects(rect)) continue;
    ++slopes;
    EXPECT_TRUE(rect.adjusted(-1, -1, 1, 1).contains(place)) << "an SVG has no clip";
  }
  EXPECT_EQ(slopes, 4) << "X and Total rise out of sight and come back";
  EXPECT_EQ(chart->Legend().Contents().entries.size(), 4U) << "on the screen";
}

TEST_F(Exports, DuringAnExportOnlyCancelWorks) {
  Start(Save("many.kshock", ManyEvents()));
  Press("Ctrl+Shift+M");
  Find("dxDockPanelFilter")->show();
  FTyped = QString::fromStdString(FTo.string());
  int moments = 0;
  FMeanwhile = [&] {
    if (++moments == 1) {
      EXPECT_THAT(Docks(), IsEmpty());
      EXPECT_THAT(Seen({"dxDockPanelFilter", "btnWellcomeOpen"}), ElementsAre("btnWellcomeOpen"));
      for (const char* part : {"btnWellcomeOpen", "dxBarOpenNewFile", "ChartAllSensors"}) {
        EXPECT_FALSE(Find(part)->isEnabled()) << part;
      }
      QTest::keySequence(FForm.get(), QKeySequence("Ctrl+3"));
      QTest::keySequence(FForm.get(), QKeySequence("Ctrl+Shift+A"));
      QTest::mouseClick(Find("barbtnEventsXLSXAllShocks"), Qt::LeftButton);
      EXPECT_EQ(FForm->focusWidget()->objectName(), "btnLoadingCancel");
    }
    if (Written().size() > 2) QTest::keyClick(FForm->focusWidget(), Qt::Key_Escape);
  };
  Click("tabEvents", "barbtnEventsCSVAllShocks");
  EXPECT_GE(moments, 2);
  EXPECT_THAT(Written().size(), testing::AllOf(testing::Ge(2U), testing::Lt(3000U)));
  EXPECT_THAT(Written(), testing::Each(testing::EndsWith(".csv"))) << "the file in work is gone";
  EXPECT_THAT(Seen(kFront), ElementsAre("MainOverviewPanel"));
  EXPECT_THAT(Docks(),
              ElementsAre("dxDockPanelNavigator", "dxDockPanelSensorGridTemp", "dxDockPanelSensorGridBattery"));
  EXPECT_THAT(Seen({"dxDockPanelFilter", "btnNoticeFolder"}), ElementsAre("dxDockPanelFilter"));
  EXPECT_EQ(Find<QLabel>("lblNotice")->text(), "Export cancelled");
  EXPECT_TRUE(Find("btnWellcomeOpen")->isEnabled() && Find("ChartAllSensors")->isEnabled());
  EXPECT_FALSE(Find<QAction>("actAlarmSet")->isChecked());
  EXPECT_THAT(FDialogs, testing::SizeIs(1));
  EXPECT_THAT(FBoxes, IsEmpty());
}

TEST_F(Exports, ARecordingWithoutEventsGivesEmptyFolders) {
  Start(Save("none.kshock",
             TTestRecording().Creator().StartTime(45000).MissionHeader(2, 2).Channels({"T"}).Data({{0, {21}}})));
  FTyped = QString::fromStdString(FTo.string());
  for (const char* button : {"barbtnEventsCSVAllShocks", "barbtnEventsCSVVisibleShocks", "barbtnEventsCSVCalibration",
                             "barbtnEventsCSVCalibrationVisible"}) {
    Click("tabEvents", button);
  }
  std::vector<std::string> folders;
  for (const auto& entry : fs::directory_iterator(FTo)) folders.push_back(entry.path().filename().string());
  EXPECT_THAT(folders,
              testing::UnorderedElementsAre("Mission-165-00007", HasSubstr("Peaks-"), HasSubstr("Calibration-")));
  EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(Exports, WithoutABatteryItsExportsAreDisabledWithAReason) {
  const char* const buttons[] = {"barbtnTablesExportCSVBattery", "barbtnTablesExportXLSXBattery"};
  const QString why = "Not available: the recording has no battery channel";
  Start(Save("many.kshock", ManyEvents()));
  for (const char* button : buttons) {
    EXPECT_FALSE(Find(button)->isEnabled());
    EXPECT_THAT(Find(button)->toolTip().toStdString(), testing::EndsWith(why.toStdString()));
  }
  EXPECT_FALSE(Find<QAction>("actExportBatteryGridToCSV")->isEnabled());
  EXPECT_TRUE(Find("barbtnTablesExportCSVSensors")->isEnabled());
  FTyped = To("s.csv");
  Click("tabTables", "barbtnTablesExportCSVSensors");
  EXPECT_THAT(Find<QLabel>("lblNotice")->text().toStdString(), HasSubstr("s.csv"));

  FForm->Flow().Open(Save("three.kshock", ThreeEvents()).toStdString());
  Settle();
  EXPECT_THAT(Seen({"pnlNotice"}), IsEmpty()) << "it was of the other recording";
  for (const char* button : buttons) {
    EXPECT_TRUE(Find(button)->isEnabled());
    EXPECT_FALSE(Find(button)->toolTip().contains(why));
  }
}

TEST_F(Exports, ClosingTheWindowEndsTheExport) {
  Start(Save("many.kshock", ManyEvents()));
  FTyped = To("many.xlsx");
  FMeanwhile = [&] { EXPECT_FALSE(FForm->close()); };
  Click("tabEvents", "barbtnEventsXLSXAllShocks");
  ASSERT_TRUE(QTest::qWaitFor([this] { return !FForm->isVisible(); }, kPatienceMs));
  EXPECT_THAT(Written(), IsEmpty());
  EXPECT_THAT(FBoxes, IsEmpty());
}

// packaging/windows/test names a folder that keeps the files, and compares those of both systems.
TEST_F(Exports, EachWritesItsFiles) {
  if (const char* kept = std::getenv("SHOCKSCOPE_EXPORTS")) FTo = kept;
  Start(TEST_DATA "/earthquake.kshock");
  const struct {
    const char *keys, *action, *file;  // no file: the command asks for a folder
  } exports[] = {{"Ctrl+1", "actEventsCSVAllShocks", ""},
                 {"", "actEventsCSVCalibration", ""},
                 {"", "actEventsCSVCalibrationVisible", ""},
                 {"", "actEventsXLSXAllShocks", "events.xlsx"},
                 {"", "actSensorsExportToXLSX", "measurements.xlsx"},
                 {"", "actTablesExportCSV", "shocks.csv"},
                 {"", "actTablesExportXLSX", "shocks.xlsx"},
                 {"", "actTablesExportCSVSensors", "sensors.csv"},
                 {"", "actTablesExportXLSXSensors", "sensors.xlsx"},
                 {"", "actTablesExportCSVBattery", "battery.csv"},
                 {"", "actTablesExportXLSXBattery", "battery.xlsx"},
                 {"", "actTablesExportCSVAnalysis", "analysis.csv"},
                 {"", "actTablesExportXLSXAnalysis", "analysis.xlsx"},
                 {"Ctrl+4", "actAnalysisExportCSV", "boundary.csv"},
                 {"Ctrl+5", "actAnalysisExportCSV", "statistics.csv"},
                 {"Ctrl+2", "actExportShockToCSV", "event.csv"},
                 {"", "actShockSaveChartAsXLSX", "event.xlsx"},
                 {"H", "actExportShockToCSV", "filtered.csv"},
                 {"S", "actExportShockToCSV", "spectrum.csv"},
                 {"", "actShockSaveChartAsXLSX", "spectrum.xlsx"},
                 {"O", "actExportShockToCSV", "response.csv"},
                 {"", "actShockSaveChartAsXLSX", "response.xlsx"}};
  for (const auto& [keys, action, file] : exports) {
    if (*keys != '\0') Press(keys);
    auto* response = Find<TResponseChart>("chartResponse");
    ASSERT_TRUE(QTest::qWaitFor([&] { return response->WhyNone() != "Calculating…"; }, kPatienceMs));
    const std::size_t before = Written().size();
    FTyped = To(file);
    Find<QAction>(action)->trigger();
    Settle();
    EXPECT_EQ(Written().size(), before + (*file == '\0' ? 5 : 1)) << action << ' ' << file;
  }
  EXPECT_THAT(FBoxes, testing::Each(HasSubstr("created")));
}

}  // namespace

#include "ExportsTest.moc"
