// The folder for the lists and parts of a run that shares its work among processes. Any thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>

// A folder of this run alone; it goes with its files. Making one removes those that killed runs left a day ago.
class TFleetScratch {
 public:
  // Throws std::filesystem::filesystem_error.
  TFleetScratch();
  ~TFleetScratch();
  TFleetScratch(const TFleetScratch&) = delete;
  TFleetScratch& operator=(const TFleetScratch&) = delete;
  [[nodiscard]] std::filesystem::path File(std::size_t number, std::string_view ending) const;

 private:
  std::filesystem::path FPath;
};
