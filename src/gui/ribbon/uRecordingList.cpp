#include "gui/ribbon/uRecordingList.h"

#include <QDateTime>
#include <QDir>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QTextDocument>
#include <algorithm>

#include "base/uDateTime.h"
#include "gui/common/uBackgroundTask.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTitles.h"

namespace {

// As every date of the program.
QString DateText(qint64 msSince1970) {
  const QDateTime moment = QDateTime::fromMSecsSinceEpoch(msSince1970);
  const double day = static_cast<double>(QDate(1899, 12, 30).daysTo(moment.date()));
  return QtText(FormatDateTime(DateTimeMask(), day + moment.time().msecsSinceStartOfDay() / kMsPerDay));
}

}  // namespace

void TRecordingModel::SetEntries(std::vector<TFolderEntry> entries) {
  beginResetModel();
  FEntries = std::move(entries);
  endResetModel();
}

int TRecordingModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(FEntries.size());
}

int TRecordingModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant TRecordingModel::data(const QModelIndex& index, int role) const {
  const TFolderEntry& entry = Entry(index.row());
  if (role == Qt::ToolTipRole && index.column() == kName) return Qt::convertFromPlainText(entry.Name);
  if (role != Qt::DisplayRole) return {};
  switch (index.column()) {
    case kName:
      return entry.Name;
    case kSize:
      return QLocale::c().formattedDataSize(entry.Size);
    case kModified:
      return DateText(entry.Modified);
    default:
      return {};
  }
}

QVariant TRecordingModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const QString titles[] = {tr("Name"), tr("Size"), tr("Modified")};
  return section >= 0 && section < kColumns ? titles[section] : QString();
}

void TRecordingModel::sort(int column, Qt::SortOrder order) {
  emit layoutAboutToBeChanged();
  if (column == kSize) {
    std::stable_sort(FEntries.begin(), FEntries.end(), [](const auto& a, const auto& b) { return a.Size < b.Size; });
  } else if (column == kModified) {
    std::stable_sort(FEntries.begin(), FEntries.end(),
                     [](const auto& a, const auto& b) { return a.Modified < b.Modified; });
  } else {
    SortByName(FEntries);
  }
  if (order == Qt::DescendingOrder) std::reverse(FEntries.begin(), FEntries.end());
  emit layoutChanged();
}

TRecordingList::TRecordingList(const QString& objectName, const QString& accessibleName, QWidget* parent)
    : QTreeView(parent), FModel(new TRecordingModel(this)), FTask(new TBackgroundTask(this)) {
  setHeader(new TTitles(this));
  header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  setObjectName(objectName);
  setAccessibleName(accessibleName);
  setModel(FModel);
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setTextElideMode(Qt::ElideMiddle);
  setSortingEnabled(true);
  sortByColumn(TRecordingModel::kName, Qt::AscendingOrder);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(TRecordingModel::kName, QHeaderView::Stretch);
  header()->setSectionResizeMode(TRecordingModel::kSize, QHeaderView::Interactive);
  const QFontMetrics metrics = fontMetrics();
  header()->resizeSection(TRecordingModel::kSize, metrics.horizontalAdvance("1023.99 MiB") + 2 * metrics.height());
  header()->resizeSection(TRecordingModel::kModified,
                          metrics.horizontalAdvance("0000-00-00 00:00:00") + 3 * metrics.height());
  connect(this, &QTreeView::activated, this, [this](const QModelIndex& index) {
    emit FileChosen(QDir(FFolder).absoluteFilePath(FModel->Entry(index.row()).Name));
  });
}

void TRecordingList::ReadPath(const QString& path, const QStringList& patterns) {
  Clear();
  const auto answer = [this, path](TFolderListing listing) {
    FReading = false;
    const TPathKind kind = listing.Kind;
    emit PathRead(path, kind, kind == TPathKind::Folder ? Show(path, std::move(listing)) : QString());
  };
  FReading = FTask->Start([path, patterns, answer](const TBackgroundTask::TReport& report) {
    report([answer, listing = ReadFolder(path, patterns)] { answer(listing); });
  });
  if (!FReading) answer({TPathKind::Folder, {}, false, true});  // no thread: it cannot be read
}

QString TRecordingList::Show(const QString& folder, TFolderListing listing) {
  FFolder = folder;
  const QString shown = QDir::toNativeSeparators(folder);
  const auto count = listing.Entries.size();
  FModel->SetEntries(std::move(listing.Entries));
  FModel->sort(header()->sortIndicatorSection(), header()->sortIndicatorOrder());
  if (count > 0) setCurrentIndex(FModel->index(0, 0));
  if (!listing.Readable) return tr("The folder cannot be read: %1").arg(shown);
  if (!listing.Complete) return tr("Many files: only the first %1 recordings of %2 are listed.").arg(count).arg(shown);
  if (count == 0) return tr("There are no recordings in %1").arg(shown);
  return count == 1 ? tr("1 recording in %1").arg(shown) : tr("%1 recordings in %2").arg(count).arg(shown);
}

void TRecordingList::Clear() {
  FTask->Cancel();
  FReading = false;
  FModel->SetEntries({});
}

// The base leaves Enter to the desktop's idea of activating; here it always opens.
void TRecordingList::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentIndex().isValid()) {
    emit activated(currentIndex());
  } else {
    QTreeView::keyPressEvent(event);
  }
}
