#include "gui/ribbon/uRecentList.h"

#include <QDir>
#include <QFileInfo>
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
#include "gui/common/uBoxes.h"
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

// What an item keeps besides what it shows.
constexpr int kPathRole = Qt::UserRole;        // of the name
constexpr int kPinnedRole = Qt::UserRole + 1;  // of the pin

QString PathOf(const QTreeWidgetItem& item) {
  return item.data(TRecentListView::kName, kPathRole).toString();
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

TRecentListView::TRecentListView(const QString& objectName, const QString& accessibleName, QWidget* parent)
    : QTreeWidget(parent) {
  Named(this, objectName, accessibleName);
  setHeaderLabels({QString(), tr("Name"), tr("Contents"), tr("Folder"), QString()});
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setTextElideMode(Qt::ElideMiddle);
  setItemDelegateForColumn(kAbout, new TCutAtEnd(this));
  header()->setStretchLastSection(false);
  header()->setMinimumSectionSize(1);
  header()->setSectionsClickable(false);
  for (const int column : {kPin, kRemove}) header()->setSectionResizeMode(column, QHeaderView::Fixed);
  header()->setSectionResizeMode(kWhere, QHeaderView::Stretch);
  FitColumns();
  connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item, int column) { Act(*item, column); });
}

QList<QTreeWidgetItem*> TRecentListView::Items() const {
  QList<QTreeWidgetItem*> items;
  for (int row = 0; row < topLevelItemCount(); ++row) items << topLevelItem(row);
  return items;
}

void TRecentListView::ShowItem(QTreeWidgetItem& item) const {
  const QString path = PathOf(item);
  const QString shown = QDir::toNativeSeparators(path);
  const bool pinned = item.data(kPin, kPinnedRole).toBool();
  const bool isMissing = FMissing.contains(path);
  item.setIcon(kPin, PinIcon(pinned));
  item.setToolTip(kPin, pinned ? tr("Unpin (P)") : tr("Keep in the list (P)"));
  item.setData(kPin, Qt::AccessibleTextRole, pinned ? tr("Pinned") : tr("Not pinned"));
  item.setText(kName, isMissing ? tr("%1 (missing)").arg(NameOf(path)) : NameOf(path));
  item.setText(kWhere, FolderOf(path));
  item.setIcon(kRemove, Icon("list-remove"));
  item.setToolTip(kRemove, tr("Remove from the list (Del)"));
  item.setData(kRemove, Qt::AccessibleTextRole, tr("Remove"));
  const QString tip = Qt::convertFromPlainText(isMissing ? tr("%1\nIt is not there.").arg(shown) : shown);
  for (const int column : {kName, kWhere}) item.setToolTip(column, tip);
  const QBrush grey = palette().color(QPalette::PlaceholderText);
  for (const int column : {kName, kAbout, kWhere}) {
    item.setForeground(column, isMissing || column == kWhere ? grey : QBrush());
  }
}

void TRecentListView::CheckPaths() {
  QStringList paths;
  for (const QTreeWidgetItem* item : Items()) paths << PathOf(*item);
  // Without a thread nothing is known of the paths.
  std::ignore = FTask.Start([this, paths](const TBackgroundTask::TReport& report) {
    for (const QString& path : paths) {
      std::error_code unknown;
      const bool exists = std::filesystem::exists(PathFromUtf8(Utf8(path)), unknown);
      const auto take = [this, path, exists] {
        if (exists) FMissing.remove(path);
        if (!exists) FMissing.insert(path);
        for (QTreeWidgetItem* item : Items()) {
          if (PathOf(*item) == path) ShowItem(*item);
        }
      };
      if (!report(take)) return;
    }
  });
}

void TRecentListView::FitColumns() {
  const int edge = std::max(22, fontMetrics().height());
  setIconSize({edge * 3 / 4, edge * 3 / 4});
  for (const int column : {kPin, kRemove}) header()->resizeSection(column, edge * 3 / 2);
  // What is not needed goes to the folder, the last to be cut is what the recording holds.
  const int letter = fontMetrics().averageCharWidth();
  const auto needs = [this, letter](int column) { return std::max(sizeHintForColumn(column), 10 * letter) + letter; };
  const int name = std::min(needs(kName), 28 * letter);
  const int room = viewport()->width() - 3 * edge - name - 10 * letter;
  header()->resizeSection(kName, name);
  header()->resizeSection(kAbout, std::clamp(room, 10 * letter, needs(kAbout)));
}

void TRecentListView::resizeEvent(QResizeEvent* event) {
  QTreeWidget::resizeEvent(event);
  FitColumns();
}

void TRecentListView::ShowEntries(const std::vector<TRecentEntry>& entries) {
  const QTreeWidgetItem* current = currentItem();
  const QString path = current == nullptr ? QString() : PathOf(*current);
  int row = currentIndex().row();
  clear();
  for (const TRecentEntry& entry : entries) {
    auto* item = new QTreeWidgetItem(this);
    item->setData(kName, kPathRole, QtText(entry.Path));
    item->setData(kPin, kPinnedRole, entry.Pinned);
    item->setText(kAbout, QtText(entry.About));
    item->setToolTip(kAbout, Qt::convertFromPlainText(item->text(kAbout)));
    ShowItem(*item);
    if (PathOf(*item) == path) row = topLevelItemCount() - 1;
  }
  // Nothing is known of folders.
  header()->setSectionHidden(
      kAbout, std::ranges::all_of(entries, [](const TRecentEntry& entry) { return entry.About.empty(); }));
  row = std::min(row, topLevelItemCount() - 1);
  if (row >= 0) setCurrentItem(topLevelItem(row), kName);
  FitColumns();
  if (isVisible()) CheckPaths();
}

void TRecentListView::Act(const QTreeWidgetItem& item, int column) {
  const QString path = PathOf(item);
  if (column == kPin) {
    emit PinAsked(path, !item.data(kPin, kPinnedRole).toBool());
  } else if (column == kRemove) {
    emit RemoveAsked(path);
  } else {
    emit Chosen(path);
  }
}

void TRecentListView::keyPressEvent(QKeyEvent* event) {
  const auto act = [this](int column) {
    if (const QTreeWidgetItem* current = currentItem()) Act(*current, column);
  };
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return act(kName);
    case Qt::Key_P:
      return act(kPin);
    case Qt::Key_Delete:
      return act(kRemove);
    default:
      QTreeWidget::keyPressEvent(event);
  }
}

void TRecentListView::showEvent(QShowEvent* event) {
  QTreeWidget::showEvent(event);
  if (!event->spontaneous()) CheckPaths();
}

void TRecentListView::changeEvent(QEvent* event) {
  QTreeWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitColumns();
  if (event->type() != QEvent::PaletteChange) return;
  for (QTreeWidgetItem* item : Items()) ShowItem(*item);
}
