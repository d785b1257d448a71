#include "export/uWorkbook.h"

#include <fmt/format.h>
#include <xlsxwriter.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cmath>
#include <ctime>
#include <fstream>
#include <future>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "export/uPackage.h"
#include "platform/uMachineMemory.h"
#include "platform/uPartFile.h"
#include "platform/uProcessLimits.h"
#include "platform/uTerminal.h"

namespace fs = std::filesystem;

// The library writes numbers with the process's number format, and a file with decimal commas cannot be read.
class TPointNumbers {
 public:
  TPointNumbers() { std::setlocale(LC_NUMERIC, "C"); }
  ~TPointNumbers() { std::setlocale(LC_NUMERIC, FBefore.c_str()); }
  TPointNumbers(const TPointNumbers&) = delete;
  TPointNumbers& operator=(const TPointNumbers&) = delete;

 private:
  std::string FBefore = std::setlocale(LC_NUMERIC, nullptr);
};

namespace {

constexpr std::size_t kMaxCharacters = 32767;  // of a cell, in UTF-16
constexpr double kFirstCommonDay = 61;         // 1900-03-01: spreadsheets know a 29 February before it
constexpr double kEndOfDays = 2958466;         // 10000-01-01
constexpr double kSecondsPerDay = 86400;
constexpr std::time_t kStartOf1980 = 315532800;
constexpr std::size_t kOtherFiles = 16;   // that the library and the rest of the program open meanwhile
constexpr std::size_t kBytesOfCell = 44;  // of a number, with its share of the row

#ifndef EDQUOT  // a system whose C library knows no quotas
#define EDQUOT ENOSPC
#endif

bool IsLoss(int reason) {
  return reason == ENOSPC || reason == EFBIG || reason == EDQUOT || reason == EIO;
}

// Calls into the library. It does not check its writes, but a failed one leaves its reason in errno. What the library
// prints is dropped, because the exception says it.
template <class TCall>
void Call(const TCall& call) {
  const TSilentErrors silent;
  errno = 0;
  const lxw_error error = call();
  const int reason = errno;
  if (IsLoss(reason) || error == LXW_ERROR_CREATING_XLSX_FILE || error == LXW_ERROR_CREATING_TMPFILE) {
    throw std::system_error(reason != 0 ? reason : EIO, std::generic_category());
  }
  if (error == LXW_ERROR_MEMORY_MALLOC_FAILED) throw std::bad_alloc();
  if (error != LXW_NO_ERROR) throw std::runtime_error(lxw_strerror(error));
}

// The folder with more room for temporary files.
fs::path RoomyFolder(const fs::path& wanted) {
  std::error_code error;
  const fs::path temporary = fs::temp_directory_path(error);
  if (error) return wanted;
  const fs::space_info there = fs::space(temporary, error);
  if (error) return wanted;
  const fs::space_info here = fs::space(wanted.empty() ? fs::path(".") : wanted, error);
  return error || here.available >= there.available ? wanted : temporary;
}

// The library keeps a file open for each sheet.
void RequireFiles(std::size_t sheets) {
  const std::size_t left = OpenFilesLeft();
  const std::size_t max = left - std::min(left, kOtherFiles);
  if (sheets <= max) return;
  throw std::runtime_error(fmt::format(
      "The workbook has {} sheets, each of which needs an open file, and the system allows {}. Export fewer "
      "events, or raise the limit of open files.",
      sheets, max));
}

void RequireRoom(const fs::path& folder, std::size_t cells) {
  constexpr double kMebibyte = 1024 * 1024;
  std::error_code error;
  const fs::space_info space = fs::space(folder.empty() ? fs::path(".") : folder, error);
  const double needed = static_cast<double>(cells) * kBytesOfCell;
  const auto free = static_cast<double>(space.available);
  if (error || needed <= free) return;
  throw std::runtime_error(fmt::format(
      "There is not enough room for the temporary files of the workbook: they need {:.0f} MiB, and {} has {:.0f} MiB.",
      std::ceil(needed / kMebibyte), Utf8FromPath(folder), std::floor(free / kMebibyte)));
}

// "A" for 1, "AA" for 27.
std::string ColumnName(std::size_t number) {
  std::string name;
  for (; number > 0; number = (number - 1) / 26) name.insert(name.begin(), static_cast<char>('A' + (number - 1) % 26));
  return name;
}

// The date-time as the library takes it. It writes the hour of the day for 0.
std::time_t CreationTime(double dateTime) {
  const bool isDate = dateTime >= kFirstCommonDay && dateTime < kEndOfDays;
  const auto time = isDate ? static_cast<std::time_t>(std::llround((dateTime - kDaysTo1970) * kSecondsPerDay)) : 0;
  return time != 0 ? time : kStartOf1980;
}

// The date mask of a spreadsheet, where minutes are "mm", too, and milliseconds "000". Other characters are escaped.
std::string SpreadsheetMask(std::string_view mask) {
  std::string format;
  for (const char c : mask) {
    if (c == 'n') {
      format += 'm';
    } else if (c == 'z') {
      format += '0';
    } else if (std::string_view("ymdhs-.: ").find(c) != std::string_view::npos) {
      format += c;
    } else {
      if (static_cast<unsigned char>(c) < 0x80) format += '\\';
      format += c;
    }
  }
  return format;
}

// Spreadsheets read "_x0041_" as the character of that number.
bool IsEscape(std::string_view text) {
  if (text.size() < 7 || text[0] != '_' || text[1] != 'x' || text[6] != '_') return false;
  return text.substr(2, 4).find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

bool FitsAsItIs(const std::string& text) {
  return text.size() <= kMaxCharacters && text.find('_') == std::string::npos && text.find('\0') == std::string::npos;
}

std::string CellText(std::string_view text) {
  constexpr std::string_view kEscapedUnderline = "_x005F_";
  std::string cell;
  std::size_t characters = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool escaped = IsEscape(text.substr(i));
    const bool begins = (byte & 0xC0U) != 0x80U;
    if (begins) characters += escaped ? kEscapedUnderline.size() : byte >= 0xF0 ? 2 : 1;
    if (characters > kMaxCharacters) break;
    if (escaped) {
      cell += kEscapedUnderline;
    } else {
      cell += byte == 0 ? ' ' : text[i];
    }
  }
  return cell;
}

}  // namespace

