// The grids of the window: where their rows lead, and how they are copied.
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>

#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/common/uGrid.h"
#include "gui/common/uTitles.h"
#include "tests/support/uChartHands.h"
#include "tests/support/uThreeEvents.h"
#include "tests/support/uWindowTest.h"

namespace {

class Grids : public TWindowTest {
 protected:
  Grids() { Start(TWindowTest::Save("three.kshock", ThreeEvents())); }
  template <class T>
  T& Find(const char* name) {
    return *TWindowTest::Find<T>(name);
  }
  [[nodiscard]] TTimeSpan Band() const { return FForm->Flow().Mission().Band; }
  static QRect RowRect(QTableView& grid, int row) { return grid.visualRect(grid.model()->index(row, 0)); }
};

TEST_F(Grids, ADoubleClickOnARowMovesTheBand) {
  auto& sensors = Find<TGrid>("DBGrid2");
  const double all = Band().end - Band().start;
  QTest::mouseClick(sensors.viewport(), Qt::LeftButton, {}, RowRect(sensors, 1).center());
  QTest::mouseDClick(sensors.viewport(), Qt::LeftButton, {}, RowRect(sensors, 1).center());
  EXPECT_NEAR(Band().end - Band().start, all / 50, kSame);
  EXPECT_NEAR((Band().start + Band().end) / 2, At(kMinute), kSame);
  EXPECT_EQ(Find<TTimeChart>("Chart1").Range().Times(), Band());
  EXPECT_EQ(Find<TTimeChart>("ChartAllSensors").Range().Times(), Band());

  emit Find<TNavigatorChart>("ChartNavigator").BandResizing({At(0), At(kMinute / 2)});
  auto& important = Find<TGrid>("dbgMostImportant");
  important.SetCurrentId(2);
  QTest::keyClick(&important, Qt::Key_Return);
  EXPECT_NEAR(Band().end - Band().start, kMinute / 2 / kDay, kSame);
  EXPECT_LE(Band().start, At(2 * kMinute));
  EXPECT_GE(Band().end, At(2 * kMinute));

  FForm->Flow().Reload();
  const TTimeSpan band = Band();
  Settle();
  EXPECT_EQ(Band(), band);
  EXPECT_EQ(Find<TTimeChart>("Chart1").Range().Times(), band);
}

TEST_F(Grids, EveryGridCopiesItsRowsByMenuAndByCtrlC) {
  const auto openMenu = [this](QTableView& grid, QContextMenuEvent::Reason reason) {
    const QPoint at = RowRect(grid, 0).center();
    QContextMenuEvent asked(reason, at, grid.viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(grid.viewport(), &asked);
    return grid.findChild<QMenu*>("mnuGrid");
  };
  QClipboard& clipboard = *QApplication::clipboard();
  for (const char* name :
       {"dbgMostImportant", "DBGrid2", "DBGrid8", "dbgShocks", "dbgFilteredShocks", "dbgShockValues"}) {
    auto& grid = Find<QTableView>(name);
    if (&grid == &Find<QTableView>("dbgShocks")) Press("Ctrl+2");
    if (&grid == &Find<QTableView>("dbgShockValues")) Press("Ctrl+T");
    grid.clearSelection();
    QMenu* menu = openMenu(grid, QContextMenuEvent::Keyboard);
    ASSERT_TRUE(menu && menu->isVisible()) << name;
    EXPECT_FALSE(menu->actions().constFirst()->isEnabled()) << name << ": no row is selected";
    menu->close();
    Settle();
    grid.selectRow(1);
    QTest::keySequence(&grid, QKeySequence::Copy);
    const QString rows = clipboard.text();
    EXPECT_EQ(rows.count('\n'), 2) << name << ": titles and a row";
    for (const int way : {0, 1, 2}) {
      clipboard.clear();
      if (way == 0) {
        QTest::keyClick(&grid, Qt::Key_F10, Qt::ShiftModifier);
      } else {
        openMenu(grid, way == 1 ? QContextMenuEvent::Keyboard : QContextMenuEvent::Mouse);
      }
      menu = grid.findChild<QMenu*>("mnuGrid");
      ASSERT_TRUE(menu && menu->isVisible()) << name << way;
      QTest::keyClick(menu, Qt::Key_Down);
      QTest::keyClick(menu, Qt::Key_Return);
      Settle();
      EXPECT_EQ(clipboard.text(), rows) << name << way;
    }
  }
}

TEST_F(Grids, TheMarkOfAscendingValuesPointsUp) {
  struct TOpenTitles : TTitles {
    using TTitles::initStyleOptionForIndex;
    using TTitles::TTitles;
  } titles(nullptr);
  QStandardItemModel model(1, 2);
  titles.setModel(&model);
  titles.setSortIndicatorShown(true);
  const auto mark = [&titles](Qt::SortOrder order, int column) {
    titles.setSortIndicator(0, order);
    QStyleOptionHeaderV2 option;
    titles.initStyleOptionForIndex(&option, column);
    return option.sortIndicator;
  };
  EXPECT_EQ(mark(Qt::AscendingOrder, 0), QStyleOptionHeader::SortUp);
  EXPECT_EQ(mark(Qt::DescendingOrder, 0), QStyleOptionHeader::SortDown);
  EXPECT_EQ(mark(Qt::AscendingOrder, 1), QStyleOptionHeader::None);
  for (const char* name : {"DBGrid2", "dbgShocks"}) {
    EXPECT_NE(dynamic_cast<TTitles*>(Find<QTableView>(name).horizontalHeader()), nullptr) << name;
  }
}

TEST_F(Grids, AHoveredReadingMarksItsTime) {
  auto& chart = Find<TSensorsChart>("ChartAllSensors");
  auto& grid = Find<TGrid>("DBGrid2");
  const QImage before = chart.grab().toImage();
  QSignalSpy replots(&chart, &QCustomPlot::afterReplot);
  emit grid.RowHovered(1);
  EXPECT_NE(chart.grab().toImage(), before);
  emit grid.RowHovered(std::nullopt);
  EXPECT_EQ(chart.grab().toImage(), before);
  EXPECT_EQ(replots.count(), 0);
}

}  // namespace
