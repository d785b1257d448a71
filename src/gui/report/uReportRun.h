// A report without a window. Main thread only.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

struct TReportOrder {
  std::string file, pdf;  // UTF-8
  // Files of a configuration and of a limit profile or settings; without one what the settings folder keeps counts.
  std::optional<std::string> config, limits;
  std::filesystem::path settingsFolder;  // read only; empty: there is none
  std::string version;                   // of the program
};

// Reads the recording, the user's settings and logos, and writes the PDF. Says on standard error what is wrong, and how
// far it is when that is a terminal. Returns the exit status: 0 done, 1 the recording cannot be displayed, 2 the PDF
// would replace what it is made from, 3 a file cannot be read, 4 the PDF cannot be written, 5 done, but the recording
// is damaged or was not read to its end.
int RunReport(const TReportOrder& order);
