#include "gui/ribbon/uRecentList.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPalette>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <algorithm>
#include <filesystem>
#include <system_error>
#include <tuple>

#include "base/uFiles.h"
#include "gui/common/uIcons.h"
#include "gui/common/uQtText.h"

namespace {

// The last part of a path, and what stands before it; the root is its own name.
QString NameOf(const QString& path) {
  const QString name = QFileInfo(path).fileName();
  return name.isEmpty() ? QDir::toNativeSeparators(path) : name;
}

QString FolderOf(const QString& path) {
  const QFileInfo file(path);
  return file.fileName().isEmpty() ? QString() : QDir::toNativeSeparators(file.path());
}

// A faint pin asks to be pressed.
QIcon PinIcon(bool pinned) {
  const QIcon pin = Icon("window-pin");
  if (pinned) return pin;
  QPixmap faint(pin.pixmap(QSize(32, 32)));
  faint.fill(Qt::transparent);
  QPainter painter(&faint);
  painter.setOpacity(0.3);
  pin.paint(&painter, QRect(0, 0, 32, 32));
  return faint;
}

// A sentence is cut at its end, unlike a path.
class TCutAtEnd final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->textElideMode = Qt::ElideRight;
  }
};

}  // namespace

void TRecentModel::SetEntries(const std::vector<TRecentEntry>& entries) {
  beginResetModel();
  FRows.clear();
  for (const TRecentEntry& entry : entries) FRows.push_back({QtText(entry.Path), entry.Pinned, QtText(entry.About)});
  endResetModel();
}

void TRecentModel::SetMissing(const QString& path, bool missing) {
  if (missing == FMissing.contains(path)) return;
  if (missing) {
    FMissing.insert(path);
  } else {
    FMissing.remove(path);
  }
  const int row = RowOf(path);
  if (row >= 0) emit dataChanged(index(row, 0), index(row, kColumns - 1));
}

int TRecentModel::RowOf(const QString& path) const {
  const auto found = std::ranges::find(FRows, path, &TRow::Path);
  return found == FRows.end() ? -1 : static_cast<int>(found - FRows.begin());
}

QStringList TRecentModel::Paths() const {
  QStringList paths;
  for (const TRow& row : FRows) paths << row.Path;
  return paths;
}

int TRecentModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(FRows.size());
}

int TRecentModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant TRecentModel::ToolTip(const TRow& row, int column) const {
  if (column == kPin) return row.Pinned ? tr("Unpin (P)") : tr("Keep in the list (P)");
  if (column == kRemove) return tr("Remove from the list (Del)");
  if (column == kAbout) return Qt::convertFromPlainText(row.About);
  const QString path = QDir::toNativeSeparators(row.Path);
  return Qt::convertFromPlainText(FMissing.contains(row.Path) ? tr("%1\nIt is not there.").arg(path) : path);
}

QVariant TRecentModel::data(const QModelIndex& index, int role) const {
  const TRow& row = FRows[static_cast<size_t>(index.row())];
  const bool isMissing = FMissing.contains(row.Path);
  switch (role) {
    case Qt::DisplayRole:
      if (index.column() == kName) return isMissing ? tr("%1 (missing)").arg(NameOf(row.Path)) : NameOf(row.Path);
      if (index.column() == kAbout) return row.About;
      return index.column() == kWhere ? FolderOf(row.Path) : QVariant();
    case Qt::DecorationRole:
      if (index.column() == kPin) return PinIcon(row.Pinned);
      return index.column() == kRemove ? QVariant(Icon("list-remove")) : QVariant();
    case Qt::AccessibleTextRole:
      if (index.column() == kPin) return row.Pinned ? tr("Pinned") : tr("Not pinned");
      return index.column() == kRemove ? tr("Remove") : data(index, Qt::DisplayRole);
    case Qt::ForegroundRole:
      return isMissing || index.column() == kWhere ? QGuiApplication::palette().color(QPalette::PlaceholderText)
                                                   : QVariant();
    case Qt::ToolTipRole:
      return ToolTip(row, index.column());
    default:
      return {};
  }
}

QVariant TRecentModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const QString titles[] = {QString(), tr("Name"), tr("Contents"), tr("Folder"), QString()};
  return section >= 0 && section < kColumns ? titles[section] : QString();
}

