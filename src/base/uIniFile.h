// An INI file in memory. Unknown sections and keys keep their place. Text is UTF-8; a file that is not UTF-8 is read as
// Windows-1252. Floats have a decimal point, booleans are "1" and "0". Sections and keys ignore case.
#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// Ends the reading of a file that makes no sense: throws std::runtime_error with this text.
template <class... T>
[[noreturn]] void Refuse(fmt::format_string<T...> format, T&&... arguments) {
  throw std::runtime_error(fmt::format(format, std::forward<T>(arguments)...));
}

class TIniFile {
 public:
  static constexpr std::size_t kMaxStrictLine = 4'000;  // bytes of a line that is read strictly

  TIniFile();
  ~TIniFile();
  TIniFile(TIniFile&&) noexcept;
  TIniFile& operator=(TIniFile&&) noexcept;

  // Throws as ReadSmallFile, and std::runtime_error when the file holds a NUL (as UTF-16 does). Lines that cannot be
  // parsed are skipped.
  static TIniFile Load(const std::filesystem::path& path);
  // The same for a file that people write and that must mean what it says. Throws also, with the number of the line,
  // when a line is longer than kMaxStrictLine or is no section, key = value, comment or blank one, and when a key has
  // no section or stands twice in its own; std::filesystem::filesystem_error when there is no file.
  static TIniFile LoadStrict(const std::filesystem::path& path);
  // The content to write to a file.
  [[nodiscard]] std::string Text() const;

  [[nodiscard]] bool HasSection(const std::string& section) const;
  // In the order of the file.
  [[nodiscard]] std::vector<std::string> Sections() const;
  // No value when there is no such key.
  [[nodiscard]] std::optional<std::string> Find(const std::string& section, const std::string& key) const;
  // The keys of a section in the order of the file.
  [[nodiscard]] std::vector<std::string> Keys(const std::string& section) const;

  // Return `def` when the key is missing or its value does not parse. A boolean is a whole number, true unless 0; a
  // float must be finite.
  [[nodiscard]] std::string ReadString(const std::string& section, const std::string& key, std::string def) const;
  [[nodiscard]] bool ReadBool(const std::string& section, const std::string& key, bool def) const;
  [[nodiscard]] int ReadInteger(const std::string& section, const std::string& key, int def) const;
  [[nodiscard]] double ReadFloat(const std::string& section, const std::string& key, double def) const;

  // A line break becomes a blank. Blanks and quotes at the ends are kept.
  void WriteString(const std::string& section, const std::string& key, const std::string& value);
  void WriteBool(const std::string& section, const std::string& key, bool value);
  void WriteInteger(const std::string& section, const std::string& key, int value);
  void WriteFloat(const std::string& section, const std::string& key, double value);

 private:
  class TContent;
  static TIniFile Parsed(const std::string& text);

  std::unique_ptr<TContent> FContent;
};
