// A spreadsheet file that is being written, sheet by sheet and in each row by row downwards. Rows and columns count
// from 0. Texts are never formulas. Made and destroyed on the main thread, because the process's number format is the
// program's own meanwhile; Close may be called on another one.
// Every function throws std::system_error when there is no room, std::runtime_error for what the library refuses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

class TWorkbook {
 public:
  static constexpr std::size_t kMostRows = 1048576;  // of a sheet

  // Rows stand in a nameless file in the same folder until Close. `dateMask` is that of date-times, as in
  // FormatDateTime.
  TWorkbook(const std::filesystem::path& file, std::string_view dateMask);
  // Without Close nothing is written.
  ~TWorkbook();
  TWorkbook(const TWorkbook&) = delete;
  TWorkbook& operator=(const TWorkbook&) = delete;

  // What follows goes to a new sheet, whose first rows stay in sight. The name is such as SafeSheetName gives.
  void AddSheet(const std::string& name, std::size_t frozenRows);
  void SetColumnWidth(std::size_t column, std::size_t characters);
  // Cut at 32,767 characters.
  void WriteText(std::size_t row, std::size_t column, std::string_view text);
  // What is not finite is written as text.
  void WriteNumber(std::size_t row, std::size_t column, double value);
  // A date-time cell; before March 1900, where spreadsheets count otherwise, and after 9999 a text.
  void WriteDateTime(std::size_t row, std::size_t column, double dateTime);
  // Writes the file.
  void Close();

 private:
  struct TLibrary;
  void EndSheet();
  std::unique_ptr<TLibrary> FLibrary;
};
