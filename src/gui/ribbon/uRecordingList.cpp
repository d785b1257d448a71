#include "gui/ribbon/uRecordingList.h"

#include <QDateTime>
#include <QDir>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <algorithm>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "gui/common/uBackgroundTask.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/common/uTitles.h"
#include "shell/uGoTo.h"

namespace {

using M = TRecordingModel;
constexpr qsizetype kMaxText = 200;  // characters of a title; a header may hold 64 KiB
constexpr int kPictureWidth = 2 * static_cast<int>(kPictureSteps) + 8;  // px

// As every date of the program.
QString DateText(qint64 msSince1970) {
  const QDateTime moment = QDateTime::fromMSecsSinceEpoch(msSince1970);
  const double day = static_cast<double>(QDate(1899, 12, 30).daysTo(moment.date()));
  return QtText(FormatDateTime(DateTimeMask(), day + moment.time().msecsSinceStartOfDay() / kMsPerDay));
}

QString BeginText(const std::string& iso) {
  const auto time = TypedTime(iso, 0);
  return time ? QtText(FormatDateTime(DateTimeMask(), *time)) : QString();
}

// What is listed, in the order in which it gives way where there is no room for all.
struct TColumnLook {
  TRecordingModel::TColumn column;
  const char* title;
  const char* widest;                                               // nothing: a picture
  QString (*text)(const TFleetSummary&) = nullptr;                  // of a recording that was read
  std::optional<double> (*number)(const TFleetSummary&) = nullptr;  // by which the table is sorted, else by text
};
constexpr TColumnLook kLooks[] = {
    {M::kName, "Name", "2026-03-04-a.kshock"},
    {M::kPeak, "Peak (g)", "Peak (g) 00",
     [](const TFleetSummary& of) { return of.peak ? QtText(MaskFloat("0.##", *of.peak)) : QString(); },
     [](const TFleetSummary& of) { return of.peak; }},
    {M::kEvents, "Events", "Events 00", [](const TFleetSummary& of) { return QString::number(of.events); },
     [](const TFleetSummary& of) { return std::optional(static_cast<double>(of.events)); }},
    {M::kPicture, "Peaks", nullptr, nullptr, [](const TFleetSummary& of) { return of.peak; }},
    {M::kState, "State", "cannot be read"},
    {M::kBegin, "Begin", "0000-00-00 00:00:00", [](const TFleetSummary& of) { return BeginText(of.begin); }},
    {M::kAbove, "Above alarm", "Above alarm 00",
     [](const TFleetSummary& of) { return of.above ? QString::number(*of.above) : QString("–"); },
     [](const TFleetSummary& of) { return of.above ? std::optional(static_cast<double>(*of.above)) : std::nullopt; }},
    {M::kTitle, "Title", "Transport to Rotterdam, crate 12",
     [](const TFleetSummary& of) { return ShownText(of.title, kMaxText); }},
    {M::kSize, "Size", "1023.99 MiB"},
    {M::kModified, "Modified", "0000-00-00 00:00:00"},
    {M::kOperator, "Operator", "Operator Name",
     [](const TFleetSummary& of) { return ShownText(of.operatorName, kMaxText); }}};

const TColumnLook& LookOf(int column) {
  return *std::ranges::find(kLooks, column, [](const TColumnLook& look) { return int{look.column}; });
}

int WidthOf(const TColumnLook& look, const QFontMetrics& metrics) {
  return look.widest == nullptr ? kPictureWidth : metrics.horizontalAdvance(look.widest) + metrics.height();
}

// From left to right.
constexpr TRecordingModel::TColumn kPlaces[] = {M::kName,  M::kTitle, M::kOperator, M::kBegin, M::kEvents,  M::kPeak,
                                                M::kAbove, M::kState, M::kPicture,  M::kSize,  M::kModified};

// The peaks over time, as high as they are beside those of the other recordings.
class TPicture final : public QStyledItemDelegate {
 public:
  TPicture(const TRecordingModel& model, QObject* parent) : QStyledItemDelegate(parent), FModel(model) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    const auto& summary = FModel.Entry(index.row()).Summary;
    if (!summary || summary->picture.empty() || FModel.MaxPeak() <= 0) return;
    const QRectF area = QRectF(option.rect).adjusted(4, 2, -4, -2);
    const double step = area.width() / static_cast<double>(summary->picture.size());
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    const QColor ink =
        selected ? option.palette.color(QPalette::HighlightedText) : QColor(TokensOf(option.palette).accent);
    painter->setPen(QPen(QColor(TokensOf(option.palette).hairline), 1));
    painter->drawLine(area.bottomLeft(), area.bottomRight());
    for (std::size_t i = 0; i < summary->picture.size(); ++i) {
      const double height = area.height() * std::min(1.0, double{summary->picture[i]} / FModel.MaxPeak());
      if (height <= 0) continue;
      const QRectF bar(area.left() + static_cast<double>(i) * step, area.bottom() - std::max(1.0, height),
                       std::max(1.0, step - 0.5), std::max(1.0, height));
      painter->fillRect(bar, ink);
    }
  }

