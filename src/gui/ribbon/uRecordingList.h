// The recordings of one folder as a list with name, size and date. Enter or a double click chooses one; a click on a
// title sorts.
#pragma once

#include <QAbstractTableModel>
#include <QTreeView>

#include "gui/ribbon/uRecordingFolder.h"

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

  // Reads the folder and selects its first recording. Returns the sentence that says what there is to say about the
  // folder: its path and how many recordings, that there are none, or that not all are shown.
  QString ShowFolder(const QString& folder, const QStringList& patterns);
  void Clear();
  bool Empty() const { return FModel->rowCount() == 0; }

 signals:
  void FileChosen(const QString& path);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  TRecordingModel* FModel;
  QString FFolder;
};
