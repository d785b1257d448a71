#include "fleet/uFleetDatabase.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <set>

#include "base/uFiles.h"

class TFleetDatabase::TConnection {
 public:
  TConnection(const std::filesystem::path& path, int flags) {
    const int result = sqlite3_open_v2(Utf8FromPath(path).c_str(), &FHandle, flags, nullptr);
    if (result == SQLITE_OK) return;
    const std::string why = FHandle == nullptr ? sqlite3_errstr(result) : sqlite3_errmsg(FHandle);
    sqlite3_close(FHandle);
    throw EFleetDatabase(why);
  }
  ~TConnection() { sqlite3_close(FHandle); }
  TConnection(const TConnection&) = delete;
  TConnection& operator=(const TConnection&) = delete;

  void Run(const std::string& sql) {
    if (sqlite3_exec(FHandle, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
  }
  [[noreturn]] void Fail() const { throw EFleetDatabase(sqlite3_errmsg(FHandle)); }
  [[nodiscard]] sqlite3* Handle() const { return FHandle; }

 private:
  sqlite3* FHandle = nullptr;
};

class TFleetDatabase::TStatement {
 public:
  TStatement(TConnection& connection, const std::string& sql) : FConnection(connection) {
    if (sqlite3_prepare_v2(connection.Handle(), sql.c_str(), -1, &FHandle, nullptr) != SQLITE_OK) connection.Fail();
  }
  ~TStatement() { sqlite3_finalize(FHandle); }
  TStatement(const TStatement&) = delete;
  TStatement& operator=(const TStatement&) = delete;

  // The values must live until the last step.
  void Bind(const TFleetRow& values) {
    for (std::size_t i = 0; i < values.size(); ++i) Bind(static_cast<int>(i) + 1, values[i]);
  }
  // Runs it once with these values.
  void Run(const TFleetRow& values) {
    Bind(values);
    while (Step()) {
    }
    sqlite3_reset(FHandle);
  }
  // False at the end of the rows.
  bool Step() {
    const int result = sqlite3_step(FHandle);
    if (result == SQLITE_ROW) return true;
    if (result != SQLITE_DONE) FConnection.Fail();
    return false;
  }
  [[nodiscard]] int Columns() const { return sqlite3_column_count(FHandle); }
  [[nodiscard]] TFleetValue Value(int column) const {
    switch (sqlite3_column_type(FHandle, column)) {
      case SQLITE_NULL:
        return {};
      case SQLITE_INTEGER:
        return std::int64_t{sqlite3_column_int64(FHandle, column)};
      case SQLITE_FLOAT:
        return sqlite3_column_double(FHandle, column);
      default:
        return Text(column);
    }
  }
  [[nodiscard]] std::string Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(FHandle, column));
    return text == nullptr ? std::string()
                           : std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(FHandle, column)));
  }
  [[nodiscard]] std::int64_t Integer(int column) const { return sqlite3_column_int64(FHandle, column); }

 private:
  void Bind(int place, const TFleetValue& value) {
    int result = SQLITE_OK;
    if (const auto* text = std::get_if<std::string>(&value)) {
      result = sqlite3_bind_text64(FHandle, place, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
    } else if (const auto* integer = std::get_if<std::int64_t>(&value)) {
      result = sqlite3_bind_int64(FHandle, place, *integer);
    } else if (const auto* real = std::get_if<double>(&value)) {
      result = sqlite3_bind_double(FHandle, place, *real);
    } else {
      result = sqlite3_bind_null(FHandle, place);
    }
    if (result != SQLITE_OK) FConnection.Fail();
  }

  TConnection& FConnection;
  sqlite3_stmt* FHandle = nullptr;
};

namespace {

constexpr std::string_view kTypes[] = {"TEXT", "INTEGER", "REAL"};
constexpr int kApplicationId = 0x4B534846;  // what makes a file ours

// "a, b", each as a name.
template <class TNames, class TName>
std::string Listed(const TNames& names, const TName& nameOf) {
  std::string list;
  for (const auto& name : names) list += fmt::format("{}\"{}\"", list.empty() ? "" : ", ", nameOf(name));
  return list;
}

std::string ColumnsOf(const TFleetTable& table) {
  return Listed(table.columns, [](const TFleetColumn& column) { return column.name; });
}

}  // namespace

