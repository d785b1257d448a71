#include "export/uWorkbook.h"

#include <unistd.h>
#include <xlsxwriter.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <fstream>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "export/uPackage.h"
#include "platform/uPartFile.h"
#include "platform/uTerminal.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMostCharacters = 32767;  // of a cell, in UTF-16
constexpr double kFirstCommonDay = 61;          // 1900-03-01: spreadsheets know a 29 February before it
constexpr double kEndOfDays = 2958466;          // 10000-01-01
constexpr double kDaysTo1970 = 25569;
constexpr double kSecondsPerDay = 86400;
constexpr std::time_t kStartOf1980 = 315532800;

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

// No room, or a disk that fails.
bool IsLoss(int reason) {
  return reason == ENOSPC || reason == EFBIG || reason == EDQUOT || reason == EIO;
}

// Calls into the library. It does not look whether the rows' file takes what it writes, but the system leaves the
// reason in errno when it does not. What it prints besides is told by the exception.
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

// Where the next row will stand.
off_t EndOfRows(std::FILE* rows) {
  const off_t end = ftello(rows);
  if (end < 0) throw std::system_error(errno, std::generic_category());
  return end;
}

// The library's own file of the sheet in work. It is compressed until it ends, which takes seconds for a long one; cut
// to nothing it ends at once. Held by another descriptor, because the library closes its own at any time.
class TSheetFile {
 public:
  TSheetFile() = default;
  ~TSheetFile() { Hold(-1, false); }
  TSheetFile(const TSheetFile&) = delete;
  TSheetFile& operator=(const TSheetFile&) = delete;
  void Hold(int descriptor, bool cut) {
    const std::lock_guard lock(FMutex);
    if (FDescriptor >= 0) close(FDescriptor);
    FDescriptor = descriptor;
    if (cut) CutHeld();
  }
  // From any thread.
  void Cut() {
    const std::lock_guard lock(FMutex);
    CutHeld();
  }

 private:
  void CutHeld() const { [[maybe_unused]] const int uncut = FDescriptor >= 0 ? ftruncate(FDescriptor, 0) : 0; }
  std::mutex FMutex;
  int FDescriptor = -1;
};

// What the packing of all sheets shares.
struct TPacking {
  std::FILE* rows = nullptr;
  std::stop_token stop;
  int failure = 0;  // the system's reason
  TSheetFile sheetFile;
};

// The rows of one sheet, which the library reads through a stream over their part of the file. At the end of that it
// has written all of them to a file of its own, and does not look whether they arrived.
struct TSheetRows {
  TPacking* packing;
  lxw_worksheet* sheet;
  off_t begin;
  off_t end = 0;
  off_t at = 0;  // from the beginning
  std::FILE* stream = nullptr;

  // All rows have an end as soon as something fails or is to stop.
  static ssize_t Read(void* cookie, char* bytes, std::size_t count) {
    auto& self = *static_cast<TSheetRows*>(cookie);
    TPacking& packing = *self.packing;
    const off_t from = self.begin + self.at;
    if (from >= self.end || packing.failure != 0 || packing.stop.stop_requested()) return 0;
    const std::size_t most = std::min(count, static_cast<std::size_t>(self.end - from));
    const ssize_t read = pread(fileno(packing.rows), bytes, most, from);
    if (read <= 0) {
      packing.failure = read < 0 ? errno : EIO;
      return 0;
    }
    self.at += read;
    return read;
  }
  static int Seek(void* cookie, off64_t* offset, int whence) {
    if (whence != SEEK_SET) return -1;
    static_cast<TSheetRows*>(cookie)->at = *offset;
    return 0;
  }
  static int Close(void* cookie) {
    auto& self = *static_cast<TSheetRows*>(cookie);
    self.stream = nullptr;
    if (self.sheet == nullptr) return 0;
    TPacking& packing = *self.packing;
    std::FILE* file = self.sheet->file;
    if ((std::fflush(file) != 0 || std::ferror(file) != 0) && packing.failure == 0) {
      packing.failure = IsLoss(errno) ? errno : ENOSPC;
    }
    packing.sheetFile.Hold(dup(fileno(file)), packing.stop.stop_requested());
    return 0;
  }
  void Open() {
    stream = fopencookie(this, "r", {Read, nullptr, Seek, Close});
    if (stream == nullptr) throw std::bad_alloc();
  }
  // What the library has left.
  void Release() {
    sheet = nullptr;
    if (stream != nullptr) std::fclose(stream);
  }
};

