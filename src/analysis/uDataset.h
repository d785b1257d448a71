// An in-memory table with named indexes, for grids, exports and reports. It stores columns; rows are only appended and
// never move: sorting selects an index. A field has a fixed key and a label for people.
// A copy is a companion: it shares rows, fields and sorted indexes with its original, but has its own selected index,
// position and choice of shown rows. Clearing one does not affect the other. Main thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

enum class TFieldType {
  Integer,
  Single,
  DateTime,
  Text,  // in UTF-8; sorts as nothing, so it has no index
  Blob,  // a picture that is drawn when it is shown; the table keeps those of the last kMaxBlobs rows, others are null
};

struct TField {
  std::string Key;
  std::string Label;
  TFieldType Type;
  std::string DisplayFormat;  // the mask of a DateTime; of a Single that of the cells of grids
};

inline constexpr std::size_t kMaxBlobs = 256;

class TDataset {
 public:
  // Takes away rows, fields and indexes.
  void Clear();
  // Returns the field's number. Fields are defined before the first row.
  std::size_t AddField(std::string key, TFieldType type, std::string label);
  std::size_t AddField(const std::string& key, TFieldType type) { return AddField(key, type, key); }
  // Most tables begin with "ID" and a date-time.
  void AddIdAndTime(const std::string& time = "Timestamp");
  // Defines the indexes key + "Desc" and key + "ASC" on a field; does nothing when there is no such field.
  void AddIndexPair(std::string_view indexKey, std::string_view fieldKey);

  // Reserves memory for as many rows.
  void Reserve(std::size_t rows);
  // Appends a row of nulls; the Set functions fill it.
  void Append();
  // The same with the fields of AddIdAndTime.
  void AppendAt(std::size_t id, double time);
  void SetInteger(std::size_t field, std::int32_t value) { Set(&TColumn::integers, field, value); }
  void SetSingle(std::size_t field, float value) { Set(&TColumn::singles, field, value); }
  void SetDateTime(std::size_t field, double value) { Set(&TColumn::dateTimes, field, value); }
  void SetText(std::size_t field, std::string value) { Set(&TColumn::texts, field, std::move(value)); }
  // Of any row; companions see it, too. The rows that were set first become null again.
  void SetBlob(std::size_t row, std::size_t field, std::string bytes);
  // All blobs of a field become null.
  void ClearBlobs(std::size_t field);
  // Appends row `row` of a table with the same fields; blobs stay behind.
  void AppendCopy(const TDataset& from, std::size_t row);

  [[nodiscard]] std::span<const TField> Fields() const { return FTable->fields; }
  [[nodiscard]] std::optional<std::size_t> FindField(std::string_view key) const;
  void SetLabel(std::size_t field, std::string label) { FTable->fields[field].Label = std::move(label); }
  void SetDisplayFormat(std::size_t field, std::string mask) { FTable->fields[field].DisplayFormat = std::move(mask); }

  // The rows of the table, and how many of them this companion shows.
  [[nodiscard]] std::size_t RowCount() const { return FTable->recordCount; }
  [[nodiscard]] std::size_t RecordCount() const { return FShown.empty() ? FTable->recordCount : FShownRows.size(); }
  // Values by row, in the order in which rows were appended. The type must be the field's own.
  [[nodiscard]] bool IsNull(std::size_t row, std::size_t field) const { return FTable->columns[field].isNull[row]; }
  [[nodiscard]] std::int32_t Integer(std::size_t row, std::size_t field) const {
    return FTable->columns[field].integers[row];
  }
  [[nodiscard]] float Single(std::size_t row, std::size_t field) const { return FTable->columns[field].singles[row]; }
  [[nodiscard]] double DateTime(std::size_t row, std::size_t field) const {
    return FTable->columns[field].dateTimes[row];
  }
  [[nodiscard]] const std::string& Text(std::size_t row, std::size_t field) const {
    return FTable->columns[field].texts[row];
  }
  // Of a Blob; null until it is set. Valid until the next SetBlob or ClearBlobs.
  [[nodiscard]] const std::string* Blob(std::size_t row, std::size_t field) const;
  // All values of a field; where one is null stands NaN.
  [[nodiscard]] std::span<const float> Singles(std::size_t field) const { return FTable->columns[field].singles; }
  [[nodiscard]] std::span<const double> DateTimes(std::size_t field) const { return FTable->columns[field].dateTimes; }
  // The value as text: integers in decimal, singles in general form, date-times in the field's mask, texts as they
  // are, null empty.
  [[nodiscard]] std::string DisplayText(std::size_t row, std::size_t field) const;
  void AppendDisplayText(std::string& text, std::size_t row, std::size_t field) const;

