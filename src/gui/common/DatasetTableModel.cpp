#include "gui/common/DatasetTableModel.h"

#include <QTextDocument>
#include <algorithm>
#include <limits>
#include <utility>

#include "gui/common/uQtText.h"

namespace {

constexpr qsizetype kMaxTip = 200;     // characters
constexpr qsizetype kMaxNote = 60;     // of a cell
constexpr qsizetype kMaxNotes = 2000;  // of its tip
constexpr auto kNotes = "Notes";

constexpr std::pair<TCellImage, const char*> kImageWords[] = {{TCellImage::Alarm, "Outside the alarm limits"},
                                                              {TCellImage::AboveMaximum, "Above the maximum"},
                                                              {TCellImage::BelowMinimum, "Below the minimum"},
                                                              {TCellImage::Within, "Within the limits"}};

QString InWords(TCellImage image) {
  for (const auto& [each, words] : kImageWords) {
    if (each == image) return QObject::tr(words);
  }
  return {};
}

// What the title does not say, by the field's key; sensors say their unit.
constexpr std::pair<std::string_view, const char*> kMeanings[] = {
    {"ID", "Number of the row in the recording, from 0"},
    {"Timestamp", "As recorded, without conversion between time zones"},
    {"Acceleration max", "Largest of |x|, |y|, |z| and √(x² + y² + z²), in g"},
    {"ToT total",
     "Time over threshold in ms: all intervals from the sample that reaches the switch-on level\n"
     "to the sample that falls below the switch-off level"},
    {"ToT max", "Time over threshold in ms: the longest interval"},
    {"IoT total", "Integral over threshold in g·ms: area between √(x² + y² + z²) and the switch-on level"},
    {"IoT max", "Integral over threshold in g·ms: the largest closed run"},
    {"Dew Point", "In °C, from the temperature and the humidity of the humidity sensor"},
};

QString MeaningOf(const std::string& field) {
  for (const auto& [key, meaning] : kMeanings) {
    if (key == field) return QObject::tr(meaning);
  }
  const TQuantityRow* sensor = FindQuantity(&TQuantityRow::field, field);
  return sensor == nullptr || sensor->unit.empty() ? QString() : QObject::tr("In %1").arg(QtText(sensor->unit));
}

}  // namespace

DatasetTableModel::DatasetTableModel(QObject* parent)
    : QAbstractTableModel(parent), FDisplay(&DefaultSettings().display) {}

void DatasetTableModel::SetDataset(const TDataset* table) {
  beginResetModel();
  FTable = table;
  FFields.clear();
  FRowCount = ShownCount();
  FId = table == nullptr ? std::nullopt : table->FindField("ID");
  for (std::size_t field = 0; table != nullptr && field < table->Fields().size(); ++field) {
    if (table->Fields()[field].Type != TFieldType::Blob) FFields.push_back(field);
  }
  endResetModel();
}

void DatasetTableModel::SetNotes(const std::map<std::size_t, std::string>* notes) {
  if (notes != nullptr && notes->empty()) notes = nullptr;
  const int column = static_cast<int>(FFields.size());
  if (notes != nullptr && FNotes == nullptr) {
    beginInsertColumns({}, column, column);
    FNotes = notes;
    endInsertColumns();
  } else if (notes == nullptr && FNotes != nullptr) {
    beginRemoveColumns({}, column, column);
    FNotes = nullptr;
    endRemoveColumns();
  } else {
    FNotes = notes;
    if (notes != nullptr && FRowCount > 0) Q_EMIT dataChanged(index(0, column), index(FRowCount - 1, column));
  }
}

QString DatasetTableModel::NoteAt(int position) const {
  const auto id = IdAt(position);
  const auto note = id ? FNotes->find(*id) : FNotes->end();
  return note == FNotes->end() ? QString() : QtText(note->second);
}

int DatasetTableModel::ShownCount() const {
  if (FTable == nullptr) return 0;
  return static_cast<int>(std::min<std::size_t>(FTable->RecordCount(), std::numeric_limits<int>::max()));
}

// Rows are known by their position, so others than before come or go at the end.
void DatasetTableModel::Refresh() {
  const int count = ShownCount();
  if (count < FRowCount) {
    beginRemoveRows({}, count, FRowCount - 1);
    FRowCount = count;
    endRemoveRows();
  } else if (count > FRowCount) {
    beginInsertRows({}, FRowCount, count - 1);
    FRowCount = count;
    endInsertRows();
  }
  if (rowCount() == 0 || columnCount() == 0) return;
  Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QString DatasetTableModel::FieldKey(int column) const {
  if (IsNotes(column)) return kNotes;
  return QtText(FTable->Fields()[FFields.at(static_cast<std::size_t>(column))].Key);
}

std::optional<std::size_t> DatasetTableModel::IdAt(int position) const {
  if (!FId || position < 0 || position >= rowCount()) return std::nullopt;
  return static_cast<std::size_t>(FTable->Integer(FTable->RowAt(static_cast<std::size_t>(position)), *FId));
}

std::optional<int> DatasetTableModel::PositionOf(std::size_t id) const {
  if (!FId) return std::nullopt;
  const auto isAt = [&](std::size_t row) { return std::cmp_equal(FTable->Integer(row, *FId), id); };
  // In a table of all events an event's row is its "ID"; a table of a few is searched.
  std::size_t row = id;
  if (row >= FTable->RowCount() || !isAt(row)) {
    for (row = 0; row < FTable->RowCount() && !isAt(row);) ++row;
  }
  const auto position = FTable->PositionOf(row);
  if (!position) return std::nullopt;
  return static_cast<int>(*position);
}

int DatasetTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : FRowCount;
}

int DatasetTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(FFields.size()) + (FNotes == nullptr ? 0 : 1);
}

QVariant DatasetTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || FTable == nullptr) return {};
  if (IsNotes(index.column())) {
    if (role == Qt::DisplayRole) return QtText(Drawing(index).text);
    if (role != Qt::ToolTipRole) return {};
    return Qt::convertFromPlainText(ShownText(Utf8(NoteAt(index.row())), kMaxNotes));
  }
  switch (role) {
    case Qt::DisplayRole:
      return QtText(Drawing(index).text);
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return InWords(Drawing(index).image);
    default:
      return {};
  }
}

TCellDrawing DatasetTableModel::Drawing(const QModelIndex& index) const {
  if (index.row() >= ShownCount()) return {};
  if (IsNotes(index.column())) return {.text = Utf8(ShownText(Utf8(NoteAt(index.row())), kMaxNote))};
  const std::size_t field = FFields[static_cast<std::size_t>(index.column())];
  return DrawCell(*FTable, FTable->RowAt(static_cast<std::size_t>(index.row())), field, *FDisplay);
}

QVariant DatasetTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical || FTable == nullptr || section < 0 || section >= columnCount()) return {};
  if (IsNotes(section)) {
    if (role == Qt::DisplayRole) return QObject::tr(kNotes);
    return role == Qt::ToolTipRole ? QObject::tr("What was noted on the event; it stands in no exported table")
                                   : QVariant();
  }
  const TField& field = FTable->Fields()[FFields[static_cast<std::size_t>(section)]];
  if (role == Qt::DisplayRole) return QtText(field.Label);
  if (role == Qt::ToolTipRole) {
    const QString meaning = MeaningOf(field.Key);
    const QString title = ShownText(field.Label, kMaxTip);
    return Qt::convertFromPlainText(meaning.isEmpty() ? title : title + "\n" + meaning);
  }
  return {};
}
