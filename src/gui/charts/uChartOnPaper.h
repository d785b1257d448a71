// Draws charts as vectors, dark on white. Main thread only.
#pragma once

#include <QRectF>
#include <QString>

class QPainter;
class TTimeChart;

// Makes a new chart one for paper: its font, and series that differ without colours.
void PrepareForPaper(TTimeChart& chart);

// Gives the chart the size of a place on paper, in points.
void SizeForPaper(TTimeChart& chart, const QSizeF& size);

// Draws the chart into a place of that size; (0, 0) of the painter is the page's corner, a unit a point. The caption
// stands before the chart's title.
void DrawOnPaper(TTimeChart& chart, QPainter& painter, const QPointF& topLeft, const QString& caption);

// Draws a chart of the window into a place on paper, with what is in sight of it, and leaves it as it was.
void DrawShownOnPaper(TTimeChart& chart, QPainter& painter, const QRectF& place);
