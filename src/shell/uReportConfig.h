// What the report holds and how it is laid out, and its INI file:
//
//   [Sections]                         in their order; one that the file leaves out is off
//   Cover = 1
//   Verdict = 1
//
//   [Page]
//   Paper = A4                         or Letter
//   Orientation = portrait             or landscape
//
//   [Tables]                           what the section "Tables" holds
//   Events = 1
//   Sensors = 0
//   Battery = 0
//
//   [Event cards]
//   Events = worst                     or all, filtered, above alarm
//   Worst = 12
//   A page = 4                         or 2, 6
//
//   [Time]                             the report is limited to this span; each end may be missing
//   From = 2026-03-04 06:00
//   To = 2026-03-05
//
// A section or key that a file leaves out has its default, only that without [Sections] all are as by default.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string_view>

#include "analysis/uEventFilter.h"

enum class TReportSection {
  Cover,
  MissionDetails,
  Verdict,
  Summary,
  ImportantEvents,
  EventsChart,
  SensorsChart,
  SelectedEvent,
  Tables,
  EventCards,
  Metrics
};
inline constexpr std::size_t kReportSectionCount = 11;

enum class TReportPaper { A4, Letter };

// The events that get a card. The worst are the first by "Order By" among those that pass the filter.
enum class TCardEvents { All, Filtered, Worst, AboveAlarm };

struct TReportSectionChoice {
  TReportSection section;
  bool on;
  bool operator==(const TReportSectionChoice&) const = default;
};

struct TReportConfig {
  // Every setting has its default: all sections in their order but that of the selected event.
  TReportConfig();

  std::array<TReportSectionChoice, kReportSectionCount> sections;  // each section once
  TReportPaper paper = TReportPaper::A4;
  bool landscape = false;
  bool eventsTable = true, sensorsTable = false, batteryTable = false;
  TCardEvents cardEvents = TCardEvents::Worst;
  std::size_t worstCount = 12;  // 1 … kMaxWorst
  std::size_t cardsPerPage = 4;
  TRange time;  // date-times; an event counts by its start

  [[nodiscard]] bool Has(TReportSection section) const;
  bool operator==(const TReportConfig&) const = default;
};

inline constexpr std::size_t kMaxWorst = 100'000;
inline constexpr std::array<std::size_t, 3> kCardsPerPage = {2, 4, 6};

// As in the file and in front of people: "Mission details".
std::string_view SectionName(TReportSection section);

// Throws an exception with the reason as a sentence, without the file's name: it cannot be read, is larger than 1 MB,
// has a line, section or key that is not known, a key twice, a value that is none of those above, or no section of the
// report that is on.
TReportConfig ReadReportConfig(const std::filesystem::path& path);

// Throws when the file cannot be written; the older one is then as it was.
void WriteReportConfig(const std::filesystem::path& path, const TReportConfig& config);

inline constexpr auto kKeptReportConfigFile = "report.ini";

// That file in the settings folder: the choice that the next report starts with. It has no [Time], which belongs to
// one recording. Without a file Read gives the defaults; otherwise they throw as the functions above.
TReportConfig ReadKeptReportConfig(const std::filesystem::path& settingsFolder);
void KeepReportConfig(const std::filesystem::path& settingsFolder, const TReportConfig& config);
