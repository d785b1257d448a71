#include <fmt/format.h>

#include <bit>
#include <charconv>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <span>
#include <stdexcept>
#include <string_view>
#include <type_traits>

#include "base/uFiles.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "model/uBlockTypes.h"
#include "model/uRecordingWriter.h"

using nlohmann::json;

namespace {

// What is wrong with the source, in words.
class ESourceError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::ifstream OpenSource(const std::filesystem::path& path) {
  std::ifstream file;
  if (std::filesystem::is_regular_file(path)) file.open(path, std::ios::binary);
  if (!file.is_open()) throw ESourceError(fmt::format("Cannot open {}.", Utf8FromPath(path)));
  return file;
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
  T value{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc{} || result.ptr != end) {
    throw ESourceError(fmt::format("Line {} of the records: \"{}\" is no number that fits.", line, text));
  }
  return value;
}

std::uint32_t ParseReading(std::string_view cell, std::size_t line) {
  if (cell.empty()) return kNoValue;
  if (cell == "END") return kEndOfEvent;
  return std::bit_cast<std::uint32_t>(ParseNumber<float>(cell, line));
}

// Takes a header field as it is; what would have to be changed to fit is refused.
template <class T>
void ParseField(const char* name, const json& value, T& field) {
  bool fits = value.is_number();
  if constexpr (std::is_same_v<T, std::string>) fits = value.is_string();
  if constexpr (std::is_same_v<T, std::uint16_t>) fits = value.is_number_unsigned() && value <= 65535;
  if (!fits) throw ESourceError(fmt::format("The mission's {} does not fit its field.", name));
  value.get_to(field);
}

TMissionData ParseMission(const json& source) {
  TMissionData mission;
  std::size_t known = source.contains("bValid") ? 1 : 0;  // as in a dump; it goes without saying
  VisitStoredFields(mission, [&](const char* name, auto& field) {
    if (!source.contains(name)) return;
    ParseField(name, source.at(name), field);
    ++known;
  });
  if (known < source.size()) throw ESourceError("The mission holds a name that no header field has.");
  return mission;
}

TRecordingHead ParseHead(const json& source) {
  TRecordingHead head;
  head.creator = source.value("creator", head.creator);
  head.startTime = source.at("startTime").get<double>();
  head.mission = ParseMission(source.value("mission", json::object()));
  head.channels = source.at("channels").get<std::vector<std::string>>();
  return head;
}

// The place of each wanted column in a line of the records. Of two columns of one name each is taken once, from left to
// right.
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
    writer.Append(ParseNumber<double>(cells[columns[0]], number), readings);
  }
  if (records.bad()) throw ESourceError("The records cannot be read.");
}

}  // namespace

TStatus MakeCommand(const std::string& source, const std::string& out, const TConsole& console) {
  const auto complain = [&console](const std::string& file, const char* what) {
    console.err(fmt::format("kshock: {}: {}\n", Printable(file), Printable(what)));
  };
  try {
    const std::filesystem::path sourcePath = PathFromUtf8(source);
    const std::filesystem::path outPath = PathFromUtf8(out);
    std::ifstream sourceFile = OpenSource(sourcePath);
    const json description = json::parse(sourceFile);
    const TRecordingHead head = ParseHead(description);
    // A path in the source is meant from the source's own folder.
    const auto recordsPath = sourcePath.parent_path() / PathFromUtf8(description.at("records").get<std::string>());
    std::ifstream records = OpenSource(recordsPath);
    for (const auto& input : {sourcePath, recordsPath}) {
      if (std::filesystem::exists(outPath) && std::filesystem::equivalent(outPath, input)) {
        complain(out, "A recording cannot replace what it is made from.");
        return TStatus::WrongUse;
      }
    }
    WriteBesideAndRename(outPath, [&](const std::filesystem::path& path) {
      TRecordingWriter writer(path, head);
      CopyRecords(records, head.channels, writer);
      writer.Close();
    });
    return TStatus::Done;
  } catch (const json::exception& error) {
    complain(source, error.what());
    return TStatus::CannotRead;
  } catch (const ESourceError& error) {
    complain(source, error.what());
    return TStatus::CannotRead;
  } catch (const std::invalid_argument& error) {  // the writer's: the source holds more than a block takes
    complain(source, error.what());
    return TStatus::CannotRead;
  } catch (const std::exception& error) {
    complain(out, error.what());
    return TStatus::CannotWrite;
  }
}