// The folder with more room for what is only needed until the file is written.
fs::path RoomyFolder(const fs::path& wanted) {
  std::error_code error;
  const fs::path temporary = fs::temp_directory_path(error);
  if (error) return wanted;
  const fs::space_info there = fs::space(temporary, error);
  if (error) return wanted;
  const fs::space_info here = fs::space(wanted.empty() ? fs::path(".") : wanted, error);
  return error || here.available >= there.available ? wanted : temporary;
}

// The date-time as the library takes it. It writes the hour of the day for 0.
std::time_t CreationTime(double dateTime) {
  const bool isDate = dateTime >= kFirstCommonDay && dateTime < kEndOfDays;
  const auto time = isDate ? static_cast<std::time_t>(std::llround((dateTime - kDaysTo1970) * kSecondsPerDay)) : 0;
  return time != 0 ? time : kStartOf1980;
}

// A date mask in the words of spreadsheets: minutes are "mm" there too, milliseconds "000". What could mean something
// else is marked as itself.
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

std::string CellText(std::string_view text) {
  constexpr std::string_view kEscapedUnderline = "_x005F_";
  constexpr std::string_view kSpecial("_\0", 2);
  if (text.size() <= kMostCharacters && text.find_first_of(kSpecial) == std::string_view::npos)
    return std::string(text);
  std::string cell;
  std::size_t characters = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool escaped = IsEscape(text.substr(i));
    const bool begins = (byte & 0xC0U) != 0x80U;
    if (begins) characters += escaped ? kEscapedUnderline.size() : byte >= 0xF0 ? 2 : 1;
    if (characters > kMostCharacters) break;
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
    if (workbook != nullptr) lxw_workbook_free(workbook);
    for (TSheetRows& left : sheets) left.Release();
    if (rows != nullptr) std::fclose(rows);
  }
  TLibrary(const TLibrary&) = delete;
  TLibrary& operator=(const TLibrary&) = delete;

  TPointNumbers pointNumbers;
  std::optional<TScratchFolder> scratch;
  std::string folder;  // its path
  fs::path file;
  std::string dateMask;
  lxw_workbook* workbook = nullptr;
  lxw_worksheet* sheet = nullptr;
  lxw_format* dateFormat = nullptr;
  lxw_format* titleFormat = nullptr;
  lxw_format* numberTextFormat = nullptr;
  // The library would keep a file open for each sheet, or all rows in memory. It has this one file instead, where the
  // rows of one sheet follow on those of another.
  std::FILE* rows = nullptr;
  std::deque<TSheetRows> sheets;  // which stay where they are
  TPacking packing;
};

TWorkbook::TWorkbook(const fs::path& file, std::string_view dateMask, double created)
    : FLibrary(std::make_unique<TLibrary>()) {
  errno = 0;
  if (!std::ofstream(file)) throw std::system_error(errno != 0 ? errno : EIO, std::generic_category());
  FLibrary->dateMask = dateMask;
  FLibrary->file = file;
  const fs::path roomy = RoomyFolder(file.parent_path());
  RemoveAbandonedParts(roomy);
  FLibrary->folder = Utf8FromPath(FLibrary->scratch.emplace(roomy).Path());
  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;
  options.use_zip64 = LXW_FALSE;
  options.tmpdir = FLibrary->folder.data();
  Call([&] {
    FLibrary->rows = lxw_tmpfile(options.tmpdir);
    return FLibrary->rows == nullptr ? LXW_ERROR_CREATING_TMPFILE : LXW_NO_ERROR;
  });
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
  format_set_align(FLibrary->numberTextFormat, LXW_ALIGN_RIGHT);
}

