// The ribbon as a person uses it: narrow windows, hidden groups, tabs, keys.
#include "gui/ribbon/uRibbon.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <memory>

#include "gui/common/uIcons.h"
#include "gui/common/uTheme.h"
#include "gui/ribbon/uRibbonGroup.h"

namespace {

const QStringList kGroups = {"View", "Navigator", "Filtering", "Alarm", "Layout"};

// File, Home with five groups of three buttons each, Shock with one group of one.
class Ribbon : public testing::Test {
 protected:
  void SetUp() override {
    FRibbon = new TRibbon(&FWindow);
    FWindow.setMenuWidget(FRibbon);
    FRibbon->BeginUpdate();
    FRibbon->AddTab("tabFile", "&File");
    FRibbon->AddTab("tabHome", "&Home");
    FRibbon->AddTab("tabShock", "&Shock");
    for (const QString& title : kGroups) {
      TRibbonGroup* group = FRibbon->AddGroup("tabHome", "btngrp" + title, title);
      group->AddLarge(NewAction("Show the " + title), "btnLarge" + title);
      group->AddSmall(NewAction(title + " back"), "btnBack" + title);
      group->AddSmall(NewAction(title + " next"), "btnNext" + title);
    }
    FRibbon->AddGroup("tabShock", "btngrpShock", "Shock")->AddLarge(NewAction("Measure"), "btnMeasure");
    FRibbon->EndUpdate();
    Show(1600);
  }

  void Show(int width) {
    FWindow.resize(width, 400);
    FWindow.show();
    FWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&FWindow));
    Settle();
  }

  static void Settle() {
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
  }

  QAction* NewAction(const QString& text) {
    auto* action = new QAction(Icon("table"), text, &FWindow);
    FWindow.addAction(action);
    return action;
  }

  template <typename T>
  T* Find(const QString& name) {
    T* found = FRibbon->findChild<T*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
  }

  QRect OnRibbon(const QWidget* widget) { return {widget->mapTo(FRibbon, QPoint(0, 0)), widget->size()}; }

  void ClickTab(int index, bool twice = false) {
    auto* bar = Find<QTabBar>("tabsRibbon");
    const QPoint at = bar->tabRect(index).center();
    QTest::mouseClick(bar, Qt::LeftButton, {}, at);
    if (twice) QTest::mouseDClick(bar, Qt::LeftButton, {}, at);
  }

  QMainWindow FWindow;
  TRibbon* FRibbon = nullptr;
};

class RibbonOfWidth : public Ribbon, public testing::WithParamInterface<int> {};

TEST_P(RibbonOfWidth, EveryButtonIsVisibleOrInItsGroupsPopupAndWorks) {
  Show(GetParam());
  bool collapsed = false;
  for (const QString& title : kGroups) {
    auto* group = Find<TRibbonGroup>("btngrp" + title);
    EXPECT_TRUE(FRibbon->rect().contains(OnRibbon(group))) << title.toStdString();
    EXPECT_TRUE(group->Collapsed() || !collapsed) << "the rightmost collapse first";
    collapsed = group->Collapsed();
    for (const QString& name : {"btnLarge" + title, "btnBack" + title, "btnNext" + title}) {
      auto* button = Find<QToolButton>(name);
      if (collapsed) {
        auto* handle = Find<QToolButton>("btngrp" + title + "Handle");
        EXPECT_TRUE(group->rect().contains(handle->geometry()));
        QTest::keyClick(handle, Qt::Key_Return);
      } else {
        EXPECT_TRUE(OnRibbon(group).contains(OnRibbon(button)));
      }
      ASSERT_TRUE(button->isVisible()) << name.toStdString();
      QSignalSpy triggered(button->defaultAction(), &QAction::triggered);
      QTest::mouseClick(button, Qt::LeftButton);
      EXPECT_EQ(triggered.count(), 1);
      EXPECT_EQ(button->isVisible(), !collapsed) << "what is chosen closes the popup";
    }
  }
  EXPECT_EQ(collapsed, GetParam() < 1000);
}

INSTANTIATE_TEST_SUITE_P(Widths, RibbonOfWidth, testing::Values(1600, 900, 640, 500, 300));

TEST_F(Ribbon, GrowsBackAfterTheWindowWasNarrow) {
  const QRect before = OnRibbon(Find<QToolButton>("btnNextLayout"));
  Show(500);
  Show(1600);
  EXPECT_TRUE(Find<QToolButton>("btnNextLayout")->isVisible());
  EXPECT_EQ(OnRibbon(Find<QToolButton>("btnNextLayout")), before);
}

TEST_F(Ribbon, EscClosesThePopupOfACollapsedGroup) {
  Show(500);
  auto* handle = Find<QToolButton>("btngrpLayoutHandle");
  auto* popup = Find<QFrame>("btngrpLayoutPopup");
  for (const auto key : {Qt::Key_Down, Qt::Key_Space, Qt::Key_Enter}) {
    QTest::keyClick(handle, key);
    EXPECT_TRUE(popup->isVisible());
    QTest::keyClick(popup, Qt::Key_Escape);
    EXPECT_FALSE(popup->isVisible());
  }
}

