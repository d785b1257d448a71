#include "base/uIniFile.h"

#include <SimpleIni.h>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <new>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "base/uText.h"

namespace fs = std::filesystem;

namespace {

template <class T>
std::optional<T> Parse(const std::optional<std::string>& text) {
  if (!text) return std::nullopt;
  T value{};
  // A sign that people write and from_chars does not know.
  const bool hasPlus = text->starts_with('+') && !text->starts_with("+-");
  const char* begin = text->data() + (hasPlus ? 1 : 0);
  const char* end = text->data() + text->size();
  const auto [rest, error] = std::from_chars(begin, end, value);
  if (error != std::errc() || rest != end) return std::nullopt;
  return value;
}

bool IsBlankOrQuote(char c) {
  return c == ' ' || c == '\t' || c == '"';
}

// The text of a file, as UTF-8.
std::string ReadText(const fs::path& path) {
  if (!fs::is_regular_file(path)) throw std::runtime_error("The file is no file.");
  if (fs::file_size(path) > TIniFile::kMaxBytes) throw std::runtime_error("The file is larger than 1 MB.");
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file || text.size() > TIniFile::kMaxBytes) throw std::runtime_error("The file cannot be read.");
  if (text.find('\0') != std::string::npos) throw std::runtime_error("The file makes no sense.");
  return IsUtf8(text) ? text : Windows1252ToUtf8(text);
}

void CheckLines(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
  std::set<std::pair<std::string, std::string>> known;
  std::string section;
  std::istringstream lines{std::string(text)};
  std::string whole;
  for (int number = 1; std::getline(lines, whole); ++number) {
    const std::string_view line = Trimmed(whole);
    if (line.size() > TIniFile::kMaxStrictLine) {
      throw std::runtime_error(fmt::format("Line {} is longer than {} bytes.", number, TIniFile::kMaxStrictLine));
    }
    if (line.empty() || line[0] == ';' || line[0] == '#') continue;
    if (line.size() > 2 && line.front() == '[' && line.find(']') == line.size() - 1) {
      section = AsciiLower(Trimmed(line.substr(1, line.size() - 2)));
      continue;
    }
    const std::size_t equals = line.find('=');
    const std::string_view key = Trimmed(line.substr(0, equals));
    if (equals == std::string_view::npos || key.empty() || key[0] == '[' || line.find('\r') != std::string_view::npos) {
      throw std::runtime_error(fmt::format("Line {} is neither a section nor \"key = value\".", number));
    }
    if (section.empty()) throw std::runtime_error(fmt::format("Line {} stands before the first section.", number));
    if (!known.emplace(section, AsciiLower(key)).second) {
      throw std::runtime_error(fmt::format("Line {} gives \"{}\" once more.", number, key));
    }
  }
}

}  // namespace

class TIniFile::TContent : public CSimpleIniA {
 public:
  TContent() : CSimpleIniA(true) {}
};

TIniFile::TIniFile() : FContent(std::make_unique<TContent>()) {}
TIniFile::~TIniFile() = default;
TIniFile::TIniFile(TIniFile&&) noexcept = default;
TIniFile& TIniFile::operator=(TIniFile&&) noexcept = default;

TIniFile TIniFile::Parsed(const std::string& text) {
  TIniFile ini;
  if (ini.FContent->LoadData(text) < 0) throw std::runtime_error("The file makes no sense.");
  return ini;
}

TIniFile TIniFile::Load(const fs::path& path) {
  return Parsed(ReadText(path));
}

TIniFile TIniFile::LoadStrict(const fs::path& path) {
  const std::string text = ReadText(path);
  CheckLines(text);
  return Parsed(text);
}

std::string TIniFile::Text() const {
  std::string text;
  if (FContent->Save(text) < 0) throw std::bad_alloc();
  return text;
}

bool TIniFile::HasSection(const std::string& section) const {
  return FContent->GetSectionSize(section.c_str()) >= 0;
}

std::vector<std::string> TIniFile::Sections() const {
  CSimpleIniA::TNamesDepend names;
  FContent->GetAllSections(names);
  names.sort(CSimpleIniA::Entry::LoadOrder());
  std::vector<std::string> sections;
  for (const CSimpleIniA::Entry& name : names) sections.emplace_back(name.pItem);
  return sections;
}

std::optional<std::string> TIniFile::Find(const std::string& section, const std::string& key) const {
  const char* value = FContent->GetValue(section.c_str(), key.c_str());
  if (value == nullptr) return std::nullopt;
  std::string text = value;
  if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
  return text;
}

std::vector<std::string> TIniFile::Keys(const std::string& section) const {
  CSimpleIniA::TNamesDepend names;
  FContent->GetAllKeys(section.c_str(), names);
  names.sort(CSimpleIniA::Entry::LoadOrder());
  std::vector<std::string> keys;
  for (const CSimpleIniA::Entry& name : names) keys.emplace_back(name.pItem);
  return keys;
}

std::string TIniFile::ReadString(const std::string& section, const std::string& key, std::string def) const {
  return Find(section, key).value_or(std::move(def));
}

bool TIniFile::ReadBool(const std::string& section, const std::string& key, bool def) const {
  return ReadInteger(section, key, def ? 1 : 0) != 0;
}

int TIniFile::ReadInteger(const std::string& section, const std::string& key, int def) const {
  return Parse<int>(Find(section, key)).value_or(def);
}

double TIniFile::ReadFloat(const std::string& section, const std::string& key, double def) const {
  const double value = Parse<double>(Find(section, key)).value_or(def);
  return std::isfinite(value) ? value : def;
}

void TIniFile::WriteString(const std::string& section, const std::string& key, const std::string& value) {
  std::string text = value;
  std::ranges::replace_if(
      text, [](char c) { return c == '\n' || c == '\r' || c == '\0'; }, ' ');
  if (!text.empty() && (IsBlankOrQuote(text.front()) || IsBlankOrQuote(text.back()))) text = '"' + text + '"';
  FContent->SetValue(section.c_str(), key.c_str(), text.c_str());
}

void TIniFile::WriteBool(const std::string& section, const std::string& key, bool value) {
  WriteInteger(section, key, value ? 1 : 0);
}

void TIniFile::WriteInteger(const std::string& section, const std::string& key, int value) {
  WriteString(section, key, fmt::format("{}", value));
}

void TIniFile::WriteFloat(const std::string& section, const std::string& key, double value) {
  WriteString(section, key, fmt::format("{}", value));
}

void TIniFile::EraseSection(const std::string& section) {
  FContent->Delete(section.c_str(), nullptr);
}