struct TWorkbook::TLibrary {
  TLibrary() = default;
  ~TLibrary() {
    if (workbook == nullptr) return;
    scratch->Cut();
    const TSilentErrors silent;
    workbook_close(workbook);  // the one way to have the library close its files
  }
  TLibrary(const TLibrary&) = delete;
  TLibrary& operator=(const TLibrary&) = delete;

  TPointNumbers pointNumbers;
  TSparseBlocks sparseBlocks;  // the library asks for 128 KiB for each sheet and uses a page of it
  std::optional<TScratchFolder> scratch;
  std::string folder;  // its path
  fs::path file;
  std::string dateMask;
  lxw_workbook* workbook = nullptr;
  lxw_worksheet* sheet = nullptr;
  lxw_format* dateFormat = nullptr;
  lxw_format* titleFormat = nullptr;
  lxw_format* numberTextFormat = nullptr;
  std::vector<std::size_t> rows;  // of each sheet, as far as they hold a cell
  std::size_t lastRow = 0;
};

TWorkbook::TWorkbook(const fs::path& file, const TWorkbookSize& size, std::string_view dateMask, double created)
    : FLibrary(std::make_unique<TLibrary>()) {
  const fs::path roomy = RoomyFolder(file.parent_path());
  RemoveAbandonedParts(roomy);
  RequireFiles(size.sheets);
  RequireRoom(roomy, size.cells);
  errno = 0;
  if (!std::ofstream(file)) throw std::system_error(errno != 0 ? errno : EIO, std::generic_category());
  FLibrary->dateMask = dateMask;
  FLibrary->file = file;
  FLibrary->folder = Utf8FromPath(FLibrary->scratch.emplace(roomy).Path());
  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;
  options.use_zip64 = LXW_FALSE;
  options.tmpdir = FLibrary->folder.data();
  Call([&] {
    FLibrary->workbook = workbook_new_opt(Utf8FromPath(file).c_str(), &options);
    return FLibrary->workbook == nullptr ? LXW_ERROR_MEMORY_MALLOC_FAILED : LXW_NO_ERROR;
  });
  lxw_doc_properties properties{};
  properties.created = CreationTime(created);
  Call([&] { return workbook_set_properties(FLibrary->workbook, &properties); });
  for (lxw_format** format : {&FLibrary->dateFormat, &FLibrary->titleFormat, &FLibrary->numberTextFormat}) {
    *format = workbook_add_format(FLibrary->workbook);
    if (*format == nullptr) throw std::bad_alloc();
  }
  format_set_num_format(FLibrary->dateFormat, SpreadsheetMask(dateMask).c_str());
  format_set_bold(FLibrary->titleFormat);
  format_set_align(FLibrary->titleFormat, LXW_ALIGN_RIGHT);  // above numbers and dates
  format_set_align(FLibrary->numberTextFormat, LXW_ALIGN_RIGHT);
}

