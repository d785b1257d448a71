// What all sections of a report are made from.
#pragma once

#include <QString>

#include "gui/report/uReportPages.h"
#include "shell/uReportFacts.h"

struct TReportData {
  TReportContents contents;
  TReportConfig config;
  TReportFacts facts;

  [[nodiscard]] const TShownMission& Mission() const { return contents.mission; }
};

// A value in the quantity's format, without unit.
QString NumberText(TQuantity quantity, double value, const TReportData& data);
// A date-time to the second.
QString MomentText(double time);
// A text of the recording or the settings, on one line and not endless.
QString PlainText(std::string_view utf8);
// The first letter as a capital, a period at the end.
QString AsSentence(const std::string& text);
