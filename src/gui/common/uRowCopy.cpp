#include "gui/common/uRowCopy.h"

#include <QApplication>
#include <QClipboard>
#include <QTableView>
#include <algorithm>
#include <vector>

namespace {

constexpr int kMostCopiedRows = 200000;

}  // namespace

QString CopySelectedRows(const QTableView& grid) {
  const QAbstractItemModel& model = *grid.model();
  const int columns = model.columnCount();
  std::vector<int> rows;
  int selected = 0;
  for (const QItemSelectionRange& range : grid.selectionModel()->selection()) {
    selected += range.height();
    for (int row = range.top(); row <= range.bottom() && rows.size() < kMostCopiedRows; ++row) rows.push_back(row);
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
