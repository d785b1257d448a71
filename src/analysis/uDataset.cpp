#include "analysis/uDataset.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

#include "base/uDateTime.h"
#include "base/uText.h"

namespace {

struct TKeyedRow {
  std::uint64_t key;
  std::uint32_t row;
};

// A stable sort by bytes from the last to the first; a byte that is the same in every key needs no pass.
void RadixSort(std::vector<TKeyedRow>& rows) {
  constexpr std::size_t kBytes = sizeof(std::uint64_t);
  const auto byteOf = [](std::uint64_t key, std::size_t byte) { return (key >> (8 * byte)) & 0xFFU; };
  std::array<std::array<std::size_t, 256>, kBytes> counts{};
  for (const TKeyedRow& row : rows) {
    for (std::size_t byte = 0; byte < kBytes; ++byte) ++counts[byte][byteOf(row.key, byte)];
  }
  std::vector<TKeyedRow> sorted(rows.size());
  for (std::size_t byte = 0; byte < kBytes; ++byte) {
    if (counts[byte][byteOf(rows.front().key, byte)] == rows.size()) continue;
    std::size_t begin = 0;
    for (std::size_t& count : counts[byte]) begin += std::exchange(count, begin);
    for (const TKeyedRow& row : rows) sorted[counts[byte][byteOf(row.key, byte)]++] = row;
    rows.swap(sorted);
  }
}

}  // namespace

void TDataset::Clear() {
  *this = TDataset();
}

std::size_t TDataset::AddField(std::string key, TFieldType type, std::string label) {
  FTable->fields.push_back({std::move(key), std::move(label), type, {}});
  FTable->columns.emplace_back();
  return FTable->fields.size() - 1;
}

void TDataset::AddIdAndTime(const std::string& time) {
  AddField("ID", TFieldType::Integer);
  AddField(time, TFieldType::DateTime);
}

void TDataset::AddIndexPair(std::string_view indexKey, std::string_view fieldKey) {
  const auto field = FindField(fieldKey);
  if (!field) return;
  FTable->indexes.push_back({std::string(indexKey) + "Desc", *field, true, {}});
  FTable->indexes.push_back({std::string(indexKey) + "ASC", *field, false, {}});
}

template <class TVisit>
void TDataset::VisitValues(TFieldType type, const TVisit& visit) {
  switch (type) {
    case TFieldType::Integer:
      return visit(&TColumn::integers);
    case TFieldType::Single:
      return visit(&TColumn::singles);
    case TFieldType::DateTime:
      return visit(&TColumn::dateTimes);
    case TFieldType::Text:
      return visit(&TColumn::texts);
    case TFieldType::Blob:
      return;
  }
}

void TDataset::Reserve(std::size_t rows) {
  for (std::size_t field = 0; field < FTable->fields.size(); ++field) {
    TColumn& column = FTable->columns[field];
    VisitValues(FTable->fields[field].Type, [&](auto values) { (column.*values).reserve(rows); });
    column.isNull.reserve(rows);
  }
}

void TDataset::Append() {
  for (std::size_t field = 0; field < FTable->fields.size(); ++field) {
    TColumn& column = FTable->columns[field];
    VisitValues(FTable->fields[field].Type, [&column](auto values) {
      using T = typename std::remove_reference_t<decltype(column.*values)>::value_type;
      if constexpr (std::is_arithmetic_v<T>) {
        (column.*values).push_back(std::numeric_limits<T>::quiet_NaN());  // of an integer 0
      } else {
        (column.*values).emplace_back();
      }
    });
    column.isNull.push_back(true);
  }
  ++FTable->recordCount;
  for (TIndex& index : FTable->indexes) index.rows.clear();
}

void TDataset::AppendAt(std::size_t id, double time) {
  Append();
  SetInteger(0, static_cast<std::int32_t>(id));
  SetDateTime(1, time);
}

void TDataset::AppendCopy(const TDataset& from, std::size_t row) {
  Append();
  for (std::size_t field = 0; field < FTable->fields.size(); ++field) {
    TColumn& to = FTable->columns[field];
    const TColumn& column = from.FTable->columns[field];
    VisitValues(FTable->fields[field].Type, [&](auto values) { (to.*values).back() = (column.*values)[row]; });
    to.isNull.back() = column.isNull[row];
  }
}

std::optional<std::size_t> TDataset::FindField(std::string_view key) const {
  const auto found = std::ranges::find(FTable->fields, key, &TField::Key);
  if (found == FTable->fields.end()) return std::nullopt;
  return static_cast<std::size_t>(found - FTable->fields.begin());
}

void TDataset::AppendDisplayText(std::string& text, std::size_t row, std::size_t field) const {
  if (IsNull(row, field)) return;
  switch (FTable->fields[field].Type) {
    case TFieldType::Integer:
      text += std::to_string(Integer(row, field));
      break;
    case TFieldType::Single:
      AppendGeneralFloat(text, Single(row, field));
      break;
    case TFieldType::DateTime:
      text += FormatDateTime(FTable->fields[field].DisplayFormat, DateTime(row, field));
      break;
    case TFieldType::Text:
      text += Text(row, field);
      break;
    case TFieldType::Blob:
      break;
  }
}