  // Shows only the rows that the mask marks: positions and the walk count only these, and the walk begins anew. An
  // empty mask shows all rows. Rows that are appended later are not shown. Other companions are not affected.
  void SetShownRows(std::vector<bool> shown);
  [[nodiscard]] const std::vector<bool>& ShownRows() const { return FShown; }

  // Selects an index and moves to its first row; false, and nothing changes, when there is none of that name.
  bool SelectIndex(std::string_view name);
  // Empty while rows stand in the order in which they were appended.
  [[nodiscard]] const std::string& IndexName() const { return FIndexName; }
  [[nodiscard]] bool HasIndex(std::string_view name) const { return FindIndex(name) != nullptr; }
  // The row at a position of the selected index, below RecordCount. The index is built when it is first used: equal
  // values keep the rows' order in both directions, null and NaN stand below every number.
  [[nodiscard]] std::size_t RowAt(std::size_t position) const;
  // The position of a row in the selected index; nothing for a row that is not shown or past the table.
  [[nodiscard]] std::optional<std::size_t> PositionOf(std::size_t row) const;

  // Walks the rows in the order of the selected index.
  void First() { FPosition = 0; }
  void Last() { FPosition = RecordCount() == 0 ? 0 : RecordCount() - 1; }
  void Next() { ++FPosition; }
  [[nodiscard]] bool Eof() const { return FPosition >= RecordCount(); }
  // Call only while Eof is false.
  [[nodiscard]] std::size_t CurrentRow() const { return RowAt(FPosition); }

 private:
  struct TColumn {  // of the lists of values the one of the field's type is in use
    std::vector<std::int32_t> integers;
    std::vector<float> singles;
    std::vector<double> dateTimes;
    std::vector<std::string> texts;
    std::deque<std::pair<std::size_t, std::string>> blobs;  // by the time at which they were set
    std::vector<bool> isNull;                               // of a Blob always
  };
  struct TIndex {
    std::string name;
    std::size_t field;
    bool descending;
    std::vector<std::uint32_t> rows;  // empty until first used
  };

  template <class T>
  void Set(std::vector<T> TColumn::*values, std::size_t field, T value) {
    (FTable->columns[field].*values).back() = std::move(value);
    FTable->columns[field].isNull.back() = false;
  }
  // Calls visit with the member of TColumn that holds the values of a type; a Blob has none.
  template <class TVisit>
  static void VisitValues(TFieldType type, const TVisit& visit);
  [[nodiscard]] const TIndex* FindIndex(std::string_view name) const;
  [[nodiscard]] std::uint64_t SortKey(std::size_t row, std::size_t field) const;
  [[nodiscard]] std::vector<std::uint32_t> SortedRows(const TIndex& index) const;
  [[nodiscard]] const std::vector<std::uint32_t>& RowsInOrder() const;
  void CollectShownRows();

  struct TTable {
    std::vector<TField> fields;
    std::vector<TColumn> columns;
    std::size_t recordCount = 0;
    std::vector<TIndex> indexes;
  };

  std::shared_ptr<TTable> FTable = std::make_shared<TTable>();
  std::string FIndexName;
  std::optional<std::size_t> FIndex;
  std::size_t FPosition = 0;
  std::vector<bool> FShown;               // by row; empty while all are
  std::vector<std::uint32_t> FShownRows;  // in the order of the selected index, while not all are
};

// The rows that a table shows, in its order. A row of the shock event table is the event's index in the list, so these
// are the visible-event lists: all events of the table, those that the filter lets through of its companion.
std::vector<std::uint32_t> VisibleEvents(const TDataset& table);

// The event when the table shows it, else the first one that it shows; nothing when it shows none.
std::optional<std::size_t> VisibleOrFirst(const TDataset& table, std::optional<std::size_t> event);
