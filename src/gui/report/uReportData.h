// What all sections of a report are made from.
#pragma once

#include <QString>
#include <algorithm>

#include "gui/report/uReportPages.h"
#include "shell/uReportFacts.h"

struct TReportData {
  TReportContents contents;
  TReportConfig config;
  TReportFacts facts;

  [[nodiscard]] const TShownMission& Mission() const { return contents.mission; }
  // Of the whole recording. A sensor may have none.
  [[nodiscard]] bool HasReadings() const {
    return std::ranges::any_of(Mission().Summary.sensors, [](const TSensorSummary& each) { return each.count > 0; });
  }
};

// A value in the quantity's format, without unit.
QString NumberText(TQuantity quantity, double value, const TReportData& data);
// A date-time to the second.
QString MomentText(double time);
// A text of the recording or the settings, on one line and not endless.
QString PlainText(std::string_view utf8);
// The first letter as a capital, a period at the end.
QString AsSentence(const std::string& text);
