#include "gui/common/uGrid.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "gui/common/AlarmCellDelegate.h"
#include "gui/common/uQtText.h"

namespace {

constexpr int kColumnPadding = 12;

}  // namespace

TGrid::TGrid(const QString& name, const QString& title, TIndexKeyOf indexKeyOf, QWidget* parent)
    : TRowGrid(name, title, parent), FModel(new DatasetTableModel(this)), FIndexKeyOf(std::move(indexKeyOf)) {
  setToolTip(
      tr("%1\nA double-click brings the navigator's band to the row, Ctrl+C copies the selected rows").arg(title));
  setStatusTip(FIndexKeyOf ? tr("click a title: sort · double-click a row: go to it · right click: copy")
                           : tr("double-click a row: go to it · right click: copy"));
  setModel(FModel);
  setItemDelegate(new AlarmCellDelegate(this));
  QFont cells = font();
  cells.setFamilies({"Tahoma", cells.family()});
  SetRowFont(cells);
  // The layout stays while the grid is hidden for an export.
  QSizePolicy policy = sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  setSizePolicy(policy);
  setMouseTracking(true);
  setVerticalScrollMode(ScrollPerItem);
  horizontalHeader()->setSectionsClickable(FIndexKeyOf != nullptr);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
    FClickedField = FModel->FieldKey(column);
    Q_EMIT TitleClicked(FClickedField);
    MarkSortedColumn();  // the header moves its indicator itself, even to a column that does not sort
  });
  connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int /*before*/, int width) {
    if (column >= FModel->columnCount()) return;
    const QString field = FModel->FieldKey(column);
    if (!FFitted.contains(field)) return;
    FFitted.insert(field, width);
    if (!FFitting) FSizedByUser.insert(field);
  });
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &TGrid::HoverAnew);
  connect(this, &QTableView::doubleClicked, this, &TGrid::Open);
}

void TGrid::Change(const std::function<void()>& change) {
  const QScopedValueRollback<bool> setting(FSetting, true);
  change();
  FitColumnsOnce();
  MarkSortedColumn();
}

void TGrid::SetDataset(const TDataset* table) {
  FHovered = -1;
  FClickedField.clear();
  Change([&] { FModel->SetDataset(table); });
}

void TGrid::SetNotes(const std::map<std::size_t, std::string>* notes) {
  Change([&] { FModel->SetNotes(notes); });
}

void TGrid::Refresh() {
  Change([&] { FModel->Refresh(); });
  HoverAnew();
}

void TGrid::RefreshRows(std::optional<std::size_t> id) {
  const bool inSight = currentIndex().isValid() && viewport()->rect().intersects(visualRect(currentIndex()));
  const int top = verticalScrollBar()->value();
  Refresh();
  SetCurrentId(id);
  if (!inSight) verticalScrollBar()->setValue(top);
}

void TGrid::SetCurrentId(std::optional<std::size_t> id) {
  const QScopedValueRollback<bool> setting(FSetting, true);
  const auto position = id ? FModel->PositionOf(*id) : std::nullopt;
  if (!position) {
    selectionModel()->clear();
    return;
  }
  // Scrolling under the pointer while the user drags would choose another row.
  if (FChoosing && *position == currentIndex().row()) return;
  const QModelIndex cell = FModel->index(*position, std::max(0, currentIndex().column()));
  selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  ScrollToRow(cell);
}

// Not sideways.
void TGrid::ScrollToRow(const QModelIndex& cell) {
  const int left = horizontalScrollBar()->value();
  scrollTo(cell);
  horizontalScrollBar()->setValue(left);
}

int TGrid::NeededWidth(int column) const {
  // Leave room for the sort indicator.
  const int title = horizontalHeader()->sectionSizeHint(column) + style()->pixelMetric(QStyle::PM_HeaderMarkSize);
  // The view measures only the first rows, and numbers are often longest in the last.
  const int last = sizeHintForIndex(FModel->index(FModel->rowCount() - 1, column)).width();
  return std::max({title, last, sizeHintForColumn(column)}) + kColumnPadding;
}