TEST_F(Ribbon, TheRowsOfAGroupAreEqualAndAHiddenButtonLeavesNoGap) {
  auto* back = Find<QToolButton>("btnBackView");
  const auto* next = Find<QToolButton>("btnNextView");
  const QRect first = OnRibbon(back);
  EXPECT_EQ(OnRibbon(next).top(), first.top() + first.height());
  EXPECT_LE(first.height(), Find<QToolButton>("btnLargeView")->height() / 3 + 1);
  back->defaultAction()->setVisible(false);
  Settle();
  EXPECT_EQ(OnRibbon(next).topLeft(), first.topLeft());
  back->defaultAction()->setVisible(true);
  Settle();
  EXPECT_EQ(OnRibbon(back), first);
}

TEST_F(Ribbon, AGroupWithoutVisibleButtonsTakesNoRoom) {
  auto* next = Find<TRibbonGroup>("btngrpFiltering");
  const QRect place = OnRibbon(Find<TRibbonGroup>("btngrpNavigator"));
  Find<TRibbonGroup>("btngrpNavigator")->hide();
  Settle();
  EXPECT_EQ(OnRibbon(next).left(), place.left());
  Find<TRibbonGroup>("btngrpNavigator")->show();
  Settle();
  EXPECT_EQ(OnRibbon(next).left(), place.right() + 1);
  for (const char* name : {"btnLargeNavigator", "btnBackNavigator", "btnNextNavigator"}) {
    Find<QToolButton>(name)->hide();
  }
  Settle();
  EXPECT_EQ(OnRibbon(next).left(), place.left());
}

TEST_F(Ribbon, AnEmptyTabIsHiddenAndTheFirstRemainingOneBecomesCurrent) {
  auto* bar = Find<QTabBar>("tabsRibbon");
  FRibbon->SelectTab("tabShock");
  EXPECT_EQ(FRibbon->CurrentTab(), "tabShock");
  FRibbon->BeginUpdate();
  FRibbon->BeginUpdate();
  Find<QToolButton>("btnMeasure")->hide();
  FRibbon->EndUpdate();
  EXPECT_TRUE(bar->isTabVisible(2)) << "nothing changes before the outermost EndUpdate";
  FRibbon->EndUpdate();
  EXPECT_FALSE(bar->isTabVisible(2));
  EXPECT_EQ(FRibbon->CurrentTab(), "tabHome");
  FRibbon->SelectTab("tabShock");
  EXPECT_EQ(FRibbon->CurrentTab(), "tabHome");
  Find<QToolButton>("btnMeasure")->show();
  EXPECT_TRUE(bar->isTabVisible(2));
  EXPECT_EQ(FRibbon->CurrentTab(), "tabHome");
}

TEST_F(Ribbon, TheFileTabRequestsTheBackstageAndIsNeverCurrent) {
  QSignalSpy asked(FRibbon, &TRibbon::BackstageRequested);
  ClickTab(0);
  EXPECT_EQ(asked.count(), 1);
  QTest::keyClick(&FWindow, Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(asked.count(), 2);
  QTest::keyClick(Find<QTabBar>("tabsRibbon"), Qt::Key_Left);
  EXPECT_EQ(asked.count(), 2) << "the arrow keys only move among the pages";
  EXPECT_EQ(Find<QTabBar>("tabsRibbon")->currentIndex(), 1);
  EXPECT_TRUE(Find<QToolButton>("btnLargeView")->isVisible());
}

TEST_F(Ribbon, ADoubleClickFoldsAndAClickUnfolds) {
  const int full = FRibbon->height();
  ClickTab(1, true);
  Settle();
  EXPECT_TRUE(FRibbon->Folded());
  EXPECT_LT(FRibbon->height(), full / 2);
  ClickTab(2);
  Settle();
  EXPECT_FALSE(FRibbon->Folded());
  EXPECT_EQ(FRibbon->height(), full);
  EXPECT_EQ(FRibbon->CurrentTab(), "tabShock");
  QTest::keyClick(&FWindow, Qt::Key_F1, Qt::ControlModifier);
  EXPECT_TRUE(FRibbon->Folded());
  ClickTab(2, true);
  EXPECT_FALSE(FRibbon->Folded()) << "the second press of a double click must not fold again";
}

TEST_F(Ribbon, AButtonFollowsItsAction) {
  auto* button = Find<QToolButton>("btnMeasure");
  button->defaultAction()->setText("&Save image…");
  button->defaultAction()->setShortcut(QKeySequence("Ctrl+I"));
  EXPECT_EQ(button->accessibleName(), "Save image");
  EXPECT_EQ(button->toolTip(), "Save image (Ctrl+I)");
  const int narrow = button->sizeHint().width();
  button->defaultAction()->setText("Incomprehensibilities");
  EXPECT_GT(button->sizeHint().width(), narrow);
}

TEST_F(Ribbon, AToggleThatIsOnHasTheTintOfTheScheme) {
  auto* button = Find<QToolButton>("btnMeasure");
  FRibbon->SelectTab("tabShock");
  button->defaultAction()->setCheckable(true);
  button->defaultAction()->setChecked(true);
  for (const auto& [scheme, tokens] : {std::pair(TScheme::Dark, kDarkTokens), {TScheme::Light, kLightTokens}}) {
    ApplyScheme(*qApp, scheme);
    Settle();
    EXPECT_EQ(button->grab().toImage().pixelColor(button->width() / 2, 1), QColor(tokens.accentTint));
  }
}

}  // namespace