 private:
  const TRecordingModel& FModel;
};

}  // namespace

void TRecordingModel::SetEntries(std::vector<TFolderEntry> entries) {
  beginResetModel();
  FEntries = std::move(entries);
  FMaxPeak = 0;
  SortEntries();
  CollectRows();
  endResetModel();
}

QStringList TRecordingModel::Names() const {
  QStringList names;
  for (const TFolderEntry& entry : FEntries) names << entry.Name;
  return names;
}

// A table that is sorted by what came gets its new order at once.
void TRecordingModel::SetSummaries(std::vector<TFleetSummary> summaries) {
  QHash<QString, TFleetSummary*> byName;
  for (TFleetSummary& summary : summaries) {
    const QString path = QDir::fromNativeSeparators(QtText(summary.path));
    byName.insert(path.mid(path.lastIndexOf('/') + 1), &summary);
    if (summary.peak) FMaxPeak = std::max(FMaxPeak, *summary.peak);
  }
  const auto take = [&] {
    for (TFolderEntry& entry : FEntries) {
      if (TFleetSummary* summary = byName.value(entry.Name)) entry.Summary = std::move(*summary);
    }
    if (FSorted != kName && FSorted != kSize && FSorted != kModified) SortEntries();
    CollectRows();
  };
  if (FFilter.isEmpty()) return Reorder(take);
  beginResetModel();
  take();
  endResetModel();
}

template <class TChange>
void TRecordingModel::Reorder(const TChange& change) {
  emit layoutAboutToBeChanged();
  const QModelIndexList before = persistentIndexList();
  QStringList names;
  for (const QModelIndex& index : before) names << Entry(index.row()).Name;
  change();
  QHash<QString, int> rows;
  for (int row = 0; row < rowCount() && !names.isEmpty(); ++row) rows.insert(Entry(row).Name, row);
  QModelIndexList after;
  for (qsizetype i = 0; i < before.size(); ++i) after << index(rows.value(names[i], -1), before[i].column());
  changePersistentIndexList(before, after);
  emit layoutChanged();
}

void TRecordingModel::SetFilter(const QString& text) {
  beginResetModel();
  FFilter = text.trimmed();
  CollectRows();
  endResetModel();
}

void TRecordingModel::SetReading(bool reading) {
  FReading = reading;
  if (!FRows.empty()) emit dataChanged(index(0, kState), index(rowCount() - 1, kState));
}

bool TRecordingModel::Passes(const TFolderEntry& entry) const {
  if (FFilter.isEmpty()) return true;
  const int columns[] = {kName, kTitle, kOperator, kState};
  return std::ranges::any_of(columns,
                             [&](int column) { return Text(entry, column).contains(FFilter, Qt::CaseInsensitive); });
}

void TRecordingModel::CollectRows() {
  FRows.clear();
  for (std::size_t i = 0; i < FEntries.size(); ++i) {
    if (Passes(FEntries[i])) FRows.push_back(i);
  }
}

int TRecordingModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(FRows.size());
}

int TRecordingModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QString TRecordingModel::StateOf(const TFolderEntry& entry) const {
  if (!entry.Summary) return FReading ? tr("…") : QString();
  if (entry.Summary->HasMission()) return entry.Summary->damaged ? tr("damaged") : tr("complete");
  return ShownText(entry.Summary->reason, kMaxText);
}

QString TRecordingModel::Text(const TFolderEntry& entry, int column) const {
  if (column == kName) return entry.Name;
  if (column == kSize) return QLocale::c().formattedDataSize(entry.Size);
  if (column == kModified) return DateText(entry.Modified);
  if (column == kState) return StateOf(entry);
  const auto text = LookOf(column).text;
  const bool isRead = entry.Summary && entry.Summary->HasMission();
  return isRead && text != nullptr ? text(*entry.Summary) : QString();
}

