// Keys: the list of all keys, the key tips of the ribbon, and going to an event or a time.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>

#include <QAction>
#include <QDesktopServices>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <functional>

#include "gui/ribbon/uRibbon.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

class Keys : public TWindowTest {
 protected:
  // The keys in sight, those that do nothing now in brackets.
  static std::vector<std::string> Listed(const QDialog& dialog) {
    std::vector<std::string> keys;
    for (const QLabel* label : dialog.findChildren<QLabel*>("lblKeys")) {
      const std::string text = label->text().toStdString();
      if (label->isVisible()) keys.push_back(label->isEnabled() ? text : "(" + text + ")");
    }
    return keys;
  }
  std::string Tips() {
    std::string keys;
    for (const QLabel* label : FForm->findChildren<QLabel*>("lblKeyTip")) keys += label->text().toStdString();
    return keys;
  }

  QString FThree = Save("three.kshock", ThreeEvents());
};

TEST_F(Keys, TheListSaysWhichKeysDoNothingNowAndCanBeSearched) {
  Start();
  InDialog("F2", [](QDialog& dialog) { EXPECT_THAT(Listed(dialog), Contains("(Ctrl+1)")) << "no recording is shown"; });
  FForm->Flow().Open(FThree.toStdString());
  Settle();
  InDialog("F2", [this](QDialog& dialog) {
    const auto all = Listed(dialog);
    EXPECT_THAT(all, Contains("Ctrl+1"));
    EXPECT_THAT(all, Contains("(H)")) << "of the shock view";
    std::size_t shortcuts = 0;
    for (const QAction* action : FForm->actions()) shortcuts += action->shortcut().isEmpty() ? 0 : 1;
    EXPECT_GT(all.size(), shortcuts) << "those of charts and tables, too";
    auto* search = dialog.findChild<QLineEdit*>("edtKeysSearch");
    QTest::keyClicks(search, "FILTER edit");
    EXPECT_THAT(Listed(dialog), ElementsAre("Ctrl+F"));
    search->clear();
    EXPECT_EQ(Listed(dialog), all);
  });
}

TEST_F(Keys, AltShowsTipsOnTabsThenOnButtons) {
  Start(FThree);
  const auto alt = [this] { QTest::keyClick(FForm.get(), Qt::Key_Alt); };
  alt();
  EXPECT_THAT(Tips(), StartsWith("FHE")) << "File, Home, Events";
  alt();
  EXPECT_EQ(Tips(), "");
  alt();
  QTest::keyClick(FForm.get(), Qt::Key_E);
  Settle();
  EXPECT_EQ(Find<TRibbon>("Ribbon")->CurrentTab(), "tabEvents");
  EXPECT_THAT(Tips(), Not(IsEmpty()));
  QTest::keyClick(FForm.get(), Qt::Key_Escape);
  EXPECT_THAT(Tips(), StartsWith("FHE"));
  QTest::keyClick(FForm.get(), Qt::Key_H);
  Settle();
  // "Shock events" is the third view; its letter is clicked.
  const auto labels = FForm->findChildren<QLabel*>("lblKeyTip");
  const QWidget* button = Find("dxBarLargeShockView");
  const QRect place(button->mapTo(FForm.get(), QPoint(0, 0)), button->size());
  const auto tip =
      std::ranges::find_if(labels, [&](const QLabel* label) { return place.contains(label->geometry().center()); });
  ASSERT_NE(tip, labels.end());
  QTest::keyClicks(FForm.get(), (*tip)->text());
  Settle();
  EXPECT_EQ(FForm->Flow().View(), TView::Shock);
  EXPECT_EQ(Tips(), "");
}

TEST_F(Keys, AltWithAnotherKeyOrUnderTheFilePageShowsNoTips) {
  Start(FThree);
  QTest::keyPress(FForm.get(), Qt::Key_Alt);
  QTest::keyClick(FForm.get(), Qt::Key_Left, Qt::AltModifier);
  QTest::keyRelease(FForm.get(), Qt::Key_Alt);
  EXPECT_EQ(Tips(), "");
  Press("Alt+F");
  QTest::keyClick(FForm.get(), Qt::Key_Alt);
  EXPECT_EQ(Tips(), "");
}

TEST_F(Keys, F1OpensTheDocumentThatBelongsToWhatIsInFront) {
  QTextBrowser desktop;
  QDesktopServices::setUrlHandler("file", &desktop, "setSource");
  const auto opened = [&](const char* view) {
    if (*view != '\0') Press(view);
    Press("F1");
    return desktop.source().fileName().toStdString();
  };
  Start();
  EXPECT_EQ(opened(""), "");
  EXPECT_THAT(Find<QLabel>("lblNotice")->text().toStdString(), testing::HasSubstr("1-Quick-Start.pdf"));
  std::filesystem::create_directories(FFolder / "doc_shock");
  for (const char* name :
       {"1-Quick-Start", "2-Charts-and-Navigator", "3-Metrics-and-Formulas", "4-Exports-and-Report"}) {
    Save(fmt::format("doc_shock/{}.pdf", name).c_str(), TBytes{'x'});
  }
  EXPECT_EQ(opened(""), "1-Quick-Start.pdf");
  FForm->Flow().Open(FThree.toStdString());
  Settle();
  EXPECT_EQ(opened("Ctrl+2"), "2-Charts-and-Navigator.pdf");
  EXPECT_EQ(opened("S"), "3-Metrics-and-Formulas.pdf");
  EXPECT_EQ(opened("Ctrl+3"), "4-Exports-and-Report.pdf");
  EXPECT_EQ(opened("Ctrl+1"), "1-Quick-Start.pdf");
  Find("ChartNavigator")->setFocus();
  EXPECT_EQ(opened(""), "2-Charts-and-Navigator.pdf");
  QDesktopServices::unsetUrlHandler("file");
}

TEST_F(Keys, TheManualNamesEachOfThem) {
  Start();
  QFile file(MANUAL "/2-Charts-and-Navigator.md");
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString manual = file.readAll();
  const QString list = manual.mid(manual.indexOf("## All keys"));
  for (const QAction* action : FForm->actions()) {
    const QString keys = action->shortcut().toString();
    if (keys.isEmpty()) continue;
    EXPECT_TRUE(QRegularExpression("[ |]" + QRegularExpression::escape(keys) + "[ ,]").match(list).hasMatch())
        << keys.toStdString();
  }
}

TEST_F(Keys, GoToSelectsAnEventOrSaysWhyNot) {
  Start(FThree);
  InDialog("Ctrl+G", [this](QDialog& dialog) {
    auto* edit = dialog.findChild<QLineEdit*>("edtGoTo");
    QTest::keyClicks(edit, "7");
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.findChild<QLabel*>("lblGoToProblem")->text(), "There is no event 7; the IDs go from 0 to 2.");
    edit->clear();
    QTest::keyClicks(edit, "2");
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(FForm->Flow().Mission().SelectedEvent, 2U);
}

}  // namespace