void TGrid::Reformat() {
  Refresh();
  for (int column = 0; FModel->rowCount() > 0 && column < FModel->columnCount(); ++column) {
    if (FSizedByUser.contains(FModel->FieldKey(column))) continue;
    const QScopedValueRollback<bool> fitting(FFitting, true);
    setColumnWidth(column, std::max(columnWidth(column), NeededWidth(column)));
  }
}

// Fits each column once; later widths are the user's. Without rows the titles fit for the time being.
void TGrid::FitColumnsOnce() {
  const QScopedValueRollback<bool> fitting(FFitting, true);
  for (int column = 0; column < FModel->columnCount(); ++column) {
    const QString field = FModel->FieldKey(column);
    if (FFitted.contains(field)) {
      setColumnWidth(column, FFitted.value(field));
      continue;
    }
    setColumnWidth(column, NeededWidth(column));
    if (FModel->rowCount() > 0) FFitted.insert(field, columnWidth(column));
  }
}

void TGrid::MarkSortedColumn() {
  const TDataset* table = FModel->Dataset();
  int sorted = -1;
  bool descending = false;
  for (int column = 0; table != nullptr && FIndexKeyOf && column < FModel->columnCount(); ++column) {
    const std::string field = Utf8(FModel->FieldKey(column));  // a key may refer to it
    const auto key = FIndexKeyOf(field);
    if (!key) continue;
    const bool isDescending = table->IndexName() == std::string(*key) + "Desc";
    if (!isDescending && table->IndexName() != std::string(*key) + "ASC") continue;
    // Two columns may share an index: the clicked one gets the indicator, else the last.
    if (sorted >= 0 && FModel->FieldKey(sorted) == FClickedField) continue;
    sorted = column;
    descending = isDescending;
  }
  horizontalHeader()->setSortIndicatorShown(sorted >= 0);
  if (sorted >= 0) {
    horizontalHeader()->setSortIndicator(sorted, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
  }
}

void TGrid::paintEvent(QPaintEvent* event) {
  TRowGrid::paintEvent(event);
  if (FModel->Dataset() == nullptr || FModel->rowCount() > 0) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, FPlaceholder);
}

// A scroll bar that appears, and less height, must not cover a current row that was in sight.
void TGrid::resizeEvent(QResizeEvent* event) {
  const QRect row = visualRect(currentIndex());
  const bool inSight = row.isValid() && row.top() >= 0 && row.top() < std::max(1, event->oldSize().height());
  TRowGrid::resizeEvent(event);
  if (inSight) ScrollToRow(currentIndex());
}

void TGrid::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return Open(currentIndex());
  TRowGrid::keyPressEvent(event);
}

void TGrid::Open(const QModelIndex& cell) {
  if (const auto id = FModel->IdAt(cell.row())) Q_EMIT RowOpened(*id);
}

void TGrid::mouseMoveEvent(QMouseEvent* event) {
  Hover(rowAt(event->position().toPoint().y()));
  TRowGrid::mouseMoveEvent(event);
}

void TGrid::leaveEvent(QEvent* event) {
  Hover(-1);
  TRowGrid::leaveEvent(event);
}

void TGrid::Hover(int row) {
  if (row == FHovered) return;
  FHovered = row;
  Q_EMIT RowHovered(FModel->IdAt(row));
}

// Another row stands under the pointer though it did not move.
void TGrid::HoverAnew() {
  const int row = underMouse() ? rowAt(viewport()->mapFromGlobal(QCursor::pos()).y()) : -1;
  if (row == -1 && FHovered == -1) return;
  FHovered = row;
  Q_EMIT RowHovered(FModel->IdAt(row));
}

// The base makes the first cell the current one where there is none; nobody chose it.
void TGrid::focusInEvent(QFocusEvent* event) {
  const QScopedValueRollback<bool> setting(FSetting, true);
  const bool hadCurrent = currentIndex().isValid();
  TRowGrid::focusInEvent(event);
  if (!hadCurrent) setCurrentIndex({});
}

void TGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  TRowGrid::currentChanged(current, previous);
  if (FSetting || !current.isValid() || current.row() == previous.row()) return;
  const QScopedValueRollback<bool> choosing(FChoosing, true);
  if (const auto id = FModel->IdAt(current.row())) Q_EMIT RowChosen(*id);
}
