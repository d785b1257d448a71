// The recordings of one folder with name, size and date. Enter or a double click chooses one; a click on a title sorts.
// The folder is read in the background, so a dead network drive does not block the window.
#pragma once

#include <QAbstractTableModel>
#include <QTreeView>

#include "gui/ribbon/uRecordingFolder.h"

class TBackgroundTask;

class TRecordingModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  enum TColumn { kName, kSize, kModified, kColumns };

  void SetEntries(std::vector<TFolderEntry> entries);
  const TFolderEntry& Entry(int row) const { return FEntries[static_cast<size_t>(row)]; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  std::vector<TFolderEntry> FEntries;
};

class TRecordingList : public QTreeView {
  Q_OBJECT

 public:
  TRecordingList(const QString& objectName, const QString& accessibleName, QWidget* parent);

  // Empties the list, reads the path in the background, lists the recordings of a folder, selects the first and emits
  // PathRead. A pending earlier call is dropped.
  void ReadPath(const QString& path, const QStringList& patterns);
  // Empties the list and drops a pending call.
  void Clear();
  bool Empty() const { return FModel->rowCount() == 0; }
  bool Reading() const { return FReading; }

 signals:
  void FileChosen(const QString& path);
  // `note` describes a folder: its path and the number of recordings, or why there are none or not all.
  void PathRead(const QString& path, TPathKind kind, const QString& note);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString Show(const QString& folder, TFolderListing listing);

  TRecordingModel* FModel;
  TBackgroundTask* FTask;
  bool FReading = false;
  QString FFolder;
};
