// The statistics of what a chart shows, as a table to read and to copy. Main thread only.
#pragma once

class QWidget;
class TTimeChart;

// Shows them until the user closes the dialog; nothing where the chart has none.
void ShowStatistics(QWidget& window, const TTimeChart& chart);
