// Writes a spreadsheet file sheet by sheet, and each sheet row by row downwards. Rows and columns count from 0. Texts
// are never formulas. Create and destroy it on the main thread, because it sets the process's number format; Close may
// be called on another thread. Every function throws std::system_error when a disk is full or fails, std::runtime_error
// when the library refuses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

enum class TCellStyle { Plain, Title, NumberAsText };  // bold; to the right

// The size of a workbook before it is written.
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

  // Begins a sheet, whose first `frozenRows` rows stay in sight. The name is one of SafeSheetName.
  void AddSheet(const std::string& name, std::size_t frozenRows);
  void SetColumnWidth(std::size_t column, std::size_t characters);
  // Adds filter drop-downs to the titles of a table, and turns off the warning about numbers that are text, from the
  // sheet's first row on. There is at least one column.
  void MarkTable(std::size_t titleRow, std::size_t lastRow, std::size_t columns);
  // Cut at 32,767 characters.
  void WriteText(std::size_t row, std::size_t column, const std::string& text, TCellStyle style = TCellStyle::Plain);
  // NaN and infinities are written as text.
  void WriteNumber(std::size_t row, std::size_t column, double value);
  // A date-time cell; before March 1900, where spreadsheets count otherwise, and after 9999 a text.
  void WriteDateTime(std::size_t row, std::size_t column, double dateTime);
  // Packs the file, which has at least one sheet, and checks it (uPackage). When stopped it throws
  // errc::operation_canceled: soon where TScratchFolder::Cut works, else after the library has packed the sheets.
  void Close(const std::stop_token& stop);

 private:
  struct TLibrary;
  void CountRow(std::size_t row);
  std::unique_ptr<TLibrary> FLibrary;
};