QVariant TRecordingModel::data(const QModelIndex& index, int role) const {
  const TFolderEntry& entry = Entry(index.row());
  const int column = index.column();
  if (role == Qt::DisplayRole) return Text(entry, column);
  if (role == Qt::ToolTipRole) {
    if (column == kAbove && entry.Summary && !entry.Summary->above) {
      return tr("The alarm is off, or its acceleration limits come from each file");
    }
    const bool isBroken = entry.Summary && !entry.Summary->reason.empty();
    const QString text =
        column == kState && isBroken ? ShownText(entry.Summary->reason, 2 * kMaxText) : Text(entry, column);
    return Qt::convertFromPlainText(text);
  }
  if (role == Qt::AccessibleTextRole && column == kPicture) return tr("Largest peak %1 g").arg(Text(entry, kPeak));
  if (role == Qt::TextAlignmentRole && (column == kEvents || column == kPeak || column == kAbove || column == kSize)) {
    return int{Qt::AlignRight | Qt::AlignVCenter};
  }
  return {};
}

QVariant TRecordingModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= kColumns) return {};
  if (role == Qt::DisplayRole) return tr(LookOf(section).title);
  if (role != Qt::ToolTipRole) return {};
  if (section == kAbove) return tr("Events outside the acceleration limits of the alarm panel");
  return section == kPicture ? tr("The largest peaks over the time of each recording, all to one scale") : QVariant();
}

// Recordings without a figure stand behind those with one, in either direction.
void TRecordingModel::SortEntries() {
  const bool descending = FOrder == Qt::DescendingOrder;
  if (FSorted == kName) {
    SortByName(FEntries);
    if (descending) std::reverse(FEntries.begin(), FEntries.end());
    return;
  }
  const auto by = [&](const auto& key) {
    std::stable_sort(FEntries.begin(), FEntries.end(), [&](const TFolderEntry& a, const TFolderEntry& b) {
      return descending ? key(b) < key(a) : key(a) < key(b);
    });
  };
  if (const auto number = LookOf(FSorted).number) {
    return by([&](const TFolderEntry& entry) {
      const bool isRead = entry.Summary && entry.Summary->HasMission();
      const std::optional<double> value = isRead ? number(*entry.Summary) : std::nullopt;
      return std::pair(descending == value.has_value(), value.value_or(0));
    });
  }
  switch (FSorted) {
    case kSize:
      return by([](const TFolderEntry& entry) { return entry.Size; });
    case kModified:
      return by([](const TFolderEntry& entry) { return entry.Modified; });
    case kBegin:
      return by([](const TFolderEntry& entry) { return entry.Summary ? entry.Summary->begin : std::string(); });
    default:
      by([this](const TFolderEntry& entry) { return Text(entry, FSorted).toCaseFolded(); });
  }
}

void TRecordingModel::sort(int column, Qt::SortOrder order) {
  Reorder([&] {
    FSorted = column;
    FOrder = order;
    SortEntries();
    CollectRows();
  });
}

TRecordingList::TRecordingList(const QString& objectName, const QString& accessibleName, QWidget* parent)
    : QTreeView(parent),
      FModel(new TRecordingModel(this)),
      FTask(new TBackgroundTask(this)),
      FSummaries(new TBackgroundTask(this)) {
  setHeader(new TTitles(this));
  header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  Named(this, objectName, accessibleName);
  setModel(FModel);
  setItemDelegateForColumn(TRecordingModel::kPicture, new TPicture(*FModel, this));
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setTextElideMode(Qt::ElideMiddle);
  setSortingEnabled(true);
  sortByColumn(TRecordingModel::kName, Qt::AscendingOrder);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(TRecordingModel::kName, QHeaderView::Stretch);
  for (int place = 0; place < TRecordingModel::kColumns; ++place) {
    header()->moveSection(header()->visualIndex(kPlaces[place]), place);
  }
  for (const TColumnLook& look : kLooks) {
    if (look.column != TRecordingModel::kName) header()->resizeSection(look.column, WidthOf(look, fontMetrics()));
  }
  FitColumns();
  connect(this, &QTreeView::clicked, this, &TRecordingList::Choose);
}

