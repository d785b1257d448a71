#include "gui/common/uRowGrid.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <algorithm>
#include <vector>

#include "gui/common/uIcons.h"
#include "gui/common/uTitles.h"

namespace {

constexpr int kRowPadding = 6;
constexpr int kMaxCopiedRows = 200000;

}  // namespace

QString CopySelectedRows(const QTableView& grid) {
  const QAbstractItemModel& model = *grid.model();
  const int columns = model.columnCount();
  std::vector<int> rows;
  int selected = 0;
  for (const QItemSelectionRange& range : grid.selectionModel()->selection()) {
    selected += range.height();
    for (int row = range.top(); row <= range.bottom() && rows.size() < kMaxCopiedRows; ++row) rows.push_back(row);
  }
  if (rows.empty()) return {};
  std::ranges::sort(rows);
  QString text;
  for (int column = 0; column < columns; ++column) {
    text += model.headerData(column, Qt::Horizontal).toString();
    text += column + 1 < columns ? '\t' : '\n';
  }
  for (const int row : rows) {
    for (int column = 0; column < columns; ++column) {
      text += model.index(row, column).data().toString();
      text += column + 1 < columns ? '\t' : '\n';
    }
  }
  QApplication::clipboard()->setText(text);
  const bool all = static_cast<std::size_t>(selected) == rows.size();
  if (selected == 1) return QObject::tr("1 row copied");
  return all ? QObject::tr("%1 rows copied").arg(selected)
             : QObject::tr("the first %1 of %2 rows copied").arg(rows.size()).arg(selected);
}

TRowGrid::TRowGrid(const QString& name, const QString& title, QWidget* parent)
    : QTableView(parent), FCopy(new QAction(Icon("edit-copy"), tr("&Copy"), this)), FMenu(new QMenu(this)) {
  setHorizontalHeader(new TTitles(this));
  horizontalHeader()->setSectionsClickable(true);
  setObjectName(name);
  setAccessibleName(title);
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setAlternatingRowColors(true);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  // Fixed heights: a view of a million rows need not measure them.
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setHighlightSections(false);
  SetRowFont(font());
  FCopy->setObjectName("actCopyRows");
  FCopy->setShortcut(QKeySequence::Copy);
  FCopy->setShortcutVisibleInContextMenu(true);
  connect(FCopy, &QAction::triggered, this, &TRowGrid::Copy);
  FMenu->setObjectName("mnuGrid");
  FMenu->setAccessibleName(title);
  FMenu->addAction(FCopy);
  // Disabled only in the menu: Ctrl+C without a selection just copies nothing.
  connect(FMenu, &QMenu::aboutToShow, this, [this] { FCopy->setEnabled(selectionModel()->hasSelection()); });
  connect(FMenu, &QMenu::aboutToHide, this, [this] { FCopy->setEnabled(true); });
}

void TRowGrid::SetRowFont(const QFont& cells) {
  setFont(cells);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
}

void TRowGrid::AddToMenu(const QList<QAction*>& actions) {
  FMenu->addSeparator();
  FMenu->addActions(actions);
}

void TRowGrid::SetMenu(const QMenu* menu) {
  AddToMenu(menu->actions());
  setStatusTip(tr("%1, export").arg(statusTip()));
}

void TRowGrid::Copy() {
  const QString told = CopySelectedRows(*this);
  if (!told.isEmpty()) Q_EMIT RowsCopied(told);
}

void TRowGrid::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    FCopy->trigger();
  } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
    // Not every desktop sends a context menu event for this key.
    FMenu->popup(MenuPlace());
  } else {
    QTableView::keyPressEvent(event);
  }
}

void TRowGrid::contextMenuEvent(QContextMenuEvent* event) {
  FMenu->popup(event->reason() == QContextMenuEvent::Mouse ? event->globalPos() : MenuPlace());
}

// At the current cell if it is visible, else in the middle.
QPoint TRowGrid::MenuPlace() const {
  const QRect cell = visualRect(currentIndex()) & viewport()->rect();
  return viewport()->mapToGlobal((cell.isEmpty() ? viewport()->rect() : cell).center());
}
