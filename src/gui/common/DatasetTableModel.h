// Adapts a table to Qt's views. It formats cells on demand. Row n is the n-th row of the table's selected index.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "analysis/uDataset.h"
#include "shell/uAlarmMarks.h"

class DatasetTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit DatasetTableModel(QObject* parent);

  // Borrows the table until the next call; null empties the model.
  void SetDataset(const TDataset* table);
  // The order, number of rows, formats or labels changed, but not the fields.
  void Refresh();

  // Texts by "ID" in a last column "Notes", which is there while there are any; borrowed, null for none.
  void SetNotes(const std::map<std::size_t, std::string>* notes);
  [[nodiscard]] bool IsNotes(int column) const { return column == static_cast<int>(FFields.size()); }

  // How values are shown; borrowed. Refresh after a change of it.
  void SetDisplay(const TDisplaySettings* display) { FDisplay = display; }
  [[nodiscard]] TCellDrawing Drawing(const QModelIndex& index) const;

  [[nodiscard]] const TDataset* Dataset() const { return FTable; }
  [[nodiscard]] QString FieldKey(int column) const;
  // The "ID" of the row at a position, which is the event's or reading's index.
  [[nodiscard]] std::optional<std::size_t> IdAt(int position) const;
  // The position of the row with this "ID".
  [[nodiscard]] std::optional<int> PositionOf(std::size_t id) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role = Qt::DisplayRole) const override;

 private:
  [[nodiscard]] int ShownCount() const;
  // Empty without a note.
  [[nodiscard]] QString NoteAt(int position) const;

  const TDataset* FTable = nullptr;
  int FRowCount = 0;               // as the views know it
  std::optional<std::size_t> FId;  // the field "ID"
  const TDisplaySettings* FDisplay;
  const std::map<std::size_t, std::string>* FNotes = nullptr;
  std::vector<std::size_t> FFields;  // of the columns: what is drawn elsewhere is left out
};
