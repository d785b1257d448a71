// The report view as a person uses it: pages, event cards, configuration, output.
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <functional>

#include "gui/charts/uAccelerationChart.h"
#include "gui/report/uEventCardList.h"
#include "gui/report/uPageView.h"
#include "gui/report/uReportPanel.h"
#include "gui/shock/uShockPanel.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

class ReportView : public TWindowTest {
 protected:
  void SetUp() override {
    FProgram.findSettingsFolder = [this] { return (FFolder / "settings/").string(); };
    std::filesystem::create_directory(FFolder / "settings");
    StartInReport();
  }
  void StartInReport() {
    Start(Save("three.kshock", ThreeEvents()));
    Press("Ctrl+3");
  }
  TEventCardList& Cards() { return *Find<TEventCardList>("lstEventCards"); }
  TPageView& Pages() { return *Find<TPageView>("scrlReport"); }
  std::optional<std::size_t> Selected() { return FForm->Flow().Mission().SelectedEvent; }
  // Triggers the action and acts on the dialog that it opens.
  void InDialog(const char* action, const std::function<void(QDialog&)>& act) {
    bool acted = false;
    QTimer::singleShot(0, FForm.get(), [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      act(*dialog);
      acted = true;
    });
    Find<QAction>(action)->trigger();
    ASSERT_TRUE(acted);
    Settle();
  }
};

TEST_F(ReportView, ACardSelectsItsEventByMouseAndKeysAndOpensItInTheShockView) {
  Cards().resize(340, 400);  // one column
  QTest::keyClick(&Cards(), Qt::Key_Home);
  EXPECT_EQ(Selected(), 0U);
  QTest::keyClick(&Cards(), Qt::Key_Down);
  EXPECT_EQ(Selected(), 1U);
  EXPECT_THAT(Cards().accessibleDescription().toStdString(), HasSubstr("Event 1"));
  QTest::keyClick(&Cards(), Qt::Key_Home);
  QTest::mouseClick(Cards().viewport(), Qt::LeftButton, {}, {60, 300});
  EXPECT_EQ(Selected(), 1U) << "the second card";
  QTest::keyClick(&Cards(), Qt::Key_End);
  EXPECT_EQ(Selected(), 2U);
  QTest::keyClick(&Cards(), Qt::Key_Return);
  Settle();
  EXPECT_TRUE(Find("MainShockPanel")->isVisible());
  EXPECT_EQ(Selected(), 2U);
}

TEST_F(ReportView, PicturesOfChartsAreKeptInTheCardsTable) {
  const TDataset& cards = FForm->Flow().Mission().Tables.Cards;
  const std::string* picture = cards.Blob(0, *cards.FindField("Chart"));
  ASSERT_NE(picture, nullptr);
  EXPECT_THAT(*picture, HasSubstr("PNG"));
}

TEST_F(ReportView, ACardMarksWhatIsBeyondALimitThatSomebodyChose) {
  const TShownMission& mission = FForm->Flow().Mission();
  std::optional<TVerdictLimits> limits = TVerdictLimits();
  for (TJudgedLimits& judged : *limits) judged = {{-1000, 10000}, TLimitSource::User, TLimitSource::User};
  TJudgedLimits& acceleration = limits->at(static_cast<std::size_t>(TQuantity::Acceleration));
  acceleration.values = {-6, 6};
  EXPECT_THAT(MakeEventCard(mission, mission.Display, limits, 0).Words().toStdString(),
              HasSubstr("Peak ▲ 20 g (20 g on X-pos)"));
  EXPECT_FALSE(MakeEventCard(mission, mission.Display, limits, 2).IsBeyond()) << "5 g";
  acceleration.maxSource = TLimitSource::File;
  EXPECT_FALSE(MakeEventCard(mission, mission.Display, limits, 0).IsBeyond())
      << "every event exceeds the trigger level";
}

