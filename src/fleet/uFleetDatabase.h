// The tables of many recordings in one SQLite file. One thread at a time.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "fleet/uFleetFiles.h"
#include "fleet/uFleetTables.h"

// The file cannot be used: its name is not in the message.
class EFleetDatabase : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What decides whether a file's rows still hold.
struct TFleetKnown {
  std::int64_t size = 0;
  std::string modified;
  int status = 0;
  std::string programVersion;
  std::string options;
};

// True when the rows of a file, made with the same options by this version, are those of the file as it stands.
bool StillHolds(const TFleetEntry& entry, const std::map<std::string, TFleetKnown>& known, const std::string& options);

// Every function throws EFleetDatabase.
class TFleetDatabase {
 public:
  // Fills an empty file; it is whole once Finish returns, and of no use when that is not called.
  explicit TFleetDatabase(const std::filesystem::path& path);
  ~TFleetDatabase();
  TFleetDatabase(const TFleetDatabase&) = delete;
  TFleetDatabase& operator=(const TFleetDatabase&) = delete;

  // By path, of a file that a TFleetDatabase finished. Throws for any other file.
  static std::map<std::string, TFleetKnown> KnownIn(const std::filesystem::path& path);

  // The rows of a question in SQL to such a file; the numbered parameters get these values. Any thread.
  static void Ask(const std::filesystem::path& path, const std::string& sql, const TFleetRow& parameters,
                  const std::function<void(const TFleetRow&)>& visit);

  void Add(const TFleetRows& rows);
  // Copies the rows of recordings from a finished file; those that it lacks are left out. Columns that only one of the
  // two has are NULL or left out.
  void TakeFrom(const std::filesystem::path& other, const std::vector<std::string>& paths);
  // All recordings. One that is in both stays as it is here, unless the other was analysed later.
  void Merge(const std::filesystem::path& other);
  void Finish();

  // How many recordings have a status without IsUsable.
  [[nodiscard]] std::size_t UnusableRecordings();
  // The rows of a table, 0 … 2 of FleetTables(), by path and then in the order they were added.
  void ForEachRow(std::size_t table, const std::function<void(const TFleetRow&)>& visit);

 private:
  class TConnection;
  class TStatement;
  // Throws for a file of another program.
  static void RefuseOther(TConnection& connection);
  void Copy(const std::filesystem::path& other);

  std::unique_ptr<TConnection> FConnection;
  std::array<std::unique_ptr<TStatement>, 3> FInserts;
};
