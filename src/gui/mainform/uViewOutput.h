// The view in front on paper or in a PDF, always dark on white, and pictures as bytes.
#pragma once

#include <QString>
#include <string>

#include "shell/uIMissionViews.h"

class TExportCommands;
class TKorvexMainForm;
class TTimeChart;

// Asks for a printer first; a cancelled dialog prints nothing.
void PrintView(TKorvexMainForm& form);
// Asks for a file first.
void SaveViewAsPdf(TKorvexMainForm& form, TExportCommands& exports);
// The bytes of a picture file of a chart, as IMissionViews::ChartPicture says. Throws std::runtime_error.
std::string ChartFile(TTimeChart& chart, const QString& caption, TPictureFormat format, int scale);
