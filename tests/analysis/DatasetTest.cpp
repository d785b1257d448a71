#include "analysis/uDataset.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

using testing::ElementsAre;

namespace {

std::vector<std::size_t> RowsOf(TDataset& table) {
  std::vector<std::size_t> rows;
  for (table.First(); !table.Eof(); table.Next()) rows.push_back(table.CurrentRow());
  return rows;
}

TEST(Dataset, EqualValuesKeepTheirOrderAndNullSortsBelowNumbers) {
  TDataset table;
  const std::size_t value = table.AddField("Value", TFieldType::Single);
  table.AddIndexPair("Value", "Value");
  table.AddIndexPair("Other", "Missing");
  const float infinity = std::numeric_limits<float>::infinity();
  const float values[] = {2, std::nanf(""), -infinity, 2, 0 /* stays null */, -0.0F, 0.0F, infinity, -5};
  for (std::size_t row = 0; row < std::size(values); ++row) {
    table.Append();
    if (row != 4) table.SetSingle(value, values[row]);
  }
  for (std::size_t row = 0; row < 9; ++row) EXPECT_EQ(table.IsNull(row, value), row == 4);

  EXPECT_THAT(RowsOf(table), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8));
  ASSERT_TRUE(table.SelectIndex("ValueASC"));
  EXPECT_THAT(RowsOf(table), ElementsAre(1, 4, 2, 8, 5, 6, 0, 3, 7));
  ASSERT_TRUE(table.SelectIndex("ValueDesc"));
  EXPECT_THAT(RowsOf(table), ElementsAre(7, 0, 3, 5, 6, 8, 2, 1, 4));
  EXPECT_FALSE(table.SelectIndex("OtherASC"));
  EXPECT_EQ(table.IndexName(), "ValueDesc");

  table.Append();  // a row more, and the index knows it
  table.SetSingle(value, 3);
  EXPECT_THAT(RowsOf(table), ElementsAre(7, 9, 0, 3, 5, 6, 8, 2, 1, 4));
}

TEST(Dataset, IndexesSortLikeAStableSort) {
  std::mt19937 random(7);
  TDataset table;
  const std::size_t time = table.AddField("Time", TFieldType::DateTime);
  const std::size_t number = table.AddField("Number", TFieldType::Integer);
  table.AddIndexPair("Time", "Time");
  table.AddIndexPair("Number", "Number");
  std::vector<double> times;
  std::vector<std::int32_t> numbers;
  for (int i = 0; i < 5000; ++i) {
    times.push_back((static_cast<double>(random() % 3000) - 1500) * std::exp2(static_cast<int>(random() % 80) - 40));
    numbers.push_back(static_cast<std::int32_t>(random() % 600) - 300);
    table.Append();
    table.SetDateTime(time, times.back());
    table.SetInteger(number, numbers.back());
  }
  std::vector<std::size_t> rows(times.size());
  std::iota(rows.begin(), rows.end(), 0U);
  const auto expect = [&](std::string_view index, auto less) {
    std::vector<std::size_t> wanted = rows;
    std::ranges::stable_sort(wanted, less);
    ASSERT_TRUE(table.SelectIndex(index));
    EXPECT_EQ(RowsOf(table), wanted) << index;
  };
  expect("TimeASC", [&](std::size_t a, std::size_t b) { return times[a] < times[b]; });
  expect("TimeDesc", [&](std::size_t a, std::size_t b) { return times[a] > times[b]; });
  expect("NumberASC", [&](std::size_t a, std::size_t b) { return numbers[a] < numbers[b]; });
  expect("NumberDesc", [&](std::size_t a, std::size_t b) { return numbers[a] > numbers[b]; });
}

TEST(Dataset, ShowsValuesAsText) {
  TDataset table;
  const std::size_t id = table.AddField("ID", TFieldType::Integer);
  const std::size_t time = table.AddField("Timestamp", TFieldType::DateTime);
  const std::size_t value = table.AddField("A1", TFieldType::Single, "Strain");
  const std::size_t picture = table.AddField("Chart", TFieldType::Blob);
  table.SetDisplayFormat(time, "dd.mm.yyyy hh:nn:ss.z");
  table.Append();
  table.SetInteger(id, -7);
  table.SetDateTime(time, 45123 + 0.0625 / 86400);
  table.SetSingle(value, 0.1F);
  EXPECT_EQ(table.DisplayText(0, id), "-7");
  EXPECT_EQ(table.DisplayText(0, time), "16.07.2023 00:00:00.63");
  EXPECT_EQ(table.DisplayText(0, value), "0.100000001490116");
  EXPECT_EQ(table.DisplayText(0, picture), "");
  table.Append();
  EXPECT_EQ(table.DisplayText(1, value), "");
  EXPECT_EQ(table.FindField("A1"), value);
  EXPECT_EQ(table.FindField("Strain"), std::nullopt) << "a label is no key";
}

TEST(Dataset, KeepsPicturesOfTheRowsThatWereSetLast) {
  TDataset table;
  const std::size_t chart = table.AddField("Chart", TFieldType::Blob);
  for (std::size_t row = 0; row <= kMaxBlobs; ++row) table.Append();
  TDataset companion = table;
  for (std::size_t row = 0; row < kMaxBlobs; ++row) companion.SetBlob(row, chart, "old");
  companion.SetBlob(0, chart, "new");
  companion.SetBlob(kMaxBlobs, chart, "one more");
  EXPECT_EQ(*table.Blob(0, chart), "new");
  EXPECT_EQ(table.Blob(1, chart), nullptr) << "set first";
  EXPECT_EQ(*table.Blob(2, chart), "old");
  table.ClearBlobs(chart);
  EXPECT_EQ(companion.Blob(0, chart), nullptr);
}

}  // namespace
