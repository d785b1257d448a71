#include "export/uWorkbook.h"

#include <sys/mman.h>
#include <xlsxwriter.h>

#include <array>
#include <cerrno>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMostCharacters = 32767;  // of a cell, in UTF-16
constexpr double kFirstCommonDay = 61;          // 1900-03-01: spreadsheets know a 29 February before it
constexpr double kEndOfDays = 2958466;          // 10000-01-01

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

// Calls into the library. It does not look whether its temporary files take what it writes, but the system leaves the
// reason in errno when they do not.
template <class TCall>
void Call(const TCall& call) {
  errno = 0;
  const lxw_error error = call();
  const int reason = errno;
  if (reason == ENOSPC || reason == EFBIG || reason == EDQUOT || reason == EIO ||
      error == LXW_ERROR_CREATING_XLSX_FILE || error == LXW_ERROR_CREATING_TMPFILE) {
    throw std::system_error(reason != 0 ? reason : EIO, std::generic_category());
  }
  if (error == LXW_ERROR_MEMORY_MALLOC_FAILED) throw std::bad_alloc();
  if (error != LXW_NO_ERROR) throw std::runtime_error(lxw_strerror(error));
}

// A file in memory's address space, for reading.
class TMapping {
 public:
  TMapping(std::FILE* file, std::size_t size)
      : FSize(size), FBytes(mmap(nullptr, size, PROT_READ, MAP_PRIVATE, fileno(file), 0)) {
    if (FBytes == MAP_FAILED) throw std::system_error(errno, std::generic_category());
  }
  ~TMapping() { munmap(FBytes, FSize); }
  TMapping(const TMapping&) = delete;
  TMapping& operator=(const TMapping&) = delete;
  // A stream over a part of it; nothing when there is no memory, or nothing in the part.
  [[nodiscard]] std::FILE* Open(std::size_t from, std::size_t to) const {
    return from == to ? nullptr : fmemopen(static_cast<char*>(FBytes) + from, to - from, "r");
  }

 private:
  std::size_t FSize;
  void* FBytes;
};

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
    if (rows != nullptr) std::fclose(rows);
  }
  TLibrary(const TLibrary&) = delete;
  TLibrary& operator=(const TLibrary&) = delete;

  TPointNumbers pointNumbers;
  std::string folder;
  std::string dateMask;
  lxw_workbook* workbook = nullptr;
  lxw_worksheet* sheet = nullptr;
  lxw_format* dateFormat = nullptr;
  // The library would keep a file open for each sheet, or all rows in memory. It has this one file instead, where the
  // rows of one sheet follow on those of another.
  std::FILE* rows = nullptr;
  std::vector<std::size_t> begins;  // of the sheets' rows

  [[nodiscard]] std::size_t RowBytes() const { return static_cast<std::size_t>(ftello(rows)); }
};

TWorkbook::TWorkbook(const fs::path& file, std::string_view dateMask) : FLibrary(std::make_unique<TLibrary>()) {
  errno = 0;
  if (!std::ofstream(file)) throw std::system_error(errno != 0 ? errno : EIO, std::generic_category());
  FLibrary->dateMask = dateMask;
  FLibrary->folder = Utf8FromPath(file.parent_path());
  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;
  options.use_zip64 = LXW_FALSE;
  if (!FLibrary->folder.empty()) options.tmpdir = FLibrary->folder.data();
  Call([&] {
    FLibrary->rows = lxw_tmpfile(options.tmpdir);
    return FLibrary->rows == nullptr ? LXW_ERROR_CREATING_TMPFILE : LXW_NO_ERROR;
  });
  FLibrary->workbook = workbook_new_opt(Utf8FromPath(file).c_str(), &options);
  if (FLibrary->workbook == nullptr) throw std::bad_alloc();
  FLibrary->dateFormat = workbook_add_format(FLibrary->workbook);
  if (FLibrary->dateFormat == nullptr) throw std::bad_alloc();
  format_set_num_format(FLibrary->dateFormat, SpreadsheetMask(dateMask).c_str());
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
  FLibrary->begins.push_back(FLibrary->RowBytes());
  worksheet_freeze_panes(FLibrary->sheet, static_cast<lxw_row_t>(frozenRows), 0);
}

void TWorkbook::SetColumnWidth(std::size_t column, std::size_t characters) {
  const auto at = static_cast<lxw_col_t>(column);
  Call([&] { return worksheet_set_column(FLibrary->sheet, at, at, static_cast<double>(characters), nullptr); });
}

void TWorkbook::WriteText(std::size_t row, std::size_t column, std::string_view text) {
  if (text.empty()) return;
  const std::string cell = CellText(text);
  Call([&] {
    return worksheet_write_string(FLibrary->sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column),
                                  cell.c_str(), nullptr);
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
  FLibrary->sheet = nullptr;
}

void TWorkbook::Close() {
  EndSheet();
  Call([this] { return std::fflush(FLibrary->rows) == 0 ? LXW_NO_ERROR : LXW_ERROR_CREATING_TMPFILE; });
  const std::size_t size = FLibrary->RowBytes();
  std::optional<TMapping> rows;
  if (size > 0) rows.emplace(FLibrary->rows, size);
  std::size_t number = 0;
  lxw_worksheet* sheet = nullptr;
  STAILQ_FOREACH(sheet, FLibrary->workbook->worksheets, list_pointers) {
    const std::size_t from = FLibrary->begins[number++];
    const std::size_t to = number < FLibrary->begins.size() ? FLibrary->begins[number] : size;
    sheet->optimize_tmpfile = rows ? rows->Open(from, to) : nullptr;
    if (sheet->optimize_tmpfile == nullptr && from != to) throw std::bad_alloc();
  }
  Call([this] { return workbook_close(std::exchange(FLibrary->workbook, nullptr)); });
}
