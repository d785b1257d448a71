#include "gui/shock/uShockValuesGrid.h"

#include <QHeaderView>
#include <algorithm>
#include <limits>
#include <utility>

#include "gui/charts/uSelectedEventChart.h"
#include "gui/common/uQtText.h"

namespace {

constexpr int kColumns = 1 + static_cast<int>(kSeriesCount);  // the time, then the series
constexpr int kColumnPadding = 12;
constexpr auto kUsualText = "-00.000";  // the rows in sight may be of the quiet before the shock

}  // namespace

void TShockValuesModel::SetSamples(std::span<const TEventValue> samples, double startMs) {
  beginResetModel();
  FSamples = samples;
  FStart = startMs;
  endResetModel();
}

void TShockValuesModel::SetMasks(TValueMasks masks) {
  FMasks = std::move(masks);
  if (rowCount() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
}

int TShockValuesModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return static_cast<int>(std::min<std::size_t>(FSamples.size(), std::numeric_limits<int>::max()));
}

int TShockValuesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant TShockValuesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  const TEventValue& sample = FSamples[static_cast<std::size_t>(index.row())];
  if (index.column() == 0) return QtText(MaskFloat(FMasks.time, sample.time - FStart));
  const auto series = static_cast<TSeries>(index.column() - 1);
  return QtText(MaskFloat(FMasks.acceleration, double{ValueOf(sample, series)}));
}

QVariant TShockValuesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical || section < 0 || section >= kColumns) return {};
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  const QString titles[kColumns] = {tr("Time (ms)"), tr("X (g)"), tr("Y (g)"), tr("Z (g)"), tr("Total (g)")};
  return titles[section];
}

TShockValuesGrid::TShockValuesGrid(QWidget* parent)
    : TRowGrid("dbgShockValues", tr("Values of the selected event"), parent), FModel(new TShockValuesModel(this)) {
  setToolTip(tr("The samples of the selected event\nCtrl+C copies the selected rows"));
  setStatusTip(tr("right click: copy"));
  setModel(FModel);
  horizontalHeader()->setSectionsClickable(false);
}

void TShockValuesGrid::SetSamples(std::span<const TEventValue> samples, double startMs) {
  FModel->SetSamples(samples, startMs);
  if (isVisible()) FitColumnsOnce();
}

void TShockValuesGrid::MarkSample(std::size_t sample) {
  if (std::cmp_greater_equal(sample, FModel->rowCount())) return;
  const QModelIndex cell = FModel->index(static_cast<int>(sample), std::max(0, currentIndex().column()));
  selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(cell);
}

// Fits each column once; later widths are the user's.
void TShockValuesGrid::FitColumnsOnce() {
  if (FModel->rowCount() == 0 || std::exchange(FFitted, true)) return;
  const int number = fontMetrics().horizontalAdvance(kUsualText) + kColumnPadding;
  for (int column = 0; column < kColumns; ++column) {
    setColumnWidth(column, std::max({horizontalHeader()->sectionSizeHint(column), sizeHintForColumn(column), number}));
  }
}

void TShockValuesGrid::showEvent(QShowEvent* event) {
  TRowGrid::showEvent(event);
  FitColumnsOnce();
}
