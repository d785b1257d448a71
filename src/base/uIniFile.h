// An INI file in memory. What it holds beyond what is asked for stays, in its place. Text is UTF-8, and a file that is
// not is read as Windows-1252; floats have a point, booleans are "1" and "0"; sections and keys do not tell capitals
// from small letters.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class TIniFile {
 public:
  static constexpr std::uintmax_t kMaxBytes = 1'000'000;  // bytes of a file that is read

  TIniFile();
  ~TIniFile();
  TIniFile(TIniFile&&) noexcept;
  TIniFile& operator=(TIniFile&&) noexcept;

  // Throws std::runtime_error when the file is none, cannot be read, is larger than kMaxBytes or holds a NUL, as UTF-16
  // does. Lines that make no sense are passed over.
  static TIniFile Load(const std::filesystem::path& path);
  // As it stands in a file.
  [[nodiscard]] std::string Text() const;

  [[nodiscard]] bool HasSection(const std::string& section) const;
  // Nothing when there is no such key.
  [[nodiscard]] std::optional<std::string> Find(const std::string& section, const std::string& key) const;
  // The keys of a section in the order in which they stand.
  [[nodiscard]] std::vector<std::string> Keys(const std::string& section) const;

  // The default stands in for what is missing or does not parse: a boolean is a whole number, on unless it is 0; a
  // float is finite.
  [[nodiscard]] std::string ReadString(const std::string& section, const std::string& key, std::string def) const;
  [[nodiscard]] bool ReadBool(const std::string& section, const std::string& key, bool def) const;
  [[nodiscard]] int ReadInteger(const std::string& section, const std::string& key, int def) const;
  [[nodiscard]] double ReadFloat(const std::string& section, const std::string& key, double def) const;

  // A line break in a text becomes a blank; blanks and quotes at its ends are kept.
  void WriteString(const std::string& section, const std::string& key, const std::string& value);
  void WriteBool(const std::string& section, const std::string& key, bool value);
  void WriteInteger(const std::string& section, const std::string& key, int value);
  void WriteFloat(const std::string& section, const std::string& key, double value);
  void EraseSection(const std::string& section);

 private:
  class TContent;
  std::unique_ptr<TContent> FContent;
};