void TDataset::SetBlob(std::size_t row, std::size_t field, std::string bytes) {
  auto& blobs = FTable->columns[field].blobs;
  std::erase_if(blobs, [row](const auto& blob) { return blob.first == row; });
  if (blobs.size() == kMaxBlobs) blobs.pop_front();
  blobs.emplace_back(row, std::move(bytes));
}

void TDataset::ClearBlobs(std::size_t field) {
  FTable->columns[field].blobs.clear();
}

const std::string* TDataset::Blob(std::size_t row, std::size_t field) const {
  const auto& blobs = FTable->columns[field].blobs;
  const auto found = std::ranges::find(blobs, row, [](const auto& blob) { return blob.first; });
  return found == blobs.end() ? nullptr : &found->second;
}

std::string TDataset::DisplayText(std::size_t row, std::size_t field) const {
  std::string text;
  AppendDisplayText(text, row, field);
  return text;
}

const TDataset::TIndex* TDataset::FindIndex(std::string_view name) const {
  const auto found = std::ranges::find(FTable->indexes, name, &TIndex::name);
  return found == FTable->indexes.end() ? nullptr : &*found;
}

bool TDataset::SelectIndex(std::string_view name) {
  const TIndex* index = FindIndex(name);
  if (index == nullptr) return false;
  FIndex = static_cast<std::size_t>(index - FTable->indexes.data());
  FIndexName = index->name;
  CollectShownRows();
  First();
  return true;
}

void TDataset::SetShownRows(std::vector<bool> shown) {
  FShown = std::move(shown);
  CollectShownRows();
  First();
}

// Without a branch: a hidden row is written, too, and the next one overwrites it. That is faster.
void TDataset::CollectShownRows() {
  FShownRows.clear();
  if (FShown.empty()) return;
  FShown.resize(RowCount(), false);
  FShownRows.resize(RowCount() + 1);
  std::size_t count = 0;
  const auto take = [&](std::uint32_t row) {
    FShownRows[count] = row;
    count += FShown[row] ? 1 : 0;
  };
  if (FIndex) {
    std::ranges::for_each(RowsInOrder(), take);
  } else {
    for (std::uint32_t row = 0; row < RowCount(); ++row) take(row);
  }
  FShownRows.resize(count);
}

const std::vector<std::uint32_t>& TDataset::RowsInOrder() const {
  TIndex& index = FTable->indexes[*FIndex];
  if (index.rows.empty()) index.rows = SortedRows(index);
  return index.rows;
}

std::size_t TDataset::RowAt(std::size_t position) const {
  if (!FShown.empty()) return FShownRows[position];
  return FIndex ? RowsInOrder()[position] : position;
}

std::optional<std::size_t> TDataset::PositionOf(std::size_t row) const {
  if (row >= RowCount()) return std::nullopt;
  if (FShown.empty() && !FIndex) return row;
  const std::vector<std::uint32_t>& rows = FShown.empty() ? RowsInOrder() : FShownRows;
  const auto found = std::ranges::find(rows, row);
  if (found == rows.end()) return std::nullopt;
  return static_cast<std::size_t>(found - rows.begin());
}

// An unsigned number that sorts as the value does.
std::uint64_t TDataset::SortKey(std::size_t row, std::size_t field) const {
  if (IsNull(row, field)) return 0;
  double value = 0;
  VisitValues(FTable->fields[field].Type, [&](auto values) {
    const auto& column = FTable->columns[field].*values;
    if constexpr (std::is_convertible_v<decltype(column[row]), double>) value = column[row];
  });
  if (std::isnan(value)) return 0;
  constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
  const auto bits = std::bit_cast<std::uint64_t>(value + 0.0);  // both zeros are one value
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

std::vector<std::uint32_t> TDataset::SortedRows(const TIndex& index) const {
  std::vector<TKeyedRow> keyed(FTable->recordCount);
  bool sorted = true;
  for (std::size_t row = 0; row < FTable->recordCount; ++row) {
    const std::uint64_t key = SortKey(row, index.field);
    keyed[row] = {index.descending ? ~key : key, static_cast<std::uint32_t>(row)};
    sorted = sorted && (row == 0 || keyed[row - 1].key <= keyed[row].key);
  }
  if (!sorted) RadixSort(keyed);
  std::vector<std::uint32_t> rows(FTable->recordCount);
  std::ranges::transform(keyed, rows.begin(), &TKeyedRow::row);
  return rows;
}

std::vector<std::uint32_t> VisibleEvents(const TDataset& table) {
  std::vector<std::uint32_t> events;
  events.reserve(table.RecordCount());
  for (std::size_t position = 0; position < table.RecordCount(); ++position) {
    events.push_back(static_cast<std::uint32_t>(table.RowAt(position)));
  }
  return events;
}

std::optional<std::size_t> VisibleOrFirst(const TDataset& table, std::optional<std::size_t> event) {
  if (event && table.PositionOf(*event)) return event;
  if (table.RecordCount() == 0) return std::nullopt;
  return table.RowAt(0);
}
