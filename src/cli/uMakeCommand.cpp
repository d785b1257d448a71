#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cmath>
#include <fstream>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <span>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <type_traits>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "model/uBlockTypes.h"
#include "model/uRecordingWriter.h"
#include "platform/uSafeFile.h"

using nlohmann::json;

namespace {

// What is wrong with the source, in words.
class ESourceError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::ifstream OpenSource(const std::filesystem::path& path, std::string_view what) {
  std::error_code error;
  const bool isFile = std::filesystem::is_regular_file(path, error);
  std::ifstream file;
  errno = 0;
  if (isFile) file.open(path, std::ios::binary);
  if (file.is_open()) return file;
  const std::string reason = error     ? MessageOf(error)
                             : !isFile ? "it is no regular file"
                                       : std::generic_category().message(errno);
  throw ESourceError(fmt::format("{} cannot be opened: {}.", what, reason));
}

// Views into the line.
void SplitLine(std::string_view line, std::vector<std::string_view>& cells) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  cells.clear();
  for (std::size_t comma = line.find(','); comma != std::string_view::npos; comma = line.find(',')) {
    cells.push_back(line.substr(0, comma));
    line.remove_prefix(comma + 1);
  }
  cells.push_back(line);
}

template <class T>
T ParseNumber(std::string_view text, std::size_t line) {
  constexpr std::size_t kShown = 40;
  if (const auto number = NumberIn<T>(text)) return *number;
  throw ESourceError(
      fmt::format("Line {} of the records: \"{}\" is no number that fits.", line, text.substr(0, kShown)));
}

double ParseTime(std::string_view cell, std::size_t line) {
  const auto ms = ParseNumber<double>(cell, line);
  // A reader would skip the rest of the block behind any other time.
  if (ms >= 0 && ms <= kMaxRecordDays * kMsPerDay) return ms;
  throw ESourceError(
      fmt::format("Line {} of the records: a time lies in 0 … {} ms.", line, kMaxRecordDays * kMsPerDay));
}

std::uint32_t ParseReading(std::string_view cell, std::size_t line) {
  if (cell.empty()) return kNoValue;
  if (cell == "END") return kEndOfEvent;
  return std::bit_cast<std::uint32_t>(ParseNumber<float>(cell, line));
}

// Nothing in a description is nested deeper; a hostile one could exhaust the stack.
constexpr int kMaxDepth = 8;

json ParseSource(std::istream& source) try {
  return json::parse(source, [](int depth, json::parse_event_t, const json&) {
    if (depth > kMaxDepth) throw ESourceError("The source is nested too deep.");
    return true;
  });
} catch (const json::parse_error& error) {
  throw ESourceError(fmt::format("The source is no JSON; byte {} is not understood.", error.byte));
}

// Every name in an object must be one of the known.
void RefuseUnknown(const json& object, std::string_view where, const std::set<std::string_view>& known) {
  if (!object.is_object()) throw ESourceError(fmt::format("{} is no object.", where));
  for (const auto& [name, value] : object.items()) {
    if (!known.contains(name)) throw ESourceError(fmt::format("{} has an unknown name: \"{}\".", where, name));
  }
}

// Refuses a value that does not fit its type exactly.
template <class T>
void ParseValue(const json& object, const char* name, T& value) {
  if (!object.contains(name)) throw ESourceError(fmt::format("\"{}\" is missing.", name));
  const json& given = object.at(name);
  bool fits = given.is_number();
  if constexpr (std::is_same_v<T, std::string>) fits = given.is_string();
  if constexpr (std::is_same_v<T, std::uint16_t>) fits = given.is_number_unsigned() && given <= 65535;
  if constexpr (std::is_same_v<T, float>)
    fits = fits && std::fabs(given.get<double>()) <= std::numeric_limits<T>::max();
  if constexpr (std::is_same_v<T, std::vector<std::string>>) {
    fits = given.is_array() && std::ranges::all_of(given, [](const json& item) { return item.is_string(); });
  }
  if (!fits) throw ESourceError(fmt::format("\"{}\" has a value that does not fit.", name));
  given.get_to(value);
}

TMissionData ParseMission(const json& source) {
  TMissionData mission;
  std::set<std::string_view> known = {"bValid"};  // as in a dump; it goes without saying
  VisitStoredFields(mission, [&known](const char* name, auto&) { known.insert(name); });
  RefuseUnknown(source, "The mission", known);
  VisitStoredFields(mission, [&source](const char* name, auto& field) {
    if (source.contains(name)) ParseValue(source, name, field);
  });
  return mission;
}

