// The diagonals of a chart of pseudo-velocity (m/s) over Hz, both logarithmic: lines of constant acceleration fall,
// those of constant displacement rise. They follow the zoom. Main thread only.
#pragma once

#include <qcustomplot.h>

#include "gui/charts/uChartLabels.h"

// At round numbers of g and mm that are in sight.
void DrawDiagonals(QCPPainter& painter, const QCPAxis& hertz, const QCPAxis& velocity, const QPen& pen);
// Adds their names where they enter or leave the axis rect.
void NameDiagonals(TChartLabels& labels, const QCPAxis& hertz, const QCPAxis& velocity, const QColor& ink);
