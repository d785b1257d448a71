#include "fleet/uFleetText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <nlohmann/json.hpp>
#include <system_error>

#include "base/uFiles.h"
#include "base/uText.h"
#include "platform/uSafeFile.h"

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

// Throws as the writers of uSafeFile expect it.
class TTextFile {
 public:
  explicit TTextFile(const fs::path& path) : FFile(path, std::ios::binary) {}
  void Write(const std::string& text) { FFile.write(text.data(), static_cast<std::streamsize>(text.size())); }
  void Close() {
    errno = 0;
    FFile.close();
    if (!FFile) throw std::system_error(errno != 0 ? errno : EIO, std::generic_category());
  }

 private:
  std::ofstream FFile;
};

// A text is quoted where it would read as something else: an empty one as NULL, one with a comma as two.
void AppendCsv(std::string& line, const TFleetValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    if (!text->empty() && text->find_first_of(",\"\r\n") == std::string::npos) {
      line += *text;
      return;
    }
    line += '"';
    for (const char c : *text) line += c == '"' ? std::string("\"\"") : std::string(1, c);
    line += '"';
  } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    line += std::to_string(*whole);
  } else if (const auto* real = std::get_if<double>(&value)) {
    line += fmt::format("{}", *real);
  }
}

// The fields of one record, which may span lines; false at the end of the file.
bool ReadCsv(std::istream& file, std::vector<std::optional<std::string>>& fields) {
  fields.assign(1, std::nullopt);
  bool quoted = false;
  bool any = false;
  for (int c = file.get(); c != std::istream::traits_type::eof(); c = file.get()) {
    any = true;
    if (c == '"') {
      if (!fields.back()) fields.back() = "";
      if (quoted && file.peek() == '"') {
        *fields.back() += static_cast<char>(file.get());
      } else {
        quoted = !quoted;
      }
    } else if (!quoted && c == ',') {
      fields.emplace_back();
    } else if (!quoted && c == '\n') {
      return true;
    } else {
      if (!fields.back()) fields.back() = "";
      *fields.back() += static_cast<char>(c);
    }
  }
  return any;
}

template <class T>
TFleetValue ParsedAs(const std::string& text) {
  if (const auto number = NumberIn<T>(text)) return *number;
  throw EFleetDatabase(fmt::format("\"{}\" is no number.", text.substr(0, 40)));
}

TFleetValue Parsed(const std::string& text, TFleetType type) {
  if (type == TFleetType::Text) return text;
  return type == TFleetType::Integer ? ParsedAs<std::int64_t>(text) : ParsedAs<double>(text);
}

TFleetValue FromJson(const json& value, TFleetType type) {
  if (value.is_string() && type == TFleetType::Text) return value.get<std::string>();
  if (value.is_number() && type == TFleetType::Real) return value.get<double>();
  if (value.is_number_integer() && type == TFleetType::Integer) return value.get<std::int64_t>();
  if (value.is_null()) return {};
  throw EFleetDatabase("A value is of another type than its column.");
}

json ToJson(const TFleetValue& value) {
  return std::visit(
      [](const auto& held) -> json {
        if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::monostate>) {
          return nullptr;
        } else {
          return held;
        }
      },
      value);
}

std::ifstream Open(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw EFleetDatabase(fmt::format("{} cannot be read.", Utf8FromPath(path)));
  return file;
}

}  // namespace

fs::path FleetCsvPath(const fs::path& out, std::size_t table) {
  if (table == 0) return out;
  fs::path path = out;
  path.replace_extension();
  path += fmt::format("-{}", FleetTables()[table].name);
  path += out.extension();
  return path;
}

void WriteFleetCsv(TFleetDatabase& database, const fs::path& out) {
  TFileSet files;
  for (const std::size_t table : {1U, 2U, 0U}) {  // the recordings are put in place last
    files.Write(FleetCsvPath(out, table), [&](const fs::path& path) {
      TTextFile file(path);
      std::string line;
      for (const TFleetColumn& column : FleetTables()[table].columns) {
        line += fmt::format("{}{}", line.empty() ? "" : ",", column.name);
      }
      file.Write(line + "\n");
      database.ForEachRow(table, [&](const TFleetRow& row) {
        line.clear();
        for (std::size_t i = 0; i < row.size(); ++i) {
          if (i > 0) line += ',';
          AppendCsv(line, row[i]);
        }
        file.Write(line += '\n');
      });
      file.Close();
    });
  }
  files.Sync();
  files.PutInPlace();
}

void WriteFleetJsonLines(TFleetDatabase& database, const fs::path& out) {
  WriteBesideAndRename(out, [&](const fs::path& path) {
    TTextFile file(path);
    for (std::size_t table = 0; table < FleetTables().size(); ++table) {
      const TFleetTable& of = FleetTables()[table];
      database.ForEachRow(table, [&](const TFleetRow& row) {
        nlohmann::ordered_json object = {{"table", of.name}};
        for (std::size_t i = 0; i < row.size(); ++i) object[std::string(of.columns[i].name)] = ToJson(row[i]);
        file.Write(object.dump(-1, ' ', false, json::error_handler_t::replace) + "\n");
      });
    }
    file.Close();
  });
}

void ReadFleetCsv(const fs::path& out, TFleetDatabase& database) {
  for (std::size_t table = 0; table < FleetTables().size(); ++table) {
    const TFleetTable& of = FleetTables()[table];
    std::ifstream file = Open(FleetCsvPath(out, table));
    std::vector<std::optional<std::string>> names, fields;
    ReadCsv(file, names);
    if (std::ranges::find(names, std::optional<std::string>(of.path)) == names.end()) {
      throw EFleetDatabase("It is no table of recordings.");
    }
    while (ReadCsv(file, fields)) {
      if (fields.size() != names.size()) throw EFleetDatabase("A line has another number of fields than the first.");
      TFleetRows rows;
      TFleetRow& row = rows[table].emplace_back(of.columns.size());
      for (std::size_t i = 0; i < row.size(); ++i) {
        const auto name = std::ranges::find(names, std::optional<std::string>(of.columns[i].name));
        if (name == names.end()) continue;
        const auto& field = fields[static_cast<std::size_t>(name - names.begin())];
        if (field) row[i] = Parsed(*field, of.columns[i].type);
      }
      database.Add(rows);
    }
  }
}

void ReadFleetJsonLines(const fs::path& out, TFleetDatabase& database) try {
  std::ifstream file = Open(out);
  for (std::string line; std::getline(file, line);) {
    const json object = json::parse(line);
    const auto table = std::ranges::find(FleetTables(), object.at("table").get<std::string>(), &TFleetTable::name);
    if (table == FleetTables().end()) continue;
    TFleetRows rows;
    TFleetRow& row = rows[static_cast<std::size_t>(table - FleetTables().begin())].emplace_back();
    for (const TFleetColumn& column : table->columns) {
      const auto value = object.find(std::string(column.name));
      row.push_back(value == object.end() ? TFleetValue() : FromJson(*value, column.type));
    }
    database.Add(rows);
  }
} catch (const json::exception&) {
  throw EFleetDatabase("It is no table of recordings.");
}
