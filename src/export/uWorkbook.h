// A spreadsheet file that is being written, sheet by sheet and in each row by row downwards. Rows and columns count
// from 0. Texts are never formulas. Made and destroyed on the main thread, because the process's number format is the
// program's own meanwhile; Close may be called on another one.
// Every function throws std::system_error when there is no room or a disk fails, std::runtime_error for what the
// library refuses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

enum class TCellStyle { Plain, Title, NumberAsText };  // bold; to the right

class TWorkbook {
 public:
  static constexpr std::size_t kMostRows = 1048576;  // of a sheet

  // Rows stand in a nameless file until Close, in the folder for temporary files or in that of the workbook, where
  // there is more room. `dateMask` is that of date-times, as in FormatDateTime; `created` is the date-time in the
  // file's properties, which are those of 1980 when it is none.
  TWorkbook(const std::filesystem::path& file, std::string_view dateMask, double created);
  // Without Close the file is empty.
  ~TWorkbook();
  TWorkbook(const TWorkbook&) = delete;
  TWorkbook& operator=(const TWorkbook&) = delete;

  // What follows goes to a new sheet, whose first rows stay in sight. The name is such as SafeSheetName gives.
  void AddSheet(const std::string& name, std::size_t frozenRows);
  void SetColumnWidth(std::size_t column, std::size_t characters);
  // The titles get drop-downs that filter the rows down to the last one. Numbers that are text, above the table too,
  // are not warned of. There is at least one column.
  void MarkTable(std::size_t titleRow, std::size_t lastRow, std::size_t columns);
  // Cut at 32,767 characters.
  void WriteText(std::size_t row, std::size_t column, std::string_view text, TCellStyle style = TCellStyle::Plain);
  // What is not finite is written as text.
  void WriteNumber(std::size_t row, std::size_t column, double value);
  // A date-time cell; before March 1900, where spreadsheets count otherwise, and after 9999 a text.
  void WriteDateTime(std::size_t row, std::size_t column, double dateTime);
  // Writes the file, of at least one sheet, and reads it back. Stopped, it ends soon with errc::operation_canceled.
  void Close(const std::stop_token& stop);

 private:
  struct TLibrary;
  void EndSheet();
  std::unique_ptr<TLibrary> FLibrary;
};