TWorkbook::~TWorkbook() = default;

void TWorkbook::AddSheet(const std::string& name, std::size_t frozenRows) {
  Call([&] {
    FLibrary->sheet = workbook_add_worksheet(FLibrary->workbook, name.c_str());
    return FLibrary->sheet == nullptr ? LXW_ERROR_CREATING_TMPFILE : LXW_NO_ERROR;
  });
  FLibrary->rows.push_back(0);
  worksheet_freeze_panes(FLibrary->sheet, static_cast<lxw_row_t>(frozenRows), 0);
}

void TWorkbook::SetColumnWidth(std::size_t column, std::size_t characters) {
  const auto at = static_cast<lxw_col_t>(column);
  Call([&] { return worksheet_set_column(FLibrary->sheet, at, at, static_cast<double>(characters), nullptr); });
}

void TWorkbook::MarkTable(std::size_t titleRow, std::size_t lastRow, std::size_t columns) {
  const auto row = static_cast<lxw_row_t>(lastRow);
  const auto column = static_cast<lxw_col_t>(columns - 1);
  Call([&] { return worksheet_autofilter(FLibrary->sheet, static_cast<lxw_row_t>(titleRow), 0, row, column); });
  const std::string range = fmt::format("A1:{}{}", ColumnName(std::max(columns, std::size_t{2})), lastRow + 1);
  Call([&] { return worksheet_ignore_errors(FLibrary->sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, range.c_str()); });
}

void TWorkbook::WriteText(std::size_t row, std::size_t column, const std::string& text, TCellStyle style) {
  if (text.empty()) return;
  CountRow(row);
  const std::string changed = FitsAsItIs(text) ? std::string() : CellText(text);
  const std::string& cell = changed.empty() ? text : changed;
  lxw_format* formats[] = {nullptr, FLibrary->titleFormat, FLibrary->numberTextFormat};
  Call([&] {
    return worksheet_write_string(FLibrary->sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column),
                                  cell.c_str(), formats[static_cast<std::size_t>(style)]);
  });
}

void TWorkbook::WriteNumber(std::size_t row, std::size_t column, double value) {
  if (!std::isfinite(value)) return WriteText(row, column, GeneralFloat(value));
  CountRow(row);
  Call([&] {
    return worksheet_write_number(FLibrary->sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column), value,
                                  nullptr);
  });
}

void TWorkbook::WriteDateTime(std::size_t row, std::size_t column, double dateTime) {
  if (!(dateTime >= kFirstCommonDay && dateTime < kEndOfDays)) {
    return WriteText(row, column, FormatDateTime(FLibrary->dateMask, dateTime));
  }
  CountRow(row);
  Call([&] {
    return worksheet_write_number(FLibrary->sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column),
                                  dateTime, FLibrary->dateFormat);
  });
}

void TWorkbook::CountRow(std::size_t row) {
  std::size_t& rows = FLibrary->rows.back();
  if (rows == 0 || row != FLibrary->lastRow) ++rows;
  FLibrary->lastRow = row;
}

void TWorkbook::Close(const std::stop_token& stop) {
  {
    const std::stop_callback cut(stop, [this] { FLibrary->scratch->Cut(); });
    Call([this] { return workbook_close(std::exchange(FLibrary->workbook, nullptr)); });
  }
  if (!stop.stop_requested()) {
    const std::future<void> synced = std::async(std::launch::async, [this] { SyncEarly(FLibrary->file); });
    CheckPackage(FLibrary->file, FLibrary->rows, stop);
  }
  if (stop.stop_requested()) throw std::system_error(std::make_error_code(std::errc::operation_canceled));
}
