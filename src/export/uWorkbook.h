// A spreadsheet file that is being written, sheet by sheet and in each row by row downwards. Rows and columns count
// from 0. Texts are never formulas. Made and destroyed on the main thread, because the process's number format is the
// program's own meanwhile; Close may be called on another one.
// Every function throws std::system_error when a disk is full or fails, std::runtime_error for what the library
// refuses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

enum class TCellStyle { Plain, Title, NumberAsText };  // bold; to the right

// What a workbook is going to hold.
struct TWorkbookSize {
  std::size_t sheets = 1;
  std::size_t cells = 0;  // of all sheets
};

class TWorkbook {
 public:
  static constexpr std::size_t kMaxRows = 1048576;  // of a sheet

  // Until Close the rows of each sheet stand in an open file without a name, in the folder for temporary files or in
  // that of the workbook, where there is more room. Throws std::runtime_error before anything is written when there is
  // not enough room for the cells, or when the sheets are more than the files that may be open (uProcessLimits)
  // less 16. `dateMask` is that of date-times, as in FormatDateTime; `created` is the date-time in the file's
  // properties, which are those of 1980 when it is none.
  TWorkbook(const std::filesystem::path& file, const TWorkbookSize& size, std::string_view dateMask, double created);
  // Without Close the file lacks rows.
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
  void WriteText(std::size_t row, std::size_t column, const std::string& text, TCellStyle style = TCellStyle::Plain);
  // What is not finite is written as text.
  void WriteNumber(std::size_t row, std::size_t column, double value);
  // A date-time cell; before March 1900, where spreadsheets count otherwise, and after 9999 a text.
  void WriteDateTime(std::size_t row, std::size_t column, double dateTime);
  // Writes the file, of at least one sheet, and unpacks it again to see that all arrived (uPackage). Stopped, it ends
  // with errc::operation_canceled: soon where TScratchFolder::Cut works, else when the library has packed the sheets.
  void Close(const std::stop_token& stop);

 private:
  struct TLibrary;
  void CountRow(std::size_t row);
  std::unique_ptr<TLibrary> FLibrary;
};
