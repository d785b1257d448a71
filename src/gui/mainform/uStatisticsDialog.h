// The statistics of what a chart shows, as a table to read and to copy. Main thread only.
#pragma once

#include <QString>

class QWidget;
struct TRangeTable;

// Shows them until the user closes the dialog. `chart` is what people call the chart.
void ShowStatistics(QWidget& window, const QString& chart, const TRangeTable& statistics);
