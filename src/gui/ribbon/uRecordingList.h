// The recordings of one folder as a list with name, size and date. Enter or a double click chooses one; a click on a
// title sorts. A folder is read in the background, so a dead network drive does not hold up the window.
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

  // Lists nothing, asks what stands at the path and answers with PathRead. The recordings of a folder are listed then
  // and the first is selected. An answer that is still to come from an earlier call is dropped.
  void ReadPath(const QString& path, const QStringList& patterns);
  // Lists nothing; an answer that is still to come is dropped.
  void Clear();
  bool Empty() const { return FModel->rowCount() == 0; }
  bool Reading() const { return FReading; }

 signals:
  void FileChosen(const QString& path);
  // `note` is the sentence about a folder: its path and how many recordings, that there are none, that not all are
  // shown, or that it cannot be read.
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
