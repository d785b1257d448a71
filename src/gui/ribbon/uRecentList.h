// A list of recent files or folders with pin, name, what is known of it, folder and a remove button. Enter or a click
// on a name chooses it, P or a click on the pin pins it, Delete or a click on the minus removes it. Missing entries are
// grey.
#pragma once

#include <QSet>
#include <QTreeWidget>
#include <vector>

#include "gui/common/uBackgroundTask.h"
#include "shell/uRecentDocuments.h"

class TRecentListView : public QTreeWidget {
  Q_OBJECT

 public:
  enum TColumn { kPin, kName, kAbout, kWhere, kRemove, kColumns };

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
  void ShowItem(QTreeWidgetItem& item) const;
  void Act(const QTreeWidgetItem& item, int column);
  void FitColumns();
  // Marks the entries whose files are missing, as the answers arrive: a dead network drive does not block the window.
  void CheckPaths();
  [[nodiscard]] QList<QTreeWidgetItem*> Items() const;

  QSet<QString> FMissing;
  TBackgroundTask FTask{this};
};