void TRecordingList::Choose(const QModelIndex& index) {
  if (index.isValid()) emit FileChosen(QDir(FFolder).absoluteFilePath(FModel->Entry(index.row()).Name));
}

// The columns that are worth most keep their place.
void TRecordingList::FitColumns() {
  int room = viewport()->width();
  for (const TColumnLook& look : kLooks) {
    const int width = WidthOf(look, fontMetrics());
    const bool ofSummary = look.column > TRecordingModel::kModified;
    const bool hidden =
        look.column != TRecordingModel::kName && (room < width || (ofSummary && FSource.kshock.empty()));
    if (!hidden) room -= width;
    if (header()->isSectionHidden(look.column) != hidden) header()->setSectionHidden(look.column, hidden);
  }
}

void TRecordingList::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  FitColumns();
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
  FitColumns();
  if (FModel->rowCount() > 0) setCurrentIndex(FModel->index(0, 0));
  if (count > 0) ReadSummaries();
  if (!listing.Readable) return tr("The folder cannot be read: %1").arg(shown);
  if (!listing.Complete) return tr("Many files: only the first %1 recordings of %2 are listed.").arg(count).arg(shown);
  if (count == 0) return tr("There are no recordings in %1").arg(shown);
  return count == 1 ? tr("1 recording in %1").arg(shown) : tr("%1 recordings in %2").arg(count).arg(shown);
}

void TRecordingList::SetSource(const TSummarySource& source) {
  const bool counts = FSource.limits != source.limits && !Empty();
  FSource = source;
  FitColumns();
  if (counts) ReadSummaries();
}

void TRecordingList::ReadSummaries() {
  if (FSource.kshock.empty()) return;
  StopSummaries();
  FStop = std::stop_source();
  TSummaryOrder order{FSource.kshock, {}, {}, FSource.limits, FStop.get_token()};
  const std::filesystem::path folder = PathFromUtf8(Utf8(FFolder));
  order.cache = SummaryCache(FSource.cacheFolder, folder);
  for (const QString& name : FModel->Names()) order.files.push_back(folder / PathFromUtf8(Utf8(name)));
  const int total = static_cast<int>(FModel->Count());
  FDone = 0;
  FSummarizing = true;
  FModel->SetReading(true);
  const auto take = [this, total](const std::vector<TFleetSummary>& summaries) {
    FModel->SetSummaries(summaries);
    FDone += static_cast<int>(summaries.size());
    emit Summarized(std::min(FDone, total), total, {});
  };
  const auto end = [this](const QString& problem) { EndSummaries(problem); };
  const bool started = FSummaries->Start([order, take, end](const TBackgroundTask::TReport& report) {
    try {
      Summarize(order, [&](std::vector<TFleetSummary> summaries, std::size_t left) {
        const bool goesOn = report([take, summaries = std::move(summaries)] { take(summaries); });
        return goesOn && (left > 0 || report([end] { end({}); }));
      });
    } catch (const std::exception& error) {
      report([end, why = QtText(ReasonOf(error))] { end(why); });
    }
  });
  if (!started) EndSummaries(tr("There is no thread for it."));
}

void TRecordingList::EndSummaries(const QString& problem) {
  FSummarizing = false;
  FModel->SetReading(false);
  const int total = static_cast<int>(FModel->Count());
  emit Summarized(problem.isEmpty() ? total : FDone, total, problem);
}

void TRecordingList::StopSummaries() {
  FSummaries->Cancel();
  FStop.request_stop();
}

void TRecordingList::CancelSummaries() {
  StopSummaries();
  EndSummaries(tr("cancelled"));
}

void TRecordingList::Clear() {
  FTask->Cancel();
  StopSummaries();
  FSummarizing = false;
  FReading = false;
  FModel->SetEntries({});
}

// Whoever opens a recording wants the processors for it; the rest is read when the list is seen again.
void TRecordingList::hideEvent(QHideEvent* event) {
  QTreeView::hideEvent(event);
  if (!event->spontaneous() && FSummarizing) StopSummaries();
}

void TRecordingList::showEvent(QShowEvent* event) {
  QTreeView::showEvent(event);
  if (!event->spontaneous() && FSummarizing) ReadSummaries();
}

// The base leaves Enter to the desktop's idea of activating; here it always opens.
void TRecordingList::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentIndex().isValid()) {
    Choose(currentIndex());
  } else {
    QTreeView::keyPressEvent(event);
  }
}
