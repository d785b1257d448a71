#include "gui/shock/uShockValuesGrid.h"

#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>
#include <limits>
#include <utility>

#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"

namespace {

constexpr int kColumns = 1 + static_cast<int>(kSeriesCount);  // the time, then the series
constexpr int kColumnPadding = 14;                            // px, of a title, with rounding
constexpr auto kTime = "Time (ms)";
constexpr auto kFrequency = "Frequency (Hz)";
constexpr auto kUsualText = "-00.0000";  // the rows in sight may be of the quiet before the shock
constexpr auto kUsualLine = "0.01234";
constexpr int kDigits = 4;  // of a line: lines differ by many powers of ten

}  // namespace

void TShockValuesModel::Set(std::span<const TEventValue> samples, double startMs, std::span<const TSpectrumLine> lines,
                            const QString& unit) {
  beginResetModel();
  FSamples = samples;
  FStart = startMs;
  FLines = lines;
  FUnit = unit;
  endResetModel();
}

void TShockValuesModel::SetDisplay(const TDisplaySettings& display) {
  FTimeMask = display.FormatOf(TQuantity::Time);
  FAccelerationMask = display.FormatOf(TQuantity::Acceleration);
  if (rowCount() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
}

int TShockValuesModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return static_cast<int>(std::min<std::size_t>(FSamples.size() + FLines.size(), std::numeric_limits<int>::max()));
}

int TShockValuesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant TShockValuesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  const auto row = static_cast<std::size_t>(index.row());
  const auto series = static_cast<TSeries>(index.column() - 1);
  if (!FLines.empty()) {
    const TSpectrumLine& line = FLines[row];
    return index.column() == 0 ? Digits(line.hertz) : Digits(ValueOf(line, series), kDigits);
  }
  const TEventValue& sample = FSamples[row];
  if (index.column() == 0) return QtText(MaskFloat(FTimeMask, sample.time - FStart));
  return QtText(MaskFloat(FAccelerationMask, double{ValueOf(sample, series)}));
}

QVariant TShockValuesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical || section < 0 || section >= kColumns) return {};
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  if (section == 0) return tr(FUnit.isEmpty() ? kTime : kFrequency);
  const QString name = NameOf(static_cast<TSeries>(section - 1));
  return QString("%1 (%2)").arg(name, FUnit.isEmpty() ? tr("g") : FUnit);
}

TShockValuesGrid::TShockValuesGrid(QWidget* parent)
    : TRowGrid("dbgShockValues", tr("Values of the selected event"), parent), FModel(new TShockValuesModel(this)) {
  setToolTip(tr("The samples of the selected event, or the lines of its spectrum\nCtrl+C copies the selected rows"));
  setStatusTip(tr("right click: copy"));
  setModel(FModel);
  horizontalHeader()->setSectionsClickable(false);
}

void TShockValuesGrid::SetSamples(std::span<const TEventValue> samples, double startMs) {
  FModel->Set(samples, startMs, {}, {});
  SwitchTo(false);
}

void TShockValuesGrid::SetLines(std::span<const TSpectrumLine> lines, const QString& unit) {
  FModel->Set({}, 0, lines, unit);
  SwitchTo(true);
}

void TShockValuesGrid::SwitchTo(bool lines) {
  if (std::exchange(FShowsLines, lines) != lines) {
    const QByteArray others = std::exchange(FOtherColumns, horizontalHeader()->saveState());
    if (!others.isEmpty()) horizontalHeader()->restoreState(others);
    std::swap(FFitted, FOtherFitted);
  }
  if (isVisible()) FitColumnsOnce();
}

void TShockValuesGrid::MarkRow(std::size_t row) {
  if (std::cmp_greater_equal(row, FModel->rowCount())) return;
  const QModelIndex cell = FModel->index(static_cast<int>(row), std::max(0, currentIndex().column()));
  selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(cell);
}

int TShockValuesGrid::UsualWidth(int column, bool lines) const {
  QFont bold = horizontalHeader()->font();
  bold.setWeight(QFont::DemiBold);  // the style's, which neither the font nor the header's own measure knows
  const QString title = column == 0 ? tr(lines ? kFrequency : kTime)
                                    : FModel->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  return kColumnPadding + std::max(QFontMetrics(bold).horizontalAdvance(title),
                                   fontMetrics().horizontalAdvance(lines ? kUsualLine : kUsualText));
}

int TShockValuesGrid::FittingWidth() const {
  const auto widthOf = [this](bool lines) {
    int width = 0;
    for (int column = 0; column < kColumns; ++column) width += UsualWidth(column, lines);
    return width;
  };
  constexpr int kRounding = 2;  // px, of the widths of titles
  const int around = 2 * frameWidth() + verticalScrollBar()->sizeHint().width() + kRounding;
  return around + std::max(widthOf(false), widthOf(true));
}

// Fits each column once; later widths are the user's.
void TShockValuesGrid::FitColumnsOnce() {
  if (FModel->rowCount() == 0 || std::exchange(FFitted, true)) return;
  for (int column = 0; column < kColumns; ++column) {
    setColumnWidth(column, std::max(UsualWidth(column, FShowsLines), sizeHintForColumn(column)));
  }
}

void TShockValuesGrid::showEvent(QShowEvent* event) {
  TRowGrid::showEvent(event);
  FitColumnsOnce();
}
