#include "gui/mainform/uStatisticsDialog.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <algorithm>

#include "gui/charts/uTimeChart.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uRowGrid.h"

namespace {

constexpr int kRoom = 14;  // px, beside the text of a column
constexpr int kRowPadding = 6;
constexpr int kMaxRows = 14;
constexpr int kTitleButtons = 240;  // px of a title bar, for its buttons and a wider font

class TStatisticsTable final : public QTableWidget {
 public:
  using QTableWidget::QTableWidget;
  void Copy() {
    if (!selectionModel()->hasSelection()) selectAll();
    CopySelectedRows(*this);
  }

 protected:
  // The base class copies one cell.
  void keyPressEvent(QKeyEvent* event) override {
    if (!event->matches(QKeySequence::Copy)) return QTableWidget::keyPressEvent(event);
    Copy();
    event->accept();
  }
};

TStatisticsTable* MakeTable(const TRangeTable& statistics, QWidget* parent) {
  auto* table = new TStatisticsTable(static_cast<int>(statistics.rows.size()),
                                     static_cast<int>(statistics.titles.size()), parent);
  table->setObjectName("tblStatistics");
  table->setHorizontalHeaderLabels(statistics.titles);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setTabKeyNavigation(false);
  table->verticalHeader()->hide();
  table->setShowGrid(false);
  table->setWordWrap(false);
  table->horizontalHeader()->setHighlightSections(false);
  table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + kRowPadding);
  for (int row = 0; row < table->rowCount(); ++row) {
    const QStringList& cells = statistics.rows[static_cast<std::size_t>(row)];
    for (int column = 0; column < table->columnCount(); ++column) {
      auto* cell = new QTableWidgetItem(cells[column]);
      const Qt::Alignment side = (column < statistics.words ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter;
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
  const int rows = std::clamp(table->rowCount(), 1, kMaxRows);
  const int height = table->horizontalHeader()->sizeHint().height() +
                     rows * table->verticalHeader()->defaultSectionSize() + 2 * table->frameWidth();
  if (table->rowCount() > kMaxRows) width += table->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  table->setMinimumSize(std::min(width, 900), height);
  return table;
}

}  // namespace

void ShowStatistics(QWidget& window, const TTimeChart& chart) {
  const TRangeTable statistics = chart.VisibleStatistics();
  if (statistics.rows.empty()) return;
  QDialog dialog(&window);
  dialog.setObjectName("dlgStatistics");
  dialog.setWindowTitle(QObject::tr("Statistics of the visible range"));
  auto* range = Named(new QLabel(&dialog), "lblStatisticsRange");
  range->setText(QString("%1\n%2").arg(chart.accessibleName(), statistics.span));
  range->setTextFormat(Qt::PlainText);
  range->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* table = MakeTable(statistics, &dialog);
  table->setAccessibleName(dialog.windowTitle());
  table->setToolTip(
      QObject::tr("Samples that are numbers, each weighing the same; RMS is that of the values as they are"));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
  QPushButton* copy = buttons->addButton(QObject::tr("&Copy"), QDialogButtonBox::ActionRole);
  Named(copy, "btnStatisticsCopy", {}, QObject::tr("Copy the selected rows, or all, with their titles (Ctrl+C)"));
  copy->setAutoDefault(false);
  QObject::connect(copy, &QPushButton::clicked, table, [table] { table->Copy(); });
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  buttons->button(QDialogButtonBox::Close)->setDefault(true);
  MakeColumn(&dialog, {range, table, buttons});
  table->setFocus();
  // Wide enough for its title, too.
  const int title = dialog.fontMetrics().horizontalAdvance(dialog.windowTitle()) + kTitleButtons;
  dialog.resize(dialog.minimumSizeHint().expandedTo({title, 0}));
  dialog.exec();
}
