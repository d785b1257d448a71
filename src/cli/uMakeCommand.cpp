#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "base/uFiles.h"
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

std::vector<std::string> SplitLine(std::string line) {
  if (!line.empty() && line.back() == '\r') line.pop_back();
  std::vector<std::string> cells(1);
  for (const char character : line) {
    if (character == ',') {
      cells.emplace_back();
    } else {
      cells.back() += character;
    }
  }
  return cells;
}

template <class T>
T ParseNumber(const std::string& text, std::size_t line) {
  T value{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc{} || result.ptr != end) {
    throw ESourceError(fmt::format("Line {} of the records: \"{}\" is no number.", line, text));
  }
  return value;
}

std::uint32_t ParseReading(const std::string& cell, std::size_t line) {
  if (cell.empty()) return kNoValue;
  if (cell == "END") return kEndOfEvent;
  return std::bit_cast<std::uint32_t>(ParseNumber<float>(cell, line));
}

// Calls `visit` with each member of a mission header that a source may give.
template <class TMission, class TVisit>
void VisitMission(TMission& m, const TVisit& visit) {
  visit("fileVersion", m.fileVersion), visit("version", m.version);
  visit("sKorvexType", m.sKorvexType), visit("sKorvexVersion", m.sKorvexVersion);
  visit("sID", m.sID), visit("sTitle", m.sTitle), visit("sOperator", m.sOperator);
  visit("rec_starttime", m.rec_starttime), visit("rec_endtime", m.rec_endtime);
  visit("rec_ctrl", m.rec_ctrl), visit("options", m.options);
  visit("rec_startmode", m.rec_startmode), visit("rec_stopmode", m.rec_stopmode);
  visit("rtc_starttime", m.rtc_starttime), visit("rtc_stoptime", m.rtc_stoptime);
  visit("adxl_level_on", m.adxl_level_on), visit("adxl_level_off", m.adxl_level_off);
  visit("rec_fast_rate", m.rec_fast_rate);
  visit("buffer_pre_cnts", m.buffer_pre_cnts), visit("buffer_post_cnts", m.buffer_post_cnts);
  visit("rec_std_mask", m.rec_std_mask), visit("tb_meas_rate", m.tb_meas_rate);
}

TMissionData ParseMission(const json& source) {
  TMissionData mission;
  std::size_t known = 0;
  VisitMission(mission, [&](const char* name, auto& field) {
    if (!source.contains(name)) return;
    source.at(name).get_to(field);
    ++known;
  });
  known += source.contains("bValid") ? 1 : 0;
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

// The place of each wanted column in a line of the records.
std::vector<std::size_t> ColumnsOf(const std::vector<std::string>& titles, const std::vector<std::string>& wanted) {
  std::vector<std::size_t> columns;
  for (const std::string& name : wanted) {
    // Of two channels of one name each takes a column of its own, from left to right.
    const auto taken = [&](std::size_t place) { return std::ranges::find(columns, place) != columns.end(); };
    std::size_t place = 0;
    while (place < titles.size() && (titles[place] != name || taken(place))) ++place;
    if (place == titles.size()) throw ESourceError(fmt::format("The records have no column \"{}\".", name));
    columns.push_back(place);
  }
  return columns;
}

void CopyRecords(std::istream& records, const std::vector<std::string>& channels, TRecordingWriter& writer) {
  std::string line;
  std::getline(records, line);
  const std::vector<std::string> titles = SplitLine(line);
  const std::size_t timeColumn = ColumnsOf(titles, {"time_ms"}).front();
  const std::vector<std::size_t> columns = ColumnsOf(titles, channels);
  std::vector<std::uint32_t> readings(channels.size());
  for (std::size_t number = 2; std::getline(records, line); ++number) {
    const std::vector<std::string> cells = SplitLine(line);
    if (cells.size() == 1 && cells[0].empty()) continue;
    if (cells.size() != titles.size()) {
      throw ESourceError(
          fmt::format("Line {} of the records has {} cells instead of {}.", number, cells.size(), titles.size()));
    }
    std::ranges::transform(columns, readings.begin(),
                           [&](std::size_t column) { return ParseReading(cells[column], number); });
    writer.Append(ParseNumber<double>(cells[timeColumn], number), readings);
  }
}

}  // namespace

TStatus MakeCommand(const std::string& source, const std::string& out, const TConsole& console) {
  const auto complain = [&console](const std::string& file, const char* what) {
    console.err(fmt::format("kshock: {}: {}\n", file, what));
  };
  try {
    const std::filesystem::path sourcePath = PathFromUtf8(source);
    std::ifstream sourceFile = OpenSource(sourcePath);
    const json description = json::parse(sourceFile);
    const TRecordingHead head = ParseHead(description);
    // A path in the source is meant from the source's own folder.
    std::ifstream records =
        OpenSource(sourcePath.parent_path() / PathFromUtf8(description.at("records").get<std::string>()));
    WriteBesideAndRename(PathFromUtf8(out), [&](const std::filesystem::path& path) {
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
  } catch (const std::exception& error) {
    complain(out, error.what());
    return TStatus::CannotWrite;
  }
}