TWorkbook::~TWorkbook() = default;

void TWorkbook::AddSheet(const std::string& name, std::size_t frozenRows) {
  EndSheet();
  Call([&] {
    FLibrary->sheet = workbook_add_worksheet(FLibrary->workbook, name.c_str());
    return FLibrary->sheet == nullptr ? LXW_ERROR_CREATING_TMPFILE : LXW_NO_ERROR;
  });
  std::fclose(FLibrary->sheet->optimize_tmpfile);
  FLibrary->sheet->optimize_tmpfile = FLibrary->sheet->file = FLibrary->rows;
  FLibrary->sheets.push_back({&FLibrary->packing, FLibrary->sheet, EndOfRows(FLibrary->rows)});
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
  char range[LXW_MAX_CELL_RANGE_LENGTH] = {};
  lxw_rowcol_to_range(range, 0, 0, row, std::max(column, lxw_col_t{1}));
  Call([&] { return worksheet_ignore_errors(FLibrary->sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, range); });
}

void TWorkbook::WriteText(std::size_t row, std::size_t column, std::string_view text, TCellStyle style) {
  if (text.empty()) return;
  const std::string cell = CellText(text);
  lxw_format* formats[] = {nullptr, FLibrary->titleFormat, FLibrary->numberTextFormat};
  Call([&] {
    return worksheet_write_string(FLibrary->sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column),
                                  cell.c_str(), formats[static_cast<std::size_t>(style)]);
  });
}

void TWorkbook::WriteNumber(std::size_t row, std::size_t column, double value) {
  if (!std::isfinite(value)) return WriteText(row, column, GeneralFloat(value));
  Call([&] {
    return worksheet_write_number(FLibrary->sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column), value,
                                  nullptr);
  });
}

void TWorkbook::WriteDateTime(std::size_t row, std::size_t column, double dateTime) {
  if (!(dateTime >= kFirstCommonDay && dateTime < kEndOfDays)) {
    return WriteText(row, column, FormatDateTime(FLibrary->dateMask, dateTime));
  }
  Call([&] {
    return worksheet_write_number(FLibrary->sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column),
                                  dateTime, FLibrary->dateFormat);
  });
}

// The library holds the last row back, and room for 16,384 cells until the end.
void TWorkbook::EndSheet() {
  if (FLibrary->sheet == nullptr) return;
  Call([this] {
    lxw_worksheet_write_single_row(FLibrary->sheet);
    return LXW_NO_ERROR;
  });
  std::free(std::exchange(FLibrary->sheet->array, nullptr));
  FLibrary->sheets.back().end = EndOfRows(FLibrary->rows);
  FLibrary->sheet = nullptr;
}

void TWorkbook::Close(const std::stop_token& stop) {
  EndSheet();
  TPacking& packing = FLibrary->packing;
  packing.rows = FLibrary->rows;
  packing.stop = stop;
  Call([&] {
    const bool whole = std::fflush(packing.rows) == 0 && std::ferror(packing.rows) == 0;
    return whole ? LXW_NO_ERROR : LXW_ERROR_CREATING_TMPFILE;
  });
  for (TSheetRows& rows : FLibrary->sheets) {
    rows.Open();
    rows.sheet->optimize_tmpfile = rows.stream;
  }
  const std::stop_callback cut(stop, [&packing] { packing.sheetFile.Cut(); });
  Call([&] {
    const lxw_error error = workbook_close(std::exchange(FLibrary->workbook, nullptr));
    if (packing.failure == 0) return error;
    errno = packing.failure;
    return LXW_ERROR_CREATING_TMPFILE;
  });
  if (!stop.stop_requested()) CheckPackage(FLibrary->file, stop);
  if (stop.stop_requested()) throw std::system_error(std::make_error_code(std::errc::operation_canceled));
}
