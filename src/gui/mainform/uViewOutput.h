// The view in front on paper or in a PDF, always dark on white, and pictures as bytes. Main thread only.
#pragma once

#include <QString>
#include <string>

#include "gui/report/uReportPages.h"
#include "shell/uIMissionViews.h"

class TFileFlow;
class TTimeChart;
struct TCommandTargets;
struct TMainParts;
struct TProgram;

// What the report of the shown mission is made of, without the file's checksum.
TReportContents ReportContents(const TShownMission& mission, const TMainParts& parts, const TFileFlow& flow,
                               const TProgram& program);

// The report, or pages with the charts and tables of overview or shock view. They do nothing without a file, and
// nothing when the user cancels their dialog.
void PrintView(const TCommandTargets& on);
void PreviewView(const TCommandTargets& on);
void SaveViewAsPdf(const TCommandTargets& on);

// Asks what the report holds; `timeFirst` leads to the time filter.
void ConfigureReport(const TCommandTargets& on, bool timeFirst);

// The bytes of a picture file of a chart, as IMissionViews::ChartPicture says. Throws std::runtime_error.
std::string ChartFile(TTimeChart& chart, const QString& caption, TPictureFormat format, int scale);