TEST_F(ReportView, ALongFigureTakesARowAndLeavesTheOthersInTheirColumns) {
  const QRectF rect(0, 0, 300, 300);
  TEventCard card;
  for (int i = 0; i < 13; ++i) card.figures.push_back({"Temp.", "20 °C", false});
  const double chart = CardChartRect(card, rect).height();
  card.figures[0].text = "▲ 13.6357 g (12.1289 g on X-pos)";
  EXPECT_EQ(CardChartRect(card, rect).height(), chart) << "in two columns and in three";
  card.figures[3].text = card.figures[0].text;
  EXPECT_LT(CardChartRect(card, rect).height(), chart);
}

TEST_F(ReportView, BothSummaryLabelsGiveTheTotalIntensity) {
  for (const char* label : {"lblReportTotalIntensity", "lblEventCardsTotalIntensity"}) {
    EXPECT_THAT(Find<QLabel>(label)->text().toStdString(), HasSubstr(" 33 g·ms"));  // 10 + 14 + 9
  }
}

TEST_F(ReportView, KeysAndThumbnailsTurnPages) {
  const int count = Pages().PageCount();
  ASSERT_GT(count, 2);
  EXPECT_EQ(Pages().CurrentPage(), 0);
  QTest::keyClick(&Pages(), Qt::Key_F);
  QTest::keyClick(&Pages(), Qt::Key_PageDown);
  EXPECT_THAT(Find<QLabel>("lblReportPage")->text().toStdString(),
              testing::StartsWith("Page 2 of " + std::to_string(count)));
  QTest::keyClick(&Pages(), Qt::Key_End);
  EXPECT_EQ(Pages().CurrentPage(), count - 1);
  QTest::mouseClick(Find<TPageView>("lstReportPages")->viewport(), Qt::LeftButton, {}, {60, 40});
  EXPECT_LT(Pages().CurrentPage(), count - 1);
  const double zoom = Pages().Zoom();
  QTest::mouseClick(Find<QToolButton>("btnReportZoomIn"), Qt::LeftButton);
  const double larger = Pages().Zoom();
  EXPECT_GT(larger, zoom);
  QTest::keyClick(&Pages(), Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(Pages().Zoom(), larger) << "the key of the filter";
}

TEST_F(ReportView, TheConfigurationIsKeptForTheNextReport) {
  const int before = Pages().PageCount();
  InDialog("actReportConfig", [](QDialog& dialog) {
    auto* sections = dialog.findChild<QListWidget*>("lstReportSections");
    for (int row = 2; row < sections->count(); ++row) sections->item(row)->setCheckState(Qt::Unchecked);
    sections->setCurrentRow(1);
    dialog.findChild<QPushButton*>("btnReportSectionUp")->click();
    dialog.findChild<QComboBox*>("cmbReportOrientation")->setCurrentIndex(1);
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  const int after = Pages().PageCount();
  EXPECT_LT(after, before);
  FForm->close();
  StartInReport();
  EXPECT_EQ(Pages().PageCount(), after);
  const TReportConfig& config = Find<TReportPanel>("ReportPanel")->Config();
  EXPECT_EQ(config.sections[0].section, TReportSection::MissionDetails);
  EXPECT_TRUE(config.landscape);
}

TEST_F(ReportView, TheTimeFilterLimitsTheReportAndSaysSo) {
  const std::vector<std::string> marks = {"dxLayoutItemReportIsFiltered", "dxLayoutItemReportIsFilteredCover"};
  EXPECT_THAT(Shown(marks), testing::IsEmpty());
  const auto type = [](QDialog& dialog, const char* from) {
    dialog.findChild<QLineEdit*>("edtReportFrom")->setText(from);
    QTest::keyClick(&dialog, Qt::Key_Return);
  };
  InDialog("actReportTimeFilter", [&](QDialog& dialog) {
    type(dialog, "soon");
    EXPECT_TRUE(dialog.isVisible()) << "what is no time is refused";
    EXPECT_FALSE(dialog.findChild<QLabel*>("lblReportConfigProblem")->text().isEmpty());
    type(dialog, "2023-07-16 06:01");
  });
  EXPECT_EQ(Shown(marks), marks);
  EXPECT_EQ(Find<TReportPanel>("ReportPanel")->Config().time.from, 45123.25 + 1.0 / 1440);
  EXPECT_THAT(Find<QLabel>("lblEventCardsTotalIntensity")->text().toStdString(), testing::StartsWith("2 cards"));
  InDialog("actReportTimeFilter", [](QDialog& dialog) {
    dialog.findChild<QPushButton*>("btnReportTimeAll")->click();
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  EXPECT_EQ(Shown(marks), marks) << "Escape changes nothing";
  Press("F5");
  Settle();
  EXPECT_EQ(Shown(marks), marks) << "the same recording";
  FForm->Flow().Open(Save("other.kshock", ThreeEvents()).toStdString());
  Settle();
  Press("Ctrl+3");
  EXPECT_THAT(Shown(marks), testing::IsEmpty()) << "a span belongs to its recording";
}

TEST_F(ReportView, ThePreviewOfAViewSavesItAsPdf) {
  Press("Ctrl+1");
  FTyped = QString::fromStdString((FFolder / "view.pdf").string());
  InDialog("actOverviewPreview", [](QDialog& dialog) {
    EXPECT_GT(dialog.findChild<TPageView*>("scrlPrintPreview")->PageCount(), 0);
    dialog.findChild<QPushButton*>("btnPreviewPdf")->click();
  });
  EXPECT_TRUE(std::filesystem::exists(FFolder / "view.pdf"));
  EXPECT_EQ(Find<QLabel>("lblNotice")->text().toStdString(), "Written: " + (FFolder / "view.pdf").string());
}

TEST_F(ReportView, ACancelledPdfLeavesTheOlderFileAndAUsableWindow) {
  const auto file = FFolder / "report.pdf";
  FTyped = QString::fromStdString(file.string());
  QTimer cancel;
  QObject::connect(&cancel, &QTimer::timeout, [&] {
    if (FForm->Flow().State() != TFileFlow::TState::Exporting) return;
    WriteFile(file, {'o', 'l', 'd'});  // behind the dialog, which would ask
    QTest::keyClick(FForm->focusWidget(), Qt::Key_Escape);
  });
  cancel.start(0);
  Find<QAction>("actReportExport")->trigger();
  Settle();
  cancel.stop();
  EXPECT_EQ(Find<QLabel>("lblNotice")->text(), "Export cancelled");
  EXPECT_EQ(BytesOfFile(file), TBytes({'o', 'l', 'd'}));
  for (const auto& entry : std::filesystem::directory_iterator(FFolder.Path())) {
    EXPECT_NE(entry.path().extension(), ".part");
  }
  std::filesystem::remove(file);
  Find<QAction>("actReportExport")->trigger();
  Settle();
  EXPECT_GT(std::filesystem::file_size(file), 1000U);
  EXPECT_TRUE(Pages().isVisible());
}

TEST_F(ReportView, TheShockViewPrintsTheChartInFrontAndLeavesItAsItWas) {
  Press("Ctrl+2");
  std::vector<QImage> pages;
  for (const char* mode : {"actShockShowX", "actShockHPFilter", "actShockSpecAnalysis"}) {
    Find<QAction>(mode)->trigger();
    Settle();
    auto& chart = Find<TMainShockPanel>("MainShockPanel")->ChartInFront();
    const QImage before = chart.Picture();
    InDialog("actShockPreview", [&](QDialog& dialog) {
      pages.push_back(dialog.findChild<TPageView*>("scrlPrintPreview")->grab().toImage());
      dialog.findChild<QPushButton*>("btnPreviewPdf")->click();
    });
    EXPECT_EQ(chart.Picture(), before) << mode;
  }
  EXPECT_NE(pages[0], pages[1]);
  EXPECT_NE(pages[1], pages[2]);
  EXPECT_THAT(FDialogs, ElementsAre(EndsWith("|three ID-1.pdf"), EndsWith("|three ID-1 high-passed.pdf"),
                                    EndsWith("|three ID-1 spectrum.pdf")));
}

TEST_F(ReportView, AConfigurationIsSavedAndLoadedAndABadFileIsRefusedInTheDialog) {
  const auto click = [](QDialog& dialog, const char* button) { dialog.findChild<QPushButton*>(button)->click(); };
  FTyped = QString::fromStdString((FFolder / "mine.ini").string());
  InDialog("actReportConfig", [&](QDialog& dialog) {
    auto* perPage = dialog.findChild<QComboBox*>("cmbReportCardsPerPage");
    auto* which = dialog.findChild<QComboBox*>("cmbReportCardEvents");
    which->setCurrentIndex(0);
    EXPECT_FALSE(dialog.findChild<QWidget*>("spnReportWorst")->isEnabled());
    perPage->setCurrentText("6");
    click(dialog, "btnReportConfigSave");
    click(dialog, "btnReportConfigDefaults");
    EXPECT_EQ(perPage->currentText(), "4");
    click(dialog, "btnReportConfigLoad");
    EXPECT_EQ(perPage->currentText(), "6");
    EXPECT_EQ(which->currentIndex(), 0);
    WriteFile(FFolder / "mine.ini", {'[', 'P', 'a', 'p', 'e', 'r', ']', '\n'});
    click(dialog, "btnReportConfigLoad");
    EXPECT_FALSE(dialog.findChild<QLabel*>("lblReportConfigProblem")->text().isEmpty());
    EXPECT_EQ(perPage->currentText(), "6") << "what was shown stays";
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  EXPECT_EQ(Find<TReportPanel>("ReportPanel")->Config(), TReportConfig());
}

TEST_F(ReportView, AKeptConfigurationThatCannotBeReadIsToldAndTheDefaultsCount) {
  FForm->close();
  WriteFile(FFolder / "settings" / "report.ini", {'?', '\n'});
  Start(Save("three.kshock", ThreeEvents()));
  EXPECT_THAT(FBoxes, ElementsAre(testing::AllOf(HasSubstr("configuration"), HasSubstr("report.ini"))));
  EXPECT_EQ(Find<TReportPanel>("ReportPanel")->Config(), TReportConfig());
}

TEST_F(ReportView, CardsAndReportFollowTheFilter) {
  Press("Ctrl+2");
  Find<QAction>("actFilterEdit")->trigger();
  Find<QLineEdit>("edtFilterAccelerationMaxFrom")->setText("6");
  Settle();
  Press("Ctrl+3");
  EXPECT_THAT(Find<QLabel>("lblEventCardsTotalIntensity")->text().toStdString(), testing::StartsWith("2 cards"));
  EXPECT_FALSE(Find("dxLayoutItemReportIsFilteredCover")->isHidden());
  QTest::keyClick(&Cards(), Qt::Key_End);
  EXPECT_EQ(Selected(), 1U) << "event 2 has 5 g";
}

TEST_F(ReportView, AnotherRecordingReplacesPagesAndCards) {
  Find<TPageView>("scrlReport")->SetFit(TPageView::TFit::Page);
  FForm->Flow().Open(
      Save("none.kshock", TTestRecording().Creator().StartTime(45000).MissionHeader(2, 2)).toStdString());
  Settle();
  Press("Ctrl+3");
  EXPECT_THAT(Find<QLabel>("lblEventCardsTotalIntensity")->text().toStdString(), testing::StartsWith("0 cards"));
  EXPECT_GT(Pages().PageCount(), 0);
  QTest::keyClick(&Cards(), Qt::Key_Down);
  EXPECT_EQ(Selected(), std::nullopt);
}

}  // namespace
