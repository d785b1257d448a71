#include "gui/mainform/uStatisticsDialog.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "gui/charts/uTimeChart.h"
#include "gui/common/uRowCopy.h"

namespace {

constexpr int kRoom = 14;  // px, beside the text of a column
constexpr int kMostRows = 14;

QTableWidget* MakeTable(const TRangeTable& statistics, QWidget* parent) {
  auto* table =
      new QTableWidget(static_cast<int>(statistics.rows.size()), static_cast<int>(statistics.titles.size()), parent);
  table->setObjectName("tblStatistics");
  table->setHorizontalHeaderLabels(statistics.titles);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setTabKeyNavigation(false);
  table->verticalHeader()->hide();
  table->setShowGrid(false);
  table->setWordWrap(false);
  table->horizontalHeader()->setHighlightSections(false);
  for (int row = 0; row < table->rowCount(); ++row) {
    const QStringList& cells = statistics.rows[static_cast<std::size_t>(row)];
    for (int column = 0; column < table->columnCount(); ++column) {
      auto* cell = new QTableWidgetItem(cells[column]);
      // Names and units at the left, numbers at the right.
      const bool number = column > 0 && column + 1 < table->columnCount();
      const Qt::Alignment side = (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
      cell->setTextAlignment(side);
      table->setItem(row, column, cell);
      table->horizontalHeaderItem(column)->setTextAlignment(side);
    }
  }
  table->resizeColumnsToContents();
  int width = 2 * table->frameWidth();
  for (int column = 0; column < table->columnCount(); ++column) {
    table->setColumnWidth(column, table->columnWidth(column) + kRoom);
    width += table->columnWidth(column);
  }
  table->horizontalHeader()->setStretchLastSection(true);
  const int rows = std::clamp(table->rowCount(), 1, kMostRows);
  const int height = table->horizontalHeader()->sizeHint().height() +
                     rows * table->verticalHeader()->defaultSectionSize() + 2 * table->frameWidth();
  if (table->rowCount() > kMostRows) width += table->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  table->setMinimumSize(std::min(width, 900), height);
  table->selectAll();
  return table;
}

}  // namespace

void ShowStatistics(QWidget& window, const QString& chart, const TRangeTable& statistics) {
  QDialog dialog(&window);
  dialog.setObjectName("dlgStatistics");
  dialog.setWindowTitle(QObject::tr("Statistics of the visible range"));
  auto* range = new QLabel(QString("%1\n%2").arg(chart, statistics.span), &dialog);
  range->setObjectName("lblStatisticsRange");
  range->setTextFormat(Qt::PlainText);
  range->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* table = MakeTable(statistics, &dialog);
  table->setAccessibleName(dialog.windowTitle());
  table->setToolTip(
      QObject::tr("Samples that are numbers, each weighing the same; RMS is that of the values as they are"));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
  QPushButton* copy = buttons->addButton(QObject::tr("&Copy"), QDialogButtonBox::ActionRole);
  copy->setObjectName("btnStatisticsCopy");
  copy->setToolTip(QObject::tr("Copy the selected rows with their titles (Ctrl+C)"));
  copy->setAutoDefault(false);
  const auto copyRows = [table] { CopySelectedRows(*table); };
  QObject::connect(copy, &QPushButton::clicked, table, copyRows);
  auto* keys = new QShortcut(QKeySequence(QKeySequence::Copy), table);
  keys->setContext(Qt::WidgetShortcut);
  QObject::connect(keys, &QShortcut::activated, table, copyRows);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  buttons->button(QDialogButtonBox::Close)->setDefault(true);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(range);
  layout->addWidget(table);
  layout->addWidget(buttons);
  table->setFocus();
  dialog.exec();
}