struct TMakeSource {
  TRecordingHead head;
  std::string records;  // a path
};

TMakeSource ParseDescription(const json& json) {
  RefuseUnknown(json, "The source", {"startTime", "creator", "mission", "channels", "records"});
  TMakeSource source;
  ParseValue(json, "startTime", source.head.startTime);
  ParseValue(json, "channels", source.head.channels);
  ParseValue(json, "records", source.records);
  if (json.contains("creator")) ParseValue(json, "creator", source.head.creator);
  if (json.contains("mission")) source.head.mission = ParseMission(json.at("mission"));
  return source;
}

// The place of each wanted column in a line of the records. Columns of one name are used once each, from left to right.
std::vector<std::size_t> ColumnsOf(std::span<const std::string_view> titles, std::span<const std::string> wanted) {
  std::multimap<std::string_view, std::size_t> places;
  for (std::size_t place = 0; place < titles.size(); ++place) places.emplace(titles[place], place);
  std::vector<std::size_t> columns;
  for (const std::string& name : wanted) {
    const auto found = places.lower_bound(name);
    if (found == places.end() || found->first != name) {
      throw ESourceError(fmt::format("The records have no column \"{}\" left.", name));
    }
    columns.push_back(found->second);
    places.erase(found);
  }
  return columns;
}

void CopyRecords(std::istream& records, const std::vector<std::string>& channels, TRecordingWriter& writer) {
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  std::string line;
  std::getline(records, line);
  if (line.starts_with(kUtf8Mark)) line.erase(0, kUtf8Mark.size());
  std::vector<std::string_view> cells;
  SplitLine(line, cells);
  std::vector<std::string> wanted = {"time_ms"};
  wanted.insert(wanted.end(), channels.begin(), channels.end());
  const std::vector<std::size_t> columns = ColumnsOf(cells, wanted);
  const std::size_t columnCount = cells.size();

  std::vector<std::uint32_t> readings(channels.size());
  for (std::size_t number = 2; std::getline(records, line); ++number) {
    SplitLine(line, cells);
    if (cells.size() == 1 && cells[0].empty()) continue;
    if (cells.size() != columnCount) {
      throw ESourceError(
          fmt::format("Line {} of the records has {} cells instead of {}.", number, cells.size(), columnCount));
    }
    for (std::size_t i = 0; i < readings.size(); ++i) readings[i] = ParseReading(cells[columns[i + 1]], number);
    writer.Append(ParseTime(cells[columns[0]], number), readings);
  }
  if (records.bad()) throw ESourceError("The records cannot be read.");
}

}  // namespace

TStatus MakeCommand(const std::string& source, const std::string& out, const TConsole& console) {
  try {
    const std::filesystem::path sourcePath = PathFromUtf8(source);
    const std::filesystem::path outPath = PathFromUtf8(out);
    std::ifstream sourceFile = OpenSource(sourcePath, "The source");
    const TMakeSource description = ParseDescription(ParseSource(sourceFile));
    // A path in the source is meant from the source's own folder.
    const auto recordsPath = sourcePath.parent_path() / PathFromUtf8(description.records);
    std::ifstream records = OpenSource(recordsPath, Utf8FromPath(recordsPath));
    for (const auto& input : {sourcePath, recordsPath}) {
      if (IsSameFile(outPath, input)) {
        Complain(console, out, "A recording cannot replace what it is made from.");
        return TStatus::WrongUse;
      }
    }
    WriteBesideAndRename(outPath, [&](const std::filesystem::path& path) {
      TRecordingWriter writer(path, description.head);
      CopyRecords(records, description.head.channels, writer);
      writer.Close();
    });
    return TStatus::Done;
  } catch (const json::exception& error) {
    Complain(console, source, error.what());
    return TStatus::CannotRead;
  } catch (const ESourceError& error) {
    Complain(console, source, error.what());
    return TStatus::CannotRead;
  } catch (const std::invalid_argument& error) {  // the writer's: the source holds what no recording can
    Complain(console, source, error.what());
    return TStatus::WrongUse;
  } catch (const std::exception& error) {
    Complain(console, out, Describe(error));
    return TStatus::CannotWrite;
  }
}
