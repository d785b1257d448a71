// Reads workbooks back.
#pragma once

#include <minizip/unzip.h>

#include <filesystem>
#include <string>

// One file of a zip archive; empty when there is none of that name.
inline std::string PartOf(const std::filesystem::path& archive, const char* name) {
  const unzFile zip = unzOpen64(archive.string().c_str());
  unz_file_info64 info{};
  std::string text;
  if (unzLocateFile(zip, name, 1) == UNZ_OK && unzOpenCurrentFile(zip) == UNZ_OK &&
      unzGetCurrentFileInfo64(zip, &info, nullptr, 0, nullptr, 0, nullptr, 0) == UNZ_OK) {
    text.resize(info.uncompressed_size);
    text.resize(static_cast<std::size_t>(unzReadCurrentFile(zip, text.data(), static_cast<unsigned>(text.size()))));
  }
  unzClose(zip);
  return text;
}
