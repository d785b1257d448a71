// The recordings of one folder: name, title, operator, when, events, peak, above alarm, state, a picture of the peaks
// over time, size and date. Enter or a click chooses one; a click on a title sorts. The folder is listed in the
// background, so a dead network drive does not block the window; then processes of kshock read the recordings.
#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QTreeView>
#include <filesystem>
#include <optional>
#include <stop_token>

#include "gui/ribbon/uRecordingFolder.h"

class TBackgroundTask;

// Where the figures of recordings come from. Without the program only names, sizes and dates are listed.
struct TSummarySource {
  std::filesystem::path kshock;       // the program; empty: none
  std::filesystem::path cacheFolder;  // keeps what was read; empty: nothing is kept
  std::optional<TLimits> limits;      // of the acceleration, in g; nothing: no alarm
};

class TRecordingModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  enum TColumn {
    kName,
    kSize,
    kModified,
    kTitle,
    kOperator,
    kBegin,
    kEvents,
    kPeak,
    kAbove,
    kState,
    kPicture,
    kColumns
  };

  void SetEntries(std::vector<TFolderEntry> entries);
  // Of the entries by their file's name.
  void SetSummaries(std::vector<TFleetSummary> summaries);
  // Rows without this text in name, title, operator or state are left out; case is ignored.
  void SetFilter(const QString& text);
  // While `reading`, what has no figures yet may get some.
  void SetReading(bool reading);
  [[nodiscard]] const TFolderEntry& Entry(int row) const { return FEntries[FRows[static_cast<size_t>(row)]]; }
  [[nodiscard]] std::size_t Count() const { return FEntries.size(); }
  [[nodiscard]] QStringList Names() const;
  // g; the largest peak of the folder, to which the pictures are drawn.
  [[nodiscard]] double MaxPeak() const { return FMaxPeak; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  [[nodiscard]] QString Text(const TFolderEntry& entry, int column) const;
  [[nodiscard]] QString StateOf(const TFolderEntry& entry) const;
  [[nodiscard]] bool Passes(const TFolderEntry& entry) const;
  // Calls `change`, which may move rows but takes none away, and keeps the current row on its recording.
  template <class TChange>
  void Reorder(const TChange& change);
  void SortEntries();
  void CollectRows();

  std::vector<TFolderEntry> FEntries;
  std::vector<std::size_t> FRows;  // of the entries that pass the filter
  QString FFilter;
  double FMaxPeak = 0;
  bool FReading = false;
  int FSorted = kName;
  Qt::SortOrder FOrder = Qt::AscendingOrder;
};

class TRecordingList : public QTreeView {
  Q_OBJECT

 public:
  TRecordingList(const QString& objectName, const QString& accessibleName, QWidget* parent);
  ~TRecordingList() override { FStop.request_stop(); }

  // Counts what is listed anew where the limits changed.
  void SetSource(const TSummarySource& source);
  // Empties the list, reads the path in the background, lists the recordings of a folder, selects the first and emits
  // PathRead. A pending earlier call is dropped.
  void ReadPath(const QString& path, const QStringList& patterns);
  // Empties the list and drops a pending call.
  void Clear();
  // Ends at once what reads recordings; the figures that are there stay.
  void CancelSummaries();
  void SetFilter(const QString& text) { FModel->SetFilter(text); }
  bool Empty() const { return FModel->Count() == 0; }
  bool Reading() const { return FReading; }

 signals:
  void FileChosen(const QString& path);
  // `note` describes a folder: its path and the number of recordings, or why there are none or not all.
  void PathRead(const QString& path, TPathKind kind, const QString& note);
  // How many of the recordings have figures; `problem` says why no more will come, empty for none.
  void Summarized(int done, int total, const QString& problem);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  QString Show(const QString& folder, TFolderListing listing);
  void ReadSummaries();
  void StopSummaries();
  void EndSummaries(const QString& problem);
  void FitColumns();
  void Choose(const QModelIndex& index);

  TRecordingModel* FModel;
  TBackgroundTask* FTask;
  TBackgroundTask* FSummaries;
  std::stop_source FStop;  // of the summaries that are read
  TSummarySource FSource;
  bool FReading = false;
  bool FSummarizing = false;  // or waits to be seen
  int FDone = 0;              // recordings with figures
  QString FFolder;
};