TRecentListView::TRecentListView(const QString& objectName, const QString& accessibleName, QWidget* parent)
    : QTreeView(parent), FModel(new TRecentModel(this)) {
  setObjectName(objectName);
  setAccessibleName(accessibleName);
  setModel(FModel);
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setTextElideMode(Qt::ElideMiddle);
  setItemDelegateForColumn(TRecentModel::kAbout, new TCutAtEnd(this));
  header()->setStretchLastSection(false);
  header()->setMinimumSectionSize(1);
  header()->setSectionsClickable(false);
  for (const int column : {TRecentModel::kPin, TRecentModel::kRemove}) {
    header()->setSectionResizeMode(column, QHeaderView::Fixed);
  }
  header()->setSectionResizeMode(TRecentModel::kWhere, QHeaderView::Stretch);
  FitColumns();
  connect(this, &QTreeView::clicked, this, &TRecentListView::Act);
}

void TRecentListView::CheckPaths() {
  // Without a thread nothing is known of the paths.
  std::ignore = FTask.Start([this, paths = FModel->Paths()](const TBackgroundTask::TReport& report) {
    for (const QString& path : paths) {
      std::error_code unknown;
      const bool exists = std::filesystem::exists(PathFromUtf8(Utf8(path)), unknown);
      if (!report([this, path, exists] { FModel->SetMissing(path, !exists); })) return;
    }
  });
}

void TRecentListView::FitColumns() {
  const int edge = std::max(22, fontMetrics().height());
  setIconSize({edge * 3 / 4, edge * 3 / 4});
  for (const int column : {TRecentModel::kPin, TRecentModel::kRemove}) header()->resizeSection(column, edge * 3 / 2);
  // What is not needed goes to the folder, the last to be cut is what the recording holds.
  const int letter = fontMetrics().averageCharWidth();
  const auto needs = [this, letter](int column) { return std::max(sizeHintForColumn(column), 10 * letter) + letter; };
  const int name = std::min(needs(TRecentModel::kName), 28 * letter);
  const int room = viewport()->width() - 3 * edge - name - 10 * letter;
  header()->resizeSection(TRecentModel::kName, name);
  header()->resizeSection(TRecentModel::kAbout, std::clamp(room, 10 * letter, needs(TRecentModel::kAbout)));
}

void TRecentListView::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  FitColumns();
}

void TRecentListView::ShowEntries(const std::vector<TRecentEntry>& entries) {
  const QString current = currentIndex().isValid() ? FModel->Path(currentIndex().row()) : QString();
  const int before = currentIndex().row();
  FModel->SetEntries(entries);
  // Nothing is known of folders.
  header()->setSectionHidden(TRecentModel::kAbout, std::ranges::all_of(entries, [](const TRecentEntry& entry) {
                               return entry.About.empty();
                             }));
  const int listed = FModel->RowOf(current);
  const int row = std::min(listed >= 0 ? listed : before, FModel->rowCount() - 1);
  if (row >= 0) setCurrentIndex(FModel->index(row, TRecentModel::kName));
  FitColumns();
  if (isVisible()) CheckPaths();
}

void TRecentListView::Act(const QModelIndex& index) {
  const QString path = FModel->Path(index.row());
  if (index.column() == TRecentModel::kPin) {
    emit PinAsked(path, !FModel->Pinned(index.row()));
  } else if (index.column() == TRecentModel::kRemove) {
    emit RemoveAsked(path);
  } else {
    emit Chosen(path);
  }
}

void TRecentListView::keyPressEvent(QKeyEvent* event) {
  const QModelIndex current = currentIndex();
  const auto act = [&](int column) {
    if (current.isValid()) Act(current.siblingAtColumn(column));
  };
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return act(TRecentModel::kName);
    case Qt::Key_P:
      return act(TRecentModel::kPin);
    case Qt::Key_Delete:
      return act(TRecentModel::kRemove);
    default:
      QTreeView::keyPressEvent(event);
  }
}

void TRecentListView::showEvent(QShowEvent* event) {
  QTreeView::showEvent(event);
  if (!event->spontaneous()) CheckPaths();
}

void TRecentListView::changeEvent(QEvent* event) {
  QTreeView::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitColumns();
}
