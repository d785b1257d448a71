// A list of recent files or folders with pin, name, what is known of it, folder and a remove button. Enter or a click
// on a name chooses it, P or a click on the pin pins it, Delete or a click on the minus removes it. Missing entries are
// grey.
#pragma once

#include <QAbstractTableModel>
#include <QSet>
#include <QTreeView>
#include <vector>

#include "gui/common/uBackgroundTask.h"
#include "shell/uRecentDocuments.h"

class TRecentModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  enum TColumn { kPin, kName, kAbout, kWhere, kRemove, kColumns };

  void SetEntries(const std::vector<TRecentEntry>& entries);
  void SetMissing(const QString& path, bool missing);
  [[nodiscard]] QString Path(int row) const { return FRows[static_cast<size_t>(row)].Path; }
  [[nodiscard]] bool Pinned(int row) const { return FRows[static_cast<size_t>(row)].Pinned; }
  [[nodiscard]] int RowOf(const QString& path) const;  // -1: none
  [[nodiscard]] QStringList Paths() const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct TRow {
    QString Path;
    bool Pinned = false;
    QString About;
  };
  [[nodiscard]] QVariant ToolTip(const TRow& row, int column) const;

  std::vector<TRow> FRows;
  QSet<QString> FMissing;
};

class TRecentListView : public QTreeView {
  Q_OBJECT

 public:
  TRecentListView(const QString& objectName, const QString& accessibleName, QWidget* parent);

  // The current entry stays current if it is still listed, otherwise the entry in its row becomes current.
  void ShowEntries(const std::vector<TRecentEntry>& entries);

 signals:
  void Chosen(const QString& path);
  void PinAsked(const QString& path, bool pinned);
  void RemoveAsked(const QString& path);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Act(const QModelIndex& index);
  void FitColumns();
  // Marks the entries whose files are missing, as the answers arrive: a dead network drive does not block the window.
  void CheckPaths();

  TRecentModel* FModel;
  TBackgroundTask FTask{this};
};