TFleetDatabase::TFleetDatabase(const std::filesystem::path& path)
    : FConnection(std::make_unique<TConnection>(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) {
  // Nobody else has the file before it is whole, so it needs no journal.
  FConnection->Run(
      fmt::format("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA locking_mode=EXCLUSIVE; "
                  "PRAGMA application_id={}; BEGIN",
                  kApplicationId));
  for (std::size_t i = 0; i < FInserts.size(); ++i) {
    const TFleetTable& table = FleetTables()[i];
    std::string columns, places;
    for (const TFleetColumn& column : table.columns) {
      columns += fmt::format("{}\"{}\" {}", columns.empty() ? "" : ", ", column.name,
                             kTypes[static_cast<std::size_t>(column.type)]);
      places += places.empty() ? "?" : ",?";
    }
    FConnection->Run(
        fmt::format("CREATE TABLE {0} ({1}); CREATE INDEX {0}_{2} ON {0} ({2})", table.name, columns, table.path));
    FInserts[i] =
        std::make_unique<TStatement>(*FConnection, fmt::format("INSERT INTO {} VALUES ({})", table.name, places));
  }
  FConnection->Run("CREATE TEMP TABLE taken (path TEXT PRIMARY KEY) WITHOUT ROWID");
}

TFleetDatabase::~TFleetDatabase() {
  for (auto& insert : FInserts) insert.reset();
}

bool StillHolds(const TFleetEntry& entry, const std::map<std::string, TFleetKnown>& known, const std::string& options) {
  constexpr int kCannotRead = 3;  // such a file is always tried again
  const auto found = known.find(entry.name);
  if (found == known.end() || !entry.problem.empty()) return false;
  const TFleetKnown& earlier = found->second;
  if (earlier.status == kCannotRead || earlier.programVersion != SHOCKSCOPE_VERSION || earlier.options != options) {
    return false;
  }
  const auto state = StateOf(entry.path);
  return state && *state == TFileState{earlier.size, earlier.modified};
}

void TFleetDatabase::RefuseOther(TConnection& connection) {
  TStatement id(connection, "PRAGMA application_id");
  if (!id.Step() || id.Integer(0) != kApplicationId) throw EFleetDatabase("It is no table of recordings.");
}

std::map<std::string, TFleetKnown> TFleetDatabase::KnownIn(const std::filesystem::path& path) {
  TConnection connection(path, SQLITE_OPEN_READONLY);
  RefuseOther(connection);
  TStatement rows(connection, "SELECT path, size_bytes, modified, status, program_version, options FROM recording");
  std::map<std::string, TFleetKnown> known;
  while (rows.Step()) {
    known[rows.Text(0)] = {rows.Integer(1), rows.Text(2), static_cast<int>(rows.Integer(3)), rows.Text(4),
                           rows.Text(5)};
  }
  return known;
}

void TFleetDatabase::Ask(const std::filesystem::path& path, const std::string& sql, const TFleetRow& parameters,
                         const std::function<void(const TFleetRow&)>& visit) {
  TConnection connection(path, SQLITE_OPEN_READONLY);
  RefuseOther(connection);
  TStatement rows(connection, sql);
  rows.Bind(parameters);
  TFleetRow row;
  while (rows.Step()) {
    row.clear();
    for (int i = 0; i < rows.Columns(); ++i) row.push_back(rows.Value(i));
    visit(row);
  }
}

void TFleetDatabase::Add(const TFleetRows& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (const TFleetRow& row : rows[i]) FInserts[i]->Run(row);
  }
}

void TFleetDatabase::TakeFrom(const std::filesystem::path& other, const std::vector<std::string>& paths) {
  FConnection->Run("DELETE FROM taken");
  {
    TStatement insert(*FConnection, "INSERT OR IGNORE INTO taken VALUES (?)");
    for (const std::string& path : paths) insert.Run({path});
  }
  Copy(other);
}

void TFleetDatabase::Merge(const std::filesystem::path& other) {
  KnownIn(other);  // throws for a file of another program
  FConnection->Run("COMMIT; DELETE FROM taken");
  TStatement(*FConnection, "ATTACH ? AS other").Run({Utf8FromPath(other)});
  FConnection->Run(
      "BEGIN; INSERT OR IGNORE INTO taken SELECT theirs.path FROM other.recording AS theirs LEFT JOIN recording AS "
      "ours "
      "ON ours.path = theirs.path WHERE ours.path IS NULL OR theirs.analysed_at > ours.analysed_at; COMMIT; "
      "DETACH other; BEGIN");
  for (const TFleetTable& table : FleetTables()) {
    FConnection->Run(fmt::format("DELETE FROM {} WHERE {} IN taken", table.name, table.path));
  }
  Copy(other);
}

void TFleetDatabase::Copy(const std::filesystem::path& other) {
  FConnection->Run("COMMIT");  // a file cannot be attached within a transaction
  TStatement(*FConnection, "ATTACH ? AS other").Run({Utf8FromPath(other)});
  FConnection->Run("BEGIN");
  for (const TFleetTable& table : FleetTables()) {
    std::set<std::string> theirs;
    TStatement columns(*FConnection, fmt::format("SELECT name FROM pragma_table_info('{}', 'other')", table.name));
    while (columns.Step()) theirs.insert(columns.Text(0));
    std::vector<std::string_view> common;
    for (const TFleetColumn& column : table.columns) {
      if (theirs.contains(std::string(column.name))) common.push_back(column.name);
    }
    const std::string names = Listed(common, [](std::string_view name) { return name; });
    FConnection->Run(fmt::format("INSERT INTO {0} ({1}) SELECT {1} FROM other.{0} WHERE {2} IN taken ORDER BY rowid",
                                 table.name, names, table.path));
  }
  FConnection->Run("COMMIT; DETACH other; BEGIN");
}

std::size_t TFleetDatabase::UnusableRecordings() {
  TStatement statuses(*FConnection, "SELECT status FROM recording");
  std::size_t unusable = 0;
  while (statuses.Step()) unusable += IsUsable(static_cast<int>(statuses.Integer(0))) ? 0 : 1;
  return unusable;
}

void TFleetDatabase::Finish() {
  FConnection->Run("COMMIT");
}

void TFleetDatabase::ForEachRow(std::size_t table, const std::function<void(const TFleetRow&)>& visit) {
  const TFleetTable& of = FleetTables()[table];
  TStatement rows(*FConnection, fmt::format("SELECT {} FROM {} ORDER BY {}, rowid", ColumnsOf(of), of.name, of.path));
  TFleetRow row(of.columns.size());
  while (rows.Step()) {
    for (std::size_t i = 0; i < row.size(); ++i) row[i] = rows.Value(static_cast<int>(i));
    visit(row);
  }
}
