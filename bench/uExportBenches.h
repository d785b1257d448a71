// How long exports take beside the least that they can cost.
#pragma once

#include <filesystem>

// 2,000,000 samples, in 2,000 events, to CSV files. These functions export the mission that is loaded.
void BenchCsvOfSamples(const std::filesystem::path& folder, int rounds);
// 10,000 events of 100 samples, a file each.
void BenchCsvOfManyEvents(const std::filesystem::path& folder, int rounds);
// Sheets of events, and a table, beside the library alone, which keeps its rows on disk, too.
void BenchWorkbooks(const std::filesystem::path& folder, int rounds);
// By how much the largest memory in use grows while a table of so many rows goes to CSV.
void BenchMemoryOfTableCsv(const std::filesystem::path& folder, std::size_t rows);
